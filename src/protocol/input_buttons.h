// Button tracking: extended coordinates that fall on a button region of the
// pad's region table become button events.
#pragma once

#include "protocol/input_fields.h"
#include "velatrix/input.h"

namespace velatrix::input {

// Fills `record` from an extended coordinate report already known to be
// long enough, and moves the device's button state along. A null device
// has no region table, so its reports stay plain extended coordinates.
void decode_extended_coordinate(velatrix_device* device, Report report, velatrix_input_report& record);

}  // namespace velatrix::input
