#pragma once

#include <string>

/// Writes a file. An ordinary one is replaced at once, by a whole new one with the old one's permissions and owner, or
/// not at all; links are followed to it. A device or a pipe is written into. False when that fails; nothing is left
/// behind then.
[[nodiscard]] bool writeWholeFile(const std::string& fileName, const std::string& contents);
