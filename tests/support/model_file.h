#pragma once

#include "render/math/vector3.h"

#include <cstdint>
#include <string>
#include <vector>

/// Builds the bytes of a model file for a test: little-endian, part by part.
class ModelFile {
public:
    struct Key {
        float time;
        Vector3 value;
    };
    struct Joint {
        std::string name;
        std::string parent;
        Vector3 rotation{0, 0, 0};
        Vector3 position{0, 0, 0};
        std::vector<Key> rotationKeys;
        std::vector<Key> translationKeys;
    };
    struct Vertex {
        Vector3 position;
        std::int8_t bone = -1;
    };

    std::vector<Vertex> vertices;
    /// Corner indices, three a triangle; normals are +Z, texture coordinates (0.25, 0.75).
    std::vector<std::uint16_t> indices;
    std::vector<Joint> joints;
    /// Texture file of the one material; none when empty.
    std::string textureFile;
    float fps = 10.0f;
    std::int32_t version = 4;
    /// Triangle that the one group names last; 0xFFFF names them all as they are.
    std::uint16_t strayTriangle = 0xFFFF;

    std::string bytes() const;
};
