// The bitmap record, its header bytes and the pixel layout in the buffer.
#include <gtest/gtest.h>

#include <cstdint>
#include <cstring>
#include <string>
#include <vector>
#include <tuple>

#include "draw_canvas.h"
#include "velatrix/bitmap.h"
#include "velatrix/error.h"

namespace velatrix::testing {
namespace {

TEST(BitmapInit, StrideRoundsRowsUpToFourBytes) {
    const struct {
        int width, stride;
    } cases[] = {{0, 0}, {1, 4}, {3, 12}, {4, 12}, {5, 16}, {320, 960}, {321, 964}};
    for (const auto& c : cases) {
        std::vector<uint8_t> buffer(bitmap_file_size(c.width, 3));
        velatrix_bitmap bitmap;
        ASSERT_EQ(velatrix_bitmap_init(&bitmap, buffer.data(), c.width, 3), 1);
        EXPECT_EQ(bitmap.stride, c.stride) << "width " << c.width;
        EXPECT_EQ(bitmap.file_size, c.stride * 3 + 54) << "width " << c.width;
    }
}

// A 10 x 2 bitmap: rows padded to 32 bytes, every pixel byte white, the
// padding included; bytes the header leaves alone and those past the
// image keep the buffer's old contents.
TEST(BitmapInit, TenByTwoRecordAndHeaderWriteOnlyTheirOwnBytes) {
    std::vector<uint8_t> buffer(120, 0xAA);
    velatrix_bitmap bitmap;
    std::memset(&bitmap, 0x5A, sizeof bitmap);
    ASSERT_EQ(velatrix_bitmap_init(&bitmap, buffer.data(), 10, 2), 1);
    EXPECT_EQ(std::tuple(bitmap.data, bitmap.pixels, bitmap.width, bitmap.height, bitmap.clear_length, bitmap.stride,
                         bitmap.image_size, bitmap.file_size),
              std::tuple(buffer.data(), buffer.data() + 54, 10, 2, 0, 32, 64, 118));
    for (int i = 54; i < 118; ++i) EXPECT_EQ(buffer[i], 0xFF) << "byte " << i;
    const int kOld = 0xAA;
    const std::vector<int> expected = {
        'B', 'M', 118, 0, 0, 0,                  // file size
        kOld, kOld, kOld, kOld,                  // reserved, not written
        54, kOld, kOld, kOld,                    // pixel offset, low byte only
        40, kOld, kOld, kOld,                    // info header size, low byte only
        10, 0, 0, 0, 2, 0, 0, 0,                 // width, height
        1, kOld, 24, 0, 0, 0, kOld, kOld,        // planes, bits, compression
        64, 0, 0, 0,                             // image size
    };
    for (size_t i = 0; i < expected.size(); ++i) EXPECT_EQ(buffer[i], expected[i]) << "byte " << i;
    for (size_t i = 38; i < 54; ++i) EXPECT_EQ(buffer[i], kOld) << "byte " << i;
    EXPECT_EQ(buffer[118], kOld);
    EXPECT_EQ(buffer[119], kOld);
}

TEST(BitmapInit, HeaderWriterStoresLargeAndNegativeValuesLittleEndian) {
    std::vector<uint8_t> data(54, 0);
    velatrix_bitmap_write_header(data.data(), 0x01020304, 0x0A0B0C0D, 0x00012345, -2);
    const std::pair<int, std::vector<uint8_t>> kFields[] = {
        {2, {4, 3, 2, 1}}, {18, {0x45, 0x23, 0x01, 0x00}}, {22, {0xFE, 0xFF, 0xFF, 0xFF}}, {34, {0x0D, 0x0C, 0x0B, 0x0A}}};
    for (const auto& [offset, bytes] : kFields) {
        EXPECT_EQ(std::vector<uint8_t>(data.begin() + offset, data.begin() + offset + 4), bytes) << "byte " << offset;
    }
}

TEST(BitmapInit, RowsAreStoredBottomUpBlueGreenRed) {
    Canvas canvas(3, 2);
    velatrix_set_pixel(canvas.get(), 0, 0, 0x112233FFu);  // top line: the last row in memory
    velatrix_set_pixel(canvas.get(), 2, 1, 0x445566FFu);  // bottom line: the first row
    // Row padding (bytes 9 to 11 of each row) stays as initialised.
    const std::vector<uint8_t> expected = {0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0x66, 0x55, 0x44, 0xFF, 0xFF, 0xFF,
                                           0x33, 0x22, 0x11, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(std::vector<uint8_t>(canvas.buffer.begin() + 54, canvas.buffer.end()), expected);
    EXPECT_EQ(canvas.at(0, 0), 0x112233FFu);
    EXPECT_EQ(canvas.at(2, 1), 0x445566FFu);
}

TEST(BitmapInit, BadArgumentsAreRefusedWithAnError) {
    std::vector<uint8_t> buffer(200, 0x77);
    velatrix_bitmap bitmap{};
    EXPECT_EQ(velatrix_bitmap_init(nullptr, buffer.data(), 10, 2), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Bitmap or its buffer is null.");
    EXPECT_EQ(velatrix_bitmap_init(&bitmap, nullptr, 10, 2), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Bitmap or its buffer is null.");
    EXPECT_EQ(velatrix_bitmap_init(&bitmap, buffer.data(), -1, 2), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Invalid bitmap size -1 x 2.");
    EXPECT_EQ(velatrix_bitmap_init(&bitmap, buffer.data(), 2, -5), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Invalid bitmap size 2 x -5.");
    // 100000 x 100000 pixels need more bytes than a 32-bit size holds.
    EXPECT_EQ(velatrix_bitmap_init(&bitmap, buffer.data(), 100000, 100000), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Invalid bitmap size 100000 x 100000.");
    for (uint8_t b : buffer) ASSERT_EQ(b, 0x77);
}

}  // namespace
}  // namespace velatrix::testing
