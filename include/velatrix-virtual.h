/* Virtual pads: software models of the pad firmware on a virtual bus.
 *
 * With VELATRIX_SIMULATE=<n> in the environment at start-up (or after
 * velatrix_virtual_simulate(n)) the built-in host driver sees n virtual
 * pads instead of real ones; this API plugs and unplugs further pads,
 * drives their input, injects faults and looks at what the host did to
 * them. The host driver reaches the pads exactly as it reaches real ones,
 * so everything here works beside the ordinary API.
 *
 * A pad is named by its id (1 and up, never reused). Functions return 1 for
 * success and 0 for failure, counts and sizes as stated, and on failure set
 * the last error (velatrix_get_last_error). All functions are thread-safe.
 *
 * This header is not part of velatrix-quillmark.h: include it on its own. */
#ifndef VELATRIX_VIRTUAL_H
#define VELATRIX_VIRTUAL_H

#include "velatrix/bitmap.h"
#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

typedef int32_t velatrix_virtual_pad;

/* Sizes of the fixed state blocks. */
#define VELATRIX_VIRTUAL_ERROR_CORRECTION_SIZE 2048
#define VELATRIX_VIRTUAL_FIRMWARE_PAGE_SIZE 128
#define VELATRIX_VIRTUAL_SCREEN_ENTRIES 30

/* ---- Models and the bus ---------------------------------------------- */

/* Models by index: "mono-320" (320 x 240, 1 bit, card reader, no screens)
 * and "color-800" (800 x 480, 24 bit, screens and resources). */
VELATRIX_API uint32_t velatrix_virtual_model_count(void);
/* Null for an index past the end. */
VELATRIX_API const char* velatrix_virtual_model_name(uint32_t index);

/* From the next velatrix_init on, the built-in driver lists `count` virtual
 * pads on the virtual bus instead of real pads, exactly as
 * VELATRIX_SIMULATE=<count> would; a negative count returns to the
 * environment's choice. As with the variable, the first start that uses
 * the virtual bus plugs its pads; later starts find the bus as it is. */
VELATRIX_API void velatrix_virtual_simulate(int32_t count);

/* Plugs a new pad of the named model; returns its id, or 0 with the error
 * "Unknown virtual pad model: %s". */
VELATRIX_API velatrix_virtual_pad velatrix_virtual_plug(const char* model);
VELATRIX_API int velatrix_virtual_unplug(velatrix_virtual_pad pad);
VELATRIX_API void velatrix_virtual_unplug_all(void);
VELATRIX_API uint32_t velatrix_virtual_pad_count(void);
/* Id of the index-th pad plugged in now (in plugging order), or 0. */
VELATRIX_API velatrix_virtual_pad velatrix_virtual_pad_at(uint32_t index);
VELATRIX_API int velatrix_virtual_is_plugged(velatrix_virtual_pad pad);
/* The pad's model name, null when the pad is not plugged in. */
VELATRIX_API const char* velatrix_virtual_pad_model(velatrix_virtual_pad pad);
VELATRIX_API uint16_t velatrix_virtual_product_id(velatrix_virtual_pad pad);
/* The location id the host sees (it is part of the device path). */
VELATRIX_API uint32_t velatrix_virtual_location_id(velatrix_virtual_pad pad);

/* ---- The wire, as the host's HID service reaches it ------------------- */

/* Get-feature of report buffer[0]: returns the bytes answered (at most
 * `length`), or -1 when the transfer failed or the pad refused it. */
VELATRIX_API int32_t velatrix_virtual_get_feature(velatrix_virtual_pad pad, uint8_t* buffer, uint32_t length);
VELATRIX_API int velatrix_virtual_set_feature(velatrix_virtual_pad pad, const uint8_t* buffer, uint32_t length);
/* The pad's HID report descriptor: returns its length; copies at most
 * `size` bytes (descriptor may be null to ask for the length). */
VELATRIX_API int32_t velatrix_virtual_report_descriptor(velatrix_virtual_pad pad, uint8_t* descriptor,
                                                         uint32_t size);

/* ---- Input -------------------------------------------------------------- */

typedef struct velatrix_virtual_point {
    uint16_t x;
    uint16_t y;
} velatrix_virtual_point;

/* Sends any input report as it is (also malformed ones). */
VELATRIX_API int velatrix_virtual_push_input(velatrix_virtual_pad pad, const uint8_t* report, uint32_t length);
/* One pen position; with extended coordinates it carries the region under
 * the pen. */
VELATRIX_API int velatrix_virtual_pen(velatrix_virtual_pad pad, uint16_t x, uint16_t y, uint8_t tip,
                                      uint8_t in_range);
