#include "platform/sdl/frame.h"

#include "platform/sdl/backend.h"
#include "platform/sdl/overlay.h"
#include "platform/sdl/pause.h"
#include "platform/sdl/picture_buffer.h"

namespace {

PictureBuffer picture;

struct Size {
    int width = 0;
    int height = 0;
};

Size screenSize() {
    Size size;
    SDL_GL_GetDrawableSize(backend().window.window, &size.width, &size.height);
    return size;
}

/// The size of what the game draws into.
Size frameSize() {
    const HWND__& window = backend().window;
    return picture.exists() ? Size{window.width, window.height} : screenSize();
}

void drawPaused(const KeptFrame& frame, const OverlayText& text) {
    constexpr float dimmed = 0.35F;
    picture.leave();
    const Size screen = screenSize();
    {
        const OverlayState state(screen.width, screen.height);
        frame.draw(screen.width, screen.height, dimmed);
        text.drawCentred(300, 4, "Paused");
        text.drawCentred(420, 1, "any key goes on");
    }
    SDL_GL_SwapWindow(backend().window.window);
    picture.bind();
}

void showPicture() {
    if (picture.exists()) {
        const Size screen = screenSize();
        picture.present(screen.width, screen.height);
    }
    SDL_GL_SwapWindow(backend().window.window);
    picture.bind();
}

} // namespace

void fitFrame() {
    if (backend().context == nullptr)
        return;
    const HWND__& window = backend().window;
    const Size screen = screenSize();
    picture.destroy();
    if (window.fullscreen && (screen.width != window.width || screen.height != window.height))
        picture.create(window.width, window.height);
}

void forgetFrame() {
    picture.release();
}

void showFrame() {
    if (!pauseIsDue()) {
        showPicture();
        return;
    }
    // Drawing the first picture of the pause takes time that is none of the game.
    stopClock();
    const Size size = frameSize();
    const KeptFrame frame(size.width, size.height);
    const OverlayText text;
    showPicture();
    pauseGame([&] { drawPaused(frame, text); });
}
