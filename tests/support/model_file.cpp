#include "support/model_file.h"

#include <bit>
#include <initializer_list>

namespace {

class Writer {
public:
    void number(std::uint64_t value, int size) {
        for (int i = 0; i < size; ++i)
            bytes += static_cast<char>(value >> (8 * i));
    }
    void reals(std::initializer_list<float> values) {
        for (const float value : values)
            number(std::bit_cast<std::uint32_t>(value), 4);
    }
    void vector(const Vector3& v) { reals({v.x, v.y, v.z}); }
    void text(std::string value, std::size_t size) {
        value.resize(size, '\0');
        bytes += value;
    }
    void keys(const std::vector<ModelFile::Key>& list) {
        for (const ModelFile::Key& key : list) {
            reals({key.time});
            vector(key.value);
        }
    }

    std::string bytes;
};

void writeTriangles(Writer& out, const std::vector<std::uint16_t>& indices) {
    out.number(indices.size() / 3, 2);
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        out.number(0, 2);
        for (std::size_t corner = 0; corner < 3; ++corner)
            out.number(indices[i + corner], 2);
        out.reals({0, 0, 1, 0, 0, 1, 0, 0, 1, 0.25f, 0.25f, 0.25f, 0.75f, 0.75f, 0.75f});
        out.number(0, 2);
    }
}

void writeMaterial(Writer& out, const std::string& textureFile) {
    out.number(textureFile.empty() ? 0 : 1, 2);
    if (textureFile.empty())
        return;
    out.text("material", 32);
    for (int channel = 0; channel < 16; ++channel)
        out.reals({0.5f});
    out.reals({10.0f, 1.0f});
    out.number(0, 1);
    out.text(textureFile, 128);
    out.text("", 128);
}

void writeJoint(Writer& out, const ModelFile::Joint& joint) {
    out.number(0, 1);
    out.text(joint.name, 32);
    out.text(joint.parent, 32);
    out.vector(joint.rotation);
    out.vector(joint.position);
    out.number(joint.rotationKeys.size(), 2);
    out.number(joint.translationKeys.size(), 2);
    out.keys(joint.rotationKeys);
    out.keys(joint.translationKeys);
}

} // namespace

std::string ModelFile::bytes() const {
    Writer out;
    out.text("MS3D000000", 10);
    out.number(static_cast<std::uint64_t>(version), 4);
    out.number(vertices.size(), 2);
    for (const Vertex& vertex : vertices) {
        out.number(0, 1);
        out.vector(vertex.position);
        out.number(static_cast<std::uint64_t>(vertex.bone), 1);
        out.number(0, 1);
    }
    writeTriangles(out, indices);
    const std::size_t triangleCount = indices.size() / 3;
    out.number(1, 2);
    out.number(0, 1);
    out.text("group", 32);
    out.number(triangleCount, 2);
    for (std::size_t i = 0; i < triangleCount; ++i)
        out.number(i + 1 == triangleCount && strayTriangle != 0xFFFF ? strayTriangle : i, 2);
    out.number(textureFile.empty() ? 0xFF : 0, 1);
    writeMaterial(out, textureFile);
    out.reals({fps, 0.0f});
    out.number(100, 4);
    out.number(joints.size(), 2);
    for (const Joint& joint : joints)
        writeJoint(out, joint);
    return out.bytes;
}
