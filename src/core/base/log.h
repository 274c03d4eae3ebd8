#pragma once

// The diagnostic log. In the shipped configuration every line is discarded: nothing reaches a console, a file or a
// debugger. Built with BRACKENMOOR_LOG the lines go to stderr. A sink can be set to read them in a test.

#if defined(__GNUC__)
#define BRACKENMOOR_PRINTF_LIKE __attribute__((format(printf, 1, 2)))
#else
#define BRACKENMOOR_PRINTF_LIKE
#endif

/// Formats one piece of text, its line end included, for the log.
void logLine(const char* format, ...) BRACKENMOOR_PRINTF_LIKE;

/// Receives every formatted piece of text while set; null restores the configured behaviour.
using LogSink = void (*)(const char* text);
void setLogSink(LogSink sink);
