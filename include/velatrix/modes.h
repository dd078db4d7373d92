/* Operating modes, calibration, error-correction table, device identifier and firmware. */
#ifndef VELATRIX_MODES_H
#define VELATRIX_MODES_H

#include "velatrix/common.h"
#include "velatrix/device.h"

VELATRIX_BEGIN_DECLS

/* Calibration state, report 0x82 (2 bytes: id and a value byte). */
typedef struct velatrix_hid_feature_calibrate {
    uint8_t report_id;        /* 0x82 when read, 0 when the read failed */
    uint8_t calibration_mode; /* bit 0 of the value byte */
    uint32_t point;           /* the value byte shifted right by 3 */
} velatrix_hid_feature_calibrate;

#define VELATRIX_ERROR_CORRECTION_TABLE_SIZE 2048

/* Error-correction table, report 0x1A (2049 bytes). */
typedef struct velatrix_hid_feature_error_correction_table {
    uint8_t report_id; /* 0x1A when read, 0 when the read failed */
    uint8_t data[VELATRIX_ERROR_CORRECTION_TABLE_SIZE];
} velatrix_hid_feature_error_correction_table;

/* One firmware page, report 0x19 (134 bytes). The leading word is not sent;
 * the checksum is the image producer's and is sent as given. */
typedef struct velatrix_firmware_page {
    uint32_t reserved;
    uint32_t address;
    uint8_t data[128];
    uint8_t checksum;
} velatrix_firmware_page;

/* Simulated pen input, report 0xFD (67 bytes). The leading byte is not sent. */
typedef struct velatrix_pen_simulation {
    uint8_t reserved;
    uint8_t identifier;
    uint16_t first_coordinate;
    uint16_t second_coordinate;
    uint8_t pen_down;
} velatrix_pen_simulation;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_error_correction_table) == 2049, error_correction_table_size);
VELATRIX_STATIC_ASSERT(sizeof(velatrix_firmware_page) == 140, firmware_page_size);

/* Both mode set-ups always return 1: a set-up that fails halfway still
 * reports success. A pad without the mode bits or without screens gets
 * nothing at all. */
VELATRIX_API int velatrix_set_quillmark_mode(velatrix_device* device, int save);
VELATRIX_API int velatrix_set_corvantine_mode(velatrix_device* device, int save);

VELATRIX_API int velatrix_device_calibrate(velatrix_device* device);
VELATRIX_API int velatrix_device_cancel_calibrate(velatrix_device* device);
VELATRIX_API velatrix_hid_feature_calibrate velatrix_get_calibrate_state(velatrix_device* device);
VELATRIX_API void velatrix_get_calibrate_state_ref(velatrix_device* device, velatrix_hid_feature_calibrate* record);
VELATRIX_API void velatrix_print_calibrate_state(const velatrix_hid_feature_calibrate* record);

VELATRIX_API velatrix_hid_feature_error_correction_table* velatrix_get_error_correction_table(
    velatrix_hid_feature_error_correction_table* record, velatrix_device* device);
VELATRIX_API void velatrix_get_error_correction_table_ref(velatrix_device* device,
                                                          velatrix_hid_feature_error_correction_table* record);
VELATRIX_API void velatrix_print_error_correction_table(const velatrix_hid_feature_error_correction_table* record);
VELATRIX_API int velatrix_set_error_correction(velatrix_device* device,
                                               const velatrix_hid_feature_error_correction_table* table);

/* The device identifier: the MD5 digest of the 2048 table bytes, 16 bytes
 * allocated for the caller (release with velatrix_free_device_uuid), or
 * null when the table cannot be read. */
VELATRIX_API uint8_t* velatrix_get_device_uuid(velatrix_device* device);
VELATRIX_API void velatrix_free_device_uuid(uint8_t* uuid);
VELATRIX_API void velatrix_print_device_uuid(const uint8_t* uuid);

VELATRIX_API int velatrix_set_firmware(velatrix_device* device, velatrix_firmware_page page);
VELATRIX_API int velatrix_set_firmware_download_status(velatrix_device* device, uint32_t status);
VELATRIX_API int velatrix_simulate_pen_input(velatrix_device* device, const velatrix_pen_simulation* pen);

VELATRIX_END_DECLS

#endif
