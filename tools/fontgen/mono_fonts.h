// The fixed-cell tables rendered from a TrueType mono typeface.
#pragma once

#include "freetype_face.h"
#include "glyph_image.h"

#include <array>

namespace fontgen {

struct MonoCell {
    const char* name;
    int pixel_size;
    int width;
    int height;
    int descent;
};

// The cells are fixed rather than taken from the typeface's metrics so that
// every glyph of a table has the same box and the text layout stays simple.
inline constexpr std::array<MonoCell, 4> kMonoCells{{
    {"ubuntu_mono_e_12pt", 12, 6, 12, 2},
    {"ubuntu_mono_e_16pt", 16, 8, 17, 3},
    {"ubuntu_mono_e_24pt", 24, 12, 25, 5},
    {"ubuntu_mono_e_30pt", 30, 15, 31, 6},
}};

// Renders every code point into the cell, clipped to it. Code points the
// primary typeface lacks come from the fallback one at the same height,
// narrowed until their ink fits the cell's width, and centred in it.
FontTable render_mono_font(const Face& primary, const Face& fallback, const MonoCell& cell,
                           const std::vector<std::int32_t>& code_points);

}  // namespace fontgen
