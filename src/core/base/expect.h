#pragma once

// What must hold, or somebody made a mistake in this program. For mistakes in data there are error paths; what a file
// or a player can bring about is nothing to expect.
//
//     expect(index < faces.size());
//
// ends the program with expression, file and line in debug, sanitizer and fuzzer builds, and is nothing in others: the
// expression is not evaluated there.

#ifdef BRACKENMOOR_EXPECT

[[noreturn]] void expectationFailed(const char* expression, const char* file, int line);

#define expect(...) ((__VA_ARGS__) ? static_cast<void>(0) : expectationFailed(#__VA_ARGS__, __FILE__, __LINE__))

#else

#define expect(...) static_cast<void>(sizeof((__VA_ARGS__) ? 1 : 0))

#endif
