// Values end to end: what the open caches, and every report the library
// writes read back, through the public API and the virtual firmware, on
// every model that has it. The exact wire bytes, waits and failure paths
// belong to the recording fake driver's tests (tests/protocol); this table
// owns only that what is set is what is read.
#include <functional>
#include <tuple>

#include "e2e_fixture.h"
#include "support/fake_driver.h"

namespace velatrix::e2e {
namespace {

using Device = velatrix_device*;

// What the library's print-out shows of a record: every field, labelled.
template <class Record>
std::string shown(void (*print)(const Record*), const Record& record) {
    return testing::capture_stdout([&] { print(&record); });
}

struct RoundTrip {
    const char* name;
    unsigned needs;  // capabilities the pad must have
    std::function<void(Device device, velatrix_virtual_pad pad)> run;
};

// A report of fixed shape as a row: `written` is set, the report read back
// must show what `expected` shows (the record as the pad keeps it), carry
// its id (which some print-outs leave out) and agree on `hidden`, a field
// the print-out leaves out.
template <class R, class Field = uint8_t>
RoundTrip row(const char* name, int (*set)(Device, R), R (*get)(Device), void (*print)(const R*), R written,
              R expected, Field R::*hidden = nullptr) {
    return {name, kAnyPad, [=](Device device, velatrix_virtual_pad) {
                ASSERT_EQ(set(device, written), 1) << last_error();
                const R read = get(device);
                EXPECT_EQ(read.report_id, expected.report_id);
                EXPECT_EQ(shown(print, read), shown(print, expected));
                if (hidden != nullptr) {
                    EXPECT_EQ(read.*hidden, expected.*hidden);
                }
            }};
}

// What the open caches for every later call: display information, version,
// the region table as the pad holds it, and the default font.
void open_caches(Device device, velatrix_virtual_pad pad) {
    const PadModel& model = virtual_pad::VirtualBus::instance().find(pad)->model();
    const velatrix_hid_feature_display_info& info = device->display_info;
    const virtual_pad::DisplayInfo& display = model.display;
    EXPECT_EQ(std::tuple(info.report_id, info.width, info.height, info.color_depth, info.text_width, info.text_height,
                         info.region_count, info.max_caption_length),
              std::tuple(100, display.width, display.height, display.color_depth, display.text_width,
                         display.text_height, display.region_count, display.max_caption_length));

    const velatrix_hid_feature_version& version = device->version;
    EXPECT_EQ(std::tuple(version.report_id, Bytes(version.kernel_version, version.kernel_version + 3),
                         Bytes(version.firmware_version, version.firmware_version + 3), version.asic_signature),
              std::tuple(22, Bytes(model.version.kernel.begin(), model.version.kernel.end()),
                         Bytes(model.version.firmware.begin(), model.version.firmware.end()),
                         model.version.asic_signature));

    ASSERT_NE(device->regions, nullptr);
    for (uint8_t number = 1; number <= info.region_count; ++number) {
        velatrix_virtual_region r{};
        ASSERT_EQ(velatrix_virtual_get_region(pad, number, &r), 1);
        const velatrix_device_region_info& c = device->regions[number - 1];
        const bool button = r.type == VELATRIX_REGION_BUTTON;
        EXPECT_EQ(std::tuple(c.number, c.type, c.in_use, c.visible, c.accept_touch, c.has_frame, c.x1, c.x2, c.y1,
                             c.y2, c.foreground, c.background,
                             std::string(button ? c.data.button.caption : ""), button ? c.data.button.enable : 0),
                  std::tuple(number, static_cast<uint32_t>(r.type), r.in_use, r.visible, r.accept_touch, r.has_frame,
                             r.x1, r.x2, r.y1, r.y2, r.foreground, r.background, std::string(button ? r.caption : ""),
                             button ? r.enable : 0))
            << "region " << int(number);
    }

    EXPECT_EQ(device->font, &velatrix_default);
}

void serial_number(Device device, velatrix_virtual_pad) {
    const char* serial = "E2E-SERIAL-0042";
    ASSERT_EQ(velatrix_set_serial_number(device, serial, static_cast<uint32_t>(std::strlen(serial))), 1)
        << last_error();
    const velatrix_hid_feature_serial_number read = velatrix_get_serial_number(device);
    EXPECT_EQ(read.report_id, 27);
    EXPECT_STREQ(read.serial_number, serial);
}

// The identifier is the MD5 of the table, computed here independently.
void error_correction(Device device, velatrix_virtual_pad) {
    velatrix_hid_feature_error_correction_table table{};
    for (std::size_t i = 0; i < sizeof table.data; ++i) table.data[i] = static_cast<uint8_t>((i * 37 + i / 256) & 0xFF);
    ASSERT_EQ(velatrix_set_error_correction(device, &table), 1) << last_error();
    velatrix_hid_feature_error_correction_table read{};
    velatrix_get_error_correction_table_ref(device, &read);
    EXPECT_EQ(read.report_id, 0x1A);
    EXPECT_EQ(0, std::memcmp(read.data, table.data, sizeof table.data));

    uint8_t* uuid = velatrix_get_device_uuid(device);
    ASSERT_NE(uuid, nullptr);
    EXPECT_EQ(0, std::memcmp(uuid, md5(table.data, sizeof table.data).data(), 16));
    velatrix_free_device_uuid(uuid);
}

void table_regions(Device device, velatrix_virtual_pad pad) {
    velatrix_device_region_info written[3];
    std::memset(written, 0, sizeof written);
    const uint32_t types[] = {VELATRIX_REGION_BUTTON, VELATRIX_REGION_CONTAINER, VELATRIX_REGION_LINE};
    for (uint8_t i = 0; i < 3; ++i) {
        velatrix_device_region_info& r = written[i];
        r.number = static_cast<uint8_t>(5 + i);
        r.type = types[i];
        r.accept_touch = i != 2;
        r.visible = r.in_use = 1;
        r.has_frame = i == 0;
        r.x1 = 30;
        r.x2 = 129;
        r.y1 = 40;
        r.y2 = 79;
        r.foreground = 0x11223344;
        r.background = 0xAABBCCDD;
    }
    written[0].data.button.parent = 1;
    written[0].data.button.enable = 1;
    written[0].data.button.clear_on_select = 1;
    std::strcpy(written[0].data.button.caption, "Sign");
    written[1].data.container.ink_enable = 1;
    written[1].data.container.ink_width = 3;
    written[1].data.container.reserved1 = 0x5A;
    written[1].data.container.reserved2 = 0x1234;  // the pad's field is a byte
    written[2].data.line.parent = 6;
    written[2].data.line.width = 2;
    for (const auto& region : written) ASSERT_EQ(velatrix_set_region(device, &region), 1) << last_error();

    velatrix_device_region_info* table = velatrix_get_regions(device);
    ASSERT_NE(table, nullptr) << last_error();
    auto printed = [](const velatrix_device_region_info* regions) {
        return testing::capture_stdout([&] { velatrix_print_regions(regions, 3); });
    };
    EXPECT_EQ(printed(table + 4), printed(written));
    const auto& container = table[5].data.container;
    EXPECT_EQ(std::tuple(container.reserved1, container.reserved2), std::tuple(0x5A, 0x0034));
    velatrix_free_regions(table);

    velatrix_region_update update{};
    update.number = 5;
    update.visible = 1;
    update.foreground = 0x01020304;
    ASSERT_EQ(velatrix_update_region(device, &update), 1) << last_error();
    velatrix_virtual_region stored{};
    ASSERT_EQ(velatrix_virtual_get_region(pad, 5, &stored), 1);
    EXPECT_EQ(std::tuple(stored.enable, stored.foreground), std::tuple(0, 0x01020304u));
    ASSERT_EQ(velatrix_delete_region(device, 5), 1) << last_error();
    ASSERT_EQ(velatrix_virtual_get_region(pad, 5, &stored), 1);
    EXPECT_EQ(stored.in_use, 0);
}

void device_regions(Device device, velatrix_virtual_pad pad) {
    velatrix_device_region written[4];
    std::memset(written, 0, sizeof written);
    const uint32_t types[] = {VELATRIX_REGION_TEXT, VELATRIX_REGION_GRAPHIC, VELATRIX_REGION_BUTTON,
                              VELATRIX_REGION_BUTTON};
    for (uint8_t i = 0; i < 4; ++i) {
        velatrix_device_region& r = written[i];
        r.number = static_cast<uint8_t>(9 + i);
        r.type = types[i];
        r.accept_touch = r.decode = 1;
        r.output_to_host = i == 0;
        r.has_frame = i == 1;
        r.reserved1 = 0x12;
        for (int j = 0; j < 8; ++j) r.reserved2[j] = static_cast<uint8_t>(j + 1);
        r.x1 = 100;
        r.x2 = 199;
        r.y1 = 50;
        r.y2 = 99;
        r.foreground = 0x10203040;
        r.background = 0x50607080;
    }
    written[0].data.text = {0, 4, 2, 3, 7};
    written[1].data.graphic.resource_number = 5;
    written[1].data.graphic.horizontal_justification = 1;
    written[1].data.graphic.vertical_justification = 2;
    auto& image = written[2].data.button;
    image.enable = image.highlight_on_select = image.confirm_on_select = image.use_resource = 1;
    image.resource_number_normal = 6;
    image.resource_number_selected = 7;
    written[3].data.button.enable = written[3].data.button.clear_on_select = 1;
    std::strcpy(written[3].data.button.caption, "Device button");
    for (const auto& region : written) ASSERT_EQ(velatrix_set_region_contents(device, &region), 1) << last_error();

    // The print-out shows every field but the reserved bytes after the first.
    auto printed = [](const velatrix_device_region* regions) {
        return testing::capture_stdout([&] { velatrix_print_device_regions(regions, 4); });
    };
    auto reserved = [](const velatrix_device_region* regions) {
        std::vector<Bytes> bytes;
        for (int i = 0; i < 4; ++i) bytes.emplace_back(regions[i].reserved2, regions[i].reserved2 + 8);
        return bytes;
    };
    // The pad walks its region index on every read.
    ASSERT_EQ(velatrix_set_region_idx(device, 9), 1) << last_error();
    velatrix_device_region read[4];
    for (velatrix_device_region& region : read) {
        velatrix_get_region_ref(device, &region);
        ASSERT_EQ(region.report_id, 0x98) << last_error();
    }
    EXPECT_EQ(velatrix_get_region_idx(device), 13);
    EXPECT_EQ(printed(read), printed(written));
    EXPECT_EQ(reserved(read), reserved(written));

    ASSERT_EQ(velatrix_delete_device_region(device, 9), 1) << last_error();
    velatrix_virtual_region stored{};
    ASSERT_EQ(velatrix_virtual_get_region(pad, 9, &stored), 1);
    EXPECT_EQ(stored.in_use, 0);
}

void screens(Device device, velatrix_virtual_pad pad) {
    velatrix_hid_feature_screen screen;
    std::memset(&screen, 0, sizeof screen);
    screen.screen_number = 5;
    screen.reset_timeout_on_activity = 1;
    for (int i = 0; i < 14; ++i) screen.reserved[i] = static_cast<uint8_t>(0x31 + i);
    screen.timeout = 9;
    screen.timeout_next_screen = 2;
    const uint8_t regions[] = {1, 2, 3, 4};
    const uint8_t next[] = {0, 0, 2, 1};
    for (uint8_t i = 0; i < 4; ++i) ASSERT_EQ(velatrix_add_region_to_screen(&screen, regions[i], next[i]), 1);
    ASSERT_EQ(velatrix_set_screen(device, &screen), 1) << last_error();

    auto fields = [](const velatrix_hid_feature_screen& s) {
        return std::tuple(s.screen_number, s.reset_timeout_on_activity, Bytes(s.reserved, s.reserved + 14), s.timeout,
                          s.timeout_next_screen, s.region_count, Bytes(s.region_indexes, s.region_indexes + 4),
                          Bytes(s.screen_next_list, s.screen_next_list + 4));
    };
    ASSERT_EQ(velatrix_set_screen_idx(device, 5), 1) << last_error();
    EXPECT_EQ(velatrix_get_screen_idx(device), 5);
    velatrix_hid_feature_screen read;
    velatrix_get_screen(&read, device);
    EXPECT_EQ(read.report_id, 0xA2);
    EXPECT_EQ(fields(read), fields(screen));

    // Edit in place: one more region, a new time-out.
    velatrix_hid_feature_screen_modify modify{};
    modify.add_region = modify.set_timeout = 1;
    modify.screen_index = 5;
    modify.region_index = 6;
    modify.region_screen_next = 3;
    modify.timeout_value = 20;
    modify.timeout_screen_next = 1;
    ASSERT_EQ(velatrix_set_edit_screen(device, &modify), 1) << last_error();
    velatrix_get_screen(&read, device);
    EXPECT_EQ(std::tuple(read.region_count, read.region_indexes[4], read.screen_next_list[4], read.timeout,
                         read.timeout_next_screen),
              std::tuple(5, 6, 3, 20, 1));

    ASSERT_EQ(velatrix_set_active_screen(device, 5), 1) << last_error();
    EXPECT_EQ(velatrix_get_active_screen(device), 5);
    ASSERT_EQ(velatrix_delete_screen(device, 5), 1) << last_error();
    velatrix_virtual_screen stored{};
    EXPECT_EQ(velatrix_virtual_get_screen(pad, 5, &stored), 0);
}

void resources(Device device, velatrix_virtual_pad pad) {
    Bytes data(2500);
    for (std::size_t i = 0; i < data.size(); ++i) data[i] = static_cast<uint8_t>(i * 7 + i / 1024);
    ASSERT_EQ(velatrix_send_resource(device, 7, VELATRIX_RESOURCE_GRAPHIC, data.data(),
                                     static_cast<uint32_t>(data.size())),
              1)
        << last_error();
    ASSERT_EQ(velatrix_send_text_resource(device, 8, "Hello pad"), 1) << last_error();

    ASSERT_EQ(velatrix_set_resource_idx(device, 7), 1) << last_error();
    EXPECT_EQ(velatrix_get_resource_idx(device), 7);
    velatrix_hid_feature_resource_info info;
    velatrix_get_resource_info(device, &info);
    EXPECT_EQ(std::tuple(info.report_id, info.resource_number, info.resource_type, info.resource_size),
              std::tuple(0x8D, 7, VELATRIX_RESOURCE_GRAPHIC, 2500u));
    auto chunk = std::make_unique<velatrix_hid_feature_resource>();
    Bytes read;
    for (int i = 0; i < 5 && (read.empty() || read.size() < chunk->resource_size); ++i) {
        velatrix_get_resource_ref(device, chunk.get());
        ASSERT_EQ(chunk->report_id, 0x8E) << last_error();
        read.insert(read.end(), chunk->data, chunk->data + chunk->chunk_length);
    }
    EXPECT_EQ(read, data);

    ASSERT_EQ(velatrix_set_resource_idx(device, 8), 1) << last_error();
    velatrix_get_resource_ref(device, chunk.get());
    const std::string text(reinterpret_cast<const char*>(chunk->data), chunk->chunk_length);
    EXPECT_EQ(std::tuple(chunk->resource_type, text), std::tuple(VELATRIX_RESOURCE_TEXT, std::string("Hello pad", 10)))
        << "with its terminator";

    velatrix_hid_feature_resource_availability availability;
    velatrix_get_resource_availability(device, &availability);
    EXPECT_EQ(availability.unknown1, 2) << "resources held";
    ASSERT_EQ(velatrix_delete_resource(device, 7), 1) << last_error();
    EXPECT_EQ(velatrix_virtual_get_resource(pad, 7, nullptr, nullptr, 0), -1);
}

// Records that go out as written and come back as the pad keeps them.
const velatrix_hid_feature_general_parameters kGeneral{41, 1, 0, 1, 1, 5, 0, 1, 2, 3, 0, 0x1234, 77};
const velatrix_hid_feature_touch_parameters kTouch{60, 3, 4, -20, 300, 9, 0x0190, 0x0258, 12, 1, 3, 1000, -5, 999, -300};
const velatrix_hid_feature_pen_parameters kPen{50, 0x0102, 0x0304, 0x0506, 7, 8, 0x090A, 11, 12,
                                               13, 14,     1,      5,      1, 0, 1,      0, 0x0F10};
// Written without a report id; the flags as OEM, keyboard and preamble output.
velatrix_hid_feature_peripheral_configuration peripheral(uint8_t id) {
    return {id,   VELATRIX_PERIPHERAL_OEM_OUTPUT | VELATRIX_PERIPHERAL_KEYBOARD_OUTPUT | VELATRIX_PERIPHERAL_KEYBOARD_PREAMBLE,
            0x21, 0x22, 0x23, 0x24, 0x25, 0x26, 0x27, 0x28, 0x29, 0x2A, 0x2B, 0x2C, 0x2D, 0x2E, 0, 1};
}
// isCalibrated is sent as a flag.
velatrix_hid_feature_calibration_data calibration(uint8_t calibrated) {
    return {131, 2, calibrated, -2, 1000, 2000, -100, 4000, 320, 240, -70000, 12, 65536, -1, 0x7FFFFFFF,
            -2147483648LL, 3, 4};
}

const RoundTrip kRoundTrips[] = {
    {"OpenCaches", kAnyPad, open_caches},
    {"SerialNumber", kAnyPad, serial_number},
    row("DeviceConfigure", velatrix_set_device_configure, velatrix_get_device_configure,
        velatrix_print_device_configure, {0, 3, 7}, {15, 3, 7}),
    row("FrequencyAmplitude", velatrix_set_frequency_amplitude, velatrix_get_frequency_amplitude,
        velatrix_print_frequency_amplitude, {99, 50, 160, 120}, {20, 50, 160, 120}),
    // Only the low byte of set_command travels.
    row("DisplaySettings", velatrix_set_display_settings, velatrix_get_display_settings,
        velatrix_print_display_settings, {0, 90, 70, 10, 20, 30, 0x1FF}, {102, 90, 70, 10, 20, 30, 0xFF}),
    row("GeneralParameters", velatrix_set_general_parameters, velatrix_get_general_parameters,
        velatrix_print_general_parameters, kGeneral, kGeneral),
    row("TouchParameters", velatrix_set_touch_parameters, velatrix_get_touch_parameters,
        velatrix_print_touch_parameters, kTouch, kTouch),
    row("PenParameters", velatrix_set_pen_parameters, velatrix_get_pen_parameters, velatrix_print_pen_parameters,
        kPen, kPen, &velatrix_hid_feature_pen_parameters::debounce_post_up),
    // Written as report 2, read as report 21: one setting on the pad.
    row("PowerState", velatrix_set_power_state, velatrix_get_power_state, velatrix_print_power_state, {21, 3},
        {21, 3}),
    row("OutputConfiguration", velatrix_set_output_configuration, velatrix_get_output_configuration,
        velatrix_print_output_configuration,
        {91, 0x40000002, VELATRIX_TRANSMIT_ON_CONFIRM, VELATRIX_OUTPUT_COMPRESSED_HIRES, 200, 1, 0},
        {91, 0x40000002, VELATRIX_TRANSMIT_ON_CONFIRM, VELATRIX_OUTPUT_COMPRESSED_HIRES, 200, 1, 0}),
    // The 32-bit wire value comes back sign-extended.
    row("OutputConfigurationNegative", velatrix_set_output_configuration, velatrix_get_output_configuration,
        velatrix_print_output_configuration, {91, 0x80000001LL, 5, 0, 0, 0, 1}, {91, -2147483647LL, 5, 0, 0, 0, 1}),
    row("PeripheralConfiguration", velatrix_set_peripheral_configuration, velatrix_get_peripheral_configuration,
        velatrix_print_peripheral_configuration, peripheral(0), peripheral(92)),
    row("CalibrationData", velatrix_set_calibration_data, velatrix_get_calibration_data,
        velatrix_print_calibration_data, calibration(5), calibration(1)),
    {"ErrorCorrection", kAnyPad, error_correction},
    {"TableRegions", kAnyPad, table_regions},
    {"DeviceRegions", kScreensResources, device_regions},
    {"Screens", kScreensResources, screens},
    {"Resources", kScreensResources, resources},
};

struct Case {
    const RoundTrip* trip;
    const PadModel* model;
};
void PrintTo(const Case& c, std::ostream* out) { *out << c.trip->name << " on " << c.model->name; }

std::vector<Case> every_report_on_every_model_that_has_it() {
    std::vector<Case> cases;
    for (const RoundTrip& trip : kRoundTrips) {
        for (const PadModel* model : models_with(trip.needs)) cases.push_back({&trip, model});
    }
    return cases;
}

class E2eRoundTrip : public E2e, public ::testing::WithParamInterface<Case> {};

TEST_P(E2eRoundTrip, WhatIsSetIsReadBack) {
    const auto [trip, model] = GetParam();
    const velatrix_virtual_pad pad = plug(model->name.c_str());
    const Device device = open(pad);
    ASSERT_NE(device, nullptr);
    trip->run(device, pad);
}

INSTANTIATE_TEST_SUITE_P(Reports, E2eRoundTrip, ::testing::ValuesIn(every_report_on_every_model_that_has_it()),
                         [](const ::testing::TestParamInfo<Case>& info) {
                             return std::string(info.param.trip->name) + "_" + test_name(*info.param.model);
                         });

}  // namespace
}  // namespace velatrix::e2e
