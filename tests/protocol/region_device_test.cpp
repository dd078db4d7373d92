// Device regions: the region index (0x96), region contents (0x98) read and
// written for every type, reading all regions, and deleting (0x99).
#include <gtest/gtest.h>

#include <algorithm>
#include <tuple>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

constexpr uint8_t kCaption = 10;
constexpr size_t kLength = kCaption + 34;

// The common part of a region contents report: region 4 of `type`, with
// every flag set unless told, reserved bytes 9 and 1..8, rectangle 16, 32,
// 48, 64.
Bytes contents(uint8_t type, Bytes specific, Bytes tail = {}, size_t length = kLength, uint8_t flags = 0x47) {
    Bytes result = wire(0x98, length, {{1, hex("04 00 47 09 0102030405060708 1000 2000 3000 4000 11223344 55667788")},
                                       {29, specific}});
    result[2] = type;
    result[3] = flags;
    std::copy(tail.begin(), tail.end(), result.begin() + 33);
    return result;
}

class RegionDeviceTest : public PadTest {
protected:
    void SetUp() override { use_pad(8, kCaption); }

    velatrix_device_region read(const Bytes& answer) {
        fake.answer(0x98, answer);
        velatrix_device_region region;
        std::memset(&region, 0xCC, sizeof region);
        EXPECT_EQ(velatrix_get_region(&region, device), &region);
        return region;
    }
    // Writing back what was read sends the bytes that were read.
    void expect_round_trip(const velatrix_device_region& region, const Bytes& answer) {
        fake.clear_transfers();
        ASSERT_EQ(velatrix_set_region_contents(device, &region), 1);
        EXPECT_EQ(fake.sequence(), "G13 S152");
        ASSERT_EQ(fake.sets(0x98).size(), 1u);
        EXPECT_EQ(fake.sets(0x98)[0], answer);
    }
};

// Each type read and written back; the print-out of what was read shows
// every field the read unpacked but the report id, the number and the
// reserved bytes, which the writes show.
TEST_F(RegionDeviceTest, ReadsWritesAndPrintsEveryType) {
    const Bytes answers[] = {
        contents(VELATRIX_REGION_CONTAINER, {1, 2, 3, 4}),
        contents(VELATRIX_REGION_BUTTON, {0x0F, 0x0A, 0x0B, 0x0C}, text_bytes("Sign here")),
        contents(VELATRIX_REGION_BUTTON, {0x11}, {7, 8}),
        contents(VELATRIX_REGION_LINE, {2, 3, 0xAB, 0xCD}),
        contents(VELATRIX_REGION_GRAPHIC, {7, 5, 0xA3, 0xEE}),
        contents(VELATRIX_REGION_TEXT, {1, 6, 2, 0x5F}, {}, kLength, 0x05),
    };
    velatrix_device_region regions[std::size(answers)];
    for (size_t i = 0; i < std::size(answers); ++i) {
        SCOPED_TRACE(i);
        fake.clear_transfers();
        regions[i] = read(answers[i]);
        EXPECT_EQ(fake.sequence(), "G13 G152");
        expect_round_trip(regions[i], answers[i]);
    }
    EXPECT_EQ(std::tuple(regions[0].report_id, regions[0].number), std::tuple(0x98, 4));

    const Fields common = {{"Accepts Touch", "1"}, {"Decode", "1"}, {"Has Frame", "1"}, {"Output To Host", "1"},
                           {"Reserved 1", "9"}, {"Reserved 2", "1"}, {"X1", "16"}, {"Y1", "48"}, {"X2", "32"},
                           {"Y2", "64"}, {"Foreground", "#44112233"}, {"Background", "#88556677"}};
    Fields touch_and_frame = common;  // the text region's flags
    touch_and_frame[1].second = touch_and_frame[3].second = "0";
    const std::string expected =
        "velatrix_device_region_info structure:\n" +
        printed_region(4, "Container", common, {{"Ink Enable", "1"}, {"Ink Width", "2"}}) +
        printed_region(4, "Button", common,
                       {{"Clear on Select", "1"}, {"Enable", "1"}, {"Highlight on Select", "1"},
                        {"Confirm on Select", "1"}, {"Use Resource", "0"}, {"Caption", "Sign here"},
                        {"Resource Number Normal", "0"}, {"Resource Number Selected", "0"}}) +
        printed_region(4, "Button", common,
                       {{"Clear on Select", "0"}, {"Enable", "1"}, {"Highlight on Select", "0"},
                        {"Confirm on Select", "0"}, {"Use Resource", "1"}, {"Caption", ""},
                        {"Resource Number Normal", "7"}, {"Resource Number Selected", "8"}}) +
        printed_region(4, "Line", common, {{"Parent", "2"}, {"Width", "3"}}) +
        printed_region(4, "Graphic", common,
                       {{"Graphic Number", "5"}, {"Horizontal Justification", "3"}, {"Vertical Justification", "10"}}) +
        printed_region(4, "Text", touch_and_frame,
                       {{"Resource Number", "6"}, {"Font Number", "2"}, {"Horizontal Justification", "15"},
                        {"Vertical Justification", "5"}});
    EXPECT_EQ(capture_stdout([&] { velatrix_print_device_regions(regions, std::size(regions)); }), expected);
    // Both generations of region print through the same code: no records, a header and NULL.
    EXPECT_EQ(capture_stdout([] { velatrix_print_device_regions(nullptr, 0); }),
              "velatrix_device_region_info structure:\n  NULL\n");
}

