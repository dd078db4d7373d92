// Opening and closing a listed pad: the driver opens the HID device, the
// pad is given time to finish initialising, and what every later operation
// needs is cached in the record.
#include <unistd.h>

#include <atomic>
#include <cstdlib>

#include "core/open_devices.h"
#include "velatrix/device.h"
#include "velatrix/fonts.h"
#include "velatrix/host.h"
#include "velatrix/info_reports.h"
#include "velatrix/modes.h"
#include "velatrix/regions.h"

#include "debug/log.h"
#include "protocol/request_epoch.h"

namespace {

// At most 50 polls of 100 ms: a pad still initialising after five seconds
// is opened anyway.
constexpr unsigned kInitialisingPollMs = 100;
constexpr unsigned kInitialisingLimitMs = 5000;

void wait_while_initialising(velatrix_device* device) {
    bool initialising = true;
    for (unsigned waited = 0; initialising && waited < kInitialisingLimitMs; waited += kInitialisingPollMs) {
        velatrix_hid_feature_device_status status{};
        velatrix_get_device_status_ref(device, &status);
        if (status.report_id == 0) break;
        initialising = status.is_initializing != 0;
        usleep(kInitialisingPollMs * 1000);
    }
}

void cache_device_description(velatrix_device* device) {
    device->display_info = velatrix_get_display_info(device);
    device->version = velatrix_get_version(device);
    device->regions = velatrix_get_regions(device);
    device->uuid = velatrix_get_device_uuid(device);
    if (device->font == nullptr) device->font = &velatrix_default;
}

bool description_complete(const velatrix_device* device) {
    return device->display_info.report_id != 0 && device->version.report_id != 0 && device->uuid != nullptr &&
           device->regions != nullptr;
}

}  // namespace

extern "C" {

void velatrix_device_notify_close(velatrix_device* device) {
    velatrix_debug_report_message(__func__, ::velatrix::kLogHost, __LINE__, VELATRIX_LEVEL_FINEST,
                                  "==> Entering Function");
}

int velatrix_open_device(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr) {
        VELATRIX_REPORT_ERROR("Parameter passed into velatrix_open_device was null.");
        return 0;
    }
    if (device->open) {
        VELATRIX_REPORT_ERROR("Device is already open.");
        return 0;
    }
    const int opened = device->driver->open_device(device);
    if (opened != 1) return opened;

    device->open = 1;
    wait_while_initialising(device);
    device->input_callbacks = velatrix_create_list();
    cache_device_description(device);
    if (description_complete(device)) {
        velatrix::add_open_device(device);
        return 1;
    }
    // The pad could not describe itself: give the handle back and free the
    // record (and whatever follows it in its chain), as the caller was told.
    device->driver->close_device(device);
    velatrix_free_device_list(device);
    return 0;
}

int velatrix_close_device(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr) {
        // The message names the open function; callers match on it.
        VELATRIX_REPORT_ERROR("Parameter passed into velatrix_open_device was null.");
        return 0;
    }
    // A reader on another thread (or the removal it reports) may close at
    // the same moment: exactly one close goes on.
    uint8_t was_open = 1;
    if (!std::atomic_ref<uint8_t>(device->open).compare_exchange_strong(was_open, 0)) {
        VELATRIX_REPORT_ERROR("Device is already closed.");
        return 0;
    }
    velatrix::protocol::note_request(device);
    velatrix_device_notify_close(device);
    // The driver first: it lets a read still running on another thread end
    // before the lists that read walks are freed.
    const int result = device->driver->close_device(device);
    velatrix_list_free(device->input_callbacks);
    device->input_callbacks = nullptr;
    velatrix_free_regions(device->regions);
    device->regions = nullptr;
    velatrix_free_device_uuid(device->uuid);
    device->uuid = nullptr;
    velatrix::remove_open_device(device);
    return result;
}

}  // extern "C"
