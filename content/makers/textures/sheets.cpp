#include "shapes.h"
#include "textures.h"

#include "../exact_math.h"
#include "../noise.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr Color ink{0.05, 0.05, 0.07, 0.75};

double ringDistance(double x, double y, double radius, double halfWidth) {
    return std::fabs(discDistance(x, y, 0, 0, radius)) - halfWidth;
}

double crosshairShape(double x, double y) {
    const double ax = std::fabs(x);
    const double ay = std::fabs(y);
    const double ticks =
        std::min(barDistance(ax, y, 0.34, 0, 0.86, 0, 0.035), barDistance(x, ay, 0, 0.34, 0, 0.86, 0.035));
    return std::min({ringDistance(x, y, 0.6, 0.035), ticks, discDistance(x, y, 0, 0, 0.06)});
}

double markerShape(double x, double y) {
    const double ax = std::fabs(x);
    const double ay = std::fabs(y);
    const double brackets =
        std::min(barDistance(ax, ay, 0.8, 0.8, 0.8, 0.42, 0.07), barDistance(ax, ay, 0.8, 0.8, 0.42, 0.8, 0.07));
    const double arrows = polygonDistance(std::max(ax, ay), std::min(ax, ay), {{0.2, 0}, {0.46, 0.13}, {0.46, -0.13}});
    return std::min({brackets, arrows, discDistance(x, y, 0, 0, 0.07)});
}

void drawSights(Image& sheet) {
    CellPainter crosshair(sheet, 0, 0, 8);
    crosshair.fill([](double x, double y) { return crosshairShape(x, y) - 0.035; }, ink);
    crosshair.fill(crosshairShape, {1, 1, 1, 0.95});
    // The marker is tinted when it is drawn, so its own colours stay white and black.
    CellPainter marker(sheet, 0, 1, 8);
    marker.fill([](double x, double y) { return markerShape(x, y) - 0.05; }, ink);
    marker.fill(markerShape, {1, 1, 1, 0.95});
}

void drawBazooka(CellPainter icon) {
    icon.outlined([](double x, double y) { return barDistance(x, y, -0.2, -0.3, -0.12, -0.62, 0.09); },
                  rgb(0.45, 0.3, 0.17));
    icon.outlined([](double x, double y) { return barDistance(x, y, 0.2, -0.02, 0.3, -0.36, 0.08); },
                  rgb(0.45, 0.3, 0.17));
    icon.outlined([](double x, double y) { return barDistance(x, y, -0.62, -0.24, 0.62, 0.3, 0.18); },
                  rgb(0.42, 0.55, 0.26));
    icon.outlined(
        [](double x, double y) {
            return polygonDistance(x, y, {{-0.9, -0.6}, {-0.55, -0.42}, {-0.7, -0.06}, {-0.97, -0.12}});
        },
        rgb(0.33, 0.43, 0.22));
    icon.outlined(
        [](double x, double y) {
            return polygonDistance(x, y, {{0.58, 0.08}, {0.95, 0.43}, {0.5, 0.47}});
        },
        rgb(0.85, 0.2, 0.15));
    icon.outlined([](double x, double y) { return barDistance(x, y, 0.05, 0.28, 0.1, 0.44, 0.05); },
                  rgb(0.25, 0.27, 0.25), 0.04);
}

void drawShotgun(CellPainter icon) {
    icon.outlined(
        [](double x, double y) {
            return polygonDistance(x, y, {{-0.95, -0.62}, {-0.75, -0.72}, {-0.2, -0.22}, {-0.3, 0.02}, {-0.92, -0.3}});
        },
        rgb(0.62, 0.36, 0.16));
    icon.outlined([](double x, double y) { return barDistance(x, y, -0.2, 0, 0.88, 0.5, 0.07); },
                  rgb(0.55, 0.58, 0.62));
    icon.outlined([](double x, double y) { return barDistance(x, y, -0.25, -0.12, 0.88, 0.36, 0.07); },
                  rgb(0.45, 0.48, 0.52));
    icon.outlined([](double x, double y) { return barDistance(x, y, 0.12, -0.08, 0.48, 0.08, 0.11); },
                  rgb(0.62, 0.36, 0.16));
    icon.fill([](double x, double y) { return std::fabs(discDistance(x, y, -0.08, -0.24, 0.12)) - 0.035; },
              rgb(0.1, 0.1, 0.12));
}

