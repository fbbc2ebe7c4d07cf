#pragma once

#include <cstdint>
#include <string>
#include <vector>

// Writes a picture of width x height pixels, three bytes each, first row at the bottom as OpenGL
// reads it. True = failure.
bool WritePng(const std::string& path, int width, int height, const std::vector<uint8_t>& pixels);
