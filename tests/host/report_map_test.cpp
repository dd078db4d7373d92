// The report map built from the pad's descriptor, and the feature
// transfers that consult it, through the driver on a virtual pad.
#include <cerrno>

#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

using virtual_pad::bus_hid_layer;

std::vector<int> declared_ids(const uint8_t* map) {
    std::vector<int> ids;
    for (int id = 0; id < 256; ++id) {
        if (map[id]) ids.push_back(id);
    }
    return ids;
}

// Every entry but 255 is cleared or marked; 255 is never touched, so the
// map's fill shows through there.
TEST(ParseHidDescriptor, MarksExactlyTheDeclaredIdsAndLeavesEntry255) {
    const struct {
        const char* name;
        Bytes descriptor;
        std::vector<int> marked;
    } cases[] = {
        {"a vendor collection with input reports 1 and 2 and feature report 13",
         {0x06, 0x00, 0xFF, 0x09, 0x06, 0xA1, 0x01,  // Usage Page, Usage, Collection
          0x85, 0x01, 0x09, 0x01, 0x15, 0x00, 0x26, 0xFF, 0x00, 0x75, 0x08, 0x95, 0x05, 0x81, 0x02,
          0x85, 0x02, 0x09, 0x02, 0x95, 0x06, 0x81, 0x02,
          0x85, 0x0D, 0x09, 0x0D, 0x95, 0x48, 0xB1, 0x02,
          0xC0},  // End Collection
         {1, 2, 13, 255}},
        // A 4-byte item whose data looks like Report ID prefixes is skipped
        // whole; the last Report ID item has lost its data byte.
        {"item sizes and a cut end", {0x27, 0x85, 0x09, 0x85, 0x0A, 0x85, 0x03, 0x85}, {3, 255}},
        // Long items are walked as short items of their size code: 0xFE steps
        // over two bytes, so the 0x85 0x21 that follows is read as Report ID 33.
        {"long item", {0xFE, 0x02, 0x10, 0x85, 0x21}, {33, 255}},
        {"none", {}, {255}},
    };
    for (const auto& c : cases) {
        uint8_t map[256];
        std::memset(map, 7, sizeof map);
        parse_hid_descriptor(c.descriptor.empty() ? nullptr : c.descriptor.data(),
                             static_cast<uint32_t>(c.descriptor.size()), map);
        EXPECT_EQ(std::tuple(declared_ids(map), map[255]), std::tuple(c.marked, 7)) << c.name;
    }
}

// The monochrome pad, listed and opened through the driver alone (no
// description reads): transfers are counted from zero.
class ReportMapTest : public E2e {
protected:
    void SetUp() override {
        E2e::SetUp();
        pad_ = plug("mono-320");
        device_ = find(pad_);
        ASSERT_NE(device_, nullptr);
    }
    void TearDown() override {
        if (device_ != nullptr) velatrix_real_close_device(device_);
        E2e::TearDown();
    }
    uint32_t transfers() const { return velatrix_virtual_transfer_count(pad_); }

    velatrix_virtual_pad pad_ = 0;
    velatrix_device* device_ = nullptr;
};

TEST_F(ReportMapTest, FeatureRequestsForUndeclaredIdsNeverReachThePad) {
    ASSERT_EQ(velatrix_real_open_device(device_), 1);
    const uint8_t* map = host::real(device_)->report_map;
    EXPECT_EQ(std::tuple(map[100], map[162], map[255]), std::tuple(1, 0, 0)) << "the mono pad has no screens";

    uint8_t screen[8] = {162};
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device_, screen, sizeof screen), 0);
    EXPECT_EQ(last_error(), "Report id 162 isn't supported by this device.\n");
    EXPECT_EQ(velatrix_real_hid_set_feature_report(device_, screen, sizeof screen), 0);
    EXPECT_EQ(last_error(), "Report id 162 isn't supported by this device.\n");
    EXPECT_EQ(transfers(), 0u);

    // The whole buffer is offered: the pad cuts its answer to it.
    uint8_t info[5] = {100};
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device_, info, sizeof info), 1);
    EXPECT_EQ(Bytes(info, info + 5), (Bytes{100, 0x40, 0x01, 0xF0, 0x00}));
    uint8_t idle[2] = {10, 0};
    EXPECT_EQ(velatrix_real_hid_set_feature_report(device_, idle, sizeof idle), 1);
    EXPECT_EQ(transfers(), 2u);
}

