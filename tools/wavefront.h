#pragma once

#include <string>
#include <vector>

class csgMesh;

/// The solid as the text of a Wavefront .obj file: a group for each part, with a texture's name as its material.
std::string writeWavefrontText(const csgMesh& solid, const std::vector<std::string>& textureNames);
