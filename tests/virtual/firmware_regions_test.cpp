// Region table and device regions, written and read as raw reports.
#include <gtest/gtest.h>

#include "virtual_wire.h"

namespace velatrix::virtual_pad::testing {
namespace {

// The monochrome pad: 8 slots, captions of 15, blocks of 44 bytes.
constexpr std::size_t kMonoBlock = 44;

Bytes block_of(const Bytes& table, std::size_t slot, std::size_t block) {
    auto begin = table.begin() + static_cast<std::ptrdiff_t>(1 + (slot - 1) * block);
    return Bytes(begin, begin + static_cast<std::ptrdiff_t>(block));
}

TEST(VirtualRegionTable, FactoryTableHasTheDefaultRegionsInTheirBlocks) {
    Firmware pad(mono_320_model(), 1);
    Bytes table = get(pad, 110, 8 * kMonoBlock + 1);
    ASSERT_EQ(table.size(), 353u);
    Bytes ok_button = block_of(table, 3, kMonoBlock);
    Bytes expected(kMonoBlock, 0);
    Bytes head = {3,    1,    0x1D, 0,    0, 0,   0,   0,   0xDC, 0x00, 0x35, 0x01, 0xCD, 0x00, 0xEA, 0x00,
                  0,    0,    0,    255,  255, 255, 255, 255, 0,  0x03, 0,    0,    'O',  'K'};
    std::copy(head.begin(), head.end(), expected.begin());
    EXPECT_EQ(ok_button, expected);

    Bytes container = block_of(table, 1, kMonoBlock);
    EXPECT_EQ(container[2], 0x0D) << "accepts touch, visible, in use";
    EXPECT_EQ(container[24], 0x03) << "ink enabled, width 1";
    Bytes unused = block_of(table, 5, kMonoBlock);
    EXPECT_EQ(unused[0], 5);
    EXPECT_EQ(std::count(unused.begin() + 1, unused.end(), 0), static_cast<long>(kMonoBlock - 1));
    Bytes defaults = get(pad, 111, 353);
    EXPECT_EQ(defaults[0], 111);
    EXPECT_EQ(Bytes(defaults.begin() + 1, defaults.end()), Bytes(table.begin() + 1, table.end()))
        << "defaults equal the factory table";
}

TEST(VirtualRegionTable, WrittenRegionsReadBackByteForByteWhileDefaultsStay) {
    Firmware pad(mono_320_model(), 1);
    Bytes defaults = get(pad, 111, 353);
    std::vector<Bytes> written;
    // A button whose caption fills its field without a terminator, a line
    // with its reserved word, a container with ink width 3.
    Bytes button = report(112, 45, {6, 1, 0x17, 9, 1, 2, 3, 4, 10, 0, 20, 0, 30, 0, 40, 0, 1, 2, 3, 4, 5, 6, 7, 8,
                                    7, 0x05, 0xAB, 0xCD});
    for (std::size_t i = 0; i < 16; ++i) button[29 + i] = static_cast<uint8_t>('a' + i);
    Bytes line = report(112, 45, {7, 2, 0x0C, 0, 0, 0, 0, 0, 1, 0, 2, 0, 3, 0, 4, 0, 0, 0, 0, 255, 9, 9, 9, 255, 1,
                                  4, 0x34, 0x12});
    Bytes container = report(112, 45, {8, 0, 0x1F, 0, 0, 0, 0, 0, 0, 0, 0x3F, 0x01, 0, 0, 0xEF, 0, 0, 0, 0, 255,
                                       255, 255, 255, 255, 0x07, 0x42, 0x01, 0x02});
    for (const Bytes& region : {button, line, container}) {
        ASSERT_TRUE(pad.set_feature(region)) << pad.state().error_text;
        Bytes table = get(pad, 110, 353);
        EXPECT_EQ(block_of(table, region[1], kMonoBlock), Bytes(region.begin() + 1, region.end()))
            << "region " << int(region[1]);
    }
    EXPECT_EQ(pad.regions().find(6)->caption_text(), "abcdefghijklmnop");
    EXPECT_EQ(get(pad, 111, 353), defaults);
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

TEST(VirtualRegionTable, UpdateDeleteAndCommit) {
    Firmware pad(mono_320_model(), 1);
    ASSERT_TRUE(pad.set_feature(report(113, 12, {3, 0x02, 0, 0x11, 0x22, 0x33, 0x44})));
    const Region* button = pad.regions().find(3);
    EXPECT_FALSE(button->enable);
    EXPECT_TRUE(button->visible);
    EXPECT_EQ(button->foreground, (Rgba{0x11, 0x22, 0x33, 0x44}));
    Bytes block = block_of(get(pad, 110, 353), 3, kMonoBlock);
    EXPECT_EQ(block[25], 0x02) << "highlight only";
    ASSERT_TRUE(pad.set_feature(report(113, 12, {1, 0x01, 0, 0, 0, 0, 255})));
    EXPECT_TRUE(pad.regions().find(1)->ink_enabled);
    EXPECT_FALSE(pad.regions().find(1)->visible);

    ASSERT_TRUE(pad.set_feature(report(114, 2, {4})));
    block = block_of(get(pad, 110, 353), 4, kMonoBlock);
    EXPECT_EQ(block[0], 4);
    EXPECT_EQ(block[2], 0) << "no longer in use";

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
    Bytes second = get(pad, 152, 65);
    EXPECT_EQ(second[1], 2);
    EXPECT_EQ(second[2], kLine);
    EXPECT_EQ(get(pad, 150, 2), (Bytes{150, 3}));

    ASSERT_TRUE(pad.set_feature(report(150, 2, {16})));
    EXPECT_EQ(get(pad, 152, 65)[1], 16);
    EXPECT_EQ(get(pad, 152, 65)[1], 1) << "wraps round";

    ASSERT_TRUE(pad.set_feature(report(150, 2, {0})));
    EXPECT_TRUE(get(pad, 152, 65).empty());
    EXPECT_EQ(pad.state().error_text, "Region index 0 out of range");
}

TEST_F(VirtualDeviceRegions, EveryTypeReadsBackAsWritten) {
    auto contents = [](uint8_t number, uint8_t type, uint8_t flags, std::initializer_list<uint8_t> specific) {
        Bytes bytes = report(152, 65, {number, type, flags, 0x5A, 1, 2, 3, 4, 5, 6, 7, 8, 100, 0, 200, 0, 50, 0,
                                       150, 0, 10, 20, 30, 255, 40, 50, 60, 128});
        std::copy(specific.begin(), specific.end(), bytes.begin() + 29);
        return bytes;
    };
    Bytes text = contents(5, kText, 0x41, {0, 9, 2, 0x51});
    Bytes graphic = contents(6, kGraphic, 0x04, {0, 7, 0x3A, 0});
    Bytes image_button = contents(7, kButton, 0x01, {0x1F, 0, 0, 0, 4, 5});
    Bytes caption_button = contents(8, kButton, 0x03, {0x0B});
    const char caption[] = "Sign here, please";
    std::copy(caption, caption + sizeof caption, caption_button.begin() + 33);
    Bytes container = contents(9, kContainer, 0x00, {1, 3, 0x77, 0x88});
    Bytes line = contents(10, kLine, 0x00, {1, 4});
    for (const Bytes& written : {text, graphic, image_button, caption_button, container, line}) {
        ASSERT_TRUE(pad.set_feature(written)) << pad.state().error_text;
        EXPECT_EQ(read(written[1]), written) << "region " << int(written[1]);
    }
    EXPECT_EQ(pad.regions().find(8)->caption_text(), "Sign here, please");
    EXPECT_TRUE(pad.regions().find(7)->use_resource);
    EXPECT_EQ(pad.regions().find(6)->horizontal_justification, 10);
    EXPECT_EQ(pad.regions().find(6)->vertical_justification, 3);

    EXPECT_FALSE(pad.set_feature(contents(17, kText, 0, {})));
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
    EXPECT_EQ(first->regions[0], 1);
    EXPECT_EQ(first->regions[1], 2);
    EXPECT_EQ(first->regions[2], 4);
    EXPECT_EQ(first->next_screens[2], 1);
    EXPECT_EQ(first->regions[3], 0);
    EXPECT_FALSE(pad.set_feature(report(153, 2, {17})));
}

}  // namespace
}  // namespace velatrix::virtual_pad::testing
