#include "csg/csg_predicates.h"

#include "csg/csg_line.h"
#include "csg/csg_segment.h"
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

/// The segment that the plane of z = 0 cuts out of a triangle.
csgSegment segmentInGround(Triangle& triangle, Triangle& ground, const csgLine& line) {
    const auto signs = cornerSigns(*triangle, *ground);
    return csgSegment(line, *triangle, signs[0], signs[1], signs[2]);
}

} // namespace

TEST(CsgVertexAndFace, VerticesAreEqualWithinTheTolerance) {
    const csgVertex vertex({1.0, 2.0, 3.0});
    EXPECT_TRUE(vertex.equals(csgVertex({1.000005, 2.000005, 2.999995})));
    EXPECT_FALSE(vertex.equals(csgVertex({1.0, 2.00002, 3.0})));
}

TEST(CsgVertexAndFace, FacesEnterAndLeaveTheirCorners) {
    csgVertex a({0, 0, 0});
    csgVertex b({2, 0, 0});
    csgVertex c({0, 2, 0});
    {
        csgFace face(a, b, c);
        EXPECT_EQ(a.faces, std::vector<csgFace*>{&face});
        a.addFace(&face);
        EXPECT_EQ(a.faces.size(), 1u);
        a.computeNormal();
        EXPECT_EQ(a.normal, (csgVector{0, 0, 1}));
    }
    EXPECT_TRUE(c.faces.empty());
    EXPECT_TRUE(a.isNormalStale());
    a.computeNormal();
    EXPECT_EQ(a.normal, csgVector{});
}

TEST(CsgVertexAndFace, NormalsAreWeightedByArea) {
    csgVertex shared({0, 0, 0});
    csgVertex x({4, 0, 0});
    csgVertex y({0, 4, 0});
    csgVertex z({0, 0, 1});
    const csgFace large(shared, x, y); // area 8, normal +z
    const csgFace small(shared, y, z); // area 2, normal +x
    shared.computeNormal();
    EXPECT_NEAR(shared.normal.z / shared.normal.x, 4.0, 1e-12);
    EXPECT_NEAR(shared.normal.length(), 1.0, 1e-15);
}

TEST(CsgVertexAndFace, EqualityIsCyclicAndInversionTurnsRound) {
    Triangle face({0, 0, 0}, {3, 0, 0}, {0, 3, 1});
    Triangle turned({3, 0, 0}, {0, 3, 1}, {0, 0, 0});
    Triangle inverse({0, 0, 0}, {0, 3, 1}, {3, 0, 0});
    EXPECT_TRUE(face->equals(*turned));
    EXPECT_FALSE(face->equals(*inverse));
    face->tex = {csgTexCoord{0, 0}, csgTexCoord{1, 0}, csgTexCoord{0, 1}};
    const csgVector point{1.0, 1.0, 5.0};
    const double distance = face->signedDistance(point);
    face->invert();
    EXPECT_TRUE(face->equals(*inverse));
    EXPECT_EQ(face->tex[1], (csgTexCoord{0, 1}));
    EXPECT_DOUBLE_EQ(face->signedDistance(point), -distance);
}

TEST(CsgPredicates, TouchingBoxesOverlap) {
    EXPECT_TRUE(overlaps(box({0, 0, 0}, {1, 1, 1}), box({1, 1, 1}, {2, 2, 2})));
    EXPECT_TRUE(overlaps(box({0, 0, 0}, {1, 1, 1}), box({1 + 5e-11, 0, 0}, {2, 2, 2})));
    EXPECT_FALSE(overlaps(box({0, 0, 0}, {1, 1, 1}), box({1.000001, 1, 1}, {2, 2, 2})));
    EXPECT_FALSE(overlaps(box({0, 0, 0}, {1, 1, 1}), box({0, -2, 0}, {1, -0.000001, 1})));
}

