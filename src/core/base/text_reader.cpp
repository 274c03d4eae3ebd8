#include "core/base/text_reader.h"

#include "core/base/data_limits.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <string_view>

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";

/// Whether a number that its type cannot hold is too close to zero rather than too large: the place of its first digit
/// that is not zero tells, moved by the exponent.
bool isTiny(std::string_view number) {
    const std::size_t mantissaEnd = std::min(number.find_first_of("eE"), number.size());
    const std::string_view mantissa = number.substr(0, mantissaEnd);
    const auto point = static_cast<long>(std::min(mantissa.find('.'), mantissa.size()));
    const auto first = static_cast<long>(std::min(mantissa.find_first_of("123456789"), mantissa.size()));
    std::string_view digits = number.substr(std::min(mantissaEnd + 1, number.size()));
    const bool isNegative = digits.starts_with('-');
    if (isNegative || digits.starts_with('+'))
        digits.remove_prefix(1);
    long exponent = 0;
    if (std::from_chars(digits.data(), digits.data() + digits.size(), exponent).ec == std::errc::result_out_of_range)
        return isNegative;
    return point - first + (isNegative ? -exponent : exponent) < 0;
}

} // namespace

TextReader::TextReader(std::string fileText) : text(std::move(fileText)) {
    if (text.starts_with("\xEF\xBB\xBF"))
        position = 3;
    else if (isUtf16())
        fail("the file is UTF-16, save it as UTF-8");
}

bool TextReader::isUtf16() const {
    return text.starts_with("\xFF\xFE") || text.starts_with("\xFE\xFF");
}

bool TextReader::startItem() {
    if (failed)
        return false;
    return !isAtEnd() || fail("the file ends");
}

bool TextReader::fail(const std::string& what) {
    if (!failed)
        fault = {line(), what};
    failed = true;
    return false;
}

/// The run of characters that the next item is part of: a number may have been taken from its beginning.
std::string TextReader::wholeWord() const {
    constexpr std::size_t longestShown = 40;
    std::size_t start = position;
    while (start > 0 && whiteSpace.find(text[start - 1]) == std::string_view::npos)
        --start;
    const std::size_t end = std::min(text.find_first_of(whiteSpace, position), text.size());
    const std::string word = text.substr(start, std::min(end - start, longestShown));
    return '"' + word + (end - start > longestShown ? "..." : "") + '"';
}

template <class Number>
bool TextReader::readNumber(Number& value) {
    if (!startItem())
        return false;
    const char* first = text.data() + position;
    const char* const last = text.data() + text.size();
    // from_chars takes no leading plus, formatted extraction does.
    if (*first == '+' && first + 1 != last && first[1] != '-')
        ++first;
    Number number{};
    const auto [end, error] = std::from_chars(first, last, number);
    bool good = error == std::errc{};
    if constexpr (std::is_floating_point_v<Number>) {
        if (error == std::errc::result_out_of_range && isTiny({first, end}))
            good = true; // and `number` is still 0
        good = good && std::isfinite(number);
    }
    if (!good)
        return fail(wholeWord() + (error == std::errc::result_out_of_range ? " is too large" : " is no number"));
    value = number;
    position = static_cast<std::size_t>(end - text.data());
    return true;
}

bool TextReader::read(int& value) {
    return readNumber(value);
}

bool TextReader::read(double& value) {
    return readNumber(value);
}

bool TextReader::read(float& value) {
    return readNumber(value);
}

bool TextReader::read(std::string& value) {
    if (!startItem())
        return false;
    const std::size_t end = std::min(text.find_first_of(whiteSpace, position), text.size());
    if (end - position > longestName)
        return fail("a name of more than " + std::to_string(longestName) + " characters");
    value = text.substr(position, end - position);
    position = end;
    return true;
}

bool TextReader::isAtEnd() {
    position = std::min(text.find_first_not_of(whiteSpace, position), text.size());
    return position >= text.size();
}

int TextReader::line() {
    isAtEnd();
    return 1 + static_cast<int>(std::count(text.begin(), text.begin() + static_cast<std::ptrdiff_t>(position), '\n'));
}
