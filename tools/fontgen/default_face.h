// The library's own small proportional face. Its pixels live in a text file
// (rows of '#' and '.') that people review and tune by hand; the generator
// turns that file into the table.
#pragma once

#include "freetype_face.h"
#include "glyph_image.h"

#include <string>

namespace fontgen {

// A first draft of the face from the X11 misc-fixed bitmap fonts in
// `misc_dir` (4x6.pcf.gz, 5x8.pcf.gz): letter shapes of 5x8 brought down to
// a cap height of 5, the small 4x6 glyphs where that does not work, every
// glyph cropped to its ink. Glyphs that needed the 4x6 fallback are listed on
// standard error so they can be looked at by hand.
std::vector<CodedGlyph> derive_default_face(const FreeTypeLibrary& library, const std::string& misc_dir);

void write_text_form(const std::vector<CodedGlyph>& glyphs, const std::string& path);

// Reads the text form; throws with the line number on anything malformed.
std::vector<CodedGlyph> read_text_form(const std::string& path);

// Checks the glyphs against the default repertoire and orders them.
FontTable default_face_table(std::vector<CodedGlyph> glyphs);

}  // namespace fontgen
