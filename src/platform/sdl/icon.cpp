#include "platform/sdl/icon.h"

#include <array>
#include <cstdint>
#include <vector>

namespace {

constexpr int side = 64;

/// What lies within an ellipse has its colour; later ones lie over earlier ones. Pixels, y downwards; ARGB.
struct Patch {
    double x, y, radiusX, radiusY;
    std::uint32_t colour;
};

constexpr std::array<Patch, 10> patches = {{
    {32, 32, 30, 30, 0xFF6FA8E8}, // sky
    {33, 34, 11, 22, 0xFF7A3C34}, // the worm, with a dark edge
    {33, 34, 9.5, 20.5, 0xFFE58A7C},
    {28.5, 26, 4.5, 5.5, 0xFFFFFFFF}, // its eyes
    {38, 26, 4.5, 5.5, 0xFFFFFFFF},
    {27.5, 27, 1.8, 2.6, 0xFF1A1A1A},
    {37, 27, 1.8, 2.6, 0xFF1A1A1A},
    {32, 66, 34, 22, 0xFF2C5A1E}, // the hill
    {32, 68, 34, 22, 0xFF4C9A2A},
    {48, 47, 7, 6, 0xFF6B4A2E}, // a crater
}};

bool lies(double x, double y, const Patch& patch) {
    const double dx = (x - patch.x) / patch.radiusX;
    const double dy = (y - patch.y) / patch.radiusY;
    return dx * dx + dy * dy <= 1;
}

std::uint32_t colourAt(double x, double y) {
    std::uint32_t colour = 0;
    // The sky's circle is the picture's edge.
    if (lies(x, y, patches[0]))
        for (const Patch& patch : patches)
            if (lies(x, y, patch))
                colour = patch.colour;
    return colour;
}

} // namespace

void setIcon(SDL_Window* window) {
    std::vector<std::uint32_t> pixels;
    for (int y = 0; y < side; ++y)
        for (int x = 0; x < side; ++x)
            pixels.push_back(colourAt(x + 0.5, y + 0.5));
    SDL_Surface* const surface =
        SDL_CreateRGBSurfaceWithFormatFrom(pixels.data(), side, side, 32, side * 4, SDL_PIXELFORMAT_ARGB8888);
    if (surface == nullptr)
        return;
    SDL_SetWindowIcon(window, surface);
    SDL_FreeSurface(surface);
}
