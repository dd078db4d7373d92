// Horizontal spans: the fills set whole runs of one row in one colour, so
// they are written as byte runs (opaque) or through a table of the blend
// (translucent) instead of one clipped, blended pixel at a time. Every
// pixel comes out as velatrix_set_pixel would leave it.
#pragma once

#include <array>
#include <cmath>
#include <cstdint>

#include "velatrix/bitmap.h"

namespace velatrix::graphics {

// The largest h >= 0 with h * h <= value, or -1 when value is negative.
inline int64_t largest_root(int64_t value) {
    if (value < 0) return -1;
    auto h = static_cast<int64_t>(std::sqrt(static_cast<double>(value)));
    while (h > 0 && h * h > value) --h;
    while ((h + 1) * (h + 1) <= value) ++h;
    return h;
}

// Pixels in one repeat of an opaque span's byte pattern: 192 bytes, a
// whole number of 16-, 32- and 64-byte stores. The pattern holds one pixel
// more, so that it can be started at its second or third byte.
inline constexpr int kPatternPixels = 64;
inline constexpr int kPatternBytes = 3 * (kPatternPixels + 1);

// For each channel (blue, green, red), what blending `source` over an
// opaque destination makes of every destination value: exactly
// velatrix_color_blend's result, which for an opaque destination depends
// on the channel alone.
void blend_over_opaque(uint32_t source, std::array<std::array<uint8_t, 256>, 3>& tables);

class SpanPainter {
public:
    // `pixels` is about how many pixels will be set: below a few dozen,
    // building the blend table costs more than blending each pixel.
    SpanPainter(velatrix_bitmap* bitmap, uint32_t color, int64_t pixels);

    // Sets (x, y) for x in [x_from, x_to], clipped to the bitmap.
    void span(int64_t x_from, int64_t x_to, int64_t y) const;
    // The same for every y in [y_from, y_to].
    void block(int64_t x_from, int64_t x_to, int64_t y_from, int64_t y_to) const;

private:
    velatrix_bitmap* bitmap_;
    uint32_t color_;
    bool opaque_;
    bool table_ = false;
    uint8_t pattern_[kPatternBytes];
    std::array<std::array<uint8_t, 256>, 3> blended_;
};

}  // namespace velatrix::graphics
