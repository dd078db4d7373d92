// Sending one display chunk without copying the record: what
// velatrix_set_display_chunk does, for the transfers that send hundreds.
#pragma once

#include "velatrix/display.h"

namespace velatrix::display {

int send_display_chunk(velatrix_device* device, const velatrix_display_chunk& chunk);

}  // namespace velatrix::display
