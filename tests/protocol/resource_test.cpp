// Resources: chunks read and written through 0x8E, whole resources sent
// chunk by chunk, resource info (0x8D), availability (0x90), index and delete.
#include <gtest/gtest.h>

#include <numeric>
#include <tuple>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

class ResourceTest : public PadTest {};

// The header of a resource chunk report as the pad sends it.
Bytes chunk_header(uint8_t number, uint8_t type, uint32_t size, uint16_t chunk_length) {
    return {0x8E,
            number,
            type,
            0,
            0,
            static_cast<uint8_t>(size),
            static_cast<uint8_t>(size >> 8),
            static_cast<uint8_t>(size >> 16),
            static_cast<uint8_t>(size >> 24),
            0,
            0,
            0,
            0,
            0,
            0,
            0,
            0,
            0,
            0,
            static_cast<uint8_t>(chunk_length),
            static_cast<uint8_t>(chunk_length >> 8)};
}

TEST_F(ResourceTest, ReadsAChunk) {
    Bytes answer = wire(0x8E, 1045,
                          {{1, {4, 1, 0x0A, 0x0B, 0xF0, 0xFF, 0xFF, 0xFF, 0x01, 0, 0, 0x80, 1, 2, 3, 4, 5, 6, 0x00,
                                0x04}}});
    for (size_t i = 21; i < answer.size(); ++i) answer[i] = static_cast<uint8_t>(i);
    fake.answer(0x8E, answer);
    auto chunk = std::make_unique<velatrix_hid_feature_resource>();
    EXPECT_EQ(velatrix_get_resource(device, chunk.get()), chunk.get());
    EXPECT_EQ(fake.sequence(), "G142");
    EXPECT_EQ(fake.transfers().back().length, 1045u);
    EXPECT_EQ(std::tuple(chunk->report_id, chunk->resource_number, chunk->resource_type, chunk->reserved1[0],
                         chunk->reserved1[1]),
              std::tuple(0x8E, 4, VELATRIX_RESOURCE_GRAPHIC, 0x0A, 0x0B));
    // 32-bit sizes widen without a sign.
    EXPECT_EQ(chunk->resource_size, 0xFFFFFFF0u);
    EXPECT_EQ(chunk->reserved2, 0x80000001u);
    EXPECT_EQ(Bytes(chunk->reserved3, chunk->reserved3 + 6), (Bytes{1, 2, 3, 4, 5, 6}));
    EXPECT_EQ(chunk->chunk_length, 1024);
    EXPECT_EQ(Bytes(chunk->data, chunk->data + 1024), Bytes(answer.begin() + 21, answer.end()));

    // A chunk never claims more bytes than it holds.
    answer[19] = answer[20] = 0xFF;
    fake.answer(0x8E, answer);
    velatrix_get_resource_ref(device, chunk.get());
    EXPECT_EQ(chunk->chunk_length, 1024);

    fake.fail_report(0x8E);
    velatrix_get_resource_ref(device, chunk.get());
    EXPECT_EQ(chunk->report_id, 0);
    EXPECT_EQ(chunk->resource_size, 0u);
}

TEST_F(ResourceTest, WritesAChunk) {
    auto chunk = std::make_unique<velatrix_hid_feature_resource>();
    chunk->report_id = 0x8E;
    chunk->resource_number = 9;
    chunk->resource_type = VELATRIX_RESOURCE_TEXT;
    chunk->reserved1[1] = 0x77;
    chunk->resource_size = 0x1234;
    chunk->reserved3[5] = 0x66;
    chunk->chunk_length = 3;
    std::memcpy(chunk->data, "hi", 3);
    chunk->data[1023] = 0x55;
    fake.busy_for(2, 8);  // resource writes wait on bits 2 and 3
    ASSERT_EQ(velatrix_set_resource(device, chunk.get()), 1);
    EXPECT_EQ(fake.sequence(), "G13 G13 G13 S142");
    Bytes expected = wire(0x8E, 1045, {{1, {9, 0, 0, 0x77, 0x34, 0x12}}, {18, {0x66, 3, 0, 'h', 'i'}}});
    expected[1044] = 0x55;
    EXPECT_EQ(fake.sets(0x8E), (std::vector<Bytes>{expected}));
}

