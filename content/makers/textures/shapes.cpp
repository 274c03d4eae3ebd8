#include "shapes.h"

#include "../exact_math.h"

#include <algorithm>
#include <cmath>

namespace {

/// A cell shows a little more than -1 to 1, so that what is drawn keeps clear of its neighbours.
constexpr double reach = 1.12;

} // namespace

double discDistance(double x, double y, double middleX, double middleY, double radius) {
    const double dx = x - middleX;
    const double dy = y - middleY;
    return std::sqrt(dx * dx + dy * dy) - radius;
}

double barDistance(double x, double y, double ax, double ay, double bx, double by, double halfWidth) {
    const double dx = bx - ax;
    const double dy = by - ay;
    const double f = clamp(((x - ax) * dx + (y - ay) * dy) / (dx * dx + dy * dy), 0, 1);
    return discDistance(x, y, ax + dx * f, ay + dy * f, halfWidth);
}

double boxDistance(double x, double y, double middleX, double middleY, double halfWidth, double halfHeight,
                   double round) {
    const double dx = std::fabs(x - middleX) - halfWidth + round;
    const double dy = std::fabs(y - middleY) - halfHeight + round;
    const double ox = std::max(dx, 0.0);
    const double oy = std::max(dy, 0.0);
    return std::sqrt(ox * ox + oy * oy) + std::min(std::max(dx, dy), 0.0) - round;
}

double polygonDistance(double x, double y, const std::vector<std::pair<double, double>>& corners) {
    double nearest = 1e9;
    bool inside = false;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        const auto& [ax, ay] = corners[i];
        const auto& [bx, by] = corners[(i + 1) % corners.size()];
        nearest = std::min(nearest, barDistance(x, y, ax, ay, bx, by, 0));
        if ((ay > y) != (by > y) && x < ax + (bx - ax) * (y - ay) / (by - ay))
            inside = !inside;
    }
    return inside ? -nearest : nearest;
}

CellPainter::CellPainter(Image& sheet, int column, int row, int cellsAcross)
    : image(sheet),
      left(column * sheet.size() / cellsAcross),
      top(row * sheet.size() / cellsAcross),
      side(sheet.size() / cellsAcross) {}

void CellPainter::fill(const std::function<double(double, double)>& shape, const Color& color) {
    for (int j = 0; j < side; ++j) {
        for (int i = 0; i < side; ++i) {
            const double x = ((i + 0.5) * 2 / side - 1) * reach;
            const double y = (1 - (j + 0.5) * 2 / side) * reach;
            const double coverage = clamp(0.5 - shape(x, y) * side / (2 * reach), 0, 1);
            Color& pixel = image.at(left + i, top + j);
            pixel = over(pixel, color, coverage);
        }
    }
}

void CellPainter::outlined(const std::function<double(double, double)>& shape, const Color& color, double rim) {
    fill([&](double x, double y) { return shape(x, y) - rim; }, {0.05, 0.05, 0.07, color[3]});
    fill(shape, scaled(color, 0.85));
    const Color light = mix(color, {1, 1, 1, color[3]}, 0.25);
    fill([&](double x, double y) { return std::max(shape(x, y) + 0.03, -shape(x, y + 0.09) - 0.03); }, light);
}
