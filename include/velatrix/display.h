/* Display content transfer: bitmaps and text on the pad, pixel read-back, clearing. */
#ifndef VELATRIX_DISPLAY_H
#define VELATRIX_DISPLAY_H

#include "velatrix/bitmap.h"
#include "velatrix/common.h"
#include "velatrix/device.h"

VELATRIX_BEGIN_DECLS

#define VELATRIX_DISPLAY_CHUNK_DATA_SIZE 2039
#define VELATRIX_PIXEL_ENTRIES 256

/* One rectangle of packed pixels, report 103. On the wire its four 16-bit
 * header fields are big-endian, unlike every other report. */
typedef struct velatrix_display_chunk {
    uint8_t report_id;
    uint16_t x;
    uint16_t y;
    uint16_t width;
    uint16_t height;
    uint8_t bits_per_pixel;
    uint8_t data[VELATRIX_DISPLAY_CHUNK_DATA_SIZE];
} velatrix_display_chunk;

/* Pixels read back from the display (request 104, answer 105). The caller
 * sets x and y; entries from `count` on are zero. */
typedef struct velatrix_pixel_read {
    uint8_t report_id;
    uint16_t x;
    uint16_t y;
    uint16_t count;
    uint8_t entries[VELATRIX_PIXEL_ENTRIES][4];
} velatrix_pixel_read;

/* Text alignment relative to x. */
#define VELATRIX_TEXT_ALIGN_LEFT 0
#define VELATRIX_TEXT_ALIGN_RIGHT 1
#define VELATRIX_TEXT_ALIGN_CENTRE 2

VELATRIX_API int velatrix_set_display_content(velatrix_device* device, uint32_t content);
VELATRIX_API int velatrix_set_display_chunk(velatrix_device* device, velatrix_display_chunk chunk);
/* Sends the bitmap to (x, y) in chunks at 1, 4 (8 is packed as 4) or 24
 * bits per pixel; 1 when every chunk went, 0 at the first failure. */
VELATRIX_API int velatrix_transfer_bitmap_to_device(velatrix_device* device, const velatrix_bitmap* bitmap, uint32_t x,
                                                    uint32_t y, uint8_t bits_per_pixel);
/* Like velatrix_transfer_bitmap_to_device, but sends only the chunks (same
 * grid and packing) whose pixels differ from the last frame this call sent
 * to the device. The first update, one at another place, size or depth,
 * and the first after anything else was sent to the pad (a full transfer,
 * text, clearing, regions, screens, any command) or after a close send
 * every chunk. 1 when every chunk went, 0 at the first failure (the next
 * update is then a full one). */
VELATRIX_API int velatrix_update_display(velatrix_device* device, const velatrix_bitmap* bitmap, uint32_t x,
                                         uint32_t y, uint8_t bits_per_pixel);
VELATRIX_API int velatrix_device_draw_text_encoded(velatrix_device* device, const char* text, uint32_t length,
                                                   uint32_t x, uint32_t y, int alignment, uint8_t inverse,
                                                   const char* encoding);
VELATRIX_API int velatrix_device_draw_text(velatrix_device* device, const char* text, uint32_t x, uint32_t y,
                                           int alignment, uint8_t inverse);
VELATRIX_API int velatrix_get_pixels(velatrix_device* device, velatrix_pixel_read* record);
VELATRIX_API int velatrix_clear_screen(velatrix_device* device);

/* Text measured in the device's current font. */
VELATRIX_API int32_t velatrix_measure_text_width_encoding(velatrix_device* device, const char* text, uint32_t length,
                                                          const char* encoding);
VELATRIX_API int32_t velatrix_measure_text_height_encoding(velatrix_device* device, const char* text, uint32_t length,
                                                           const char* encoding);
VELATRIX_API int32_t velatrix_measure_text_width(velatrix_device* device, const char* text);
VELATRIX_API int32_t velatrix_measure_text_height(velatrix_device* device, const char* text);

VELATRIX_END_DECLS

#endif
