// The older font format: one-byte character codes in fixed cells, drawn
// without a gap and without baselines.
#include <algorithm>
#include <cstring>

#include "debug/log.h"
#include "graphics/fonts/glyph_drawing.h"
#include "graphics/pixels.h"
#include "velatrix/fonts.h"

using namespace velatrix::fonts;

namespace {

bool usable_font(const velatrix_byte_font* font) {
    return font != nullptr && font->characters != nullptr && font->data != nullptr && font->count > 0 &&
           font->bytes_per_glyph > 0;
}

void draw_cell(velatrix_bitmap* bitmap, const velatrix_byte_font* font, char character, int64_t x, int64_t y,
               uint32_t colour) {
    const uint8_t* data = velatrix_font_char_lookup(font, character);
    if (data == nullptr) return;
    draw_pixels(bitmap, data, static_cast<std::size_t>(font->bytes_per_glyph), font->width, font->height,
                font->bits_per_pixel, x, y, colour);
}

void draw_cells(velatrix_bitmap* bitmap, const velatrix_byte_font* font, const char* text, int64_t x, int64_t y,
                uint32_t colour) {
    for (const char* c = text; *c != '\0'; ++c) {
        draw_cell(bitmap, font, *c, x, y, colour);
        x += font->width;
    }
}

}  // namespace

extern "C" {

const uint8_t* velatrix_font_char_lookup(const velatrix_byte_font* font, char character) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_font(font)) return nullptr;
    const auto wanted = static_cast<signed char>(character);
    for (int32_t i = 0; i < font->count; ++i) {
        if (static_cast<signed char>(font->characters[i]) == wanted) {
            return font->data + static_cast<std::ptrdiff_t>(i) * font->bytes_per_glyph;
        }
    }
    return nullptr;
}

void velatrix_draw_char(velatrix_bitmap* bitmap, const velatrix_byte_font* font, char character, int32_t x, int32_t y,
                        uint32_t colour) {
    VELATRIX_TRACE_FUNCTION();
    if (!velatrix::graphics::usable_bitmap(bitmap)) return;
    draw_cell(bitmap, font, character, x, y, colour);
}

void velatrix_draw_string(velatrix_bitmap* bitmap, const velatrix_byte_font* font, const char* text, int32_t x,
                          int32_t y, uint32_t colour) {
    VELATRIX_TRACE_FUNCTION();
    if (!velatrix::graphics::usable_bitmap(bitmap) || !usable_font(font) || text == nullptr) return;
    draw_cells(bitmap, font, text, x, y, colour);
}

void velatrix_draw_string_aligned(velatrix_bitmap* bitmap, const velatrix_byte_font* font, const char* text,
                                  int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t horizontal,
                                  int32_t vertical, uint32_t colour) {
    VELATRIX_TRACE_FUNCTION();
    if (!velatrix::graphics::usable_bitmap(bitmap) || !usable_font(font) || text == nullptr) return;
    x2 = std::max(x2, x1);
    y2 = std::max(y2, y1);
    const auto count = static_cast<int64_t>(std::strlen(text));
    const int64_t x = aligned_start(x1, x2, count * font->width, count, horizontal);
    const int64_t y = aligned_start(y1, y2, font->height, count, vertical);
    draw_cells(bitmap, font, text, x, y, colour);
}

}  // extern "C"
