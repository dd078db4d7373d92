// Screens: the screen report (0xA2) both ways, editing the record, the
// small screen reports and the screen-region commit with its waits.
#include <gtest/gtest.h>

#include <algorithm>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

using ScreenTest = PadTest;

TEST_F(ScreenTest, ReadsAScreen) {
    fake.answer(0xA2, wire(0xA2, 80, {{1, hex("03 11 0102030405060708090a0b0c0d0e 1e 02 03 050607 63")},
                                      {50, hex("010104 63")}}));
    velatrix_hid_feature_screen screen;
    std::memset(&screen, 0xCC, sizeof screen);
    EXPECT_EQ(velatrix_get_screen(&screen, device), &screen);
    EXPECT_EQ(fake.sequence(), "G13 G162");
    EXPECT_EQ(fake.transfers().back().length, 80u);
    // Only region_count entries are taken; the rest of each list is zeroed.
    const velatrix_hid_feature_screen expected{
        0xA2, 3, 1, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}, 30, 2, 3, {5, 6, 7}, {1, 1, 4}};
    EXPECT_EQ(std::memcmp(&screen, &expected, sizeof screen), 0);
}

TEST_F(ScreenTest, HostileRegionCountTakesOnlyWhatTheReportCarries) {
    Bytes answer(80, 0xEE);
    answer[0] = 0xA2;
    answer[19] = 255;
    fake.answer(0xA2, answer);
    velatrix_hid_feature_screen screen;
    velatrix_get_screen_ref(device, &screen);
    EXPECT_EQ(screen.region_count, 255);
    EXPECT_EQ(std::count(screen.region_indexes, screen.region_indexes + 100, 0xEE), 30);
    EXPECT_EQ(std::count(screen.screen_next_list, screen.screen_next_list + 100, 0xEE), 30);

    // The record as read can be edited and written back within its lists.
    EXPECT_EQ(velatrix_add_region_to_screen(&screen, 0xEE, 1), 1);
    EXPECT_EQ(screen.screen_next_list[0], 1);
    EXPECT_EQ(velatrix_add_region_to_screen(&screen, 0x42, 1), 0);
    EXPECT_EQ(velatrix_set_screen(device, &screen), 1);
}

TEST_F(ScreenTest, WritesOnlyTheFirstThirtyEntries) {
    // Screen 3 resetting its timeout of 30 on activity, then screen 2, and no
    // regions yet; the report id sent is the screen report's whatever the
    // record says.
    velatrix_hid_feature_screen screen{0, 3, 1, {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14}, 30, 2, 0, {}, {}};
    Bytes expected = hex("a2 03 10 0102030405060708090a0b0c0d0e 1e 02 28");
    Bytes next;
    for (uint8_t i = 0; i < 40; ++i) {
        ASSERT_EQ(velatrix_add_region_to_screen(&screen, i + 1, 100 + i), 1);
        if (i < 30) expected.push_back(i + 1), next.push_back(100 + i);
    }
    expected.insert(expected.end(), next.begin(), next.end());
    EXPECT_EQ(screen.region_count, 40);
    ASSERT_EQ(velatrix_set_screen(device, &screen), 1);
    EXPECT_EQ(fake.sequence(), "G13 S162");
    EXPECT_EQ(fake.sets(0xA2), (std::vector<Bytes>{expected}));
}

TEST_F(ScreenTest, AddingRegionsToTheRecord) {
    velatrix_hid_feature_screen screen{};
    ASSERT_EQ(velatrix_add_region_to_screen(&screen, 5, 1), 1);
    ASSERT_EQ(velatrix_add_region_to_screen(&screen, 6, 1), 1);
    // An existing region only changes its next screen.
    ASSERT_EQ(velatrix_add_region_to_screen(&screen, 5, 9), 1);
    EXPECT_EQ(screen.region_count, 2);
    EXPECT_EQ(Bytes(screen.region_indexes, screen.region_indexes + 3), (Bytes{5, 6, 0}));
    EXPECT_EQ(Bytes(screen.screen_next_list, screen.screen_next_list + 3), (Bytes{9, 1, 0}));

    for (int region = 7; screen.region_count < 100; ++region) {
        ASSERT_EQ(velatrix_add_region_to_screen(&screen, static_cast<uint8_t>(region), 2), 1);
    }
    const velatrix_hid_feature_screen full = screen;
    EXPECT_EQ(velatrix_add_region_to_screen(&screen, 250, 3), 0);
    EXPECT_EQ(std::memcmp(&screen, &full, sizeof full), 0);
    // A full list still takes a new next screen for a listed region.
    EXPECT_EQ(velatrix_add_region_to_screen(&screen, 6, 4), 1);
    EXPECT_EQ(screen.screen_next_list[1], 4);
    EXPECT_EQ(velatrix_add_region_to_screen(nullptr, 1, 1), 0);
    EXPECT_TRUE(fake.transfers().empty());
}

