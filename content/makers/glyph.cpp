#include "glyph.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_OUTLINE_H

#include <algorithm>
#include <cmath>
#include <cstddef>

namespace {

/// Straight pieces of a curve. At the font's size a curve spans a few pixels, and a piece of it strays by a hundredth.
constexpr int piecesOfCurve = 8;
/// Lines through each row of pixels at which the outline is measured; across them coverage is exact.
constexpr int linesOfRow = 16;

/// Collects the outline that the font library walks, from font units to pixels.
struct OutlineWalk {
    double scale = 1;
    double x = 0;
    double y = 0;
    std::vector<GlyphEdge> edges;

    void lineTo(double toX, double toY) {
        edges.push_back({x, y, toX, toY});
        x = toX;
        y = toY;
    }
};

OutlineWalk& walkOf(void* user) {
    return *static_cast<OutlineWalk*>(user);
}

int moveTo(const FT_Vector* to, void* user) {
    OutlineWalk& walk = walkOf(user);
    walk.x = static_cast<double>(to->x) * walk.scale;
    walk.y = static_cast<double>(to->y) * walk.scale;
    return 0;
}

int lineTo(const FT_Vector* to, void* user) {
    OutlineWalk& walk = walkOf(user);
    walk.lineTo(static_cast<double>(to->x) * walk.scale, static_cast<double>(to->y) * walk.scale);
    return 0;
}

int curveTo(const FT_Vector* control, const FT_Vector* to, void* user) {
    OutlineWalk& walk = walkOf(user);
    const double startX = walk.x;
    const double startY = walk.y;
    const auto at = [&](double t, double start, FT_Pos middle, FT_Pos end) {
        const double back = 1 - t;
        return back * back * start + 2 * back * t * (static_cast<double>(middle) * walk.scale) +
               t * t * (static_cast<double>(end) * walk.scale);
    };
    for (int i = 1; i <= piecesOfCurve; ++i) {
        const double t = static_cast<double>(i) / piecesOfCurve;
        walk.lineTo(at(t, startX, control->x, to->x), at(t, startY, control->y, to->y));
    }
    return 0;
}

/// Cubic curves belong to fonts of another kind than those the game's is made of.
int refuseCubic(const FT_Vector*, const FT_Vector*, const FT_Vector*, void*) {
    return 1;
}

/// Where the outline crosses a horizontal line, and into which winding.
struct Crossing {
    double x;
    int turn;
};

std::vector<Crossing> crossingsAt(const std::vector<GlyphEdge>& outline, double y) {
    std::vector<Crossing> crossings;
    for (const GlyphEdge& edge : outline) {
        if ((edge.fromY <= y) == (edge.toY <= y))
            continue;
        const double f = (y - edge.fromY) / (edge.toY - edge.fromY);
        crossings.push_back({edge.fromX + f * (edge.toX - edge.fromX), edge.fromY <= y ? 1 : -1});
    }
    std::stable_sort(crossings.begin(), crossings.end(),
                     [](const Crossing& a, const Crossing& b) { return a.x < b.x; });
    return crossings;
}

/// Adds a stretch of one line to the pixels of its row.
void addSpan(double* row, int side, double from, double to) {
    const int first = std::max(0, static_cast<int>(std::floor(from)));
    const int last = std::min(side - 1, static_cast<int>(std::floor(to)));
    for (int x = first; x <= last; ++x)
        row[x] += std::max(0.0, std::min(to, x + 1.0) - std::max(from, static_cast<double>(x))) / linesOfRow;
}

} // namespace

struct GlyphFace::Library {
    FT_Library handle = nullptr;
    FT_Face face = nullptr;
};

GlyphFace::GlyphFace(const char* fileName) : library(std::make_unique<Library>()) {
    usable = FT_Init_FreeType(&library->handle) == 0 &&
             FT_New_Face(library->handle, fileName, 0, &library->face) == 0 && library->face->units_per_EM > 0;
}

GlyphFace::~GlyphFace() {
    if (library->face != nullptr)
        FT_Done_Face(library->face);
    if (library->handle != nullptr)
        FT_Done_FreeType(library->handle);
}

std::vector<GlyphEdge> GlyphFace::outlineOf(unsigned long code, int pixelsPerEm) const {
    if (FT_Load_Char(library->face, code, FT_LOAD_NO_SCALE) != 0)
        return {};
    OutlineWalk walk;
    walk.scale = static_cast<double>(pixelsPerEm) / library->face->units_per_EM;
    FT_Outline_Funcs steps{};
    steps.move_to = moveTo;
    steps.line_to = lineTo;
    steps.conic_to = curveTo;
    steps.cubic_to = refuseCubic;
    if (FT_Outline_Decompose(&library->face->glyph->outline, &steps, &walk) != 0)
        return {};
    return walk.edges;
}

void fillOutline(const std::vector<GlyphEdge>& outline, int penColumn, int baseLineRow, int side,
                 std::vector<double>& coverage) {
    for (int line = 0; line < side * linesOfRow; ++line) {
        const double y = baseLineRow - (line + 0.5) / linesOfRow;
        double* const row = &coverage[static_cast<std::size_t>(line / linesOfRow * side)];
        int winding = 0;
        double entered = 0;
        for (const Crossing& crossing : crossingsAt(outline, y)) {
            if (winding == 0)
                entered = crossing.x;
            winding += crossing.turn;
            if (winding == 0)
                addSpan(row, side, penColumn + entered, penColumn + crossing.x);
        }
    }
}
