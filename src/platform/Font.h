#pragma once

// One-bit glyphs of a bold, fixed-width, Courier-like face for the bitmap font lists.

#include <array>
#include <cstdint>
#include <vector>

namespace platform {

constexpr int kFirstGlyph = 32;
constexpr int kGlyphCount = 96;  // character codes 32 to 127

struct Glyph {
    int width = 0;  // pixels; 0 for a blank
    int height = 0;
    int originX = 0;  // of the raster position within the bitmap, from its lower left corner
    int originY = 0;
    int advance = 0;  // pixels to the next glyph
    // Rows from the bottom up, each padded to whole bytes, most significant bit leftmost: what
    // glBitmap takes with an unpack alignment of 1.
    std::vector<uint8_t> bits;
};

// Rasterises the face that the system offers for `family` at an em of `pixels`. True = no font.
bool MakeGlyphs(const char* family, int pixels, std::array<Glyph, kGlyphCount>& glyphs);

}  // namespace platform
