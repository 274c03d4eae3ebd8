#include "csg/land/csg_object.h"

#include "core/base/log.h"
#include "game/collision/collision_detection.h"
#include "game/collision/collision_packet.h"
#include "render/device/renderer.h"
#include "support/play.h"
#include "support/solids.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <numbers>
#include <random>
#include <set>
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

/// What one draw shows, and the normals that go with the corners.
struct Drawn {
    std::vector<headless::GlPrimitive> parts;
    std::vector<double> normals;
};

Drawn drawn(csgObject& solid, RenderMode mode) {
    theModuleManager->getRenderer()->renderMode = mode;
    headless::recordGl(true);
    Drawn result{captured([&solid] { solid.draw(); }), {}};
    for (const headless::GlRecord& record : headless::glRecords()) {
        if (record.name == "glNormal3d")
            result.normals.insert(result.normals.end(), record.arguments.begin(), record.arguments.end());
    }
    headless::recordGl(false);
    if (result.parts.empty() || mode == RenderMode::immediate)
        return result;
    const headless::GlState& state = headless::glState();
    const headless::GlClientArray& array = state.normalArray;
    result.normals.resize(9 * solid.countFaces());
    const void* const source = array.buffer != 0 ? state.buffers.at(array.buffer).data() : array.pointer;
    std::memcpy(result.normals.data(), source, result.normals.size() * sizeof(double));
    return result;
}

} // namespace

TEST_F(CsgObject, LoadsOrIsEmptyAndSaysWhy) {
    directory.write("csg/place.csg/file", "");
    directory.write("csg/bad.csg", "1 2 0 0 0 0 0 1 1");
    directory.write("csg/none.csg", "0");
    directory.writeSolid("box", boxData({0, 0, 0}, {1, 2, 3}));
    const std::array<std::pair<std::string, std::string>, 4> cases{
        {{"missing", " csgObject: Could not open csg file './csg/missing.csg' \n"},
         {"place", " csgObject: Could not open csg file './csg/place.csg' \n"},
         {"bad", " csgObject: Bad csg file './csg/bad.csg': line 1, part 0: vertex 1: z is missing \n"},
         {"none", ""}}};
    for (const auto& [name, log] : cases) {
        csgObject solid;
        ASSERT_TRUE(solid.load("./csg/box"));
        logged.clear();
        EXPECT_EQ(solid.load("./csg/" + name), log.empty()) << name;
        EXPECT_EQ(logged, log);
        expectEmpty(solid);
        solid.translate(1.0, 2.0, 3.0);
        solid.rotateX(1.0);
        solid.scale(2.0, 3.0, 4.0);
        expectEmpty(solid);

        csgObject box;
        ASSERT_TRUE(box.load("./csg/box"));
        const auto before = hashOf(box);
        box.subtract(solid);
        solid.subtract(box);
        EXPECT_EQ(hashOf(box), before);
        expectEmpty(solid);
    }
}

TEST_F(CsgObject, LocalBoxFollowsThePlacing) {
    directory.writeSolid("box", boxData({0, 0, 0}, {1, 2, 3}));
    csgObject solid;
    ASSERT_TRUE(solid.load("./csg/box"));
    const auto expectBox = [&](const Vector3& min, const Vector3& max) {
        EXPECT_LT((solid.getLocalBounds().min - min).length(), 1e-5f) << min.x << ' ' << min.y << ' ' << min.z;
        EXPECT_LT((solid.getLocalBounds().max - max).length(), 1e-5f) << max.x << ' ' << max.y << ' ' << max.z;
        EXPECT_EQ(static_cast<float>(solid.getBounds()->max.y), solid.getLocalBounds().max.y);
    };
    constexpr double quarter = std::numbers::pi / 2.0;
    expectBox({0, 0, 0}, {1, 2, 3});
    solid.scale(2.0, 3.0, 0.5);
    expectBox({0, 0, 0}, {2, 6, 1.5f});
    solid.translate(1.0, -2.0, 4.0);
    expectBox({1, -2, 4}, {3, 4, 5.5f});
    solid.rotateX(quarter);
    expectBox({1, -5.5f, -2}, {3, -4, 4});
    solid.rotateY(quarter);
    expectBox({-2, -5.5f, -3}, {4, -4, -1});
    solid.rotateZ(quarter);
    expectBox({4, -2, -3}, {5.5f, 4, -1});
}

