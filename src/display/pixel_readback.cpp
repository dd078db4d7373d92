// Reading display pixels back from the pad (request 104, answer 105).
#include <algorithm>
#include <cstring>

#include "velatrix/display.h"
#include "velatrix/transport.h"

#include "debug/log.h"
#include "protocol/report_fields.h"
#include "protocol/report_index.h"

namespace {
using namespace velatrix::protocol;
using Read = velatrix_pixel_read;

// The high bytes of x and y always travel as 0 (the pad's protocol was
// fixed with a shift in the wrong direction), so only 0..255 address the
// intended pixel: x = 300 asks for x = 44.
constexpr Field kRequestFields[] = {
    VELATRIX_HIDDEN_ROW(Read, x, u8(1)),
    VELATRIX_HIDDEN_ROW(Read, y, u8(3)),
};
constexpr ReportLayout kRequestLayout = layout_of<Read>(report_id::kPixelRequest, nullptr, kRequestFields);
static_assert(layout_fits(kRequestLayout));

// The entries follow the count; only `count` of them are taken (get_pixels).
constexpr size_t kEntriesOffset = 7;
constexpr Field kAnswerFields[] = {
    VELATRIX_HIDDEN_ROW(Read, report_id, u8(0)),
    VELATRIX_HIDDEN_ROW(Read, x, u16(1)),
    VELATRIX_HIDDEN_ROW(Read, y, u16(3)),
    VELATRIX_HIDDEN_ROW(Read, count, u16(5)),
};
constexpr ReportLayout kAnswerLayout = layout_of<Read>(report_id::kPixelAnswer, nullptr, kAnswerFields);
static_assert(layout_fits(kAnswerLayout));
static_assert(kEntriesOffset + VELATRIX_PIXEL_ENTRIES * 4 == kAnswerLayout.length);
}  // namespace

extern "C" {

int velatrix_get_pixels(velatrix_device* device, velatrix_pixel_read* record) {
    VELATRIX_TRACE_FUNCTION();
    if (record == nullptr) {
        VELATRIX_REPORT_ERROR("Pixel record was null, unable to read pixels.");
        return 0;
    }
    uint8_t request[kRequestLayout.length] = {};
    pack_report(kRequestLayout, record, request);
    if (velatrix_hid_set_feature_report(device, request, sizeof request) != 1) {
        VELATRIX_LOG(VELATRIX_LEVEL_WARNING, "Unable to get report: %s", velatrix_get_last_error());
        return 0;
    }
    uint8_t answer[kAnswerLayout.length] = {report_id::kPixelAnswer};
    if (velatrix_hid_get_feature_report(device, answer, sizeof answer) != 1) {
        VELATRIX_LOG(VELATRIX_LEVEL_WARNING, "Unable to get report: %s", velatrix_get_last_error());
        return 0;
    }
    unpack_report(kAnswerLayout, answer, record);
    // The count comes from the pad: never copy more entries than exist.
    const size_t copied = std::min<size_t>(record->count, VELATRIX_PIXEL_ENTRIES);
    std::memcpy(record->entries, answer + kEntriesOffset, copied * 4);
    std::memset(record->entries[copied], 0, (VELATRIX_PIXEL_ENTRIES - copied) * 4);
    return 1;
}

}  // extern "C"
