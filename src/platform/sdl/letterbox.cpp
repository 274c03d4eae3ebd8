#include "platform/sdl/letterbox.h"

#include <algorithm>
#include <cstdint>

Letterbox letterbox(int pictureWidth, int pictureHeight, int screenWidth, int screenHeight) {
    Letterbox box;
    const std::int64_t widthAtFullHeight = std::int64_t{screenHeight} * pictureWidth / std::max(pictureHeight, 1);
    const std::int64_t heightAtFullWidth = std::int64_t{screenWidth} * pictureHeight / std::max(pictureWidth, 1);
    box.width = static_cast<int>(std::clamp<std::int64_t>(widthAtFullHeight, 1, std::max(screenWidth, 1)));
    box.height = static_cast<int>(std::clamp<std::int64_t>(heightAtFullWidth, 1, std::max(screenHeight, 1)));
    box.x = (screenWidth - box.width) / 2;
    box.y = (screenHeight - box.height) / 2;
    return box;
}
