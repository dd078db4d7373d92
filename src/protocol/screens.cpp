// Screens: lists of regions the pad shows together, with a time-out and the
// screen each region leads to. The screen record holds 100 entries per list
// but report 0xA2 carries 30: that is the pad's limit, and the rest of a
// longer list never leaves the host.
#include <algorithm>
#include <cstring>
#include <vector>

#include "debug/log.h"
#include "protocol/report_fields.h"
#include "protocol/screen_region_io.h"
#include "velatrix/screens.h"

namespace velatrix::protocol {
namespace {

using Screen = velatrix_hid_feature_screen;
using Modify = velatrix_hid_feature_screen_modify;
using RegionInfo = velatrix_hid_feature_screen_region_info;

constexpr size_t kRegionIndexesOffset = 20;
constexpr size_t kScreenNextOffset = 50;
constexpr size_t kWireEntries = VELATRIX_SCREEN_WIRE_REGIONS;

// The lists are not fields of their own: how many entries are valid
// depends on region_count.
void read_screen_lists(std::span<const uint8_t> answer, void* record) {
    auto* screen = static_cast<Screen*>(record);
    const size_t count = std::min<size_t>(screen->region_count, kWireEntries);
    std::memcpy(screen->region_indexes, answer.data() + kRegionIndexesOffset, count);
    std::memcpy(screen->screen_next_list, answer.data() + kScreenNextOffset, count);
}

constexpr Field kScreenFields[] = {
    VELATRIX_HIDDEN_ROW(Screen, screen_number, u8(1)),
    VELATRIX_HIDDEN_ROW(Screen, reset_timeout_on_activity, flag(2, 4)),
    VELATRIX_HIDDEN_ROW(Screen, reserved, raw(3, 14)),
    VELATRIX_HIDDEN_ROW(Screen, timeout, u8(17)),
    VELATRIX_HIDDEN_ROW(Screen, timeout_next_screen, u8(18)),
    VELATRIX_HIDDEN_ROW(Screen, region_count, u8(19)),
};
constexpr ReportLayout kScreenLayout = layout_of<Screen>(report_id::kScreen, "", kScreenFields, &read_screen_lists);
static_assert(layout_fits(kScreenLayout));
static_assert(kScreenNextOffset + kWireEntries == report_length(report_id::kScreen));

constexpr Field kModifyFields[] = {
    VELATRIX_HIDDEN_ROW(Modify, reserved, raw(1, 6)),
    VELATRIX_HIDDEN_ROW(Modify, add_region, flag(7, 0)),
    VELATRIX_HIDDEN_ROW(Modify, remove_region, flag(7, 1)),
    VELATRIX_HIDDEN_ROW(Modify, set_timeout, flag(7, 2)),
    VELATRIX_HIDDEN_ROW(Modify, screen_index, u8(8)),
    VELATRIX_HIDDEN_ROW(Modify, region_index, u8(9)),
    VELATRIX_HIDDEN_ROW(Modify, region_screen_next, u8(10)),
    VELATRIX_HIDDEN_ROW(Modify, timeout_value, u8(11)),
    VELATRIX_HIDDEN_ROW(Modify, timeout_screen_next, u8(12)),
};
constexpr ReportLayout kModifyLayout = layout_of<Modify>(report_id::kEditScreen, "", kModifyFields);
static_assert(layout_fits(kModifyLayout));

constexpr Field kRegionInfoFields[] = {
    VELATRIX_HIDDEN_ROW(RegionInfo, payload, raw(1, 24)),
};
constexpr ReportLayout kRegionInfoLayout = layout_of<RegionInfo>(report_id::kScreenRegionInfo, "", kRegionInfoFields);
static_assert(layout_fits(kRegionInfoLayout));

}  // namespace
}  // namespace velatrix::protocol

using namespace velatrix::protocol;

