// Reading display pixels back from the pad (request 104, answer 105).
#include <algorithm>
#include <cstring>

#include "velatrix/display.h"
#include "velatrix/transport.h"

#include "debug/log.h"
#include "protocol/report_index.h"

namespace {
using namespace velatrix::protocol;
constexpr uint16_t kRequestLength = report_length(report_id::kPixelRequest);
constexpr uint16_t kAnswerLength = report_length(report_id::kPixelAnswer);
constexpr size_t kEntriesOffset = 7;
static_assert(kEntriesOffset + VELATRIX_PIXEL_ENTRIES * 4 == kAnswerLength);
}  // namespace

extern "C" {

int velatrix_get_pixels(velatrix_device* device, velatrix_pixel_read* record) {
    VELATRIX_TRACE_FUNCTION();
    if (record == nullptr) {
        VELATRIX_REPORT_ERROR("Pixel record was null, unable to read pixels.");
        return 0;
    }
    // The high bytes of x and y always travel as 0 (the pad's protocol was
    // fixed with a shift in the wrong direction), so only 0..255 address the
    // intended pixel: x = 300 asks for x = 44.
    uint8_t request[kRequestLength] = {report_id::kPixelRequest, static_cast<uint8_t>(record->x), 0,
                                       static_cast<uint8_t>(record->y), 0};
    if (velatrix_hid_set_feature_report(device, request, sizeof request) != 1) {
        VELATRIX_LOG(VELATRIX_LEVEL_WARNING, "Unable to get report: %s", velatrix_get_last_error());
        return 0;
    }
    uint8_t answer[kAnswerLength] = {report_id::kPixelAnswer};
    if (velatrix_hid_get_feature_report(device, answer, sizeof answer) != 1) {
        VELATRIX_LOG(VELATRIX_LEVEL_WARNING, "Unable to get report: %s", velatrix_get_last_error());
        return 0;
    }
    record->report_id = answer[0];
    record->x = static_cast<uint16_t>(get2(answer, 1));
    record->y = static_cast<uint16_t>(get2(answer, 3));
    record->count = static_cast<uint16_t>(get2(answer, 5));
    // The count comes from the pad: never copy more entries than exist.
    const size_t copied = std::min<size_t>(record->count, VELATRIX_PIXEL_ENTRIES);
    std::memcpy(record->entries, answer + kEntriesOffset, copied * 4);
    std::memset(record->entries[copied], 0, (VELATRIX_PIXEL_ENTRIES - copied) * 4);
    return 1;
}

}  // extern "C"
