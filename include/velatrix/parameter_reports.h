/* Device parameter reports: what the caller can tune on the pad.
 *
 * Reads behave as the information reports do (a zeroed record, report_id 0,
 * when the read failed). Writes take the record by value, always send the
 * report's own id whatever the record's report_id says, and return 1 on
 * success and 0 on failure. Bit fields are shifted into place and OR-ed
 * without masking, so a value wider than its field spills into the next. */
#ifndef VELATRIX_PARAMETER_REPORTS_H
#define VELATRIX_PARAMETER_REPORTS_H

#include "velatrix/common.h"
#include "velatrix/info_reports.h"

VELATRIX_BEGIN_DECLS

struct velatrix_device;

/* Report 102. Only the low byte of set_command is sent. */
typedef struct velatrix_hid_feature_display_settings {
    uint8_t report_id;
    uint8_t brightness;
    uint8_t contrast;
    uint8_t red;
    uint8_t green;
    uint8_t blue;
    uint32_t set_command;
} velatrix_hid_feature_display_settings;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_display_settings) == 12, display_settings_size);

/* Report 41. Every bit field is held in a byte of its own. */
typedef struct velatrix_hid_feature_general_parameters {
    uint8_t report_id;
    uint8_t xy_output_enable;    /* byte 1 bit 0 */
    uint8_t adc_output_enable;   /* byte 1 bit 1 */
    uint8_t map_coordinates;     /* byte 1 bit 2 */
    uint8_t channel_lock_enable; /* byte 1 bit 3 */
    uint8_t channel_lock_number; /* byte 1 bits 4 to 6 */
    uint8_t reserved;            /* byte 1 bit 7 */
    uint8_t corner_lower_left;   /* byte 2 bits 0 to 1 */
    uint8_t corner_upper_left;   /* byte 2 bits 2 to 3 */
    uint8_t corner_lower_right;  /* byte 2 bits 4 to 5 */
    uint8_t corner_upper_right;  /* byte 2 bits 6 to 7 */
    uint16_t samples;
    uint8_t filter_fequency;
} velatrix_hid_feature_general_parameters;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_general_parameters) == 16, general_parameters_size);

/* Report 43: eight raw bytes of the digitizer chip's registers. */
#define VELATRIX_REGISTER_INFO_SIZE 8

typedef struct velatrix_hid_feature_register_get {
    uint8_t report_id;
    uint8_t register_info[VELATRIX_REGISTER_INFO_SIZE];
} velatrix_hid_feature_register_get;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_register_get) == 9, register_get_size);

/* Report 44: one register write, address and value as the chip defines them. */
typedef struct velatrix_hid_feature_register_set {
    uint8_t report_id;
    uint8_t register_address;
    uint8_t register_value;
} velatrix_hid_feature_register_set;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_register_set) == 3, register_set_size);

/* Report 42: two one-bit reset requests, sent as bits 0 and 1 of byte 1
 * (OR-ed without masking). */
typedef struct velatrix_hid_feature_asic_reset {
    uint8_t report_id;
    uint8_t reset_bit_0;
    uint8_t reset_bit_1;
} velatrix_hid_feature_asic_reset;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_asic_reset) == 3, asic_reset_size);

/* Report 50. */
typedef struct velatrix_hid_feature_pen_parameters {
    uint8_t report_id;
    uint16_t proximity;
    uint16_t auto_pen_threshold;
    uint16_t auto_touch_threshold;
    uint8_t adc_average;
    uint8_t coordinate_average;
    uint16_t offset_interval;
    uint8_t debounce_pre_down;
    uint8_t debounce_post_down;
    uint8_t debounce_pre_up;
    uint8_t debounce_post_up; /* sent, but printed as a second debounce_pre_down line */
    uint8_t error_correction_enable;  /* byte 15 bit 0 */
    uint8_t reserved_1;               /* byte 15 bits 1 to 3 */
    uint8_t offset_correction_enable; /* byte 15 bit 4 */
    uint8_t reserved_2;               /* byte 15 bit 5 */
    uint8_t tip_inverted;             /* byte 15 bit 6 */
    uint8_t reserved_3;               /* byte 15 bit 7 */
    uint16_t interrupt_rate;
} velatrix_hid_feature_pen_parameters;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_pen_parameters) == 24, pen_parameters_size);

