// The pad's description of itself: display, capabilities, configuration,
// digitizer limits, firmware version and operating modes. The configure,
// frequency/amplitude and power-state reports are also written; their write
// functions sit beside the tables so that both directions share one layout.
#include "protocol/report_functions.h"
#include "velatrix/info_reports.h"
#include "velatrix/parameter_reports.h"

namespace velatrix::protocol {
namespace {

using DisplayInfo = velatrix_hid_feature_display_info;
constexpr Field kDisplayInfoFields[] = {
    VELATRIX_ROW(DisplayInfo, report_id, u8(0), "%hhu"),
    VELATRIX_ROW(DisplayInfo, width, u16(1), "%hu"),
    VELATRIX_ROW(DisplayInfo, height, u16(3), "%hu"),
    VELATRIX_ROW(DisplayInfo, color_depth, u8(5), "%hhu"),
    VELATRIX_ROW(DisplayInfo, text_width, u8(6), "%hhu"),
    VELATRIX_ROW(DisplayInfo, text_height, u8(7), "%hhu"),
    VELATRIX_ROW(DisplayInfo, region_count, u8(8), "%hhu"),
    VELATRIX_ROW(DisplayInfo, max_caption_length, u8(9), "%hhu"),
};
constexpr ReportLayout kDisplayInfoLayout = layout_of<DisplayInfo>(
    report_id::kDisplayInfo, "velatrix_hid_feature_display_info structure:\n", kDisplayInfoFields);
static_assert(layout_fits(kDisplayInfoLayout));

using Capabilities = velatrix_hid_capabilities;
constexpr Field kCapabilitiesFields[] = {
    VELATRIX_ROW(Capabilities, report_id, u8(0), "%hhu"),
    VELATRIX_ROW(Capabilities, supported_reports, u16(1), "%hu"),
    VELATRIX_ROW(Capabilities, coordinate_modes, u8(3), "%hhu"),
    VELATRIX_HIDDEN_ROW(Capabilities, reserved_1, u8(4)),
    VELATRIX_ROW(Capabilities, display_id, u8(5), "%hhu"),
    VELATRIX_ROW(Capabilities, brightness_levels, u8(6), "%hhu"),
    VELATRIX_ROW(Capabilities, contrast_levels, u8(7), "%hhu"),
    VELATRIX_ROW(Capabilities, color_depth, u8(8), "%hhu"),
    VELATRIX_ROW(Capabilities, display_width, u16(9), "%hu"),
    VELATRIX_ROW(Capabilities, display_height, u16(11), "%hu"),
    VELATRIX_ROW(Capabilities, digitizer_width, u16(13), "%hu"),
    VELATRIX_ROW(Capabilities, digitizer_height, u16(15), "%hu"),
    VELATRIX_ROW(Capabilities, coordinate_xmin, u16(17), "%hu"),
    VELATRIX_ROW(Capabilities, coordinate_xmax, u16(19), "%hu"),
    VELATRIX_ROW(Capabilities, coordinate_ymin, u16(21), "%hu"),
    VELATRIX_ROW(Capabilities, coordinate_ymax, u16(23), "%hu"),
    VELATRIX_ROW(Capabilities, calibration_x_min, u16(25), "%u"),
    VELATRIX_ROW(Capabilities, calibration_x_max, u16(27), "%u"),
    VELATRIX_ROW(Capabilities, calibration_y_min, u16(29), "%u"),
    VELATRIX_ROW(Capabilities, calibration_y_max, u16(31), "%u"),
    VELATRIX_ROW(Capabilities, reserved_4, u32(33), "%u"),
    VELATRIX_ROW(Capabilities, reserved_5, u32(37), "%u"),
    VELATRIX_ROW(Capabilities, mag_reader_id, u8(41), "%hhu"),
    VELATRIX_ROW(Capabilities, reserved_6, u8(42), "%hhu"),
    VELATRIX_ROW(Capabilities, reserved_7, u16(43), "%hu"),
    VELATRIX_ROW(Capabilities, supports_screens_resources, u8(45), "%u"),
    VELATRIX_ROW(Capabilities, reserved_9, u8(46), "%u"),
    VELATRIX_ROW(Capabilities, reserved_10, u16(47), "%u"),
    VELATRIX_ROW(Capabilities, reserved_11, u32(49), "%u"),
    VELATRIX_ROW(Capabilities, reserved_12, u32(53), "%u"),
    VELATRIX_ROW(Capabilities, reserved_13, u32(57), "%u"),
    VELATRIX_ROW(Capabilities, reserved_14, u32(61), "%u"),
};
constexpr ReportLayout kCapabilitiesLayout = layout_of<Capabilities>(
    report_id::kCapabilities, "velatrix_hid_capabilities structure:\n", kCapabilitiesFields);
static_assert(layout_fits(kCapabilitiesLayout));

using DeviceConfigure = velatrix_hid_feature_device_configure;
constexpr Field kDeviceConfigureFields[] = {
    VELATRIX_ROW(DeviceConfigure, report_id, u8(0), "%hhu"),
    VELATRIX_ROW(DeviceConfigure, device_mode, u8(1), "%hhu"),
    VELATRIX_ROW(DeviceConfigure, device_id, u8(2), "%hhu"),
};
constexpr ReportLayout kDeviceConfigureLayout =
    layout_of<DeviceConfigure>(report_id::kDeviceConfigure, "velatrix_hid_feature_device_configure structure:\n",
                               kDeviceConfigureFields);
static_assert(layout_fits(kDeviceConfigureLayout));

using ContactCount = velatrix_hid_feature_contact_count_maximum;
constexpr Field kContactCountFields[] = {
    VELATRIX_HIDDEN_ROW(ContactCount, report_id, u8(0)),
    VELATRIX_ROW(ContactCount, contact_count_max, u8(1), "%hhu"),
};
constexpr ReportLayout kContactCountLayout =
    layout_of<ContactCount>(report_id::kContactCountMaximum,
                            "velatrix_hid_feature_contact_count_maximum structure:\n", kContactCountFields);
static_assert(layout_fits(kContactCountLayout));

// The print header names the function, not the record; tools match on it.
using FrequencyAmplitude = velatrix_hid_feature_frequency_amplitude;
constexpr Field kFrequencyAmplitudeFields[] = {
    VELATRIX_HIDDEN_ROW(FrequencyAmplitude, report_id, u8(0)),
    VELATRIX_ROW(FrequencyAmplitude, frequency, u8(1), "%hhu"),
    VELATRIX_ROW(FrequencyAmplitude, pen_amplitude, u8(2), "%hhu"),
    VELATRIX_ROW(FrequencyAmplitude, touch_amplitude, u8(3), "%hhu"),
};
constexpr ReportLayout kFrequencyAmplitudeLayout =
    layout_of<FrequencyAmplitude>(report_id::kFrequencyAmplitude, "velatrix_print_frequency_amplitude structure:\n",
                                  kFrequencyAmplitudeFields);
static_assert(layout_fits(kFrequencyAmplitudeLayout));

// Read as report 21, written as report 2: the firmware takes power-state
// commands under the older id.
using PowerState = velatrix_hid_feature_power_state;
constexpr Field kPowerStateFields[] = {
    VELATRIX_HIDDEN_ROW(PowerState, report_id, u8(0)),
    VELATRIX_ROW(PowerState, power_state, u8(1), "%hhu"),
};
constexpr ReportLayout kPowerStateLayout = layout_of<PowerState>(
    report_id::kPowerState, "velatrix_hid_feature_power_state structure:\n", kPowerStateFields);
constexpr ReportLayout kPowerStateWriteLayout = layout_of<PowerState>(
    report_id::kPowerStateWrite, "velatrix_hid_feature_power_state structure:\n", kPowerStateFields);
static_assert(layout_fits(kPowerStateLayout) && layout_fits(kPowerStateWriteLayout));

using Version = velatrix_hid_feature_version;
constexpr Field kVersionFields[] = {
    VELATRIX_ROW(Version, report_id, u8(0), "%hhu"),
    {"kernel_version", raw(1, 3), VELATRIX_SLOT(Version, kernel_version), PrintKind::kDotted, "%hhu"},
    {"firmware_version", raw(4, 3), VELATRIX_SLOT(Version, firmware_version), PrintKind::kDotted, "%hhu"},
    VELATRIX_ROW(Version, asic_signature, u16(7), "%hu"),
};
constexpr ReportLayout kVersionLayout =
    layout_of<Version>(report_id::kVersion, "velatrix_hid_feature_version structure:\n", kVersionFields);
static_assert(layout_fits(kVersionLayout));

using CoordinateRange = velatrix_hid_feature_coordinate_range;
constexpr Field kCoordinateRangeFields[] = {
    VELATRIX_HIDDEN_ROW(CoordinateRange, report_id, u8(0)),
    VELATRIX_ROW(CoordinateRange, x_min, u16(1), "%hu"),
    VELATRIX_ROW(CoordinateRange, x_max, u16(3), "%hu"),
    VELATRIX_ROW(CoordinateRange, y_min, u16(5), "%hu"),
    VELATRIX_ROW(CoordinateRange, y_max, u16(7), "%hu"),
};
constexpr ReportLayout kCoordinateRangeLayout =
    layout_of<CoordinateRange>(report_id::kCoordinateRange, "velatrix_hid_feature_coordinate_range structure:\n",
                               kCoordinateRangeFields);
static_assert(layout_fits(kCoordinateRangeLayout));

// The record's reserved byte after supported_modes has no place on the wire.
using OperatingModes = velatrix_hid_feature_operating_modes;
constexpr Field kOperatingModesFields[] = {
    VELATRIX_ROW(OperatingModes, report_id, u8(0), "%hhu"),
    VELATRIX_ROW(OperatingModes, supported_modes, u8(1), "%hhu"),
    VELATRIX_ROW(OperatingModes, acquisition_mode, u8(2), "%hhu"),
    VELATRIX_ROW(OperatingModes, touch_mode, u8(3), "%hhu"),
    VELATRIX_ROW(OperatingModes, pen_mode, u8(4), "%hhu"),
};
constexpr ReportLayout kOperatingModesLayout =
    layout_of<OperatingModes>(report_id::kOperatingModes, "velatrix_hid_feature_operating_modes structure:\n",
                              kOperatingModesFields);
static_assert(layout_fits(kOperatingModesLayout));

}  // namespace
}  // namespace velatrix::protocol

