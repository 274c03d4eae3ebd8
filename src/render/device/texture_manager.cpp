#include "render/device/texture_manager.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"
#include "render/device/texture.h"
#include "render/device/texture_loader.h"

TextureManager::TextureManager() {
    theModuleManager->setTextureManager(this);
    logLine("TextureManager Konstruktor\n");
}

TextureManager::~TextureManager() {
    while (!textures.empty())
        textures.erase(textures.begin());
    logLine("TextureManager Destruktor\n");
}

Texture* TextureManager::getTexture(const std::string& name) {
    const auto known = textures.find(name);
    if (known != textures.end())
        return known->second.get();
    std::unique_ptr<Texture> loaded(theModuleManager->getTextureLoader()->load(name));
    if (loaded == nullptr) {
        logLine(" TextureManager: couldnot get Texture : %s from TextureLoader \n", name.c_str());
        return nullptr;
    }
    logLine(" TextureManager: storing Texture %s \n", name.c_str());
    Texture* const texture = loaded.get();
    textures.emplace(name, std::move(loaded));
    return texture;
}
