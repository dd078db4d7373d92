// Resources: chunks read and written through 0x8E, whole resources sent
// chunk by chunk, resource info (0x8D), availability (0x90), index and delete.
#include <gtest/gtest.h>

#include <numeric>
#include <tuple>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

using ResourceTest = PadTest;

// A resource chunk report as the pad sends it: header, then `data` and zeros.
Bytes chunk(uint8_t number, uint8_t type, uint32_t size, const Bytes& data) {
    Bytes result = wire(0x8E, 1045, {{1, {number, type}}, {21, data}});
    put4(result.data(), 5, size);
    put2(result.data(), 19, static_cast<int64_t>(data.size()));
    return result;
}

TEST_F(ResourceTest, ReadsAChunk) {
    Bytes answer = wire(0x8E, 1045, {{1, hex("04 01 0a0b f0ffffff 01000080 010203040506 0004")}});
    for (size_t i = 21; i < answer.size(); ++i) answer[i] = static_cast<uint8_t>(i);
    fake.answer(0x8E, answer);
    auto record = std::make_unique<velatrix_hid_feature_resource>();
    EXPECT_EQ(velatrix_get_resource(device, record.get()), record.get());
    EXPECT_EQ(fake.sequence(), "G142");
    EXPECT_EQ(fake.transfers().back().length, 1045u);
    // 32-bit sizes widen without a sign.
    EXPECT_EQ(std::tuple(record->report_id, record->resource_number, record->resource_type, record->reserved1[0],
                         record->reserved1[1], record->resource_size, record->reserved2, record->chunk_length),
              std::tuple(0x8E, 4, VELATRIX_RESOURCE_GRAPHIC, 0x0A, 0x0B, 0xFFFFFFF0u, 0x80000001u, 1024));
    EXPECT_EQ(Bytes(record->reserved3, record->reserved3 + 6), hex("010203040506"));
    EXPECT_EQ(Bytes(record->data, record->data + 1024), Bytes(answer.begin() + 21, answer.end()));

    // A chunk never claims more bytes than it holds.
    answer[19] = answer[20] = 0xFF;
    fake.answer(0x8E, answer);
    velatrix_get_resource_ref(device, record.get());
    EXPECT_EQ(record->chunk_length, 1024);
}

TEST_F(ResourceTest, WritesAChunk) {
    // Report id, number, type, reserved, size, reserved, reserved, chunk length, data.
    auto record = std::make_unique<velatrix_hid_feature_resource>(velatrix_hid_feature_resource{
        0x8E, 9, VELATRIX_RESOURCE_TEXT, {0, 0x77}, 0x1234, 0, {0, 0, 0, 0, 0, 0x66}, 3, {'h', 'i', 0}});
    record->data[1023] = 0x55;
    fake.busy_for(2, 8);  // resource writes wait on bits 2 and 3
    ASSERT_EQ(velatrix_set_resource(device, record.get()), 1);
    EXPECT_EQ(fake.sequence(), "G13 G13 G13 S142");
    EXPECT_EQ(fake.sets(0x8E),
              (std::vector<Bytes>{wire(0x8E, 1045, {{1, hex("09 00 0077 34120000")}, {18, hex("66 0300 686900")},
                                                    {1044, {0x55}}})}));
}

