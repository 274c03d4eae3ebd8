#include "platform/sdl/frame.h"

#include "platform/sdl/backend.h"
#include "platform/sdl/desktop_keys.h"
#include "platform/sdl/overlay.h"
#include "platform/sdl/pause.h"
#include "platform/sdl/picture_buffer.h"
#include "platform/sdl/volume.h"

#include <optional>
#include <string>

namespace {

PictureBuffer picture;
OverlayText letters;

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

void writePause() {
    if (backend().listsKeys) {
        listKeys(letters);
    } else {
        letters.drawCentred(300, 4, "Paused");
        letters.drawCentred(400, 1, SDL_GetKeyName(SDL_GetKeyFromScancode(SDL_SCANCODE_F1)) + std::string(": keys"));
    }
    letters.drawCentred(700, 1, "any key goes on");
}

void drawPaused(const KeptFrame& frame) {
    // So that a page of small letters can be read.
    const float dimmed = backend().listsKeys ? 0.15F : 0.35F;
    picture.leave();
    const Size screen = screenSize();
    {
        const OverlayState state(screen.width, screen.height);
        frame.draw(screen.width, screen.height, dimmed);
        writePause();
    }
    SDL_GL_SwapWindow(backend().window.window);
    picture.bind();
}

/// A bar of a hundred for a change of the volume.
void drawNotice(const Size& screen, const VolumeNotice& notice) {
    constexpr int left = 412;
    letters.prepare();
    const OverlayState state(screen.width, screen.height);
    drawBar(left - 12, 90, 224, 64, 0, 0, 0, 0.6F);
    letters.drawCentred(96, 1, notice.text);
    drawBar(left, 128, 200, 14, 1, 1, 1, 0.25F);
    drawBar(left, 128, 2 * notice.percent, 14, 1, 0.85F, 0.3F, 1);
}

void showPicture() {
    const Size screen = screenSize();
    if (picture.exists())
        picture.present(screen.width, screen.height);
    if (const std::optional<VolumeNotice> notice = volumeNotice())
        drawNotice(screen, *notice);
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
    letters.release();
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
    letters.prepare();
    showPicture();
    pauseGame([&] { drawPaused(frame); });
}
