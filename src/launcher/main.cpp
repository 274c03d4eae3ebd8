// The program that players start: takes the command line, finds the data, remembers what was chosen, and runs the game,
// which knows nothing of all that: it takes no arguments and finds its data in the current directory.

#include "launcher/data_folder.h"
#include "launcher/launch_error.h"
#include "launcher/places.h"
#include "launcher/run_game.h"
#include "launcher/settings.h"

#include <CLI/CLI.hpp>

#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <string>

namespace {

struct Arguments {
    std::string data;
    std::string level;
    std::string log;
    bool reset = false;
    Settings chosen;
};

/// An option for a number that is remembered.
void addVolume(CLI::App& app, Settings& chosen, const std::string& name, const std::string& help) {
    app.add_option_function<int>(
           "--" + name, [&chosen, name](int value) { chosen[name] = value; }, help)
        ->check(CLI::Range(0, 100))
        ->option_text("0-100");
}

/// A flag that is remembered, and the one that takes it back.
void addSwitch(CLI::App& app, Settings& chosen, const std::string& name, const std::string& help,
               const std::string& opposite) {
    const auto choose = [&chosen, name](int value) { return [&chosen, name, value] { chosen[name] = value; }; };
    CLI::Option* const on = app.add_flag_callback("--" + name, choose(1), help);
    CLI::Option* const off = app.add_flag_callback("--" + opposite, choose(0), "Takes --" + name + " back");
    off->excludes(on);
    // Otherwise the help would say which of them excludes which.
    on->option_text(" ");
    off->option_text(" ");
}

void describe(CLI::App& app, Arguments& arguments) {
    app.set_help_flag("--help", "Shows this and ends");
    app.set_version_flag("--version", "brackenmoor " BRACKENMOOR_VERSION, "Shows the version and ends");
    app.add_option("--data", arguments.data, "Plays with the data in this folder and no others")->option_text("DIR");
    app.add_option("--level", arguments.level, "Plays this level only")->option_text("NAME");
    app.add_option("--log", arguments.log, "Writes the diagnostic log to this file")->option_text("FILE");
    addSwitch(app, arguments.chosen, "windowed", "Plays in a window *", "full-screen");
    addVolume(app, arguments.chosen, "music", "How loud the music is *");
    addVolume(app, arguments.chosen, "effects", "How loud everything else is *");
    addSwitch(app, arguments.chosen, "invert-mouse", "The mouse pushed away looks up *", "plain-mouse");
    app.add_flag("--reset", arguments.reset, "Forgets what was remembered before");
    app.footer("What is marked * is remembered until it is chosen anew.");
}

/// The game is started in another directory.
void setLogFile(const std::string& asked) {
    const char* const given = std::getenv("BRACKENMOOR_LOG_FILE");
    const std::string file = !asked.empty() || given == nullptr ? asked : given;
    if (!file.empty())
        setenv("BRACKENMOOR_LOG_FILE", std::filesystem::absolute(file).c_str(), 1);
}

void applySettings(const Arguments& arguments) {
    const std::filesystem::path file = settingsFile();
    if (arguments.reset)
        resetSettings(file);
    Settings settings = readSettings(file);
    handOn(arguments.chosen, true);
    handOn(settings, false);
    const Settings remembered = settings;
    for (const auto& [name, value] : arguments.chosen)
        settings[name] = value;
    if (settings != remembered)
        writeSettings(file, settings);
}

int launch(const Arguments& arguments, const char* calledAs) {
    const std::filesystem::path here = launcherFile(calledAs).parent_path();
    const std::filesystem::path game = findGame(here);
    const auto layers = findData(arguments.data, here);
    holdSignals();
    const DataFolder folder(layers, arguments.level);
    setLogFile(arguments.log);
    applySettings(arguments);
    return runGame(game, folder.path());
}

int run(int argc, char** argv) {
    Arguments arguments;
    CLI::App app("Worms, a bazooka, and an island that does not grow back", "brackenmoor");
    describe(app, arguments);
    try {
        app.parse(argc, argv);
    } catch (const CLI::ParseError& error) {
        if (error.get_exit_code() == 0)
            return app.exit(error);
        throw LaunchError(std::string(error.what()) + "\n\"brackenmoor --help\" lists what there is", exitBadArguments);
    }
    return launch(arguments, argv[0]);
}

} // namespace

void sayNotice(const std::string& sentence) {
    std::cerr << "brackenmoor: " << sentence << ".\n";
}

int main(int argc, char** argv) {
    try {
        return run(argc, argv);
    } catch (const LaunchError& error) {
        std::cerr << "brackenmoor: " << error.what() << '\n';
        return error.status;
    } catch (const std::exception& error) {
        sayNotice(error.what());
        return exitFailed;
    }
}
