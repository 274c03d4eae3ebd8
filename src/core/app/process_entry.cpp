// The process entry: brings the desktop up, runs the game, takes the desktop down.

#include "core/base/log.h"
#include "platform/sdl/sdl_desktop.h"

#include <cstdio>
#include <cstdlib>
#include <iostream>

namespace {

std::FILE* logFile = nullptr;

void writeToLogFile(const char* text) {
    std::fputs(text, logFile);
    std::fflush(logFile);
}

void openLogFile() {
    const char* name = std::getenv("BRACKENMOOR_LOG_FILE");
    if (name == nullptr || *name == '\0')
        return;
    logFile = std::fopen(name, "w");
    if (logFile == nullptr)
        std::cerr << "brackenmoor: the log file \"" << name << "\" cannot be written.\n";
    else
        setLogSink(writeToLogFile);
}

void closeLogFile() {
    setLogSink(nullptr);
    if (logFile != nullptr)
        std::fclose(logFile);
}

void logLineOfDesktop(const char* line) {
    logLine("%s\n", line);
}

} // namespace

int main() {
    if (!startDesktop())
        return EXIT_FAILURE;
    openLogFile();
    setDesktopLog(logLineOfDesktop);
    char commandLine[] = "";
    const int result = WinMain(GetModuleHandleA(nullptr), nullptr, commandLine, SW_SHOW);
    closeLogFile();
    stopDesktop();
    return exitStatus(result);
}
