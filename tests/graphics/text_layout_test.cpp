// Measuring and drawing lines of code points, and alignment in a box.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "draw_canvas.h"
#include "font_test_support.h"
#include "velatrix/bitmap.h"
#include "velatrix/fonts.h"

namespace velatrix::testing {
namespace {

using Rows = std::vector<std::string>;
constexpr uint32_t kBlack = 0x000000FFu;
constexpr uint32_t kWhite = 0xFFFFFFFFu;

TEST(TextLayout, MeasuresWidthWithGapsAndHeightFromAscentAndDescent) {
    const auto ab = code_points(U"AB");
    EXPECT_EQ(enhanced_get_string_width(&ubuntu_mono_e_12pt, ab.data()), 14);
    EXPECT_EQ(enhanced_get_string_height(&ubuntu_mono_e_12pt, ab.data()), 12);

    // Default face: "A" is 4 x 5 on the baseline, "g" hangs below it.
    const velatrix_glyph* g = enhanced_get_font_character(&velatrix_default, 'g');
    ASSERT_NE(g, nullptr);
    ASSERT_GT(g->descent, 0);
    const auto a = code_points(U"A");
    const auto ag = code_points(U"Ag");
    EXPECT_EQ(enhanced_get_string_width(&velatrix_default, a.data()), 5);
    EXPECT_EQ(enhanced_get_string_height(&velatrix_default, a.data()), 5);
    EXPECT_EQ(enhanced_get_string_width(&velatrix_default, ag.data()), 5 + g->width + 1);
    EXPECT_EQ(enhanced_get_string_height(&velatrix_default, ag.data()),
              std::max(5, g->height - g->descent) + g->descent);

    const auto empty = code_points(U"");
    EXPECT_EQ(enhanced_get_string_width(&velatrix_default, empty.data()), 0);
    EXPECT_EQ(enhanced_get_string_height(&velatrix_default, empty.data()), 0);
    EXPECT_EQ(enhanced_get_string_width(&velatrix_default, nullptr), 0);
    EXPECT_EQ(enhanced_get_string_width(nullptr, ab.data()), 0);
}

TEST(TextLayout, UnknownCodePointsMeasureAsTheFallbackOrNothing) {
    const auto with_snowman = code_points(U"A\u2603B");
    const auto without = code_points(U"AB");
    // The default face draws the 4 x 6 fallback glyph, descent 1.
    EXPECT_EQ(enhanced_get_string_width(&velatrix_default, with_snowman.data()),
              enhanced_get_string_width(&velatrix_default, without.data()) + 5);
    EXPECT_EQ(enhanced_get_string_height(&velatrix_default, with_snowman.data()), 6);
    // The mono fonts have no fallback glyph: the character takes no room.
    for (const BuiltInFont& entry : built_in_fonts()) {
        if (entry.font == &velatrix_default) continue;
        EXPECT_EQ(enhanced_get_string_width(entry.font, with_snowman.data()),
                  enhanced_get_string_width(entry.font, without.data()))
            << entry.name;
        const auto only_unknown = code_points(U"\u2603");
        EXPECT_EQ(enhanced_get_string_height(entry.font, only_unknown.data()), 0) << entry.name;
    }
}

TEST(TextLayout, EveryMeasuredWidthEndsWithOneBlankColumn) {
    for (const BuiltInFont& entry : built_in_fonts()) {
        SCOPED_TRACE(entry.name);
        const velatrix_font& font = *entry.font;
        bool ink_next_to_gap = false;
        for (int i = 0; i < font.count; ++i) {
            const int32_t text[] = {font.lookup[i] == 0 ? 9731 : font.lookup[i], 0};
            const int width = enhanced_get_string_width(&font, text);
            const int height = enhanced_get_string_height(&font, text);
            Canvas canvas(width + 2, height + 1);
            enhanced_draw_string(canvas.get(), &font, text, 0, 0, kBlack);
            for (int y = 0; y < canvas.bitmap.height; ++y) {
                ASSERT_EQ(canvas.at(width - 1, y), kWhite) << "code point " << text[0];
                ASSERT_EQ(canvas.at(width, y), kWhite) << "code point " << text[0];
                ink_next_to_gap = ink_next_to_gap || canvas.at(width - 2, y) != kWhite;
            }
        }
        // Some glyph reaches its last column, so the gap is exactly one.
        EXPECT_TRUE(ink_next_to_gap);
    }
}

TEST(TextLayout, DrawsGlyphsOnACommonBaseline) {
    Canvas canvas(14, 9);
    const auto text = code_points(U"Ag");
    enhanced_draw_string(canvas.get(), &velatrix_default, text.data(), 1, 1, kBlack);
    const Rows ink = canvas.ink();
    // "A" is 5 rows tall and "g" 3 above the baseline, so the baseline is
    // row 1 + 5 and "A" starts at the top.
    EXPECT_EQ(ink[1].substr(1, 5), ".##..");
    EXPECT_EQ(ink[5].substr(1, 5), "#..#.");
    const velatrix_glyph* g = enhanced_get_font_character(&velatrix_default, 'g');
    ASSERT_NE(g, nullptr);
    const Rows g_rows = glyph_rows(*g);
    const int g_top = 1 + 5 - (g->height - g->descent);
    for (int row = 0; row < g->height; ++row) {
        EXPECT_EQ(ink[g_top + row].substr(6, g->width), g_rows[row]) << row;
    }
    EXPECT_EQ(ink[0], std::string(14, '.'));
}

TEST(TextLayout, DrawCharPlacesTheGlyphTopLeftAndLeavesBlankBits) {
    constexpr uint32_t kRed = 0xFF0000FFu;
    Canvas canvas(6, 7);
    velatrix_bitmap_clear(canvas.get(), kRed);
    enhanced_draw_char(canvas.get(), &velatrix_default, 'A', 1, 2, kBlack);
    const Rows picture = canvas.map([](uint32_t c) { return c == kBlack ? '#' : c == 0xFF0000FFu ? '.' : '?'; });
    EXPECT_EQ(picture, (Rows{"......", "......", "..##..", ".#..#.", ".####.", ".#..#.", ".#..#."}));

    // Clipped at the edges, no harm done.
    enhanced_draw_char(canvas.get(), &ubuntu_mono_e_30pt, 'W', -10, -20, kBlack);
    enhanced_draw_char(canvas.get(), &ubuntu_mono_e_30pt, 'W', 2147483640, 2147483640, kBlack);
    enhanced_draw_char(nullptr, &velatrix_default, 'A', 0, 0, kBlack);
    enhanced_draw_char(canvas.get(), nullptr, 'A', 0, 0, kBlack);
}

TEST(TextLayout, CoverageGlyphsSetAlphaFromTheirBytes) {
    const int32_t lookup[] = {0, 'x'};
    velatrix_glyph glyphs[2] = {};
    glyphs[1].width = 3;
    glyphs[1].height = 1;
    glyphs[1].bitmap[0] = 0;    // full ink
    glyphs[1].bitmap[1] = 127;  // about half
    glyphs[1].bitmap[2] = 255;  // none
    const velatrix_font coverage{8, 2, lookup, glyphs};
    Canvas canvas(4, 1);
    enhanced_draw_char(canvas.get(), &coverage, 'x', 0, 0, 0x10203077u);
    EXPECT_EQ(canvas.at(0, 0), 0x102030FFu);  // the colour's own alpha is replaced
    EXPECT_EQ(canvas.at(1, 0), velatrix_color_blend(0x10203080u, kWhite));
    EXPECT_EQ(canvas.at(2, 0), kWhite);
    EXPECT_EQ(canvas.at(3, 0), kWhite);
}

// Centre and middle use the measured size: "AB" is 14 x 12 in the 12-pixel
// mono font, so in a box of 101 x 41 from (10, 0) it starts at
// x = 10 + (50 - 7), y = 0 + (20 - 6); left and top start at the corner.
// Right and bottom step back by the character count, not by the 15-pixel
// width of "AAA"; a reversed box collapses onto its first corner.
TEST(TextLayout, AlignmentInABoxPlacesTheTextLikeAPlainDrawAt) {
    const struct {
        const velatrix_font* font;
        const char32_t* text;
        int x0, y0, x1, y1, horizontal, vertical, x, y;
    } kCases[] = {
        {&ubuntu_mono_e_12pt, U"AB", 10, 0, 111, 41, 1, 1, 53, 14},
        {&ubuntu_mono_e_12pt, U"AB", 20, 30, 111, 41, 0, 7, 20, 30},
        {&velatrix_default, U"AAA", 10, 5, 100, 50, 2, 2, 97, 47},
        {&velatrix_default, U"AA", 40, 20, 5, 5, 2, 2, 38, 18},
    };
    for (const auto& c : kCases) {
        const auto text = code_points(c.text);
        Canvas aligned(130, 60), reference(130, 60);
        enhanced_draw_string_aligned(aligned.get(), c.font, text.data(), c.x0, c.y0, c.x1, c.y1, c.horizontal,
                                     c.vertical, kBlack);
        enhanced_draw_string(reference.get(), c.font, text.data(), c.x, c.y, kBlack);
        EXPECT_EQ(aligned.ink(), reference.ink()) << c.x0 << "," << c.y0 << " " << c.horizontal << ", " << c.vertical;
    }
}

TEST(TextLayout, StringLengthCountsUpToTheTerminator) {
    const auto three = code_points(U"a\u00e9\u2192");
    const auto none = code_points(U"");
    EXPECT_EQ(u_strlen32(three.data()), 3);
    EXPECT_EQ(u_strlen32(none.data()), 0);
    EXPECT_EQ(u_strlen32(nullptr), 0);
}

}  // namespace
}  // namespace velatrix::testing
