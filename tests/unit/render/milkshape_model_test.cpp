#include "render/milkshape_model.h"

#include "core/log.h"
#include "platform/headless/headless.h"
#include "support/model_file.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <cstring>
#include <limits>
#include <numbers>

namespace {

constexpr float quarterTurn = std::numbers::pi_v<float> / 2;

/// One triangle on a joint that turns a quarter about Z in the first second, shifted by 5 in X from its root joint,
/// which moves 10 up in the same time.
ModelFile arm() {
    ModelFile file;
    file.vertices = {{{6, 0, 0}, 1}, {{7, 0, 0}, 1}, {{6, 1, 0}, 1}};
    file.indices = {0, 1, 2};
    ModelFile::Joint root;
    root.name = "root";
    root.translationKeys = {{0.0f, {0, 0, 0}}, {1.0f, {0, 10, 0}}};
    ModelFile::Joint hand;
    hand.name = "hand";
    hand.parent = "root";
    hand.position = {5, 0, 0};
    hand.rotationKeys = {{0.0f, {0, 0, 0}}, {1.0f, {0, 0, quarterTurn}}};
    file.joints = {root, hand};
    return file;
}

class MilkShapeModelTest : public testing::Test {
protected:
    TestData data;
    TestServices services;
    MilkShapeModel model{"model"};

