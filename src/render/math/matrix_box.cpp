// Apart from the other operations, so that a tool that calculates with matrices needs no desktop.

#include "platform/win32.h"
#include "render/math/matrix.h"

#include <cstdio>

void Matrix::print() const {
    char text[1024];
    const auto e = [this](std::size_t i) { return static_cast<double>(m[i]); };
    std::snprintf(text, sizeof text,
                  "%.2f, %.2f, %.2f, %.2f\n %.2f, %.2f, %.2f, %.2f\n %.2f, %.2f, %.2f, %.2f\n %.2f, %.2f, %.2f, %.2f\n",
                  e(0), e(1), e(2), e(3), e(4), e(5), e(6), e(7), e(8), e(9), e(10), e(11), e(12), e(13), e(14), e(15));
    MessageBoxA(nullptr, text, "I'm a Matrix", MB_OK);
}
