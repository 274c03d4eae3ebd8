// SDL's events as window messages, and the queue that hands them out.

#include "platform/sdl/backend.h"
#include "platform/sdl/desktop_keys.h"
#include "platform/sdl/frame.h"
#include "platform/sdl/key_map.h"
#include "platform/sdl/sound_device.h"

static_assert(SDL_SCANCODE_A == 4 && SDL_SCANCODE_1 == 30 && SDL_SCANCODE_F1 == 58 && SDL_SCANCODE_LALT == 226,
              "the key map counts on SDL's scancodes being USB usage numbers");

namespace {

/// ms that the loop of a minimised window waits for each look at the empty queue.
constexpr int minimisedNap = 10;

LPARAM packed(int low, int high) {
    return MAKELPARAM(static_cast<WORD>(low), static_cast<WORD>(high));
}

void postKey(const HeldKeys::Message& key) {
    postMessage(key.message, static_cast<WPARAM>(key.virtualKey), 1);
}

void postButton(bool down) {
    backend().leftButton = down;
    const POINT at = backend().cursor.position();
    postMessage(down ? WM_LBUTTONDOWN : WM_LBUTTONUP, down ? 1 : 0, packed(at.x, at.y));
}

/// Whether another key that means the same to the game is still down.
bool otherKeyHolds(SDL_Scancode released) {
    int count = 0;
    const Uint8* const down = SDL_GetKeyboardState(&count);
    for (int key = 0; key < count; ++key)
        if (key != released && down[key] != 0 && gameKeyOf(key) == gameKeyOf(released))
            return true;
    return false;
}

void translateKey(const SDL_KeyboardEvent& event) {
    if (event.state == SDL_PRESSED && takeDesktopKey(event))
        return;
    const int key = gameKeyOf(event.keysym.scancode);
    if (key == 0 || (event.state == SDL_RELEASED && otherKeyHolds(event.keysym.scancode)))
        return;
    const bool alt = (event.keysym.mod & KMOD_ALT) != 0;
    postKey(event.state == SDL_PRESSED ? backend().keys.press(key, alt) : backend().keys.release(key, alt));
}

void translateMotion(const SDL_MouseMotionEvent& event) {
    Backend& state = backend();
    // A pointer that is not captured belongs to the desktop, not to the game.
    if (SDL_GetRelativeMouseMode() != SDL_TRUE || event.which == SDL_TOUCH_MOUSEID)
        return;
    state.cursor.move(event.xrel, state.invertedMouse ? -event.yrel : event.yrel);
    const POINT at = state.cursor.position();
    postMessage(WM_MOUSEMOVE, state.leftButton ? 1 : 0, packed(at.x, at.y));
}

/// Nothing may stay pressed that the window will not see released.
void loseFocus() {
    Backend& state = backend();
    state.focused = false;
    letEverythingGo();
    if (state.pause == Pause::no && !environmentIs("BRACKENMOOR_FOCUS_PAUSE", "no"))
        state.pause = Pause::unlessFocused;
    updateCapture();
}

void gainFocus() {
    Backend& state = backend();
    state.focused = true;
    // A change of the window's kind takes the keyboard away for a moment, and so does a box.
    if (state.pause == Pause::unlessFocused)
        state.pause = Pause::no;
    updateCapture();
    if (state.pause == Pause::no)
        tellActive(true);
}

void setMinimised(bool minimised) {
    Backend& state = backend();
    if (state.window.minimised == minimised)
        return;
    state.window.minimised = minimised;
    if (state.pause == Pause::unlessFocused)
        state.pause = Pause::due;
    updateClock();
    postMessage(WM_ACTIVATE, MAKEWPARAM(state.toldActive ? WA_ACTIVE : WA_INACTIVE, minimised ? 1 : 0), 0);
}

void resized(int width, int height) {
    HWND__& window = backend().window;
    // A full-screen picture keeps the size the game asked for, whatever the screen has.
    if (window.fullscreen)
        fitFrame();
    if (window.fullscreen || (width == window.width && height == window.height))
        return;
    window.width = width;
    window.height = height;
    postMessage(WM_SIZE, 0, packed(width, height));
}

/// A touch screen is no mouse here: a tap would fire.
void translateButton(const SDL_MouseButtonEvent& event) {
    if (event.button == SDL_BUTTON_LEFT && event.which != SDL_TOUCH_MOUSEID)
        postButton(event.state == SDL_PRESSED);
}

void translateWindowEvent(const SDL_WindowEvent& event) {
    const HWND__& window = backend().window;
    if (!backend().windowOpen || event.windowID != SDL_GetWindowID(window.window))
        return;
    switch (event.event) {
    case SDL_WINDOWEVENT_SIZE_CHANGED:
        resized(event.data1, event.data2);
        break;
    case SDL_WINDOWEVENT_FOCUS_GAINED:
        gainFocus();
        break;
    case SDL_WINDOWEVENT_FOCUS_LOST:
        loseFocus();
        break;
    case SDL_WINDOWEVENT_MINIMIZED:
        setMinimised(true);
        break;
    case SDL_WINDOWEVENT_RESTORED:
    case SDL_WINDOWEVENT_MAXIMIZED:
    case SDL_WINDOWEVENT_SHOWN:
        setMinimised(false);
        break;
    default:
        break;
    }
}

/// Reads events until one of them has become a message.
void pump() {
    Backend& state = backend();
    SDL_Event event;
    while (state.queue.empty() && SDL_PollEvent(&event) != 0)
        translateEvent(event);
    if (state.queue.empty() && state.windowOpen && state.window.minimised && !state.quitPending)
        if (SDL_WaitEventTimeout(&event, minimisedNap) != 0)
            translateEvent(event);
}

} // namespace

