#include <tuple>

#include "info_report_test_support.h"

namespace velatrix::testing {
namespace {

using InfoReports = ReportTest;

TEST_F(InfoReports, DisplayInfoReadsAndPrints) {
    fake.answer(100, {100, 0x40, 0x01, 0xF0, 0x00, 24, 8, 16, 12, 30});
    const velatrix_hid_feature_display_info info = velatrix_get_display_info(device);
    EXPECT_EQ(fake.transfers().at(0).length, 10u);

    velatrix_hid_feature_display_info copy;
    std::memset(&copy, 0xAA, sizeof copy);
    velatrix_get_display_info_ref(device, &copy);
    EXPECT_EQ(copy.width, 320);
    EXPECT_EQ(copy.max_caption_length, 30);
    EXPECT_EQ(fake.sequence(), "G100 G100");

    EXPECT_EQ(capture_stdout([&] { velatrix_print_display_info(&info); }),
              "velatrix_hid_feature_display_info structure:\n"
              "         report_id = 100\n"
              "             width = 320\n"
              "            height = 240\n"
              "       color_depth = 24\n"
              "        text_width = 8\n"
              "       text_height = 16\n"
              "      region_count = 12\n"
              "max_caption_length = 30\n");
}

TEST_F(InfoReports, CapabilitiesKeepEveryFieldAndPrintWithAlignedLabels) {
    fake.answer(11, wire(11, 65,
                         {{1, {0x01, 0x02, 3, 4, 5, 6, 7, 8, 0xE0, 0x01, 0x10, 0x01, 0x10, 0x27, 0x70, 0x17}},
                          {17, {0, 0, 0x0F, 0x27, 1, 0, 0x6F, 0x17}},
                          {25, {0xFF, 0xFF, 0x02, 0x01, 0x04, 0x03, 0x06, 0x05}},
                          {33, {0xFF, 0xFF, 0xFF, 0xFF, 0x04, 0x03, 0x02, 0x01}},
                          {41, {1, 0x42, 0x43, 0x44, 1, 0x46, 0x47, 0x48, 0x11}},
                          {53, {0x12}},
                          {57, {0x13}},
                          {61, {0x14, 0, 0, 0x80}}}));
    const velatrix_hid_capabilities caps = velatrix_get_capabilities(device);
    EXPECT_EQ(fake.transfers().at(0).length, 65u);
    // The longest label, supports_screens_resources, sets the column.
    auto line = [](const std::string& label, const std::string& value) {
        return std::string(26 - label.size(), ' ') + label + " = " + value + "\n";
    };
    const std::string expected =
        "velatrix_hid_capabilities structure:\n" + line("report_id", "11") + line("supported_reports", "513") +
        line("coordinate_modes", "3") + line("display_id", "5") + line("brightness_levels", "6") +
        line("contrast_levels", "7") + line("color_depth", "8") + line("display_width", "480") +
        line("display_height", "272") + line("digitizer_width", "10000") + line("digitizer_height", "6000") +
        line("coordinate_xmin", "0") + line("coordinate_xmax", "9999") + line("coordinate_ymin", "1") +
        line("coordinate_ymax", "5999") + line("calibration_x_min", "65535") + line("calibration_x_max", "258") +
        line("calibration_y_min", "772") + line("calibration_y_max", "1286") + line("reserved_4", "4294967295") +
        line("reserved_5", "16909060") + line("mag_reader_id", "1") + line("reserved_6", "66") +
        line("reserved_7", "17475") + line("supports_screens_resources", "1") + line("reserved_9", "70") +
        line("reserved_10", "18503") + line("reserved_11", "17") + line("reserved_12", "18") +
        line("reserved_13", "19") + line("reserved_14", "2147483668");
    EXPECT_EQ(capture_stdout([&] { velatrix_print_capabilities(&caps); }), expected);
}

// The print-out of what a getter read from `answer`.
template <class Get, class Print>
std::string read_and_print(FakeDriver& fake, const Bytes& answer, Get get, Print print) {
    fake.answer(answer.at(0), answer);
    const auto record = get();
    return capture_stdout([&] { print(&record); });
}

// Each small report read from the wire and printed whole: the print-out
// shows every field the read unpacked.
TEST_F(InfoReports, SmallReportsReadAndPrint) {
    EXPECT_EQ(read_and_print(fake, {15, 4, 9}, [&] { return velatrix_get_device_configure(device); },
                             velatrix_print_device_configure),
              "velatrix_hid_feature_device_configure structure:\n"
              "  report_id = 15\n"
              "device_mode = 4\n"
              "  device_id = 9\n");
    EXPECT_EQ(read_and_print(fake, {16, 10}, [&] { return velatrix_get_contact_count_maximum(device); },
                             velatrix_print_contact_count_maximum),
              "velatrix_hid_feature_contact_count_maximum structure:\n"
              "contact_count_max = 10\n");
    // The header names the function, not the record.
    EXPECT_EQ(read_and_print(fake, {20, 5, 6, 7}, [&] { return velatrix_get_frequency_amplitude(device); },
                             velatrix_print_frequency_amplitude),
              "velatrix_print_frequency_amplitude structure:\n"
              "      frequency = 5\n"
              "  pen_amplitude = 6\n"
              "touch_amplitude = 7\n");
    EXPECT_EQ(read_and_print(fake, {21, 3}, [&] { return velatrix_get_power_state(device); },
                             velatrix_print_power_state),
              "velatrix_hid_feature_power_state structure:\n"
              "power_state = 3\n");
    // x_max is sign-extended by the read: the same bits in 16.
    EXPECT_EQ(read_and_print(fake, {23, 0x10, 0x00, 0xFF, 0xFF, 0x00, 0x80, 0x34, 0x12},
                             [&] { return velatrix_get_coordinate_range(device); }, velatrix_print_coordinate_range),
              "velatrix_hid_feature_coordinate_range structure:\n"
              "x_min = 16\nx_max = 65535\ny_min = 32768\ny_max = 4660\n");
    EXPECT_EQ(read_and_print(fake, {40, 7, 1, 2, 3}, [&] { return velatrix_get_operating_modes(device); },
                             velatrix_print_operating_modes),
              "velatrix_hid_feature_operating_modes structure:\n"
              "       report_id = 40\n"
              " supported_modes = 7\n"
              "acquisition_mode = 1\n"
              "      touch_mode = 2\n"
              "        pen_mode = 3\n");
    EXPECT_EQ(read_and_print(fake, {22, 1, 2, 3, 4, 5, 6, 0x34, 0x12}, [&] { return velatrix_get_version(device); },
                             velatrix_print_version),
              "velatrix_hid_feature_version structure:\n"
              "       report_id = 22\n"
              "  kernel_version = 1.2.3\n"
              "firmware_version = 4.5.6\n"
              "  asic_signature = 4660\n");

    EXPECT_EQ(fake.sequence(), "G15 G16 G20 G21 G23 G40 G22");
    const uint32_t lengths[] = {3, 2, 4, 2, 9, 5, 9};
    for (size_t i = 0; i < std::size(lengths); ++i) EXPECT_EQ(fake.transfers()[i].length, lengths[i]) << i;
    EXPECT_TRUE(fake.sets().empty());

    // The _ref forms copy what the plain getters read (the answers above stay).
    velatrix_hid_feature_operating_modes modes;
    velatrix_get_operating_modes_ref(device, &modes);
    velatrix_hid_feature_coordinate_range range;
    velatrix_get_coordinate_range_ref(device, &range);
    velatrix_hid_feature_version version;
    velatrix_get_version_ref(device, &version);
    velatrix_hid_feature_device_configure configure;
    velatrix_get_device_configure_ref(device, &configure);
    velatrix_hid_feature_contact_count_maximum contacts;
    velatrix_get_contact_count_maximum_ref(device, &contacts);
    velatrix_hid_feature_frequency_amplitude frequency;
    velatrix_get_frequency_amplitude_ref(device, &frequency);
    EXPECT_EQ(std::tuple(modes.pen_mode, range.y_max, version.asic_signature, configure.device_id,
                         contacts.contact_count_max, frequency.touch_amplitude),
              std::tuple(3, 0x1234, 0x1234, 9, 10, 7));

    // Power state values are held in 32 bits but printed as a byte.
    const velatrix_hid_feature_power_state power{21, 0x103};
    EXPECT_EQ(capture_stdout([&] { velatrix_print_power_state(&power); }),
              "velatrix_hid_feature_power_state structure:\n"
              "power_state = 3\n");
}

TEST_F(InfoReports, NullRecordsPrintNull) {
    const std::string out = capture_stdout([] {
        velatrix_print_display_info(nullptr);
        velatrix_print_capabilities(nullptr);
        velatrix_print_frequency_amplitude(nullptr);
        velatrix_print_device_status(nullptr);
        velatrix_print_serial_number(nullptr);
    });
    EXPECT_EQ(out,
              "velatrix_hid_feature_display_info structure:\n  NULL\n"
              "velatrix_hid_capabilities structure:\n  NULL\n"
              "velatrix_print_frequency_amplitude structure:\n  NULL\n"
              "velatrix_hid_feature_device_status:\n  NULL\n"
              "velatrix_hid_feature_serial_number structure:\n  NULL\n");
}

TEST_F(InfoReports, FailedReadsLeaveZeroedRecordsAndLogTheError) {
    expect_failed_read(100, "velatrix_get_display_info", [&] { return velatrix_get_display_info(device); },
                       velatrix_print_display_info);
    expect_failed_read(11, "velatrix_get_capabilities", [&] { return velatrix_get_capabilities(device); },
                       velatrix_print_capabilities);
    expect_failed_read(15, "velatrix_get_device_configure", [&] { return velatrix_get_device_configure(device); },
                       velatrix_print_device_configure);
    expect_failed_read(16, "velatrix_get_contact_count_maximum",
                       [&] { return velatrix_get_contact_count_maximum(device); },
                       velatrix_print_contact_count_maximum);
    expect_failed_read(20, "velatrix_get_frequency_amplitude",
                       [&] { return velatrix_get_frequency_amplitude(device); },
                       velatrix_print_frequency_amplitude);
    expect_failed_read(21, "velatrix_get_power_state", [&] { return velatrix_get_power_state(device); },
                       velatrix_print_power_state);
    expect_failed_read(22, "velatrix_get_version", [&] { return velatrix_get_version(device); },
                       velatrix_print_version);
    expect_failed_read(23, "velatrix_get_coordinate_range", [&] { return velatrix_get_coordinate_range(device); },
                       velatrix_print_coordinate_range);
    expect_failed_read(27, "velatrix_get_serial_number", [&] { return velatrix_get_serial_number(device); },
                       velatrix_print_serial_number);
    expect_failed_read(40, "velatrix_get_operating_modes", [&] { return velatrix_get_operating_modes(device); },
                       velatrix_print_operating_modes);
    expect_failed_read(13, "velatrix_get_device_status_ref", [&] {
        velatrix_hid_feature_device_status status;
        std::memset(&status, 0x5A, sizeof status);
        velatrix_get_device_status_ref(device, &status);
        return status;
    },
                       velatrix_print_device_status);

    // A _ref form overwrites whatever the caller's record held.
    velatrix_hid_feature_display_info info;
    std::memset(&info, 0xAA, sizeof info);
    velatrix_get_display_info_ref(device, &info);
    EXPECT_EQ(std::tuple(info.report_id, info.width, info.max_caption_length),
              std::tuple(0, 0, 0));
}

}  // namespace
}  // namespace velatrix::testing
