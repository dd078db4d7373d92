// The virtual pad's status, interlock flags and the checks it makes on
// what the host writes. What it stores and answers back is the end-to-end
// round trip's (tests/host).
#include <gtest/gtest.h>
#include <tuple>

#include "virtual_wire.h"

namespace velatrix::virtual_pad::testing {
namespace {

class VirtualFirmwareEveryModel : public ::testing::TestWithParam<const PadModel*> {
protected:
    Firmware pad{*GetParam(), 1};
};

INSTANTIATE_TEST_SUITE_P(Models, VirtualFirmwareEveryModel, ::testing::ValuesIn(all_models()), model_name);

TEST_P(VirtualFirmwareEveryModel, StatusShowsInitialisingThenBusyFlagsForTheConfiguredPolls) {
    for (unsigned i = 0; i < GetParam()->initializing_polls; ++i) {
        EXPECT_EQ(get(pad, 13, 73).at(1) & 0x01, 0x01) << "poll " << i;
    }
    Bytes status = get(pad, 13, 73);
    EXPECT_EQ(status.at(1), 0x00) << "running, not initialising";
    EXPECT_EQ(status.at(3), 0x00);

    // Run mode 0 raises busy flag 0 for two status reads and shows idle.
    ASSERT_TRUE(pad.set_feature(report(10, 2, {0})));
    EXPECT_EQ(get(pad, 13, 73).at(3), 0x01);
    status = get(pad, 13, 73);
    EXPECT_EQ(status.at(3), 0x01);
    EXPECT_EQ(status.at(1), 0x10) << "idle bit";
    EXPECT_EQ(poll_busy(pad), 0x00);

    pad.state().busy_polls = 0;
    ASSERT_TRUE(pad.set_feature(report(10, 2, {2})));
    status = get(pad, 13, 73);
    EXPECT_EQ(status.at(3), 0x00);
    EXPECT_EQ(status.at(1), 0x00);
    EXPECT_EQ(pad.state().run_mode, 2);
}

TEST_P(VirtualFirmwareEveryModel, EachCommandRaisesItsOwnInterlockFlags) {
    pad.state().busy_polls = 1;
    pad.state().initializing_left = 0;
    struct Case {
        Bytes command;
        uint8_t busy;
    };
    const uint8_t caption = GetParam()->display.max_caption_length;
    std::vector<Case> cases = {
        {report(10, 2, {2}), 0x01},
        {report(101, 2, {1}), 0x10},
        {report(114, 2, {3}), 0x04},
        {report(130, 2, {0x00}), 0x20},
        {report(130, 2, {0xFF}), 0x20},
        {report(112, caption + 30u, {2, 2}), 0x04},
        {report(15, 3, {1, 1}), 0x00},
    };
    if (GetParam()->capabilities.supports_screens_resources) {
        cases.push_back({report(171, 2, {1}), 0x08});
        cases.push_back({report(172, 2, {0}), 0x0C});
        cases.push_back({report(153, 2, {4}), 0x0C});
    }
    for (const Case& c : cases) {
        ASSERT_TRUE(pad.set_feature(c.command)) << "report " << int(c.command[0]) << ": " << pad.state().error_text;
        EXPECT_EQ(poll_busy(pad), c.busy) << "report " << int(c.command[0]);
        EXPECT_EQ(poll_busy(pad), 0x00) << "report " << int(c.command[0]);
    }
    EXPECT_EQ(pad.state().display_content_commands, (std::vector<uint8_t>{1})) << "recorded";
    // Reads never make the pad busy.
    get(pad, 110, pad.feature_length(110));
    EXPECT_EQ(poll_busy(pad), 0x00);
    // Held flags stay until released.
    pad.state().stay_busy = 0x24;
    EXPECT_EQ(poll_busy(pad), 0x24);
    EXPECT_EQ(poll_busy(pad), 0x24);
    pad.state().stay_busy = 0;
    EXPECT_EQ(poll_busy(pad), 0x00);
}

TEST_P(VirtualFirmwareEveryModel, SerialNumberNeedsIdleModeAndTheWriteMarker) {
    Bytes read = get(pad, 27, 35);
    std::string expected = GetParam()->serial_prefix + "00001";
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&read[1])), expected);
    EXPECT_EQ(read.at(33), 0);
    EXPECT_EQ(read.at(34), 0);

    Bytes write = report(27, 35, {'N', 'E', 'W', '-', '7'});
    write[33] = 'S';
    write[34] = 'N';
    EXPECT_FALSE(pad.set_feature(write)) << "running pads keep their serial number";
    EXPECT_EQ(pad.state().error_text, "Report 27 needs run mode 0");
    EXPECT_EQ(pad.serial_text(), expected);

    ASSERT_TRUE(pad.set_feature(report(10, 2, {0})));
    Bytes unmarked = write;
    unmarked[33] = 0;
    EXPECT_TRUE(pad.set_feature(unmarked)) << "taken but ignored";
    EXPECT_EQ(pad.serial_text(), expected);
    EXPECT_EQ(pad.state().error_text, "Serial number write without marker ignored");
    Bytes status = get(pad, 13, 73);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(&status[9])), "Serial number write without marker ignored");

    ASSERT_TRUE(pad.set_feature(write));
    EXPECT_EQ(pad.serial_text(), "NEW-7");

    // Writing report 13 clears the pad's error text.
    ASSERT_TRUE(pad.set_feature(report(13, 73)));
    EXPECT_EQ(get(pad, 13, 73).at(9), 0);
}

