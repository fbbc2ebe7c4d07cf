#pragma once

// Uncompressed true-colour TGA pictures.

#include <cstdint>
#include <string>
#include <vector>

struct TgaImage {
    int32_t width = 0;         // at least 1
    int32_t height = 0;        // at least 1
    int32_t bitsPerPixel = 0;  // 24 or 32
    uint32_t format = 0;       // GL_BGR or GL_BGRA
    // width x height pixels in file order: the first row is the bottom row.
    std::vector<uint8_t> pixels;
};

// Reads a picture. In 32-bit pictures the outermost frame of pixels becomes transparent, so that a
// clamped decal shows the surface outside its area. Returns true when the picture was READ - the
// one operation of the game whose true means success. Anything but an uncompressed 24- or 32-bit
// picture with all its pixels is refused; `image` is then empty.
bool LoadTga(const std::string& gamePath, TgaImage& image);
