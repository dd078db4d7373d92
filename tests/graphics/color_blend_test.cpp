// Alpha blending. The expected values were worked out separately by carrying
// out the blend formula step by step in IEEE single precision (divisions by
// 255 in double); several differ by one from exact arithmetic, which is the
// point of checking them.
#include <gtest/gtest.h>

#include <array>
#include <cstdint>

#include "draw_canvas.h"
#include "graphics/pixels.h"
#include "graphics/spans.h"
#include "velatrix/bitmap.h"

namespace velatrix::testing {
namespace {

TEST(ColorBlend, TranslucentOverOpaque) {
    // 0x11 * 128/255 + 255 * 127/255 = 135.5 -> 0x87, and so on per channel.
    EXPECT_EQ(velatrix_color_blend(0x11223380u, 0xFFFFFFFFu), 0x879098FFu);
    const struct {
        uint32_t alpha, expected;
    } black_over_white[] = {
        {1, 0xFEFEFEFFu},   {64, 0xBFBFBFFFu},  {65, 0xBDBDBDFFu},  // exact: 0xBE
        {127, 0x7F7F7FFFu}, {128, 0x7E7E7EFFu},                    // exact: 0x7F
        {200, 0x363636FFu}, {254, 0x000000FFu},                    // exact: 0x01
    };
    for (const auto& c : black_over_white) {
        EXPECT_EQ(velatrix_color_blend(c.alpha, 0xFFFFFFFFu), c.expected) << "alpha " << c.alpha;
    }
}

TEST(ColorBlend, OpaqueAndTransparentSourcesShortCut) {
    // An opaque source comes back as it is, a transparent one leaves the
    // destination untouched, its alpha included.
    EXPECT_EQ(velatrix_color_blend(0x112233FFu, 0x44556677u), 0x112233FFu);
    EXPECT_EQ(velatrix_color_blend(0x11223300u, 0x12345678u), 0x12345678u);
    EXPECT_EQ(velatrix_color_blend(0xFFFFFF00u, 0x00000000u), 0x00000000u);
}

TEST(ColorBlend, TranslucentDestinationsAreWeightedAndTheResultIsOpaque) {
    EXPECT_EQ(velatrix_color_blend(0xFF000080u, 0x0000FF80u), 0xAA0054FFu);
    // Over a fully transparent destination only the source colour counts.
    EXPECT_EQ(velatrix_color_blend(0xFFFFFF80u, 0x00000000u), 0xFFFFFFFFu);
    EXPECT_EQ(velatrix_color_blend(0x80808001u, 0x10203040u), 0x112131FFu);
}

TEST(ColorBlend, PixelSetterBlendsTranslucentColoursWithTheStoredPixel) {
    Canvas canvas(2, 1);
    velatrix_set_pixel(canvas.get(), 0, 0, 0x11223380u);
    EXPECT_EQ(canvas.at(0, 0), 0x879098FFu);
    velatrix_set_pixel(canvas.get(), 1, 0, 0x11223300u);
    EXPECT_EQ(canvas.at(1, 0), 0xFFFFFFFFu);
    // Blends stack: each one starts from what the last one stored.
    for (int n = 1; n <= 6; ++n) {
        velatrix_set_pixel(canvas.get(), 1, 0, kHalfBlack);
        EXPECT_EQ(canvas.at(1, 0), kHalfBlackLayers[n]) << n << " layers";
    }
    // An opaque colour replaces the pixel whatever it held.
    velatrix_set_pixel(canvas.get(), 1, 0, 0xA1B2C3FFu);
    EXPECT_EQ(canvas.at(1, 0), 0xA1B2C3FFu);
}

}  // namespace
}  // namespace velatrix::testing

namespace {

// The drawing paths blend in place without the divisions an opaque
// destination makes exact, and the translucent spans look the channels up
// in tables: over every alpha, source and destination value (each channel
// a different one) both must give velatrix_color_blend's bytes.
TEST(ColorBlend, InPlaceBlendAndSpanTablesOverOpaquePixelsEqualTheBlendEverywhere) {
    for (uint32_t alpha = 0; alpha < 256; ++alpha) {
        for (uint32_t s = 0; s < 256; ++s) {
            const uint32_t source = s << 24 | (s ^ 0x55u) << 16 | (255 - s) << 8 | alpha;
            std::array<std::array<uint8_t, 256>, 3> tables;
            if (alpha < 255) velatrix::graphics::blend_over_opaque(source, tables);  // opaque spans are written
            for (uint32_t d = 0; d < 256; ++d) {
                uint8_t bgr[3] = {static_cast<uint8_t>(255 - d), static_cast<uint8_t>(d ^ 0xAAu), static_cast<uint8_t>(d)};
                const uint32_t destination = uint32_t{bgr[2]} << 24 | uint32_t{bgr[1]} << 16 | uint32_t{bgr[0]} << 8 | 0xFF;
                const uint32_t expected = velatrix_color_blend(source, destination) | 0xFF;
                if (alpha < 255) {
                    const uint32_t looked_up = uint32_t{tables[2][bgr[2]]} << 24 | uint32_t{tables[1][bgr[1]]} << 16 |
                                               uint32_t{tables[0][bgr[0]]} << 8 | 0xFF;
                    if (looked_up != expected) FAIL() << std::hex << "tables: source " << source << " destination " << destination;
                }
                velatrix::graphics::blend_pixel(bgr, source);
                const uint32_t got = uint32_t{bgr[2]} << 24 | uint32_t{bgr[1]} << 16 | uint32_t{bgr[0]} << 8 | 0xFF;
                if (got != expected) FAIL() << std::hex << "in place: source " << source << " destination " << destination;
            }
        }
    }
}

}  // namespace
