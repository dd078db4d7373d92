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

// Print-out lines: labels right-aligned to 19 columns (longer ones as they are).
std::string lines(const std::vector<std::pair<std::string, std::string>>& fields) {
    std::string out;
    for (const auto& [label, value] : fields) {
        out += std::string(label.size() < 19 ? 19 - label.size() : 0, ' ') + label + ": " + value + "\n";
    }
    return out;
}

std::string place(const char* reserved2) {
    return lines({{"Reserved 1", "126"}, {"Reserved 2", reserved2}, {"X1", "10"}, {"Y1", "20"}, {"X2", "300"},
                  {"Y2", "400"}, {"Foreground", "#44112233"}, {"Background", "#ddaabbcc"}});
}
std::string region(int number, const char* type) {
    return "   Region " + std::to_string(number) + ":\n" + lines({{"Type", type}});
}

TEST(RegionPrintTest, RegionTableRecords) {
    velatrix_device_region_info regions[4] = {
        common<velatrix_device_region_info>(1, VELATRIX_REGION_CONTAINER),
        common<velatrix_device_region_info>(2, VELATRIX_REGION_BUTTON),
        common<velatrix_device_region_info>(3, VELATRIX_REGION_LINE),
        common<velatrix_device_region_info>(4, 7),
    };
    for (auto& r : regions) {
        r.visible = 1;
        r.reserved2 = 305419896;
    }
    regions[0].data.container = {1, 3, 0, 0};
    regions[1].data.button.parent = 1;
    regions[1].data.button.enable = 1;
    regions[1].data.button.clear_on_select = 1;
    std::strcpy(regions[1].data.button.caption, "Accept");
    regions[2].data.line = {2, 5, 0};

    const std::string flags =
        lines({{"Accepts Touch", "1"}, {"Decode", "0"}, {"Visible", "1"}, {"In Use", "0"}, {"Has Frame", "1"}}) +
        place("305419896");
    const std::string expected =
        "velatrix_device_region_info structure:\n" + region(1, "Container") + flags +
        lines({{"Ink Enable", "1"}, {"Ink Width", "3"}}) + region(2, "Button") + flags +
        lines({{"Parent", "1"}, {"Clear on Select", "1"}, {"Enable", "1"}, {"Highlight on Select", "0"},
               {"Caption", "Accept"}}) +
        region(3, "Line") + flags + lines({{"Parent", "2"}, {"Width", "5"}}) + region(4, "") + flags;
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
    for (auto& r : regions) {
        r.output_to_host = 1;
        r.reserved2[0] = 200;
        r.reserved2[1] = 1;
    }
    regions[0].data.container = {1, 2, 0, 0};
    auto& button = regions[1].data.button;
    button.enable = button.highlight_on_select = button.confirm_on_select = 1;
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
        lines({{"Accepts Touch", "1"}, {"Decode", "0"}, {"Has Frame", "1"}, {"Output To Host", "1"}}) + place("200");
    const std::string expected =
        "velatrix_device_region_info structure:\n" + region(1, "Container") + flags +
        lines({{"Ink Enable", "1"}, {"Ink Width", "2"}}) + region(2, "Button") + flags +
        lines({{"Clear on Select", "0"}, {"Enable", "1"}, {"Highlight on Select", "1"}, {"Confirm on Select", "1"},
               {"Use Resource", "0"}, {"Caption", std::string(100, 'c')}, {"Resource Number Normal", "11"},
               {"Resource Number Selected", "12"}}) +
        region(3, "Line") + flags + lines({{"Parent", "3"}, {"Width", "4"}}) + region(4, "Graphic") + flags +
        lines({{"Graphic Number", "9"}, {"Horizontal Justification", "1"}, {"Vertical Justification", "15"}}) +
        region(5, "Text") + flags +
        lines({{"Resource Number", "6"}, {"Font Number", "2"}, {"Horizontal Justification", "0"},
               {"Vertical Justification", "7"}});
    EXPECT_EQ(capture_stdout([&] { velatrix_print_device_regions(regions, 5); }), expected);
    EXPECT_EQ(capture_stdout([] { velatrix_print_device_regions(nullptr, 0); }),
              "velatrix_device_region_info structure:\n  NULL\n");
}

}  // namespace
}  // namespace velatrix::testing
