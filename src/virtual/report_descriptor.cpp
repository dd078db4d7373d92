// The HID report descriptor a virtual pad publishes. It is laid out the way
// a vendor-defined pad's descriptor is: the model's usage page and usage
// first (the host reads its primary usage from them), one application
// collection, byte-sized fields, and for every report a Report ID item, a
// usage, a count and its Input or Feature main item.
#include <cstdint>
#include <vector>

#include "virtual/firmware.h"
#include "virtual/input_reports.h"

namespace velatrix::virtual_pad {

namespace {

class DescriptorWriter {
public:
    // A short item with the smallest data size that holds `value`.
    void item(uint8_t tag_and_type, uint32_t value) {
        if (value <= 0xFF) {
            bytes_.push_back(static_cast<uint8_t>(tag_and_type | 1));
            bytes_.push_back(static_cast<uint8_t>(value));
        } else if (value <= 0xFFFF) {
            bytes_.push_back(static_cast<uint8_t>(tag_and_type | 2));
            bytes_.push_back(static_cast<uint8_t>(value));
            bytes_.push_back(static_cast<uint8_t>(value >> 8));
        } else {
            bytes_.push_back(static_cast<uint8_t>(tag_and_type | 3));
            for (unsigned i = 0; i < 4; ++i) bytes_.push_back(static_cast<uint8_t>(value >> (8 * i)));
        }
    }
    // Logical values are signed: 255 needs two bytes to stay positive.
    void item_two_bytes(uint8_t tag_and_type, uint16_t value) {
        bytes_.push_back(static_cast<uint8_t>(tag_and_type | 2));
        bytes_.push_back(static_cast<uint8_t>(value));
        bytes_.push_back(static_cast<uint8_t>(value >> 8));
    }
    void bare(uint8_t prefix) { bytes_.push_back(prefix); }
    std::vector<uint8_t> take() { return std::move(bytes_); }

private:
    std::vector<uint8_t> bytes_;
};

// Item prefixes without their size bits.
constexpr uint8_t kUsagePage = 0x04;
constexpr uint8_t kLogicalMinimum = 0x14;
constexpr uint8_t kLogicalMaximum = 0x24;
constexpr uint8_t kReportSize = 0x74;
constexpr uint8_t kReportId = 0x84;
constexpr uint8_t kReportCount = 0x94;
constexpr uint8_t kUsage = 0x08;
constexpr uint8_t kCollection = 0xA0;
constexpr uint8_t kInput = 0x80;
constexpr uint8_t kFeature = 0xB0;
constexpr uint8_t kEndCollection = 0xC0;

constexpr uint32_t kApplication = 0x01;
constexpr uint32_t kDataVariableAbsolute = 0x02;

void declare(DescriptorWriter& out, uint8_t main_item, uint8_t id, std::size_t length) {
    out.item(kReportId, id);
    out.item(kUsage, id);
    out.item(kReportCount, static_cast<uint32_t>(length - 1));
    out.item(main_item, kDataVariableAbsolute);
}

}  // namespace

std::vector<uint8_t> build_report_descriptor(const PadModel& model) {
    DescriptorWriter out;
    out.item(kUsagePage, model.usage_page);
    out.item(kUsage, model.usage);
    out.item(kCollection, kApplication);
    // Logical Minimum 0 takes a one-byte zero rather than the empty form,
    // as descriptor tools write it.
    out.item(kLogicalMinimum, 0);
    out.item_two_bytes(kLogicalMaximum, 0xFF);
    out.item(kReportSize, 8);
    for (uint8_t id : model.input_reports) {
        if (std::size_t length = input_report_length(id)) declare(out, kInput, id, length);
    }
    for (uint8_t id : model.feature_reports) {
        if (std::size_t length = feature_report_length(model, id)) declare(out, kFeature, id, length);
    }
    out.bare(kEndCollection);
    return out.take();
}

}  // namespace velatrix::virtual_pad
