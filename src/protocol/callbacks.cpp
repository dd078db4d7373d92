// Registration of input callbacks (per open device) and hot-plug callbacks
// (process-wide). The lists hold the function pointers themselves and are
// not locked: callers register while no dispatch is running.
#include "core/hotplug_callbacks.h"
#include "debug/log.h"
#include "velatrix/device.h"
#include "velatrix/input.h"

namespace velatrix {
namespace {

template <typename Callback>
void* as_value(Callback callback) {
    return reinterpret_cast<void*>(callback);
}

// Both lists are emptied the same way; the result is the line the calling
// API function logs. A callback that is not in the list is not an error:
// there is nothing left to remove.
const char* remove_callback(velatrix_list* list, const void* value) {
    if (list == nullptr || list->head == nullptr) return "Callbacks list is empty, nothing to remove.";
    velatrix_list_remove_ptr(list, value);
    return "Successfully removed callback.";
}

}  // namespace
}  // namespace velatrix

extern "C" {

void velatrix_register_input_callback(velatrix_device* device, velatrix_input_callback callback) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr || callback == nullptr) {
        VELATRIX_REPORT_ERROR("Parameter passed into velatrix_register_input_callback was null.");
        return;
    }
    // A closed device has no list: nothing is stored, yet the line is
    // logged all the same.
    velatrix_list_add(device->input_callbacks, velatrix::as_value(callback));
    VELATRIX_LOG(VELATRIX_LEVEL_INFO, "Successfully added input callback to list.");
}

void velatrix_unregister_input_callback(velatrix_device* device, velatrix_input_callback callback) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr) {
        VELATRIX_REPORT_ERROR("Parameter passed into velatrix_unregister_input_callback was null.");
        return;
    }
    VELATRIX_LOG(VELATRIX_LEVEL_INFO, "%s",
                 velatrix::remove_callback(device->input_callbacks, velatrix::as_value(callback)));
}

void velatrix_register_hotplug_callback(velatrix_hotplug_callback callback) {
    VELATRIX_TRACE_FUNCTION();
    if (callback == nullptr) {
        VELATRIX_REPORT_ERROR("Parameter passed into velatrix_register_hotplug_callback was null.");
        return;
    }
    // Before the built-in driver's init there is no list and nothing is
    // stored; the line is logged all the same.
    {
        std::lock_guard lock(velatrix::hotplug_callbacks_mutex());
        velatrix_list_add(velatrix_get_device_callbacks(), velatrix::as_value(callback));
    }
    VELATRIX_LOG(VELATRIX_LEVEL_INFO, "Successfully added hotplug callback to list.");
}

void velatrix_unregister_hotplug_callback(velatrix_hotplug_callback callback) {
    VELATRIX_TRACE_FUNCTION();
    const char* outcome = nullptr;
    {
        std::lock_guard lock(velatrix::hotplug_callbacks_mutex());
        outcome = velatrix::remove_callback(velatrix_get_device_callbacks(), velatrix::as_value(callback));
    }
    VELATRIX_LOG(VELATRIX_LEVEL_INFO, "%s", outcome);
}

}  // extern "C"
