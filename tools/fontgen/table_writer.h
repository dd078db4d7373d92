// Writes a font table as a C++ source file of constant arrays.
#pragma once

#include "glyph_image.h"

#include <string>

namespace fontgen {

// Packs a glyph into the record's bit stream: rows from the top, most
// significant bit first, rows not padded to byte boundaries.
std::vector<std::uint8_t> pack_bits(const GlyphImage& image);

void write_table_source(const FontTable& table, const std::string& path);

}  // namespace fontgen
