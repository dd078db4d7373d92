// The velatrix_virtual_* C API: plugging, wire access, input, display
// read-back, faults and state inspection.
#include <gtest/gtest.h>

#include <string>
#include <vector>
#include <tuple>

#include "velatrix-virtual.h"
#include "velatrix/error.h"
#include "virtual_wire.h"

namespace velatrix::virtual_pad::testing {
namespace {

class VirtualApi : public ::testing::Test {
protected:
    void TearDown() override {
        for (velatrix_virtual_pad pad : pads_) velatrix_virtual_unplug(pad);
    }
    velatrix_virtual_pad plug(const char* model) {
        velatrix_virtual_pad pad = velatrix_virtual_plug(model);
        EXPECT_GT(pad, 0) << velatrix_get_last_error();
        pads_.push_back(pad);
        return pad;
    }
    std::vector<velatrix_virtual_pad> pads_;
};

TEST_F(VirtualApi, ModelsPlugAndUnplug) {
    ASSERT_EQ(velatrix_virtual_model_count(), 2u);
    EXPECT_STREQ(velatrix_virtual_model_name(0), "mono-320");
    EXPECT_STREQ(velatrix_virtual_model_name(1), "color-800");
    EXPECT_EQ(velatrix_virtual_model_name(2), nullptr);

    EXPECT_EQ(velatrix_virtual_plug("nope"), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Unknown virtual pad model: nope");
    EXPECT_EQ(velatrix_virtual_plug(nullptr), 0);

    uint32_t before = velatrix_virtual_pad_count();
    velatrix_virtual_pad mono = plug("mono-320");
    velatrix_virtual_pad colour = plug("color-800");
    EXPECT_GT(colour, mono);
    EXPECT_EQ(velatrix_virtual_pad_count(), before + 2);
    EXPECT_EQ(velatrix_virtual_pad_at(before + 1), colour);
    EXPECT_EQ(velatrix_virtual_pad_at(before + 2), 0);
    EXPECT_STREQ(velatrix_virtual_pad_model(colour), "color-800");

    ASSERT_EQ(velatrix_virtual_unplug(mono), 1);
    EXPECT_EQ(velatrix_virtual_is_plugged(mono), 0);
    EXPECT_EQ(velatrix_virtual_unplug(mono), 0);
    EXPECT_EQ(std::string(velatrix_get_last_error()), "No virtual pad with id " + std::to_string(mono));
    EXPECT_EQ(velatrix_virtual_pad_model(mono), nullptr);
    EXPECT_EQ(velatrix_virtual_get_run_mode(mono), -1);
}

TEST_F(VirtualApi, WireAccessAndDescriptor) {
    velatrix_virtual_pad pad = plug("mono-320");
    uint8_t info[10] = {100};
    EXPECT_EQ(velatrix_virtual_get_feature(pad, info, sizeof info), 10);
    EXPECT_EQ(info[1], 0x40);
    uint8_t unknown[4] = {99};
    EXPECT_EQ(velatrix_virtual_get_feature(pad, unknown, sizeof unknown), -1);
    EXPECT_STREQ(velatrix_get_last_error(), "Virtual get of report 99: refused by the pad");
    char text[80];
    ASSERT_EQ(velatrix_virtual_get_status_text(pad, text, sizeof text), 1);
    EXPECT_STREQ(text, "Unknown report 99");

    const uint8_t idle[2] = {10, 0};
    EXPECT_EQ(velatrix_virtual_set_feature(pad, idle, 2), 1);
    EXPECT_EQ(velatrix_virtual_get_run_mode(pad), 0);
    EXPECT_EQ(velatrix_virtual_set_feature(pad, idle, 1), 0);

    int32_t length = velatrix_virtual_report_descriptor(pad, nullptr, 0);
    ASSERT_GT(length, 0);
    std::vector<uint8_t> descriptor(static_cast<std::size_t>(length));
    EXPECT_EQ(velatrix_virtual_report_descriptor(pad, descriptor.data(), static_cast<uint32_t>(length)), length);
    EXPECT_EQ(descriptor.front(), 0x06);
    EXPECT_EQ(descriptor.back(), 0xC0);
}

// The log's counting and lengths; what the reports carry is e2e_input_test's.
TEST_F(VirtualApi, InputIsLoggedReportByReport) {
    velatrix_virtual_pad mono = plug("mono-320");
    velatrix_virtual_point points[] = {{230, 210}, {231, 211}};
    ASSERT_EQ(velatrix_virtual_play_stroke(mono, points, 2), 1);
    ASSERT_EQ(velatrix_virtual_input_count(mono), 3u);
    uint8_t report[8] = {};
    EXPECT_EQ(velatrix_virtual_input_report(mono, 2, report, sizeof report), 7);
    EXPECT_EQ(velatrix_virtual_input_report(mono, 3, report, sizeof report), -1);

    ASSERT_EQ(velatrix_virtual_swipe_card(mono, "%B1^A^", nullptr, nullptr), 1);
    const uint16_t adc[4] = {1, 2, 3, 4};
    ASSERT_EQ(velatrix_virtual_send_adc(mono, 3, 7, adc), 1);
    const uint16_t debug[9] = {9, 8, 7, 6, 5, 4, 3, 2, 1};
    ASSERT_EQ(velatrix_virtual_send_debug(mono, 0x11, debug, 0x42), 1);
    const uint8_t junk[3] = {77, 1, 2};
    ASSERT_EQ(velatrix_virtual_push_input(mono, junk, 3), 1);
    ASSERT_EQ(velatrix_virtual_pen(mono, 400, 5, 1, 1), 1);
    EXPECT_EQ(velatrix_virtual_input_count(mono), 8u);
    EXPECT_EQ(velatrix_virtual_input_report(mono, 4, report, sizeof report), 11);
    EXPECT_EQ(velatrix_virtual_input_report(mono, 5, nullptr, 0), 22);
    EXPECT_EQ(velatrix_virtual_input_report(mono, 6, report, sizeof report), 3);
    EXPECT_EQ(velatrix_virtual_input_report(mono, 7, report, sizeof report), 7);

    velatrix_virtual_pad colour = plug("color-800");
    EXPECT_EQ(velatrix_virtual_swipe_card(colour, "x", "y", "z"), 0);
    EXPECT_EQ(std::string(velatrix_get_last_error()), "Virtual pad " + std::to_string(colour) + " has no card reader");
}

TEST_F(VirtualApi, FrameReadsBackAsRgbAndAsABitmap) {
    velatrix_virtual_pad pad = plug("mono-320");
    // A 2 x 2 one-bit chunk at (2, 1) darkening (2, 1) and (3, 2).
    const Bytes chunk = report(103, 2049, {0, 2, 0, 1, 0, 2, 0, 2, 1, 0x90});
    ASSERT_EQ(velatrix_virtual_set_feature(pad, chunk.data(), 2049), 1);

    // Which pixels a chunk darkens is firmware_display_test's; here the three
    // ways of reading the frame agree.
    EXPECT_EQ(std::tuple(velatrix_virtual_get_pixel(pad, 2, 1), velatrix_virtual_get_pixel(pad, 2, 2),
                         velatrix_virtual_get_pixel(pad, -1, 0)),
              std::tuple(0x000000FFu, 0xFFFFFFFFu, 0xFFFFFFFFu));

    int32_t width = 0, height = 0;
    ASSERT_EQ(velatrix_virtual_display_size(pad, &width, &height), 1);
    EXPECT_EQ(width, 320);
    EXPECT_EQ(height, 240);
    std::vector<uint8_t> rgb(320 * 240 * 3);
    EXPECT_EQ(velatrix_virtual_read_frame_rgb(pad, rgb.data(), static_cast<uint32_t>(rgb.size() - 1)), 0);
    // What the RGB copy holds is e2e_display_update_test's.
    ASSERT_EQ(velatrix_virtual_read_frame_rgb(pad, rgb.data(), static_cast<uint32_t>(rgb.size())), 1);

    uint32_t size = velatrix_virtual_frame_bitmap_size(pad);
    EXPECT_EQ(size, 320u * 3 * 240 + 54);
    std::vector<uint8_t> buffer(size);
    velatrix_bitmap bitmap{};
    EXPECT_EQ(velatrix_virtual_read_frame(pad, &bitmap, buffer.data(), size - 1), 0);
    ASSERT_EQ(velatrix_virtual_read_frame(pad, &bitmap, buffer.data(), size), 1);
    EXPECT_EQ(bitmap.width, 320);
    EXPECT_EQ(bitmap.height, 240);
    EXPECT_EQ(velatrix_get_pixel(&bitmap, 2, 1), 0x000000FFu);
    EXPECT_EQ(velatrix_get_pixel(&bitmap, 3, 1), 0xFFFFFFFFu);
    EXPECT_EQ(velatrix_get_pixel(&bitmap, 3, 2), 0x000000FFu);
}

TEST_F(VirtualApi, FaultsThroughTheApi) {
    velatrix_virtual_pad pad = plug("color-800");
    uint8_t status[73] = {13};
    ASSERT_EQ(velatrix_virtual_set_initializing(pad, 0), 1);
    ASSERT_EQ(velatrix_virtual_stay_busy(pad, 0x08), 1);
    ASSERT_EQ(velatrix_virtual_get_feature(pad, status, sizeof status), 73);
    EXPECT_EQ(status[3], 0x08);
    ASSERT_EQ(velatrix_virtual_clear_faults(pad), 1);
    status[0] = 13;
    velatrix_virtual_get_feature(pad, status, sizeof status);
    EXPECT_EQ(status[3], 0x00);

    // How many polls a command keeps the pad busy is firmware_info_test's.
    const uint8_t active[2] = {171, 2};

    uint32_t before = velatrix_virtual_transfer_count(pad);
    ASSERT_EQ(velatrix_virtual_fail_transfer(pad, 1), 1);
    status[0] = 13;
    EXPECT_EQ(velatrix_virtual_get_feature(pad, status, sizeof status), -1);
    EXPECT_STREQ(velatrix_get_last_error(), "Virtual get of report 13: failed");
    EXPECT_EQ(velatrix_virtual_transfer_count(pad), before + 1);

    // What short and malformed answers look like is virtual_bus_test's.
    ASSERT_EQ(velatrix_virtual_short_answer(pad, 13, 4), 1);
    status[0] = 13;
    EXPECT_EQ(velatrix_virtual_get_feature(pad, status, sizeof status), 4);

    ASSERT_EQ(velatrix_virtual_unplug_at_transfer(pad, 1), 1);
    EXPECT_EQ(velatrix_virtual_set_feature(pad, active, 2), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Virtual set of report 171: pad unplugged");
    EXPECT_EQ(velatrix_virtual_is_plugged(pad), 0);
}

TEST_F(VirtualApi, StateInspection) {
    velatrix_virtual_pad pad = plug("color-800");
    char serial[40];
    ASSERT_EQ(velatrix_virtual_get_serial(pad, serial, sizeof serial), 1);
    EXPECT_EQ(std::string(serial).rfind("VQC800-", 0), 0u);
    EXPECT_EQ(velatrix_virtual_get_serial(pad, serial, 5), 0);
    ASSERT_EQ(velatrix_virtual_set_serial(pad, nullptr), 1);
    uint8_t wire[35] = {27};
    ASSERT_EQ(velatrix_virtual_get_feature(pad, wire, sizeof wire), 35);
    EXPECT_EQ(wire[1], 0xFF);
    EXPECT_EQ(wire[32], 0xFF);
    ASSERT_EQ(velatrix_virtual_set_serial(pad, "ABC"), 1);
    ASSERT_EQ(velatrix_virtual_get_serial(pad, serial, sizeof serial), 1);
    EXPECT_STREQ(serial, "ABC");

    std::vector<uint8_t> table(VELATRIX_VIRTUAL_ERROR_CORRECTION_SIZE, 0x3C);
    ASSERT_EQ(velatrix_virtual_set_error_correction(pad, table.data()), 1);
    std::vector<uint8_t> read(VELATRIX_VIRTUAL_ERROR_CORRECTION_SIZE);
    ASSERT_EQ(velatrix_virtual_get_error_correction(pad, read.data()), 1);
    EXPECT_EQ(read, table);

    uint8_t payload[32];
    EXPECT_EQ(velatrix_virtual_get_parameter(pad, 20, payload, sizeof payload), 3);
    EXPECT_EQ(payload[0], 48);
    EXPECT_EQ(velatrix_virtual_get_parameter(pad, 11, payload, sizeof payload), -1);

    // Stored regions are read back through velatrix_virtual_get_region by the
    // end-to-end round trip.
    velatrix_virtual_region region;
    EXPECT_EQ(velatrix_virtual_get_region(pad, 17, &region), 0);

    velatrix_virtual_screen screen;
    ASSERT_EQ(velatrix_virtual_get_screen(pad, 1, &screen), 1);
    EXPECT_EQ(std::tuple(screen.region_count, screen.next_screens[2]), std::tuple(4, 2));
    EXPECT_EQ(velatrix_virtual_get_screen(pad, 7, &screen), 0);
    EXPECT_EQ(velatrix_virtual_get_active_screen(pad), 1);

    Bytes chunk = report(142, 1045, {4});  // resource 4, a text of 3 bytes
    chunk[5] = chunk[19] = 3;
    chunk[21] = 'H';
    chunk[22] = 'i';
    ASSERT_EQ(velatrix_virtual_set_feature(pad, chunk.data(), 1045), 1);
    uint8_t type = 99;
    uint8_t data[8] = {};
    EXPECT_EQ(velatrix_virtual_get_resource(pad, 4, &type, data, sizeof data), 3);
    EXPECT_EQ(std::tuple(type, std::string(reinterpret_cast<char*>(data))), std::tuple(0, std::string("Hi")));
    EXPECT_EQ(velatrix_virtual_get_resource(pad, 5, nullptr, nullptr, 0), -1);

    const uint8_t commit[2] = {172, 90};
    ASSERT_EQ(velatrix_virtual_set_feature(pad, commit, 2), 1);
    uint8_t values[4];
    EXPECT_EQ(velatrix_virtual_get_commands(pad, 172, values, sizeof values), 1);
    EXPECT_EQ(values[0], 90);
    EXPECT_EQ(velatrix_virtual_get_commands(pad, 115, values, sizeof values), 0);
    EXPECT_EQ(velatrix_virtual_get_commands(pad, 13, values, sizeof values), -1);

    EXPECT_EQ(velatrix_virtual_get_download_status(pad), -1);
    const uint8_t status[3] = {29, 2, 1};
    ASSERT_EQ(velatrix_virtual_set_feature(pad, status, 3), 1);
    EXPECT_EQ(velatrix_virtual_get_download_status(pad), 0x0102);
    Bytes page = report(25, 134, {0, 0x80, 0, 0, 0xAB});  // address 0x8000
    page[133] = 0x77;
    ASSERT_EQ(velatrix_virtual_set_feature(pad, page.data(), 134), 1);
    uint8_t page_data[VELATRIX_VIRTUAL_FIRMWARE_PAGE_SIZE];
    uint8_t checksum = 0;
    ASSERT_EQ(velatrix_virtual_get_firmware_page(pad, 0x8000, page_data, &checksum), 1);
    EXPECT_EQ(std::tuple(page_data[0], checksum), std::tuple(0xAB, 0x77));
    EXPECT_EQ(velatrix_virtual_get_firmware_page(pad, 0x8080, page_data, &checksum), 0);

    const uint8_t calibrate[2] = {130, 0};
    ASSERT_EQ(velatrix_virtual_set_feature(pad, calibrate, 2), 1);
    uint8_t calibrating = 0, point = 9, required = 9;
    ASSERT_EQ(velatrix_virtual_get_calibration(pad, &calibrating, &point, &required), 1);
    EXPECT_EQ(calibrating, 1);
    EXPECT_EQ(point, 0);
    EXPECT_EQ(required, 0);
}

}  // namespace
}  // namespace velatrix::virtual_pad::testing
