#include "core/base/log.h"

#include <cstdarg>
#include <cstdio>
#include <string>

namespace {

#ifdef BRACKENMOOR_LOG
void writeToStderr(const char* text) {
    std::fputs(text, stderr);
}
constexpr LogSink configuredSink = writeToStderr;
#else
constexpr LogSink configuredSink = nullptr;
#endif

LogSink currentSink = configuredSink;

} // namespace

void logLine(const char* format, ...) {
    if (currentSink == nullptr)
        return;
    std::va_list arguments;
    va_start(arguments, format);
    std::va_list measured;
    va_copy(measured, arguments);
    const int length = std::vsnprintf(nullptr, 0, format, measured);
    va_end(measured);
    if (length >= 0) {
        std::string text(static_cast<std::size_t>(length) + 1, '\0');
        std::vsnprintf(text.data(), text.size(), format, arguments);
        currentSink(text.c_str());
    }
    va_end(arguments);
}

void setLogSink(LogSink sink) {
    currentSink = sink != nullptr ? sink : configuredSink;
}
