// The shortcuts of the line and ellipse walks (skipping the approach from
// far outside in closed form, stopping once past the far edge, leaving out
// runs off the bitmap) must not change a single pixel: every walk is
// compared with its reference form, which takes every step.
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "draw_canvas.h"
#include "graphics/line_walk.h"
#include "velatrix/bitmap.h"

namespace velatrix::testing {
namespace {

using graphics::Walk;

// A small fixed pseudo-random sequence, the same on every run.
class Sequence {
public:
    int64_t next(int64_t low, int64_t high) {
        state_ = state_ * 6364136223846793005ull + 1442695040888963407ull;
        return low + static_cast<int64_t>((state_ >> 33) % static_cast<uint64_t>(high - low + 1));
    }

private:
    uint64_t state_ = 0x9E3779B97F4A7C15ull;
};

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

TEST(DrawWalkShortcuts, RandomLinesAcrossAndAroundTheBitmap) {
    Sequence random;
    int failures = 0;
    for (int i = 0; i < 3000 && failures < 5; ++i) {
        // Half the lines start or end well outside; some are long.
        const int64_t reach = i % 3 == 0 ? 400 : 80;
        const Line line{random.next(-reach, 40 + reach), random.next(-reach, 30 + reach),
                        random.next(-reach, 40 + reach), random.next(-reach, 30 + reach),
                        static_cast<float>(random.next(0, 40)) / 4.0f};
        for (const auto& walk : kWalks) failures += compare(line, walk.draw, walk.name);
    }
    EXPECT_EQ(failures, 0);
}

TEST(DrawWalkShortcuts, LongApproachesFromEveryDirection) {
    // The approach is skipped in one jump; the end points sit at every
    // side, so every combination of directions and major axes is covered.
    const Line lines[] = {
        {-100000, 3, 20, 12, 3.0f},      {-100000, -99990, 10, 10, 5.0f},  {100000, 7, 5, 25, 2.0f},
        {15, -100000, 22, 20, 4.0f},     {15, 100000, 30, 5, 1.0f},        {100040, 100030, 0, 0, 6.0f},
        {-70000, 100000, 39, 0, 3.5f},   {-100000, 15, 100000, 16, 9.0f},  {12, -100000, 13, 100000, 7.0f},
        {-100000, 40000, 100000, -39990, 2.0f},
    };
    for (const Line& line : lines) {
        for (const auto& walk : kWalks) {
            if (std::string(walk.name) == "ellipse") continue;
            compare(line, walk.draw, walk.name);
        }
    }
}

TEST(DrawWalkShortcuts, WideLinesWithLongRunsAlongTheWalk) {
    // Nearly horizontal and nearly vertical wide lines: their runs along the
    // walk reach far ahead, so the approach must stop short of the bitmap.
    const Line lines[] = {
        {-3000, 10, 60, 11, 3.0f},  {-3000, 10, 60, 13, 9.0f},   {3000, 20, -20, 18, 6.0f},
        {20, -3000, 21, 50, 3.0f},  {10, 3000, 12, -10, 12.0f},  {-500, 0, 30, 29, 40.0f},
    };
    for (const Line& line : lines) {
        compare(line, kWalks[2].draw, kWalks[2].name);
        compare(line, kWalks[3].draw, kWalks[3].name);
    }
}

}  // namespace
}  // namespace velatrix::testing
