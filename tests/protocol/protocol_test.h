// Shared pieces of the report tests: a fake pad (optionally with a chosen
// region count and caption length), the status answer of a busy pad and a
// check of a failed read.
#pragma once

#include <gtest/gtest.h>

#include <cstring>
#include <string>
#include <vector>

#include "support/fake_pad.h"
#include "velatrix/error.h"
#include "velatrix/info_reports.h"
#include "velatrix/parameter_reports.h"
#include "velatrix/regions.h"
#include "velatrix/screens.h"
#include "velatrix/transport.h"

namespace velatrix::testing {

// The status report answered while the pad shows `busy_bits`.
inline Bytes status(uint8_t busy_bits, uint8_t state = 0) { return wire(13, 73, {{1, {state}}, {3, {busy_bits}}}); }

// A region table report: the report id, then the region blocks.
inline Bytes table_report(uint8_t id, std::initializer_list<Bytes> blocks) {
    Bytes result = {id};
    for (const Bytes& block : blocks) result.insert(result.end(), block.begin(), block.end());
    return result;
}

class PadTest : public FakePad {
protected:
    void TearDown() override {
        velatrix_free_regions(device->regions);
        device->regions = nullptr;
        velatrix_set_legacy_firmware(nullptr, 0);
    }
    void use_pad(uint8_t region_count, uint8_t max_caption_length) {
        device->display_info.report_id = 100;
        device->display_info.region_count = region_count;
        device->display_info.max_caption_length = max_caption_length;
    }

    // A read of report `id` fails: the record comes back zeroed (compared
    // through its print-out, since padding bytes do not survive a return by
    // value) after exactly one get.
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
};
// The getter and printer of one record family, by name.
#define EXPECT_FAILED_READ(id, family)                                                              \
    expect_failed_read(id, #family, [&] { return velatrix_get_##family(device); }, velatrix_print_##family)

// The print-out of what a getter read from `report`; the _ref form must read the same.
#define READ_AND_PRINT(report, family)                                                                        \
    [&] {                                                                                                     \
        fake.answer(report.at(0), report);                                                                    \
        const auto record = velatrix_get_##family(device);                                                    \
        const std::string out = capture_stdout([&] { velatrix_print_##family(&record); });                   \
        decltype(velatrix_get_##family(device)) copy;                                                         \
        std::memset(&copy, 0xAA, sizeof copy);                                                                \
        velatrix_get_##family##_ref(device, &copy);                                                           \
        EXPECT_EQ(capture_stdout([&] { velatrix_print_##family(&copy); }), out) << #family "_ref";            \
        return out;                                                                                           \
    }()

// The print-out of a record: its header, then each "label = value" line with
// the labels right-aligned to the longest.
inline std::string printed(const std::string& header, const std::vector<std::pair<std::string, std::string>>& fields) {
    size_t width = 0;
    for (const auto& field : fields) width = std::max(width, field.first.size());
    std::string out = header + "\n";
    for (const auto& [label, value] : fields) out += std::string(width - label.size(), ' ') + label + " = " + value + "\n";
    return out;
}

using Fields = std::vector<std::pair<std::string, std::string>>;

// The print-out of one region: "Region n:", then "label: value" lines (the
// common part, then the type's own) with the labels right-aligned to 19
// columns (longer ones as they are).
inline std::string printed_region(int number, const std::string& type, const Fields& common,
                                  const Fields& specific = {}) {
    std::string out = "   Region " + std::to_string(number) + ":\n";
    auto line = [&](const std::string& label, const std::string& value) {
        out += std::string(label.size() < 19 ? 19 - label.size() : 0, ' ') + label + ": " + value + "\n";
    };
    line("Type", type);
    for (const Fields* fields : {&common, &specific}) {
        for (const auto& [label, value] : *fields) line(label, value);
    }
    return out;
}

}  // namespace velatrix::testing
