#pragma once

#include <string>

class csgObject;

/// The solid as the text of a Wavefront .obj file: a group and a material name for each part.
std::string writeWavefrontText(const csgObject& solid);
