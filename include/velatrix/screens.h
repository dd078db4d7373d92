/* Screens and resources stored on the pad.
 *
 * A screen is a list of regions shown together, with a time-out and, for
 * each region, the screen to go to when it is chosen. A resource is a text
 * or a graphic stored on the pad, referenced by number from regions; it
 * travels in chunks of at most 1024 bytes. */
#ifndef VELATRIX_SCREENS_H
#define VELATRIX_SCREENS_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

struct velatrix_device;

/* Resource types. */
#define VELATRIX_RESOURCE_TEXT 0u
#define VELATRIX_RESOURCE_GRAPHIC 1u
#define VELATRIX_RESOURCE_INVALID 255u

/* Entries a screen record holds; only the first 30 travel to the pad. */
#define VELATRIX_SCREEN_MAX_REGIONS 100
#define VELATRIX_SCREEN_WIRE_REGIONS 30
/* Bytes of data in one resource chunk. */
#define VELATRIX_RESOURCE_CHUNK_SIZE 1024

/* Screen (report 0xA2). */
typedef struct velatrix_hid_feature_screen {
    uint8_t report_id; /* 0xA2 when read, 0 when the read failed */
    uint8_t screen_number;
    uint8_t reset_timeout_on_activity;
    uint8_t reserved[14];
    uint8_t timeout; /* 0 for none */
    uint8_t timeout_next_screen;
    uint8_t region_count; /* valid entries of the two lists */
    uint8_t region_indexes[VELATRIX_SCREEN_MAX_REGIONS];
    uint8_t screen_next_list[VELATRIX_SCREEN_MAX_REGIONS];
} velatrix_hid_feature_screen;

/* Edit screen (report 0xA4). */
typedef struct velatrix_hid_feature_screen_modify {
    uint8_t report_id;
    uint8_t reserved[6];
    uint8_t add_region;
    uint8_t remove_region;
    uint8_t set_timeout;
    uint8_t screen_index;
    uint8_t region_index;
    uint8_t region_screen_next;
    uint8_t timeout_value;
    uint8_t timeout_screen_next;
} velatrix_hid_feature_screen_modify;

/* Screen region info (report 0xAA): the payload as it came. payload[1]
 * (report byte 2) is the number of device regions on the pad. */
typedef struct velatrix_hid_feature_screen_region_info {
    uint8_t report_id; /* 0xAA when read */
    uint8_t payload[24];
} velatrix_hid_feature_screen_region_info;

/* One resource chunk (report 0x8E). */
typedef struct velatrix_hid_feature_resource {
    uint8_t report_id; /* 0x8E */
    uint8_t resource_number;
    uint32_t resource_type; /* VELATRIX_RESOURCE_TEXT, _GRAPHIC or _INVALID */
    uint8_t reserved1[2];
    uint64_t resource_size; /* whole resource in bytes; 32 bits travel */
    uint64_t reserved2;     /* 32 bits travel */
    uint8_t reserved3[6];
    uint16_t chunk_length; /* valid bytes of data */
    uint8_t data[VELATRIX_RESOURCE_CHUNK_SIZE];
} velatrix_hid_feature_resource;

/* Resource info (report 0x8D). The unknown fields are passed through. */
typedef struct velatrix_hid_feature_resource_info {
    uint8_t report_id; /* 0x8D */
    uint8_t resource_number;
    uint32_t resource_type;
    uint8_t unknown1; /* report byte 3 */
    uint64_t resource_size;
    uint64_t unknown2; /* report bytes 8-11 */
    uint8_t reserved[8];
} velatrix_hid_feature_resource_info;

/* Resource availability (report 0x90), passed through. */
typedef struct velatrix_hid_feature_resource_availability {
    uint8_t report_id; /* 0x90 */
    uint8_t unknown1;  /* report byte 1 */
    uint64_t unknown2; /* report bytes 2-5 */
    uint32_t list[12]; /* report bytes 6-17, one byte each */
} velatrix_hid_feature_resource_availability;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_screen) == 220, screen_size);
VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_screen_modify) == 15, screen_modify_size);
VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_screen_region_info) == 25, screen_region_info_size);
VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_resource) == 1064, resource_size);
VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_resource_info) == 40, resource_info_size);
VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_resource_availability) == 64, resource_availability_size);

