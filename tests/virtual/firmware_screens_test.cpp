// Screens and resources of the pads that have them, from the wire.
#include <gtest/gtest.h>

#include <numeric>
#include <tuple>

#include "virtual_wire.h"

namespace velatrix::virtual_pad::testing {
namespace {

class VirtualScreens : public ::testing::TestWithParam<const PadModel*> {
protected:
    Firmware pad{*GetParam(), 1};

    Bytes screen(uint8_t number) {
        EXPECT_TRUE(pad.set_feature(report(160, 2, {number})));
        return get(pad, 162, 80);
    }
    bool edit(uint8_t flags, uint8_t screen, uint8_t region, uint8_t next, uint8_t timeout = 0,
              uint8_t timeout_next = 0) {
        Bytes command = report(164, 13);
        command[7] = flags;
        command[8] = screen;
        command[9] = region;
        command[10] = next;
        command[11] = timeout;
        command[12] = timeout_next;
        return pad.set_feature(command);
    }
};

INSTANTIATE_TEST_SUITE_P(Models, VirtualScreens, ::testing::ValuesIn(models_with(kScreensResources)), model_name);

TEST_P(VirtualScreens, EditScreenAddsRemovesAndSetsTheTimeout) {
    ASSERT_TRUE(edit(0x01, 1, 3, 9)) << "existing region: only its next screen changes";
    ASSERT_TRUE(edit(0x02, 1, 2, 0));
    ASSERT_TRUE(edit(0x04, 1, 0, 0, 20, 3));
    const Screen* first = pad.screens().find(1);
    ASSERT_EQ(first->region_count, 3);
    EXPECT_EQ((std::array{first->regions[0], first->regions[1], first->regions[2]}), (std::array<uint8_t, 3>{1, 3, 4}));
    EXPECT_EQ(std::tuple(first->next_screens[1], first->timeout, first->timeout_next_screen),
              std::tuple(9, 20, 3));

    EXPECT_FALSE(edit(0x01, 9, 1, 1));
    EXPECT_EQ(pad.state().error_text, "Screen 9 does not exist");
    for (uint8_t region = 7; region < 37; ++region) ASSERT_TRUE(edit(0x01, 2, region, 1));
    EXPECT_FALSE(edit(0x01, 2, 40, 1));
    EXPECT_EQ(pad.state().error_text, "Screen region list full");
}

TEST_P(VirtualScreens, ActivatingAScreenDrawsItsRegionsAfresh) {
    EXPECT_EQ(get(pad, 171, 2), (Bytes{171, 1}));
    const Region& accept = *pad.regions().find(3);
    EXPECT_EQ(pad.frame().pixel(accept.x1, accept.y1), 0x000000FFu) << "button frame";
    EXPECT_EQ(pad.frame().pixel(accept.x1 + 5, accept.y1 + 5), 0xFFFFFFFFu);

    // Ink on the display goes when the screen is shown again.
    Bytes ink = report(103, 2049);
    put_be16(ink, 5, 8);
    put_be16(ink, 7, 8);
    ink[9] = 1;
    std::fill(ink.begin() + 10, ink.begin() + 18, 0xFF);
    ASSERT_TRUE(pad.set_feature(ink));
    EXPECT_EQ(pad.frame().pixel(7, 7), 0x000000FFu);
    ASSERT_TRUE(pad.set_feature(report(171, 2, {1})));
    EXPECT_EQ(pad.frame().pixel(7, 7), 0xFFFFFFFFu);

    ASSERT_TRUE(pad.set_feature(report(171, 2, {2})));
    EXPECT_EQ(get(pad, 171, 2), (Bytes{171, 2}));
    EXPECT_EQ(pad.frame().pixel(accept.x1, accept.y1), 0xFFFFFFFFu) << "screen 2 has no regions";
    EXPECT_FALSE(pad.set_feature(report(171, 2, {9})));
    EXPECT_EQ(get(pad, 171, 2), (Bytes{171, 2}));
}

TEST_P(VirtualScreens, DeleteStorageLimitInfoAndCommits) {
    ASSERT_TRUE(pad.set_feature(report(163, 2, {3})));
    EXPECT_FALSE(pad.set_feature(report(163, 2, {3}))) << "already deleted";

    Bytes info = get(pad, 170, 25);
    EXPECT_EQ(info[1], 2) << "screens";
    EXPECT_EQ(info[2], 4) << "highest region in use";
    EXPECT_EQ(info[3], 1) << "active screen";
    EXPECT_EQ(info[4], GetParam()->display.region_count);
    EXPECT_EQ(Bytes(info.begin() + 9, info.begin() + 12), (Bytes{1, 2, 0}));

    std::size_t capacity = GetParam()->screen_capacity;
    for (std::size_t number = 10; pad.screens().screens().size() < capacity; ++number) {
        ASSERT_TRUE(pad.set_feature(report(162, 80, {static_cast<uint8_t>(number)})));
    }
    EXPECT_FALSE(pad.set_feature(report(162, 80, {200})));
    EXPECT_EQ(pad.state().error_text, "Screen storage full");
    EXPECT_TRUE(pad.set_feature(report(162, 80, {1}))) << "rewriting a stored screen needs no room";

    for (uint8_t value : {0, 1, 90}) ASSERT_TRUE(pad.set_feature(report(172, 2, {value})));
    EXPECT_EQ(pad.state().screen_region_commits, (std::vector<uint8_t>{0, 1, 90}));
}

// One chunk of resource `number`: total `size`, `length` bytes of `data` from `offset`.
Bytes resource_chunk(uint8_t number, uint8_t type, uint32_t size, const Bytes& data, std::size_t offset,
                     uint16_t length) {
    Bytes chunk = report(142, 1045, {number, type});
    chunk[5] = static_cast<uint8_t>(size);
    chunk[6] = static_cast<uint8_t>(size >> 8);
    chunk[7] = static_cast<uint8_t>(size >> 16);
    chunk[8] = static_cast<uint8_t>(size >> 24);
    put_le16(chunk, 19, length);
    for (std::size_t i = 0; i < length && offset + i < data.size(); ++i) chunk[21 + i] = data[offset + i];
    return chunk;
}

TEST_P(VirtualScreens, ResourcesArriveInChunksAndAreReadBackInChunks) {
    Bytes graphic(1025);
    std::iota(graphic.begin(), graphic.end(), uint8_t{7});
    ASSERT_TRUE(pad.set_feature(resource_chunk(5, 1, 1025, graphic, 0, 1024)));
    EXPECT_EQ(pad.resources().find(5), nullptr) << "not complete yet";
    ASSERT_TRUE(pad.set_feature(resource_chunk(5, 1, 1025, graphic, 1024, 1)));
    EXPECT_NE(pad.resources().find(5), nullptr);

    // What the chunks hold is the round trip's (tests/host); after the last
    // one the read starts over.
    ASSERT_TRUE(pad.set_feature(report(140, 2, {5})));
    Bytes first = get(pad, 142, 1045);
    EXPECT_EQ(le16(get(pad, 142, 1045), 19), 1);
    EXPECT_EQ(get(pad, 142, 1045), first) << "the read starts over";

    Bytes info = get(pad, 141, 20);
    EXPECT_EQ(Bytes(info.begin(), info.begin() + 8), (Bytes{141, 5, 1, 2, 0x01, 0x04, 0, 0}));
    uint32_t sum = std::accumulate(graphic.begin(), graphic.end(), 0u);
    EXPECT_EQ(info[8] | (info[9] << 8) | (info[10] << 16) | (info[11] << 24), static_cast<int>(sum));

    Bytes available = get(pad, 144, 18);
    EXPECT_EQ(available[1], 1);
    uint32_t free_bytes = available[2] | (available[3] << 8) | (available[4] << 16) | (available[5] << 24);
    EXPECT_EQ(free_bytes, GetParam()->resource_capacity - 1025);
    EXPECT_EQ(Bytes(available.begin() + 6, available.end()), (Bytes{0x20, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

TEST_P(VirtualScreens, TextsAbsentResourcesDeletesAndFullStorage) {
    Bytes text = {'H', 'e', 'l', 'l', 'o', 0};
    ASSERT_TRUE(pad.set_feature(resource_chunk(2, 0, 6, text, 0, 6)));

    ASSERT_TRUE(pad.set_feature(report(140, 2, {9})));
    Bytes absent = get(pad, 142, 1045);
    EXPECT_EQ(absent[2], 255) << "invalid type";
    EXPECT_EQ(le16(absent, 19), 0);
    EXPECT_EQ(get(pad, 141, 20)[2], 255);

    ASSERT_TRUE(pad.set_feature(report(143, 2, {2})));
    EXPECT_EQ(pad.resources().find(2), nullptr);
    EXPECT_FALSE(pad.set_feature(report(143, 2, {2})));
    EXPECT_EQ(pad.state().error_text, "Resource 2 does not exist");

    uint32_t too_big = static_cast<uint32_t>(GetParam()->resource_capacity + 1);
    EXPECT_FALSE(pad.set_feature(resource_chunk(3, 1, too_big, {}, 0, 1024)));
    EXPECT_EQ(pad.state().error_text, "Resource storage full");
}

TEST(VirtualScreensAbsent, PadsWithoutScreensRefuseTheirReports) {
    for (const PadModel* model : all_models()) {
        if (capabilities(*model) & kScreensResources) continue;
        Firmware pad(*model, 1);
        for (uint8_t id : {140, 141, 142, 143, 144, 150, 152, 153, 160, 162, 163, 164, 170, 171, 172}) {
            EXPECT_EQ(pad.feature_length(id), 0u) << model->name << " " << int(id);
            EXPECT_TRUE(get(pad, id, 80).empty()) << model->name << " " << int(id);
        }
    }
}

}  // namespace
}  // namespace velatrix::virtual_pad::testing
