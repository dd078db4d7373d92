// The device status report: the pad's state flags, the six busy flags that
// pace every other request, and the text of the pad's last error.
#include <cstring>

#include "protocol/report_functions.h"
#include "velatrix/info_reports.h"
#include "velatrix/transport.h"

namespace velatrix::protocol {
namespace {

using Status = velatrix_hid_feature_device_status;

// Byte 0 is not taken from the answer: a successful read marks the record
// with the status id itself.
void mark_status_read(std::span<const uint8_t>, void* record) {
    static_cast<Status*>(record)->report_id = report_id::kDeviceStatus;
}

constexpr Field kStatusFields[] = {
    {"report_id", none(), VELATRIX_SLOT(Status, report_id), PrintKind::kNumber, "%hhu"},
    {"is_initializing", bit(1, 0), VELATRIX_SLOT(Status, is_initializing), PrintKind::kNumber, "%d"},
    {"is_idle", bit(1, 4), VELATRIX_SLOT(Status, is_idle), PrintKind::kNumber, "%d"},
    {"calibration_required", bit(2, 0), VELATRIX_SLOT(Status, calibration_required), PrintKind::kNumber, "%d"},
    {"is_calibrating", bit(2, 1), VELATRIX_SLOT(Status, is_calibrating), PrintKind::kNumber, "%d"},
    {"interlock_0", bit(3, 0), VELATRIX_SLOT(Status, interlock_0), PrintKind::kHidden},
    {"interlock_1", bit(3, 1), VELATRIX_SLOT(Status, interlock_1), PrintKind::kHidden},
    {"interlock_2", bit(3, 2), VELATRIX_SLOT(Status, interlock_2), PrintKind::kHidden},
    {"interlock_3", bit(3, 3), VELATRIX_SLOT(Status, interlock_3), PrintKind::kHidden},
    {"interlock_4", bit(3, 4), VELATRIX_SLOT(Status, interlock_4), PrintKind::kHidden},
    {"interlock_5", bit(3, 5), VELATRIX_SLOT(Status, interlock_5), PrintKind::kHidden},
    {"reserved1", u8(4), VELATRIX_SLOT(Status, reserved1), PrintKind::kNumber, "0x%02x"},
    {"reserved2", u16(5), VELATRIX_SLOT(Status, reserved2), PrintKind::kNumber, "0x%02x"},
    {"reserved3", u16(7), VELATRIX_SLOT(Status, reserved3), PrintKind::kHidden},
    {"errorInfo", raw(9, VELATRIX_DEVICE_ERROR_INFO_SIZE), VELATRIX_SLOT(Status, errorInfo), PrintKind::kText,
     "\"%s\""},
};

constexpr ReportLayout kStatusLayout = layout_of<Status>(
    report_id::kDeviceStatus, "velatrix_hid_feature_device_status:\n", kStatusFields, &mark_status_read);
static_assert(layout_fits(kStatusLayout));

}  // namespace
}  // namespace velatrix::protocol

using velatrix::protocol::kStatusLayout;

extern "C" {

VELATRIX_DEFINE_REPORT_REF(device_status, velatrix_hid_feature_device_status, kStatusLayout)

velatrix_hid_feature_device_status* velatrix_get_device_status(velatrix_hid_feature_device_status* record,
                                                               velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_hid_feature_device_status status;
    velatrix_get_device_status_ref(device, &status);
    if (record == nullptr) return nullptr;
    std::memcpy(record, &status, sizeof status);
    return record;
}

VELATRIX_DEFINE_REPORT_PRINT(device_status, velatrix_hid_feature_device_status, kStatusLayout)

int velatrix_clear_last_error(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    using namespace velatrix::protocol;
    uint8_t buffer[report_length(report_id::kDeviceStatus)] = {report_id::kDeviceStatus};
    return velatrix_hid_set_feature_report(device, buffer, sizeof buffer) == 1 ? 1 : 0;
}

}  // extern "C"
