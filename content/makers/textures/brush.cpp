#include "brush.h"

#include "../exact_math.h"

#include <cmath>

Color ramp(const Color& dark, const Color& middle, const Color& light, double f) {
    f = clamp(f, 0, 1);
    return f < 0.5 ? mix(dark, middle, f * 2) : mix(middle, light, f * 2 - 1);
}

void stroke(Image& image, double x, double y, double angle, double length, double width, const Color& color) {
    const double dx = cosine(angle);
    const double dy = sine(angle);
    const int reach = static_cast<int>(length + width) + 2;
    const int cx = static_cast<int>(std::floor(x));
    const int cy = static_cast<int>(std::floor(y));
    for (int j = cy - reach; j <= cy + reach; ++j) {
        for (int i = cx - reach; i <= cx + reach; ++i) {
            const double px = i + 0.5 - x;
            const double py = j + 0.5 - y;
            const double along = clamp((px * dx + py * dy) / length, 0, 1);
            const double ox = px - dx * along * length;
            const double oy = py - dy * along * length;
            const double half = width * (1 - 0.8 * along);
            const double coverage = clamp(half + 0.5 - std::sqrt(ox * ox + oy * oy), 0, 1);
            if (coverage > 0)
                image.at(i, j) = over(image.at(i, j), color, coverage);
        }
    }
}

void pebble(Image& image, double x, double y, double radius, const Color& color) {
    const int reach = static_cast<int>(radius * 1.5) + 3;
    const int cx = static_cast<int>(std::floor(x));
    const int cy = static_cast<int>(std::floor(y));
    for (int j = cy - reach; j <= cy + reach; ++j) {
        for (int i = cx - reach; i <= cx + reach; ++i) {
            const double px = (i + 0.5 - x) / radius;
            const double py = (j + 0.5 - y) / (radius * 0.8);
            const double shadow = std::sqrt(px * px + (py + 0.25) * (py + 0.25));
            Color& pixel = image.at(i, j);
            pixel = over(pixel, {0.12, 0.07, 0.03, 0.55}, clamp((1.12 - shadow) * radius * 0.6, 0, 1));
            const double d = std::sqrt(px * px + py * py);
            const Color lit = scaled(color, 0.85 + 0.25 * py - 0.1 * d);
            pixel = over(pixel, lit, clamp((1 - d) * radius, 0, 1));
        }
    }
}
