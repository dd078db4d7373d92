#include <gtest/gtest.h>

#include <functional>
#include <memory>
#include <tuple>
#include <vector>

#include "display/chunk_layout.h"
#include "display/chunk_send.h"
#include "graphics/draw_canvas.h"
#include "support/fake_pad.h"
#include "support/log_capture.h"
#include "velatrix-quillmark.h"

namespace velatrix::testing {
namespace {

// A chunk report's header (x, y, width, height, bits) and its pixel bytes.
using Header = std::tuple<int, int, int, int, int>;
Header header(const Bytes& report) {
    return {report[1] << 8 | report[2], report[3] << 8 | report[4], report[5] << 8 | report[6],
            report[7] << 8 | report[8], report[9]};
}
Bytes pixels(const Bytes& report) { return Bytes(report.begin() + 10, report.end()); }

using BitmapTransfer = FakePad;

// One chunk each, its pixels column by column: at 1 bit the dark pixels
// (grey below 128) set bits from the top one down; at 4 and 8 bits grey
// levels 0 to 15 fill the low nibble first; at 24 bits red, green and blue
// follow each other. The rest of the 2039 pixel bytes stays zero.
TEST_F(BitmapTransfer, SmallBitmapsPackColumnByColumnAtEveryDepth) {
    Canvas ten(10, 10);
    ten.set(0, 0, 0x000000FF);  // first pixel: bit 7 of byte 0
    ten.set(0, 9, 0x000000FF);  // column 0, row 9: pixel 9 -> bit 6 of byte 1
    ten.set(9, 9, 0x7F7F7FFF);  // grey 127: dark; last pixel (99) -> bit 4 of byte 12
    ten.set(5, 5, 0x808080FF);  // grey 128: light
    Canvas column(1, 3);
    column.set(0, 0, 0x000000FF);  // level 0
    column.set(0, 1, 0x444444FF);  // 68 / 255 * 15 = 4.0 -> 4; row 2 stays white: level 15
    Canvas square(2, 2);
    square.set(0, 0, 0x112233FF);
    square.set(0, 1, 0x445566FF);
    square.set(1, 0, 0x778899FF);
    square.set(1, 1, 0xAABBCCFF);
    const struct {
        Canvas* canvas;
        uint8_t bits;
        const char* pixels;
    } kCases[] = {{&ten, 1, "8040 0000000000 0000000000 10"}, {&column, 4, "400f"}, {&column, 8, "400f"},
                  {&square, 24, "112233 445566 778899 aabbcc"}};
    for (const auto& c : kCases) {
        fake.clear_transfers();
        ASSERT_EQ(velatrix_transfer_bitmap_to_device(device, &c.canvas->bitmap, 3, 4, c.bits), 1);
        EXPECT_EQ(fake.sequence(), "G13 S103") << "each chunk waits for the display interlock";
        const Bytes report = fake.sets(103).at(0);
        ASSERT_EQ(report.size(), 2049u);
        EXPECT_EQ(header(report), Header(3, 4, c.canvas->bitmap.width, c.canvas->bitmap.height, c.bits));
        Bytes expected = hex(c.pixels);
        expected.resize(2039, 0);
        EXPECT_EQ(pixels(report), expected) << int{c.bits} << " bits";
    }
}

TEST_F(BitmapTransfer, HeaderIsBigEndianAndTheLayoutReadsItBack) {
    Canvas canvas(2, 1);
    ASSERT_EQ(velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 0x0102, 0x0304, 24), 1);
    const Bytes report = fake.sets(103).at(0);
    EXPECT_EQ(Bytes(report.begin(), report.begin() + 10), hex("67 0102 0304 0002 0001 18"));
    velatrix_display_chunk chunk{};
    velatrix::protocol::unpack_report(velatrix::display::kChunkLayout, report, &chunk);
    EXPECT_EQ(std::vector<int>({chunk.report_id, chunk.x, chunk.y, chunk.width, chunk.height, chunk.bits_per_pixel}),
              std::vector<int>({103, 0x0102, 0x0304, 2, 1, 24}));
}

// A chunk holds at most 16312 pixel bits: wide bitmaps go in full-height
// columns, tall ones in full-width bands, others in squares. Chunks go
// column by column, each walked top to bottom; the last column and row
// take what is left.
TEST_F(BitmapTransfer, LargeBitmapsGoInChunksOuterLoopOnX) {
    Canvas screen(320, 240);
    ASSERT_EQ(velatrix_transfer_bitmap_to_device(device, &screen.bitmap, 0, 0, 1), 1);
    std::vector<Header> headers;
    for (const Bytes& report : fake.sets(103)) headers.push_back(header(report));
    EXPECT_EQ(headers, (std::vector<Header>{{0, 0, 67, 240, 1}, {67, 0, 67, 240, 1}, {134, 0, 67, 240, 1},
                                            {201, 0, 67, 240, 1}, {268, 0, 52, 240, 1}}));

    fake.clear_transfers();
    Canvas tall(100, 400);
    ASSERT_EQ(velatrix_transfer_bitmap_to_device(device, &tall.bitmap, 0, 0, 4), 1);
    EXPECT_EQ(fake.sets(103).size(), 10u);
    EXPECT_EQ(header(fake.sets(103).back()), Header(0, 360, 100, 40, 4));

    fake.clear_transfers();
    Canvas square(1000, 1000);
    ASSERT_EQ(velatrix_transfer_bitmap_to_device(device, &square.bitmap, 0, 0, 24), 1);
    const auto reports = fake.sets(103);
    ASSERT_EQ(reports.size(), 39u * 39u);
    EXPECT_EQ(header(reports[0]), Header(0, 0, 26, 26, 24));
    EXPECT_EQ(header(reports[1]), Header(0, 26, 26, 26, 24)) << "inner loop walks down first";
    EXPECT_EQ(header(reports[38]), Header(0, 988, 26, 12, 24));
    EXPECT_EQ(header(reports[39]), Header(26, 0, 26, 26, 24));
    EXPECT_EQ(header(reports.back()), Header(988, 988, 12, 12, 24));
}

TEST_F(BitmapTransfer, StopsAtTheFirstFailedChunkAndNeverOverrunsOne) {
    Canvas canvas(320, 240);
    fake.fail_transfer(4, "chunk refused");  // G13 S103 G13 S103: the second chunk
    EXPECT_EQ(velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 0, 0, 1), 0);
    EXPECT_EQ(fake.sets(103).size(), 2u);
    EXPECT_STREQ(velatrix_get_last_error(), "chunk refused");

