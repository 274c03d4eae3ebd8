#include "csg/solid/csg_predicates.h"

#include "csg/solid/csg_line.h"
#include "platform/crt_random.h"

#include <gtest/gtest.h>

#include <array>
#include <memory>

namespace {

/// A face with corners of its own.
class Triangle {
public:
    Triangle(const csgVector& a, const csgVector& b, const csgVector& c)
        : corners{csgVertex(a), csgVertex(b), csgVertex(c)},
          face(std::make_unique<csgFace>(corners[0], corners[1], corners[2])) {}
    csgFace& operator*() { return *face; }
    csgFace* operator->() { return face.get(); }

private:
    std::array<csgVertex, 3> corners;
    std::unique_ptr<csgFace> face;
};

csgBounds box(const csgVector& low, const csgVector& high) {
    csgBounds bounds(low);
    bounds.merge(high);
    return bounds;
}

} // namespace

TEST(CsgVertexAndFace, VerticesAreEqualWithinTheTolerance) {
    const csgVertex vertex({1.0, 2.0, 3.0});
    EXPECT_TRUE(vertex.equals(csgVertex({1.0000099, 1.9999901, 3.0000099})));
    for (const csgVector& apart : {csgVector{1.0000101, 2, 3}, {1, 1.9999899, 3}, {1, 2, 3.0000101}})
        EXPECT_FALSE(vertex.equals(csgVertex(apart)));
}

TEST(CsgVertexAndFace, NormalsFollowTheFacesByTheirAreas) {
    csgVertex shared({0, 0, 0});
    csgVertex x({4, 0, 0});
    csgVertex y({0, 3, 0});
    csgVertex z({0, 0, 1});
    const csgFace large(shared, x, y); // area 6, normal +z
    {
        csgFace small(shared, y, z); // area 1.5, normal +x
        shared.addFace(&small);
        EXPECT_EQ(shared.faces.size(), 2u);
        shared.computeNormal();
        EXPECT_NEAR(shared.normal.z / shared.normal.x, 4.0, 1e-12);
        EXPECT_NEAR(shared.normal.length(), 1.0, 1e-15);
        EXPECT_FALSE(shared.isNormalStale());
    }
    EXPECT_TRUE(shared.isNormalStale());
    shared.computeNormal();
    EXPECT_EQ(shared.normal, (csgVector{0, 0, 1}));
    EXPECT_TRUE(z.faces.empty());
    z.computeNormal();
    EXPECT_EQ(z.normal, csgVector{});
}

TEST(CsgVertexAndFace, EqualityIsCyclicAndInversionTurnsRound) {
    Triangle face({0, 0, 0}, {3, 0, 0}, {0, 3, 1});
    Triangle turned({3, 0, 0}, {0, 3, 1}, {0, 0, 0});
    EXPECT_TRUE(face->equals(*turned));
    const double distance = face->signedDistance({1.0, 2.0, 5.0});
    face->invert();
    EXPECT_FALSE(face->equals(*turned));
    EXPECT_DOUBLE_EQ(face->signedDistance({1.0, 2.0, 5.0}), -distance);
}

TEST(CsgPredicates, TouchingBoxesOverlap) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        for (const auto& [gap, met] : {std::pair(0.0, true), {9e-11, true}, {1.1e-10, false}}) {
            std::array<double, 3> low{-1, -2, -3};
            std::array<double, 3> high{2, 3, 4};
            low[axis] = 1 + gap;
            EXPECT_EQ(overlaps(box({0, 0, 0}, {1, 1, 1}), box({low[0], low[1], low[2]}, {high[0], high[1], high[2]})),
                      met);
            low[axis] = -2;
            high[axis] = -gap;
            EXPECT_EQ(overlaps(box({0, 0, 0}, {1, 1, 1}), box({low[0], low[1], low[2]}, {high[0], high[1], high[2]})),
                      met);
        }
    }
}

TEST(CsgPredicates, SignHasATolerance) {
    Triangle ground({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    for (const auto& [height, expected] : {std::pair(9.9e-6, 0), {1.01e-5, 1}, {-9.9e-6, 0}, {-1.01e-5, -1}})
        EXPECT_EQ(sign(*ground, {5, 7, height}), expected);
}

TEST(CsgPredicates, LinesThatNeverMeetGiveTheOrigin) {
    Triangle ground({0, 0, 2}, {1, 0, 2}, {0, 1, 2});
    Triangle roof({0, 0, 3}, {1, 0, 3}, {0, 1, 3});
    EXPECT_EQ(csgLine(*ground, *roof).point, csgVector{});
    EXPECT_EQ(csgLine({1, 2, 3}, {4, 5, 6}).intersect(csgLine({1, 2, 3}, {9, 8, 9})), csgVector{});
    EXPECT_EQ(csgLine({0, 0, 1}, {4, 5, 0}).intersectPlane(*ground), (csgVector{4, 5, 2}));
    EXPECT_EQ(csgLine({1, 0, 0}, {4, 5, 2}).intersectPlane(*ground), (csgVector{4, 5, 2})) << "a line in the plane";
    EXPECT_EQ(csgLine({1, 0, 0}, {4, 5, 0}).intersectPlane(*ground), csgVector{}) << "a line beside the plane";
}

TEST(CsgPredicates, PerturbationIsSmallAndTakesThreeNumbers) {
    crtSrand(5);
    const std::array<int, 3> drawn{crtRand(), crtRand(), crtRand()};
    crtSrand(5);
    csgLine line({0, 0, 1}, {0, 0, 0});
    line.perturbDirection();
    EXPECT_EQ(line.direction.x, drawn[0] * 9.999999747378752e-6 / 32767.0);
    EXPECT_EQ(line.direction.y, drawn[1] * 9.999999747378752e-6 / 32767.0);
    EXPECT_EQ(line.direction.z, 1.0 + drawn[2] * 9.999999747378752e-6 / 32767.0);
}

TEST(CsgPredicates, EdgesPassAPoint) {
    const auto test = [](double x, double y, const csgVector& to) {
        return testInPlane({x, y, 7}, {0, 0, 0}, to, csgCoordinatePlane::xy);
    };
    EXPECT_EQ(test(2, 1 - 1.1e-10, {4, 2, 0}), csgEdgePass::above);
    EXPECT_EQ(test(2, 1 - 9e-11, {4, 2, 0}), csgEdgePass::through);
    EXPECT_EQ(test(2, 1 + 9e-11, {4, 2, 0}), csgEdgePass::through);
    EXPECT_EQ(test(2, 1 + 1.1e-10, {4, 2, 0}), csgEdgePass::below);
    EXPECT_EQ(test(0, 0, {4, 2, 0}), csgEdgePass::through);
    EXPECT_EQ(test(4, 2, {4, 2, 0}), csgEdgePass::through);
    EXPECT_EQ(test(4.001, 2, {4, 2, 0}), csgEdgePass::beside);
    EXPECT_EQ(test(-0.001, 0, {4, 2, 0}), csgEdgePass::beside);
    EXPECT_EQ(test(0, 0, {0, 5, 0}), csgEdgePass::beside) << "upright edge";
}
