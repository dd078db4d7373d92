// Lines, circles, ellipses and rectangles. The expected maps were worked
// out by hand by stepping each rasteriser on paper; digit maps count how many times
// a pixel was set (each set of a translucent colour blends once more).
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <string>
#include <vector>

#include "draw_canvas.h"
#include "velatrix/bitmap.h"

namespace velatrix::testing {
namespace {

using Rows = std::vector<std::string>;

// One drawing on a fresh canvas and the map it must leave: `layers` counts
// how often each pixel was set in the translucent kHalfBlack, else `ink`
// shows which pixels are dark after an opaque black.
struct Shape {
    const char* name;
    int width, height;
    void (*draw)(velatrix_bitmap*);
    Rows expected;
    bool opaque = false;  // compare ink() instead of layers()
};

const Shape kShapes[] = {
    {"CircleOfRadiusZeroSetsTheCentreFourTimes", 3, 3,
     [](velatrix_bitmap* b) { velatrix_draw_circle(b, 1, 1, 0, kHalfBlack); }, {"...", ".4.", "..."}},
    {"CircleOfRadiusTwo", 7, 7, [](velatrix_bitmap* b) { velatrix_draw_circle(b, 3, 3, 2, kHalfBlack); },
     {".......", "..111..", ".1...1.", ".1...1.", ".1...1.", "..111..", "......."}},
    // The walk starts at x = 2 > 0 and makes its single round.
    {"CircleOfNegativeRadiusSetsFourPointsOnce", 7, 7,
     [](velatrix_bitmap* b) { velatrix_draw_circle(b, 3, 3, -2, 0x000000FFu); },
     {".......", "...#...", ".......", ".#...#.", ".......", "...#...", "......."}, true},
    {"DiscOfRadiusTwo", 7, 7, [](velatrix_bitmap* b) { velatrix_fill_circle(b, 3, 3, 2, kHalfBlack); },
     {".......", "...1...", "..111..", ".11111.", "..111..", "...1...", "......."}},
    {"DiscClippedAtTheCorner", 3, 3, [](velatrix_bitmap* b) { velatrix_fill_circle(b, 0, 0, 2, kHalfBlack); },
     {"111", "11.", "1.."}},
    {"DiscOfNegativeRadiusIsEmpty", 3, 3, [](velatrix_bitmap* b) { velatrix_fill_circle(b, 1, 1, -1, kHalfBlack); },
     {"...", "...", "..."}},
    {"EllipseOfEvenHeight", 7, 5, [](velatrix_bitmap* b) { velatrix_draw_ellipse(b, 0, 0, 6, 4, kHalfBlack); },
     {"..121..", ".1...1.", "2.....2", ".1...1.", "..121.."}},
    {"EllipseOfOddHeight", 5, 4, [](velatrix_bitmap* b) { velatrix_draw_ellipse(b, 0, 0, 4, 3, kHalfBlack); },
     {".121.", "1...1", "1...1", ".121."}},
    {"EllipseWithItsCornersReversed", 5, 4,
     [](velatrix_bitmap* b) { velatrix_draw_ellipse(b, 4, 3, 0, 0, kHalfBlack); },
     {".121.", "1...1", "1...1", ".121."}},
    // Two pixels wide: the main walk stops after one round at the middle row
    // and the tail adds rows 1 and 3; it stops short of rows 0 and 4.
    {"FlatEllipseTailFinishesTheSides", 2, 5,
     [](velatrix_bitmap* b) { velatrix_draw_ellipse(b, 0, 0, 1, 4, kHalfBlack); }, {"..", "11", "44", "11", ".."}},
    {"FilledEllipseFromCentreAndCorner", 7, 5,
     [](velatrix_bitmap* b) { velatrix_fill_ellipse(b, 3, 2, 6, 4, kHalfBlack); },
     {"...1...", ".11111.", "1111111", ".11111.", "...1..."}},
    // Radius 256: rx^2 * ry^2 = 2^32 wraps to 0, so only the centre, where
    // the left side is 0 as well, passes the test.
    {"FilledEllipseWhoseProductWrapsToZeroIsItsCentre", 9, 9,
     [](velatrix_bitmap* b) { velatrix_fill_ellipse(b, 4, 4, 260, 260, 0x000000FFu); },
     {".........", ".........", ".........", ".........", "....#....", ".........", ".........", ".........",
      "........."},
     true},
    // Radius 300: 8.1e9 wraps to a negative bound that no pixel near the
    // centre reaches, so nothing shows although the disc covers the bitmap.
    {"FilledEllipseWhoseProductWrapsNegativeIsEmpty", 9, 9,
     [](velatrix_bitmap* b) { velatrix_fill_ellipse(b, 4, 4, 304, 304, 0x000000FFu); }, Rows(9, "........."), true},
    // A corner left of the centre collapses the x radius to 0: a column.
    {"FilledEllipseWithACornerLeftOfTheCentreIsAColumn", 7, 5,
     [](velatrix_bitmap* b) { velatrix_fill_ellipse(b, 3, 2, 0, 4, kHalfBlack); },
     {"...1...", "...1...", "...1...", "...1...", "...1..."}},
    {"RectangleCornersAreSetTwice", 6, 5,
     [](velatrix_bitmap* b) { velatrix_draw_rectangle(b, 1, 1, 4, 3, kHalfBlack); },
     {"......", ".2112.", ".1..1.", ".2112.", "......"}},
    // x1 < x0: only column x0 between y0 and y1; its ends belong to the rows
    // and to both sides, so they are set three times, the rest twice.
    {"RectangleWithReversedXIsItsFirstColumn", 5, 5,
     [](velatrix_bitmap* b) { velatrix_draw_rectangle(b, 2, 1, 0, 3, kHalfBlack); },
     {".....", "..3..", "..2..", "..3..", "....."}},
    {"RectangleReversedBothWaysIsOnePixelSetFourTimes", 5, 5,
     [](velatrix_bitmap* b) { velatrix_draw_rectangle(b, 3, 3, 0, 0, kHalfBlack); },
     {".....", ".....", ".....", "...4.", "....."}},
    {"ThickRectangleBandsGrowInwardsAndOverlapInTheCorners", 7, 6,
     [](velatrix_bitmap* b) { velatrix_draw_thick_rectangle(b, 0, 0, 6, 5, 2, kHalfBlack); },
     {"2211122", "2211122", "11...11", "11...11", "2211122", "2211122"}},
    // Thicker than half the rectangle: the bands cross each other.
    {"ThickRectangleBandsCross", 4, 3,
     [](velatrix_bitmap* b) { velatrix_draw_thick_rectangle(b, 0, 0, 3, 2, 2, kHalfBlack); },
     {"2222", "3333", "2222"}},
    {"ThickRectangleOfThicknessZeroIsEmpty", 4, 3,
     [](velatrix_bitmap* b) { velatrix_draw_thick_rectangle(b, 0, 0, 3, 2, 0, kHalfBlack); },
     {"....", "....", "...."}},
    {"FilledRectangleHasInclusiveCorners", 5, 4,
     [](velatrix_bitmap* b) { velatrix_fill_rectangle(b, 1, 1, 3, 2, kHalfBlack); },
     {".....", ".111.", ".111.", "....."}},
    {"FilledRectangleWithReversedCornersCollapses", 5, 4,
     [](velatrix_bitmap* b) { velatrix_fill_rectangle(b, 3, 2, 1, 0, kHalfBlack); },
     {".....", ".....", "...1.", "....."}},
    // Lines. A single point is set once; a shallow line sets every pixel
    // once, whichever end it starts from.
    {"LineOfOnePoint", 3, 3, [](velatrix_bitmap* b) { velatrix_draw_line(b, 1, 1, 1, 1, kHalfBlack); },
     {"...", ".1.", "..."}},
    {"LineShallow", 6, 3, [](velatrix_bitmap* b) { velatrix_draw_line(b, 0, 0, 5, 2, kHalfBlack); },
     {"11....", "..11..", "....11"}},
    {"LineShallowBackwards", 6, 3, [](velatrix_bitmap* b) { velatrix_draw_line(b, 5, 2, 0, 0, kHalfBlack); },
     {"##....", "..##..", "....##"}, true},
    {"LineSteep", 2, 5, [](velatrix_bitmap* b) { velatrix_draw_line(b, 0, 0, 1, 4, 0x000000FFu); },
     {"#.", "#.", ".#", ".#", ".#"}, true},
    // The single y step falls half way along, far beyond the bitmap.
    {"LineRunningFarOffEndsAtTheEdge", 10, 8,
     [](velatrix_bitmap* b) { velatrix_draw_line(b, 5, 5, INT_MAX - 10, 6, 0x000000FFu); },
     {"..........", "..........", "..........", "..........", "..........", ".....#####", "..........",
      ".........."},
     true},
    // A horizontal thick line walks with sy = -1, so the cross runs go upwards.
    {"ThickLineOfThree", 7, 5, [](velatrix_bitmap* b) { velatrix_draw_thick_line(b, 1, 2, 5, 2, 0x000000FFu, 3.0f); },
     {".......", ".#####.", ".#####.", ".......", "......."}, true},
    {"ThickLineOfFive", 7, 5, [](velatrix_bitmap* b) { velatrix_draw_thick_line(b, 1, 2, 5, 2, 0x000000FFu, 5.0f); },
     {".#####.", ".#####.", ".#####.", ".......", "......."}, true},
    // Width 2: the row above is only half covered, below the 0.9 cut.
    {"ThickLineOfTwo", 7, 5, [](velatrix_bitmap* b) { velatrix_draw_thick_line(b, 1, 2, 5, 2, 0x000000FFu, 2.0f); },
     {".......", ".......", ".#####.", ".......", "......."}, true},
    {"ThickVerticalLineGrowsTowardsSmallerX", 5, 5,
     [](velatrix_bitmap* b) { velatrix_draw_thick_line(b, 2, 0, 2, 4, 0x000000FFu, 3.0f); },
     {".##..", ".##..", ".##..", ".##..", ".##.."}, true},
    // Width 3: neighbours at distance 3/sqrt(18) pass, those at 6/sqrt(18) not.
    {"ThickDiagonalKeepsWellCoveredPixels", 4, 4,
     [](velatrix_bitmap* b) { velatrix_draw_thick_line(b, 0, 0, 3, 3, kHalfBlack, 3.0f); },
     {"11..", "111.", ".111", "..11"}},
    // Widths 1 and 2 keep only the centre line.
    {"ThickDiagonalOfOne", 4, 4, [](velatrix_bitmap* b) { velatrix_draw_thick_line(b, 0, 0, 3, 3, 0x000000FFu, 1.0f); },
     {"#...", ".#..", "..#.", "...#"}, true},
    {"ThickDiagonalOfTwo", 4, 4, [](velatrix_bitmap* b) { velatrix_draw_thick_line(b, 0, 0, 3, 3, 0x000000FFu, 2.0f); },
     {"#...", ".#..", "..#.", "...#"}, true},
    {"ThickAaLineRunningFarOffEndsAtTheEdge", 10, 8,
     [](velatrix_bitmap* b) { velatrix_draw_thick_aa_line(b, 0, 5, INT_MAX, 5, 0x000000FFu, 3.0f); },
     {"..........", "..........", "..........", "..........", "##########", "##########", "..........",
      ".........."},
     true},
    // Walking left, sy is -1 again: the run goes up to row 1.
    {"ThickLineRunningFarLeftEndsAtTheEdge", 10, 8,
     [](velatrix_bitmap* b) { velatrix_draw_thick_line(b, 9, 2, INT_MIN, 2, 0x000000FFu, 3.0f); },
     {"..........", "##########", "##########", "..........", "..........", "..........", "..........",
      ".........."},
     true},
};

TEST(DrawShapes, EveryDrawingLeavesItsMap) {
    for (const Shape& shape : kShapes) {
        SCOPED_TRACE(shape.name);
        Canvas canvas(shape.width, shape.height);
        shape.draw(canvas.get());
        EXPECT_EQ(shape.opaque ? canvas.ink() : canvas.layers(), shape.expected);
    }
}

// Shapes reaching far past the bitmap finish at once because only the part
// on the bitmap is walked; each visible pixel is set once per band.
TEST(DrawShapes, HugeAreasOnlyVisitTheBitmap) {
    const struct {
        const char* name;
        void (*draw)(velatrix_bitmap*);
        char layers;
    } kCases[] = {
        {"filled rectangle", [](velatrix_bitmap* b) { velatrix_fill_rectangle(b, INT_MIN, INT_MIN, INT_MAX, INT_MAX, kHalfBlack); }, '1'},
        {"disc", [](velatrix_bitmap* b) { velatrix_fill_circle(b, 5, 5, INT_MAX, kHalfBlack); }, '1'},
        // Radius 65536: rx^2 wraps to 0, so every pixel passes 0 <= 0.
        {"filled ellipse", [](velatrix_bitmap* b) { velatrix_fill_ellipse(b, 0, 0, 65536, 65536, kHalfBlack); }, '1'},
        // Four bands, each as thick as the whole bitmap.
        {"thick rectangle", [](velatrix_bitmap* b) { velatrix_draw_thick_rectangle(b, 0, 0, 11, 9, INT_MAX, kHalfBlack); }, '4'},
        {"outline around", [](velatrix_bitmap* b) { velatrix_draw_rectangle(b, INT_MIN, -1, INT_MAX, 10, kHalfBlack); }, '.'},
    };
    for (const auto& c : kCases) {
        Canvas canvas(12, 10);
        c.draw(canvas.get());
        EXPECT_EQ(canvas.layers(), Rows(10, std::string(12, c.layers))) << c.name;
    }
}

}  // namespace
}  // namespace velatrix::testing
