// Writes a font table as a C++ source file of constant arrays.
#pragma once

#include "glyph_image.h"

#include <string>

namespace fontgen {

// Packs a glyph into the record's bit stream: rows from the top, most
// significant bit first, rows not padded to byte boundaries.
std::vector<std::uint8_t> pack_bits(const GlyphImage& image);

// Writes the table. With a shared lookup name the table refers to that
// array (declared in src/graphics/fonts/mono_code_points.h) instead of
// carrying its own copy of the code points.
void write_table_source(const FontTable& table, const std::string& path, const std::string& shared_lookup = "");

// Writes the code-point array that the mono tables share.
void write_shared_lookup_source(const std::vector<std::int32_t>& code_points, const std::string& path);

}  // namespace fontgen
