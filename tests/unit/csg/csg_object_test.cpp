#include "csg/csg_object.h"

#include "core/log.h"
#include "game/collision_detection.h"
#include "game/collision_packet.h"
#include "platform/headless/headless.h"
#include "render/renderer.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace {

std::string logged;

class CsgObject : public testing::Test {
protected:
    void SetUp() override {
        logged.clear();
        setLogSink([](const char* text) { logged += text; });
    }
    void TearDown() override { setLogSink(nullptr); }

    TestData directory;
    TestServices services;
};

void expectEmpty(const csgObject& solid) {
    EXPECT_TRUE(solid.getParts().empty());
    EXPECT_TRUE(solid.getVertices().empty());
    EXPECT_FALSE(solid.getBounds());
    EXPECT_EQ(solid.getLocalBounds().max, Vector3(0.0f, 0.0f, 0.0f));
}

void collideWithEveryFace(const csgObject& solid, CollisionPacket& packet) {
    const auto scaled = [&](const csgVector& v) {
        return Vector3(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)) / packet.radius;
    };
    for (const csgFaceList& part : solid.getParts()) {
        for (const auto& face : part)
            theModuleManager->getCollisionDetection()->checkTriangle(&packet, scaled(face->cornerPosition(0)),
                                                                     scaled(face->cornerPosition(1)),
                                                                     scaled(face->cornerPosition(2)));
    }
}

} // namespace

TEST_F(CsgObject, MissingFilesAndDirectoriesCannotBeOpened) {
    directory.write("csg/place.csg/file", "");
    csgObject solid;
    for (const char* name : {"missing", "place"}) {
        logged.clear();
        EXPECT_FALSE(solid.load(std::string("./csg/") + name));
        EXPECT_EQ(logged, std::string(" csgObject: Could not open csg file './csg/") + name + ".csg' \n");
        expectEmpty(solid);
    }
}

TEST_F(CsgObject, MalformedFileLeavesItEmpty) {
    directory.writeSolid("good", boxData({0, 0, 0}, {1, 1, 1}));
    directory.write("csg/bad.csg", "1 2 0 0 0 0 0 1 1");
    csgObject solid;
    ASSERT_TRUE(solid.load("./csg/good"));
    logged.clear();
    EXPECT_FALSE(solid.load("./csg/bad"));
    EXPECT_EQ(logged, " csgObject: Bad csg file './csg/bad.csg': line 1, part 0: vertex 1: z is missing \n");
    expectEmpty(solid);
    solid.translate(1.0, 2.0, 3.0);
    solid.rotateX(1.0);
    expectEmpty(solid);
}

TEST_F(CsgObject, FileWithoutPartsLoads) {
    directory.write("csg/none.csg", "0");
    csgObject solid;
    EXPECT_TRUE(solid.load("./csg/none"));
    expectEmpty(solid);
}

TEST_F(CsgObject, LocalBoxFollowsThePlacing) {
    directory.writeSolid("box", boxData({0, 0, 0}, {1, 2, 3}));
    csgObject solid;
    ASSERT_TRUE(solid.load("./csg/box"));
    solid.scale(2.0, 1.0, 1.0);
    EXPECT_EQ(solid.getLocalBounds().max, Vector3(2.0f, 2.0f, 3.0f));
    solid.rotateZ(1.5707963267948966);
    EXPECT_NEAR(solid.getLocalBounds().min.x, -2.0f, 1e-6f);
    EXPECT_NEAR(solid.getLocalBounds().max.y, 2.0f, 1e-6f);
    const csgBounds before = *solid.getBounds();
    solid.translate(0.5, -1.0, 10.0);
    EXPECT_EQ(solid.getBounds()->max, before.max + (csgVector{0.5, -1.0, 10.0}));
    EXPECT_EQ(solid.getLocalBounds().max.z, static_cast<float>(before.max.z + 10.0));
}

