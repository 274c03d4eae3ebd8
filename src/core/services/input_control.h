#pragma once

// Turns window messages into state that is polled once a frame: keys held, keys pressed (counted at release), the left
// mouse button and how far the mouse moved.
//
// The mouse is the game's alone: its hidden cursor is put back to its anchor after every move, and how far it had got
// is what counts. Virtual-key codes outside 0 to 255 are consumed and ignored.
//
// When the keyboard goes to another window, whatever is held is taken away rather than let go: it counts as no press,
// and what a held button began is void. Desktops tell so before or after they report the keys and the button as up, or
// report nothing of them.

#include "platform/win32.h"

#include <array>

class InputControl {
public:
    /// Registers itself, pins and hides the cursor.
    InputControl();
    /// Shows the cursor again.
    virtual ~InputControl();
    InputControl(const InputControl&) = delete;
    InputControl& operator=(const InputControl&) = delete;

    /// Takes in a key, mouse-move or left-button message; false when the message is of another kind.
    bool handleMessage(UINT message, WPARAM wParam, LPARAM lParam);

    /// Whether the key is held now.
    bool isKeyDown(int virtualKey) const;
    /// Whether the key went up, after its going down was seen, since the last `resetFrame`.
    bool wasKeyPressed(int virtualKey) const;
    bool isLeftButtonDown() const { return leftButtonDown; }
    /// Takes away whatever is held, and the presses of this frame: another window has the keyboard now.
    void loseKeyboard();
    /// Whether the keyboard was lost since the last `resetFrame`.
    bool wasKeyboardLost() const { return keyboardLost; }
    /// Mouse motion of the last completed frame in pixels x sensitivity; right and down are positive.
    float getMouseDeltaX() const { return mouseDeltaX; }
    float getMouseDeltaY() const { return mouseDeltaY; }
    /// Factor from pixels to motion units.
    void setMouseSensitivity(float sensitivity) { mouseSensitivity = sensitivity; }
    /// Ends a frame: forgets its presses and hands its motion over.
    void resetFrame();

private:
    void gatherMouseMotion();

    std::array<bool, 256> keyDown{};
    std::array<bool, 256> keyPressed{};
    float mouseDeltaX = 0.0f;
    float mouseDeltaY = 0.0f;
    float mouseAccumX = 0.0f;
    float mouseAccumY = 0.0f;
    float mouseSensitivity = 0.005f;
    bool leftButtonDown = false;
    bool keyboardLost = false;
    bool cursorVisible = false;
};
