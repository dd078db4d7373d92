#include "protocol/screen_region_io.h"

#include <cstring>
#include <vector>

#include "velatrix/transport.h"

namespace velatrix::protocol {

namespace {
// Region reports have no fixed length, so the entry is found by id alone.
ReportEntry entry_for(uint8_t id) { return find_report(id).value_or(ReportEntry{}); }
}  // namespace

bool wait_for(velatrix_device* device, InterlockWait wait) {
    return wait.none() || wait_for_interlock(device, wait.sleep, wait.mask) == 1;
}

bool fetch_report(velatrix_device* device, std::span<uint8_t> buffer) {
    const ReportEntry entry = entry_for(buffer[0]);
    if (!wait_for(device, entry.get_before)) return false;
    if (velatrix_hid_get_feature_report(device, buffer.data(), static_cast<uint32_t>(buffer.size())) != 1) return false;
    return wait_for(device, entry.get_after);
}

int send_report(velatrix_device* device, std::span<uint8_t> buffer) {
    const ReportEntry entry = entry_for(buffer[0]);
    if (!wait_for(device, entry.set_before)) return 0;
    if (velatrix_hid_set_feature_report(device, buffer.data(), static_cast<uint32_t>(buffer.size())) != 1) return 0;
    return wait_for(device, entry.set_after) ? 1 : 0;
}

int get_value_report(velatrix_device* device, uint8_t id) {
    uint8_t buffer[2] = {id, 0};
    return fetch_report(device, buffer) ? buffer[1] : -1;
}

int set_value_report(velatrix_device* device, uint8_t id, uint8_t value) {
    uint8_t buffer[2] = {id, value};
    return send_report(device, buffer);
}

bool read_record(velatrix_device* device, const ReportLayout& layout, void* record) {
    std::memset(record, 0, layout.record_size);
    std::vector<uint8_t> buffer(layout.length, 0);
    buffer[0] = layout.id;
    if (!fetch_report(device, buffer)) return false;
    unpack_report(layout, buffer, record);
    *static_cast<uint8_t*>(record) = layout.id;
    if (layout.after_read != nullptr) layout.after_read(buffer, record);
    return true;
}

int write_record(velatrix_device* device, const ReportLayout& layout, const void* record) {
    std::vector<uint8_t> buffer(layout.length, 0);
    pack_report(layout, record, buffer);
    return send_report(device, buffer);
}

}  // namespace velatrix::protocol
