#include <gmock/gmock.h>

#include <chrono>
#include <string>
#include <tuple>

#include "protocol_test.h"
#include "velatrix-quillmark.h"

namespace velatrix::testing {
namespace {

using ::testing::StartsWith;

// A pad of 320 × 240 with two region slots and four-character captions.
class DeviceOpen : public FakePad {
protected:
    DeviceOpen() {
        fake.answer(100, {100, 0x40, 0x01, 0xF0, 0x00, 1, 6, 12, 2, 4});
        fake.answer(22, {22, 1, 2, 3, 4, 5, 6, 0x34, 0x12});
    }
};

TEST_F(DeviceOpen, CachesTheDescriptionAndRegistersTheDevice) {
    ASSERT_EQ(velatrix_open_device(device), 1);
    EXPECT_EQ(fake.open_calls(), 1);
    EXPECT_EQ(std::tuple(device->open, device->display_info.width, device->display_info.height,
                         device->display_info.region_count, device->version.firmware_version[2],
                         device->version.asic_signature),
              std::tuple(1, 320, 240, 2, 6, 0x1234));
    EXPECT_NE(device->regions, nullptr);
    EXPECT_NE(device->uuid, nullptr);
    EXPECT_EQ(device->font, &velatrix_default);
    ASSERT_NE(device->input_callbacks, nullptr);
    EXPECT_EQ(velatrix_list_count(device->input_callbacks), 0u);
    EXPECT_NE(velatrix_list_find(velatrix_get_open_devices(), device), nullptr);
    // One status poll (the pad is ready), then the description in order.
    EXPECT_THAT(fake.sequence(), StartsWith("G13 G100 G22 "));

    EXPECT_EQ(velatrix_open_device(device), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device is already open.");
    EXPECT_EQ(fake.open_calls(), 1);

    EXPECT_EQ(velatrix_close_device(device), 1);
    EXPECT_EQ(std::tuple(device->open, device->input_callbacks, device->regions, device->uuid),
              std::tuple(0, nullptr, nullptr, nullptr));
    EXPECT_EQ(fake.close_calls(), 1);
    EXPECT_EQ(velatrix_list_find(velatrix_get_open_devices(), device), nullptr);
    EXPECT_STREQ(device->path, "fake_pad") << "closing does not free the record";

    EXPECT_EQ(velatrix_close_device(device), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device is already closed.");
    EXPECT_EQ(fake.close_calls(), 1);

    // Reopening is allowed and makes a new callback list.
    ASSERT_EQ(velatrix_open_device(device), 1);
    EXPECT_NE(device->input_callbacks, nullptr);
    velatrix_close_device(device);

    // Null records are refused with the open function's message.
    EXPECT_EQ(velatrix_open_device(nullptr), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Parameter passed into velatrix_open_device was null.");
    velatrix_report_error_internal("something else");
    EXPECT_EQ(velatrix_close_device(nullptr), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Parameter passed into velatrix_open_device was null.");
}

TEST_F(DeviceOpen, ADriverThatCannotOpenKeepsTheRecordClosed) {
    fake.set_open_result(0);
    EXPECT_EQ(velatrix_open_device(device), 0);
    EXPECT_EQ(device->open, 0);
    EXPECT_TRUE(fake.transfers().empty());
    EXPECT_EQ(fake.free_calls(), 0);
}

// A failed display-information read, or an unreadable table (no
// identifier), closes and frees the record.
TEST_F(DeviceOpen, AFailedDescriptionClosesAndFreesTheRecord) {
    for (uint8_t report : {100, 26}) {
        SCOPED_TRACE(int(report));
        FakeDriver other;
        other.answer(100, {100, 0x40, 0x01, 0xF0, 0x00, 1, 6, 12, 2, 4});
        other.fail_report(report);
        velatrix_device* record = other.make_device();
        other.released(record);
        EXPECT_EQ(velatrix_open_device(record), 0);
        EXPECT_EQ(other.close_calls(), 1);
        EXPECT_EQ(other.free_calls(), 1);
    }
}

TEST_F(DeviceOpen, APadThatKeepsInitialisingIsWaitedForFiftyPolls) {
    fake.answer(13, {13, 0x01});
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(velatrix_open_device(device), 1);
    const auto waited = std::chrono::steady_clock::now() - start;
    std::string expected;
    for (int i = 0; i < 50; ++i) expected += "G13 ";
    EXPECT_THAT(fake.sequence(), StartsWith(expected + "G100 "));
    EXPECT_GE(waited, std::chrono::milliseconds(5000));
    velatrix_close_device(device);
}

TEST_F(DeviceOpen, AFailedStatusReadEndsTheWaitAtOnce) {
    fake.fail_transfer(1);
    ASSERT_EQ(velatrix_open_device(device), 1);
    EXPECT_THAT(fake.sequence(), StartsWith("G13 G100 "));
    velatrix_close_device(device);
}

}  // namespace
}  // namespace velatrix::testing
