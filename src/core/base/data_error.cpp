#include "core/base/data_error.h"

#include "platform/win32.h"

#include <algorithm>
#include <iostream>
#include <set>

namespace {

/// A bound on what is remembered, for a machine left to play broken data for days.
constexpr std::size_t mostRemembered = 10'000;

std::set<std::string> said;
/// The first fault of the round's data.
std::string firstFault;

/// Names come from files: a zero byte would cut a message short, a control character could do worse to a terminal.
std::string printable(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' ' || c == 0x7f; }, '?');
    return text;
}

std::string lineOf(const std::string& file, const TextFault& fault) {
    std::string place = file;
    if (fault.line > 0)
        place.append(1, ':').append(std::to_string(fault.line));
    return printable(place + ": " + fault.text);
}

} // namespace

void sayDataFault(const std::string& file, const TextFault& fault) {
    const std::string line = lineOf(file, fault);
    if (firstFault.empty())
        firstFault = line;
    if (said.size() < mostRemembered && said.insert(line).second)
        std::cerr << line + '\n';
}

void forgetDataFaults() {
    said.clear();
    firstFault.clear();
}

void beginRoundData() {
    firstFault.clear();
}

void reportDataError(const std::string& file, const std::string& fault) {
    const std::string text = firstFault.empty() ? lineOf(file, {0, fault}) : firstFault;
    MessageBoxA(nullptr, text.c_str(), "ERROR", MB_OK | MB_ICONSTOP);
}
