// The region table: reading 0x6E/0x6F, writing 0x70, updating 0x71,
// deleting 0x72 and committing 0x73, against exact wire bytes.
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

constexpr uint8_t kCaption = 10;  // max_caption_length of the pad in these tests

// Region blocks of a pad whose captions are 10 bytes long (39 bytes each).
Bytes container_block() {
    Bytes block = {1,    0,    0x15, 0x7E, 0x78, 0x56, 0x34, 0x12,  // number, type, flags, reserved1, reserved2
                   10,   0,    0x2C, 0x01, 20,   0,    0x90, 0x01,  // x1 10, x2 300, y1 20, y2 400
                   0x11, 0x22, 0x33, 0x44, 0xAA, 0xBB, 0xCC, 0xDD,  // foreground, background (r, g, b, a)
                   0x07, 0x5A, 0xEF, 0xBE};                         // ink on, width 3, reserved u8, reserved u16
    block.resize(kCaption + 29, 0);
    return block;
}

Bytes button_block() {
    Bytes block = {2, 1, 0x08, 0, 0, 0, 0, 0, 1, 0, 2, 0, 3, 0, 4, 0, 0xFF, 0, 0, 0xFF, 0, 0, 0xFF, 0x80,
                   1, 0x05, 0x02, 0x01, 'O', 'K'};  // parent 1, enable + clear, reserved 0x0102, "OK"
    block.resize(kCaption + 29, 0);
    return block;
}

Bytes line_block() {
    Bytes block = {3, 2, 0x1F, 0, 0, 0, 0, 0, 5, 0, 6, 0, 7, 0, 8, 0, 1, 2, 3, 4, 5, 6, 7, 8, 1, 4, 0xFF, 0xFF};
    block.resize(kCaption + 29, 0);
    return block;
}

Bytes table_report(uint8_t id, std::initializer_list<Bytes> blocks) {
    Bytes result = {id};
    for (const Bytes& block : blocks) result.insert(result.end(), block.begin(), block.end());
    return result;
}

class RegionTableTest : public PadTest {
protected:
    void SetUp() override { use_pad(3, kCaption); }
};

TEST_F(RegionTableTest, ReadsEveryRegionOfTheTable) {
    fake.answer(0x6E, table_report(0x6E, {container_block(), button_block(), line_block()}));
    velatrix_device_region_info* regions = velatrix_get_regions(device);
    ASSERT_NE(regions, nullptr);
    EXPECT_EQ(fake.sequence(), "G13 G110");
    EXPECT_EQ(fake.transfers().back().length, 3u * 39 + 1);

    const velatrix_device_region_info& c = regions[0];
    EXPECT_EQ(std::tuple(c.number, c.type, c.accept_touch, c.decode, c.visible, c.in_use, c.has_frame, c.reserved1,
                         c.reserved2, c.x1, c.x2, c.y1, c.y2, c.foreground, c.background),
              std::tuple(1, VELATRIX_REGION_CONTAINER, 1, 0, 1, 0, 1, 0x7E, 0x12345678u, 10, 300, 20, 400,
                         0x11223344u, 0xAABBCCDDu));
    const auto& container = c.data.container;
    EXPECT_EQ(std::tuple(container.ink_enable, container.ink_width, container.reserved1, container.reserved2),
              std::tuple(1, 3, 0x5A, 0xBEEF));

    const velatrix_device_region_info& b = regions[1];
    const auto& button = b.data.button;
    EXPECT_EQ(std::tuple(b.type, b.in_use, b.foreground, b.background, button.parent, button.enable,
                         button.highlight_on_select, button.clear_on_select, button.reserved,
                         std::string(button.caption)),
              std::tuple(VELATRIX_REGION_BUTTON, 1, 0xFF0000FFu, 0x0000FF80u, 1, 1, 0, 1, 0x0102, std::string("OK")));

    const velatrix_device_region_info& l = regions[2];
    EXPECT_EQ(std::tuple(l.type, l.data.line.parent, l.data.line.width, l.data.line.reserved),
              std::tuple(VELATRIX_REGION_LINE, 1, 4, 0xFFFF));
    velatrix_free_regions(regions);
}

TEST_F(RegionTableTest, DefaultsComeFromTheirOwnReport) {
    Bytes block = line_block();
    fake.answer(0x6F, table_report(0x6F, {block, block, block}));
    velatrix_device_region_info* defaults = velatrix_get_default_regions(device);
    ASSERT_NE(defaults, nullptr);
    EXPECT_EQ(fake.sequence(), "G13 G111");
    EXPECT_EQ(defaults[2].data.line.width, 4);
    velatrix_free_regions(defaults);

    fake.fail_report(0x6F, "pad said no");
    EXPECT_EQ(velatrix_get_default_regions(device), nullptr);
    EXPECT_STREQ(velatrix_get_last_error(), "pad said no");
}

