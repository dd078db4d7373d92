#include "protocol_test.h"
#include "velatrix-quillmark.h"

namespace velatrix::testing {
namespace {

using Calibration = FakePad;

TEST_F(Calibration, StartCommitsFirstFallingBackToTheRegionCommitThenSendsValueZero) {
    EXPECT_EQ(velatrix_device_calibrate(device), 1);
    EXPECT_EQ(fake.sequence(false), "S172 S130");
    EXPECT_EQ(fake.sets(130), (std::vector<Bytes>{{0x82, 0x00}}));

    fake.clear_transfers();
    fake.fail_report(172);
    EXPECT_EQ(velatrix_device_calibrate(device), 1);
    EXPECT_EQ(fake.sequence(false), "S172 S115 S130");
}

TEST_F(Calibration, CancelSendsFFAndAFailedSendWaitsOnceMore) {
    EXPECT_EQ(velatrix_device_cancel_calibrate(device), 1);
    EXPECT_EQ(fake.sequence(), "G13 S130");
    EXPECT_EQ(fake.sets(130), (std::vector<Bytes>{{0x82, 0xFF}}));

    fake.clear_transfers();
    fake.fail_report(130);
    EXPECT_EQ(velatrix_device_cancel_calibrate(device), 0);
    EXPECT_EQ(fake.sequence(), "G13 S130 G13");
}

TEST_F(Calibration, StateUnpacksModeAndPointBetweenTheUnevenWaits) {
    fake.answer(130, {0x82, 0x2B});  // 0b00101011: mode bit 1, point 5
    const velatrix_hid_feature_calibrate state = velatrix_get_calibrate_state(device);
    EXPECT_EQ(state.report_id, 0x82);
    EXPECT_EQ(fake.sequence(), "G13 G130 G13");
    EXPECT_EQ(capture_stdout([&] { velatrix_print_calibrate_state(&state); }),
              "velatrix_hid_feature_calibrate structure:\ncalibration_mode = 1\npoint = 5\n");

    // A failed read still waits after it.
    fake.clear_transfers();
    fake.fail_report(130, "pad said no");
    EXPECT_EQ(velatrix_get_calibrate_state(device).report_id, 0);
    EXPECT_EQ(fake.sequence(), "G13 G130 G13");

    velatrix_get_calibrate_state_ref(device, nullptr);
    EXPECT_STREQ(velatrix_get_last_error(), "Record was null, unable to read the calibration state.");
    EXPECT_EQ(fake.transfers().size(), 3u);
}

TEST_F(Calibration, StateWaitsUpTo2103PollsBeforeAndGivesUpWithAZeroRecord) {
    fake.busy_for(100000, 32);
    EXPECT_EQ(velatrix_get_calibrate_state(device).report_id, 0);
    EXPECT_EQ(fake.gets_of(13), 2103);
    EXPECT_EQ(fake.gets_of(130), 0);
    EXPECT_STREQ(velatrix_get_last_error(),
                 "Problem waiting for firmware interlock: device didn't respond in time, sleep: 2103, interlock: 32");
}

}  // namespace
}  // namespace velatrix::testing
