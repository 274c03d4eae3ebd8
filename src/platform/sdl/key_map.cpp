#include "platform/sdl/key_map.h"

#include "platform/win32.h"

#include <array>

namespace {

// First usage numbers of the runs that map one to one.
constexpr int usageA = 4;
constexpr int usage1 = 30;
constexpr int usageF1 = 58;
constexpr int usageF13 = 104;
constexpr int usageKeypad1 = 89;

struct Pair {
    int usage;
    int virtualKey;
};

// Everything that is not in a run. Codes without a name in win32.h are written as numbers with the key beside them.
constexpr std::array<Pair, 46> singles = {{
    {39, '0'},       {40, VK_RETURN}, {41, VK_ESCAPE}, {42, 0x08}, // backspace
    {43, 0x09},                                                    // tab
    {44, VK_SPACE},  {45, 0xBD},                                   // minus
    {46, 0xBB},                                                    // equals
    {47, 0xDB},                                                    // left bracket
    {48, 0xDD},                                                    // right bracket
    {49, 0xDC},                                                    // backslash
    {51, 0xBA},                                                    // semicolon
    {52, 0xDE},                                                    // apostrophe
    {53, 0xC0},                                                    // grave
    {54, 0xBC},                                                    // comma
    {55, 0xBE},                                                    // full stop
    {56, 0xBF},                                                    // slash
    {57, 0x14},                                                    // caps lock
    {70, 0x2C},                                                    // print screen
    {71, 0x91},                                                    // scroll lock
    {72, 0x13},                                                    // pause
    {73, 0x2D},                                                    // insert
    {74, 0x24},                                                    // home
    {75, 0x21},                                                    // page up
    {76, 0x2E},                                                    // delete
    {77, 0x23},                                                    // end
    {78, 0x22},                                                    // page down
    {79, 0x27},                                                    // right
    {80, 0x25},                                                    // left
    {81, 0x28},                                                    // down
    {82, 0x26},                                                    // up
    {83, 0x90},                                                    // num lock
    {84, 0x6F},                                                    // keypad divide
    {85, 0x6A},                                                    // keypad multiply
    {86, 0x6D},                                                    // keypad minus
    {87, 0x6B},                                                    // keypad plus
    {88, VK_RETURN}, {98, 0x60},                                   // keypad 0
    {99, 0x6E},                                                    // keypad decimal
    {100, 0xE2},                  // the key beside the left shift of many European keyboards
    {224, 0x11},                  // left control
    {225, 0x10},                  // left shift
    {226, VK_MENU},  {228, 0x11}, // right control
    {229, 0x10},                  // right shift
    {230, VK_MENU},
}};

bool inRun(int usage, int first, int length) {
    return usage >= first && usage < first + length;
}

} // namespace

int virtualKeyOf(int usage) {
    if (inRun(usage, usageA, 26))
        return 'A' + usage - usageA;
    if (inRun(usage, usage1, 9))
        return '1' + usage - usage1;
    if (inRun(usage, usageF1, 12))
        return VK_F1 + usage - usageF1;
    if (inRun(usage, usageF13, 12))
        return VK_F1 + 12 + usage - usageF13;
    if (inRun(usage, usageKeypad1, 9))
        return 0x61 + usage - usageKeypad1;
    for (const Pair& single : singles)
        if (single.usage == usage)
            return single.virtualKey;
    return 0;
}

int gameKeyOf(int usage) {
    switch (const int key = virtualKeyOf(usage)) {
    case 0x26:
        return 'W';
    case 0x25:
        return 'A';
    case 0x28:
        return 'S';
    case 0x27:
        return 'D';
    default:
        return key >= 0x61 && key <= 0x65 ? '1' + key - 0x61 : key;
    }
}

bool isSystemKey(int virtualKey, bool altHeld) {
    return altHeld || virtualKey == VK_MENU || virtualKey == VK_F10;
}
