// Hot-plug callbacks as the application sees them: pads plugged into and
// pulled out of the virtual bus while the driver's monitor runs. The
// monitor waits a second after every change before it lists the pads.
#include <condition_variable>
#include <mutex>

#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

using namespace std::chrono_literals;

struct Event {
    int callback;
    uint32_t event;
    std::string path;
    bool operator==(const Event&) const = default;
};

std::ostream& operator<<(std::ostream& out, const Event& e) {
    return out << "{callback " << e.callback << ", event " << e.event << ", " << e.path << "}";
}

std::mutex events_mutex;
std::condition_variable events_changed;
std::vector<Event> events;

void record(int callback, uint32_t event, const char* path) {
    std::lock_guard lock(events_mutex);
    events.push_back(Event{callback, event, path != nullptr ? path : "(null)"});
    events_changed.notify_all();
}

int first_hotplug(uint32_t event, const char* path) {
    record(1, event, path);
    return 0;
}

int second_hotplug(uint32_t event, const char* path) {
    record(2, event, path);
    return 0;
}

// Waits until `count` events have come (or the timeout passed) and takes them.
std::vector<Event> take_events(std::size_t count, std::chrono::milliseconds timeout) {
    std::unique_lock lock(events_mutex);
    events_changed.wait_for(lock, timeout, [count] { return events.size() >= count; });
    std::vector<Event> taken;
    taken.swap(events);
    return taken;
}

// The callback list has no lock of its own: it may be changed only while
// the monitor is idle, parked in its wait on the bus. This gives it the
// time to get there; asking the bus afterwards orders the monitor's last
// look at the list before whatever this thread does next.
void let_monitor_settle(std::chrono::milliseconds time = 50ms) {
    std::this_thread::sleep_for(time);
    velatrix_virtual_pad_count();
}

class E2eHotplug : public E2e {
protected:
    void SetUp() override {
        E2e::SetUp();
        take_events(0, 0ms);
        let_monitor_settle();
    }
    void TearDown() override {
        E2e::TearDown();
        take_events(0, 0ms);
    }
};

TEST_F(E2eHotplug, PlugAndUnplugOfAPadReachEveryCallbackWithItsPath) {
    velatrix_register_hotplug_callback(first_hotplug);
    velatrix_register_hotplug_callback(second_hotplug);
    const velatrix_virtual_pad pad = plug("mono-320");
    const std::string path = expected_path(pad);

    std::vector<Event> seen = take_events(2, 4s);
    EXPECT_EQ(seen, (std::vector<Event>{{1, VELATRIX_HOTPLUG_ADDED, path}, {2, VELATRIX_HOTPLUG_ADDED, path}}));

    ASSERT_EQ(velatrix_virtual_unplug(pad), 1);
    seen = take_events(2, 4s);
    EXPECT_EQ(seen, (std::vector<Event>{{1, VELATRIX_HOTPLUG_REMOVED, path}, {2, VELATRIX_HOTPLUG_REMOVED, path}}));
}

TEST_F(E2eHotplug, NothingIsToldWithoutCallbacksNorForAnotherVendorsDevice) {
    // A callback registered and taken away again leaves an empty list: a
    // change is then not even looked at, so no listing moves the snapshots.
    velatrix_register_hotplug_callback(first_hotplug);
    velatrix_unregister_hotplug_callback(first_hotplug);
    const velatrix_virtual_pad unheard = plug("color-800");
    std::this_thread::sleep_for(1500ms);
    EXPECT_TRUE(take_events(0, 0ms).empty());
    const host::PathChanges changes = host::diff_path_snapshots();
    EXPECT_TRUE(changes.added.empty()) << "no listing after the change";
    EXPECT_TRUE(changes.removed.empty());

    // The application lists now, so the colour pad is known; then a device
    // of another vendor comes and goes unnoticed.
    ASSERT_EQ(list().size(), 1u);
    let_monitor_settle(0ms);
    velatrix_register_hotplug_callback(first_hotplug);
    const PadModel& foreign = derived_model("color-800", [](PadModel& m) {
        m.name = "foreign-hotplug";
        m.vendor_id = static_cast<uint16_t>(VELATRIX_VENDOR_ID_VALUE) ^ 0x0F0F;
    });
    plug_model(foreign);
    EXPECT_TRUE(take_events(1, 1500ms).empty());

    // The monitor is alive: the next pad is told, and only that one.
    const velatrix_virtual_pad heard = plug("mono-320");
    EXPECT_EQ(take_events(1, 4s), (std::vector<Event>{{1, VELATRIX_HOTPLUG_ADDED, expected_path(heard)}}));
    EXPECT_NE(expected_path(heard), expected_path(unheard));
}

}  // namespace
}  // namespace velatrix::e2e
