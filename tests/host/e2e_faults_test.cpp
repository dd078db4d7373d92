// Faults injected at the pad: a transfer failing midway through a bitmap,
// and a pad that stays busy. Every transfer of every operation failing or
// unplugging in turn is the fault matrix's (tests/faults).
#include <chrono>

#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

using namespace std::chrono_literals;

class E2eFaults : public E2e {
protected:
    void SetUp() override {
        E2e::SetUp();
        pad_ = plug("color-800");
        device_ = open(pad_);
        ASSERT_NE(device_, nullptr);
    }
    velatrix_virtual_pad pad_ = 0;
    velatrix_device* device_ = nullptr;
};

TEST_F(E2eFaults, TransferFailingMidwayThroughABitmapStopsThere) {
    // 150 x 120 at 24 bits goes in 30 chunks of 5 columns. With the pad
    // never busy each chunk is one status read and one chunk report, so the
    // tenth transfer is the fifth chunk.
    constexpr int kWidth = 150, kHeight = 120, kLeft = 40, kTop = 30;
    Bytes buffer(static_cast<std::size_t>((kWidth * 24 + 31) / 32) * 4 * kHeight + VELATRIX_BITMAP_HEADER_SIZE);
    velatrix_bitmap bitmap{};
    ASSERT_EQ(velatrix_bitmap_init(&bitmap, buffer.data(), kWidth, kHeight), 1);
    velatrix_bitmap_clear(&bitmap, 0x204060FF);
    ASSERT_EQ(velatrix_virtual_set_busy_polls(pad_, 0), 1);
    // Let the flags raised by the open's own requests run out.
    velatrix_hid_feature_device_status status{};
    for (int i = 0; i < 3; ++i) velatrix_get_device_status_ref(device_, &status);
    const uint32_t start = velatrix_virtual_transfer_count(pad_);
    ASSERT_EQ(velatrix_virtual_fail_transfer(pad_, 10), 1);

    EXPECT_EQ(velatrix_transfer_bitmap_to_device(device_, &bitmap, kLeft, kTop, 24), 0);
    EXPECT_EQ(last_error(), "Problem setting hid report 103 (IOReturn: 5, errno: 5): Input/output error\n");
    EXPECT_EQ(velatrix_virtual_transfer_count(pad_), start + 10) << "nothing after the failed chunk";
    for (int x = kLeft; x < kLeft + kWidth; ++x) {
        const bool sent = x < kLeft + 4 * 5;
        const uint32_t pixel = velatrix_virtual_get_pixel(pad_, x, kTop + 60);
        if (sent) {
            EXPECT_EQ(pixel, 0x204060FFu) << "column " << x;
        } else {
            EXPECT_NE(pixel, 0x204060FFu) << "column " << x;
        }
    }

    // A failed read is the driver's message too, and leaves a zero record.
    ASSERT_EQ(velatrix_virtual_fail_transfer(pad_, 1), 1);
    const velatrix_hid_feature_display_settings settings = velatrix_get_display_settings(device_);
    EXPECT_EQ(settings.report_id, 0);
    EXPECT_EQ(settings.brightness, 0);
    EXPECT_EQ(last_error(), "Problem getting hid report 102 (IOReturn: 5, errno: 5): Input/output error\n");
}

TEST_F(E2eFaults, APadStuckBusyTimesOutWithTheInterlockMessage) {
    ASSERT_EQ(velatrix_virtual_stay_busy(pad_, 16), 1);
    EXPECT_EQ(velatrix_set_display_content(device_, 7), 0);
    EXPECT_EQ(last_error(),
              "Problem waiting for firmware interlock: device didn't respond in time, sleep: 100, interlock: 16");
    uint8_t commands[8] = {};
    EXPECT_EQ(velatrix_virtual_get_commands(pad_, 101, commands, sizeof commands), 0) << "never sent";

    // A busy flag the request does not wait on does not hold it up.
    ASSERT_EQ(velatrix_virtual_stay_busy(pad_, 4), 1);
    ASSERT_EQ(velatrix_set_display_content(device_, 7), 1) << last_error();
    ASSERT_EQ(velatrix_virtual_get_commands(pad_, 101, commands, sizeof commands), 1);
    EXPECT_EQ(commands[0], 7);

    // The same for a bitmap: not one chunk goes while the display is busy.
    Bytes buffer(static_cast<std::size_t>((8 * 24 + 31) / 32) * 4 * 8 + VELATRIX_BITMAP_HEADER_SIZE);
    velatrix_bitmap bitmap{};
    ASSERT_EQ(velatrix_bitmap_init(&bitmap, buffer.data(), 8, 8), 1);
    velatrix_bitmap_clear(&bitmap, 0x000000FF);
    ASSERT_EQ(velatrix_virtual_stay_busy(pad_, 16 | 4), 1);
    const uint32_t before = velatrix_virtual_get_pixel(pad_, 700, 20);
    EXPECT_EQ(velatrix_transfer_bitmap_to_device(device_, &bitmap, 700, 20, 24), 0);
    EXPECT_EQ(last_error(),
              "Problem waiting for firmware interlock: device didn't respond in time, sleep: 100, interlock: 16");
    EXPECT_EQ(velatrix_virtual_get_pixel(pad_, 700, 20), before);

    ASSERT_EQ(velatrix_virtual_clear_faults(pad_), 1);
    EXPECT_EQ(velatrix_transfer_bitmap_to_device(device_, &bitmap, 700, 20, 24), 1) << last_error();
    EXPECT_EQ(velatrix_virtual_get_pixel(pad_, 700, 20), 0x000000FFu);
}

}  // namespace
}  // namespace velatrix::e2e
