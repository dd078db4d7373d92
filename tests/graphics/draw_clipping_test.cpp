// Clipping: a shape drawn across the edges of a small bitmap must leave
// exactly the pixels it leaves in the same place on a bitmap large enough to
// hold all of it. This checks every shortcut a primitive takes at an edge
// (clipped loops, walks that stop once they have left the bitmap) against
// the plain walk, with translucent colours so that a pixel set once too
// often or too rarely shows.
#include <gtest/gtest.h>

#include <climits>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "draw_canvas.h"
#include "velatrix/bitmap.h"

namespace velatrix::testing {
namespace {

using Rows = std::vector<std::string>;

constexpr int kWidth = 12, kHeight = 10, kMargin = 40;

struct Case {
    std::string name;
    // Draws with every coordinate moved by (ox, oy).
    std::function<void(velatrix_bitmap*, int ox, int oy)> draw;
};

std::vector<Case> cases() {
    const uint32_t c = kHalfBlack;
    std::vector<Case> list = {
        {"line across left and right", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_line(b, ox - 20, oy + 3, ox + 30, oy + 7, c); }},
        {"line across top and bottom", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_line(b, ox + 8, oy + 25, ox + 5, oy - 30, c); }},
        {"line out through a corner", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_line(b, ox + 6, oy + 5, ox - 25, oy - 20, c); }},
        {"aa line across", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_aa_line(b, ox - 15, oy - 12, ox + 25, oy + 20, 0x203040FFu); }},
        {"aa line steep", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_aa_line(b, ox + 12, oy + 30, ox, oy - 25, 0x203040FFu); }},
        {"thick line 4", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_thick_line(b, ox - 20, oy + 1, ox + 30, oy + 9, c, 4.0f); }},
        {"thick line 7 steep", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_thick_line(b, ox + 9, oy + 30, ox + 1, oy - 30, c, 7.0f); }},
        {"thick line 2.5 up-left", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_thick_line(b, ox + 25, oy + 22, ox - 20, oy - 9, c, 2.5f); }},
        {"thick aa line 3", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_thick_aa_line(b, ox - 20, oy - 20, ox + 30, oy + 15, 0x203040FFu, 3.0f); }},
        {"thick aa line 6 steep", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_thick_aa_line(b, ox + 3, oy - 25, ox + 10, oy + 30, 0x203040FFu, 6.0f); }},
        {"thick aa line 0.5", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_thick_aa_line(b, ox + 20, oy + 2, ox - 10, oy + 8, 0x203040FFu, 0.5f); }},
        {"circle at a corner", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_circle(b, ox, oy, 5, c); }},
        {"circle larger than the bitmap", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_circle(b, ox + 6, oy + 5, 8, c); }},
        {"circle off the far corner", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_circle(b, ox + 13, oy + 11, 7, c); }},
        {"disc at the left edge", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_fill_circle(b, ox - 3, oy + 4, 6, c); }},
        {"disc over everything", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_fill_circle(b, ox + 6, oy + 5, 20, c); }},
        {"ellipse over the top left", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_ellipse(b, ox - 5, oy - 3, ox + 8, oy + 6, c); }},
        {"ellipse across the bottom", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_ellipse(b, ox - 4, oy - 6, ox + 22, oy + 8, c); }},
        {"flat ellipse across", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_ellipse(b, ox + 4, oy - 20, ox + 5, oy + 25, c); }},
        {"filled ellipse bottom right", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_fill_ellipse(b, ox + 11, oy + 9, ox + 30, oy + 12, c); }},
        {"filled ellipse over everything", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_fill_ellipse(b, ox + 6, oy + 5, ox + 35, oy + 30, c); }},
        {"rectangle with one side inside", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_rectangle(b, ox - 3, oy - 3, ox + 9, oy + 12, c); }},
        {"rectangle over the top", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_rectangle(b, ox + 2, oy - 5, ox + 8, oy + 4, c); }},
        {"thick rectangle", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_draw_thick_rectangle(b, ox - 2, oy - 2, ox + 13, oy + 11, 3, c); }},
        {"filled rectangle", [=](velatrix_bitmap* b, int ox, int oy) { velatrix_fill_rectangle(b, ox - 5, oy + 4, ox + 5, oy + 20, c); }},
        {"clear", [=](velatrix_bitmap* b, int, int) { velatrix_bitmap_clear(b, c); }},
    };
    return list;
}