TEST_F(ResourceTest, SendsWholeResourcesInChunksOf1024) {
    Bytes graphic(1025);
    std::iota(graphic.begin(), graphic.end(), 0);

    ASSERT_EQ(velatrix_send_resource(device, 2, VELATRIX_RESOURCE_GRAPHIC, graphic.data(), 1024), 1);
    ASSERT_EQ(fake.sets(0x8E).size(), 1u);
    Bytes expected = chunk_header(2, 1, 1024, 1024);
    expected.insert(expected.end(), graphic.begin(), graphic.begin() + 1024);
    EXPECT_EQ(fake.sets(0x8E)[0], expected);

    fake.clear_transfers();
    ASSERT_EQ(velatrix_send_resource(device, 2, VELATRIX_RESOURCE_GRAPHIC, graphic.data(), 1025), 1);
    EXPECT_EQ(fake.sequence(), "G13 S142 G13 S142");
    const std::vector<Bytes> sent = fake.sets(0x8E);
    ASSERT_EQ(sent.size(), 2u);
    expected = chunk_header(2, 1, 1025, 1024);
    expected.insert(expected.end(), graphic.begin(), graphic.begin() + 1024);
    EXPECT_EQ(sent[0], expected);
    expected = chunk_header(2, 1, 1025, 1);
    expected.push_back(graphic[1024]);
    expected.resize(1045, 0);
    EXPECT_EQ(sent[1], expected);
}

TEST_F(ResourceTest, SendsTextWithItsTerminator) {
    ASSERT_EQ(velatrix_send_text_resource(device, 7, "hello"), 1);
    Bytes expected = chunk_header(7, 0, 6, 6);
    for (char c : std::string("hello")) expected.push_back(static_cast<uint8_t>(c));
    expected.resize(1045, 0);
    EXPECT_EQ(fake.sets(0x8E), (std::vector<Bytes>{expected}));

    // An invalid resource, or an empty graphic, sends nothing.
    fake.clear_transfers();
    EXPECT_EQ(velatrix_send_resource(device, 7, VELATRIX_RESOURCE_INVALID, nullptr, 0), 1);
    EXPECT_EQ(velatrix_send_resource(device, 7, VELATRIX_RESOURCE_GRAPHIC, nullptr, 0), 1);
    EXPECT_TRUE(fake.transfers().empty());
    EXPECT_EQ(velatrix_send_resource(device, 7, VELATRIX_RESOURCE_GRAPHIC, nullptr, 5), 0);
    EXPECT_EQ(velatrix_send_text_resource(device, 7, nullptr), 0);
    EXPECT_TRUE(fake.transfers().empty());
}

TEST_F(ResourceTest, AFailedChunkEndsTheTransfer) {
    const Bytes graphic(3000, 0xAB);
    fake.fail_transfer(4, "chunk refused");  // the second chunk's send
    EXPECT_EQ(velatrix_send_resource(device, 1, VELATRIX_RESOURCE_GRAPHIC, graphic.data(), 3000), 0);
    EXPECT_EQ(fake.sequence(), "G13 S142 G13 S142");
    EXPECT_STREQ(velatrix_get_last_error(), "chunk refused");
}

TEST_F(ResourceTest, InfoAvailabilityIndexAndDelete) {
    fake.answer(0x8D, {0x8D, 3, 1, 0x77, 0x10, 0x27, 0, 0, 0xFF, 0xFF, 0xFF, 0xFF, 1, 2, 3, 4, 5, 6, 7, 8});
    velatrix_hid_feature_resource_info info;
    EXPECT_EQ(velatrix_get_resource_info(device, &info), &info);
    EXPECT_EQ(std::tuple(info.report_id, info.resource_number, info.resource_type, info.unknown1, info.resource_size,
                         info.unknown2),
              std::tuple(0x8D, 3, VELATRIX_RESOURCE_GRAPHIC, 0x77, 10000u, 0xFFFFFFFFu));
    EXPECT_EQ(Bytes(info.reserved, info.reserved + 8), (Bytes{1, 2, 3, 4, 5, 6, 7, 8}));

    fake.answer(0x90, {0x90, 5, 0x78, 0x56, 0x34, 0x12, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12});
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
    EXPECT_EQ(fake.sets(0x8C), (std::vector<Bytes>{{0x8C, 13}}));
    EXPECT_EQ(fake.sets(0x8F), (std::vector<Bytes>{{0x8F, 14}}));
    EXPECT_EQ(fake.transfers()[0].length, 20u);
    EXPECT_EQ(fake.transfers()[1].length, 18u);

    fake.fail_report(0x8D);
    fake.fail_report(0x90);
    fake.fail_report(0x8C);
    velatrix_get_resource_info_ref(device, &info);
    velatrix_get_resource_availability_ref(device, &availability);
    EXPECT_EQ(info.report_id, 0);
    EXPECT_EQ(info.resource_size, 0u);
    EXPECT_EQ(availability.report_id, 0);
    EXPECT_EQ(availability.list[11], 0u);
    EXPECT_EQ(velatrix_get_resource_idx(device), -1);
}

}  // namespace
}  // namespace velatrix::testing