TEST(CsgPredicates, SignHasATolerance) {
    Triangle ground({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    EXPECT_EQ(sign(*ground, {5, 5, 0.000009}), 0);
    EXPECT_EQ(sign(*ground, {5, 5, 0.00002}), 1);
    EXPECT_EQ(sign(*ground, {5, 5, -0.00002}), -1);
}

TEST(CsgPredicates, LineOfTwoPlanesLiesInBoth) {
    const std::array<std::array<csgVector, 3>, 4> triangles{{{{{0, 0, 1}, {1, 0, 1}, {0, 1, 1}}},
                                                             {{{2, 0, 0}, {2, 1, 0}, {2, 0, 1}}},
                                                             {{{0, 3, 0}, {0, 3, 1}, {1, 3, 0}}},
                                                             {{{1, 0, 0}, {0, 2, 0}, {0, 0, 3}}}}};
    for (std::size_t i = 0; i < 4; ++i) {
        for (std::size_t j = 0; j < 4; ++j) {
            if (i == j)
                continue;
            Triangle f(triangles[i][0], triangles[i][1], triangles[i][2]);
            Triangle g(triangles[j][0], triangles[j][1], triangles[j][2]);
            const csgLine line(*f, *g);
            for (const double t : {-3.0, 0.0, 8.0}) {
                EXPECT_NEAR(f->signedDistance(line.point + line.direction * t), 0.0, 1e-12);
                EXPECT_NEAR(g->signedDistance(line.point + line.direction * t), 0.0, 1e-12);
            }
        }
    }
    Triangle ground({0, 0, 0}, {1, 0, 0}, {0, 1, 0});
    Triangle roof({0, 0, 2}, {1, 0, 2}, {0, 1, 2});
    EXPECT_EQ(csgLine(*ground, *roof).point, csgVector{});
}

TEST(CsgPredicates, LinesMeetInWhicheverPlaneTellsThemApart) {
    const csgVector meeting{1.0, 2.0, 3.0};
    const std::array<std::pair<csgVector, csgVector>, 4> directions{
        {{{1, 0, 0}, {0, 1, 0}}, {{1, 0, 0}, {0, 0, 1}}, {{0, 1, 0}, {0, 0, -1}}, {{1, 2, 3}, {-1, 1, 1}}}};
    for (const auto& [d, e] : directions) {
        const csgLine line(d, meeting + d * 2.5);
        EXPECT_LT((line.intersect(csgLine(e, meeting + e * -1.5)) - meeting).length(), 1e-12);
        EXPECT_EQ(line.intersect(csgLine(d, {9, 9, 9})), csgVector{});
    }
}

TEST(CsgPredicates, LineAndPlane) {
    Triangle ground({0, 0, 2}, {1, 0, 2}, {0, 1, 2});
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

TEST(CsgPredicates, SegmentsOfAFace) {
    Triangle ground({0, -9, 0}, {0, 9, 0}, {0, 0, 9}); // the plane x = 0
    const csgLine line({0, 1, 0}, {0, 0, 0});
    Triangle crossing({0, 0, 0}, {-1, 2, 0}, {1, 2, 0});
    const csgSegment through = segmentInGround(crossing, ground, line);
    EXPECT_EQ(through.start.type, csgAtCorner);
    EXPECT_EQ(through.middleType, csgInFace);
    EXPECT_EQ(through.end.type, csgOnEdge);
    EXPECT_EQ(through.end.position, (csgVector{0, 2, 0}));
    EXPECT_EQ(through.end.vertex, crossing->corners[1]);

    Triangle touching({0, 1, 0}, {2, 0, 0}, {2, 2, 0});
    const csgSegment point = segmentInGround(touching, ground, line);
    EXPECT_EQ(point.endCount, 2);
    EXPECT_EQ(point.middleType, csgAtCorner);
    EXPECT_EQ(point.start.vertex, point.end.vertex);

    Triangle lying({0, 3, 0}, {0, 1, 0}, {2, 2, 0});
    const csgSegment edge = segmentInGround(lying, ground, line);
    EXPECT_EQ(edge.middleType, csgOnEdge);
    EXPECT_EQ(edge.start.vertex, lying->corners[1]) << "ends are in order along the line";
    EXPECT_DOUBLE_EQ(edge.end.distance, 3.0);

    EXPECT_TRUE(overlaps(through, edge));
    Triangle beyond({0, 2, 0}, {0, 4, 0}, {2, 3, 0});
    EXPECT_FALSE(overlaps(through, segmentInGround(beyond, ground, line))) << "they meet in one point only";
}

TEST(CsgPredicates, EdgesPassAPoint) {
    const csgVector a{0, 0, 0};
    const csgVector b{4, 2, 0};
    const auto test = [&](double x, double y) { return testInPlane({x, y, 7}, a, b, csgCoordinatePlane::xy); };
    EXPECT_EQ(test(2, 0.5), csgEdgeAbove);
    EXPECT_EQ(test(2, 1.5), csgEdgeBelow);
    EXPECT_EQ(test(2, 1.0), csgEdgeThrough);
    EXPECT_EQ(test(0, 0), csgEdgeThrough);
    EXPECT_EQ(test(4.001, 2), csgEdgeBeside);
    EXPECT_EQ(testInPlane({0, 0, 0}, a, {0, 5, 0}, csgCoordinatePlane::xy), csgEdgeBeside) << "upright edge";
}

TEST(CsgPredicates, FacesContainTheirPointsInEveryOrientation) {
    const std::array<csgVector, 3> corners{csgVector{0, 0, 0}, csgVector{4, 0, 1}, csgVector{1, 3, 2}};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        const auto turn = [&](const csgVector& p) {
            const std::array<double, 3> c{p.x, p.y, p.z};
            return csgVector{c[axis], c[(axis + 1) % 3], c[(axis + 2) % 3]};
        };
        for (const double flat : {1.0, 0.0}) { // sloping, and in a coordinate plane
            const auto place = [&](double u, double v) {
                csgVector p = corners[0] + corners[1] * u + corners[2] * v;
                p.z *= flat;
                return turn(p);
            };
            Triangle face(place(0, 0), place(1, 0), place(0, 1));
            EXPECT_TRUE(contains(*face, place(0.3, 0.3)));
            EXPECT_TRUE(contains(*face, place(0, 0)));
            EXPECT_TRUE(contains(*face, place(0, 0.5)));
            EXPECT_FALSE(contains(*face, place(0.6, 0.5)));
            EXPECT_FALSE(contains(*face, place(-0.1, 0.5)));
            EXPECT_FALSE(contains(*face, place(0.5, -0.01)));
        }
    }
}
