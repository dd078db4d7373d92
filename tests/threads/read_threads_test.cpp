// Threads around a pad that is being read: the read interrupted from
// another thread by a close or by the pad's removal, on the caller's own
// read and on the read-until-done thread, while the pad keeps sending; a
// removal notice racing the pad's open and close; and a hot-plug storm
// beside a pad being read, with memory that stays bounded.
// These suites carry the "threads" label and also run under ThreadSanitizer.
#include <condition_variable>
#include <mutex>

#include <malloc.h>

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
// The sanitizers' allocators keep their own count (mallinfo2 sees nothing).
extern "C" std::size_t __sanitizer_get_current_allocated_bytes();
#endif

#include "host/e2e_fixture.h"

namespace velatrix::e2e {
namespace {

using namespace std::chrono_literals;
using Clock = std::chrono::steady_clock;

std::size_t allocated_bytes() {
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    return __sanitizer_get_current_allocated_bytes();
#else
    return mallinfo2().uordblks;
#endif
}

// Input callbacks, with what they must never see: a call once a close from
// another thread has returned, or (removal) once the reading thread itself
// has closed the device.
std::atomic<int> input_calls{0};
std::atomic<int> calls_after_close{0};
std::atomic<bool> close_returned{false};
std::atomic<bool> closed_by_reader{false};

// Starts counting afresh; `by_reader`: the reading thread closes the device.
void reset_input_counts(bool by_reader) {
    input_calls = 0;
    calls_after_close = 0;
    close_returned = false;
    closed_by_reader = by_reader;
}

int count_input(velatrix_device* device, const velatrix_input_report*, int, const uint8_t*, uint32_t) {
    ++input_calls;
    if (close_returned.load() || (closed_by_reader.load() && device->open == 0)) ++calls_after_close;
    return 0;
}

// The pad sends a pen position every millisecond until stopped. It drives
// the pad object directly: that never touches the library's error text.
class Feeder {
public:
    explicit Feeder(velatrix_virtual_pad pad) : pad_(virtual_pad::VirtualBus::instance().find(pad)) {
        thread_ = std::thread([this] {
            for (uint16_t x = 0; !stop_.load(); ++x) {
                pad_->pen(static_cast<uint16_t>(10 + x % 200), 40, true, true);
                std::this_thread::sleep_for(1ms);
            }
        });
    }
    ~Feeder() {
        stop_ = true;
        thread_.join();
    }

private:
    std::shared_ptr<virtual_pad::VirtualPad> pad_;
    std::atomic<bool> stop_{false};
    std::thread thread_;
};

struct Interruption {
    const char* name;
    bool read_thread;  // velatrix_device_read_until_done, else the caller's reads
    bool unplug;       // the pad is pulled out, else the device is closed
};
void PrintTo(const Interruption& how, std::ostream* out) { *out << how.name; }

class InterruptedRead : public E2e, public ::testing::WithParamInterface<Interruption> {};

TEST_P(InterruptedRead, EndsWithItsErrorWithinItsWaitAndNoCallbackAfterTheClose) {
    const Interruption& how = GetParam();
    const std::string model = first_model_with();
    // Interruptions at different points of the one-second wait.
    for (const auto delay : {150ms, 420ms, 730ms}) {
        SCOPED_TRACE("interrupted after " + std::to_string(delay.count()) + " ms");
        reset_input_counts(how.unplug);
        const velatrix_virtual_pad pad = plug(model.c_str());
        velatrix_device* device = open(pad);
        ASSERT_NE(device, nullptr);
        velatrix_register_input_callback(device, count_input);
        Clock::time_point interrupted;
        std::optional<Feeder> feeder(std::in_place, pad);
        auto interrupt = [&] {
            std::this_thread::sleep_for(delay);
            interrupted = Clock::now();
            if (how.unplug) {
                velatrix_virtual_unplug(pad);
            } else {
                EXPECT_EQ(velatrix_close_device(device), 1);
                close_returned = true;
            }
        };

        if (how.read_thread) {
            velatrix_device_read_until_done(device);
            interrupt();
            if (!how.unplug) {
                EXPECT_FALSE(host::real(device)->read_thread.started()) << "the close joined the reader";
            }
            velatrix_device_read_done(device);
            EXPECT_LT(Clock::now() - interrupted, 1500ms) << "joined within the read's wait";
            EXPECT_FALSE(host::real(device)->read_thread.started());
        } else {
            std::thread interrupter(interrupt);
            int result = 1;
            const auto start = Clock::now();
            while (result == 1 && Clock::now() - start < 5s) result = velatrix_device_read(device);
            const auto ended = Clock::now();
            interrupter.join();
            EXPECT_EQ(result, 0);
            EXPECT_EQ(last_error(), "Device is not open after read");
            EXPECT_LT(ended - interrupted, 1000ms) << "the read ends within its wait";
        }
        feeder.reset();
        EXPECT_EQ(device->open, 0);
        EXPECT_EQ(device->input_callbacks, nullptr);
        EXPECT_EQ(velatrix_list_find(velatrix_get_open_devices(), device), nullptr);
        EXPECT_GT(input_calls.load(), 0) << "input flowed before the interruption";
        EXPECT_EQ(calls_after_close.load(), 0);
        velatrix_virtual_unplug(pad);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Threads, InterruptedRead,
    ::testing::Values(Interruption{"CloseDuringRead", false, false}, Interruption{"UnplugDuringRead", false, true},
                      Interruption{"CloseDuringReadThread", true, false},
                      Interruption{"UnplugDuringReadThread", true, true}),
    [](const ::testing::TestParamInfo<Interruption>& info) { return std::string(info.param.name); });

// A removal told while the same pad is opened and closed again and again:
// the walk of the open devices must never meet a node a close is freeing.
TEST_F(E2e, UnplugNoticeRacingOpenAndCloseOfThePad) {
    const velatrix_virtual_pad pad = plug(first_model_with().c_str());
    velatrix_device* device = open(pad);
    ASSERT_NE(device, nullptr);
    const std::string path = device->path;
    std::atomic<bool> stop{false};
    std::atomic<int> notices{0};
    std::thread notifier([&] {
        while (!stop.load()) {
            velatrix_handle_device_unplug(path.c_str());
            ++notices;
        }
    });
    for (int cycle = 0; cycle < 40; ++cycle) {
        if (cycle > 0) {
            ASSERT_EQ(velatrix_open_device(device), 1) << last_error();
        }
        EXPECT_EQ(velatrix_close_device(device), 1);
    }
    stop = true;
    notifier.join();
    EXPECT_GT(notices.load(), 0);
    EXPECT_EQ(velatrix_list_find(velatrix_get_open_devices(), device), nullptr);
}

// Hot-plug events of the storm test: counted, one event on one path waited
// for, and the path that must never be told as removed.
struct HotplugWatch {
    std::mutex mutex;
    std::condition_variable changed;
    std::string wanted;
    uint32_t wanted_event = 0;
    bool seen = false;
    std::string protected_path;
    bool protected_removed = false;
    uint64_t events = 0;
} watch;

int on_hotplug(uint32_t event, const char* path) {
    std::lock_guard lock(watch.mutex);
    ++watch.events;
    if (event == VELATRIX_HOTPLUG_REMOVED && watch.protected_path == path) watch.protected_removed = true;
    if (event == watch.wanted_event && watch.wanted == path) {
        watch.seen = true;
        watch.changed.notify_all();
    }
    return 0;
}

void wait_for(uint32_t event, const std::string& path) {
    std::unique_lock lock(watch.mutex);
    watch.wanted = path;
    watch.wanted_event = event;
    watch.seen = false;
    EXPECT_TRUE(watch.changed.wait_for(lock, 10s, [] { return watch.seen; })) << "event " << event << " for " << path;
}

TEST_F(E2e, AThousandHotplugCyclesBesideAPadBeingReadKeepMemoryBounded) {
    const std::string model = first_model_with();
    // Plugs and unplugs `cycles` pads, letting the hot-plug thread in now
    // and then so that it lists while pads come and go.
    auto storm = [&](int cycles) {
        for (int i = 0; i < cycles; ++i) {
            const velatrix_virtual_pad pad = velatrix_virtual_plug(model.c_str());
            ASSERT_NE(pad, 0);
            ASSERT_EQ(velatrix_virtual_unplug(pad), 1);
            if (i % 100 == 99) std::this_thread::sleep_for(3ms);
        }
    };
    // A marker pad plugged and unplugged after the storm: once both are
    // told, the hot-plug thread has handled everything before them.
    auto settle = [&] {
        const velatrix_virtual_pad marker = plug(model.c_str());
        const std::string path = expected_path(marker);
        wait_for(VELATRIX_HOTPLUG_ADDED, path);
        ASSERT_EQ(velatrix_virtual_unplug(marker), 1);
        wait_for(VELATRIX_HOTPLUG_REMOVED, path);
    };
    const velatrix_virtual_pad pad = plug(model.c_str());
    velatrix_device* device = open(pad);
    ASSERT_NE(device, nullptr);
    {
        std::lock_guard lock(watch.mutex);
        watch.protected_path = expected_path(pad);
    }
    reset_input_counts(false);
    velatrix_register_input_callback(device, count_input);
    velatrix_register_hotplug_callback(on_hotplug);
    velatrix_device_read_until_done(device);

    {
        // The first cycles meet input on the pad being read.
        Feeder feeder(pad);
        storm(200);
    }
    settle();
    const std::size_t before = allocated_bytes();
    storm(1000);
    settle();
    const std::size_t after = allocated_bytes();
    EXPECT_LT(after, before + 4096) << "grew by " << (after - before) << " bytes over a thousand cycles";

    // The pad being read is still open and still delivers input.
    EXPECT_EQ(device->open, 1);
    const int calls = input_calls.load();
    ASSERT_EQ(velatrix_virtual_pen(pad, 20, 20, 1, 1), 1);
    const auto deadline = Clock::now() + 3s;
    while (input_calls.load() == calls && Clock::now() < deadline) std::this_thread::sleep_for(5ms);
    EXPECT_GT(input_calls.load(), calls);
    velatrix_device_read_done(device);
    EXPECT_EQ(calls_after_close.load(), 0);
    std::lock_guard lock(watch.mutex);
    EXPECT_FALSE(watch.protected_removed);
    EXPECT_GE(watch.events, 4u) << "both markers, added and removed";
}

}  // namespace
}  // namespace velatrix::e2e
