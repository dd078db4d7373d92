// How the pad delivers its data (output and peripheral configuration) and
// the calibration it maps digitizer coordinates with.
#include "protocol/report_functions.h"
#include "velatrix/parameter_reports.h"

namespace velatrix::protocol {
namespace {

constexpr const char* kRealTimeNames[] = {"REAL_TIME", "TRANSMIT_ON_CONFIRM", "TRANSMIT_ON_HOST_COMMAND"};
constexpr const char* kCompressionNames[] = {
    "VELATRIX_OUTPUT_UNCOMPRESSED_LORES", "VELATRIX_OUTPUT_COMPRESSED_LORES",
    "VELATRIX_OUTPUT_UNCOMPRESSED_HIRES", "VELATRIX_OUTPUT_COMPRESSED_HIRES"};

using Output = velatrix_hid_feature_output_parameters;
constexpr Field kOutputFields[] = {
    VELATRIX_ROW(Output, report_id, u8(0), "%hhu"),
    VELATRIX_ROW(Output, output_report, u32(1), "0x%04lx"),
    {"real_time", u8(5), VELATRIX_SLOT(Output, real_time), PrintKind::kNamed, "%d: %s", kRealTimeNames},
    {"compression", bits(6, 0, 1), VELATRIX_SLOT(Output, compression), PrintKind::kNamed, "%d: %s",
     kCompressionNames},
    VELATRIX_ROW(Output, packets_per_second, u16(7), "%d"),
    VELATRIX_ROW(Output, save_as_default, flag(9, 0), "%d"),
    VELATRIX_ROW(Output, load_factory_settings, flag(9, 7), "%d"),
};
constexpr ReportLayout kOutputLayout = layout_of<Output>(
    report_id::kOutputConfiguration, "velatrix_hid_feature_output_parameters:\n", kOutputFields);
static_assert(layout_fits(kOutputLayout));

// The flag byte is kept whole in the record (its other bits are the pad's)
// and printed as its three known flags.
using Peripheral = velatrix_hid_feature_peripheral_configuration;
constexpr Field kPeripheralFields[] = {
    VELATRIX_ROW(Peripheral, report_id, u8(0), "%hhu"),
    VELATRIX_HIDDEN_ROW(Peripheral, mag_card_output, u8(1)),
    {"oem_output", none(), VELATRIX_SLOT(Peripheral, mag_card_output), PrintKind::kBitOf, "%d", {}, 0},
    {"keyboard_output", none(), VELATRIX_SLOT(Peripheral, mag_card_output), PrintKind::kBitOf, "%d", {}, 2},
    {"keyboard_preamble", none(), VELATRIX_SLOT(Peripheral, mag_card_output), PrintKind::kBitOf, "%d", {}, 3},
    VELATRIX_ROW(Peripheral, reserved1, u8(2), "%u"),
    VELATRIX_ROW(Peripheral, reserved2, u8(3), "%u"),
    VELATRIX_ROW(Peripheral, reserved3, u8(4), "%u"),
    VELATRIX_ROW(Peripheral, reserved4, u8(5), "%u"),
    VELATRIX_ROW(Peripheral, reserved5, u8(6), "%u"),
    VELATRIX_ROW(Peripheral, reserved6, u8(7), "%u"),
    VELATRIX_ROW(Peripheral, reserved7, u8(8), "%u"),
    VELATRIX_ROW(Peripheral, reserved8, u8(9), "%u"),
    VELATRIX_ROW(Peripheral, reserved9, u8(10), "%u"),
    VELATRIX_ROW(Peripheral, reserved10, u8(11), "%u"),
    VELATRIX_ROW(Peripheral, reserved11, u8(12), "%u"),
    VELATRIX_ROW(Peripheral, reserved12, u8(13), "%u"),
    VELATRIX_ROW(Peripheral, reserved13, u8(14), "%u"),
    VELATRIX_ROW(Peripheral, reserved14, u8(15), "%u"),
    VELATRIX_ROW(Peripheral, save_as_default, flag(16, 0), "%d"),
    VELATRIX_ROW(Peripheral, load_factory_settings, flag(16, 7), "%d"),
};
constexpr ReportLayout kPeripheralLayout = layout_of<Peripheral>(
    report_id::kPeripheralConfiguration, "velatrix_hid_feature_peripheral_configuration:\n", kPeripheralFields);
static_assert(layout_fits(kPeripheralLayout));

using Calibration = velatrix_hid_feature_calibration_data;
constexpr Field kCalibrationFields[] = {
    VELATRIX_HIDDEN_ROW(Calibration, report_id, u8(0)),
    VELATRIX_ROW(Calibration, CalibrationType, u8(1), "%hhu"),
    VELATRIX_ROW(Calibration, isCalibrated, flag(2, 0), "%d"),
    VELATRIX_ROW(Calibration, RotationScale, u16(3), "%d"),
    VELATRIX_ROW(Calibration, LocalMultiplierScale, u16(5), "%d"),
    VELATRIX_ROW(Calibration, HostMultiplierScale, u16(7), "%d"),
    VELATRIX_ROW(Calibration, RotationSINScaled, u16(9), "%d"),
    VELATRIX_ROW(Calibration, RotationCOSScaled, u16(11), "%d"),
    VELATRIX_ROW(Calibration, LocalWidthCalibrated, u16(13), "%d"),
    VELATRIX_ROW(Calibration, LocalHeightCalibrated, u16(15), "%d"),
    VELATRIX_ROW(Calibration, LocalXMultiplierScaled, u32(17), "%ld"),
    VELATRIX_ROW(Calibration, LocalXOffset, u32(21), "%ld"),
    VELATRIX_ROW(Calibration, LocalYMultiplierScaled, u32(25), "%ld"),
    VELATRIX_ROW(Calibration, LocalYOffset, u32(29), "%ld"),
    VELATRIX_ROW(Calibration, HostXMultiplierScaled, u32(33), "%ld"),
    VELATRIX_ROW(Calibration, HostXOffset, u32(37), "%ld"),
    VELATRIX_ROW(Calibration, HostYMultiplierScaled, u32(41), "%ld"),
    VELATRIX_ROW(Calibration, HostYOffset, u32(45), "%ld"),
};
constexpr ReportLayout kCalibrationLayout = layout_of<Calibration>(
    report_id::kCalibrationData, "velatrix_hid_feature_calibration_data:\n", kCalibrationFields);
static_assert(layout_fits(kCalibrationLayout));

}  // namespace
}  // namespace velatrix::protocol

