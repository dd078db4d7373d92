// How a bitmap is cut into display chunks: pure arithmetic, kept apart so
// the shapes can be checked without a device.
#pragma once

#include <cstdint>

namespace velatrix::display {

// Bits of pixel data one chunk carries.
inline constexpr uint32_t kChunkBitBudget = 2039 * 8;

struct ChunkShape {
    uint32_t width;
    uint32_t height;
};

// The largest chunk shape for a width × height bitmap at `bits` per pixel:
// the whole bitmap when it fits, else full-height columns for wide bitmaps,
// full-width bands, or squares as the last resort.
ChunkShape chunk_shape(uint32_t width, uint32_t height, uint32_t bits);

}  // namespace velatrix::display