TEST_F(CsgObject, SubtractLogsItsSteps) {
    directory.writeSolid("land", boxData({0, 0, 0}, {10, 10, 10}));
    directory.writeSolid("ball", sphereData(1, 2.0));
    csgObject land;
    csgObject ball;
    ASSERT_TRUE(land.load("./csg/land"));
    ASSERT_TRUE(ball.load("./csg/ball"));
    ball.translate(5.0, 5.0, 5.0);
    logged.clear();
    land.subtract(ball);
    EXPECT_EQ(logged, "Before split!!!!!!!!!!!!!!\nAfter first split!!!!!!!!!!!!!!\nAfter second split!!!!!!!!!!!!!!\n"
                      " csgObject: Needed time for CSG boolean Operation 0 \n");
    EXPECT_EQ(land.countFaces(), 12u + 80u);
}

TEST_F(CsgObject, SubtractingWithOrFromNothingDoesNothing) {
    directory.writeSolid("land", boxData({0, 0, 0}, {10, 10, 10}));
    csgObject land;
    csgObject nothing;
    ASSERT_TRUE(land.load("./csg/land"));
    const auto before = hashOf(land);
    land.subtract(nothing);
    nothing.subtract(land);
    EXPECT_EQ(hashOf(land), before);
    expectEmpty(nothing);
}

TEST_F(CsgObject, ExtensionsAreWholeWords) {
    headless::setGlExtensions("GL_ARB_vertex_buffer_object_extra GL_EXT_a GL_ARB_vertex_buffer");
    EXPECT_FALSE(csgObject::hasExtension("GL_ARB_vertex_buffer_object"));
    EXPECT_TRUE(csgObject::hasExtension("GL_ARB_vertex_buffer"));
    EXPECT_TRUE(csgObject::hasExtension("GL_EXT_a"));
    EXPECT_FALSE(csgObject::hasExtension("EXT_a"));
    EXPECT_FALSE(csgObject::hasExtension(""));
    EXPECT_FALSE(csgObject::hasExtension("GL_EXT_a GL_ARB_vertex_buffer"));
}

TEST_F(CsgObject, ArraysAndBuffersDrawPartByPart) {
    csgMeshData data = boxData({0, 0, 0}, {1, 1, 1});
    data.parts.push_back(tetrahedronData(5.0).parts[0]);
    directory.writeSolid("two", data);
    csgObject solid;
    ASSERT_TRUE(solid.load("./csg/two"));
    EXPECT_EQ(solid.getTextures(), (std::vector<Texture*>{nullptr, nullptr}));
    EXPECT_EQ(solid.getTextureNames(), (std::vector<std::string>{"stone", "stone"}));
    solid.rebuildArrays();
    for (const int mode : {renderVertexArray, renderVertexBuffer}) {
        theModuleManager->getRenderer()->renderMode = mode;
        headless::recordGl(true);
        solid.draw();
        headless::recordGl(false);
        std::vector<std::vector<double>> draws;
        for (const headless::GlRecord& record : headless::glRecords()) {
            EXPECT_NE(record.name, "glBindTexture") << "a part without texture binds none";
            if (record.name == "glDrawArrays")
                draws.push_back(record.arguments);
        }
        EXPECT_EQ(draws, (std::vector<std::vector<double>>{{GL_TRIANGLES, 0, 36}, {GL_TRIANGLES, 36, 12}}));
        EXPECT_FALSE(headless::glState().vertexArray.enabled);
        EXPECT_EQ(headless::glState().arrayBuffer, 0u);
    }
}

TEST_F(CsgObject, EveryModeDrawsTheSame) {
    directory.writeSolid("box", boxData({0, 0, 0}, {1, 2, 3}));
    csgObject solid;
    ASSERT_TRUE(solid.load("./csg/box"));
    solid.rebuildArrays();
    std::vector<std::vector<std::array<float, 3>>> drawn;
    for (const int mode : {renderImmediate, renderVertexArray, renderVertexBuffer}) {
        theModuleManager->getRenderer()->renderMode = mode;
        headless::captureGeometry(true);
        solid.draw();
        ASSERT_EQ(headless::glPrimitives().size(), 1u);
        drawn.push_back(headless::glPrimitives()[0].vertices);
        headless::captureGeometry(false);
    }
    EXPECT_EQ(drawn[0].size(), 36u);
    EXPECT_EQ(drawn[1], drawn[0]);
    EXPECT_EQ(drawn[2], drawn[0]);
}

