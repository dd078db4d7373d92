// Reading a pad: waiting for input, queueing raw reports, handing them to
// the input callbacks, removal, and the read-until-done thread.
#include <chrono>
#include <cstdlib>
#include <cstring>

#include "debug/log.h"
#include "host/real_device.h"
#include "protocol/input_dispatch.h"
#include "velatrix/host.h"

using namespace velatrix::host;

namespace {

// One wait for input lasts at most this long, so a read thread notices a
// close within about a second.
constexpr std::chrono::milliseconds kReadWait{1000};

void drain_pending_reports(velatrix_real_device* record) {
    PendingReports& queue = record->pending_reports;
    for (std::size_t i = 0; i < queue.size(); ++i) {
        const std::span<const uint8_t> report = queue.at(i);
        velatrix::dispatch_input_report(&record->common, report.data(), static_cast<uint32_t>(report.size()));
    }
    queue.clear();
}

// Marks the record as being read by this thread for the mark's lifetime.
class ReadingMark {
public:
    explicit ReadingMark(velatrix_real_device* record) : record_(record) {
        record_->reading_thread.store(std::this_thread::get_id());
        record_->reading.store(1);
    }
    ~ReadingMark() {
        record_->reading.store(0);
        record_->reading.notify_all();
    }
    ReadingMark(const ReadingMark&) = delete;
    ReadingMark& operator=(const ReadingMark&) = delete;

private:
    velatrix_real_device* record_;
};

void read_thread_main(velatrix_device* device) {
    velatrix_real_device* record = real(device);
    while (!record->read_stop.load() && is_open(device)) {
        if (velatrix_device_read(device) != 1) break;
    }
}

}  // namespace

namespace velatrix::host {

void stop_read_thread(velatrix_real_device* record) {
    if (!record->read_thread.started() || record->read_thread.is_current()) return;
    record->read_stop.store(1);
    if (record->hid_device != nullptr) record->hid_device->close();
    record->read_thread.join();
}

}  // namespace velatrix::host

extern "C" {

void velatrix_linux_read_callback(velatrix_device* device, int status, const uint8_t* report, uint32_t length) {
    if (status != 0) return;
    velatrix_debug_write_trace(report, length, 1);
    real(device)->pending_reports.push(std::span<const uint8_t>(report, length));
}

void velatrix_linux_unplug_callback(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    real(device)->unplugged = 1;
    velatrix_close_device(device);
    velatrix_device_notify_close(device);
}

int velatrix_real_device_read(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    if (device == nullptr || !is_open(device)) {
        VELATRIX_REPORT_ERROR_IN(velatrix::kLogHost, "Device is not open");
        VELATRIX_LOG_IN(velatrix::kLogHost, VELATRIX_LEVEL_INFO, "Device is not open: open: %hhu, path: %s",
                        static_cast<unsigned char>(device != nullptr ? device->open : 0),
                        device != nullptr && device->path != nullptr ? device->path : "(null)");
        return 0;
    }
    velatrix_real_device* record = real(device);
    ReadingMark reading(record);
    if (!record->scheduled) {
        record->scheduled = 1;
        VELATRIX_LOG_IN(velatrix::kLogHost, VELATRIX_LEVEL_FINE, "Reading device %s on input source %s", device->path,
                        record->run_loop_mode);
    }
    // A close that began before the mark was set did not wait for this
    // read: it must not touch the interface or the lists any more.
    if (record->hid_device != nullptr && is_open(device)) {
        InputResult result = record->hid_device->wait_input(kReadWait, [record](std::span<const uint8_t> report) {
            // The report lands in the record's input buffer first, as the
            // input source of the device always places it there.
            const uint32_t length = static_cast<uint32_t>(std::min(report.size(), sizeof record->input_buffer));
            std::memcpy(record->input_buffer, report.data(), length);
            velatrix_linux_read_callback(&record->common, 0, record->input_buffer, length);
        });
        if (result.status == InputStatus::gone) {
            velatrix_linux_unplug_callback(device);
        } else if (result.status == InputStatus::failed) {
            VELATRIX_LOG_IN(velatrix::kLogHost, VELATRIX_LEVEL_WARNING, "Problem reading device %s (errno: %i): %s",
                            device->path, result.error, std::strerror(result.error));
        }
    }
    if (is_open(device)) drain_pending_reports(record);
    if (is_open(device)) return 1;
    VELATRIX_REPORT_ERROR_IN(velatrix::kLogHost, "Device is not open after read");
    VELATRIX_LOG_IN(velatrix::kLogHost, VELATRIX_LEVEL_INFO, "Device is not open after read: open: %hhu, path: %s",
                    device->open, device->path != nullptr ? device->path : "(null)");
    return 0;
}

void velatrix_device_read_until_done(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    if (device == nullptr) return;
    velatrix_real_device* record = real(device);
    // One reader per device: a second would share the first one's queue.
    if (record->read_thread.started()) {
        VELATRIX_LOG_IN(velatrix::kLogHost, VELATRIX_LEVEL_INFO, "Read thread already started: device: %p",
                        static_cast<void*>(device));
        return;
    }
    record->read_stop.store(0);
    if (!record->read_thread.start([device] { read_thread_main(device); })) return;
    VELATRIX_LOG_IN(velatrix::kLogHost, VELATRIX_LEVEL_INFO, "Successfully created read thread: device: %p, thread: %p",
                    static_cast<void*>(device), reinterpret_cast<void*>(record->read_thread.native_handle()));
}

void velatrix_device_read_done(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    if (device == nullptr) return;
    velatrix_real_device* record = real(device);
    if (!record->read_thread.started()) return;
    // Stop the reader before the record is closed under it, so that no two
    // threads touch the record at the same time.
    stop_read_thread(record);
    if (device->open) velatrix_close_device(device);
}

}  // extern "C"