void drawDynamite(CellPainter icon) {
    for (const double x0 : {-0.36, 0.36, 0.0}) {
        icon.outlined([x0](double x, double y) { return boxDistance(x, y, x0, -0.22, 0.2, 0.6, 0.07); },
                      rgb(0.86, 0.16, 0.12));
    }
    icon.outlined([](double x, double y) { return boxDistance(x, y, 0, -0.22, 0.6, 0.11, 0.03); },
                  rgb(0.93, 0.86, 0.62), 0.04);
    const auto fuse = [](double x, double y) {
        return std::min(barDistance(x, y, 0, 0.38, 0.08, 0.58, 0.04), barDistance(x, y, 0.08, 0.58, 0.34, 0.66, 0.04));
    };
    icon.outlined(fuse, rgb(0.8, 0.75, 0.65), 0.03);
    icon.fill(
        [](double x, double y) {
            const double angle = arcTangent(y - 0.7, x - 0.48);
            return discDistance(x, y, 0.48, 0.7, 0.17 + 0.08 * cosine(7 * angle));
        },
        rgb(1, 0.7, 0.1));
    icon.fill([](double x, double y) { return discDistance(x, y, 0.48, 0.7, 0.09); }, rgb(1, 0.98, 0.7));
}

/// A four-pointed star.
double starDistance(double x, double y, double middleX, double middleY, double size) {
    const double dx = std::sqrt(std::fabs(x - middleX));
    const double dy = std::sqrt(std::fabs(y - middleY));
    return (dx + dy - std::sqrt(size)) * std::sqrt(size) * 0.5;
}

void drawBeamer(CellPainter icon) {
    const auto ring = [](double middleY, double across) {
        return [=](double x, double y) {
            const double squeezed = (y - middleY) / 0.34;
            return std::fabs(std::sqrt(x * x + squeezed * squeezed) - across) * 0.6 - 0.05;
        };
    };
    icon.outlined(ring(-0.55, 0.72), rgb(0.25, 0.65, 0.95), 0.05);
    icon.fill(
        [](double x, double y) {
            return polygonDistance(x, y, {{-0.62, -0.5}, {0.62, -0.5}, {0.4, 0.7}, {-0.4, 0.7}});
        },
        {0.5, 0.92, 1, 0.45});
    icon.outlined(ring(0.66, 0.44), rgb(0.55, 0.9, 1), 0.05);
    icon.outlined(
        [](double x, double y) {
            return polygonDistance(
                x, y, {{-0.13, -0.5}, {0.13, -0.5}, {0.13, 0.0}, {0.34, 0.0}, {0.0, 0.42}, {-0.34, 0.0}, {-0.13, 0.0}});
        },
        rgb(1, 0.86, 0.25));
    for (const auto& star : {std::array{-0.62, 0.32, 0.26}, std::array{0.66, 0.16, 0.3}, std::array{0.56, 0.82, 0.2}}) {
        icon.fill([&](double x, double y) { return starDistance(x, y, star[0], star[1], star[2]); }, rgb(1, 1, 1));
    }
}

