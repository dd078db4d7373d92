// One table per Java value class: its constructor arguments in record order,
// where each sits in the C record and which Java field holds it.
#include "value_classes.h"

#include "velatrix-quillmark.h"

namespace velatrix::jni {

namespace {

using DisplayInfo = velatrix_hid_feature_display_info;
const Slot kDisplaySlots[] = {
    VQ_NUMBER(DisplayInfo, width, 'I', nullptr),       VQ_NUMBER(DisplayInfo, height, 'I', nullptr),
    VQ_NUMBER(DisplayInfo, color_depth, 'I', nullptr), VQ_NUMBER(DisplayInfo, text_width, 'I', nullptr),
    VQ_NUMBER(DisplayInfo, text_height, 'I', nullptr), VQ_NUMBER(DisplayInfo, region_count, 'I', nullptr),
    VQ_NUMBER(DisplayInfo, max_caption_length, 'I', nullptr),
};

using VersionRecord = velatrix_hid_feature_version;
const Slot kVersionSlots[] = {
    VQ_ELEMENT(VersionRecord, kernel_version, 0, 'I', nullptr),
    VQ_ELEMENT(VersionRecord, kernel_version, 1, 'I', nullptr),
    VQ_ELEMENT(VersionRecord, kernel_version, 2, 'I', nullptr),
    VQ_ELEMENT(VersionRecord, firmware_version, 0, 'I', nullptr),
    VQ_ELEMENT(VersionRecord, firmware_version, 1, 'I', nullptr),
    VQ_ELEMENT(VersionRecord, firmware_version, 2, 'I', nullptr),
    VQ_NUMBER(VersionRecord, asic_signature, 'I', nullptr),
};

// The Java class takes one argument fewer than the record has fields: the
// unnamed byte after coordinate_modes is not passed.
using Caps = velatrix_hid_capabilities;
const Slot kCapabilitiesSlots[] = {
    VQ_NUMBER(Caps, supported_reports, 'I', nullptr),  VQ_NUMBER(Caps, coordinate_modes, 'I', nullptr),
    VQ_NUMBER(Caps, display_id, 'I', nullptr),         VQ_NUMBER(Caps, brightness_levels, 'I', nullptr),
    VQ_NUMBER(Caps, contrast_levels, 'I', nullptr),    VQ_NUMBER(Caps, color_depth, 'I', nullptr),
    VQ_NUMBER(Caps, display_width, 'I', nullptr),      VQ_NUMBER(Caps, display_height, 'I', nullptr),
    VQ_NUMBER(Caps, digitizer_width, 'I', nullptr),    VQ_NUMBER(Caps, digitizer_height, 'I', nullptr),
    VQ_NUMBER(Caps, coordinate_xmin, 'I', nullptr),    VQ_NUMBER(Caps, coordinate_xmax, 'I', nullptr),
    VQ_NUMBER(Caps, coordinate_ymin, 'I', nullptr),    VQ_NUMBER(Caps, coordinate_ymax, 'I', nullptr),
    VQ_NUMBER(Caps, calibration_x_min, 'I', nullptr),  VQ_NUMBER(Caps, calibration_x_max, 'I', nullptr),
    VQ_NUMBER(Caps, calibration_y_min, 'I', nullptr),  VQ_NUMBER(Caps, calibration_y_max, 'I', nullptr),
    VQ_NUMBER(Caps, reserved_4, 'I', nullptr),         VQ_NUMBER(Caps, reserved_5, 'I', nullptr),
    VQ_NUMBER(Caps, mag_reader_id, 'I', nullptr),      VQ_NUMBER(Caps, reserved_6, 'I', nullptr),
    VQ_NUMBER(Caps, reserved_7, 'I', nullptr),         VQ_NUMBER(Caps, supports_screens_resources, 'Z', nullptr),
    VQ_NUMBER(Caps, reserved_9, 'I', nullptr),         VQ_NUMBER(Caps, reserved_10, 'I', nullptr),
    VQ_NUMBER(Caps, reserved_11, 'I', nullptr),        VQ_NUMBER(Caps, reserved_12, 'I', nullptr),
    VQ_NUMBER(Caps, reserved_13, 'I', nullptr),        VQ_NUMBER(Caps, reserved_14, 'I', nullptr),
};

using Range = velatrix_hid_feature_coordinate_range;
const Slot kCoordinateRangeSlots[] = {
    VQ_NUMBER(Range, x_min, 'I', nullptr), VQ_NUMBER(Range, x_max, 'I', nullptr),
    VQ_NUMBER(Range, y_min, 'I', nullptr), VQ_NUMBER(Range, y_max, 'I', nullptr),
};

using Modes = velatrix_hid_feature_operating_modes;
const Slot kOperatingModesSlots[] = {
    VQ_NUMBER(Modes, supported_modes, 'I', nullptr), VQ_NUMBER(Modes, reserved, 'I', nullptr),
    VQ_NUMBER(Modes, acquisition_mode, 'I', nullptr), VQ_NUMBER(Modes, touch_mode, 'I', nullptr),
    VQ_NUMBER(Modes, pen_mode, 'I', nullptr),
};

using Status = velatrix_hid_feature_device_status;
const Slot kDeviceStatusSlots[] = {
    VQ_NUMBER(Status, is_initializing, 'Z', nullptr), VQ_NUMBER(Status, is_idle, 'Z', nullptr),
    VQ_NUMBER(Status, calibration_required, 'Z', nullptr), VQ_NUMBER(Status, is_calibrating, 'Z', nullptr),
    VQ_NUMBER(Status, interlock_0, 'Z', nullptr), VQ_NUMBER(Status, interlock_1, 'Z', nullptr),
    VQ_NUMBER(Status, interlock_2, 'Z', nullptr), VQ_NUMBER(Status, interlock_3, 'Z', nullptr),
    VQ_NUMBER(Status, interlock_4, 'Z', nullptr), VQ_NUMBER(Status, interlock_5, 'Z', nullptr),
    VQ_NUMBER(Status, reserved1, 'I', nullptr),   VQ_NUMBER(Status, reserved2, 'I', nullptr),
    VQ_NUMBER(Status, reserved3, 'I', nullptr),   VQ_TEXT(Status, errorInfo, nullptr),
};

using Calibrate = velatrix_hid_feature_calibrate;
const Slot kCalibrationStateSlots[] = {
    VQ_NUMBER(Calibrate, calibration_mode, 'Z', nullptr),
    VQ_NUMBER(Calibrate, point, 'I', nullptr),
};

using Settings = velatrix_hid_feature_display_settings;
const Slot kDisplaySettingsSlots[] = {
    VQ_NUMBER(Settings, brightness, 'I', &velatrix_display_settings_brightness_field),
    VQ_NUMBER(Settings, contrast, 'I', &velatrix_display_settings_contrast_field),
    VQ_NUMBER(Settings, red, 'I', &velatrix_display_settings_red_field),
    VQ_NUMBER(Settings, green, 'I', &velatrix_display_settings_green_field),
    VQ_NUMBER(Settings, blue, 'I', &velatrix_display_settings_blue_field),
    VQ_NUMBER(Settings, set_command, 'I', &velatrix_display_settings_setCommand_field),
};

using Frequency = velatrix_hid_feature_frequency_amplitude;
const Slot kFrequencyAmplitudeSlots[] = {
    VQ_NUMBER(Frequency, frequency, 'I', &velatrix_frequency_amplitude_frequency_field),
    VQ_NUMBER(Frequency, pen_amplitude, 'I', &velatrix_frequency_amplitude_pen_amplitude_field),
    VQ_NUMBER(Frequency, touch_amplitude, 'I', &velatrix_frequency_amplitude_touch_amplitude_field),
};

using General = velatrix_hid_feature_general_parameters;
const Slot kGeneralParametersSlots[] = {
    VQ_NUMBER(General, xy_output_enable, 'Z', &velatrix_general_parameters_xy_output_enabled_field),
    VQ_NUMBER(General, adc_output_enable, 'Z', &velatrix_general_parameters_adc_output_enabled_field),
    VQ_NUMBER(General, map_coordinates, 'Z', &velatrix_general_parameters_map_coordinates_field),
    VQ_NUMBER(General, channel_lock_enable, 'Z', &velatrix_general_parameters_channel_lock_enable_field),
    VQ_NUMBER(General, channel_lock_number, 'I', &velatrix_general_parameters_channel_lock_number_field),
    VQ_NUMBER(General, reserved, 'I', &velatrix_general_parameters_reserved_field),
    VQ_NUMBER(General, corner_lower_left, 'I', &velatrix_general_parameters_corner_lower_left_field),
    VQ_NUMBER(General, corner_upper_left, 'I', &velatrix_general_parameters_corner_upper_left_field),
    VQ_NUMBER(General, corner_lower_right, 'I', &velatrix_general_parameters_corner_lower_right_field),
    VQ_NUMBER(General, corner_upper_right, 'I', &velatrix_general_parameters_corner_upper_right_field),
    VQ_NUMBER(General, samples, 'I', &velatrix_general_parameters_samples_field),
    VQ_NUMBER(General, filter_fequency, 'I', &velatrix_general_parameters_filter_frequency_field),
};

using Pen = velatrix_hid_feature_pen_parameters;
const Slot kPenParametersSlots[] = {
    VQ_NUMBER(Pen, proximity, 'I', &velatrix_pen_parameters_proximity_field),
    VQ_NUMBER(Pen, auto_pen_threshold, 'I', &velatrix_pen_parameters_auto_pen_threshold_field),
    VQ_NUMBER(Pen, auto_touch_threshold, 'I', &velatrix_pen_parameters_auto_touch_threshold_field),
    VQ_NUMBER(Pen, adc_average, 'I', &velatrix_pen_parameters_adc_average_field),
    VQ_NUMBER(Pen, coordinate_average, 'I', &velatrix_pen_parameters_coordinate_average_field),
    VQ_NUMBER(Pen, offset_interval, 'I', &velatrix_pen_parameters_offset_interval_field),
    VQ_NUMBER(Pen, debounce_pre_down, 'I', &velatrix_pen_parameters_debounce_pre_down_field),
    VQ_NUMBER(Pen, debounce_post_down, 'I', &velatrix_pen_parameters_debounce_post_down_field),
    VQ_NUMBER(Pen, debounce_pre_up, 'I', &velatrix_pen_parameters_debounce_pre_up_field),
    VQ_NUMBER(Pen, debounce_post_up, 'I', &velatrix_pen_parameters_debounce_post_up_field),
    VQ_NUMBER(Pen, error_correction_enable, 'Z', &velatrix_pen_parameters_error_correction_enabled_field),
    VQ_NUMBER(Pen, reserved_1, 'I', &velatrix_pen_parameters_reserved1_field),
    VQ_NUMBER(Pen, offset_correction_enable, 'Z', &velatrix_pen_parameters_offset_correction_enabled_field),
    VQ_NUMBER(Pen, reserved_2, 'I', &velatrix_pen_parameters_reserved2_field),
    VQ_NUMBER(Pen, tip_inverted, 'Z', &velatrix_pen_parameters_tip_inverted_field),
    VQ_NUMBER(Pen, reserved_3, 'I', &velatrix_pen_parameters_reserved3_field),
    VQ_NUMBER(Pen, interrupt_rate, 'I', &velatrix_pen_parameters_interrupt_rate_field),
};

using Touch = velatrix_hid_feature_touch_parameters;
const Slot kTouchParametersSlots[] = {
    VQ_NUMBER(Touch, adc_average, 'I', &velatrix_touch_parameters_adc_average_field),
    VQ_NUMBER(Touch, coordinate_average, 'I', &velatrix_touch_parameters_coordinate_average_field),
    VQ_NUMBER(Touch, slope_down, 'S', &velatrix_touch_parameters_slope_down_field),
    VQ_NUMBER(Touch, slope_liftoff, 'S', &velatrix_touch_parameters_slope_liftoff_field),
    VQ_NUMBER(Touch, slope_minimum, 'I', &velatrix_touch_parameters_slope_minimum_field),
    VQ_NUMBER(Touch, pressure_single, 'I', &velatrix_touch_parameters_pressure_single_field),
    VQ_NUMBER(Touch, pressure_multiple, 'I', &velatrix_touch_parameters_pressure_multiple_field),
    VQ_NUMBER(Touch, gain, 'I', &velatrix_touch_parameters_gain_field),
    VQ_NUMBER(Touch, error_correction_enable, 'Z', &velatrix_touch_parameters_error_correction_enabled_field),
    VQ_NUMBER(Touch, reserved, 'I', &velatrix_touch_parameters_reserved_field),
    VQ_NUMBER(Touch, scale_x, 'I', &velatrix_touch_parameters_scale_x_field),
    VQ_NUMBER(Touch, offset_x, 'S', &velatrix_touch_parameters_offset_x_field),
    VQ_NUMBER(Touch, scale_y, 'I', &velatrix_touch_parameters_scale_y_field),
    VQ_NUMBER(Touch, offset_y, 'S', &velatrix_touch_parameters_offset_y_field),
};

// The Java class keeps the compression as two flags; the natives that read
// the object put them back together (output_configuration hooks in
// report_natives.cpp).
using Output = velatrix_hid_feature_output_parameters;
const Slot kOutputConfigurationSlots[] = {
    VQ_NUMBER(Output, output_report, 'J', &velatrix_output_configuration_output_report_field),
    VQ_NUMBER(Output, real_time, 'I', &velatrix_output_configuration_output_mode_field),
    VQ_NUMBER(Output, compression, 'I', nullptr),
    VQ_NUMBER(Output, packets_per_second, 'I', &velatrix_output_configuration_packets_per_second_field),
    VQ_NUMBER(Output, save_as_default, 'Z', &velatrix_output_configuration_save_as_default_field),
    VQ_NUMBER(Output, load_factory_settings, 'Z', &velatrix_output_configuration_load_factory_settings_field),
};

using Peripheral = velatrix_hid_feature_peripheral_configuration;
const Slot kPeripheralConfigurationSlots[] = {
    VQ_NUMBER(Peripheral, mag_card_output, 'I', &velatrix_peripheral_configuration_mag_card_output_field),
    VQ_NUMBER(Peripheral, save_as_default, 'Z', &velatrix_peripheral_configuration_save_as_default_field),
    VQ_NUMBER(Peripheral, load_factory_settings, 'Z', &velatrix_peripheral_configuration_load_factory_settings_field),
};

using CalData = velatrix_hid_feature_calibration_data;
const Slot kCalibrationDataSlots[] = {
    VQ_NUMBER(CalData, CalibrationType, 'S', &velatrix_calibration_data_calibration_type_field),
    VQ_NUMBER(CalData, isCalibrated, 'Z', &velatrix_calibration_data_is_calibrated_field),
    VQ_NUMBER(CalData, RotationScale, 'I', &velatrix_calibration_data_rotation_scale_field),
    VQ_NUMBER(CalData, LocalMultiplierScale, 'I', &velatrix_calibration_data_local_multiplier_scale_field),
    VQ_NUMBER(CalData, HostMultiplierScale, 'I', &velatrix_calibration_data_host_multiplier_scale_field),
    VQ_NUMBER(CalData, RotationSINScaled, 'I', &velatrix_calibration_data_rotation_sin_scaled_field),
    VQ_NUMBER(CalData, RotationCOSScaled, 'I', &velatrix_calibration_data_rotation_cos_scaled_field),
    VQ_NUMBER(CalData, LocalWidthCalibrated, 'I', &velatrix_calibration_data_local_width_calibrated_field),
    VQ_NUMBER(CalData, LocalHeightCalibrated, 'I', &velatrix_calibration_data_local_height_calibrated_field),
    VQ_NUMBER(CalData, LocalXMultiplierScaled, 'I', &velatrix_calibration_data_local_x_multiplier_scaled_field),
    VQ_NUMBER(CalData, LocalXOffset, 'I', &velatrix_calibration_data_local_x_offset_field),
    VQ_NUMBER(CalData, LocalYMultiplierScaled, 'I', &velatrix_calibration_data_local_y_multiplier_scaled_field),
    VQ_NUMBER(CalData, LocalYOffset, 'I', &velatrix_calibration_data_local_y_offset_field),
    VQ_NUMBER(CalData, HostXMultiplierScaled, 'I', &velatrix_calibration_data_host_x_multiplier_scaled_field),
    VQ_NUMBER(CalData, HostXOffset, 'I', &velatrix_calibration_data_host_x_offset_field),
    VQ_NUMBER(CalData, HostYMultiplierScaled, 'I', &velatrix_calibration_data_host_y_multiplier_scaled_field),
    VQ_NUMBER(CalData, HostYOffset, 'I', &velatrix_calibration_data_host_y_offset_field),
};

using Configure = velatrix_hid_feature_device_configure;
const Slot kConfigurationSlots[] = {
    VQ_NUMBER(Configure, device_mode, 'I', &velatrix_configuration_device_mode_field),
    VQ_NUMBER(Configure, device_id, 'I', &velatrix_configuration_device_id_field),
};

using Page = velatrix_firmware_page;
const Slot kFirmwarePageSlots[] = {
    VQ_NUMBER(Page, address, 'I', &velatrix_firmware_page_address_field),
    VQ_BYTE_ARRAY(Page, data, &velatrix_firmware_page_data_field),
    VQ_NUMBER(Page, checksum, 'B', &velatrix_firmware_page_checksum_field),
};

using Chunk = velatrix_display_chunk;
const Slot kDisplayChunkSlots[] = {
    VQ_NUMBER(Chunk, x, 'I', &velatrix_display_chunk_x_field),
    VQ_NUMBER(Chunk, y, 'I', &velatrix_display_chunk_y_field),
    VQ_NUMBER(Chunk, width, 'I', &velatrix_display_chunk_width_field),
    VQ_NUMBER(Chunk, height, 'I', &velatrix_display_chunk_height_field),
    VQ_NUMBER(Chunk, bits_per_pixel, 'B', &velatrix_display_chunk_bits_per_pixel_field),
    VQ_BYTE_ARRAY(Chunk, data, &velatrix_display_chunk_raster_field),
};

using Modify = velatrix_hid_feature_screen_modify;
const Slot kScreenModifySlots[] = {
    VQ_INT_ARRAY(Modify, reserved, 0, 6, &velatrix_screen_modify_reserved_field),
    VQ_NUMBER(Modify, add_region, 'Z', &velatrix_screen_modify_add_region_field),
    VQ_NUMBER(Modify, remove_region, 'Z', &velatrix_screen_modify_remove_region_field),
    VQ_NUMBER(Modify, set_timeout, 'Z', &velatrix_screen_modify_set_timeout_field),
    VQ_NUMBER(Modify, screen_index, 'I', &velatrix_screen_modify_screen_index_field),
    VQ_NUMBER(Modify, region_index, 'I', &velatrix_screen_modify_region_index_field),
    VQ_NUMBER(Modify, region_screen_next, 'I', &velatrix_screen_modify_region_screen_next_field),
    VQ_NUMBER(Modify, timeout_value, 'I', &velatrix_screen_modify_timeout_value_field),
    VQ_NUMBER(Modify, timeout_screen_next, 'I', &velatrix_screen_modify_timeout_screen_next_field),
};

// Eight payload bytes as numbers (the second is the device-region count),
// the rest as one array.
using RegionInfo = velatrix_hid_feature_screen_region_info;
const Slot kScreenRegionInfoSlots[] = {
    VQ_ELEMENT(RegionInfo, payload, 0, 'I', nullptr), VQ_ELEMENT(RegionInfo, payload, 1, 'I', nullptr),
    VQ_ELEMENT(RegionInfo, payload, 2, 'I', nullptr), VQ_ELEMENT(RegionInfo, payload, 3, 'I', nullptr),
    VQ_ELEMENT(RegionInfo, payload, 4, 'I', nullptr), VQ_ELEMENT(RegionInfo, payload, 5, 'I', nullptr),
    VQ_ELEMENT(RegionInfo, payload, 6, 'I', nullptr), VQ_ELEMENT(RegionInfo, payload, 7, 'I', nullptr),
    VQ_INT_ARRAY(RegionInfo, payload, 8, 16, nullptr),
};

using ResInfo = velatrix_hid_feature_resource_info;
const Slot kResourceInfoSlots[] = {
    VQ_NUMBER(ResInfo, resource_number, 'I', &velatrix_resource_info_number_field),
    VQ_NUMBER(ResInfo, resource_type, 'I', &velatrix_resource_info_type_field),
    VQ_NUMBER(ResInfo, resource_size, 'I', &velatrix_resrouce_info_resource_size_field),
};

using Availability = velatrix_hid_feature_resource_availability;
const Slot kResourceAvailabilitySlots[] = {
    VQ_NUMBER(Availability, unknown1, 'I', nullptr),
    VQ_NUMBER(Availability, unknown2, 'I', nullptr),
    VQ_INT_ARRAY(Availability, list, 0, 12, nullptr),
};

using CoordinateRecord = velatrix_input_coordinate;
const Slot kCoordinateSlots[] = {
    VQ_NUMBER(CoordinateRecord, tip_switch, 'Z', nullptr), VQ_NUMBER(CoordinateRecord, in_range, 'Z', nullptr),
    VQ_NUMBER(CoordinateRecord, x, 'I', nullptr),          VQ_NUMBER(CoordinateRecord, y, 'I', nullptr),
};
const Slot kExtendedCoordinateSlots[] = {
    VQ_NUMBER(CoordinateRecord, tip_switch, 'Z', nullptr), VQ_NUMBER(CoordinateRecord, in_range, 'Z', nullptr),
    VQ_NUMBER(CoordinateRecord, x, 'I', nullptr),          VQ_NUMBER(CoordinateRecord, y, 'I', nullptr),
    VQ_NUMBER(CoordinateRecord, region, 'I', nullptr),
};

// The scan values reach Java pairwise swapped: second, first, fourth, third.
using Scan = velatrix_input_adc_scan;
const Slot kAdcScanSlots[] = {
    VQ_NUMBER(Scan, flag_a, 'Z', nullptr), VQ_NUMBER(Scan, flag_b, 'Z', nullptr),
    VQ_NUMBER(Scan, value2, 'I', nullptr), VQ_NUMBER(Scan, value1, 'I', nullptr),
    VQ_NUMBER(Scan, value4, 'I', nullptr), VQ_NUMBER(Scan, value3, 'I', nullptr),
};

using Channel = velatrix_input_adc_channel;
const Slot kAdcChannelSlots[] = {
    VQ_NUMBER(Channel, channel, 'I', nullptr), VQ_NUMBER(Channel, value1, 'I', nullptr),
    VQ_NUMBER(Channel, value2, 'I', nullptr),  VQ_NUMBER(Channel, value3, 'I', nullptr),
    VQ_NUMBER(Channel, value4, 'I', nullptr),
};

using Swipe = velatrix_input_card_swipe;
const Slot kMagneticCardSwipeSlots[] = {
    VQ_NUMBER(Swipe, header1, 'I', nullptr), VQ_NUMBER(Swipe, header2, 'I', nullptr),
    VQ_NUMBER(Swipe, header3, 'I', nullptr), VQ_NUMBER(Swipe, header4, 'I', nullptr),
    VQ_TEXT(Swipe, track1, nullptr),         VQ_TEXT(Swipe, track2, nullptr),
    VQ_TEXT(Swipe, track3, nullptr),
};

using Debug = velatrix_input_debug_coordinate;
const Slot kDebugCoordinateSlots[] = {
    VQ_NUMBER(Debug, tip_switch, 'Z', nullptr), VQ_NUMBER(Debug, in_range, 'Z', nullptr),
    VQ_NUMBER(Debug, value1, 'I', nullptr),     VQ_NUMBER(Debug, value2, 'I', nullptr),
    VQ_NUMBER(Debug, value3, 'I', nullptr),     VQ_NUMBER(Debug, value4, 'I', nullptr),
    VQ_NUMBER(Debug, value5, 'I', nullptr),     VQ_NUMBER(Debug, value6, 'I', nullptr),
    VQ_NUMBER(Debug, value7, 'I', nullptr),     VQ_NUMBER(Debug, value8, 'I', nullptr),
    VQ_NUMBER(Debug, value9, 'I', nullptr),     VQ_NUMBER(Debug, last, 'I', nullptr),
};

}  // namespace

#define VQ_VALUE_CLASS(name, prefix, slots) \
    const ValueClass name{&velatrix_##prefix##_class, &velatrix_##prefix##_init, slots};

VQ_VALUE_CLASS(kDisplay, display, kDisplaySlots)
VQ_VALUE_CLASS(kVersion, version, kVersionSlots)
VQ_VALUE_CLASS(kCapabilities, capabilities, kCapabilitiesSlots)
VQ_VALUE_CLASS(kCoordinateRange, coordinate_range, kCoordinateRangeSlots)
VQ_VALUE_CLASS(kOperatingModes, operating_modes, kOperatingModesSlots)
VQ_VALUE_CLASS(kDeviceStatus, device_status, kDeviceStatusSlots)
VQ_VALUE_CLASS(kCalibrationState, calibration_state, kCalibrationStateSlots)
VQ_VALUE_CLASS(kDisplaySettings, display_settings, kDisplaySettingsSlots)
VQ_VALUE_CLASS(kFrequencyAmplitude, frequency_amplitude, kFrequencyAmplitudeSlots)
VQ_VALUE_CLASS(kGeneralParameters, general_parameters, kGeneralParametersSlots)
VQ_VALUE_CLASS(kPenParameters, pen_parameters, kPenParametersSlots)
VQ_VALUE_CLASS(kTouchParameters, touch_parameters, kTouchParametersSlots)
VQ_VALUE_CLASS(kOutputConfiguration, output_configuration, kOutputConfigurationSlots)
VQ_VALUE_CLASS(kPeripheralConfiguration, peripheral_configuration, kPeripheralConfigurationSlots)
VQ_VALUE_CLASS(kCalibrationData, calibration_data, kCalibrationDataSlots)
VQ_VALUE_CLASS(kConfiguration, configuration, kConfigurationSlots)
// Only read from Java objects: the natives never build them.
namespace {
jmethodID no_constructor = nullptr;
}  // namespace
const ValueClass kFirmwarePage{&velatrix_firmware_page_class, &no_constructor, kFirmwarePageSlots};
const ValueClass kDisplayChunk{&velatrix_display_chunk_class, &no_constructor, kDisplayChunkSlots};
VQ_VALUE_CLASS(kScreenModify, screen_modify, kScreenModifySlots)
VQ_VALUE_CLASS(kScreenRegionInfo, screen_region_info, kScreenRegionInfoSlots)
VQ_VALUE_CLASS(kResourceInfo, resource_info, kResourceInfoSlots)
VQ_VALUE_CLASS(kResourceAvailability, resource_availability, kResourceAvailabilitySlots)
VQ_VALUE_CLASS(kCoordinate, coordinate, kCoordinateSlots)
VQ_VALUE_CLASS(kExtendedCoordinate, extended_coordinate, kExtendedCoordinateSlots)
VQ_VALUE_CLASS(kAdcScanValues, adc_scan_values, kAdcScanSlots)
VQ_VALUE_CLASS(kAdcChannelValues, adc_channel_values, kAdcChannelSlots)
VQ_VALUE_CLASS(kMagneticCardSwipe, mag_swipe, kMagneticCardSwipeSlots)
VQ_VALUE_CLASS(kDebugCoordinate, debug_coordinate, kDebugCoordinateSlots)

}  // namespace velatrix::jni
