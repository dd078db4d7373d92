// Shared pieces of the font tests: the built-in tables by name, glyph
// pictures in rows of '#' and '.', and code point strings.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "velatrix/fonts.h"

namespace velatrix::testing {

struct BuiltInFont {
    const char* name;
    const velatrix_font* font;
};

inline const std::vector<BuiltInFont>& built_in_fonts() {
    static const std::vector<BuiltInFont> fonts = {
        {"velatrix_default", &velatrix_default},     {"ubuntu_mono_e_12pt", &ubuntu_mono_e_12pt},
        {"ubuntu_mono_e_16pt", &ubuntu_mono_e_16pt}, {"ubuntu_mono_e_24pt", &ubuntu_mono_e_24pt},
        {"ubuntu_mono_e_30pt", &ubuntu_mono_e_30pt},
    };
    return fonts;
}

// The glyph's pixels read straight from its bit stream.
inline std::vector<std::string> glyph_rows(const velatrix_glyph& glyph) {
    std::vector<std::string> rows;
    int bit = 0;
    for (int y = 0; y < glyph.height; ++y) {
        std::string row;
        for (int x = 0; x < glyph.width; ++x, ++bit) row += (glyph.bitmap[bit / 8] >> (7 - bit % 8)) & 1 ? '#' : '.';
        rows.push_back(row);
    }
    return rows;
}

// A 0-terminated code point string.
inline std::vector<int32_t> code_points(std::u32string_view text) {
    std::vector<int32_t> out(text.begin(), text.end());
    out.push_back(0);
    return out;
}

}  // namespace velatrix::testing
