#include <functional>
#include <tuple>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

using DeviceStatus = PadTest;
using SerialNumber = PadTest;

Bytes serial_write(const std::string& text) {
    Bytes bytes = wire(27, 35, {{33, {'S', 'N'}}});
    std::copy(text.begin(), text.end(), bytes.begin() + 1);
    return bytes;
}

TEST_F(DeviceStatus, UnpacksFlagsWordsAndErrorText) {
    // Byte 0 of the answer is not trusted: a successful read marks the record 13.
    fake.answer(13, wire(0, 73, {{1, {0x11 | 0xEE, 0x03, 0x25 | 0xC0, 0xAB, 0x34, 0x12, 0x78, 0x56}},
                                 {9, text_bytes("E42: flash full")}}));

    velatrix_hid_feature_device_status status;
    std::memset(&status, 0x77, sizeof status);
    EXPECT_EQ(velatrix_get_device_status(&status, device), &status);
    EXPECT_EQ(fake.transfers().at(0).length, 73u);
    // The print-out below shows the other fields.
    EXPECT_EQ(std::tuple(status.interlock_0, status.interlock_1, status.interlock_2, status.interlock_3,
                         status.interlock_4, status.interlock_5, status.reserved3),
              std::tuple(1, 0, 1, 0, 0, 1, 0x5678));

    EXPECT_EQ(capture_stdout([&] { velatrix_print_device_status(&status); }),
              printed("velatrix_hid_feature_device_status:",
                      {{"report_id", "13"}, {"is_initializing", "1"}, {"is_idle", "1"}, {"calibration_required", "1"},
                       {"is_calibrating", "1"}, {"reserved1", "0xab"}, {"reserved2", "0x1234"},
                       {"errorInfo", "\"E42: flash full\""}}));

    // An unterminated error text prints its sixty-four characters.
    std::memset(status.errorInfo, 'x', sizeof status.errorInfo);
    const std::string out = capture_stdout([&] { velatrix_print_device_status(&status); });
    EXPECT_NE(out.find("errorInfo = \"" + std::string(64, 'x') + "\"\n"), std::string::npos);
}

TEST_F(DeviceStatus, ClearLastErrorSendsAZeroedStatusReport) {
    EXPECT_EQ(velatrix_clear_last_error(device), 1);
    EXPECT_EQ(fake.sets(13), (std::vector<Bytes>{wire(13, 73)}));
}

TEST_F(SerialNumber, ReadCleansErasedFlashAndTerminates) {
    fake.answer(27, wire(27, 35, {{1, Bytes(32, 0xFF)}, {33, {'S', 'N'}}}));
    EXPECT_STREQ(velatrix_get_serial_number(device).serial_number, "");

    Bytes answer = wire(27, 35, {{1, Bytes(32, 0xFF)}});
    for (size_t i = 0; i < 3; ++i) answer[1 + i] = static_cast<uint8_t>("ABC"[i]);
    answer[10] = 'Z';  // text after erased bytes stays but is cut off by the first NUL
    fake.answer(27, answer);
    const velatrix_hid_feature_serial_number serial = velatrix_get_serial_number(device);
    EXPECT_EQ(std::tuple(serial.report_id, serial.serial_number[9], serial.serial_number[8]),
              std::tuple(27, 'Z', 0));

    fake.answer(27, wire(27, 35, {{1, Bytes(32, 'Q')}}));
    velatrix_hid_feature_serial_number full;
    velatrix_get_serial_number_ref(device, &full);
    EXPECT_EQ(std::string(full.serial_number), std::string(31, 'Q'));

    EXPECT_EQ(capture_stdout([&] { velatrix_print_serial_number(&serial); }),
              "velatrix_hid_feature_serial_number structure:\n"
              "serial_number = 'ABC'\n");
}

// The write commits the screens (older pads: the regions), switches the pad
// to run mode 0, writes and goes back to the run mode it found (2 when it
// was running), also after a failed send; a failed commit or run-mode
// switch stops it before the write.
TEST_F(SerialNumber, WriteCommitsThenWritesWhileIdle) {
    // Every step waits for the pad; a busy pad gets nothing.
    EXPECT_EQ(velatrix_set_serial_number(device, "AB", 2), 1);
    EXPECT_EQ(fake.sequence(), "G13 G13 S172 G13 G13 G13 S10 G13 S27 G13 S10 G13");

    // Busy pad: nothing is sent.
    fake.clear_transfers();
    fake.busy_for(1000, 0x04);
    EXPECT_EQ(velatrix_set_serial_number(device, "AB", 2), 0);
    EXPECT_TRUE(fake.sets().empty());
    EXPECT_EQ(fake.gets_of(13), 100);

    const struct {
        const char* name;
        std::function<void(FakeDriver&)> arrange;
        const char* text;
        int result;
        const char* sequence;  // without the status polls
        std::vector<Bytes> sets;
    } kCases[] = {
        {"running pad, text cut to 31", [](FakeDriver&) {}, "0123456789012345678901234567890123456789", 1,
         "S172 S10 S27 S10", {{172, 0}, {10, 0}, serial_write("0123456789012345678901234567890"), {10, 2}}},
        {"idle pad", [](FakeDriver& f) { f.answer(13, status(0, 0x10)); }, "SN-1", 1, "S172 S10 S27 S10",
         {{172, 0}, {10, 0}, serial_write("SN-1"), {10, 0}}},
        {"no screens", [](FakeDriver& f) { f.fail_report(172, "no screens"); }, "AB", 1, "S172 S115 S10 S27 S10",
         {{172, 0}, {115, 0}, {10, 0}, serial_write("AB"), {10, 2}}},
        {"no regions either", [](FakeDriver& f) { f.fail_report(172), f.fail_report(115); }, "AB", 0, "S172 S115",
         {{172, 0}, {115, 0}}},
        {"send refused", [](FakeDriver& f) { f.fail_report(27, "write refused"); }, "AB", 0, "S172 S10 S27 S10",
         {{172, 0}, {10, 0}, serial_write("AB"), {10, 2}}},
        // Status polls: serial wait, commit before, commit after, status
        // read, then the run-mode wait finds the pad busy for good.
        {"run mode switch fails",
         [](FakeDriver& f) {
             f.answer_sequence(13, {wire(13, 73), wire(13, 73), wire(13, 73), wire(13, 73), wire(13, 73, {{3, {1}}})});
         },
         "AB", 0, "S172", {{172, 0}}},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        FakeDriver other;
        velatrix_device* pad = other.make_device();
        c.arrange(other);
        EXPECT_EQ(velatrix_set_serial_number(pad, c.text, static_cast<uint32_t>(std::strlen(c.text))), c.result);
        EXPECT_EQ(other.sequence(false), c.sequence);
        EXPECT_EQ(other.sets(), c.sets);
    }
}

}  // namespace
}  // namespace velatrix::testing