    bool load(const ModelFile& file, const std::string& clips = "") {
        data.write("mesh/m.ms3d", file.bytes());
        if (!clips.empty())
            data.write("mesh/m.ani", clips);
        return model.load("m");
    }
    void advance(unsigned milliseconds) {
        services.tick(milliseconds);
        model.update();
    }
    /// The first corner as it is drawn.
    std::array<float, 3> firstCorner() {
        headless::captureGeometry(true);
        model.draw();
        const std::array<float, 3> corner = headless::glPrimitives().at(0).vertices.at(0);
        headless::captureGeometry(false);
        return corner;
    }
    void expectCorner(float x, float y) {
        const auto corner = firstCorner();
        EXPECT_NEAR(corner[0], x, 1e-4f);
        EXPECT_NEAR(corner[1], y, 1e-4f);
    }
};

TEST_F(MilkShapeModelTest, WhatOnlyLooksDependOnMayBeNoNumber) {
    // Offsets in the file of one triangle: its normals and texture coordinates, and the group's material.
    const std::size_t firstNormal = 16 + 3 * 15 + 2 + 8;
    const std::size_t firstS = firstNormal + 36;
    const std::size_t material = 16 + 3 * 15 + 2 + 70 + 2 + 33 + 2 + 2;
    std::string bytes = arm().bytes();
    ASSERT_EQ(bytes.at(material), -1);
    const float infinite = std::numeric_limits<float>::infinity();
    std::memcpy(&bytes[firstNormal + 4], &infinite, sizeof infinite);
    std::memcpy(&bytes[firstS + 4], &infinite, sizeof infinite);
    bytes[material] = -7;
    data.write("mesh/m.ms3d", bytes);
    ASSERT_TRUE(model.load("m"));
    EXPECT_EQ(model.getTriangles()[0].normals[0].y, 0.0f);
    EXPECT_EQ(model.getTriangles()[0].s[1], 0.0f);
    EXPECT_EQ(model.getTriangles()[0].s[2], 0.25f);
    model.draw();
    std::memcpy(&bytes[16 + 1], &infinite, sizeof infinite); // the first corner's x
    data.write("mesh/m.ms3d", bytes);
    EXPECT_FALSE(model.load("m"));
}

TEST_F(MilkShapeModelTest, MovesVerticesIntoTheirJointsSpace) {
    ASSERT_TRUE(load(arm()));
    EXPECT_EQ(model.getVertices()[0].position, Vector3(1, 0, 0));
    expectCorner(6, 0); // the bind pose puts them back
}

TEST_F(MilkShapeModelTest, InterpolatesPositionsAndRotationsDownTheJoints) {
    ASSERT_TRUE(load(arm(), "1 wave 0 20 wave"));
    advance(0);
    expectCorner(6, 0);
    advance(500);
    const float half = std::sqrt(0.5f);
    expectCorner(5 + half, 5 + half);
    advance(499);
    advance(501); // 1.5 s: past the last keys
    expectCorner(5, 11);
    advance(500); // 2 s: the loop begins again
    expectCorner(6, 0);
}

TEST_F(MilkShapeModelTest, ClipsFollowOneAnother) {
    ASSERT_TRUE(load(arm(), "3\nidle 0 10 idle\nwalk 10 20 walk\njump 0 5 idle"));
    EXPECT_EQ(model.getCurrentAnimation(), "idle");
    model.setAnimation("nonsense");
    EXPECT_EQ(model.getCurrentAnimation(), "idle");
    model.setAnimation("jump");
    advance(300);
    EXPECT_FLOAT_EQ(model.getAnimationTime(), 0.3f);
    model.setAnimation("jump");
    EXPECT_FLOAT_EQ(model.getAnimationTime(), 0.3f) << "a clip that plays is not restarted";
    advance(300);
    EXPECT_EQ(model.getCurrentAnimation(), "idle");
    EXPECT_EQ(model.getAnimationTime(), 0.0f);
}

TEST_F(MilkShapeModelTest, ClipsThatLeadNowhereEndTheAnimation) {
    ASSERT_TRUE(load(arm(), "1 once 0 5 nowhere"));
    advance(100);
    advance(1000);
    EXPECT_EQ(model.getCurrentAnimation(), "");
    expectCorner(6, 0);
    advance(1000);

    ASSERT_TRUE(load(arm(), "2 a 3 3 b b 7 2 a")); // a ring without duration
    advance(100);
    EXPECT_EQ(model.getCurrentAnimation(), "");

    ModelFile frozen = arm();
    frozen.fps = 0.0f;
    ASSERT_TRUE(load(frozen, "1 wave 0 20 wave"));
    advance(100);
    EXPECT_EQ(model.getCurrentAnimation(), "");
}

TEST_F(MilkShapeModelTest, AJointWithoutKeysStandsInItsBindPose) {
    ModelFile file = arm();
    file.joints[1].rotationKeys.clear();
    ASSERT_TRUE(load(file, "1 wave 0 20 wave"));
    advance(1000);
    expectCorner(6, 0); // its parent has moved 10 up
    // A single key of either kind makes it follow.
    file.joints[1].translationKeys = {{0.0f, {0, 0, 0}}};
    ASSERT_TRUE(load(file, "1 wave 0 20 wave"));
    advance(0);
    advance(1000);
    expectCorner(6, 10);
}

TEST_F(MilkShapeModelTest, TextureCoordinatesOfSkinnedCornersAreFlipped) {
    ModelFile file = arm();
    file.vertices[0].bone = -1;
    ASSERT_TRUE(load(file));
    headless::captureGeometry(true);
    model.draw();
    const auto coordinates = headless::glPrimitives().at(0).coordinates;
    headless::captureGeometry(false);
    EXPECT_FLOAT_EQ(coordinates[0][1], 0.75f);
    EXPECT_FLOAT_EQ(coordinates[1][1], 0.25f);
}

TEST_F(MilkShapeModelTest, AsksForTheBareTextureName) {
    static std::string asked;
    asked.clear();
    setLogSink([](const char* line) { asked += line; });
    ModelFile file = arm();
    for (const char* const name : {"C:\\models\\skin.tga", ".\\tex.bmp", "abc"}) {
        file.textureFile = name;
        EXPECT_TRUE(load(file));
    }
    setLogSink(nullptr);
    EXPECT_NE(asked.find("'./textures/skin.tga'"), std::string::npos);
    EXPECT_NE(asked.find("'./textures/tex.tga'"), std::string::npos);
    // A name shorter than its extension leaves nothing to ask for.
    EXPECT_EQ(model.getMaterials()[0].texture, nullptr);
    EXPECT_EQ(asked.find("'./textures/.tga'"), std::string::npos);
}

TEST_F(MilkShapeModelTest, BoundsHoldTheStoredVerticesAndAMargin) {
    ASSERT_TRUE(load(arm()));
    EXPECT_EQ(model.getLocalBounds().min, Vector3(-3, -3, -3));
    EXPECT_EQ(model.getLocalBounds().max, Vector3(5, 4, 3));
}

TEST_F(MilkShapeModelTest, EveryTruncationIsRefusedWhole) {
    ModelFile file = arm();
    file.textureFile = "skin.tga";
    const std::string whole = file.bytes();
    for (std::size_t length = 0; length < whole.size(); ++length) {
        data.write("mesh/m.ms3d", whole.substr(0, length));
        EXPECT_FALSE(model.load("m")) << length;
        EXPECT_TRUE(model.getVertices().empty() && model.getJoints().empty()) << length;
    }
    data.write("mesh/m.ms3d", whole + "trailing bytes are ignored");
    EXPECT_TRUE(model.load("m"));
}

TEST_F(MilkShapeModelTest, BadContentsAreRefused) {
    const auto refused = [this](auto spoil) {
        ModelFile file = arm();
        spoil(file);
        return !load(file);
    };
    EXPECT_TRUE(refused([](ModelFile& f) { f.version = 2; }));
    EXPECT_TRUE(refused([](ModelFile& f) { f.vertices[0].bone = 2; }));
    EXPECT_TRUE(refused([](ModelFile& f) { f.vertices[0].bone = -2; }));
    EXPECT_TRUE(refused([](ModelFile& f) { f.indices[2] = 3; }));
    EXPECT_TRUE(refused([](ModelFile& f) { f.strayTriangle = 1; }));
    EXPECT_TRUE(refused([](ModelFile& f) { f.vertices[1].position.y = std::numeric_limits<float>::infinity(); }));
    EXPECT_TRUE(refused([](ModelFile& f) { f.joints[0].rotation.x = std::numeric_limits<float>::quiet_NaN(); }));
    EXPECT_FALSE(refused([](ModelFile& f) { f.version = 3; }));
    EXPECT_FALSE(model.load("absent"));
    model.draw();
}

TEST_F(MilkShapeModelTest, AJointThatNamesItselfOrALaterOneHasNoParent) {
    ModelFile file = arm();
    file.joints[0].parent = "hand";
    file.joints[1].parent = "hand";
    ASSERT_TRUE(load(file));
    EXPECT_EQ(model.getJoints()[0].parent, -1);
    EXPECT_EQ(model.getJoints()[1].parent, -1);
}

} // namespace
