#include <gtest/gtest.h>

#include <cstdlib>
#include <cstring>

#include "support/fake_pad.h"
#include "velatrix-quillmark.h"

namespace velatrix::testing {
namespace {

using ClearScreen = FakePad;

TEST_F(ClearScreen, ReactivatesTheActiveScreen) {
    fake.answer(171, {171, 3});
    EXPECT_EQ(velatrix_clear_screen(device), 1);
    EXPECT_EQ(fake.sets(), (std::vector<Bytes>{{171, 3}}));

    EXPECT_EQ(velatrix_clear_screen(nullptr), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device was null, unable to clear screen.");
}

// Without screens the last region is stretched over the display, twice:
// that needs the region table and the display information.
TEST_F(ClearScreen, WithoutScreensStretchesTheLastRegionOverTheDisplayTwice) {
    fake.fail_report(171);
    EXPECT_EQ(velatrix_clear_screen(device), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device regions is null, unable to clear screen.");

    auto* regions = static_cast<velatrix_device_region_info*>(std::calloc(2, sizeof(velatrix_device_region_info)));
    device->regions = regions;
    EXPECT_EQ(velatrix_clear_screen(device), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device display info is unset, unable to clear screen.");

    device->display_info = {100, 320, 240, 1, 6, 12, 2, 4};
    // The last slot holds a framed button: none of it may show on the display.
    regions[1].number = 2;
    regions[1].type = 1;
    regions[1].has_frame = 1;
    regions[1].accept_touch = 1;
    std::strcpy(regions[1].data.button.caption, "OK");
    EXPECT_EQ(velatrix_clear_screen(device), 1);
    // Number, a plain container, only visible and in use (no frame, no
    // touch), x1, x2, y1, y2, opaque white, no caption; in use cleared on
    // the second send.
    Bytes first = wire(112, 34, {{1, hex("02 00 0c 00 00000000 0000 3f01 0000 ef00 00000000 ffffffff")}});
    Bytes second = first;
    second[3] = 0x04;
    EXPECT_EQ(fake.sets(112), (std::vector<Bytes>{first, second}));
    // The cached table mirrors what was written last.
    EXPECT_EQ(std::tuple(regions[1].x2, regions[1].in_use), std::tuple(319, 0));
    std::free(regions);
    device->regions = nullptr;
}

}  // namespace
}  // namespace velatrix::testing
