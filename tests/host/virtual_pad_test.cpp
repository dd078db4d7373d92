// The built-in driver end to end over virtual pads: listing, opening with
// the library's own open, input through a read thread, removal, hot-plug
// callbacks, and report-map checks against the pad's own descriptor.
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <thread>

#include "driver_fixture.h"
#include "host/linux/hid_identity.h"
#include "support/log_capture.h"
#include "velatrix-virtual.h"
#include "velatrix/host.h"
#include "velatrix/input.h"
#include "virtual/virtual_hid_layer.h"

namespace velatrix::testing {
namespace {

using namespace std::chrono_literals;

std::mutex seen_mutex;
std::vector<std::pair<uint32_t, std::string>> hotplug_seen;
std::vector<velatrix_input_coordinate> pen_seen;

int on_hotplug(uint32_t event, const char* path) {
    std::lock_guard lock(seen_mutex);
    hotplug_seen.emplace_back(event, path);
    return 0;
}

int on_input(velatrix_device*, const velatrix_input_report* record, int type, const uint8_t*, uint32_t) {
    std::lock_guard lock(seen_mutex);
    if (type == VELATRIX_INPUT_COORDINATE || type == VELATRIX_INPUT_EXTENDED_COORDINATE) {
        pen_seen.push_back(record->data.coordinate);
    }
    return 0;
}

template <typename T>
std::vector<T> wait_for(std::vector<T>& seen, std::size_t count, std::chrono::milliseconds timeout) {
    auto deadline = std::chrono::steady_clock::now() + timeout;
    for (;;) {
        {
            std::lock_guard lock(seen_mutex);
            if (seen.size() >= count || std::chrono::steady_clock::now() >= deadline) {
                std::vector<T> result;
                result.swap(seen);
                return result;
            }
        }
        std::this_thread::sleep_for(10ms);
    }
}

// The path as the pad's own identity gives it: usage page and usage are the
// first ones its descriptor names.
std::string expected_path(velatrix_virtual_pad pad) {
    uint8_t descriptor[4096];
    int32_t length = velatrix_virtual_report_descriptor(pad, descriptor, sizeof descriptor);
    auto usage = host::linux_hid::primary_usage(
        std::span<const uint8_t>(descriptor, static_cast<std::size_t>(std::max(length, 0))));
    char path[256];
    std::snprintf(path, sizeof path, "USB_%04x_%04x_%02x_%02x_%x", host::kVendorId, velatrix_virtual_product_id(pad),
                  usage.usage_page, usage.usage, velatrix_virtual_location_id(pad));
    return path;
}

class VirtualPadTest : public ::testing::Test {
protected:
    void SetUp() override {
        host::clear_path_snapshots();
        velatrix_virtual_unplug_all();
        host::set_access_layer(&host::virtual_access_layer(0));
        velatrix_init();
        wait_for(hotplug_seen, 0, 0ms);
        wait_for(pen_seen, 0, 0ms);
    }
    void TearDown() override {
        if (head_ != nullptr) velatrix_free_device_list(head_);
        velatrix_destroy();
        velatrix_virtual_unplug_all();
        host::set_access_layer(nullptr);
        host::clear_path_snapshots();
    }

    velatrix_device* list() {
        if (head_ != nullptr) velatrix_free_device_list(head_);
        head_ = nullptr;
        velatrix_list_devices(&head_);
        return head_;
    }

    velatrix_device* head_ = nullptr;
};

TEST_F(VirtualPadTest, ListsEveryModelWithItsPathAndIdentity) {
    for (uint32_t i = 0; i < velatrix_virtual_model_count(); ++i) {
        ASSERT_NE(velatrix_virtual_plug(velatrix_virtual_model_name(i)), 0);
    }
    velatrix_device* device = list();
    ASSERT_EQ(velatrix_count_device_list(device), velatrix_virtual_model_count());
    for (uint32_t i = 0; device != nullptr; device = device->next, ++i) {
        velatrix_virtual_pad pad = velatrix_virtual_pad_at(i);
        EXPECT_EQ(device->path, expected_path(pad));
        EXPECT_EQ(device->vendor_id, host::kVendorId);
        EXPECT_EQ(device->product_id, velatrix_virtual_product_id(pad));
        EXPECT_EQ(device->driver, &velatrix_real_driver);
    }
}

TEST_F(VirtualPadTest, ReportMapFollowsThePadsDescriptor) {
    velatrix_virtual_pad pad = velatrix_virtual_plug(velatrix_virtual_model_name(0));
    velatrix_device* device = list();
    ASSERT_NE(device, nullptr);
    ASSERT_EQ(velatrix_real_open_device(device), 1);

    uint8_t descriptor[4096];
    int32_t length = velatrix_virtual_report_descriptor(pad, descriptor, sizeof descriptor);
    ASSERT_GT(length, 0);
    uint8_t map[256] = {};
    parse_hid_descriptor(descriptor, static_cast<uint32_t>(length), map);
    EXPECT_EQ(std::memcmp(map, real(device)->report_map, 255), 0);
    ASSERT_EQ(map[13], 1);  // the status report every pad has

    int undeclared = 1;
    while (undeclared < 255 && map[undeclared]) ++undeclared;
    ASSERT_LT(undeclared, 255);
    const uint32_t transfers = velatrix_virtual_transfer_count(pad);
    uint8_t buffer[64] = {static_cast<uint8_t>(undeclared)};
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device, buffer, sizeof buffer), 0);
    EXPECT_EQ(std::string(velatrix_get_last_error()),
              "Report id " + std::to_string(undeclared) + " isn't supported by this device.\n");
    EXPECT_EQ(velatrix_virtual_transfer_count(pad), transfers);
    velatrix_real_close_device(device);
}

