// What the shipped models and the font look like, as far as play depends on it.

#include "core/base/file_access.h"
#include "core/teams/team.h"
#include "game/armoury/armoury.h"
#include "game/armoury/rocket.h"
#include "game/collision/collision_detection.h"
#include "game/collision/collision_packet.h"
#include "game/play/worm.h"
#include "render/view/milkshape_model.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <string>
#include <vector>

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

class PictureData : public testing::Test {
protected:
    ShippedData data;
    TestServices services;

    static std::unique_ptr<MilkShapeModel> loaded(const std::string& name) {
        auto model = std::make_unique<MilkShapeModel>(name);
        EXPECT_TRUE(model->load(name)) << name;
        model->update();
        return model;
    }
    void advance(MilkShapeModel& model, unsigned milliseconds) const {
        services.tick(milliseconds);
        model.update();
    }
};

TEST_F(PictureData, ModelsShowTheirOutsides) {
    const auto expectOutside = [](const std::string& name, const Matrix& turn) {
        const std::vector<Vector3> corners = drawnCorners(*loaded(name));
        float sixfoldVolume = 0;
        for (std::size_t i = 0; i + 2 < corners.size(); i += 3) {
            const Vector3 normal = turn.transform(corners[i + 1]).cross(turn.transform(corners[i + 2]));
            sixfoldVolume += turn.transform(corners[i]).dot(normal);
        }
        EXPECT_GT(sixfoldVolume, 1.2f) << name;
    };
    for (const char* const name : {"airstrike", "bazooka", "beamer", "dynamite", "dynamiteprojectile", "shotgun"})
        expectOutside(name, Matrix());
    // In flight the rocket's matrix mirrors.
    auto* const rocket = new Rocket(Vector3(0, 50, 0), Vector3(3, 2, 1), nullptr);
    services.frame(10);
    expectOutside("rocket", rocket->getRotationMatrix());
}

TEST_F(PictureData, AJumpEndsAsIdleBeginsAndAWalkHopsAboveTheGround) {
    const auto worm = loaded("wurm");
    const auto lowest = [&worm] {
        float low = 0;
        for (const Vector3& corner : drawnCorners(*worm))
            low = std::min(low, corner.y);
        return low;
    };
    const float standing = lowest();
    worm->setAnimation("jump");
    advance(*worm, 1995);
    EXPECT_EQ(worm->getCurrentAnimation(), "jump");
    const std::vector<Vector3> last = drawnCorners(*worm);
    advance(*worm, 5);
    EXPECT_EQ(worm->getCurrentAnimation(), "idle");
    const std::vector<Vector3> first = drawnCorners(*worm);
    for (std::size_t i = 0; i < first.size(); ++i)
        EXPECT_LT((first[i] - last[i]).length(), 0.05f);
    worm->setAnimation("walk");
    float highest = 0;
    for (int i = 0; i < 40; ++i) {
        advance(*worm, 25);
        EXPECT_GT(lowest() - standing, -0.3f);
        highest = std::max(highest, lowest() - standing);
    }
    EXPECT_EQ(worm->getCurrentAnimation(), "walk");
    EXPECT_GT(highest, 0.2f);
}

TEST_F(PictureData, TheWormThatOneSeesIsTheWormThatOneHits) {
    BoundingBox nowhere;
    Team team{"team", &nowhere, 1, 1, 1, {}, 0, issueWeapons};
    auto* const worm = new Worm("worm", &team);
    SceneNode* const root = theModuleManager->getSceneRoot();
    root->addChild(worm);
    worm->setPosition(Vector3(10, 20, 30));
    services.frame(10);
    const std::vector<Vector3> corners = drawnCorners(worm->getModel());
    for (const Vector3& flight : {Vector3(0, 0, -60), Vector3(-60, 0, 0)}) {
        // Areas as that eye sees them.
        float whole = 0;
        float bulk = 0;
        float hit = 0;
        for (std::size_t i = 0; i + 2 < corners.size(); i += 3) {
            const Vector3 normal = (corners[i + 1] - corners[i]).cross(corners[i + 2] - corners[i]);
            const float area = std::fabs(normal.dot(flight));
            const Vector3 middle = (corners[i] + corners[i + 1] + corners[i + 2]) / 3;
            whole += area;
            // Lower down there is the tail that it stands on.
            if (middle.y < -2.5f)
                continue;
            bulk += area;
            CollisionPacket pellet;
            pellet.radius = Vector3(1, 1, 1);
            pellet.worldPosition = worm->getWorldPosition() + middle - flight * 0.5f;
            pellet.worldVelocity = flight;
            theModuleManager->getCollisionDetection()->moveToContact(&pellet, root);
            hit += pellet.foundCollision ? area : 0;
        }
        EXPECT_GE(bulk, 0.7f * whole) << flight.x;
        EXPECT_GE(hit, 0.75f * bulk) << flight.x;
    }
}