/* Report 60. */
typedef struct velatrix_hid_feature_touch_parameters {
    uint8_t report_id;
    uint8_t adc_average;
    uint8_t coordinate_average;
    int16_t slope_down;
    int16_t slope_liftoff;
    uint8_t slope_minimum;
    uint16_t pressure_single;
    uint16_t pressure_multiple;
    uint8_t gain;
    uint8_t error_correction_enable; /* byte 13 bit 0 */
    uint8_t reserved;                /* byte 13 bits 1 to 7 */
    uint16_t scale_x;
    int16_t offset_x;
    uint16_t scale_y;
    int16_t offset_y;
} velatrix_hid_feature_touch_parameters;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_touch_parameters) == 26, touch_parameters_size);

/* Values of velatrix_hid_feature_output_parameters.real_time. */
enum velatrix_output_real_time {
    VELATRIX_REAL_TIME = 0,
    VELATRIX_TRANSMIT_ON_CONFIRM = 1,
    VELATRIX_TRANSMIT_ON_HOST_COMMAND = 2
};

/* Values of velatrix_hid_feature_output_parameters.compression. */
enum velatrix_output_compression {
    VELATRIX_OUTPUT_UNCOMPRESSED_LORES = 0,
    VELATRIX_OUTPUT_COMPRESSED_LORES = 1,
    VELATRIX_OUTPUT_UNCOMPRESSED_HIRES = 2,
    VELATRIX_OUTPUT_COMPRESSED_HIRES = 3
};

/* Report 91. real_time and compression hold the enumerations above in 32
 * bits; a pad may answer with values outside them, which are kept. */
typedef struct velatrix_hid_feature_output_parameters {
    uint8_t report_id;
    int64_t output_report; /* the 32-bit wire value, sign-extended */
    int32_t real_time;
    int32_t compression;
    uint16_t packets_per_second;
    uint8_t save_as_default;
    uint8_t load_factory_settings;
} velatrix_hid_feature_output_parameters;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_output_parameters) == 32, output_parameters_size);

/* Bits of velatrix_hid_feature_peripheral_configuration.mag_card_output. */
#define VELATRIX_PERIPHERAL_OEM_OUTPUT 0x01u
#define VELATRIX_PERIPHERAL_KEYBOARD_OUTPUT 0x04u
#define VELATRIX_PERIPHERAL_KEYBOARD_PREAMBLE 0x08u

/* Report 92. */
typedef struct velatrix_hid_feature_peripheral_configuration {
    uint8_t report_id;
    uint32_t mag_card_output; /* the flag byte of the report; its low byte is sent */
    uint8_t reserved1;
    uint8_t reserved2;
    uint8_t reserved3;
    uint8_t reserved4;
    uint8_t reserved5;
    uint8_t reserved6;
    uint8_t reserved7;
    uint8_t reserved8;
    uint8_t reserved9;
    uint8_t reserved10;
    uint8_t reserved11;
    uint8_t reserved12;
    uint8_t reserved13;
    uint8_t reserved14;
    uint8_t save_as_default;
    uint8_t load_factory_settings;
} velatrix_hid_feature_peripheral_configuration;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_peripheral_configuration) == 24, peripheral_configuration_size);

/* Report 131. The 16-bit values are read sign-extended, the 32-bit values
 * sign-extended into 64 bits; writes send the low 16 or 32 bits back. */
typedef struct velatrix_hid_feature_calibration_data {
    uint8_t report_id;
    uint8_t CalibrationType;
    uint8_t isCalibrated;
    int16_t RotationScale;
    int16_t LocalMultiplierScale;
    int16_t HostMultiplierScale;
    int16_t RotationSINScaled;
    int16_t RotationCOSScaled;
    int16_t LocalWidthCalibrated;
    int16_t LocalHeightCalibrated;
    int64_t LocalXMultiplierScaled;
    int64_t LocalXOffset;
    int64_t LocalYMultiplierScaled;
    int64_t LocalYOffset;
    int64_t HostXMultiplierScaled;
    int64_t HostXOffset;
    int64_t HostYMultiplierScaled;
    int64_t HostYOffset;
} velatrix_hid_feature_calibration_data;

VELATRIX_STATIC_ASSERT(sizeof(velatrix_hid_feature_calibration_data) == 88, calibration_data_size);

VELATRIX_API velatrix_hid_feature_display_settings velatrix_get_display_settings(struct velatrix_device* device);
VELATRIX_API void velatrix_get_display_settings_ref(struct velatrix_device* device,
                                                    velatrix_hid_feature_display_settings* record);
VELATRIX_API int velatrix_set_display_settings(struct velatrix_device* device,
                                               velatrix_hid_feature_display_settings record);
VELATRIX_API void velatrix_print_display_settings(const velatrix_hid_feature_display_settings* record);

