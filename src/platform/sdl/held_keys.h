#pragma once

// Which keys are down, so that each gets an up message of the kind its down message had, whatever Alt does meanwhile,
// and so that none stays down when the window loses the keyboard.

#include "platform/win32.h"

#include <bitset>
#include <vector>

class HeldKeys {
public:
    struct Message {
        UINT message = 0;
        int virtualKey = 0;
    };

    /// The message for a key that goes down or repeats.
    Message press(int virtualKey, bool altHeld);
    /// The message for a key that goes up.
    Message release(int virtualKey, bool altHeld);
    bool isDown(int virtualKey) const { return down_[static_cast<std::size_t>(virtualKey) & 0xFFu]; }
    /// Up messages for all keys that are down, which then are up.
    std::vector<Message> releaseAll();

private:
    std::bitset<256> down_;
    std::bitset<256> asSystemKey_;
};
