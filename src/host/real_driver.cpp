// Interim built-in driver: behaves as a host with no pads attached. It is
// replaced by the driver over the HID access layer.
#include <cstdlib>

#include "velatrix/device.h"

#include "debug/log.h"

namespace {
int32_t real_init() { return 1; }
int real_destroy(velatrix_device_driver*) { return 1; }
int real_open(velatrix_device* device) {
    VELATRIX_LOG_IN(::velatrix::kLogHost, VELATRIX_LEVEL_WARNING, "Unable to find device with path: %s", device->path);
    VELATRIX_REPORT_ERROR_IN(::velatrix::kLogHost, "Unable to find device with path: %s\n", device->path);
    return 0;
}
int real_close(velatrix_device*) { return 1; }
int real_list(velatrix_device_driver*, velatrix_device** head) {
    *head = nullptr;
    return 1;
}
int real_read(velatrix_device*) { return 0; }
int real_output(velatrix_device*, uint8_t*, uint32_t) { return 1; }
int real_feature(velatrix_device*, uint8_t*, uint32_t) { return 0; }
const char* real_name() { return "REAL"; }
uint8_t real_thread_running() { return 0; }
int real_thread_wait() { return 0; }
void real_shutdown() {}
int real_free(velatrix_device* device) {
    std::free(device->manufacturer);
    std::free(device->model);
    std::free(device->path);
    std::free(device);
    return 1;
}
}  // namespace

extern "C" {
velatrix_device_driver velatrix_real_driver = {
    real_init, real_destroy, real_open, real_close, real_list, real_read, real_output, real_feature, real_feature,
    real_name, real_thread_running, real_thread_wait, 0, real_shutdown, nullptr, real_free, nullptr, nullptr, nullptr,
};
}
