// What the shipped models and the font look like, as far as play depends on it.

#include "game/rocket.h"
#include "render/milkshape_model.h"
#include "support/test_data.h"
#include "support/test_services.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <iterator>
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
