// Alpha blending of two 0xRRGGBBAA colours. The arithmetic is single
// precision with the divisions by 255 done in double, and the channels are
// truncated: those choices decide the last bit of every blended pixel.
#include "velatrix/bitmap.h"

namespace {

float unit(uint32_t byte) { return static_cast<float>(byte / 255.0); }

uint32_t channel(uint32_t color, int shift) { return (color >> shift) & 0xFFu; }

}  // namespace

// Called for every translucent pixel drawn: no entry/leave logging here.
extern "C" uint32_t velatrix_color_blend(uint32_t source, uint32_t destination) {
    const float source_alpha = unit(channel(source, 0));
    const float destination_alpha = unit(channel(destination, 0));
    if (source_alpha == 1.0f) return source;
    if (source_alpha < 0.000001) return destination;
    const float out_alpha = 1.0f - (1.0f - source_alpha) * (1.0f - destination_alpha);
    uint32_t result = 0xFFu;
    for (int shift = 24; shift >= 8; shift -= 8) {
        const float s = unit(channel(source, shift));
        const float d = unit(channel(destination, shift));
        const float value = (s * source_alpha / out_alpha + d * destination_alpha * (1.0f - source_alpha) / out_alpha) * 255.0f;
        result |= (static_cast<uint32_t>(static_cast<int32_t>(value)) & 0xFFu) << shift;
    }
    return result;
}
