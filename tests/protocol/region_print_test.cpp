// Printed form of both region generations, one record of each type.
#include <gtest/gtest.h>

#include "protocol_test.h"

namespace velatrix::testing {
namespace {

template <class Record>
Record common(uint8_t number, uint32_t type) {
    Record record{};
    record.number = number;
    record.type = type;
    record.accept_touch = 1;
    record.decode = 0;
    record.has_frame = 1;
    record.reserved1 = 126;
    record.x1 = 10;
    record.x2 = 300;
    record.y1 = 20;
    record.y2 = 400;
    record.foreground = 0x11223344;
    record.background = 0xAABBCCDD;
    return record;
}

const char* const kPlace =
    "         Reserved 1: 126\n"
    "         Reserved 2: %s\n"
    "                 X1: 10\n"
    "                 Y1: 20\n"
    "                 X2: 300\n"
    "                 Y2: 400\n"
    "         Foreground: #44112233\n"
    "         Background: #ddaabbcc\n";

std::string place(const char* reserved2) {
    char text[512];
    std::snprintf(text, sizeof text, kPlace, reserved2);
    return text;
}

TEST(RegionPrintTest, RegionTableRecords) {
    velatrix_device_region_info regions[4] = {
        common<velatrix_device_region_info>(1, VELATRIX_REGION_CONTAINER),
        common<velatrix_device_region_info>(2, VELATRIX_REGION_BUTTON),
        common<velatrix_device_region_info>(3, VELATRIX_REGION_LINE),
        common<velatrix_device_region_info>(4, 7),
    };
    for (auto& region : regions) {
        region.visible = 1;
        region.reserved2 = 305419896;
    }
    regions[0].data.container = {1, 3, 0, 0};
    regions[1].data.button.parent = 1;
    regions[1].data.button.enable = 1;
    regions[1].data.button.clear_on_select = 1;
    std::strcpy(regions[1].data.button.caption, "Accept");
    regions[2].data.line = {2, 5, 0};

    const std::string flags =
        "      Accepts Touch: 1\n"
        "             Decode: 0\n"
        "            Visible: 1\n"
        "             In Use: 0\n"
        "          Has Frame: 1\n" +
        place("305419896");
    const std::string expected = "velatrix_device_region_info structure:\n"
                                 "   Region 1:\n"
                                 "               Type: Container\n" +
                                 flags +
                                 "         Ink Enable: 1\n"
                                 "          Ink Width: 3\n"
                                 "   Region 2:\n"
                                 "               Type: Button\n" +
                                 flags +
                                 "             Parent: 1\n"
                                 "    Clear on Select: 1\n"
                                 "             Enable: 1\n"
                                 "Highlight on Select: 0\n"
                                 "            Caption: Accept\n"
                                 "   Region 3:\n"
                                 "               Type: Line\n" +
                                 flags +
                                 "             Parent: 2\n"
                                 "              Width: 5\n"
                                 "   Region 4:\n"
                                 "               Type: \n" +
                                 flags;
    EXPECT_EQ(capture_stdout([&] { velatrix_print_regions(regions, 4); }), expected);
    EXPECT_EQ(capture_stdout([] { velatrix_print_regions(nullptr, 3); }),
              "velatrix_device_region_info structure:\n  NULL\n");
}

TEST(RegionPrintTest, DeviceRegionRecords) {
    velatrix_device_region regions[5] = {
        common<velatrix_device_region>(1, VELATRIX_REGION_CONTAINER),
        common<velatrix_device_region>(2, VELATRIX_REGION_BUTTON),
        common<velatrix_device_region>(3, VELATRIX_REGION_LINE),
        common<velatrix_device_region>(4, VELATRIX_REGION_GRAPHIC),
        common<velatrix_device_region>(5, VELATRIX_REGION_TEXT),
    };
    for (auto& region : regions) {
        region.output_to_host = 1;
        region.reserved2[0] = 200;
        region.reserved2[1] = 1;
    }
    regions[0].data.container = {1, 2, 0, 0};
    auto& button = regions[1].data.button;
    button.enable = 1;
    button.highlight_on_select = 1;
    button.confirm_on_select = 1;
    button.resource_number_normal = 11;
    button.resource_number_selected = 12;
    // A caption filling its whole field prints without running past it.
    std::memset(button.caption, 'c', sizeof button.caption);
    regions[2].data.line = {3, 4, {0, 0}};
    regions[3].data.graphic.resource_number = 9;
    regions[3].data.graphic.horizontal_justification = 1;
    regions[3].data.graphic.vertical_justification = 15;
    regions[4].data.text.resource_number = 6;
    regions[4].data.text.font_number = 2;
    regions[4].data.text.horizontal_justification = 0;
    regions[4].data.text.vertical_justification = 7;

    const std::string flags =
        "      Accepts Touch: 1\n"
        "             Decode: 0\n"
        "          Has Frame: 1\n"
        "     Output To Host: 1\n" +
        place("200");
    const std::string expected = "velatrix_device_region_info structure:\n"
                                 "   Region 1:\n"
                                 "               Type: Container\n" +
                                 flags +
                                 "         Ink Enable: 1\n"
                                 "          Ink Width: 2\n"
                                 "   Region 2:\n"
                                 "               Type: Button\n" +
                                 flags +
                                 "    Clear on Select: 0\n"
                                 "             Enable: 1\n"
                                 "Highlight on Select: 1\n"
                                 "  Confirm on Select: 1\n"
                                 "       Use Resource: 0\n"
                                 "            Caption: " +
                                 std::string(100, 'c') +
                                 "\n"
                                 "Resource Number Normal: 11\n"
                                 "Resource Number Selected: 12\n"
                                 "   Region 3:\n"
                                 "               Type: Line\n" +
                                 flags +
                                 "             Parent: 3\n"
                                 "              Width: 4\n"
                                 "   Region 4:\n"
                                 "               Type: Graphic\n" +
                                 flags +
                                 "     Graphic Number: 9\n"
                                 "Horizontal Justification: 1\n"
                                 "Vertical Justification: 15\n"
                                 "   Region 5:\n"
                                 "               Type: Text\n" +
                                 flags +
                                 "    Resource Number: 6\n"
                                 "        Font Number: 2\n"
                                 "Horizontal Justification: 0\n"
                                 "Vertical Justification: 7\n";
    EXPECT_EQ(capture_stdout([&] { velatrix_print_device_regions(regions, 5); }), expected);
    EXPECT_EQ(capture_stdout([] { velatrix_print_device_regions(nullptr, 0); }),
              "velatrix_device_region_info structure:\n  NULL\n");
}

}  // namespace
}  // namespace velatrix::testing
