// The region table: every region of the pad in one report (0x6E, the
// factory defaults in 0x6F), one region written with 0x70, changed in place
// with 0x71, deleted with 0x72. A region block is max_caption_length + 29
// bytes; both sizes come from the pad's display information.
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
#include "velatrix/transport.h"

namespace velatrix::protocol {
namespace {

using Info = velatrix_device_region_info;

// Offsets are those of report 0x70, whose one block starts at byte 1. A block
// of 0x6E or 0x6F is read through the same tables from the byte before it.
// The rows stand in the order a region prints; those without a label only
// travel.
constexpr Field kCommonFields[] = {
    VELATRIX_HIDDEN_ROW(Info, number, u8(1)),
    VELATRIX_REGION_TYPE_ROW(Info, u8(2)),
    VELATRIX_LABELLED_ROW(Info, accept_touch, flag(3, 0), "Accepts Touch", "%hhu"),
    VELATRIX_LABELLED_ROW(Info, decode, flag(3, 1), "Decode", "%hhu"),
    VELATRIX_LABELLED_ROW(Info, visible, flag(3, 2), "Visible", "%hhu"),
    VELATRIX_LABELLED_ROW(Info, in_use, flag(3, 3), "In Use", "%hhu"),
    VELATRIX_LABELLED_ROW(Info, has_frame, flag(3, 4), "Has Frame", "%hhu"),
    VELATRIX_LABELLED_ROW(Info, reserved1, u8(4), "Reserved 1", "%hhu"),
    VELATRIX_LABELLED_ROW(Info, reserved2, u32(5), "Reserved 2", "%u"),
    VELATRIX_LABELLED_ROW(Info, x1, u16(9), "X1", "%hu"),
    VELATRIX_LABELLED_ROW(Info, y1, u16(13), "Y1", "%hu"),
    VELATRIX_LABELLED_ROW(Info, x2, u16(11), "X2", "%hu"),
    VELATRIX_LABELLED_ROW(Info, y2, u16(15), "Y2", "%hu"),
    VELATRIX_COLOUR_FIELDS(Info, foreground, 17),
    VELATRIX_COLOUR_LINE(Info, foreground, "Foreground"),
    VELATRIX_COLOUR_FIELDS(Info, background, 21),
    VELATRIX_COLOUR_LINE(Info, background, "Background"),
};

// ink_enable OR (ink_width << 1), unmasked, as the pad's tools write it.
constexpr Field kContainerFields[] = {
    VELATRIX_LABELLED_ROW(Info, data.container.ink_enable, bits(25, 0, 0), "Ink Enable", "%hhu"),
    VELATRIX_LABELLED_ROW(Info, data.container.ink_width, bits(25, 1, 2), "Ink Width", "%hhu"),
    VELATRIX_HIDDEN_ROW(Info, data.container.reserved1, u8(26)),
    VELATRIX_HIDDEN_ROW(Info, data.container.reserved2, u16(27)),
};

// The caption travels after the fixed bytes (unpack_region, pack_region).
constexpr Field kButtonFields[] = {
    VELATRIX_LABELLED_ROW(Info, data.button.parent, u8(25), "Parent", "%hhu"),
    VELATRIX_LABELLED_ROW(Info, data.button.clear_on_select, flag(26, 2), "Clear on Select", "%hhu"),
    VELATRIX_LABELLED_ROW(Info, data.button.enable, flag(26, 0), "Enable", "%hhu"),
    VELATRIX_LABELLED_ROW(Info, data.button.highlight_on_select, flag(26, 1), "Highlight on Select", "%hhu"),
    VELATRIX_HIDDEN_ROW(Info, data.button.reserved, u16(27)),
    shown("Caption", VELATRIX_SLOT(Info, data.button.caption), "%s", PrintKind::kText),
};

constexpr Field kLineFields[] = {
    VELATRIX_LABELLED_ROW(Info, data.line.parent, u8(25), "Parent", "%hhu"),
    VELATRIX_LABELLED_ROW(Info, data.line.width, u8(26), "Width", "%hhu"),
    VELATRIX_HIDDEN_ROW(Info, data.line.reserved, u16(27)),
};

// Bytes 0 to 28: everything but the caption, which starts at byte 29.
constexpr uint16_t kFixedLength = 29;
constexpr uint16_t kCaptionOffset = 29;
// The high byte of the type's reserved word: read, but always sent as 0.
constexpr uint16_t kReservedHighByte = 28;

constexpr ReportLayout layout(std::span<const Field> fields) {
    return ReportLayout{report_id::kRegion, kFixedLength, sizeof(Info), "", fields};
}
constexpr ReportLayout kCommonLayout = layout(kCommonFields);
static_assert(layout_fits(kCommonLayout));
static_assert(layout_fits(layout(kContainerFields)));
static_assert(layout_fits(layout(kButtonFields)));
static_assert(layout_fits(layout(kLineFields)));

// The type-specific layout, or null for a type the table does not know.
const ReportLayout* type_layout(uint32_t type) {
    static constexpr ReportLayout kContainer = layout(kContainerFields);
    static constexpr ReportLayout kButton = layout(kButtonFields);
    static constexpr ReportLayout kLine = layout(kLineFields);
    switch (type) {
        case VELATRIX_REGION_CONTAINER: return &kContainer;
        case VELATRIX_REGION_BUTTON: return &kButton;
        case VELATRIX_REGION_LINE: return &kLine;
        default: return nullptr;
    }
}

constexpr size_t block_length(uint32_t max_caption_length) { return size_t{max_caption_length} + 29; }

// `view` starts one byte before the block, so table offsets apply as in 0x70.
void unpack_region(std::span<const uint8_t> view, uint32_t max_caption_length, Info& region) {
    unpack_report(kCommonLayout, view, &region);
    const ReportLayout* specific = type_layout(region.type);
    if (specific == nullptr) return;
    unpack_report(*specific, view, &region);
    if (region.type != VELATRIX_REGION_BUTTON) return;
    // max_caption_length caption bytes, then a terminator one byte further
    // on; both are kept inside the caption field whatever the pad claims.
    constexpr size_t kLast = sizeof region.data.button.caption - 1;
    const size_t copied = std::min<size_t>(max_caption_length, kLast);
    std::memcpy(region.data.button.caption, view.data() + kCaptionOffset, copied);
    region.data.button.caption[std::min<size_t>(size_t{max_caption_length} + 1, kLast)] = '\0';
}

// The caption's characters with their terminator, at most
// max_caption_length bytes: a caption that fills the pad's field travels
// without a terminator.
void pack_caption(const Info& region, uint32_t max_caption_length, std::span<uint8_t> buffer) {
    const char* caption = region.data.button.caption;
    const size_t length = strnlen(caption, sizeof region.data.button.caption);
    const size_t with_terminator = length < sizeof region.data.button.caption ? length + 1 : length;
    const size_t sent = std::min<size_t>(with_terminator, max_caption_length);
    std::memcpy(buffer.data() + kCaptionOffset, caption, sent);
}

Info* read_table(velatrix_device* device, uint8_t id, const char* function) {
    if (device == nullptr) {
        VELATRIX_REPORT_ERROR("Device was null, unable to read regions.");
        return nullptr;
    }
    const uint32_t count = device->display_info.region_count;
    const uint32_t max_caption_length = device->display_info.max_caption_length;
    std::vector<uint8_t> buffer(count * block_length(max_caption_length) + 1, 0);
    buffer[0] = id;
    // One record at least, so that an empty table is an empty array, not null.
    auto* regions = static_cast<Info*>(std::calloc(std::max<uint32_t>(count, 1), sizeof(Info)));
    if (regions == nullptr) {
        VELATRIX_REPORT_ERROR("Unable to allocate %u regions.", count);
        return nullptr;
    }
    if (!wait_for(device, report(id).get_before)) {
        std::free(regions);
        return nullptr;
    }
    if (velatrix_hid_get_feature_report(device, buffer.data(), static_cast<uint32_t>(buffer.size())) != 1) {
        if (id == report_id::kDefaultRegions) {
            velatrix_debug_report_message(function, kLogCore, __LINE__, VELATRIX_LEVEL_WARNING,
                                          "Unable to get report: %s", velatrix_get_last_error());
        }
        std::free(regions);
        return nullptr;
    }
    velatrix_parse_regions(buffer.data(), regions, count, max_caption_length);
    return regions;
}

}  // namespace
}  // namespace velatrix::protocol