extern "C" {

void velatrix_get_screen_ref(velatrix_device* device, velatrix_hid_feature_screen* screen) {
    VELATRIX_TRACE_FUNCTION();
    if (screen == nullptr) return;
    read_record(device, kScreenLayout, screen);
}

velatrix_hid_feature_screen* velatrix_get_screen(velatrix_hid_feature_screen* screen, velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_hid_feature_screen read{};
    velatrix_get_screen_ref(device, &read);
    if (screen == nullptr) return nullptr;
    *screen = read;
    return screen;
}

int velatrix_set_screen(velatrix_device* device, const velatrix_hid_feature_screen* screen) {
    VELATRIX_TRACE_FUNCTION();
    if (screen == nullptr) {
        VELATRIX_REPORT_ERROR("Screen was null, unable to set the screen.");
        return 0;
    }
    std::vector<uint8_t> buffer(kScreenLayout.length, 0);
    pack_report(kScreenLayout, screen, buffer);
    // The first 30 entries of each list, whatever region_count says.
    std::memcpy(buffer.data() + kRegionIndexesOffset, screen->region_indexes, kWireEntries);
    std::memcpy(buffer.data() + kScreenNextOffset, screen->screen_next_list, kWireEntries);
    return send_report(device, buffer);
}

int velatrix_get_screen_idx(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    return get_value_report(device, report_id::kScreenIndex);
}

int velatrix_set_screen_idx(velatrix_device* device, uint8_t index) {
    VELATRIX_TRACE_FUNCTION();
    return set_value_report(device, report_id::kScreenIndex, index);
}

int velatrix_delete_screen(velatrix_device* device, uint8_t screen_number) {
    VELATRIX_TRACE_FUNCTION();
    return set_value_report(device, report_id::kScreenDelete, screen_number);
}

int velatrix_set_edit_screen(velatrix_device* device, const velatrix_hid_feature_screen_modify* modify) {
    VELATRIX_TRACE_FUNCTION();
    if (modify == nullptr) {
        VELATRIX_REPORT_ERROR("Screen modification was null, unable to edit the screen.");
        return 0;
    }
    return write_record(device, kModifyLayout, modify);
}

int velatrix_get_active_screen(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    return get_value_report(device, report_id::kActiveScreen);
}

int velatrix_set_active_screen(velatrix_device* device, uint8_t screen_number) {
    VELATRIX_TRACE_FUNCTION();
    return set_value_report(device, report_id::kActiveScreen, screen_number);
}

void velatrix_get_screen_region_info_ref(velatrix_device* device, velatrix_hid_feature_screen_region_info* info) {
    VELATRIX_TRACE_FUNCTION();
    if (info == nullptr) return;
    read_record(device, kRegionInfoLayout, info);
}

velatrix_hid_feature_screen_region_info* velatrix_get_screen_region_info(velatrix_hid_feature_screen_region_info* info,
                                                                         velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_hid_feature_screen_region_info read{};
    velatrix_get_screen_region_info_ref(device, &read);
    if (info == nullptr) return nullptr;
    *info = read;
    return info;
}

int velatrix_add_region_to_screen(velatrix_hid_feature_screen* screen, uint8_t region_number, uint8_t next_screen) {
    VELATRIX_TRACE_FUNCTION();
    if (screen == nullptr) {
        VELATRIX_REPORT_ERROR("Screen was null, unable to add the region.");
        return 0;
    }
    // region_count may come from the pad; the search never leaves the list.
    const size_t listed = std::min<size_t>(screen->region_count, VELATRIX_SCREEN_MAX_REGIONS);
    for (size_t i = 0; i < listed; ++i) {
        if (screen->region_indexes[i] == region_number) {
            screen->screen_next_list[i] = next_screen;
            return 1;
        }
    }
    if (screen->region_count >= VELATRIX_SCREEN_MAX_REGIONS) {
        VELATRIX_REPORT_ERROR("Screen already holds %d regions, unable to add region %u.", VELATRIX_SCREEN_MAX_REGIONS,
                              static_cast<unsigned>(region_number));
        return 0;
    }
    screen->region_indexes[screen->region_count] = region_number;
    screen->screen_next_list[screen->region_count] = next_screen;
    ++screen->region_count;
    return 1;
}

}  // extern "C"
