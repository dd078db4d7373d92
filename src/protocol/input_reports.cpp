// Decoding of the pad's input reports into velatrix_input_report records.
// Each report is described once in kLayouts: its id, the shortest length
// it may have, the message for a shorter one, its rows in the report
// engine's terms and a hook for the rest. Reports longer than their minimum
// are accepted; the extra bytes are ignored.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "debug/log.h"
#include "protocol/input_buttons.h"
#include "protocol/input_dispatch.h"
#include "protocol/input_fields.h"
#include "protocol/report_fields.h"
#include "velatrix/input.h"

namespace velatrix::input {
namespace {

using protocol::bit;
using protocol::Field;
using protocol::masked;
using protocol::raw;
using protocol::u16;
using protocol::u8;

using Decoder = void (*)(velatrix_device* device, Report report, velatrix_input_report& record);

// A report's id, the shortest length it may have, the message for a
// shorter one, its rows (all within the shortest length) and a hook for
// what rows cannot say.
struct InputReportLayout {
    uint8_t id;
    uint32_t minimum_length;
    const char* too_small;
    std::span<const Field> rows;
    Decoder hook = nullptr;
};

using Record = velatrix_input_report;
#define VELATRIX_INPUT_ROW(member, wire) VELATRIX_HIDDEN_ROW(Record, member, wire)

// The record's type is the report id for every report but the extended
// coordinate, whose hook decides.
constexpr Field kCoordinateRows[] = {
    VELATRIX_INPUT_ROW(type, u8(0)),
    VELATRIX_INPUT_ROW(data.coordinate.tip_switch, bit(1, 0)),
    VELATRIX_INPUT_ROW(data.coordinate.in_range, masked(1, kInRangeBit)),
    VELATRIX_INPUT_ROW(data.coordinate.x, u16(2)),
    VELATRIX_INPUT_ROW(data.coordinate.y, u16(4)),
};

// Report 3: kind at 1; the hook reads its flags or channel at 2 and the
// four values from 3 into the member the kind selects.
constexpr Field kAdcRows[] = {
    VELATRIX_INPUT_ROW(type, u8(0)),
    VELATRIX_INPUT_ROW(data.adc.kind, u8(1)),
};

void decode_adc_values(velatrix_device*, Report report, velatrix_input_report& record) {
    velatrix_input_adc& adc = record.data.adc;
    const uint8_t detail = byte_at(report, 2);
    const uint16_t v1 = u16_at(report, 3), v2 = u16_at(report, 5), v3 = u16_at(report, 7), v4 = u16_at(report, 9);
    if (adc.kind == VELATRIX_ADC_SCAN_VALUES) {
        const auto flag_a = static_cast<uint8_t>(detail & 0x01);
        const auto flag_b = static_cast<uint8_t>(detail & 0x10);
        adc.values.scan = {flag_a, flag_b, v1, v2, v3, v4};
    } else if (adc.kind == VELATRIX_ADC_CHANNEL_VALUES) {
        adc.values.channel = {detail, v1, v2, v3, v4};
    }
}

// Report 12: four header bytes from 1, then the three tracks back to back.
// No terminator is added: a full track runs on into the next field when
// read as text, and the record's zero fill ends track 3.
constexpr uint16_t kTrack1 = 5;
constexpr uint16_t kTrack2 = kTrack1 + VELATRIX_CARD_TRACK1_LENGTH;
constexpr uint16_t kTrack3 = kTrack2 + VELATRIX_CARD_TRACK2_LENGTH;
constexpr Field kCardSwipeRows[] = {
    VELATRIX_INPUT_ROW(type, u8(0)),
    VELATRIX_INPUT_ROW(data.card_swipe.header1, u8(1)),
    VELATRIX_INPUT_ROW(data.card_swipe.header2, u8(2)),
    VELATRIX_INPUT_ROW(data.card_swipe.header3, u8(3)),
    VELATRIX_INPUT_ROW(data.card_swipe.header4, u8(4)),
    VELATRIX_INPUT_ROW(data.card_swipe.track1, raw(kTrack1, VELATRIX_CARD_TRACK1_LENGTH)),
    VELATRIX_INPUT_ROW(data.card_swipe.track2, raw(kTrack2, VELATRIX_CARD_TRACK2_LENGTH)),
    VELATRIX_INPUT_ROW(data.card_swipe.track3, raw(kTrack3, VELATRIX_CARD_TRACK3_LENGTH)),
};

// Report 254: byte 1 unused, flags at 2, nine values from 3, one byte at 21.
constexpr Field kDebugCoordinateRows[] = {
    VELATRIX_INPUT_ROW(type, u8(0)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.tip_switch, bit(2, 0)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.in_range, masked(2, kInRangeBit)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.value1, u16(3)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.value2, u16(5)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.value3, u16(7)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.value4, u16(9)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.value5, u16(11)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.value6, u16(13)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.value7, u16(15)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.value8, u16(17)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.value9, u16(19)),
    VELATRIX_INPUT_ROW(data.debug_coordinate.last, u8(21)),
};

#undef VELATRIX_INPUT_ROW

// Track 3 ends the card-swipe report, so its minimum covers all tracks.
constexpr uint32_t kCardSwipeLength = kTrack3 + VELATRIX_CARD_TRACK3_LENGTH;
static_assert(kCardSwipeLength == 231);

constexpr std::array<InputReportLayout, 5> kLayouts{{
    {1, 6, "Buffer was too small to be an input coordinate buffer.", kCoordinateRows},
    {2, 7, "Buffer was too small to be an extended input coordinate buffer.", {}, decode_extended_coordinate},
    {3, 11, "Buffer was too small to be an adc value buffer.", kAdcRows, decode_adc_values},
    {12, kCardSwipeLength, "Buffer was too small to be a card swipe buffer.", kCardSwipeRows},
    {254, 22, "Buffer was too small to be a debug coordinate buffer.", kDebugCoordinateRows},
}};

// Every row lies within its report's shortest length and within the record.
constexpr bool rows_fit() {
    for (const InputReportLayout& layout : kLayouts) {
        const protocol::ReportLayout check{layout.id, static_cast<uint16_t>(layout.minimum_length), sizeof(Record),
                                           nullptr, layout.rows};
        if (!protocol::layout_fits(check)) return false;
    }
    return true;
}
static_assert(rows_fit());

void decode(const InputReportLayout& layout, velatrix_device* device, Report report, velatrix_input_report& record) {
    protocol::unpack_fields(layout.rows, report, &record);
    if (layout.hook != nullptr) layout.hook(device, report, record);
}

const InputReportLayout* find_layout(uint8_t id) {
    const auto* found = std::find_if(kLayouts.begin(), kLayouts.end(), [id](const auto& l) { return l.id == id; });
    return found != kLayouts.end() ? found : nullptr;
}

// The layout of a report that can be decoded, or null with the error set.
// Checked before anything is allocated or decoded, so a rejected report
// leaves the device's button state as it was.
const InputReportLayout* accept(const uint8_t* buffer, uint32_t length) {
    if (buffer == nullptr || length == 0) {
        velatrix::report_error_at("velatrix_parse_input_report", kLogCore, __LINE__,
                                  "Buffer passed into velatrix_parse_input_report was null or empty.");
        return nullptr;
    }
    const InputReportLayout* layout = find_layout(buffer[0]);
    if (layout == nullptr) {
        velatrix::report_error_at("velatrix_parse_input_report", kLogCore, __LINE__, "Unknown input report in buffer.");
        return nullptr;
    }
    if (length < layout->minimum_length) {
        velatrix::report_error_at("velatrix_parse_input_report", kLogCore, __LINE__, "%s", layout->too_small);
        return nullptr;
    }
    return layout;
}

}  // namespace

bool parse_input_report_into(velatrix_device* device, const uint8_t* buffer, uint32_t length,
                             velatrix_input_report& record) {
    // Logged under the public parser's name: a read's log reads the same
    // whichever of the two decoded its reports.
    FunctionTrace trace("velatrix_parse_input_report", kLogCore, __LINE__);
    const InputReportLayout* layout = accept(buffer, length);
    if (layout == nullptr) return false;
    record = velatrix_input_report{};
    decode(*layout, device, Report(buffer, length), record);
    return true;
}

}  // namespace velatrix::input

extern "C" {

velatrix_input_report* velatrix_parse_input_report(velatrix_device* device, const uint8_t* buffer, uint32_t length) {
    VELATRIX_TRACE_FUNCTION();
    using namespace velatrix::input;
    const InputReportLayout* layout = accept(buffer, length);
    if (layout == nullptr) return nullptr;
    auto* record = static_cast<velatrix_input_report*>(std::calloc(1, sizeof(velatrix_input_report)));
    if (record == nullptr) {
        VELATRIX_REPORT_ERROR("Unable to allocate an input report.");
        return nullptr;
    }
    decode(*layout, device, Report(buffer, length), *record);
    return record;
}

void velatrix_free_input_report(velatrix_input_report* record) {
    VELATRIX_TRACE_FUNCTION();
    std::free(record);
}

}  // extern "C"
