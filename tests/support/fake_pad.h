// A test on one device record of the recording fake driver, and compact
// builders of the wire reports it answers with or is expected to send.
#pragma once

#include <gtest/gtest.h>

#include <cctype>
#include <initializer_list>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>

#include "support/fake_driver.h"

namespace velatrix::testing {

// Bytes written as hex digits; spaces (and anything not a digit) separate
// bytes only for the reader: "8e 04 01" and "8e0401" are the same.
inline Bytes hex(std::string_view text) {
    std::string digits;
    for (char c : text) {
        if (std::isxdigit(static_cast<unsigned char>(c))) digits += c;
    }
    if (digits.size() % 2 != 0) throw std::invalid_argument("odd number of hex digits");
    Bytes result;
    for (size_t i = 0; i < digits.size(); i += 2) result.push_back(std::stoi(digits.substr(i, 2), nullptr, 16));
    return result;
}

// A zeroed report of `length` bytes, `id` in byte 0 and `bytes` at their offsets.
inline Bytes wire(uint8_t id, size_t length, std::initializer_list<std::pair<size_t, Bytes>> bytes = {}) {
    Bytes result(length, 0);
    result[0] = id;
    for (const auto& [offset, values] : bytes) {
        for (size_t i = 0; i < values.size(); ++i) result.at(offset + i) = values[i];
    }
    return result;
}

inline Bytes text_bytes(std::string_view text) { return Bytes(text.begin(), text.end()); }

class FakePad : public ::testing::Test {
protected:
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
};

}  // namespace velatrix::testing