void tellActive(bool active) {
    Backend& state = backend();
    if (state.toldActive == active)
        return;
    state.toldActive = active;
    postMessage(WM_ACTIVATE, MAKEWPARAM(active ? WA_ACTIVE : WA_INACTIVE, state.window.minimised ? 1 : 0), 0);
}

void letEverythingGo() {
    Backend& state = backend();
    tellActive(false);
    for (const HeldKeys::Message& key : state.keys.releaseAll())
        postKey(key);
    if (state.leftButton)
        postButton(false);
}

void translateEvent(const SDL_Event& event) {
    switch (event.type) {
    case SDL_QUIT:
        postMessage(WM_CLOSE, 0, 0);
        break;
    case SDL_KEYDOWN:
    case SDL_KEYUP:
        translateKey(event.key);
        break;
    case SDL_MOUSEMOTION:
        translateMotion(event.motion);
        break;
    case SDL_MOUSEBUTTONDOWN:
    case SDL_MOUSEBUTTONUP:
        translateButton(event.button);
        break;
    case SDL_WINDOWEVENT:
        translateWindowEvent(event.window);
        break;
    case SDL_AUDIODEVICEREMOVED:
        // Devices that nobody has open, which have the number 0, come and go as they like.
        if (event.adevice.iscapture == 0 && event.adevice.which != 0)
            loseSoundDevice();
        break;
    default:
        break;
    }
}

void postMessage(UINT message, WPARAM wParam, LPARAM lParam) {
    Backend& state = backend();
    const HWND target = state.windowOpen ? &state.window : nullptr;
    state.queue.push_back({target, message, wParam, lParam, GetTickCount(), state.cursor.position()});
}

BOOL PeekMessageA(MSG* message, HWND, UINT, UINT, UINT remove) {
    Backend& state = backend();
    showWaitingWindow();
    pump();
    regainSoundDevice();
    const bool removed = (remove & PM_REMOVE) != 0;
    if (!state.queue.empty()) {
        *message = state.queue.front();
        if (removed)
            state.queue.pop_front();
    } else if (state.quitPending) {
        *message = {nullptr, WM_QUIT, static_cast<WPARAM>(state.quitCode), 0, GetTickCount(), state.cursor.position()};
        state.quitPending = !removed;
    } else {
        return FALSE;
    }
    state.lastTaken = *message;
    return TRUE;
}

BOOL TranslateMessage(const MSG*) {
    return TRUE;
}

LRESULT DispatchMessageA(const MSG* message) {
    // A wish to close that comes while there is no window ends the program all the same.
    if (message->hwnd == nullptr && message->message == WM_CLOSE)
        PostQuitMessage(0);
    if (message->hwnd == nullptr || message->hwnd->procedure == nullptr)
        return 0;
    return message->hwnd->procedure(message->hwnd, message->message, message->wParam, message->lParam);
}

void PostQuitMessage(int exitCode) {
    backend().quitPending = true;
    backend().quitCode = exitCode;
}

LRESULT DefWindowProcA(HWND window, UINT message, WPARAM wParam, LPARAM) {
    const bool closeCommand = message == WM_SYSCOMMAND && wParam == SC_CLOSE;
    const bool altF4 = message == WM_SYSKEYDOWN && wParam == static_cast<WPARAM>(VK_F4);
    if ((closeCommand || altF4) && window != nullptr && window->procedure != nullptr)
        return window->procedure(window, WM_CLOSE, 0, 0);
    if (message == WM_CLOSE)
        DestroyWindow(window);
    return 0;
}
