#pragma once

// What the desktop layer draws over the game's picture, in GL 1.1, into the frame buffer that is bound. Places are
// pixels of a picture of 1024 x 768 in the middle of the screen, from its top left corner. The game's GL state is left
// as it was; textures live as long as their owners.

#include "platform/sdl/letterbox.h"

#include <string_view>

/// Puts the state that overlays are drawn with in place of the game's while it lives.
class OverlayState {
public:
    OverlayState(int screenWidth, int screenHeight);
    ~OverlayState();
    OverlayState(const OverlayState&) = delete;
    OverlayState& operator=(const OverlayState&) = delete;
};

/// A frame that is kept, to be shown while the game stands. It needs its context as long as it lives.
class KeptFrame {
public:
    /// Copies the picture of this size that was drawn into the frame buffer that is bound.
    KeptFrame(int width, int height);
    ~KeptFrame();
    KeptFrame(const KeptFrame&) = delete;
    KeptFrame& operator=(const KeptFrame&) = delete;
    /// Draws it as large as the screen allows, this bright: 0 to 1.
    void draw(int screenWidth, int screenHeight, float brightness) const;

private:
    unsigned int texture_ = 0;
    int width_;
    int height_;
    float right_ = 1; ///< of the picture in its texture
    float top_ = 1;
};

/// The letters, in a texture of the context that is current.
class OverlayText {
public:
    /// Makes the letters, unless they are there already.
    void prepare();
    /// Forgets them: their context goes.
    void release() { texture_ = 0; }
    /// Draws a line of UTF-8 in white; `size` times 12 x 24 pixels a letter. Unknown ones leave a gap.
    void draw(int x, int y, int size, std::string_view text) const;
    /// The same, around the middle of the picture.
    void drawCentred(int y, int size, std::string_view text) const;

private:
    unsigned int texture_ = 0;
};

/// A rectangle of one colour, red to alpha from 0 to 1.
void drawBar(int x, int y, int width, int height, float red, float green, float blue, float alpha);
