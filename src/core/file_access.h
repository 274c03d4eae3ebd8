#pragma once

// Opening the data files. Only regular files count: a directory, which some systems open like a file, a pipe, which
// would wait for its other end, and a name with a zero byte are as good as missing; so is a file larger than
// `largestFile` to those who read it whole. Names are used as they stand, parent folders included.

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

/// Opens a regular file with the modes of fopen; null when it is missing, unreadable or something else.
FileHandle openFile(const std::string& path, const char* mode);

/// Bytes between the read position and the end of an open regular file.
std::uint64_t bytesLeft(std::FILE* file);

/// The whole of a file; false when it cannot be opened or read or is too large.
bool readWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes);
/// The same as text.
bool readWholeFile(const std::string& path, std::string& text);
