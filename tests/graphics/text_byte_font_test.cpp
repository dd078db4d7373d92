// The older single-byte font format: fixed cells, no gap, no baseline.
#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "draw_canvas.h"
#include "velatrix/fonts.h"

namespace velatrix::testing {
namespace {

using Rows = std::vector<std::string>;
constexpr uint32_t kBlack = 0x000000FFu;

// Cells of 3 x 2 pixels, 6 bits each in one byte: 'a' a top bar, 'b' a
// bottom bar, 0xE9 (a byte above 127) a diagonal.
const uint8_t kCharacters[] = {'a', 'b', 0xE9};
const uint8_t kData[] = {0xE0, 0x1C, 0x88};
const velatrix_byte_font kFont{3, 2, 1, 3, 1, kCharacters, kData};

// The lookup compares signed bytes, so 0xE9 is found as well.
TEST(ByteFont, StringsAdvanceByTheCellAndSkipUnknownCharacters) {
    EXPECT_EQ(velatrix_font_char_lookup(nullptr, 'a'), nullptr);
    Canvas canvas(13, 3);
    velatrix_draw_string(canvas.get(), &kFont, "ab?\xe9", 1, 1, kBlack);
    EXPECT_EQ(canvas.ink(), (Rows{".............", ".###......#..", "....###....#."}));
}

TEST(ByteFont, AlignmentUsesCellsAndTheCharacterCount) {
    Canvas right(20, 20);
    velatrix_draw_string_aligned(right.get(), &kFont, "aa", 0, 0, 15, 12, 2, 2, kBlack);
    Canvas expected_right(20, 20);
    velatrix_draw_string(expected_right.get(), &kFont, "aa", 13, 10, kBlack);
    EXPECT_EQ(right.ink(), expected_right.ink());

    // Centred: x = 2 + (15 / 2 - 6 / 2), y = 4 + (9 / 2 - 2 / 2).
    Canvas centred(20, 20);
    velatrix_draw_string_aligned(centred.get(), &kFont, "ab", 2, 4, 17, 13, 1, 1, kBlack);
    Canvas expected_centre(20, 20);
    velatrix_draw_string(expected_centre.get(), &kFont, "ab", 6, 7, kBlack);
    EXPECT_EQ(centred.ink(), expected_centre.ink());
}

TEST(ByteFont, GlyphDataShorterThanTheCellIsNotOverread) {
    // A 4 x 4 cell claims 16 pixels but each glyph has one byte: only the
    // first two rows can be drawn.
    const uint8_t characters[] = {'x'};
    const uint8_t data[] = {0xFF};
    const velatrix_byte_font tight{4, 4, 1, 1, 1, characters, data};
    Canvas canvas(4, 4);
    velatrix_draw_char(canvas.get(), &tight, 'x', 0, 0, kBlack);
    EXPECT_EQ(canvas.ink(), (Rows{"####", "####", "....", "...."}));

    // Coverage cells: one byte per pixel.
    const uint8_t coverage_data[] = {0, 255, 255, 0};
    const velatrix_byte_font coverage{2, 2, 8, 1, 4, characters, coverage_data};
    Canvas shaded(2, 2);
    velatrix_draw_char(shaded.get(), &coverage, 'x', 0, 0, kBlack);
    EXPECT_EQ(shaded.ink(), (Rows{"#.", ".#"}));

    velatrix_draw_string(canvas.get(), nullptr, "x", 0, 0, kBlack);
    velatrix_draw_string(canvas.get(), &tight, nullptr, 0, 0, kBlack);
}

}  // namespace
}  // namespace velatrix::testing
