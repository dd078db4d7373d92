// Restoring the factory regions: by screen-region commit on pads with
// screens, by rewriting differing table regions (never region 1) on others.
#include <gtest/gtest.h>

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

Bytes table(uint8_t id, const std::vector<Bytes>& blocks) {
    Bytes result = {id};
    for (const Bytes& block : blocks) result.insert(result.end(), block.begin(), block.end());
    return result;
}

class RegionRestoreTest : public PadTest {
protected:
    void SetUp() override {
        use_pad(3, kCaption);
        // Region 1 and 3 differ from their defaults, region 2 does not.
        fake.answer(0x6F, table(0x6F, {line_block(1, 10), line_block(2, 20), line_block(3, 30)}));
        fake.answer(0x6E, table(0x6E, {line_block(1, 11), line_block(2, 20), line_block(3, 33)}));
    }
};

TEST_F(RegionRestoreTest, PadWithScreensRestoresOnCommitBetweenRunModes) {
    ASSERT_EQ(velatrix_restore_default_regions(device), 1);
    EXPECT_EQ(fake.sequence(), "G13 G13 S10 G13 G13 S172 G13 G13 G13 S10 G13");
    EXPECT_EQ(fake.sets(10), (std::vector<Bytes>{{10, 0}, {10, 2}}));
    EXPECT_EQ(fake.sets(0xAC), (std::vector<Bytes>{{0xAC, 0}}));
}

TEST_F(RegionRestoreTest, IdlePadKeepsItsRunMode) {
    fake.answer(13, status(0, 0x10));
    ASSERT_EQ(velatrix_restore_default_regions(device), 1);
    EXPECT_EQ(fake.sequence(), "G13 G13 S172 G13 G13");
}

TEST_F(RegionRestoreTest, FailedCommitFallsBackToTheTableButNeverRegionOne) {
    fake.fail_report(0xAC);
    ASSERT_EQ(velatrix_restore_default_regions(device), 1);
    EXPECT_EQ(fake.sequence(false), "S10 S172 S10 G111 G110 S112");
    EXPECT_EQ(fake.sets(10), (std::vector<Bytes>{{10, 0}, {10, 2}}));
    Bytes expected = {0x70};
    const Bytes block = line_block(3, 30);
    expected.insert(expected.end(), block.begin(), block.end());
    EXPECT_EQ(fake.sets(0x70), (std::vector<Bytes>{expected}));
}

TEST_F(RegionRestoreTest, PadWithoutStatusGoesStraightToTheTable) {
    fake.fail_report(13);
    ASSERT_EQ(velatrix_restore_default_regions(device), 1);
    EXPECT_EQ(fake.sequence(false), "G111 G110 S112");

    fake.clear_transfers();
    fake.fail_report(0x70);
    EXPECT_EQ(velatrix_restore_default_regions(device), 0);
    fake.fail_report(0x6E);
    EXPECT_EQ(velatrix_restore_default_regions(device), 0);
}

}  // namespace
}  // namespace velatrix::testing
