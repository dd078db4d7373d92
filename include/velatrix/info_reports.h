/* Device information reports: what the pad tells about itself.
 *
 * Each report has a family of functions named after it: velatrix_get_N(device)
 * returns the record by value (all zero, report_id 0, when the read failed),
 * velatrix_get_N_ref(device, record) fills a caller's record the same way and
 * velatrix_print_N(record) writes it to standard output. */
#ifndef VELATRIX_INFO_REPORTS_H
#define VELATRIX_INFO_REPORTS_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

struct velatrix_device;

/* Report 100. */
typedef struct velatrix_hid_feature_display_info {
    uint8_t report_id;
    uint16_t width;
    uint16_t height;
    uint8_t color_depth;
    uint8_t text_width;
    uint8_t text_height;
    uint8_t region_count;
    uint8_t max_caption_length;
} velatrix_hid_feature_display_info;

/* Report 22. */
typedef struct velatrix_hid_feature_version {
    uint8_t report_id;
    uint8_t kernel_version[3];
    uint8_t firmware_version[3];
    uint16_t asic_signature;
} velatrix_hid_feature_version;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_display_info) == 12, display_info_size);
VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_version) == 10, version_size);

/* Report 11. */
typedef struct velatrix_hid_capabilities {
    uint8_t report_id;
    uint16_t supported_reports;
    uint8_t coordinate_modes;
    uint8_t reserved_1; /* the byte after coordinate_modes; not printed */
    uint32_t display_id;
    uint8_t brightness_levels;
    uint8_t contrast_levels;
    uint8_t color_depth;
    uint16_t display_width;
    uint16_t display_height;
    uint16_t digitizer_width;
    uint16_t digitizer_height;
    uint16_t coordinate_xmin;
    uint16_t coordinate_xmax;
    uint16_t coordinate_ymin;
    uint16_t coordinate_ymax;
    uint16_t calibration_x_min;
    uint16_t calibration_x_max;
    uint16_t calibration_y_min;
    uint16_t calibration_y_max;
    uint32_t reserved_4;
    uint32_t reserved_5;
    uint32_t mag_reader_id; /* non-zero: a card reader is fitted */
    uint8_t reserved_6;
    uint16_t reserved_7;
    uint8_t supports_screens_resources; /* non-zero: screens and resources work */
    uint8_t reserved_9;
    uint16_t reserved_10;
    uint32_t reserved_11;
    uint32_t reserved_12;
    uint32_t reserved_13;
    uint32_t reserved_14;
} velatrix_hid_capabilities;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_capabilities) == 76, capabilities_size);

/* Report 15, read and written. */
typedef struct velatrix_hid_feature_device_configure {
    uint8_t report_id;
    uint8_t device_mode;
    uint8_t device_id;
} velatrix_hid_feature_device_configure;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_device_configure) == 3, device_configure_size);

/* Report 16. */
typedef struct velatrix_hid_feature_contact_count_maximum {
    uint8_t report_id;
    uint8_t contact_count_max;
} velatrix_hid_feature_contact_count_maximum;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_contact_count_maximum) == 2, contact_count_maximum_size);

/* Report 20, read and written. */
typedef struct velatrix_hid_feature_frequency_amplitude {
    uint8_t report_id;
    uint8_t frequency;
    uint8_t pen_amplitude;
    uint8_t touch_amplitude;
} velatrix_hid_feature_frequency_amplitude;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_frequency_amplitude) == 4, frequency_amplitude_size);

/* Read as report 21, written as report 2. */
typedef struct velatrix_hid_feature_power_state {
    uint32_t report_id;
    uint32_t power_state;
} velatrix_hid_feature_power_state;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_power_state) == 8, power_state_size);

/* Report 23. */
typedef struct velatrix_hid_feature_coordinate_range {
    uint8_t report_id;
    uint16_t x_min;
    uint16_t x_max;
    uint16_t y_min;
    uint16_t y_max;
} velatrix_hid_feature_coordinate_range;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_coordinate_range) == 10, coordinate_range_size);

/* Report 27. The text is at most 31 characters and NUL-padded. */
#define VELATRIX_SERIAL_NUMBER_SIZE 32
#define VELATRIX_SERIAL_NUMBER_MAX_LENGTH 31

typedef struct velatrix_hid_feature_serial_number {
    uint8_t report_id;
    char serial_number[VELATRIX_SERIAL_NUMBER_SIZE];
} velatrix_hid_feature_serial_number;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_serial_number) == 33, serial_number_size);

/* Report 40. */
typedef struct velatrix_hid_feature_operating_modes {
    uint8_t report_id;
    uint8_t supported_modes;
    uint8_t reserved; /* always 0 */
    uint8_t acquisition_mode;
    uint8_t touch_mode;
    uint8_t pen_mode;
} velatrix_hid_feature_operating_modes;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_operating_modes) == 6, operating_modes_size);

/* Report 13. Every flag is a byte holding 0 or 1. The six interlock flags
 * are the busy flags the interlock wait watches. */
#define VELATRIX_DEVICE_ERROR_INFO_SIZE 64

