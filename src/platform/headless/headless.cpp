#include "platform/headless/headless.h"

#include "platform/headless/desktop_internal.h"

namespace headless {

using namespace detail;

namespace detail {

Desktop& desktop() {
    static Desktop instance;
    return instance;
}

bool fails(Call call) {
    Failure& failure = desktop().failures[call];
    if (failure.successes > 0) {
        --failure.successes;
        return false;
    }
    return failure.times > 0 && failure.times-- > 0;
}

void postTo(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Desktop& state = desktop();
    state.queue.push_back({window, message, wParam, lParam, state.tick, state.cursor});
}

LPARAM packed(LONG low, LONG high) {
    return MAKELPARAM(static_cast<WORD>(low), static_cast<WORD>(high));
}

} // namespace detail

void reset() {
    resetGl();
    desktop() = {};
}

void setTick(DWORD tick) {
    desktop().tick = tick;
}

void advance(DWORD milliseconds) {
    desktop().tick += milliseconds;
}

void setFrameDuration(DWORD milliseconds) {
    desktop().frameDuration = milliseconds;
}

void onFrame(Hook hook) {
    desktop().frameHook = std::move(hook);
}

void onIdle(Hook hook) {
    desktop().idleHook = std::move(hook);
}

unsigned frameCount() {
    return desktop().frames;
}

void post(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto& windows = desktop().windows;
    postTo(windows.empty() ? nullptr : windows.rbegin()->first, message, wParam, lParam);
}

void keyDown(int virtualKey) {
    post(WM_KEYDOWN, static_cast<WPARAM>(virtualKey), 1);
}

void keyUp(int virtualKey) {
    post(WM_KEYUP, static_cast<WPARAM>(virtualKey), 1);
}

void tapKey(int virtualKey) {
    keyDown(virtualKey);
    keyUp(virtualKey);
}

void leftButton(bool down) {
    post(down ? WM_LBUTTONDOWN : WM_LBUTTONUP, down ? 1 : 0, packed(desktop().cursor.x, desktop().cursor.y));
}

void moveMouse(int dx, int dy) {
    const POINT at = desktop().cursor;
    SetCursorPos(at.x + dx, at.y + dy);
}

void resizeWindow(int width, int height) {
    if (desktop().windows.empty())
        return;
    Window& info = desktop().windows.rbegin()->second;
    info.clientWidth = width;
    info.clientHeight = height;
    post(WM_SIZE, 0, packed(width, height));
}

void minimiseWindow() {
    constexpr WPARAM sizeMinimised = 1;
    post(WM_ACTIVATE, MAKEWPARAM(WA_INACTIVE, 1));
    post(WM_SIZE, sizeMinimised, 0);
}

void restoreWindow() {
    const Window* restored = window();
    post(WM_ACTIVATE, MAKEWPARAM(WA_ACTIVE, 0));
    if (restored != nullptr)
        post(WM_SIZE, 0, packed(restored->clientWidth, restored->clientHeight));
}

void closeWindow() {
    post(WM_SYSCOMMAND, SC_CLOSE);
}

DisplayMode displayMode() {
    return desktop().mode;
}

POINT cursor() {
    return desktop().cursor;
}

int cursorCount() {
    return desktop().cursorCount;
}

const Window* window() {
    return desktop().windows.empty() ? nullptr : &desktop().windows.rbegin()->second;
}

const PIXELFORMATDESCRIPTOR& requestedPixelFormat() {
    return desktop().requestedFormat;
}

OpenHandles openHandles() {
    const Desktop& state = desktop();
    return {state.classes.size(), state.windows.size(), state.deviceContexts.size(), state.renderingContexts.size(),
            state.streams.size()};
}

const std::vector<UINT>& defaultedMessages() {
    return desktop().defaulted;
}

void clearDefaultedMessages() {
    std::vector<UINT>().swap(desktop().defaulted);
}

const std::vector<ShownBox>& messageBoxes() {
    return desktop().boxes;
}

void answerNextBox(int button) {
    desktop().answers.push_back(button);
}

void failCall(Call call, unsigned times, unsigned successes) {
    desktop().failures[call] = {successes, times};
}

const std::vector<SoundCall>& soundCalls() {
    return desktop().soundCalls;
}

void clearSoundCalls() {
    std::vector<SoundCall>().swap(desktop().soundCalls);
}

int swapInterval() {
    return glState().swapInterval;
}

} // namespace headless
