// Makes the font that the desktop layer writes with: a C++ list of characters and one of their cells, row by row from
// the top, a byte of coverage for each pixel.
// Usage: make_overlay_font FONT OUTPUT

#include "glyph.h"

#include <array>
#include <cstddef>
#include <fstream>
#include <iostream>
#include <utility>
#include <vector>

namespace {

// A fixed-width face of 19 pixels to the em is 11.4 wide; the outline's arithmetic takes squares.
constexpr int cellWidth = 12;
constexpr int cellHeight = 24;
constexpr int pixelsPerEm = 19;
constexpr int baseLine = 18;

/// What keyboards say in Europe: Latin, Greek and Cyrillic.
constexpr std::array<std::pair<unsigned, unsigned>, 5> ranges = {
    {{0x20, 0x7E}, {0xA1, 0x17F}, {0x384, 0x3CE}, {0x400, 0x45F}, {0x2190, 0x2193}}};

void writeCell(const GlyphFace& face, unsigned code, std::ostream& out) {
    std::vector<double> coverage(cellHeight * cellHeight, 0.0);
    fillOutline(face.outlineOf(code, pixelsPerEm), 0, baseLine, cellHeight, coverage);
    for (int y = 0; y < cellHeight; ++y) {
        for (int x = 0; x < cellWidth; ++x)
            out << static_cast<int>(coverage[static_cast<std::size_t>(y * cellHeight + x)] * 255 + 0.5) << ',';
        out << '\n';
    }
}

template <class Function>
void forEachCode(Function function) {
    for (const auto& range : ranges)
        for (unsigned code = range.first; code <= range.second; ++code)
            function(code);
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: make_overlay_font FONT OUTPUT\n";
        return 1;
    }
    const GlyphFace face(argv[1]);
    std::ofstream out(argv[2]);
    if (!face.isUsable()) {
        std::cerr << argv[1] << " is no font\n";
        return 1;
    }
    out << "constexpr int cellWidth = " << cellWidth << ";\nconstexpr int cellHeight = " << cellHeight
        << ";\nconstexpr char32_t fontCodes[] = {";
    forEachCode([&](unsigned code) { out << code << ','; });
    out << "};\nconstexpr unsigned char fontCells[] = {\n";
    forEachCode([&](unsigned code) { writeCell(face, code, out); });
    out << "};\n";
    return out.flush() ? 0 : 1;
}
