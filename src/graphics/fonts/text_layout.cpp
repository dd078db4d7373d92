// Lines of text in the code point fonts: measuring, drawing, alignment.
#include "graphics/fonts/text_layout.h"

#include <algorithm>

#include "debug/log.h"
#include "graphics/fonts/glyph_drawing.h"
#include "graphics/pixels.h"

namespace velatrix::fonts {
namespace {

int64_t glyph_ascent(const velatrix_glyph& glyph) {
    return static_cast<int64_t>(glyph.height) - glyph.descent;
}

}  // namespace

LineMetrics measure_line(const velatrix_font* font, const int32_t* code_points) {
    LineMetrics line;
    if (code_points == nullptr) return line;
    for (const int32_t* c = code_points; *c != 0; ++c) {
        ++line.count;
        const velatrix_glyph* glyph = find_glyph(font, *c);
        if (glyph == nullptr) continue;
        line.width += glyph->width + 1;
        line.ascent = std::max(line.ascent, glyph_ascent(*glyph));
        line.descent = std::max<int64_t>(line.descent, glyph->descent);
    }
    return line;
}

void draw_line(velatrix_bitmap* bitmap, const velatrix_font* font, const int32_t* code_points, int64_t x, int64_t y,
               uint32_t colour) {
    if (font == nullptr || code_points == nullptr) return;
    const int64_t baseline = y + measure_line(font, code_points).ascent;
    for (const int32_t* c = code_points; *c != 0; ++c) {
        const velatrix_glyph* glyph = find_glyph(font, *c);
        if (glyph == nullptr) continue;
        draw_glyph(bitmap, *glyph, font->bits_per_pixel, x, baseline - glyph_ascent(*glyph), colour);
        x += glyph->width + 1;
    }
}

}  // namespace velatrix::fonts

using namespace velatrix::fonts;

extern "C" {

const velatrix_glyph* enhanced_get_font_character(const velatrix_font* font, int32_t code_point) {
    VELATRIX_TRACE_FUNCTION();
    return find_glyph(font, code_point);
}

int32_t enhanced_get_string_width(const velatrix_font* font, const int32_t* code_points) {
    VELATRIX_TRACE_FUNCTION();
    return clamp_to_int32(measure_line(font, code_points).width);
}

int32_t enhanced_get_string_height(const velatrix_font* font, const int32_t* code_points) {
    VELATRIX_TRACE_FUNCTION();
    return clamp_to_int32(measure_line(font, code_points).height());
}

void enhanced_draw_char(velatrix_bitmap* bitmap, const velatrix_font* font, int32_t code_point, int32_t x, int32_t y,
                        uint32_t colour) {
    VELATRIX_TRACE_FUNCTION();
    if (!velatrix::graphics::usable_bitmap(bitmap) || font == nullptr) return;
    if (const velatrix_glyph* glyph = find_glyph(font, code_point)) {
        draw_glyph(bitmap, *glyph, font->bits_per_pixel, x, y, colour);
    }
}

void enhanced_draw_string(velatrix_bitmap* bitmap, const velatrix_font* font, const int32_t* code_points, int32_t x,
                          int32_t y, uint32_t colour) {
    VELATRIX_TRACE_FUNCTION();
    if (!velatrix::graphics::usable_bitmap(bitmap)) return;
    draw_line(bitmap, font, code_points, x, y, colour);
}

void enhanced_draw_string_aligned(velatrix_bitmap* bitmap, const velatrix_font* font, const int32_t* code_points,
                                  int32_t x1, int32_t y1, int32_t x2, int32_t y2, int32_t horizontal, int32_t vertical,
                                  uint32_t colour) {
    VELATRIX_TRACE_FUNCTION();
    if (!velatrix::graphics::usable_bitmap(bitmap)) return;
    x2 = std::max(x2, x1);
    y2 = std::max(y2, y1);
    const LineMetrics line = measure_line(font, code_points);
    const int64_t x = aligned_start(x1, x2, line.width, line.count, horizontal);
    const int64_t y = aligned_start(y1, y2, line.height(), line.count, vertical);
    draw_line(bitmap, font, code_points, x, y, colour);
}

int32_t u_strlen32(const int32_t* code_points) {
    VELATRIX_TRACE_FUNCTION();
    if (code_points == nullptr) return 0;
    int64_t count = 0;
    while (code_points[count] != 0) ++count;
    return clamp_to_int32(count);
}

}  // extern "C"
