#pragma once

#include "vec3.h"

#include <array>
#include <string>
#include <vector>

// A skeletal model before it is written. Corners carry their own normal and texture coordinate; v counts from the first
// row of the texture file.

struct ModelPoint {
    Vec3 position;
    int bone = -1; ///< joint index, -1 for none
};

struct ModelCorner {
    int point;
    Vec3 normal;
    double u;
    double v;
};

struct ModelFace {
    std::array<ModelCorner, 3> corners; ///< counter-clockwise seen from the front
    int group;
};

struct ModelMaterial {
    std::string name;
    std::string textureFile;
    std::array<double, 3> ambient{1, 1, 1};
    std::array<double, 3> diffuse{1, 1, 1};
    std::array<double, 3> specular{0, 0, 0};
    std::array<double, 3> emissive{0, 0, 0};
    double shininess = 0;
};

struct ModelKey {
    double time; ///< seconds
    Vec3 value;
};

/// Keys are relative to the joint's rest: no rotation and no shift is the rest itself. Rests are never rotated.
struct ModelJoint {
    std::string name;
    std::string parent; ///< empty for none; a parent comes before its children
    Vec3 position;      ///< rest, relative to the parent
    std::vector<ModelKey> rotations;
    std::vector<ModelKey> shifts;
};

/// One group per material, with the same index.
struct Model {
    std::vector<ModelPoint> points;
    std::vector<ModelFace> faces;
    std::vector<ModelMaterial> materials;
    std::vector<ModelJoint> joints;
    double framesPerSecond = 24;
    int frameCount = 1;
};

/// Gives every corner the mean normal of the faces around its point that meet its own face at less than creaseDegrees.
/// Points at the same place count as one.
void smoothNormals(Model& model, double creaseDegrees);
