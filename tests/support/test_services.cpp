#include "support/test_services.h"

#include "core/app/main_loop.h"
#include "core/app/services.h"
#include "core/scene/scene_node.h"
#include "core/services/timer.h"
#include "platform/headless/headless.h"
#include "render/device/renderer.h"

#include <algorithm>
#include <stdexcept>

TestServices::TestServices() {
    headless::reset();
    startServices(WndProc, nullptr);
    if (!theModuleManager->getRenderer()->createWindow(false, 1024, 768, 32, "test"))
        throw std::logic_error("there is no window to test with");
    startWindowServices();
    theModuleManager->setSceneRoot(new SceneNode("root"));
}

TestServices::~TestServices() {
    theModuleManager->getRenderer()->killWindow();
    endServices();
}

void TestServices::tick(unsigned milliseconds) const {
    headless::advance(milliseconds);
    theModuleManager->getTimer()->tick();
}

void TestServices::frame(unsigned milliseconds) const {
    tick(milliseconds);
    theModuleManager->getSceneRoot()->update();
}

bool TestServices::holds(const SceneNode* node) const {
    return std::ranges::count(theModuleManager->getSceneRoot()->getChildren(), node) > 0;
}
