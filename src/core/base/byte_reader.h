#pragma once

#include "core/base/data_limits.h"

#include <bit>
#include <cmath>
#include <concepts>
#include <cstdint>
#include <cstring>
#include <span>
#include <string>
#include <vector>

/// Reads little-endian items from bytes in memory. A read past the end yields zeros and `hasFailed` from then on, and
/// so does a float that is not a number or beyond `largestCoordinate`.
class ByteReader {
public:
    explicit ByteReader(std::span<const std::uint8_t> source) : bytes(source) {}

    template <std::integral Integer>
    Integer read() {
        std::uint64_t value = 0;
        if (!claim(sizeof(Integer)))
            return 0;
        for (std::size_t i = 0; i < sizeof(Integer); ++i)
            value |= static_cast<std::uint64_t>(bytes[position - sizeof(Integer) + i]) << (8 * i);
        return static_cast<Integer>(value);
    }
    float readFloat() {
        const float value = std::bit_cast<float>(read<std::uint32_t>());
        if (isCoordinate(static_cast<double>(value)))
            return value;
        failed = true;
        return 0.0f;
    }
    /// A float that only looks depend on: 0 where it is not finite.
    float readLooseFloat() {
        const float value = std::bit_cast<float>(read<std::uint32_t>());
        return std::isfinite(value) ? value : 0.0f;
    }
    /// Text in a field of fixed size, up to its first zero byte.
    std::string readText(std::size_t fieldSize) {
        if (!claim(fieldSize))
            return {};
        const char* const first = reinterpret_cast<const char*>(bytes.data()) + position - fieldSize;
        return std::string(first, strnlen(first, fieldSize));
    }
    /// A run of bytes; empty when they are not all there.
    std::vector<std::uint8_t> readBytes(std::size_t count) {
        if (!claim(count))
            return {};
        const std::span<const std::uint8_t> run = bytes.subspan(position - count, count);
        return {run.begin(), run.end()};
    }
    void skip(std::size_t count) { claim(count); }
    /// Whether this many items of a size in bytes are left: ask before making room for them.
    bool holds(std::size_t count, std::size_t itemSize) {
        failed = failed || count > (bytes.size() - position) / itemSize;
        return !failed;
    }
    bool hasFailed() const { return failed; }

private:
    bool claim(std::size_t count) {
        failed = failed || count > bytes.size() - position;
        if (!failed)
            position += count;
        return !failed;
    }

    std::span<const std::uint8_t> bytes;
    std::size_t position = 0;
    bool failed = false;
};
