// Input reports as the pad sends them: pen positions, card swipes, ADC and
// debug samples. Multi-byte values are little-endian.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

namespace velatrix::virtual_pad {

using Bytes = std::vector<uint8_t>;

enum InputReportId : uint8_t {
    kCoordinateReport = 1,
    kExtendedCoordinateReport = 2,
    kAdcReport = 3,
    kCardSwipeReport = 12,
    kDebugReport = 254,
};

// Declared length of an input report (id byte included), 0 for ids the
// pad never sends.
std::size_t input_report_length(uint8_t id);

inline constexpr uint8_t kTipBit = 0x01;
inline constexpr uint8_t kInRangeBit = 0x10;

// Report 1 or, with `region` (0 = outside every region), report 2.
Bytes pen_report(bool extended, uint16_t x, uint16_t y, bool tip, bool in_range, uint8_t region);

// Track texts longer than their fields (79, 40 and 107 characters) are cut.
// The header bytes give the three lengths taken and a status byte (0).
Bytes card_swipe_report(std::string_view track1, std::string_view track2, std::string_view track3);

// Kind 2: `flags_or_channel` carries the two flags; kind 3: the channel.
Bytes adc_report(uint8_t kind, uint8_t flags_or_channel, const std::array<uint16_t, 4>& values);

Bytes debug_report(uint8_t flags, const std::array<uint16_t, 9>& values, uint8_t last);

}  // namespace velatrix::virtual_pad
