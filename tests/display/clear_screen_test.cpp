#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "support/fake_driver.h"
#include "velatrix-quillmark.h"

namespace {

using velatrix::testing::Bytes;
using velatrix::testing::FakeDriver;

TEST(ClearScreen, ReactivatesTheActiveScreen) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    fake.answer(171, {171, 3});
    EXPECT_EQ(velatrix_clear_screen(device), 1);
    EXPECT_EQ(fake.sets(171), (std::vector<Bytes>{{171, 3}}));
    EXPECT_TRUE(fake.sets(112).empty());
}

TEST(ClearScreen, WithoutScreensNeedsTheRegionTableAndDisplayInfo) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    fake.fail_report(171);
    EXPECT_EQ(velatrix_clear_screen(device), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device regions is null, unable to clear screen.");

    device->regions = static_cast<velatrix_device_region_info*>(std::calloc(2, sizeof(velatrix_device_region_info)));
    EXPECT_EQ(velatrix_clear_screen(device), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device display info is unset, unable to clear screen.");
    std::free(device->regions);
    device->regions = nullptr;
}

TEST(ClearScreen, ANullDeviceIsRefusedWithAnError) {
    EXPECT_EQ(velatrix_clear_screen(nullptr), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device was null, unable to clear screen.");
}

TEST(ClearScreen, WithoutScreensStretchesTheLastRegionOverTheDisplayTwice) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    fake.fail_report(171);
    device->display_info = {100, 320, 240, 1, 6, 12, 2, 4};
    auto* regions = static_cast<velatrix_device_region_info*>(std::calloc(2, sizeof(velatrix_device_region_info)));
    // The last slot holds a framed button: none of it may show on the display.
    regions[1].number = 2;
    regions[1].type = 1;
    regions[1].has_frame = 1;
    regions[1].accept_touch = 1;
    std::strcpy(regions[1].data.button.caption, "OK");
    device->regions = regions;
    EXPECT_EQ(velatrix_clear_screen(device), 1);
    const auto sent = fake.sets(112);
    ASSERT_EQ(sent.size(), 2u);
    // Region block from byte 1: number, type, flags, reserved bytes, then x1, x2, y1, y2.
    EXPECT_EQ(sent[0][1], 2);
    EXPECT_EQ(sent[0][2], 0) << "a plain container";
    EXPECT_EQ(sent[0][3], 0x0C) << "only visible and in use: no frame, no touch";
    EXPECT_EQ(sent[1][3], 0x04) << "in use cleared on the second send";
    EXPECT_EQ(sent[0][29], 0) << "no caption";
    EXPECT_EQ(Bytes(sent[0].begin() + 9, sent[0].begin() + 17), (Bytes{0, 0, 0x3F, 0x01, 0, 0, 0xEF, 0x00}));
    EXPECT_EQ(Bytes(sent[0].begin() + 21, sent[0].begin() + 25), (Bytes{0xFF, 0xFF, 0xFF, 0xFF})) << "opaque white";
    // The cached table mirrors what was written last.
    EXPECT_EQ(regions[1].x2, 319);
    EXPECT_EQ(regions[1].in_use, 0);
    std::free(regions);
    device->regions = nullptr;
}

}  // namespace
