// Device chains: listing through every initialised driver, counting,
// freeing, and forwarding reads to the device's driver.
#include "velatrix/device.h"

#include "debug/log.h"

extern "C" {

int velatrix_list_devices(velatrix_device** head) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_device* first = nullptr;
    velatrix_device* last = nullptr;
    for (velatrix_list_node* node = velatrix_driver_list != nullptr ? velatrix_driver_list->head : nullptr;
         node != nullptr; node = node->next) {
        auto* driver = static_cast<velatrix_device_driver*>(node->value);
        if (!driver->initialised) continue;
        velatrix_device* chain = nullptr;
        driver->list_devices(driver, &chain);
        if (chain == nullptr) continue;
        (last != nullptr ? last->next : first) = chain;
        last = chain;
        while (last->next != nullptr) last = last->next;
    }
    if (head != nullptr) {
        *head = first;
    } else {
        // Nobody to hand the chain to: it would leak.
        velatrix_free_device_list(first);
    }
    return 1;
}

uint32_t velatrix_count_device_list(const velatrix_device* head) {
    VELATRIX_TRACE_FUNCTION();
    uint32_t count = 0;
    for (const velatrix_device* device = head; device != nullptr; device = device->next) ++count;
    return count;
}

void velatrix_free_device_list(velatrix_device* head) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_device* device = head;
    while (device != nullptr) {
        velatrix_device* next = device->next;
        velatrix_lock_open_devices();
        velatrix_list_remove_ptr(velatrix_get_open_devices(), device);
        velatrix_unlock_open_devices();
        device->driver->free_device(device);
        device = next;
    }
}

int velatrix_device_read(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr) {
        VELATRIX_REPORT_ERROR("Parameter passed into velatrix_device_read was null.");
        return 0;
    }
    return device->driver->device_read(device);
}

velatrix_device* velatrix_device_ptr_from_jlong(int64_t handle) {
    return reinterpret_cast<velatrix_device*>(static_cast<intptr_t>(handle));
}

void* velatrix_void_ptr_from_jlong(int64_t handle) { return reinterpret_cast<void*>(static_cast<intptr_t>(handle)); }

int64_t velatrix_void_ptr_to_jlong(const void* pointer) {
    return static_cast<int64_t>(reinterpret_cast<intptr_t>(pointer));
}

}  // extern "C"
