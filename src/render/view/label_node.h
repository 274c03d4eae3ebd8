#pragma once

#include "core/scene/scene_node.h"
#include "render/math/vector2.h"

#include <array>
#include <string>

class Texture;

/// A short line of text in the scene, centred on its position and turned toward the viewer, from the glyph texture
/// "font". Texts are bytes of the glyph grid (Latin-1).
class LabelNode : public SceneNode {
public:
    LabelNode();

    void draw() override;

    void setText(const std::string& value) { text = value; }
    const std::string& getText() const { return text; }
    void setColor(float red, float green, float blue, float alpha) { color = {red, green, blue, alpha}; }
    /// Four floats: red, green, blue, alpha.
    void setColor(const float* rgba) { color = {rgba[0], rgba[1], rgba[2], rgba[3]}; }

private:
    Texture* texture;
    std::string text;
    std::array<float, 4> color = {1.0f, 1.0f, 1.0f, 1.0f};
    std::array<Vector2, 256> glyphCoords;
};
