#include <gtest/gtest.h>

#include <string>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

constexpr uint8_t kStatus = 13;

using TransportTest = PadTest;

TEST(FieldHelpers, LittleEndianWithSignExtension) {
    const Bytes bytes = hex("ffff 3412 0080 78563412 feffffff");
    EXPECT_EQ(get2(bytes.data(), 0), -1);
    EXPECT_EQ(get2(bytes.data(), 2), 0x1234);
    EXPECT_EQ(get2(bytes.data(), 4), -32768);
    EXPECT_EQ(get2(bytes.data(), 3), 0x0012) << "unaligned";
    EXPECT_EQ(get4(bytes.data(), 6), 0x12345678);
    EXPECT_EQ(get4(bytes.data(), 10), -2);

    Bytes out(8, 0);
    put4(out.data(), 1, 0x12345678);
    put2(out.data(), 5, 0xABCDEF);  // only the low 16 bits
    EXPECT_EQ(out, hex("00 78563412 efcd 00"));
    put2(out.data(), 0, -2);
    put4(out.data(), 4, int64_t{0x1FFFFFFFF});  // low 32 bits only
    EXPECT_EQ(out, hex("feff 5634 ffffffff"));
}

TEST_F(TransportTest, WrappersPassBufferAndStatusThroughTheDriver) {
    uint8_t get[4] = {20, 0, 0, 0};
    fake.answer(20, {20, 7, 8, 9});
    EXPECT_EQ(velatrix_hid_get_feature_report(device, get, 4), 1);
    EXPECT_EQ(get[3], 9);
    uint8_t set[3] = {15, 1, 2};
    EXPECT_EQ(velatrix_hid_set_feature_report(device, set, 3), 1);
    uint8_t output[2] = {5, 6};
    EXPECT_EQ(velatrix_hid_set_output_report(device, output, 2), 1);
    EXPECT_EQ(fake.sequence(), "G20 S15 O5");
    EXPECT_EQ(fake.transfers()[1].length, 3u);
    EXPECT_EQ(fake.transfers()[2].bytes, (Bytes{5, 6}));

    fake.fail_report(15, "driver said no");
    EXPECT_EQ(velatrix_hid_set_feature_report(device, set, 3), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "driver said no");

    // No driver, no device or no buffer: an error, not a crash.
    fake.clear_transfers();
    velatrix_device orphan{};
    uint8_t buffer[2] = {10, 0};
    EXPECT_EQ(velatrix_hid_get_feature_report(&orphan, buffer, 2), 0);
    EXPECT_STRNE(velatrix_get_last_error(), "");
    EXPECT_EQ(velatrix_hid_set_feature_report(nullptr, buffer, 2), 0);
    EXPECT_EQ(velatrix_hid_set_output_report(device, nullptr, 2), 0);
    EXPECT_TRUE(fake.transfers().empty());
}

// The interlock wait: up to `sleep` status polls until none of the `mask`
// bits is busy.
TEST_F(TransportTest, InterlockWait) {
    const struct {
        const char* name;
        int busy_polls;
        uint8_t busy_bits;
        bool legacy, status_fails;
        int sleep;
        uint8_t mask;
        int result, polls;
    } kCases[] = {
        {"ready at once", 0, 0, false, false, 100, 4, 1, 1},
        {"busy three polls", 3, 0x0C, false, false, 100, 4, 1, 4},
        {"other bits busy", 1000, 0x04, false, false, 100, 8 | 16 | 2, 1, 1},
        {"busy too long", 1000, 0x20, false, false, 5, 32, 0, 5},
        {"zero sleep", 0, 0, false, false, 0, 4, 0, 0},
        {"failed status read counts as ready", 1000, 0x3F, false, true, 100, 63, 1, 1},
        {"legacy firmware skips the wait", 1000, 0x3F, true, false, 100, 4, 1, 0},
        {"legacy firmware, zero sleep", 1000, 0x3F, true, false, 0, 63, 1, 0},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        fake.clear_transfers();
        fake.busy_for(c.busy_polls, c.busy_bits);
        if (c.status_fails) fake.fail_report(kStatus);
        velatrix_set_legacy_firmware(c.legacy ? device : nullptr, c.legacy ? 1 : 0);
        EXPECT_EQ(use_legacy_firmware, c.legacy ? 1 : 0);
        velatrix_report_error_internal("%s", "untouched");
        EXPECT_EQ(wait_for_interlock(device, c.sleep, c.mask), c.result);
        EXPECT_EQ(fake.transfers().size(), static_cast<size_t>(c.polls));
        for (const Transfer& poll : fake.transfers()) EXPECT_EQ(poll.length, 73u);
        EXPECT_EQ(velatrix_get_last_error(),
                  c.result == 1 ? std::string(c.status_fails ? "fake transfer failed" : "untouched")
                                : "Problem waiting for firmware interlock: device didn't respond in time, sleep: " +
                                      std::to_string(c.sleep) + ", interlock: " + std::to_string(c.mask));
    }
}

TEST_F(TransportTest, RunModeWaitsBeforeAndAfter) {
    EXPECT_EQ(velatrix_set_run_mode(device, 0x102), 1);
    EXPECT_EQ(fake.sequence(), "G13 S10 G13");
    EXPECT_EQ(fake.sets(10), (std::vector<Bytes>{{10, 0x02}}));

    // Pad busy before: nothing is sent.
    fake.clear_transfers();
    fake.busy_for(1000, 0x01);
    EXPECT_EQ(velatrix_set_run_mode(device, 2), 0);
    EXPECT_TRUE(fake.sets().empty());
    EXPECT_EQ(fake.gets_of(kStatus), 500);

    // Send fails: the status is passed on after the second wait.
    fake.busy_for(0, 0);
    fake.clear_transfers();
    fake.fail_transfer(2, "send failed");
    EXPECT_EQ(velatrix_set_run_mode(device, 2), 0);
    EXPECT_EQ(fake.sequence(), "G13 S10 G13");

    // Busy after a successful send: reported as a failure all the same.
    fake.clear_transfers();
    fake.answer_sequence(kStatus, {{kStatus, 0, 0, 0}, {kStatus, 0, 0, 1}});
    EXPECT_EQ(velatrix_set_run_mode(device, 0), 0);
    EXPECT_EQ(fake.sets(10).size(), 1u);
    EXPECT_EQ(fake.gets_of(kStatus), 501);
    EXPECT_STREQ(velatrix_get_last_error(),
                 "Problem waiting for firmware interlock: device didn't respond in time, sleep: 500, interlock: 1");
}

}  // namespace
}  // namespace velatrix::testing
