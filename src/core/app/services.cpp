#include "core/app/services.h"

#include "core/base/expect.h"
#include "core/base/log.h"
#include "core/scene/scene_node.h"
#include "core/services/input_control.h"
#include "core/services/module_manager.h"
#include "core/services/sound_control.h"
#include "core/services/timer.h"
#include "core/teams/team_manager.h"
#include "game/collision/collision_detection.h"
#include "render/camera/camera.h"
#include "render/device/gl_renderer.h"
#include "render/device/gl_texture_loader.h"
#include "render/device/texture_manager.h"
#include "render/view/hud.h"

void startServices(WNDPROC windowProcedure, HINSTANCE instance) {
    expect(theModuleManager == nullptr);
    theModuleManager = new ModuleManager;
    new GLRenderer(windowProcedure, instance);
    new GLTextureLoader;
    new TextureManager;
    new InputControl;
    new Timer;
    new CollisionDetection;
    new SoundControl;
}

void startWindowServices() {
    expect(theModuleManager->getRenderer()->getWidth() > 0);
    theModuleManager->getTextureLoader()->setPath("./textures/");
    new Hud;
}

namespace {

/// Destroys a service while its slot still names it, since destructors reach one another through the registry.
template <class Service>
void destroyService(Service*& slot) {
    delete slot;
    slot = nullptr;
}

} // namespace

// Here and not beside the registry's other operations, which know none of the services.
ModuleManager::~ModuleManager() {
    logLine("ModuleManager Destruktor\n");
    destroyService(soundControl);
    destroyService(hud);
    destroyService(sceneRoot);
    destroyService(teamManager);
    destroyService(textureLoader);
    destroyService(textureManager);
    destroyService(renderer);
    destroyService(camera);
    destroyService(inputControl);
    destroyService(timer);
    destroyService(collisionDetection);
}

void endServices() {
    expect(theModuleManager != nullptr);
    delete theModuleManager;
    theModuleManager = nullptr;
}
