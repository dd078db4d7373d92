// Clearing the pad's display.
#include "velatrix/display.h"
#include "velatrix/regions.h"
#include "velatrix/screens.h"

#include "debug/log.h"

namespace {
constexpr uint32_t kOpaqueWhite = 0xFFFFFFFF;
}  // namespace

extern "C" {

int velatrix_clear_screen(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr) {
        VELATRIX_REPORT_ERROR("Device was null, unable to clear screen.");
        return 0;
    }
    // Re-activating the active screen makes the pad redraw it from scratch.
    const int active = velatrix_get_active_screen(device);
    if (active >= 0 && velatrix_set_active_screen(device, static_cast<uint8_t>(active)) == 1) return 1;

    if (device->regions == nullptr) {
        VELATRIX_REPORT_ERROR("Device regions is null, unable to clear screen.");
        return 0;
    }
    const velatrix_hid_feature_display_info& display = device->display_info;
    if (display.report_id == 0 || display.region_count == 0) {
        VELATRIX_REPORT_ERROR("Device display info is unset, unable to clear screen.");
        return 0;
    }
    // Without screens, the last region slot is stretched over the whole
    // display as a plain, frameless, visible container with an opaque white
    // background: the pad paints the display white. Then it is taken out of
    // use again so it does not stay a region that catches the pen. Nothing of
    // the slot's own type (a button's caption, a frame) is carried over.
    velatrix_device_region_info region{};
    region.number = display.region_count;
    region.type = 0;  // container
    region.background = kOpaqueWhite;
    region.x1 = 0;
    region.x2 = static_cast<uint16_t>(display.width - 1);
    region.y1 = 0;
    region.y2 = static_cast<uint16_t>(display.height - 1);
    region.visible = 1;
    region.in_use = 1;
    // A lost send is a failed clear (the driver's message stays the error).
    if (velatrix_set_region(device, &region) != 1) return 0;
    region.in_use = 0;
    return velatrix_set_region(device, &region) == 1 ? 1 : 0;
}

}  // extern "C"
