#pragma once

#include <map>
#include <memory>
#include <string>

class Texture;

/// Keeps every texture under the name it was asked for by, from the first request to shutdown. Registers itself.
class TextureManager {
public:
    TextureManager();
    ~TextureManager();
    TextureManager(const TextureManager&) = delete;
    TextureManager& operator=(const TextureManager&) = delete;

    /// The texture of that name, loaded at the first request; null when it cannot be loaded, and the next request tries
    /// again. Stays with the manager.
    Texture* getTexture(const std::string& name);

private:
    std::map<std::string, std::unique_ptr<Texture>> textures;
};
