#include "platform/sdl/desktop_keys.h"

#include "platform/sdl/backend.h"
#include "platform/sdl/key_map.h"
#include "platform/sdl/volume.h"

#include <array>
#include <initializer_list>
#include <string>
#include <vector>

namespace {

/// Per cent that a key makes something louder.
constexpr int volumeStep = 10;

enum class Action { none, pause, help, fullscreen, mute, louder, quieter };

/// By what is written on the key; the places of 1 to 5 are the weapons' wherever a plus is written there.
Action volumeActionOf(const SDL_Keysym& key) {
    const int place = virtualKeyOf(key.scancode);
    if (place >= '1' && place <= '5')
        return Action::none;
    if (key.sym == SDLK_PLUS || key.sym == SDLK_EQUALS || key.sym == SDLK_KP_PLUS)
        return Action::louder;
    return key.sym == SDLK_MINUS || key.sym == SDLK_KP_MINUS ? Action::quieter : Action::none;
}

Action actionOf(const SDL_Keysym& key) {
    switch (key.scancode) {
    case SDL_SCANCODE_F11:
        return Action::fullscreen;
    case SDL_SCANCODE_RETURN:
    case SDL_SCANCODE_KP_ENTER:
        return (key.mod & KMOD_ALT) != 0 ? Action::fullscreen : Action::none;
    case SDL_SCANCODE_PAUSE:
    case SDL_SCANCODE_P:
        return Action::pause;
    case SDL_SCANCODE_F1:
        return Action::help;
    case SDL_SCANCODE_M:
        return Action::mute;
    default:
        return volumeActionOf(key);
    }
}

/// Every other key only ends the pause.
bool worksInPause(Action action) {
    return action == Action::fullscreen || (action == Action::help && !backend().listsKeys);
}

void showHelp() {
    if (backend().pause == Pause::on)
        backend().listsKeys = true;
    else
        askForPause(true);
}

void perform(Action action, bool control) {
    switch (action) {
    case Action::fullscreen:
        return switchFullscreen();
    case Action::pause:
        return askForPause(false);
    case Action::help:
        return showHelp();
    case Action::mute:
        return toggleMute();
    case Action::louder:
        return stepVolume(control, volumeStep);
    case Action::quieter:
        return stepVolume(control, -volumeStep);
    default:
        return;
    }
}

struct Row {
    std::vector<SDL_Scancode> keys;
    const char* also; ///< what the row names besides
    const char* meaning;
};

const std::array<Row, 17>& rows() {
    static const std::array<Row, 17> all = {{
        {{SDL_SCANCODE_W, SDL_SCANCODE_A, SDL_SCANCODE_S, SDL_SCANCODE_D}, "\u2191 \u2190 \u2193 \u2192", "walk"},
        {{SDL_SCANCODE_SPACE}, "", "jump"},
        {{}, "Mouse", "aim"},
        {{}, "Left button", "fire; hold to charge the bazooka"},
        {{SDL_SCANCODE_1, SDL_SCANCODE_2, SDL_SCANCODE_3, SDL_SCANCODE_4, SDL_SCANCODE_5},
         "",
         "bazooka, shotgun, dynamite, beamer, airstrike"},
        {{SDL_SCANCODE_Q}, "", "hold: aim view with crosshair"},
        {{SDL_SCANCODE_E}, "", "hold: overview; airstrike and beamer aim by it"},
        {{SDL_SCANCODE_RETURN}, "", "next round, once this one is over"},
        {{SDL_SCANCODE_P}, "Pause", "pause"},
        {{SDL_SCANCODE_M}, "", "mute"},
        {{}, "+ -", "louder, quieter; with Ctrl the music"},
        {{SDL_SCANCODE_F11}, "Alt+Enter", "full screen or window"},
        {{SDL_SCANCODE_F1}, "", "these keys"},
        {{SDL_SCANCODE_F2, SDL_SCANCODE_F3}, "", "frames per second, wireframe"},
        {{SDL_SCANCODE_F4, SDL_SCANCODE_F5, SDL_SCANCODE_F6}, "", "texture filtering, mipmaps, ways of drawing"},
        {{SDL_SCANCODE_F8, SDL_SCANCODE_F9}, "", "frustum culling, transparency"},
        {{SDL_SCANCODE_ESCAPE}, "", "quit"},
    }};
    return all;
}

std::string namesOf(const Row& row) {
    std::string names;
    for (const SDL_Scancode key : row.keys)
        names += std::string(names.empty() ? "" : " ") + SDL_GetKeyName(SDL_GetKeyFromScancode(key));
    return names + (names.empty() || *row.also == '\0' ? "" : "  ") + row.also;
}

} // namespace

bool takeDesktopKey(const SDL_KeyboardEvent& event) {
    const Action action = actionOf(event.keysym);
    const bool taken = action != Action::none && (backend().pause != Pause::on || worksInPause(action));
    const bool repeats = action == Action::louder || action == Action::quieter;
    if (taken && (event.repeat == 0 || repeats))
        perform(action, (event.keysym.mod & KMOD_CTRL) != 0);
    // A key repeats for the game only if the game has heard of it: not the one that ended the pause.
    return taken || (event.repeat != 0 && !backend().keys.isDown(gameKeyOf(event.keysym.scancode)));
}

void listKeys(const OverlayText& text) {
    constexpr int top = 150;
    constexpr int lineHeight = 30;
    text.drawCentred(70, 2, "Keys");
    int y = top;
    for (const Row& row : rows()) {
        text.draw(130, y, 1, namesOf(row));
        text.draw(380, y, 1, row.meaning);
        y += lineHeight;
    }
}
