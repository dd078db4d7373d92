/* In-memory bitmaps, colours and drawing primitives.
 *
 * A bitmap is a 24-bit bottom-up BMP image held in one caller-supplied
 * buffer: the 54-byte file header, then `height` rows of `stride` bytes, each
 * pixel blue, green, red. Drawing coordinates have y = 0 at the top.
 *
 * Colours are 0xRRGGBBAA: red in the most significant byte, alpha in the
 * least significant one (255 opaque, 0 transparent). Every primitive draws
 * through velatrix_set_pixel, so everything clips to the bitmap and blends
 * translucent colours. Nothing here allocates. */
#ifndef VELATRIX_BITMAP_H
#define VELATRIX_BITMAP_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

/* Size of the BMP file and information headers in front of the pixels. */
#define VELATRIX_BITMAP_HEADER_SIZE 54

typedef struct velatrix_bitmap {
    uint8_t* data;        /* the whole BMP image: header, then pixels */
    uint8_t* pixels;      /* data + 54: the bottom pixel row */
    int32_t width;
    int32_t height;
    int32_t clear_length; /* bytes cleared at initialisation: always 0 */
    int32_t image_size;   /* stride * height */
    int32_t file_size;    /* image_size + 54 */
    int32_t stride;       /* bytes per row, padded to a multiple of 4 */
} velatrix_bitmap;

/* Fills the record for a width x height image in `buffer` (at least
 * ((width * 24 + 31) / 32) * 4 * height + 54 bytes), paints every pixel white
 * and writes the header. Header bytes the header writer leaves alone keep
 * what the buffer held. Returns 1, or 0 with the last error set for a null
 * record or buffer, a negative size, or one too large for 32-bit sizes. */
VELATRIX_API int velatrix_bitmap_init(velatrix_bitmap* bitmap, uint8_t* buffer, int32_t width, int32_t height);

/* Writes the BMP header fields: "BM", file size, pixel offset 54, info header
 * size 40, width, height, 1 plane, 24 bits, no compression, image size. The
 * high bytes of the one-byte fields, bytes 6 to 9 and 38 to 53 are left alone. */
VELATRIX_API void velatrix_bitmap_write_header(uint8_t* data, int32_t file_size, int32_t image_size, int32_t width,
                                               int32_t height);

/* Blends `source` over `destination`; the result is always opaque. */
VELATRIX_API uint32_t velatrix_color_blend(uint32_t source, uint32_t destination);

/* Sets one pixel, blending when the colour's alpha is below 255; pixels
 * outside the bitmap are ignored. */
VELATRIX_API void velatrix_set_pixel(velatrix_bitmap* bitmap, int32_t x, int32_t y, uint32_t color);

/* Returns 0xRRGGBBFF, or 0xFFFFFFFF outside the bitmap. */
VELATRIX_API uint32_t velatrix_get_pixel(const velatrix_bitmap* bitmap, int32_t x, int32_t y);

VELATRIX_API void velatrix_bitmap_clear(velatrix_bitmap* bitmap, uint32_t color);

VELATRIX_API void velatrix_draw_line(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                                     uint32_t color);
/* The colour's alpha is replaced by the computed coverage. */
VELATRIX_API void velatrix_draw_aa_line(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                                        uint32_t color);
VELATRIX_API void velatrix_draw_thick_line(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                                           uint32_t color, float width);
/* The colour's alpha is replaced by the computed coverage. */
VELATRIX_API void velatrix_draw_thick_aa_line(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                                              uint32_t color, float width);

VELATRIX_API void velatrix_draw_circle(velatrix_bitmap* bitmap, int32_t cx, int32_t cy, int32_t radius,
                                       uint32_t color);
VELATRIX_API void velatrix_fill_circle(velatrix_bitmap* bitmap, int32_t cx, int32_t cy, int32_t radius,
                                       uint32_t color);
/* The ellipse inscribed in the rectangle (x0, y0)-(x1, y1). */
VELATRIX_API void velatrix_draw_ellipse(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                                        uint32_t color);
/* The ellipse centred on (cx, cy) with the corner (x1, y1). */
VELATRIX_API void velatrix_fill_ellipse(velatrix_bitmap* bitmap, int32_t cx, int32_t cy, int32_t x1, int32_t y1,
                                        uint32_t color);

/* Corners are inclusive; a reversed corner collapses onto the other one. */
VELATRIX_API void velatrix_draw_rectangle(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                                          uint32_t color);
VELATRIX_API void velatrix_draw_thick_rectangle(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1,
                                                int32_t y1, int32_t thickness, uint32_t color);
VELATRIX_API void velatrix_fill_rectangle(velatrix_bitmap* bitmap, int32_t x0, int32_t y0, int32_t x1, int32_t y1,
                                          uint32_t color);

/* Copies a width x height block pixel by pixel from (sx, sy) in `source` to
 * (dx, dy) in `destination`; source pixels outside the source read as white. */
VELATRIX_API void velatrix_bitmap_copy(const velatrix_bitmap* source, velatrix_bitmap* destination, int32_t sx,
                                       int32_t sy, int32_t dx, int32_t dy, int32_t width, int32_t height);

VELATRIX_END_DECLS

#endif
