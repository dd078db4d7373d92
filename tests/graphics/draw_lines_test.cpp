// Lines: anti-aliased shading and the edge cases of the walks. Their
// pixel maps are in draw_shapes_test's table; the shading here was worked
// out by hand by stepping the error-term walks on paper.
#include <gtest/gtest.h>

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

TEST(DrawAaLine, EachPixelGetsTheAlphaOfItsCoverage) {
    const struct {
        const char* name;
        void (*draw)(velatrix_bitmap*);
        Alphas alphas;
    } kCases[] = {
        // The colour's own alpha is ignored.
        {"shallow line shades both neighbours",
         [](velatrix_bitmap* b) { velatrix_draw_aa_line(b, 0, 0, 4, 2, 0x00000033u); },
         {{255, 128, 0, 0, 0}, {0, 128, 255, 128, 0}, {0, 0, 0, 128, 255}}},
        {"gentler slope", [](velatrix_bitmap* b) { velatrix_draw_aa_line(b, 0, 0, 3, 1, 0x000000FFu); },
         {{255, 170, 85, 0}, {0, 85, 170, 255}}},
        {"single point is opaque", [](velatrix_bitmap* b) { velatrix_draw_aa_line(b, 1, 1, 1, 1, 0x00000010u); },
         {{0, 0, 0}, {0, 255, 0}, {0, 0, 0}}},
        {"thick line of two shades its edge",
         [](velatrix_bitmap* b) { velatrix_draw_thick_aa_line(b, 1, 2, 5, 2, 0x00000001u, 2.0f); },
         {{0, 0, 0, 0, 0, 0, 0}, {0, 127, 127, 127, 127, 127, 0}, {0, 255, 255, 255, 255, 255, 0}, {0, 0, 0, 0, 0, 0, 0}}},
        // Width 1 on the diagonal: neighbours at 3/sqrt(18) get 255 * 0.2929.
        {"thick diagonal of one", [](velatrix_bitmap* b) { velatrix_draw_thick_aa_line(b, 0, 0, 3, 3, 0x000000FFu, 1.0f); },
         {{255, 74, 0, 0}, {74, 255, 74, 0}, {0, 74, 255, 74}, {0, 0, 74, 255}}},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        Canvas canvas(static_cast<int>(c.alphas[0].size()), static_cast<int>(c.alphas.size()));
        c.draw(canvas.get());
        expect_alphas(canvas, c.alphas);
    }
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
