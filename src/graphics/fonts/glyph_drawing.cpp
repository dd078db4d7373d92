#include "graphics/fonts/glyph_drawing.h"

#include <algorithm>
#include <limits>

namespace velatrix::fonts {
namespace {

constexpr int64_t kInt32Min = std::numeric_limits<int32_t>::min();
constexpr int64_t kInt32Max = std::numeric_limits<int32_t>::max();

void set_pixel(velatrix_bitmap* bitmap, int64_t x, int64_t y, uint32_t colour) {
    // Coordinates beyond 32 bits lie outside every bitmap.
    if (x < kInt32Min || x > kInt32Max || y < kInt32Min || y > kInt32Max) return;
    velatrix_set_pixel(bitmap, static_cast<int32_t>(x), static_cast<int32_t>(y), colour);
}

}  // namespace

const velatrix_glyph* find_exact_glyph(const velatrix_font* font, int32_t code_point) {
    if (font == nullptr || font->lookup == nullptr || font->glyphs == nullptr) return nullptr;
    for (int32_t i = 0; i < font->count; ++i) {
        if (font->lookup[i] == code_point) return font->glyphs + i;
    }
    return nullptr;
}

const velatrix_glyph* find_glyph(const velatrix_font* font, int32_t code_point) {
    const velatrix_glyph* glyph = find_exact_glyph(font, code_point);
    return glyph != nullptr ? glyph : find_exact_glyph(font, 0);
}

void draw_pixels(velatrix_bitmap* bitmap, const uint8_t* data, std::size_t data_size, int64_t width,
                 int64_t height, int32_t bits_per_pixel, int64_t x, int64_t y, uint32_t colour) {
    if (data == nullptr || width <= 0 || height <= 0) return;
    const bool one_bit = bits_per_pixel == 1;
    const int64_t available = static_cast<int64_t>(data_size) * (one_bit ? 8 : 1);
    int64_t index = 0;
    for (int64_t row = 0; row < height; ++row) {
        for (int64_t column = 0; column < width; ++column, ++index) {
            if (index >= available) return;
            if (one_bit) {
                if ((data[index / 8] >> (7 - index % 8)) & 1) set_pixel(bitmap, x + column, y + row, colour);
            } else if (data[index] < 255) {
                const uint32_t alpha = 255u - data[index];
                set_pixel(bitmap, x + column, y + row, (colour & 0xFFFFFF00u) | alpha);
            }
        }
    }
}

int64_t aligned_start(int64_t near_edge, int64_t far_edge, int64_t size, int64_t count, int32_t alignment) {
    switch (alignment) {
        case 1:
            return near_edge + ((far_edge - near_edge) / 2 - size / 2);
        case 2:
            return far_edge - count;
        default:
            return near_edge;
    }
}

int32_t clamp_to_int32(int64_t value) {
    return static_cast<int32_t>(std::clamp(value, kInt32Min, kInt32Max));
}

}  // namespace velatrix::fonts
