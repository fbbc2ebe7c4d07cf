#include "platform/Font.h"

#include <fontconfig/fontconfig.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <algorithm>
#include <cstdlib>
#include <memory>
#include <string>

namespace platform {

namespace {

using Pattern = std::unique_ptr<FcPattern, decltype(&FcPatternDestroy)>;
using Library = std::unique_ptr<FT_LibraryRec_, decltype(&FT_Done_FreeType)>;
using Face = std::unique_ptr<FT_FaceRec_, decltype(&FT_Done_Face)>;

struct FontFile {
    std::string path;
    int index = 0;
};

// The file of the bold, fixed-width face that the system offers for `family`. True = none.
bool FindFont(const char* family, FontFile& font) {
    if (FcInit() == FcFalse) {
        return true;
    }
    const Pattern wanted(FcPatternCreate(), &FcPatternDestroy);
    if (!wanted) {
        return true;
    }
    FcPatternAddString(wanted.get(), FC_FAMILY, reinterpret_cast<const FcChar8*>(family));
    FcPatternAddInteger(wanted.get(), FC_WEIGHT, FC_WEIGHT_BOLD);
    FcPatternAddInteger(wanted.get(), FC_SPACING, FC_MONO);
    FcPatternAddBool(wanted.get(), FC_OUTLINE, FcTrue);
    FcConfigSubstitute(nullptr, wanted.get(), FcMatchPattern);
    FcDefaultSubstitute(wanted.get());
    FcResult result = FcResultNoMatch;
    const Pattern match(FcFontMatch(nullptr, wanted.get(), &result), &FcPatternDestroy);
    FcChar8* path = nullptr;
    if (!match || FcPatternGetString(match.get(), FC_FILE, 0, &path) != FcResultMatch) {
        return true;
    }
    font.path = reinterpret_cast<const char*>(path);
    if (FcPatternGetInteger(match.get(), FC_INDEX, 0, &font.index) != FcResultMatch) {
        font.index = 0;
    }
    return false;
}

bool IsBlank(const FT_Bitmap& bitmap) {
    const size_t size = static_cast<size_t>(std::abs(bitmap.pitch)) * bitmap.rows;
    return std::all_of(bitmap.buffer, bitmap.buffer + size, [](uint8_t byte) { return byte == 0; });
}

// FreeType has the rows of a bitmap from the top down.
void CopyRows(const FT_Bitmap& bitmap, Glyph& glyph) {
    const size_t rowBytes = (bitmap.width + 7) / 8;
    glyph.bits.resize(rowBytes * bitmap.rows);
    for (unsigned row = 0; row < bitmap.rows; ++row) {
        const unsigned char* from = bitmap.buffer + static_cast<ptrdiff_t>(row) * bitmap.pitch;
        const size_t rowFromBottom = bitmap.rows - 1 - row;
        std::copy_n(from, rowBytes,
                    glyph.bits.begin() + static_cast<ptrdiff_t>(rowFromBottom * rowBytes));
    }
}

// True = failure.
bool MakeGlyph(FT_Face face, int code, Glyph& glyph) {
    if (FT_Load_Char(face, static_cast<FT_ULong>(code), FT_LOAD_RENDER | FT_LOAD_TARGET_MONO) !=
        0) {
        return true;
    }
    const FT_GlyphSlot slot = face->glyph;
    glyph = Glyph{};
    glyph.advance = static_cast<int>((slot->advance.x + 32) >> 6);  // in 64ths of a pixel
    // A face shows what it has no glyph for, such as the control code 127, as a box: no text of the
    // game should.
    if (FT_Get_Char_Index(face, static_cast<FT_ULong>(code)) == 0 || IsBlank(slot->bitmap)) {
        return false;
    }
    glyph.width = static_cast<int>(slot->bitmap.width);
    glyph.height = static_cast<int>(slot->bitmap.rows);
    glyph.originX = -slot->bitmap_left;
    glyph.originY = glyph.height - slot->bitmap_top;
    CopyRows(slot->bitmap, glyph);
    return false;
}

}  // namespace

bool MakeGlyphs(const char* family, int pixels, std::array<Glyph, kGlyphCount>& glyphs) {
    FontFile font;
    if (family == nullptr || pixels <= 0 || FindFont(family, font)) {
        return true;
    }
    FT_Library opened = nullptr;
    if (FT_Init_FreeType(&opened) != 0) {
        return true;
    }
    const Library library(opened, &FT_Done_FreeType);
    FT_Face openedFace = nullptr;
    if (FT_New_Face(library.get(), font.path.c_str(), font.index, &openedFace) != 0) {
        return true;
    }
    const Face face(openedFace, &FT_Done_Face);
    if (FT_Set_Pixel_Sizes(face.get(), 0, static_cast<FT_UInt>(pixels)) != 0) {
        return true;
    }
    for (int i = 0; i < kGlyphCount; ++i) {
        if (MakeGlyph(face.get(), kFirstGlyph + i, glyphs[static_cast<size_t>(i)])) {
            return true;
        }
    }
    return false;
}

}  // namespace platform
