// The HID access layer over the virtual bus: the built-in host driver runs
// unchanged over virtual pads through it.
#pragma once

#include <memory>
#include <string>

#include "host/hid_host.h"
#include "virtual/virtual_bus.h"

namespace velatrix::virtual_pad {

class VirtualHidLayer final : public host::HidAccessLayer {
public:
    explicit VirtualHidLayer(VirtualBus& bus) : bus_(bus) {}

    host::Enumeration enumerate() override;
    std::unique_ptr<host::HidInterface> open(const std::string& key, int& error) override;
    std::unique_ptr<host::UsbWatch> watch_usb(int& error) override;

    // What enumerate() says of one pad.
    static host::HidInterfaceInfo describe(const VirtualPad& pad);

private:
    VirtualBus& bus_;
};

// The process-wide layer over VirtualBus::instance().
VirtualHidLayer& bus_hid_layer();

}  // namespace velatrix::virtual_pad

namespace velatrix::host {

// The host driver's way onto the virtual bus: the process-wide layer, with
// `pad_count` pads plugged in when it is first asked for.
HidAccessLayer& virtual_access_layer(unsigned pad_count);

}  // namespace velatrix::host

namespace velatrix::virtual_pad {

// Models in the order VELATRIX_SIMULATE plugs them: pad i gets model i
// modulo the number of models.
void plug_simulated_pads(unsigned count);

}  // namespace velatrix::virtual_pad
