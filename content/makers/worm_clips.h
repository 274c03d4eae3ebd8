#pragma once

#include "vec3.h"

#include <vector>

// How the worm moves. Times are frames; the clips' ranges are those of mesh/wurm.ani and must be kept in step with it.

inline constexpr double wormFramesPerSecond = 24;

/// First and last frame of a clip, both posed, and the frames between two keys.
struct WormClip {
    int first;
    int last;
    int step;
};
inline constexpr WormClip wormIdle{0, 96, 4};
inline constexpr WormClip wormWalk{110, 128, 1};
/// A jump on level ground takes two seconds.
inline constexpr WormClip wormJump{140, 188, 2};

/// Offset of one joint from its rest: angles about x, y, z in radians and a shift in world units.
struct JointPose {
    Vec3 angles;
    Vec3 shift;
};

/// Pose of every joint at a part f (0 to 1) of a clip. Joint 0 stands on the ground, joints 1 to spineJoints - 1 follow
/// upwards to the head, the last joint is the tail. Idle and walk end as they begin; jump ends as idle begins.
std::vector<JointPose> idlePose(double f, int spineJoints);
std::vector<JointPose> walkPose(double f, int spineJoints);
std::vector<JointPose> jumpPose(double f, int spineJoints);
