#pragma once

// Faults of data files, told to whoever wrote the files. A fault that changes what is played is a line on stderr,
// "file:line: what is wrong", said once however often the file is read. Only when no round can start is there a message
// box, and it shows the first of the faults that led there, not the last.

#include "core/base/text_reader.h"

#include <string>

/// Says a fault of a file.
void sayDataFault(const std::string& file, const TextFault& fault);
/// A program starts: nothing has been said yet.
void forgetDataFaults();
/// A round's data are about to be read: a fault from here on may be what keeps it from starting.
void beginRoundData();
/// Tells the player that the game cannot go on with its data: one message box with the caption "ERROR" and the first
/// fault since the program started or the round's data began, or this one when there was none.
void reportDataError(const std::string& file, const std::string& fault);
