// Makes the worm: a skinned tube along a bent spine, with two big eyes. It looks along +z and stands upright on a
// curled tail that reaches down to the ground, 5 units below the origin. Shots meet a sphere of two units around the
// origin: head and bulk lie there, between -2.5 and 2.5, so that what one aims at is what one hits.

#include "exact_math.h"
#include "model_builder.h"
#include "ms3d_writer.h"
#include "worm_clips.h"

#include <algorithm>

namespace {

/// The spine from the tip of the tail to the crown, with the body's radius.
struct Knot {
    double y;
    double z;
    double radius;
};
constexpr Knot knots[] = {{-3.30, -2.25, 0.08}, {-3.85, -2.42, 0.30}, {-4.32, -2.05, 0.50}, {-4.42, -1.35, 0.62},
                          {-4.20, -0.55, 0.78}, {-3.65, 0.05, 0.92},  {-2.95, 0.23, 0.96},  {-2.15, 0.13, 1.14},
                          {-1.30, 0.04, 1.50},  {-0.35, 0.00, 1.74},  {0.60, -0.04, 1.74},  {1.38, -0.03, 1.46},
                          {1.96, 0.00, 0.98},   {2.24, 0.02, 0.0}};
constexpr int knotCount = static_cast<int>(std::size(knots));

/// Joints sit on knots 4 (the foot) to 9 (the head); one more carries the tail on knot 3.
constexpr int footKnot = 4;
constexpr int headKnot = 9;
constexpr int spineJoints = headKnot - footKnot + 1;
constexpr int headJoint = spineJoints - 1;
constexpr int tailJoint = spineJoints;

constexpr int ringCount = 30;
constexpr int ringSides = 16;
/// Part of the texture's height that the body covers.
constexpr double bodyTop = 0.75;

const Knot& knotAt(int i) {
    return knots[std::clamp(i, 0, knotCount - 1)];
}

double bend(double a, double b, double c, double d, double f) {
    return b + 0.5 * f * (c - a + f * (2 * a - 5 * b + 4 * c - d + f * (3 * (b - c) + d - a)));
}

/// Point of the spine at t knots from the tail, smooth through all knots.
Knot spineAt(double t) {
    const int i = std::min(static_cast<int>(t), knotCount - 2);
    const double f = t - i;
    const Knot& a = knotAt(i - 1);
    const Knot& b = knotAt(i);
    const Knot& c = knotAt(i + 1);
    const Knot& d = knotAt(i + 2);
    return {bend(a.y, b.y, c.y, d.y, f), bend(a.z, b.z, c.z, d.z, f),
            std::max(bend(a.radius, b.radius, c.radius, d.radius, f), 0.0)};
}

int jointAt(double t) {
    const int knot = static_cast<int>(t + 0.5);
    return knot < footKnot ? tailJoint : std::min(knot, headKnot) - footKnot;
}

void addBody(ModelBuilder& builder) {
    std::vector<std::vector<Vec3>> rings;
    std::vector<int> bones;
    for (int r = 0; r < ringCount; ++r) {
        // Rings crowd at the crown, where the radius falls quickly.
        const double f = static_cast<double>(r) / (ringCount - 1);
        const double t = (knotCount - 1) * (1 - (1 - f) * (1 - 0.35 * f * f * f) * 1.0);
        const Knot here = spineAt(t);
        const Knot before = spineAt(std::max(t - 0.05, 0.0));
        const Knot after = spineAt(std::min(t + 0.05, knotCount - 1.0));
        const Vec3 up = normalized({0, after.y - before.y, after.z - before.z});
        const Vec3 forward = cross({1, 0, 0}, up);
        const double radius = r == ringCount - 1 ? 0 : here.radius;
        std::vector<Vec3> ring;
        for (int s = 0; s < ringSides; ++s) {
            const double angle = 2 * pi * s / ringSides;
            ring.push_back(Vec3{0, here.y, here.z} + Vec3{1, 0, 0} * (radius * sine(angle)) +
                           forward * (radius * cosine(angle)));
        }
        rings.push_back(ring);
        bones.push_back(jointAt(t));
    }
    // u = 0.5 lies in front; the map must agree with where the rings really are along the spine.
    builder.addRings(
        rings,
        [](double f, double g) {
            const double along = 1 - (1 - f) * (1 - 0.35 * f * f * f);
            return std::pair(0.5 + g, bodyTop * along);
        },
        bones);
}

void addEye(ModelBuilder& builder, double side) {
    const Vec3 middle{side * 0.72, 0.82, 1.22};
    // The poles of the ball are along the gaze, a little crossed, so that the iris is round.
    Frame eye{middle, {}, {}, {}};
    eye.up = normalized({-side * 0.10, 0.02, 1});
    eye.right = normalized(cross({0, 1, 0}, eye.up));
    eye.forward = cross(eye.right, eye.up);
    builder.addBall(eye, {0.84, 0.78, 0.94}, 7, 14, [](double f, double g) {
        const double wide = 0.11 * sine(pi * f);
        return std::pair(0.125 + wide * sine(2 * pi * g), 0.875 - wide * cosine(2 * pi * g));
    });
    Frame lid{middle, {}, {}, {}};
    lid.up = normalized({side * 0.28, 1, -0.05});
    lid.right = normalized(cross(lid.up, {0, 0, 1}));
    lid.forward = cross(lid.right, lid.up);
    std::vector<std::pair<double, double>> profile;
    constexpr int steps = 5;
    for (int i = 0; i <= steps; ++i) {
        const double angle = 1.12 * (steps - i) / steps;
        profile.push_back({1.02 * cosine(angle), i == steps ? 0.0 : 0.96 * sine(angle)});
    }
    builder.addLathe(lid, profile, 14, [](double f, double g) { return std::pair(0.35 + 0.3 * g, 0.85 + 0.1 * f); });
}

/// Three hairs on the crown, each bent once.
void addTuft(ModelBuilder& builder) {
    const Vec3 root{0, 2.1, 0.05};
    for (int i = -1; i <= 1; ++i) {
        const Vec3 lean = normalized({0.45 * i, 1, 0.25});
        const Vec3 droop = normalized({0.9 * i + 0.12, 0.55, i == 0 ? -0.8 : 0.35});
        std::vector<std::vector<Vec3>> rings;
        const double radii[] = {0.16, 0.13, 0.08, 0.0};
        const Vec3 middles[] = {root, root + lean * 0.35, root + lean * 0.35 + droop * 0.28,
                                root + lean * 0.3 + droop * (i == 0 ? 0.72 : 0.55)};
        for (std::size_t r = 0; r < std::size(radii); ++r) {
            const Vec3 across = normalized(cross(lean, {0, 0, 1}));
            const Vec3 forward = cross(across, lean);
            std::vector<Vec3> ring;
            for (int s = 0; s < 6; ++s) {
                const double angle = 2 * pi * s / 6;
                ring.push_back(middles[r] + across * (radii[r] * sine(angle)) + forward * (radii[r] * cosine(angle)));
            }
            rings.push_back(ring);
        }
        builder.addRings(rings, [](double f, double g) { return std::pair(0.8 + 0.15 * g, 0.8 + 0.16 * f); });
    }
}

void addKeys(Model& model, const WormClip& clip, std::vector<JointPose> (*poseAt)(double, int)) {
    for (int frame = clip.first; frame <= clip.last; frame += clip.step) {
        const double part = static_cast<double>(frame - clip.first) / (clip.last - clip.first);
        const std::vector<JointPose> pose = poseAt(part, spineJoints);
        const double time = frame / wormFramesPerSecond;
        for (std::size_t j = 0; j < model.joints.size(); ++j) {
            model.joints[j].rotations.push_back({time, pose[j].angles});
            model.joints[j].shifts.push_back({time, pose[j].shift});
        }
    }
}

void addJoints(Model& model) {
    const auto place = [](int knot) { return Vec3{0, knots[knot].y, knots[knot].z}; };
    model.joints.push_back({"foot", "", place(footKnot), {}, {}});
    for (int knot = footKnot + 1; knot <= headKnot; ++knot) {
        const std::string name = knot == headKnot ? "head" : "spine" + std::to_string(knot - footKnot);
        model.joints.push_back({name, model.joints.back().name, place(knot) - place(knot - 1), {}, {}});
    }
    model.joints.push_back({"tail", "foot", place(footKnot - 1) - place(footKnot), {}, {}});
    addKeys(model, wormIdle, idlePose);
    addKeys(model, wormWalk, walkPose);
    addKeys(model, wormJump, jumpPose);
    model.framesPerSecond = wormFramesPerSecond;
    model.frameCount = wormJump.last;
}

} // namespace

/// Argument: the directory to write into.
int main(int argc, char** argv) {
    if (argc != 2)
        return 2;
    Model model;
    // The light stands high above, so upright flanks see little of it: the ambient part and a glow keep them readable.
    ModelMaterial skin;
    skin.name = "skin";
    skin.textureFile = "wurm.tga";
    skin.diffuse = {0.6, 0.6, 0.6};
    skin.specular = {0.25, 0.22, 0.22};
    skin.emissive = {0.08, 0.08, 0.08};
    skin.shininess = 24;
    ModelMaterial eyes = skin;
    eyes.name = "eyes";
    eyes.emissive = {0.25, 0.25, 0.25};
    eyes.specular = {0.8, 0.8, 0.8};
    eyes.shininess = 60;
    model.materials = {skin, eyes};
    addJoints(model);
    ModelBuilder builder(model);
    addBody(builder);
    builder.use(1, headJoint);
    addEye(builder, 1);
    addEye(builder, -1);
    builder.use(0, headJoint);
    addTuft(builder);
    smoothNormals(model, 75);
    return writeMs3d(std::filesystem::path(argv[1]) / "wurm.ms3d", model) ? 0 : 1;
}
