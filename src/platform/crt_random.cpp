#include "platform/crt_random.h"

#include <cstdint>

namespace {

std::uint32_t state = 1;

} // namespace

int crtRand() {
    // A 32-bit linear congruential generator; its low bits have short periods, so the upper ones are handed out.
    state = state * 214013u + 2531011u;
    return static_cast<int>((state >> 16) & 0x7FFFu);
}

void crtSrand(unsigned int seed) {
    state = seed;
}
