#include "core/file_access.h"

#include <filesystem>
#include <system_error>

namespace {

template <class Buffer>
bool readInto(const std::string& path, Buffer& buffer) {
    const FileHandle file = openFile(path, "rb");
    if (file == nullptr)
        return false;
    buffer.resize(static_cast<std::size_t>(bytesLeft(file.get())));
    return std::fread(buffer.data(), 1, buffer.size(), file.get()) == buffer.size();
}

} // namespace

FileHandle openFile(const std::string& path, const char* mode) {
    std::error_code error;
    if (std::filesystem::is_directory(path, error))
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
