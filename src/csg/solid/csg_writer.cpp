#include "csg/solid/csg_file.h"

#include "csg/solid/csg_mesh.h"

#include <bit>
#include <charconv>
#include <cstdint>
#include <map>
#include <tuple>

namespace {

/// Shortest decimal form that reads back as the same bits.
void appendNumber(std::string& text, double value, char after) {
    char buffer[32];
    const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
    text.append(buffer, result.ptr);
    text += after;
}

/// Corner records of one part: one for each pair of vertex and texture coordinate.
class CornerRecords {
public:
    std::size_t indexOf(const csgVertex& vertex, const csgTexCoord& tex) {
        const auto [entry, isNew] = indices.try_emplace(
            {&vertex, std::bit_cast<std::uint64_t>(tex.u), std::bit_cast<std::uint64_t>(tex.v)}, indices.size());
        if (isNew) {
            const csgVector& p = vertex.position;
            appendNumber(text, p.x, ' ');
            appendNumber(text, p.y, ' ');
            appendNumber(text, p.z, ' ');
            appendNumber(text, tex.u, ' ');
            appendNumber(text, tex.v, '\n');
        }
        return entry->second;
    }
    std::size_t size() const { return indices.size(); }
    const std::string& getText() const { return text; }

private:
    // Looked up only, never walked: the order of addresses decides nothing.
    // Coordinates are told apart by their bits: 0 and -0 are two.
    std::map<std::tuple<const csgVertex*, std::uint64_t, std::uint64_t>, std::size_t> indices;
    std::string text;
};

std::string partText(const csgFaceList& part, const std::string& texture) {
    CornerRecords records;
    std::string triangles;
    for (const auto& face : part) {
        for (std::size_t i = 0; i < 3; ++i) {
            triangles += std::to_string(records.indexOf(*face->corners[i], face->tex[i]));
            triangles += i < 2 ? ' ' : '\n';
        }
    }
    return std::to_string(records.size()) + '\n' + records.getText() + std::to_string(part.size()) + '\n' + triangles +
           texture + '\n';
}

} // namespace

std::string writeCsgText(const csgMesh& mesh, const std::vector<std::string>& textures) {
    std::string text = std::to_string(mesh.getParts().size()) + '\n';
    for (std::size_t i = 0; i < mesh.getParts().size(); ++i)
        text += partText(mesh.getParts()[i], textures[i]);
    return text;
}