using namespace velatrix::protocol;

extern "C" {

VELATRIX_DEFINE_REPORT_REF(output_configuration, velatrix_hid_feature_output_parameters, kOutputLayout)
VELATRIX_DEFINE_REPORT_GET_FROM_REF(output_configuration, velatrix_hid_feature_output_parameters)
VELATRIX_DEFINE_REPORT_SET(output_configuration, velatrix_hid_feature_output_parameters, kOutputLayout)
VELATRIX_DEFINE_REPORT_PRINT(output_configuration, velatrix_hid_feature_output_parameters, kOutputLayout)

VELATRIX_DEFINE_REPORT_REF(peripheral_configuration, velatrix_hid_feature_peripheral_configuration,
                           kPeripheralLayout)
VELATRIX_DEFINE_REPORT_GET_FROM_REF(peripheral_configuration, velatrix_hid_feature_peripheral_configuration)
VELATRIX_DEFINE_REPORT_SET(peripheral_configuration, velatrix_hid_feature_peripheral_configuration,
                           kPeripheralLayout)
VELATRIX_DEFINE_REPORT_PRINT(peripheral_configuration, velatrix_hid_feature_peripheral_configuration,
                             kPeripheralLayout)

VELATRIX_DEFINE_REPORT_REF(calibration_data, velatrix_hid_feature_calibration_data, kCalibrationLayout)
VELATRIX_DEFINE_REPORT_GET_FROM_REF(calibration_data, velatrix_hid_feature_calibration_data)
VELATRIX_DEFINE_REPORT_SET(calibration_data, velatrix_hid_feature_calibration_data, kCalibrationLayout)
VELATRIX_DEFINE_REPORT_PRINT(calibration_data, velatrix_hid_feature_calibration_data, kCalibrationLayout)

}  // extern "C"