using namespace velatrix::protocol;

extern "C" {

VELATRIX_DEFINE_REPORT_GET(display_info, velatrix_hid_feature_display_info, kDisplayInfoLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(display_info, velatrix_hid_feature_display_info)
VELATRIX_DEFINE_REPORT_PRINT(display_info, velatrix_hid_feature_display_info, kDisplayInfoLayout)

VELATRIX_DEFINE_REPORT_GET(capabilities, velatrix_hid_capabilities, kCapabilitiesLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(capabilities, velatrix_hid_capabilities)
VELATRIX_DEFINE_REPORT_PRINT(capabilities, velatrix_hid_capabilities, kCapabilitiesLayout)

VELATRIX_DEFINE_REPORT_GET(device_configure, velatrix_hid_feature_device_configure, kDeviceConfigureLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(device_configure, velatrix_hid_feature_device_configure)
VELATRIX_DEFINE_REPORT_SET(device_configure, velatrix_hid_feature_device_configure, kDeviceConfigureLayout)
VELATRIX_DEFINE_REPORT_PRINT(device_configure, velatrix_hid_feature_device_configure, kDeviceConfigureLayout)

VELATRIX_DEFINE_REPORT_GET(contact_count_maximum, velatrix_hid_feature_contact_count_maximum, kContactCountLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(contact_count_maximum, velatrix_hid_feature_contact_count_maximum)
VELATRIX_DEFINE_REPORT_PRINT(contact_count_maximum, velatrix_hid_feature_contact_count_maximum, kContactCountLayout)

VELATRIX_DEFINE_REPORT_GET(frequency_amplitude, velatrix_hid_feature_frequency_amplitude, kFrequencyAmplitudeLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(frequency_amplitude, velatrix_hid_feature_frequency_amplitude)
VELATRIX_DEFINE_REPORT_SET(frequency_amplitude, velatrix_hid_feature_frequency_amplitude, kFrequencyAmplitudeLayout)
VELATRIX_DEFINE_REPORT_PRINT(frequency_amplitude, velatrix_hid_feature_frequency_amplitude,
                             kFrequencyAmplitudeLayout)

VELATRIX_DEFINE_REPORT_GET(power_state, velatrix_hid_feature_power_state, kPowerStateLayout)
VELATRIX_DEFINE_REPORT_SET(power_state, velatrix_hid_feature_power_state, kPowerStateWriteLayout)
VELATRIX_DEFINE_REPORT_PRINT(power_state, velatrix_hid_feature_power_state, kPowerStateLayout)

VELATRIX_DEFINE_REPORT_GET(version, velatrix_hid_feature_version, kVersionLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(version, velatrix_hid_feature_version)
VELATRIX_DEFINE_REPORT_PRINT(version, velatrix_hid_feature_version, kVersionLayout)

VELATRIX_DEFINE_REPORT_GET(coordinate_range, velatrix_hid_feature_coordinate_range, kCoordinateRangeLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(coordinate_range, velatrix_hid_feature_coordinate_range)
VELATRIX_DEFINE_REPORT_PRINT(coordinate_range, velatrix_hid_feature_coordinate_range, kCoordinateRangeLayout)

VELATRIX_DEFINE_REPORT_GET(operating_modes, velatrix_hid_feature_operating_modes, kOperatingModesLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(operating_modes, velatrix_hid_feature_operating_modes)
VELATRIX_DEFINE_REPORT_PRINT(operating_modes, velatrix_hid_feature_operating_modes, kOperatingModesLayout)

}  // extern "C"
