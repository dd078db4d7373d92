// Lines of a given width: the width-aware error-term walk. The anti-aliased
// form shades every pixel it reaches by its distance from the line; the
// hard-edged form keeps only the pixels that would be at least 90 % covered.
#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <limits>

#include "debug/log.h"
#include "graphics/line_walk.h"
#include "graphics/pixels.h"

using namespace velatrix::graphics;

namespace {

// Coverage falls off with the distance e / ed beyond half the width.
struct Coverage {
    float ed;
    float half_width;

    // How much of the pixel lies outside the line, 0 inside it.
    float outside(int64_t e) const {
        const float i = static_cast<float>(std::llabs(e)) / ed - half_width + 1.0f;
        return i > 0.0f ? i : 0.0f;
    }
};

// Truncates towards zero and keeps the low byte; values beyond 32 bits give
// 0, as the processor's own out-of-range conversion does.
int64_t truncate_to_byte(float value) {
    if (!(value > -2147483648.0f && value < 2147483648.0f)) return 0;
    return static_cast<int64_t>(value) & 0xFF;
}

// How far ahead of the walk a run along its major axis can reach. Such runs
// start at an error of at least major - minor / 2, grow by `minor` per step
// and end at `reach`; the slack covers large errors rounded to float in
// that comparison.
int64_t run_margin(int64_t major, int64_t minor, float reach) {
    if (minor == 0) return 1;  // no steps along the minor axis, so no such runs
    const double slack = 2048.0 + std::fabs(static_cast<double>(reach)) * 1e-6;
    const double steps = (static_cast<double>(reach) + slack - static_cast<double>(major) + minor / 2.0) / minor;
    if (!(steps < 1e15)) return std::numeric_limits<int64_t>::max() / 4;
    return static_cast<int64_t>(std::max(steps, 0.0)) + 3;
}

}  // namespace

namespace velatrix::graphics {

// Walks the line from (x0, y0) to (x1, y1) and offers every candidate pixel
// with its coverage to `plot`, which answers whether it placed the pixel; a
// run across the line only moves on past pixels that were placed.
template <typename Plot>
void walk_width(const velatrix_bitmap* bitmap, int64_t x0, int64_t y0, int64_t x1, int64_t y1, float width,
                Walk walk, Plot plot) {
    const int64_t dx = std::llabs(x1 - x0), dy = std::llabs(y1 - y0);
    const int64_t sx = x0 < x1 ? 1 : -1, sy = y0 < y1 ? 1 : -1;
    int64_t err = dx - dy;
    const float squared = static_cast<float>(dx) * static_cast<float>(dx) + static_cast<float>(dy) * static_cast<float>(dy);
    const float ed = dx + dy == 0 ? 1.0f : static_cast<float>(std::sqrt(static_cast<double>(squared)));
    const float w = (width + 1) / 2;
    const float reach = ed * w;
    const Coverage coverage{ed, w};
    const bool fast = walk == Walk::kFast;
    if (fast) {
        const int64_t margin = dx >= dy ? run_margin(dx, dy, reach) : run_margin(dy, dx, reach);
        WalkState state{x0, y0, err};
        if (!skip_approach(bitmap, state, dx, dy, sx, sy, margin, Rules::kShaded)) return;
        x0 = state.x, y0 = state.y, err = state.err;
    }
    for (;;) {
        plot(x0, y0, coverage.outside(err - dx + dy));
        const int64_t e2 = err;
        int64_t x2 = x0;
        if (2 * e2 >= -dx) {
            // A run along y at column x0; off-bitmap columns draw nothing.
            const bool visible = !fast || (x0 >= 0 && x0 < bitmap->width);
            int64_t y2 = y0;
            for (int64_t e = e2 + dy; visible && static_cast<float>(e) < reach && (y2 != y1 || dx > dy); e += dx) {
                if (plot(x0, y2 + sy, coverage.outside(e))) {
                    y2 += sy;
                    if (fast && past_far_edge(y2, sy, bitmap->height)) break;
                }
            }
            if (x0 == x1) break;
            err -= dy;
            x0 += sx;
        }
        if (2 * e2 <= dy) {
            const bool visible = !fast || (y0 >= 0 && y0 < bitmap->height);
            for (int64_t e = dx - e2; visible && static_cast<float>(e) < reach && (x2 != x1 || dx < dy); e += dy) {
                if (plot(x2 + sx, y0, coverage.outside(e))) {
                    x2 += sx;
                    if (fast && past_far_edge(x2, sx, bitmap->width)) break;
                }
            }
            if (y0 == y1) break;
            err += dx;
            y0 += sy;
        }
        // Runs only reach further in the directions of travel, so once the
        // walk is past a far edge nothing later lands on the bitmap.
        if (fast && (past_far_edge(x0, sx, bitmap->width) || past_far_edge(y0, sy, bitmap->height))) break;
    }
}

void walk_thick_line(velatrix_bitmap* bitmap, int64_t x0, int64_t y0, int64_t x1, int64_t y1, uint32_t color,
                     float width, bool anti_aliased, Walk walk) {
    if (anti_aliased) {
        walk_width(bitmap, x0, y0, x1, y1, width, walk, [&](int64_t x, int64_t y, float outside) {
            put_pixel(bitmap, x, y, with_alpha(color, truncate_to_byte((1.0f - outside) * 255.0f)));
            return true;
        });
    } else {
        walk_width(bitmap, x0, y0, x1, y1, width, walk, [&](int64_t x, int64_t y, float outside) {
            if (1.0f - outside < 0.9) return false;
            put_pixel(bitmap, x, y, color);
            return true;
        });
    }
}

}  // namespace velatrix::graphics

namespace {

bool usable_width(float width) {
    if (std::isfinite(width)) return true;
    VELATRIX_REPORT_ERROR("Invalid line width.");
    return false;
}

}  // namespace

extern "C" {

void velatrix_draw_thick_line(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                              uint32_t color, float width) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap) || !usable_width(width)) return;
    walk_thick_line(bitmap, x0, y0, x1, y1, color, width, false, Walk::kFast);
}

void velatrix_draw_thick_aa_line(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                                 uint32_t color, float width) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap) || !usable_width(width)) return;
    walk_thick_line(bitmap, x0, y0, x1, y1, color, width, true, Walk::kFast);
}

}  // extern "C"
