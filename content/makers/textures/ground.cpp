#include "brush.h"
#include "textures.h"

#include "../exact_math.h"
#include "../noise.h"

#include <cmath>

Image earthTexture() {
    Image image(groundSide);
    image.fill([](double u, double v) {
        const double clods = tileRidges(u, v, 7, 4, 101);
        const double tone = tileFractal(u, v, 4, 5, 111);
        const double grit = tileNoise(u * 96, v * 96, 96, 121);
        return ramp(rgb(0.36, 0.23, 0.13), rgb(0.60, 0.42, 0.25), rgb(0.78, 0.59, 0.38),
                    0.32 + 0.75 * clods + 0.35 * tone + 0.12 * grit);
    });
    Random random(131);
    for (int i = 0; i < 70; ++i) {
        const double grey = random.range(0.55, 0.85);
        const double x = random.range(0, groundSide);
        const double y = random.range(0, groundSide);
        const double size = random.range(0, 1);
        pebble(image, x, y, 1.6 + 5.5 * size * size * size, rgb(grey, grey * 0.87, grey * 0.7));
    }
    for (int i = 0; i < 26; ++i) { // roots
        const double x = random.range(0, groundSide);
        const double y = random.range(0, groundSide);
        const double angle = random.range(0, 2 * pi);
        stroke(image, x, y, angle, random.range(8, 26), 1.1, {0.87, 0.74, 0.53, 0.55});
    }
    return image;
}

Image grassTexture() {
    Image image(groundSide);
    const auto meadow = [](double u, double v) {
        const double tone = tileFractal(u, v, 3, 5, 201);
        return ramp(rgb(0.17, 0.33, 0.09), rgb(0.27, 0.47, 0.13), rgb(0.41, 0.58, 0.18), 0.5 + 0.5 * tone);
    };
    image.fill(meadow);
    Random random(211);
    for (int i = 0; i < 5200; ++i) {
        const double x = random.range(0, groundSide);
        const double y = random.range(0, groundSide);
        const double angle = pi / 2 + random.range(-1.1, 1.1);
        const Color ground = meadow(x / groundSide, y / groundSide);
        const double light = random.range(0.65, 1.6);
        const double yellow = random.unit() < 0.15 ? 0.14 : 0.0;
        const Color blade{ground[0] * light + yellow, ground[1] * light + yellow * 0.7, ground[2] * light * 0.9, 0.8};
        stroke(image, x, y, angle, random.range(4, 10), 0.75, blade);
    }
    for (int i = 0; i < 26; ++i) { // daisies and buttercups
        const double x = random.range(0, groundSide);
        const double y = random.range(0, groundSide);
        const bool yellow = random.unit() < 0.5;
        stroke(image, x, y, 0, 0.4, 1.5, yellow ? rgb(0.98, 0.86, 0.2) : rgb(0.97, 0.97, 0.92));
        if (!yellow)
            stroke(image, x, y, 0, 0.2, 0.5, rgb(0.95, 0.8, 0.2));
    }
    return image;
}

Image heatherTexture() {
    Image image(groundSide);
    image.fill([](double u, double v) {
        const double tone = tileFractal(u, v, 4, 5, 301);
        return ramp(rgb(0.22, 0.24, 0.12), rgb(0.38, 0.38, 0.18), rgb(0.52, 0.50, 0.26), 0.5 + 0.8 * tone);
    });
    Random random(311);
    for (int i = 0; i < 3400; ++i) {
        const double x = random.range(0, groundSide);
        const double y = random.range(0, groundSide);
        const double patch = tileFractal(x / groundSide, y / groundSide, 5, 3, 321);
        const double light = random.range(0.7, 1.35);
        const bool bloom = random.unit() < clamp(0.5 + 1.3 * patch, 0.12, 0.92);
        const Color twig =
            bloom ? rgb(0.68 * light, 0.38 * light, 0.64 * light) : rgb(0.34 * light, 0.38 * light, 0.16 * light);
        const double length = random.range(2.5, 6.5);
        const double lean = random.range(-0.9, 0.9);
        stroke(image, x, y, pi / 2 + lean, length, bloom ? 1.05 : 0.8, twig);
    }
    return image;
}

Image rockTexture() {
    Image image(groundSide);
    image.fill([](double u, double v) {
        // Beds of stone, broken across into uneven blocks; the joints fade in and out.
        const double bend = 0.045 * tileFractal(u, v, 2, 4, 401);
        const double bed = 9 * (v + bend);
        const int bedNumber = static_cast<int>(std::floor(bed));
        const double inBed = bed - bedNumber;
        const double bedTone = latticeValue((bedNumber % 9 + 9) % 9, 0, 0, 405);
        const double strength = smoothStep(-0.35, 0.3, tileFractal(u, v, 5, 2, 409));
        const double bedJoint = mix(1, smoothStep(0.0, 0.16, std::min(inBed, 1 - inBed)), 0.75 * strength);
        const CellHit block = tileCells(u + 1.5 * bend, v + bend, 5, 421);
        const double crack = mix(1, smoothStep(0.0, 0.07, block.second - block.nearest), strength);
        const double chips = smoothStep(0.0, 0.10, tileRidges(u, v, 7, 2, 411));
        const double grain = tileFractal(u, v, 8, 5, 431);
        const double tone =
            0.5 + 0.45 * grain + 0.20 * (block.value - 0.5) + 0.30 * (bedTone - 0.5) + 0.12 * (inBed - 0.5);
        const Color stone = ramp(rgb(0.50, 0.47, 0.43), rgb(0.75, 0.71, 0.65), rgb(0.95, 0.91, 0.84), tone);
        return scaled(stone, mix(0.62, 1, bedJoint) * mix(0.66, 1, crack) * mix(0.82, 1, chips));
    });
    return image;
}

Image sandTexture() {
    Image image(groundSide);
    image.fill([](double u, double v) {
        const double bend = 0.05 * tileFractal(u, v, 3, 3, 501);
        const double ripples = sine(2 * pi * (9 * (v + bend) + 2 * u));
        const double grit = tileNoise(u * 128, v * 128, 128, 511);
        const double tone = 0.55 + 0.22 * ripples + 0.25 * grit + 0.35 * tileFractal(u, v, 5, 3, 521);
        return ramp(rgb(0.70, 0.58, 0.39), rgb(0.85, 0.75, 0.54), rgb(0.96, 0.89, 0.71), tone);
    });
    Random random(531);
    for (int i = 0; i < 40; ++i) {
        const double shade = random.range(0.7, 1.05);
        const double x = random.range(0, groundSide);
        const double y = random.range(0, groundSide);
        pebble(image, x, y, random.range(0.9, 2.4), rgb(shade * 0.9, shade * 0.84, shade * 0.76));
    }
    return image;
}

Image waterTexture() {
    Image image(groundSide);
    image.fill([](double u, double v) {
        const double bend = 0.04 * tileFractal(u, v, 3, 3, 601);
        const double bright = 1 - smoothStep(0.0, 0.42, tileRidges(u + bend, v - bend, 5, 2, 611));
        const double swell = tileFractal(u - bend, v, 4, 4, 621);
        const double tone = clamp(0.42 + 0.5 * swell + 0.42 * bright, 0, 1);
        Color c = ramp(rgb(0.42, 0.68, 0.82), rgb(0.60, 0.84, 0.93), rgb(1.0, 1.0, 1.0), tone);
        // Labels are drawn before the sea and seen through it: two layers of this must leave their colours alone.
        c[3] = 0.34 + 0.28 * (tone - 0.4) + 0.12 * bright;
        return c;
    });
    return image;
}