/* Pen down on every point, then lifted (still in range) at the last one. */
VELATRIX_API int velatrix_virtual_play_stroke(velatrix_virtual_pad pad, const velatrix_virtual_point* points,
                                              uint32_t count);
/* Fails on a pad without a card reader. Null tracks are empty. */
VELATRIX_API int velatrix_virtual_swipe_card(velatrix_virtual_pad pad, const char* track1, const char* track2,
                                             const char* track3);
/* Kind 2 carries flags (bit 0, bit 4), kind 3 a channel number. */
VELATRIX_API int velatrix_virtual_send_adc(velatrix_virtual_pad pad, uint8_t kind, uint8_t flags_or_channel,
                                           const uint16_t values[4]);
VELATRIX_API int velatrix_virtual_send_debug(velatrix_virtual_pad pad, uint8_t flags, const uint16_t values[9],
                                             uint8_t last);
/* Input reports the pad has sent so far, and a copy of one of them:
 * returns its length (copying at most `size` bytes), or -1. */
VELATRIX_API uint32_t velatrix_virtual_input_count(velatrix_virtual_pad pad);
VELATRIX_API int32_t velatrix_virtual_input_report(velatrix_virtual_pad pad, uint32_t index, uint8_t* buffer,
                                                   uint32_t size);

/* ---- Display memory ------------------------------------------------------ */

VELATRIX_API int velatrix_virtual_display_size(velatrix_virtual_pad pad, int32_t* width, int32_t* height);
/* 0xRRGGBBFF as the panel shows it; 0xFFFFFFFF outside it or without pad. */
VELATRIX_API uint32_t velatrix_virtual_get_pixel(velatrix_virtual_pad pad, int32_t x, int32_t y);
/* Red, green, blue per pixel, rows top to bottom: needs width*height*3. */
VELATRIX_API int velatrix_virtual_read_frame_rgb(velatrix_virtual_pad pad, uint8_t* rgb, uint32_t size);
/* Buffer size velatrix_virtual_read_frame needs, 0 without pad. */
VELATRIX_API uint32_t velatrix_virtual_frame_bitmap_size(velatrix_virtual_pad pad);
/* The display as a bitmap made in `buffer`. */
VELATRIX_API int velatrix_virtual_read_frame(velatrix_virtual_pad pad, velatrix_bitmap* bitmap, uint8_t* buffer,
                                             uint32_t size);

/* ---- Faults and timing ----------------------------------------------- */

/* Transfers (gets and sets, status reads included) are counted from the
 * call: nth 1 is the next one; 0 cancels. */
VELATRIX_API int velatrix_virtual_fail_transfer(velatrix_virtual_pad pad, uint32_t nth);
/* The pad is unplugged at that transfer, which fails. */
VELATRIX_API int velatrix_virtual_unplug_at_transfer(velatrix_virtual_pad pad, uint32_t nth);
/* Busy flags (bits 0 to 5) the status shows until cleared (0). */
VELATRIX_API int velatrix_virtual_stay_busy(velatrix_virtual_pad pad, uint8_t bits);
/* Status reads the pad stays busy after each command (default 2). */
VELATRIX_API int velatrix_virtual_set_busy_polls(velatrix_virtual_pad pad, uint32_t polls);
/* Status reads from now that show the pad initialising. */
VELATRIX_API int velatrix_virtual_set_initializing(velatrix_virtual_pad pad, uint32_t polls);
/* Answers to gets of the report stop after `length` bytes. */
VELATRIX_API int velatrix_virtual_short_answer(velatrix_virtual_pad pad, uint8_t report_id, uint32_t length);
/* Answers to gets of the report come back under id + 1 with every payload
 * byte inverted. */
VELATRIX_API int velatrix_virtual_malformed_answer(velatrix_virtual_pad pad, uint8_t report_id);
/* The next open of the pad is refused, as a missing permission refuses it
 * (velatrix_open_device fails); the open after it works again. */
VELATRIX_API int velatrix_virtual_refuse_open(velatrix_virtual_pad pad);
/* Ends every fault above, the held busy flags included. */
VELATRIX_API int velatrix_virtual_clear_faults(velatrix_virtual_pad pad);
VELATRIX_API uint32_t velatrix_virtual_transfer_count(velatrix_virtual_pad pad);

/* ---- State ------------------------------------------------------------- */

