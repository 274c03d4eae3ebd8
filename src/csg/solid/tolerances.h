#pragma once

/// Distance within which positions are one, a point lies on a plane, and area (world units squared) up to which a face
/// is dropped. Larger: craters lose visible detail; smaller: the split cuts ever thinner slivers and runs away.
inline constexpr double csgPlaneTolerance = 1e-5;

/// Slack of everything that is computed rather than judged: boxes, lines, intersections, point-in-face and rays.
/// Larger: neighbouring faces both claim a ray; smaller: rounding lets a ray slip between them.
inline constexpr double csgGeometricTolerance = 1e-10;
