// Listing pads, their path texts, the path snapshots, opening and closing
// through the driver, and the HID service's failures on the way.
#include <cerrno>
#include <deque>

#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

using virtual_pad::bus_hid_layer;

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

// A pad of the first built-in model as another vendor, another usage or
// without strings. Kept for the process: a plugged pad refers to its model.
velatrix_virtual_pad plug_variant(uint16_t vendor, uint32_t usage, bool strings = true) {
    static std::deque<PadModel> made;
    PadModel& model = made.emplace_back(*virtual_pad::all_models().front());
    model.vendor_id = vendor;
    model.usage = usage;
    if (!strings) model.manufacturer = model.product = "";
    return virtual_pad::VirtualBus::instance().plug(model)->id();
}

using ListingTest = E2e;

TEST_F(ListingTest, TakesOnlyThePadVendorWithUsage0Or6InBusOrder) {
    plug_variant(host::kVendorId, 1);
    plug_variant(0x046D, 6);
    const velatrix_virtual_pad pad = plug("mono-320");
    const velatrix_virtual_pad bare = plug_variant(host::kVendorId, 0, false);

    const std::vector<velatrix_device*> listed = list();
    ASSERT_EQ(listed.size(), 2u);
    const velatrix_device* first = listed[0];
    EXPECT_EQ(std::string(first->path), expected_path(pad));
    EXPECT_EQ(std::tuple(first->vendor_id, first->product_id, std::string(first->manufacturer),
                         std::string(first->model), first->driver, first->open),
              std::tuple(host::kVendorId, velatrix_virtual_product_id(pad), std::string("Velatrix"),
                         std::string("Quillmark M320"), &velatrix_real_driver, 0));
    EXPECT_EQ(std::string(listed[1]->path), expected_path(bare));
    EXPECT_EQ(std::tuple(listed[1]->manufacturer, listed[1]->model), std::tuple(nullptr, nullptr));
}

TEST_F(ListingTest, NoPadsGiveANullHeadAndAServiceFailureAnError) {
    plug_variant(0x046D, 6);
    velatrix_device* head = reinterpret_cast<velatrix_device*>(0x1);
    EXPECT_EQ(velatrix_real_list_devices(&velatrix_real_driver, &head), 1);
    EXPECT_EQ(head, nullptr);

    bus_hid_layer().fail_enumerate(EACCES);
    EXPECT_EQ(velatrix_real_list_devices(&velatrix_real_driver, &head), 0);
    EXPECT_EQ(last_error(), "Problem initializing hid manager (13): " + std::string(std::strerror(EACCES)) + "\n");
}

TEST_F(ListingTest, SnapshotsGiveAddedInNewOrderAndRemovedInOldOrder) {
    host::rotate_path_snapshots({"a", "b", "c", "d"});
    host::rotate_path_snapshots({"e", "c", "a", "f"});
    host::PathChanges changes = host::diff_path_snapshots();
    EXPECT_EQ(changes.added, (std::vector<std::string>{"e", "f"}));
    EXPECT_EQ(changes.removed, (std::vector<std::string>{"b", "d"}));

    // Listing rotates the same snapshots: a pad listed twice is no change.
    const velatrix_virtual_pad pad = plug("mono-320");
    list();
    changes = host::diff_path_snapshots();
    EXPECT_EQ(changes.removed, (std::vector<std::string>{"e", "c", "a", "f"}));
    EXPECT_EQ(changes.added, (std::vector<std::string>{expected_path(pad)}));
    list();
    changes = host::diff_path_snapshots();
    EXPECT_TRUE(changes.added.empty());
    EXPECT_TRUE(changes.removed.empty());
}

TEST_F(ListingTest, OpenFindsThePadByPathAndReportsWhyItCannot) {
    plug_variant(0x046D, 6);
    const velatrix_virtual_pad pad = plug("mono-320");
    velatrix_device* device = find(pad);
    ASSERT_NE(device, nullptr);

    ASSERT_EQ(velatrix_virtual_refuse_open(pad), 1);
    EXPECT_EQ(velatrix_real_open_device(device), 0);
    EXPECT_EQ(last_error(), "Problem opening device (permissions issue?): 13\n");

    ASSERT_EQ(velatrix_real_open_device(device), 1) << "only the next open is refused";
    velatrix_real_device* record = host::real(device);
    EXPECT_NE(record->hid_device, nullptr);
    EXPECT_EQ(std::tuple(record->scheduled, record->unplugged, std::string(record->run_loop_mode, 5)),
              std::tuple(0, 0, std::string("ZEMI_")));
    EXPECT_EQ(velatrix_real_close_device(device), 1);
    EXPECT_EQ(record->run_loop_mode[0], '\0');
    // Reopening works on the same record.
    ASSERT_EQ(velatrix_real_open_device(device), 1);
    EXPECT_EQ(velatrix_real_close_device(device), 1);

    ASSERT_EQ(velatrix_virtual_unplug(pad), 1);
    EXPECT_EQ(velatrix_real_open_device(device), 0);
    EXPECT_EQ(last_error(), "Unable to find device with path: " + std::string(device->path) + "\n");
}

}  // namespace
}  // namespace velatrix::e2e
