#include <gtest/gtest.h>

#include <string>
#include <tuple>
#include <vector>

#include "input_test_util.h"
#include "protocol/input_dispatch.h"
#include "support/fake_pad.h"
#include "support/log_capture.h"
#include "velatrix/error.h"

namespace velatrix::testing {
namespace {

struct Call {
    int callback;
    velatrix_device* device;
    int type;
    uint8_t record_type;
    uint16_t x;
    std::vector<uint8_t> raw;
};
std::vector<Call> calls;

template <int N>
int record_call(velatrix_device* device, const velatrix_input_report* record, int type, const uint8_t* buffer,
                uint32_t length) {
    calls.push_back(
        {N, device, type, record->type, record->data.coordinate.x, std::vector<uint8_t>(buffer, buffer + length)});
    return 0;
}

std::vector<int> callback_order() {
    std::vector<int> order;
    for (const Call& call : calls) order.push_back(call.callback);
    return order;
}

const std::vector<uint8_t> kCoordinate = {1, 0x11, 0x39, 0x05, 0x10, 0x00, 0xAA};

class InputCallbacks : public FakePad {
protected:
    void SetUp() override { calls.clear(); }
    void open() { device->input_callbacks = velatrix_create_list(); }
    void TearDown() override {
        velatrix_list_free(device->input_callbacks);
        device->input_callbacks = nullptr;
    }
};

TEST_F(InputCallbacks, CalledInRegistrationOrderTwiceWhenRegisteredTwice) {
    open();
    velatrix_register_input_callback(device, record_call<1>);
    velatrix_register_input_callback(device, record_call<2>);
    velatrix_register_input_callback(device, record_call<1>);

    dispatch_input_report(device, kCoordinate.data(), static_cast<uint32_t>(kCoordinate.size()));
    ASSERT_EQ(callback_order(), (std::vector<int>{1, 2, 1}));
    for (const Call& call : calls) {
        EXPECT_EQ(std::tuple(call.device, call.type, call.record_type, call.x),
                  std::tuple(device, VELATRIX_INPUT_COORDINATE, VELATRIX_INPUT_COORDINATE, 0x0539));
        EXPECT_EQ(call.raw, kCoordinate);  // the raw report as it came, longer than its minimum
    }

    // One unregister takes out the oldest registration only.
    calls.clear();
    velatrix_unregister_input_callback(device, record_call<1>);
    dispatch_input_report(device, kCoordinate.data(), static_cast<uint32_t>(kCoordinate.size()));
    EXPECT_EQ(callback_order(), (std::vector<int>{2, 1}));

    // Removing a callback that is not there is not an error.
    calls.clear();
    velatrix_report_error_internal("%s", "untouched");
    velatrix_unregister_input_callback(device, record_call<3>);
    EXPECT_STREQ(velatrix_get_last_error(), "untouched");
    EXPECT_EQ(velatrix_list_count(device->input_callbacks), 2u);
}

TEST_F(InputCallbacks, ButtonEventsKeepTheirTypeAndUnparsableReportsReachNoCallback) {
    open();
    RegionTable table(device, {VELATRIX_REGION_BUTTON});
    velatrix_register_input_callback(device, record_call<1>);
    const std::vector<uint8_t> down = extended(true, 77, 1, 1);
    dispatch_input_report(device, down.data(), static_cast<uint32_t>(down.size()));
    ASSERT_EQ(calls.size(), 1u);
    EXPECT_EQ(calls[0].type, VELATRIX_INPUT_BUTTON_DOWN);
    EXPECT_EQ(calls[0].raw, down);

    calls.clear();
    const std::vector<uint8_t> short_report = {1, 0x11, 0, 0, 0};
    const std::vector<uint8_t> unknown = {99, 0, 0, 0, 0, 0, 0, 0};
    dispatch_input_report(device, short_report.data(), static_cast<uint32_t>(short_report.size()));
    velatrix_get_driver_input_report(device, unknown.data(), static_cast<uint32_t>(unknown.size()));
    dispatch_input_report(device, nullptr, 0);
    EXPECT_TRUE(calls.empty());
}

TEST_F(InputCallbacks, DriverServiceDispatchesLikeTheReadAndParsesForAClosedDevice) {
    // A closed device has no list: registering stores nothing, unregistering
    // is harmless, and the report is still parsed (the button state moves on).
    RegionTable table(device, {VELATRIX_REGION_BUTTON});
    velatrix_register_input_callback(device, record_call<1>);
    velatrix_unregister_input_callback(device, record_call<1>);
    EXPECT_EQ(device->input_callbacks, nullptr);
    const std::vector<uint8_t> down = extended(true, 1, 1, 1);
    velatrix_get_driver_input_report(device, down.data(), static_cast<uint32_t>(down.size()));
    EXPECT_EQ(device->button_active, 1);
    EXPECT_TRUE(calls.empty());

    // Opening makes a new, empty list: the earlier registration is gone.
    open();
    velatrix_unregister_input_callback(device, record_call<1>);  // empty list
    velatrix_get_driver_input_report(device, kCoordinate.data(), static_cast<uint32_t>(kCoordinate.size()));
    EXPECT_TRUE(calls.empty());
    velatrix_register_input_callback(device, record_call<2>);
    velatrix_get_driver_input_report(device, kCoordinate.data(), static_cast<uint32_t>(kCoordinate.size()));
    EXPECT_EQ(callback_order(), (std::vector<int>{2}));
    EXPECT_EQ(calls[0].raw, kCoordinate);
}

TEST_F(InputCallbacks, NullArgumentsAreReportedAndStoreNothing) {
    open();
    velatrix_register_input_callback(nullptr, record_call<1>);
    EXPECT_STREQ(velatrix_get_last_error(), "Parameter passed into velatrix_register_input_callback was null.");
    velatrix_report_error_internal("%s", "untouched");
    velatrix_register_input_callback(device, nullptr);
    EXPECT_STREQ(velatrix_get_last_error(), "Parameter passed into velatrix_register_input_callback was null.");
    EXPECT_EQ(velatrix_list_count(device->input_callbacks), 0u);
    velatrix_unregister_input_callback(nullptr, record_call<1>);
    EXPECT_STREQ(velatrix_get_last_error(), "Parameter passed into velatrix_unregister_input_callback was null.");
}

// ---- Hot-plug callbacks ---------------------------------------------------

std::vector<std::string> hotplug_calls;

template <int N>
int record_hotplug(uint32_t event, const char* path) {
    hotplug_calls.push_back(std::to_string(N) + ":" + std::to_string(event) + ":" + path);
    return 0;
}

void fire_hotplug(uint32_t event, const char* path) {
    for (velatrix_list_node* node = velatrix_get_device_callbacks()->head; node != nullptr; node = node->next) {
        reinterpret_cast<velatrix_hotplug_callback>(node->value)(event, path);
    }
}

TEST(HotplugCallbacks, RegisterInOrderAndUnregisterFirstFromHead) {
    // Before the library starts nothing is stored.
    ASSERT_EQ(velatrix_get_device_callbacks(), nullptr);
    velatrix_register_hotplug_callback(record_hotplug<1>);
    velatrix_unregister_hotplug_callback(record_hotplug<1>);
    EXPECT_EQ(velatrix_get_device_callbacks(), nullptr);

    velatrix_list* list = velatrix_create_list();
    velatrix_set_device_callbacks(list);
    hotplug_calls.clear();
    velatrix_unregister_hotplug_callback(record_hotplug<1>);  // from an empty list
    velatrix_register_hotplug_callback(record_hotplug<1>);
    velatrix_register_hotplug_callback(record_hotplug<2>);
    velatrix_register_hotplug_callback(record_hotplug<1>);
    fire_hotplug(VELATRIX_HOTPLUG_ADDED, "p");
    velatrix_unregister_hotplug_callback(record_hotplug<1>);
    fire_hotplug(VELATRIX_HOTPLUG_REMOVED, "q");
    EXPECT_EQ(hotplug_calls, (std::vector<std::string>{"1:0:p", "2:0:p", "1:0:p", "2:1:q", "1:1:q"}));

    velatrix_register_hotplug_callback(nullptr);
    EXPECT_STREQ(velatrix_get_last_error(), "Parameter passed into velatrix_register_hotplug_callback was null.");
    EXPECT_EQ(velatrix_list_count(list), 2u);
    velatrix_set_device_callbacks(nullptr);
    velatrix_list_free(list);
}

// ---- Unplug ---------------------------------------------------------------

// Every open device with the path is told it is closing (its only trace is
// the log record of the notification); other paths, a prefix of the path,
// no path and no registry of open devices tell nobody.
TEST(DeviceUnplug, NotifiesEveryOpenDeviceWithThePath) {
    FakeDriver fake;
    velatrix_list* open_devices = velatrix_create_list();
    for (const char* path :
         {"USB_f055_0001_ff_00_1100000", "USB_f055_0001_ff_00_1200000", "USB_f055_0001_ff_00_1100000"}) {
        velatrix_list_add(open_devices, fake.make_device(path));
    }
    velatrix_list* previous = velatrix_get_open_devices();
    const auto notified = [](std::initializer_list<const char*> paths) {
        LogCapture log;
        for (const char* path : paths) velatrix_handle_device_unplug(path);
        int found = 0;
        for (const LoggedRecord& r : log.records()) {
            found += r.function == "velatrix_device_notify_close" && r.text == "==> Entering Function";
        }
        return found;
    };
    velatrix_set_open_devices(open_devices);
    EXPECT_EQ(notified({"USB_f055_0001_ff_00_1100000"}), 2);
    EXPECT_EQ(notified({"USB_f055_0001_ff_00_1300000", "USB_f055_0001_ff_00_1", nullptr}), 0);
    velatrix_set_open_devices(nullptr);
    EXPECT_EQ(notified({"USB_f055_0001_ff_00_1100000"}), 0);
    velatrix_list_free(open_devices);
    velatrix_set_open_devices(previous);
}

}  // namespace
}  // namespace velatrix::testing
