// One glyph as the generator handles it: a grid of ink pixels with its
// position against the baseline.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace fontgen {

struct GlyphImage {
    int width = 0;
    int height = 0;
    int descent = 0;                  // rows below the baseline
    std::vector<std::uint8_t> ink;    // width * height, row by row from the top, 1 = ink

    bool at(int x, int y) const { return ink[static_cast<std::size_t>(y * width + x)] != 0; }
    void set(int x, int y, bool on) { ink[static_cast<std::size_t>(y * width + x)] = on ? 1 : 0; }

    static GlyphImage blank(int width, int height, int descent)
    {
        GlyphImage g;
        g.width = width;
        g.height = height;
        g.descent = descent;
        g.ink.assign(static_cast<std::size_t>(width * height), 0);
        return g;
    }
};

// A glyph tagged with the code point it draws.
struct CodedGlyph {
    std::int32_t code_point = 0;
    GlyphImage image;
};

// A finished table, ready to be written out as source.
struct FontTable {
    std::string name;      // the C symbol, e.g. "ubuntu_mono_e_12pt"
    std::string origin;    // one line on where the pixels came from
    std::vector<CodedGlyph> glyphs;
};

}  // namespace fontgen
