#pragma once

// Opening the data files. A directory is not a file, although some systems open it as one.

#include <cstdint>
#include <cstdio>
#include <memory>
#include <string>
#include <vector>

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};
using FileHandle = std::unique_ptr<std::FILE, FileCloser>;

/// Opens a regular file with the modes of fopen; null when it is missing, unreadable or a directory.
FileHandle openFile(const std::string& path, const char* mode);

/// Bytes between the read position and the end of an open regular file.
std::uint64_t bytesLeft(std::FILE* file);

/// The whole of a file; false when it cannot be opened or read.
bool readWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes);
/// The same as text.
bool readWholeFile(const std::string& path, std::string& text);
