// The HID access layer over hidraw nodes found through libudev.
#pragma once

#include "host/hid_host.h"

namespace velatrix::host {

// A process-wide instance.
HidAccessLayer& platform_access_layer();

}  // namespace velatrix::host
