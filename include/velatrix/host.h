/* The built-in host driver's own operations: read threads and notifications. */
#ifndef VELATRIX_HOST_H
#define VELATRIX_HOST_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

struct velatrix_device;

/* Notification hook: tells that an open device has gone or been closed. */
VELATRIX_API void velatrix_device_notify_close(struct velatrix_device* device);

/* Starts a thread that reads the open device until it is closed or a read
 * fails; input callbacks then run on that thread. */
VELATRIX_API void velatrix_device_read_until_done(struct velatrix_device* device);

/* Closes the device and joins its read thread (within about a second).
 * Does nothing when no read thread was started. */
VELATRIX_API void velatrix_device_read_done(struct velatrix_device* device);

VELATRIX_END_DECLS

#endif
