#include "core/module_manager.h"

#include "core/log.h"
#include "core/scene_node.h"
#include "core/timer.h"
#include "platform/headless/headless.h"
#include "render/camera.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <string>

namespace {

std::string logged;

TEST(ModuleManager, AFreshRegistryAnswersNull) {
    const ModuleManager registry;
    EXPECT_EQ(registry.getRenderer(), nullptr);
    EXPECT_EQ(registry.getSceneRoot(), nullptr);
    EXPECT_EQ(registry.getCamera(), nullptr);
    EXPECT_EQ(registry.getSoundControl(), nullptr);
}

TEST(ModuleManager, DestroysTheServicesInItsOrder) {
    {
        const TestServices services;
        theModuleManager->getSceneRoot()->addChild(new Camera);
        theModuleManager->setCamera(static_cast<Camera*>(theModuleManager->getSceneRoot()->getChildren()[0]));
        logged.clear();
        setLogSink([](const char* text) { logged += text; });
    }
    setLogSink(nullptr);
    std::size_t last = 0;
    for (const char* const line :
         {"ModuleManager Destruktor", "Sound Control destructed", "Hud Destructed", "Scene Node Destruktor: root",
          " Calling Camera Destruktor ", "GLTextureLoader Destruktor", "TextureManager Destruktor",
          "GLRenderer Destruktor", "InputConrol Destruktor", "Timer Destruktor", "Collision Detection destructed"}) {
        const std::size_t place = logged.find(line);
        ASSERT_NE(place, std::string::npos) << line;
        EXPECT_GE(place, last) << line;
        last = place;
    }
    // The camera went with the scene and was not destroyed again.
    EXPECT_EQ(logged.find(" Calling Camera Destruktor "), logged.rfind(" Calling Camera Destruktor "));
}

TEST(Timer, MeasuresFramesAcrossTheWrapOfTheTick) {
    const TestServices services;
    const Timer& timer = *theModuleManager->getTimer();
    headless::setTick(0xFFFFFFF8u);
    services.tick(0);
    services.tick(16);
    EXPECT_EQ(timer.getLastTick(), 8u);
    EXPECT_FLOAT_EQ(timer.getFrameTime(), 0.016f);
    services.tick(0);
    EXPECT_EQ(timer.getFrameTime(), 0.0f);
    services.tick(3000);
    EXPECT_FLOAT_EQ(timer.getFrameTime(), 3.0f);
    headless::advance(500);
    EXPECT_EQ(timer.getLastTick(), 3008u);
    EXPECT_EQ(timer.getTickCount(), 3508u);
}

} // namespace
