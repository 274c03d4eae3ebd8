// What the shipped models and the font look like, as far as play depends on it.

#include "core/team.h"
#include "game/collision_detection.h"
#include "game/collision_packet.h"
#include "game/rocket.h"
#include "game/worm.h"
#include "render/milkshape_model.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <set>

namespace {

/// Corners as they are drawn in the model's present pose, three a triangle, in model space.
std::vector<Vector3> drawnCorners(const MilkShapeModel& model) {
    std::vector<Vector3> corners;
    for (const ModelTriangle& triangle : model.getTriangles()) {
        for (const std::uint32_t index : triangle.vertexIndices) {
            const ModelVertex& vertex = model.getVertices()[index];
            corners.push_back(
                vertex.boneId < 0
                    ? vertex.position
                    : model.getJoints()[static_cast<std::size_t>(vertex.boneId)].final.transform(vertex.position));
        }
    }
    return corners;
}

/// Positive when the triangles, thus turned, show their outsides.
float volume(const std::vector<Vector3>& corners, const Matrix& turn) {
    float sixfold = 0;
    for (std::size_t i = 0; i + 2 < corners.size(); i += 3) {
        const Vector3 a = turn.transform(corners[i]);
        sixfold += a.dot(turn.transform(corners[i + 1]).cross(turn.transform(corners[i + 2])));
    }
    return sixfold / 6;
}

class PictureData : public testing::Test {
protected:
    /// The worm's model in its first pose, or at the end of some milliseconds of a clip.
    static void play(MilkShapeModel& model, const TestServices& services, const char* clip, unsigned milliseconds) {
        ASSERT_TRUE(model.load("wurm"));
        model.update();
        model.setAnimation(clip);
        services.tick(milliseconds);
        model.update();
    }

    ShippedData data;
    TestServices services;
};

TEST_F(PictureData, ModelsShowTheirOutsides) {
    for (const char* const name : {"airstrike", "bazooka", "beamer", "dynamite", "dynamiteprojectile", "shotgun"}) {
        MilkShapeModel model(name);
        ASSERT_TRUE(model.load(name));
        EXPECT_GT(volume(drawnCorners(model), Matrix()), 0.2f) << name;
    }
    // In flight the rocket's matrix mirrors.
    auto* const rocket = new Rocket(Vector3(0, 50, 0), Vector3(3, 2, 1), nullptr);
    services.frame(10);
    MilkShapeModel model("rocket");
    ASSERT_TRUE(model.load("rocket"));
    EXPECT_GT(volume(drawnCorners(model), rocket->getRotationMatrix()), 0.2f);
}

TEST_F(PictureData, AJumpLastsItsFlightAndEndsAsIdleBegins) {
    MilkShapeModel jump("jump");
    play(jump, services, "jump", 1995);
    EXPECT_EQ(jump.getCurrentAnimation(), "jump");
    const std::vector<Vector3> last = drawnCorners(jump);
    services.tick(5);
    jump.update();
    EXPECT_EQ(jump.getCurrentAnimation(), "idle");
    const std::vector<Vector3> first = drawnCorners(jump);
    float furthest = 0;
    for (std::size_t i = 0; i < first.size(); ++i)
        furthest = std::max(furthest, (first[i] - last[i]).length());
    EXPECT_LT(furthest, 0.05f);
}

/// The cells of a grid that a model covers for an eye on the x axis (across = z) or on the z axis.
class Silhouette {
public:
    static constexpr float cell = 0.1f;

    Silhouette(const std::vector<Vector3>& corners, float Vector3::*across) {
        for (std::size_t i = 0; i + 2 < corners.size(); i += 3)
            add({corners[i].*across, corners[i].y, 0}, {corners[i + 1].*across, corners[i + 1].y, 0},
                {corners[i + 2].*across, corners[i + 2].y, 0});
    }

