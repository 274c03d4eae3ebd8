#include "csg_writer.h"

#include <charconv>
#include <cmath>
#include <fstream>
#include <iostream>
#include <map>
#include <utility>

namespace {

int dominantAxis(const Vec3& normal) {
    const double x = std::fabs(normal.x);
    const double y = std::fabs(normal.y);
    const double z = std::fabs(normal.z);
    if (y >= x && y >= z)
        return 1;
    return x >= z ? 0 : 2;
}

void append(std::string& text, double value) {
    char digits[40];
    const auto end = std::to_chars(digits, digits + sizeof digits, value == 0 ? 0.0 : value).ptr;
    text.append(digits, end);
}

/// u runs along the wall, v upwards; looking down, u is x and v is z.
void appendRecord(std::string& text, const Vec3& p, int axis, double repeat) {
    const double u = (axis == 0 ? p.z : p.x) / repeat;
    const double v = (axis == 1 ? p.z : p.y) / repeat;
    for (const double value : {p.x, p.y, p.z}) {
        append(text, value);
        text += ' ';
    }
    append(text, std::floor(u * 1e5 + 0.5) / 1e5);
    text += ' ';
    append(text, std::floor(v * 1e5 + 0.5) / 1e5);
    text += '\n';
}

std::string partText(const TriangleMesh& mesh, const SolidPaint& paint, int part) {
    std::map<std::pair<int, int>, int> recordNumbers; // (point, axis) to record
    std::string records;
    std::string faces;
    int faceCount = 0;
    for (std::size_t t = 0; t < mesh.triangles.size(); ++t) {
        if (paint.partOfTriangle[t] != part)
            continue;
        const auto& corners = mesh.triangles[t];
        const int axis = dominantAxis(triangleCross(mesh, corners));
        for (std::size_t k = 0; k < 3; ++k) {
            const auto [entry, isNew] =
                recordNumbers.insert({{corners[k], axis}, static_cast<int>(recordNumbers.size())});
            if (isNew)
                appendRecord(records, mesh.points[static_cast<std::size_t>(corners[k])], axis, paint.repeat);
            faces += std::to_string(entry->second);
            faces += k == 2 ? '\n' : ' ';
        }
        ++faceCount;
    }
    return std::to_string(recordNumbers.size()) + '\n' + records + std::to_string(faceCount) + '\n' + faces +
           paint.textures[static_cast<std::size_t>(part)] + '\n';
}

} // namespace

bool writeSolid(const std::filesystem::path& file, const TriangleMesh& mesh, const SolidPaint& paint) {
    const std::string fault = findSolidFault(mesh);
    if (!fault.empty()) {
        std::cerr << file.string() << ": " << fault << '\n';
        return false;
    }
    std::ofstream out(file, std::ios::binary);
    out << paint.textures.size() << '\n';
    for (std::size_t part = 0; part < paint.textures.size(); ++part) {
        out << partText(mesh, paint, static_cast<int>(part));
    }
    out.close();
    if (!out)
        std::cerr << file.string() << ": cannot be written\n";
    return static_cast<bool>(out);
}
