#include "platform/sdl/box_answer.h"

int boxAnswer(UINT type, std::optional<int> button) {
    if ((type & MB_YESNO) == 0)
        return IDOK;
    return !button || *button == IDYES ? IDYES : IDNO;
}
