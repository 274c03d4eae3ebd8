#include "shapes.h"
#include "textures.h"

#include "../exact_math.h"
#include "../noise.h"
#include "../swatches.h"

#include <algorithm>
#include <cmath>

namespace {

/// Where the painted eye lies in the worm's texture: a square with this middle and half side.
constexpr double eyeMiddleU = 0.125;
constexpr double eyeMiddleV = 0.875;
constexpr double eyeHalf = 0.11;

Color eyeAt(double u, double v) {
    const double x = (u - eyeMiddleU) / eyeHalf;
    const double y = (v - eyeMiddleV) / eyeHalf;
    const double d = std::sqrt(x * x + y * y);
    Color c = mix(rgb(1, 1, 1), rgb(0.82, 0.84, 0.90), smoothStep(0.6, 1.1, d));
    c = mix(c, rgb(0.12, 0.32, 0.16), smoothStep(0.50, 0.45, d));
    c = mix(c, rgb(0.30, 0.66, 0.28), smoothStep(0.44, 0.39, d) * smoothStep(-0.5, 0.3, -y));
    c = mix(c, rgb(0.03, 0.03, 0.04), smoothStep(0.30, 0.26, d));
    const double glint = discDistance(x, y, -0.16, 0.18, 0.11);
    return mix(c, rgb(1, 1, 1), smoothStep(0.03, -0.03, glint));
}

/// Distance along the smile's curve, in units of the texture; negative on the line.
double smileDistance(double u, double v) {
    const double x = (u - 0.5) / 0.115;
    const double curve = 0.512 + 0.024 * x * x;
    return std::max(std::fabs(v - curve) - 0.006 * (1.25 - x * x), std::fabs(x) - 1);
}

Color skinAt(double u, double v) {
    const double along = v / 0.75;
    const double rings = 0.5 + 0.5 * cosine(2 * pi * 13 * along);
    const double front = smoothStep(0.25, 0.07, std::fabs(u - 0.5));
    const double mottle = tileFractal(u, v, 6, 4, 701);
    Color c = mix(rgb(0.80, 0.45, 0.42), rgb(0.97, 0.66, 0.58), clamp(0.45 + 0.5 * front + 0.35 * mottle, 0, 1));
    c = mix(c, rgb(1.0, 0.82, 0.70), 0.75 * front * smoothStep(0.1, 0.25, along) * smoothStep(0.70, 0.62, along));
    const double onBody = smoothStep(0.66, 0.60, along);
    c = scaled(c, 1 - 0.24 * onBody * rings * rings * rings);
    // The saddle that earthworms carry, and a darker crown.
    const double saddle = smoothStep(0.40, 0.43, along) * smoothStep(0.60, 0.57, along);
    c = mix(c, rgb(0.93, 0.50, 0.40), 0.55 * saddle * (1 - 0.6 * front));
    c = mix(c, rgb(0.74, 0.38, 0.38), 0.6 * smoothStep(0.90, 1.0, along));
    // Freckles on the back, few on the crown and none on the tail.
    const CellHit freckle = tileCells(u, v, 11, 711);
    const double back = smoothStep(0.20, 0.34, std::fabs(u - 0.5)) * smoothStep(0.42, 0.55, along);
    const double spot = smoothStep(0.10 + 0.22 * freckle.value, 0.04 + 0.16 * freckle.value, freckle.nearest);
    c = mix(c, rgb(0.70, 0.33, 0.32), 0.55 * back * spot);
    for (const double side : {0.36, 0.64}) {
        const double cheek = discDistance((u - side) * 1.3, v - 0.548, 0, 0, 0.035);
        c = mix(c, rgb(0.98, 0.45, 0.45), 0.6 * smoothStep(0.012, -0.02, cheek));
    }
    return mix(c, rgb(0.30, 0.08, 0.09), smoothStep(0.003, -0.002, smileDistance(u, v)));
}

Color swatchAt(Swatch swatch, double x, double y, double u, double v) {
    const double wear = tileFractal(u, v, 16, 4, 801);
    const double brushed = tileNoise(u * 12, v * 120, 1 << 16, 811);
    const double lit = 1 + 0.22 * wear;
    switch (swatch) {
    case Swatch::olive:
        return scaled(rgb(0.42, 0.50, 0.26), lit);
    case Swatch::darkMetal:
        return scaled(rgb(0.36, 0.37, 0.40), lit + 0.12 * brushed);
    case Swatch::wood:
        return scaled(rgb(0.58, 0.36, 0.18), 1 + 0.18 * brushed + 0.12 * sine(40 * (y + 0.15 * wear)));
    case Swatch::red:
        return scaled(rgb(0.84, 0.15, 0.11), lit);
    case Swatch::brightMetal:
        return scaled(rgb(0.74, 0.76, 0.80), 1 + 0.12 * brushed);
    case Swatch::paper: {
        const bool lettering = std::fabs(y) < 0.22 && std::fabs(x) < 0.75 && sine(22 * x) > -0.2;
        return lettering ? rgb(0.2, 0.14, 0.1) : scaled(rgb(0.93, 0.87, 0.68), 1 + 0.08 * wear);
    }
    case Swatch::yellow:
        return scaled(rgb(0.97, 0.78, 0.18), lit);
    case Swatch::black:
        return scaled(rgb(0.13, 0.13, 0.15), lit);
    case Swatch::cord:
        return scaled(rgb(0.80, 0.74, 0.60), 1 + 0.25 * sine(30 * (x + y)));
    case Swatch::glow:
        return mix(rgb(1, 0.95, 0.6), rgb(1, 0.55, 0.1), clamp(0.5 * (x * x + y * y), 0, 1));
    case Swatch::cyan:
        return mix(rgb(0.75, 1, 1), rgb(0.15, 0.65, 0.85), clamp(0.6 * (x * x + y * y), 0, 1));
    case Swatch::hazard:
        return sine(9 * (x + y)) > 0 ? rgb(0.97, 0.80, 0.15) : rgb(0.14, 0.14, 0.15);
    default:
        return rgb(0.6, 0.6, 0.6);
    }
}

} // namespace

Image wormTexture() {
    Image image(512);
    image.fill([](double u, double v) {
        if (v < 0.76)
            return skinAt(u, std::min(v, 0.75));
        if (u < 0.25)
            return eyeAt(u, v);
        if (u > 0.75) // the tuft
            return mix(rgb(0.42, 0.16, 0.10), rgb(0.72, 0.30, 0.14), smoothStep(0.80, 0.96, v));
        return rgb(0.90, 0.55, 0.50); // the lids
    });
    return image;
}

Image weaponsTexture() {
    Image image(256);
    image.fill([](double u, double v) {
        const int column = static_cast<int>(u * swatchesAcross);
        const int row = static_cast<int>(v * swatchesAcross);
        const double x = (u * swatchesAcross - column) * 2 - 1;
        const double y = (v * swatchesAcross - row) * 2 - 1;
        return swatchAt(static_cast<Swatch>(row * swatchesAcross + column), x, y, u, v);
    });
    return image;
}
