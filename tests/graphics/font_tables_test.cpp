// The built-in font tables: their shape, repertoire, sample glyphs and the
// lookup by code point and by name.
#include <gtest/gtest.h>

#include <algorithm>
#include <string>
#include <vector>
#include <tuple>

#include "font_test_support.h"
#include "velatrix/error.h"
#include "velatrix/fonts.h"

namespace velatrix::testing {
namespace {

using Rows = std::vector<std::string>;

const int32_t kLastSix[] = {8359, 8364, 8592, 8593, 8594, 8595};

const velatrix_glyph& glyph_of(const velatrix_font& font, int32_t code_point) {
    const velatrix_glyph* glyph = enhanced_get_font_character(&font, code_point);
    EXPECT_NE(glyph, nullptr) << code_point;
    static const velatrix_glyph empty{};
    return glyph != nullptr ? *glyph : empty;
}

TEST(FontTables, RecordsAreConsistentInEveryTable) {
    for (const BuiltInFont& entry : built_in_fonts()) {
        SCOPED_TRACE(entry.name);
        const velatrix_font& font = *entry.font;
        EXPECT_EQ(font.bits_per_pixel, 1);
        const bool is_default = entry.font == &velatrix_default;
        ASSERT_EQ(font.count, is_default ? 529 : 527);
        EXPECT_EQ(font.lookup[0], is_default ? 0 : 32);
        EXPECT_TRUE(std::is_sorted(font.lookup, font.lookup + font.count, std::less_equal<int32_t>()))
            << "lookup must be strictly ascending";
        EXPECT_TRUE(std::equal(std::begin(kLastSix), std::end(kLastSix), font.lookup + font.count - 6));
        for (int i = 0; i < font.count; ++i) {
            const velatrix_glyph& g = font.glyphs[i];
            SCOPED_TRACE(font.lookup[i]);
            const int pixels = g.width * g.height;
            ASSERT_LE(pixels, 1600);
            EXPECT_EQ(g.byte_count, (pixels + 7) / 8);
            EXPECT_LE(g.descent, g.height);
            EXPECT_EQ(g.padding[0] | g.padding[1] | g.padding[2], 0);
            // Nothing may hide past the pixels the record claims.
            for (int bit = pixels; bit < 1600; ++bit) {
                ASSERT_EQ((g.bitmap[bit / 8] >> (7 - bit % 8)) & 1, 0) << "stray bit " << bit;
            }
        }
    }
}

TEST(FontTables, MonoFontsHaveFixedCellsAndShareTheDefaultRepertoire) {
    struct Cell {
        const velatrix_font* font;
        int width, height, descent;
    };
    const Cell cells[] = {{&ubuntu_mono_e_12pt, 6, 12, 2},
                          {&ubuntu_mono_e_16pt, 8, 17, 3},
                          {&ubuntu_mono_e_24pt, 12, 25, 5},
                          {&ubuntu_mono_e_30pt, 15, 31, 6}};
    std::vector<int32_t> default_set(velatrix_default.lookup, velatrix_default.lookup + velatrix_default.count);
    std::erase_if(default_set, [](int32_t c) { return c == 0 || c == 8199; });
    for (const Cell& cell : cells) {
        for (int i = 0; i < cell.font->count; ++i) {
            const velatrix_glyph& g = cell.font->glyphs[i];
            ASSERT_EQ(g.width, cell.width) << cell.font->lookup[i];
            ASSERT_EQ(g.height, cell.height) << cell.font->lookup[i];
            ASSERT_EQ(g.descent, cell.descent) << cell.font->lookup[i];
        }
        EXPECT_EQ(std::vector<int32_t>(cell.font->lookup, cell.font->lookup + cell.font->count), default_set);
    }
}

TEST(FontTables, DefaultFaceIsProportionalWithinItsLimits) {
    int widest = 0, tallest = 0, deepest = 0, narrowest = 99;
    for (int i = 0; i < velatrix_default.count; ++i) {
        const velatrix_glyph& g = velatrix_default.glyphs[i];
        narrowest = std::min<int>(narrowest, g.width);
        widest = std::max<int>(widest, g.width);
        tallest = std::max<int>(tallest, g.height);
        deepest = std::max<int>(deepest, g.descent);
        EXPECT_GE(g.height, 1) << velatrix_default.lookup[i];
    }
    EXPECT_GE(narrowest, 1);
    EXPECT_LE(widest, 9);
    EXPECT_LE(tallest, 10);
    EXPECT_LE(deepest, 3);
    EXPECT_LT(glyph_of(velatrix_default, 'i').width, glyph_of(velatrix_default, 'M').width);
    // The figure space is as wide as the digits it stands in for.
    EXPECT_EQ(glyph_of(velatrix_default, 8199).width, glyph_of(velatrix_default, '0').width);
}

// The default face's capital A is drawn in text_layout_test.
TEST(FontTables, DefaultFallbackGlyph) {
    const velatrix_glyph* fallback = enhanced_get_font_character(&velatrix_default, 0);
    ASSERT_NE(fallback, nullptr);
    EXPECT_EQ(fallback, velatrix_default.glyphs);
    EXPECT_EQ(std::tuple(fallback->width, fallback->height, fallback->descent),
              std::tuple(4, 6, 1));
    EXPECT_EQ(enhanced_get_font_character(&velatrix_default, 9731), fallback);
    EXPECT_EQ(enhanced_get_font_character(&velatrix_default, -5), fallback);
    EXPECT_NE(enhanced_get_font_character(&velatrix_default, 65), fallback);
}

TEST(FontTables, TwelvePixelMonoG) {
    const velatrix_glyph& g = glyph_of(ubuntu_mono_e_12pt, 'g');
    EXPECT_EQ(std::tuple(g.width, g.height, g.descent),
              std::tuple(6, 12, 2));
    EXPECT_EQ(glyph_rows(g), (Rows{"......", "......", "......", "......", ".####.", "#...#.", "#...#.", "#...#.",
                                   "#...#.", ".####.", "....#.", "####.."}));
}

TEST(FontTables, LookupFindsEachEntryAndMonoFontsHaveNoFallback) {
    for (const BuiltInFont& entry : built_in_fonts()) {
        SCOPED_TRACE(entry.name);
        const velatrix_font& font = *entry.font;
        for (int i = 0; i < font.count; ++i) {
            ASSERT_EQ(enhanced_get_font_character(&font, font.lookup[i]), font.glyphs + i);
        }
        const velatrix_glyph* unknown = enhanced_get_font_character(&font, 9731);
        if (entry.font == &velatrix_default) {
            EXPECT_EQ(unknown, font.glyphs);
        } else {
            EXPECT_EQ(unknown, nullptr);
            EXPECT_EQ(enhanced_get_font_character(&font, 0), nullptr);
        }
    }
    EXPECT_EQ(enhanced_get_font_character(nullptr, 'A'), nullptr);
}

TEST(FontTables, FontsAreFoundByName) {
    for (const BuiltInFont& entry : built_in_fonts()) {
        EXPECT_EQ(velatrix_find_font(entry.name), entry.font) << entry.name;
    }
    EXPECT_EQ(velatrix_find_font("ubuntu_mono_e_13pt"), nullptr);
    EXPECT_STREQ(velatrix_get_last_error(), "Unknown font \"ubuntu_mono_e_13pt\".");
    EXPECT_EQ(velatrix_find_font(nullptr), nullptr);
    EXPECT_STREQ(velatrix_get_last_error(), "Font name is null.");
}

}  // namespace
}  // namespace velatrix::testing