TEST_F(RegionTableTest, UnknownTypeKeepsOnlyTheCommonPart) {
    Bytes block = button_block();
    block[1] = 9;
    fake.answer(0x6E, table_report(0x6E, {block, block, block}));
    velatrix_device_region_info* regions = velatrix_get_regions(device);
    ASSERT_NE(regions, nullptr);
    EXPECT_EQ(regions[0].type, 9u);
    EXPECT_EQ(regions[0].x2, 2);
    const velatrix_device_region_info zero{};
    EXPECT_EQ(std::memcmp(&regions[0].data, &zero.data, sizeof zero.data), 0);
    velatrix_free_regions(regions);
}

TEST_F(RegionTableTest, EmptyTableIsAOneByteReportAndAnEmptyArray) {
    use_pad(0, kCaption);
    velatrix_device_region_info* regions = velatrix_get_regions(device);
    EXPECT_NE(regions, nullptr);
    ASSERT_EQ(fake.transfers().size(), 2u);
    EXPECT_EQ(fake.transfers()[1].length, 1u);
    velatrix_free_regions(regions);
}

TEST_F(RegionTableTest, BusyPadOrFailedReadGivesNull) {
    fake.busy_for(1000, 4);
    EXPECT_EQ(velatrix_get_regions(device), nullptr);
    EXPECT_STREQ(velatrix_get_last_error(),
                 "Problem waiting for firmware interlock: device didn't respond in time, sleep: 100, interlock: 4");
    EXPECT_EQ(fake.gets_of(0x6E), 0);

    fake.busy_for(0, 0);
    fake.fail_report(0x6E);
    EXPECT_EQ(velatrix_get_regions(device), nullptr);
}

TEST_F(RegionTableTest, CaptionReadStopsAtTheCaptionLength) {
    Bytes block = button_block();
    // Ten caption characters, and the terminator slot filled too.
    for (size_t i = 0; i <= kCaption; ++i) block[28 + i] = static_cast<uint8_t>('a' + i);
    fake.answer(0x6E, table_report(0x6E, {block, block, block}));
    velatrix_device_region_info* regions = velatrix_get_regions(device);
    ASSERT_NE(regions, nullptr);
    EXPECT_STREQ(regions[0].data.button.caption, "abcdefghij");
    velatrix_free_regions(regions);
}

TEST_F(RegionTableTest, HostileCaptionLengthStaysInsideTheCaption) {
    use_pad(2, 255);
    Bytes block(255 + 29, 'x');
    block[0] = 1;
    block[1] = VELATRIX_REGION_BUTTON;
    fake.answer(0x6E, table_report(0x6E, {block, block}));
    velatrix_device_region_info* regions = velatrix_get_regions(device);
    ASSERT_NE(regions, nullptr);
    EXPECT_EQ(std::strlen(regions[1].data.button.caption), 101u);
    EXPECT_EQ(regions[1].data.button.caption[100], 'x');
    velatrix_free_regions(regions);
}

TEST_F(RegionTableTest, WritesOneRegionAndKeepsTheCacheInStep) {
    fake.answer(0x6E, table_report(0x6E, {container_block(), button_block(), line_block()}));
    device->regions = velatrix_get_regions(device);
    ASSERT_NE(device->regions, nullptr);
    fake.clear_transfers();

    velatrix_device_region_info changed = device->regions[0];
    changed.x2 = 0x0201;
    changed.foreground = 0x01020304;
    ASSERT_EQ(velatrix_set_region(device, &changed), 1);
    EXPECT_EQ(fake.sequence(), "G13 S112");

    // The block as read, with the new values, and only the low byte of the
    // reserved word: its high byte goes out as zero.
    Bytes expected = table_report(0x70, {container_block()});
    expected[11] = 0x01;
    expected[12] = 0x02;
    expected[17] = 1;
    expected[18] = 2;
    expected[19] = 3;
    expected[20] = 4;
    expected[28] = 0;
    ASSERT_EQ(fake.sets(0x70).size(), 1u);
    EXPECT_EQ(fake.sets(0x70)[0], expected);
    EXPECT_EQ(device->regions[0].x2, 0x0201);
    EXPECT_EQ(device->regions[0].foreground, 0x01020304u);
}

TEST_F(RegionTableTest, WritesButtonAndLineBlocks) {
    velatrix_device_region_info button{};
    button.number = 2;
    button.type = VELATRIX_REGION_BUTTON;
    button.in_use = 1;
    button.x1 = 1;
    button.x2 = 2;
    button.y1 = 3;
    button.y2 = 4;
    button.foreground = 0xFF0000FF;
    button.background = 0x0000FF80;
    button.data.button.parent = 1;
    button.data.button.enable = 1;
    button.data.button.clear_on_select = 1;
    button.data.button.reserved = 0x0102;
    std::strcpy(button.data.button.caption, "OK");
    ASSERT_EQ(velatrix_set_region(device, &button), 1);
    Bytes expected = table_report(0x70, {button_block()});
    expected[28] = 0;  // high byte of the reserved word
    EXPECT_EQ(fake.sets(0x70).back(), expected);

    velatrix_device_region_info line{};
    line.number = 3;
    line.type = VELATRIX_REGION_LINE;
    line.accept_touch = line.decode = line.visible = line.in_use = line.has_frame = 1;
    line.x1 = 5;
    line.x2 = 6;
    line.y1 = 7;
    line.y2 = 8;
    line.foreground = 0x01020304;
    line.background = 0x05060708;
    line.data.line = {1, 4, 0xFFFF};
    ASSERT_EQ(velatrix_set_region(device, &line), 1);
    expected = table_report(0x70, {line_block()});
    expected[28] = 0;
    EXPECT_EQ(fake.sets(0x70).back(), expected);
}

