// Firmware download page by page, and simulated pen input.
#include <cstring>

#include "velatrix/modes.h"
#include "velatrix/transport.h"

#include "debug/log.h"
#include "protocol/report_index.h"

namespace {
using namespace velatrix::protocol;
constexpr uint16_t kPageLength = report_length(report_id::kFirmware);
constexpr uint16_t kStatusLength = report_length(report_id::kFirmwareDownloadStatus);
constexpr uint16_t kPenLength = report_length(report_id::kSimulatePenInput);
constexpr uint8_t kPenSubCommand = 0x64;
constexpr uint8_t kPenInRange = 0x10;
}  // namespace

extern "C" {

int velatrix_set_firmware(velatrix_device* device, velatrix_firmware_page page) {
    VELATRIX_TRACE_FUNCTION();
    uint8_t buffer[kPageLength] = {report_id::kFirmware};
    put4(buffer, 1, page.address);
    std::memcpy(buffer + 5, page.data, sizeof page.data);
    buffer[133] = page.checksum;
    return velatrix_hid_set_feature_report(device, buffer, sizeof buffer) == 1 ? 1 : 0;
}

int velatrix_set_firmware_download_status(velatrix_device* device, uint32_t status) {
    VELATRIX_TRACE_FUNCTION();
    uint8_t buffer[kStatusLength] = {report_id::kFirmwareDownloadStatus};
    put2(buffer, 1, static_cast<int32_t>(status & 0xFFFF));
    return velatrix_hid_set_feature_report(device, buffer, sizeof buffer) == 1 ? 1 : 0;
}

int velatrix_simulate_pen_input(velatrix_device* device, const velatrix_pen_simulation* pen) {
    VELATRIX_TRACE_FUNCTION();
    if (pen == nullptr) {
        VELATRIX_REPORT_ERROR("Pen input was null, unable to simulate it.");
        return 0;
    }
    uint8_t buffer[kPenLength] = {report_id::kSimulatePenInput, kPenSubCommand, pen->identifier};
    buffer[6] = kPenInRange | (pen->pen_down != 0 ? 1 : 0);
    put2(buffer, 7, pen->first_coordinate);
    put2(buffer, 9, pen->second_coordinate);
    if (velatrix_hid_set_feature_report(device, buffer, sizeof buffer) != 1) {
        VELATRIX_LOG(VELATRIX_LEVEL_WARNING, "Unable to set report: %s", velatrix_get_last_error());
        return 0;
    }
    return 1;
}

}  // extern "C"
