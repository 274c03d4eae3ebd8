#pragma once

#include <cstddef>

/// Bytes that the program holds by `new` right now. Under the address sanitizer those of malloc are counted as well.
std::size_t allocatedBytes();
