// Alpha blending of two 0xRRGGBBAA colours. The arithmetic is single
// precision with the divisions by 255 done in double, and the channels are
// truncated: those choices decide the last bit of every blended pixel.
#include <array>

#include "velatrix/bitmap.h"

#include "graphics/pixels.h"
#include "graphics/spans.h"

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

namespace velatrix::graphics {

namespace {
// unit() of every byte, folded at compile time (correctly rounded, as at run time).
constexpr std::array<float, 256> kUnits = [] {
    std::array<float, 256> units{};
    for (uint32_t byte = 0; byte < 256; ++byte) units[byte] = static_cast<float>(byte / 255.0);
    return units;
}();
}  // namespace

// velatrix_color_blend over an opaque destination, written back in place.
// The destination alpha is 1, so the output alpha is exactly 1 and the
// divisions by it and the product with the destination alpha are exact
// identities: left out, the remaining operations are the same, in the same
// order, so every channel comes out the same.
void blend_pixel(uint8_t* bgr, uint32_t source) {
    const float source_alpha = kUnits[source & 0xFFu];
    if (source_alpha == 1.0f) {
        bgr[0] = static_cast<uint8_t>(source >> 8);
        bgr[1] = static_cast<uint8_t>(source >> 16);
        bgr[2] = static_cast<uint8_t>(source >> 24);
        return;
    }
    if (source_alpha < 0.000001) return;
    const float keep = 1.0f - source_alpha;
    for (int c = 0; c < 3; ++c) {
        const float s = kUnits[(source >> (8 * (c + 1))) & 0xFFu];
        const float value = (s * source_alpha + kUnits[bgr[c]] * keep) * 255.0f;
        bgr[c] = static_cast<uint8_t>(static_cast<int32_t>(value));
    }
}

// The same arithmetic as above, in the same order, with the destination
// alpha 1: the source's term is the same for every destination value and
// the destination's term the same for every channel.
void blend_over_opaque(uint32_t source, std::array<std::array<uint8_t, 256>, 3>& tables) {
    const float source_alpha = unit(channel(source, 0));
    const float destination_alpha = unit(0xFF);
    const bool unchanged = source_alpha < 0.000001;
    const float out_alpha = 1.0f - (1.0f - source_alpha) * (1.0f - destination_alpha);
    float source_term[3];
    for (int c = 0; c < 3; ++c) source_term[c] = unit(channel(source, 8 * (c + 1))) * source_alpha / out_alpha;
    for (uint32_t d = 0; d < 256; ++d) {
        const float destination_term = unit(d) * destination_alpha * (1.0f - source_alpha) / out_alpha;
        for (int c = 0; c < 3; ++c) {
            const float value = (source_term[c] + destination_term) * 255.0f;
            tables[c][d] = unchanged ? static_cast<uint8_t>(d) : static_cast<uint8_t>(static_cast<int32_t>(value));
        }
    }
}

}  // namespace velatrix::graphics
