// Handing one raw input report to a device's input callbacks. The host
// driver's read calls this for every queued report.
#pragma once

#include <cstdint>

#include "velatrix/device.h"

namespace velatrix {

// Parses the report; if it parsed, calls every input callback of the
// device in registration order with the record and the raw bytes, then
// frees the record. A report that does not parse reaches no callback.
void dispatch_input_report(velatrix_device* device, const uint8_t* buffer, uint32_t length);

}  // namespace velatrix