TEST_F(RegionDeviceTest, AnswerUnderAnotherIdIsAFailedRead) {
    Bytes answer = contents(VELATRIX_REGION_LINE, {2, 3, 0, 0});
    answer[0] = 0x97;
    const velatrix_device_region region = read(answer);
    const velatrix_device_region zero{};
    EXPECT_EQ(std::memcmp(&region, &zero, sizeof zero), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Region contents came back as report 151 instead of 152.");
}

TEST_F(RegionDeviceTest, HostileCaptionLengthsStayInsideBothBuffers) {
    // No caption bytes at all: the selected resource number has no byte.
    use_pad(8, 0);
    Bytes answer = contents(VELATRIX_REGION_BUTTON, {0x10}, {7}, 34);
    velatrix_device_region region = read(answer);
    EXPECT_EQ(fake.transfers().back().length, 34u);
    EXPECT_EQ(region.data.button.resource_number_normal, 7);
    EXPECT_EQ(region.data.button.resource_number_selected, 0);
    region.data.button.resource_number_selected = 9;
    expect_round_trip(region, answer);

    // 256 caption bytes on the wire, 100 in the record.
    use_pad(8, 255);
    answer = contents(VELATRIX_REGION_BUTTON, {0}, Bytes(256, 'z'), 255 + 34);
    region = read(answer);
    EXPECT_EQ(Bytes(region.data.button.caption, region.data.button.caption + 100), Bytes(100, 'z'));
    // A caption filling its whole field prints without running past it.
    const std::string out = capture_stdout([&] { velatrix_print_device_regions(&region, 1); });
    EXPECT_NE(out.find("Caption: " + std::string(100, 'z') + "\n"), std::string::npos);
    fake.clear_transfers();
    ASSERT_EQ(velatrix_set_region_contents(device, &region), 1);
    const Bytes sent = fake.sets(0x98)[0];
    ASSERT_EQ(sent.size(), 289u);
    EXPECT_EQ(std::count(sent.begin() + 33, sent.end(), 'z'), 100);
}

TEST_F(RegionDeviceTest, ReadsAllRegionsFromIndexOne) {
    const Bytes first = contents(VELATRIX_REGION_BUTTON, {0x01}, text_bytes("A"));
    const Bytes second = contents(VELATRIX_REGION_TEXT, {0, 3, 1, 0x21});
    fake.answer(0xAA, wire(0xAA, 25, {{2, {2}}}));
    fake.answer_sequence(0x98, {first, second});
    velatrix_device_region* regions = velatrix_get_device_regions(device);
    ASSERT_NE(regions, nullptr);
    EXPECT_EQ(fake.sequence(), "G170 S150 G13 G152 G13 G152");
    EXPECT_EQ(fake.sets(0x96), (std::vector<Bytes>{{0x96, 1}}));
    EXPECT_STREQ(regions[0].data.button.caption, "A");
    EXPECT_EQ(regions[1].data.text.resource_number, 3);
    EXPECT_EQ(regions[1].data.text.vertical_justification, 2);
    velatrix_free_device_regions(regions);

    // A pad with no device regions gives an empty array.
    fake.clear_transfers();
    fake.answer(0xAA, wire(0xAA, 25));
    regions = velatrix_get_device_regions(device);
    EXPECT_NE(regions, nullptr);
    EXPECT_EQ(fake.sequence(), "G170 S150");
    velatrix_free_device_regions(regions);
}

TEST_F(RegionDeviceTest, ReadingAllRegionsStopsAtTheFirstBadOne) {
    Bytes stray = contents(VELATRIX_REGION_LINE, {});
    stray[0] = 0x99;
    fake.answer(0xAA, wire(0xAA, 25, {{2, {3}}}));
    fake.answer_sequence(0x98, {contents(VELATRIX_REGION_LINE, {}), stray});
    EXPECT_EQ(velatrix_get_device_regions(device), nullptr);
    EXPECT_EQ(fake.gets_of(0x98), 2);
}

TEST_F(RegionDeviceTest, WritingRefreshesACachedRegionTable) {
    device->regions = velatrix_get_regions(device);
    ASSERT_NE(device->regions, nullptr);
    fake.clear_transfers();
    fake.answer(0x6E, wire(0x6E, 8 * (kCaption + 29) + 1, {{1, {1, 1}}, {29, text_bytes("new")}}));
    velatrix_device_region region{};
    region.number = 1;
    ASSERT_EQ(velatrix_set_region_contents(device, &region), 1);
    EXPECT_EQ(fake.sequence(), "G13 S152 G13 G110");
    ASSERT_NE(device->regions, nullptr);
    EXPECT_STREQ(device->regions[0].data.button.caption, "new");
}

TEST_F(RegionDeviceTest, IndexAndDelete) {
    fake.answer(0x96, {0x96, 7});
    EXPECT_EQ(velatrix_get_region_idx(device), 7);
    ASSERT_EQ(velatrix_set_region_idx(device, 5), 1);
    EXPECT_EQ(fake.sequence(), "G150 S150");
    EXPECT_EQ(fake.sets(0x96), (std::vector<Bytes>{{0x96, 5}}));

    // The device-region delete waits on bits 2 and 3, the table delete on bit 2 only.
    fake.clear_transfers();
    fake.busy_for(3, 8);
    ASSERT_EQ(velatrix_delete_device_region(device, 8), 1);
    EXPECT_EQ(fake.sequence(), "G13 G13 G13 G13 S153");
    EXPECT_EQ(fake.sets(0x99), (std::vector<Bytes>{{0x99, 8}}));
    fake.clear_transfers();
    fake.busy_for(3, 8);
    ASSERT_EQ(velatrix_delete_region(device, 8), 1);
    EXPECT_EQ(fake.sequence(), "G13 S114");

    fake.clear_transfers();
    EXPECT_EQ(velatrix_delete_device_region(device, 9), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Region number out of bounds.");
    EXPECT_TRUE(fake.transfers().empty());
}

}  // namespace
}  // namespace velatrix::testing
