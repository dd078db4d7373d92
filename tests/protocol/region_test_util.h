// Shared pieces of the region, screen and resource tests: a fake pad with a
// chosen region count and caption length, and builders of wire reports.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>
#include <utility>

#include "support/fake_driver.h"
#include "velatrix/error.h"
#include "velatrix/regions.h"
#include "velatrix/screens.h"
#include "velatrix/transport.h"

namespace velatrix::testing {

class PadTest : public ::testing::Test {
protected:
    void use_pad(uint8_t region_count, uint8_t max_caption_length) {
        device->display_info.report_id = 100;
        device->display_info.region_count = region_count;
        device->display_info.max_caption_length = max_caption_length;
    }
    void TearDown() override {
        velatrix_free_regions(device->regions);
        device->regions = nullptr;
    }

    FakeDriver fake;
    velatrix_device* device = fake.make_device();
};

// A zeroed report of `length` bytes with `id` in byte 0 and `bytes` written
// at their offsets.
inline Bytes report(uint8_t id, size_t length, std::initializer_list<std::pair<size_t, Bytes>> bytes = {}) {
    Bytes result(length, 0);
    result[0] = id;
    for (const auto& [offset, value] : bytes) std::copy(value.begin(), value.end(), result.begin() + offset);
    return result;
}

inline Bytes text_bytes(const std::string& text) { return Bytes(text.begin(), text.end()); }

// The status report answered while the pad shows `busy_bits`.
inline Bytes status(uint8_t busy_bits, uint8_t state = 0) {
    return report(13, 73, {{1, {state}}, {3, {busy_bits}}});
}

}  // namespace velatrix::testing
