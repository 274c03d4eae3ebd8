#pragma once

#include <array>
#include <cstdint>
#include <string>

class Texture;

/// How `Font::print` places a text at its x.
enum class TextAlignment : int { left = 0, right = 1, centre = 2 };

/// Text over the finished scene. A texture holds the glyphs, sixteen by sixteen; each has a display list of its own.
/// Positions are fractions of the screen, (0, 0) its lower left corner. Texts are bytes of the glyph grid (Latin-1).
class Font {
public:
    /// Size 1 is 16 pixels high on a screen of 1024 x 768. Needs the renderer and its context.
    Font(const std::string& textureName, float sizeFactor);
    /// Deletes the display lists.
    ~Font();
    Font(const Font&) = delete;
    Font& operator=(const Font&) = delete;

    void setColor(float r, float g, float b, float a) { color = {r, g, b, a}; }
    void print(float x, float y, const std::string& text);
    /// Where x is: at the left end of the text, at its right end, or in its middle.
    void print(float x, float y, const std::string& text, TextAlignment alignment);

    /// Width of one character as a fraction of the screen width.
    float getAdvance() const { return advance; }

private:
    void build(float glyphSize);

    float advance;
    float screenScale;
    float size;
    float screenWidth;
    float screenHeight;
    Texture* texture;
    std::uint32_t listBase = 0;
    std::array<float, 4> color = {1.0f, 1.0f, 1.0f, 1.0f};
};
