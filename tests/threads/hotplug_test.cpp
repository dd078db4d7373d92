// The hot-plug thread on the virtual bus: start and stop, the
// settle-then-list dispatch, and the order of added and removed callbacks.
#include <cerrno>
#include <deque>

#include "host/e2e_fixture.h"
#include "support/log_capture.h"
#include "support/recorder.h"

namespace velatrix::e2e {
namespace {

using namespace std::chrono_literals;
using virtual_pad::bus_hid_layer;
using virtual_pad::VirtualBus;

struct Event {
    uint32_t event;
    std::string path;
    bool operator==(const Event&) const = default;
};

testing::Recorder<Event> events;

int record_hotplug(uint32_t event, const char* path) {
    events.add(Event{event, path});
    return 0;
}

// A device of another vendor: the bus tells of it, the driver lists none.
void plug_other_vendor() {
    static std::deque<PadModel> made;
    PadModel& model = made.emplace_back(*virtual_pad::all_models().front());
    model.vendor_id = 0x046D;
    VirtualBus::instance().plug(model);
}

class HotplugTest : public E2e {
protected:
    void SetUp() override {
        events.take(0, 0ms);
        E2e::SetUp();
        // Callbacks are registered only while the thread waits for a change,
        // never while it may walk the list.
        ASSERT_TRUE(idle());
        listings_ = bus_hid_layer().enumerations();
    }
    // True once the hot-plug thread has handled every change and waits again.
    static bool idle() { return VirtualBus::instance().wait_watcher_idle(5s); }
    unsigned listings() const { return bus_hid_layer().enumerations() - listings_; }

    unsigned listings_ = 0;
};

TEST_F(HotplugTest, ThreadRunsFromInitAndEndsSoonAfterDestroy) {
    EXPECT_EQ(velatrix_real_thread_running(), 1);
    EXPECT_EQ(velatrix_real_driver.thread_running(), 1);
    ASSERT_NE(velatrix_get_device_callbacks(), nullptr);
    EXPECT_EQ(velatrix_get_device_callbacks()->head, nullptr);

    // A change is under way (waiting out its settle time) when destroy comes.
    velatrix_register_hotplug_callback(&record_hotplug);
    plug("mono-320");
    std::this_thread::sleep_for(100ms);
    auto start = std::chrono::steady_clock::now();
    velatrix_destroy();
    EXPECT_EQ(velatrix_real_thread_running(), 0);
    EXPECT_EQ(velatrix_get_device_callbacks(), nullptr);
    // The watch is released only after the thread is joined.
    EXPECT_EQ(VirtualBus::instance().watchers(), 0u) << "destroy returns with the hot-plug thread joined";
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
    EXPECT_EQ(listings(), 0u) << "the interrupted change listed nothing";
    EXPECT_TRUE(events.take(1, 0ms).empty());

    // Started again, it runs again.
    velatrix_init();
    EXPECT_EQ(velatrix_real_thread_running(), 1);
    ASSERT_TRUE(idle());
}

TEST_F(HotplugTest, WithoutCallbacksAChangeListsNothing) {
    const velatrix_virtual_pad pad = plug("mono-320");
    ASSERT_TRUE(idle());
    velatrix_virtual_unplug(pad);
    ASSERT_TRUE(idle());
    EXPECT_EQ(listings(), 0u);
}

TEST_F(HotplugTest, AddedPathsComeBeforeRemovedOnesAndOtherDevicesGiveNone) {
    velatrix_register_hotplug_callback(&record_hotplug);
    velatrix_register_hotplug_callback(&record_hotplug);  // called twice per path

    plug_other_vendor();
    ASSERT_TRUE(idle());
    EXPECT_EQ(listings(), 1u) << "a listing, no callback";

    const velatrix_virtual_pad first = plug("mono-320");
    const std::string first_path = expected_path(first);
    EXPECT_EQ(events.take(2, 5s), (std::vector<Event>{{0, first_path}, {0, first_path}}));
    ASSERT_TRUE(idle());

    // One pad leaves while two arrive, within one settle time: both
    // arrivals first, then the departure.
    velatrix_virtual_unplug(first);
    const velatrix_virtual_pad second = plug("color-800");
    const velatrix_virtual_pad third = plug("mono-320");
    const std::string second_path = expected_path(second);
    const std::string third_path = expected_path(third);
    EXPECT_EQ(events.take(6, 5s), (std::vector<Event>{{0, second_path},
                                                      {0, second_path},
                                                      {0, third_path},
                                                      {0, third_path},
                                                      {1, first_path},
                                                      {1, first_path}}));
    ASSERT_TRUE(idle());
    EXPECT_TRUE(events.take(1, 0ms).empty());
}

TEST_F(HotplugTest, AnApplicationListingInBetweenHidesTheArrival) {
    plug("mono-320");
    ASSERT_TRUE(idle());
    EXPECT_EQ(list().size(), 1u);  // the application sees the pad first
    velatrix_register_hotplug_callback(&record_hotplug);
    plug_other_vendor();
    ASSERT_TRUE(idle());
    EXPECT_EQ(listings(), 2u);
    EXPECT_TRUE(events.take(1, 0ms).empty());
}

// Without any USB notification source (no netlink, no udev daemon) the
// driver still starts, lists and stops; only hot-plug callbacks stay silent.
TEST_F(HotplugTest, WithoutNotificationsTheDriverStartsListsAndStopsCleanly) {
    velatrix_destroy();
    bus_hid_layer().fail_watch(EPERM);
    plug("mono-320");
    testing::LogCapture log;
    velatrix_init();
    EXPECT_EQ(velatrix_real_driver.initialised, 1);
    // The missing source is not reported: the monitor just stays quiet.
    EXPECT_TRUE(log.texts(VELATRIX_LEVEL_WARNING).empty());
    EXPECT_EQ(VirtualBus::instance().watchers(), 0u);
    velatrix_register_hotplug_callback(&record_hotplug);
    EXPECT_EQ(list().size(), 1u);
    plug("mono-320");
    std::this_thread::sleep_for(50ms);
    const auto start = std::chrono::steady_clock::now();
    velatrix_destroy();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1s);
    EXPECT_TRUE(events.take(1, 0ms).empty());
    velatrix_init();  // for the fixture's tear-down
}

}  // namespace
}  // namespace velatrix::e2e
