// Packing one chunk's pixels for the pad: column by column, at 1 bit
// (dark or light), 4 bits (grey level) or 24 bits (red, green, blue).
#pragma once

#include <cstddef>
#include <cstdint>

#include "velatrix/bitmap.h"

namespace velatrix::display {

// Packs the pixels of columns [x, x + width) and rows [y, y + height) of
// `bitmap` (display rows, y = 0 at the top) as a row of chunks side by
// side, each `chunk_width` columns wide (the last one perhaps narrower),
// chunk k into data[k] of `capacity` bytes, and zeroes the rest of each.
// The block must lie on the bitmap. 8 bits per pixel packs as 4; any depth
// but 1, 4 and 8 packs as 24. Pixels beyond the capacity are dropped.
void pack_chunk_pixels(const velatrix_bitmap* bitmap, uint32_t x, uint32_t y, uint32_t width, uint32_t height,
                       uint8_t bits_per_pixel, uint32_t chunk_width, uint8_t* const* data, size_t capacity);

}  // namespace velatrix::display
