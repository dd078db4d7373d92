// The report map built from the pad's descriptor, and the feature
// transfers that consult it.
#include <cstring>

#include "driver_fixture.h"

namespace velatrix::testing {
namespace {

std::vector<int> declared_ids(const uint8_t* map) {
    std::vector<int> ids;
    for (int id = 0; id < 256; ++id) {
        if (map[id]) ids.push_back(id);
    }
    return ids;
}

TEST(ParseHidDescriptor, MarksExactlyTheDeclaredIdsAndLeavesEntry255) {
    Bytes descriptor = pad_descriptor_1_2_13();
    uint8_t map[256];
    std::memset(map, 7, sizeof map);
    parse_hid_descriptor(descriptor.data(), static_cast<uint32_t>(descriptor.size()), map);
    EXPECT_EQ(declared_ids(map), (std::vector<int>{1, 2, 13, 255}));
    EXPECT_EQ(map[255], 7);  // never touched
}

TEST(ParseHidDescriptor, WalksItemSizesAndStopsAtTheEnd) {
    uint8_t map[256] = {};
    // A 4-byte item whose data looks like Report ID prefixes must be skipped
    // whole; the last Report ID item has lost its data byte.
    const Bytes descriptor = {0x27, 0x85, 0x09, 0x85, 0x0A,  // Logical Maximum (4 bytes)
                              0x85, 0x03,                    // Report ID (3)
                              0x85};                         // cut off
    parse_hid_descriptor(descriptor.data(), static_cast<uint32_t>(descriptor.size()), map);
    EXPECT_EQ(declared_ids(map), (std::vector<int>{3}));

    // Long items are walked as short items of their size code: 0xFE steps
    // over two bytes, so the 0x85 0x21 that follows is read as Report ID 33.
    std::memset(map, 0, sizeof map);
    const Bytes long_item = {0xFE, 0x02, 0x10, 0x85, 0x21};
    parse_hid_descriptor(long_item.data(), static_cast<uint32_t>(long_item.size()), map);
    EXPECT_EQ(declared_ids(map), (std::vector<int>{33}));

    std::memset(map, 1, sizeof map);
    parse_hid_descriptor(nullptr, 0, map);
    EXPECT_EQ(declared_ids(map), (std::vector<int>{255}));
}

using ReportMapTest = HostDriverTest;

TEST_F(ReportMapTest, FeatureRequestsForUndeclaredIdsNeverReachThePad) {
    auto pad = layer_.add(pad_info(0x0042, 0x01200000), pad_descriptor_1_2_13());
    pad->feature_answers[13] = {13, 0xAA, 0xBB};
    velatrix_device* device = open_first();
    ASSERT_NE(device, nullptr);
    EXPECT_EQ(declared_ids(real(device)->report_map), (std::vector<int>{1, 2, 13}));

    uint8_t request[8] = {14};
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device, request, sizeof request), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Report id 14 isn't supported by this device.\n");
    EXPECT_EQ(velatrix_real_hid_set_feature_report(device, request, sizeof request), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Report id 14 isn't supported by this device.\n");
    EXPECT_TRUE(pad->gets.empty());
    EXPECT_TRUE(pad->sets.empty());

    uint8_t status[5] = {13};
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device, status, sizeof status), 1);
    EXPECT_EQ(Bytes(status, status + 5), (Bytes{13, 0xAA, 0xBB, 0, 0}));
    ASSERT_EQ(pad->gets.size(), 1u);
    EXPECT_EQ(pad->gets[0], (Bytes{13, 0, 0, 0, 0}));  // the whole buffer offered

    uint8_t command[4] = {13, 1, 2, 3};
    EXPECT_EQ(velatrix_real_hid_set_feature_report(device, command, sizeof command), 1);
    ASSERT_EQ(pad->sets.size(), 1u);
    EXPECT_EQ(pad->sets[0], (Bytes{13, 1, 2, 3}));
}