TEST_F(ResourceTest, SendsWholeResourcesInChunksOf1024) {
    Bytes graphic(1025);
    std::iota(graphic.begin(), graphic.end(), 0);
    const Bytes first(graphic.begin(), graphic.begin() + 1024);
    ASSERT_EQ(velatrix_send_resource(device, 2, VELATRIX_RESOURCE_GRAPHIC, graphic.data(), 1024), 1);
    EXPECT_EQ(fake.sets(0x8E), (std::vector<Bytes>{chunk(2, 1, 1024, first)}));

    fake.clear_transfers();
    ASSERT_EQ(velatrix_send_resource(device, 2, VELATRIX_RESOURCE_GRAPHIC, graphic.data(), 1025), 1);
    EXPECT_EQ(fake.sequence(), "G13 S142 G13 S142");
    EXPECT_EQ(fake.sets(0x8E), (std::vector<Bytes>{chunk(2, 1, 1025, first), chunk(2, 1, 1025, {graphic[1024]})}));

    // Text goes with its terminator.
    fake.clear_transfers();
    ASSERT_EQ(velatrix_send_text_resource(device, 7, "hello"), 1);
    EXPECT_EQ(fake.sets(0x8E), (std::vector<Bytes>{chunk(7, 0, 6, text_bytes(std::string("hello") + '\0'))}));

    // An invalid resource, or an empty graphic, sends nothing.
    fake.clear_transfers();
    EXPECT_EQ(velatrix_send_resource(device, 7, VELATRIX_RESOURCE_INVALID, nullptr, 0), 1);
    EXPECT_EQ(velatrix_send_resource(device, 7, VELATRIX_RESOURCE_GRAPHIC, nullptr, 0), 1);
    EXPECT_TRUE(fake.transfers().empty());

    // A failed chunk ends the transfer.
    const Bytes large(3000, 0xAB);
    fake.fail_transfer(4, "chunk refused");  // the second chunk's send
    EXPECT_EQ(velatrix_send_resource(device, 1, VELATRIX_RESOURCE_GRAPHIC, large.data(), 3000), 0);
    EXPECT_EQ(fake.sequence(), "G13 S142 G13 S142");
    EXPECT_STREQ(velatrix_get_last_error(), "chunk refused");
}

TEST_F(ResourceTest, InfoAvailabilityIndexAndDelete) {
    fake.answer(0x8D, hex("8d 03 01 77 10270000 ffffffff 0102030405060708"));
    velatrix_hid_feature_resource_info info;
    EXPECT_EQ(velatrix_get_resource_info(device, &info), &info);
    EXPECT_EQ(std::tuple(info.report_id, info.resource_number, info.resource_type, info.unknown1, info.resource_size,
                         info.unknown2),
              std::tuple(0x8D, 3, VELATRIX_RESOURCE_GRAPHIC, 0x77, 10000u, 0xFFFFFFFFu));
    EXPECT_EQ(Bytes(info.reserved, info.reserved + 8), hex("0102030405060708"));

    fake.answer(0x90, hex("90 05 78563412 0102030405060708090a0b0c"));
    velatrix_hid_feature_resource_availability availability;
    EXPECT_EQ(velatrix_get_resource_availability(device, &availability), &availability);
    EXPECT_EQ(std::tuple(availability.report_id, availability.unknown1, availability.unknown2),
              std::tuple(0x90, 5, 0x12345678u));
    for (uint32_t i = 0; i < 12; ++i) EXPECT_EQ(availability.list[i], i + 1);

    fake.answer(0x8C, {0x8C, 12});
    EXPECT_EQ(velatrix_get_resource_idx(device), 12);
    EXPECT_EQ(velatrix_set_resource_idx(device, 13), 1);
    EXPECT_EQ(velatrix_delete_resource(device, 14), 1);
    EXPECT_EQ(fake.sequence(), "G141 G144 G140 S140 G13 S143");
    EXPECT_EQ(fake.sets(), (std::vector<Bytes>{{0x8C, 13}, {0x8F, 14}}));
    EXPECT_EQ(fake.transfers()[0].length, 20u);
    EXPECT_EQ(fake.transfers()[1].length, 18u);

    // Failed reads leave zeroed records.
    fake.fail_report(0x8D);
    fake.fail_report(0x90);
    velatrix_get_resource_info_ref(device, &info);
    velatrix_get_resource_availability_ref(device, &availability);
    EXPECT_EQ(std::tuple(info.report_id, info.resource_size, availability.report_id, availability.list[11]),
              std::tuple(0, 0u, 0, 0u));
}

}  // namespace
}  // namespace velatrix::testing
