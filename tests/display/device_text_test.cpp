#include <gtest/gtest.h>

#include <string>

#include "support/fake_pad.h"
#include "velatrix-quillmark.h"

namespace {

using namespace velatrix::testing;

struct TextFixture : ::testing::Test {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    TextFixture() {
        device->display_info = {100, 320, 240, 1, 6, 12, 2, 4};
        device->font = &ubuntu_mono_e_12pt;
    }
    int draw(uint32_t x, uint32_t y, int alignment = 0, const char* text = "AB") {
        return velatrix_device_draw_text(device, text, x, y, alignment, 0);
    }
};

TEST_F(TextFixture, MeasuresInTheDevicesCurrentFont) {
    EXPECT_EQ(velatrix_measure_text_width(device, "AB"), 14);
    EXPECT_EQ(velatrix_measure_text_height(device, "AB"), 12);
    const char latin1[] = {'A', static_cast<char>(0xC9)};  // "AÉ" in ISO-8859-1
    EXPECT_EQ(velatrix_measure_text_width_encoding(device, latin1, 2, "ISO-8859-1"), 14);
    EXPECT_EQ(velatrix_measure_text_height_encoding(device, latin1, 2, "ISO-8859-1"), 12);
    device->font = nullptr;  // falls back to the default face
    EXPECT_EQ(velatrix_measure_text_width(device, "A"), 5);
}

// "AB" is 14 × 12 on a 320 × 240 display.
TEST_F(TextFixture, ExactlyOnTheEdgePassesOnePixelMoreFails) {
    const char* const kHorizontal = "Requested coordinate is off the screen in the horizontal direction.";
    const struct {
        uint32_t x, y;
        int alignment;
        const char* error;  // null: drawn
    } kCases[] = {
        {320 - 14, 0, 0, nullptr},
        {320 - 13, 0, 0, "Requested string would draw off the screen in the horizontal direction."},
        {321, 0, 0, kHorizontal},
        {0, 240 - 12, 0, nullptr},
        {0, 240 - 11, 0, "Requested string would draw off the screen in the vertical direction."},
        {0, 241, 0, "Requested coordinate is off the screen in the vertical direction."},
        // Right alignment past the left edge wraps around and is off screen too.
        {10, 0, VELATRIX_TEXT_ALIGN_RIGHT, kHorizontal},
    };
    for (const auto& c : kCases) {
        velatrix_report_error_internal("%s", "untouched");
        EXPECT_EQ(draw(c.x, c.y, c.alignment), c.error == nullptr ? 1 : 0) << c.x << "," << c.y;
        EXPECT_STREQ(velatrix_get_last_error(), c.error == nullptr ? "untouched" : c.error) << c.x << "," << c.y;
    }
}

TEST_F(TextFixture, AlignmentMovesTheChunkOrigin) {
    ASSERT_EQ(draw(100, 50, VELATRIX_TEXT_ALIGN_CENTRE), 1);
    ASSERT_EQ(draw(100, 50, VELATRIX_TEXT_ALIGN_RIGHT), 1);
    ASSERT_EQ(draw(100, 50, VELATRIX_TEXT_ALIGN_LEFT), 1);
    // At the smaller of the font's and the display's depth: 1 bit.
    std::vector<Bytes> headers;
    for (const Bytes& chunk : fake.sets(103)) headers.emplace_back(chunk.begin(), chunk.begin() + 10);
    EXPECT_EQ(headers, (std::vector<Bytes>{hex("67 005d 0032 000e 000c 01"), hex("67 0056 0032 000e 000c 01"),
                                           hex("67 0064 0032 000e 000c 01")}));
}

// A bar's ink arrives as dark pixels, a space as none. Inverse flips only
// the first eight pixel bytes: the first two pixels of the bottom row
// (blue, green, red each) and the blue and green of the third. Inverted,
// the first two turn black and the third red, whose grey (85) counts as
// dark too.
TEST_F(TextFixture, GlyphInkArrivesDarkAndInverseFlipsOnlyTheFirstEightPixelBytes) {
    const struct {
        const char* text;
        uint8_t inverse;
        int least, most;
    } kCases[] = {{"|", 0, 6, 7 * 12 - 1}, {" ", 0, 0, 0}, {" ", 1, 3, 3}};
    for (const auto& c : kCases) {
        ASSERT_EQ(velatrix_device_draw_text(device, c.text, 0, 0, 0, c.inverse), 1);
        const Bytes chunk = fake.sets(103).back();
        int dark = 0;
        for (size_t i = 10; i < chunk.size(); ++i) dark += __builtin_popcount(chunk[i]);
        EXPECT_GE(dark, c.least) << "'" << c.text << "' inverse " << int{c.inverse};
        EXPECT_LE(dark, c.most) << "'" << c.text << "' inverse " << int{c.inverse};
    }
}

TEST(DeviceText, ANullDeviceIsRefusedWithAnError) {
    EXPECT_EQ(velatrix_device_draw_text(nullptr, "AB", 0, 0, 0, 0), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device was null, unable to draw text.");
    EXPECT_EQ(velatrix_measure_text_width(nullptr, "AB"), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device was null, unable to measure text.");
    EXPECT_EQ(velatrix_measure_text_height_encoding(nullptr, "AB", 2, "utf-8"), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device was null, unable to measure text.");
}

}  // namespace
