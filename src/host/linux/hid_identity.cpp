#include "host/linux/hid_identity.h"

#include <charconv>

namespace velatrix::host::linux_hid {

namespace {

// Parses all of `text` as a hexadecimal number of at most 8 digits.
std::optional<uint32_t> parse_hex32(std::string_view text) {
    if (text.empty() || text.size() > 8) return std::nullopt;
    uint32_t value = 0;
    auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value, 16);
    if (error != std::errc{} || end != text.data() + text.size()) return std::nullopt;
    return value;
}

// HID short item data sizes by the prefix's size code.
constexpr std::size_t kItemDataSize[4] = {0, 1, 2, 4};
constexpr uint8_t kLongItemPrefix = 0xFE;

}  // namespace

std::optional<HidId> parse_hid_id(std::string_view text) {
    std::size_t first = text.find(':');
    if (first == std::string_view::npos) return std::nullopt;
    std::size_t second = text.find(':', first + 1);
    if (second == std::string_view::npos) return std::nullopt;
    auto bus = parse_hex32(text.substr(0, first));
    auto vendor = parse_hex32(text.substr(first + 1, second - first - 1));
    auto product = parse_hex32(text.substr(second + 1));
    if (!bus || !vendor || !product) return std::nullopt;
    // The kernel prints 32-bit fields; USB ids live in the low 16 bits.
    return HidId{*bus, static_cast<uint16_t>(*vendor), static_cast<uint16_t>(*product)};
}

const char* transport_name(uint32_t bus) {
    switch (bus) {
        case kBusUsb: return "USB";
        case kBusBluetooth: return "Bluetooth";
        case kBusI2c: return "I2C";
        default: return "Unknown";
    }
}

uint32_t location_id(uint32_t bus_number, std::string_view port_chain) {
    const uint32_t bus_part = (bus_number & 0xFFu) << 24;
    uint32_t ports = 0;
    int shift = 20;
    std::string_view rest = port_chain;
    while (!rest.empty()) {
        std::size_t dot = rest.find('.');
        std::string_view field = rest.substr(0, dot);
        uint32_t port = 0;
        auto [end, error] = std::from_chars(field.data(), field.data() + field.size(), port, 10);
        if (field.empty() || error != std::errc{} || end != field.data() + field.size()) return bus_part;
        if (shift >= 0) {
            ports |= (port & 0xFu) << shift;
            shift -= 4;
        }
        if (dot == std::string_view::npos) break;
        rest = rest.substr(dot + 1);
        if (rest.empty()) return bus_part;  // "2." is not a chain
    }
    return bus_part | ports;
}

PrimaryUsage primary_usage(std::span<const uint8_t> descriptor) {
    PrimaryUsage result;
    bool have_page = false;
    bool have_usage = false;
    std::size_t i = 0;
    while (i < descriptor.size() && !(have_page && have_usage)) {
        const uint8_t prefix = descriptor[i];
        if (prefix == kLongItemPrefix) {
            if (i + 1 >= descriptor.size()) break;
            i += 3 + std::size_t{descriptor[i + 1]};
            continue;
        }
        const std::size_t size = kItemDataSize[prefix & 0x3];
        if (descriptor.size() - i - 1 < size) break;  // item cut off by the end
        uint32_t value = 0;
        for (std::size_t b = 0; b < size; ++b) value |= uint32_t{descriptor[i + 1 + b]} << (8 * b);
        const uint8_t tag_and_type = prefix & 0xFC;
        if (tag_and_type == 0x04 && !have_page) {  // global Usage Page
            result.usage_page = value;
            have_page = true;
        } else if (tag_and_type == 0x08 && !have_usage) {  // local Usage
            if (size == 4) {
                // An extended usage carries its own page in the high half.
                if (!have_page) {
                    result.usage_page = value >> 16;
                    have_page = true;
                }
                value &= 0xFFFFu;
            }
            result.usage = value;
            have_usage = true;
        }
        i += 1 + size;
    }
    return result;
}

std::optional<HidInterfaceInfo> describe_interface(const RawInterface& raw) {
    if (!raw.hid_id) return std::nullopt;
    auto id = parse_hid_id(*raw.hid_id);
    if (!id) return std::nullopt;
    HidInterfaceInfo info;
    info.transport = transport_name(id->bus);
    info.vendor_id = id->vendor_id;
    info.product_id = id->product_id;
    if (raw.usb_bus && raw.usb_port_chain) info.location_id = location_id(*raw.usb_bus, *raw.usb_port_chain);
    PrimaryUsage usage = primary_usage(raw.descriptor);
    info.primary_usage_page = usage.usage_page;
    info.primary_usage = usage.usage;
    info.manufacturer = raw.manufacturer;
    info.product = raw.product;
    info.key = raw.devnode;
    return info;
}

std::optional<Uevent> parse_uevent(std::span<const uint8_t> message) {
    std::string_view text(reinterpret_cast<const char*>(message.data()), message.size());
    // The first field is "ACTION@DEVPATH"; udev's own messages start with
    // "libudev" and carry a binary header instead.
    std::size_t end = text.find('\0');
    std::string_view header = text.substr(0, end);
    std::size_t at = header.find('@');
    if (at == std::string_view::npos || at == 0) return std::nullopt;
    Uevent event;
    event.action = std::string(header.substr(0, at));
    while (end != std::string_view::npos && end + 1 < text.size()) {
        std::size_t start = end + 1;
        end = text.find('\0', start);
        std::string_view field = text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start);
        std::size_t equals = field.find('=');
        if (equals == std::string_view::npos) continue;
        std::string_view key = field.substr(0, equals);
        std::string_view value = field.substr(equals + 1);
        if (key == "ACTION") event.action = std::string(value);
        else if (key == "SUBSYSTEM") event.subsystem = std::string(value);
        else if (key == "DEVTYPE") event.devtype = std::string(value);
    }
    return event;
}

bool is_usb_device_change(const Uevent& event) {
    return event.subsystem == "usb" && event.devtype == "usb_device" &&
           (event.action == "add" || event.action == "remove");
}

}  // namespace velatrix::host::linux_hid
