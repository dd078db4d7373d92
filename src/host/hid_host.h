// The HID access layer: the few operations the built-in host driver needs
// from an operating system's HID service. The driver is written once against
// this interface; src/host/linux/ implements it over hidraw + libudev and
// src/virtual/ over a bus of virtual pads. Both sit above the driver and
// are handed to it by the library's start-up (register_access_layers): the
// driver names neither.
//
// Every contract below states when the operation is called, on which thread,
// whether and how long it may block, what it returns and what it must never
// do. An implementation must keep all of them: the driver relies on nothing
// else.
//
// Error numbers are errno-style codes (strerror() gives their text); the
// driver prints both in its messages.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velatrix::host {

// The pad maker's USB vendor id (a build constant).
inline constexpr uint16_t kVendorId = static_cast<uint16_t>(VELATRIX_VENDOR_ID_VALUE);

// Largest input report the driver accepts; longer reports are cut to it.
inline constexpr std::size_t kInputBufferSize = 512;

// One HID interface present on the system.
struct HidInterfaceInfo {
    // Bus name: "USB", "Bluetooth", "I2C" or "Unknown". Never empty: the
    // driver's path text is built from it.
    std::string transport;
    uint16_t vendor_id = 0;
    uint16_t product_id = 0;
    // Bus number in the top byte, then one nibble per port of the port
    // chain (bus 1, ports 2.3 -> 0x01230000); 0 when unknown.
    uint32_t location_id = 0;
    // The first Usage Page and Usage items of the report descriptor.
    uint32_t primary_usage_page = 0;
    uint32_t primary_usage = 0;
    // Strings of the device; absent when the device has none.
    std::optional<std::string> manufacturer;
    std::optional<std::string> product;
    // Opaque to the driver: what HidAccessLayer::open needs to find this
    // interface again (a device node, a virtual pad's slot, ...).
    std::string key;
};

// Result of enumerate().
struct Enumeration {
    // 0 when the HID service could be asked; otherwise an errno-style code
    // and `interfaces` is empty.
    int error = 0;
    // In the order the service returns them; the driver keeps that order.
    std::vector<HidInterfaceInfo> interfaces;
};

// Result of one feature transfer.
struct Transfer {
    // 0 on success; otherwise a non-zero platform status (on Linux the
    // errno value itself).
    int status = 0;
    // errno-style code describing the failure; 0 on success.
    int error = 0;
    // Bytes moved (get: received, id byte included; set: sent).
    std::size_t length = 0;
};

enum class InputStatus {
    delivered,  // one or more reports were handed to the sink
    timeout,    // nothing arrived within the timeout
    gone,       // the interface went away (unplugged); it will never deliver again
    closed,     // close() was called (before or during the wait)
    failed,     // any other error; `error` says which
};

struct InputResult {
    InputStatus status = InputStatus::timeout;
    int error = 0;  // errno-style code for `gone` and `failed`
};

// Receives one input report: byte 0 is the report id (on interfaces without
// report ids the raw report as it came). The span is valid only during the call.
using InputSink = std::function<void(std::span<const uint8_t> report)>;

// An opened HID interface. Obtained from HidAccessLayer::open; destroying it
// closes it if still open.
class HidInterface {
public:
    virtual ~HidInterface() = default;

    // Reads the interface's raw HID report descriptor into `descriptor`.
    // Called by the driver right after open, on the opening thread. Blocks
    // only for a device request (well under a second). Returns 0 with the
    // descriptor filled, or an errno-style code with `descriptor` empty.
    virtual int report_descriptor(std::vector<uint8_t>& descriptor) = 0;

    // Waits up to `timeout` for input. When input arrives, hands every report
    // already available to `sink` (in arrival order, on the calling thread,
    // without waiting again) and returns `delivered`. Called by one reading
    // thread at a time. Never blocks longer than `timeout` plus the time the
    // sink takes. Returns `closed` at once when close() was called before or
    // during the wait; after `gone` or `closed` it never touches the OS
    // handle again. Must never call the sink after returning.
    virtual InputResult wait_input(std::chrono::milliseconds timeout, const InputSink& sink) = 0;