TEST_F(ReportMapTest, FailedTransfersNameTheIdStatusAndErrno) {
    auto pad = layer_.add(pad_info(0x0042, 0x01200000), pad_descriptor_1_2_13());
    velatrix_device* device = open_first();
    ASSERT_NE(device, nullptr);
    pad->transfer_status = 0x2005;  // only the low 13 bits are shown

    uint8_t buffer[3] = {13};
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device, buffer, sizeof buffer), 0);
    EXPECT_EQ(std::string(velatrix_get_last_error()),
              "Problem getting hid report 13 (IOReturn: 5, errno: 5): " + std::string(std::strerror(EIO)) + "\n");
    EXPECT_EQ(velatrix_real_hid_set_feature_report(device, buffer, sizeof buffer), 0);
    EXPECT_EQ(std::string(velatrix_get_last_error()),
              "Problem setting hid report 13 (IOReturn: 5, errno: 5): " + std::string(std::strerror(EIO)) + "\n");

    // Nothing to send or no device: an error, never a crash.
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device, buffer, 0), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Problem getting hid report: no device or an empty buffer.\n");
    EXPECT_EQ(velatrix_real_hid_set_feature_report(nullptr, buffer, sizeof buffer), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Problem setting hid report: no device or an empty buffer.\n");

    // Output reports are accepted and never sent.
    uint8_t output[2] = {99, 1};
    EXPECT_EQ(velatrix_real_hid_set_output_report(device, output, sizeof output), 1);
    EXPECT_EQ(velatrix_real_hid_set_output_report(device, nullptr, 0), 1);
    EXPECT_EQ(pad->sets.size(), 1u);  // only the failed feature set above
}

TEST_F(ReportMapTest, UnreadableDescriptorLetsIds0To254Through) {
    auto pad = layer_.add(pad_info(0x0042, 0x01200000), pad_descriptor_1_2_13());
    pad->descriptor_error = EIO;
    velatrix_device* device = list();
    ASSERT_NE(device, nullptr);
    ASSERT_EQ(velatrix_real_open_device(device), 1);
    EXPECT_EQ(std::string(velatrix_get_last_error()),
              "Problem getting hid descriptor (errno: 5): " + std::string(std::strerror(EIO)) + "\n");
    const uint8_t* map = real(device)->report_map;
    EXPECT_EQ(declared_ids(map).size(), 255u);
    EXPECT_EQ(map[255], 0);

    uint8_t buffer[2] = {255};
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device, buffer, sizeof buffer), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Report id 255 isn't supported by this device.\n");
    buffer[0] = 200;
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device, buffer, sizeof buffer), 1);
    EXPECT_EQ(pad->gets.size(), 1u);
}

TEST_F(ReportMapTest, EmptyDescriptorCountsAsUnreadable) {
    layer_.add(pad_info(0x0042, 0x01200000), Bytes{});
    velatrix_device* device = list();
    ASSERT_NE(device, nullptr);
    ASSERT_EQ(velatrix_real_open_device(device), 1);
    EXPECT_EQ(std::string(velatrix_get_last_error()),
              "Problem getting hid descriptor (errno: " + std::to_string(ENODATA) + "): " +
                  std::string(std::strerror(ENODATA)) + "\n");
    const uint8_t* map = real(device)->report_map;
    EXPECT_EQ(declared_ids(map).size(), 255u);
    EXPECT_EQ(map[255], 0);
    EXPECT_EQ(velatrix_real_close_device(device), 1);
}

TEST_F(ReportMapTest, TransfersAfterCloseFailWithoutReachingThePad) {
    auto pad = layer_.add(pad_info(0x0042, 0x01200000), pad_descriptor_1_2_13());
    velatrix_device* device = open_first();
    ASSERT_NE(device, nullptr);
    ASSERT_EQ(velatrix_real_close_device(device), 1);
    uint8_t buffer[2] = {13};
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device, buffer, sizeof buffer), 0);
    EXPECT_EQ(std::string(velatrix_get_last_error()),
              "Problem getting hid report 13 (IOReturn: 9, errno: 9): " + std::string(std::strerror(EBADF)) + "\n");
    EXPECT_TRUE(pad->gets.empty());
    device->open = 0;
}

}  // namespace
}  // namespace velatrix::testing
