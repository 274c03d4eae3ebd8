#include "platform/sdl/virtual_cursor.h"

#include <algorithm>

namespace {

/// Far beyond any screen, and small enough that sums and differences of positions cannot overflow.
constexpr std::int64_t farthest = 1 << 29;

LONG moved(LONG from, int by) {
    return static_cast<LONG>(std::clamp(std::int64_t{from} + by, -farthest, farthest));
}

} // namespace

void VirtualCursor::move(int dx, int dy) {
    position_ = {moved(position_.x, dx), moved(position_.y, dy)};
}