using namespace velatrix::protocol;

extern "C" {

velatrix_device_region_info* velatrix_get_regions(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    return read_table(device, report_id::kRegions, __func__);
}

velatrix_device_region_info* velatrix_get_default_regions(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    return read_table(device, report_id::kDefaultRegions, __func__);
}

void velatrix_free_regions(velatrix_device_region_info* regions) {
    VELATRIX_TRACE_FUNCTION();
    std::free(regions);
}

void velatrix_parse_regions(const uint8_t* buffer, velatrix_device_region_info* regions, uint32_t count,
                            uint32_t max_caption_length) {
    VELATRIX_TRACE_FUNCTION();
    if (buffer == nullptr || regions == nullptr) return;
    const size_t stride = block_length(max_caption_length);
    for (uint32_t i = 0; i < count; ++i) {
        // Block i starts at 1 + i * stride; the view begins one byte earlier.
        const std::span<const uint8_t> view(buffer + i * stride, stride + 1);
        unpack_region(view, max_caption_length, regions[i]);
    }
}

int velatrix_set_region(velatrix_device* device, const velatrix_device_region_info* region) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr || region == nullptr) {
        VELATRIX_REPORT_ERROR("Device or region was null, unable to set the region.");
        return 0;
    }
    const uint32_t count = device->display_info.region_count;
    if (region->number < 1 || region->number > count) {
        VELATRIX_REPORT_ERROR("Region number was out of bounds, min: 1, max: %u, specified: %u\n", count,
                              static_cast<unsigned>(region->number));
        return 0;
    }
    const uint32_t max_caption_length = device->display_info.max_caption_length;
    std::vector<uint8_t> buffer(block_length(max_caption_length) + 1, 0);
    pack_report(kCommonLayout, region, buffer);
    if (const ReportLayout* specific = type_layout(region->type)) {
        pack_report(*specific, region, buffer);
        buffer[kReservedHighByte] = 0;
        if (region->type == VELATRIX_REGION_BUTTON) pack_caption(*region, max_caption_length, buffer);
    }
    if (send_report(device, buffer) != 1) return 0;
    if (device->regions != nullptr) device->regions[region->number - 1] = *region;
    return 1;
}

