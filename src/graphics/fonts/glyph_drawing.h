// Glyph lookup and the pixel walk shared by both font formats.
#pragma once

#include <cstddef>
#include <cstdint>

#include "velatrix/bitmap.h"
#include "velatrix/fonts.h"

namespace velatrix::fonts {

// The glyph record of the code point, or null when the font lacks it. No
// fallback here: that is the caller's single second attempt.
const velatrix_glyph* find_exact_glyph(const velatrix_font* font, int32_t code_point);

// The glyph of the code point, else the code point 0 glyph, else null.
const velatrix_glyph* find_glyph(const velatrix_font* font, int32_t code_point);

// Draws width x height pixels taken from `data` in bit-stream order (1 bit
// per pixel) or one byte per pixel (coverage, 255 = no ink) with the top-left
// corner at (x, y). Pixels beyond `data_size` bytes are treated as blank, so a
// record whose size fields overstate its data cannot read past it.
void draw_pixels(velatrix_bitmap* bitmap, const uint8_t* data, std::size_t data_size, int64_t width,
                 int64_t height, int32_t bits_per_pixel, int64_t x, int64_t y, uint32_t colour);

inline void draw_glyph(velatrix_bitmap* bitmap, const velatrix_glyph& glyph, int32_t bits_per_pixel, int64_t x,
                       int64_t y, uint32_t colour) {
    draw_pixels(bitmap, glyph.bitmap, sizeof glyph.bitmap, glyph.width, glyph.height, bits_per_pixel, x, y, colour);
}

// Where a line of n characters starts inside a box: centred on the box for
// 1, at the far edge less the character count for 2, at the near edge
// otherwise. The count rather than the size is deliberate: callers position
// right- and bottom-aligned text knowing this rule, so it must not change.
int64_t aligned_start(int64_t near_edge, int64_t far_edge, int64_t size, int64_t count, int32_t alignment);

// Clamps a 64-bit pixel measure to what the 32-bit API returns.
int32_t clamp_to_int32(int64_t value);

}  // namespace velatrix::fonts