    std::size_t size() const { return cells.size(); }
    /// Middles of the cells above a height, from the lowest row to the highest: (across, height).
    std::vector<std::pair<float, float>> above(float height) const {
        std::vector<std::pair<float, float>> points;
        for (const auto& [row, column] : cells)
            if (static_cast<float>(row) * cell >= height)
                points.emplace_back(static_cast<float>(column) * cell, static_cast<float>(row) * cell);
        return points;
    }

private:
    void add(const Vector3& a, const Vector3& b, const Vector3& c) {
        const auto first = [](float x) { return static_cast<int>(std::ceil(x / cell)); };
        for (int row = first(std::min({a.y, b.y, c.y})); row < first(std::max({a.y, b.y, c.y})); ++row)
            for (int column = first(std::min({a.x, b.x, c.x})); column < first(std::max({a.x, b.x, c.x})); ++column)
                if (pointInTriangle({static_cast<float>(column) * cell, static_cast<float>(row) * cell, 0}, a, b, c))
                    cells.emplace(row, column);
    }

    std::set<std::pair<int, int>> cells;
};

TEST_F(PictureData, TheWormThatOneSeesIsTheWormThatOneHits) {
    constexpr std::size_t pellets = 21;
    BoundingBox nowhere;
    Team team{"team", &nowhere, 1, 1, 1, {}, 0};
    auto* const worm = new Worm("worm", &team);
    SceneNode* const root = theModuleManager->getSceneRoot();
    root->addChild(worm);
    worm->setPosition(Vector3(10, 20, 30));
    services.frame(10);
    const Vector3 middle = worm->getWorldPosition();
    const std::vector<Vector3> corners = drawnCorners(worm->getModel());
    for (float Vector3::*const across : {&Vector3::x, &Vector3::z}) {
        const Silhouette silhouette(corners, across);
        // Lower down there is the tail that it stands on.
        const auto bulk = silhouette.above(-2.5f);
        ASSERT_GE(bulk.size(), silhouette.size() * 7 / 10);
        std::size_t hits = 0;
        for (std::size_t i = 0; i < pellets; ++i) {
            const auto [aside, height] = bulk[(2 * i + 1) * bulk.size() / (2 * pellets)];
            Vector3 offset(0, height, 0);
            offset.*across = aside;
            Vector3 flight(0, 0, 0);
            flight.*(across == &Vector3::x ? &Vector3::z : &Vector3::x) = -60.0f;
            CollisionPacket pellet;
            pellet.radius = Vector3(1, 1, 1);
            pellet.worldPosition = middle + offset - flight * 0.5f;
            pellet.worldVelocity = flight;
            theModuleManager->getCollisionDetection()->moveToContact(&pellet, root);
            hits += pellet.foundCollision ? 1 : 0;
        }
        EXPECT_GE(hits, 17u) << (across == &Vector3::x ? "from the front" : "from the side");
    }
}

TEST(FontData, GlyphsStandInTheHalfOfTheirCellsThatTextShows) {
    const ShippedData data;
    std::ifstream file("textures/font.tga", std::ios::binary);
    const std::string bytes{std::istreambuf_iterator<char>(file), {}};
    constexpr int side = 1024;
    constexpr int cell = side / 16;
    ASSERT_EQ(bytes.size(), 18u + 4u * side * side);
    int covered = 0;
    double inkSum = 0;
    double momentSum = 0;
    for (int code = '!'; code <= '~'; ++code) {
        for (int y = 0; y < cell; ++y) {
            for (int x = 0; x < cell; ++x) {
                const auto pixel =
                    static_cast<std::size_t>((side - 1 - (code / 16 * cell + y)) * side + code % 16 * cell + x);
                const double ink = static_cast<unsigned char>(bytes[18 + 4 * pixel]) / 255.0;
                covered += x >= cell / 2 + 2 && ink >= 0.5 ? 1 : 0;
                inkSum += ink;
                momentSum += ink * (x + 0.5);
            }
        }
    }
    EXPECT_EQ(covered, 0) << "pixels lie more than a rim deep under the next quad";
    EXPECT_NEAR(momentSum / inkSum, cell / 4.0, 4.0) << "text lies aside of where its length puts it";
}

} // namespace