TEST_F(RegionTableTest, CaptionsAreCutToTheCaptionLength) {
    velatrix_device_region_info button{};
    button.number = 1;
    button.type = VELATRIX_REGION_BUTTON;
    const auto caption_on_wire = [&](const char* caption) {
        std::strcpy(button.data.button.caption, caption);
        EXPECT_EQ(velatrix_set_region(device, &button), 1);
        const Bytes sent = fake.sets(0x70).back();
        EXPECT_EQ(sent.size(), kCaption + 30u);
        return Bytes(sent.begin() + 29, sent.end());
    };
    // Nine characters fit with their terminator.
    EXPECT_EQ(caption_on_wire("123456789"), text_bytes(std::string("123456789") + '\0' + '\0'));
    // Ten (the caption length) go without a terminator; longer ones are cut.
    EXPECT_EQ(caption_on_wire("1234567890"), text_bytes(std::string("1234567890") + '\0'));
    EXPECT_EQ(caption_on_wire("1234567890ABCDEF"), text_bytes(std::string("1234567890") + '\0'));
}

TEST_F(RegionTableTest, HostileCaptionLengthNeverReadsPastTheCaptionField) {
    use_pad(3, 255);
    velatrix_device_region_info button{};
    button.number = 1;
    button.type = VELATRIX_REGION_BUTTON;
    std::memset(button.data.button.caption, 'y', sizeof button.data.button.caption);  // no terminator
    ASSERT_EQ(velatrix_set_region(device, &button), 1);
    const Bytes sent = fake.sets(0x70).back();
    ASSERT_EQ(sent.size(), 285u);
    EXPECT_EQ(std::count(sent.begin() + 29, sent.end(), 'y'), 102);
    EXPECT_EQ(sent[29 + 102], 0);
}

TEST_F(RegionTableTest, RefusesRegionNumbersOutsideTheTable) {
    velatrix_device_region_info region{};
    region.number = 0;
    EXPECT_EQ(velatrix_set_region(device, &region), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Region number was out of bounds, min: 1, max: 3, specified: 0\n");
    region.number = 4;
    EXPECT_EQ(velatrix_set_region(device, &region), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Region number was out of bounds, min: 1, max: 3, specified: 4\n");

    velatrix_region_update update{};
    update.number = 4;
    EXPECT_EQ(velatrix_update_region(device, &update), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Region number out of bounds.");
    EXPECT_EQ(velatrix_delete_region(device, 0), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Region number out of bounds.");
    EXPECT_TRUE(fake.transfers().empty());
}

TEST_F(RegionTableTest, FailedWriteLeavesTheCacheAlone) {
    device->regions = velatrix_get_regions(device);
    ASSERT_NE(device->regions, nullptr);
    velatrix_device_region_info region{};
    region.number = 2;
    region.x1 = 77;
    fake.fail_report(0x70);
    EXPECT_EQ(velatrix_set_region(device, &region), 0);
    EXPECT_EQ(device->regions[1].x1, 0);
}

TEST_F(RegionTableTest, UpdateDeleteAndCommitReports) {
    velatrix_region_update update{};
    update.leading = 0xEE;
    update.number = 3;
    update.enable = 1;
    update.visible = 1;
    update.reserved = 0x42;
    update.foreground = 0x11223344;
    update.ignored[0] = update.ignored[1] = update.ignored[2] = 0xEE;
    update.reserved2 = 0xA1B2C3D4;
    ASSERT_EQ(velatrix_update_region(device, &update), 1);
    update.visible = 0;
    ASSERT_EQ(velatrix_update_region(device, &update), 1);
    EXPECT_EQ(fake.sets(0x71),
              (std::vector<Bytes>{{0x71, 3, 0x03, 0x42, 0x11, 0x22, 0x33, 0x44, 0xD4, 0xC3, 0xB2, 0xA1},
                                  {0x71, 3, 0x01, 0x42, 0x11, 0x22, 0x33, 0x44, 0xD4, 0xC3, 0xB2, 0xA1}}));

    ASSERT_EQ(velatrix_delete_region(device, 3), 1);
    EXPECT_EQ(fake.sets(0x72), (std::vector<Bytes>{{0x72, 3}}));
    ASSERT_EQ(velatrix_set_region_commit(device, 0), 1);
    EXPECT_EQ(fake.sets(0x73), (std::vector<Bytes>{{0x73, 0}}));
    // Update and commit go without a wait, the delete after one.
    EXPECT_EQ(fake.sequence(), "S113 S113 G13 S114 S115");

    fake.fail_report(0x73);
    EXPECT_EQ(velatrix_set_region_commit(device, 0), 0);
}

}  // namespace
}  // namespace velatrix::testing