VELATRIX_API int velatrix_set_frequency_amplitude(struct velatrix_device* device,
                                                  velatrix_hid_feature_frequency_amplitude record);
/* Sent as report 2, although the power state is read as report 21. */
VELATRIX_API int velatrix_set_power_state(struct velatrix_device* device, velatrix_hid_feature_power_state record);
VELATRIX_API int velatrix_set_startup_mode(struct velatrix_device* device, int32_t mode);
VELATRIX_API int velatrix_set_device_configure(struct velatrix_device* device,
                                               velatrix_hid_feature_device_configure record);

VELATRIX_API velatrix_hid_feature_general_parameters velatrix_get_general_parameters(struct velatrix_device* device);
VELATRIX_API void velatrix_get_general_parameters_ref(struct velatrix_device* device,
                                                      velatrix_hid_feature_general_parameters* record);
VELATRIX_API int velatrix_set_general_parameters(struct velatrix_device* device,
                                                 velatrix_hid_feature_general_parameters record);
VELATRIX_API void velatrix_print_general_parameters(const velatrix_hid_feature_general_parameters* record);

VELATRIX_API velatrix_hid_feature_register_get velatrix_get_asic_register(struct velatrix_device* device);
VELATRIX_API void velatrix_get_asic_register_ref(struct velatrix_device* device,
                                                 velatrix_hid_feature_register_get* record);
VELATRIX_API int velatrix_set_asic_register(struct velatrix_device* device, velatrix_hid_feature_register_set record);
VELATRIX_API void velatrix_print_asic_register(const velatrix_hid_feature_register_get* record);
VELATRIX_API int velatrix_set_asic_reset(struct velatrix_device* device, velatrix_hid_feature_asic_reset record);

VELATRIX_API velatrix_hid_feature_pen_parameters velatrix_get_pen_parameters(struct velatrix_device* device);
VELATRIX_API void velatrix_get_pen_parameters_ref(struct velatrix_device* device,
                                                  velatrix_hid_feature_pen_parameters* record);
VELATRIX_API int velatrix_set_pen_parameters(struct velatrix_device* device,
                                             velatrix_hid_feature_pen_parameters record);
VELATRIX_API void velatrix_print_pen_parameters(const velatrix_hid_feature_pen_parameters* record);

VELATRIX_API velatrix_hid_feature_touch_parameters velatrix_get_touch_parameters(struct velatrix_device* device);
VELATRIX_API void velatrix_get_touch_parameters_ref(struct velatrix_device* device,
                                                    velatrix_hid_feature_touch_parameters* record);
VELATRIX_API int velatrix_set_touch_parameters(struct velatrix_device* device,
                                               velatrix_hid_feature_touch_parameters record);
VELATRIX_API void velatrix_print_touch_parameters(const velatrix_hid_feature_touch_parameters* record);

VELATRIX_API void velatrix_get_output_configuration_ref(struct velatrix_device* device,
                                                        velatrix_hid_feature_output_parameters* record);
VELATRIX_API velatrix_hid_feature_output_parameters velatrix_get_output_configuration(struct velatrix_device* device);
VELATRIX_API int velatrix_set_output_configuration(struct velatrix_device* device,
                                                   velatrix_hid_feature_output_parameters record);
VELATRIX_API void velatrix_print_output_configuration(const velatrix_hid_feature_output_parameters* record);

VELATRIX_API void velatrix_get_peripheral_configuration_ref(struct velatrix_device* device,
                                                            velatrix_hid_feature_peripheral_configuration* record);
VELATRIX_API velatrix_hid_feature_peripheral_configuration
velatrix_get_peripheral_configuration(struct velatrix_device* device);
VELATRIX_API int velatrix_set_peripheral_configuration(struct velatrix_device* device,
                                                       velatrix_hid_feature_peripheral_configuration record);
VELATRIX_API void velatrix_print_peripheral_configuration(const velatrix_hid_feature_peripheral_configuration* record);

VELATRIX_API void velatrix_get_calibration_data_ref(struct velatrix_device* device,
                                                    velatrix_hid_feature_calibration_data* record);
VELATRIX_API velatrix_hid_feature_calibration_data velatrix_get_calibration_data(struct velatrix_device* device);
VELATRIX_API int velatrix_set_calibration_data(struct velatrix_device* device,
                                               velatrix_hid_feature_calibration_data record);
VELATRIX_API void velatrix_print_calibration_data(const velatrix_hid_feature_calibration_data* record);

VELATRIX_END_DECLS

#endif
