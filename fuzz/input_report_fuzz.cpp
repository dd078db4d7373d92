// Raw input reports as a pad (or a broken one) may send them, decoded on a
// device whose region table comes from the input as well, so the button
// tracking sees buttons, stale button state and tables of every size.
//
// Input: region_count, max_caption_length, button_active, button_region,
// then the region table report (region_count * (max_caption_length + 29)
// + 1 bytes, zero-filled when the input is shorter), then input reports,
// each a length byte followed by that many bytes.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "byte_reader.h"
#include "velatrix/error.h"
#include "velatrix/input.h"
#include "velatrix/regions.h"

using velatrix::fuzz::ByteReader;
using velatrix::fuzz::violated;

namespace {

constexpr int kMaxReports = 64;

bool is_button_event(uint8_t type) {
    return type >= VELATRIX_INPUT_BUTTON_DOWN && type <= VELATRIX_INPUT_BUTTON_PRESS;
}

void check_record(const velatrix_input_report& record, uint8_t id, const velatrix_device& device,
                  uint8_t pressed_before) {
    const bool from_extended = id == VELATRIX_INPUT_EXTENDED_COORDINATE;
    if (!(record.type == id || (from_extended && is_button_event(record.type)))) violated("record type");
    if (!is_button_event(record.type)) return;
    const velatrix_device_region_info* region = record.data.button.region;
    if (region == nullptr) return;
    const uint32_t count = device.display_info.region_count;
    if (device.regions == nullptr || region < device.regions || region >= device.regions + count) {
        violated("button region outside the device's table");
    }
    if (record.type == VELATRIX_INPUT_BUTTON_UP) {
        // An up names the region that was pressed, wherever the pen is now.
        if (pressed_before == 0 || region != &device.regions[pressed_before - 1]) violated("up names another region");
    } else if (region->type != VELATRIX_REGION_BUTTON) {
        violated("button event on a region that is no button");
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ByteReader input(data, size);
    const uint8_t region_count = input.u8();
    const uint8_t max_caption_length = input.u8();
    const uint8_t button_active = input.u8();
    const uint8_t button_region = input.u8();

    // Exactly region_count records, as the open path caches them; a table
    // of none is a zero-sized block, so any read of it is caught.
    auto* regions = static_cast<velatrix_device_region_info*>(
        std::calloc(region_count, sizeof(velatrix_device_region_info)));
    if (regions == nullptr && region_count > 0) return 0;
    const std::vector<uint8_t> table =
        input.bytes(size_t{region_count} * (size_t{max_caption_length} + 29) + 1);
    if (region_count > 0) velatrix_parse_regions(table.data(), regions, region_count, max_caption_length);

    velatrix_device device{};
    device.open = 1;
    device.display_info.region_count = region_count;
    device.display_info.max_caption_length = max_caption_length;
    // The top bit of button_active drops the table: a device whose regions
    // were never read.
    device.regions = (button_active & 0x80) != 0 ? nullptr : regions;
    device.button_active = button_active & 0x01;
    device.button_region = button_region;

    for (int n = 0; n < kMaxReports && !input.empty(); ++n) {
        // A copy of exactly the report's bytes: reading one past it is caught.
        const std::vector<uint8_t> bytes = input.bytes_up_to(input.u8());
        auto* report = static_cast<uint8_t*>(std::malloc(bytes.size()));
        if (report == nullptr && !bytes.empty()) break;
        if (!bytes.empty()) std::memcpy(report, bytes.data(), bytes.size());

        const uint8_t pressed_before = device.button_region;
        velatrix_input_report* record =
            velatrix_parse_input_report(&device, report, static_cast<uint32_t>(bytes.size()));
        if (record == nullptr) {
            if (velatrix_get_last_error()[0] == '\0') violated("rejected report without an error");
        } else {
            check_record(*record, bytes[0], device, pressed_before);
            velatrix_free_input_report(record);
        }
        std::free(report);
    }
    std::free(regions);
    return 0;
}
