#include "render/matrix.h"

#include "csg/csg_vector.h"
#include "platform/headless/headless.h"
#include "render/quaternion.h"
#include "render/vector2.h"

#include <gtest/gtest.h>

#include <numbers>
#include <random>

namespace {

constexpr float pi = std::numbers::pi_v<float>;

void expectNear(const Vector3& actual, const Vector3& expected, float tolerance = 1e-5f) {
    EXPECT_NEAR(actual.x, expected.x, tolerance);
    EXPECT_NEAR(actual.y, expected.y, tolerance);
    EXPECT_NEAR(actual.z, expected.z, tolerance);
}

TEST(Vector3, NormalizeKeepsZeroAndScalesTheRest) {
    EXPECT_EQ(normalized(Vector3(0, 0, 0)), Vector3(0, 0, 0));
    expectNear(normalized(Vector3(0, 3, 4)), Vector3(0, 0.6f, 0.8f));
    Vector2 flat(0, 0);
    flat.normalize();
    EXPECT_EQ(flat, Vector2(0, 0));
}

TEST(Vector3, CrossFollowsTheRightHandAndComparisonIsExact) {
    EXPECT_EQ(Vector3(1, 0, 0).cross(Vector3(0, 1, 0)), Vector3(0, 0, 1));
    EXPECT_TRUE(Vector3(1, 2, 3) == Vector3(1, 2, 3));
    EXPECT_FALSE(Vector3(1, 2, 3) == Vector3(1, 2, 3.0000003f));
}

TEST(Matrix, RotationsTurnCounterClockwise) {
    Matrix m;
    m.rotationZ(pi / 2);
    expectNear(m.transform(Vector3(1, 0, 0)), Vector3(0, 1, 0));
    m.rotationX(pi / 2);
    expectNear(m.transform(Vector3(0, 1, 0)), Vector3(0, 0, 1));
    m.rotationY(pi / 2);
    expectNear(m.transform(Vector3(0, 0, 1)), Vector3(1, 0, 0));
}

TEST(Matrix, AProductAppliesItsRightSideFirst) {
    Matrix move;
    move.setTranslation(1, 2, 3);
    EXPECT_EQ(move.transform(Vector3(0, 0, 0)), Vector3(1, 2, 3));
    EXPECT_EQ(move.getTranslation(), Vector3(1, 2, 3));
    Matrix turn;
    turn.rotationZ(pi / 2);
    expectNear((move * turn).transform(Vector3(1, 0, 0)), Vector3(1, 3, 3));
    expectNear((turn * move).transform(Vector3(1, 0, 0)), Vector3(-2, 2, 3));
    Matrix self = turn;
    self *= self;
    expectNear(self.transform(Vector3(1, 0, 0)), Vector3(-1, 0, 0));
}

TEST(Matrix, DoublePointsKeepDoublePrecision) {
    Matrix move;
    move.setTranslation(1, 0, 0);
    const csgVector moved = move.transform(csgVector{1e-9, 2.0, 3.0});
    EXPECT_EQ(moved.x, 1.0 + 1e-9);
    EXPECT_EQ(moved.y, 2.0);
}

TEST(Matrix, RotationAboutAnAxisAgreesWithTheThreeSpecialOnes) {
    Matrix expected;
    expected.rotationY(0.7f);
    expectNear(rotationAbout(Vector3(0, 1, 0), 0.7f).transform(Vector3(1, 2, 3)), expected.transform(Vector3(1, 2, 3)));
    expected.rotationX(-1.1f);
    expectNear(rotationAbout(Vector3(1, 0, 0), -1.1f).transform(Vector3(1, 2, 3)),
               expected.transform(Vector3(1, 2, 3)));
}

TEST(Matrix, PrintShowsAColumnALine) {
    headless::reset();
    Matrix m;
    m.setTranslation(1.5f, 0, 0);
    m.print();
    ASSERT_EQ(headless::messageBoxes().size(), 1u);
    EXPECT_EQ(headless::messageBoxes()[0].caption, "I'm a Matrix");
    EXPECT_EQ(headless::messageBoxes()[0].text, "1.00, 0.00, 0.00, 0.00\n 0.00, 1.00, 0.00, 0.00\n "
                                                "0.00, 0.00, 1.00, 0.00\n 1.50, 0.00, 0.00, 1.00\n");
}

TEST(Quaternion, EulerAnglesGiveTheSameRotationEitherWay) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> angle(-3.0f, 3.0f);
    for (int i = 0; i < 200; ++i) {
        const Vector3 angles(angle(random), angle(random), angle(random));
        const Vector3 point(angle(random), angle(random), angle(random));
        expectNear(Quaternion::fromEuler(angles).toMatrix().transform(point), matrixFromEuler(angles).transform(point),
                   1e-4f);
    }
}

TEST(Quaternion, EulerAnglesTurnAboutXFirst) {
    Matrix x;
    x.rotationX(0.3f);
    Matrix y;
    y.rotationY(0.5f);
    Matrix z;
    z.rotationZ(-0.9f);
    expectNear((z * y * x).transform(Vector3(1, 2, 3)),
               matrixFromEuler(Vector3(0.3f, 0.5f, -0.9f)).transform(Vector3(1, 2, 3)));
}

TEST(Quaternion, SlerpRunsAlongTheArcAtEvenSpeed) {
    const Quaternion none = Quaternion::fromEuler(Vector3(0, 0, 0));
    const Quaternion quarter = Quaternion::fromEuler(Vector3(0, 0, pi / 2));
    const auto turned = [&](const Quaternion& from, const Quaternion& to, float f) {
        return slerp(from, to, f).toMatrix().transform(Vector3(1, 0, 0));
    };
    expectNear(turned(none, quarter, 0.0f), Vector3(1, 0, 0));
    expectNear(turned(none, quarter, 1.0f), Vector3(0, 1, 0));
    const float third = pi / 6;
    expectNear(turned(none, quarter, 1.0f / 3.0f), Vector3(std::cos(third), std::sin(third), 0));
    // The same rotation with the opposite sign is reached by the same short way.
    expectNear(turned(none, quarter * -1.0f, 1.0f / 3.0f), Vector3(std::cos(third), std::sin(third), 0));
}

} // namespace
