// Ellipses: the outline inscribed in a rectangle and the filled ellipse
// around a centre. Their error terms are 32-bit signed quantities; large
// ellipses overflow them, and the drawing follows the wrapped values. The
// wrap-around is computed on unsigned integers so that it is defined.
#include <algorithm>
#include <cstdint>
#include <cstdlib>

#include "debug/log.h"
#include "graphics/line_walk.h"
#include "graphics/pixels.h"
#include "graphics/spans.h"

using namespace velatrix::graphics;

namespace {

// A 32-bit signed value whose arithmetic wraps modulo 2^32.
struct Wrapped {
    uint32_t bits;

    static Wrapped of(int64_t value) { return {static_cast<uint32_t>(value)}; }
    int32_t value() const { return static_cast<int32_t>(bits); }

    friend Wrapped operator+(Wrapped a, Wrapped b) { return {a.bits + b.bits}; }
    friend Wrapped operator*(Wrapped a, Wrapped b) { return {a.bits * b.bits}; }
    Wrapped& operator+=(Wrapped other) { return *this = *this + other; }
    friend bool operator<=(Wrapped a, Wrapped b) { return a.value() <= b.value(); }
    friend bool operator>=(Wrapped a, Wrapped b) { return a.value() >= b.value(); }
    friend bool operator>(Wrapped a, Wrapped b) { return a.value() > b.value(); }
};

Wrapped w32(int64_t value) { return Wrapped::of(value); }

}  // namespace

namespace velatrix::graphics {

void walk_ellipse(velatrix_bitmap* bitmap, int64_t x0, int64_t y0, int64_t x1, int64_t y1, uint32_t color,
                  Walk walk) {
    const int64_t a = std::llabs(x1 - x0), b = std::llabs(y1 - y0), b1 = b & 1;
    const Wrapped wa = w32(a), wb = w32(b);
    Wrapped ex = w32(4) * (w32(1) + w32(-a)) * wb * wb;
    Wrapped ey = w32(4) * w32(b1 + 1) * wa * wa;
    Wrapped err = ex + ey + w32(b1) * wa * wa;
    if (x0 > x1) {
        x0 = x1;
        x1 += a;
    }
    if (y0 > y1) y0 = y1;
    y0 += (b + 1) / 2;
    y1 = y0 - b1;
    const Wrapped a8 = w32(8) * wa * wa, b8 = w32(8) * wb * wb;
    const int64_t height = bitmap->height;
    // y0 only grows and y1 only shrinks; once both rows are off the bitmap
    // nothing after them can land on it. That also ends the walks that the
    // wrapped error terms would otherwise keep stepping in y.
    auto rows_gone = [&] { return walk == Walk::kFast && y0 >= height && y1 < 0; };
    while (x0 <= x1) {
        put_pixel(bitmap, x1, y0, color);
        put_pixel(bitmap, x0, y0, color);
        put_pixel(bitmap, x0, y1, color);
        put_pixel(bitmap, x1, y1, color);
        const Wrapped e2 = w32(2) * err;
        if (e2 <= ey) {
            ++y0;
            --y1;
            ey += a8;
            err += ey;
        }
        if (e2 >= ex || w32(2) * err > ey) {
            ++x0;
            --x1;
            ex += b8;
            err += ex;
        }
        if (rows_gone()) return;
    }
    // A very flat ellipse stops before reaching its tips: finish them.
    while (y0 - y1 < b) {
        put_pixel(bitmap, x0 - 1, y0, color);
        put_pixel(bitmap, x1 + 1, y0, color);
        ++y0;
        put_pixel(bitmap, x0 - 1, y1, color);
        put_pixel(bitmap, x1 + 1, y1, color);
        --y1;
        if (rows_gone()) return;
    }
}

}  // namespace velatrix::graphics

extern "C" {

void velatrix_draw_ellipse(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1, uint32_t color) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap)) return;
    walk_ellipse(bitmap, x0, y0, x1, y1, color, Walk::kFast);
}

void velatrix_fill_ellipse(velatrix_bitmap* bitmap, int32_t cx, int32_t cy, int32_t corner_x, int32_t corner_y,
                           uint32_t color) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap)) return;
    const int64_t rx = std::max(corner_x, cx) - static_cast<int64_t>(cx);
    const int64_t ry = std::max(corner_y, cy) - static_cast<int64_t>(cy);
    const Wrapped rx2 = w32(rx) * w32(rx), ry2 = w32(ry) * w32(ry);
    const Wrapped limit = rx2 * ry2;
    // Each pixel is tested and set once, so only the part on the bitmap
    // needs visiting.
    int64_t dy_from = -ry, dy_to = ry, dx_from = -rx, dx_to = rx;
    dy_from = std::max(dy_from, -static_cast<int64_t>(cy));
    dy_to = std::min(dy_to, static_cast<int64_t>(bitmap->height) - 1 - cy);
    dx_from = std::max(dx_from, -static_cast<int64_t>(cx));
    dx_to = std::min(dx_to, static_cast<int64_t>(bitmap->width) - 1 - cx);
    if (dy_from > dy_to || dx_from > dx_to) return;
    // While no product can leave 32 bits, the test is plain arithmetic and
    // each row's pixels form one run around the centre.
    if (rx < 46341 && ry < 46341 && 2 * rx * rx * ry * ry + rx * rx + ry * ry < (int64_t{1} << 31)) {
        const SpanPainter painter(bitmap, color, 3 * rx * ry);
        for (int64_t dy = dy_from; dy <= dy_to; ++dy) {
            const int64_t room = rx * rx * ry * ry - dy * dy * rx * rx;  // for dx * dx * ry * ry
            const int64_t half = room < 0 ? -1 : ry == 0 ? rx : std::min(rx, largest_root(room / (ry * ry)));
            painter.span(std::max(-half, dx_from) + cx, std::min(half, dx_to) + cx, cy + dy);
        }
        return;
    }
    for (int64_t dy = dy_from; dy <= dy_to; ++dy) {
        for (int64_t dx = dx_from; dx <= dx_to; ++dx) {
            const Wrapped sum = w32(dx) * w32(dx) * ry2 + w32(dy) * w32(dy) * rx2;
            if (sum <= limit) put_pixel(bitmap, cx + dx, cy + dy, color);
        }
    }
}

}  // extern "C"
