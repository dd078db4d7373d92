// Rectangles: outline, inward thick outline and fill, corners inclusive.
// A reversed corner is not swapped: it collapses onto the other corner.
//
// Each call sets pixels in one colour, so a pixel's final value depends
// only on how many times it is set, never on the order: the loops visit
// just the part of each edge that lies on the bitmap.
#include <algorithm>
#include <cstdint>

#include "debug/log.h"
#include "graphics/pixels.h"
#include "graphics/spans.h"

using namespace velatrix::graphics;

namespace {

// Sets (x, y) for x in [x_from, x_to] and y in [y_from, y_to], clipped.
void fill_block(velatrix_bitmap* bitmap, int64_t x_from, int64_t x_to, int64_t y_from, int64_t y_to, uint32_t color) {
    if (!clip_range(x_from, x_to, bitmap->width) || !clip_range(y_from, y_to, bitmap->height)) return;
    const SpanPainter painter(bitmap, color, (x_to - x_from + 1) * (y_to - y_from + 1));
    painter.block(x_from, x_to, y_from, y_to);
}

}  // namespace

extern "C" {

void velatrix_draw_rectangle(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                             uint32_t color) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap)) return;
    x1 = std::max(x1, x0);
    y1 = std::max(y1, y0);
    fill_block(bitmap, x0, x1, y0, y0, color);
    fill_block(bitmap, x0, x1, y1, y1, color);
    fill_block(bitmap, x0, x0, y0, y1, color);
    fill_block(bitmap, x1, x1, y0, y1, color);
}

void velatrix_draw_thick_rectangle(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                                   int32_t thickness, uint32_t color) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap) || thickness <= 0) return;
    x1 = std::max(x1, x0);
    y1 = std::max(y1, y0);
    const int64_t t = thickness - 1;
    // Bands grow inwards from each edge and may cross when the rectangle is
    // thinner than twice the thickness; crossed pixels are set once per band.
    fill_block(bitmap, x0, x1, y0, y0 + t, color);
    fill_block(bitmap, x0, x1, y1 - t, y1, color);
    fill_block(bitmap, x0, x0 + t, y0, y1, color);
    fill_block(bitmap, x1 - t, x1, y0, y1, color);
}

void velatrix_fill_rectangle(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                             uint32_t color) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap)) return;
    fill_block(bitmap, x0, std::max(x1, x0), y0, std::max(y1, y0), color);
}

}  // extern "C"
