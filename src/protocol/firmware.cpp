// Firmware download page by page, and simulated pen input.
#include "velatrix/modes.h"

#include "debug/log.h"
#include "protocol/report_fields.h"
#include "protocol/report_index.h"

namespace {
using namespace velatrix::protocol;

// One page: its address, 128 bytes and their checksum. Only ever written.
using Page = velatrix_firmware_page;
constexpr Field kPageFields[] = {
    VELATRIX_HIDDEN_ROW(Page, address, u32(1)),
    VELATRIX_HIDDEN_ROW(Page, data, raw(5, 128)),
    VELATRIX_HIDDEN_ROW(Page, checksum, u8(133)),
};
constexpr ReportLayout kPageLayout = layout_of<Page>(report_id::kFirmware, nullptr, kPageFields);
static_assert(layout_fits(kPageLayout));

// The download status: only its low 16 bits travel.
struct DownloadStatus {
    uint32_t status;
};
constexpr Field kStatusFields[] = {VELATRIX_HIDDEN_ROW(DownloadStatus, status, u16(1))};
constexpr ReportLayout kStatusLayout =
    layout_of<DownloadStatus>(report_id::kFirmwareDownloadStatus, nullptr, kStatusFields);
static_assert(layout_fits(kStatusLayout));

// A pen sample the pad takes as its own: sub-command 0x64, the pen's
// identifier, the in-range bit always set with the tip switch beside it,
// then the two coordinates.
using Pen = velatrix_pen_simulation;
constexpr Field kPenFields[] = {
    fixed_byte(1, 0x64),
    VELATRIX_HIDDEN_ROW(Pen, identifier, u8(2)),
    fixed_byte(6, 0x10),
    VELATRIX_HIDDEN_ROW(Pen, pen_down, flag(6, 0)),
    VELATRIX_HIDDEN_ROW(Pen, first_coordinate, u16(7)),
    VELATRIX_HIDDEN_ROW(Pen, second_coordinate, u16(9)),
};
constexpr ReportLayout kPenLayout = layout_of<Pen>(report_id::kSimulatePenInput, nullptr, kPenFields);
static_assert(layout_fits(kPenLayout));
}  // namespace

extern "C" {

int velatrix_set_firmware(velatrix_device* device, velatrix_firmware_page page) {
    VELATRIX_TRACE_FUNCTION();
    return write_report(device, kPageLayout, &page);
}

int velatrix_set_firmware_download_status(velatrix_device* device, uint32_t status) {
    VELATRIX_TRACE_FUNCTION();
    const DownloadStatus record{status};
    return write_report(device, kStatusLayout, &record);
}

int velatrix_simulate_pen_input(velatrix_device* device, const velatrix_pen_simulation* pen) {
    VELATRIX_TRACE_FUNCTION();
    if (pen == nullptr) {
        VELATRIX_REPORT_ERROR("Pen input was null, unable to simulate it.");
        return 0;
    }
    if (write_report(device, kPenLayout, pen) != 1) {
        VELATRIX_LOG(VELATRIX_LEVEL_WARNING, "Unable to set report: %s", velatrix_get_last_error());
        return 0;
    }
    return 1;
}

}  // extern "C"
