#include <gtest/gtest.h>

#include "input_test_util.h"
#include "support/fake_pad.h"
#include "velatrix/error.h"

namespace velatrix::testing {
namespace {

// Regions: 1 container, 2 button, 3 line, 4 button.
class ButtonTracking : public FakePad {
protected:
    RegionTable table{
        device, {VELATRIX_REGION_CONTAINER, VELATRIX_REGION_BUTTON, VELATRIX_REGION_LINE, VELATRIX_REGION_BUTTON}};

    void expect_button(const std::vector<uint8_t>& bytes, uint8_t type, uint8_t region, uint8_t active,
                       uint8_t active_region) {
        InputReportPtr record = parse(device, bytes);
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->type, type);
        EXPECT_EQ(record->data.button.x, bytes[2] | (bytes[3] << 8));
        EXPECT_EQ(record->data.button.y, bytes[4] | (bytes[5] << 8));
        EXPECT_EQ(record->data.button.region, table.region(region));
        EXPECT_EQ(device->button_active, active);
        EXPECT_EQ(device->button_region, active_region);
    }

    void expect_plain(const std::vector<uint8_t>& bytes) {
        InputReportPtr record = parse(device, bytes);
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(record->type, VELATRIX_INPUT_EXTENDED_COORDINATE);
        EXPECT_EQ(record->data.coordinate.region, bytes[6]);
        EXPECT_EQ(device->button_active, 0);
    }
};

TEST_F(ButtonTracking, DownMovePressThenDownUp) {
    expect_button(extended(true, 300, 40, 2), VELATRIX_INPUT_BUTTON_DOWN, 2, 1, 2);
    expect_button(extended(true, 301, 41, 2), VELATRIX_INPUT_BUTTON_MOVE, 2, 1, 2);
    expect_button(extended(true, 302, 42, 2), VELATRIX_INPUT_BUTTON_MOVE, 2, 1, 2);
    expect_button(extended(false, 302, 42, 2), VELATRIX_INPUT_BUTTON_PRESS, 2, 0, 2);

    expect_button(extended(true, 500, 60, 4), VELATRIX_INPUT_BUTTON_DOWN, 4, 1, 4);
    // Off every button: an up for the region that was pressed, whatever the
    // pen is on now, and then plain coordinates again.
    expect_button(extended(true, 10, 10, 1), VELATRIX_INPUT_BUTTON_UP, 4, 0, 4);
    expect_plain(extended(true, 11, 11, 1));
}

TEST_F(ButtonTracking, DownIgnoresTheTipSwitch) {
    // A pen hovering onto a button, and one still resting there after a
    // press, starts a down at once.
    expect_button(extended(false, 1, 2, 2), VELATRIX_INPUT_BUTTON_DOWN, 2, 1, 2);
    expect_button(extended(false, 1, 2, 2), VELATRIX_INPUT_BUTTON_PRESS, 2, 0, 2);
    expect_button(extended(false, 1, 2, 2), VELATRIX_INPUT_BUTTON_DOWN, 2, 1, 2);
}

TEST_F(ButtonTracking, MovingOntoAnotherButtonReportsTheCurrentRegion) {
    expect_button(extended(true, 1, 1, 2), VELATRIX_INPUT_BUTTON_DOWN, 2, 1, 2);
    expect_button(extended(true, 2, 2, 4), VELATRIX_INPUT_BUTTON_MOVE, 4, 1, 2);
    expect_button(extended(false, 2, 2, 4), VELATRIX_INPUT_BUTTON_PRESS, 4, 0, 2);
}

TEST_F(ButtonTracking, StrayPenOnNonButtonRegionsStaysPlain) {
    expect_plain(extended(true, 5, 5, 0));  // outside every region
    expect_plain(extended(true, 5, 5, 1));  // container
    expect_plain(extended(true, 5, 5, 3));  // line
    expect_plain(extended(true, 5, 5, 5));  // past the region count
    expect_plain(extended(true, 5, 5, 255));
    EXPECT_EQ(device->button_region, 0);

    // Past the region count also ends an active button.
    expect_button(extended(true, 7, 7, 2), VELATRIX_INPUT_BUTTON_DOWN, 2, 1, 2);
    expect_button(extended(true, 7, 7, 5), VELATRIX_INPUT_BUTTON_UP, 2, 0, 2);
}

TEST_F(ButtonTracking, RejectedReportLeavesTheStateAlone) {
    expect_button(extended(true, 1, 1, 2), VELATRIX_INPUT_BUTTON_DOWN, 2, 1, 2);
    std::vector<uint8_t> short_off_button = extended(true, 1, 1, 1);
    short_off_button.pop_back();
    EXPECT_EQ(parse(device, short_off_button), nullptr);
    EXPECT_STREQ(velatrix_get_last_error(), "Buffer was too small to be an extended input coordinate buffer.");
    EXPECT_EQ(device->button_active, 1);
    EXPECT_EQ(device->button_region, 2);
}

using ButtonTrackingTable = FakePad;

TEST_F(ButtonTrackingTable, HeldButtonWhoseTableIsGoneGivesAnUpWithoutRegion) {
    // The state survives a close; if the table read at the next open no
    // longer holds the pressed region, the up has no region to point at.
    device->button_active = 1;
    device->button_region = 7;
    RegionTable table(device, {VELATRIX_REGION_BUTTON});
    InputReportPtr record = parse(device, extended(true, 3, 4, 0));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->type, VELATRIX_INPUT_BUTTON_UP);
    EXPECT_EQ(record->data.button.region, nullptr);
    EXPECT_EQ(device->button_active, 0);

    // Without any table nothing names a button.
    velatrix_device* bare = fake.make_device("bare");
    record = parse(bare, extended(true, 3, 4, 1));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->type, VELATRIX_INPUT_EXTENDED_COORDINATE);
    EXPECT_EQ(bare->button_active, 0);
}

}  // namespace
}  // namespace velatrix::testing
