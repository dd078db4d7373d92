// Reading fields of a raw input report. Every read is bounded by the
// report's own length: a field past the end reads as zero, so no report a
// pad sends can make the parser read outside its buffer.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

namespace velatrix::input {

using Report = std::span<const uint8_t>;

inline uint8_t byte_at(Report report, size_t offset) {
    return offset < report.size() ? report[offset] : 0;
}

// Input report fields are little-endian.
inline uint16_t u16_at(Report report, size_t offset) {
    return static_cast<uint16_t>(byte_at(report, offset) | (byte_at(report, offset + 1) << 8));
}

// Flag bits as the record keeps them: the tip switch as 0/1, the in-range
// bit masked in place (0 or 16), which consumers test for non-zero.
inline constexpr uint8_t kTipSwitchBit = 0x01;
inline constexpr uint8_t kInRangeBit = 0x10;

}  // namespace velatrix::input
