#pragma once

#include <string>

/// Tells the player that the game cannot go on with its data: one message box with the caption "ERROR" that names the
/// file and what is wrong with it.
void reportDataError(const std::string& file, const std::string& fault);
