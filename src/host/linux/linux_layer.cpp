// The HID access layer over hidraw nodes, found through libudev.
#include <libudev.h>

#include <cerrno>
#include <charconv>
#include <fstream>
#include <iterator>

#include "host/linux/linux_layer.h"
#include "host/linux/hid_identity.h"
#include "host/linux/hidraw_interface.h"
#include "host/linux/usb_watch.h"

namespace velatrix::host {

namespace linux_hid {
namespace {

std::optional<std::string> attribute(udev_device* device, const char* name) {
    if (device == nullptr) return std::nullopt;
    const char* value = udev_device_get_sysattr_value(device, name);
    if (value == nullptr) return std::nullopt;
    return std::string(value);
}

std::optional<uint32_t> number_attribute(udev_device* device, const char* name) {
    auto text = attribute(device, name);
    if (!text) return std::nullopt;
    uint32_t value = 0;
    auto [end, error] = std::from_chars(text->data(), text->data() + text->size(), value, 10);
    if (error != std::errc{} || end == text->data()) return std::nullopt;
    return value;
}

// The descriptor as sysfs offers it to everyone, so listing never needs
// the permission to open the node.
std::vector<uint8_t> read_descriptor(udev_device* hid) {
    const char* syspath = hid == nullptr ? nullptr : udev_device_get_syspath(hid);
    if (syspath == nullptr) return {};
    std::ifstream file(std::string(syspath) + "/report_descriptor", std::ios::binary);
    if (!file) return {};
    return std::vector<uint8_t>(std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>());
}

RawInterface gather(udev_device* hidraw) {
    RawInterface raw;
    if (const char* node = udev_device_get_devnode(hidraw)) {
        raw.devnode = node;
    } else if (const char* name = udev_device_get_sysname(hidraw)) {
        raw.devnode = std::string("/dev/") + name;
    }
    udev_device* hid = udev_device_get_parent_with_subsystem_devtype(hidraw, "hid", nullptr);
    if (hid != nullptr) {
        if (const char* id = udev_device_get_property_value(hid, "HID_ID")) raw.hid_id = id;
        raw.descriptor = read_descriptor(hid);
    }
    udev_device* usb = udev_device_get_parent_with_subsystem_devtype(hidraw, "usb", "usb_device");
    if (usb != nullptr) {
        raw.usb_bus = number_attribute(usb, "busnum");
        raw.usb_port_chain = attribute(usb, "devpath");
        raw.manufacturer = attribute(usb, "manufacturer");
        raw.product = attribute(usb, "product");
    }
    return raw;
}

class LinuxLayer final : public HidAccessLayer {
public:
    Enumeration enumerate() override {
        Enumeration result;
        udev* context = udev_new();
        if (context == nullptr) {
            result.error = errno ? errno : ENOMEM;
            return result;
        }
        udev_enumerate* walk = udev_enumerate_new(context);
        if (walk == nullptr || udev_enumerate_add_match_subsystem(walk, "hidraw") < 0 ||
            udev_enumerate_scan_devices(walk) < 0) {
            result.error = errno ? errno : EIO;
            if (walk != nullptr) udev_enumerate_unref(walk);
            udev_unref(context);
            return result;
        }
        udev_list_entry* entry = nullptr;
        udev_list_entry_foreach(entry, udev_enumerate_get_list_entry(walk)) {
            udev_device* hidraw = udev_device_new_from_syspath(context, udev_list_entry_get_name(entry));
            if (hidraw == nullptr) continue;  // gone since the scan
            if (auto info = describe_interface(gather(hidraw))) result.interfaces.push_back(std::move(*info));
            udev_device_unref(hidraw);
        }
        udev_enumerate_unref(walk);
        udev_unref(context);
        return result;
    }

    std::unique_ptr<HidInterface> open(const std::string& key, int& error) override {
        return HidrawInterface::open(key, error);
    }

    std::unique_ptr<UsbWatch> watch_usb(int& error) override { return make_usb_watch(error); }
};

}  // namespace
}  // namespace linux_hid

HidAccessLayer& platform_access_layer() {
    static linux_hid::LinuxLayer layer;
    return layer;
}

}  // namespace velatrix::host
