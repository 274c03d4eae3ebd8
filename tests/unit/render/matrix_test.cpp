#include "render/math/matrix.h"

#include "platform/headless/headless.h"
#include "render/math/quaternion.h"
#include "render/math/vector2.h"

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

TEST(Vector3, NormalizeKeepsZeroAndCrossFollowsTheRightHand) {
    EXPECT_EQ(normalized(Vector3(0, 0, 0)), Vector3(0, 0, 0));
    expectNear(normalized(Vector3(2, 3, 6)), Vector3(2, 3, 6) / 7);
    Vector2 flat(0, 0);
    flat.normalize();
    EXPECT_EQ(flat, Vector2(0, 0));
    EXPECT_EQ(Vector3(1, 2, 3).cross(Vector3(4, 6, 5)), Vector3(-8, 7, -2));
    EXPECT_FALSE(Vector3(1, 2, 3) == Vector3(1, 2, 3.0000003f));
}

TEST(Matrix, RotationsTurnCounterClockwiseAndAProductAppliesItsRightSideFirst) {
    Matrix move;
    move.setTranslation(1, 2, 3);
    EXPECT_EQ(move.getTranslation(), Vector3(1, 2, 3));
    Matrix turn;
    turn.rotationX(pi / 2);
    expectNear(turn.transform(Vector3(1, 2, 3)), Vector3(1, -3, 2));
    expectNear(rotationAbout(Vector3(1, 0, 0), -1.1f).transform(Vector3(1, 2, 3)),
               rotationAbout(Vector3(-1, 0, 0), 1.1f).transform(Vector3(1, 2, 3)));
    expectNear(rotationAbout(Vector3(1, 0, 0), pi / 2).transform(Vector3(1, 2, 3)), Vector3(1, -3, 2));
    turn.rotationY(pi / 2);
    expectNear(turn.transform(Vector3(1, 2, 3)), Vector3(3, 2, -1));
    expectNear(rotationAbout(Vector3(0, 1, 0), pi / 2).transform(Vector3(1, 2, 3)), Vector3(3, 2, -1));
    // A third of a turn about the diagonal exchanges the axes.
    expectNear(rotationAbout(normalized(Vector3(1, 1, 1)), pi * 2 / 3).transform(Vector3(1, 2, 3)), Vector3(3, 1, 2));
    turn.rotationZ(pi / 2);
    expectNear((move * turn).transform(Vector3(1, 5, 7)), Vector3(-4, 3, 10));
    expectNear((turn * move).transform(Vector3(1, 5, 7)), Vector3(-7, 2, 10));
    turn *= turn;
    expectNear(turn.transform(Vector3(1, 5, 7)), Vector3(-1, -5, 7));
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

TEST(Quaternion, EulerAnglesTurnAboutXFirstEitherWay) {
    std::mt19937 random(3);
    std::uniform_real_distribution<float> angle(-3.0f, 3.0f);
    for (int i = 0; i < 200; ++i) {
        const Vector3 angles(angle(random), angle(random), angle(random));
        const Vector3 point(angle(random), angle(random), angle(random));
        const Matrix turned = rotationAbout(Vector3(0, 0, 1), angles.z) * rotationAbout(Vector3(0, 1, 0), angles.y) *
                              rotationAbout(Vector3(1, 0, 0), angles.x);
        const Vector3 expected = turned.transform(point);
        expectNear(matrixFromEuler(angles).transform(point), expected);
        expectNear(Quaternion::fromEuler(angles).toMatrix().transform(point), expected, 1e-4f);
    }
}

TEST(Quaternion, SlerpRunsAlongTheShortArcAtEvenSpeed) {
    const Quaternion none = Quaternion::fromEuler(Vector3(0, 0, 0));
    const Quaternion quarter = Quaternion::fromEuler(Vector3(0, 0, pi / 2));
    for (const Quaternion& to : {quarter, quarter * -1.0f})
        for (const float f : {0.0f, 0.2f, 1.0f})
            expectNear(slerp(none, to, f).toMatrix().transform(Vector3(1, 0, 0)),
                       Vector3(std::cos(f * pi / 2), std::sin(f * pi / 2), 0));
}

} // namespace
