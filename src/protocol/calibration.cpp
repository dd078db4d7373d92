// Starting, cancelling and watching the pad's own calibration (report 0x82).
#include <cstdio>

#include "velatrix/modes.h"
#include "velatrix/regions.h"
#include "velatrix/screens.h"
#include "velatrix/transport.h"

#include "debug/log.h"
#include "protocol/report_fields.h"
#include "protocol/report_index.h"

namespace {

using namespace velatrix::protocol;

constexpr ReportEntry kCalibrate = report(report_id::kCalibrate);

// One value byte: the mode in bit 0, the point from bit 3. Printed without
// aligning the labels.
using Calibrate = velatrix_hid_feature_calibrate;
constexpr Field kCalibrateFields[] = {
    VELATRIX_HIDDEN_ROW(Calibrate, report_id, u8(0)),
    VELATRIX_ROW(Calibrate, calibration_mode, bit(1, 0), "%hhu"),
    VELATRIX_ROW(Calibrate, point, bits(1, 3, 7), "%hhu"),
};
constexpr ReportLayout kCalibrateLayout = layout_of<Calibrate>(
    report_id::kCalibrate, "velatrix_hid_feature_calibrate structure:\n", kCalibrateFields, nullptr,
    PrintStyle{.aligned = false});
static_assert(layout_fits(kCalibrateLayout));

// Written, the same report is a command: one whole byte, 0x00 to start,
// 0xFF to cancel (not a mode and a point).
struct CalibrationCommand {
    uint8_t value;
};
constexpr Field kCommandFields[] = {VELATRIX_HIDDEN_ROW(CalibrationCommand, value, u8(1))};
constexpr ReportLayout kCommandLayout = layout_of<CalibrationCommand>(report_id::kCalibrate, nullptr, kCommandFields);
static_assert(layout_fits(kCommandLayout));
constexpr CalibrationCommand kStartCalibration{0x00};
constexpr CalibrationCommand kCancelCalibration{0xFF};

// Sends the command between the calibration interlock waits. The wait
// after the send is made only when the send failed; its result is ignored.
int send_calibration_command(velatrix_device* device, const CalibrationCommand& command) {
    if (!wait_for_interlock(device, kCalibrate.set_before.sleep, kCalibrate.set_before.mask)) return 0;
    if (write_report(device, kCommandLayout, &command) == 1) return 1;
    wait_for_interlock(device, kCalibrate.set_after.sleep, kCalibrate.set_after.mask);
    return 0;
}

}  // namespace

extern "C" {

int velatrix_device_calibrate(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    // Pending screen and region edits are committed first; the older
    // region commit only when the pad refuses the screen-region one.
    if (!velatrix_set_screen_region_commit(device, 0)) velatrix_set_region_commit(device, 0);
    return send_calibration_command(device, kStartCalibration);
}

int velatrix_device_cancel_calibrate(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    return send_calibration_command(device, kCancelCalibration);
}

velatrix_hid_feature_calibrate velatrix_get_calibrate_state(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_hid_feature_calibrate record{};
    if (!wait_for_interlock(device, kCalibrate.get_before.sleep, kCalibrate.get_before.mask)) return record;
    read_report(device, kCalibrateLayout, &record, __func__);
    wait_for_interlock(device, kCalibrate.get_after.sleep, kCalibrate.get_after.mask);
    return record;
}

void velatrix_get_calibrate_state_ref(velatrix_device* device, velatrix_hid_feature_calibrate* record) {
    VELATRIX_TRACE_FUNCTION();
    if (record == nullptr) {
        VELATRIX_REPORT_ERROR("Record was null, unable to read the calibration state.");
        return;
    }
    *record = velatrix_get_calibrate_state(device);
}

void velatrix_print_calibrate_state(const velatrix_hid_feature_calibrate* record) {
    VELATRIX_TRACE_FUNCTION();
    print_report(kCalibrateLayout, record);
}

}  // extern "C"
