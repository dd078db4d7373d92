/* Drivers, device records, the driver registry and the open-devices registry. */
#ifndef VELATRIX_DEVICE_H
#define VELATRIX_DEVICE_H

#include "velatrix/common.h"
#include "velatrix/info_reports.h"
#include "velatrix/list.h"

VELATRIX_BEGIN_DECLS

struct velatrix_device;
struct velatrix_device_region_info;
struct velatrix_device_driver;

/* A driver is a record of operations. Members 15, 17, 18 and 19 are core
 * services written by velatrix_add_device_driver. */
typedef struct velatrix_device_driver {
    int32_t (*init)(void);
    int (*destroy)(struct velatrix_device_driver* driver);
    int (*open_device)(struct velatrix_device* device);
    int (*close_device)(struct velatrix_device* device);
    int (*list_devices)(struct velatrix_device_driver* driver, struct velatrix_device** head);
    int (*device_read)(struct velatrix_device* device);
    int (*set_output_report)(struct velatrix_device* device, uint8_t* buffer, uint32_t length);
    int (*set_feature_report)(struct velatrix_device* device, uint8_t* buffer, uint32_t length);
    int (*get_feature_report)(struct velatrix_device* device, uint8_t* buffer, uint32_t length);
    const char* (*get_driver_name)(void);
    uint8_t (*thread_running)(void);
    int (*thread_wait)(void);
    uint8_t initialised;
    void (*shutdown)(void);
    velatrix_list* (*get_device_callbacks)(void);
    int (*free_device)(struct velatrix_device* device);
    int (*report_error)(const char* format, ...);
    void (*debug_report_message)(const char* function, const char* file, int32_t line, uint32_t level,
                                 const char* format, ...);
    void (*driver_input_report)(struct velatrix_device* device, const uint8_t* buffer, uint32_t length);
} velatrix_device_driver;

/* One pad. A driver allocates the record zeroed; its own private part
 * follows these common members in the same allocation. */
typedef struct velatrix_device {
    char* path;
    uint16_t product_id;
    uint16_t vendor_id;
    char* model;
    char* manufacturer;
    uint8_t* uuid;
    uint8_t open;
    uint8_t button_active;
    uint8_t button_region;
    velatrix_hid_feature_display_info display_info;
    velatrix_hid_feature_version version;
    struct velatrix_device_region_info* regions;
    velatrix_list* input_callbacks;
    void* binding_context;
    struct velatrix_device* next;
    velatrix_device_driver* driver;
    void* driver_defined;
    const void* font;
} velatrix_device;

/* Lifecycle and versions. */
VELATRIX_API void velatrix_init(void);
VELATRIX_API void velatrix_destroy(void);
VELATRIX_API void velatrix_os_init(void);
VELATRIX_API void velatrix_load_additional_drivers(void);
VELATRIX_API void velatrix_os_destroy(void);
VELATRIX_API const char* velatrix_get_quillmark_version(void);
VELATRIX_API const char* velatrix_get_quillmark_build_date(void);
VELATRIX_API int velatrix_get_quillmark_version_major(void);
VELATRIX_API int velatrix_get_quillmark_version_minor(void);
VELATRIX_API int velatrix_get_quillmark_version_release(void);

/* Driver registry. */
VELATRIX_API extern velatrix_list* velatrix_driver_list;
VELATRIX_API extern velatrix_device_driver velatrix_real_driver;
VELATRIX_API extern uint8_t use_legacy_firmware;
VELATRIX_API void velatrix_add_device_driver(velatrix_device_driver* driver);
VELATRIX_API void velatrix_remove_device_driver(velatrix_device_driver* driver);
VELATRIX_API uint32_t velatrix_get_driver_count(void);
VELATRIX_API velatrix_list* velatrix_get_drivers(void);
VELATRIX_API void velatrix_set_legacy_firmware(velatrix_device* device, uint8_t flag);

/* Devices. */
VELATRIX_API int velatrix_list_devices(velatrix_device** head);
VELATRIX_API uint32_t velatrix_count_device_list(const velatrix_device* head);
VELATRIX_API void velatrix_free_device_list(velatrix_device* head);
VELATRIX_API int velatrix_open_device(velatrix_device* device);
VELATRIX_API int velatrix_close_device(velatrix_device* device);
VELATRIX_API int velatrix_device_read(velatrix_device* device);

/* Open-devices registry. */
VELATRIX_API velatrix_list* velatrix_get_open_devices(void);
VELATRIX_API void velatrix_set_open_devices(velatrix_list* list);
VELATRIX_API int velatrix_lock_open_devices(void);
VELATRIX_API int velatrix_unlock_open_devices(void);

/* Hot-plug callback list (its entries are velatrix_hotplug_callback). */
VELATRIX_API velatrix_list* velatrix_get_device_callbacks(void);
VELATRIX_API void velatrix_set_device_callbacks(velatrix_list* list);

/* Conversions between pointers and the Java 64-bit handle. */
VELATRIX_API velatrix_device* velatrix_device_ptr_from_jlong(int64_t handle);
VELATRIX_API void* velatrix_void_ptr_from_jlong(int64_t handle);
VELATRIX_API int64_t velatrix_void_ptr_to_jlong(const void* pointer);

VELATRIX_END_DECLS

#endif
