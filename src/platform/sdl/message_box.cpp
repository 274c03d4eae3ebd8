#include "platform/sdl/backend.h"
#include "platform/sdl/box_answer.h"

#include <algorithm>
#include <array>
#include <csignal>
#include <iostream>
#include <optional>

namespace {

void writeLine(std::string text, const char* caption) {
    std::replace(text.begin(), text.end(), '\n', ' ');
    std::cerr << caption << ": " << text << std::endl;
}

Uint32 iconOf(UINT type) {
    if ((type & MB_ICONINFORMATION) != 0)
        return SDL_MESSAGEBOX_INFORMATION;
    return (type & MB_ICONEXCLAMATION) == MB_ICONEXCLAMATION ? SDL_MESSAGEBOX_WARNING : SDL_MESSAGEBOX_ERROR;
}

/// The button pressed, a negative number when the box was closed by its frame, nothing when none can be shown.
std::optional<int> ask(LPCSTR text, LPCSTR caption, UINT type, SDL_Window* parent) {
    constexpr SDL_MessageBoxButtonData okay{SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT, IDOK, "OK"};
    constexpr SDL_MessageBoxButtonData yes{SDL_MESSAGEBOX_BUTTON_RETURNKEY_DEFAULT, IDYES, "Yes"};
    constexpr SDL_MessageBoxButtonData no{SDL_MESSAGEBOX_BUTTON_ESCAPEKEY_DEFAULT, IDNO, "No"};
    const bool question = (type & MB_YESNO) != 0;
    const std::array<SDL_MessageBoxButtonData, 2> buttons = {question ? yes : okay, no};
    SDL_MessageBoxData box{};
    box.flags = iconOf(type);
    box.window = parent;
    box.title = caption;
    box.message = text;
    box.numbuttons = question ? 2 : 1;
    box.buttons = buttons.data();
    int button = -1;
    if (SDL_ShowMessageBox(&box, &button) != 0)
        return std::nullopt;
    return button;
}

/// Lets signals do what they do to other programs while it lives: SDL only notes them for the next look at its events,
/// which a box that waits does not take.
class PlainSignals {
public:
    PlainSignals() : interrupt_(std::signal(SIGINT, SIG_DFL)), terminate_(std::signal(SIGTERM, SIG_DFL)) {}
    PlainSignals(const PlainSignals&) = delete;
    PlainSignals& operator=(const PlainSignals&) = delete;
    ~PlainSignals() {
        std::signal(SIGINT, interrupt_);
        std::signal(SIGTERM, terminate_);
    }

private:
    void (*interrupt_)(int);
    void (*terminate_)(int);
};

} // namespace

int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type) {
    writeLine(text, caption);
    if (environmentIs("BRACKENMOOR_BOXES", "no"))
        return boxAnswer(type, IDNO);
    if (environmentIs("BRACKENMOOR_BOXES", "yes"))
        return boxAnswer(type, IDYES);
    SDL_SetRelativeMouseMode(SDL_FALSE);
    const PlainSignals signals;
    const std::optional<int> button = ask(text, caption, type, owner != nullptr ? owner->window : nullptr);
    updateCapture();
    return boxAnswer(type, button);
}
