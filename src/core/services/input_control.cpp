#include "core/services/input_control.h"

#include "core/base/log.h"
#include "core/services/module_manager.h"

namespace {

/// Screen position at which the captured cursor is pinned, pixels.
constexpr int mouseAnchorX = 300;
constexpr int mouseAnchorY = 300;

constexpr std::size_t keyCount = 256;

} // namespace

InputControl::InputControl() {
    logLine("InputControl Konstruktor\n");
    theModuleManager->setInputControl(this);
    SetCursorPos(mouseAnchorX, mouseAnchorY);
    ShowCursor(FALSE);
}

InputControl::~InputControl() {
    logLine("InputConrol Destruktor\n");
    if (!cursorVisible) {
        cursorVisible = true;
        ShowCursor(TRUE);
    }
}

bool InputControl::handleMessage(UINT message, WPARAM wParam, LPARAM /*lParam*/) {
    switch (message) {
    case WM_KEYDOWN:
        if (wParam < keyCount)
            keyDown[wParam] = true;
        return true;
    case WM_KEYUP:
        if (wParam < keyCount) {
            if (keyDown[wParam])
                keyPressed[wParam] = true;
            keyDown[wParam] = false;
        }
        return true;
    case WM_MOUSEMOVE:
        gatherMouseMotion();
        return true;
    case WM_LBUTTONDOWN:
        leftButtonDown = true;
        return true;
    case WM_LBUTTONUP:
        leftButtonDown = false;
        return true;
    default:
        return false;
    }
}

void InputControl::gatherMouseMotion() {
    POINT cursor{mouseAnchorX, mouseAnchorY};
    GetCursorPos(&cursor);
    // Pinning the cursor causes a move message of its own.
    if (cursor.x == mouseAnchorX && cursor.y == mouseAnchorY)
        return;
    mouseAccumX += static_cast<float>(cursor.x - mouseAnchorX) * mouseSensitivity;
    mouseAccumY += static_cast<float>(cursor.y - mouseAnchorY) * mouseSensitivity;
    SetCursorPos(mouseAnchorX, mouseAnchorY);
}

bool InputControl::isKeyDown(int virtualKey) const {
    const auto index = static_cast<std::size_t>(virtualKey);
    return index < keyCount && keyDown[index];
}

bool InputControl::wasKeyPressed(int virtualKey) const {
    const auto index = static_cast<std::size_t>(virtualKey);
    return index < keyCount && keyPressed[index];
}

void InputControl::loseKeyboard() {
    keyDown.fill(false);
    keyPressed.fill(false);
    leftButtonDown = false;
    keyboardLost = true;
}

void InputControl::resetFrame() {
    keyPressed.fill(false);
    keyboardLost = false;
    mouseDeltaX = mouseAccumX;
    mouseDeltaY = mouseAccumY;
    mouseAccumX = 0.0f;
    mouseAccumY = 0.0f;
}
