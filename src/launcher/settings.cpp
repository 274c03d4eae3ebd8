#include "launcher/settings.h"

#include "core/base/file_access.h"
#include "file_output.h"
#include "launcher/launch_error.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <optional>
#include <sstream>

namespace {

namespace fs = std::filesystem;

struct Kind {
    const char* name;
    const char* variable;
    int most; ///< of its number, which is at least 0
};

constexpr std::array<Kind, 4> kinds = {{{"music", "BRACKENMOOR_MUSIC", 100},
                                        {"effects", "BRACKENMOOR_EFFECTS", 100},
                                        {"invert-mouse", "BRACKENMOOR_INVERT_MOUSE", 1},
                                        {"windowed", "BRACKENMOOR_WINDOWED", 1}}};

/// Takes one line in; false when it says nothing that is known.
bool takeLine(const std::string& line, Settings& settings) {
    std::istringstream in(line);
    std::string name;
    std::string equals;
    int value = 0;
    std::string rest;
    if (!(in >> name >> equals >> value) || in >> rest || equals != "=")
        return false;
    const auto* const kind =
        std::find_if(kinds.begin(), kinds.end(), [&](const Kind& known) { return name == known.name; });
    if (kind == kinds.end() || value < 0 || value > kind->most)
        return false;
    settings[name] = value;
    return true;
}

/// The number of the first line that is broken, or 0.
int parse(const std::string& text, Settings& settings) {
    std::istringstream lines(text);
    std::string line;
    for (int number = 1; std::getline(lines, line); ++number)
        if (!line.empty() && !takeLine(line, settings))
            return number;
    return 0;
}

/// A broken file may be the work of hours: it is never written over.
void putAside(const fs::path& file) {
    std::string text;
    Settings ignored;
    std::error_code error;
    if (readWholeFile(file.string(), text) && parse(text, ignored) != 0)
        fs::rename(file, file.string() + ".broken", error);
}

} // namespace

Settings readSettings(const fs::path& file) {
    std::error_code error;
    if (file.empty() || !fs::exists(file, error))
        return {};
    std::string text;
    Settings settings;
    if (!readWholeFile(file.string(), text)) {
        sayNotice(file.string() + ": the settings cannot be read; playing with the defaults");
        return {};
    }
    const int broken = parse(text, settings);
    if (broken == 0)
        return settings;
    sayNotice(file.string() + ":" + std::to_string(broken) +
              ": this line is no setting; playing with the defaults (--reset forgets the file)");
    return {};
}

void writeSettings(const fs::path& file, const Settings& settings) {
    std::error_code error;
    std::string text;
    for (const auto& [name, value] : settings)
        text += name + " = " + std::to_string(value) + '\n';
    if (!file.empty()) {
        fs::create_directories(file.parent_path(), error);
        putAside(file);
        errno = 0;
        const bool ordinary = !fs::exists(file, error) || fs::is_regular_file(file, error);
        if (ordinary && writeWholeFile(file.string(), text))
            return;
    }
    sayNotice("the settings cannot be remembered" + (file.empty() ? ": there is no home" : " in " + file.string()) +
              (errno != 0 ? std::string(": ") + std::strerror(errno) : ""));
}

void resetSettings(const fs::path& file) {
    std::error_code error;
    if (!file.empty() && fs::is_regular_file(file, error) && !fs::remove(file, error))
        sayNotice(file.string() + ": the settings cannot be forgotten: " + error.message());
}

void handOn(const Settings& settings, bool replace) {
    for (const Kind& kind : kinds)
        if (const auto found = settings.find(kind.name); found != settings.end())
            setenv(kind.variable, std::to_string(found->second).c_str(), replace ? 1 : 0);
}
