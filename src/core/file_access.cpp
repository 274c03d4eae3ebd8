#include "core/file_access.h"

#include "core/data_limits.h"

#include <filesystem>
#include <system_error>

namespace {

template <class Buffer>
bool readInto(const std::string& path, Buffer& buffer) {
    const FileHandle file = openFile(path, "rb");
    if (file == nullptr)
        return false;
    const std::uint64_t size = bytesLeft(file.get());
    if (size > largestFile)
        return false;
    buffer.resize(static_cast<std::size_t>(size));
    return std::fread(buffer.data(), 1, buffer.size(), file.get()) == buffer.size();
}

} // namespace

FileHandle openFile(const std::string& path, const char* mode) {
    std::error_code error;
    // A path ends at its first zero byte for fopen: what would be opened is not what was asked for.
    if (path.find('\0') != std::string::npos || !std::filesystem::is_regular_file(path, error))
        return nullptr;
    return FileHandle(std::fopen(path.c_str(), mode));
}

std::uint64_t bytesLeft(std::FILE* file) {
    const long here = std::ftell(file);
    if (here < 0 || std::fseek(file, 0, SEEK_END) != 0)
        return 0;
    const long end = std::ftell(file);
    std::fseek(file, here, SEEK_SET);
    return end > here ? static_cast<std::uint64_t>(end - here) : 0;
}

bool readWholeFile(const std::string& path, std::vector<std::uint8_t>& bytes) {
    return readInto(path, bytes);
}

bool readWholeFile(const std::string& path, std::string& text) {
    return readInto(path, text);
}