TEST_P(VirtualFirmwareEveryModel, RefusesUnknownReportsAndShortWritesAndAnswersOnlyItsLength) {
    Bytes unknown = report(99, 10);
    EXPECT_FALSE(pad.get_feature(unknown).has_value());
    EXPECT_EQ(pad.state().error_text, "Unknown report 99");
    EXPECT_FALSE(pad.set_feature(report(11, 65))) << "capabilities are read-only";
    EXPECT_TRUE(get(pad, 10, 2).empty()) << "run mode is write-only";
    EXPECT_FALSE(pad.set_feature(report(10, 1)));
    EXPECT_EQ(pad.state().error_text, "Report 10 too short");
    EXPECT_FALSE(pad.set_feature({}));

    // A shorter buffer than the report is report_map_test's.
    Bytes large = report(100, 16);
    std::fill(large.begin() + 1, large.end(), 0xEE);
    auto answered = pad.get_feature(large);
    ASSERT_TRUE(answered.has_value());
    EXPECT_EQ(*answered, 10u);
    EXPECT_EQ(large.at(10), 0xEE) << "nothing written past the report";
}

TEST_P(VirtualFirmwareEveryModel, ErrorCorrectionTableIsThePadsOwnAndWrittenOnlyWhenIdle) {
    Firmware other(*GetParam(), 2);
    Bytes mine = get(pad, 26, 2049);
    Bytes theirs = get(other, 26, 2049);
    EXPECT_NE(mine, theirs);
    EXPECT_EQ(mine, get(pad, 26, 2049)) << "stable";

    Bytes table = report(26, 2049);
    for (std::size_t i = 1; i < table.size(); ++i) table[i] = static_cast<uint8_t>(i * 31);
    EXPECT_FALSE(pad.set_feature(table));
    EXPECT_EQ(get(pad, 26, 2049), mine);
    ASSERT_TRUE(pad.set_feature(report(10, 2, {0})));
    EXPECT_TRUE(pad.set_feature(table));
}

TEST_P(VirtualFirmwareEveryModel, ChipRegistersReadFromTheLastAddressWritten) {
    ASSERT_TRUE(pad.set_feature(report(44, 3, {0x10, 0xAB})));
    ASSERT_TRUE(pad.set_feature(report(44, 3, {0x11, 0xCD})));
    ASSERT_TRUE(pad.set_feature(report(44, 3, {0x10, 0xAA})));
    EXPECT_EQ(get(pad, 43, 9), (Bytes{43, 0xAA, 0xCD, 0, 0, 0, 0, 0, 0}));
    ASSERT_TRUE(pad.set_feature(report(42, 2, {0x03})));
    EXPECT_EQ(get(pad, 43, 9), (Bytes{43, 0, 0, 0, 0, 0, 0, 0, 0}));
    EXPECT_EQ(pad.state().asic_resets, 1u);
}

TEST_P(VirtualFirmwareEveryModel, CalibrationRunsThroughItsTargetsOrIsCancelled) {
    pad.state().calibration_required = true;
    ASSERT_TRUE(pad.set_feature(report(130, 2, {0x00})));
    pad.state().initializing_left = 0;
    EXPECT_EQ(get(pad, 13, 73).at(2), 0x03) << "required and calibrating";
    // Mode bit 0, target number from bit 3 on.
    EXPECT_EQ(get(pad, 130, 2), (Bytes{130, 0x01}));
    EXPECT_EQ(get(pad, 130, 2), (Bytes{130, 0x09}));
    EXPECT_EQ(get(pad, 130, 2), (Bytes{130, 0x11}));
    EXPECT_EQ(get(pad, 130, 2), (Bytes{130, 0x19}));
    EXPECT_EQ(get(pad, 130, 2), (Bytes{130, 0x00})) << "done";
    EXPECT_EQ(get(pad, 13, 73).at(2), 0x00);
    EXPECT_EQ(get(pad, 131, 49).at(2) & 0x01, 0x01) << "calibration data say calibrated";

    ASSERT_TRUE(pad.set_feature(report(130, 2, {0x00})));
    get(pad, 130, 2);
    ASSERT_TRUE(pad.set_feature(report(130, 2, {0xFF})));
    EXPECT_EQ(get(pad, 130, 2), (Bytes{130, 0x00}));
    EXPECT_FALSE(pad.set_feature(report(130, 2, {0x07})));
    EXPECT_EQ(pad.state().error_text, "Unknown calibration command");
}

TEST(VirtualFirmwareInput, SimulatedPenReportBecomesAnInputReport) {
    Firmware pad(mono_320_model(), 1);
    Bytes simulate = report(253, 67, {0x64, 0x07});
    simulate[6] = 0x11;
    put_le16(simulate, 7, 250);
    put_le16(simulate, 9, 220);
    ASSERT_TRUE(pad.set_feature(simulate));
    // (250, 220) lies on the OK button, region 3.
    EXPECT_EQ(pad.take_input(), (std::vector<Bytes>{{2, 0x11, 250, 0, 220, 0, 3}}));

    simulate[1] = 0x65;
    EXPECT_FALSE(pad.set_feature(simulate));
    EXPECT_TRUE(pad.take_input().empty());
}

}  // namespace
}  // namespace velatrix::virtual_pad::testing
