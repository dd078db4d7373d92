// The fills write whole spans; the oracle is the per-pixel walk of each
// shape through velatrix_set_pixel. On random pictures, colours (opaque,
// translucent, fully transparent) and positions (inside, clipped, off the
// bitmap) both must leave the same bytes.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>

#include "draw_canvas.h"
#include "velatrix/bitmap.h"

namespace velatrix::testing {
namespace {

struct Shape {
    int32_t a, b, c, d;
};

const struct {
    const char* name;
    void (*fast)(velatrix_bitmap*, const Shape&, uint32_t);
    void (*reference)(velatrix_bitmap*, const Shape&, uint32_t);
} kFills[] = {
    {"fill rectangle", [](velatrix_bitmap* m, const Shape& s, uint32_t c) { velatrix_fill_rectangle(m, s.a, s.b, s.c, s.d, c); },
     [](velatrix_bitmap* m, const Shape& s, uint32_t c) {
         for (int64_t x = s.a; x <= std::max(s.c, s.a); ++x)
             for (int64_t y = s.b; y <= std::max(s.d, s.b); ++y) velatrix_set_pixel(m, x, y, c);
     }},
    {"fill circle", [](velatrix_bitmap* m, const Shape& s, uint32_t c) { velatrix_fill_circle(m, s.a, s.b, s.c % 40, c); },
     [](velatrix_bitmap* m, const Shape& s, uint32_t c) {
         const int64_t r = s.c % 40;
         for (int64_t dy = -r; dy <= r; ++dy)
             for (int64_t dx = -r; dx <= r; ++dx)
                 if (dx * dx + dy * dy <= r * r) velatrix_set_pixel(m, s.a + dx, s.b + dy, c);
     }},
    {"fill ellipse", [](velatrix_bitmap* m, const Shape& s, uint32_t c) { velatrix_fill_ellipse(m, s.a, s.b, s.c, s.d, c); },
     [](velatrix_bitmap* m, const Shape& s, uint32_t c) {
         const int64_t rx = std::max(s.c, s.a) - int64_t{s.a}, ry = std::max(s.d, s.b) - int64_t{s.b};
         for (int64_t dy = -ry; dy <= ry; ++dy)
             for (int64_t dx = -rx; dx <= rx; ++dx)
                 if (dx * dx * ry * ry + dy * dy * rx * rx <= rx * rx * ry * ry) velatrix_set_pixel(m, s.a + dx, s.b + dy, c);
     }},
    {"thick rectangle", [](velatrix_bitmap* m, const Shape& s, uint32_t c) {
         velatrix_draw_thick_rectangle(m, s.a, s.b, s.c, s.d, 1 + s.c % 5, c);
     },
     [](velatrix_bitmap* m, const Shape& s, uint32_t c) {
         const int32_t x1 = std::max(s.c, s.a), y1 = std::max(s.d, s.b), t = 1 + s.c % 5;
         for (int32_t x = s.a; x <= x1; ++x)
             for (int32_t k = 0; k < t; ++k) velatrix_set_pixel(m, x, s.b + k, c), velatrix_set_pixel(m, x, y1 - k, c);
         for (int32_t y = s.b; y <= y1; ++y)
             for (int32_t k = 0; k < t; ++k) velatrix_set_pixel(m, s.a + k, y, c), velatrix_set_pixel(m, x1 - k, y, c);
     }},
    {"clear", [](velatrix_bitmap* m, const Shape&, uint32_t c) { velatrix_bitmap_clear(m, c); },
     [](velatrix_bitmap* m, const Shape&, uint32_t c) {
         for (int32_t y = 0; y < m->height; ++y)
             for (int32_t x = 0; x < m->width; ++x) velatrix_set_pixel(m, x, y, c);
     }},
};

void every_fill_matches_the_pixel_walk() {
    std::mt19937 random(5);
    const uint32_t kAlphas[] = {0xFF, 0x80, 0x00, 0x01, 0xFE};
    for (const auto& fill : kFills) {
        for (int trial = 0; trial < 60; ++trial) {
            // Narrow and wide bitmaps, with row padding and without (whole
            // rows are then one run): long spans take the aligned stores.
            const int kWidths[] = {37, 301, 300};
            const int width = kWidths[trial % 3], height = 29;
            Canvas fast(width, height), reference(width, height);
            for (int32_t i = 0; i < fast.bitmap.image_size; ++i) {
                fast.bitmap.pixels[i] = reference.bitmap.pixels[i] = static_cast<uint8_t>(random());
            }
            auto x = [&] { return static_cast<int32_t>(random() % (width + 40)) - 20; };
            auto y = [&] { return static_cast<int32_t>(random() % (height + 40)) - 20; };
            const Shape shape{x(), y(), x() + 20, y() + 20};
            const uint32_t color = (static_cast<uint32_t>(random()) & 0xFFFFFF00u) | kAlphas[trial % 5];
            fill.fast(fast.get(), shape, color);
            fill.reference(reference.get(), shape, color);
            ASSERT_EQ(fast.buffer, reference.buffer) << fill.name << " " << shape.a << "," << shape.b << " " << shape.c
                                                     << "," << shape.d << " colour " << std::hex << color;
        }
    }
}

TEST(DrawSpans, EveryFillMatchesThePixelWalk) { with_and_without_vector_kernels(every_fill_matches_the_pixel_walk); }

}  // namespace
}  // namespace velatrix::testing
