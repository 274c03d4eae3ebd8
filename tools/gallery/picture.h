#pragma once

#include <string>

/// Writes what has been drawn into the current window, lower left corner (0, 0), as a PPM file. False when that fails.
bool savePicture(const std::string& path, int width, int height);