TEST_F(VirtualPadTest, OpenReadThreadInputAndReadDone) {
    velatrix_virtual_pad pad = velatrix_virtual_plug(velatrix_virtual_model_name(0));
    velatrix_device* device = list();
    ASSERT_NE(device, nullptr);
    ASSERT_EQ(velatrix_open_device(device), 1) << velatrix_get_last_error();
    velatrix_register_input_callback(device, &on_input);
    velatrix_device_read_until_done(device);

    ASSERT_EQ(velatrix_virtual_pen(pad, 120, 80, 1, 1), 1);
    ASSERT_EQ(velatrix_virtual_pen(pad, 121, 82, 0, 1), 1);
    auto pens = wait_for(pen_seen, 2, 5s);
    ASSERT_EQ(pens.size(), 2u);
    EXPECT_EQ(pens[0].x, 120);
    EXPECT_EQ(pens[0].y, 80);
    EXPECT_EQ(pens[0].tip_switch, 1);
    EXPECT_EQ(pens[1].x, 121);
    EXPECT_EQ(pens[1].tip_switch, 0);

    auto start = std::chrono::steady_clock::now();
    velatrix_device_read_done(device);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1500ms);
    EXPECT_EQ(device->open, 0);
    // Closed records may be opened again.
    ASSERT_EQ(velatrix_open_device(device), 1) << velatrix_get_last_error();
    EXPECT_EQ(velatrix_close_device(device), 1);
}

TEST_F(VirtualPadTest, UnplugWhileReadingClosesTheDevice) {
    velatrix_virtual_pad pad = velatrix_virtual_plug(velatrix_virtual_model_name(0));
    velatrix_device* device = list();
    ASSERT_NE(device, nullptr);
    ASSERT_EQ(velatrix_open_device(device), 1) << velatrix_get_last_error();
    std::thread unplugger([pad] {
        std::this_thread::sleep_for(200ms);
        velatrix_virtual_unplug(pad);
    });
    int result = 1;
    for (int i = 0; i < 10 && result == 1; ++i) result = velatrix_device_read(device);
    unplugger.join();
    EXPECT_EQ(result, 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device is not open after read");
    EXPECT_EQ(device->open, 0);
    EXPECT_EQ(real(device)->unplugged, 1);
}

TEST_F(VirtualPadTest, HotplugCallbacksFollowPlugAndUnplug) {
    velatrix_register_hotplug_callback(&on_hotplug);
    velatrix_virtual_pad pad = velatrix_virtual_plug(velatrix_virtual_model_name(0));
    const std::string path = expected_path(pad);
    auto added = wait_for(hotplug_seen, 1, 5s);
    ASSERT_EQ(added.size(), 1u);
    EXPECT_EQ(added[0], std::make_pair(VELATRIX_HOTPLUG_ADDED, path));

    velatrix_virtual_unplug(pad);
    auto removed = wait_for(hotplug_seen, 1, 5s);
    ASSERT_EQ(removed.size(), 1u);
    EXPECT_EQ(removed[0], std::make_pair(VELATRIX_HOTPLUG_REMOVED, path));
}

}  // namespace
}  // namespace velatrix::testing

namespace velatrix::testing {
namespace {

// The virtual bus is chosen at start-up by velatrix_virtual_simulate or
// else by VELATRIX_SIMULATE, and plugs its pads once per process: every
// case runs in a fresh child process.
TEST(SimulateSelection, CallWinsOverEnvironmentUntilNegative) {
    struct Case {
        const char* name;
        const char* environment;  // VELATRIX_SIMULATE, null: unset
        std::vector<int32_t> calls;
        const char* expected;
    };
    const Case cases[] = {
        {"environment alone", "2", {}, "listed=2 virtual=1 log=\"Simulating 2 virtual pads\""},
        {"call alone", nullptr, {2}, "listed=2 virtual=1 log=\"Simulating 2 virtual pads\""},
        {"call over environment", "1", {0}, "listed=0 virtual=1 log=\"Simulating 0 virtual pads\""},
        {"negative back to environment", "3", {2, -1}, "listed=3 virtual=1 log=\"Simulating 3 virtual pads\""},
        {"negative back to real pads", nullptr, {2, -1}, "virtual=0 log=\"\""},
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EXIT(
            {
                if (c.environment != nullptr) {
                    setenv("VELATRIX_SIMULATE", c.environment, 1);
                } else {
                    unsetenv("VELATRIX_SIMULATE");
                }
                for (int32_t count : c.calls) velatrix_virtual_simulate(count);
                LogCapture log;
                velatrix_init();
                velatrix_device* head = nullptr;
                velatrix_list_devices(&head);
                std::string logged;
                for (const std::string& text : log.texts(VELATRIX_LEVEL_INFO)) {
                    if (text.starts_with("Simulating")) logged = text;
                }
                std::fprintf(stderr, "listed=%u virtual=%d log=\"%s\"\n", velatrix_count_device_list(head),
                             &host::access_layer() == &virtual_pad::bus_hid_layer(), logged.c_str());
                std::_Exit(0);
            },
            ::testing::ExitedWithCode(0), c.expected);
    }
}

}  // namespace
}  // namespace velatrix::testing