TEST_F(CsgObject, WithoutBufferSupportBufferModeDrawsNothing) {
    headless::setGlExtensions("GL_ARB_multitexture");
    directory.writeSolid("box", boxData({0, 0, 0}, {1, 2, 3}));
    csgObject solid;
    ASSERT_TRUE(solid.load("./csg/box"));
    solid.rebuildArrays();
    theModuleManager->getRenderer()->renderMode = renderVertexBuffer;
    const auto calls = headless::glCalls("glDrawArrays") + headless::glCalls("glBegin");
    solid.draw();
    EXPECT_EQ(headless::glCalls("glDrawArrays") + headless::glCalls("glBegin"), calls);
    EXPECT_EQ(headless::glCalls("glGenBuffersARB"), 0u);
}

TEST_F(CsgObject, BuffersAreReplacedAndReleased) {
    directory.writeSolid("land", boxData({0, 0, 0}, {10, 10, 10}));
    directory.writeSolid("ball", sphereData(1, 2.0));
    {
        csgObject land;
        ASSERT_TRUE(land.load("./csg/land"));
        land.rebuildArrays();
        EXPECT_EQ(headless::glState().buffers.size(), 3u);
        csgObject ball;
        ASSERT_TRUE(ball.load("./csg/ball"));
        ball.translate(5.0, 5.0, 5.0);
        land.subtract(ball);
        ASSERT_EQ(headless::glState().buffers.size(), 3u);
        EXPECT_EQ(headless::glState().buffers.begin()->second.size(), 24u * 3u * (12u + 80u));
    }
    EXPECT_TRUE(headless::glState().buffers.empty());
}

TEST_F(CsgObject, MoversMeetTheSameTrianglesAsInAFullSearch) {
    directory.writeSolid("land", islandData(14, 70.0, 9));
    directory.writeSolid("ball", sphereData(1, 6.0));
    csgObject land;
    ASSERT_TRUE(land.load("./csg/land"));
    std::mt19937 random(30);
    std::uniform_real_distribution<float> place(-30.0f, 30.0f);
    for (int i = 0; i < 12; ++i) {
        csgObject ball;
        ASSERT_TRUE(ball.load("./csg/ball"));
        ball.translate(static_cast<double>(place(random)), 12.0, static_cast<double>(place(random)));
        land.subtract(ball);
    }
    std::uniform_real_distribution<float> step(-3.0f, 3.0f);
    int contacts = 0;
    for (int i = 0; i < 4000; ++i) {
        CollisionPacket packet;
        packet.radius = i % 2 == 0 ? Vector3(1.0f, 1.0f, 1.0f) : Vector3(1.5f, 2.5f, 0.7f);
        packet.basePoint = Vector3(place(random), 12.0f + 0.3f * place(random), place(random)) / packet.radius;
        const float speed = i % 5 == 0 ? 10.0f : 1.0f;
        packet.velocity = Vector3(step(random), step(random), step(random)) * speed;
        packet.normalizedVelocity = packet.velocity;
        packet.normalizedVelocity.normalize();
        CollisionPacket plain = packet;
        land.collide(&packet);
        collideWithEveryFace(land, plain);
        ASSERT_EQ(packet.foundCollision, plain.foundCollision) << i;
        if (!plain.foundCollision)
            continue;
        ++contacts;
        ASSERT_EQ(packet.nearestDistance, plain.nearestDistance) << i;
        ASSERT_EQ(packet.intersectionPoint, plain.intersectionPoint) << i;
    }
    EXPECT_GT(contacts, 800);
    EXPECT_LT(contacts, 3900);
}
