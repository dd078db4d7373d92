// Printing regions of both generations. Each record is a run of lines:
// its type, the generation's flags, the rectangle and colours, then the
// lines of its type. The lines are rows of the report engine's tables.
#include <cstdio>
#include <cstring>
#include <span>
#include <string>

#include "debug/log.h"
#include "protocol/report_fields.h"
#include "velatrix/regions.h"

namespace velatrix::protocol {
namespace {

using enum PrintKind;

// Region lines are labelled to a fixed width with ": ", unlike the reports.
constexpr PrintStyle kRegionStyle{19, ": "};

constexpr const char* kTypeNames[] = {"Container", "Button", "Line", "Graphic", "Text"};

// Region table records.
using Info = velatrix_device_region_info;

constexpr Field kInfoFlags[] = {
    shown("Type", VELATRIX_SLOT(Info, type), "%s", kNameOnly, kTypeNames),
    shown("Accepts Touch", VELATRIX_SLOT(Info, accept_touch), "%hhu"),
    shown("Decode", VELATRIX_SLOT(Info, decode), "%hhu"),
    shown("Visible", VELATRIX_SLOT(Info, visible), "%hhu"),
    shown("In Use", VELATRIX_SLOT(Info, in_use), "%hhu"),
    shown("Has Frame", VELATRIX_SLOT(Info, has_frame), "%hhu"),
};

constexpr Field kInfoPlace[] = {
    shown("Reserved 1", VELATRIX_SLOT(Info, reserved1), "%hhu"),
    shown("Reserved 2", VELATRIX_SLOT(Info, reserved2), "%u"),
    shown("X1", VELATRIX_SLOT(Info, x1), "%hu"),
    shown("Y1", VELATRIX_SLOT(Info, y1), "%hu"),
    shown("X2", VELATRIX_SLOT(Info, x2), "%hu"),
    shown("Y2", VELATRIX_SLOT(Info, y2), "%hu"),
    shown("Foreground", VELATRIX_SLOT(Info, foreground), "#%02x%02x%02x%02x", kColour),
    shown("Background", VELATRIX_SLOT(Info, background), "#%02x%02x%02x%02x", kColour),
};

constexpr Field kInfoContainer[] = {
    shown("Ink Enable", VELATRIX_SLOT(Info, data.container.ink_enable), "%hhu"),
    shown("Ink Width", VELATRIX_SLOT(Info, data.container.ink_width), "%hhu"),
};

constexpr Field kInfoButton[] = {
    shown("Parent", VELATRIX_SLOT(Info, data.button.parent), "%hhu"),
    shown("Clear on Select", VELATRIX_SLOT(Info, data.button.clear_on_select), "%hhu"),
    shown("Enable", VELATRIX_SLOT(Info, data.button.enable), "%hhu"),
    shown("Highlight on Select", VELATRIX_SLOT(Info, data.button.highlight_on_select), "%hhu"),
    shown("Caption", VELATRIX_SLOT(Info, data.button.caption), "%s", kText),
};

constexpr Field kInfoLine[] = {
    shown("Parent", VELATRIX_SLOT(Info, data.line.parent), "%hhu"),
    shown("Width", VELATRIX_SLOT(Info, data.line.width), "%hhu"),
};

std::span<const Field> info_type_lines(uint32_t type) {
    switch (type) {
        case VELATRIX_REGION_CONTAINER: return kInfoContainer;
        case VELATRIX_REGION_BUTTON: return kInfoButton;
        case VELATRIX_REGION_LINE: return kInfoLine;
        default: return {};
    }
}

// Device region records.
using Region = velatrix_device_region;

constexpr Field kRegionFlags[] = {
    shown("Type", VELATRIX_SLOT(Region, type), "%s", kNameOnly, kTypeNames),
    shown("Accepts Touch", VELATRIX_SLOT(Region, accept_touch), "%hhu"),
    shown("Decode", VELATRIX_SLOT(Region, decode), "%hhu"),
    shown("Has Frame", VELATRIX_SLOT(Region, has_frame), "%hhu"),
    shown("Output To Host", VELATRIX_SLOT(Region, output_to_host), "%hhu"),
};

// Reserved 2 is eight bytes here; its first one is shown.
constexpr Field kRegionPlace[] = {
    shown("Reserved 1", VELATRIX_SLOT(Region, reserved1), "%hhu"),
    shown("Reserved 2", Slot{offsetof(Region, reserved2), 1, false}, "%u"),
    shown("X1", VELATRIX_SLOT(Region, x1), "%hu"),
    shown("Y1", VELATRIX_SLOT(Region, y1), "%hu"),
    shown("X2", VELATRIX_SLOT(Region, x2), "%hu"),
    shown("Y2", VELATRIX_SLOT(Region, y2), "%hu"),
    shown("Foreground", VELATRIX_SLOT(Region, foreground), "#%02x%02x%02x%02x", kColour),
    shown("Background", VELATRIX_SLOT(Region, background), "#%02x%02x%02x%02x", kColour),
};

constexpr Field kRegionContainer[] = {
    shown("Ink Enable", VELATRIX_SLOT(Region, data.container.ink_enabled), "%hhu"),
    shown("Ink Width", VELATRIX_SLOT(Region, data.container.ink_width), "%hhu"),
};

constexpr Field kRegionButton[] = {
    shown("Clear on Select", VELATRIX_SLOT(Region, data.button.clear_on_select), "%hhu"),
    shown("Enable", VELATRIX_SLOT(Region, data.button.enable), "%hhu"),
    shown("Highlight on Select", VELATRIX_SLOT(Region, data.button.highlight_on_select), "%hhu"),
    shown("Confirm on Select", VELATRIX_SLOT(Region, data.button.confirm_on_select), "%hhu"),
    shown("Use Resource", VELATRIX_SLOT(Region, data.button.use_resource), "%hhu"),
    shown("Caption", VELATRIX_SLOT(Region, data.button.caption), "%s", kText),
    shown("Resource Number Normal", VELATRIX_SLOT(Region, data.button.resource_number_normal), "%u"),
    shown("Resource Number Selected", VELATRIX_SLOT(Region, data.button.resource_number_selected), "%u"),
};

constexpr Field kRegionLine[] = {
    shown("Parent", VELATRIX_SLOT(Region, data.line.parent), "%hhu"),
    shown("Width", VELATRIX_SLOT(Region, data.line.width), "%hhu"),
};

constexpr Field kRegionGraphic[] = {
    shown("Graphic Number", VELATRIX_SLOT(Region, data.graphic.resource_number), "%u"),
    shown("Horizontal Justification", VELATRIX_SLOT(Region, data.graphic.horizontal_justification), "%i"),
    shown("Vertical Justification", VELATRIX_SLOT(Region, data.graphic.vertical_justification), "%i"),
};

constexpr Field kRegionText[] = {
    shown("Resource Number", VELATRIX_SLOT(Region, data.text.resource_number), "%u"),
    shown("Font Number", VELATRIX_SLOT(Region, data.text.font_number), "%u"),
    shown("Horizontal Justification", VELATRIX_SLOT(Region, data.text.horizontal_justification), "%i"),
    shown("Vertical Justification", VELATRIX_SLOT(Region, data.text.vertical_justification), "%i"),
};

std::span<const Field> region_type_lines(uint32_t type) {
    switch (type) {
        case VELATRIX_REGION_CONTAINER: return kRegionContainer;
        case VELATRIX_REGION_BUTTON: return kRegionButton;
        case VELATRIX_REGION_LINE: return kRegionLine;
        case VELATRIX_REGION_GRAPHIC: return kRegionGraphic;
        case VELATRIX_REGION_TEXT: return kRegionText;
        default: return {};
    }
}

struct Generation {
    std::span<const Field> flags;
    std::span<const Field> place;
    std::span<const Field> (*type_lines)(uint32_t type);
};

template <class Record>
void print_records(const Record* records, uint32_t count, const Generation& generation) {
    std::printf("velatrix_device_region_info structure:\n");
    if (records == nullptr) {
        std::printf("  NULL\n");
        return;
    }
    for (uint32_t i = 0; i < count; ++i) {
        const Record& record = records[i];
        std::printf("   Region %u:\n", static_cast<unsigned>(record.number));
        print_fields(generation.flags, &record, kRegionStyle);
        print_fields(generation.place, &record, kRegionStyle);
        print_fields(generation.type_lines(record.type), &record, kRegionStyle);
    }
}

}  // namespace
}  // namespace velatrix::protocol

using namespace velatrix::protocol;

extern "C" {

void velatrix_print_regions(const velatrix_device_region_info* regions, uint32_t count) {
    VELATRIX_TRACE_FUNCTION();
    print_records(regions, count, Generation{kInfoFlags, kInfoPlace, &info_type_lines});
}

void velatrix_print_device_regions(const velatrix_device_region* regions, uint32_t count) {
    VELATRIX_TRACE_FUNCTION();
    print_records(regions, count, Generation{kRegionFlags, kRegionPlace, &region_type_lines});
}

}  // extern "C"
