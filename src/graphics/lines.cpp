// One-pixel lines: the integer error-term walk and its anti-aliased form.
#include <cmath>
#include <cstdint>
#include <cstdlib>

#include "debug/log.h"
#include "graphics/line_walk.h"
#include "graphics/pixels.h"

namespace velatrix::graphics {
namespace {

// Once the walk has left the bitmap past its far edge in either direction
// of travel, every later pixel lies further out.
bool walk_done(const velatrix_bitmap* bitmap, int64_t x, int64_t sx, int64_t y, int64_t sy) {
    return past_far_edge(x, sx, bitmap->width) || past_far_edge(y, sy, bitmap->height);
}

}  // namespace

void walk_line(velatrix_bitmap* bitmap, int64_t x0, int64_t y0, int64_t x1, int64_t y1, uint32_t color, Walk walk) {
    const int64_t dx = std::llabs(x1 - x0), dy = -std::llabs(y1 - y0);
    const int64_t sx = x0 < x1 ? 1 : -1, sy = y0 < y1 ? 1 : -1;
    int64_t err = dx + dy;
    const bool fast = walk == Walk::kFast;
    if (fast) {
        WalkState state{x0, y0, err};
        if (!skip_approach(bitmap, state, dx, -dy, sx, sy, 0, Rules::kPlain)) return;
        x0 = state.x, y0 = state.y, err = state.err;
    }
    for (;;) {
        put_pixel(bitmap, x0, y0, color);
        if (x0 == x1 && y0 == y1) break;
        const int64_t e2 = 2 * err;
        if (e2 >= dy) {
            err += dy;
            x0 += sx;
        }
        if (e2 <= dx) {
            err += dx;
            y0 += sy;
        }
        if (fast && walk_done(bitmap, x0, sx, y0, sy)) break;
    }
}

void walk_aa_line(velatrix_bitmap* bitmap, int64_t x0, int64_t y0, int64_t x1, int64_t y1, uint32_t color,
                  Walk walk) {
    const int64_t dx = std::llabs(x1 - x0), dy = std::llabs(y1 - y0);
    const int64_t sx = x0 < x1 ? 1 : -1, sy = y0 < y1 ? 1 : -1;
    int64_t err = dx - dy;
    // The length is summed in single precision and truncated.
    const float squared = static_cast<float>(dx) * static_cast<float>(dx) + static_cast<float>(dy) * static_cast<float>(dy);
    const int64_t ed = dx + dy == 0 ? 1 : static_cast<int64_t>(std::sqrt(static_cast<double>(squared)));
    // The alpha wraps modulo 256 where the distance exceeds the length.
    auto shade = [&](int64_t distance) { return with_alpha(color, 255 - (255 * distance) / ed); };
    const bool fast = walk == Walk::kFast;
    if (fast) {
        // Side pixels sit one step ahead of the walk.
        WalkState state{x0, y0, err};
        if (!skip_approach(bitmap, state, dx, dy, sx, sy, 1, Rules::kShaded)) return;
        x0 = state.x, y0 = state.y, err = state.err;
    }
    for (;;) {
        put_pixel(bitmap, x0, y0, shade(std::llabs(err - dx + dy)));
        const int64_t e2 = err;
        const int64_t x2 = x0;
        if (2 * e2 >= -dx) {
            if (x0 == x1) break;
            if (e2 + dy < ed) put_pixel(bitmap, x0, y0 + sy, shade(e2 + dy));
            err -= dy;
            x0 += sx;
        }
        if (2 * e2 <= dy) {
            if (y0 == y1) break;
            if (dx - e2 < ed) put_pixel(bitmap, x2 + sx, y0, shade(dx - e2));
            err += dx;
            y0 += sy;
        }
        if (fast && walk_done(bitmap, x0, sx, y0, sy)) break;
    }
}

}  // namespace velatrix::graphics

using namespace velatrix::graphics;

extern "C" {

void velatrix_draw_line(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1, uint32_t color) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap)) return;
    walk_line(bitmap, x0, y0, x1, y1, color, Walk::kFast);
}

void velatrix_draw_aa_line(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                           uint32_t color) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap)) return;
    walk_aa_line(bitmap, x0, y0, x1, y1, color, Walk::kFast);
}

}  // extern "C"
