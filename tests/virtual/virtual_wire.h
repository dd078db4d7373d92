// Helpers for talking to the virtual pad's firmware from the wire side:
// hand-built report bytes in, raw answers out.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <initializer_list>
#include <string>
#include <vector>

#include "virtual/firmware.h"
#include "support/pads_by_capability.h"
#include "virtual/pad_model.h"

namespace velatrix::virtual_pad::testing {

using Bytes = std::vector<uint8_t>;
using namespace test_pads;

// A get-feature of `id` with a zeroed buffer of `length`; the answer, or an
// empty vector when the pad refused.
inline Bytes get(Firmware& pad, uint8_t id, std::size_t length) {
    Bytes buffer(length, 0);
    buffer[0] = id;
    auto answered = pad.get_feature(buffer);
    if (!answered) return {};
    EXPECT_EQ(*answered, length) << "report " << int(id);
    return buffer;
}

// A zeroed report of `length` with the id and the given bytes from offset 1.
inline Bytes report(uint8_t id, std::size_t length, std::initializer_list<uint8_t> payload = {}) {
    Bytes bytes(length, 0);
    bytes[0] = id;
    std::size_t at = 1;
    for (uint8_t byte : payload) bytes[at++] = byte;
    return bytes;
}

inline uint16_t le16(const Bytes& bytes, std::size_t at) {
    return static_cast<uint16_t>(bytes.at(at) | (bytes.at(at + 1) << 8));
}

inline void put_le16(Bytes& bytes, std::size_t at, uint16_t value) {
    bytes.at(at) = static_cast<uint8_t>(value);
    bytes.at(at + 1) = static_cast<uint8_t>(value >> 8);
}

inline void put_be16(Bytes& bytes, std::size_t at, uint16_t value) {
    bytes.at(at) = static_cast<uint8_t>(value >> 8);
    bytes.at(at + 1) = static_cast<uint8_t>(value);
}

// Busy byte of one status read (which counts as one poll).
inline uint8_t poll_busy(Firmware& pad) { return get(pad, 13, 73).at(3); }

}  // namespace velatrix::virtual_pad::testing
