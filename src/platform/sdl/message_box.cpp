#include "platform/sdl/backend.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <iostream>

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

/// The button pressed, or a negative number when no box can be shown.
int ask(LPCSTR text, LPCSTR caption, UINT type, SDL_Window* parent) {
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
    return SDL_ShowMessageBox(&box, &button) == 0 ? button : -1;
}

} // namespace

int MessageBoxA(HWND owner, LPCSTR text, LPCSTR caption, UINT type) {
    writeLine(text, caption);
    const bool question = (type & MB_YESNO) != 0;
    const int agreed = question ? IDYES : IDOK;
    if (environmentIs("BRACKENMOOR_BOXES", "no"))
        return question ? IDNO : IDOK;
    if (environmentIs("BRACKENMOOR_BOXES", "yes"))
        return agreed;
    SDL_SetRelativeMouseMode(SDL_FALSE);
    const int button = ask(text, caption, type, owner != nullptr ? owner->window : nullptr);
    updateCapture();
    if (button == IDOK || button == IDYES || button == IDNO)
        return button;
    // The line on stderr is all that could be shown; a box closed by its frame is a No where there is one.
    return button == -1 && question ? IDYES : agreed;
}
