#include "worm_clips.h"

#include "exact_math.h"

#include <algorithm>

std::vector<JointPose> idlePose(double f, int spineJoints) {
    const double turn = 2 * pi * f;
    const double breath = sine(2 * turn);
    std::vector<JointPose> pose(static_cast<std::size_t>(spineJoints) + 1);
    for (int i = 1; i < spineJoints; ++i) {
        JointPose& joint = pose[static_cast<std::size_t>(i)];
        joint.shift.y = 0.035 * breath;
        joint.angles.x = 0.022 * sine(2 * turn + 0.7 * i);
        joint.angles.z = 0.03 * sine(turn + 0.5 * i);
    }
    // The head looks to one side, then to the other.
    JointPose& head = pose[static_cast<std::size_t>(spineJoints) - 1];
    head.angles.y = 0.3 * sine(turn) * sine(turn) * sine(turn);
    head.angles.z += 0.06 * sine(turn + 1);
    pose.back().angles.y = 0.25 * sine(2 * turn);
    return pose;
}

std::vector<JointPose> walkPose(double f, int spineJoints) {
    const double turn = 2 * pi * f;
    std::vector<JointPose> pose(static_cast<std::size_t>(spineJoints) + 1);
    // The foot hops after the body has stretched forward; the bend runs up the spine behind it.
    pose[0].shift = {0, 0.38 * std::max(0.0, sine(turn)), 0.30 * sine(turn - 1.2)};
    pose[0].angles.x = 0.12 + 0.16 * sine(turn + 0.9);
    for (int i = 1; i < spineJoints; ++i) {
        JointPose& joint = pose[static_cast<std::size_t>(i)];
        joint.angles.x = 0.17 * sine(turn - 0.75 * i);
        joint.shift.y = 0.10 * sine(turn + 2.2 - 0.25 * i);
        joint.angles.z = 0.03 * sine(turn + 0.4 * i);
    }
    pose[static_cast<std::size_t>(spineJoints) - 1].angles.x -= 0.14 + 0.10 * sine(turn + 0.5);
    pose.back().angles.x = -0.35 * std::max(0.0, sine(turn)) + 0.1;
    return pose;
}

std::vector<JointPose> jumpPose(double f, int spineJoints) {
    const double crouch = smoothStep(0, 0.05, f) * smoothStep(0.16, 0.06, f);
    const double stretch = smoothStep(0.08, 0.2, f) * smoothStep(0.66, 0.42, f);
    // Braced just before the ground is there, and upright again on it.
    const double landing = smoothStep(0.6, 0.86, f) * smoothStep(1, 0.9, f);
    // Idle takes over where this ends, and both must be the same there.
    std::vector<JointPose> pose = idlePose(0, spineJoints);
    for (int i = 1; i < spineJoints; ++i) {
        JointPose& joint = pose[static_cast<std::size_t>(i)];
        const double bow = i < spineJoints / 2 ? 0.3 : -0.28;
        joint.angles.x += bow * crouch + 0.5 * bow * landing - 0.03 * stretch;
        joint.shift.y += -0.22 * crouch + 0.2 * stretch - 0.12 * landing;
    }
    pose[0].angles.x += -0.25 * crouch - 0.1 * landing;
    pose[static_cast<std::size_t>(spineJoints) - 1].angles.x -= 0.25 * stretch;
    pose.back().angles.x += -0.5 * stretch + 0.2 * crouch;
    return pose;
}
