// Pure pieces of the Linux HID access layer: turning what sysfs, udev and
// the kernel say about a hidraw node into the identity the driver sees.
// Nothing here touches the system, so each piece is tested on fixtures.
#pragma once

#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "host/hid_host.h"

namespace velatrix::host::linux_hid {

// The kernel's HID bus numbers (BUS_* of <linux/input.h>) the driver names.
inline constexpr uint32_t kBusUsb = 0x03;
inline constexpr uint32_t kBusBluetooth = 0x05;
inline constexpr uint32_t kBusI2c = 0x18;

struct HidId {
    uint32_t bus = 0;
    uint16_t vendor_id = 0;
    uint16_t product_id = 0;
};

// Parses the HID_ID value of a hid device, "BBBB:VVVVVVVV:PPPPPPPP" in hex
// (e.g. "0003:0000046D:0000C52B"). Null when it is not of that shape.
std::optional<HidId> parse_hid_id(std::string_view text);

// "USB", "Bluetooth", "I2C" or "Unknown".
const char* transport_name(uint32_t bus);

// The location id of a USB device from its bus number and its sysfs devpath
// (the port chain, "2.3"): the bus in the top byte, then one nibble per port
// from the top down. Ports beyond the sixth and nibble overflow are cut off;
// a malformed chain yields the bus alone.
uint32_t location_id(uint32_t bus_number, std::string_view port_chain);

struct PrimaryUsage {
    uint32_t usage_page = 0;
    uint32_t usage = 0;
};

// The first Usage Page item and the first Usage item of a report
// descriptor. Long items are skipped whole; an item cut off by the end of
// the descriptor is ignored.
PrimaryUsage primary_usage(std::span<const uint8_t> descriptor);

// Everything gathered about one hidraw node before it is turned into the
// identity the driver sees.
struct RawInterface {
    std::string devnode;                 // /dev/hidrawN
    std::optional<std::string> hid_id;   // HID_ID of the hid parent
    std::vector<uint8_t> descriptor;     // report descriptor (may be empty)
    std::optional<uint32_t> usb_bus;     // busnum of the USB device parent
    std::optional<std::string> usb_port_chain;  // its devpath
    std::optional<std::string> manufacturer;
    std::optional<std::string> product;
};

// The identity of an interface; null when its HID_ID is missing or malformed.
std::optional<HidInterfaceInfo> describe_interface(const RawInterface& raw);

// One kernel uevent as sent on the netlink uevent socket: a header line
// "ACTION@DEVPATH" followed by KEY=VALUE fields, all NUL-separated.
struct Uevent {
    std::string action;
    std::string subsystem;
    std::string devtype;
};

// Parses a kernel uevent message. Null for messages that are not kernel
// uevents (e.g. udev's own "libudev" messages) or lack an action.
std::optional<Uevent> parse_uevent(std::span<const uint8_t> message);

// True for the attach or detach of a whole USB device.
bool is_usb_device_change(const Uevent& event);

}  // namespace velatrix::host::linux_hid
