// Listing, opening and the report map, through the public API over the
// virtual bus.
#include <chrono>

#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

using namespace std::chrono_literals;

TEST_F(E2e, ListingTakesOnlyPadsOfTheVendorWithUsageZeroOrSix) {
    const PadModel& foreign = derived_model("mono-320", [](PadModel& m) {
        m.name = "foreign-vendor";
        m.vendor_id = static_cast<uint16_t>(VELATRIX_VENDOR_ID_VALUE) ^ 0x0101;
    });
    const PadModel& usage_one = derived_model("mono-320", [](PadModel& m) {
        m.name = "usage-one";
        m.usage = 1;
    });
    const velatrix_virtual_pad mono = plug("mono-320");
    plug_model(foreign);
    const velatrix_virtual_pad colour = plug("color-800");
    plug_model(usage_one);
    ASSERT_EQ(velatrix_virtual_pad_count(), 4u);

    std::vector<velatrix_device*> listed = list();
    ASSERT_EQ(listed.size(), 2u) << "only the two pads of the vendor with usage 6 and 0";

    // In the order the bus holds them, each with its identity.
    struct Expected {
        velatrix_virtual_pad pad;
        uint16_t product;
        const char* model;
    };
    const Expected expected[] = {{mono, 0x0A20, "Quillmark M320"}, {colour, 0x0C80, "Quillmark C800"}};
    for (std::size_t i = 0; i < 2; ++i) {
        velatrix_device* device = listed[i];
        SCOPED_TRACE(expected[i].model);
        EXPECT_EQ(std::string(device->path), expected_path(expected[i].pad));
        EXPECT_EQ(device->vendor_id, static_cast<uint16_t>(VELATRIX_VENDOR_ID_VALUE));
        EXPECT_EQ(device->product_id, expected[i].product);
        EXPECT_EQ(device->product_id, velatrix_virtual_product_id(expected[i].pad));
        EXPECT_STREQ(device->manufacturer, "Velatrix");
        EXPECT_STREQ(device->model, expected[i].model);
        EXPECT_EQ(device->driver, &velatrix_real_driver);
        EXPECT_EQ(device->open, 0);
    }
    // The mono pad's path spelt out once, so the format itself is pinned.
    char mono_path[64];
    std::snprintf(mono_path, sizeof mono_path, "USB_%04x_0a20_ff00_06_%x", VELATRIX_VENDOR_ID_VALUE & 0xFFFF,
                  velatrix_virtual_location_id(mono));
    EXPECT_STREQ(listed[0]->path, mono_path);

    // A pad that is gone is no longer listed; the other stays.
    ASSERT_EQ(velatrix_virtual_unplug(mono), 1);
    listed = list();
    ASSERT_EQ(listed.size(), 1u);
    EXPECT_EQ(std::string(listed[0]->path), expected_path(colour));
}

