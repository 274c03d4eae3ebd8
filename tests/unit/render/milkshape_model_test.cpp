#include "render/view/milkshape_model.h"

#include "core/base/log.h"
#include "support/model_file.h"
#include "support/play.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <limits>
#include <numbers>

namespace {

constexpr float infinite = std::numeric_limits<float>::infinity();
constexpr float quarterTurn = std::numbers::pi_v<float> / 2;

/// One triangle on a joint that turns a quarter about Z from 0.25 to 1.25 s, shifted by 5 in X from its root joint,
/// which moves 10 up in the first half of that time and 4 aside in the second.
ModelFile arm() {
    ModelFile file;
    file.vertices = {{{6, 0, 0}, 1}, {{7, 0, 0}, 1}, {{6, 1, 0}, 1}};
    file.indices = {0, 1, 2};
    file.joints = {{"root", "", {}, {}, {}, {{0.25f, {0, 0, 0}}, {0.75f, {0, 10, 0}}, {1.25f, {4, 10, 0}}}},
                   {"hand", "root", {}, {5, 0, 0}, {{0.25f, {0, 0, 0}}, {1.25f, {0, 0, quarterTurn}}}, {}}};
    return file;
}

class MilkShapeModelTest : public testing::Test {
protected:
    TestData data;
    TestServices services;
    MilkShapeModel model{"model"};

