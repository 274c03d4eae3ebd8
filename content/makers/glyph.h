#pragma once

// Outlines of a font's glyphs, filled by arithmetic that gives the same bits on every machine: the font library's own
// rasteriser splits curves differently where a long has 32 bits, and from release to release.

#include <memory>
#include <vector>

/// A straight piece of an outline; pixels, y upwards from the base line, x from the pen.
struct GlyphEdge {
    double fromX, fromY, toX, toY;
};

class GlyphFace {
public:
    /// Opens a font file.
    explicit GlyphFace(const char* fileName);
    ~GlyphFace();
    GlyphFace(const GlyphFace&) = delete;
    GlyphFace& operator=(const GlyphFace&) = delete;

    /// False when the file is no font with outlines.
    bool isUsable() const { return usable; }
    /// The outline of a character, its curves cut into pieces; closed contours, clockwise around ink. Empty when the
    /// font has no ink for it.
    std::vector<GlyphEdge> outlineOf(unsigned long code, int pixelsPerEm) const;

private:
    struct Library;
    std::unique_ptr<Library> library;
    bool usable = false;
};

/// Adds to a square picture, row 0 at the top, how much of each pixel the outline covers, 0 to 1; its pen and base line
/// are at this column and row. Whatever winding there is, other than none, is ink.
void fillOutline(const std::vector<GlyphEdge>& outline, int penColumn, int baseLineRow, int side,
                 std::vector<double>& coverage);
