#include "platform/headless/headless.h"

#include "platform/headless/desktop_internal.h"
#include "platform/headless/gl_internal.h"

namespace headless {

using namespace detail;

namespace {

/// wParam of WM_SIZE for a window that was minimised.
constexpr WPARAM sizeMinimised = 1;

LPARAM packed(int low, int high) {
    return MAKELPARAM(static_cast<WORD>(low), static_cast<WORD>(high));
}

} // namespace

namespace detail {

Desktop& desktop() {
    static Desktop instance;
    return instance;
}

bool fails(Call call) {
    const auto found = desktop().failures.find(call);
    if (found == desktop().failures.end())
        return false;
    Failure& failure = found->second;
    if (failure.successes > 0) {
        --failure.successes;
        return false;
    }
    if (failure.times == 0)
        return false;
    --failure.times;
    return true;
}

HWND newestWindow() {
    return desktop().windows.empty() ? nullptr : desktop().windows.rbegin()->first;
}

void postTo(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    Desktop& state = desktop();
    state.queue.push_back({window, message, wParam, lParam, state.tick, state.cursor});
}

} // namespace detail

void reset() {
    makeCurrent(nullptr);
    desktop() = {};
    resetSound();
    resetGl();
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
    postTo(newestWindow(), message, wParam, lParam);
}

std::size_t queueLength() {
    return desktop().queue.size();
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
    const POINT at = desktop().cursor;
    post(down ? WM_LBUTTONDOWN : WM_LBUTTONUP, down ? 1 : 0, packed(at.x, at.y));
}

void moveMouse(int dx, int dy) {
    const POINT at = desktop().cursor;
    SetCursorPos(at.x + dx, at.y + dy);
}

void resizeWindow(int width, int height) {
    if (desktop().windows.empty())
        return;
    Window& info = desktop().windows.rbegin()->second.info;
    info.clientWidth = width;
    info.clientHeight = height;
    post(WM_SIZE, 0, packed(width, height));
}

void minimiseWindow() {
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

bool quitPosted() {
    return desktop().quitPosted;
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
    return desktop().windows.empty() ? nullptr : &desktop().windows.rbegin()->second.info;
}

const PIXELFORMATDESCRIPTOR& requestedPixelFormat() {
    return desktop().requestedFormat;
}

OpenHandles openHandles() {
    const Desktop& state = desktop();
    return {state.classes.size(), state.windows.size(), state.deviceContexts.size(), state.renderingContexts.size(),
            openStreams()};
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

int swapInterval() {
    return glState().swapInterval;
}

} // namespace headless
