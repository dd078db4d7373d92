// Printing regions of both generations. Each record is a run of lines:
// the common part, the generation's flags, the rectangle and colours, then
// the lines of its type. The lines are tables; one loop prints them.
#include <cstdio>
#include <cstring>
#include <span>
#include <string>

#include "debug/log.h"
#include "protocol/report_fields.h"
#include "velatrix/regions.h"

namespace velatrix::protocol {
namespace {

enum class Shown : uint8_t {
    kUnsigned,  // the value as unsigned
    kSigned,    // the value as int
    kColour,    // 0xRRGGBBAA printed alpha, red, green, blue
    kText,      // the slot's characters, never beyond it
};

struct Line {
    const char* format;  // the whole line, label and newline included
    Slot slot;
    Shown shown = Shown::kUnsigned;
};

uint32_t load(const Slot& slot, const void* record) {
    const auto* at = static_cast<const uint8_t*>(record) + slot.offset;
    switch (slot.size) {
        case 1: return at[0];
        case 2: {
            uint16_t value;
            std::memcpy(&value, at, sizeof value);
            return value;
        }
        default: {
            uint32_t value;
            std::memcpy(&value, at, sizeof value);
            return value;
        }
    }
}

void print_line(const Line& line, const void* record) {
    const uint32_t value = load(line.slot, record);
    switch (line.shown) {
        case Shown::kUnsigned:
            std::printf(line.format, value);
            break;
        case Shown::kSigned:
            std::printf(line.format, static_cast<int>(value));
            break;
        case Shown::kColour:
            std::printf(line.format, value & 0xFF, value >> 24, (value >> 16) & 0xFF, (value >> 8) & 0xFF);
            break;
        case Shown::kText: {
            const auto* text = static_cast<const char*>(record) + line.slot.offset;
            std::printf(line.format, std::string(text, strnlen(text, line.slot.size)).c_str());
            break;
        }
    }
}

void print_lines(std::span<const Line> lines, const void* record) {
    for (const Line& line : lines) print_line(line, record);
}

const char* type_name(uint32_t type) {
    static constexpr const char* kNames[] = {"Container", "Button", "Line", "Graphic", "Text"};
    return type < std::size(kNames) ? kNames[type] : "";
}

// Region table records.
using Info = velatrix_device_region_info;

constexpr Line kInfoFlags[] = {
    {"      Accepts Touch: %hhu\n", VELATRIX_SLOT(Info, accept_touch)},
    {"             Decode: %hhu\n", VELATRIX_SLOT(Info, decode)},
    {"            Visible: %hhu\n", VELATRIX_SLOT(Info, visible)},
    {"             In Use: %hhu\n", VELATRIX_SLOT(Info, in_use)},
    {"          Has Frame: %hhu\n", VELATRIX_SLOT(Info, has_frame)},
};

constexpr Line kInfoPlace[] = {
    {"         Reserved 1: %hhu\n", VELATRIX_SLOT(Info, reserved1)},
    {"         Reserved 2: %u\n", VELATRIX_SLOT(Info, reserved2)},
    {"                 X1: %hu\n", VELATRIX_SLOT(Info, x1)},
    {"                 Y1: %hu\n", VELATRIX_SLOT(Info, y1)},
    {"                 X2: %hu\n", VELATRIX_SLOT(Info, x2)},
    {"                 Y2: %hu\n", VELATRIX_SLOT(Info, y2)},
    {"         Foreground: #%02x%02x%02x%02x\n", VELATRIX_SLOT(Info, foreground), Shown::kColour},
    {"         Background: #%02x%02x%02x%02x\n", VELATRIX_SLOT(Info, background), Shown::kColour},
};

constexpr Line kInfoContainer[] = {
    {"         Ink Enable: %hhu\n", VELATRIX_SLOT(Info, data.container.ink_enable)},
    {"          Ink Width: %hhu\n", VELATRIX_SLOT(Info, data.container.ink_width)},
};

constexpr Line kInfoButton[] = {
    {"             Parent: %hhu\n", VELATRIX_SLOT(Info, data.button.parent)},
    {"    Clear on Select: %hhu\n", VELATRIX_SLOT(Info, data.button.clear_on_select)},
    {"             Enable: %hhu\n", VELATRIX_SLOT(Info, data.button.enable)},
    {"Highlight on Select: %hhu\n", VELATRIX_SLOT(Info, data.button.highlight_on_select)},
    {"            Caption: %s\n", VELATRIX_SLOT(Info, data.button.caption), Shown::kText},
};

constexpr Line kInfoLine[] = {
    {"             Parent: %hhu\n", VELATRIX_SLOT(Info, data.line.parent)},
    {"              Width: %hhu\n", VELATRIX_SLOT(Info, data.line.width)},
};

std::span<const Line> info_type_lines(uint32_t type) {
    switch (type) {
        case VELATRIX_REGION_CONTAINER: return kInfoContainer;
        case VELATRIX_REGION_BUTTON: return kInfoButton;
        case VELATRIX_REGION_LINE: return kInfoLine;
        default: return {};
    }
}

// Device region records.
using Region = velatrix_device_region;

constexpr Line kRegionFlags[] = {
    {"      Accepts Touch: %hhu\n", VELATRIX_SLOT(Region, accept_touch)},
    {"             Decode: %hhu\n", VELATRIX_SLOT(Region, decode)},
    {"          Has Frame: %hhu\n", VELATRIX_SLOT(Region, has_frame)},
    {"     Output To Host: %hhu\n", VELATRIX_SLOT(Region, output_to_host)},
};

// Reserved 2 is eight bytes here; its first one is shown.
constexpr Line kRegionPlace[] = {
    {"         Reserved 1: %hhu\n", VELATRIX_SLOT(Region, reserved1)},
    {"         Reserved 2: %u\n", Slot{offsetof(Region, reserved2), 1, false}},
    {"                 X1: %hu\n", VELATRIX_SLOT(Region, x1)},
    {"                 Y1: %hu\n", VELATRIX_SLOT(Region, y1)},
    {"                 X2: %hu\n", VELATRIX_SLOT(Region, x2)},
    {"                 Y2: %hu\n", VELATRIX_SLOT(Region, y2)},
    {"         Foreground: #%02x%02x%02x%02x\n", VELATRIX_SLOT(Region, foreground), Shown::kColour},
    {"         Background: #%02x%02x%02x%02x\n", VELATRIX_SLOT(Region, background), Shown::kColour},
};

constexpr Line kRegionContainer[] = {
    {"         Ink Enable: %hhu\n", VELATRIX_SLOT(Region, data.container.ink_enabled)},
    {"          Ink Width: %hhu\n", VELATRIX_SLOT(Region, data.container.ink_width)},
};

constexpr Line kRegionButton[] = {
    {"    Clear on Select: %hhu\n", VELATRIX_SLOT(Region, data.button.clear_on_select)},
    {"             Enable: %hhu\n", VELATRIX_SLOT(Region, data.button.enable)},
    {"Highlight on Select: %hhu\n", VELATRIX_SLOT(Region, data.button.highlight_on_select)},
    {"  Confirm on Select: %hhu\n", VELATRIX_SLOT(Region, data.button.confirm_on_select)},
    {"       Use Resource: %hhu\n", VELATRIX_SLOT(Region, data.button.use_resource)},
    {"            Caption: %s\n", VELATRIX_SLOT(Region, data.button.caption), Shown::kText},
    {"Resource Number Normal: %u\n", VELATRIX_SLOT(Region, data.button.resource_number_normal)},
    {"Resource Number Selected: %u\n", VELATRIX_SLOT(Region, data.button.resource_number_selected)},
};

constexpr Line kRegionLine[] = {
    {"             Parent: %hhu\n", VELATRIX_SLOT(Region, data.line.parent)},
    {"              Width: %hhu\n", VELATRIX_SLOT(Region, data.line.width)},
};

constexpr Line kRegionGraphic[] = {
    {"     Graphic Number: %u\n", VELATRIX_SLOT(Region, data.graphic.resource_number)},
    {"Horizontal Justification: %i\n", VELATRIX_SLOT(Region, data.graphic.horizontal_justification), Shown::kSigned},
    {"Vertical Justification: %i\n", VELATRIX_SLOT(Region, data.graphic.vertical_justification), Shown::kSigned},
};

constexpr Line kRegionText[] = {
    {"    Resource Number: %u\n", VELATRIX_SLOT(Region, data.text.resource_number)},
    {"        Font Number: %u\n", VELATRIX_SLOT(Region, data.text.font_number)},
    {"Horizontal Justification: %i\n", VELATRIX_SLOT(Region, data.text.horizontal_justification), Shown::kSigned},
    {"Vertical Justification: %i\n", VELATRIX_SLOT(Region, data.text.vertical_justification), Shown::kSigned},
};

std::span<const Line> region_type_lines(uint32_t type) {
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
    std::span<const Line> flags;
    std::span<const Line> place;
    std::span<const Line> (*type_lines)(uint32_t type);
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
        std::printf("               Type: %s\n", type_name(record.type));
        print_lines(generation.flags, &record);
        print_lines(generation.place, &record);
        print_lines(generation.type_lines(record.type), &record);
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
