#pragma once

#include <array>
#include <string>

/// How the landscape sends its triangles to GL.
enum class RenderMode : int { immediate = 0, vertexArray = 1, vertexBuffer = 2 };

/// Where light 0 stands: a point in the world, set again under every view transform.
inline constexpr std::array<float, 4> lightPosition = {0.0f, 1000.0f, 0.0f, 1.0f};

/// The window, its GL context and the render settings, as the other subsystems see them.
class Renderer {
public:
    virtual ~Renderer() = default;

    /// Opens the window and its context and sets the fixed GL state; sizes in pixels, depth of colour in bits. Failures
    /// are shown in a message box and answered with false.
    [[nodiscard]] virtual bool createWindow(bool fullscreen, int width, int height, int bits,
                                            const std::string& title) = 0;
    /// Closes the window; always true.
    virtual bool killWindow() = 0;
    /// Opens the window anew in the other mode. Everything made in the old context is lost.
    [[nodiscard]] virtual bool toggleFullscreen() = 0;
    /// Clears the picture; always true.
    virtual bool beginFrame() = 0;
    /// Presents the picture; always true.
    virtual bool endFrame() = 0;
    /// Takes in a new client size, pixels.
    virtual void resize(int width, int height) = 0;
    /// Size asked for at the last `createWindow`, pixels.
    virtual float getWidth() = 0;
    virtual float getHeight() = 0;
    /// Each toggle returns the new value.
    virtual bool toggleMipmaps() = 0;
    virtual bool toggleLinearFiltering() = 0;
    virtual bool toggleTransparency() = 0;
    /// Sets the filters of the texture bound at this moment.
    virtual void applyTextureFilter() = 0;
    /// Moves on to the next render mode and returns it.
    virtual RenderMode cycleRenderMode() = 0;

    RenderMode renderMode = RenderMode::immediate;
};
