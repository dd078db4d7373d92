// Restoring the factory regions: by screen-region commit on pads with
// screens, by rewriting differing table regions (never region 1) on others.
#include <gtest/gtest.h>

#include <functional>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

constexpr uint8_t kCaption = 4;
constexpr size_t kBlock = kCaption + 29;

// A line region block numbered `number` at x1 = `x1`.
Bytes line_block(uint8_t number, uint8_t x1) {
    Bytes block(kBlock, 0);
    block[0] = number;
    block[1] = VELATRIX_REGION_LINE;
    block[8] = x1;
    block[25] = 2;
    return block;
}

// Pads with screens restore on a commit between run modes (an idle pad
// keeps its run mode); a failed commit falls back to rewriting the table
// regions that differ, but never region 1; so does a pad without status.
TEST(RegionRestore, ByCommitOrByRewritingTheTable) {
    const Bytes region_3 = table_report(0x70, {line_block(3, 30)});
    const struct {
        const char* name;
        std::function<void(FakeDriver&)> arrange;
        int result;
        bool with_polls;
        const char* sequence;
        std::vector<Bytes> sets;
    } kCases[] = {
        {"running pad with screens", [](FakeDriver&) {}, 1, true, "G13 G13 S10 G13 G13 S172 G13 G13 G13 S10 G13",
         {{10, 0}, {0xAC, 0}, {10, 2}}},
        {"idle pad", [](FakeDriver& f) { f.answer(13, status(0, 0x10)); }, 1, true, "G13 G13 S172 G13 G13",
         {{0xAC, 0}}},
        {"failed commit", [](FakeDriver& f) { f.fail_report(0xAC); }, 1, false, "S10 S172 S10 G111 G110 S112",
         {{10, 0}, {0xAC, 0}, {10, 2}, region_3}},
        {"no status", [](FakeDriver& f) { f.fail_report(13); }, 1, false, "G111 G110 S112", {region_3}},
        {"no status, table write fails",
         [](FakeDriver& f) { f.fail_report(13), f.fail_report(0x70); }, 0, false, "G111 G110 S112", {region_3}},
        {"no status, table read fails",
         [](FakeDriver& f) { f.fail_report(13), f.fail_report(0x6E); }, 0, false, "G111 G110", {}},
    };
    for (const auto& c : kCases) {
        SCOPED_TRACE(c.name);
        FakeDriver other;
        velatrix_device* pad = other.make_device();
        pad->display_info.region_count = 3;
        pad->display_info.max_caption_length = kCaption;
        // Region 1 and 3 differ from their defaults, region 2 does not.
        other.answer(0x6F, table_report(0x6F, {line_block(1, 10), line_block(2, 20), line_block(3, 30)}));
        other.answer(0x6E, table_report(0x6E, {line_block(1, 11), line_block(2, 20), line_block(3, 33)}));
        c.arrange(other);
        EXPECT_EQ(velatrix_restore_default_regions(pad), c.result);
        EXPECT_EQ(other.sequence(c.with_polls), c.sequence);
        EXPECT_EQ(other.sets(), c.sets);
    }
}

}  // namespace
}  // namespace velatrix::testing
