#pragma once

#include "render/device/texture.h"

#include <cstdint>

/// A texture that lives in the GL context current at its loading.
class GLTexture : public Texture {
public:
    explicit GLTexture(const std::string& textureName);
    /// Deletes the GL texture object.
    ~GLTexture() override;

    void setTextureId(std::uint32_t id) { textureId = id; }
    std::uint32_t getTextureId() const { return textureId; }
    /// Lets the renderer set the filters of the texture bound so far, then binds this one.
    bool bind() override;

private:
    std::uint32_t textureId = 0;
};
