// Device regions: one region at a time. The pad keeps a region index (0x96);
// the region contents report (0x98, max_caption_length + 34 bytes, the same
// layout both ways) reads or writes the region it points at, and the pad
// moves the index on after each read.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "debug/log.h"
#include "protocol/region_colour.h"
#include "protocol/region_print.h"
#include "protocol/report_fields.h"
#include "protocol/screen_region_io.h"
#include "velatrix/regions.h"
#include "velatrix/screens.h"
#include "velatrix/transport.h"

namespace velatrix::protocol {
namespace {

using Region = velatrix_device_region;

// The rows stand in the order a region prints; those without a label only
// travel. Reserved 2 is eight bytes; its first one is shown.
constexpr Field kCommonFields[] = {
    VELATRIX_HIDDEN_ROW(Region, number, u8(1)),
    VELATRIX_REGION_TYPE_ROW(Region, u8(2)),
    VELATRIX_LABELLED_ROW(Region, accept_touch, flag(3, 0), "Accepts Touch", "%hhu"),
    VELATRIX_LABELLED_ROW(Region, decode, flag(3, 1), "Decode", "%hhu"),
    VELATRIX_LABELLED_ROW(Region, has_frame, flag(3, 2), "Has Frame", "%hhu"),
    VELATRIX_LABELLED_ROW(Region, output_to_host, flag(3, 6), "Output To Host", "%hhu"),
    VELATRIX_LABELLED_ROW(Region, reserved1, u8(4), "Reserved 1", "%hhu"),
    VELATRIX_HIDDEN_ROW(Region, reserved2, raw(5, 8)),
    shown("Reserved 2", Slot{offsetof(Region, reserved2), 1, false}, "%u"),
    VELATRIX_LABELLED_ROW(Region, x1, u16(13), "X1", "%hu"),
    VELATRIX_LABELLED_ROW(Region, y1, u16(17), "Y1", "%hu"),
    VELATRIX_LABELLED_ROW(Region, x2, u16(15), "X2", "%hu"),
    VELATRIX_LABELLED_ROW(Region, y2, u16(19), "Y2", "%hu"),
    VELATRIX_COLOUR_FIELDS(Region, foreground, 21),
    VELATRIX_COLOUR_LINE(Region, foreground, "Foreground"),
    VELATRIX_COLOUR_FIELDS(Region, background, 25),
    VELATRIX_COLOUR_LINE(Region, background, "Background"),
};

constexpr Field kContainerFields[] = {
    VELATRIX_LABELLED_ROW(Region, data.container.ink_enabled, u8(29), "Ink Enable", "%hhu"),
    VELATRIX_LABELLED_ROW(Region, data.container.ink_width, u8(30), "Ink Width", "%hhu"),
    VELATRIX_HIDDEN_ROW(Region, data.container.reserved1, u8(31)),
    VELATRIX_HIDDEN_ROW(Region, data.container.reserved2, u8(32)),
};

// The caption or the two resource numbers travel in the tail after the
// fixed bytes (unpack_button_tail, pack_button_tail).
constexpr Field kButtonFields[] = {
    VELATRIX_LABELLED_ROW(Region, data.button.clear_on_select, flag(29, 2), "Clear on Select", "%hhu"),
    VELATRIX_LABELLED_ROW(Region, data.button.enable, flag(29, 0), "Enable", "%hhu"),
    VELATRIX_LABELLED_ROW(Region, data.button.highlight_on_select, flag(29, 1), "Highlight on Select", "%hhu"),
    VELATRIX_LABELLED_ROW(Region, data.button.confirm_on_select, flag(29, 3), "Confirm on Select", "%hhu"),
    VELATRIX_LABELLED_ROW(Region, data.button.use_resource, flag(29, 4), "Use Resource", "%hhu"),
    VELATRIX_HIDDEN_ROW(Region, data.button.reserved, raw(30, 3)),
    shown("Caption", VELATRIX_SLOT(Region, data.button.caption), "%s", PrintKind::kText),
    shown("Resource Number Normal", VELATRIX_SLOT(Region, data.button.resource_number_normal), "%u"),
    shown("Resource Number Selected", VELATRIX_SLOT(Region, data.button.resource_number_selected), "%u"),
};

constexpr Field kLineFields[] = {
    VELATRIX_LABELLED_ROW(Region, data.line.parent, u8(29), "Parent", "%hhu"),
    VELATRIX_LABELLED_ROW(Region, data.line.width, u8(30), "Width", "%hhu"),
    VELATRIX_HIDDEN_ROW(Region, data.line.reserved, raw(31, 2)),
};

// Justifications share a byte: horizontal in the low nibble, vertical in the high.
constexpr Field kGraphicFields[] = {
    VELATRIX_HIDDEN_ROW(Region, data.graphic.reserved1, u8(29)),
    VELATRIX_LABELLED_ROW(Region, data.graphic.resource_number, u8(30), "Graphic Number", "%u"),
    VELATRIX_LABELLED_ROW(Region, data.graphic.horizontal_justification, bits(31, 0, 3), "Horizontal Justification",
                          "%i"),
    VELATRIX_LABELLED_ROW(Region, data.graphic.vertical_justification, bits(31, 4, 7), "Vertical Justification",
                          "%i"),
    VELATRIX_HIDDEN_ROW(Region, data.graphic.reserved2, u8(32)),
};

constexpr Field kTextFields[] = {
    VELATRIX_HIDDEN_ROW(Region, data.text.reserved, u8(29)),
    VELATRIX_LABELLED_ROW(Region, data.text.resource_number, u8(30), "Resource Number", "%u"),
    VELATRIX_LABELLED_ROW(Region, data.text.font_number, u8(31), "Font Number", "%u"),
    VELATRIX_LABELLED_ROW(Region, data.text.horizontal_justification, bits(32, 0, 3), "Horizontal Justification",
                          "%i"),
    VELATRIX_LABELLED_ROW(Region, data.text.vertical_justification, bits(32, 4, 7), "Vertical Justification", "%i"),
};

// Bytes 0 to 32; what follows (from byte 33, max_caption_length + 1 bytes)
// is a button's caption or its two resource numbers.
constexpr uint16_t kFixedLength = 33;
constexpr size_t kTailOffset = 33;

constexpr ReportLayout layout(std::span<const Field> fields) {
    return ReportLayout{report_id::kRegionContents, kFixedLength, sizeof(Region), "", fields};
}
constexpr ReportLayout kCommonLayout = layout(kCommonFields);
static_assert(layout_fits(kCommonLayout));
static_assert(layout_fits(layout(kContainerFields)));
static_assert(layout_fits(layout(kButtonFields)));
static_assert(layout_fits(layout(kLineFields)));
static_assert(layout_fits(layout(kGraphicFields)));
static_assert(layout_fits(layout(kTextFields)));

const ReportLayout* type_layout(uint32_t type) {
    static constexpr ReportLayout kContainer = layout(kContainerFields);
    static constexpr ReportLayout kButton = layout(kButtonFields);
    static constexpr ReportLayout kLine = layout(kLineFields);
    static constexpr ReportLayout kGraphic = layout(kGraphicFields);
    static constexpr ReportLayout kText = layout(kTextFields);
    switch (type) {
        case VELATRIX_REGION_CONTAINER: return &kContainer;
        case VELATRIX_REGION_BUTTON: return &kButton;
        case VELATRIX_REGION_LINE: return &kLine;
        case VELATRIX_REGION_GRAPHIC: return &kGraphic;
        case VELATRIX_REGION_TEXT: return &kText;
        default: return nullptr;
    }
}

std::vector<uint8_t> contents_buffer(const velatrix_device* device) {
    std::vector<uint8_t> buffer(size_t{device->display_info.max_caption_length} + 34, 0);
    buffer[0] = report_id::kRegionContents;
    return buffer;
}

// A button's tail: its two resource numbers, or its caption. The tail is
// max_caption_length + 1 bytes and the caption field 100: neither side is
// ever overrun, whatever the pad's caption length.
void unpack_button_tail(std::span<const uint8_t> buffer, Region& region) {
    const std::span<const uint8_t> tail = buffer.subspan(kTailOffset);
    auto& button = region.data.button;
    if (button.use_resource != 0) {
        button.resource_number_normal = tail[0];
        button.resource_number_selected = tail.size() > 1 ? tail[1] : 0;
    } else {
        std::memcpy(button.caption, tail.data(), std::min(tail.size(), sizeof button.caption));
    }
}

void pack_button_tail(const Region& region, uint32_t max_caption_length, std::span<uint8_t> buffer) {
    const std::span<uint8_t> tail = buffer.subspan(kTailOffset);
    const auto& button = region.data.button;
    if (button.use_resource != 0) {
        tail[0] = button.resource_number_normal;
        if (tail.size() > 1) tail[1] = button.resource_number_selected;
    } else {
        std::memcpy(tail.data(), button.caption, std::min<size_t>(max_caption_length, sizeof button.caption));
    }
}

bool region_number_in_bounds(const velatrix_device* device, uint8_t number) {
    if (number >= 1 && number <= device->display_info.region_count) return true;
    VELATRIX_REPORT_ERROR("Region number out of bounds.");
    return false;
}

}  // namespace
}  // namespace velatrix::protocol

