#include "render/camera/camera.h"

#include "core/services/input_control.h"
#include "render/view/fps_camera.h"
#include "support/play.h"
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
    parent.setRotationY(1); // which is none of the camera's business
    parent.update();
    camera->setPosition(1, 2, 3);
    camera->setViewDirection(-2, 0, 0);
    camera->apply();
    const Vector3 seen = camera->getModelviewMatrix().transform(Vector3(6, 23, 34));
    EXPECT_NEAR(seen.x, -1, 1e-5);
    EXPECT_NEAR(seen.y, 1, 1e-5);
    EXPECT_NEAR(seen.z, -5, 1e-5);
    // 45 degrees and 1024 x 768.
    EXPECT_NEAR(camera->getProjectionMatrix()[5], 2.41421f, 1e-4f);
    EXPECT_NEAR(camera->getProjectionMatrix()[0], 2.41421f * 0.75f, 1e-4f);
    const auto points = captured([] {
        glBegin(GL_POINTS);
        glVertex3f(6, 23, 34);
        glEnd();
    });
    const auto [x, y, depth] = headless::windowPosition(points.at(0), 0);
    EXPECT_NEAR(x, 512 * (1 - 2.41421f * 0.75f / 5), 0.01f);
    EXPECT_NEAR(y, 384 * (1 + 2.41421f / 5), 0.01f);
    const auto& light = headless::glState().settings.lights[0];
    EXPECT_NEAR(light.eyePosition[1], 1000.0f - 22.0f, 1e-3f);
    EXPECT_FALSE(camera->setFov(0) || camera->setFov(-10));
    EXPECT_EQ(camera->getFov(), 45.0f);
    EXPECT_TRUE(camera->setFov(60));
    EXPECT_EQ(camera->getFov(), 60.0f);
}

TEST_F(CameraTest, TheFrustumSeesWhatLiesAheadUnlessCullingIsOff) {
    Camera camera; // at the origin, along -Z, 0.1 to 3500
    camera.apply();
    for (const bool culling : {true, false}) {
        frustumCulling = culling;
        EXPECT_TRUE(camera.pointInFrustum(0, 0, -10));
        EXPECT_NE(camera.pointInFrustum(0, 0, 10), culling);
        EXPECT_NE(camera.pointInFrustum(0, 0, -4000), culling);
        EXPECT_NE(camera.pointInFrustum(0, -5, -10), culling); // tan 22.5 is 0.414
        EXPECT_TRUE(camera.pointInFrustum(5, 0, -10));         // sideways: 0.552
        EXPECT_NE(camera.pointInFrustum(-6, 0, -10), culling);
        EXPECT_TRUE(camera.sphereInFrustum(0, 5, -10, 2));
        EXPECT_NE(camera.sphereInFrustum(0, 9, -10, 2), culling);
        EXPECT_TRUE(camera.cubeInFrustum(0, 6, -10, 2));
        EXPECT_NE(camera.cubeInFrustum(0, 9, -10, 2), culling);
        EXPECT_TRUE(camera.boxInFrustum(-100, -100, -100, 100, 100, 100)); // the eye is inside
        EXPECT_TRUE(camera.boxInFrustum(3000, 3000, 3000, -3000, -3000, -3000));
        EXPECT_NE(camera.boxInFrustum(-1, -1, 1, 1, 1, 2), culling);
    }
    frustumCulling = true;
}

TEST_F(CameraTest, TheActiveCameraEmptiesItsSlotWhenItEnds) {
    for (Camera* const camera : {new Camera, static_cast<Camera*>(new FPSCamera)}) {
        theModuleManager->setCamera(camera);
        delete new Camera;
        EXPECT_EQ(theModuleManager->getCamera(), camera);
        delete camera;
        EXPECT_EQ(theModuleManager->getCamera(), nullptr);
    }
}

TEST_F(CameraTest, TheFreeCameraFliesAlongItsView) {
    FPSCamera camera;
    InputControl& input = *theModuleManager->getInputControl();
    Vector3 expected(0, 1, -1);
    const std::pair<WPARAM, Vector3> keys[] = {
        {'W', {0, 0, 30}}, {'A', {30, 0, 0}}, {'S', {0, 0, -30}}, {'D', {-30, 0, 0}}};
    for (const auto& [key, motion] : keys) {
        input.handleMessage(WM_KEYDOWN, key, 0);
        services.tick(2000);
        camera.update();
        input.handleMessage(WM_KEYUP, key, 0);
        expected += motion;
        EXPECT_LT((camera.getPosition() - expected).length(), 1e-4f) << key;
    }
    // The mouse moves at twice the worms' rate: 100 pixels are one radian.
    SetCursorPos(400, 350);
    input.handleMessage(WM_MOUSEMOVE, 0, 0);
    input.resetFrame();
    services.tick(0);
    camera.update();
    EXPECT_NEAR(camera.getViewDirection().x, -std::sin(1.0f) * std::cos(0.5f), 1e-4f);
    EXPECT_NEAR(camera.getViewDirection().y, std::sin(0.5f), 1e-4f);
}

} // namespace
