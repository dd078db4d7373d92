// The error-term walks of lines and ellipses, with and without shortcuts.
//
// A walk visits every pixel between its end points, so a line from far
// outside the bitmap would spend billions of steps drawing nothing. The
// fast walk skips those steps in closed form and stops once it has left the
// bitmap for good; the reference walk takes every step. Both must produce
// the same pixels, which the tests check.
#pragma once

#include <cstdint>

#include "velatrix/bitmap.h"

namespace velatrix::graphics {

enum class Walk { kFast, kReference };

// Which tie rules a walk uses. With p = |dx|, q = |dy| and an error term
// err = p - q - a*q + b*p after a x steps and b y steps:
//  kPlain:  x step when 2*err >= -q, y step when 2*err <= p (the one-pixel line);
//  kShaded: x step when 2*err >= -p, y step when 2*err <= q (anti-aliased and thick lines).
enum class Rules { kPlain, kShaded };

struct WalkState {
    int64_t x, y, err;
};

// Moves a walk from its first point past the steps whose pixels, and
// everything drawn up to `margin` pixels ahead of them along the major axis,
// lie before the bitmap. Returns false when the whole line lies there.
bool skip_approach(const velatrix_bitmap* bitmap, WalkState& state, int64_t p, int64_t q, int64_t sx, int64_t sy,
                   int64_t margin, Rules rules);

void walk_line(velatrix_bitmap* bitmap, int64_t x0, int64_t y0, int64_t x1, int64_t y1, uint32_t color, Walk walk);
void walk_aa_line(velatrix_bitmap* bitmap, int64_t x0, int64_t y0, int64_t x1, int64_t y1, uint32_t color,
                  Walk walk);
void walk_thick_line(velatrix_bitmap* bitmap, int64_t x0, int64_t y0, int64_t x1, int64_t y1, uint32_t color,
                     float width, bool anti_aliased, Walk walk);
void walk_ellipse(velatrix_bitmap* bitmap, int64_t x0, int64_t y0, int64_t x1, int64_t y1, uint32_t color,
                  Walk walk);

}  // namespace velatrix::graphics