typedef struct velatrix_hid_feature_device_status {
    uint8_t report_id; /* 13 after a successful read, 0 after a failed one */
    uint8_t is_initializing;
    uint8_t is_idle; /* the pad is in run mode 0 */
    uint8_t calibration_required;
    uint8_t is_calibrating;
    uint8_t interlock_0;
    uint8_t interlock_1;
    uint8_t interlock_2;
    uint8_t interlock_3;
    uint8_t interlock_4;
    uint8_t interlock_5;
    uint8_t reserved1;
    uint16_t reserved2;
    uint16_t reserved3; /* not printed */
    char errorInfo[VELATRIX_DEVICE_ERROR_INFO_SIZE]; /* not necessarily NUL-terminated */
} velatrix_hid_feature_device_status;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_device_status) == 80, device_status_size);

VELATRIX_API velatrix_hid_feature_display_info velatrix_get_display_info(struct velatrix_device* device);
VELATRIX_API void velatrix_get_display_info_ref(struct velatrix_device* device,
                                                velatrix_hid_feature_display_info* record);
VELATRIX_API void velatrix_print_display_info(const velatrix_hid_feature_display_info* record);

VELATRIX_API velatrix_hid_capabilities velatrix_get_capabilities(struct velatrix_device* device);
VELATRIX_API void velatrix_get_capabilities_ref(struct velatrix_device* device, velatrix_hid_capabilities* record);
VELATRIX_API void velatrix_print_capabilities(const velatrix_hid_capabilities* record);

VELATRIX_API velatrix_hid_feature_device_configure velatrix_get_device_configure(struct velatrix_device* device);
VELATRIX_API void velatrix_get_device_configure_ref(struct velatrix_device* device,
                                                    velatrix_hid_feature_device_configure* record);
VELATRIX_API void velatrix_print_device_configure(const velatrix_hid_feature_device_configure* record);

VELATRIX_API velatrix_hid_feature_contact_count_maximum
velatrix_get_contact_count_maximum(struct velatrix_device* device);
VELATRIX_API void velatrix_get_contact_count_maximum_ref(struct velatrix_device* device,
                                                         velatrix_hid_feature_contact_count_maximum* record);
VELATRIX_API void velatrix_print_contact_count_maximum(const velatrix_hid_feature_contact_count_maximum* record);

VELATRIX_API velatrix_hid_feature_frequency_amplitude velatrix_get_frequency_amplitude(struct velatrix_device* device);
VELATRIX_API void velatrix_get_frequency_amplitude_ref(struct velatrix_device* device,
                                                       velatrix_hid_feature_frequency_amplitude* record);
VELATRIX_API void velatrix_print_frequency_amplitude(const velatrix_hid_feature_frequency_amplitude* record);

/* Reads report 21; there is no _ref form. */
VELATRIX_API velatrix_hid_feature_power_state velatrix_get_power_state(struct velatrix_device* device);
VELATRIX_API void velatrix_print_power_state(const velatrix_hid_feature_power_state* record);

VELATRIX_API velatrix_hid_feature_version velatrix_get_version(struct velatrix_device* device);
VELATRIX_API void velatrix_get_version_ref(struct velatrix_device* device, velatrix_hid_feature_version* record);
VELATRIX_API void velatrix_print_version(const velatrix_hid_feature_version* record);

VELATRIX_API velatrix_hid_feature_coordinate_range velatrix_get_coordinate_range(struct velatrix_device* device);
VELATRIX_API void velatrix_get_coordinate_range_ref(struct velatrix_device* device,
                                                    velatrix_hid_feature_coordinate_range* record);
VELATRIX_API void velatrix_print_coordinate_range(const velatrix_hid_feature_coordinate_range* record);

VELATRIX_API velatrix_hid_feature_serial_number velatrix_get_serial_number(struct velatrix_device* device);
VELATRIX_API void velatrix_get_serial_number_ref(struct velatrix_device* device,
                                                 velatrix_hid_feature_serial_number* record);
VELATRIX_API void velatrix_print_serial_number(const velatrix_hid_feature_serial_number* record);
/* Writes at most 31 characters of text, with the pad idle for the write.
 * Returns 1 on success, 0 on failure. */
VELATRIX_API int velatrix_set_serial_number(struct velatrix_device* device, const char* text, uint32_t length);

VELATRIX_API velatrix_hid_feature_operating_modes velatrix_get_operating_modes(struct velatrix_device* device);
VELATRIX_API void velatrix_get_operating_modes_ref(struct velatrix_device* device,
                                                   velatrix_hid_feature_operating_modes* record);
VELATRIX_API void velatrix_print_operating_modes(const velatrix_hid_feature_operating_modes* record);

/* The status read is the _ref form; velatrix_get_device_status takes its
 * arguments the other way round, fills `record` and returns it. */
VELATRIX_API void velatrix_get_device_status_ref(struct velatrix_device* device,
                                                 velatrix_hid_feature_device_status* record);
VELATRIX_API velatrix_hid_feature_device_status* velatrix_get_device_status(velatrix_hid_feature_device_status* record,
                                                                            struct velatrix_device* device);
VELATRIX_API void velatrix_print_device_status(const velatrix_hid_feature_device_status* record);

/* Clears the error text the pad keeps. Returns 1 on success, 0 on failure. */
VELATRIX_API int velatrix_clear_last_error(struct velatrix_device* device);

VELATRIX_END_DECLS

#endif
