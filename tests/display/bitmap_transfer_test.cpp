#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <tuple>
#include <vector>

#include "display/chunk_layout.h"
#include "display/chunk_send.h"
#include "support/fake_driver.h"
#include "support/log_capture.h"
#include "velatrix-quillmark.h"

namespace {

using velatrix::testing::Bytes;
using velatrix::testing::FakeDriver;

struct Canvas {
    std::vector<uint8_t> buffer;
    velatrix_bitmap bitmap{};
    Canvas(int width, int height) : buffer(((width * 24 + 31) / 32) * 4 * height + 54) {
        velatrix_bitmap_init(&bitmap, buffer.data(), width, height);
    }
    void set(int x, int y, uint32_t color) { velatrix_set_pixel(&bitmap, x, y, color); }
};

struct SentChunk {
    int x, y, width, height, bits;
    Bytes data;
};

std::vector<SentChunk> chunks_sent(const FakeDriver& fake) {
    std::vector<SentChunk> out;
    for (const Bytes& report : fake.sets(103)) {
        EXPECT_EQ(report.size(), 2049u);
        out.push_back({report[1] << 8 | report[2], report[3] << 8 | report[4], report[5] << 8 | report[6],
                       report[7] << 8 | report[8], report[9], Bytes(report.begin() + 10, report.end())});
    }
    return out;
}

TEST(ChunkShape, FollowsTheBudgetRules) {
    using velatrix::display::chunk_shape;
    auto shape = chunk_shape(10, 10, 1);
    EXPECT_EQ(shape.width, 10u);
    EXPECT_EQ(shape.height, 10u);
    shape = chunk_shape(320, 240, 1);  // wide: full-height columns of 16312 / 240
    EXPECT_EQ(shape.width, 67u);
    EXPECT_EQ(shape.height, 240u);
    shape = chunk_shape(100, 400, 4);  // tall: full-width bands of 16312 / 400
    EXPECT_EQ(shape.width, 100u);
    EXPECT_EQ(shape.height, 40u);
    shape = chunk_shape(1000, 1000, 24);  // squares: sqrt(16312 / 24 = 679)
    EXPECT_EQ(shape.width, 26u);
    EXPECT_EQ(shape.height, 26u);
}

TEST(BitmapTransfer, TenByTenAtOneBitIsOneChunkOfThirteenBytes) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    Canvas canvas(10, 10);
    canvas.set(0, 0, 0x000000FF);  // first pixel: bit 7 of byte 0
    canvas.set(0, 9, 0x000000FF);  // column 0, row 9: pixel 9 -> bit 6 of byte 1
    canvas.set(9, 9, 0x7F7F7FFF);  // grey 127: dark; last pixel (99) -> bit 4 of byte 12
    canvas.set(5, 5, 0x808080FF);  // grey 128: light
    ASSERT_EQ(velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 3, 4, 1), 1);
    const auto chunks = chunks_sent(fake);
    ASSERT_EQ(chunks.size(), 1u);
    EXPECT_EQ(chunks[0].x, 3);
    EXPECT_EQ(chunks[0].y, 4);
    EXPECT_EQ(chunks[0].width, 10);
    EXPECT_EQ(chunks[0].height, 10);
    EXPECT_EQ(chunks[0].bits, 1);
    Bytes expected(2039, 0);
    expected[0] = 0x80;
    expected[1] = 0x40;
    expected[12] = 0x10;
    EXPECT_EQ(chunks[0].data, expected);
    EXPECT_EQ(fake.sequence(), "G13 S103") << "each chunk waits for the display interlock";
}

TEST(BitmapTransfer, HeaderIsBigEndian) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    Canvas canvas(2, 1);
    ASSERT_EQ(velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 0x0102, 0x0304, 24), 1);
    const Bytes report = fake.sets(103).at(0);
    EXPECT_EQ(Bytes(report.begin(), report.begin() + 10), (Bytes{103, 0x01, 0x02, 0x03, 0x04, 0x00, 0x02, 0x00, 0x01, 24}));
    // The same rows read it back.
    velatrix_display_chunk chunk{};
    velatrix::protocol::unpack_report(velatrix::display::kChunkLayout, report, &chunk);
    EXPECT_EQ(std::vector<int>({chunk.report_id, chunk.x, chunk.y, chunk.width, chunk.height, chunk.bits_per_pixel}),
              std::vector<int>({103, 0x0102, 0x0304, 2, 1, 24}));
}

