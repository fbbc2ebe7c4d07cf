#include "platform/Font.h"

#include <cmath>

#include "platform/null/NullState.h"

namespace platform {

// Boxes in the measures of the real face, each with its character code as the pattern of its rows,
// so that a test can tell glyphs apart. The blank and the control code 127 have no pixels.
bool MakeGlyphs(const char* family, int pixels, std::array<Glyph, kGlyphCount>& glyphs) {
    if (family == nullptr || pixels <= 0 || null::TheSystem().fontMissing) {
        return true;
    }
    for (int i = 0; i < kGlyphCount; ++i) {
        Glyph& glyph = glyphs[static_cast<size_t>(i)];
        const int code = kFirstGlyph + i;
        glyph = Glyph{};
        glyph.advance = static_cast<int>(std::lround(pixels * 0.6));
        if (code == ' ' || code == 127) {
            continue;
        }
        glyph.width = 8;
        glyph.height = pixels * 2 / 3;
        glyph.bits.assign(static_cast<size_t>(glyph.height), static_cast<uint8_t>(code));
    }
    return false;
}

}  // namespace platform
