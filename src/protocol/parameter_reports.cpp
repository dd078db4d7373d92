// Display settings, start-up mode, general acquisition parameters and the
// raw digitizer chip registers. None of these waits for the interlock: the
// pad applies them without reorganising its stored configuration.
#include "protocol/report_functions.h"
#include "velatrix/parameter_reports.h"
#include "velatrix/transport.h"

namespace velatrix::protocol {
namespace {

using DisplaySettings = velatrix_hid_feature_display_settings;
constexpr Field kDisplaySettingsFields[] = {
    VELATRIX_ROW(DisplaySettings, report_id, u8(0), "%hhu"),
    VELATRIX_ROW(DisplaySettings, brightness, u8(1), "%hhu"),
    VELATRIX_ROW(DisplaySettings, contrast, u8(2), "%hhu"),
    VELATRIX_ROW(DisplaySettings, red, u8(3), "%hhu"),
    VELATRIX_ROW(DisplaySettings, green, u8(4), "%hhu"),
    VELATRIX_ROW(DisplaySettings, blue, u8(5), "%hhu"),
    VELATRIX_ROW(DisplaySettings, set_command, u8(6), "%u"),
};
constexpr ReportLayout kDisplaySettingsLayout =
    layout_of<DisplaySettings>(report_id::kDisplaySettings, "velatrix_hid_feature_display_settings structure:\n",
                               kDisplaySettingsFields);
static_assert(layout_fits(kDisplaySettingsLayout));

using General = velatrix_hid_feature_general_parameters;
constexpr Field kGeneralFields[] = {
    VELATRIX_ROW(General, report_id, u8(0), "%hhu"),
    VELATRIX_ROW(General, xy_output_enable, bit(1, 0), "%hhu"),
    VELATRIX_ROW(General, adc_output_enable, bit(1, 1), "%hhu"),
    VELATRIX_ROW(General, map_coordinates, bit(1, 2), "%hhu"),
    VELATRIX_ROW(General, channel_lock_enable, bit(1, 3), "%hhu"),
    VELATRIX_ROW(General, channel_lock_number, bits(1, 4, 6), "%hhu"),
    VELATRIX_ROW(General, reserved, bit(1, 7), "%hhu"),
    VELATRIX_ROW(General, corner_lower_left, bits(2, 0, 1), "%hhu"),
    VELATRIX_ROW(General, corner_upper_left, bits(2, 2, 3), "%hhu"),
    VELATRIX_ROW(General, corner_lower_right, bits(2, 4, 5), "%hhu"),
    VELATRIX_ROW(General, corner_upper_right, bits(2, 6, 7), "%hhu"),
    VELATRIX_ROW(General, samples, u16(3), "%hu"),
    VELATRIX_ROW(General, filter_fequency, u8(5), "%hhu"),
};
constexpr ReportLayout kGeneralLayout = layout_of<General>(
    report_id::kGeneralParameters, "velatrix_hid_feature_general_parameters structure:\n", kGeneralFields);
static_assert(layout_fits(kGeneralLayout));

using RegisterGet = velatrix_hid_feature_register_get;
constexpr Field kRegisterGetFields[] = {
    VELATRIX_ROW(RegisterGet, report_id, u8(0), "%hhu"),
    {"register_info", raw(1, VELATRIX_REGISTER_INFO_SIZE), VELATRIX_SLOT(RegisterGet, register_info),
     PrintKind::kHexDump},
};
constexpr ReportLayout kRegisterGetLayout = layout_of<RegisterGet>(
    report_id::kAsicRegisterGet, "velatrix_hid_feature_register_get structure:\n", kRegisterGetFields);
static_assert(layout_fits(kRegisterGetLayout));

using RegisterSet = velatrix_hid_feature_register_set;
constexpr Field kRegisterSetFields[] = {
    VELATRIX_HIDDEN_ROW(RegisterSet, register_address, u8(1)),
    VELATRIX_HIDDEN_ROW(RegisterSet, register_value, u8(2)),
};
constexpr ReportLayout kRegisterSetLayout =
    layout_of<RegisterSet>(report_id::kAsicRegisterSet, nullptr, kRegisterSetFields);
static_assert(layout_fits(kRegisterSetLayout));

using AsicReset = velatrix_hid_feature_asic_reset;
constexpr Field kAsicResetFields[] = {
    VELATRIX_HIDDEN_ROW(AsicReset, reset_bit_0, bit(1, 0)),
    VELATRIX_HIDDEN_ROW(AsicReset, reset_bit_1, bit(1, 1)),
};
constexpr ReportLayout kAsicResetLayout = layout_of<AsicReset>(report_id::kAsicReset, nullptr, kAsicResetFields);
static_assert(layout_fits(kAsicResetLayout));

}  // namespace
}  // namespace velatrix::protocol

using namespace velatrix::protocol;

extern "C" {

VELATRIX_DEFINE_REPORT_GET(display_settings, velatrix_hid_feature_display_settings, kDisplaySettingsLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(display_settings, velatrix_hid_feature_display_settings)
VELATRIX_DEFINE_REPORT_SET(display_settings, velatrix_hid_feature_display_settings, kDisplaySettingsLayout)
VELATRIX_DEFINE_REPORT_PRINT(display_settings, velatrix_hid_feature_display_settings, kDisplaySettingsLayout)

int velatrix_set_startup_mode(velatrix_device* device, int32_t mode) {
    VELATRIX_TRACE_FUNCTION();
    uint8_t buffer[report_length(report_id::kStartupMode)] = {report_id::kStartupMode, static_cast<uint8_t>(mode)};
    return velatrix_hid_set_feature_report(device, buffer, sizeof buffer) == 1 ? 1 : 0;
}

VELATRIX_DEFINE_REPORT_GET(general_parameters, velatrix_hid_feature_general_parameters, kGeneralLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(general_parameters, velatrix_hid_feature_general_parameters)
VELATRIX_DEFINE_REPORT_SET(general_parameters, velatrix_hid_feature_general_parameters, kGeneralLayout)
VELATRIX_DEFINE_REPORT_PRINT(general_parameters, velatrix_hid_feature_general_parameters, kGeneralLayout)

VELATRIX_DEFINE_REPORT_GET(asic_register, velatrix_hid_feature_register_get, kRegisterGetLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(asic_register, velatrix_hid_feature_register_get)
VELATRIX_DEFINE_REPORT_SET(asic_register, velatrix_hid_feature_register_set, kRegisterSetLayout)
VELATRIX_DEFINE_REPORT_PRINT(asic_register, velatrix_hid_feature_register_get, kRegisterGetLayout)
VELATRIX_DEFINE_REPORT_SET(asic_reset, velatrix_hid_feature_asic_reset, kAsicResetLayout)

}  // extern "C"
