// Start-up and shut-down: the one place that wires the debug log, the
// driver registry, the built-in driver and its HID access layers together.
#include "velatrix/device.h"
#include "velatrix/input.h"

#include "debug/log.h"
#include "host/hid_host.h"
#include "version.h"
#include "virtual/virtual_hid_layer.h"
#if VELATRIX_LINUX_LAYER
#include "host/linux/linux_layer.h"
#endif

namespace {
constexpr const char* kVersion = VELATRIX_VERSION_TEXT;
constexpr const char* kBuildDate = VELATRIX_BUILD_DATE;

// The built-in driver reaches pads through whichever of these it selects at
// its start; a build without the Linux layer lists no real pads.
void register_access_layers() {
    velatrix::host::AccessLayers layers;
#if VELATRIX_LINUX_LAYER
    layers.platform = &velatrix::host::platform_access_layer;
#endif
    layers.simulated = &velatrix::host::virtual_access_layer;
    velatrix::host::register_access_layers(layers);
}

template <typename Visit>
void for_each_driver(Visit visit) {
    if (velatrix_driver_list == nullptr) return;
    for (velatrix_list_node* node = velatrix_driver_list->head; node != nullptr; node = node->next) {
        visit(static_cast<velatrix_device_driver*>(node->value));
    }
}
}  // namespace

extern "C" {

const char* velatrix_get_quillmark_version(void) { return kVersion; }
const char* velatrix_get_quillmark_build_date(void) { return kBuildDate; }
int velatrix_get_quillmark_version_major(void) { return VELATRIX_VERSION_MAJOR; }
int velatrix_get_quillmark_version_minor(void) { return VELATRIX_VERSION_MINOR; }
int velatrix_get_quillmark_version_release(void) { return VELATRIX_VERSION_RELEASE; }

// Platform hooks: nothing to do on this platform.
void velatrix_os_init(void) {}
void velatrix_load_additional_drivers(void) {}
void velatrix_os_destroy(void) {}

// Registration hands each driver the core services it calls back into:
// error reporting, logging, input dispatch and the hot-plug callback list.
void velatrix_add_device_driver(velatrix_device_driver* driver) {
    VELATRIX_TRACE_FUNCTION();
    if (driver == nullptr) return;  // nothing to register
    if (velatrix_driver_list == nullptr) {
        VELATRIX_LOG(VELATRIX_LEVEL_INFO, "Driver list was null loading driver '%s'.", driver->get_driver_name());
        return;
    }
    if (velatrix_list_find(velatrix_driver_list, driver) != nullptr) {
        VELATRIX_LOG(VELATRIX_LEVEL_INFO, "Driver was already in driver list '%s'.", driver->get_driver_name());
        return;
    }
    driver->debug_report_message = &velatrix_debug_report_message;
    driver->report_error = &velatrix_report_error_internal;
    driver->driver_input_report = &velatrix_get_driver_input_report;
    driver->get_device_callbacks = &velatrix_get_device_callbacks;
    VELATRIX_LOG(VELATRIX_LEVEL_INFO, "Adding driver to driver list: '%s'.", driver->get_driver_name());
    velatrix_list_add(velatrix_driver_list, driver);
}

void velatrix_init(void) {
    velatrix_debug_init("quillmark");
    // The guard comes after the log exists so the entering record is kept.
    VELATRIX_TRACE_FUNCTION();
    VELATRIX_LOG(VELATRIX_LEVEL_INFO, "Initalizing Quillmark Native library, version: %s, date: %s", kVersion,
                 kBuildDate);
    if (velatrix_driver_list == nullptr) velatrix_driver_list = velatrix_create_list();
    register_access_layers();
    velatrix_add_device_driver(&velatrix_real_driver);
    velatrix_os_init();
    velatrix_load_additional_drivers();
    VELATRIX_LOG(VELATRIX_LEVEL_FINE, "Attempting to initialize %u driver(s).", velatrix_get_driver_count());
    // A plain loop rather than for_each_driver: the log records carry this
    // function's own name.
    for (velatrix_list_node* node = velatrix_driver_list->head; node != nullptr; node = node->next) {
        auto* driver = static_cast<velatrix_device_driver*>(node->value);
        VELATRIX_LOG(VELATRIX_LEVEL_FINE, "Attempting to initialize driver '%s'.", driver->get_driver_name());
        if (driver->init() != 0) {
            VELATRIX_LOG(VELATRIX_LEVEL_INFO, "Successfully initialized '%s' driver.", driver->get_driver_name());
            driver->initialised = 1;
        } else {
            VELATRIX_LOG(VELATRIX_LEVEL_WARNING, "Failed to initialized '%s' driver: %s", driver->get_driver_name(),
                         velatrix_get_last_error());
            driver->initialised = 0;
        }
    }
}

void velatrix_destroy(void) {
    {
        VELATRIX_TRACE_FUNCTION();
        for_each_driver([](velatrix_device_driver* driver) {
            if (driver->initialised) driver->destroy(driver);
        });
        // Open devices are not closed or freed here: their records belong to
        // the caller, only the registry's nodes go.
        if (velatrix_list* open = velatrix_get_open_devices(); open != nullptr) {
            velatrix_set_open_devices(nullptr);
            velatrix_list_free(open);
        }
        for_each_driver([](velatrix_device_driver* driver) { driver->shutdown(); });
        velatrix_list_free(velatrix_driver_list);
        velatrix_driver_list = nullptr;
        velatrix_os_destroy();
    }
    // The log goes last, after the guard above has written the leaving record.
    velatrix_debug_destroy();
}

}  // extern "C"
