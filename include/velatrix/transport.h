/* Feature report transport: the driver wrappers, little-endian field helpers, the firmware interlock wait and the run mode.
 *
 * A report buffer holds the report id in byte 0 and the payload after it;
 * lengths always count the id byte. Multi-byte fields are little-endian and
 * need not be aligned. */
#ifndef VELATRIX_TRANSPORT_H
#define VELATRIX_TRANSPORT_H

#include "velatrix/common.h"
#include "velatrix/device.h"

VELATRIX_BEGIN_DECLS

/* Busy flags of the device status report (byte 3, bits 0 to 5) that the
 * interlock wait can be asked to watch. Bit 1 is never waited on. */
#define VELATRIX_INTERLOCK_RUN_MODE 1u
#define VELATRIX_INTERLOCK_REGIONS 4u
#define VELATRIX_INTERLOCK_SCREENS 8u
#define VELATRIX_INTERLOCK_SCREENS_REGIONS 12u
#define VELATRIX_INTERLOCK_DISPLAY 16u
#define VELATRIX_INTERLOCK_CALIBRATION 32u

/* Run modes: 0 idle (the pad accepts configuration), 2 running. */
#define VELATRIX_RUN_MODE_IDLE 0
#define VELATRIX_RUN_MODE_RUNNING 2

/* The three transfers through the device's driver. They return the driver's
 * status; exactly 1 means success. The driver reports its own errors. */
VELATRIX_API int32_t velatrix_hid_get_feature_report(velatrix_device* device, uint8_t* buffer, uint32_t length);
VELATRIX_API int32_t velatrix_hid_set_feature_report(velatrix_device* device, uint8_t* buffer, uint32_t length);
VELATRIX_API int32_t velatrix_hid_set_output_report(velatrix_device* device, uint8_t* buffer, uint32_t length);

/* Little-endian fields. get2 sign-extends from 16 bits (FF FF reads as -1);
 * get4 returns the signed 32-bit value widened to 64 bits. put2 and put4
 * write the low 16 or 32 bits of value. */
VELATRIX_API int32_t get2(const uint8_t* buffer, uint32_t offset);
VELATRIX_API int64_t get4(const uint8_t* buffer, uint32_t offset);
VELATRIX_API void put2(uint8_t* buffer, uint32_t offset, int32_t value);
VELATRIX_API void put4(uint8_t* buffer, uint32_t offset, int64_t value);

/* Polls the device status once a millisecond, at most `sleep` times, until
 * none of the busy flags selected by `interlock` is set. Returns 1 when the
 * pad is ready, 0 (with the last error set) when it stayed busy. */
VELATRIX_API int wait_for_interlock(velatrix_device* device, uint32_t sleep, uint32_t interlock);

/* Sends the run-mode report, waiting for the run-mode interlock before and
 * after. Returns the transport's status, or 0 when either wait failed. */
VELATRIX_API int velatrix_set_run_mode(velatrix_device* device, int32_t mode);

VELATRIX_END_DECLS

#endif