void drawAirstrike(CellPainter icon) {
    icon.outlined(
        [](double x, double y) {
            return polygonDistance(x, y, {{-0.9, 0.78}, {-0.68, 0.78}, {-0.5, 0.55}, {-0.78, 0.5}});
        },
        rgb(0.5, 0.56, 0.62));
    icon.outlined([](double x, double y) { return barDistance(x, y, -0.68, 0.48, 0.7, 0.48, 0.15); },
                  rgb(0.58, 0.64, 0.7));
    icon.outlined(
        [](double x, double y) {
            return polygonDistance(x, y, {{-0.12, 0.48}, {0.3, 0.48}, {-0.1, 0.16}, {-0.34, 0.16}});
        },
        rgb(0.5, 0.56, 0.62));
    icon.fill([](double x, double y) { return boxDistance(x, y, 0.6, 0.53, 0.12, 0.06, 0.03); }, rgb(0.6, 0.9, 1));
    const double drops[3][2] = {{-0.5, -0.25}, {0.0, -0.55}, {0.5, -0.2}};
    for (const auto& d : drops) {
        const double bx = d[0];
        const double by = d[1];
        icon.outlined(
            [=](double x, double y) {
                const double fins =
                    polygonDistance(x, y, {{bx - 0.14, by + 0.3}, {bx + 0.14, by + 0.3}, {bx, by + 0.05}});
                return std::min(barDistance(x, y, bx, by - 0.12, bx, by + 0.1, 0.11), fins);
            },
            rgb(0.85, 0.25, 0.18), 0.045);
    }
}

/// One frame of the explosion at (x, y) in -1 to 1, time 0 to 1.
Color explosionAt(double x, double y, double time, const Vec3& noisePlace) {
    const double d = std::sqrt(x * x + y * y);
    const double grown = 0.40 + 0.47 * (1 - (1 - time) * (1 - time) * (1 - time));
    const double ragged = solidFractal(noisePlace, 5, 911);
    const double inside = (grown * (1 + 0.32 * ragged) - d) / grown; // 1 in the middle, 0 at the ragged rim
    const double heat = clamp(1.35 * inside + 0.9 * (1 - 2.1 * time) + 0.5 * ragged, 0, 1.6);
    const Color smoke = mix(rgb(0.14, 0.12, 0.11), rgb(0.46, 0.43, 0.40), clamp(0.5 + 0.8 * ragged + 0.35 * y, 0, 1));
    Color c = mix(smoke, rgb(0.80, 0.16, 0.03), smoothStep(0.1, 0.45, heat));
    c = mix(c, rgb(1.0, 0.58, 0.06), smoothStep(0.4, 0.8, heat));
    c = mix(c, rgb(1.0, 0.93, 0.45), smoothStep(0.75, 1.15, heat));
    c = mix(c, rgb(1.0, 1.0, 0.93), smoothStep(1.1, 1.5, heat));
    const double fading = 1 - smoothStep(0.6, 1.04, time);
    c[3] = smoothStep(0, 0.28, inside) * fading * smoothStep(0.98, 0.85, d);
    return c;
}

} // namespace

Image hudTexture() {
    Image sheet(1024);
    drawSights(sheet);
    drawBazooka(CellPainter(sheet, 1, 0, 8));
    drawShotgun(CellPainter(sheet, 1, 1, 8));
    drawDynamite(CellPainter(sheet, 1, 2, 8));
    drawBeamer(CellPainter(sheet, 1, 3, 8));
    drawAirstrike(CellPainter(sheet, 1, 4, 8));
    return sheet;
}

Image explosionTexture() {
    Image image(512);
    image.fill([](double u, double v) {
        const int column = static_cast<int>(u * 5);
        const int row = static_cast<int>(v * 5);
        const double x = (u * 5 - column) * 2 - 1;
        const double y = 1 - (v * 5 - row) * 2;
        const double time = (row * 5 + column) / 24.0;
        // The noise is sampled on a bulging, rising surface, so that it boils outwards from frame to frame.
        const double spread = 2.4 / (0.55 + 0.9 * time);
        return explosionAt(x, y, time, {x * spread, y * spread - 1.6 * time, 1.9 * time});
    });
    return image;
}

Image smokeTexture() {
    Image image(128);
    image.fill([](double u, double v) {
        const double x = 2 * u - 1;
        const double y = 2 * v - 1;
        const double d = std::sqrt(x * x + y * y);
        const double lumps = solidFractal({x * 1.8, y * 1.8, 0.3}, 4, 951);
        const double tone = clamp(0.78 + 0.4 * lumps, 0.5, 1);
        const double alpha = smoothStep(0.9, 0.15, d * (1 + 0.35 * lumps)) * smoothStep(1, 0.8, d);
        return Color{tone, tone, tone, 0.8 * alpha};
    });
    return image;
}
