/* Bitmap fonts, text measuring, drawing and decoding. */
#ifndef VELATRIX_FONTS_H
#define VELATRIX_FONTS_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

struct velatrix_bitmap;

/* Bytes of pixel data a glyph record holds: at most 1600 pixels at 1 bit. */
#define VELATRIX_GLYPH_BITMAP_SIZE 200

/* One glyph. The bitmap is width x height pixels, row by row from the top,
 * as one continuous bit stream (most significant bit first, rows not padded
 * to bytes); a set bit is ink. In coverage fonts (bits_per_pixel other than
 * 1) it holds one byte per pixel instead, 255 meaning no ink. */
typedef struct velatrix_glyph {
    uint8_t width;   /* also the advance before the 1-pixel gap */
    uint8_t height;
    uint8_t descent; /* rows below the baseline */
    uint8_t reserved;
    uint8_t byte_count; /* ceil(width * height / 8) */
    uint8_t padding[3];
    uint8_t bitmap[VELATRIX_GLYPH_BITMAP_SIZE];
} velatrix_glyph;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_glyph) == 208, velatrix_glyph_is_208_bytes);

/* A font table: `count` glyphs, glyphs[i] drawing the code point lookup[i];
 * lookup is in ascending order. */
typedef struct velatrix_font {
    int32_t bits_per_pixel;
    int32_t count;
    const int32_t* lookup;
    const velatrix_glyph* glyphs;
} velatrix_font;

/* The built-in fonts. velatrix_default is proportional and holds the
 * fallback glyph at code point 0; the mono fonts have fixed cells and no
 * fallback glyph. */
VELATRIX_API extern const velatrix_font velatrix_default;
VELATRIX_API extern const velatrix_font ubuntu_mono_e_12pt;
VELATRIX_API extern const velatrix_font ubuntu_mono_e_16pt;
VELATRIX_API extern const velatrix_font ubuntu_mono_e_24pt;
VELATRIX_API extern const velatrix_font ubuntu_mono_e_30pt;

/* The built-in font of that name ("velatrix_default", "ubuntu_mono_e_12pt",
 * ...), or null for any other name. */
VELATRIX_API const velatrix_font* velatrix_find_font(const char* name);

/* The glyph of the code point, else the font's code point 0 glyph, else null. */
VELATRIX_API const velatrix_glyph* enhanced_get_font_character(const velatrix_font* font, int32_t code_point);

/* Measures a 0-terminated code point string: every glyph's width plus a
 * 1-pixel gap; the height from the highest ascent to the deepest descent. */
VELATRIX_API int32_t enhanced_get_string_width(const velatrix_font* font, const int32_t* code_points);
VELATRIX_API int32_t enhanced_get_string_height(const velatrix_font* font, const int32_t* code_points);

/* Draws one glyph with its top-left corner at (x, y). */
VELATRIX_API void enhanced_draw_char(struct velatrix_bitmap* bitmap, const velatrix_font* font, int32_t code_point,
                                     int32_t x, int32_t y, uint32_t colour);

/* Draws a line of text whose top is at y; all baselines share one row. */
VELATRIX_API void enhanced_draw_string(struct velatrix_bitmap* bitmap, const velatrix_font* font,
                                       const int32_t* code_points, int32_t x, int32_t y, uint32_t colour);

/* Draws text in the box (x1, y1)-(x2, y2). horizontal: 0 left, 1 centre,
 * 2 right; vertical: 0 top, 1 middle, 2 bottom. Right and bottom alignment
 * step back from the box's edge by the number of characters, not by the
 * text's size. */
VELATRIX_API void enhanced_draw_string_aligned(struct velatrix_bitmap* bitmap, const velatrix_font* font,
                                               const int32_t* code_points, int32_t x1, int32_t y1, int32_t x2,
                                               int32_t y2, int32_t horizontal, int32_t vertical, uint32_t colour);

/* Number of code points before the terminating 0. */
VELATRIX_API int32_t u_strlen32(const int32_t* code_points);

/* Decodes `length` bytes of text in the named encoding into a newly
 * allocated, 0-terminated code point array (release it with free), stopping
 * at a NUL character. Null on an unknown encoding or undecodable text. */
VELATRIX_API int32_t* parse_string_encoding(const char* text, int32_t length, const char* encoding,
                                            int32_t* count_out);

/* The older font format: single-byte character codes in fixed cells. */
typedef struct velatrix_byte_font {
    int32_t width;  /* cell width in pixels, also the advance */
    int32_t height; /* cell height in rows */
    int32_t bits_per_pixel;
    int32_t count;           /* number of glyphs */
    int32_t bytes_per_glyph;
    const uint8_t* characters; /* the character code of each glyph */
    const uint8_t* data;       /* count * bytes_per_glyph bytes */
} velatrix_byte_font;

/* The glyph data of the character, or null when the font lacks it. */
VELATRIX_API const uint8_t* velatrix_font_char_lookup(const velatrix_byte_font* font, char character);
VELATRIX_API void velatrix_draw_char(struct velatrix_bitmap* bitmap, const velatrix_byte_font* font,
                                     char character, int32_t x, int32_t y, uint32_t colour);
VELATRIX_API void velatrix_draw_string(struct velatrix_bitmap* bitmap, const velatrix_byte_font* font,
                                       const char* text, int32_t x, int32_t y, uint32_t colour);
VELATRIX_API void velatrix_draw_string_aligned(struct velatrix_bitmap* bitmap, const velatrix_byte_font* font,
                                               const char* text, int32_t x1, int32_t y1, int32_t x2, int32_t y2,
                                               int32_t horizontal, int32_t vertical, uint32_t colour);

VELATRIX_END_DECLS

#endif
