// The one pixel setter and getter every primitive draws through, and the
// small helpers the rasterisers share. Coordinates are 64-bit here so that
// a walker stepping past the 32-bit range of its end points stays defined;
// anything outside the bitmap is simply not drawn.
#pragma once

#include <cstddef>
#include <cstdint>

#include "velatrix/bitmap.h"

namespace velatrix::graphics {

inline constexpr uint32_t kOpaque = 0xFFu;

inline bool inside(const velatrix_bitmap* bitmap, int64_t x, int64_t y) {
    return bitmap != nullptr && bitmap->pixels != nullptr && x >= 0 && x < bitmap->width && y >= 0 &&
           y < bitmap->height;
}

// Rows are stored bottom-up: y = 0, the top line, is the last row in memory.
inline std::ptrdiff_t pixel_offset(const velatrix_bitmap* bitmap, int64_t x, int64_t y) {
    return static_cast<std::ptrdiff_t>(static_cast<int64_t>(bitmap->stride) * (bitmap->height - 1 - y) + 3 * x);
}

inline uint32_t read_pixel(const velatrix_bitmap* bitmap, int64_t x, int64_t y) {
    if (!inside(bitmap, x, y)) return 0xFFFFFFFFu;
    const uint8_t* p = bitmap->pixels + pixel_offset(bitmap, x, y);
    return static_cast<uint32_t>(p[2]) << 24 | static_cast<uint32_t>(p[1]) << 16 | static_cast<uint32_t>(p[0]) << 8 |
           kOpaque;
}

// velatrix_color_blend(source, the pixel at bgr) written back to bgr: the
// same bytes, without the divisions an opaque destination makes exact.
void blend_pixel(uint8_t* bgr, uint32_t source);

inline void put_pixel(velatrix_bitmap* bitmap, int64_t x, int64_t y, uint32_t color) {
    if (!inside(bitmap, x, y)) return;
    uint8_t* p = bitmap->pixels + pixel_offset(bitmap, x, y);
    if ((color & 0xFFu) < kOpaque) return blend_pixel(p, color);
    p[0] = static_cast<uint8_t>(color >> 8);
    p[1] = static_cast<uint8_t>(color >> 16);
    p[2] = static_cast<uint8_t>(color >> 24);
}

// The same colour with its alpha byte replaced.
inline uint32_t with_alpha(uint32_t color, int64_t alpha) {
    return (color & 0xFFFFFF00u) | static_cast<uint32_t>(alpha & 0xFF);
}

// True when a coordinate moving by `step` (+1 or -1) has gone past the far
// edge of [0, size): it can never come back, so nothing later is drawn.
inline bool past_far_edge(int64_t position, int64_t step, int64_t size) {
    return step > 0 ? position >= size : position < 0;
}

// Checks a record handed to a drawing entry point; a null or inconsistent
// one sets the last error and the caller draws nothing.
bool usable_bitmap(const velatrix_bitmap* bitmap);

// Clamps an inclusive range [from, to] to [0, size - 1]; false when empty.
inline bool clip_range(int64_t& from, int64_t& to, int64_t size) {
    if (from < 0) from = 0;
    if (to > size - 1) to = size - 1;
    return from <= to;
}

}  // namespace velatrix::graphics
