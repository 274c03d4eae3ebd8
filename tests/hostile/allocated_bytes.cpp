#include "hostile/allocated_bytes.h"

#if defined(__SANITIZE_ADDRESS__)

// The compiler's package leaves out the header that declares it.
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();

std::size_t allocatedBytes() {
    return __sanitizer_get_current_allocated_bytes();
}

#else

#include <cstdlib>
#include <new>

// The C library's own figure counts the blocks that its caches keep, some hundred kilobytes more or less. So every
// block carries its size in front.

namespace {

constexpr std::size_t headerSize = alignof(std::max_align_t);
std::size_t held = 0;

} // namespace

std::size_t allocatedBytes() {
    return held;
}

void* operator new(std::size_t size) {
    auto* const block = static_cast<std::byte*>(std::malloc(size + headerSize));
    if (block == nullptr)
        throw std::bad_alloc();
    *reinterpret_cast<std::size_t*>(block) = size;
    held += size;
    return block + headerSize;
}

void operator delete(void* pointer) noexcept {
    if (pointer == nullptr)
        return;
    auto* const block = static_cast<std::byte*>(pointer) - headerSize;
    held -= *reinterpret_cast<std::size_t*>(block);
    std::free(block);
}

void operator delete(void* pointer, std::size_t) noexcept {
    operator delete(pointer);
}

#endif