// Compares the small bitmap with the window of the large one it stands for.
void expect_same_window(const Canvas& small, const Canvas& large, int ox, int oy, const std::string& name) {
    int differences = 0;
    for (int y = 0; y < kHeight; ++y) {
        for (int x = 0; x < kWidth; ++x) {
            if (small.at(x, y) != large.at(x + ox, y + oy) && ++differences <= 3) {
                ADD_FAILURE() << name << ": pixel " << x << "," << y << " is " << std::hex << small.at(x, y)
                              << ", unclipped " << large.at(x + ox, y + oy);
            }
        }
    }
    EXPECT_EQ(differences, 0) << name;
}

TEST(DrawClipping, ClippedShapesMatchTheUnclippedOnes) {
    for (const Case& c : cases()) {
        Canvas small(kWidth, kHeight);
        Canvas large(kWidth + 2 * kMargin, kHeight + 2 * kMargin);
        c.draw(small.get(), 0, 0);
        if (c.name == "clear") {
            velatrix_fill_rectangle(large.get(), kMargin, kMargin, kMargin + kWidth - 1, kMargin + kHeight - 1,
                                    kHalfBlack);
        } else {
            c.draw(large.get(), kMargin, kMargin);
        }
        expect_same_window(small, large, kMargin, kMargin, c.name);
        // Something reached the small bitmap, or the case proves nothing.
        EXPECT_NE(small.ink(), Canvas(kWidth, kHeight).ink()) << c.name;
    }
}

TEST(DrawClipping, CopyClipsLikeTheUnclippedCopy) {
    Canvas source(6, 6);
    for (int i = 0; i < 6; ++i) velatrix_draw_line(source.get(), 0, i, 5, 5 - i, (0x10u * (i + 1)) << 24 | 0xFFu);
    Canvas small(kWidth, kHeight);
    Canvas large(kWidth + 2 * kMargin, kHeight + 2 * kMargin);
    velatrix_bitmap_copy(source.get(), small.get(), -2, -1, -3, 7, 20, 20);
    velatrix_bitmap_copy(source.get(), large.get(), -2, -1, kMargin - 3, kMargin + 7, 20, 20);
    expect_same_window(small, large, kMargin, kMargin, "copy");
}

TEST(DrawClipping, HugeAreasOnlyVisitTheBitmap) {
    // These finish at once because only the part on the bitmap is walked.
    Canvas filled(kWidth, kHeight);
    velatrix_fill_rectangle(filled.get(), INT_MIN, INT_MIN, INT_MAX, INT_MAX, kHalfBlack);
    Canvas disc(kWidth, kHeight);
    velatrix_fill_circle(disc.get(), 5, 5, INT_MAX, kHalfBlack);
    // Radius 65536: rx^2 wraps to 0, so every pixel passes 0 <= 0.
    Canvas ellipse(kWidth, kHeight);
    velatrix_fill_ellipse(ellipse.get(), 0, 0, 65536, 65536, kHalfBlack);
    for (const Canvas* canvas : {&filled, &disc, &ellipse}) {
        for (const std::string& row : canvas->layers()) EXPECT_EQ(row, std::string(kWidth, '1'));
    }
    // Four bands, each as thick as the whole bitmap.
    Canvas thick(kWidth, kHeight);
    velatrix_draw_thick_rectangle(thick.get(), 0, 0, kWidth - 1, kHeight - 1, INT_MAX, kHalfBlack);
    for (const std::string& row : thick.layers()) EXPECT_EQ(row, std::string(kWidth, '4'));
    Canvas outline(kWidth, kHeight);
    velatrix_draw_rectangle(outline.get(), INT_MIN, -1, INT_MAX, kHeight, kHalfBlack);
    for (const std::string& row : outline.layers()) EXPECT_EQ(row, std::string(kWidth, '.'));
}

}  // namespace
}  // namespace velatrix::testing
