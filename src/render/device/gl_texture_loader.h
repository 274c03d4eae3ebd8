#pragma once

// Reads uncompressed true-colour TGA files (24 or 32 bits, no image ID, no colour map, origin 0) into mipmapped GL
// textures. Every other variant is refused; the reason goes to the log, in plainer words it is said
// (core/base/data_error.h), and the result is null. Rows are uploaded in file order: the first row of the file is
// texture row t = 0. Memory is asked for only after the file was seen to be long enough for the picture its header
// promises; what follows the picture is ignored.

#include "render/device/texture_loader.h"

#include <cstdint>
#include <vector>

class ByteReader;

class GLTextureLoader : public TextureLoader {
public:
    /// Registers itself.
    GLTextureLoader();
    ~GLTextureLoader() override;

    Texture* load(const std::string& name) override;
    void setPath(const std::string& directoryPrefix) override { path = directoryPrefix; }

private:
    struct Image {
        int width = 0;
        int height = 0;
        int bytesPerPixel = 0;
        std::vector<std::uint8_t> pixels;
    };

    [[nodiscard]] static bool readImage(const std::string& filePath, Image& image);
    [[nodiscard]] static bool readHeader(ByteReader& in, const std::string& filePath, Image& image);
    [[nodiscard]] static bool readPixels(ByteReader& in, const std::string& filePath, Image& image);
    static Texture* upload(const std::string& name, const Image& image);

    std::string path;
};
