// Callers that get it wrong: every operation family with a null device and
// with a device that has been closed, then one table of null records, zero
// lengths, unknown encodings and out-of-range numbers and coordinates. None
// may crash or reach the pad; each fails with its documented result and
// text. Last, a callback that closes its own device in the middle of a read.
#include <atomic>
#include <climits>

#include "operation_families.h"

namespace velatrix::e2e {
namespace {

class HostileDevices : public FamilyTest {};

TEST_P(HostileDevices, NullAndClosedDevicesFailWithAnErrorAndNoTraffic) {
    const Family& family = GetParam();
    auto expect_refused = [&](velatrix_device* device, const char* what) {
        SCOPED_TRACE(what);
        velatrix_report_error_internal("%s", "");
        const bool ok = family.run(device);
        if (family.kind == Kind::always_succeeds) {
            EXPECT_TRUE(ok) << "documented to report success";
        } else {
            EXPECT_FALSE(ok);
            EXPECT_NE(last_error(), "");
        }
    };
    expect_refused(nullptr, "null device");
    if (family.kind == Kind::open) return;  // a closed record may be opened again

    velatrix_virtual_pad pad = 0;
    velatrix_device* device = fresh(pad);
    ASSERT_NE(device, nullptr);
    ASSERT_EQ(velatrix_close_device(device), 1);
    const uint32_t transfers = velatrix_virtual_transfer_count(pad);
    expect_refused(device, "closed device");
    EXPECT_EQ(velatrix_virtual_transfer_count(pad), transfers) << "nothing reaches the pad";
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, HostileDevices, ::testing::ValuesIn(families()), family_name);

// One hostile argument: the call, its documented result and error text
// (null: the call has no result or text to check, only "no crash").
struct HostileCall {
    const char* name;
    std::function<int64_t(velatrix_device*)> call;
    int64_t result;
    const char* error;
    bool reaches_pad = false;  // the call still talks to the pad, by design
};

std::vector<HostileCall> hostile_calls() {
    using D = velatrix_device*;
    static uint8_t bytes[64] = {};
    return {
        // Null records and texts.
        {"get_pixels_null", [](D d) { return velatrix_get_pixels(d, nullptr); }, 0,
         "Pixel record was null, unable to read pixels."},
        {"set_screen_null", [](D d) { return velatrix_set_screen(d, nullptr); }, 0,
         "Screen was null, unable to set the screen."},
        {"set_edit_screen_null", [](D d) { return velatrix_set_edit_screen(d, nullptr); }, 0,
         "Screen modification was null, unable to edit the screen."},
        {"set_region_null", [](D d) { return velatrix_set_region(d, nullptr); }, 0,
         "Device or region was null, unable to set the region."},
        {"update_region_null", [](D d) { return velatrix_update_region(d, nullptr); }, 0,
         "Device or region update was null, unable to update the region."},
        {"set_region_contents_null", [](D d) { return velatrix_set_region_contents(d, nullptr); }, 0,
         "Device or region was null, unable to set the region contents."},
        {"set_resource_null", [](D d) { return velatrix_set_resource(d, nullptr); }, 0,
         "Resource was null, unable to send it."},
        {"send_resource_null", [](D d) { return velatrix_send_resource(d, 3, VELATRIX_RESOURCE_GRAPHIC, nullptr, 10); },
         0, "Resource data was null, unable to send resource 3."},
        {"send_text_resource_null", [](D d) { return velatrix_send_text_resource(d, 3, nullptr); }, 0,
         "Resource text was null, unable to send resource 3."},
        {"set_error_correction_null", [](D d) { return velatrix_set_error_correction(d, nullptr); }, 0,
         "Table was null, unable to set the error correction."},
        {"simulate_pen_input_null", [](D d) { return velatrix_simulate_pen_input(d, nullptr); }, 0,
         "Pen input was null, unable to simulate it."},
        {"set_serial_number_null", [](D d) { return velatrix_set_serial_number(d, nullptr, 5); }, 0,
         "Serial number text is null."},
        {"transfer_bitmap_null", [](D d) { return velatrix_transfer_bitmap_to_device(d, nullptr, 0, 0, 24); }, 0,
         "Invalid bitmap."},
        {"draw_text_null", [](D d) { return velatrix_device_draw_text(d, nullptr, 0, 0, 0, 0); }, 0,
         "String encoding problem, unable to convert string."},
        {"measure_text_null", [](D d) { return velatrix_measure_text_width(d, nullptr); }, 0, nullptr},
        {"get_screen_null", [](D d) { return static_cast<int64_t>(velatrix_get_screen(nullptr, d) != nullptr); }, 0,
         nullptr, true},
        {"get_resource_info_null", [](D d) { return int64_t{velatrix_get_resource_info(d, nullptr) != nullptr}; }, 0,
         nullptr, true},
        {"status_ref_null", [](D d) { return velatrix_get_device_status_ref(d, nullptr), int64_t{0}; }, 0, nullptr},
        {"list_devices_null", [](D) { return velatrix_list_devices(nullptr); }, 1, nullptr},
        {"uuid_null_device", [](D) { return static_cast<int64_t>(velatrix_get_device_uuid(nullptr) != nullptr); }, 0,
         "Device has no driver to send the report through."},
        // Zero lengths and unknown encodings.
        {"send_resource_empty", [](D d) { return velatrix_send_resource(d, 3, VELATRIX_RESOURCE_GRAPHIC, bytes, 0); }, 1,
         ""},
        {"draw_text_empty", [](D d) { return velatrix_device_draw_text_encoded(d, "", 0, 10, 10, 0, 0, "UTF-8"); }, 0,
         "String encoding problem, unable to convert string."},
        // Out-of-range numbers and coordinates.
        {"set_region_zero", [](D d) { return velatrix_set_region(d, table_region(0)); }, 0,
         "Region number was out of bounds, min: 1, max: 16, specified: 0\n"},
        {"delete_region_zero", [](D d) { return velatrix_delete_region(d, 0); }, 0, "Region number out of bounds."},
        {"update_region_zero",
         [](D d) {
             velatrix_region_update update{};
             return velatrix_update_region(d, &update);
         },
         0, "Region number out of bounds."},
        {"bitmap_outside_display",  // goes out; the pad clips it
         [](D d) { return velatrix_transfer_bitmap_to_device(d, small_bitmap(), UINT32_MAX - 3, UINT32_MAX - 3, 24); },
         1, nullptr, true},
        {"bitmap_bad_depth",  // the pad refuses the chunk
         [](D d) { return velatrix_transfer_bitmap_to_device(d, small_bitmap(), 0, 0, 7); }, 0, nullptr, true},
        {"text_outside_display", [](D d) { return velatrix_device_draw_text(d, "Hi", UINT32_MAX, UINT32_MAX, 0, 0); },
         0, "Requested coordinate is off the screen in the horizontal direction."},
        {"bitmap_init_negative",
         [](D) { velatrix_bitmap bitmap{}; return velatrix_bitmap_init(&bitmap, bytes, -4, INT32_MAX); }, 0, nullptr},
    };
}

void PrintTo(const HostileCall& call, std::ostream* out) { *out << call.name; }

class HostileArguments : public E2e, public ::testing::WithParamInterface<HostileCall> {};

TEST_P(HostileArguments, FailAsDocumentedWithoutTraffic) {
    const HostileCall& hostile = GetParam();
    const velatrix_virtual_pad pad = plug(first_model_with(kScreensResources).c_str());
    velatrix_device* device = open(pad);
    ASSERT_NE(device, nullptr);
    const uint32_t transfers = velatrix_virtual_transfer_count(pad);
    velatrix_report_error_internal("%s", "");
    EXPECT_EQ(hostile.call(device), hostile.result);
    if (hostile.error != nullptr) {
        EXPECT_EQ(last_error(), hostile.error);
    }
    if (!hostile.reaches_pad) {
        EXPECT_EQ(velatrix_virtual_transfer_count(pad), transfers) << "nothing reaches the pad";
    }
    EXPECT_EQ(device->open, 1);
}

INSTANTIATE_TEST_SUITE_P(Table, HostileArguments, ::testing::ValuesIn(hostile_calls()),
                         [](const ::testing::TestParamInfo<HostileCall>& info) { return std::string(info.param.name); });

// A caller that closes the device from inside its own input callback: the
// read ends there, and no later callback or report of that read runs.
std::atomic<int> closer_calls{0};
std::atomic<int> later_calls{0};
int close_from_callback(velatrix_device* device, const velatrix_input_report*, int, const uint8_t*, uint32_t) {
    ++closer_calls;
    EXPECT_EQ(velatrix_close_device(device), 1);
    return 0;
}
int count_later(velatrix_device*, const velatrix_input_report*, int, const uint8_t*, uint32_t) {
    ++later_calls;
    return 0;
}

TEST_F(E2e, AnInputCallbackClosingItsOwnDeviceEndsTheRead) {
    const velatrix_virtual_pad pad = plug(first_model_with().c_str());
    velatrix_device* device = open(pad);
    ASSERT_NE(device, nullptr);
    velatrix_register_input_callback(device, close_from_callback);
    velatrix_register_input_callback(device, count_later);
    ASSERT_EQ(velatrix_virtual_pen(pad, 10, 10, 1, 1), 1);
    ASSERT_EQ(velatrix_virtual_pen(pad, 11, 10, 1, 1), 1);
    EXPECT_EQ(velatrix_device_read(device), 0);
    EXPECT_EQ(last_error(), "Device is not open after read");
    EXPECT_EQ(closer_calls.load(), 1);
    EXPECT_EQ(later_calls.load(), 0);
    EXPECT_EQ(device->open, 0);
}

}  // namespace
}  // namespace velatrix::e2e
