// Region table and device regions as the virtual firmware decodes and
// checks them: numbers out of range, updates, deletes, drawing, the index
// walk and the two views of one slot. What it stores and reads back is the
// end-to-end round trip's (tests/host).
#include <gtest/gtest.h>
#include <tuple>

#include "virtual_wire.h"

namespace velatrix::virtual_pad::testing {
namespace {

// The monochrome pad: 8 slots, captions of 15, blocks of 44 bytes.
constexpr std::size_t kMonoBlock = 44;

Bytes block_of(const Bytes& table, std::size_t slot, std::size_t block) {
    auto begin = table.begin() + static_cast<std::ptrdiff_t>(1 + (slot - 1) * block);
    return Bytes(begin, begin + static_cast<std::ptrdiff_t>(block));
}

TEST(VirtualRegionTable, RefusesRegionNumbersOutsideTheTable) {
    Firmware pad(mono_320_model(), 1);
    EXPECT_FALSE(pad.set_feature(report(112, 45, {9, 0})));
    EXPECT_EQ(pad.state().error_text, "Region 9 out of range");
    EXPECT_FALSE(pad.set_feature(report(112, 45, {0, 0})));
    EXPECT_FALSE(pad.set_feature(report(113, 12, {9, 3})));
    EXPECT_FALSE(pad.set_feature(report(114, 2, {0})));
    EXPECT_EQ(pad.state().error_text, "Region 0 out of range");
}

// The update's flag byte: visibility, and the enable of a button or the ink
// of a container. The values it sets are the round trip's (tests/host).
TEST(VirtualRegionTable, UpdateFlagsAndCommit) {
    Firmware pad(mono_320_model(), 1);
    ASSERT_TRUE(pad.set_feature(report(113, 12, {3, 0x02, 0, 0x11, 0x22, 0x33, 0x44})));
    EXPECT_EQ(block_of(get(pad, 110, 353), 3, kMonoBlock)[25], 0x02) << "highlight only";
    ASSERT_TRUE(pad.set_feature(report(113, 12, {1, 0x01, 0, 0, 0, 0, 255})));
    EXPECT_TRUE(pad.regions().find(1)->ink_enabled);
    EXPECT_FALSE(pad.regions().find(1)->visible);

    ASSERT_TRUE(pad.set_feature(report(115, 2, {0})));
    EXPECT_EQ(pad.state().region_commits, (std::vector<uint8_t>{0}));
}

TEST(VirtualRegionTable, AWrittenRegionIsDrawnWithItsColours) {
    Firmware pad(mono_320_model(), 1);
    // In use and visible, framed, black on a black background over (0,0)-(9,9).
    Bytes dark = report(112, 45, {8, 0, 0x1C, 0, 0, 0, 0, 0, 0, 0, 9, 0, 0, 0, 9, 0, 0, 0, 0, 255, 0, 0, 0, 255});
    ASSERT_TRUE(pad.set_feature(dark));
    EXPECT_EQ(pad.frame().pixel(0, 0), 0x000000FFu);
    EXPECT_EQ(pad.frame().pixel(9, 9), 0x000000FFu);
    EXPECT_EQ(pad.frame().pixel(10, 10), 0xFFFFFFFFu);
    // The same rectangle on white with a frame: the inside is cleared.
    Bytes light = dark;
    std::fill(light.begin() + 21, light.begin() + 24, 255);
    ASSERT_TRUE(pad.set_feature(light));
    EXPECT_EQ(pad.frame().pixel(5, 5), 0xFFFFFFFFu);
    EXPECT_EQ(pad.frame().pixel(0, 5), 0x000000FFu) << "frame in the foreground colour";
}

// The colour pad: 16 slots, captions of 31, contents reports of 65 bytes.
class VirtualDeviceRegions : public ::testing::Test {
protected:
    Firmware pad{color_800_model(), 1};

    Bytes read(uint8_t index) {
        EXPECT_TRUE(pad.set_feature(report(150, 2, {index})));
        return get(pad, 152, 65);
    }
};

TEST_F(VirtualDeviceRegions, ReadsWalkTheSlotsFromTheIndex) {
    ASSERT_TRUE(pad.set_feature(report(150, 2, {1})));
    Bytes first = get(pad, 152, 65);
    EXPECT_EQ(Bytes(first.begin(), first.begin() + 33),
              (Bytes{152, 1, 0, 0x01, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x1F, 0x03, 0, 0, 0x8F, 0x01,
                     0, 0, 0, 255, 255, 255, 255, 255, 1, 2, 0, 0}));

    ASSERT_TRUE(pad.set_feature(report(150, 2, {16})));
    EXPECT_EQ(get(pad, 152, 65)[1], 16);
    EXPECT_EQ(get(pad, 152, 65)[1], 1) << "wraps round";

    ASSERT_TRUE(pad.set_feature(report(150, 2, {0})));
    EXPECT_TRUE(get(pad, 152, 65).empty());
    EXPECT_EQ(pad.state().error_text, "Region index 0 out of range");
}

TEST_F(VirtualDeviceRegions, BothViewsShowTheSameSlots) {
    Bytes button = report(152, 65, {12, kButton, 0x05, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0x10, 0, 0x20, 0, 0x30, 0, 0x40,
                                    0, 0, 0, 0, 255, 255, 255, 255, 255, 0x03});
    button[33] = 'G';
    button[34] = 'o';
    ASSERT_TRUE(pad.set_feature(button));
    Bytes table = get(pad, 110, 16 * 60 + 1);
    Bytes block = block_of(table, 12, 60);
    EXPECT_EQ(Bytes(block.begin(), block.begin() + 4), (Bytes{12, kButton, 0x1D, 0}));
    EXPECT_EQ(block[8], 0x10);
    EXPECT_EQ(block[25], 0x03);
    EXPECT_EQ(Bytes(block.begin() + 28, block.begin() + 31), (Bytes{'G', 'o', 0}));

    Bytes table_line = report(112, 61, {13, kLine, 0x0C, 0, 0, 0, 0, 0, 5, 0, 6, 0, 7, 0, 8, 0});
    table_line[25] = 2;
    table_line[26] = 3;
    ASSERT_TRUE(pad.set_feature(table_line));
    Bytes contents = read(13);
    EXPECT_EQ(contents[2], kLine);
    EXPECT_EQ(contents[13], 5);
    EXPECT_EQ(contents[29], 2) << "parent";
    EXPECT_EQ(contents[30], 3) << "width";

    EXPECT_EQ(get(pad, 170, 25)[2], 13) << "highest region in use";
}

TEST_F(VirtualDeviceRegions, DeletingADeviceRegionTakesItOffEveryScreen) {
    ASSERT_TRUE(pad.set_feature(report(153, 2, {3})));
    EXPECT_FALSE(pad.regions().find(3)->in_use);
    const Screen* first = pad.screens().find(1);
    ASSERT_EQ(first->region_count, 3);
    EXPECT_EQ(std::tuple(first->regions[0], first->regions[1], first->regions[2], first->next_screens[2],
                         first->regions[3]),
              std::tuple(1, 2, 4, 1, 0));
    EXPECT_FALSE(pad.set_feature(report(153, 2, {17})));
}

}  // namespace
}  // namespace velatrix::virtual_pad::testing
