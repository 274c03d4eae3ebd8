#pragma once

// The records of an animated model as they are kept in memory after loading.

#include "render/math/matrix.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

class Texture;

struct ModelVertex {
    /// Index of the joint that moves the vertex, -1 for none.
    std::int8_t boneId = -1;
    /// In the space of its joint; in model space without one.
    Vector3 position{0.0f, 0.0f, 0.0f};
};

/// The three-element members hold one entry per corner.
struct ModelTriangle {
    std::array<Vector3, 3> normals;
    std::array<float, 3> s;
    /// 1 - the file's value.
    std::array<float, 3> t;
    std::array<std::uint32_t, 3> vertexIndices;
};

/// Triangles that share a material.
struct ModelGroup {
    /// -1 for none.
    std::int32_t materialIndex = -1;
    std::int32_t triangleCount = 0;
    std::vector<std::uint32_t> triangleIndices;
};

/// Colours are red, green, blue, alpha.
struct ModelMaterial {
    std::array<float, 4> ambient;
    std::array<float, 4> diffuse;
    std::array<float, 4> specular;
    std::array<float, 4> emissive;
    float shininess = 0.0f;
    /// Belongs to the texture manager; null for none.
    Texture* texture = nullptr;
    /// As the file names it: perhaps with a directory, with an extension.
    std::string textureFile;
};

struct ModelKeyframe {
    std::int32_t jointIndex = 0;
    /// Seconds.
    float time = 0.0f;
    /// Euler angles in radians, or a position; relative to the joint's bind pose.
    Vector3 value{0.0f, 0.0f, 0.0f};
};

struct ModelJoint {
    /// Bind pose relative to the parent: Euler angles in radians, and position.
    Vector3 rotation{0.0f, 0.0f, 0.0f};
    Vector3 position{0.0f, 0.0f, 0.0f};
    /// Bind pose in model space.
    Matrix absolute;
    /// Bind pose relative to the parent.
    Matrix relative;
    std::int32_t rotationKeyCount = 0;
    std::int32_t translationKeyCount = 0;
    std::vector<ModelKeyframe> translationKeys;
    std::vector<ModelKeyframe> rotationKeys;
    std::int32_t currentTranslationKey = 0;
    std::int32_t currentRotationKey = 0;
    /// Current pose in model space.
    Matrix final;
    std::string name;
    std::string parentName;
    /// Index of an earlier joint, -1 for none.
    std::int32_t parent = -1;
};

/// A named run of frames. Times are seconds.
struct AnimationClip {
    std::string name;
    std::int32_t firstFrame = 0;
    std::int32_t lastFrame = 0;
    float startTime = 0.0f;
    float endTime = 0.0f;
    float duration = 0.0f;
    /// The clip that follows; its own name for a loop.
    std::string next;
};
