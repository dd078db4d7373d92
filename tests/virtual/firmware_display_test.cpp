// Display chunks land as the right pixels; pixel read-back answers them.
#include <gtest/gtest.h>

#include "virtual_wire.h"

namespace velatrix::virtual_pad::testing {
namespace {

constexpr uint32_t kBlack = 0x000000FF;
constexpr uint32_t kWhite = 0xFFFFFFFF;

Bytes chunk(uint16_t x, uint16_t y, uint16_t width, uint16_t height, uint8_t bits, const Bytes& data) {
    Bytes bytes = report(103, 2049);
    put_be16(bytes, 1, x);
    put_be16(bytes, 3, y);
    put_be16(bytes, 5, width);
    put_be16(bytes, 7, height);
    bytes[9] = bits;
    std::copy(data.begin(), data.end(), bytes.begin() + 10);
    return bytes;
}

bool dark_at(int column, int row) { return (column + 2 * row) % 3 == 0; }

class VirtualDisplayEveryModel : public ::testing::TestWithParam<const PadModel*> {
protected:
    Firmware pad{*GetParam(), 1};
};

INSTANTIATE_TEST_SUITE_P(Models, VirtualDisplayEveryModel, ::testing::ValuesIn(all_models()), model_name);

TEST_P(VirtualDisplayEveryModel, OneBitChunkOfTenByTenLandsColumnByColumn) {
    // Pixels run down each column; bits fill each byte from bit 7.
    Bytes data(13, 0);
    for (int i = 0; i < 100; ++i) {
        if (dark_at(i / 10, i % 10)) data[i / 8] = static_cast<uint8_t>(data[i / 8] | (0x80 >> (i % 8)));
    }
    ASSERT_TRUE(pad.set_feature(chunk(5, 7, 10, 10, 1, data))) << pad.state().error_text;
    for (int column = 0; column < 10; ++column) {
        for (int row = 0; row < 10; ++row) {
            EXPECT_EQ(pad.frame().pixel(5 + column, 7 + row), dark_at(column, row) ? kBlack : kWhite)
                << column << "," << row;
        }
    }
    EXPECT_EQ(pad.frame().pixel(4, 7), kWhite);
    EXPECT_EQ(pad.frame().pixel(15, 7), kWhite);
    EXPECT_EQ(pad.frame().pixel(5, 17), kWhite);
}

TEST_P(VirtualDisplayEveryModel, ChunksReachingPastThePanelAreClipped) {
    const uint16_t width = GetParam()->display.width;
    Bytes data(13, 0xFF);
    ASSERT_TRUE(pad.set_feature(chunk(width - 5, 0, 10, 10, 1, data)));
    EXPECT_EQ(pad.frame().pixel(width - 1, 9), kBlack);
    EXPECT_EQ(pad.frame().pixel(width - 5, 0), kBlack);
    EXPECT_EQ(pad.frame().pixel(width - 6, 0), kWhite);
    ASSERT_TRUE(pad.set_feature(chunk(0xFFFF, 0xFFFF, 10, 10, 1, data))) << "wholly off the panel";
}

TEST_P(VirtualDisplayEveryModel, RefusesChunksItCannotDecode) {
    EXPECT_FALSE(pad.set_feature(chunk(0, 0, 4, 4, 16, {})));
    EXPECT_EQ(pad.state().error_text, "Unsupported bits per pixel: 16");
    // 200 x 100 at one bit is 20000 bits; the report carries 16312.
    EXPECT_FALSE(pad.set_feature(chunk(0, 0, 200, 100, 1, {})));
    EXPECT_EQ(pad.state().error_text, "Display chunk larger than its report");
    EXPECT_TRUE(pad.set_feature(chunk(0, 0, 2039, 8, 1, {}))) << "exactly full";
    EXPECT_FALSE(pad.set_feature(chunk(0, 0, 2039, 8, 4, {})));
    EXPECT_FALSE(pad.set_feature(Bytes(2048, 103))) << "one byte short of a chunk report";
}

// Grey levels start in the low nibble; eight-bit chunks use the same 16
// levels; a one-bit panel shows black where the grey is below 128. Colour
// kept on a colour panel is e2e_display_update_test's.
TEST(VirtualDisplay, DeeperChunksLandAsTheirPanelCanShowThem) {
    const uint32_t g1 = 0x111111FF, g2 = 0x222222FF, g3 = 0x333333FF, g4 = 0x444444FF, g5 = 0x555555FF;
    const Bytes rgb = {0x10, 0x20, 0x30, 0xC8, 0xC8, 0xC8, 0xFF, 0x00, 0x00, 0x00, 0x00, 0xFE};
    const struct {
        const PadModel& model;
        uint8_t bits;
        uint16_t width, height;
        Bytes data;
        std::vector<uint32_t> column_by_column;
    } cases[] = {
        {color_800_model(), 4, 3, 2, {0x10, 0x32, 0x54}, {kBlack, g1, g2, g3, g4, g5}},
        {color_800_model(), 8, 3, 2, {0x10, 0x32, 0x54}, {kBlack, g1, g2, g3, g4, g5}},
        // (255 + 0 + 0) / 3 = 85 is dark.
        {mono_320_model(), 24, 2, 2, rgb, {kBlack, kWhite, kBlack, kBlack}},
        // Grey levels 7 (119) and 8 (136) fall either side.
        {mono_320_model(), 4, 1, 2, {0x87}, {kBlack, kWhite}},
    };
    for (const auto& c : cases) {
        Firmware pad(c.model, 1);
        ASSERT_TRUE(pad.set_feature(chunk(10, 20, c.width, c.height, c.bits, c.data)));
        std::vector<uint32_t> shown;
        for (int column = 0; column < c.width; ++column) {
            for (int row = 0; row < c.height; ++row) shown.push_back(pad.frame().pixel(10 + column, 20 + row));
        }
        EXPECT_EQ(shown, c.column_by_column) << c.model.name << " at " << int(c.bits) << " bits";
    }
}

TEST(VirtualDisplay, PixelReadBackAnswersTheRowFromTheRequestedPixel) {
    Firmware pad(color_800_model(), 1);
    ASSERT_TRUE(pad.set_feature(chunk(300, 10, 3, 1, 24, {1, 2, 3, 4, 5, 6, 7, 8, 9})));
    ASSERT_TRUE(pad.set_feature(chunk(44, 10, 1, 1, 24, {0xAA, 0xBB, 0xCC})));

    // The pad reads both bytes of each coordinate.
    ASSERT_TRUE(pad.set_feature(report(104, 5, {0x2C, 0x01, 10, 0})));
    Bytes answer = get(pad, 105, 1031);
    EXPECT_EQ(le16(answer, 1), 300);
    EXPECT_EQ(le16(answer, 3), 10);
    EXPECT_EQ(le16(answer, 5), 256);
    EXPECT_EQ(Bytes(answer.begin() + 7, answer.begin() + 19), (Bytes{1, 2, 3, 255, 4, 5, 6, 255, 7, 8, 9, 255}));
    EXPECT_EQ(Bytes(answer.begin() + 19, answer.begin() + 23), (Bytes{255, 255, 255, 255}));

    // A request whose high bytes are zero addresses x modulo 256.
    ASSERT_TRUE(pad.set_feature(report(104, 5, {0x2C, 0x00, 10, 0x00})));
    answer = get(pad, 105, 1031);
    EXPECT_EQ(le16(answer, 1), 44);
    EXPECT_EQ(Bytes(answer.begin() + 7, answer.begin() + 11), (Bytes{0xAA, 0xBB, 0xCC, 255}));

    // Near the end of the row fewer pixels come back; the rest is zero.
    ASSERT_TRUE(pad.set_feature(report(104, 5, {0xBC, 0x02, 0, 0})));
    answer = get(pad, 105, 1031);
    EXPECT_EQ(le16(answer, 5), 100);
    EXPECT_EQ(answer[7 + 4 * 99 + 3], 255);
    EXPECT_EQ(answer[7 + 4 * 100 + 3], 0);

    ASSERT_TRUE(pad.set_feature(report(104, 5, {0, 0, 0xE0, 0x01})));
    EXPECT_EQ(le16(get(pad, 105, 1031), 5), 0) << "row 480 is off the panel";
}

}  // namespace
}  // namespace velatrix::virtual_pad::testing
