// Pixels and text on the pad's display, checked in the virtual frame buffer
// against what each packing means.
#include <cmath>

#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

struct Rgb {
    int r, g, b;
};

Rgb rgb_of(uint32_t colour) {
    return {static_cast<int>(colour >> 24), static_cast<int>((colour >> 16) & 0xFF),
            static_cast<int>((colour >> 8) & 0xFF)};
}

uint32_t colour_of(Rgb c) {
    return (static_cast<uint32_t>(c.r) << 24) | (static_cast<uint32_t>(c.g) << 16) |
           (static_cast<uint32_t>(c.b) << 8) | 0xFF;
}

// What a pixel becomes on the wire: 1 bit dark below grey 128 (integer
// mean), 4 bits one of 16 grey levels (rounded mean), 24 bits exact.
Rgb packed(Rgb c, int bits_per_pixel) {
    if (bits_per_pixel == 1) {
        const int level = (c.r + c.g + c.b) / 3 < 128 ? 0 : 255;
        return {level, level, level};
    }
    if (bits_per_pixel == 4) {
        const int level = static_cast<int>(std::lround((c.r + c.g + c.b) / 3.0 / 255.0 * 15.0)) * 17;
        return {level, level, level};
    }
    return c;
}

// What the panel shows of a pixel it received: a one-bit panel shows black
// below grey 128, a colour panel shows what it got.
Rgb shown(Rgb c, int color_depth) {
    if (color_depth == 1) {
        const int level = (c.r + c.g + c.b) / 3 < 128 ? 0 : 255;
        return {level, level, level};
    }
    return c;
}

// Colours that probe the packings: a spread of hues, every grey, and the
// grey-128 edge of the one-bit threshold from both sides.
uint32_t pattern(int x, int y) {
    if (y < 4) {
        const int grey = (x * 255) / 149;
        return colour_of({grey, grey, grey});
    }
    if (y < 6) return colour_of(x % 2 == 0 ? Rgb{128, 128, 127} : Rgb{200, 100, 84});
    return colour_of({(x * 7 + y * 3) & 0xFF, (x * 13 ^ y * 5) & 0xFF, (x + y * 11) & 0xFF});
}

struct Frame {
    int width = 0, height = 0;
    Bytes rgb;
    Rgb at(int x, int y) const {
        const std::size_t i = (static_cast<std::size_t>(y) * width + x) * 3;
        return {rgb[i], rgb[i + 1], rgb[i + 2]};
    }
};

Frame read_frame_rgb(velatrix_virtual_pad pad) {
    Frame frame;
    EXPECT_EQ(velatrix_virtual_display_size(pad, &frame.width, &frame.height), 1);
    frame.rgb.resize(static_cast<std::size_t>(frame.width) * frame.height * 3);
    EXPECT_EQ(velatrix_virtual_read_frame_rgb(pad, frame.rgb.data(), static_cast<uint32_t>(frame.rgb.size())), 1);
    return frame;
}

bool same(Rgb a, Rgb b) { return a.r == b.r && a.g == b.g && a.b == b.b; }

std::string text_of(Rgb c) {
    char text[32];
    std::snprintf(text, sizeof text, "#%02x%02x%02x", c.r, c.g, c.b);
    return text;
}

class E2eBitmapTransfer : public E2eEveryModel {};