/* ---- Screens ------------------------------------------------------------ */

VELATRIX_API void velatrix_get_screen_ref(struct velatrix_device* device, velatrix_hid_feature_screen* screen);
VELATRIX_API velatrix_hid_feature_screen* velatrix_get_screen(velatrix_hid_feature_screen* screen,
                                                              struct velatrix_device* device);
VELATRIX_API int velatrix_set_screen(struct velatrix_device* device, const velatrix_hid_feature_screen* screen);
VELATRIX_API int velatrix_get_screen_idx(struct velatrix_device* device);
VELATRIX_API int velatrix_set_screen_idx(struct velatrix_device* device, uint8_t index);
VELATRIX_API int velatrix_delete_screen(struct velatrix_device* device, uint8_t screen_number);
VELATRIX_API int velatrix_set_edit_screen(struct velatrix_device* device,
                                          const velatrix_hid_feature_screen_modify* modify);
VELATRIX_API int velatrix_get_active_screen(struct velatrix_device* device);
VELATRIX_API int velatrix_set_active_screen(struct velatrix_device* device, uint8_t screen_number);
VELATRIX_API void velatrix_get_screen_region_info_ref(struct velatrix_device* device,
                                                      velatrix_hid_feature_screen_region_info* info);
VELATRIX_API velatrix_hid_feature_screen_region_info* velatrix_get_screen_region_info(
    velatrix_hid_feature_screen_region_info* info, struct velatrix_device* device);
/* Makes the pad store its regions and screens (value 0). */
VELATRIX_API int velatrix_set_screen_region_commit(struct velatrix_device* device, uint8_t value);
/* Edits the record only: adds the region with its next screen, or changes
 * the next screen of a region already listed. 0 when the list is full. */
VELATRIX_API int velatrix_add_region_to_screen(velatrix_hid_feature_screen* screen, uint8_t region_number,
                                               uint8_t next_screen);

/* ---- Resources ---------------------------------------------------------- */

VELATRIX_API void velatrix_get_resource_availability_ref(struct velatrix_device* device,
                                                         velatrix_hid_feature_resource_availability* availability);
VELATRIX_API velatrix_hid_feature_resource_availability* velatrix_get_resource_availability(
    struct velatrix_device* device, velatrix_hid_feature_resource_availability* availability);
VELATRIX_API int velatrix_get_resource_idx(struct velatrix_device* device);
VELATRIX_API int velatrix_set_resource_idx(struct velatrix_device* device, uint8_t index);
VELATRIX_API void velatrix_get_resource_info_ref(struct velatrix_device* device,
                                                 velatrix_hid_feature_resource_info* info);
VELATRIX_API velatrix_hid_feature_resource_info* velatrix_get_resource_info(struct velatrix_device* device,
                                                                            velatrix_hid_feature_resource_info* info);
/* The first call after selecting a resource gives its first chunk; each
 * further call the next one. */
VELATRIX_API void velatrix_get_resource_ref(struct velatrix_device* device, velatrix_hid_feature_resource* chunk);
VELATRIX_API velatrix_hid_feature_resource* velatrix_get_resource(struct velatrix_device* device,
                                                                  velatrix_hid_feature_resource* chunk);
/* Sends one chunk; the pad appends chunks in order. */
VELATRIX_API int velatrix_set_resource(struct velatrix_device* device, const velatrix_hid_feature_resource* chunk);
VELATRIX_API int velatrix_delete_resource(struct velatrix_device* device, uint8_t resource_number);

/* Sends a whole resource chunk by chunk: `length` bytes of `data` as
 * resource `resource_number` of `resource_type`. An invalid type sends
 * nothing and succeeds. 0 when a chunk failed. */
VELATRIX_API int velatrix_send_resource(struct velatrix_device* device, uint8_t resource_number,
                                        uint32_t resource_type, const uint8_t* data, uint32_t length);
/* Sends a NUL-terminated text as a text resource, its terminator included. */
VELATRIX_API int velatrix_send_text_resource(struct velatrix_device* device, uint8_t resource_number,
                                             const char* text);

VELATRIX_END_DECLS

#endif