TEST_F(CsgObject, ExtensionsAreWholeWords) {
    headless::setGlExtensions("GL_ARB_vertex_buffer_object_extra GL_EXT_a GL_ARB_vertex_buffer");
    for (const char* const whole : {"GL_ARB_vertex_buffer", "GL_EXT_a"})
        EXPECT_TRUE(csgObject::hasExtension(whole)) << whole;
    for (const char* const none : {"GL_ARB_vertex_buffer_object", "EXT_a", "", "GL_EXT_a GL_ARB_vertex_buffer"})
        EXPECT_FALSE(csgObject::hasExtension(none)) << none;
}

TEST_F(CsgObject, EveryModeDrawsTheSameAfterEachCut) {
    constexpr char black[] = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1, 0, 1, 0, 24, 0, 0, 0, 0};
    csgMeshData data;
    for (const char* const name : {"rock", "none", "sand", "moss"}) {
        const csgVector corner{10.0 * static_cast<double>(data.parts.size()), 0, 0};
        data.parts.push_back(boxData(corner, corner + csgVector{4, 5, 6}).parts[0]);
        data.parts.back().texture = name;
        if (data.parts.size() != 2)
            directory.write("textures/" + std::string(name) + ".tga", std::string_view(black, sizeof black));
    }
    directory.writeSolid("four", data);
    directory.writeSolid("ball", sphereData(1, 3.0));
    {
        csgObject solid;
        ASSERT_TRUE(solid.load("./csg/four"));
        EXPECT_EQ(solid.getTextureNames(), (std::vector<std::string>{"rock", "none", "sand", "moss"}));
        EXPECT_EQ(solid.getTextures()[1], nullptr);
        for (const double x : {-20.0, 12.0, 21.5}) {
            csgObject ball;
            ASSERT_TRUE(ball.load("./csg/ball"));
            ball.translate(x, 4.0, 2.0);
            logged.clear();
            solid.subtract(ball);
            EXPECT_EQ(logged,
                      "Before split!!!!!!!!!!!!!!\nAfter first split!!!!!!!!!!!!!!\nAfter second split!!!!!!!!!!!!!!\n"
                      " csgObject: Needed time for CSG boolean Operation 0 \n");
            EXPECT_EQ(solid.getCarveStats().adopted > 0, x > 0.0);
            EXPECT_EQ(headless::glState().buffers.size(), 3u);
            const Drawn arrays = drawn(solid, RenderMode::vertexArray);
            const Drawn buffers = drawn(solid, RenderMode::vertexBuffer);
            solid.computeNormals();
            const Drawn plain = drawn(solid, RenderMode::immediate);
            ASSERT_EQ(plain.parts.size(), 4u);
            EXPECT_EQ(plain.parts[2].vertices.size(), 3 * solid.getParts()[2].size());
            EXPECT_EQ(std::set<GLuint>({plain.parts[0].texture, plain.parts[2].texture, plain.parts[3].texture}).size(),
                      3u);
            for (const Drawn* const other : {&arrays, &buffers}) {
                EXPECT_EQ(other->normals, plain.normals);
                ASSERT_EQ(other->parts.size(), 4u);
                for (std::size_t i = 0; i < 4; ++i) {
                    EXPECT_EQ(other->parts[i].texture, plain.parts[i].texture);
                    EXPECT_EQ(other->parts[i].vertices, plain.parts[i].vertices);
                    EXPECT_EQ(other->parts[i].coordinates, plain.parts[i].coordinates);
                }
            }
        }
    }
    EXPECT_TRUE(headless::glState().buffers.empty());
    EXPECT_EQ(headless::glState().arrayBuffer, 0u);
}

TEST_F(CsgObject, WithoutBufferSupportBufferModeDrawsNothing) {
    headless::setGlExtensions("GL_ARB_multitexture");
    directory.writeSolid("box", boxData({0, 0, 0}, {1, 2, 3}));
    csgObject solid;
    ASSERT_TRUE(solid.load("./csg/box"));
    solid.rebuildArrays();
    EXPECT_TRUE(drawn(solid, RenderMode::vertexBuffer).parts.empty());
    EXPECT_EQ(headless::glCalls("glGenBuffersARB"), 0u);
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
    CollisionDetection& service = *theModuleManager->getCollisionDetection();
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
        const auto scaled = [&](const csgVector& v) {
            return Vector3(static_cast<float>(v.x), static_cast<float>(v.y), static_cast<float>(v.z)) / packet.radius;
        };
        for (const auto& face : land.getParts()[0])
            service.checkTriangle(&plain, scaled(face->cornerPosition(0)), scaled(face->cornerPosition(1)),
                                  scaled(face->cornerPosition(2)));
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
