#include <gtest/gtest.h>

#include "support/fake_driver.h"
#include "velatrix-quillmark.h"

namespace {

using velatrix::testing::Bytes;
using velatrix::testing::capture_stdout;
using velatrix::testing::FakeDriver;

TEST(Calibration, StartCommitsFirstThenSendsValueZero) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    EXPECT_EQ(velatrix_device_calibrate(device), 1);
    EXPECT_EQ(fake.sequence(false), "S172 S130");
    EXPECT_EQ(fake.sets(130), (std::vector<Bytes>{{0x82, 0x00}}));
}

TEST(Calibration, FallsBackToTheRegionCommitWhenTheScreenCommitFails) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    fake.fail_report(172);
    EXPECT_EQ(velatrix_device_calibrate(device), 1);
    EXPECT_EQ(fake.sequence(false), "S172 S115 S130");
}

TEST(Calibration, CancelSendsFFAndAFailedSendWaitsOnceMore) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    EXPECT_EQ(velatrix_device_cancel_calibrate(device), 1);
    EXPECT_EQ(fake.sequence(), "G13 S130");
    EXPECT_EQ(fake.sets(130), (std::vector<Bytes>{{0x82, 0xFF}}));

    fake.clear_transfers();
    fake.fail_report(130);
    EXPECT_EQ(velatrix_device_cancel_calibrate(device), 0);
    EXPECT_EQ(fake.sequence(), "G13 S130 G13");
}

TEST(Calibration, StateUnpacksModeAndPointBetweenTheUnevenWaits) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    fake.answer(130, {0x82, 0x2B});  // 0b00101011: mode bit 1, point 5
    const velatrix_hid_feature_calibrate state = velatrix_get_calibrate_state(device);
    EXPECT_EQ(state.report_id, 0x82);
    EXPECT_EQ(fake.sequence(), "G13 G130 G13");
    EXPECT_EQ(capture_stdout([&] { velatrix_print_calibrate_state(&state); }),
              "velatrix_hid_feature_calibrate structure:\ncalibration_mode = 1\npoint = 5\n");
    EXPECT_EQ(capture_stdout([] { velatrix_print_calibrate_state(nullptr); }),
              "velatrix_hid_feature_calibrate structure:\n  NULL\n");
}

TEST(Calibration, StateReadFailureLogsAndStillWaitsAfter) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    fake.fail_report(130, "pad said no");
    const velatrix_hid_feature_calibrate state = velatrix_get_calibrate_state(device);
    EXPECT_EQ(state.report_id, 0);
    EXPECT_EQ(fake.sequence(), "G13 G130 G13");
}

TEST(Calibration, StateWaitsUpTo2103PollsBeforeAndGivesUpWithAZeroRecord) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    fake.busy_for(100000, 32);
    const velatrix_hid_feature_calibrate state = velatrix_get_calibrate_state(device);
    EXPECT_EQ(state.report_id, 0);
    EXPECT_EQ(fake.gets_of(13), 2103);
    EXPECT_EQ(fake.gets_of(130), 0);
    EXPECT_STREQ(velatrix_get_last_error(),
                 "Problem waiting for firmware interlock: device didn't respond in time, sleep: 2103, interlock: 32");
}

TEST(Calibration, NullStateRecordIsAnErrorNotACrash) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    velatrix_get_calibrate_state_ref(device, nullptr);
    EXPECT_STREQ(velatrix_get_last_error(), "Record was null, unable to read the calibration state.");
    EXPECT_TRUE(fake.transfers().empty());
}

}  // namespace
