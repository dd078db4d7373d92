// Fixtures for the pure pieces of the Linux access layer: HID_ID texts,
// transport names, location ids, primary usage from captured descriptors,
// and kernel uevent messages.
#include <gtest/gtest.h>

#include <string>
#include <tuple>

#include "host/linux/hid_identity.h"

namespace velatrix::host::linux_hid {
namespace {

using Bytes = std::vector<uint8_t>;

// A three-button wheel-less mouse.
const Bytes kMouse = {
    0x05, 0x01, 0x09, 0x02, 0xA1, 0x01, 0x09, 0x01, 0xA1, 0x00, 0x05, 0x09, 0x19, 0x01, 0x29, 0x03,
    0x15, 0x00, 0x25, 0x01, 0x95, 0x03, 0x75, 0x01, 0x81, 0x02, 0x95, 0x01, 0x75, 0x05, 0x81, 0x01,
    0x05, 0x01, 0x09, 0x30, 0x09, 0x31, 0x15, 0x81, 0x25, 0x7F, 0x75, 0x08, 0x95, 0x02, 0x81, 0x06,
    0xC0, 0xC0,
};

// A pen digitizer with report id 2 and 15-bit absolute coordinates.
const Bytes kPenDigitizer = {
    0x05, 0x0D, 0x09, 0x02, 0xA1, 0x01, 0x85, 0x02, 0x09, 0x20, 0xA1, 0x00, 0x09, 0x42, 0x09, 0x44,
    0x09, 0x45, 0x09, 0x3C, 0x15, 0x00, 0x25, 0x01, 0x75, 0x01, 0x95, 0x04, 0x81, 0x02, 0x95, 0x04,
    0x81, 0x03, 0x05, 0x01, 0x09, 0x30, 0x26, 0xFF, 0x7F, 0x75, 0x10, 0x95, 0x01, 0x81, 0x02, 0x09,
    0x31, 0x81, 0x02, 0xC0, 0xC0,
};

// A vendor-defined interface with a two-byte usage page.
const Bytes kVendor = {0x06, 0x00, 0xFF, 0x09, 0x06, 0xA1, 0x01, 0x85, 0x0D, 0x09, 0x0D,
                       0x75, 0x08, 0x95, 0x48, 0xB1, 0x02, 0xC0};

TEST(PrimaryUsage, CommonDevicesAndCutOffLongAndExtendedItems) {
    struct Case {
        const char* name;
        Bytes descriptor;
        uint32_t page;
        uint32_t usage;
    } cases[] = {
        {"mouse", kMouse, 0x01, 0x02},
        {"pen digitizer", kPenDigitizer, 0x0D, 0x02},
        {"vendor", kVendor, 0xFF00, 0x06},
        {"empty", {}, 0, 0},
        // Cut-off, long and extended items.
        {"page item without data", {0x05}, 0, 0},
        {"two-byte page cut after one", {0x06, 0x00}, 0, 0},
        {"usage cut off", {0x05, 0x01, 0x0A, 0x02}, 0x01, 0},
        {"four-byte item cut off", {0x05, 0x01, 0x0B, 0x02, 0x00}, 0x01, 0},
        // The long item's data look like Usage Page (1); it is skipped whole.
        {"long item first", {0xFE, 0x02, 0x10, 0x05, 0x01, 0x05, 0x0D, 0x09, 0x04}, 0x0D, 0x04},
        {"long item past the end", {0xFE, 0x10, 0x10, 0x05, 0x01}, 0, 0},
        {"long item without size", {0xFE}, 0, 0},
        // An extended usage names its own page.
        {"extended usage", {0x0B, 0x02, 0x00, 0x0D, 0x00}, 0x0D, 0x02},
        {"page after usage", {0x09, 0x30, 0x05, 0x01}, 0x01, 0x30},
    };
    for (const Case& c : cases) {
        PrimaryUsage usage = primary_usage(c.descriptor);
        EXPECT_EQ(usage.usage_page, c.page) << c.name;
        EXPECT_EQ(usage.usage, c.usage) << c.name;
    }
}

TEST(HidIdentity, HidIdTexts) {
    auto usb = parse_hid_id("0003:0000046D:0000C52B");
    ASSERT_TRUE(usb);
    EXPECT_EQ(std::tuple(usb->bus, usb->vendor_id, usb->product_id),
              std::tuple(3u, 0x046D, 0xC52B));
    auto wide = parse_hid_id("0018:1234ABCD:00000001");
    ASSERT_TRUE(wide);
    EXPECT_EQ(std::tuple(wide->bus, wide->vendor_id, wide->product_id), std::tuple(0x18u, 0xABCD, 1))
        << "the vendor's low 16 bits";
    for (const char* bad : {"", "0003", "0003:0000046D", "0003:0000046D:0000C52B:", "zz:1:2", "0003::1",
                            "0003:0000046D:12345678A", "-3:1:2"}) {
        EXPECT_FALSE(parse_hid_id(bad)) << bad;
    }

    for (const auto& [bus, name] : {std::pair{3, "USB"}, {5, "Bluetooth"}, {0x18, "I2C"}, {0x06, "Unknown"}, {0, "Unknown"}}) {
        EXPECT_STREQ(transport_name(bus), name) << bus;
    }
}

TEST(HidIdentity, LocationIdFromPortChain) {
    EXPECT_EQ(location_id(1, "2.3"), 0x01230000u);
    EXPECT_EQ(location_id(3, "1"), 0x03100000u);
    EXPECT_EQ(location_id(2, "1.4.2.3"), 0x02142300u);
    EXPECT_EQ(location_id(1, "0"), 0x01000000u);              // a root hub
    EXPECT_EQ(location_id(1, "1.2.3.4.5.6.7"), 0x01123456u);  // six ports fit
    EXPECT_EQ(location_id(0x101, "2"), 0x01200000u);          // the bus keeps its top byte
    EXPECT_EQ(location_id(1, "17"), 0x01100000u);             // a port keeps its low nibble
    EXPECT_EQ(location_id(1, "2.x"), 0x01000000u);
    EXPECT_EQ(location_id(1, "2."), 0x01000000u);
    EXPECT_EQ(location_id(1, ".2"), 0x01000000u);
    EXPECT_EQ(location_id(4, ""), 0x04000000u);
}

TEST(HidIdentity, DescribesAnInterfaceFromWhatSysfsSays) {
    RawInterface raw;
    raw.devnode = "/dev/hidraw3";
    raw.hid_id = "0003:0000F055:00000042";
    raw.descriptor = kVendor;
    raw.usb_bus = 1;
    raw.usb_port_chain = "2.3";
    raw.manufacturer = "Velatrix";
    raw.product = "Quillmark pad";
    auto info = describe_interface(raw);
    ASSERT_TRUE(info);
    EXPECT_EQ(info->transport, "USB");
    EXPECT_EQ(std::tuple(info->vendor_id, info->product_id, info->location_id, info->primary_usage_page,
                         info->primary_usage, info->manufacturer, info->product, info->key),
              std::tuple(0xF055, 0x0042, 0x01230000u, 0xFF00u, 6u, "Velatrix", "Quillmark pad", "/dev/hidraw3"));

    // Over Bluetooth there is no USB parent: no location, no strings.
    RawInterface bluetooth;
    bluetooth.devnode = "/dev/hidraw0";
    bluetooth.hid_id = "0005:0000046D:0000B01A";
    bluetooth.descriptor = kMouse;
    info = describe_interface(bluetooth);
    ASSERT_TRUE(info);
    EXPECT_EQ(std::tuple(info->transport, info->location_id, info->manufacturer, info->product),
              std::tuple("Bluetooth", 0u, std::nullopt, std::nullopt));

    RawInterface unnamed;
    EXPECT_FALSE(describe_interface(unnamed));
    unnamed.hid_id = "garbage";
    EXPECT_FALSE(describe_interface(unnamed));
}

Bytes message(std::string_view text) { return Bytes(text.begin(), text.end()); }

TEST(Uevent, KernelMessages) {
    using namespace std::string_view_literals;
    const auto attach = message(
        "add@/devices/pci0000:00/0000:00:14.0/usb1/1-2\0ACTION=add\0DEVPATH=/devices/pci0000:00/0000:00:14.0/"
        "usb1/1-2\0SUBSYSTEM=usb\0MAJOR=189\0MINOR=1\0DEVNAME=bus/usb/001/002\0DEVTYPE=usb_device\0"
        "PRODUCT=46d/c52b/1211\0TYPE=0/0/0\0BUSNUM=001\0DEVNUM=002\0SEQNUM=4123\0"sv);
    auto event = parse_uevent(attach);
    ASSERT_TRUE(event);
    EXPECT_EQ(std::tuple(event->action, event->subsystem, event->devtype), std::tuple("add", "usb", "usb_device"));
    EXPECT_TRUE(is_usb_device_change(*event));

    // The last field need not be terminated.
    auto detach = parse_uevent(message(
        "remove@/devices/pci0000:00/0000:00:14.0/usb1/1-2\0ACTION=remove\0SUBSYSTEM=usb\0DEVTYPE=usb_device"sv));
    ASSERT_TRUE(detach);
    EXPECT_TRUE(is_usb_device_change(*detach)) << "devtype " << detach->devtype;

    struct Case {
        const char* name;
        Bytes text;
    } not_changes[] = {
        {"interface", message("add@/devices/x/1-2:1.0\0ACTION=add\0SUBSYSTEM=usb\0DEVTYPE=usb_interface\0"sv)},
        {"bind", message("bind@/devices/x/1-2\0ACTION=bind\0SUBSYSTEM=usb\0DEVTYPE=usb_device\0"sv)},
        {"hidraw", message("add@/devices/x/hidraw/hidraw0\0ACTION=add\0SUBSYSTEM=hidraw\0"sv)},
    };
    for (const Case& c : not_changes) {
        auto parsed = parse_uevent(c.text);
        ASSERT_TRUE(parsed) << c.name;
        EXPECT_FALSE(is_usb_device_change(*parsed)) << c.name;
    }

    // udev's own messages and junk are no kernel uevents.
    EXPECT_FALSE(parse_uevent(message("libudev\0\xfe\xed\xca\xfe"sv)));
    EXPECT_FALSE(parse_uevent(message("@/devices/x\0"sv)));
    EXPECT_FALSE(parse_uevent(Bytes{}));
    EXPECT_FALSE(parse_uevent(message("ACTION=add\0SUBSYSTEM=usb\0"sv)));
}

}  // namespace
}  // namespace velatrix::host::linux_hid
