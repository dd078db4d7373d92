// The report descriptors the virtual pads publish, walked item by item.
#include <gtest/gtest.h>

#include <map>

#include "virtual_wire.h"

namespace velatrix::virtual_pad::testing {
namespace {

struct Walk {
    uint32_t first_usage_page = 0;
    uint32_t first_usage = 0;
    bool saw_usage_page = false;
    bool saw_usage = false;
    std::map<uint8_t, std::size_t> inputs;    // id -> bytes with the id
    std::map<uint8_t, std::size_t> features;  // id -> bytes with the id
    int collections_open = 0;
    bool well_formed = true;
};

// A short-item walk with the global state a HID parser keeps.
Walk walk(const std::vector<uint8_t>& descriptor) {
    Walk result;
    uint32_t report_size = 0, report_count = 0;
    uint8_t report_id = 0;
    std::size_t i = 0;
    while (i < descriptor.size()) {
        uint8_t prefix = descriptor[i];
        std::size_t size = (prefix & 3) == 3 ? 4 : (prefix & 3);
        if (i + 1 + size > descriptor.size()) {
            result.well_formed = false;
            break;
        }
        uint32_t value = 0;
        for (std::size_t b = 0; b < size; ++b) value |= static_cast<uint32_t>(descriptor[i + 1 + b]) << (8 * b);
        switch (prefix & 0xFC) {
        case 0x04:
            if (!result.saw_usage_page) {
                result.first_usage_page = value;
                result.saw_usage_page = true;
            }
            break;
        case 0x08:
            if (!result.saw_usage) {
                result.first_usage = value;
                result.saw_usage = true;
            }
            break;
        case 0x74:
            report_size = value;
            break;
        case 0x94:
            report_count = value;
            break;
        case 0x84:
            report_id = static_cast<uint8_t>(value);
            break;
        case 0x80:
            result.inputs[report_id] += report_size * report_count / 8;
            break;
        case 0xB0:
            result.features[report_id] += report_size * report_count / 8;
            break;
        case 0xA0:
            ++result.collections_open;
            break;
        case 0xC0:
            --result.collections_open;
            break;
        case 0x24:
            if (value != 255) result.well_formed = false;  // logical maximum 255, not -1
            break;
        default:
            break;
        }
        i += 1 + size;
    }
    return result;
}

class VirtualDescriptor : public ::testing::TestWithParam<const PadModel*> {};

INSTANTIATE_TEST_SUITE_P(Models, VirtualDescriptor, ::testing::ValuesIn(all_models()), model_name);

TEST_P(VirtualDescriptor, DeclaresExactlyTheModelsReportsWithTheirLengths) {
    const PadModel& model = *GetParam();
    Firmware pad(model, 1);
    Walk result = walk(pad.report_descriptor());
    ASSERT_TRUE(result.well_formed);
    EXPECT_EQ(result.collections_open, 0);
    EXPECT_EQ(result.first_usage_page, 0xFF00u) << "vendor-defined";
    EXPECT_TRUE(result.first_usage == 0 || result.first_usage == 6) << "the host takes usages 0 and 6";
    EXPECT_EQ(result.first_usage, model.usage);

    ASSERT_EQ(result.inputs.size(), model.input_reports.size());
    for (uint8_t id : model.input_reports) EXPECT_EQ(result.inputs[id] + 1, input_report_length(id)) << int(id);
    ASSERT_EQ(result.features.size(), model.feature_reports.size());
    for (uint8_t id : model.feature_reports) {
        EXPECT_EQ(result.features[id] + 1, pad.feature_length(id)) << int(id);
        EXPECT_GT(pad.feature_length(id), 1u) << int(id);
    }
    EXPECT_EQ(result.features.count(26), 1u);
    EXPECT_EQ(result.features[26], 2048u);
    EXPECT_EQ(result.inputs.count(12), model.has_card_reader() ? 1u : 0u);
    EXPECT_EQ(result.features.count(162), model.capabilities.supports_screens_resources ? 1u : 0u);
}

TEST(VirtualDescriptorLayout, OpensWithUsagePageUsageAndCollection) {
    Firmware pad(mono_320_model(), 1);
    const auto& bytes = pad.report_descriptor();
    ASSERT_GE(bytes.size(), 14u);
    EXPECT_EQ(std::vector<uint8_t>(bytes.begin(), bytes.begin() + 14),
              (std::vector<uint8_t>{0x06, 0x00, 0xFF, 0x09, 0x06, 0xA1, 0x01, 0x15, 0x00, 0x26, 0xFF, 0x00, 0x75,
                                    0x08}));
    EXPECT_EQ(bytes.back(), 0xC0);
}

}  // namespace
}  // namespace velatrix::virtual_pad::testing
