// The character repertoire shared by every built-in font.
#pragma once

#include <cstdint>
#include <vector>

namespace fontgen {

// The 527 code points of every mono table, ascending from the space.
std::vector<std::int32_t> mono_code_points();

// The default face's 529: code point 0 (the fallback glyph) first, then the
// mono set with the figure space added in its place.
std::vector<std::int32_t> default_code_points();

// The figure space is blank and exactly as wide as a digit, so columns of
// numbers line up even in the proportional face.
inline constexpr std::int32_t kFigureSpace = 8199;

}  // namespace fontgen
