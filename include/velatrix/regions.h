/* Regions: the region table and device regions.
 *
 * A region is a rectangle of the pad's display with a behaviour. The pad
 * speaks two region protocols: the region table (all regions in one report,
 * record velatrix_device_region_info) and device regions (one region at a
 * time through a region index, record velatrix_device_region).
 *
 * Colours are 0xRRGGBBAA in memory (alpha in the low byte, 255 opaque); on
 * the wire they travel red, green, blue, alpha. Rectangles are ordered
 * x1, x2, y1, y2 both in memory and on the wire. */
#ifndef VELATRIX_REGIONS_H
#define VELATRIX_REGIONS_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

struct velatrix_device;

/* Region type codes. The region table knows the first three. */
#define VELATRIX_REGION_CONTAINER 0u
#define VELATRIX_REGION_BUTTON 1u
#define VELATRIX_REGION_LINE 2u
#define VELATRIX_REGION_GRAPHIC 3u
#define VELATRIX_REGION_TEXT 4u

/* Caption field sizes of the two records. */
#define VELATRIX_REGION_INFO_CAPTION_SIZE 102
#define VELATRIX_DEVICE_REGION_CAPTION_SIZE 100

/* ---- Region table ------------------------------------------------------ */

typedef struct velatrix_region_info_container {
    uint8_t ink_enable;
    uint8_t ink_width; /* 0 to 3 */
    uint8_t reserved1;
    uint16_t reserved2;
} velatrix_region_info_container;

typedef struct velatrix_region_info_button {
    uint8_t parent;
    uint8_t enable;
    uint8_t highlight_on_select;
    uint8_t clear_on_select;
    uint16_t reserved;
    char caption[VELATRIX_REGION_INFO_CAPTION_SIZE]; /* NUL-terminated */
} velatrix_region_info_button;

typedef struct velatrix_region_info_line {
    uint8_t parent;
    uint8_t width;
    uint16_t reserved;
} velatrix_region_info_line;

/* One region of the region table. Arrays of it are contiguous; the device
 * record's `regions` holds one per region slot, indexed by number - 1. */
typedef struct velatrix_device_region_info {
    uint8_t number; /* 1-based */
    uint32_t type;  /* VELATRIX_REGION_CONTAINER, _BUTTON or _LINE */
    uint8_t accept_touch;
    uint8_t decode;
    uint8_t visible;
    uint8_t in_use;
    uint8_t has_frame;
    uint8_t reserved1;
    uint32_t reserved2;
    uint16_t x1;
    uint16_t x2;
    uint16_t y1;
    uint16_t y2;
    uint32_t foreground; /* 0xRRGGBBAA */
    uint32_t background; /* 0xRRGGBBAA */
    union {
        velatrix_region_info_container container;
        velatrix_region_info_button button;
        velatrix_region_info_line line;
    } data; /* chosen by type; all zero for any other type */
} velatrix_device_region_info;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_device_region_info) == 144, device_region_info_size);

/* What velatrix_update_region sends: a region's enable and visible flags
 * and its foreground colour, changed in place. `leading` and `ignored` are
 * not sent. */
typedef struct velatrix_region_update {
    uint8_t leading;
    uint8_t number;
    uint8_t enable;
    uint8_t visible;
    uint8_t reserved;
    uint32_t foreground; /* 0xRRGGBBAA */
    uint8_t ignored[3];
    uint32_t reserved2;
} velatrix_region_update;

/* ---- Device regions ---------------------------------------------------- */

typedef struct velatrix_device_region_container {
    uint8_t ink_enabled;
    uint8_t ink_width;
    uint8_t reserved1;
    uint8_t reserved2;
} velatrix_device_region_container;

typedef struct velatrix_device_region_button {
    uint8_t enable;
    uint8_t highlight_on_select;
    uint8_t clear_on_select;
    uint8_t confirm_on_select;
    uint8_t use_resource;
    uint8_t reserved[3];
    uint8_t resource_number_normal;
    uint8_t resource_number_selected;
    char caption[VELATRIX_DEVICE_REGION_CAPTION_SIZE];
} velatrix_device_region_button;

typedef struct velatrix_device_region_line {
    uint8_t parent;
    uint8_t width;
    uint8_t reserved[2];
} velatrix_device_region_line;

