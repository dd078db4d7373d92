#include <gtest/gtest.h>

#include "support/fake_pad.h"
#include "velatrix-quillmark.h"

namespace {

using namespace velatrix::testing;

Bytes capabilities(uint8_t coordinate_modes, uint8_t screens, uint8_t display_id = 0, uint8_t mag_reader = 0) {
    return wire(11, 65, {{3, {coordinate_modes}}, {5, {display_id}}, {41, {mag_reader}}, {45, {screens}}});
}

struct ModeFixture : FakePad {
    ModeFixture() {
        device->display_info = {100, 320, 240, 1, 6, 12, 4, 8};
        fake.answer(171, {171, 1});  // active screen 1: clearing re-activates it
    }
};

TEST_F(ModeFixture, APadWithoutTheModeBitsOrWithoutScreensGetsNothing) {
    for (const Bytes& answer : {capabilities(0x01, 1), capabilities(0x02, 1), capabilities(0x04, 0)}) {
        fake.answer(11, answer);
        fake.clear_transfers();
        EXPECT_EQ(velatrix_set_quillmark_mode(device, 1), 1);
        EXPECT_EQ(velatrix_set_corvantine_mode(device, 0), 1);
        EXPECT_EQ(fake.sequence(), "G11 G11") << "only the capability reads";
    }
}

TEST_F(ModeFixture, QuillmarkModeWithoutSaveRunsTheStepsInOrder) {
    fake.answer(11, capabilities(0x03, 1));
    ASSERT_EQ(velatrix_set_quillmark_mode(device, 0), 1);
    const std::string sequence = fake.sequence(false);
    // capabilities; commit 90; active 1; clear (read active, re-activate);
    // restore defaults (the pad is running: idle, commit 0, running again);
    // screen index; screen read/write;
    // run mode 0; output config read/write; active 1; run mode 2.
    EXPECT_EQ(sequence, "G11 S172 S171 G171 S171 S10 S172 S10 S160 G162 S162 S10 G91 S91 S171 S10");
    EXPECT_EQ(fake.sets(172).at(0), (Bytes{172, 90}));
    EXPECT_EQ(fake.sets(10), (std::vector<Bytes>{{10, 0}, {10, 2}, {10, 0}, {10, 2}}));
    const Bytes output = fake.sets(91).at(0);
    EXPECT_EQ(output, (Bytes{91, 0x02, 0x00, 0x00, 0x40, 0, 3, 0, 0, 0})) << "not saved as default";
}

TEST_F(ModeFixture, CorvantineModeWithSaveStoresDefaultsAndSetsUpTheCardReader) {
    fake.answer(11, capabilities(0x08, 1, 0, 0x80));
    fake.answer(162, wire(162, 80));
    ASSERT_EQ(velatrix_set_corvantine_mode(device, 1), 1);
    const std::string sequence = fake.sequence(false);
    EXPECT_EQ(sequence,
              "G11 S172 S171 G171 S171 S10 S172 S10 S160 G162 S162 S10 G91 S172 S91 S171 G92 S92 S10");
    EXPECT_EQ(fake.sets(172).at(2), (Bytes{172, 1})) << "commit as default before the output write";
    EXPECT_EQ(fake.sets(91).at(0), (Bytes{91, 0x00, 0x00, 0x01, 0x40, 0, 3, 0, 0, 1}));
    EXPECT_EQ(fake.sets(92).at(0), wire(92, 17, {{1, {0x0C}}, {16, {1}}}));
    EXPECT_EQ(fake.sets(162).at(0)[17], 15) << "screen time-out";
}

TEST_F(ModeFixture, APadWithADisplayIdWritesTwoScreensWithTheButtonRegions) {
    fake.answer(11, capabilities(0x04, 1, 1));
    // Screen 1 times out after 20 to screen 5 and lists region 3 leading to screen 9.
    const Bytes screen = wire(162, 80, {{1, {1}}, {17, {20, 5, 1, 3}}, {50, {9}}});
    fake.answer(162, screen);
    ASSERT_EQ(velatrix_set_quillmark_mode(device, 0), 1);
    EXPECT_EQ(fake.gets_of(162), 2);
    ASSERT_EQ(fake.sets(162).size(), 2u);
    // First only the time-out's next screen changes; then the time-out goes
    // and regions 3 and 4 both lead to screen 2.
    Bytes first = screen;
    first[18] = 2;
    Bytes second = screen;
    second[17] = 0, second[18] = 2, second[19] = 2;
    second[21] = 4, second[50] = 2, second[51] = 2;
    EXPECT_EQ(fake.sets(162), (std::vector<Bytes>{first, second}));
}

}  // namespace