using namespace velatrix::protocol;

extern "C" {

int velatrix_get_region_idx(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    return get_value_report(device, report_id::kRegionIndex);
}

int velatrix_set_region_idx(velatrix_device* device, uint8_t index) {
    VELATRIX_TRACE_FUNCTION();
    return set_value_report(device, report_id::kRegionIndex, index);
}

void velatrix_get_region_ref(velatrix_device* device, velatrix_device_region* region) {
    VELATRIX_TRACE_FUNCTION();
    if (region == nullptr) return;
    *region = velatrix_device_region{};
    if (device == nullptr) {
        VELATRIX_REPORT_ERROR("Device was null, unable to read the region.");
        return;
    }
    std::vector<uint8_t> buffer = contents_buffer(device);
    if (!fetch_report(device, buffer)) return;
    // An answer under another id is not a region: the record stays zero so
    // that callers, who test report_id, see a failed read.
    if (buffer[0] != report_id::kRegionContents) {
        VELATRIX_REPORT_ERROR("Region contents came back as report %u instead of %u.", buffer[0],
                              report_id::kRegionContents);
        return;
    }
    region->report_id = report_id::kRegionContents;
    unpack_report(kCommonLayout, buffer, region);
    if (const ReportLayout* specific = type_layout(region->type)) unpack_report(*specific, buffer, region);
    if (region->type == VELATRIX_REGION_BUTTON) unpack_button_tail(buffer, *region);
}

velatrix_device_region* velatrix_get_region(velatrix_device_region* region, velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_device_region read{};
    velatrix_get_region_ref(device, &read);
    if (region == nullptr) return nullptr;
    *region = read;
    return region;
}

velatrix_device_region* velatrix_get_device_regions(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_hid_feature_screen_region_info info{};
    velatrix_get_screen_region_info_ref(device, &info);
    if (info.report_id == 0) return nullptr;
    const uint32_t count = info.payload[1];  // report byte 2
    auto* regions = static_cast<velatrix_device_region*>(std::calloc(std::max<uint32_t>(count, 1), sizeof(Region)));
    if (regions == nullptr) {
        VELATRIX_REPORT_ERROR("Unable to allocate %u device regions.", count);
        return nullptr;
    }
    if (velatrix_set_region_idx(device, 1) != 1) {
        VELATRIX_LOG(VELATRIX_LEVEL_WARNING, "Problem setting region index: %s\n", velatrix_get_last_error());
        std::free(regions);
        return nullptr;
    }
    // The index is set once: the pad moves it on after every read.
    for (uint32_t i = 0; i < count; ++i) {
        velatrix_get_region(&regions[i], device);
        if (regions[i].report_id != report_id::kRegionContents) {
            std::free(regions);
            return nullptr;
        }
    }
    return regions;
}

void velatrix_free_device_regions(velatrix_device_region* regions) {
    VELATRIX_TRACE_FUNCTION();
    std::free(regions);
}

int velatrix_set_region_contents(velatrix_device* device, const velatrix_device_region* region) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr || region == nullptr) {
        VELATRIX_REPORT_ERROR("Device or region was null, unable to set the region contents.");
        return 0;
    }
    std::vector<uint8_t> buffer = contents_buffer(device);
    pack_report(kCommonLayout, region, buffer);
    if (const ReportLayout* specific = type_layout(region->type)) pack_report(*specific, region, buffer);
    if (region->type == VELATRIX_REGION_BUTTON)
        pack_button_tail(*region, device->display_info.max_caption_length, buffer);
    if (send_report(device, buffer) != 1) return 0;
    // The pad derives its region table from the device regions; keep the
    // cached copy in step.
    if (device->regions != nullptr) {
        velatrix_free_regions(device->regions);
        device->regions = velatrix_get_regions(device);
    }
    return 1;
}

int velatrix_delete_device_region(velatrix_device* device, uint8_t number) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr) {
        VELATRIX_REPORT_ERROR("Device was null, unable to delete the region.");
        return 0;
    }
    if (!region_number_in_bounds(device, number)) return 0;
    return set_value_report(device, report_id::kDeviceRegionDelete, number);
}

void velatrix_print_device_regions(const velatrix_device_region* regions, uint32_t count) {
    VELATRIX_TRACE_FUNCTION();
    print_region_records(regions, count, kCommonLayout, &type_layout);
}

}  // extern "C"
