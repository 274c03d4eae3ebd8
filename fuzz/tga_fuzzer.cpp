#include "platform/headless/headless.h"
#include "render/device/gl_texture.h"
#include "render/device/texture_loader.h"
#include "support/bench.h"

#include <memory>

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const Bench bench;
    memory_files::put("./textures/t.tga", data, size);
    const std::unique_ptr<Texture> texture(theModuleManager->getTextureLoader()->load("t"));
    if (texture == nullptr) {
        require(Bench::logLines() > 1, "the log says why");
        return 0;
    }
    const auto pixels = static_cast<std::size_t>(texture->getWidth()) * static_cast<std::size_t>(texture->getHeight()) *
                        static_cast<std::size_t>(texture->getBpp() / 8);
    require(pixels > 0 && pixels <= size, "the picture is in the file");
    const auto id = static_cast<const GLTexture&>(*texture).getTextureId();
    require(headless::glState().textures.at(id).pixels.size() == pixels, "the picture is uploaded whole");
    texture->bind();
    return 0;
}
