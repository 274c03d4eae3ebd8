// Ground textures of the further levels: stone of other colours, snow, moss, walls and wood.

#include "brush.h"
#include "textures.h"

#include "../exact_math.h"
#include "../noise.h"

#include <algorithm>
#include <cmath>

namespace {

int wrapped(int i, int period) {
    return (i % period + period) % period;
}

/// Sharp-edged board or stone in a row of a wall: position within it and the number it has.
struct Stone {
    double edge; ///< distance to its nearest border, in rows
    double tone; ///< 0 to 1
};

/// rows and columns even numbers, so that the pattern repeats; every second row is shifted.
Stone stoneAt(double u, double v, int rows, int columns, unsigned seed) {
    const double y = v * rows;
    const int row = static_cast<int>(std::floor(y));
    const double shift = (row & 1) ? 0.5 : 0.06;
    const double x = u * columns + shift;
    const int column = static_cast<int>(std::floor(x));
    const double inX = (x - column) * rows / columns;
    const double inY = y - row;
    const double width = static_cast<double>(rows) / columns;
    const double edge = std::min(std::min(inX, width - inX), std::min(inY, 1 - inY));
    return {edge, latticeValue(wrapped(column, columns), wrapped(row, rows), 0, seed)};
}

} // namespace

Image redstoneTexture() {
    Image image(groundSide);
    image.fill([](double u, double v) {
        // Beds of wind-blown sand, lying across each other.
        const double bend = 0.06 * tileFractal(u, v, 2, 4, 1101);
        const double beds = sine(2 * pi * (7 * (v + bend))) * 0.5 + 0.3 * sine(2 * pi * (19 * (v + bend) + u));
        const double pits = smoothStep(0.02, 0.10, tileRidges(u, v, 6, 2, 1111));
        const double tone = 0.5 + 0.28 * beds + 0.4 * tileFractal(u, v, 7, 5, 1121);
        const Color stone = ramp(rgb(0.45, 0.20, 0.12), rgb(0.72, 0.38, 0.22), rgb(0.92, 0.62, 0.40), tone);
        return scaled(stone, mix(0.74, 1, pits));
    });
    return image;
}

Image slateTexture() {
    Image image(groundSide);
    image.fill([](double u, double v) {
        const double bend = 0.05 * tileFractal(u, v, 3, 4, 1201);
        const CellHit block = tileCells(u + bend, v - bend, 6, 1211);
        const double joint = smoothStep(0.0, 0.09, block.second - block.nearest);
        const double leaves = sine(2 * pi * (14 * (v + bend) + 5 * u));
        const double tone = 0.45 + 0.4 * tileFractal(u, v, 8, 5, 1221) + 0.3 * (block.value - 0.5) + 0.1 * leaves;
        const Color stone = ramp(rgb(0.20, 0.22, 0.26), rgb(0.38, 0.41, 0.46), rgb(0.62, 0.65, 0.69), tone);
        return scaled(stone, mix(0.62, 1, joint));
    });
    return image;
}

Image mossTexture() {
    Image image(groundSide);
    const auto cushions = [](double u, double v) {
        const CellHit cushion = tileCells(u, v, 11, 1301);
        return 0.95 - 1.05 * cushion.nearest + 0.35 * tileFractal(u, v, 5, 5, 1311) + 0.25 * (cushion.value - 0.5);
    };
    image.fill([&cushions](double u, double v) {
        return ramp(rgb(0.16, 0.22, 0.06), rgb(0.38, 0.46, 0.11), rgb(0.66, 0.68, 0.22), cushions(u, v));
    });
    Random random(1321);
    for (int i = 0; i < 2600; ++i) {
        const double x = random.range(0, groundSide);
        const double y = random.range(0, groundSide);
        const double angle = random.range(0, 2 * pi);
        const double light = random.range(0.6, 1.3);
        const Color tip{0.52 * light, 0.57 * light, 0.16 * light, 0.5};
        stroke(image, x, y, angle, random.range(1, 3.5), 0.7, tip);
    }
    return image;
}

