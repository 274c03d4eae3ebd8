#include "core/base/file_access.h"

#include "core/base/data_limits.h"

#include <cstdio>
#include <filesystem>
#include <memory>
#include <system_error>

namespace {

struct FileCloser {
    void operator()(std::FILE* file) const { std::fclose(file); }
};

template <class Buffer>
bool readInto(const std::string& path, Buffer& buffer) {
    std::error_code error;
    // A path ends at its first zero byte for fopen: what would be opened is not what was asked for.
    if (path.find('\0') != std::string::npos || !std::filesystem::is_regular_file(path, error))
        return false;
    const std::uintmax_t size = std::filesystem::file_size(path, error);
    if (error || size > largestFile)
        return false;
    const std::unique_ptr<std::FILE, FileCloser> file(std::fopen(path.c_str(), "rb"));
    if (file == nullptr)
        return false;
    buffer.resize(static_cast<std::size_t>(size));
    return std::fread(buffer.data(), 1, buffer.size(), file.get()) == buffer.size();
}

} // namespace

bool readWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes) {
    return readInto(path, bytes);
}

bool readWholeFile(const std::string& path, std::string& text) {
    return readInto(path, text);
}
