#pragma once

// What a message box means to the game. A box can be answered, closed by its frame, or not be shown at all; then the
// line on stderr is all there is.

#include "platform/win32.h"

#include <optional>

/// The button that the game is told of, for a box of this type (MB_...): the one pressed; No where a question was
/// closed by its frame (any other number); Yes where it could not be shown (nothing). A box without a question is
/// agreed to.
int boxAnswer(UINT type, std::optional<int> button);
