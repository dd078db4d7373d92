#include "display/chunk_layout.h"

#include <cmath>

namespace velatrix::display {

ChunkShape chunk_shape(uint32_t width, uint32_t height, uint32_t bits) {
    const uint64_t budget = kChunkBitBudget;
    if (uint64_t{width} * height * bits < budget) return {width, height};
    if (width > height && uint64_t{height} * bits < budget) {
        return {static_cast<uint32_t>(budget / (uint64_t{height} * bits)), height};
    }
    if (uint64_t{width} * bits < budget) return {width, static_cast<uint32_t>(budget / (uint64_t{width} * bits))};
    const auto side = static_cast<uint32_t>(std::sqrt(static_cast<double>(budget / bits)));
    return {side, side};
}

}  // namespace velatrix::display
