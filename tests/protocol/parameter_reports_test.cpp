#include <tuple>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

using ParameterReports = PadTest;

TEST_F(ParameterReports, DisplaySettingsRoundTrip) {
    EXPECT_EQ(READ_AND_PRINT(Bytes({102, 10, 20, 30, 40, 50, 0x81}), display_settings),
              printed("velatrix_hid_feature_display_settings structure:",
                      {{"report_id", "102"}, {"brightness", "10"}, {"contrast", "20"}, {"red", "30"},
                       {"green", "40"}, {"blue", "50"}, {"set_command", "129"}}));

    // The record's own report id is ignored; only set_command's low byte goes.
    EXPECT_EQ(velatrix_set_display_settings(device, {0, 1, 2, 3, 4, 5, 0x1FF}), 1);
    EXPECT_EQ(fake.sets(102), (std::vector<Bytes>{{102, 1, 2, 3, 4, 5, 0xFF}}));
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
              printed("velatrix_hid_feature_general_parameters structure:",
                      {{"report_id", "41"}, {"xy_output_enable", "1"}, {"adc_output_enable", "0"},
                       {"map_coordinates", "1"}, {"channel_lock_enable", "0"}, {"channel_lock_number", "5"},
                       {"reserved", "1"}, {"corner_lower_left", "0"}, {"corner_upper_left", "1"},
                       {"corner_lower_right", "2"}, {"corner_upper_right", "3"}, {"samples", "4660"},
                       {"filter_fequency", "7"}}));
}

TEST_F(ParameterReports, AsicRegisterReadAndPrint) {
    EXPECT_EQ(READ_AND_PRINT(Bytes({43, 1, 2, 3, 4, 5, 6, 7, 0xAB}), asic_register),
              "velatrix_hid_feature_register_get structure:\n"
              "    report_id = 43\n"
              "register_info =\n"
              "01 02 03 04 05 06 07 ab \n");
    EXPECT_EQ(fake.transfers().at(0).length, 9u);
}

TEST_F(ParameterReports, PenParametersRoundTripAndRepeatTheDebounceLine) {
    const Bytes answer = hex("32 1000 2000 3000 04 05 0001 0b 0c 0d 0e d5 e803");
    fake.answer(50, answer);
    const velatrix_hid_feature_pen_parameters pen = velatrix_get_pen_parameters(device);
    EXPECT_EQ(pen.debounce_post_up, 14) << "the one field the print-out leaves out";

    EXPECT_EQ(velatrix_set_pen_parameters(device, pen), 1);
    EXPECT_EQ(fake.sets(50), (std::vector<Bytes>{answer}));

    EXPECT_EQ(capture_stdout([&] { velatrix_print_pen_parameters(&pen); }),
              printed("velatrix_hid_feature_pen_parameters structure:",
                      {{"report_id", "50"}, {"proximity", "16"}, {"auto_pen_threshold", "32"},
                       {"auto_touch_threshold", "48"}, {"adc_average", "4"}, {"coordinate_average", "5"},
                       {"offset_interval", "256"}, {"debounce_pre_down", "11"}, {"debounce_post_down", "12"},
                       {"debounce_pre_up", "13"}, {"debounce_pre_down", "11"}, {"error_correction_enable", "1"},
                       {"reserved_1", "2"}, {"offset_correction_enable", "1"}, {"reserved_2", "0"},
                       {"tip_inverted", "1"}, {"reserved_3", "1"}, {"interrupt_rate", "1000"}}));
}

TEST_F(ParameterReports, TouchParametersKeepTheirSigns) {
    const Bytes answer = hex("3c 01 02 feff 0500 07 0001 0002 09 07 1027 9cff 7017 6400");
    fake.answer(60, answer);
    const velatrix_hid_feature_touch_parameters touch = velatrix_get_touch_parameters(device);
    EXPECT_EQ(fake.transfers().at(0).length, 22u);

    EXPECT_EQ(velatrix_set_touch_parameters(device, touch), 1);
    EXPECT_EQ(fake.sets(60), (std::vector<Bytes>{answer}));

    EXPECT_EQ(capture_stdout([&] { velatrix_print_touch_parameters(&touch); }),
              printed("velatrix_hid_feature_touch_parameters structure:",
                      {{"report_id", "60"}, {"adc_average", "1"}, {"coordinate_average", "2"}, {"slope_down", "-2"},
                       {"slope_liftoff", "5"}, {"slope_minimum", "7"}, {"pressure_single", "256"},
                       {"pressure_multiple", "512"}, {"gain", "9"}, {"error_correction_enable", "1"},
                       {"reserved", "3"}, {"scale_x", "10000"}, {"offset_x", "-100"}, {"scale_y", "6000"},
                       {"offset_y", "100"}}));
}

