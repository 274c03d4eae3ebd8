#include "platform/sdl/held_keys.h"

#include "platform/sdl/key_map.h"

HeldKeys::Message HeldKeys::press(int virtualKey, bool altHeld) {
    const auto index = static_cast<std::size_t>(virtualKey) & 0xFFu;
    if (!down_[index]) {
        down_[index] = true;
        asSystemKey_[index] = isSystemKey(virtualKey, altHeld);
    }
    return {asSystemKey_[index] ? WM_SYSKEYDOWN : WM_KEYDOWN, virtualKey};
}

HeldKeys::Message HeldKeys::release(int virtualKey, bool altHeld) {
    const auto index = static_cast<std::size_t>(virtualKey) & 0xFFu;
    const bool system = down_[index] ? asSystemKey_[index] : isSystemKey(virtualKey, altHeld);
    down_[index] = false;
    return {system ? WM_SYSKEYUP : WM_KEYUP, virtualKey};
}

std::vector<HeldKeys::Message> HeldKeys::releaseAll() {
    std::vector<Message> messages;
    for (std::size_t index = 0; index < down_.size(); ++index)
        if (down_[index])
            messages.push_back({asSystemKey_[index] ? WM_SYSKEYUP : WM_KEYUP, static_cast<int>(index)});
    down_.reset();
    return messages;
}
