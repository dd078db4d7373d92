// Circles, ellipses and rectangles. The expected maps were worked out by
// hand by stepping each rasteriser on paper; digit maps count how many times
// a pixel was set (each set of a translucent colour blends once more).
#include <gtest/gtest.h>

#include <cstdint>
#include <string>
#include <vector>

#include "draw_canvas.h"
#include "velatrix/bitmap.h"

namespace velatrix::testing {
namespace {

using Rows = std::vector<std::string>;

TEST(DrawCircle, RadiusZeroSetsTheCentreFourTimes) {
    Canvas canvas(3, 3);
    velatrix_draw_circle(canvas.get(), 1, 1, 0, kHalfBlack);
    EXPECT_EQ(canvas.layers(), (Rows{"...", ".4.", "..."}));
}

TEST(DrawCircle, RadiusTwoOutline) {
    Canvas canvas(7, 7);
    velatrix_draw_circle(canvas.get(), 3, 3, 2, kHalfBlack);
    EXPECT_EQ(canvas.layers(), (Rows{
                                   ".......",
                                   "..111..",
                                   ".1...1.",
                                   ".1...1.",
                                   ".1...1.",
                                   "..111..",
                                   ".......",
                               }));
}

TEST(DrawCircle, NegativeRadiusSetsFourPointsOnce) {
    // The walk starts at x = 2 > 0 and makes its single round.
    Canvas canvas(7, 7);
    velatrix_draw_circle(canvas.get(), 3, 3, -2, 0x000000FFu);
    EXPECT_EQ(canvas.ink(), (Rows{".......", "...#...", ".......", ".#...#.", ".......", "...#...", "......."}));
}

TEST(FillCircle, RadiusTwoDiscAndClipping) {
    Canvas canvas(7, 7);
    velatrix_fill_circle(canvas.get(), 3, 3, 2, kHalfBlack);
    EXPECT_EQ(canvas.layers(), (Rows{
                                   ".......",
                                   "...1...",
                                   "..111..",
                                   ".11111.",
                                   "..111..",
                                   "...1...",
                                   ".......",
                               }));
    Canvas corner(3, 3);
    velatrix_fill_circle(corner.get(), 0, 0, 2, kHalfBlack);
    EXPECT_EQ(corner.layers(), (Rows{"111", "11.", "1.."}));
    Canvas none(3, 3);
    velatrix_fill_circle(none.get(), 1, 1, -1, kHalfBlack);
    EXPECT_EQ(none.layers(), (Rows{"...", "...", "..."}));
}

TEST(DrawEllipse, EvenHeightEllipse) {
    Canvas canvas(7, 5);
    velatrix_draw_ellipse(canvas.get(), 0, 0, 6, 4, kHalfBlack);
    EXPECT_EQ(canvas.layers(), (Rows{
                                   "..121..",
                                   ".1...1.",
                                   "2.....2",
                                   ".1...1.",
                                   "..121..",
                               }));
}

TEST(DrawEllipse, OddHeightEllipseWithCornersEitherWayRound) {
    const Rows expected = {
        ".121.",
        "1...1",
        "1...1",
        ".121.",
    };
    Canvas forward(5, 4), reversed(5, 4);
    velatrix_draw_ellipse(forward.get(), 0, 0, 4, 3, kHalfBlack);
    velatrix_draw_ellipse(reversed.get(), 4, 3, 0, 0, kHalfBlack);
    EXPECT_EQ(forward.layers(), expected);
    EXPECT_EQ(reversed.layers(), expected);
}

TEST(DrawEllipse, FlatEllipseTailFinishesTheSides) {
    // Two pixels wide: the main walk stops after one round at the middle row
    // and the tail adds rows 1 and 3; it stops short of rows 0 and 4.
    Canvas canvas(2, 5);
    velatrix_draw_ellipse(canvas.get(), 0, 0, 1, 4, kHalfBlack);
    EXPECT_EQ(canvas.layers(), (Rows{"..", "11", "44", "11", ".."}));
}

TEST(FillEllipse, CentreAndCorner) {
    Canvas canvas(7, 5);
    velatrix_fill_ellipse(canvas.get(), 3, 2, 6, 4, kHalfBlack);
    EXPECT_EQ(canvas.layers(), (Rows{
                                   "...1...",
                                   ".11111.",
                                   "1111111",
                                   ".11111.",
                                   "...1...",
                               }));
    // A corner left of the centre collapses the x radius to 0: a column.
    Canvas column(7, 5);
    velatrix_fill_ellipse(column.get(), 3, 2, 0, 4, kHalfBlack);
    EXPECT_EQ(column.layers(), (Rows{"...1...", "...1...", "...1...", "...1...", "...1..."}));
}

TEST(FillEllipse, ThirtyTwoBitProductsWrapAsTheyDo) {
    // Radius 256: rx^2 * ry^2 = 2^32 wraps to 0, so only the centre, where
    // the left side is 0 as well, passes the test.
    Canvas small(9, 9);
    velatrix_fill_ellipse(small.get(), 4, 4, 260, 260, 0x000000FFu);
    EXPECT_EQ(small.ink(), (Rows{".........", ".........", ".........", ".........", "....#....", ".........",
                                 ".........", ".........", "........."}));
    // Radius 300: 8.1e9 wraps to a negative bound that no pixel near the
    // centre reaches, so nothing shows although the disc covers the bitmap.
    Canvas empty(9, 9);
    velatrix_fill_ellipse(empty.get(), 4, 4, 304, 304, 0x000000FFu);
    for (const std::string& row : empty.ink()) EXPECT_EQ(row, ".........");
}

TEST(DrawRectangle, CornersAreSetTwice) {
    Canvas canvas(6, 5);
    velatrix_draw_rectangle(canvas.get(), 1, 1, 4, 3, kHalfBlack);
    EXPECT_EQ(canvas.layers(), (Rows{"......", ".2112.", ".1..1.", ".2112.", "......"}));
}

TEST(DrawRectangle, ReversedCornersCollapseToTheFirstCorner) {
    // x1 < x0: only column x0 between y0 and y1; its ends belong to the
    // rows and to both sides, so they are set three times, the rest twice.
    Canvas canvas(5, 5);
    velatrix_draw_rectangle(canvas.get(), 2, 1, 0, 3, kHalfBlack);
    EXPECT_EQ(canvas.layers(), (Rows{".....", "..3..", "..2..", "..3..", "....."}));
    // Both reversed: a single pixel set four times.
    Canvas point(5, 5);
    velatrix_draw_rectangle(point.get(), 3, 3, 0, 0, kHalfBlack);
    EXPECT_EQ(point.layers(), (Rows{".....", ".....", ".....", "...4.", "....."}));
}

TEST(DrawThickRectangle, BandsGrowInwardsAndOverlapInTheCorners) {
    Canvas canvas(7, 6);
    velatrix_draw_thick_rectangle(canvas.get(), 0, 0, 6, 5, 2, kHalfBlack);
    EXPECT_EQ(canvas.layers(), (Rows{
                                   "2211122",
                                   "2211122",
                                   "11...11",
                                   "11...11",
                                   "2211122",
                                   "2211122",
                               }));
    // Thicker than half the rectangle: the bands cross each other.
    Canvas crossed(4, 3);
    velatrix_draw_thick_rectangle(crossed.get(), 0, 0, 3, 2, 2, kHalfBlack);
    EXPECT_EQ(crossed.layers(), (Rows{"2222", "3333", "2222"}));
    Canvas none(4, 3);
    velatrix_draw_thick_rectangle(none.get(), 0, 0, 3, 2, 0, kHalfBlack);
    EXPECT_EQ(none.layers(), (Rows{"....", "....", "...."}));
}

TEST(FillRectangle, InclusiveCornersAndCollapse) {
    Canvas canvas(5, 4);
    velatrix_fill_rectangle(canvas.get(), 1, 1, 3, 2, kHalfBlack);
    EXPECT_EQ(canvas.layers(), (Rows{".....", ".111.", ".111.", "....."}));
    Canvas collapsed(5, 4);
    velatrix_fill_rectangle(collapsed.get(), 3, 2, 1, 0, kHalfBlack);
    EXPECT_EQ(collapsed.layers(), (Rows{".....", ".....", "...1.", "....."}));
}

}  // namespace
}  // namespace velatrix::testing
