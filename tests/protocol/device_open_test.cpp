#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <tuple>

#include "support/fake_driver.h"
#include "velatrix-quillmark.h"

namespace {

using velatrix::testing::Bytes;
using velatrix::testing::FakeDriver;

// A pad of 320 × 240 with two region slots and four-character captions.
void describe_pad(FakeDriver& fake) {
    fake.answer(100, {100, 0x40, 0x01, 0xF0, 0x00, 1, 6, 12, 2, 4});
    fake.answer(22, {22, 1, 2, 3, 4, 5, 6, 0x34, 0x12});
}

std::string first_transfers(const FakeDriver& fake, size_t count) {
    std::string out;
    for (size_t i = 0; i < count && i < fake.transfers().size(); ++i) {
        const auto& t = fake.transfers()[i];
        out += (t.direction == velatrix::testing::Direction::Get ? "G" : "S") + std::to_string(t.report_id) + " ";
    }
    return out;
}

TEST(DeviceOpen, CachesTheDescriptionAndRegistersTheDevice) {
    FakeDriver fake;
    describe_pad(fake);
    velatrix_device* device = fake.make_device();
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
    EXPECT_EQ(first_transfers(fake, 3), "G13 G100 G22 ");

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
}

TEST(DeviceOpen, NullRecordsAreRefusedWithTheOpenFunctionsMessage) {
    EXPECT_EQ(velatrix_open_device(nullptr), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Parameter passed into velatrix_open_device was null.");
    velatrix_report_error_internal("something else");
    EXPECT_EQ(velatrix_close_device(nullptr), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Parameter passed into velatrix_open_device was null.");
}

TEST(DeviceOpen, ADriverThatCannotOpenKeepsTheRecordClosed) {
    FakeDriver fake;
    fake.set_open_result(0);
    velatrix_device* device = fake.make_device();
    EXPECT_EQ(velatrix_open_device(device), 0);
    EXPECT_EQ(device->open, 0);
    EXPECT_TRUE(fake.transfers().empty());
    EXPECT_EQ(fake.free_calls(), 0);
}

TEST(DeviceOpen, AFailedDisplayInfoReadClosesAndFreesTheRecord) {
    FakeDriver fake;
    describe_pad(fake);
    fake.fail_report(100);
    velatrix_device* device = fake.make_device();
    fake.released(device);  // the failed open frees it
    EXPECT_EQ(velatrix_open_device(device), 0);
    EXPECT_EQ(fake.close_calls(), 1);
    EXPECT_EQ(fake.free_calls(), 1);
}

TEST(DeviceOpen, AnUnreadableTableMeansNoIdentifierAndNoOpen) {
    FakeDriver fake;
    describe_pad(fake);
    fake.fail_report(26);
    velatrix_device* device = fake.make_device();
    fake.released(device);
    EXPECT_EQ(velatrix_open_device(device), 0);
    EXPECT_EQ(fake.free_calls(), 1);
}

TEST(DeviceOpen, APadThatKeepsInitialisingIsWaitedForFiftyPolls) {
    FakeDriver fake;
    describe_pad(fake);
    fake.answer(13, {13, 0x01});
    velatrix_device* device = fake.make_device();
    const auto start = std::chrono::steady_clock::now();
    ASSERT_EQ(velatrix_open_device(device), 1);
    const auto waited = std::chrono::steady_clock::now() - start;
    std::string expected;
    for (int i = 0; i < 50; ++i) expected += "G13 ";
    EXPECT_EQ(first_transfers(fake, 51), expected + "G100 ");
    EXPECT_GE(waited, std::chrono::milliseconds(5000));
    velatrix_close_device(device);
}

TEST(DeviceOpen, AFailedStatusReadEndsTheWaitAtOnce) {
    FakeDriver fake;
    describe_pad(fake);
    fake.fail_transfer(1);
    velatrix_device* device = fake.make_device();
    ASSERT_EQ(velatrix_open_device(device), 1);
    EXPECT_EQ(first_transfers(fake, 2), "G13 G100 ");
    velatrix_close_device(device);
}

}  // namespace
