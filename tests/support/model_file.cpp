#include "support/model_file.h"

#include <bit>

namespace {

class Writer {
public:
    template <class Integer>
    void integer(Integer value) {
        for (std::size_t i = 0; i < sizeof(Integer); ++i)
            bytes += static_cast<char>(static_cast<std::uint64_t>(value) >> (8 * i));
    }
    void real(float value) { integer(std::bit_cast<std::uint32_t>(value)); }
    void vector(const Vector3& v) {
        real(v.x);
        real(v.y);
        real(v.z);
    }
    void text(std::string value, std::size_t size) {
        value.resize(size, '\0');
        bytes += value;
    }
    void keys(const std::vector<ModelFile::Key>& list) {
        for (const ModelFile::Key& key : list) {
            real(key.time);
            vector(key.value);
        }
    }

    std::string bytes;
};

void writeTriangles(Writer& out, const std::vector<std::uint16_t>& indices) {
    out.integer(static_cast<std::uint16_t>(indices.size() / 3));
    for (std::size_t i = 0; i + 2 < indices.size(); i += 3) {
        out.integer(std::uint16_t{0});
        for (std::size_t corner = 0; corner < 3; ++corner)
            out.integer(indices[i + corner]);
        for (int corner = 0; corner < 3; ++corner)
            out.vector(Vector3(0, 0, 1));
        for (int corner = 0; corner < 3; ++corner)
            out.real(0.25f);
        for (int corner = 0; corner < 3; ++corner)
            out.real(0.75f);
        out.integer(std::uint16_t{0});
    }
}

void writeMaterial(Writer& out, const std::string& textureFile) {
    out.integer(static_cast<std::uint16_t>(textureFile.empty() ? 0 : 1));
    if (textureFile.empty())
        return;
    out.text("material", 32);
    for (int channel = 0; channel < 16; ++channel)
        out.real(0.5f);
    out.real(10.0f);
    out.real(1.0f);
    out.integer(std::uint8_t{0});
    out.text(textureFile, 128);
    out.text("", 128);
}

void writeJoint(Writer& out, const ModelFile::Joint& joint) {
    out.integer(std::uint8_t{0});
    out.text(joint.name, 32);
    out.text(joint.parent, 32);
    out.vector(joint.rotation);
    out.vector(joint.position);
    out.integer(static_cast<std::uint16_t>(joint.rotationKeys.size()));
    out.integer(static_cast<std::uint16_t>(joint.translationKeys.size()));
    out.keys(joint.rotationKeys);
    out.keys(joint.translationKeys);
}

} // namespace

std::string ModelFile::bytes() const {
    Writer out;
    out.text("MS3D000000", 10);
    out.integer(version);
    out.integer(static_cast<std::uint16_t>(vertices.size()));
    for (const Vertex& vertex : vertices) {
        out.integer(std::uint8_t{0});
        out.vector(vertex.position);
        out.integer(vertex.bone);
        out.integer(std::uint8_t{0});
    }
    writeTriangles(out, indices);
    const auto triangleCount = static_cast<std::uint16_t>(indices.size() / 3);
    out.integer(std::uint16_t{1});
    out.integer(std::uint8_t{0});
    out.text("group", 32);
    out.integer(triangleCount);
    for (std::uint16_t i = 0; i < triangleCount; ++i)
        out.integer(i + 1 == triangleCount && strayTriangle != 0xFFFF ? strayTriangle : i);
    out.integer(static_cast<std::int8_t>(textureFile.empty() ? -1 : 0));
    writeMaterial(out, textureFile);
    out.real(fps);
    out.real(0.0f);
    out.integer(std::int32_t{100});
    out.integer(static_cast<std::uint16_t>(joints.size()));
    for (const Joint& joint : joints)
        writeJoint(out, joint);
    return out.bytes;
}
