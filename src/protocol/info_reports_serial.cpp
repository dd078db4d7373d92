// The serial number: read like any information report, but cleaned of
// erased flash, and written only with the pad idle after its pending region
// and screen changes are committed, because the pad stores it in the same
// flash area.
#include <algorithm>
#include <cstring>

#include "protocol/report_functions.h"
#include "velatrix/info_reports.h"
#include "velatrix/regions.h"
#include "velatrix/screens.h"
#include "velatrix/transport.h"

namespace velatrix::protocol {
namespace {

using Serial = velatrix_hid_feature_serial_number;

// Erased flash reads as 255; the text is at most 31 characters.
void clean_serial(std::span<const uint8_t>, void* record) {
    char* text = static_cast<Serial*>(record)->serial_number;
    text[VELATRIX_SERIAL_NUMBER_MAX_LENGTH] = '\0';
    std::replace(text, text + VELATRIX_SERIAL_NUMBER_SIZE, static_cast<char>(0xFF), '\0');
}

constexpr Field kSerialFields[] = {
    VELATRIX_HIDDEN_ROW(Serial, report_id, u8(0)),
    {"serial_number", raw(1, VELATRIX_SERIAL_NUMBER_SIZE), VELATRIX_SLOT(Serial, serial_number), PrintKind::kText,
     "'%s'"},
};
constexpr ReportLayout kSerialLayout = layout_of<Serial>(
    report_id::kSerialNumber, "velatrix_hid_feature_serial_number structure:\n", kSerialFields, &clean_serial);
static_assert(layout_fits(kSerialLayout));

// Bytes 33 and 34 of a write: the pad takes the write only with this marker.
constexpr uint16_t kWriteMarkerOffset = 1 + VELATRIX_SERIAL_NUMBER_SIZE;
static_assert(kWriteMarkerOffset + 2 == report_length(report_id::kSerialNumber));

}  // namespace
}  // namespace velatrix::protocol

using namespace velatrix::protocol;

extern "C" {

VELATRIX_DEFINE_REPORT_GET(serial_number, velatrix_hid_feature_serial_number, kSerialLayout)
VELATRIX_DEFINE_REPORT_REF_FROM_GET(serial_number, velatrix_hid_feature_serial_number)
VELATRIX_DEFINE_REPORT_PRINT(serial_number, velatrix_hid_feature_serial_number, kSerialLayout)

int velatrix_set_serial_number(velatrix_device* device, const char* text, uint32_t length) {
    VELATRIX_TRACE_FUNCTION();
    constexpr const ReportEntry& entry = report(report_id::kSerialNumber);
    if (text == nullptr && length > 0) {
        VELATRIX_REPORT_ERROR("Serial number text is null.");
        return 0;
    }
    uint8_t buffer[entry.length] = {entry.id};
    const uint32_t count = std::min<uint32_t>(length, VELATRIX_SERIAL_NUMBER_MAX_LENGTH);
    if (count > 0) std::memcpy(buffer + 1, text, count);
    buffer[kWriteMarkerOffset] = 'S';
    buffer[kWriteMarkerOffset + 1] = 'N';

    if (wait_for_interlock(device, entry.set_before.sleep, entry.set_before.mask) == 0) return 0;
    // Pads with screens commit through the screen-region commit; older pads
    // only know the region commit.
    if (velatrix_set_screen_region_commit(device, 0) == 0 && velatrix_set_region_commit(device, 0) == 0) return 0;

    velatrix_hid_feature_device_status status;
    velatrix_get_device_status_ref(device, &status);
    const int return_mode = status.is_idle != 0 ? VELATRIX_RUN_MODE_IDLE : VELATRIX_RUN_MODE_RUNNING;

    if (velatrix_set_run_mode(device, VELATRIX_RUN_MODE_IDLE) == 0) return 0;
    const int32_t sent = velatrix_hid_set_feature_report(device, buffer, entry.length);
    velatrix_set_run_mode(device, return_mode);
    return sent == 1 ? 1 : 0;
}

}  // extern "C"
