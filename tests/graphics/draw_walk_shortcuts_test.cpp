// The shortcuts of the line and ellipse walks (skipping the approach from
// far outside in closed form, stopping once past the far edge, leaving out
// runs off the bitmap) must not change a single pixel: every walk is
// compared with its reference form, which takes every step and leaves
// each pixel off the bitmap to the pixel setter. This owns the clipping of
// lines and ellipse outlines; draw_spans_test owns that of the fills.
#include <gtest/gtest.h>

#include <cstdint>
#include <random>
#include <string>
#include <vector>

#include "draw_canvas.h"
#include "graphics/line_walk.h"
#include "velatrix/bitmap.h"

namespace velatrix::testing {
namespace {

using graphics::Walk;

struct Line {
    int64_t x0, y0, x1, y1;
    float width;
};

using Drawer = void (*)(velatrix_bitmap*, const Line&, Walk);

const struct {
    const char* name;
    Drawer draw;
} kWalks[] = {
    {"line", [](velatrix_bitmap* b, const Line& l, Walk w) { graphics::walk_line(b, l.x0, l.y0, l.x1, l.y1, kHalfBlack, w); }},
    {"aa line", [](velatrix_bitmap* b, const Line& l, Walk w) { graphics::walk_aa_line(b, l.x0, l.y0, l.x1, l.y1, 0x000000FFu, w); }},
    {"thick line", [](velatrix_bitmap* b, const Line& l, Walk w) {
         graphics::walk_thick_line(b, l.x0, l.y0, l.x1, l.y1, kHalfBlack, l.width, false, w);
     }},
    {"thick aa line", [](velatrix_bitmap* b, const Line& l, Walk w) {
         graphics::walk_thick_line(b, l.x0, l.y0, l.x1, l.y1, 0x000000FFu, l.width, true, w);
     }},
    {"ellipse", [](velatrix_bitmap* b, const Line& l, Walk w) { graphics::walk_ellipse(b, l.x0, l.y0, l.x1, l.y1, kHalfBlack, w); }},
};

// Draws `line` both ways on a 40 x 30 bitmap; returns how many differ.
int compare(const Line& line, Drawer draw, const char* name) {
    Canvas fast(40, 30), reference(40, 30);
    draw(fast.get(), line, Walk::kFast);
    draw(reference.get(), line, Walk::kReference);
    if (fast.buffer == reference.buffer) return 0;
    ADD_FAILURE() << name << " (" << line.x0 << "," << line.y0 << ")-(" << line.x1 << "," << line.y1 << ") width "
                  << line.width;
    return 1;
}

// Long approaches from every side, jumped in one go; nearly horizontal
// and vertical wide lines whose runs reach far ahead of the walk, so the
// approach must stop short of the bitmap. The ellipse walk is left out:
// it takes every step of such spans.
const Line kFarLines[] = {
    {-100000, 3, 20, 12, 3.0f},      {-100000, -99990, 10, 10, 5.0f},  {100000, 7, 5, 25, 2.0f},
    {15, -100000, 22, 20, 4.0f},     {15, 100000, 30, 5, 1.0f},        {100040, 100030, 0, 0, 6.0f},
    {-70000, 100000, 39, 0, 3.5f},   {-100000, 15, 100000, 16, 9.0f},  {12, -100000, 13, 100000, 7.0f},
    {-100000, 40000, 100000, -39990, 2.0f},
    {-3000, 10, 60, 11, 3.0f},  {-3000, 10, 60, 13, 9.0f},   {3000, 20, -20, 18, 6.0f},
    {20, -3000, 21, 50, 3.0f},  {10, 3000, 12, -10, 12.0f},  {-500, 0, 30, 29, 40.0f},
};

TEST(DrawWalkShortcuts, EveryWalkMatchesItsReferenceForm) {
    int failures = 0;
    for (const Line& line : kFarLines) {
        for (const auto& walk : kWalks) {
            if (std::string(walk.name) != "ellipse") failures += compare(line, walk.draw, walk.name);
        }
    }
    // Random lines across and around the bitmap: half start or end well
    // outside, some are long.
    std::mt19937 random(11);
    auto next = [&](int64_t low, int64_t high) { return low + static_cast<int64_t>(random() % (high - low + 1)); };
    for (int i = 0; i < 3000 && failures < 5; ++i) {
        const int64_t reach = i % 3 == 0 ? 400 : 80;
        const Line line{next(-reach, 40 + reach), next(-reach, 30 + reach), next(-reach, 40 + reach),
                        next(-reach, 30 + reach), static_cast<float>(next(0, 40)) / 4.0f};
        for (const auto& walk : kWalks) failures += compare(line, walk.draw, walk.name);
    }
    EXPECT_EQ(failures, 0);
}

}  // namespace
}  // namespace velatrix::testing
