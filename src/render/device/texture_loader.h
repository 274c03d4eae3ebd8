#pragma once

#include <string>

class Texture;

/// Makes textures from files.
class TextureLoader {
public:
    virtual ~TextureLoader() = default;

    /// Loads a texture by its bare name; the caller owns it. Null when the file is missing or not readable.
    virtual Texture* load(const std::string& name) = 0;
    /// Sets what is put in front of every name: a directory with its closing slash.
    virtual void setPath(const std::string& directoryPrefix) = 0;
};
