#pragma once

#include <string>
#include <utility>

/// A picture that surfaces are drawn with. Owned by the texture manager; everybody else borrows it for the whole run.
class Texture {
public:
    explicit Texture(std::string textureName) : name(std::move(textureName)) {}
    virtual ~Texture() = default;
    Texture(const Texture&) = delete;
    Texture& operator=(const Texture&) = delete;

    virtual void setName(const std::string& value) { name = value; }
    virtual void setWidth(int value) { width = value; }
    virtual void setHeight(int value) { height = value; }
    virtual void setBpp(int value) { bpp = value; }
    virtual void setFormat(int value) { format = value; }
    /// The name it was asked for by: no directory, no extension.
    virtual std::string getName() const { return name; }
    /// Pixels.
    virtual int getWidth() const { return width; }
    virtual int getHeight() const { return height; }
    /// Bits per pixel: 24 or 32.
    virtual int getBpp() const { return bpp; }
    /// GL pixel format: GL_RGB or GL_RGBA.
    virtual int getFormat() const { return format; }
    /// Makes it the texture that is drawn with; always true.
    virtual bool bind() = 0;

private:
    std::string name;
    int width = 0;
    int height = 0;
    int bpp = 0;
    int format = 0;
};
