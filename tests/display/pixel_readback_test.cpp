#include <gtest/gtest.h>

#include <tuple>

#include "support/fake_pad.h"
#include "velatrix-quillmark.h"

namespace velatrix::testing {
namespace {

using PixelReadback = FakePad;

TEST_F(PixelReadback, RequestsOnlyTheLowBytesOfTheCoordinates) {
    velatrix_pixel_read record{};
    record.x = 300;
    record.y = 0x0105;
    ASSERT_EQ(velatrix_get_pixels(device, &record), 1);
    EXPECT_EQ(fake.sets(104), (std::vector<Bytes>{{104, 44, 0, 5, 0}}));
    EXPECT_EQ(fake.sequence(), "S104 G105");

    // A refused request reads nothing.
    fake.clear_transfers();
    fake.fail_report(104, "no request");
    EXPECT_EQ(velatrix_get_pixels(device, &record), 0);
    EXPECT_EQ(fake.sequence(), "S104");
}

// The pad's stale bytes past count must not show; a hostile count stays
// inside the record.
TEST_F(PixelReadback, CopiesCountEntriesAndZeroesTheRest) {
    Bytes answer = wire(105, 1031, {{1, hex("0a00 1400 0200")}});
    std::fill(answer.begin() + 7, answer.end(), 0xEE);
    fake.answer(105, answer);
    velatrix_pixel_read record{};
    ASSERT_EQ(velatrix_get_pixels(device, &record), 1);
    EXPECT_EQ(std::tuple(record.report_id, record.x, record.y, record.count, record.entries[1][3],
                         record.entries[2][0], record.entries[255][3]),
              std::tuple(105, 10, 20, 2, 0xEE, 0, 0));

    answer[5] = answer[6] = 0xFF;
    fake.answer(105, answer);
    ASSERT_EQ(velatrix_get_pixels(device, &record), 1);
    EXPECT_EQ(std::tuple(record.count, record.entries[255][3]), std::tuple(0xFFFF, 0xEE));
}

}  // namespace
}  // namespace velatrix::testing
