// Helpers shared by the input report tests.
#pragma once

#include <cstring>
#include <memory>
#include <vector>

#include "velatrix/input.h"
#include "velatrix/regions.h"

namespace velatrix::testing {

struct InputReportDeleter {
    void operator()(velatrix_input_report* record) const { velatrix_free_input_report(record); }
};
using InputReportPtr = std::unique_ptr<velatrix_input_report, InputReportDeleter>;

// Parses a copy of `bytes` held in an allocation of exactly their length,
// so that the address sanitizer catches any read past the report.
inline InputReportPtr parse(velatrix_device* device, const std::vector<uint8_t>& bytes) {
    auto exact = std::make_unique<uint8_t[]>(bytes.size());
    if (!bytes.empty()) std::memcpy(exact.get(), bytes.data(), bytes.size());
    return InputReportPtr(velatrix_parse_input_report(device, exact.get(), static_cast<uint32_t>(bytes.size())));
}

// A region table whose slots have the given types (slot i is region i + 1),
// installed in a device record together with the matching region count.
class RegionTable {
public:
    RegionTable(velatrix_device* device, std::vector<uint32_t> types) : device_(device), regions_(types.size()) {
        for (size_t i = 0; i < types.size(); ++i) {
            regions_[i].number = static_cast<uint8_t>(i + 1);
            regions_[i].type = types[i];
        }
        device_->regions = regions_.data();
        device_->display_info.region_count = static_cast<uint8_t>(types.size());
    }
    ~RegionTable() {
        device_->regions = nullptr;
        device_->display_info.region_count = 0;
    }
    RegionTable(const RegionTable&) = delete;
    RegionTable& operator=(const RegionTable&) = delete;

    const velatrix_device_region_info* region(uint8_t number) const { return &regions_[number - 1]; }

private:
    velatrix_device* device_;
    std::vector<velatrix_device_region_info> regions_;
};

// An extended coordinate report (id 2) at x, y on a region, tip down or up.
inline std::vector<uint8_t> extended(bool tip, uint16_t x, uint16_t y, uint8_t region, uint8_t extra_flags = 0x10) {
    return {2,
            static_cast<uint8_t>((tip ? 1 : 0) | extra_flags),
            static_cast<uint8_t>(x & 0xFF),
            static_cast<uint8_t>(x >> 8),
            static_cast<uint8_t>(y & 0xFF),
            static_cast<uint8_t>(y >> 8),
            region};
}

}  // namespace velatrix::testing
