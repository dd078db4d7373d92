// Whole-pad reconfiguration end to end: the two operating-mode set-ups and
// the pad's own calibration run, judged by the state the pad ends up in.
#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

Bytes commands(velatrix_virtual_pad pad, uint8_t report_id) {
    Bytes values(64);
    const int32_t count = velatrix_virtual_get_commands(pad, report_id, values.data(), 64);
    if (count < 0) return {};
    values.resize(static_cast<std::size_t>(count));
    return values;
}

TEST_F(E2e, QuillmarkModeSetsUpAPadWithScreens) {
    const velatrix_virtual_pad pad = plug("color-800");
    velatrix_device* device = open(pad);
    ASSERT_NE(device, nullptr);
    EXPECT_EQ(velatrix_set_quillmark_mode(device, 1), 1);

    EXPECT_EQ(commands(pad, 172), (Bytes{90, 0, 1})) << "set-up, restore of the defaults, save";
    EXPECT_EQ(stored_parameter(pad, 91), (Bytes{0x02, 0x00, 0x00, 0x40, 0, 3, 0, 0, 0x01}));
    EXPECT_EQ(velatrix_virtual_get_active_screen(pad), 1);
    EXPECT_EQ(velatrix_virtual_get_run_mode(pad), 2);
    // Screen 1 leads to screen 2 on its buttons and on its time-out.
    velatrix_virtual_screen screen{};
    ASSERT_EQ(velatrix_virtual_get_screen(pad, 1, &screen), 1);
    EXPECT_EQ(screen.timeout, 0);
    EXPECT_EQ(screen.timeout_next_screen, 2);
    ASSERT_EQ(screen.region_count, 4);
    EXPECT_EQ(Bytes(screen.regions, screen.regions + 4), (Bytes{1, 2, 3, 4}));
    EXPECT_EQ(Bytes(screen.next_screens, screen.next_screens + 4), (Bytes{0, 0, 2, 2}));
}

TEST_F(E2e, CorvantineModeWithoutSaveTypesThroughTheCardReader) {
    const PadModel& with_reader = derived_model("color-800", [](PadModel& m) {
        m.name = "color-800-reader";
        m.capabilities.mag_reader_id = 0x81;
    });
    const velatrix_virtual_pad pad = plug_model(with_reader);
    velatrix_device* device = open(pad);
    ASSERT_NE(device, nullptr);
    EXPECT_EQ(velatrix_set_corvantine_mode(device, 0), 1);

    EXPECT_EQ(commands(pad, 172), (Bytes{90, 0})) << "no save: no commit with value 1";
    // The factory output configuration with the mode's values; not saved.
    EXPECT_EQ(stored_parameter(pad, 91), (Bytes{0x00, 0x00, 0x01, 0x40, 0, 3, 0, 0, 0x00}));
    const Bytes peripheral = stored_parameter(pad, 92);
    ASSERT_EQ(peripheral.size(), 16u);
    EXPECT_EQ(peripheral[0], 12) << "keyboard output with preamble";
    EXPECT_EQ(peripheral[15], 0) << "not saved as default";
    velatrix_virtual_screen screen{};
    ASSERT_EQ(velatrix_virtual_get_screen(pad, 1, &screen), 1);
    EXPECT_EQ(screen.timeout, 15);
    EXPECT_EQ(screen.timeout_next_screen, 3);
    EXPECT_EQ(Bytes(screen.next_screens, screen.next_screens + 4), (Bytes{0, 0, 3, 3}));
    EXPECT_EQ(velatrix_virtual_get_run_mode(pad), 2);
}

TEST_F(E2e, ModeSetUpLeavesAPadWithoutTheModeBitsAlone) {
    const velatrix_virtual_pad pad = plug("mono-320");
    velatrix_device* device = open(pad);
    ASSERT_NE(device, nullptr);
    const Bytes output = stored_parameter(pad, 91);
    const uint32_t before = velatrix_virtual_transfer_count(pad);
    EXPECT_EQ(velatrix_set_quillmark_mode(device, 1), 1);
    EXPECT_EQ(velatrix_virtual_transfer_count(pad), before + 1) << "the capabilities read only";
    EXPECT_EQ(stored_parameter(pad, 91), output);
}

using E2eCalibration = E2eEveryModel;

TEST_P(E2eCalibration, CalibrationRunsThroughItsTargetsAndMarksThePadCalibrated) {
    ASSERT_EQ(velatrix_device_calibrate(device_), 1) << last_error();
    uint8_t calibrating = 0, point = 0, required = 0;
    ASSERT_EQ(velatrix_virtual_get_calibration(pad_, &calibrating, &point, &required), 1);
    EXPECT_EQ(calibrating, 1);

    // Each state read is one target touched.
    for (uint32_t target = 0; target < 4; ++target) {
        const velatrix_hid_feature_calibrate state = velatrix_get_calibrate_state(device_);
        ASSERT_EQ(state.report_id, 0x82) << last_error();
        EXPECT_EQ(state.calibration_mode, 1);
        EXPECT_EQ(state.point, target);
    }
    const velatrix_hid_feature_calibrate done = velatrix_get_calibrate_state(device_);
    EXPECT_EQ(done.report_id, 0x82);
    EXPECT_EQ(done.calibration_mode, 0);
    EXPECT_EQ(velatrix_get_calibration_data(device_).isCalibrated, 1);

    // Started again and cancelled.
    ASSERT_EQ(velatrix_device_calibrate(device_), 1) << last_error();
    ASSERT_EQ(velatrix_device_cancel_calibrate(device_), 1) << last_error();
    ASSERT_EQ(velatrix_virtual_get_calibration(pad_, &calibrating, &point, &required), 1);
    EXPECT_EQ(calibrating, 0);
    EXPECT_EQ(velatrix_get_calibrate_state(device_).calibration_mode, 0);
}

INSTANTIATE_TEST_SUITE_P(Models, E2eCalibration, ::testing::ValuesIn(model_names()), param_name);

}  // namespace
}  // namespace velatrix::e2e
