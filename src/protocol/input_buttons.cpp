#include "protocol/input_buttons.h"

#include "velatrix/regions.h"

namespace velatrix::input {
namespace {

constexpr size_t kFlags = 1;
constexpr size_t kX = 2;
constexpr size_t kY = 4;
constexpr size_t kRegion = 6;

// The region record for a 1-based index, or null when the device's table
// does not hold it (no table, index 0 or past the region count).
const velatrix_device_region_info* region_record(const velatrix_device* device, uint8_t index) {
    if (device == nullptr || device->regions == nullptr) return nullptr;
    if (index == 0 || index > device->display_info.region_count) return nullptr;
    return &device->regions[index - 1];
}

bool names_button(const velatrix_device* device, uint8_t index) {
    const velatrix_device_region_info* region = region_record(device, index);
    return region != nullptr && region->type == VELATRIX_REGION_BUTTON;
}

void button_event(velatrix_input_report& record, uint8_t type, Report report,
                  const velatrix_device_region_info* region) {
    record.type = type;
    record.data.button.x = u16_at(report, kX);
    record.data.button.y = u16_at(report, kY);
    record.data.button.region = region;
}

}  // namespace

void decode_extended_coordinate(velatrix_device* device, Report report, velatrix_input_report& record) {
    const uint8_t flags = byte_at(report, kFlags);
    const uint8_t index = byte_at(report, kRegion);
    const bool on_button = names_button(device, index);
    const bool active = device != nullptr && device->button_active != 0;

    if (on_button && !active) {
        // A down does not look at the tip switch: a pen still resting on
        // the button right after a press starts the next down at once.
        device->button_active = 1;
        device->button_region = index;
        button_event(record, VELATRIX_INPUT_BUTTON_DOWN, report, region_record(device, index));
    } else if (on_button) {
        const bool lifted = (flags & kTipSwitchBit) == 0;
        if (lifted) device->button_active = 0;
        button_event(record, lifted ? VELATRIX_INPUT_BUTTON_PRESS : VELATRIX_INPUT_BUTTON_MOVE, report,
                     region_record(device, index));
    } else if (active) {
        // The up refers to the region that was pressed, not where the pen is.
        device->button_active = 0;
        button_event(record, VELATRIX_INPUT_BUTTON_UP, report, region_record(device, device->button_region));
    } else {
        record.type = VELATRIX_INPUT_EXTENDED_COORDINATE;
        record.data.coordinate.tip_switch = flags & kTipSwitchBit;
        record.data.coordinate.in_range = flags & kInRangeBit;
        record.data.coordinate.x = u16_at(report, kX);
        record.data.coordinate.y = u16_at(report, kY);
        record.data.coordinate.region = index;
    }
}

}  // namespace velatrix::input
