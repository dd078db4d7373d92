// The HID access layer over the virtual bus: the built-in host driver runs
// unchanged over virtual pads through it.
#pragma once

#include <map>
#include <memory>
#include <mutex>
#include <optional>
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

    // Faults of the HID service itself, which no pad's firmware makes, for
    // tests of the host driver's error paths. Errors are errno-style codes;
    // each fault holds until clear_faults() unless said otherwise.
    // Listings fail with `error`.
    void fail_enumerate(int error);
    // The next open of pad `id` fails with `error` (once).
    void fail_next_open(int id, int error);
    // Descriptor reads of pad `id` fail with `error`, or answer an empty
    // descriptor when `error` is 0.
    void fail_descriptor(int id, int error);
    // Every feature transfer with pad `id` fails with the platform status
    // `status` (errno EIO) without reaching the pad.
    void fail_transfers(int id, int status);
    // watch_usb fails with `error`, as without any notification source.
    void fail_watch(int error);
    // Ends every fault above; with an id, only that pad's.
    void clear_faults();
    void clear_faults(int id);
    // Calls of enumerate() so far.
    unsigned enumerations() const;

    struct PadFaults {
        int open_error = 0;
        std::optional<int> descriptor_error;
        int transfer_status = 0;
    };
    PadFaults faults_of(int id) const;

private:
    VirtualBus& bus_;
    mutable std::mutex mutex_;
    int enumerate_error_ = 0;
    int watch_error_ = 0;
    unsigned enumerations_ = 0;
    std::map<int, PadFaults> pad_faults_;
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
