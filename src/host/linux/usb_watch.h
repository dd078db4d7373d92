// Watches USB devices coming and going: on udev's monitor when a udev daemon
// runs, else straight on the kernel's uevent netlink socket.
#pragma once

#include <memory>

#include "host/hid_host.h"

namespace velatrix::host::linux_hid {

std::unique_ptr<UsbWatch> make_usb_watch(int& error);

}  // namespace velatrix::host::linux_hid
