// The region table: reading 0x6E/0x6F, writing 0x70, updating 0x71,
// deleting 0x72 and committing 0x73, against exact wire bytes.
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

constexpr uint8_t kCaption = 10;  // max_caption_length of the pad in these tests

// Region blocks of a pad whose captions are 10 bytes long (39 bytes each):
// number, type, flags, reserved1, reserved2, x1, x2, y1, y2, foreground,
// background (r, g, b, a), then the type's own bytes and the caption.
Bytes block(std::string_view bytes) {
    Bytes result = hex(bytes);
    result.resize(kCaption + 29, 0);
    return result;
}
// Container: ink on, width 3, reserved u8 0x5A, reserved u16 0xBEEF.
const Bytes kContainer = block("01 00 15 7e 78563412 0a00 2c01 1400 9001 11223344 aabbccdd 07 5a efbe");
// Button: parent 1, enable + clear, reserved 0x0102, "OK".
const Bytes kButton = block("02 01 08 00 00000000 0100 0200 0300 0400 ff0000ff 0000ff80 01 05 0201 4f4b");
const Bytes kLine = block("03 02 1f 00 00000000 0500 0600 0700 0800 01020304 05060708 01 04 ffff");

class RegionTableTest : public PadTest {
protected:
    void SetUp() override { use_pad(3, kCaption); }
    velatrix_device_region_info* read_table(std::initializer_list<Bytes> blocks) {
        fake.answer(0x6E, table_report(0x6E, blocks));
        return velatrix_get_regions(device);
    }
};

// The print-out shows every field the read unpacked but the number and the
// reserved words of the types, checked on their own.
TEST_F(RegionTableTest, ReadsAndPrintsEveryRegionOfTheTable) {
    use_pad(4, kCaption);
    Bytes unknown = kButton;
    unknown[0] = 4;
    unknown[1] = 9;
    velatrix_device_region_info* regions = read_table({kContainer, kButton, kLine, unknown});
    ASSERT_NE(regions, nullptr);
    EXPECT_EQ(fake.sequence(), "G13 G110");
    EXPECT_EQ(fake.transfers().back().length, 4u * 39 + 1);
    EXPECT_EQ(std::tuple(regions[0].number, regions[3].number, regions[0].data.container.reserved1,
                         regions[0].data.container.reserved2, regions[1].data.button.reserved,
                         regions[2].data.line.reserved),
              std::tuple(1, 4, 0x5A, 0xBEEF, 0x0102, 0xFFFF));
    // An unknown type keeps only the common part.
    const velatrix_device_region_info zero{};
    EXPECT_EQ(std::memcmp(&regions[3].data, &zero.data, sizeof zero.data), 0);

    const Fields button_common = {{"Accepts Touch", "0"}, {"Decode", "0"}, {"Visible", "0"}, {"In Use", "1"},
                                  {"Has Frame", "0"}, {"Reserved 1", "0"}, {"Reserved 2", "0"}, {"X1", "1"},
                                  {"Y1", "3"}, {"X2", "2"}, {"Y2", "4"}, {"Foreground", "#ffff0000"},
                                  {"Background", "#800000ff"}};
    const std::string expected =
        "velatrix_device_region_info structure:\n" +
        printed_region(1, "Container",
                       {{"Accepts Touch", "1"}, {"Decode", "0"}, {"Visible", "1"}, {"In Use", "0"}, {"Has Frame", "1"},
                        {"Reserved 1", "126"}, {"Reserved 2", "305419896"}, {"X1", "10"}, {"Y1", "20"}, {"X2", "300"},
                        {"Y2", "400"}, {"Foreground", "#44112233"}, {"Background", "#ddaabbcc"}},
                       {{"Ink Enable", "1"}, {"Ink Width", "3"}}) +
        printed_region(2, "Button", button_common,
                       {{"Parent", "1"}, {"Clear on Select", "1"}, {"Enable", "1"}, {"Highlight on Select", "0"},
                        {"Caption", "OK"}}) +
        printed_region(3, "Line",
                       {{"Accepts Touch", "1"}, {"Decode", "1"}, {"Visible", "1"}, {"In Use", "1"}, {"Has Frame", "1"},
                        {"Reserved 1", "0"}, {"Reserved 2", "0"}, {"X1", "5"}, {"Y1", "7"}, {"X2", "6"}, {"Y2", "8"},
                        {"Foreground", "#04010203"}, {"Background", "#08050607"}},
                       {{"Parent", "1"}, {"Width", "4"}}) +
        printed_region(4, "", button_common);
    EXPECT_EQ(capture_stdout([&] { velatrix_print_regions(regions, 4); }), expected);
    velatrix_free_regions(regions);

    // The defaults come from their own report.
    fake.clear_transfers();
    fake.answer(0x6F, table_report(0x6F, {kLine, kLine, kLine, kLine}));
    velatrix_device_region_info* defaults = velatrix_get_default_regions(device);
    ASSERT_NE(defaults, nullptr);
    EXPECT_EQ(fake.sequence(), "G13 G111");
    EXPECT_EQ(defaults[3].data.line.width, 4);
    velatrix_free_regions(defaults);
}

