#include "support/test_services.h"

#include "core/input_control.h"
#include "core/scene_node.h"
#include "core/sound_control.h"
#include "core/timer.h"
#include "game/collision_detection.h"
#include "platform/headless/headless.h"
#include "render/gl_renderer.h"
#include "render/gl_texture_loader.h"
#include "render/hud.h"
#include "render/texture_manager.h"

namespace {

LRESULT routeToInput(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (theModuleManager->getInputControl()->handleMessage(message, wParam, lParam))
        return 1;
    return DefWindowProcA(window, message, wParam, lParam);
}

} // namespace

TestServices::TestServices() {
    headless::reset();
    theModuleManager = new ModuleManager;
    new GLRenderer(routeToInput, nullptr);
    (new GLTextureLoader)->setPath("./textures/");
    new TextureManager;
    new InputControl;
    new Timer;
    new CollisionDetection;
    new SoundControl;
    theModuleManager->getRenderer()->createWindow(false, 1024, 768, 32, "test");
    new Hud;
    theModuleManager->setSceneRoot(new SceneNode("root"));
}

TestServices::~TestServices() {
    theModuleManager->getRenderer()->killWindow();
    delete theModuleManager;
    theModuleManager = nullptr;
}

void TestServices::tick(unsigned milliseconds) const {
    headless::advance(milliseconds);
    theModuleManager->getTimer()->tick();
}

void TestServices::frame(unsigned milliseconds) const {
    tick(milliseconds);
    theModuleManager->getSceneRoot()->update();
}
