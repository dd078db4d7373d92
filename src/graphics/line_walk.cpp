// Skipping the part of a line walk that lies before the bitmap.
//
// In a walk whose major axis is x (p >= q), every step moves x, under both
// tie rules; the y steps follow a floor formula in the step count. With
// t(i) the bound the y step of step i compares the y steps so far against,
// t rises by q / p <= 1 per step and starts in [-1, 0), so the y steps
// taken in the first n steps are floor(t(n - 1)) + 1:
//   plain:  floor((2nq - p) / 2p) + 1
//   shaded: floor((2nq + q - 2p) / 2p) + 1
// A walk along y is the same with the axes swapped.
#include "graphics/line_walk.h"

namespace velatrix::graphics {
namespace {

using Wide = __int128;

Wide floor_div(Wide a, Wide b) { return a >= 0 ? a / b : -((-a + b - 1) / b); }

int64_t minor_steps(int64_t n, int64_t major, int64_t minor, Rules rules) {
    const Wide numerator = rules == Rules::kPlain ? Wide{2} * n * minor - major
                                                  : Wide{2} * n * minor + minor - Wide{2} * major;
    return static_cast<int64_t>(floor_div(numerator, Wide{2} * major) + 1);
}

}  // namespace

bool skip_approach(const velatrix_bitmap* bitmap, WalkState& state, int64_t p, int64_t q, int64_t sx, int64_t sy,
                   int64_t margin, Rules rules) {
    if (p == 0 && q == 0) return true;
    const bool x_major = p >= q;
    const int64_t major = x_major ? p : q, minor = x_major ? q : p;
    const int64_t position = x_major ? state.x : state.y;
    const int64_t step = x_major ? sx : sy;
    const int64_t last = (x_major ? bitmap->width : bitmap->height) - 1;
    int64_t n = 0;
    if (step > 0 && position < -margin) n = -margin - position;
    if (step < 0 && position > last + margin) n = position - (last + margin);
    if (n == 0) return true;
    if (n > major) return false;
    const int64_t m = minor_steps(n, major, minor, rules);
    const int64_t a = x_major ? n : m, b = x_major ? m : n;
    state.x += a * sx;
    state.y += b * sy;
    state.err = static_cast<int64_t>(Wide{p} - q - Wide{a} * q + Wide{b} * p);
    return true;
}

}  // namespace velatrix::graphics
