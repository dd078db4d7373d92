// The hot-plug thread: start and stop, the settle-then-list dispatch, and
// the order of added and removed callbacks.
#include <chrono>
#include <thread>

#include "host/driver_fixture.h"
#include "support/log_capture.h"
#include "support/recorder.h"
#include "velatrix/input.h"

namespace velatrix::testing {
namespace {

using namespace std::chrono_literals;

struct Event {
    uint32_t event;
    std::string path;
    bool operator==(const Event&) const = default;
};

Recorder<Event> events;

int record_hotplug(uint32_t event, const char* path) {
    events.add(Event{event, path});
    return 0;
}

class HotplugTest : public ::testing::Test {
protected:
    void SetUp() override {
        host::clear_path_snapshots();
        events.take(0, 0ms);
        velatrix_init();
        ASSERT_TRUE(layer_.watch_made());
        // Callbacks are registered only while the thread waits for a change,
        // never while it may walk the list.
        ASSERT_TRUE(layer_.wait_for_watcher(5s));
    }
    void TearDown() override {
        velatrix_destroy();
        host::clear_path_snapshots();
    }

    // Lets the hot-plug thread handle one change and waits until it is idle again.
    void change(host::UsbChange kind) {
        layer_.push_usb_change(kind);
        ASSERT_TRUE(layer_.wait_for_watcher(5s));
    }

    FakeHidLayer layer_;
    ScopedLayer scoped_{layer_};
};

TEST_F(HotplugTest, ThreadRunsFromInitAndEndsSoonAfterDestroy) {
    EXPECT_EQ(velatrix_real_thread_running(), 1);
    EXPECT_EQ(velatrix_real_driver.thread_running(), 1);
    ASSERT_NE(velatrix_get_device_callbacks(), nullptr);
    EXPECT_EQ(velatrix_get_device_callbacks()->head, nullptr);

    // A change is under way (waiting out its settle time) when destroy comes.
    velatrix_register_hotplug_callback(&record_hotplug);
    layer_.push_usb_change(host::UsbChange::attached);
    std::this_thread::sleep_for(100ms);
    auto start = std::chrono::steady_clock::now();
    velatrix_destroy();
    EXPECT_EQ(velatrix_real_thread_running(), 0);
    EXPECT_EQ(velatrix_get_device_callbacks(), nullptr);
    EXPECT_TRUE(layer_.watch_stopped());
    EXPECT_TRUE(layer_.watcher_ended()) << "destroy returns with the hot-plug thread joined";
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
    EXPECT_EQ(layer_.enumerations(), 0);  // the interrupted change listed nothing
    EXPECT_TRUE(events.take(1, 0ms).empty());

    // Started again, it runs again.
    velatrix_init();
    EXPECT_EQ(velatrix_real_thread_running(), 1);
    ASSERT_TRUE(layer_.wait_for_watcher(5s));
}

TEST_F(HotplugTest, WithoutCallbacksAChangeListsNothing) {
    layer_.add(pad_info(0x0100, 0x01100000));
    change(host::UsbChange::attached);
    change(host::UsbChange::detached);
    EXPECT_EQ(layer_.enumerations(), 0);
}

TEST_F(HotplugTest, AddedPathsComeBeforeRemovedOnesAndOtherDevicesGiveNone) {
    velatrix_register_hotplug_callback(&record_hotplug);
    velatrix_register_hotplug_callback(&record_hotplug);  // called twice per path

    // Another vendor's device: a listing, no callback.
    host::HidInterfaceInfo mouse = pad_info(0x0200, 0x01500000);
    mouse.vendor_id = 0x046D;
    layer_.add(mouse);
    change(host::UsbChange::attached);
    EXPECT_EQ(layer_.enumerations(), 1);

    auto first = pad_info(0x0100, 0x01100000);
    layer_.add(first);  // index 1
    change(host::UsbChange::attached);
    const std::string first_path = host::device_path(first);
    EXPECT_EQ(events.take(2, 5s), (std::vector<Event>{{0, first_path}, {0, first_path}}));

    // One pad leaves while two arrive: both arrivals first, then the departure.
    auto second = pad_info(0x0101, 0x01200000);
    auto third = pad_info(0x0102, 0x01300000);
    layer_.remove(1);
    layer_.add(second);
    layer_.add(third);
    change(host::UsbChange::detached);
    const std::string second_path = host::device_path(second);
    const std::string third_path = host::device_path(third);
    EXPECT_EQ(events.take(6, 5s), (std::vector<Event>{{0, second_path},
                                                           {0, second_path},
                                                           {0, third_path},
                                                           {0, third_path},
                                                           {1, first_path},
                                                           {1, first_path}}));
    EXPECT_EQ(layer_.enumerations(), 3);
}

TEST_F(HotplugTest, AnApplicationListingInBetweenHidesTheArrival) {
    velatrix_register_hotplug_callback(&record_hotplug);
    layer_.add(pad_info(0x0100, 0x01100000));
    velatrix_device* head = nullptr;
    velatrix_list_devices(&head);  // the application sees the pad first
    EXPECT_EQ(velatrix_count_device_list(head), 1u);
    velatrix_free_device_list(head);
    change(host::UsbChange::attached);
    EXPECT_EQ(layer_.enumerations(), 2);
    EXPECT_TRUE(events.take(1, 0ms).empty());
}


// Without any USB notification source (no netlink, no udev daemon) the
// driver still starts, lists and stops; only hot-plug callbacks stay silent.
TEST(HotplugWithoutNotifications, DriverStartsListsAndStopsCleanly) {
    host::clear_path_snapshots();
    FakeHidLayer layer;
    layer.set_watch_error(EPERM);
    layer.add(pad_info(0x0100, 0x01100000));
    ScopedLayer scoped(layer);
    LogCapture log;
    velatrix_init();
    EXPECT_EQ(velatrix_real_driver.initialised, 1);
    // The missing source is not reported: the monitor just stays quiet.
    EXPECT_TRUE(log.texts(VELATRIX_LEVEL_WARNING).empty());
    velatrix_register_hotplug_callback(&record_hotplug);
    velatrix_device* head = nullptr;
    ASSERT_EQ(velatrix_list_devices(&head), 1);
    EXPECT_EQ(velatrix_count_device_list(head), 1u);
    velatrix_free_device_list(head);
    const auto start = std::chrono::steady_clock::now();
    velatrix_destroy();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
    EXPECT_TRUE(events.take(1, 0ms).empty());
}

}  // namespace
}  // namespace velatrix::testing
