/* Input reports, input and hot-plug callbacks. */
#ifndef VELATRIX_INPUT_H
#define VELATRIX_INPUT_H

#include "velatrix/common.h"
#include "velatrix/device.h"

VELATRIX_BEGIN_DECLS

struct velatrix_device_region_info;

/* Record types: the first byte of a velatrix_input_report. 1, 2, 3, 12 and
 * 254 are the ids of the wire reports they come from; 250 to 253 are button
 * events the parser makes from extended coordinates on a button region. */
#define VELATRIX_INPUT_COORDINATE 1
#define VELATRIX_INPUT_EXTENDED_COORDINATE 2
#define VELATRIX_INPUT_ADC 3
#define VELATRIX_INPUT_MAGNETIC_CARD_SWIPE 12
#define VELATRIX_INPUT_BUTTON_DOWN 250
#define VELATRIX_INPUT_BUTTON_MOVE 251
#define VELATRIX_INPUT_BUTTON_UP 252
#define VELATRIX_INPUT_BUTTON_PRESS 253
#define VELATRIX_INPUT_DEBUG_COORDINATE 254

/* ADC report kinds. */
#define VELATRIX_ADC_SCAN_VALUES 2
#define VELATRIX_ADC_CHANNEL_VALUES 3

/* Widths of the card-swipe track fields. */
#define VELATRIX_CARD_TRACK1_LENGTH 79
#define VELATRIX_CARD_TRACK2_LENGTH 40
#define VELATRIX_CARD_TRACK3_LENGTH 107

/* Hot-plug events. */
#define VELATRIX_HOTPLUG_ADDED 0u
#define VELATRIX_HOTPLUG_REMOVED 1u

/* Types 1 and 2. in_range holds the masked bit itself (0 or 16): test it
 * for non-zero. region is the raw 1-based region index, 0 for none, and is
 * only set for type 2. */
typedef struct velatrix_input_coordinate {
    uint8_t tip_switch;
    uint8_t in_range;
    uint16_t x;
    uint16_t y;
    uint8_t region;
} velatrix_input_coordinate;

/* Types 250 to 253. region points into the device's region table and is
 * valid while the device stays open; it is null when the table no longer
 * holds the region (a button still held across a close and reopen). */
typedef struct velatrix_input_button {
    uint16_t x;
    uint16_t y;
    const struct velatrix_device_region_info* region;
} velatrix_input_button;

/* ADC kind 2. flag_b holds the masked bit itself (0 or 16). */
typedef struct velatrix_input_adc_scan {
    uint8_t flag_a;
    uint8_t flag_b;
    uint16_t value1;
    uint16_t value2;
    uint16_t value3;
    uint16_t value4;
} velatrix_input_adc_scan;

/* ADC kind 3. */
typedef struct velatrix_input_adc_channel {
    uint8_t channel;
    uint16_t value1;
    uint16_t value2;
    uint16_t value3;
    uint16_t value4;
} velatrix_input_adc_channel;

/* Type 3. For a kind other than 2 or 3 only kind is filled. */
typedef struct velatrix_input_adc {
    uint32_t kind;
    union {
        velatrix_input_adc_scan scan;
        velatrix_input_adc_channel channel;
    } values;
} velatrix_input_adc;

/* Type 12. The tracks are copied as the pad sent them: track 3 is always
 * followed by a zero byte of the record, tracks 1 and 2 end only where the
 * pad's data hold a zero byte. */
typedef struct velatrix_input_card_swipe {
    uint32_t header1;
    uint32_t header2;
    uint32_t header3;
    uint32_t header4;
    char track1[VELATRIX_CARD_TRACK1_LENGTH];
    char track2[VELATRIX_CARD_TRACK2_LENGTH];
    char track3[VELATRIX_CARD_TRACK3_LENGTH];
} velatrix_input_card_swipe;

/* Type 254. in_range holds the masked bit itself (0 or 16). */
typedef struct velatrix_input_debug_coordinate {
    uint8_t tip_switch;
    uint8_t in_range;
    uint16_t value1;
    uint16_t value2;
    uint16_t value3;
    uint16_t value4;
    uint16_t value5;
    uint16_t value6;
    uint16_t value7;
    uint16_t value8;
    uint16_t value9;
    uint8_t last;
} velatrix_input_debug_coordinate;

/* One decoded input report, zero-filled; type selects the member of data. */
typedef struct velatrix_input_report {
    uint8_t type;
    union {
        velatrix_input_coordinate coordinate;
        velatrix_input_button button;
        velatrix_input_adc adc;
        velatrix_input_card_swipe card_swipe;
        velatrix_input_debug_coordinate debug_coordinate;
    } data;
} velatrix_input_report;

VELATRIX_STATIC_ASSERT(offsetof(velatrix_input_report, type) == 0, input_report_type_first);
/* The record always has a zero byte after track 3, so track 3 reads as text. */
VELATRIX_STATIC_ASSERT(offsetof(velatrix_input_report, data) + offsetof(velatrix_input_card_swipe, track3) +
                               VELATRIX_CARD_TRACK3_LENGTH <
                           sizeof(velatrix_input_report),
                       input_report_track3_terminated);

/* Called on the reading thread for every report that parsed. The record
 * and the raw bytes (byte 0 = report id) are valid only during the call;
 * type is the record's first byte. The result is ignored. */
typedef int (*velatrix_input_callback)(velatrix_device* device, const velatrix_input_report* record, int type,
                                       const uint8_t* buffer, uint32_t length);

/* Called on the hot-plug thread with VELATRIX_HOTPLUG_ADDED or
 * VELATRIX_HOTPLUG_REMOVED and the pad's path, valid only during the call.
 * The result is ignored. */
typedef int (*velatrix_hotplug_callback)(uint32_t event, const char* path);

/* Decodes one raw input report. Returns a new record the caller frees
 * with velatrix_free_input_report, or null with the last error set.
 * Extended coordinates on a button region update the device's button
 * state and come back as button events. */
VELATRIX_API velatrix_input_report* velatrix_parse_input_report(velatrix_device* device, const uint8_t* buffer,
                                                                uint32_t length);
VELATRIX_API void velatrix_free_input_report(velatrix_input_report* record);

/* Input callbacks belong to an open device; registering on a closed one
 * stores nothing. No duplicate check: a callback registered twice is
 * called twice and needs two unregisters. */
VELATRIX_API void velatrix_register_input_callback(velatrix_device* device, velatrix_input_callback callback);
VELATRIX_API void velatrix_unregister_input_callback(velatrix_device* device, velatrix_input_callback callback);
/* Hot-plug callbacks are process-wide; before the library is initialised
 * nothing is stored. */
VELATRIX_API void velatrix_register_hotplug_callback(velatrix_hotplug_callback callback);
VELATRIX_API void velatrix_unregister_hotplug_callback(velatrix_hotplug_callback callback);

/* The input path for drivers: parses the raw report and hands the record
 * to the device's input callbacks in registration order. */
VELATRIX_API void velatrix_get_driver_input_report(velatrix_device* device, const uint8_t* buffer, uint32_t length);
/* Tells every open device with this path that it has gone. */
VELATRIX_API void velatrix_handle_device_unplug(const char* path);

VELATRIX_END_DECLS

#endif
