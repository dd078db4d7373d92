// What the virtual pad sends where its own rules decide: which region the
// pen is over, plain coordinates, card tracks cut to their fields. Values
// arriving at the application are tests/host's.
#include <gtest/gtest.h>

#include "virtual_wire.h"

namespace velatrix::virtual_pad::testing {
namespace {

using Reports = std::vector<Bytes>;

class VirtualPenEveryModel : public ::testing::TestWithParam<const PadModel*> {
protected:
    Firmware pad{*GetParam(), 1};
};

INSTANTIATE_TEST_SUITE_P(Models, VirtualPenEveryModel, ::testing::ValuesIn(all_models()), model_name);

TEST_P(VirtualPenEveryModel, ButtonsWinOverTheContainerTheyLieInAndOutOfRangeHasNoRegion) {
    // Make a button inside the signature container.
    Region inner = *pad.regions().find(3);
    inner.number = 5;
    inner.x1 = 10;
    inner.x2 = 20;
    inner.y1 = 10;
    inner.y2 = 20;
    *pad.regions().find(5) = inner;
    pad.pen(15, 15, true, true);
    pad.pen(30, 30, true, true);
    pad.pen(15, 15, false, false);
    Reports reports = pad.take_input();
    ASSERT_EQ(reports.size(), 3u);
    EXPECT_EQ(reports[0][6], 5);
    EXPECT_EQ(reports[1][6], 1) << "the container";
    EXPECT_EQ(reports[2], (Bytes{2, 0x00, 15, 0, 15, 0, 0}));

    // Invisible regions are not hit.
    pad.regions().find(5)->visible = false;
    pad.pen(15, 15, true, true);
    EXPECT_EQ(pad.take_input().at(0)[6], 1);
}

TEST(VirtualPadInput, PlainCoordinatesWhenTheModelSendsNoRegions) {
    PadModel plain = mono_320_model();
    plain.extended_coordinates = false;
    Firmware pad(plain, 1);
    pad.pen(0x1234, 0x00FF, true, false);
    EXPECT_EQ(pad.take_input(), (Reports{{1, 0x01, 0x34, 0x12, 0xFF, 0x00}}));
}

TEST(VirtualPadInput, CardSwipeOnlyWithACardReader) {
    Firmware mono(mono_320_model(), 1);
    ASSERT_TRUE(mono.swipe_card("%B4111^DOE/J^", ";4111=25?", ""));
    Reports reports = mono.take_input();
    ASSERT_EQ(reports.size(), 1u);
    const Bytes& swipe = reports[0];
    ASSERT_EQ(swipe.size(), 231u);
    EXPECT_EQ(Bytes(swipe.begin(), swipe.begin() + 5), (Bytes{12, 13, 9, 0, 0}));
    EXPECT_EQ(std::string(swipe.begin() + 5, swipe.begin() + 18), "%B4111^DOE/J^");
    EXPECT_EQ(swipe[18], 0);
    EXPECT_EQ(std::string(swipe.begin() + 84, swipe.begin() + 93), ";4111=25?");
    EXPECT_EQ(swipe[124], 0);

    // Tracks longer than their fields are cut to them.
    ASSERT_TRUE(mono.swipe_card(std::string(100, 'A'), std::string(50, 'B'), std::string(120, 'C')));
    const Bytes full = mono.take_input().at(0);
    EXPECT_EQ(Bytes(full.begin() + 1, full.begin() + 4), (Bytes{79, 40, 107}));
    EXPECT_EQ(full[83], 'A');
    EXPECT_EQ(full[84], 'B');
    EXPECT_EQ(full[123], 'B');
    EXPECT_EQ(full[124], 'C');
    EXPECT_EQ(full[230], 'C');

    Firmware colour(color_800_model(), 1);
    EXPECT_FALSE(colour.swipe_card("x", "", ""));
    EXPECT_TRUE(colour.take_input().empty());
}

}  // namespace
}  // namespace velatrix::virtual_pad::testing