TEST(BitmapTransfer, FourAndEightBitsPackGreyLevelsLowNibbleFirst) {
    for (uint8_t bits : {uint8_t{4}, uint8_t{8}}) {
        FakeDriver fake;
        velatrix_device* device = fake.make_device();
        Canvas canvas(1, 3);  // one column: pixels in row order
        canvas.set(0, 0, 0x000000FF);  // level 0
        canvas.set(0, 1, 0x444444FF);  // 68 / 255 * 15 = 4.0 -> 4
        // row 2 stays white: level 15
        ASSERT_EQ(velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 0, 0, bits), 1);
        const auto chunks = chunks_sent(fake);
        ASSERT_EQ(chunks.size(), 1u);
        EXPECT_EQ(chunks[0].bits, bits) << "the header keeps the requested depth";
        EXPECT_EQ(chunks[0].data[0], 0x40);
        EXPECT_EQ(chunks[0].data[1], 0x0F);
        EXPECT_EQ(chunks[0].data[2], 0x00);
    }
}

TEST(BitmapTransfer, TwentyFourBitsSendRedGreenBlueColumnByColumn) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    Canvas canvas(2, 2);
    canvas.set(0, 0, 0x112233FF);
    canvas.set(0, 1, 0x445566FF);
    canvas.set(1, 0, 0x778899FF);
    canvas.set(1, 1, 0xAABBCCFF);
    ASSERT_EQ(velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 0, 0, 24), 1);
    const Bytes data = chunks_sent(fake).at(0).data;
    EXPECT_EQ(Bytes(data.begin(), data.begin() + 13),
              (Bytes{0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88, 0x99, 0xAA, 0xBB, 0xCC, 0x00}));
}

TEST(BitmapTransfer, A320By240ScreenGoesInFiveColumnsTheLast52Wide) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    Canvas canvas(320, 240);
    ASSERT_EQ(velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 0, 0, 1), 1);
    const auto chunks = chunks_sent(fake);
    ASSERT_EQ(chunks.size(), 5u);
    const int xs[] = {0, 67, 134, 201, 268};
    for (int i = 0; i < 5; ++i) {
        EXPECT_EQ(chunks[i].x, xs[i]);
        EXPECT_EQ(chunks[i].y, 0);
        EXPECT_EQ(chunks[i].width, i < 4 ? 67 : 52);
        EXPECT_EQ(chunks[i].height, 240);
    }
}

TEST(BitmapTransfer, AThousandSquareAt24BitsUses26By26ChunksOuterLoopOnX) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    Canvas canvas(1000, 1000);
    ASSERT_EQ(velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 0, 0, 24), 1);
    const auto chunks = chunks_sent(fake);
    ASSERT_EQ(chunks.size(), 39u * 39u);
    EXPECT_EQ(chunks[0].width, 26);
    EXPECT_EQ(chunks[1].x, 0);
    EXPECT_EQ(chunks[1].y, 26) << "inner loop walks down first";
    EXPECT_EQ(chunks[38].height, 1000 - 38 * 26);
    EXPECT_EQ(chunks[39].x, 26);
    EXPECT_EQ(chunks.back().width, 1000 - 38 * 26);
}

TEST(BitmapTransfer, StopsAtTheFirstFailedChunk) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    Canvas canvas(320, 240);
    fake.fail_transfer(4, "chunk refused");  // G13 S103 G13 S103: the second chunk
    EXPECT_EQ(velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 0, 0, 1), 0);
    EXPECT_EQ(fake.sets(103).size(), 2u);
    EXPECT_STREQ(velatrix_get_last_error(), "chunk refused");
}

TEST(BitmapTransfer, AnUnplannedDepthNeverOverrunsTheChunk) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    Canvas canvas(200, 100);  // sized for 2 bits per pixel, packed at 24
    EXPECT_EQ(velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 0, 0, 2), 1);
    EXPECT_FALSE(fake.sets(103).empty());
}

