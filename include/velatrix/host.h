/* The built-in host driver's own operations: read threads and notifications. */
#ifndef VELATRIX_HOST_H
#define VELATRIX_HOST_H

#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

struct velatrix_device;

/* Notification hook: tells that an open device has gone or been closed. */
VELATRIX_API void velatrix_device_notify_close(struct velatrix_device* device);

VELATRIX_END_DECLS

#endif
