#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the fuzzer with a finding when what must hold after loading does not.
inline void require(bool holds, const char* what) {
    if (holds)
        return;
    std::fprintf(stderr, "does not hold: %s\n", what);
    std::abort();
}
