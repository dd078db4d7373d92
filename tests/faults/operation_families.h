// One entry per operation family of the C API: a call that exercises it on
// an open device and says whether it succeeded, and the fixture that runs
// one on new pads. The fault matrix runs each with faults at every
// transfer, the hostile pads with short and malformed answers, the
// hostile callers with null and closed devices.
#pragma once

#include <atomic>

#include "host/e2e_fixture.h"

namespace velatrix::e2e {

inline constexpr uint8_t kStatusReport = 13;

struct Transfer {
    uint8_t id;
    bool get;
    uint32_t length;  // what the library asked for, report id included
};

// The transfers that reached the pad under count, in order (null: not
// counting). A request the driver refuses itself never reaches the pad.
inline std::vector<Transfer>* recorded = nullptr;
inline velatrix_virtual_pad recorded_pad = 0;

template <auto Transport>
int recording(velatrix_device* device, uint8_t* buffer, uint32_t length) {
    const uint8_t id = buffer[0];
    const uint32_t before = velatrix_virtual_transfer_count(recorded_pad);
    const int result = (velatrix_real_driver.*Transport)(device, buffer, length);
    if (recorded != nullptr && velatrix_virtual_transfer_count(recorded_pad) != before) {
        recorded->push_back({id, Transport == &velatrix_device_driver::get_feature_report, length});
    }
    return result;
}

// The built-in driver with its feature transfers going through the recorder.
inline velatrix_device_driver recording_driver() {
    velatrix_device_driver driver = velatrix_real_driver;
    driver.get_feature_report = recording<&velatrix_device_driver::get_feature_report>;
    driver.set_feature_report = recording<&velatrix_device_driver::set_feature_report>;
    return driver;
}

enum class Kind {
    reports_failure,  // returns its failure value when a transfer is lost
    always_succeeds,  // documented to return 1 even when a step failed
    status_result,    // reads the status itself: that read is not "ready"
    open,             // velatrix_open_device on a listed record
};

struct Family {
    const char* name;
    bool needs_screens;  // screens, resources and device regions
    Kind kind;
    std::function<bool(velatrix_device*)> run;  // true on success
    // Transfers whose loss the call ignores by design, as "s10#2" (the
    // second set of report 10 in the counted sequence): a run mode restored
    // after the real work, a region commit tried only as a fallback, the
    // cached region table read again after a write.
    std::vector<std::string> ignored = {};
};

inline void PrintTo(const Family& family, std::ostream* out) { *out << family.name; }
inline std::string family_name(const ::testing::TestParamInfo<Family>& info) { return info.param.name; }

// A getter of a record whose report id is 0 after a failed read, by value
// or into the caller's record.
template <typename Get>
inline std::function<bool(velatrix_device*)> record_getter(Get get) {
    return [get](velatrix_device* device) { return get(device).report_id != 0; };
}
template <typename Record>
inline std::function<bool(velatrix_device*)> ref_getter(void (*get)(velatrix_device*, Record*)) {
    return [get](velatrix_device* device) {
        auto record = std::make_unique<Record>();  // some are too large for the stack
        get(device, record.get());
        return record->report_id != 0;
    };
}
// A getter of an allocated array or identifier: null after a failure.
template <typename Get, typename Free>
inline std::function<bool(velatrix_device*)> allocating(Get get, Free free) {
    return [get, free](velatrix_device* device) {
        auto* got = get(device);
        free(got);
        return got != nullptr;
    };
}

// Records the families write, each kept until the next call asks for one.
inline const velatrix_device_region_info* table_region(uint8_t number) {
    static velatrix_device_region_info region;
    std::memset(&region, 0, sizeof region);
    region.number = number;
    region.type = VELATRIX_REGION_CONTAINER;
    region.in_use = region.visible = 1;
    region.x1 = region.y1 = 10, region.x2 = 60, region.y2 = 40;
    return &region;
}

inline const velatrix_device_region* device_region(uint8_t number) {
    static velatrix_device_region region;
    std::memset(&region, 0, sizeof region);
    region.number = number;
    region.type = VELATRIX_REGION_TEXT;
    region.x1 = 100, region.x2 = 199, region.y1 = 50, region.y2 = 99;
    return &region;
}

inline const velatrix_hid_feature_screen* screen(uint8_t number) {
    static velatrix_hid_feature_screen screen;
    std::memset(&screen, 0, sizeof screen);
    screen.screen_number = number;
    velatrix_add_region_to_screen(&screen, 1, 0);
    return &screen;
}

// An 8 × 8 bitmap of one colour.
inline velatrix_bitmap* small_bitmap() {
    static Bytes buffer(static_cast<std::size_t>((8 * 24 + 31) / 32) * 4 * 8 + VELATRIX_BITMAP_HEADER_SIZE);
    static velatrix_bitmap bitmap{};
    velatrix_bitmap_init(&bitmap, buffer.data(), 8, 8);
    velatrix_bitmap_clear(&bitmap, 0x102030FF);
    return &bitmap;
}

inline const std::vector<Family>& families() {
    using D = velatrix_device*;
    constexpr Kind fails = Kind::reports_failure;
    static const std::vector<Family> table = {
        {"open", false, Kind::open, [](D d) { return velatrix_open_device(d) == 1; }},
        // Information reports.
        {"capabilities", false, fails, record_getter(velatrix_get_capabilities)},
        {"device_status", false, Kind::status_result, ref_getter(velatrix_get_device_status_ref)},
        {"clear_last_error", false, fails, [](D d) { return velatrix_clear_last_error(d) == 1; }},
        {"device_configure", false, fails, record_getter(velatrix_get_device_configure)},
        {"contact_count_maximum", false, fails, record_getter(velatrix_get_contact_count_maximum)},
        {"frequency_amplitude", false, fails, record_getter(velatrix_get_frequency_amplitude)},
        {"power_state", false, fails, record_getter(velatrix_get_power_state)},
        {"version", false, fails, record_getter(velatrix_get_version)},
        {"coordinate_range", false, fails, record_getter(velatrix_get_coordinate_range)},
        {"serial_number", false, fails, record_getter(velatrix_get_serial_number)},
        {"operating_modes", false, fails, record_getter(velatrix_get_operating_modes)},
        {"display_info", false, fails, record_getter(velatrix_get_display_info)},
        {"uuid", false, fails, allocating(velatrix_get_device_uuid, velatrix_free_device_uuid)},
        // Parameter reports.
        {"display_settings", false, fails, record_getter(velatrix_get_display_settings)},
        {"general_parameters", false, fails, record_getter(velatrix_get_general_parameters)},
        {"asic_register", false, fails, record_getter(velatrix_get_asic_register)},
        {"pen_parameters", false, fails, record_getter(velatrix_get_pen_parameters)},
        {"touch_parameters", false, fails, record_getter(velatrix_get_touch_parameters)},
        {"output_configuration", false, fails, record_getter(velatrix_get_output_configuration)},
        {"peripheral_configuration", false, fails, record_getter(velatrix_get_peripheral_configuration)},
        {"calibration_data", false, fails, record_getter(velatrix_get_calibration_data)},
        {"set_serial_number", false, fails, [](D d) { return velatrix_set_serial_number(d, "SN-1", 4) == 1; },
         {"s10#2"}},
        {"set_device_configure", false, fails, [](D d) { return velatrix_set_device_configure(d, {15, 1, 2}) == 1; }},
        {"set_frequency_amplitude", false, fails,
         [](D d) { return velatrix_set_frequency_amplitude(d, {20, 1, 2, 3}) == 1; }},
        {"set_power_state", false, fails, [](D d) { return velatrix_set_power_state(d, {2, 1}) == 1; }},
        {"set_startup_mode", false, fails, [](D d) { return velatrix_set_startup_mode(d, 1) == 1; }},
        {"set_display_settings", false, fails,
         [](D d) { return velatrix_set_display_settings(d, {102, 50, 50, 1, 2, 3, 0}) == 1; }},
        {"set_general_parameters", false, fails, [](D d) { return velatrix_set_general_parameters(d, {}) == 1; }},
        {"set_asic_reset", false, fails, [](D d) { return velatrix_set_asic_reset(d, {42, 1, 0}) == 1; }},
        {"set_asic_register", false, fails, [](D d) { return velatrix_set_asic_register(d, {44, 3, 9}) == 1; }},
        {"set_pen_parameters", false, fails, [](D d) { return velatrix_set_pen_parameters(d, {}) == 1; }},
        {"set_touch_parameters", false, fails, [](D d) { return velatrix_set_touch_parameters(d, {}) == 1; }},
        {"set_output_configuration", false, fails, [](D d) { return velatrix_set_output_configuration(d, {}) == 1; }},
        {"set_peripheral_configuration", false, fails,
         [](D d) { return velatrix_set_peripheral_configuration(d, {}) == 1; }},
        {"set_calibration_data", false, fails, [](D d) { return velatrix_set_calibration_data(d, {}) == 1; }},
        // Regions.
        {"regions", false, fails, allocating(velatrix_get_regions, velatrix_free_regions)},
        {"default_regions", false, fails, allocating(velatrix_get_default_regions, velatrix_free_regions)},
        {"update_region", false, fails,
         [](D d) {
             velatrix_region_update update{};
             update.number = update.visible = 1;
             return velatrix_update_region(d, &update) == 1;
         }},
        {"delete_region", false, fails,
         [](D d) { return velatrix_set_region(d, table_region(4)) == 1 && velatrix_delete_region(d, 4) == 1; }},
        {"region_commit", false, fails, [](D d) { return velatrix_set_region_commit(d, 1) == 1; }},
        {"restore_default_regions", false, fails, [](D d) { return velatrix_restore_default_regions(d) == 1; },
         {"s10#1", "s10#2"}},
        {"region_index", true, fails,
         [](D d) { return velatrix_set_region_idx(d, 1) == 1 && velatrix_get_region_idx(d) >= 0; }},
        {"region_contents", true, fails,
         [](D d) {
             const bool read = ref_getter(velatrix_get_region_ref)(d);
             return velatrix_set_region_contents(d, device_region(9)) == 1 && read;
         },
         {"g110#1"}},  // the cached table is read again afterwards
        {"device_regions", true, fails, allocating(velatrix_get_device_regions, velatrix_free_device_regions)},
        {"delete_device_region", true, fails,
         [](D d) {
             return velatrix_set_region_contents(d, device_region(10)) == 1 && velatrix_delete_device_region(d, 10) == 1;
         },
         {"g110#1"}},
        // Screens.
        {"get_screen", true, fails, ref_getter(velatrix_get_screen_ref)},
        {"screen_index", true, fails,
         [](D d) { return velatrix_set_screen_idx(d, 1) == 1 && velatrix_get_screen_idx(d) >= 0; }},
        {"delete_screen", true, fails,
         [](D d) { return velatrix_set_screen(d, screen(6)) == 1 && velatrix_delete_screen(d, 6) == 1; }},
        {"edit_screen", true, fails,
         [](D d) {
             velatrix_hid_feature_screen_modify modify{};
             modify.set_timeout = modify.screen_index = 1, modify.timeout_value = 20;
             return velatrix_set_edit_screen(d, &modify) == 1;
         }},
        {"active_screen", true, fails,
         [](D d) { return velatrix_set_active_screen(d, 1) == 1 && velatrix_get_active_screen(d) >= 0; }},
        {"screen_region_info", true, fails, ref_getter(velatrix_get_screen_region_info_ref)},
        {"screen_region_commit", true, fails, [](D d) { return velatrix_set_screen_region_commit(d, 1) == 1; }},
        // Resources.
        {"resource_availability", true, fails, ref_getter(velatrix_get_resource_availability_ref)},
        {"resource_index", true, fails,
         [](D d) { return velatrix_set_resource_idx(d, 1) == 1 && velatrix_get_resource_idx(d) >= 0; }},
        {"resource_info", true, fails, ref_getter(velatrix_get_resource_info_ref)},
        {"get_resource", true, fails, ref_getter(velatrix_get_resource_ref)},
        {"delete_resource", true, fails,
         [](D d) { return velatrix_send_text_resource(d, 9, "x") == 1 && velatrix_delete_resource(d, 9) == 1; }},
        // Display.
        {"display_content", false, fails, [](D d) { return velatrix_set_display_content(d, 1) == 1; }},
        {"bitmap_transfer", false, fails,
         [](D d) { return velatrix_transfer_bitmap_to_device(d, small_bitmap(), 20, 20, 24) == 1; }},
        {"text_on_device", false, fails,
         [](D d) { return velatrix_device_draw_text(d, "Hi", 10, 10, VELATRIX_TEXT_ALIGN_LEFT, 0) == 1; }},
        {"pixel_readback", false, fails,
         [](D d) {
             auto read = std::make_unique<velatrix_pixel_read>();
             read->x = 3, read->y = 4;
             return velatrix_get_pixels(d, read.get()) == 1;
         }},
        {"clear_screen", false, fails, [](D d) { return velatrix_clear_screen(d) == 1; }},
        // Modes, calibration, firmware, error correction.
        {"quillmark_mode", true, Kind::always_succeeds, [](D d) { return velatrix_set_quillmark_mode(d, 0) == 1; }},
        {"corvantine_mode", true, Kind::always_succeeds, [](D d) { return velatrix_set_corvantine_mode(d, 0) == 1; }},
        {"calibrate", false, fails,
         [](D d) { return velatrix_device_calibrate(d) == 1 && velatrix_device_cancel_calibrate(d) == 1; },
         {"s115#1"}},
        {"calibrate_state", false, fails, record_getter(velatrix_get_calibrate_state)},
        {"error_correction_table", false, fails,
         [](D d) {
             auto table = std::make_unique<velatrix_hid_feature_error_correction_table>();
             velatrix_get_error_correction_table_ref(d, table.get());
             return table->report_id != 0 && velatrix_set_error_correction(d, table.get()) == 1;
         },
         {"s115#1", "s10#2"}},
        {"firmware", false, fails,
         [](D d) {
             velatrix_firmware_page page{};
             page.address = 0x400, page.data[0] = 0x5A;
             return velatrix_set_firmware(d, page) == 1 && velatrix_set_firmware_download_status(d, 1) == 1;
         }},
        {"simulate_pen_input", false, fails,
         [](D d) {
             const velatrix_pen_simulation pen{0, 1, 100, 80, 1};
             return velatrix_simulate_pen_input(d, &pen) == 1;
         }},
    };
    return table;
}

// Input callbacks that ran: a pad that is gone must not call one.
inline std::atomic<int> input_calls{0};
inline int count_input(velatrix_device*, const velatrix_input_report*, int, const uint8_t*, uint32_t) {
    ++input_calls;
    return 0;
}

class FamilyTest : public E2e, public ::testing::WithParamInterface<Family> {
protected:
    void SetUp() override {
        E2e::SetUp();
        input_calls = 0;
    }
    void TearDown() override {
        recorded = nullptr;
        E2e::TearDown();
    }

    // A new pad of a model the family can use, listed, and opened unless
    // the family is the open itself; its transfers go through the recorder.
    velatrix_device* fresh(velatrix_virtual_pad& pad) {
        const Family& family = GetParam();
        pad = plug(first_model_with(family.needs_screens ? kScreensResources : kAnyPad).c_str());
        // One status read per interlock wait: the pad is never busy.
        EXPECT_EQ(velatrix_virtual_set_busy_polls(pad, 0), 1);
        velatrix_device* device = find(pad);
        if (device == nullptr) return nullptr;
        device->driver = &recording_;
        if (family.kind != Kind::open) {
            if (velatrix_open_device(device) != 1) {
                forget(device);
                ADD_FAILURE() << "open failed: " << last_error();
                return nullptr;
            }
            velatrix_register_input_callback(device, count_input);
        }
        return device;
    }

    // Runs the family once on `device`; a failed open has freed its record.
    bool run(velatrix_device* device) {
        velatrix_report_error_internal("%s", "");
        const bool ok = GetParam().run(device);
        if (!ok && GetParam().kind == Kind::open) forget(device);
        return ok;
    }

    velatrix_device_driver recording_ = recording_driver();  // outlives the records
};

}  // namespace velatrix::e2e
