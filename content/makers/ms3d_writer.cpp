#include "ms3d_writer.h"

#include <bit>
#include <cstdint>
#include <fstream>
#include <iostream>

namespace {

class Bytes {
public:
    void u8(int value) { data += static_cast<char>(static_cast<unsigned char>(value & 255)); }
    void u16(std::size_t value) {
        u8(static_cast<int>(value & 255));
        u8(static_cast<int>(value >> 8 & 255));
    }
    void u32(std::uint32_t value) {
        u16(value & 0xffff);
        u16(value >> 16);
    }
    void real(double value) { u32(std::bit_cast<std::uint32_t>(static_cast<float>(value))); }
    void vec(const Vec3& v) {
        real(v.x);
        real(v.y);
        real(v.z);
    }
    void color(const std::array<double, 3>& c) {
        for (const double channel : c)
            real(channel);
        real(1);
    }
    /// Text in a field of fixed width, cut off so that a zero follows.
    void text(const std::string& value, std::size_t width) {
        std::string field = value.substr(0, width - 1);
        field.resize(width, '\0');
        data += field;
    }
    const std::string& all() const { return data; }

private:
    std::string data;
};

void writePoints(Bytes& out, const Model& model) {
    out.u16(model.points.size());
    for (const ModelPoint& p : model.points) {
        out.u8(0);
        out.vec(p.position);
        out.u8(p.bone);
        out.u8(0);
    }
}

void writeFaces(Bytes& out, const Model& model) {
    out.u16(model.faces.size());
    for (const ModelFace& face : model.faces) {
        out.u16(0);
        for (const ModelCorner& c : face.corners)
            out.u16(static_cast<std::size_t>(c.point));
        for (const ModelCorner& c : face.corners)
            out.vec(c.normal);
        for (const ModelCorner& c : face.corners)
            out.real(c.u);
        for (const ModelCorner& c : face.corners)
            out.real(model.points[static_cast<std::size_t>(c.point)].bone < 0 ? c.v : 1 - c.v);
        out.u8(1);
        out.u8(face.group);
    }
}

void writeGroups(Bytes& out, const Model& model) {
    out.u16(model.materials.size());
    for (std::size_t g = 0; g < model.materials.size(); ++g) {
        out.u8(0);
        out.text(model.materials[g].name, 32);
        std::vector<std::size_t> members;
        for (std::size_t t = 0; t < model.faces.size(); ++t) {
            if (model.faces[t].group == static_cast<int>(g))
                members.push_back(t);
        }
        out.u16(members.size());
        for (const std::size_t t : members)
            out.u16(t);
        out.u8(static_cast<int>(g));
    }
}

void writeMaterials(Bytes& out, const Model& model) {
    out.u16(model.materials.size());
    for (const ModelMaterial& m : model.materials) {
        out.text(m.name, 32);
        out.color(m.ambient);
        out.color(m.diffuse);
        out.color(m.specular);
        out.color(m.emissive);
        out.real(m.shininess);
        out.real(1);
        out.u8(0);
        out.text(m.textureFile, 128);
        out.text("", 128);
    }
}

void writeJoints(Bytes& out, const Model& model) {
    out.real(model.framesPerSecond);
    out.real(0);
    out.u32(static_cast<std::uint32_t>(model.frameCount));
    out.u16(model.joints.size());
    for (const ModelJoint& joint : model.joints) {
        out.u8(0);
        out.text(joint.name, 32);
        out.text(joint.parent, 32);
        out.vec({});
        out.vec(joint.position);
        out.u16(joint.rotations.size());
        out.u16(joint.shifts.size());
        for (const auto& keys : {joint.rotations, joint.shifts}) {
            for (const ModelKey& key : keys) {
                out.real(key.time);
                out.vec(key.value);
            }
        }
    }
}

} // namespace

bool writeMs3d(const std::filesystem::path& file, const Model& model) {
    if (model.points.size() > 0xffff || model.faces.size() > 0xffff || model.joints.size() > 127) {
        std::cerr << file.string() << ": too many points, faces or joints for the format\n";
        return false;
    }
    Bytes bytes;
    for (const char c : {'M', 'S', '3', 'D', '0', '0', '0', '0', '0', '0'})
        bytes.u8(c);
    bytes.u32(4);
    writePoints(bytes, model);
    writeFaces(bytes, model);
    writeGroups(bytes, model);
    writeMaterials(bytes, model);
    writeJoints(bytes, model);
    std::ofstream out(file, std::ios::binary);
    out << bytes.all();
    out.close();
    if (!out)
        std::cerr << file.string() << ": cannot be written\n";
    return static_cast<bool>(out);
}
