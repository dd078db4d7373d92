#include "graphics/spans.h"

#include <algorithm>
#include <cstring>

#include "graphics/pixels.h"

namespace velatrix::graphics {

namespace {
constexpr int64_t kTableWorthIt = 256;
}

SpanPainter::SpanPainter(velatrix_bitmap* bitmap, uint32_t color, int64_t pixels)
    : bitmap_(bitmap), color_(color), opaque_((color & 0xFFu) == kOpaque) {
    if (opaque_ || pixels < kTableWorthIt) return;
    table_ = true;
    for (uint32_t d = 0; d < 256; ++d) {
        const uint32_t out = velatrix_color_blend(color, d << 24 | d << 16 | d << 8 | kOpaque);
        blended_[0][d] = static_cast<uint8_t>(out >> 8);
        blended_[1][d] = static_cast<uint8_t>(out >> 16);
        blended_[2][d] = static_cast<uint8_t>(out >> 24);
    }
}

void SpanPainter::span(int64_t x_from, int64_t x_to, int64_t y) const {
    if (y < 0 || y >= bitmap_->height || !clip_range(x_from, x_to, bitmap_->width)) return;
    uint8_t* p = bitmap_->pixels + pixel_offset(bitmap_, x_from, y);
    const int64_t count = x_to - x_from + 1;
    if (opaque_) {
        // Eight pixels of pattern, copied in blocks; the rest pixel by pixel.
        uint8_t pattern[24];
        for (int i = 0; i < 8; ++i) {
            pattern[3 * i] = static_cast<uint8_t>(color_ >> 8);
            pattern[3 * i + 1] = static_cast<uint8_t>(color_ >> 16);
            pattern[3 * i + 2] = static_cast<uint8_t>(color_ >> 24);
        }
        int64_t i = 0;
        for (; i + 8 <= count; i += 8, p += 24) std::memcpy(p, pattern, 24);
        for (; i < count; ++i, p += 3) std::memcpy(p, pattern, 3);
        return;
    }
    if (table_) {
        for (int64_t i = 0; i < 3 * count; i += 3) {
            p[i] = blended_[0][p[i]];
            p[i + 1] = blended_[1][p[i + 1]];
            p[i + 2] = blended_[2][p[i + 2]];
        }
        return;
    }
    for (int64_t x = x_from; x <= x_to; ++x) put_pixel(bitmap_, x, y, color_);
}

}  // namespace velatrix::graphics