/// A texture file, channels from 0 to 1.
struct Picture {
    std::string bytes;
    std::size_t side = 0;
    std::size_t depth = 0;

    explicit Picture(const std::string& name) {
        EXPECT_TRUE(readWholeFile("textures/" + name + ".tga", bytes)) << name;
        side = static_cast<unsigned char>(bytes.at(12)) + 256U * static_cast<unsigned char>(bytes.at(13));
        depth = static_cast<unsigned char>(bytes.at(16)) / 8U;
        EXPECT_EQ(bytes.size(), 18 + side * side * depth) << name;
    }
    /// Channels are blue, green and red; rows count from the bottom.
    double at(std::size_t x, std::size_t y, std::size_t channel) const {
        return static_cast<unsigned char>(bytes.at(18 + (y * side + x) * depth + channel)) / 255.0;
    }
    double mean(std::size_t channel) const {
        double sum = 0;
        for (std::size_t i = 0; i < side * side; ++i)
            sum += at(i % side, i / side, channel);
        return sum / static_cast<double>(side * side);
    }
};

TEST_F(PictureData, TexturesHaveTheColoursOfWhatTheyShow) {
    for (const char* const warm : {"earth", "sand", "redstone", "brick", "planks", "wurm"})
        EXPECT_GT(Picture(warm).mean(2), 1.2 * Picture(warm).mean(0)) << warm;
    for (const char* const cold : {"sky", "water", "deep", "slate"})
        EXPECT_GT(Picture(cold).mean(0), 1.05 * Picture(cold).mean(2)) << cold;
    for (const char* const green : {"grass", "moss"})
        EXPECT_GT(Picture(green).mean(1), 1.1 * std::max(Picture(green).mean(0), Picture(green).mean(2))) << green;
}

TEST_F(PictureData, TheWormLooksOutOfItsPupils) {
    const auto worm = loaded("wurm");
    const Picture skin("wurm");
    const std::vector<Vector3> corners = drawnCorners(*worm);
    for (const float side : {-1.0f, 1.0f}) {
        float nearest = 0;
        double tone = 1;
        for (std::size_t i = 0; i < corners.size(); ++i) {
            const ModelTriangle& triangle = worm->getTriangles()[i / 3];
            const float s = triangle.s[i % 3];
            // The eyeballs wear the left quarter of the skin.
            if (s >= 0.25f || corners[i].x * side < 0.0f || corners[i].z < nearest)
                continue;
            nearest = corners[i].z;
            tone =
                skin.at(static_cast<std::size_t>(s * 512.0f), static_cast<std::size_t>(triangle.t[i % 3] * 512.0f), 2);
        }
        EXPECT_LT(tone, 0.15) << side;
    }
}

TEST_F(PictureData, GlyphsStandInTheHalfOfTheirCellsThatTextShows) {
    const Picture font("font");
    const std::size_t cell = font.side / 16;
    ASSERT_EQ(cell, 64u);
    int covered = 0;
    double inkSum = 0;
    double momentSum = 0;
    std::array<double, 128> height{}; // of the middle of the ink above the cell's lower edge
    for (std::size_t code = '!'; code <= '~'; ++code) {
        double own = 0;
        for (std::size_t i = 0; i < cell * cell; ++i) {
            const std::size_t x = i % cell;
            const std::size_t y = i / cell;
            const double ink = font.at(code % 16 * cell + x, font.side - (code / 16 + 1) * cell + y, 0);
            covered += x >= cell / 2 + 2 && ink >= 0.5 ? 1 : 0;
            own += ink;
            height.at(code) += ink * static_cast<double>(y);
            momentSum += ink * (static_cast<double>(x) + 0.5);
        }
        EXPECT_GT(own, 20.0) << code;
        height.at(code) /= own;
        inkSum += own;
    }
    EXPECT_TRUE(height['_'] < height['L'] - 9 && height['L'] < height['P'] - 4 && height['P'] < height['^'] - 4)
        << height['_'] << ' ' << height['L'] << ' ' << height['P'] << ' ' << height['^'];
    EXPECT_EQ(covered, 0) << "pixels lie more than a rim deep under the next quad";
    EXPECT_NEAR(momentSum / inkSum, 16.0, 4.0) << "text lies aside of where its length puts it";
}

} // namespace