/* The serial number up to its first NUL (bytes of 255 included). */
VELATRIX_API int velatrix_virtual_get_serial(velatrix_virtual_pad pad, char* text, uint32_t size);
/* Null erases it: all 32 bytes read 255. */
VELATRIX_API int velatrix_virtual_set_serial(velatrix_virtual_pad pad, const char* text);
/* 0 idle, 2 running; -1 without pad. */
VELATRIX_API int32_t velatrix_virtual_get_run_mode(velatrix_virtual_pad pad);
/* The error text of the status report (why the pad last refused a request). */
VELATRIX_API int velatrix_virtual_get_status_text(velatrix_virtual_pad pad, char* text, uint32_t size);
VELATRIX_API int velatrix_virtual_get_error_correction(velatrix_virtual_pad pad, uint8_t* data);
VELATRIX_API int velatrix_virtual_set_error_correction(velatrix_virtual_pad pad, const uint8_t* data);
/* Payload (bytes after the id) of a stored parameter report (15, 20, 21,
 * 41, 50, 60, 91, 92, 102, 131): returns its length, or -1. */
VELATRIX_API int32_t velatrix_virtual_get_parameter(velatrix_virtual_pad pad, uint8_t report_id, uint8_t* payload,
                                                    uint32_t size);
/* Calibration: running flag, current target, and whether it is required. */
VELATRIX_API int velatrix_virtual_get_calibration(velatrix_virtual_pad pad, uint8_t* calibrating, uint8_t* point,
                                                  uint8_t* required);

typedef struct velatrix_virtual_region {
    uint8_t number;
    uint8_t type; /* 0 Container, 1 Button, 2 Line, 3 Graphic, 4 Text */
    uint8_t in_use;
    uint8_t visible;
    uint8_t accept_touch;
    uint8_t decode;
    uint8_t has_frame;
    uint8_t output_to_host;
    uint16_t x1;
    uint16_t x2;
    uint16_t y1;
    uint16_t y2;
    uint32_t foreground; /* 0xRRGGBBAA */
    uint32_t background;
    uint8_t ink_enabled;
    uint8_t ink_width;
    uint8_t parent;
    uint8_t line_width;
    uint8_t enable;
    uint8_t highlight_on_select;
    uint8_t clear_on_select;
    uint8_t confirm_on_select;
    uint8_t use_resource;
    uint8_t resource_normal;
    uint8_t resource_selected;
    uint8_t resource_number;
    uint8_t font_number;
    uint8_t horizontal_justification;
    uint8_t vertical_justification;
    uint8_t reserved;
    char caption[256]; /* up to its first NUL, always terminated */
} velatrix_virtual_region;

typedef struct velatrix_virtual_screen {
    uint8_t number;
    uint8_t reset_timeout_on_activity;
    uint8_t timeout;
    uint8_t timeout_next_screen;
    uint8_t region_count; /* as written; the lists hold at most 30 */
    uint8_t regions[VELATRIX_VIRTUAL_SCREEN_ENTRIES];
    uint8_t next_screens[VELATRIX_VIRTUAL_SCREEN_ENTRIES];
} velatrix_virtual_screen;

/* Region slot `number` (1 to the region count), in use or not. */
VELATRIX_API int velatrix_virtual_get_region(velatrix_virtual_pad pad, uint8_t number, velatrix_virtual_region* region);
/* Fails when the pad holds no such screen. */
VELATRIX_API int velatrix_virtual_get_screen(velatrix_virtual_pad pad, uint8_t number, velatrix_virtual_screen* screen);
VELATRIX_API int32_t velatrix_virtual_get_active_screen(velatrix_virtual_pad pad);
/* A stored resource: returns its size (copying at most `capacity` bytes),
 * or -1 when there is none. `type` may be null. */
VELATRIX_API int32_t velatrix_virtual_get_resource(velatrix_virtual_pad pad, uint8_t number, uint8_t* type,
                                                   uint8_t* data, uint32_t capacity);
/* A firmware page received at `address`. */
VELATRIX_API int velatrix_virtual_get_firmware_page(velatrix_virtual_pad pad, uint32_t address, uint8_t* data,
                                                    uint8_t* checksum);
/* Last firmware download status, or -1 when none arrived. */
VELATRIX_API int32_t velatrix_virtual_get_download_status(velatrix_virtual_pad pad);
/* Values received so far by a command report: 101 (display content), 115
 * (region commit) or 172 (screen-region commit). Returns how many there
 * are (copying at most `size`), or -1. */
VELATRIX_API int32_t velatrix_virtual_get_commands(velatrix_virtual_pad pad, uint8_t report_id, uint8_t* values,
                                                   uint32_t size);

VELATRIX_END_DECLS

#endif
