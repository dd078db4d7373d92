// Lines: plain, anti-aliased, thick and thick anti-aliased. The expected
// maps were worked out by hand by stepping the error-term walks on paper.
#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "draw_canvas.h"
#include "velatrix/bitmap.h"
#include "velatrix/error.h"

namespace velatrix::testing {
namespace {

using Rows = std::vector<std::string>;
using Alphas = std::vector<std::vector<int>>;

// Checks a black anti-aliased drawing against the alpha each pixel was
// given (0: not drawn).
void expect_alphas(const Canvas& canvas, const Alphas& alphas) {
    for (int y = 0; y < static_cast<int>(alphas.size()); ++y) {
        for (int x = 0; x < static_cast<int>(alphas[y].size()); ++x) {
            const uint32_t a = static_cast<uint32_t>(alphas[y][x]);
            const uint32_t expected = a == 255 ? 0x000000FFu : velatrix_color_blend(a, 0xFFFFFFFFu);
            EXPECT_EQ(canvas.at(x, y), expected) << "pixel " << x << "," << y << " alpha " << a;
        }
    }
}

TEST(DrawLine, SinglePointSetsExactlyOnePixelOnce) {
    Canvas canvas(10, 10);
    velatrix_draw_line(canvas.get(), 5, 5, 5, 5, kHalfBlack);
    const Rows layers = canvas.layers();
    for (int y = 0; y < 10; ++y) EXPECT_EQ(layers[y], y == 5 ? ".....1...." : "..........");
}

TEST(DrawLine, ShallowAndSteepLinesInBothDirections) {
    const Rows shallow = {
        "##....",
        "..##..",
        "....##",
    };
    Canvas forward(6, 3), backward(6, 3);
    velatrix_draw_line(forward.get(), 0, 0, 5, 2, kHalfBlack);
    velatrix_draw_line(backward.get(), 5, 2, 0, 0, kHalfBlack);
    EXPECT_EQ(forward.ink(), shallow);
    EXPECT_EQ(backward.ink(), shallow);
    EXPECT_EQ(forward.layers(), (Rows{"11....", "..11..", "....11"}));  // every pixel once

    Canvas steep(2, 5);
    velatrix_draw_line(steep.get(), 0, 0, 1, 4, 0x000000FFu);
    EXPECT_EQ(steep.ink(), (Rows{"#.", "#.", ".#", ".#", ".#"}));
}

TEST(DrawLine, LineRunningFarOffTheBitmapEndsAtItsEdge) {
    Canvas canvas(10, 8);
    velatrix_draw_line(canvas.get(), 5, 5, INT_MAX - 10, 6, 0x000000FFu);
    // The single y step falls half way along, far beyond the bitmap.
    EXPECT_EQ(canvas.ink(), (Rows{"..........", "..........", "..........", "..........", "..........",
                                  ".....#####", "..........", ".........."}));
}

TEST(DrawAaLine, ShallowLineShadesBothNeighbours) {
    Canvas canvas(5, 3);
    velatrix_draw_aa_line(canvas.get(), 0, 0, 4, 2, 0x00000033u);  // the colour's own alpha is ignored
    expect_alphas(canvas, {{255, 128, 0, 0, 0}, {0, 128, 255, 128, 0}, {0, 0, 0, 128, 255}});

    Canvas slope(4, 2);
    velatrix_draw_aa_line(slope.get(), 0, 0, 3, 1, 0x000000FFu);
    expect_alphas(slope, {{255, 170, 85, 0}, {0, 85, 170, 255}});
}

TEST(DrawAaLine, SinglePointIsOpaque) {
    Canvas canvas(3, 3);
    velatrix_draw_aa_line(canvas.get(), 1, 1, 1, 1, 0x00000010u);
    expect_alphas(canvas, {{0, 0, 0}, {0, 255, 0}, {0, 0, 0}});
}

TEST(DrawThickLine, HorizontalRunsGrowTowardsSmallerY) {
    // A horizontal line walks with sy = -1, so the cross runs go upwards.
    Canvas three(7, 5), five(7, 5), two(7, 5);
    velatrix_draw_thick_line(three.get(), 1, 2, 5, 2, 0x000000FFu, 3.0f);
    velatrix_draw_thick_line(five.get(), 1, 2, 5, 2, 0x000000FFu, 5.0f);
    velatrix_draw_thick_line(two.get(), 1, 2, 5, 2, 0x000000FFu, 2.0f);
    EXPECT_EQ(three.ink(), (Rows{".......", ".#####.", ".#####.", ".......", "......."}));
    EXPECT_EQ(five.ink(), (Rows{".#####.", ".#####.", ".#####.", ".......", "......."}));
    // Width 2: the row above is only half covered, below the 0.9 cut.
    EXPECT_EQ(two.ink(), (Rows{".......", ".......", ".#####.", ".......", "......."}));
}

TEST(DrawThickLine, VerticalRunsGrowTowardsSmallerX) {
    Canvas canvas(5, 5);
    velatrix_draw_thick_line(canvas.get(), 2, 0, 2, 4, 0x000000FFu, 3.0f);
    EXPECT_EQ(canvas.ink(), (Rows{".##..", ".##..", ".##..", ".##..", ".##.."}));
}

TEST(DrawThickLine, DiagonalKeepsOnlyWellCoveredPixelsInTheGivenColour) {
    // Width 3: neighbours at distance 3/sqrt(18) pass, those at 6/sqrt(18) not.
    Canvas canvas(4, 4);
    velatrix_draw_thick_line(canvas.get(), 0, 0, 3, 3, kHalfBlack, 3.0f);
    EXPECT_EQ(canvas.layers(), (Rows{"11..", "111.", ".111", "..11"}));
    // Widths 1 and 2 keep only the centre line.
    for (float width : {1.0f, 2.0f}) {
        Canvas thin(4, 4);
        velatrix_draw_thick_line(thin.get(), 0, 0, 3, 3, 0x000000FFu, width);
        EXPECT_EQ(thin.ink(), (Rows{"#...", ".#..", "..#.", "...#"})) << "width " << width;
    }
}

TEST(DrawThickAaLine, CoverageShadesTheEdges) {
    Canvas two(7, 4);
    velatrix_draw_thick_aa_line(two.get(), 1, 2, 5, 2, 0x00000001u, 2.0f);
    expect_alphas(two, {{0, 0, 0, 0, 0, 0, 0},
                        {0, 127, 127, 127, 127, 127, 0},
                        {0, 255, 255, 255, 255, 255, 0},
                        {0, 0, 0, 0, 0, 0, 0}});

    // Width 1 on the diagonal: neighbours at 3/sqrt(18) get 255 * 0.2929.
    Canvas diagonal(4, 4);
    velatrix_draw_thick_aa_line(diagonal.get(), 0, 0, 3, 3, 0x000000FFu, 1.0f);
    expect_alphas(diagonal, {{255, 74, 0, 0}, {74, 255, 74, 0}, {0, 74, 255, 74}, {0, 0, 74, 255}});
}

TEST(DrawThickAaLine, LineRunningFarOffTheBitmapEndsAtItsEdge) {
    Canvas canvas(10, 8);
    velatrix_draw_thick_aa_line(canvas.get(), 0, 5, INT_MAX, 5, 0x000000FFu, 3.0f);
    EXPECT_EQ(canvas.ink(), (Rows{"..........", "..........", "..........", "..........", "##########",
                                  "##########", "..........", ".........."}));
    Canvas plain(10, 8);
    velatrix_draw_thick_line(plain.get(), 9, 2, INT_MIN, 2, 0x000000FFu, 3.0f);
    // Walking left, sy is -1 again: the run goes up to row 1.
    EXPECT_EQ(plain.ink(), (Rows{"..........", "##########", "##########", "..........", "..........",
                                 "..........", "..........", ".........."}));
}

TEST(DrawThickLine, WidthThatIsNotANumberIsRefused) {
    Canvas canvas(4, 4);
    velatrix_draw_thick_line(canvas.get(), 0, 0, 3, 3, 0x000000FFu, std::nanf(""));
    EXPECT_STREQ(velatrix_get_last_error(), "Invalid line width.");
    velatrix_draw_thick_aa_line(canvas.get(), 0, 0, 3, 3, 0x000000FFu, INFINITY);
    EXPECT_STREQ(velatrix_get_last_error(), "Invalid line width.");
    EXPECT_EQ(canvas.ink(), (Rows{"....", "....", "....", "...."}));
}

}  // namespace
}  // namespace velatrix::testing