    // Fetches feature report `report[0]` into `report`, offering its whole
    // length (the id byte included). Any application thread, synchronous;
    // blocks only for the device request. On failure the buffer's content
    // is unspecified but nothing past its end is written.
    virtual Transfer get_feature(std::span<uint8_t> report) = 0;

    // Sends feature report `report[0]` with the whole buffer (id byte
    // included). Any application thread, synchronous.
    virtual Transfer set_feature(std::span<const uint8_t> report) = 0;

    // Releases the OS handle. Idempotent. Safe from any thread, also while
    // another thread is inside wait_input on this interface: that waiter
    // wakes promptly with `closed` and never touches a released handle. When
    // a waiter is inside wait_input, close() waits (briefly) until it has left.
    // Must never be called from inside an InputSink of the same interface.
    // Transfers after close fail with EBADF.
    virtual void close() = 0;
};

enum class UsbChange {
    attached,  // some USB device was attached
    detached,  // some USB device was detached
    stopped,   // stop() was called
    failed,    // the notification source broke; nothing more will come
};

// A watch on USB device attach and detach (any device, not only pads).
class UsbWatch {
public:
    virtual ~UsbWatch() = default;

    // Blocks until a USB device is attached (`attached`) or detached
    // (`detached`), stop() is called (`stopped`, also when stop() came before
    // the call) or the source breaks (`failed`). Called on one dedicated
    // thread only. Several changes close together may be reported as one
    // (by the kind of the first). Never calls back into the driver.
    virtual UsbChange wait() = 0;

    // Makes the current and every later wait() return `stopped` promptly.
    // Any thread; never blocks; idempotent.
    virtual void stop() = 0;
};

class HidAccessLayer {
public:
    virtual ~HidAccessLayer() = default;

    // The HID interfaces present now, of every vendor. Any thread, also
    // concurrently with other calls; may block for a short system query
    // (well under a second). Never opens the interfaces it lists for writing.
    virtual Enumeration enumerate() = 0;

    // Opens the interface `key` (from enumerate()) without excluding other
    // users. Any thread. On success returns the interface and leaves `error`
    // 0; otherwise null with a non-zero errno-style `error` (EACCES when not
    // permitted, ENOENT when it is gone).
    virtual std::unique_ptr<HidInterface> open(const std::string& key, int& error) = 0;

    // Starts watching USB attach/detach. Called once per driver start, on
    // the starting thread; does not block. Changes from the moment it
    // returns are seen by the watch's wait(). Returns null (and `error`)
    // when no notification source can be set up.
    virtual std::unique_ptr<UsbWatch> watch_usb(int& error) = 0;
};

// The access layers a build offers. Registered by the library's start-up
// before the driver starts; a layer the build lacks stays null.
struct AccessLayers {
    // The operating system's HID service (a process-wide instance). Null:
    // this build reaches no real pads; nothing is listed or opened.
    HidAccessLayer& (*platform)() = nullptr;
    // The virtual bus (a process-wide instance) with `pad_count` pads
    // plugged in when it is first made.
    HidAccessLayer& (*simulated)(unsigned pad_count) = nullptr;
};
void register_access_layers(const AccessLayers& layers);

// The access layer in use. Chosen by select_access_layer(); when that has
// not run yet, it runs first.
HidAccessLayer& access_layer();

// Chooses the layer: the virtual bus with n pads when simulate_virtual_pads(n)
// asked for it, else when the environment has VELATRIX_SIMULATE=<n> (set,
// non-empty), otherwise the platform's layer. Called once at driver
// start-up; the environment is read only here. An injected layer stays in
// use regardless.
void select_access_layer();

// From the next select_access_layer() on, the virtual bus with `count` pads
// as VELATRIX_SIMULATE=<count> would choose it; a negative count returns the
// choice to the environment. For applications that cannot set variables.
void simulate_virtual_pads(long count);

// For tests: use `layer` (owned by the caller, must outlive its use) instead
// of the selected one; null ends the injection.
void set_access_layer(HidAccessLayer* layer);

}  // namespace velatrix::host