Image snowTexture() {
    Image image(groundSide);
    image.fill([](double u, double v) {
        const double drift = tileFractal(u, v, 3, 5, 1401);
        const double glitter =
            latticeValue(static_cast<int>(u * groundSide), static_cast<int>(v * groundSide), 0, 1411);
        const double tone = 0.62 + 0.6 * drift + (glitter > 0.985 ? 0.5 : 0.0);
        return ramp(rgb(0.74, 0.81, 0.90), rgb(0.90, 0.93, 0.97), rgb(1.0, 1.0, 1.0), tone);
    });
    return image;
}

Image ashTexture() {
    Image image(groundSide);
    image.fill([](double u, double v) {
        const double grit = tileNoise(u * 110, v * 110, 110, 1501);
        const double tone = 0.45 + 0.5 * tileFractal(u, v, 4, 5, 1511) + 0.22 * grit;
        return ramp(rgb(0.24, 0.22, 0.22), rgb(0.40, 0.37, 0.36), rgb(0.58, 0.54, 0.50), tone);
    });
    Random random(1521);
    for (int i = 0; i < 90; ++i) {
        const double shade = random.range(0.2, 0.5);
        const double x = random.range(0, groundSide);
        const double y = random.range(0, groundSide);
        pebble(image, x, y, random.range(0.9, 3.4), rgb(shade * 1.05, shade * 0.95, shade * 0.9));
    }
    return image;
}

Image brickTexture() {
    Image image(groundSide);
    image.fill([](double u, double v) {
        const double wave = 0.006 * tileFractal(u, v, 6, 3, 1601);
        const Stone stone = stoneAt(u + wave, v - wave, 10, 6, 1611);
        const double joint = smoothStep(0.04, 0.13, stone.edge + 0.03 * tileNoise(u * 40, v * 40, 40, 1621));
        const double tone = 0.2 + 0.5 * stone.tone + 0.45 * tileFractal(u, v, 9, 4, 1631);
        const Color face = ramp(rgb(0.47, 0.33, 0.27), rgb(0.68, 0.50, 0.40), rgb(0.84, 0.70, 0.58), tone);
        return mix(rgb(0.36, 0.33, 0.30), face, joint);
    });
    return image;
}

Image planksTexture() {
    Image image(groundSide);
    image.fill([](double u, double v) {
        const int board = static_cast<int>(std::floor(u * 8));
        const double inBoard = u * 8 - board;
        const double tone = latticeValue(board, 0, 0, 1701);
        const double grain = tileNoise(u * 64, v * 4 + 1.3 * tone, 64, 1711) + 0.6 * tileNoise(u * 96, v * 9, 96, 1721);
        const double gap = smoothStep(0.02, 0.08, std::min(inBoard, 1 - inBoard));
        const Color wood =
            ramp(rgb(0.33, 0.20, 0.10), rgb(0.55, 0.37, 0.20), rgb(0.74, 0.55, 0.33), 0.3 + 0.4 * tone + 0.22 * grain);
        return scaled(wood, mix(0.4, 1, gap));
    });
    return image;
}

Image crateTexture() {
    constexpr int side = 64;
    Image image(side);
    image.fill([](double u, double v) {
        const double x = std::fabs(u - 0.5) * 2;
        const double y = std::fabs(v - 0.5) * 2;
        const double frame = std::max(x, y);
        const double brace = std::fabs(u - v) * 3.2;
        const double board = v * 5 - std::floor(v * 5);
        const double gap = smoothStep(0.03, 0.14, std::min(board, 1 - board));
        const double grain = 0.5 + 0.5 * tileNoise(u * 6, v * 32, 32, 1811);
        Color c = scaled(ramp(rgb(0.42, 0.27, 0.12), rgb(0.66, 0.46, 0.22), rgb(0.82, 0.62, 0.35), grain),
                         mix(0.45, 0.85, gap));
        if (brace < 0.42)
            c = scaled(rgb(0.80, 0.58, 0.30), brace < 0.34 ? 0.85 + 0.2 * grain : 0.4);
        if (frame > 0.72)
            c = scaled(rgb(0.86, 0.64, 0.34), frame < 0.76 || frame > 0.97 ? 0.4 : 0.85 + 0.2 * grain);
        const double nailX = x - 0.86;
        const double nailY = y - 0.86;
        if (nailX * nailX + nailY * nailY < 0.0035)
            c = rgb(0.22, 0.22, 0.24);
        return c;
    });
    return image;
}
