#include "picture.h"

#include "platform/gl.h"

#include <cstddef>
#include <fstream>
#include <vector>

bool savePicture(const std::string& path, int width, int height) {
    const std::size_t rowSize = static_cast<std::size_t>(width) * 3;
    std::vector<char> pixels(rowSize * static_cast<std::size_t>(height));
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, width, height, GL_RGB, GL_UNSIGNED_BYTE, pixels.data());
    std::ofstream file(path, std::ios::binary);
    file << "P6\n" << width << ' ' << height << "\n255\n";
    // GL's first row is the lowest, the file's the highest.
    for (std::size_t row = static_cast<std::size_t>(height); row-- > 0;)
        file.write(pixels.data() + row * rowSize, static_cast<std::streamsize>(rowSize));
    return file.good();
}