    bool load(const ModelFile& file, const std::string& clips = "") {
        data.write("mesh/m.ms3d", file.bytes());
        data.write("mesh/m.ani", clips);
        return model.load("m");
    }
    void advance(unsigned milliseconds) {
        services.tick(milliseconds);
        model.update();
    }
    headless::GlPrimitive drawn() {
        return captured([this] { model.draw(); }).at(0);
    }
    void expectCorner(float x, float y) {
        const auto corner = drawn().vertices.at(0);
        EXPECT_NEAR(corner[0], x, 1e-4f);
        EXPECT_NEAR(corner[1], y, 1e-4f);
    }
    void expectClip(const char* name, float time) {
        EXPECT_EQ(model.getCurrentAnimation(), name);
        EXPECT_FLOAT_EQ(model.getAnimationTime(), time);
    }
};

TEST_F(MilkShapeModelTest, WhatOnlyLooksDependOnMayBeNoNumber) {
    const std::string endless("\0\0\x80\x7f", 4);
    std::string bytes = arm().bytes();
    const std::size_t firstS = bytes.find(std::string("\0\0\x80\x3e", 4)); // 0.25
    bytes.replace(firstS - 4, 8, endless + endless);                       // the number before is of a normal
    bytes.at(bytes.find("group") + 36) = -7;                               // its material
    data.write("mesh/m.ms3d", bytes);
    ASSERT_TRUE(model.load("m"));
    EXPECT_EQ(model.getTriangles()[0].normals[2], Vector3(0, 0, 0));
    EXPECT_EQ(drawn().coordinates[0][0], 0.0f);
    EXPECT_EQ(drawn().coordinates[1][0], 0.25f);
    data.write("mesh/m.ms3d", bytes.replace(16 + 1, 4, endless)); // the first corner's x
    EXPECT_FALSE(model.load("m"));
}

TEST_F(MilkShapeModelTest, BoundCornersAreKeptInTheirJointsSpace) {
    ModelFile file = arm();
    file.vertices[0].bone = -1;
    ASSERT_TRUE(load(file));
    EXPECT_EQ(model.getVertices()[1].position, Vector3(2, 0, 0));
    EXPECT_EQ(model.getLocalBounds().min, Vector3(-3, -3, -3)) << "of what is kept, and a margin";
    EXPECT_EQ(model.getLocalBounds().max, Vector3(9, 4, 3));
    const headless::GlPrimitive triangle = drawn();
    EXPECT_EQ(triangle.vertices, (std::vector<std::array<float, 3>>{{6, 0, 0}, {7, 0, 0}, {6, 1, 0}}));
    EXPECT_FLOAT_EQ(triangle.coordinates[0][1], 0.75f);
    EXPECT_FLOAT_EQ(triangle.coordinates[1][1], 0.25f) << "flipped";
}

TEST_F(MilkShapeModelTest, InterpolatesPositionsAndRotationsDownTheJoints) {
    ASSERT_TRUE(load(arm(), "1 wave 0 20 wave"));
    const float eighth = quarterTurn / 4;
    advance(0);
    expectCorner(6, 0);
    advance(500);
    expectCorner(5 + std::cos(eighth), 5 + std::sin(eighth));
    advance(500);
    expectCorner(7 + std::sin(eighth), 10 + std::cos(eighth));
    advance(500); // past the last keys
    expectCorner(9, 11);
    advance(500); // the loop begins again
    expectCorner(6, 0);
}

TEST_F(MilkShapeModelTest, ClipsFollowOneAnotherOrLeadNowhere) {
    ASSERT_TRUE(load(arm(), "3\nidle 0 10 idle\nwalk 10 20 walk\njump 0 5 idle"));
    model.setAnimation("nonsense");
    expectClip("idle", 0.0f);
    model.setAnimation("jump");
    advance(300);
    model.setAnimation("jump");
    expectClip("jump", 0.3f); // a clip that plays is not restarted
    advance(300);
    expectClip("idle", 0.0f);

    ModelFile frozen = arm();
    frozen.fps = 0.0f;
    const std::pair<ModelFile, const char*> deadEnds[] = {
        {arm(), "1 once 0 5 nowhere"}, {arm(), "2 a 3 3 b b 7 2 a"}, {frozen, "1 wave 0 20 wave"}};
    for (const auto& [file, clips] : deadEnds) {
        ASSERT_TRUE(load(file, clips));
        advance(1000);
        EXPECT_EQ(model.getCurrentAnimation(), "") << clips;
        advance(1000);
        expectCorner(6, 0);
    }
}

TEST_F(MilkShapeModelTest, AJointWithoutKeysStandsInItsBindPose) {
    ModelFile file = arm();
    file.joints[1].rotationKeys.clear();
    for (const float y : {0.0f, 10.0f}) {
        ASSERT_TRUE(load(file, "1 wave 0 20 wave"));
        advance(0);
        advance(750);
        expectCorner(6, y);                                   // its parent has moved 10 up
        file.joints[1].translationKeys = {{0.0f, {0, 0, 0}}}; // a single key of either kind makes it follow
    }
}

TEST_F(MilkShapeModelTest, AsksForTheBareTextureName) {
    static std::string asked;
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

TEST_F(MilkShapeModelTest, BadContentsAreRefusedAndBadParentsAreNone) {
    void (*const spoilt[])(ModelFile&) = {
        [](ModelFile& f) { f.version = 2; },
        [](ModelFile& f) { f.vertices[0].bone = 2; },
        [](ModelFile& f) { f.vertices[0].bone = -2; },
        [](ModelFile& f) { f.indices[2] = 3; },
        [](ModelFile& f) { f.strayTriangle = 1; },
        [](ModelFile& f) { f.vertices[1].position.y = infinite; },
        [](ModelFile& f) { f.joints[0].rotation.x = -infinite; },
    };
    for (const auto& spoil : spoilt) {
        ModelFile file = arm();
        spoil(file);
        EXPECT_FALSE(load(file)) << &spoil - spoilt;
    }
    EXPECT_FALSE(model.load("absent"));
    model.draw();
    ModelFile file = arm();
    file.version = 3;
    file.joints[0].parent = file.joints[1].parent = "hand"; // a later one, and itself
    ASSERT_TRUE(load(file));
    EXPECT_EQ(model.getJoints()[0].parent, -1);
    EXPECT_EQ(model.getJoints()[1].parent, -1);
}

} // namespace
