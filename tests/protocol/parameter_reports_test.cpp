#include <tuple>

#include "info_report_test_support.h"

namespace velatrix::testing {
namespace {

using ParameterReports = ReportTest;

TEST_F(ParameterReports, DisplaySettingsRoundTrip) {
    fake.answer(102, {102, 10, 20, 30, 40, 50, 0x81});
    const velatrix_hid_feature_display_settings settings = velatrix_get_display_settings(device);

    // The record's own report id is ignored; only set_command's low byte goes.
    const velatrix_hid_feature_display_settings change{0, 1, 2, 3, 4, 5, 0x1FF};
    EXPECT_EQ(velatrix_set_display_settings(device, change), 1);
    EXPECT_EQ(fake.sets(102), (std::vector<Bytes>{{102, 1, 2, 3, 4, 5, 0xFF}}));

    EXPECT_EQ(capture_stdout([&] { velatrix_print_display_settings(&settings); }),
              "velatrix_hid_feature_display_settings structure:\n"
              "  report_id = 102\n"
              " brightness = 10\n"
              "   contrast = 20\n"
              "        red = 30\n"
              "      green = 40\n"
              "       blue = 50\n"
              "set_command = 129\n");

    velatrix_hid_feature_display_settings copy;
    velatrix_get_display_settings_ref(device, &copy);
    EXPECT_EQ(copy.contrast, 20);
}

TEST_F(ParameterReports, SmallWritesCarryTheirOwnIds) {
    EXPECT_EQ(velatrix_set_frequency_amplitude(device, {0, 5, 6, 7}), 1);
    // Read as report 21, written as report 2.
    EXPECT_EQ(velatrix_set_power_state(device, {21, 0x103}), 1);
    EXPECT_EQ(velatrix_set_startup_mode(device, 0x105), 1);
    EXPECT_EQ(velatrix_set_device_configure(device, {99, 4, 9}), 1);
    EXPECT_EQ(velatrix_set_asic_register(device, {0, 0x21, 0x7F}), 1);
    EXPECT_EQ(velatrix_set_asic_reset(device, {0, 1, 1}), 1);
    // Reset values are not masked: 3 | 2 << 1.
    EXPECT_EQ(velatrix_set_asic_reset(device, {0, 3, 2}), 1);
    EXPECT_EQ(fake.sets(), (std::vector<Bytes>{
                               {20, 5, 6, 7}, {2, 3}, {28, 5}, {15, 4, 9}, {44, 0x21, 0x7F}, {42, 3}, {42, 7}}));
    // None of these waits for the interlock.
    EXPECT_EQ(fake.gets_of(13), 0);

    fake.fail_report(2, "refused");
    EXPECT_EQ(velatrix_set_power_state(device, {21, 1}), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "refused");
    fake.fail_report(28);
    EXPECT_EQ(velatrix_set_startup_mode(device, 1), 0);
}

TEST_F(ParameterReports, GeneralParametersBitFields) {
    fake.answer(41, {41, 0xD5, 0xE4, 0x34, 0x12, 7});
    const velatrix_hid_feature_general_parameters general = velatrix_get_general_parameters(device);

    EXPECT_EQ(velatrix_set_general_parameters(device, general), 1);
    // Channel lock number 9 does not fit in three bits and spills into bit 7;
    // corner value 5 spills into the next corner's bits.
    velatrix_hid_feature_general_parameters wide{};
    wide.channel_lock_number = 9;
    wide.corner_lower_left = 5;
    EXPECT_EQ(velatrix_set_general_parameters(device, wide), 1);
    EXPECT_EQ(fake.sets(41), (std::vector<Bytes>{{41, 0xD5, 0xE4, 0x34, 0x12, 7}, {41, 0x90, 0x05, 0, 0, 0}}));

    EXPECT_EQ(capture_stdout([&] { velatrix_print_general_parameters(&general); }),
              "velatrix_hid_feature_general_parameters structure:\n"
              "          report_id = 41\n"
              "   xy_output_enable = 1\n"
              "  adc_output_enable = 0\n"
              "    map_coordinates = 1\n"
              "channel_lock_enable = 0\n"
              "channel_lock_number = 5\n"
              "           reserved = 1\n"
              "  corner_lower_left = 0\n"
              "  corner_upper_left = 1\n"
              " corner_lower_right = 2\n"
              " corner_upper_right = 3\n"
              "            samples = 4660\n"
              "    filter_fequency = 7\n");
}

TEST_F(ParameterReports, AsicRegisterReadAndPrint) {
    fake.answer(43, {43, 1, 2, 3, 4, 5, 6, 7, 0xAB});
    const velatrix_hid_feature_register_get registers = velatrix_get_asic_register(device);
    EXPECT_EQ(fake.transfers().at(0).length, 9u);
    EXPECT_EQ(registers.report_id, 43);
    EXPECT_EQ(Bytes(registers.register_info, registers.register_info + 8), (Bytes{1, 2, 3, 4, 5, 6, 7, 0xAB}));
    velatrix_hid_feature_register_get copy;
    velatrix_get_asic_register_ref(device, &copy);
    EXPECT_EQ(copy.register_info[7], 0xAB);
    EXPECT_EQ(capture_stdout([&] { velatrix_print_asic_register(&registers); }),
              "velatrix_hid_feature_register_get structure:\n"
              "    report_id = 43\n"
              "register_info =\n"
              "01 02 03 04 05 06 07 ab \n");
}

TEST_F(ParameterReports, PenParametersRoundTripAndRepeatTheDebounceLine) {
    const Bytes answer{50, 0x10, 0x00, 0x20, 0x00, 0x30, 0x00, 4, 5, 0x00, 0x01, 11, 12, 13, 14, 0xD5, 0xE8, 0x03};
    fake.answer(50, answer);
    const velatrix_hid_feature_pen_parameters pen = velatrix_get_pen_parameters(device);
    EXPECT_EQ(pen.debounce_post_up, 14) << "the one field the print-out leaves out";

    EXPECT_EQ(velatrix_set_pen_parameters(device, pen), 1);
    EXPECT_EQ(fake.sets(50), (std::vector<Bytes>{answer}));

    EXPECT_EQ(capture_stdout([&] { velatrix_print_pen_parameters(&pen); }),
              "velatrix_hid_feature_pen_parameters structure:\n"
              "               report_id = 50\n"
              "               proximity = 16\n"
              "      auto_pen_threshold = 32\n"
              "    auto_touch_threshold = 48\n"
              "             adc_average = 4\n"
              "      coordinate_average = 5\n"
              "         offset_interval = 256\n"
              "       debounce_pre_down = 11\n"
              "      debounce_post_down = 12\n"
              "         debounce_pre_up = 13\n"
              "       debounce_pre_down = 11\n"
              " error_correction_enable = 1\n"
              "              reserved_1 = 2\n"
              "offset_correction_enable = 1\n"
              "              reserved_2 = 0\n"
              "            tip_inverted = 1\n"
              "              reserved_3 = 1\n"
              "          interrupt_rate = 1000\n");
}

TEST_F(ParameterReports, TouchParametersKeepTheirSigns) {
    const Bytes answer{60,   1,    2, 0xFE, 0xFF, 0x05, 0x00, 7,    0x00, 0x01, 0x00,
                       0x02, 9, 0x07, 0x10, 0x27, 0x9C, 0xFF, 0x70, 0x17, 0x64, 0x00};
    fake.answer(60, answer);
    const velatrix_hid_feature_touch_parameters touch = velatrix_get_touch_parameters(device);
    EXPECT_EQ(fake.transfers().at(0).length, 22u);

    EXPECT_EQ(velatrix_set_touch_parameters(device, touch), 1);
    EXPECT_EQ(fake.sets(60), (std::vector<Bytes>{answer}));

    EXPECT_EQ(capture_stdout([&] { velatrix_print_touch_parameters(&touch); }),
              "velatrix_hid_feature_touch_parameters structure:\n"
              "              report_id = 60\n"
              "            adc_average = 1\n"
              "     coordinate_average = 2\n"
              "             slope_down = -2\n"
              "          slope_liftoff = 5\n"
              "          slope_minimum = 7\n"
              "        pressure_single = 256\n"
              "      pressure_multiple = 512\n"
              "                   gain = 9\n"
              "error_correction_enable = 1\n"
              "               reserved = 3\n"
              "                scale_x = 10000\n"
              "               offset_x = -100\n"
              "                scale_y = 6000\n"
              "               offset_y = 100\n");
}

TEST_F(ParameterReports, OutputConfiguration) {
    fake.answer(91, {91, 0x78, 0x56, 0x34, 0x12, 1, 0xFE, 0x64, 0x00, 0x81});
    velatrix_hid_feature_output_parameters output;
    velatrix_get_output_configuration_ref(device, &output);
    EXPECT_EQ(std::tuple(output.report_id, output.output_report, output.real_time),
              std::tuple(91, 0x12345678, VELATRIX_TRANSMIT_ON_CONFIRM));
    EXPECT_EQ(output.compression, VELATRIX_OUTPUT_UNCOMPRESSED_HIRES);  // bits 0 and 1 only
    EXPECT_EQ(std::tuple(output.packets_per_second, output.save_as_default, output.load_factory_settings),
              std::tuple(100, 1, 1));

    // The 32-bit value is read sign-extended into the 64-bit field.
    fake.answer(91, {91, 0xFF, 0xFF, 0xFF, 0xFF, 0, 0, 0, 0, 0});
    EXPECT_EQ(velatrix_get_output_configuration(device).output_report, -1);

    // Enumerations go out as they are, flags as single bits.
    const velatrix_hid_feature_output_parameters change{0, 0x12345678, 5, 7, 100, 2, 0};
    EXPECT_EQ(velatrix_set_output_configuration(device, change), 1);
    EXPECT_EQ(fake.sets(91), (std::vector<Bytes>{{91, 0x78, 0x56, 0x34, 0x12, 5, 7, 100, 0, 1}}));

    velatrix_hid_feature_output_parameters odd = output;
    odd.real_time = 5;
    EXPECT_EQ(capture_stdout([&] { velatrix_print_output_configuration(&odd); }),
              "velatrix_hid_feature_output_parameters:\n"
              "            report_id = 91\n"
              "        output_report = 0x12345678\n"
              "            real_time = 5: UNKNOWN\n"
              "          compression = 2: VELATRIX_OUTPUT_UNCOMPRESSED_HIRES\n"
              "   packets_per_second = 100\n"
              "      save_as_default = 1\n"
              "load_factory_settings = 1\n");
    odd.output_report = 5;
    odd.real_time = VELATRIX_TRANSMIT_ON_HOST_COMMAND;
    odd.compression = -1;
    const std::string out = capture_stdout([&] { velatrix_print_output_configuration(&odd); });
    EXPECT_NE(out.find("output_report = 0x0005\n"), std::string::npos);
    EXPECT_NE(out.find("real_time = 2: TRANSMIT_ON_HOST_COMMAND\n"), std::string::npos);
    EXPECT_NE(out.find("compression = -1: UNKNOWN\n"), std::string::npos);
}

TEST_F(ParameterReports, PeripheralConfiguration) {
    Bytes answer = wire(92, 17, {{1, {0x0D}}, {16, {0x80}}});
    for (uint8_t i = 2; i <= 15; ++i) answer[i] = i;
    fake.answer(92, answer);
    const velatrix_hid_feature_peripheral_configuration peripheral = velatrix_get_peripheral_configuration(device);

    velatrix_hid_feature_peripheral_configuration change = peripheral;
    change.mag_card_output = 0x104;
    change.save_as_default = 5;
    change.load_factory_settings = 0;
    EXPECT_EQ(velatrix_set_peripheral_configuration(device, change), 1);
    Bytes expected = answer;
    expected[1] = 0x04;
    expected[16] = 0x01;
    EXPECT_EQ(fake.sets(92), (std::vector<Bytes>{expected}));

    std::string reserved_lines;
    for (int i = 1; i <= 14; ++i) {
        const std::string label = "reserved" + std::to_string(i);
        reserved_lines += std::string(21 - label.size(), ' ') + label + " = " + std::to_string(i + 1) + "\n";
    }
    EXPECT_EQ(capture_stdout([&] { velatrix_print_peripheral_configuration(&peripheral); }),
              "velatrix_hid_feature_peripheral_configuration:\n"
              "            report_id = 92\n"
              "           oem_output = 1\n"
              "      keyboard_output = 1\n"
              "    keyboard_preamble = 1\n" +
                  reserved_lines +
                  "      save_as_default = 0\n"
                  "load_factory_settings = 1\n");
}

TEST_F(ParameterReports, CalibrationData) {
    const Bytes answer{131,  2,    0x03, 0x00, 0x40, 0x10, 0x00, 0x20, 0x00, 0x00, 0xC0, 0xFF, 0x7F,
                       0x20, 0x03, 0x58, 0x02, 0x01, 0x00, 0x00, 0x00, 0xFF, 0xFF, 0xFF, 0xFF, 0x00,
                       0x00, 0x01, 0x00, 0x00, 0x00, 0x00, 0x80, 0x10, 0x00, 0x00, 0x00, 0xF0, 0xFF,
                       0xFF, 0xFF, 0x78, 0x56, 0x34, 0x12, 0x00, 0x00, 0x00, 0x00};
    ASSERT_EQ(answer.size(), 49u);
    fake.answer(131, answer);
    const velatrix_hid_feature_calibration_data calibration = velatrix_get_calibration_data(device);
    EXPECT_EQ(calibration.report_id, 131) << "the one field the print-out leaves out";

    // isCalibrated goes back as 1; everything else as read.
    EXPECT_EQ(velatrix_set_calibration_data(device, calibration), 1);
    Bytes expected = answer;
    expected[2] = 0x01;
    EXPECT_EQ(fake.sets(131), (std::vector<Bytes>{expected}));

    EXPECT_EQ(capture_stdout([&] { velatrix_print_calibration_data(&calibration); }),
              "velatrix_hid_feature_calibration_data:\n"
              "       CalibrationType = 2\n"
              "          isCalibrated = 1\n"
              "         RotationScale = 16384\n"
              "  LocalMultiplierScale = 16\n"
              "   HostMultiplierScale = 32\n"
              "     RotationSINScaled = -16384\n"
              "     RotationCOSScaled = 32767\n"
              "  LocalWidthCalibrated = 800\n"
              " LocalHeightCalibrated = 600\n"
              "LocalXMultiplierScaled = 1\n"
              "          LocalXOffset = -1\n"
              "LocalYMultiplierScaled = 65536\n"
              "          LocalYOffset = -2147483648\n"
              " HostXMultiplierScaled = 16\n"
              "           HostXOffset = -16\n"
              " HostYMultiplierScaled = 305419896\n"
              "           HostYOffset = 0\n");
}

TEST_F(ParameterReports, FailedReadsAndNullPrints) {
    expect_failed_read(102, "velatrix_get_display_settings", [&] { return velatrix_get_display_settings(device); },
                       velatrix_print_display_settings);
    expect_failed_read(41, "velatrix_get_general_parameters",
                       [&] { return velatrix_get_general_parameters(device); },
                       velatrix_print_general_parameters);
    expect_failed_read(43, "velatrix_get_asic_register", [&] { return velatrix_get_asic_register(device); },
                       velatrix_print_asic_register);
    expect_failed_read(50, "velatrix_get_pen_parameters", [&] { return velatrix_get_pen_parameters(device); },
                       velatrix_print_pen_parameters);
    expect_failed_read(60, "velatrix_get_touch_parameters", [&] { return velatrix_get_touch_parameters(device); },
                       velatrix_print_touch_parameters);
    expect_failed_read(91, "velatrix_get_output_configuration_ref",
                       [&] { return velatrix_get_output_configuration(device); },
                       velatrix_print_output_configuration);
    expect_failed_read(92, "velatrix_get_peripheral_configuration_ref",
                       [&] { return velatrix_get_peripheral_configuration(device); },
                       velatrix_print_peripheral_configuration);
    expect_failed_read(131, "velatrix_get_calibration_data_ref",
                       [&] { return velatrix_get_calibration_data(device); },
                       velatrix_print_calibration_data);

    EXPECT_EQ(velatrix_set_pen_parameters(device, {}), 0);  // report 50 fails now
    EXPECT_STREQ(velatrix_get_last_error(), "pad unplugged");

    EXPECT_EQ(capture_stdout([] {
                  velatrix_print_pen_parameters(nullptr);
                  velatrix_print_output_configuration(nullptr);
                  velatrix_print_calibration_data(nullptr);
              }),
              "velatrix_hid_feature_pen_parameters structure:\n  NULL\n"
              "velatrix_hid_feature_output_parameters:\n  NULL\n"
              "velatrix_hid_feature_calibration_data:\n  NULL\n");
}

}  // namespace
}  // namespace velatrix::testing