TEST_F(RegionTableTest, EmptyTableBusyPadAndFailedRead) {
    use_pad(0, kCaption);
    velatrix_device_region_info* regions = velatrix_get_regions(device);
    EXPECT_NE(regions, nullptr);
    EXPECT_EQ(fake.sequence(), "G13 G110");
    EXPECT_EQ(fake.transfers()[1].length, 1u) << "a one-byte report";
    velatrix_free_regions(regions);

    use_pad(3, kCaption);
    fake.clear_transfers();
    fake.busy_for(1000, 4);
    EXPECT_EQ(velatrix_get_regions(device), nullptr);
    EXPECT_STREQ(velatrix_get_last_error(),
                 "Problem waiting for firmware interlock: device didn't respond in time, sleep: 100, interlock: 4");
    EXPECT_EQ(fake.gets_of(0x6E), 0);
}

TEST_F(RegionTableTest, CaptionReadStopsAtTheCaptionLength) {
    Bytes full = kButton;
    // Ten caption characters, and the terminator slot filled too.
    for (size_t i = 0; i <= kCaption; ++i) full[28 + i] = static_cast<uint8_t>('a' + i);
    velatrix_device_region_info* regions = read_table({full, full, full});
    ASSERT_NE(regions, nullptr);
    EXPECT_STREQ(regions[0].data.button.caption, "abcdefghij");
    velatrix_free_regions(regions);

    // A hostile caption length stays inside the caption.
    use_pad(2, 255);
    Bytes wide(255 + 29, 'x');
    wide[0] = 1;
    wide[1] = VELATRIX_REGION_BUTTON;
    regions = read_table({wide, wide});
    ASSERT_NE(regions, nullptr);
    EXPECT_EQ(std::strlen(regions[1].data.button.caption), 101u);
    velatrix_free_regions(regions);
}

// Writing back what was read sends the blocks that were read, but for the
// high byte of the reserved word, which goes out as zero; the cache follows.
TEST_F(RegionTableTest, WritesEveryTypeAndKeepsTheCacheInStep) {
    device->regions = read_table({kContainer, kButton, kLine});
    ASSERT_NE(device->regions, nullptr);
    fake.clear_transfers();
    std::vector<Bytes> expected;
    for (const Bytes& b : {kContainer, kButton, kLine}) {
        ASSERT_EQ(velatrix_set_region(device, &device->regions[b[0] - 1]), 1);
        expected.push_back(table_report(0x70, {b}));
        expected.back()[28] = 0;
    }
    EXPECT_EQ(fake.sets(0x70), expected);
    EXPECT_EQ(fake.sequence(), "G13 S112 G13 S112 G13 S112");

    velatrix_device_region_info changed = device->regions[0];
    changed.x2 = 0x0201;
    changed.foreground = 0x01020304;
    ASSERT_EQ(velatrix_set_region(device, &changed), 1);
    Bytes sent = expected[0];
    sent[11] = 0x01, sent[12] = 0x02;
    const Bytes foreground = hex("01020304");
    std::copy(foreground.begin(), foreground.end(), sent.begin() + 17);
    EXPECT_EQ(fake.sets(0x70).back(), sent);
    EXPECT_EQ(std::tuple(device->regions[0].x2, device->regions[0].foreground), std::tuple(0x0201, 0x01020304u));

    // A failed write leaves the cache alone.
    changed.x1 = 77;
    fake.fail_report(0x70);
    EXPECT_EQ(velatrix_set_region(device, &changed), 0);
    EXPECT_EQ(device->regions[0].x1, 10);
}

