// A count of the requests sent to each device, for callers that keep what
// they last put on the pad (the display update) and must notice anything
// else that may have changed it since: every set-feature and output
// report and every close moves it on.
#pragma once

#include <cstdint>

#include "velatrix/device.h"

namespace velatrix::protocol {

// Returned for a device that cannot be tracked: never equal to a count.
inline constexpr uint64_t kUntracked = UINT64_MAX;

// The device's count, tracking the device from now on (a fixed number of
// devices can be tracked; beyond them this answers kUntracked).
uint64_t request_epoch(const velatrix_device* device);

// Moves a tracked device's count on; untracked devices cost one load.
void note_request(const velatrix_device* device);

}  // namespace velatrix::protocol
