// Reading on the caller's thread: queued input reaching the callbacks,
// oversized reports and the "not open" errors. The read thread is
// e2e_input_test's, removal during a read the threaded suite's.
#include <chrono>
#include <tuple>

#include "driver_fixture.h"
#include "support/recorder.h"
#include "velatrix/input.h"

namespace velatrix::testing {
namespace {

using namespace std::chrono_literals;

struct Seen {
    uint8_t type;
    uint16_t x;
    uint16_t y;
    Bytes raw;
};

Recorder<Seen> seen;

int record_input(velatrix_device*, const velatrix_input_report* record, int type, const uint8_t* raw,
                 uint32_t length) {
    seen.add(Seen{static_cast<uint8_t>(type), record->data.coordinate.x, record->data.coordinate.y,
                        Bytes(raw, raw + length)});
    return 0;
}

class ReadTest : public HostDriverTest {
protected:
    void SetUp() override {
        HostDriverTest::SetUp();
        seen.take();
        pad_ = layer_.add(pad_info(0x0100, 0x01200000), pad_descriptor_1_2_13());
    }
    std::shared_ptr<FakeInterfaceState> pad_;
};

TEST_F(ReadTest, QueuedReportsReachEveryCallbackInOrderAndBadOnesNone) {
    velatrix_device* device = open_first();
    ASSERT_NE(device, nullptr);
    velatrix_list_add(device->input_callbacks, reinterpret_cast<void*>(&record_input));
    pad_->push_input({1, 0x11, 0x34, 0x12, 0x78, 0x56});
    pad_->push_input({1, 0x01});  // too short to be a coordinate
    pad_->push_input({1, 0x10, 0x02, 0x00, 0x03, 0x00, 0xEE});

    EXPECT_EQ(velatrix_real_device_read(device), 1);
    EXPECT_EQ(real(device)->scheduled, 1);
    std::vector<Seen> got = seen.take();
    ASSERT_EQ(got.size(), 2u);
    EXPECT_EQ(std::tuple(got[0].type, got[0].x, got[0].y, got[0].raw, got[1].x),
              std::tuple(1, 0x1234, 0x5678, (Bytes{1, 0x11, 0x34, 0x12, 0x78, 0x56}), 2));
    EXPECT_EQ(got[1].raw.size(), 7u);
    EXPECT_EQ(real(device)->pending_reports.size(), 0u);

    // Nothing arrives: the read gives up after its wait and still succeeds.
    auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(velatrix_real_device_read(device), 1);
    auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, 900ms);
    EXPECT_LT(waited, 3s);
    EXPECT_TRUE(seen.take().empty());
}

TEST_F(ReadTest, OversizedReportsAreCutToTheInputBuffer) {
    velatrix_device* device = open_first();
    ASSERT_NE(device, nullptr);
    velatrix_list_add(device->input_callbacks, reinterpret_cast<void*>(&record_input));
    Bytes big(700, 0);
    big[0] = 1;
    pad_->push_input(big);
    EXPECT_EQ(velatrix_real_device_read(device), 1);
    std::vector<Seen> got = seen.take();
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].raw.size(), 512u);
}

TEST_F(ReadTest, ReadingAClosedDeviceFails) {
    velatrix_device* device = list();
    ASSERT_NE(device, nullptr);
    EXPECT_EQ(velatrix_real_device_read(device), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device is not open");
    velatrix_report_error_internal("%s", "");
    EXPECT_EQ(velatrix_real_device_read(nullptr), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device is not open");
}

}  // namespace
}  // namespace velatrix::testing
