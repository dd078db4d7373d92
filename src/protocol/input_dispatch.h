// Handing one raw input report to a device's input callbacks. The host
// driver's read calls this for every queued report.
#pragma once

#include <cstdint>

#include "velatrix/device.h"
#include "velatrix/input.h"

namespace velatrix {

// Parses the report into a record of its own (nothing is allocated); if it
// parsed, calls every input callback of the device in registration order
// with the record and the raw bytes. A report that does not parse reaches
// no callback.
void dispatch_input_report(velatrix_device* device, const uint8_t* buffer, uint32_t length);

namespace input {

// velatrix_parse_input_report into the caller's record: the same checks,
// errors and decoding, without the allocation. False when it did not parse.
bool parse_input_report_into(velatrix_device* device, const uint8_t* buffer, uint32_t length,
                             velatrix_input_report& record);

}  // namespace input
}  // namespace velatrix
