// Circles: the integer midpoint outline and the filled disc.
#include <algorithm>
#include <cstdint>

#include "debug/log.h"
#include "graphics/pixels.h"
#include "graphics/spans.h"

using namespace velatrix::graphics;

extern "C" {

void velatrix_draw_circle(velatrix_bitmap* bitmap, int32_t cx, int32_t cy, int32_t radius, uint32_t color) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap)) return;
    const int64_t r = radius;
    int64_t x = -r, y = 0, err = 2 - 2 * r;
    // At least one round, so a radius of 0 sets the centre four times.
    do {
        put_pixel(bitmap, cx - x, cy + y, color);
        put_pixel(bitmap, cx - y, cy - x, color);
        put_pixel(bitmap, cx + x, cy - y, color);
        put_pixel(bitmap, cx + y, cy + x, color);
        const int64_t previous = err;
        if (previous <= y) {
            ++y;
            err += 2 * y + 1;
        }
        if (previous > x || err > y) {
            ++x;
            err += 2 * x + 1;
        }
    } while (x < 0);
}

void velatrix_fill_circle(velatrix_bitmap* bitmap, int32_t cx, int32_t cy, int32_t radius, uint32_t color) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap)) return;
    const int64_t r = radius;
    // Every pixel of the disc is set once, so only the part on the bitmap
    // needs visiting.
    int64_t dy_from = -r, dy_to = r, dx_from = -r, dx_to = r;
    dy_from = std::max(dy_from, -static_cast<int64_t>(cy));
    dy_to = std::min(dy_to, static_cast<int64_t>(bitmap->height) - 1 - cy);
    dx_from = std::max(dx_from, -static_cast<int64_t>(cx));
    dx_to = std::min(dx_to, static_cast<int64_t>(bitmap->width) - 1 - cx);
    if (dy_from > dy_to || dx_from > dx_to) return;
    // About the disc's area; any radius past a million is simply large.
    const SpanPainter painter(bitmap, color, r < (1 << 20) ? 3 * r * r : int64_t{1} << 42);
    for (int64_t dy = dy_from; dy <= dy_to; ++dy) {
        // The row's run: the largest dx with dx * dx + dy * dy <= r * r.
        const int64_t half = largest_root(r * r - dy * dy);
        painter.span(std::max(-half, dx_from) + cx, std::min(half, dx_to) + cx, cy + dy);
    }
}

}  // extern "C"
