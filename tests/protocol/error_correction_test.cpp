#include <cstdio>
#include <memory>
#include <tuple>

#include "protocol_test.h"
#include "velatrix-quillmark.h"

namespace velatrix::testing {
namespace {

using ErrorCorrectionTable = FakePad;

Bytes table_answer(uint8_t fill) {
    Bytes answer(2049, fill);
    answer[0] = 0x1A;
    return answer;
}

TEST_F(ErrorCorrectionTable, ReadCopiesTheTableAfterTheRunModeWait) {
    Bytes answer = table_answer(0);
    answer[1] = 0xAB;
    answer[2048] = 0xCD;
    fake.answer(26, answer);
    velatrix_hid_feature_error_correction_table table;
    std::memset(&table, 0x55, sizeof table);
    velatrix_get_error_correction_table(&table, device);
    EXPECT_EQ(std::tuple(table.report_id, table.data[0], table.data[2047], table.data[1]),
              std::tuple(0x1A, 0xAB, 0xCD, 0));
    EXPECT_EQ(fake.sequence(), "G13 G26");
    EXPECT_EQ(fake.transfers().back().length, 2049u);

    fake.clear_transfers();
    fake.fail_report(26);
    std::memset(&table, 0x55, sizeof table);
    velatrix_get_error_correction_table_ref(device, &table);
    EXPECT_EQ(std::tuple(table.report_id, table.data[100]), std::tuple(0, 0));

    // Null records are errors without traffic.
    fake.clear_transfers();
    velatrix_get_error_correction_table_ref(device, nullptr);
    EXPECT_STREQ(velatrix_get_last_error(), "Record was null, unable to read the error-correction table.");
    EXPECT_EQ(velatrix_get_error_correction_table(nullptr, device), nullptr);
    EXPECT_TRUE(fake.transfers().empty());
}

TEST_F(ErrorCorrectionTable, WriteBracketsTheTableWithRunModes) {
    velatrix_hid_feature_error_correction_table table{};
    table.report_id = 0;  // ignored: the report id is always 0x1A
    table.data[0] = 7;
    table.data[2047] = 9;
    EXPECT_EQ(velatrix_set_error_correction(device, &table), 1);
    EXPECT_EQ(fake.sequence(false), "S172 S10 S26 S10");
    Bytes expected = wire(0x1A, 2049, {{1, {7}}, {2048, {9}}});
    EXPECT_EQ(fake.sets(26), (std::vector<Bytes>{expected}));
    EXPECT_EQ(fake.sets(10), (std::vector<Bytes>{{10, 0}, {10, 2}}));

    // A failed write leaves the pad idle: no return to run mode 2.
    fake.clear_transfers();
    fake.fail_report(26);
    EXPECT_EQ(velatrix_set_error_correction(device, &table), 0);
    EXPECT_EQ(fake.sets(10), (std::vector<Bytes>{{10, 0}}));

    // A pad still busy with its run mode after 2200 polls gets no table.
    fake.clear_transfers();
    fake.busy_for(100000, 1);
    EXPECT_EQ(velatrix_set_error_correction(device, &table), 0);
    EXPECT_STREQ(velatrix_get_last_error(),
                 "Problem waiting for firmware interlock: device didn't respond in time, sleep: 2200, interlock: 1");
    EXPECT_TRUE(fake.sets(26).empty());
}

TEST(ErrorCorrectionPrint, EveryByteAsOneHexRun) {
    auto table = std::make_unique<velatrix_hid_feature_error_correction_table>();
    table->report_id = 0x1A;
    std::string hex_run;
    for (int i = 0; i < 2048; ++i) {
        table->data[i] = static_cast<uint8_t>(i * 7);
        char byte[3];
        std::snprintf(byte, sizeof byte, "%02x", table->data[i]);
        hex_run += byte;
    }
    const std::string header = "velatrix_hid_feature_error_correction_table structure:\n";
    EXPECT_EQ(capture_stdout([&] { velatrix_print_error_correction_table(table.get()); }),
              header + "data =\n" + hex_run);
    EXPECT_EQ(capture_stdout([] { velatrix_print_error_correction_table(nullptr); }), header + "  NULL\n");
}

// The identifier is the MD5 of the table bytes only (the digests of 2048
// bytes of 0x00 and of 0x3C, worked out apart from the library), printed as
// one 8-4-4-4-12 run; an unreadable table has none.
TEST_F(ErrorCorrectionTable, DeviceUuidIsTheMd5OfTheTableBytes) {
    for (const auto& [fill, text] : {std::pair<uint8_t, const char*>{0, "c99a74c5-5537-1a43-3d12-1f551d6c6398"},
                                     {0x3C, "057d522c-60ec-b0a2-2e27-420a8b042670"}}) {
        fake.answer(26, table_answer(fill));
        uint8_t* uuid = velatrix_get_device_uuid(device);
        ASSERT_NE(uuid, nullptr);
        EXPECT_EQ(capture_stdout([&] { velatrix_print_device_uuid(uuid); }),
                  std::string("Device UUID:\nuuid = ") + text + "\n");
        velatrix_free_device_uuid(uuid);
    }
    EXPECT_EQ(capture_stdout([] { velatrix_print_device_uuid(nullptr); }), "Device UUID:\n  NULL\n");

    fake.fail_report(26);
    EXPECT_EQ(velatrix_get_device_uuid(device), nullptr);
}

}  // namespace
}  // namespace velatrix::testing
