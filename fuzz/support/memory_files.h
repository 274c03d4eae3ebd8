#pragma once

// The files that the loaders find: those put here and no others. Nothing of the disk is read.

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace memory_files {

/// Puts a file in place under the path that the game opens it by.
void put(const std::string& path, std::string_view contents);
inline void put(const std::string& path, const std::uint8_t* data, std::size_t size) {
    put(path, std::string_view(reinterpret_cast<const char*>(data), size));
}
/// What every other path that ends like this holds.
void putForEnding(const std::string& ending, std::string_view contents);
void clear();

} // namespace memory_files
