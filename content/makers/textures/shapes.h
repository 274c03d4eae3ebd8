#pragma once

#include "../image.h"

#include <utility>
#include <vector>

// Signed distances of flat shapes, negative inside, for the sheets that are drawn rather than grown from noise.

double discDistance(double x, double y, double middleX, double middleY, double radius);
/// A segment with round ends.
double barDistance(double x, double y, double ax, double ay, double bx, double by, double halfWidth);
/// An upright box with corners rounded by round.
double boxDistance(double x, double y, double middleX, double middleY, double halfWidth, double halfHeight,
                   double round);
/// A closed polygon.
double polygonDistance(double x, double y, const std::vector<std::pair<double, double>>& corners);

/// Draws into a square cell of an image. Coordinates run over -1 to 1, with a margin around, x to the right, y towards
/// the first row.
class CellPainter {
public:
    CellPainter(Image& sheet, int column, int row, int cellsAcross);
    /// Fills the shape, with an edge of one pixel.
    void fill(const std::function<double(double, double)>& shape, const Color& color);
    /// Draws a dark rim of the given width (cell units) around the shape, then fills it, lighter towards the top.
    void outlined(const std::function<double(double, double)>& shape, const Color& color, double rim = 0.06);

private:
    Image& image;
    int left;
    int top;
    int side;
};
