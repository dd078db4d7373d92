// The process-wide registry of open devices, the library's only lock, and
// the hot-plug callback list that drivers reach through their record.
#include "velatrix/device.h"
#include "velatrix/threads.h"

#include "core/hotplug_callbacks.h"
#include "core/open_devices.h"
#include "debug/log.h"

namespace {
velatrix_list* velatrix_open_devices = nullptr;
velatrix_mutex open_mutex;
pthread_once_t open_mutex_init = PTHREAD_ONCE_INIT;

void make_open_mutex() { velatrix_mutex_init(&open_mutex); }
velatrix_list* velatrix_device_callbacks = nullptr;
}  // namespace

namespace velatrix {
void add_open_device(velatrix_device* device) {
    velatrix_lock_open_devices();
    if (velatrix_open_devices == nullptr) velatrix_open_devices = velatrix_create_list();
    velatrix_list_add(velatrix_open_devices, device);
    velatrix_unlock_open_devices();
}

void remove_open_device(velatrix_device* device) {
    velatrix_lock_open_devices();
    velatrix_list_remove_ptr(velatrix_open_devices, device);
    velatrix_unlock_open_devices();
}

std::recursive_mutex& hotplug_callbacks_mutex() {
    static std::recursive_mutex mutex;
    return mutex;
}
}  // namespace velatrix

extern "C" {

// The mutex is made on first use; pthread_once keeps two first users on
// different threads from making it twice.
int velatrix_lock_open_devices(void) {
    pthread_once(&open_mutex_init, make_open_mutex);
    return velatrix_mutex_lock(&open_mutex);
}

int velatrix_unlock_open_devices(void) {
    pthread_once(&open_mutex_init, make_open_mutex);
    return velatrix_mutex_unlock(&open_mutex);
}

velatrix_list* velatrix_get_open_devices(void) { return velatrix_open_devices; }

void velatrix_set_open_devices(velatrix_list* list) {
    velatrix_lock_open_devices();
    velatrix_open_devices = list;
    velatrix_unlock_open_devices();
}

velatrix_list* velatrix_get_device_callbacks(void) {
    std::lock_guard lock(velatrix::hotplug_callbacks_mutex());
    return velatrix_device_callbacks;
}

void velatrix_set_device_callbacks(velatrix_list* list) {
    std::lock_guard lock(velatrix::hotplug_callbacks_mutex());
    velatrix_device_callbacks = list;
}

}  // extern "C"
