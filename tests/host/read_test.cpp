// Reading: queued input reaching the callbacks, the "not open" errors,
// removal during a read, and the read-until-done thread.
#include <atomic>
#include <chrono>
#include <mutex>
#include <thread>

#include "driver_fixture.h"
#include "velatrix/host.h"
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

std::mutex seen_mutex;
std::vector<Seen> seen;

int record_input(velatrix_device*, const velatrix_input_report* record, int type, const uint8_t* raw,
                 uint32_t length) {
    std::lock_guard lock(seen_mutex);
    seen.push_back(Seen{static_cast<uint8_t>(type), record->data.coordinate.x, record->data.coordinate.y,
                        Bytes(raw, raw + length)});
    return 0;
}

std::vector<Seen> take_seen() {
    std::lock_guard lock(seen_mutex);
    std::vector<Seen> result;
    result.swap(seen);
    return result;
}

class ReadTest : public HostDriverTest {
protected:
    void SetUp() override {
        HostDriverTest::SetUp();
        take_seen();
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
    std::vector<Seen> got = take_seen();
    ASSERT_EQ(got.size(), 2u);
    EXPECT_EQ(got[0].type, 1);
    EXPECT_EQ(got[0].x, 0x1234);
    EXPECT_EQ(got[0].y, 0x5678);
    EXPECT_EQ(got[0].raw, (Bytes{1, 0x11, 0x34, 0x12, 0x78, 0x56}));
    EXPECT_EQ(got[1].x, 2);
    EXPECT_EQ(got[1].raw.size(), 7u);
    EXPECT_EQ(real(device)->pending_reports.size(), 0u);

    // Nothing arrives: the read gives up after its wait and still succeeds.
    auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(velatrix_real_device_read(device), 1);
    auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, 900ms);
    EXPECT_LT(waited, 3s);
    EXPECT_TRUE(take_seen().empty());
}

TEST_F(ReadTest, OversizedReportsAreCutToTheInputBuffer) {
    velatrix_device* device = open_first();
    ASSERT_NE(device, nullptr);
    velatrix_list_add(device->input_callbacks, reinterpret_cast<void*>(&record_input));
    Bytes big(700, 0);
    big[0] = 1;
    pad_->push_input(big);
    EXPECT_EQ(velatrix_real_device_read(device), 1);
    std::vector<Seen> got = take_seen();
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

TEST_F(ReadTest, UnplugDuringAReadClosesTheDevice) {
    velatrix_device* device = open_first();
    ASSERT_NE(device, nullptr);
    std::thread unplugger([this] {
        ASSERT_TRUE(pad_->wait_for_reader(5s));
        pad_->unplug();
    });
    EXPECT_EQ(velatrix_real_device_read(device), 0);
    unplugger.join();
    EXPECT_STREQ(velatrix_get_last_error(), "Device is not open after read");
    EXPECT_EQ(device->open, 0);
    EXPECT_EQ(real(device)->unplugged, 1);
    EXPECT_EQ(device->input_callbacks, nullptr);  // the library's close ran
    EXPECT_EQ(pad_->closes, 1);                     // and released the handle

    EXPECT_EQ(velatrix_real_device_read(device), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device is not open");
}

TEST_F(ReadTest, ReadThreadDeliversAndStopsSoonAfterReadDone) {
    velatrix_device* device = open_first();
    ASSERT_NE(device, nullptr);
    velatrix_list_add(device->input_callbacks, reinterpret_cast<void*>(&record_input));
    velatrix_device_read_until_done(device);
    ASSERT_TRUE(real(device)->read_thread.started());

    pad_->push_input({1, 0x11, 5, 0, 6, 0});
    auto deadline = std::chrono::steady_clock::now() + 5s;
    std::vector<Seen> got;
    while (got.empty() && std::chrono::steady_clock::now() < deadline) {
        std::this_thread::sleep_for(10ms);
        got = take_seen();
    }
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0].x, 5);

    ASSERT_TRUE(pad_->wait_for_reader(5s));
    auto start = std::chrono::steady_clock::now();
    velatrix_device_read_done(device);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1500ms);
    EXPECT_FALSE(real(device)->read_thread.started());
    EXPECT_EQ(device->open, 0);
    EXPECT_EQ(pad_->closes, 1);

    // Without a thread it does nothing.
    velatrix_device_read_done(device);
    EXPECT_EQ(pad_->closes, 1);
}

TEST_F(ReadTest, ReadThreadEndsByItselfOnUnplug) {
    velatrix_device* device = open_first();
    ASSERT_NE(device, nullptr);
    velatrix_device_read_until_done(device);
    ASSERT_TRUE(pad_->wait_for_reader(5s));
    pad_->unplug();
    // The reader closes the device itself; read_done then only joins.
    ASSERT_TRUE(pad_->wait_for_close(5s));
    velatrix_device_read_done(device);
    EXPECT_EQ(device->open, 0);
    EXPECT_EQ(real(device)->unplugged, 1);
    EXPECT_EQ(pad_->closes, 1);
}

}  // namespace
}  // namespace velatrix::testing