int velatrix_update_region(velatrix_device* device, const velatrix_region_update* update) {
    VELATRIX_TRACE_FUNCTION();
    using Update = velatrix_region_update;
    static constexpr Field kUpdateFields[] = {
        VELATRIX_HIDDEN_ROW(Update, number, u8(1)),
        VELATRIX_HIDDEN_ROW(Update, enable, flag(2, 0)),
        VELATRIX_HIDDEN_ROW(Update, visible, flag(2, 1)),
        VELATRIX_HIDDEN_ROW(Update, reserved, u8(3)),
        VELATRIX_COLOUR_FIELDS(Update, foreground, 4),
        VELATRIX_HIDDEN_ROW(Update, reserved2, u32(8)),
    };
    static constexpr uint16_t kLength = report_length(report_id::kRegionUpdate);
    static constexpr ReportLayout kUpdateLayout{report_id::kRegionUpdate, kLength, sizeof(Update), "", kUpdateFields};
    static_assert(layout_fits(kUpdateLayout));

    if (device == nullptr || update == nullptr) {
        VELATRIX_REPORT_ERROR("Device or region update was null, unable to update the region.");
        return 0;
    }
    if (update->number < 1 || update->number > device->display_info.region_count) {
        VELATRIX_REPORT_ERROR("Region number out of bounds.");
        return 0;
    }
    return write_report(device, kUpdateLayout, update);
}

int velatrix_delete_region(velatrix_device* device, uint8_t number) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr) {
        VELATRIX_REPORT_ERROR("Device was null, unable to delete the region.");
        return 0;
    }
    if (number < 1 || number > device->display_info.region_count) {
        VELATRIX_REPORT_ERROR("Region number out of bounds.");
        return 0;
    }
    return set_value_report(device, report_id::kRegionDelete, number);
}

void velatrix_print_regions(const velatrix_device_region_info* regions, uint32_t count) {
    VELATRIX_TRACE_FUNCTION();
    print_region_records(regions, count, kCommonLayout, &type_layout);
}

}  // extern "C"
