// Opening a listed pad by its path, and closing it.
#include <cstdio>
#include <cstring>

#include "debug/log.h"
#include "host/real_device.h"

using namespace velatrix::host;

namespace {

// Ready the private part for a freshly opened interface.
void attach(velatrix_real_device* record, std::unique_ptr<HidInterface> interface) {
    // A read thread left from the last opening (which it closed itself, on
    // a removal) may still be leaving its last read of the old interface:
    // let it end before that interface goes.
    stop_read_thread(record);
    record->hid_device = std::move(interface);
    std::snprintf(record->run_loop_mode, sizeof record->run_loop_mode, "ZEMI_%p",
                  static_cast<void*>(record->hid_device.get()));
    record->unplugged = 0;
    record->spare = 0;
    // Reports left from an earlier opening are stale; the queue starts afresh.
    record->pending_reports.reset();
    record->scheduled = 0;
    if (!fill_hid_report_map(&record->common)) {
        // Without a descriptor nothing is known: let every ordinary id through.
        std::memset(record->report_map, 1, 255);
    }
}

}  // namespace

extern "C" {

int velatrix_real_open_device(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    Enumeration found;
    if (!enumerate_interfaces(found)) return 0;
    const char* wanted = device->path != nullptr ? device->path : "";
    for (const HidInterfaceInfo& info : found.interfaces) {
        if (device_path(info) != wanted) continue;
        int status = 0;
        std::unique_ptr<HidInterface> interface = access_layer().open(info.key, status);
        if (!interface) {
            if (status == 0) status = -1;
            VELATRIX_LOG_IN(velatrix::kLogHost, VELATRIX_LEVEL_WARNING, "Problem opening device: %i", status);
            VELATRIX_REPORT_ERROR_IN(velatrix::kLogHost, "Problem opening device (permissions issue?): %i\n", status);
            return 0;
        }
        attach(real(device), std::move(interface));
        return 1;
    }
    VELATRIX_LOG_IN(velatrix::kLogHost, VELATRIX_LEVEL_WARNING, "Unable to find device with path: %s", wanted);
    VELATRIX_REPORT_ERROR_IN(velatrix::kLogHost, "Unable to find device with path: %s\n", wanted);
    return 0;
}

int velatrix_real_close_device(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    velatrix_real_device* record = real(device);
    // Also after an unplug: the system still holds the node open until it
    // is released. Closing twice is harmless.
    if (record->hid_device != nullptr) record->hid_device->close();
    // A read on another thread wakes from the closed interface; it is let
    // out (its last callbacks included) before the caller frees the lists,
    // and the read-until-done thread is joined.
    if (record->reading.load() != 0 && record->reading_thread.load() != std::this_thread::get_id()) {
        record->reading.wait(1);
    }
    stop_read_thread(record);
    record->run_loop_mode[0] = '\0';
    return 1;
}

}  // extern "C"
