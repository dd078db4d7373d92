#include "protocol/input_dispatch.h"

#include <cstring>
#include <vector>

#include "debug/log.h"
#include "velatrix/host.h"
#include "velatrix/input.h"

namespace velatrix {
namespace {

// Walks the list in order. The next node is taken before each call so a
// callback that unregisters itself does not pull the node from under the
// walk.
void call_input_callbacks(velatrix_device* device, const velatrix_input_report& record, const uint8_t* buffer,
                          uint32_t length) {
    if (device == nullptr || device->input_callbacks == nullptr) return;
    const velatrix_list* callbacks = device->input_callbacks;
    velatrix_list_node* node = callbacks->head;
    while (node != nullptr) {
        velatrix_list_node* next = node->next;
        auto callback = reinterpret_cast<velatrix_input_callback>(node->value);
        callback(device, &record, record.type, buffer, length);
        // A callback that closed its device has freed the list with it.
        if (device->input_callbacks != callbacks) return;
        node = next;
    }
}

}  // namespace

void dispatch_input_report(velatrix_device* device, const uint8_t* buffer, uint32_t length) {
    velatrix_input_report record;
    if (!input::parse_input_report_into(device, buffer, length, record)) return;
    call_input_callbacks(device, record, buffer, length);
}

}  // namespace velatrix

extern "C" {

void velatrix_get_driver_input_report(velatrix_device* device, const uint8_t* buffer, uint32_t length) {
    VELATRIX_TRACE_FUNCTION();
    // The read's own path: a driver hands every pen sample through here,
    // and nothing is allocated for it. A device without a callback list
    // (one that is not open) still has the report parsed, so its button
    // state moves on as with a list.
    velatrix::dispatch_input_report(device, buffer, length);
}

void velatrix_handle_device_unplug(const char* path) {
    VELATRIX_TRACE_FUNCTION();
    if (path == nullptr) return;
    // The matches are collected under the registry's lock (a record on the
    // list is alive while the lock is held) and told after it is released:
    // the hook may close the device, which takes the same lock. The hook
    // only names the event; it never reads the record it is given.
    std::vector<velatrix_device*> unplugged;
    velatrix_lock_open_devices();
    if (const velatrix_list* open_devices = velatrix_get_open_devices(); open_devices != nullptr) {
        for (const velatrix_list_node* node = open_devices->head; node != nullptr; node = node->next) {
            auto* device = static_cast<velatrix_device*>(node->value);
            if (device != nullptr && device->path != nullptr && std::strcmp(device->path, path) == 0) {
                unplugged.push_back(device);
            }
        }
    }
    velatrix_unlock_open_devices();
    for (velatrix_device* device : unplugged) velatrix_device_notify_close(device);
}

}  // extern "C"
