#pragma once

#include <bit>
#include <concepts>
#include <cstdint>
#include <string>
#include <type_traits>

/// A byte at a time.
struct HashBytes {
    static void mix(std::uint64_t& state, std::uint64_t value) {
        for (int shift = 0; shift < 64; shift += 8) {
            state ^= (value >> shift) & 0xFFu;
            state *= 1099511628211u;
        }
    }
};
/// All of a number at once, for what is large.
struct HashWords {
    static void mix(std::uint64_t& state, std::uint64_t value) {
        state = (state ^ value) * 1099511628211u;
        state ^= state >> 31;
    }
};

/// A hash over the bits of numbers, in order: the same in every build type, with every compiler, on every processor.
template <class Mixing = HashBytes>
class Hash {
public:
    template <class Number>
    requires std::integral<Number> || std::is_enum_v<Number>
    void add(Number value) { Mixing::mix(state, static_cast<std::uint64_t>(value)); }
    void add(float value) { add(std::bit_cast<std::uint32_t>(value)); }
    void add(double value) { add(std::bit_cast<std::uint64_t>(value)); }
    void add(const std::string& text) {
        for (const char c : text)
            add(static_cast<unsigned char>(c));
    }
    template <class Vector>
    requires requires(const Vector& v) { v.z; }
    void add(const Vector& v) {
        add(v.x);
        add(v.y);
        add(v.z);
    }
    std::uint64_t get() const { return state; }

private:
    std::uint64_t state = 14695981039346656037u;
};
