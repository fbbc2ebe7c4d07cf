#include "platform/Font.h"

#include <gtest/gtest.h>

#include <bit>

using platform::Glyph;

namespace {

size_t RowBytes(const Glyph& glyph) {
    return static_cast<size_t>(glyph.width + 7) / 8;
}

int Pixels(const Glyph& glyph, int row) {
    int pixels = 0;
    for (size_t i = 0; i < RowBytes(glyph); ++i) {
        pixels += std::popcount(glyph.bits[static_cast<size_t>(row) * RowBytes(glyph) + i]);
    }
    return pixels;
}

}  // namespace

TEST(Font, GlyphsAdvanceByWhatTheScreensAssumeAndStandOnTheirLine) {
    std::array<Glyph, platform::kGlyphCount> glyphs;
    ASSERT_FALSE(platform::MakeGlyphs("Courier New", 24, glyphs));
    const auto glyph = [&](char c) -> const Glyph& {
        return glyphs[static_cast<size_t>(c - platform::kFirstGlyph)];
    };
    for (const Glyph& each : glyphs) {
        EXPECT_EQ(each.advance, 14);
        EXPECT_EQ(each.bits.size(), RowBytes(each) * static_cast<size_t>(each.height));
        EXPECT_LE(each.width, 24);
    }
    EXPECT_EQ(glyph(' ').width, 0);
    EXPECT_EQ(glyph('\x7F').width, 0) << "no box for the control code";

    const Glyph& ell = glyph('L');
    ASSERT_GT(ell.height, 10);
    EXPECT_GT(Pixels(ell, 0), Pixels(ell, ell.height / 2)) << "its foot is the first row";
    EXPECT_EQ(ell.originY, 0) << "it stands on the line";
    EXPECT_LE(ell.originX, 0);
    EXPECT_GT(glyph('g').originY, 2) << "it hangs below the line";
    EXPECT_LT(glyph('\'').originY, -5) << "it floats above the line";
    EXPECT_GE(Pixels(glyph('l'), glyph('l').height / 2), 2) << "bold strokes";
}
