#include <tuple>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

using InfoReports = PadTest;

// Each report read from the wire and printed whole: the print-out shows
// every field the read unpacked.
TEST_F(InfoReports, ReportsReadAndPrint) {
    EXPECT_EQ(READ_AND_PRINT(Bytes({100, 0x40, 0x01, 0xF0, 0x00, 24, 8, 16, 12, 30}), display_info),
              printed("velatrix_hid_feature_display_info structure:",
                      {{"report_id", "100"}, {"width", "320"}, {"height", "240"}, {"color_depth", "24"},
                       {"text_width", "8"}, {"text_height", "16"}, {"region_count", "12"},
                       {"max_caption_length", "30"}}));
    // The longest label, supports_screens_resources, sets the column.
    EXPECT_EQ(READ_AND_PRINT(hex("0b 0102 03 04 05 06 07 08 e001 1001 1027 7017 0000 0f27 0100 6f17 ffff 0201 0403 "
                                 "0605 ffffffff 04030201 01 42 4344 01 46 4748 11000000 12000000 13000000 14000080"),
                             capabilities),
              printed("velatrix_hid_capabilities structure:",
                      {{"report_id", "11"}, {"supported_reports", "513"}, {"coordinate_modes", "3"},
                       {"display_id", "5"}, {"brightness_levels", "6"}, {"contrast_levels", "7"}, {"color_depth", "8"},
                       {"display_width", "480"}, {"display_height", "272"}, {"digitizer_width", "10000"},
                       {"digitizer_height", "6000"}, {"coordinate_xmin", "0"}, {"coordinate_xmax", "9999"},
                       {"coordinate_ymin", "1"}, {"coordinate_ymax", "5999"}, {"calibration_x_min", "65535"},
                       {"calibration_x_max", "258"}, {"calibration_y_min", "772"}, {"calibration_y_max", "1286"},
                       {"reserved_4", "4294967295"}, {"reserved_5", "16909060"}, {"mag_reader_id", "1"},
                       {"reserved_6", "66"}, {"reserved_7", "17475"}, {"supports_screens_resources", "1"},
                       {"reserved_9", "70"}, {"reserved_10", "18503"}, {"reserved_11", "17"}, {"reserved_12", "18"},
                       {"reserved_13", "19"}, {"reserved_14", "2147483668"}}));
    EXPECT_EQ(READ_AND_PRINT(Bytes({15, 4, 9}), device_configure),
              printed("velatrix_hid_feature_device_configure structure:",
                      {{"report_id", "15"}, {"device_mode", "4"}, {"device_id", "9"}}));
    EXPECT_EQ(READ_AND_PRINT(Bytes({16, 10}), contact_count_maximum),
              "velatrix_hid_feature_contact_count_maximum structure:\ncontact_count_max = 10\n");
    // The header names the function, not the record.
    EXPECT_EQ(READ_AND_PRINT(Bytes({20, 5, 6, 7}), frequency_amplitude),
              printed("velatrix_print_frequency_amplitude structure:",
                      {{"frequency", "5"}, {"pen_amplitude", "6"}, {"touch_amplitude", "7"}}));
    fake.answer(21, {21, 3});
    EXPECT_EQ(velatrix_get_power_state(device).power_state, 3u);
    // x_max is sign-extended by the read: the same bits in 16.
    EXPECT_EQ(READ_AND_PRINT(hex("17 1000 ffff 0080 3412"), coordinate_range),
              "velatrix_hid_feature_coordinate_range structure:\nx_min = 16\nx_max = 65535\ny_min = 32768\n"
              "y_max = 4660\n");
    EXPECT_EQ(READ_AND_PRINT(Bytes({40, 7, 1, 2, 3}), operating_modes),
              printed("velatrix_hid_feature_operating_modes structure:",
                      {{"report_id", "40"}, {"supported_modes", "7"}, {"acquisition_mode", "1"}, {"touch_mode", "2"},
                       {"pen_mode", "3"}}));
    EXPECT_EQ(READ_AND_PRINT(hex("16 010203 040506 3412"), version),
              printed("velatrix_hid_feature_version structure:", {{"report_id", "22"}, {"kernel_version", "1.2.3"},
                                                                  {"firmware_version", "4.5.6"},
                                                                  {"asic_signature", "4660"}}));

    EXPECT_EQ(fake.sequence(), "G100 G100 G11 G11 G15 G15 G16 G16 G20 G20 G21 G23 G23 G40 G40 G22 G22");
    std::vector<uint32_t> lengths;
    for (const Transfer& t : fake.transfers()) lengths.push_back(t.length);
    EXPECT_EQ(lengths, (std::vector<uint32_t>{10, 10, 65, 65, 3, 3, 2, 2, 4, 4, 2, 9, 9, 5, 5, 9, 9}));
    EXPECT_TRUE(fake.sets().empty());

    // Power state values are held in 32 bits but printed as a byte.
    const velatrix_hid_feature_power_state power{21, 0x103};
    EXPECT_EQ(capture_stdout([&] { velatrix_print_power_state(&power); }),
              "velatrix_hid_feature_power_state structure:\npower_state = 3\n");
    // Every report family prints through the same code: a null record shows
    // the family's header and NULL.
    EXPECT_EQ(capture_stdout([] { velatrix_print_frequency_amplitude(nullptr); }),
              "velatrix_print_frequency_amplitude structure:\n  NULL\n");
}

// Information and parameter reports alike.
TEST_F(InfoReports, FailedReadsLeaveZeroedRecords) {
    EXPECT_FAILED_READ(100, display_info);
    EXPECT_FAILED_READ(11, capabilities);
    EXPECT_FAILED_READ(15, device_configure);
    EXPECT_FAILED_READ(16, contact_count_maximum);
    EXPECT_FAILED_READ(20, frequency_amplitude);
    EXPECT_FAILED_READ(21, power_state);
    EXPECT_FAILED_READ(22, version);
    EXPECT_FAILED_READ(23, coordinate_range);
    EXPECT_FAILED_READ(27, serial_number);
    EXPECT_FAILED_READ(40, operating_modes);
    EXPECT_FAILED_READ(102, display_settings);
    EXPECT_FAILED_READ(41, general_parameters);
    EXPECT_FAILED_READ(43, asic_register);
    EXPECT_FAILED_READ(50, pen_parameters);
    EXPECT_FAILED_READ(60, touch_parameters);
    EXPECT_FAILED_READ(91, output_configuration);
    EXPECT_FAILED_READ(92, peripheral_configuration);
    EXPECT_FAILED_READ(131, calibration_data);
    expect_failed_read(13, "velatrix_get_device_status_ref", [&] {
        velatrix_hid_feature_device_status status;
        std::memset(&status, 0x5A, sizeof status);
        velatrix_get_device_status_ref(device, &status);
        return status;
    }, velatrix_print_device_status);
}

}  // namespace
}  // namespace velatrix::testing