TEST_P(E2eBitmapTransfer, EveryPackingArrivesPixelForPixel) {
    constexpr int kWidth = 150, kHeight = 120, kLeft = 17, kTop = 9;
    Bytes buffer(static_cast<std::size_t>((kWidth * 24 + 31) / 32) * 4 * kHeight + VELATRIX_BITMAP_HEADER_SIZE);
    velatrix_bitmap bitmap{};
    ASSERT_EQ(velatrix_bitmap_init(&bitmap, buffer.data(), kWidth, kHeight), 1);
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) velatrix_set_pixel(&bitmap, x, y, pattern(x, y));
    }
    const int depth = device_->display_info.color_depth;
    ASSERT_TRUE(depth == 1 || depth == 24) << "a panel of depth " << depth << " needs its own expectation";

    for (int bits : {1, 4, 24}) {
        SCOPED_TRACE("bits per pixel " + std::to_string(bits));
        const Frame before = read_frame_rgb(pad_);
        ASSERT_EQ(velatrix_transfer_bitmap_to_device(device_, &bitmap, kLeft, kTop, static_cast<uint8_t>(bits)), 1)
            << last_error();
        const Frame after = read_frame_rgb(pad_);
        int wrong = 0;
        for (int y = 0; y < after.height && wrong < 5; ++y) {
            for (int x = 0; x < after.width && wrong < 5; ++x) {
                const bool inside = x >= kLeft && x < kLeft + kWidth && y >= kTop && y < kTop + kHeight;
                const Rgb sent = inside ? rgb_of(pattern(x - kLeft, y - kTop)) : Rgb{};
                const Rgb expected = inside ? shown(packed(sent, bits), depth) : before.at(x, y);
                if (!same(after.at(x, y), expected)) {
                    ADD_FAILURE() << "pixel (" << x << ", " << y << ") is " << text_of(after.at(x, y))
                                  << ", expected " << text_of(expected)
                                  << (inside ? " from " + text_of(sent) : " (outside)");
                    ++wrong;
                }
            }
        }
    }

    // The same frame seen as a bitmap and pixel by pixel.
    Bytes frame_buffer(velatrix_virtual_frame_bitmap_size(pad_));
    velatrix_bitmap frame{};
    ASSERT_EQ(
        velatrix_virtual_read_frame(pad_, &frame, frame_buffer.data(), static_cast<uint32_t>(frame_buffer.size())), 1);
    const std::pair<int, int> spots[] = {
        {kLeft, kTop}, {kLeft + 77, kTop + 50}, {kLeft + kWidth - 1, kTop + kHeight - 1}};
    for (auto [x, y] : spots) {
        const uint32_t expected = colour_of(shown(rgb_of(pattern(x - kLeft, y - kTop)), depth));
        EXPECT_EQ(velatrix_get_pixel(&frame, x, y), expected) << x << ", " << y;
        EXPECT_EQ(velatrix_virtual_get_pixel(pad_, x, y), expected) << x << ", " << y;
    }
}

