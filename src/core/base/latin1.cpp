#include "core/base/latin1.h"

#include <cstddef>
#include <cstdint>
#include <string_view>

namespace {

/// Takes one character off the front of the text; false when it does not begin with well-formed UTF-8.
bool takeCharacter(std::string_view& text, std::uint32_t& character) {
    const auto byteAt = [&](std::size_t i) { return static_cast<std::uint8_t>(text[i]); };
    const std::uint8_t lead = byteAt(0);
    if (lead < 0x80) {
        character = lead;
        text.remove_prefix(1);
        return true;
    }
    const std::size_t length = lead >= 0xF0 ? 4 : (lead >= 0xE0 ? 3 : 2);
    if (lead < 0xC2 || lead > 0xF4 || text.size() < length)
        return false;
    character = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byteAt(i) & 0xC0) != 0x80)
            return false;
        character = character << 6 | (byteAt(i) & 0x3Fu);
    }
    constexpr std::uint32_t smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    const bool surrogate = character >= 0xD800 && character < 0xE000;
    text.remove_prefix(length);
    return character >= smallest[length] && !surrogate && character <= 0x10FFFF;
}

} // namespace

std::string latin1Of(const std::string& text) {
    std::string latin1;
    std::string_view rest = text;
    while (!rest.empty()) {
        std::uint32_t character = 0;
        if (!takeCharacter(rest, character))
            return text;
        const bool hasSign = character < 0x80 || (character >= 0xA0 && character <= 0xFF);
        latin1 += hasSign ? static_cast<char>(character) : '?';
    }
    return latin1;
}
