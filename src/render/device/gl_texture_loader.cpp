#include "render/device/gl_texture_loader.h"

#include "core/base/byte_reader.h"
#include "core/base/data_error.h"
#include "core/base/file_access.h"
#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "platform/gl.h"
#include "render/device/gl_texture.h"

#include <array>
#include <memory>
#include <new>
#include <utility>

namespace {

/// Plain pixels that start in a corner: type 2, and zeros for all that a picture may have besides.
constexpr std::array<std::uint8_t, 12> acceptedHeader = {0, 0, 2, 0, 0, 0, 0, 0, 0, 0, 0, 0};

/// What keeps a file with this beginning from being read, for whoever made it.
std::string refusalOf(const std::array<std::uint8_t, 12>& header) {
    const int type = header[2];
    if (type == 9 || type == 10 || type == 11)
        return "the picture is run-length coded, save it uncompressed";
    if (header[1] != 0 || type == 1)
        return "the picture has a palette, save it as true colour";
    if (type == 3)
        return "the picture is grey, save it as true colour";
    if (type != 2)
        return "this is no TGA picture";
    return header[0] != 0 ? "the file has an image ID, save it without" : "the picture's origin is not at 0, 0";
}

/// Turns blue, green, red (, alpha) into red, green, blue (, alpha).
void exchangeRedAndBlue(std::vector<std::uint8_t>& pixels, std::size_t bytesPerPixel) {
    for (std::size_t i = 0; i + 2 < pixels.size(); i += bytesPerPixel)
        std::swap(pixels[i], pixels[i + 2]);
}

} // namespace

GLTextureLoader::GLTextureLoader() {
    theModuleManager->setTextureLoader(this);
    logLine("GLTextureLoader Konstruktor\n");
}

GLTextureLoader::~GLTextureLoader() {
    logLine("GLTextureLoader Destruktor\n");
}

Texture* GLTextureLoader::load(const std::string& name) {
    const std::string filePath = path + name + ".tga";
    logLine(" loading Texture: '%s' \n", filePath.c_str());
    Image image;
    if (!readImage(filePath, image))
        return nullptr;
    exchangeRedAndBlue(image.pixels, static_cast<std::size_t>(image.bytesPerPixel));
    return upload(name, image);
}

bool GLTextureLoader::readImage(const std::string& filePath, Image& image) {
    std::vector<std::uint8_t> bytes;
    if (!readWholeFile(filePath, bytes)) {
        logLine(" GLTextureLoader: Could not open texture file '%s' \n", filePath.c_str());
        return false;
    }
    ByteReader in(bytes);
    return readHeader(in, filePath, image) && readPixels(in, filePath, image);
}

bool GLTextureLoader::readHeader(ByteReader& in, const std::string& filePath, Image& image) {
    std::array<std::uint8_t, 12> fixedHeader{};
    for (std::uint8_t& byte : fixedHeader)
        byte = in.read<std::uint8_t>();
    if (in.hasFailed()) {
        logLine(" GLTextureLoader: Could read texture file '%s' \n", filePath.c_str());
        return false;
    }
    if (fixedHeader != acceptedHeader) {
        logLine(" GLTextureLoader: unknown file type of '%s' \n", filePath.c_str());
        sayDataFault(filePath, {0, refusalOf(fixedHeader)});
        return false;
    }
    image.width = in.read<std::uint16_t>();
    image.height = in.read<std::uint16_t>();
    const int bpp = in.read<std::uint8_t>();
    in.skip(1); // image descriptor
    if (in.hasFailed()) {
        logLine(" GLTextureLoader: not able to read Header '%s' \n", filePath.c_str());
        return false;
    }
    image.bytesPerPixel = bpp / 8;
    if (image.width == 0 || image.height == 0 || (bpp != 24 && bpp != 32)) {
        logLine("GLTextureLoader : Invalid texture information \n");
        sayDataFault(filePath, {0, std::to_string(image.width) + " x " + std::to_string(image.height) + " pixels of " +
                                       std::to_string(bpp) + " bits; 24 and 32 bits are read"});
        return false;
    }
    return true;
}

bool GLTextureLoader::readPixels(ByteReader& in, const std::string& filePath, Image& image) {
    const auto pixelCount = static_cast<std::size_t>(image.width) * static_cast<std::size_t>(image.height);
    const auto bytesPerPixel = static_cast<std::size_t>(image.bytesPerPixel);
    if (!in.holds(pixelCount, bytesPerPixel)) {
        logLine("GLTextureLoader : Could not read Texturedata \n");
        sayDataFault(filePath, {0, "the picture breaks off"});
        return false;
    }
    try {
        image.pixels = in.readBytes(pixelCount * bytesPerPixel);
    } catch (const std::bad_alloc&) {
        logLine("GLTextureLoader : Could not Alloc Memory for Texture ");
        return false;
    }
    return true;
}

Texture* GLTextureLoader::upload(const std::string& name, const Image& image) {
    const auto format = static_cast<GLenum>(image.bytesPerPixel == 3 ? GL_RGB : GL_RGBA);
    GLuint id = 0;
    glGenTextures(1, &id);
    glBindTexture(GL_TEXTURE_2D, id);
    // Rows of 24-bit pictures need not be a multiple of four bytes long.
    glPixelStorei(GL_UNPACK_ALIGNMENT, 1);
    glTexImage2D(GL_TEXTURE_2D, 0, image.bytesPerPixel, image.width, image.height, 0, format, GL_UNSIGNED_BYTE,
                 image.pixels.data());
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_S, GL_REPEAT);
    glTexParameteri(GL_TEXTURE_2D, GL_TEXTURE_WRAP_T, GL_REPEAT);
    gluBuild2DMipmaps(GL_TEXTURE_2D, static_cast<GLint>(format), image.width, image.height, format, GL_UNSIGNED_BYTE,
                      image.pixels.data());

    auto texture = std::make_unique<GLTexture>(name);
    texture->setTextureId(id);
    texture->setWidth(image.width);
    texture->setHeight(image.height);
    texture->setBpp(image.bytesPerPixel * 8);
    texture->setFormat(static_cast<int>(format));
    return texture.release();
}
