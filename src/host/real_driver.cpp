// The built-in driver record ("REAL"), listing pads and freeing their records.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <algorithm>
#include <new>

#include "debug/log.h"
#include "host/real_device.h"
#include "velatrix/regions.h"
#include "velatrix/modes.h"

namespace velatrix::host {

namespace {

char* copy_text(const std::optional<std::string>& text) { return text ? strdup(text->c_str()) : nullptr; }

velatrix_real_device* make_record(const HidInterfaceInfo& info, velatrix_device_driver* driver) {
    auto* record = new (std::nothrow) velatrix_real_device{};
    if (record == nullptr) return nullptr;
    velatrix_device& device = record->common;
    device.path = static_cast<char*>(std::calloc(1, 256));
    if (device.path != nullptr) std::snprintf(device.path, 256, "%s", device_path(info).c_str());
    device.product_id = info.product_id;
    device.vendor_id = info.vendor_id;
    device.manufacturer = copy_text(info.manufacturer);
    device.model = copy_text(info.product);
    device.driver = driver;
    return record;
}

}  // namespace

void PendingReports::reset() {
    count_ = 0;
    if (slots_.size() < kInitialSlots) slots_.resize(kInitialSlots);
}

void PendingReports::push(std::span<const uint8_t> report) {
    if (count_ == slots_.size()) slots_.emplace_back();
    Slot& slot = slots_[count_++];
    slot.length = static_cast<uint32_t>(std::min(report.size(), slot.bytes.size()));
    std::memcpy(slot.bytes.data(), report.data(), slot.length);
}

}  // namespace velatrix::host

using namespace velatrix::host;

namespace velatrix::host {

bool enumerate_interfaces(Enumeration& found) {
    found = access_layer().enumerate();
    if (found.error == 0) return true;
    VELATRIX_REPORT_ERROR_IN(velatrix::kLogHost, "Problem initializing hid manager (%i): %s\n", found.error,
                             std::strerror(found.error));
    return false;
}

}  // namespace velatrix::host

extern "C" {

int velatrix_real_list_devices(velatrix_device_driver* driver, velatrix_device** head) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    Enumeration found;
    if (!enumerate_interfaces(found)) return 0;
    if (driver == nullptr) driver = &velatrix_real_driver;
    std::vector<std::string> paths;
    velatrix_device* first = nullptr;
    velatrix_device* last = nullptr;
    for (const HidInterfaceInfo& info : found.interfaces) {
        if (!is_pad(info)) continue;
        velatrix_real_device* record = make_record(info, driver);
        if (record == nullptr) break;
        paths.push_back(record->common.path != nullptr ? record->common.path : "");
        (last != nullptr ? last->next : first) = &record->common;
        last = &record->common;
    }
    rotate_path_snapshots(paths);
    if (head != nullptr) *head = first;
    return 1;
}

int velatrix_real_free_device(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    if (device == nullptr) return 1;
    velatrix_real_device* record = real(device);
    // A read thread still running would read a freed record: end it first
    // (unless this is that thread itself, inside an input callback).
    stop_read_thread(record);
    std::free(device->manufacturer);
    std::free(device->model);
    std::free(device->path);
    velatrix_free_regions(device->regions);
    velatrix_free_device_uuid(device->uuid);
    velatrix_list_free(device->input_callbacks);
    delete record;
    return 1;
}

const char* velatrix_real_get_driver_name(void) { return "REAL"; }

void velatrix_real_shutdown(void) {}

// The core services stay null here: registration fills them.
velatrix_device_driver velatrix_real_driver = {
    .init = velatrix_real_driver_init,
    .destroy = velatrix_real_driver_destroy,
    .open_device = velatrix_real_open_device,
    .close_device = velatrix_real_close_device,
    .list_devices = velatrix_real_list_devices,
    .device_read = velatrix_real_device_read,
    .set_output_report = velatrix_real_hid_set_output_report,
    .set_feature_report = velatrix_real_hid_set_feature_report,
    .get_feature_report = velatrix_real_hid_get_feature_report,
    .get_driver_name = velatrix_real_get_driver_name,
    .thread_running = velatrix_real_thread_running,
    .thread_wait = velatrix_real_thread_wait,
    .initialised = 0,
    .shutdown = velatrix_real_shutdown,
    .get_device_callbacks = nullptr,
    .free_device = velatrix_real_free_device,
    .report_error = nullptr,
    .debug_report_message = nullptr,
    .driver_input_report = nullptr,
};

}  // extern "C"
