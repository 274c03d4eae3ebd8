#pragma once

// A frame buffer of the size the game believes the screen to have. All drawing goes into it while it exists; present
// scales it onto the real back buffer. It belongs to the GL context that is current when it is made.

#include <array>

class PictureBuffer {
public:
    /// Makes the buffer and directs all drawing into it; where the driver cannot, it does not exist.
    void create(int width, int height);
    /// Copies the picture to the middle of a back buffer of this size.
    void present(int screenWidth, int screenHeight) const;
    /// Directs the drawing into it again after a present; nothing happens where it does not exist.
    void bind() const;
    /// Directs the drawing onto the back buffer.
    void leave() const;
    /// Gives the buffer back to its context, which is current, and directs the drawing onto the back buffer.
    void destroy();
    /// Forgets the buffer; its context goes, or has gone, with everything in it.
    void release() { framebuffer_ = 0; }
    bool exists() const { return framebuffer_ != 0; }

private:
    unsigned int framebuffer_ = 0;
    std::array<unsigned int, 2> renderbuffers_{}; ///< colour, depth
    int width_ = 0;
    int height_ = 0;
};
