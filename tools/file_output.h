#pragma once

#include <string>

/// Writes a file whole or not at all: to a temporary beside it, then renamed. False when it cannot be written; nothing
/// is left behind then.
bool writeWholeFile(const std::string& fileName, const std::string& contents);
