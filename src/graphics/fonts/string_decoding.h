// Caller text in a named character encoding, decoded into code points.
#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <optional>

#include "velatrix/fonts.h"

namespace velatrix::fonts {

// The encoding a caller's text is in when it names none.
inline constexpr const char* kDefaultEncoding = "utf-8";

struct FreeCodePoints {
    void operator()(int32_t* code_points) const { std::free(code_points); }
};

// A 0-terminated code point array as parse_string_encoding returns it.
using CodePoints = std::unique_ptr<int32_t[], FreeCodePoints>;

// Decodes the text; null when the encoding is unknown or the text does not
// decode. The count is the number of code points before the terminating 0.
CodePoints decode_text(const char* text, int32_t length, const char* encoding, int32_t* count = nullptr);

// Decodes and measures text in a font: the width and height the drawing
// functions would cover. Nothing when the text does not decode.
std::optional<int32_t> measure_text_width(const velatrix_font* font, const char* text, int32_t length,
                                          const char* encoding);
std::optional<int32_t> measure_text_height(const velatrix_font* font, const char* text, int32_t length,
                                           const char* encoding);

}  // namespace velatrix::fonts
