// Listing pads, their path texts, the path snapshots, opening and closing.
#include <cstring>
#include <tuple>

#include "driver_fixture.h"

namespace velatrix::testing {
namespace {

host::HidInterfaceInfo with_vendor_usage(uint16_t vendor, uint32_t usage, uint32_t location) {
    host::HidInterfaceInfo info = pad_info(0x0100, location);
    info.vendor_id = vendor;
    info.primary_usage = usage;
    return info;
}

TEST(DevicePath, FormatsTransportIdsUsageAndLocation) {
    host::HidInterfaceInfo info;
    info.transport = "USB";
    info.vendor_id = 0x1A2B;
    info.product_id = 0x00C4;
    info.primary_usage_page = 0xFF00;
    info.primary_usage = 6;
    info.location_id = 0x01230000;
    EXPECT_EQ(host::device_path(info), "USB_1a2b_00c4_ff00_06_1230000");
    info.transport = "Bluetooth";
    info.vendor_id = 0x0001;
    info.product_id = 0xFFFF;
    info.primary_usage_page = 1;
    info.primary_usage = 0;
    info.location_id = 0;
    EXPECT_EQ(host::device_path(info), "Bluetooth_0001_ffff_01_00_0");
    info.transport = std::string(300, 'x');  // the path buffer holds 255 characters
    EXPECT_EQ(host::device_path(info).size(), 255u);
}

using ListingTest = HostDriverTest;

TEST_F(ListingTest, TakesOnlyThePadVendorWithUsage0Or6InServiceOrder) {
    layer_.add(with_vendor_usage(host::kVendorId, 1, 0x01100000));  // pad vendor, other usage
    layer_.add(with_vendor_usage(0x046D, 6, 0x01200000));           // other vendor
    layer_.add(with_vendor_usage(host::kVendorId, 6, 0x01300000));
    auto bare = with_vendor_usage(host::kVendorId, 0, 0x01400000);
    bare.manufacturer.reset();
    bare.product.reset();
    layer_.add(bare);

    velatrix_device* head = list();
    ASSERT_EQ(velatrix_count_device_list(head), 2u);
    char expected[64];
    std::snprintf(expected, sizeof expected, "USB_%04x_0100_ff00_06_1300000", host::kVendorId);
    EXPECT_STREQ(head->path, expected);
    EXPECT_EQ(head->vendor_id, host::kVendorId);
    EXPECT_EQ(head->product_id, 0x0100);
    EXPECT_STREQ(head->manufacturer, "Velatrix");
    EXPECT_STREQ(head->model, "Quillmark pad");
    EXPECT_EQ(head->driver, &velatrix_real_driver);
    EXPECT_EQ(head->open, 0);
    velatrix_device* second = head->next;
    std::snprintf(expected, sizeof expected, "USB_%04x_0100_ff00_00_1400000", host::kVendorId);
    EXPECT_STREQ(second->path, expected);
    EXPECT_EQ(std::tuple(second->manufacturer, second->model, second->next),
              std::tuple(nullptr, nullptr, nullptr));
}

TEST_F(ListingTest, NoPadsGiveANullHeadAndAServiceFailureAnError) {
    layer_.add(with_vendor_usage(0x046D, 6, 0));
    velatrix_device* head = reinterpret_cast<velatrix_device*>(0x1);
    EXPECT_EQ(velatrix_real_list_devices(&velatrix_real_driver, &head), 1);
    EXPECT_EQ(head, nullptr);

    layer_.set_enumerate_error(EACCES);
    EXPECT_EQ(velatrix_real_list_devices(&velatrix_real_driver, &head), 0);
    EXPECT_EQ(std::string(velatrix_get_last_error()),
              "Problem initializing hid manager (13): " + std::string(std::strerror(EACCES)) + "\n");
}

TEST_F(ListingTest, SnapshotsGiveAddedInNewOrderAndRemovedInOldOrder) {
    host::rotate_path_snapshots({"a", "b", "c", "d"});
    host::rotate_path_snapshots({"e", "c", "a", "f"});
    host::PathChanges changes = host::diff_path_snapshots();
    EXPECT_EQ(changes.added, (std::vector<std::string>{"e", "f"}));
    EXPECT_EQ(changes.removed, (std::vector<std::string>{"b", "d"}));

    // Listing rotates the same snapshots: a pad listed twice is no change.
    layer_.add(pad_info(0x0100, 0x01100000));
    list();
    changes = host::diff_path_snapshots();
    EXPECT_EQ(changes.removed, (std::vector<std::string>{"e", "c", "a", "f"}));
    ASSERT_EQ(changes.added.size(), 1u);
    list();
    changes = host::diff_path_snapshots();
    EXPECT_TRUE(changes.added.empty());
    EXPECT_TRUE(changes.removed.empty());
}

TEST_F(ListingTest, OpenFindsThePadByPathAndReportsWhyItCannot) {
    layer_.add(with_vendor_usage(0x046D, 6, 0x01100000));
    auto pad = layer_.add(pad_info(0x0100, 0x01200000), pad_descriptor_1_2_13());
    velatrix_device* device = list();
    ASSERT_NE(device, nullptr);

    layer_.set_open_error(EACCES);
    EXPECT_EQ(velatrix_real_open_device(device), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Problem opening device (permissions issue?): 13\n");

    layer_.set_open_error(0);
    ASSERT_EQ(velatrix_real_open_device(device), 1);
    velatrix_real_device* record = real(device);
    EXPECT_NE(record->hid_device, nullptr);
    EXPECT_EQ(record->scheduled, 0);
    EXPECT_EQ(record->unplugged, 0);
    EXPECT_EQ(std::strncmp(record->run_loop_mode, "ZEMI_", 5), 0);
    EXPECT_EQ(velatrix_real_close_device(device), 1);
    EXPECT_EQ(pad->closes, 1);
    EXPECT_EQ(record->run_loop_mode[0], '\0');
    // Reopening works on the same record.
    ASSERT_EQ(velatrix_real_open_device(device), 1);
    EXPECT_EQ(velatrix_real_close_device(device), 1);
    EXPECT_EQ(pad->closes, 2);

    layer_.remove(1);
    EXPECT_EQ(velatrix_real_open_device(device), 0);
    EXPECT_EQ(std::string(velatrix_get_last_error()),
              "Unable to find device with path: " + std::string(device->path) + "\n");
}

}  // namespace
}  // namespace velatrix::testing
