#include "core/text_reader.h"

#include "core/data_limits.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace {

constexpr std::string_view whiteSpace = " \t\n\v\f\r";

} // namespace

bool TextReader::startItem() {
    if (failed)
        return false;
    position = std::min(text.find_first_not_of(whiteSpace, position), text.size());
    return position < text.size();
}

template <class Number>
bool TextReader::readNumber(Number& value) {
    if (!startItem()) {
        failed = true;
        return false;
    }
    const char* first = text.data() + position;
    const char* const last = text.data() + text.size();
    // from_chars takes no leading plus, formatted extraction does.
    if (*first == '+' && first + 1 != last && first[1] != '-')
        ++first;
    Number number{};
    const auto [end, error] = std::from_chars(first, last, number);
    bool good = error == std::errc{};
    if constexpr (std::is_floating_point_v<Number>)
        good = good && std::isfinite(number);
    if (!good) {
        failed = true;
        return false;
    }
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
    if (!startItem()) {
        failed = true;
        return false;
    }
    const std::size_t end = std::min(text.find_first_of(whiteSpace, position), text.size());
    if (end - position > longestName) {
        failed = true;
        return false;
    }
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