TEST_F(ReportMapTest, FailedTransfersNameTheIdStatusAndErrno) {
    ASSERT_EQ(velatrix_real_open_device(device_), 1);
    bus_hid_layer().fail_transfers(pad_, 0x2005);  // only the low 13 bits are shown
    uint8_t buffer[3] = {100};
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device_, buffer, sizeof buffer), 0);
    EXPECT_EQ(last_error(),
              "Problem getting hid report 100 (IOReturn: 5, errno: 5): " + std::string(std::strerror(EIO)) + "\n");
    EXPECT_EQ(velatrix_real_hid_set_feature_report(device_, buffer, sizeof buffer), 0);
    EXPECT_EQ(last_error(),
              "Problem setting hid report 100 (IOReturn: 5, errno: 5): " + std::string(std::strerror(EIO)) + "\n");

    // Nothing to send or no device: an error, never a crash.
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device_, buffer, 0), 0);
    EXPECT_EQ(last_error(), "Problem getting hid report: no device or an empty buffer.\n");
    EXPECT_EQ(velatrix_real_hid_set_feature_report(nullptr, buffer, sizeof buffer), 0);
    EXPECT_EQ(last_error(), "Problem setting hid report: no device or an empty buffer.\n");

    // Output reports are accepted and never sent.
    bus_hid_layer().clear_faults(pad_);
    uint8_t output[2] = {99, 1};
    EXPECT_EQ(velatrix_real_hid_set_output_report(device_, output, sizeof output), 1);
    EXPECT_EQ(velatrix_real_hid_set_output_report(device_, nullptr, 0), 1);
    EXPECT_EQ(transfers(), 0u);
}

// An unreadable descriptor, or an empty one, lets every id but 255 through.
TEST_F(ReportMapTest, UnreadableOrEmptyDescriptorLetsIds0To254Through) {
    for (const int error : {EIO, 0}) {
        SCOPED_TRACE(error);
        bus_hid_layer().fail_descriptor(pad_, error);
        ASSERT_EQ(velatrix_real_open_device(device_), 1);
        const int shown = error != 0 ? error : ENODATA;
        EXPECT_EQ(last_error(), "Problem getting hid descriptor (errno: " + std::to_string(shown) +
                                    "): " + std::string(std::strerror(shown)) + "\n");
        const uint8_t* map = host::real(device_)->report_map;
        EXPECT_EQ(declared_ids(map).size(), 255u);
        EXPECT_EQ(map[255], 0);

        uint8_t buffer[2] = {255};
        const uint32_t before = transfers();
        EXPECT_EQ(velatrix_real_hid_get_feature_report(device_, buffer, sizeof buffer), 0);
        EXPECT_EQ(last_error(), "Report id 255 isn't supported by this device.\n");
        buffer[0] = 162;  // undeclared by the pad, yet sent (and refused there)
        velatrix_real_hid_get_feature_report(device_, buffer, sizeof buffer);
        EXPECT_EQ(transfers(), before + 1);
        EXPECT_EQ(velatrix_real_close_device(device_), 1);
    }
}

TEST_F(ReportMapTest, TransfersAfterCloseFailWithoutReachingThePad) {
    ASSERT_EQ(velatrix_real_open_device(device_), 1);
    ASSERT_EQ(velatrix_real_close_device(device_), 1);
    uint8_t buffer[2] = {100};
    EXPECT_EQ(velatrix_real_hid_get_feature_report(device_, buffer, sizeof buffer), 0);
    EXPECT_EQ(last_error(),
              "Problem getting hid report 100 (IOReturn: 9, errno: 9): " + std::string(std::strerror(EBADF)) + "\n");
    EXPECT_EQ(transfers(), 0u);
}

}  // namespace
}  // namespace velatrix::e2e
