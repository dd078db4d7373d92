#include <gtest/gtest.h>

#include "support/fake_driver.h"
#include "velatrix-quillmark.h"

namespace {

using velatrix::testing::Bytes;
using velatrix::testing::FakeDriver;

TEST(Firmware, PageTravelsWithAddressDataAndTheCallersChecksum) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    velatrix_firmware_page page{};
    page.reserved = 0xDEADBEEF;  // never sent
    page.address = 0x12345678;
    for (int i = 0; i < 128; ++i) page.data[i] = static_cast<uint8_t>(i);
    page.checksum = 0x5A;
    EXPECT_EQ(velatrix_set_firmware(device, page), 1);
    const auto sent = fake.sets(25);
    ASSERT_EQ(sent.size(), 1u);
    Bytes expected(134, 0);
    expected[0] = 0x19;
    expected[1] = 0x78, expected[2] = 0x56, expected[3] = 0x34, expected[4] = 0x12;
    for (int i = 0; i < 128; ++i) expected[5 + i] = static_cast<uint8_t>(i);
    expected[133] = 0x5A;
    EXPECT_EQ(sent[0], expected);
    EXPECT_EQ(fake.sequence(), "S25") << "no interlock wait";

    fake.fail_report(25);
    EXPECT_EQ(velatrix_set_firmware(device, page), 0);
}

TEST(Firmware, DownloadStatusSendsTheLow16Bits) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    EXPECT_EQ(velatrix_set_firmware_download_status(device, 0xABCD1234), 1);
    EXPECT_EQ(fake.sets(29), (std::vector<Bytes>{{0x1D, 0x34, 0x12}}));
}

TEST(PenSimulation, BuildsThe67ByteReport) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    velatrix_pen_simulation pen{0xEE, 7, 0x0102, 0x0304, 1};
    EXPECT_EQ(velatrix_simulate_pen_input(device, &pen), 1);
    Bytes expected(67, 0);
    expected[0] = 0xFD, expected[1] = 0x64, expected[2] = 7, expected[6] = 0x11;
    expected[7] = 0x02, expected[8] = 0x01, expected[9] = 0x04, expected[10] = 0x03;
    EXPECT_EQ(fake.sets(253), (std::vector<Bytes>{expected}));

    fake.clear_transfers();
    pen.pen_down = 0;
    velatrix_simulate_pen_input(device, &pen);
    EXPECT_EQ(fake.sets(253).at(0)[6], 0x10);
}

TEST(PenSimulation, NullInputIsAnErrorWithoutTraffic) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    EXPECT_EQ(velatrix_simulate_pen_input(device, nullptr), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Pen input was null, unable to simulate it.");
    EXPECT_TRUE(fake.transfers().empty());
}

TEST(PenSimulation, AFailedSendLogsAndReturnsZero) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    fake.fail_report(253, "gone");
    velatrix_pen_simulation pen{};
    EXPECT_EQ(velatrix_simulate_pen_input(device, &pen), 0);
}

}  // namespace
