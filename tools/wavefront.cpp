#include "wavefront.h"

#include "csg/solid/csg_mesh.h"

#include <cstdio>
#include <map>

namespace {

/// Enough digits to tell any two doubles apart.
void appendNumbers(std::string& text, const char* keyword, std::initializer_list<double> numbers) {
    text += keyword;
    for (const double number : numbers) {
        char buffer[40];
        std::snprintf(buffer, sizeof buffer, " %.17g", number);
        text += buffer;
    }
    text += '\n';
}

} // namespace

std::string writeWavefrontText(const csgMesh& solid, const std::vector<std::string>& textureNames) {
    std::string text;
    std::map<const csgVertex*, std::size_t> numbers; // looked up only; both lists of an .obj file count from 1
    for (const auto& vertex : solid.getVertices()) {
        if (vertex->faces.empty())
            continue;
        numbers.emplace(vertex.get(), numbers.size() + 1);
        appendNumbers(text, "v", {vertex->position.x, vertex->position.y, vertex->position.z});
    }
    std::size_t tex = 0;
    for (std::size_t i = 0; i < solid.getParts().size(); ++i) {
        text += "g part" + std::to_string(i) + "\nusemtl " + textureNames[i] + '\n';
        for (const auto& face : solid.getParts()[i]) {
            std::string corners = "f";
            for (std::size_t c = 0; c < 3; ++c) {
                appendNumbers(text, "vt", {face->tex[c].u, face->tex[c].v});
                corners += ' ' + std::to_string(numbers.at(face->corners[c])) + '/' + std::to_string(++tex);
            }
            text += corners + '\n';
        }
    }
    return text;
}
