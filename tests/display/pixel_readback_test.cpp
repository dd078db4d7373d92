#include <gtest/gtest.h>
#include <tuple>

#include "support/fake_driver.h"
#include "velatrix-quillmark.h"

namespace {

using velatrix::testing::Bytes;
using velatrix::testing::FakeDriver;

TEST(PixelReadback, RequestsOnlyTheLowBytesOfTheCoordinates) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    velatrix_pixel_read record{};
    record.x = 300;
    record.y = 0x0105;
    ASSERT_EQ(velatrix_get_pixels(device, &record), 1);
    EXPECT_EQ(fake.sets(104), (std::vector<Bytes>{{104, 44, 0, 5, 0}}));
    EXPECT_EQ(fake.sequence(), "S104 G105");
}

TEST(PixelReadback, CopiesCountEntriesAndZeroesTheRest) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    Bytes answer(1031, 0xEE);  // the pad's stale bytes past count must not show
    answer[0] = 105;
    answer[1] = 10, answer[2] = 0, answer[3] = 20, answer[4] = 0, answer[5] = 2, answer[6] = 0;
    fake.answer(105, answer);
    velatrix_pixel_read record{};
    ASSERT_EQ(velatrix_get_pixels(device, &record), 1);
    EXPECT_EQ(std::tuple(record.report_id, record.x, record.y, record.count, record.entries[1][3],
                         record.entries[2][0], record.entries[255][3]),
              std::tuple(105, 10, 20, 2, 0xEE, 0, 0));
}

TEST(PixelReadback, AHostileCountStaysInsideTheRecord) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    Bytes answer(1031, 0x11);
    answer[0] = 105;
    answer[5] = 0xFF, answer[6] = 0xFF;
    fake.answer(105, answer);
    velatrix_pixel_read record{};
    ASSERT_EQ(velatrix_get_pixels(device, &record), 1);
    EXPECT_EQ(record.count, 0xFFFF);
    EXPECT_EQ(record.entries[255][3], 0x11);
}

TEST(PixelReadback, FailuresLogAndReturnZero) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    velatrix_pixel_read record{};
    fake.fail_report(104, "no request");
    EXPECT_EQ(velatrix_get_pixels(device, &record), 0);
    EXPECT_EQ(fake.gets_of(105), 0);
}

}  // namespace
