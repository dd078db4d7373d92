// The registry of drivers, in the order they were added. Adding a driver
// (which also wires the core services into it) is done at the top, in
// library.cpp, because it reaches up to the input dispatch.
#include "velatrix/device.h"

#include "debug/log.h"

extern "C" {

velatrix_list* velatrix_driver_list = nullptr;

// Reserved: a spare driver record and its flag that nothing reads or writes.
velatrix_device_driver velatrix_device_drivers;
uint8_t velatrix_device_drivers_init = 0;

void velatrix_remove_device_driver(velatrix_device_driver* driver) {
    VELATRIX_TRACE_FUNCTION();
    if (velatrix_driver_list != nullptr) velatrix_list_remove_ptr(velatrix_driver_list, driver);
}

uint32_t velatrix_get_driver_count(void) {
    VELATRIX_TRACE_FUNCTION();
    return velatrix_list_count(velatrix_driver_list);
}

velatrix_list* velatrix_get_drivers(void) {
    VELATRIX_TRACE_FUNCTION();
    return velatrix_driver_list;
}

}  // extern "C"
