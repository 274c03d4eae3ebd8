#pragma once

#include <string>

/// Text as the fonts can draw it, one byte a character: UTF-8 becomes Latin-1, with "?" for each character that Latin-1
/// has no sign for. What is no UTF-8 is taken for Latin-1 and stays as it is.
std::string latin1Of(const std::string& text);
