#include "image.h"

#include "exact_math.h"

#include <cmath>
#include <fstream>
#include <iostream>

Color mix(const Color& a, const Color& b, double f) {
    Color result{};
    for (std::size_t i = 0; i < 4; ++i)
        result[i] = mix(a[i], b[i], f);
    return result;
}

Color scaled(const Color& a, double s) {
    return {a[0] * s, a[1] * s, a[2] * s, a[3]};
}

Color over(const Color& base, const Color& color, double coverage) {
    const double f = color[3] * coverage;
    if (f <= 0)
        return base;
    const double alpha = f + base[3] * (1 - f);
    Color result{};
    for (std::size_t i = 0; i < 3; ++i)
        result[i] = (color[i] * f + base[i] * base[3] * (1 - f)) / alpha;
    result[3] = alpha;
    return result;
}

Color& Image::at(int x, int y) {
    const int wx = ((x % side) + side) % side;
    const int wy = ((y % side) + side) % side;
    return pixels[static_cast<std::size_t>(wy) * static_cast<std::size_t>(side) + static_cast<std::size_t>(wx)];
}

void Image::fill(const std::function<Color(double, double)>& paint) {
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x)
            at(x, y) = paint((x + 0.5) / side, (y + 0.5) / side);
    }
}

bool writeTga(const std::filesystem::path& file, const Image& image, bool withAlpha) {
    const auto low = static_cast<char>(image.size() & 255);
    const auto high = static_cast<char>(image.size() >> 8);
    std::string bytes{0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0, low, high, low, high};
    bytes += static_cast<char>(withAlpha ? 32 : 24);
    bytes += static_cast<char>(withAlpha ? 8 : 0);
    for (int y = 0; y < image.size(); ++y) {
        for (int x = 0; x < image.size(); ++x) {
            const Color& c = image.at(x, y);
            for (const std::size_t channel : {2U, 1U, 0U, 3U}) {
                if (channel == 3 && !withAlpha)
                    continue;
                bytes += static_cast<char>(static_cast<unsigned char>(std::floor(clamp(c[channel], 0, 1) * 255 + 0.5)));
            }
        }
    }
    std::ofstream out(file, std::ios::binary);
    out << bytes;
    out.close();
    if (!out)
        std::cerr << file.string() << ": cannot be written\n";
    return static_cast<bool>(out);
}
