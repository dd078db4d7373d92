// What the open caches, on every model, through the public API over the
// virtual bus. Listing, the report map and the open's waits and failures
// are the host and protocol tests'.
#include <tuple>

#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

using namespace std::chrono_literals;

// The open caches what every later call needs; the identifier is checked
// against an MD5 computed here from the pad's own table.
TEST_P(E2eEveryModel, OpenCachesDisplayVersionRegionsIdentifierAndFont) {
    const PadModel& model = *virtual_pad::find_model(GetParam());
    const velatrix_hid_feature_display_info& info = device_->display_info;
    const virtual_pad::DisplayInfo& display = model.display;
    EXPECT_EQ(std::tuple(info.report_id, info.width, info.height, info.color_depth, info.text_width, info.text_height,
                         info.region_count, info.max_caption_length),
              std::tuple(100, display.width, display.height, display.color_depth, display.text_width,
                         display.text_height, display.region_count, display.max_caption_length));

    const velatrix_hid_feature_version& version = device_->version;
    EXPECT_EQ(std::tuple(version.report_id, Bytes(version.kernel_version, version.kernel_version + 3),
                         Bytes(version.firmware_version, version.firmware_version + 3), version.asic_signature),
              std::tuple(22, Bytes(model.version.kernel.begin(), model.version.kernel.end()),
                         Bytes(model.version.firmware.begin(), model.version.firmware.end()),
                         model.version.asic_signature));

    ASSERT_NE(device_->regions, nullptr);
    for (uint8_t number = 1; number <= info.region_count; ++number) {
        velatrix_virtual_region r{};
        ASSERT_EQ(velatrix_virtual_get_region(pad_, number, &r), 1);
        const velatrix_device_region_info& c = device_->regions[number - 1];
        const bool button = r.type == VELATRIX_REGION_BUTTON;
        EXPECT_EQ(std::tuple(c.number, c.type, c.in_use, c.visible, c.accept_touch, c.has_frame, c.x1, c.x2, c.y1,
                             c.y2, c.foreground, c.background,
                             std::string(button ? c.data.button.caption : ""), button ? c.data.button.enable : 0),
                  std::tuple(number, static_cast<uint32_t>(r.type), r.in_use, r.visible, r.accept_touch, r.has_frame,
                             r.x1, r.x2, r.y1, r.y2, r.foreground, r.background, std::string(button ? r.caption : ""),
                             button ? r.enable : 0))
            << "region " << int(number);
    }

    ASSERT_NE(device_->uuid, nullptr);
    std::array<uint8_t, VELATRIX_VIRTUAL_ERROR_CORRECTION_SIZE> table{};
    ASSERT_EQ(velatrix_virtual_get_error_correction(pad_, table.data()), 1);
    EXPECT_EQ(0, std::memcmp(device_->uuid, md5(table.data(), table.size()).data(), 16));
    EXPECT_EQ(device_->font, &velatrix_default);
}

INSTANTIATE_TEST_SUITE_P(Models, E2eEveryModel, ::testing::ValuesIn(model_names()), param_name);

}  // namespace
}  // namespace velatrix::e2e
