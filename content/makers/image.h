#pragma once

#include <array>
#include <filesystem>
#include <functional>
#include <vector>

/// Red, green, blue, alpha; 0 to 1.
using Color = std::array<double, 4>;

constexpr Color rgb(double r, double g, double b) {
    return {r, g, b, 1};
}
/// From a at f = 0 to b at f = 1 in all four channels.
Color mix(const Color& a, const Color& b, double f);
/// Red, green and blue multiplied by s.
Color scaled(const Color& a, double s);
/// color laid over base as far as color's alpha times coverage says; the base keeps the larger alpha.
Color over(const Color& base, const Color& color, double coverage);

/// A square picture. Row 0 is the first row of the file, which is texture row t = 0.
class Image {
public:
    explicit Image(int pixelsAcross)
        : side(pixelsAcross), pixels(static_cast<std::size_t>(side) * static_cast<std::size_t>(side)) {}
    int size() const { return side; }
    /// Pixel at column x, row y; both wrap around.
    Color& at(int x, int y);
    const Color& at(int x, int y) const { return const_cast<Image*>(this)->at(x, y); }
    /// Sets every pixel from its centre (u, v), 0 to 1.
    void fill(const std::function<Color(double u, double v)>& paint);

private:
    int side;
    std::vector<Color> pixels;
};

/// Writes an uncompressed true-colour TGA, 32 bits with alpha or 24 without. False with a line on stderr on failure.
bool writeTga(const std::filesystem::path& file, const Image& image, bool withAlpha);
