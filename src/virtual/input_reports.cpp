#include "virtual/input_reports.h"

#include <algorithm>

#include "virtual/wire.h"

namespace velatrix::virtual_pad {

namespace {
constexpr std::size_t kTrack1 = 5, kTrack1Length = 79;
constexpr std::size_t kTrack2 = 84, kTrack2Length = 40;
constexpr std::size_t kTrack3 = 124, kTrack3Length = 107;
}  // namespace

std::size_t input_report_length(uint8_t id) {
    switch (id) {
    case kCoordinateReport:
        return 6;
    case kExtendedCoordinateReport:
        return 7;
    case kAdcReport:
        return 11;
    case kCardSwipeReport:
        return 231;
    case kDebugReport:
        return 22;
    default:
        return 0;
    }
}

Bytes pen_report(bool extended, uint16_t x, uint16_t y, bool tip, bool in_range, uint8_t region) {
    uint8_t id = extended ? kExtendedCoordinateReport : kCoordinateReport;
    Bytes report(input_report_length(id));
    Outgoing out(report);
    out.u8(0, id);
    out.u8(1, static_cast<uint8_t>((tip ? kTipBit : 0) | (in_range ? kInRangeBit : 0)));
    out.le16(2, x);
    out.le16(4, y);
    if (extended) out.u8(6, region);
    return report;
}

Bytes card_swipe_report(std::string_view track1, std::string_view track2, std::string_view track3) {
    Bytes report(input_report_length(kCardSwipeReport));
    Outgoing out(report);
    track1 = track1.substr(0, kTrack1Length);
    track2 = track2.substr(0, kTrack2Length);
    track3 = track3.substr(0, kTrack3Length);
    out.u8(0, kCardSwipeReport);
    out.u8(1, static_cast<uint8_t>(track1.size()));
    out.u8(2, static_cast<uint8_t>(track2.size()));
    out.u8(3, static_cast<uint8_t>(track3.size()));
    out.u8(4, 0);
    out.text(kTrack1, track1);
    out.text(kTrack2, track2);
    out.text(kTrack3, track3);
    return report;
}

Bytes adc_report(uint8_t kind, uint8_t flags_or_channel, const std::array<uint16_t, 4>& values) {
    Bytes report(input_report_length(kAdcReport));
    Outgoing out(report);
    out.u8(0, kAdcReport);
    out.u8(1, kind);
    out.u8(2, flags_or_channel);
    for (std::size_t i = 0; i < values.size(); ++i) out.le16(3 + 2 * i, values[i]);
    return report;
}

Bytes debug_report(uint8_t flags, const std::array<uint16_t, 9>& values, uint8_t last) {
    Bytes report(input_report_length(kDebugReport));
    Outgoing out(report);
    out.u8(0, kDebugReport);
    out.u8(2, flags);
    for (std::size_t i = 0; i < values.size(); ++i) out.le16(3 + 2 * i, values[i]);
    out.u8(21, last);
    return report;
}

}  // namespace velatrix::virtual_pad
