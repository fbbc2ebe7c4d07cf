#pragma once

// The one text printer. Screens centre text by assuming a fixed width for each character.

class GLWindow;

constexpr int kCharacterWidth = 14;      // pixels; what the glyphs advance
constexpr int kWideCharacterWidth = 15;  // pixels; what the level intro and driver screen assume

// Prints one line at (x, y) pixels from the lower left corner of the window in the given colour;
// a negative x becomes 0. At most 255 characters; those without a glyph print as blanks. A null
// format prints nothing. Leaves texturing off, and the colour as emission.
[[gnu::format(printf, 7, 8)]] void PrintText(GLWindow* window, int x, int y, float red, float green,
                                             float blue, const char* format, ...);

// The x at which a text of so many characters stands centred in a window of this width.
constexpr int CentredX(int windowWidth, int characters, int characterWidth = kCharacterWidth) {
    return windowWidth / 2 - (characters * characterWidth) / 2;
}
