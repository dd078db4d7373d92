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

class SpanPainter {
public:
    // `pixels` is about how many pixels will be set: below a few hundred,
    // building the blend table costs more than blending each pixel.
    SpanPainter(velatrix_bitmap* bitmap, uint32_t color, int64_t pixels);

    // Sets (x, y) for x in [x_from, x_to], clipped to the bitmap.
    void span(int64_t x_from, int64_t x_to, int64_t y) const;

private:
    velatrix_bitmap* bitmap_;
    uint32_t color_;
    bool opaque_;
    bool table_ = false;
    // For each channel (blue, green, red) the blended value of every
    // destination value: with the stored pixels always opaque, a channel's
    // blend depends on that channel alone.
    std::array<std::array<uint8_t, 256>, 3> blended_{};
};

}  // namespace velatrix::graphics