// The open caches what every later call needs; the identifier is checked
// against an MD5 computed here from the pad's own table.
TEST_P(E2eEveryModel, OpenCachesDisplayVersionRegionsIdentifierAndFont) {
    const PadModel& model = *virtual_pad::find_model(GetParam());
    EXPECT_EQ(device_->open, 1);

    const velatrix_hid_feature_display_info& info = device_->display_info;
    EXPECT_EQ(info.report_id, 100);
    EXPECT_EQ(info.width, model.display.width);
    EXPECT_EQ(info.height, model.display.height);
    EXPECT_EQ(info.color_depth, model.display.color_depth);
    EXPECT_EQ(info.text_width, model.display.text_width);
    EXPECT_EQ(info.text_height, model.display.text_height);
    EXPECT_EQ(info.region_count, model.display.region_count);
    EXPECT_EQ(info.max_caption_length, model.display.max_caption_length);
    int32_t width = 0, height = 0;
    ASSERT_EQ(velatrix_virtual_display_size(pad_, &width, &height), 1);
    EXPECT_EQ(info.width, width);
    EXPECT_EQ(info.height, height);

    const velatrix_hid_feature_version& version = device_->version;
    EXPECT_EQ(version.report_id, 22);
    for (int i = 0; i < 3; ++i) {
        EXPECT_EQ(version.kernel_version[i], model.version.kernel[i]);
        EXPECT_EQ(version.firmware_version[i], model.version.firmware[i]);
    }
    EXPECT_EQ(version.asic_signature, model.version.asic_signature);

    ASSERT_NE(device_->regions, nullptr);
    for (uint8_t number = 1; number <= info.region_count; ++number) {
        SCOPED_TRACE("region " + std::to_string(number));
        velatrix_virtual_region pad_region{};
        ASSERT_EQ(velatrix_virtual_get_region(pad_, number, &pad_region), 1);
        const velatrix_device_region_info& cached = device_->regions[number - 1];
        EXPECT_EQ(cached.number, number);
        EXPECT_EQ(cached.type, pad_region.type);
        EXPECT_EQ(cached.in_use, pad_region.in_use);
        EXPECT_EQ(cached.visible, pad_region.visible);
        EXPECT_EQ(cached.accept_touch, pad_region.accept_touch);
        EXPECT_EQ(cached.has_frame, pad_region.has_frame);
        EXPECT_EQ(cached.x1, pad_region.x1);
        EXPECT_EQ(cached.x2, pad_region.x2);
        EXPECT_EQ(cached.y1, pad_region.y1);
        EXPECT_EQ(cached.y2, pad_region.y2);
        EXPECT_EQ(cached.foreground, pad_region.foreground);
        EXPECT_EQ(cached.background, pad_region.background);
        if (pad_region.type == VELATRIX_REGION_BUTTON) {
            EXPECT_STREQ(cached.data.button.caption, pad_region.caption);
            EXPECT_EQ(cached.data.button.enable, pad_region.enable);
        }
    }
    // The factory table has an "OK" or "Accept" button in slot 3.
    EXPECT_EQ(device_->regions[2].type, VELATRIX_REGION_BUTTON);
    EXPECT_GT(std::strlen(device_->regions[2].data.button.caption), 0u);

    ASSERT_NE(device_->uuid, nullptr);
    std::array<uint8_t, VELATRIX_VIRTUAL_ERROR_CORRECTION_SIZE> table{};
    ASSERT_EQ(velatrix_virtual_get_error_correction(pad_, table.data()), 1);
    const std::array<uint8_t, 16> digest = md5(table.data(), table.size());
    EXPECT_EQ(0, std::memcmp(device_->uuid, digest.data(), 16));

    EXPECT_EQ(device_->font, &velatrix_default);

    // The record is registered as open, and a second open is refused.
    velatrix_list* open_devices = velatrix_get_open_devices();
    ASSERT_NE(open_devices, nullptr);
    EXPECT_NE(velatrix_list_find(open_devices, device_), nullptr);
    EXPECT_EQ(velatrix_open_device(device_), 0);
    EXPECT_EQ(last_error(), "Device is already open.");

    // Closing releases the cached tables but keeps the record; it reopens.
    EXPECT_EQ(velatrix_close_device(device_), 1);
    EXPECT_EQ(device_->open, 0);
    EXPECT_EQ(device_->regions, nullptr);
    EXPECT_EQ(device_->uuid, nullptr);
    EXPECT_EQ(velatrix_list_find(velatrix_get_open_devices(), device_), nullptr);
    EXPECT_EQ(velatrix_close_device(device_), 0);
    EXPECT_EQ(last_error(), "Device is already closed.");
    ASSERT_EQ(velatrix_open_device(device_), 1) << last_error();
    EXPECT_NE(device_->uuid, nullptr);
}

INSTANTIATE_TEST_SUITE_P(Models, E2eEveryModel, ::testing::ValuesIn(model_names()), param_name);

TEST_F(E2e, OpenWaitsWhileThePadIsInitialising) {
    const velatrix_virtual_pad pad = plug("mono-320");
    velatrix_device* device = find(pad);
    ASSERT_NE(device, nullptr);
    // Three status reads show the pad initialising: the open polls every
    // 100 ms, so it takes four polls before it goes on.
    ASSERT_EQ(velatrix_virtual_set_initializing(pad, 3), 1);
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(velatrix_open_device(device), 1) << last_error();
    EXPECT_GE(std::chrono::steady_clock::now() - start, 400ms);
    velatrix_hid_feature_device_status status{};
    velatrix_get_device_status_ref(device, &status);
    EXPECT_EQ(status.report_id, 13);
    EXPECT_EQ(status.is_initializing, 0);
}