TEST_F(ParameterReports, OutputConfiguration) {
    fake.answer(91, hex("5b 78563412 01 fe 6400 81"));
    velatrix_hid_feature_output_parameters output;
    velatrix_get_output_configuration_ref(device, &output);
    // Compression keeps bits 0 and 1 only.
    EXPECT_EQ(std::tuple(output.report_id, output.output_report, output.real_time, output.compression,
                         output.packets_per_second, output.save_as_default, output.load_factory_settings),
              std::tuple(91, 0x12345678, VELATRIX_TRANSMIT_ON_CONFIRM, VELATRIX_OUTPUT_UNCOMPRESSED_HIRES, 100, 1, 1));

    // The 32-bit value is read sign-extended into the 64-bit field.
    fake.answer(91, hex("5b ffffffff 00 00 0000 00"));
    EXPECT_EQ(velatrix_get_output_configuration(device).output_report, -1);

    // Enumerations go out as they are, flags as single bits.
    EXPECT_EQ(velatrix_set_output_configuration(device, {0, 0x12345678, 5, 7, 100, 2, 0}), 1);
    EXPECT_EQ(fake.sets(91), (std::vector<Bytes>{hex("5b 78563412 05 07 64 00 01")}));

    const std::string header = "velatrix_hid_feature_output_parameters:";
    velatrix_hid_feature_output_parameters odd = output;
    odd.real_time = 5;
    EXPECT_EQ(capture_stdout([&] { velatrix_print_output_configuration(&odd); }),
              printed(header, {{"report_id", "91"}, {"output_report", "0x12345678"}, {"real_time", "5: UNKNOWN"},
                               {"compression", "2: VELATRIX_OUTPUT_UNCOMPRESSED_HIRES"}, {"packets_per_second", "100"},
                               {"save_as_default", "1"}, {"load_factory_settings", "1"}}));
    odd.output_report = 5;
    odd.real_time = VELATRIX_TRANSMIT_ON_HOST_COMMAND;
    odd.compression = -1;
    EXPECT_EQ(capture_stdout([&] { velatrix_print_output_configuration(&odd); }),
              printed(header, {{"report_id", "91"}, {"output_report", "0x0005"},
                               {"real_time", "2: TRANSMIT_ON_HOST_COMMAND"}, {"compression", "-1: UNKNOWN"},
                               {"packets_per_second", "100"}, {"save_as_default", "1"},
                               {"load_factory_settings", "1"}}));
}

TEST_F(ParameterReports, PeripheralConfiguration) {
    const Bytes answer = hex("5c 0d 02030405060708090a0b0c0d0e0f 80");
    fake.answer(92, answer);
    const velatrix_hid_feature_peripheral_configuration peripheral = velatrix_get_peripheral_configuration(device);

    velatrix_hid_feature_peripheral_configuration change = peripheral;
    change.mag_card_output = 0x104;
    change.save_as_default = 5;
    change.load_factory_settings = 0;
    EXPECT_EQ(velatrix_set_peripheral_configuration(device, change), 1);
    EXPECT_EQ(fake.sets(92), (std::vector<Bytes>{hex("5c 04 02030405060708090a0b0c0d0e0f 01")}));

    std::vector<std::pair<std::string, std::string>> fields = {
        {"report_id", "92"}, {"oem_output", "1"}, {"keyboard_output", "1"}, {"keyboard_preamble", "1"}};
    for (int i = 1; i <= 14; ++i) fields.emplace_back("reserved" + std::to_string(i), std::to_string(i + 1));
    fields.insert(fields.end(), {{"save_as_default", "0"}, {"load_factory_settings", "1"}});
    EXPECT_EQ(capture_stdout([&] { velatrix_print_peripheral_configuration(&peripheral); }),
              printed("velatrix_hid_feature_peripheral_configuration:", fields));
}

TEST_F(ParameterReports, CalibrationData) {
    const Bytes answer = hex(
        "83 02 03 0040 1000 2000 00c0 ff7f 2003 5802 01000000 ffffffff 00000100 00000080 10000000 f0ffffff "
        "78563412 00000000");
    fake.answer(131, answer);
    const velatrix_hid_feature_calibration_data calibration = velatrix_get_calibration_data(device);
    EXPECT_EQ(calibration.report_id, 131) << "the one field the print-out leaves out";

    // isCalibrated goes back as 1; everything else as read.
    EXPECT_EQ(velatrix_set_calibration_data(device, calibration), 1);
    Bytes expected = answer;
    expected[2] = 0x01;
    EXPECT_EQ(fake.sets(131), (std::vector<Bytes>{expected}));

    EXPECT_EQ(capture_stdout([&] { velatrix_print_calibration_data(&calibration); }),
              printed("velatrix_hid_feature_calibration_data:",
                      {{"CalibrationType", "2"}, {"isCalibrated", "1"}, {"RotationScale", "16384"},
                       {"LocalMultiplierScale", "16"}, {"HostMultiplierScale", "32"}, {"RotationSINScaled", "-16384"},
                       {"RotationCOSScaled", "32767"}, {"LocalWidthCalibrated", "800"},
                       {"LocalHeightCalibrated", "600"}, {"LocalXMultiplierScaled", "1"}, {"LocalXOffset", "-1"},
                       {"LocalYMultiplierScaled", "65536"}, {"LocalYOffset", "-2147483648"},
                       {"HostXMultiplierScaled", "16"}, {"HostXOffset", "-16"},
                       {"HostYMultiplierScaled", "305419896"}, {"HostYOffset", "0"}}));
}

}  // namespace
}  // namespace velatrix::testing