TEST(BitmapTransfer, ANullBitmapIsRefusedWithAnError) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    EXPECT_EQ(velatrix_transfer_bitmap_to_device(device, nullptr, 0, 0, 1), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Invalid bitmap.");
    EXPECT_TRUE(fake.sets(103).empty());
}

// With nobody taking log records the chunks go to the driver without
// making any; with a log they go the way velatrix_set_display_chunk sends
// them. The pad must not tell the two apart: same requests, same bytes,
// same waits, same outcome and error, also when it is busy or fails.
TEST(BitmapTransfer, ChunksGoTheSameWithAndWithoutALog) {
    const struct {
        const char* name;
        std::function<void(FakeDriver&)> arrange;
        uint8_t legacy_firmware;
        int result;
        const char* error;
        const char* sequence;
    } kCases[] = {
        {"ready pad", [](FakeDriver&) {}, 0, 1, "untouched", "G13 S103 G13 S103"},
        {"display busy for three polls", [](FakeDriver& fake) { fake.busy_for(3, 16); }, 0, 1, "untouched",
         "G13 G13 G13 G13 S103 G13 S103"},
        {"only other flags busy", [](FakeDriver& fake) { fake.busy_for(5, 0x2F); }, 0, 1, "untouched",
         "G13 S103 G13 S103"},
        {"display busy beyond the wait", [](FakeDriver& fake) { fake.busy_for(1000, 16); }, 0, 0,
         "Problem waiting for firmware interlock: device didn't respond in time, sleep: 100, interlock: 16", nullptr},
        {"status reads fail", [](FakeDriver& fake) { fake.fail_report(13, "status refused"); }, 0, 1,
         "status refused", "G13 S103 G13 S103"},
        {"second chunk refused", [](FakeDriver& fake) { fake.fail_transfer(4, "chunk refused"); }, 0, 0,
         "chunk refused", "G13 S103 G13 S103"},
        {"legacy firmware", [](FakeDriver&) {}, 1, 1, "untouched", "S103 S103"},
    };
    using Traffic = std::vector<std::tuple<int, uint8_t, Bytes, bool>>;
    struct Outcome {
        int result;
        Traffic traffic;
        std::string error;
        std::string sequence;
    };
    Canvas canvas(40, 30);  // two chunks at 24 bits
    for (int i = 0; i < 40; ++i) canvas.set(i, i % 30, 0x10203000u | static_cast<uint32_t>(i) << 24 | 0xFF);
    for (const auto& test : kCases) {
        SCOPED_TRACE(test.name);
        auto run = [&] {
            FakeDriver fake;
            velatrix_device* device = fake.make_device();
            test.arrange(fake);
            velatrix_set_legacy_firmware(device, test.legacy_firmware);
            velatrix_report_error_internal("%s", "untouched");
            Outcome outcome{velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 7, 3, 24), {},
                            velatrix_get_last_error(), {}};
            velatrix_set_legacy_firmware(device, 0);
            outcome.sequence = fake.sequence();
            for (const auto& t : fake.transfers()) {
                outcome.traffic.emplace_back(static_cast<int>(t.direction), t.report_id, t.bytes, t.ok);
            }
            return outcome;
        };
        const Outcome quiet = run();
        EXPECT_EQ(quiet.result, test.result);
        EXPECT_EQ(quiet.error, test.error);
        if (test.sequence != nullptr) {
            EXPECT_EQ(quiet.sequence, test.sequence);
        }
        velatrix::testing::LogCapture log;
        const Outcome logged = run();
        EXPECT_EQ(quiet.result, logged.result);
        EXPECT_EQ(quiet.traffic, logged.traffic);
        EXPECT_EQ(quiet.error, logged.error);
        EXPECT_GE(log.count("==> Entering Function"), 1) << "the logged run made its records";
    }
}

TEST(DisplayContent, WaitsForTheDisplayInterlockAndSendsTheLowByte) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    EXPECT_EQ(velatrix_set_display_content(device, 0x1234), 1);
    EXPECT_EQ(fake.sequence(), "G13 S101");
    EXPECT_EQ(fake.sets(101), (std::vector<Bytes>{{101, 0x34}}));
    fake.busy_for(1000, 16);
    EXPECT_EQ(velatrix_set_display_content(device, 1), 0);
    EXPECT_EQ(fake.sets(101).size(), 1u);
}

}  // namespace
