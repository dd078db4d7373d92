// The built-in host driver's device record, its private part and the
// driver's operations. The driver reaches the operating system only through
// the HID access layer (hid_host.h).
#pragma once

#include <array>
#include <atomic>
#include <memory>
#include <span>
#include <string>
#include <vector>

#include "host/hid_host.h"
#include "platform/joinable_thread.h"
#include "velatrix/device.h"
#include "velatrix/threads.h"

#define VELATRIX_VENDOR_ID VELATRIX_VENDOR_ID_VALUE

namespace velatrix::host {

// Raw input reports waiting for dispatch, in arrival order. A read queues
// what one wait delivered and then dispatches all of it, so the queue is
// empty between reads: its slots are made once, at open, and reused, and
// the read path allocates nothing per report. Only a single wait that
// delivers more reports than ever before adds slots (the kernel's hidraw
// queue holds 64; the virtual bus may hand over a whole stroke at once).
class PendingReports {
public:
    static constexpr std::size_t kInitialSlots = 64;

    // Drops whatever is queued and readies the slots (at open).
    void reset();
    // Copies one report in (cut to kInputBufferSize).
    void push(std::span<const uint8_t> report);
    std::size_t size() const { return count_; }
    std::span<const uint8_t> at(std::size_t index) const {
        return {slots_[index].bytes.data(), slots_[index].length};
    }
    void clear() { count_ = 0; }

private:
    struct Slot {
        uint32_t length = 0;
        std::array<uint8_t, kInputBufferSize> bytes;
    };
    std::vector<Slot> slots_;
    std::size_t count_ = 0;
};

}  // namespace velatrix::host

// The whole device record this driver makes: the common members, then the
// driver's own. Made with `new velatrix_real_device{}` (the common part
// zeroed) and deleted by velatrix_real_free_device.
struct velatrix_real_device {
    velatrix_device common;
    // The opened interface. Kept (closed) after a close so a reader that is
    // still leaving its wait never meets a freed object; replaced at the
    // next open, deleted with the record.
    std::unique_ptr<velatrix::host::HidInterface> hid_device;
    velatrix::host::PendingReports pending_reports;
    // Name of the device's private input source ("ZEMI_%p"), for the log.
    char run_loop_mode[32];
    uint8_t scheduled;
    uint8_t unplugged;
    uint8_t spare;
    uint8_t input_buffer[velatrix::host::kInputBufferSize];
    uint8_t report_map[256];
    // Asks the read thread to end after its current read.
    std::atomic<uint8_t> read_stop;
    // 1 while a thread is inside velatrix_real_device_read, and which one:
    // a close from another thread waits for it to leave before the record's
    // lists are freed.
    std::atomic<uint8_t> reading;
    std::atomic<std::thread::id> reading_thread;
    // The read-until-done thread. A close from any other thread joins it;
    // one made by the thread itself (a removal it noticed, a callback that
    // closes) leaves it to read_done, the next open or the record's end.
    // Last member: it goes first, before anything it reads.
    velatrix::platform::JoinableThread read_thread;
};

namespace velatrix::host {

inline velatrix_real_device* real(velatrix_device* device) { return reinterpret_cast<velatrix_real_device*>(device); }

// The open flag, read and cleared by different threads (a reader and a
// closer) without a lock.
inline bool is_open(velatrix_device* device) { return std::atomic_ref<uint8_t>(device->open).load() != 0; }

// Ends the read-until-done thread, if there is one, and waits for it: the
// stop flag, then the interface closed so that its wait ends at once. From
// that thread itself nothing happens.
void stop_read_thread(velatrix_real_device* record);

// "%s_%04hx_%04hx_%02x_%02x_%x" of the interface, cut to 255 characters.
std::string device_path(const HidInterfaceInfo& info);

// Is this interface one of the pads the driver takes?
bool is_pad(const HidInterfaceInfo& info);

// Path snapshots of the two latest listings, compared by the hot-plug monitor.
// rotate: old <- new, new <- `paths` (the texts are copied).
void rotate_path_snapshots(const std::vector<std::string>& paths);
struct PathChanges {
    std::vector<std::string> added;    // in the newer listing's order
    std::vector<std::string> removed;  // in the older listing's order
};
PathChanges diff_path_snapshots();
// Frees both snapshots (process end, or a test's clean slate).
void clear_path_snapshots();

// The interfaces present now; false (with the error reported) when the HID
// service could not be asked. Listing and opening both start here.
bool enumerate_interfaces(Enumeration& found);

}  // namespace velatrix::host

extern "C" {

// Driver operations.
int32_t velatrix_real_driver_init(void);
int velatrix_real_driver_destroy(velatrix_device_driver* driver);
int velatrix_real_open_device(velatrix_device* device);
int velatrix_real_close_device(velatrix_device* device);
int velatrix_real_list_devices(velatrix_device_driver* driver, velatrix_device** head);
int velatrix_real_device_read(velatrix_device* device);
int velatrix_real_hid_set_output_report(velatrix_device* device, uint8_t* buffer, uint32_t length);
int velatrix_real_hid_set_feature_report(velatrix_device* device, uint8_t* buffer, uint32_t length);
int velatrix_real_hid_get_feature_report(velatrix_device* device, uint8_t* buffer, uint32_t length);
const char* velatrix_real_get_driver_name(void);
uint8_t velatrix_real_thread_running(void);
int velatrix_real_thread_wait(void);
void velatrix_real_shutdown(void);
int velatrix_real_free_device(velatrix_device* device);

// The report map.
int fill_hid_report_map(velatrix_device* device);
void parse_hid_descriptor(const uint8_t* descriptor, uint32_t length, uint8_t* map);

// Input and removal as the access layer reports them.
void velatrix_linux_read_callback(velatrix_device* device, int status, const uint8_t* report, uint32_t length);
void velatrix_linux_unplug_callback(velatrix_device* device);

// Hot-plug monitor.
void* velatrix_hotplug_thread(void* argument);
void velatrix_linux_device_added(void);
void velatrix_linux_device_removed(void);
void velatrix_linux_device_notify(void);

}  // extern "C"
