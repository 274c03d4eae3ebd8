#include "render/camera.h"

#include "core/input_control.h"
#include "platform/headless/headless.h"
#include "render/fps_camera.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

namespace {

class CameraTest : public testing::Test {
protected:
    TestServices services;
};

TEST_F(CameraTest, ApplyPlacesTheEyeByTheParentAndFixesTheLight) {
    SceneNode parent("parent");
    auto* const camera = new Camera;
    parent.addChild(camera);
    parent.setPosition(10, 20, 30);
    camera->setPosition(0, 1, 0);
    camera->setViewDirection(0, 0, -1);
    camera->apply();
    const Vector3 seen = camera->getModelviewMatrix().transform(Vector3(10, 21, 25));
    EXPECT_NEAR(seen.x, 0, 1e-5);
    EXPECT_NEAR(seen.y, 0, 1e-5);
    EXPECT_NEAR(seen.z, -5, 1e-5);
    // 45 degrees and 1024 x 768.
    EXPECT_NEAR(camera->getProjectionMatrix()[5], 2.41421f, 1e-4f);
    EXPECT_NEAR(camera->getProjectionMatrix()[0], 2.41421f * 0.75f, 1e-4f);
    const auto& light = headless::glState().settings.lights[0];
    EXPECT_NEAR(light.eyePosition[1], 1000.0f - 21.0f, 1e-3f);
}

TEST_F(CameraTest, AFieldOfViewOfZeroOrLessIsRefused) {
    Camera camera;
    EXPECT_FALSE(camera.setFov(0));
    EXPECT_FALSE(camera.setFov(-10));
    EXPECT_EQ(camera.getFov(), 45.0f);
    EXPECT_TRUE(camera.setFov(60));
    EXPECT_EQ(camera.getFov(), 60.0f);
}

TEST_F(CameraTest, TheFrustumSeesWhatLiesAhead) {
    Camera camera; // at the origin, along -Z, 0.1 to 3500
    camera.apply();
    EXPECT_TRUE(camera.pointInFrustum(0, 0, -10));
    EXPECT_FALSE(camera.pointInFrustum(0, 0, 10));
    EXPECT_FALSE(camera.pointInFrustum(0, 0, -4000));
    EXPECT_FALSE(camera.pointInFrustum(0, 5, -10)); // above: tan 22.5 is 0.414
    EXPECT_TRUE(camera.pointInFrustum(5, 0, -10));  // sideways: 0.552
    EXPECT_TRUE(camera.sphereInFrustum(0, 5, -10, 2));
    EXPECT_FALSE(camera.sphereInFrustum(0, 9, -10, 2));
    EXPECT_TRUE(camera.cubeInFrustum(0, 6, -10, 2));
    EXPECT_FALSE(camera.cubeInFrustum(0, 9, -10, 2));
    EXPECT_TRUE(camera.boxInFrustum(-100, -100, -100, 100, 100, 100)); // the eye is inside
    EXPECT_TRUE(camera.boxInFrustum(3000, 3000, 3000, -3000, -3000, -3000));
    EXPECT_FALSE(camera.boxInFrustum(-1, -1, 1, 1, 1, 2));
    frustumCulling = false;
    EXPECT_TRUE(camera.boxInFrustum(-1, -1, 1, 1, 1, 2));
    EXPECT_TRUE(camera.pointInFrustum(0, 0, 10));
    frustumCulling = true;
}

TEST_F(CameraTest, TheActiveCameraEmptiesItsSlotWhenItEnds) {
    auto* const camera = new Camera;
    theModuleManager->setCamera(camera);
    delete new Camera;
    EXPECT_EQ(theModuleManager->getCamera(), camera);
    delete camera;
    EXPECT_EQ(theModuleManager->getCamera(), nullptr);
}

TEST_F(CameraTest, TheFreeCameraFliesAlongItsView) {
    auto* const camera = new FPSCamera;
    theModuleManager->getSceneRoot()->addChild(camera);
    InputControl* const input = theModuleManager->getInputControl();
    input->handleMessage(WM_KEYDOWN, 'W', 0);
    services.frame(1000);
    EXPECT_NEAR(camera->getPosition().z, -1.0f + 15.0f, 1e-4f);
    input->handleMessage(WM_KEYUP, 'W', 0);
    input->handleMessage(WM_KEYDOWN, 'A', 0);
    services.frame(1000);
    EXPECT_NEAR(camera->getPosition().x, 15.0f, 1e-4f);
    // The mouse moves at twice the worms' rate: 100 pixels are one radian.
    SetCursorPos(400, 300);
    input->handleMessage(WM_MOUSEMOVE, 0, 0);
    input->resetFrame();
    services.frame(0);
    EXPECT_NEAR(camera->getViewDirection().x, -std::sin(1.0f), 1e-4f);
}

} // namespace