TEST_F(E2e, OpenOfAPadThatIsGoneFailsWithThePath) {
    const velatrix_virtual_pad pad = plug("color-800");
    const std::string path = expected_path(pad);
    velatrix_device* device = find(pad);
    ASSERT_NE(device, nullptr);
    ASSERT_EQ(velatrix_virtual_unplug(pad), 1);
    EXPECT_EQ(velatrix_open_device(device), 0);
    EXPECT_EQ(last_error(), "Unable to find device with path: " + path + "\n");
    EXPECT_EQ(device->open, 0);
}

// A descriptor that declares only reports 1, 2 and 13: requests for any
// other id are refused by the driver and never reach the pad.
TEST_F(E2e, RequestsForUndeclaredReportIdsNeverReachThePad) {
    const PadModel& narrow = derived_model("mono-320", [](PadModel& m) {
        m.name = "reports-1-2-13";
        m.input_reports = {1, 2};
        m.feature_reports = {13};
    });
    const velatrix_virtual_pad pad = plug_model(narrow);
    Bytes descriptor(256);
    const int32_t length = velatrix_virtual_report_descriptor(pad, descriptor.data(), 256);
    ASSERT_GT(length, 0);
    descriptor.resize(static_cast<std::size_t>(length));

    std::vector<velatrix_device*> listed = list();
    ASSERT_EQ(listed.size(), 1u);
    velatrix_device* device = listed[0];
    // The driver's own open: the library's open would fail on the missing
    // display information and free the record.
    ASSERT_EQ(device->driver->open_device(device), 1) << last_error();
    const velatrix_real_device* record = host::real(device);
    for (int id = 0; id < 255; ++id) {
        const bool declared = id == 1 || id == 2 || id == 13;
        EXPECT_EQ(record->report_map[id], declared ? 1 : 0) << "report id " << id;
    }

    const uint32_t before = velatrix_virtual_transfer_count(pad);
    uint8_t request[73] = {14};
    EXPECT_EQ(velatrix_hid_get_feature_report(device, request, sizeof request), 0);
    EXPECT_EQ(last_error(), "Report id 14 isn't supported by this device.\n");
    request[0] = 14;
    EXPECT_EQ(velatrix_hid_set_feature_report(device, request, sizeof request), 0);
    EXPECT_EQ(last_error(), "Report id 14 isn't supported by this device.\n");
    request[0] = 100;
    EXPECT_EQ(velatrix_hid_get_feature_report(device, request, 10), 0);
    EXPECT_EQ(last_error(), "Report id 100 isn't supported by this device.\n");
    EXPECT_EQ(velatrix_virtual_transfer_count(pad), before) << "nothing reached the pad";

    // A declared id goes through.
    uint8_t status[73] = {13};
    EXPECT_EQ(velatrix_hid_get_feature_report(device, status, sizeof status), 1) << last_error();
    EXPECT_EQ(status[0], 13);
    EXPECT_EQ(velatrix_virtual_transfer_count(pad), before + 1);
    EXPECT_EQ(device->driver->close_device(device), 1);

    // The library's open reads the display information first and gives up:
    // the record is freed and 0 returned.
    EXPECT_EQ(velatrix_open_device(device), 0);
    forget(device);
}

// VELATRIX_SIMULATE is read when the driver starts and plugs its pads only
// the first time the virtual bus is chosen in a process, so this runs in a
// fresh process of its own.
TEST(E2eEnvironment, SimulateVariablePlugsOnePadPerModelInTurn) {
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    EXPECT_EXIT(
        {
            setenv("VELATRIX_SIMULATE", "3", 1);
            velatrix_init();
            velatrix_device* head = nullptr;
            int ok = velatrix_list_devices(&head) == 1 && velatrix_count_device_list(head) == 3 &&
                     velatrix_virtual_pad_count() == 3 && std::strcmp(head->model, "Quillmark M320") == 0 &&
                     std::strcmp(head->next->model, "Quillmark C800") == 0 &&
                     std::strcmp(head->next->next->model, "Quillmark M320") == 0;
            ok = ok && velatrix_open_device(head->next) == 1 && head->next->display_info.width == 800;
            std::fprintf(stderr, ok ? "simulated pads as expected\n" : "unexpected pads\n");
            std::_Exit(ok ? 0 : 1);
        },
        ::testing::ExitedWithCode(0), "simulated pads as expected");
}

}  // namespace
}  // namespace velatrix::e2e