TEST_F(RegionTableTest, CaptionsAreCutToTheCaptionLength) {
    velatrix_device_region_info button{};
    button.number = 1;
    button.type = VELATRIX_REGION_BUTTON;
    const auto caption_on_wire = [&](const char* caption) {
        std::strcpy(button.data.button.caption, caption);
        EXPECT_EQ(velatrix_set_region(device, &button), 1);
        const Bytes sent = fake.sets(0x70).back();
        return Bytes(sent.begin() + 29, sent.end());
    };
    // Nine characters fit with their terminator; ten (the caption length) go
    // without one; longer ones are cut.
    EXPECT_EQ(caption_on_wire("123456789"), text_bytes(std::string("123456789") + '\0' + '\0'));
    EXPECT_EQ(caption_on_wire("1234567890"), text_bytes(std::string("1234567890") + '\0'));
    EXPECT_EQ(caption_on_wire("1234567890ABCDEF"), text_bytes(std::string("1234567890") + '\0'));

    // A hostile caption length never reads past the caption field.
    use_pad(3, 255);
    std::memset(button.data.button.caption, 'y', sizeof button.data.button.caption);  // no terminator
    ASSERT_EQ(velatrix_set_region(device, &button), 1);
    const Bytes sent = fake.sets(0x70).back();
    ASSERT_EQ(sent.size(), 285u);
    EXPECT_EQ(std::count(sent.begin() + 29, sent.end(), 'y'), 102);
    EXPECT_EQ(sent[29 + 102], 0);
}

TEST_F(RegionTableTest, RefusesRegionNumbersOutsideTheTable) {
    velatrix_device_region_info region{};
    region.number = 4;
    EXPECT_EQ(velatrix_set_region(device, &region), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Region number was out of bounds, min: 1, max: 3, specified: 4\n");
    velatrix_region_update update{};
    update.number = 4;
    EXPECT_EQ(velatrix_update_region(device, &update), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Region number out of bounds.");
    EXPECT_TRUE(fake.transfers().empty());
}

TEST_F(RegionTableTest, UpdateDeleteAndCommitReports) {
    // Leading, number, enable, visible, reserved, foreground, ignored, reserved2.
    velatrix_region_update update{0xEE, 3, 1, 1, 0x42, 0x11223344, {0xEE, 0xEE, 0xEE}, 0xA1B2C3D4};
    ASSERT_EQ(velatrix_update_region(device, &update), 1);
    update.visible = 0;
    ASSERT_EQ(velatrix_update_region(device, &update), 1);
    EXPECT_EQ(fake.sets(0x71), (std::vector<Bytes>{hex("71 03 03 42 11223344 d4c3b2a1"),
                                                   hex("71 03 01 42 11223344 d4c3b2a1")}));
    ASSERT_EQ(velatrix_delete_region(device, 3), 1);
    EXPECT_EQ(fake.sets(0x72), (std::vector<Bytes>{{0x72, 3}}));
    ASSERT_EQ(velatrix_set_region_commit(device, 0), 1);
    EXPECT_EQ(fake.sets(0x73), (std::vector<Bytes>{{0x73, 0}}));
    // Update and commit go without a wait, the delete after one.
    EXPECT_EQ(fake.sequence(), "S113 S113 G13 S114 S115");
}

}  // namespace
}  // namespace velatrix::testing