    // An unplanned depth: chunks sized for 2 bits per pixel, packed at 24.
    fake.clear_transfers();
    Canvas odd(200, 100);
    EXPECT_EQ(velatrix_transfer_bitmap_to_device(device, &odd.bitmap, 0, 0, 2), 1);
    EXPECT_FALSE(fake.sets(103).empty());
}

// With nobody taking log records the chunks go to the driver without
// making any; with a log they go the way velatrix_set_display_chunk sends
// them. The pad must not tell the two apart: same requests, same bytes,
// same waits, same outcome and error, also when it is busy or fails.
TEST(ChunkSend, ChunksGoTheSameWithAndWithoutALog) {
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
        LogCapture log;
        const Outcome logged = run();
        EXPECT_EQ(quiet.result, logged.result);
        EXPECT_EQ(quiet.traffic, logged.traffic);
        EXPECT_EQ(quiet.error, logged.error);
        EXPECT_GE(log.count("==> Entering Function"), 1) << "the logged run made its records";
    }
}

TEST_F(BitmapTransfer, DisplayContentWaitsForTheDisplayInterlockAndSendsTheLowByte) {
    EXPECT_EQ(velatrix_set_display_content(device, 0x1234), 1);
    EXPECT_EQ(fake.sequence(), "G13 S101");
    fake.busy_for(1000, 16);
    EXPECT_EQ(velatrix_set_display_content(device, 1), 0);
    EXPECT_EQ(fake.sets(101), (std::vector<Bytes>{{101, 0x34}}));
}

}  // namespace
}  // namespace velatrix::testing
