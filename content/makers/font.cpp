// Makes the texture of the font: sixteen by sixteen cells, character code c in column c mod 16 of row c div 16, counted
// from the top of the picture (the last row of the file). Text advances by half a cell, and each quad is drawn over the
// right half of the one before it: glyphs of a fixed-width face stand in the left half of their cells, so that a line
// of text lies where its length says, and can be read with transparency off. White with a dark edge; clear pixels are
// dark, so that no light fringe bleeds in.

#include "exact_math.h"
#include "glyph.h"
#include "image.h"

#include <algorithm>
#include <cmath>
#include <iostream>
#include <vector>

namespace {

constexpr int cell = 64;
constexpr int cellsAcross = 16;
/// Pixels above and below the base line: 46 pixels to the em leave room for accents and tails.
constexpr int pixelsPerEm = 46;
constexpr int baseLineFromTop = 49;
/// Where a glyph's advance starts. The labels above worms centre whole cells: further left, these stood visibly aside.
constexpr int penFromLeft = 5;
/// Clear margin kept inside every cell, for labels that sample a little past it and for mipmaps.
constexpr int margin = 2;
constexpr double edgeWidth = 2.2;

/// Coverage 0 to 1 of one cell's pixels, row 0 at the top.
using Coverage = std::vector<double>;

double& pixelOf(Coverage& coverage, int x, int y) {
    return coverage[static_cast<std::size_t>(y * cell + x)];
}

Coverage rasterise(const GlyphFace& face, unsigned long code) {
    Coverage coverage(cell * cell, 0.0);
    const std::vector<GlyphEdge> outline = face.outlineOf(code, pixelsPerEm);
    if (outline.empty())
        return coverage;
    double highest = outline[0].fromY;
    double lowest = highest;
    for (const GlyphEdge& edge : outline) {
        highest = std::max(highest, edge.fromY);
        lowest = std::min(lowest, edge.fromY);
    }
    const int rise = static_cast<int>(std::ceil(highest));
    const int height = rise - static_cast<int>(std::floor(lowest));
    const int inner = margin + static_cast<int>(edgeWidth);
    // Capitals with accents come down as far as they stick out of the cell.
    const int top = std::max(inner, std::min(baseLineFromTop - rise, cell - inner - height));
    fillOutline(outline, penFromLeft, top + rise, cell, coverage);
    for (int y = 0; y < cell; ++y) {
        for (int x = 0; x < cell; ++x) {
            if (x < inner || y < inner || x >= cell - inner || y >= cell - inner)
                pixelOf(coverage, x, y) = 0;
        }
    }
    return coverage;
}

/// The glyph grown by edgeWidth with a soft rim.
double grown(Coverage& coverage, int x, int y) {
    constexpr int reach = 4;
    double most = 0;
    for (int j = std::max(0, y - reach); j <= std::min(cell - 1, y + reach); ++j) {
        for (int i = std::max(0, x - reach); i <= std::min(cell - 1, x + reach); ++i) {
            const double d = std::sqrt(static_cast<double>((i - x) * (i - x) + (j - y) * (j - y)));
            most = std::max(most, pixelOf(coverage, i, j) * clamp(edgeWidth + 0.5 - d, 0, 1));
        }
    }
    return most;
}

void drawCell(Image& image, const GlyphFace& face, int code) {
    Coverage coverage = rasterise(face, static_cast<unsigned long>(code));
    const int left = code % cellsAcross * cell;
    const int top = code / cellsAcross * cell;
    for (int y = 0; y < cell; ++y) {
        for (int x = 0; x < cell; ++x) {
            const double ink = pixelOf(coverage, x, y);
            const double edge = grown(coverage, x, y);
            const double tone = edge > 0 ? clamp(ink / edge, 0, 1) : 0;
            image.at(left + x, image.size() - 1 - (top + y)) = {tone, tone, tone, std::max(ink, 0.85 * edge)};
        }
    }
}

} // namespace

/// Arguments: the font file, the texture file to write.
int main(int argc, char** argv) {
    if (argc != 3)
        return 2;
    const GlyphFace face(argv[1]);
    if (!face.isUsable()) {
        std::cerr << argv[1] << ": not a usable font\n";
        return 1;
    }
    Image image(cell * cellsAcross);
    for (int code = 0; code < 256; ++code) {
        const bool printable = (code > 32 && code < 127) || code > 160;
        if (printable)
            drawCell(image, face, code);
    }
    return writeTga(argv[2], image, true) ? 0 : 1;
}
