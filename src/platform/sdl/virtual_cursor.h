#pragma once

// The cursor that the game sees. While the pointer is captured it is not where the real one is: relative motion moves
// it, SetCursorPos puts it somewhere, and no screen edge stops it.

#include "platform/win32.h"

class VirtualCursor {
public:
    void place(int x, int y) { position_ = {x, y}; }
    /// Adds a motion in pixels, held within the range of the position's type.
    void move(int dx, int dy);
    POINT position() const { return position_; }
    /// Counts the visibility up or down; the new count.
    int show(bool on) { return count_ += on ? 1 : -1; }
    /// A hidden cursor is a captured one.
    bool hidden() const { return count_ < 0; }

private:
    POINT position_{0, 0};
    int count_ = 0;
};
