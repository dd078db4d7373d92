// A scripted HID access layer for the host driver's failure paths, which
// the virtual bus cannot stage: listing, opening, descriptor and transfer
// errors, input to deliver, and USB changes for the hot-plug thread.
// Thread-safe where the driver's threads meet the test's.
#pragma once

#include <condition_variable>
#include <deque>
#include <map>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "host/hid_host.h"

namespace velatrix::testing {

using Bytes = std::vector<uint8_t>;

// What one interface does once opened; shared by the layer and every
// handle opened on it, so a test can act on it at any time.
struct FakeInterfaceState {
    Bytes descriptor;
    int descriptor_error = 0;
    std::map<uint8_t, Bytes> feature_answers;  // copied over the get buffer
    int transfer_status = 0;                   // non-zero: every transfer fails so
    std::vector<Bytes> sets;                   // every set-feature buffer
    std::vector<Bytes> gets;                   // every get-feature request as offered
    int closes = 0;

    std::mutex mutex;
    std::condition_variable changed;
    std::deque<Bytes> input;
    int waiting = 0;  // readers inside wait_input

    void push_input(Bytes report);
};

class FakeHidLayer final : public host::HidAccessLayer {
public:
    // Adds an interface; its key is its index.
    std::shared_ptr<FakeInterfaceState> add(host::HidInterfaceInfo info, Bytes descriptor = {});
    void remove(std::size_t index);
    void set_enumerate_error(int error) { enumerate_error_ = error; }
    void set_open_error(int error) { open_error_ = error; }
    // Makes watch_usb fail with this errno (0: it works).
    void set_watch_error(int error) { watch_error_ = error; }
    int enumerations() const;

    // USB changes the watch reports, one per wait().
    void push_usb_change(host::UsbChange change);
    bool watch_made() const;
    bool watch_stopped() const;
    // True once the thread that waited on the watch has ended, not merely
    // left its wait.
    bool watcher_ended() const;
    // Blocks until the hot-plug thread waits for a change with none queued.
    bool wait_for_watcher(std::chrono::milliseconds timeout);

    host::Enumeration enumerate() override;
    std::unique_ptr<host::HidInterface> open(const std::string& key, int& error) override;
    std::unique_ptr<host::UsbWatch> watch_usb(int& error) override;

    struct WatchState {
        std::mutex mutex;
        std::condition_variable changed;
        std::deque<host::UsbChange> changes;
        bool stopped = false;
        bool waiting = false;
        bool waiter_ended = false;
    };

private:
    struct Entry {
        host::HidInterfaceInfo info;
        std::shared_ptr<FakeInterfaceState> state;
        bool present = true;
    };
    class Watch;

    mutable std::mutex mutex_;
    std::vector<Entry> entries_;
    int enumerate_error_ = 0;
    int open_error_ = 0;
    int enumerations_ = 0;

    std::shared_ptr<WatchState> watch_ = std::make_shared<WatchState>();
    bool watch_made_ = false;
    int watch_error_ = 0;
};

// An identity of the pads the driver takes (vendor of the build, usage 6).
host::HidInterfaceInfo pad_info(uint16_t product_id, uint32_t location_id);

// Installs the layer for one test and removes it again.
class ScopedLayer {
public:
    explicit ScopedLayer(host::HidAccessLayer& layer) { host::set_access_layer(&layer); }
    ~ScopedLayer() { host::set_access_layer(nullptr); }
};

}  // namespace velatrix::testing
