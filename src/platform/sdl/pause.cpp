#include "platform/sdl/pause.h"

#include "platform/sdl/backend.h"
#include "platform/sdl/desktop_keys.h"
#include "platform/sdl/key_map.h"
#include "platform/sdl/sound_device.h"

namespace {

/// ms after which the loop looks around again; a signal that ends the program may have come unnoticed.
constexpr int longestWait = 100;

/// Those that only change what others mean are none, nor are those that belong to the desktop.
bool endsPause(const SDL_KeyboardEvent& key) {
    if (key.repeat != 0 || (key.keysym.scancode >= SDL_SCANCODE_LCTRL && key.keysym.scancode <= SDL_SCANCODE_RGUI))
        return false;
    return key.keysym.scancode != SDL_SCANCODE_PRINTSCREEN && virtualKeyOf(key.keysym.scancode) != 0;
}

bool showsAnew(const SDL_WindowEvent& event) {
    return event.event == SDL_WINDOWEVENT_EXPOSED || event.event == SDL_WINDOWEVENT_SIZE_CHANGED ||
           event.event == SDL_WINDOWEVENT_SHOWN || event.event == SDL_WINDOWEVENT_RESTORED;
}

/// Whether the event ends the pause. The game hears nothing of keys and mouse meanwhile.
bool takeEvent(const SDL_Event& event, const std::function<void()>& draw) {
    switch (event.type) {
    case SDL_KEYDOWN:
        if (!takeDesktopKey(event.key))
            return endsPause(event.key);
        draw();
        return false;
    case SDL_MOUSEBUTTONDOWN:
        return event.button.which != SDL_TOUCH_MOUSEID;
    case SDL_KEYUP:
    case SDL_MOUSEMOTION:
    case SDL_MOUSEBUTTONUP:
        return false;
    case SDL_WINDOWEVENT:
        translateEvent(event);
        if (showsAnew(event.window))
            draw();
        return false;
    default:
        translateEvent(event);
        return event.type == SDL_QUIT;
    }
}

} // namespace

void askForPause(bool withKeys) {
    letEverythingGo();
    backend().listsKeys = withKeys;
    backend().pause = Pause::due;
}

bool pauseIsDue() {
    return backend().pause == Pause::due || backend().pause == Pause::unlessFocused;
}

void pauseGame(const std::function<void()>& draw) {
    Backend& state = backend();
    state.pause = Pause::on;
    updateClock();
    updateCapture();
    pauseSound();
    draw();
    SDL_Event event;
    bool over = false;
    while (!over)
        over = SDL_WaitEventTimeout(&event, longestWait) != 0 && takeEvent(event, draw);
    state.pause = Pause::no;
    state.listsKeys = false;
    resumeSound();
    updateCapture();
    updateClock();
    tellActive(state.focused);
}