TEST_P(E2eBitmapTransfer, PixelsReadBackAsTheFrameHoldsThem) {
    Bytes buffer(static_cast<std::size_t>((64 * 24 + 31) / 32) * 4 * 16 + VELATRIX_BITMAP_HEADER_SIZE);
    velatrix_bitmap bitmap{};
    ASSERT_EQ(velatrix_bitmap_init(&bitmap, buffer.data(), 64, 16), 1);
    for (int y = 0; y < 16; ++y) {
        for (int x = 0; x < 64; ++x) velatrix_set_pixel(&bitmap, x, y, pattern(x, y + 10));
    }
    ASSERT_EQ(velatrix_transfer_bitmap_to_device(device_, &bitmap, 30, 40, 24), 1) << last_error();
    const Frame frame = read_frame_rgb(pad_);

    // x = 300 travels as its low byte: the pad answers from x = 44.
    for (auto [x, answered_x] : {std::pair{20, 20}, std::pair{300, 44}}) {
        SCOPED_TRACE("x " + std::to_string(x));
        velatrix_pixel_read read{};
        read.x = static_cast<uint16_t>(x);
        read.y = 45;
        ASSERT_EQ(velatrix_get_pixels(device_, &read), 1) << last_error();
        EXPECT_EQ(read.report_id, 105);
        EXPECT_EQ(read.x, answered_x);
        EXPECT_EQ(read.y, 45);
        const int count = std::min(256, frame.width - answered_x);
        ASSERT_EQ(read.count, count);
        for (int i = 0; i < count; ++i) {
            const Rgb c = frame.at(answered_x + i, 45);
            ASSERT_EQ(Bytes(read.entries[i], read.entries[i] + 4),
                      (Bytes{uint8_t(c.r), uint8_t(c.g), uint8_t(c.b), 0xFF}))
                << "entry " << i;
        }
        for (int i = count; i < VELATRIX_PIXEL_ENTRIES; ++i) {
            ASSERT_EQ(Bytes(read.entries[i], read.entries[i] + 4), Bytes(4, 0)) << "entry " << i;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Models, E2eBitmapTransfer, ::testing::ValuesIn(model_names()), param_name);

class E2eDeviceText : public E2eEveryModel {};

// Dark pixels inside the text's box, nothing changed outside it.
void expect_text_in_box(const Frame& before, const Frame& after, int left, int top, int width, int height) {
    int dark_inside = 0, changed_outside = 0;
    for (int y = 0; y < after.height; ++y) {
        for (int x = 0; x < after.width; ++x) {
            const bool inside = x >= left && x < left + width && y >= top && y < top + height;
            const Rgb c = after.at(x, y);
            if (inside) {
                if (c.r + c.g + c.b < 3 * 128) ++dark_inside;
                EXPECT_TRUE(same(c, {0, 0, 0}) || same(c, {255, 255, 255})) << "one-bit text at " << x << ", " << y;
            } else if (!same(c, before.at(x, y))) {
                ++changed_outside;
            }
        }
    }
    EXPECT_GT(dark_inside, width) << "ink in the box";
    EXPECT_LT(dark_inside, width * height) << "not a filled box";
    EXPECT_EQ(changed_outside, 0);
}

TEST_P(E2eDeviceText, TextAppearsInItsBoxForEveryAlignment) {
    const char* text = "Sign here";
    const int width = velatrix_measure_text_width(device_, text);
    const int height = velatrix_measure_text_height(device_, text);
    ASSERT_GT(width, 0);
    ASSERT_GT(height, 0);

    struct Case {
        int alignment;
        int x;
        int left;
    };
    const Case cases[] = {{VELATRIX_TEXT_ALIGN_LEFT, 12, 12},
                          {VELATRIX_TEXT_ALIGN_RIGHT, 300, 300 - width},
                          {VELATRIX_TEXT_ALIGN_CENTRE, 160, 160 - width / 2}};
    int top = 20;
    for (const Case& c : cases) {
        SCOPED_TRACE("alignment " + std::to_string(c.alignment));
        const Frame before = read_frame_rgb(pad_);
        ASSERT_EQ(velatrix_device_draw_text(device_, text, static_cast<uint32_t>(c.x), static_cast<uint32_t>(top),
                                            c.alignment, 0),
                  1)
            << last_error();
        expect_text_in_box(before, read_frame_rgb(pad_), c.left, top, width, height);
        top += height + 10;
    }

    // Right to the edge is allowed; one pixel further is not, and draws nothing.
    const int display_width = device_->display_info.width;
    ASSERT_EQ(velatrix_device_draw_text(device_, text, static_cast<uint32_t>(display_width - width),
                                        static_cast<uint32_t>(top), VELATRIX_TEXT_ALIGN_LEFT, 0),
              1)
        << last_error();
    const Frame before = read_frame_rgb(pad_);
    EXPECT_EQ(velatrix_device_draw_text(device_, text, static_cast<uint32_t>(display_width - width + 1),
                                        static_cast<uint32_t>(top), VELATRIX_TEXT_ALIGN_LEFT, 0),
              0);
    EXPECT_EQ(last_error(), "Requested string would draw off the screen in the horizontal direction.");
    EXPECT_EQ(read_frame_rgb(pad_).rgb, before.rgb);
}

// Clearing brings the display back to what it showed after the open: the
// active screen drawn afresh, or an empty display on a pad without screens.
TEST_P(E2eDeviceText, ClearScreenRemovesWhatWasDrawn) {
    const Frame opened = read_frame_rgb(pad_);
    ASSERT_EQ(velatrix_device_draw_text(device_, "Clear me", 40, 40, VELATRIX_TEXT_ALIGN_LEFT, 0), 1) << last_error();
    ASSERT_NE(read_frame_rgb(pad_).rgb, opened.rgb);
    ASSERT_EQ(velatrix_clear_screen(device_), 1) << last_error();
    const Frame cleared = read_frame_rgb(pad_);
    int differing = 0;
    for (int y = 0; y < cleared.height; ++y) {
        for (int x = 0; x < cleared.width; ++x) differing += same(cleared.at(x, y), opened.at(x, y)) ? 0 : 1;
    }
    EXPECT_EQ(differing, 0) << "pixels still differing from the display after the open";
}

INSTANTIATE_TEST_SUITE_P(Models, E2eDeviceText, ::testing::ValuesIn(model_names()), param_name);

}  // namespace
}  // namespace velatrix::e2e
