// Adding to and taking from the open-devices registry under its lock: an
// application opens and closes on its threads while the hot-plug thread
// frees the records of a listing, which also takes records off the list.
#pragma once

#include "velatrix/device.h"

namespace velatrix {

// Makes the registry on first use.
void add_open_device(velatrix_device* device);
void remove_open_device(velatrix_device* device);

}  // namespace velatrix
