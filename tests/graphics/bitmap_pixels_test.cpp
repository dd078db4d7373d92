// Pixel access at and beyond every edge, and block copies. Clearing is
// checked with the other span fills in draw_spans_test.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "draw_canvas.h"
#include "velatrix/bitmap.h"
#include "velatrix/error.h"

namespace velatrix::testing {
namespace {

using Rows = std::vector<std::string>;

TEST(BitmapPixels, OutsideReadsWhiteAndWritesNothing) {
    Canvas canvas(4, 3);
    velatrix_fill_rectangle(canvas.get(), 0, 0, 3, 2, 0x000000FFu);
    const std::vector<uint8_t> before = canvas.buffer;
    const int outside[][2] = {{-1, 0}, {4, 0}, {0, -1}, {0, 3}, {-1, -1}, {4, 3}, {INT_MIN, 0}, {0, INT_MAX}};
    for (const auto& p : outside) {
        EXPECT_EQ(velatrix_get_pixel(canvas.get(), p[0], p[1]), 0xFFFFFFFFu) << p[0] << "," << p[1];
        velatrix_set_pixel(canvas.get(), p[0], p[1], 0xFF0000FFu);
        velatrix_set_pixel(canvas.get(), p[0], p[1], 0xFF000080u);
    }
    EXPECT_EQ(canvas.buffer, before);
    // The corners themselves are inside.
    for (const auto& p : {std::pair{0, 0}, {3, 0}, {0, 2}, {3, 2}}) {
        EXPECT_EQ(canvas.at(p.first, p.second), 0x000000FFu);
    }
    EXPECT_EQ(velatrix_get_pixel(nullptr, 0, 0), 0xFFFFFFFFu);
    velatrix_set_pixel(nullptr, 0, 0, 0x000000FFu);
}

TEST(BitmapCopy, BlocksPartlyOutsideTheSourceReadWhite) {
    Canvas source(3, 3);
    velatrix_fill_rectangle(source.get(), 0, 0, 2, 2, 0x0000FFFFu);
    Canvas destination(5, 4);
    velatrix_bitmap_clear(destination.get(), 0x000000FFu);
    // Source columns -2 to 1 and rows -1 to 1 land at columns 1 to 4, rows 1 to 3.
    velatrix_bitmap_copy(source.get(), destination.get(), -2, -1, 1, 1, 4, 3);
    const Rows expected = {
        "KKKKK",
        "KWWWW",
        "KWWBB",
        "KWWBB",
    };
    EXPECT_EQ(destination.map([](uint32_t c) {
        return c == 0x000000FFu ? 'K' : c == 0xFFFFFFFFu ? 'W' : c == 0x0000FFFFu ? 'B' : '?';
    }),
              expected);
}

TEST(BitmapCopy, DestinationClipsAtEveryEdge) {
    Canvas source(4, 4);
    for (int y = 0; y < 4; ++y) {
        for (int x = 0; x < 4; ++x) velatrix_set_pixel(source.get(), x, y, static_cast<uint32_t>(0x10 * (y * 4 + x + 1)) << 8 | 0xFFu);
    }
    Canvas destination(3, 3);
    velatrix_bitmap_copy(source.get(), destination.get(), 0, 0, -1, -2, 4, 4);
    // Destination (x, y) shows source (x + 1, y + 2); rows 2 onwards were beyond the source block.
    for (int y = 0; y < 3; ++y) {
        for (int x = 0; x < 3; ++x) {
            const uint32_t expected = y < 2 ? source.at(x + 1, y + 2) : 0xFFFFFFFFu;
            EXPECT_EQ(destination.at(x, y), expected) << x << "," << y;
        }
    }
    const std::vector<uint8_t> before = destination.buffer;
    velatrix_bitmap_copy(source.get(), destination.get(), 0, 0, 3, 0, 4, 4);
    velatrix_bitmap_copy(source.get(), destination.get(), 0, 0, 0, -4, 4, 4);
    velatrix_bitmap_copy(source.get(), destination.get(), 0, 0, INT_MAX, INT_MAX, INT_MAX, INT_MAX);
    velatrix_bitmap_copy(source.get(), destination.get(), 0, 0, 0, 0, -3, 2);
    EXPECT_EQ(destination.buffer, before);
}

TEST(BitmapCopy, OverlappingCopyWithinOneBitmapGoesPixelByPixel) {
    // Column i is written before column i + 1 is read: a copy one pixel to
    // the right smears the first column across the row.
    Canvas canvas(4, 1);
    const uint32_t colours[] = {0x110000FFu, 0x220000FFu, 0x330000FFu, 0x440000FFu};
    for (int x = 0; x < 4; ++x) velatrix_set_pixel(canvas.get(), x, 0, colours[x]);
    velatrix_bitmap_copy(canvas.get(), canvas.get(), 0, 0, 1, 0, 3, 1);
    for (int x = 0; x < 4; ++x) EXPECT_EQ(canvas.at(x, 0), colours[0]) << x;
}

TEST(BitmapPixels, NullOrBrokenRecordsAreReportedNotDrawn) {
    velatrix_draw_line(nullptr, 0, 0, 5, 5, 0x000000FFu);
    EXPECT_STREQ(velatrix_get_last_error(), "Invalid bitmap.");
    Canvas canvas(4, 4);
    velatrix_bitmap broken = canvas.bitmap;
    broken.stride = 3;  // shorter than a row of four pixels
    velatrix_fill_rectangle(&broken, 0, 0, 3, 3, 0x000000FFu);
    EXPECT_STREQ(velatrix_get_last_error(), "Invalid bitmap.");
    velatrix_bitmap_copy(nullptr, canvas.get(), 0, 0, 0, 0, 2, 2);
    EXPECT_STREQ(velatrix_get_last_error(), "Invalid bitmap.");
    EXPECT_EQ(canvas.ink(), (Rows{"....", "....", "....", "...."}));
}

}  // namespace
}  // namespace velatrix::testing
