#include "core/base/expect.h"

#ifdef BRACKENMOOR_EXPECT

#include <cstdio>
#include <cstdlib>

void expectationFailed(const char* expression, const char* file, int line) {
    std::fprintf(stderr, "%s:%d: does not hold: %s\n", file, line, expression);
    std::abort();
}

#endif
