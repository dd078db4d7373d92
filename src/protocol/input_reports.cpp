// Decoding of the pad's input reports into velatrix_input_report records.
// Each report is described once in kLayouts: its id, the shortest length
// it may have, the message for a shorter one and the hook that fills the
// record. Reports longer than their minimum are accepted; the extra bytes
// are ignored.
#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

#include "debug/log.h"
#include "protocol/input_buttons.h"
#include "protocol/input_dispatch.h"
#include "protocol/input_fields.h"
#include "velatrix/input.h"

namespace velatrix::input {
namespace {

using Decoder = void (*)(velatrix_device* device, Report report, velatrix_input_report& record);

struct InputReportLayout {
    uint8_t id;
    uint32_t minimum_length;
    const char* too_small;
    Decoder decode;
};

// Report 1: flags at 1, x at 2, y at 4.
void decode_coordinate(velatrix_device*, Report report, velatrix_input_report& record) {
    const uint8_t flags = byte_at(report, 1);
    record.type = VELATRIX_INPUT_COORDINATE;
    record.data.coordinate.tip_switch = flags & kTipSwitchBit;
    record.data.coordinate.in_range = flags & kInRangeBit;
    record.data.coordinate.x = u16_at(report, 2);
    record.data.coordinate.y = u16_at(report, 4);
}

// Report 3: kind at 1, its flags or channel at 2, four values from 3.
void decode_adc(velatrix_device*, Report report, velatrix_input_report& record) {
    velatrix_input_adc& adc = record.data.adc;
    record.type = VELATRIX_INPUT_ADC;
    adc.kind = byte_at(report, 1);
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

// Copies one track field, never more than the report holds nor the field
// takes. No terminator is added: a full track runs on into the next field
// when read as text, and the record's zero fill ends track 3.
template <size_t N>
void copy_track(char (&field)[N], Report report, size_t offset) {
    if (offset >= report.size()) return;
    const size_t count = std::min(N, report.size() - offset);
    std::memcpy(field, report.data() + offset, count);
}

// Report 12: four header bytes from 1, then the three tracks back to back.
void decode_card_swipe(velatrix_device*, Report report, velatrix_input_report& record) {
    constexpr size_t kTrack1 = 5;
    constexpr size_t kTrack2 = kTrack1 + VELATRIX_CARD_TRACK1_LENGTH;
    constexpr size_t kTrack3 = kTrack2 + VELATRIX_CARD_TRACK2_LENGTH;
    velatrix_input_card_swipe& card = record.data.card_swipe;
    record.type = VELATRIX_INPUT_MAGNETIC_CARD_SWIPE;
    card.header1 = byte_at(report, 1);
    card.header2 = byte_at(report, 2);
    card.header3 = byte_at(report, 3);
    card.header4 = byte_at(report, 4);
    copy_track(card.track1, report, kTrack1);
    copy_track(card.track2, report, kTrack2);
    copy_track(card.track3, report, kTrack3);
}

// Report 254: byte 1 unused, flags at 2, nine values from 3, one byte at 21.
void decode_debug_coordinate(velatrix_device*, Report report, velatrix_input_report& record) {
    velatrix_input_debug_coordinate& debug = record.data.debug_coordinate;
    const uint8_t flags = byte_at(report, 2);
    record.type = VELATRIX_INPUT_DEBUG_COORDINATE;
    debug.tip_switch = flags & kTipSwitchBit;
    debug.in_range = flags & kInRangeBit;
    uint16_t* values[] = {&debug.value1, &debug.value2, &debug.value3, &debug.value4, &debug.value5,
                          &debug.value6, &debug.value7, &debug.value8, &debug.value9};
    for (size_t i = 0; i < std::size(values); ++i) *values[i] = u16_at(report, 3 + 2 * i);
    debug.last = byte_at(report, 21);
}

// Track 3 ends the card-swipe report, so its minimum covers all tracks.
constexpr uint32_t kCardSwipeLength =
    5 + VELATRIX_CARD_TRACK1_LENGTH + VELATRIX_CARD_TRACK2_LENGTH + VELATRIX_CARD_TRACK3_LENGTH;
static_assert(kCardSwipeLength == 231);

constexpr std::array<InputReportLayout, 5> kLayouts{{
    {1, 6, "Buffer was too small to be an input coordinate buffer.", decode_coordinate},
    {2, 7, "Buffer was too small to be an extended input coordinate buffer.", decode_extended_coordinate},
    {3, 11, "Buffer was too small to be an adc value buffer.", decode_adc},
    {12, kCardSwipeLength, "Buffer was too small to be a card swipe buffer.", decode_card_swipe},
    {254, 22, "Buffer was too small to be a debug coordinate buffer.", decode_debug_coordinate},
}};

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
    layout->decode(device, Report(buffer, length), record);
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
    layout->decode(device, Report(buffer, length), *record);
    return record;
}

void velatrix_free_input_report(velatrix_input_report* record) {
    VELATRIX_TRACE_FUNCTION();
    std::free(record);
}

}  // extern "C"
