// A picture made of every primitive and every built-in font, saved as a BMP
// file and read back by the independent reader: the file must be a valid
// 24-bit BMP whose pixels are exactly what was drawn.
#include <gtest/gtest.h>

#include <algorithm>
#include <cstdio>
#include <span>
#include <string>
#include <unistd.h>
#include <vector>

#include "bmp_reader.h"
#include "draw_canvas.h"
#include "font_test_support.h"
#include "velatrix/bitmap.h"
#include "velatrix/fonts.h"

namespace velatrix::testing {
namespace {

constexpr int kWidth = 321;  // odd, so rows carry padding bytes
constexpr int kHeight = 190;
constexpr uint32_t kInk = 0x2050C0FFu;  // distinct channels catch a swapped byte order

struct TextSample {
    const velatrix_font* font;
    int x, y;
};

void draw_everything(velatrix_bitmap* bitmap, const std::vector<TextSample>& samples, const std::vector<int32_t>& text) {
    velatrix_draw_line(bitmap, 2, 2, 60, 30, 0xFF0000FFu);
    velatrix_draw_aa_line(bitmap, 2, 30, 60, 2, 0x00A000FFu);
    velatrix_draw_thick_line(bitmap, 70, 2, 120, 30, 0x0000FFFFu, 3.0f);
    velatrix_draw_thick_aa_line(bitmap, 70, 30, 120, 2, 0x808000FFu, 2.5f);
    velatrix_draw_circle(bitmap, 145, 16, 12, 0x000000FFu);
    velatrix_fill_circle(bitmap, 175, 16, 10, 0xC000C0FFu);
    velatrix_draw_ellipse(bitmap, 190, 4, 230, 28, 0x004040FFu);
    velatrix_fill_ellipse(bitmap, 255, 16, 270, 26, 0x00000080u);
    velatrix_draw_rectangle(bitmap, 280, 3, 300, 28, 0x404040FFu);
    velatrix_draw_thick_rectangle(bitmap, 303, 3, 318, 28, 3, 0x0080FFFFu);
    velatrix_fill_rectangle(bitmap, 2, 170, 40, 186, 0xFF8000FFu);
    velatrix_bitmap_copy(bitmap, bitmap, 2, 170, 50, 170, 20, 10);
    for (const TextSample& sample : samples) {
        enhanced_draw_string(bitmap, sample.font, text.data(), sample.x, sample.y, kInk);
    }
}

std::string temporary_path() {
    return ::testing::TempDir() + "velatrix_fonts_" + std::to_string(::getpid()) + ".bmp";
}

TEST(TextBmpRoundTrip, SavedPictureDecodesToTheDrawnPixels) {
    const std::vector<TextSample> samples = {{&velatrix_default, 4, 36},
                                             {&ubuntu_mono_e_12pt, 4, 48},
                                             {&ubuntu_mono_e_16pt, 4, 64},
                                             {&ubuntu_mono_e_24pt, 4, 84},
                                             {&ubuntu_mono_e_30pt, 4, 112}};
    const std::vector<int32_t> text = code_points(U"Ag\u00e9\u0416\u03a9\u20ac\u2192");
    Canvas canvas(kWidth, kHeight);  // zeroed buffer: header bytes left alone read 0
    draw_everything(canvas.get(), samples, text);

    const std::string path = temporary_path();
    const auto* data = canvas.bitmap.data;
    ASSERT_TRUE(write_file(path, std::span<const uint8_t>(data, static_cast<size_t>(canvas.bitmap.file_size))));
    const BmpImage image = read_bmp_file(path);
    std::remove(path.c_str());
    ASSERT_TRUE(image.ok()) << image.error;

    const uint32_t stride = (kWidth * 3 + 3) / 4 * 4;
    EXPECT_EQ(image.file_size, 54 + stride * kHeight);
    EXPECT_EQ(image.pixel_offset, 54u);
    EXPECT_EQ(image.info_size, 40u);
    EXPECT_EQ(image.width, kWidth);
    EXPECT_EQ(image.height, kHeight);
    EXPECT_EQ(image.planes, 1);
    EXPECT_EQ(image.bits_per_pixel, 24);
    EXPECT_EQ(image.compression, 0u);
    EXPECT_EQ(image.image_size, stride * kHeight);

    int differing = 0;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) differing += image.at(x, y) != canvas.at(x, y);
    }
    EXPECT_EQ(differing, 0);

    // Independently of the library's own reader: every glyph of every sample
    // sits in the file where the layout rules put it, in the ink colour.
    for (const TextSample& sample : samples) {
        int ascent = 0;
        for (const int32_t* c = text.data(); *c != 0; ++c) {
            const velatrix_glyph* g = enhanced_get_font_character(sample.font, *c);
            ASSERT_NE(g, nullptr);
            ascent = std::max(ascent, g->height - g->descent);
        }
        int x = sample.x;
        for (const int32_t* c = text.data(); *c != 0; ++c) {
            const velatrix_glyph& g = *enhanced_get_font_character(sample.font, *c);
            const std::vector<std::string> rows = glyph_rows(g);
            const int top = sample.y + ascent - (g.height - g.descent);
            for (int row = 0; row < g.height; ++row) {
                for (int column = 0; column < g.width; ++column) {
                    const bool ink = rows[row][column] == '#';
                    const uint32_t pixel = image.at(x + column, top + row);
                    ASSERT_EQ(ink, pixel == kInk) << "code point " << *c << " at " << column << "," << row;
                }
            }
            x += g.width + 1;
        }
    }
    // And the primitives left their colours in the file too.
    EXPECT_EQ(image.at(2, 2), 0xFF0000FFu);
    EXPECT_EQ(image.at(20, 178), 0xFF8000FFu);
    EXPECT_EQ(image.at(60, 175), 0xFF8000FFu);  // the copied block
    EXPECT_EQ(image.at(175, 16), 0xC000C0FFu);
}

}  // namespace
}  // namespace velatrix::testing
