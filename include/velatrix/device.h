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

/* A driver is a record of operations: the core reaches pads only through
 * it. A driver allocates its record statically and keeps it for the life of
 * the process; the core never frees it. Members stay in this order.
 *
 * Threads: "start/stop thread" is the one application thread that calls
 * velatrix_init and velatrix_destroy while no other library call runs;
 * "caller" is any application thread, with calls on one device serialised
 * by the application; "reader" is the thread inside velatrix_device_read.
 * No operation may call velatrix_init, velatrix_destroy or
 * velatrix_add_device_driver, and none may hold a lock of its own while it
 * calls back into the core (the core services below, input callbacks).
 * Errors are set through report_error, never by writing the last-error text
 * directly, so that every failure is logged the same way. */
typedef struct velatrix_device_driver {
    /* Starts the driver (background threads, callback lists). Called by
     * velatrix_init on the start/stop thread, every time it runs, also when
     * the driver is running already (it then must not start a second
     * thread). May block briefly (a system query); never waits for a pad.
     * Returns non-zero on success; on failure sets the error, and the core
     * keeps the driver registered but uninitialised (list_devices skips it). */
    int32_t (*init)(void);
    /* Stops what init started. Called by velatrix_destroy on the start/stop
     * thread, only when init succeeded. It ends and joins its own
     * background threads before it returns (a thread kept busy by an
     * application callback may be left to thread_wait) and frees the
     * hot-plug callback list. Must not close or free device records: they
     * belong to the application. Returns 1. */
    int (*destroy)(struct velatrix_device_driver* driver);
    /* Opens the pad named by device->path (a record this driver listed).
     * Called by velatrix_open_device on the caller's thread, with the
     * record closed. May block for the system's open and a descriptor
     * request (well under a second). Returns 1, or 0 with the error set
     * ("Unable to find device with path: ...", a permission problem). The
     * core fills the common members (open flag, cached reports) afterwards;
     * the driver fills only its private part. */
    int (*open_device)(struct velatrix_device* device);
    /* Releases the system handle of an open pad. Called by
     * velatrix_close_device on the caller's thread, or on the reader
     * (removal), also while another thread waits for input on the device:
     * that reader must wake and must not touch the released handle. Never
     * blocks longer than it takes a waiting reader to leave. Idempotent.
     * Returns 1. Must not free the record. */
    int (*close_device)(struct velatrix_device* device);
    /* Enumerates the pads present now into a new chain of device records
     * (zeroed, driver member set, linked through next) written to *head;
     * null when there are none. Called by velatrix_list_devices on the
     * caller's thread and by the driver's own hot-plug thread. May block
     * for a system query (well under a second). Returns 1, or 0 with the
     * error set when the system could not be asked. Each record is later
     * freed through free_device. */
    int (*list_devices)(struct velatrix_device_driver* driver, struct velatrix_device** head);
    /* Waits up to one second for input of an open pad and hands every raw
     * report that arrived, in arrival order, to the device's input
     * callbacks (driver_input_report does that for a driver), on the
     * calling thread (the reader). Input callbacks run inside this call. Returns 1 while
     * the device is open, 0 with the error set when it is not open before
     * or after the wait. Reading one device from two threads is not
     * supported. */
    int (*device_read)(struct velatrix_device* device);
    /* Sends an HID output report (buffer[0] is the report id, length
     * includes it). Caller's thread, synchronous. Returns 1 sent, 0 with
     * the error set. The built-in driver sends nothing and returns 1. */
    int (*set_output_report)(struct velatrix_device* device, uint8_t* buffer, uint32_t length);
    /* Sends an HID feature report (buffer[0] is the report id, length
     * includes it). Caller's thread, synchronous: blocks for the device
     * request only. Returns 1 sent, 0 with the error set (also for a report
     * id the pad does not declare, without touching the pad). Must not keep
     * the buffer after it returns. */
    int (*set_feature_report)(struct velatrix_device* device, uint8_t* buffer, uint32_t length);
    /* Fetches HID feature report buffer[0] into buffer, offering length
     * bytes (the id included); never writes past them. Caller's thread,
     * synchronous. Returns 1 received, 0 with the error set. */
    int (*get_feature_report)(struct velatrix_device* device, uint8_t* buffer, uint32_t length);
    /* The driver's name for log lines ("REAL" for the built-in one). Any
     * thread, never blocks; the text is static. */
    const char* (*get_driver_name)(void);
    /* 1 while the driver's background (hot-plug) thread is meant to run:
     * from init to destroy. Any thread, never blocks. */
    uint8_t (*thread_running)(void);
    /* Joins the driver's background thread if one is left. A program never
     * needs it: destroy joins the thread itself, and a call after destroy
     * returns at once. Start/stop thread. Returns 0. */
    int (*thread_wait)(void);
    /* Written by velatrix_init only: 1 after a successful init, 0 after a
     * failed one; 0 in the static record. destroy does not clear it. */
    uint8_t initialised;
    /* Last call before the registry is dropped, for every registered
     * driver, initialised or not. Start/stop thread; must not block. */
    void (*shutdown)(void);
    /* Core service, filled at registration (null in the static record):
     * the process-wide hot-plug callback list. */
    velatrix_list* (*get_device_callbacks)(void);
    /* Frees one record this driver made in list_devices, with everything
     * the record owns; a read thread of the record is ended first. Called
     * by velatrix_free_device_list on the caller's thread, with the record
     * already taken off the open-devices list. May block until a reader
     * leaves its wait (about a second at most). Returns 1; a null record
     * is accepted. */
    int (*free_device)(struct velatrix_device* device);
    /* Core service, filled at registration (null in the static record):
     * sets the last error (printf style) and logs it. */
    int (*report_error)(const char* format, ...);
    /* Core service, filled at registration (null in the static record):
     * the debug log. Any thread. */
    void (*debug_report_message)(const char* function, const char* file, int32_t line, uint32_t level,
                                 const char* format, ...);
    /* Core service, filled at registration (null in the static record):
     * parses one raw input report and calls the device's input callbacks
     * with it, on the calling thread. Called by a driver from device_read. */
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
/* Reserved: a spare driver record and its flag; nothing reads or writes them. */
VELATRIX_API extern velatrix_device_driver velatrix_device_drivers;
VELATRIX_API extern uint8_t velatrix_device_drivers_init;
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