typedef struct velatrix_device_region_graphic {
    uint8_t reserved1;
    uint8_t resource_number;
    int32_t horizontal_justification; /* 0 to 15 */
    int32_t vertical_justification;   /* 0 to 15 */
    uint8_t reserved2;
} velatrix_device_region_graphic;

typedef struct velatrix_device_region_text {
    uint8_t reserved;
    uint8_t resource_number;
    uint8_t font_number;
    int32_t horizontal_justification; /* 0 to 15 */
    int32_t vertical_justification;   /* 0 to 15 */
} velatrix_device_region_text;

/* One device region (report 0x98). */
typedef struct velatrix_device_region {
    uint8_t report_id; /* 0x98 when read from the pad, 0 when the read failed */
    uint8_t number;    /* 1-based */
    uint32_t type;     /* VELATRIX_REGION_CONTAINER to VELATRIX_REGION_TEXT */
    uint8_t accept_touch;
    uint8_t decode;
    uint8_t has_frame;
    uint8_t output_to_host;
    uint8_t reserved1;
    uint8_t reserved2[8];
    uint16_t x1;
    uint16_t x2;
    uint16_t y1;
    uint16_t y2;
    uint32_t foreground; /* 0xRRGGBBAA */
    uint32_t background; /* 0xRRGGBBAA */
    union {
        velatrix_device_region_container container;
        velatrix_device_region_button button;
        velatrix_device_region_line line;
        velatrix_device_region_graphic graphic;
        velatrix_device_region_text text;
    } data;
} velatrix_device_region;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_device_region) == 152, device_region_size);

/* ---- Region table operations ------------------------------------------- */

/* All region slots (display_info.region_count records), or null. Free with
 * velatrix_free_regions. */
VELATRIX_API velatrix_device_region_info* velatrix_get_regions(struct velatrix_device* device);
/* The factory defaults, same shape. */
VELATRIX_API velatrix_device_region_info* velatrix_get_default_regions(struct velatrix_device* device);
VELATRIX_API void velatrix_free_regions(velatrix_device_region_info* regions);
/* Unpacks `count` region blocks of a 0x6E/0x6F report (block length
 * max_caption_length + 29, first block at byte 1). The buffer must hold
 * count * (max_caption_length + 29) + 1 bytes. */
VELATRIX_API void velatrix_parse_regions(const uint8_t* buffer, velatrix_device_region_info* regions, uint32_t count,
                                         uint32_t max_caption_length);
VELATRIX_API void velatrix_print_regions(const velatrix_device_region_info* regions, uint32_t count);
/* Writes one region; on success also updates the device's cached table. */
VELATRIX_API int velatrix_set_region(struct velatrix_device* device, const velatrix_device_region_info* region);
VELATRIX_API int velatrix_update_region(struct velatrix_device* device, const velatrix_region_update* update);
VELATRIX_API int velatrix_delete_region(struct velatrix_device* device, uint8_t number);
VELATRIX_API int velatrix_set_region_commit(struct velatrix_device* device, uint8_t value);
/* Region 1 is never restored. */
VELATRIX_API int velatrix_restore_default_regions(struct velatrix_device* device);

/* ---- Device region operations ------------------------------------------ */

VELATRIX_API int velatrix_get_region_idx(struct velatrix_device* device);
VELATRIX_API int velatrix_set_region_idx(struct velatrix_device* device, uint8_t index);
/* Reads the region at the pad's region index; report_id 0 marks failure. */
VELATRIX_API void velatrix_get_region_ref(struct velatrix_device* device, velatrix_device_region* region);
VELATRIX_API velatrix_device_region* velatrix_get_region(velatrix_device_region* region,
                                                         struct velatrix_device* device);
/* Every device region (the count is byte 2 of the screen region info), or
 * null. Free with velatrix_free_device_regions. */
VELATRIX_API velatrix_device_region* velatrix_get_device_regions(struct velatrix_device* device);
VELATRIX_API void velatrix_free_device_regions(velatrix_device_region* regions);
VELATRIX_API int velatrix_set_region_contents(struct velatrix_device* device, const velatrix_device_region* region);
VELATRIX_API int velatrix_delete_device_region(struct velatrix_device* device, uint8_t number);
VELATRIX_API void velatrix_print_device_regions(const velatrix_device_region* regions, uint32_t count);

VELATRIX_END_DECLS

#endif
