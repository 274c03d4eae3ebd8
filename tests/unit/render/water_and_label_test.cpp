#include "platform/gl.h"
#include "platform/headless/headless.h"
#include "render/camera.h"
#include "render/label_node.h"
#include "render/water_node.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <cmath>

namespace {

class WaterAndLabel : public testing::Test {
protected:
    TestData data;
    TestServices services;

    static void expectCleanState() {
        EXPECT_TRUE(headless::glEnabled(GL_LIGHTING));
        EXPECT_TRUE(headless::glEnabled(GL_TEXTURE_2D));
        EXPECT_TRUE(headless::glState().settings.depthMask);
        EXPECT_EQ(headless::glState().settings.activeUnit, 0u);
        EXPECT_EQ(headless::glState().modelview.size(), 1u);
        EXPECT_TRUE(headless::problems().empty());
    }
    static std::vector<std::vector<double>> recorded(const std::string& name) {
        std::vector<std::vector<double>> found;
        for (const headless::GlRecord& record : headless::glRecords())
            if (record.name == name)
                found.push_back(record.arguments);
        return found;
    }
};

TEST_F(WaterAndLabel, TheSeaDriftsInTwoLayers) {
    WaterNode water;
    water.update();
    headless::recordGl(true);
    water.draw();
    const auto coordinates = recorded("glMultiTexCoord2fARB");
    ASSERT_EQ(coordinates.size(), 8u);
    const double first[4][2] = {{0, 101}, {0, 1}, {100, 1}, {100, 101}};
    const double second[4][2] = {{151.5, 150.5}, {1.5, 150.5}, {1.5, 0.5}, {151.5, 0.5}};
    for (std::size_t corner = 0; corner < 4; ++corner) {
        EXPECT_EQ(coordinates[2 * corner][1], first[corner][0]);
        EXPECT_EQ(coordinates[2 * corner][2], first[corner][1]);
        EXPECT_EQ(coordinates[2 * corner + 1][1], second[corner][0]);
        EXPECT_EQ(coordinates[2 * corner + 1][2], second[corner][1]);
    }
    const auto vertices = recorded("glVertex3f");
    ASSERT_EQ(vertices.size(), 4u);
    EXPECT_EQ(vertices[1], (std::vector<double>{-3000, 0, 3000}));
    headless::recordGl(false);
    expectCleanState();

    services.tick(10000); // the drift's angle is one radian now
    headless::recordGl(true);
    water.draw();
    EXPECT_NEAR(recorded("glMultiTexCoord2fARB")[2][1], std::sin(1.0), 1e-6);
    headless::recordGl(false);
}

TEST_F(WaterAndLabel, TheSeaStillDriftsAfterWeeks) {
    WaterNode water;
    water.update();
    std::uint32_t tick = 25u * 24 * 3600 * 1000;
    services.tick(tick);
    for (int frame = 0; frame < 20; ++frame) {
        services.tick(16);
        tick += 16;
        headless::recordGl(true);
        water.draw();
        const double angle = tick / 10000.0;
        EXPECT_NEAR(recorded("glMultiTexCoord2fARB")[2][1], std::sin(angle), 1e-6) << frame;
        EXPECT_NEAR(recorded("glMultiTexCoord2fARB")[2][2], std::cos(angle), 1e-6) << frame;
        headless::recordGl(false);
    }
}

TEST_F(WaterAndLabel, WithoutMultitextureOneLayerIsDrawn) {
    headless::setGlExtensions("");
    theModuleManager->getRenderer();
    WaterNode water;
    water.update();
    headless::recordGl(true);
    water.draw();
    EXPECT_TRUE(recorded("glMultiTexCoord2fARB").empty());
    EXPECT_EQ(recorded("glTexCoord2f").size(), 4u);
    headless::recordGl(false);
    expectCleanState();
}

TEST_F(WaterAndLabel, ALabelIsCentredAndFacesTheViewer) {
    auto* const camera = new Camera;
    theModuleManager->getSceneRoot()->addChild(camera);
    camera->setViewDirection(1, 0, 0); // right is +Z then
    camera->apply();
    theModuleManager->setCamera(camera);
    LabelNode label;
    label.setPosition(50, 7, 0);
    label.update();
    const auto extentOf = [&](const char* text) {
        label.setText(text);
        headless::captureGeometry(true);
        label.draw();
        BoundingBox box;
        bool first = true;
        for (const headless::GlPrimitive& primitive : headless::glPrimitives()) {
            EXPECT_FALSE(primitive.lighting);
            for (const auto& v : primitive.vertices) {
                if (first)
                    box.set({v[0], v[1], v[2]}, {v[0], v[1], v[2]});
                first = false;
                box.extend(v[0], v[1], v[2]);
            }
        }
        headless::captureGeometry(false);
        expectCleanState();
        return box;
    };
    const BoundingBox one = extentOf("A");
    EXPECT_NEAR(one.min.z, -2, 1e-4);
    EXPECT_NEAR(one.max.z, 2, 1e-4);
    EXPECT_NEAR(one.min.y, 5, 1e-4);
    EXPECT_NEAR(one.min.x, 50, 1e-4);
    const BoundingBox four = extentOf("\xC4rge");
    EXPECT_NEAR(four.min.z, -5, 1e-4); // three advances of 2 and a glyph of 4, centred
    EXPECT_NEAR(four.max.z, 5, 1e-4);
    extentOf("");
}

} // namespace
