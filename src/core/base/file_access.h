#pragma once

// Reading the data files. Only regular files count: a directory, which some systems open like a file, a pipe, which
// would wait for its other end, and a name with a zero byte are as good as missing; so is a file larger than
// `largestFile`. Names are used as they stand, parent folders included.

#include <cstdint>
#include <string>
#include <vector>

/// The whole of a file; false when it cannot be opened or read or is too large.
[[nodiscard]] bool readWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes);
/// The same as text.
[[nodiscard]] bool readWholeFile(const std::string& path, std::string& text);
