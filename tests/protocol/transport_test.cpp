#include <gtest/gtest.h>

#include <string>

#include "support/fake_driver.h"
#include "velatrix/error.h"
#include "velatrix/transport.h"

namespace velatrix::testing {
namespace {

constexpr uint8_t kStatus = 13;

class TransportTest : public ::testing::Test {
protected:
    void SetUp() override { velatrix_set_legacy_firmware(nullptr, 0); }
    void TearDown() override { velatrix_set_legacy_firmware(nullptr, 0); }

    FakeDriver fake;
    velatrix_device* device = fake.make_device();
};

TEST(FieldHelpers, LittleEndianWithSignExtension) {
    const uint8_t bytes[] = {0xFF, 0xFF, 0x34, 0x12, 0x00, 0x80, 0x78, 0x56, 0x34, 0x12, 0xFE, 0xFF, 0xFF, 0xFF};
    EXPECT_EQ(get2(bytes, 0), -1);
    EXPECT_EQ(get2(bytes, 2), 0x1234);
    EXPECT_EQ(get2(bytes, 4), -32768);
    // Unaligned: a field may start at an odd offset.
    EXPECT_EQ(get2(bytes, 3), 0x0012);
    EXPECT_EQ(get4(bytes, 6), 0x12345678);
    EXPECT_EQ(get4(bytes, 10), -2);
    EXPECT_EQ(static_cast<uint16_t>(get2(bytes, 0)), 0xFFFF);

    uint8_t out[8] = {};
    put4(out, 1, 0x12345678);
    EXPECT_EQ((std::vector<uint8_t>(out, out + 8)), (std::vector<uint8_t>{0, 0x78, 0x56, 0x34, 0x12, 0, 0, 0}));
    put2(out, 5, 0xABCDEF);  // only the low 16 bits
    EXPECT_EQ(out[5], 0xEF);
    EXPECT_EQ(out[6], 0xCD);
    EXPECT_EQ(out[7], 0);
    put2(out, 0, -2);
    EXPECT_EQ(out[0], 0xFE);
    EXPECT_EQ(out[1], 0xFF);
    put4(out, 4, int64_t{0x1FFFFFFFF});  // low 32 bits only
    EXPECT_EQ(get4(out, 4), -1);
}

TEST_F(TransportTest, WrappersPassBufferAndStatusThroughTheDriver) {
    uint8_t get[4] = {20, 0, 0, 0};
    fake.answer(20, {20, 7, 8, 9});
    EXPECT_EQ(velatrix_hid_get_feature_report(device, get, 4), 1);
    EXPECT_EQ(get[3], 9);

    uint8_t set[3] = {15, 1, 2};
    EXPECT_EQ(velatrix_hid_set_feature_report(device, set, 3), 1);
    uint8_t output[2] = {5, 6};
    EXPECT_EQ(velatrix_hid_set_output_report(device, output, 2), 1);

    ASSERT_EQ(fake.transfers().size(), 3u);
    EXPECT_EQ(fake.sequence(), "G20 S15 O5");
    EXPECT_EQ(fake.transfers()[1].length, 3u);
    EXPECT_EQ(fake.transfers()[2].bytes, (Bytes{5, 6}));

    fake.fail_report(15, "driver said no");
    EXPECT_EQ(velatrix_hid_set_feature_report(device, set, 3), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "driver said no");
}

TEST_F(TransportTest, MissingDriverIsAnErrorNotACrash) {
    velatrix_device orphan{};
    uint8_t buffer[2] = {10, 0};
    EXPECT_EQ(velatrix_hid_get_feature_report(&orphan, buffer, 2), 0);
    EXPECT_STRNE(velatrix_get_last_error(), "");
    EXPECT_EQ(velatrix_hid_set_feature_report(nullptr, buffer, 2), 0);
    EXPECT_EQ(velatrix_hid_set_output_report(device, nullptr, 2), 0);
    EXPECT_TRUE(fake.transfers().empty());
}

TEST_F(TransportTest, LegacyFirmwareSkipsTheWaitSilently) {
    fake.busy_for(1000, 0x3F);
    velatrix_set_legacy_firmware(device, 1);
    EXPECT_EQ(use_legacy_firmware, 1);
    EXPECT_EQ(wait_for_interlock(device, 100, 4), 1);
    EXPECT_EQ(wait_for_interlock(device, 0, 63), 1);
    EXPECT_TRUE(fake.transfers().empty());
    velatrix_set_legacy_firmware(nullptr, 0);
    EXPECT_EQ(use_legacy_firmware, 0);
}

TEST_F(TransportTest, ZeroSleepFailsWithoutPolling) {
    EXPECT_EQ(wait_for_interlock(device, 0, 4), 0);
    EXPECT_TRUE(fake.transfers().empty());
    const std::string message =
        "Problem waiting for firmware interlock: device didn't respond in time, sleep: 0, interlock: 4";
    EXPECT_EQ(velatrix_get_last_error(), message);
}

TEST_F(TransportTest, MaskSelectsWhichBusyFlagsMatter) {
    fake.busy_for(1000, 0x04);  // only busy flag 2
    EXPECT_EQ(wait_for_interlock(device, 100, 8), 1);
    EXPECT_EQ(wait_for_interlock(device, 100, 16), 1);
    EXPECT_EQ(wait_for_interlock(device, 100, 2), 1);
    EXPECT_EQ(fake.gets_of(kStatus), 3);
}

TEST_F(TransportTest, BusyPadIsPolledUntilReady) {
    fake.busy_for(3, 0x0C);
    EXPECT_EQ(wait_for_interlock(device, 100, 4), 1);
    EXPECT_EQ(fake.gets_of(kStatus), 4);
    EXPECT_EQ(fake.sequence(), "G13 G13 G13 G13");
    for (const Transfer& poll : fake.transfers()) EXPECT_EQ(poll.length, 73u);
}

TEST_F(TransportTest, PadBusyTooLongTimesOut) {
    fake.busy_for(1000, 0x20);
    EXPECT_EQ(wait_for_interlock(device, 5, 32), 0);
    EXPECT_EQ(fake.gets_of(kStatus), 5);
    EXPECT_STREQ(velatrix_get_last_error(),
                 "Problem waiting for firmware interlock: device didn't respond in time, sleep: 5, interlock: 32");
}

TEST_F(TransportTest, FailedStatusReadCountsAsReady) {
    fake.busy_for(1000, 0x3F);
    fake.fail_report(kStatus);
    EXPECT_EQ(wait_for_interlock(device, 100, 63), 1);
    EXPECT_EQ(fake.gets_of(kStatus), 1);
}

TEST_F(TransportTest, RunModeWaitsBeforeAndAfter) {
    EXPECT_EQ(velatrix_set_run_mode(device, 0x102), 1);
    EXPECT_EQ(fake.sequence(), "G13 S10 G13");
    EXPECT_EQ(fake.sets(10), (std::vector<Bytes>{{10, 0x02}}));
}

TEST_F(TransportTest, RunModeFailures) {
    // Pad busy before: nothing is sent.
    fake.busy_for(1000, 0x01);
    EXPECT_EQ(velatrix_set_run_mode(device, 2), 0);
    EXPECT_TRUE(fake.sets().empty());
    EXPECT_EQ(fake.gets_of(kStatus), 500);

    // Send fails: the status is passed on after the second wait.
    fake.busy_for(0, 0);
    fake.clear_transfers();
    fake.fail_transfer(2, "send failed");
    EXPECT_EQ(velatrix_set_run_mode(device, 2), 0);
    EXPECT_EQ(fake.sequence(), "G13 S10 G13");

    // Busy after a successful send: reported as a failure all the same.
    fake.clear_transfers();
    fake.answer_sequence(kStatus, {{kStatus, 0, 0, 0}, {kStatus, 0, 0, 1}});
    EXPECT_EQ(velatrix_set_run_mode(device, 0), 0);
    EXPECT_EQ(fake.sets(10).size(), 1u);
    EXPECT_EQ(fake.gets_of(kStatus), 501);
    EXPECT_STREQ(velatrix_get_last_error(),
                 "Problem waiting for firmware interlock: device didn't respond in time, sleep: 500, interlock: 1");
}

}  // namespace
}  // namespace velatrix::testing
