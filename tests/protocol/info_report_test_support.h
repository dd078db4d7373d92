// Shared pieces of the information and parameter report tests: a fake pad
// with wire-report builders and record checks.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <initializer_list>
#include <string>
#include <utility>

#include "support/fake_driver.h"
#include "velatrix/error.h"
#include "velatrix/info_reports.h"
#include "velatrix/parameter_reports.h"
#include "velatrix/transport.h"

namespace velatrix::testing {

// A zeroed report of `length` bytes, `id` in byte 0 and `bytes` at their offsets.
inline Bytes wire(uint8_t id, size_t length, std::initializer_list<std::pair<size_t, Bytes>> bytes = {}) {
    Bytes result(length, 0);
    result[0] = id;
    for (const auto& [offset, values] : bytes) {
        for (size_t i = 0; i < values.size(); ++i) result.at(offset + i) = values[i];
    }
    return result;
}

template <class Record>
bool all_zero(const Record& record) {
    const auto* bytes = reinterpret_cast<const uint8_t*>(&record);
    for (size_t i = 0; i < sizeof record; ++i) {
        if (bytes[i] != 0) return false;
    }
    return true;
}

class ReportTest : public ::testing::Test {
protected:
    void SetUp() override { velatrix_set_legacy_firmware(nullptr, 0); }

    // A read of report `id` fails; `read` must return the record and `print`
    // print one. Checks the zeroed record (through its print, since padding
    // bytes do not survive a return by value).
    template <class Read, class Print>
    void expect_failed_read(uint8_t id, const char* function, Read read, Print print) {
        SCOPED_TRACE(function);
        fake.clear_transfers();
        fake.fail_report(id, "pad unplugged");
        const auto record = read();
        const decltype(record) zero{};
        EXPECT_EQ(reinterpret_cast<const uint8_t*>(&record)[0], 0);
        EXPECT_EQ(capture_stdout([&] { print(&record); }), capture_stdout([&] { print(&zero); }));
        EXPECT_EQ(fake.gets_of(id), 1);
    }

    FakeDriver fake;
    velatrix_device* device = fake.make_device();
};

}  // namespace velatrix::testing