TEST_F(ScreenTest, EditIndexActiveAndDeleteReports) {
    // Report id, reserved, add, remove, set timeout, screen, region, the
    // region's next screen, timeout and the timeout's next screen.
    velatrix_hid_feature_screen_modify modify{0xA4, {1, 2, 3, 4, 5, 6}, 1, 0, 1, 2, 3, 4, 5, 6};
    ASSERT_EQ(velatrix_set_edit_screen(device, &modify), 1);
    modify.add_region = 0;
    modify.remove_region = 1;
    modify.set_timeout = 0;
    ASSERT_EQ(velatrix_set_edit_screen(device, &modify), 1);

    fake.answer(0xA0, {0xA0, 4});
    fake.answer(0xAB, {0xAB, 6});
    EXPECT_EQ(velatrix_get_screen_idx(device), 4);
    EXPECT_EQ(velatrix_set_screen_idx(device, 5), 1);
    EXPECT_EQ(velatrix_get_active_screen(device), 6);
    EXPECT_EQ(velatrix_set_active_screen(device, 7), 1);
    EXPECT_EQ(velatrix_delete_screen(device, 8), 1);
    EXPECT_EQ(fake.sequence(), "G13 S164 G13 S164 G160 S160 G13 G171 G13 S171 G13 S163");
    EXPECT_EQ(fake.sets(), (std::vector<Bytes>{hex("a4 010203040506 05 0203040506"),
                                               hex("a4 010203040506 02 0203040506"), {0xA0, 5}, {0xAB, 7}, {0xA3, 8}}));

    // Screen operations wait on busy bit 3 only.
    fake.clear_transfers();
    fake.busy_for(2, 8);
    EXPECT_EQ(velatrix_delete_screen(device, 1), 1);
    fake.busy_for(2, 4);
    EXPECT_EQ(velatrix_delete_screen(device, 1), 1);
    EXPECT_EQ(fake.sequence(), "G13 G13 G13 S163 G13 S163");
}

TEST_F(ScreenTest, ScreenRegionInfoIsPassedThrough) {
    Bytes answer = {0xAA};
    for (uint8_t i = 1; i <= 24; ++i) answer.push_back(i);
    fake.answer(0xAA, answer);
    velatrix_hid_feature_screen_region_info info;
    EXPECT_EQ(velatrix_get_screen_region_info(&info, device), &info);
    EXPECT_EQ(fake.sequence(), "G170");
    EXPECT_EQ(info.report_id, 0xAA);
    EXPECT_EQ(Bytes(info.payload, info.payload + 24), Bytes(answer.begin() + 1, answer.end()));
}

// The commit waits 2101 polls before and 2100 after: a pad busy for 2100
// polls passes the first, and fails the second although the command went out.
TEST_F(ScreenTest, CommitWaitsOnBothSides) {
    ASSERT_EQ(velatrix_set_screen_region_commit(device, 90), 1);
    EXPECT_EQ(fake.sequence(), "G13 S172 G13");
    EXPECT_EQ(fake.sets(0xAC), (std::vector<Bytes>{{0xAC, 90}}));

    fake.clear_transfers();
    std::vector<Bytes> polls(2101, status(0));
    polls.push_back(status(12));
    fake.answer_sequence(13, polls);
    fake.busy_for(2100, 4);
    EXPECT_EQ(velatrix_set_screen_region_commit(device, 0), 0);
    EXPECT_EQ(fake.sets(0xAC), (std::vector<Bytes>{{0xAC, 0}}));
    EXPECT_EQ(fake.gets_of(13), 2101 + 2100);
    EXPECT_STREQ(velatrix_get_last_error(),
                 "Problem waiting for firmware interlock: device didn't respond in time, sleep: 2100, interlock: 12");
}

}  // namespace
}  // namespace velatrix::testing
