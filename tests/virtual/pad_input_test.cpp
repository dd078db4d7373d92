// Input reports the virtual pad sends, byte for byte.
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

TEST_P(VirtualPenEveryModel, StrokeOverAButtonCarriesItsRegionAndEndsWithTheTipUp) {
    const Region& button = *pad.regions().find(3);
    ASSERT_EQ(button.type, kButton);
    const uint16_t x = static_cast<uint16_t>(button.x1 + 3), y = static_cast<uint16_t>(button.y1 + 4);
    std::array<std::array<uint16_t, 2>, 2> points{{{x, y}, {static_cast<uint16_t>(x + 1), y}}};
    pad.stroke(points);
    auto lo = [](uint16_t v) { return static_cast<uint8_t>(v); };
    auto hi = [](uint16_t v) { return static_cast<uint8_t>(v >> 8); };
    Reports expected = {
        {2, 0x11, lo(x), hi(x), lo(y), hi(y), 3},
        {2, 0x11, lo(x + 1), hi(x + 1), lo(y), hi(y), 3},
        {2, 0x10, lo(x + 1), hi(x + 1), lo(y), hi(y), 3},
    };
    EXPECT_EQ(pad.take_input(), expected);
    EXPECT_TRUE(pad.take_input().empty());
}

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

TEST(VirtualPadInput, AdcAndDebugSamples) {
    EXPECT_EQ(adc_report(2, 0x11, {1, 0x0203, 0xFFFF, 0}), (Bytes{3, 2, 0x11, 1, 0, 3, 2, 0xFF, 0xFF, 0, 0}));
    Bytes debug = debug_report(0x10, {1, 2, 3, 4, 5, 6, 7, 8, 0x0900}, 0x7E);
    ASSERT_EQ(debug.size(), 22u);
    EXPECT_EQ(debug[0], 254);
    EXPECT_EQ(debug[1], 0);
    EXPECT_EQ(debug[2], 0x10);
    EXPECT_EQ(debug[3], 1);
    EXPECT_EQ(debug[17], 8);
    EXPECT_EQ(debug[19], 0x00);
    EXPECT_EQ(debug[20], 0x09);
    EXPECT_EQ(debug[21], 0x7E);
}

}  // namespace
}  // namespace velatrix::virtual_pad::testing
