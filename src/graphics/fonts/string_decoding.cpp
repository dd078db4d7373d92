// Decoding through ICU's converters: two passes over the text, one to count
// the code points and one to store them, so the array is allocated once.
#include "graphics/fonts/string_decoding.h"

#include <unicode/ucnv.h>

#include "debug/log.h"
#include "graphics/fonts/glyph_drawing.h"
#include "graphics/fonts/text_layout.h"

namespace velatrix::fonts {
namespace {

struct CloseConverter {
    void operator()(UConverter* converter) const { ucnv_close(converter); }
};
using Converter = std::unique_ptr<UConverter, CloseConverter>;

// Walks the text one code point at a time up to a NUL character or the end,
// handing each one to `take`. False as soon as ICU reports anything at all,
// a warning included: a half-understood string is not drawn.
template <typename Take>
bool walk_code_points(UConverter* converter, const char* text, int32_t length, Take take) {
    ucnv_reset(converter);
    const char* source = text;
    const char* const end = text + length;
    while (source < end) {
        UErrorCode status = U_ZERO_ERROR;
        const UChar32 code_point = ucnv_getNextUChar(converter, &source, end, &status);
        if (status != U_ZERO_ERROR) return false;
        if (code_point == 0) break;
        take(code_point);
    }
    return true;
}

}  // namespace

CodePoints decode_text(const char* text, int32_t length, const char* encoding, int32_t* count) {
    if (count != nullptr) *count = 0;
    if (length < 0 || (text == nullptr && length > 0)) return nullptr;
    UErrorCode status = U_ZERO_ERROR;
    const Converter converter(ucnv_open(encoding != nullptr ? encoding : kDefaultEncoding, &status));
    if (U_FAILURE(status) || converter == nullptr) return nullptr;
    if (length == 0) text = "";

    int32_t total = 0;
    if (!walk_code_points(converter.get(), text, length, [&](UChar32) { ++total; })) return nullptr;

    CodePoints code_points(static_cast<int32_t*>(std::calloc(static_cast<std::size_t>(total) + 1, sizeof(int32_t))));
    if (code_points == nullptr) return nullptr;
    int32_t stored = 0;
    const bool decoded = walk_code_points(converter.get(), text, length, [&](UChar32 code_point) {
        if (stored < total) code_points[stored++] = code_point;
    });
    if (!decoded) return nullptr;
    if (count != nullptr) *count = stored;
    return code_points;
}

std::optional<int32_t> measure_text_width(const velatrix_font* font, const char* text, int32_t length,
                                          const char* encoding) {
    const CodePoints code_points = decode_text(text, length, encoding);
    if (code_points == nullptr) return std::nullopt;
    return clamp_to_int32(measure_line(font, code_points.get()).width);
}

std::optional<int32_t> measure_text_height(const velatrix_font* font, const char* text, int32_t length,
                                           const char* encoding) {
    const CodePoints code_points = decode_text(text, length, encoding);
    if (code_points == nullptr) return std::nullopt;
    return clamp_to_int32(measure_line(font, code_points.get()).height());
}

}  // namespace velatrix::fonts

extern "C" int32_t* parse_string_encoding(const char* text, int32_t length, const char* encoding,
                                          int32_t* count_out) {
    VELATRIX_TRACE_FUNCTION();
    return velatrix::fonts::decode_text(text, length, encoding, count_out).release();
}
