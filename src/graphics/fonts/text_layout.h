// Measuring and laying out lines of code points in a font table.
#pragma once

#include <cstdint>

#include "velatrix/bitmap.h"
#include "velatrix/fonts.h"

namespace velatrix::fonts {

struct LineMetrics {
    int64_t width = 0;    // every glyph's width plus its 1-pixel gap
    int64_t ascent = 0;   // the tallest part above the baseline
    int64_t descent = 0;  // the deepest part below it
    int64_t count = 0;    // code points before the terminating 0

    int64_t height() const { return ascent + descent; }
};

LineMetrics measure_line(const velatrix_font* font, const int32_t* code_points);

// Draws the line with its top at y and every baseline at y + ascent.
void draw_line(velatrix_bitmap* bitmap, const velatrix_font* font, const int32_t* code_points, int64_t x, int64_t y,
               uint32_t colour);

}  // namespace velatrix::fonts
