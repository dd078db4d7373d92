// Which report ids a pad declares, and the feature-report transfers that
// check against it before they reach the pad.
#include <algorithm>
#include <cerrno>
#include <cstring>
#include <span>

#include "debug/log.h"
#include "host/real_device.h"

using namespace velatrix::host;

namespace {

constexpr uint8_t kItemTypeGlobal = 1;
constexpr uint8_t kTagReportId = 8;

// The IOReturn-style code part of a platform status, as the messages show it.
constexpr int kStatusCodeMask = 0x1FFF;
// Directions of the traffic trace.
constexpr uint32_t kTraceRead = 1;
constexpr uint32_t kTraceWritten = 2;

bool report_declared(velatrix_real_device* record, uint8_t report_id) {
    if (record->report_map[report_id]) return true;
    VELATRIX_REPORT_ERROR_IN(velatrix::kLogHost, "Report id %u isn't supported by this device.\n",
                             static_cast<unsigned>(report_id));
    return false;
}

}  // namespace

extern "C" {

void parse_hid_descriptor(const uint8_t* descriptor, uint32_t length, uint8_t* map) {
    std::memset(map, 0, 255);
    if (descriptor == nullptr) return;
    static constexpr uint32_t kDataSize[4] = {0, 1, 2, 4};
    // A plain short-item walk: long items are stepped over as if they were
    // short ones, which is all the pads' descriptors need.
    for (uint32_t i = 0; i < length;) {
        const uint8_t prefix = descriptor[i];
        const uint8_t type = (prefix >> 2) & 0x3;
        const uint8_t tag = prefix >> 4;
        if (type == kItemTypeGlobal && tag == kTagReportId && i + 1 < length) map[descriptor[i + 1]] = 1;
        const uint32_t step = 1 + kDataSize[prefix & 0x3];
        if (length - i <= step) break;
        i += step;
    }
}

int fill_hid_report_map(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    velatrix_real_device* record = real(device);
    std::vector<uint8_t> descriptor;
    int error = record->hid_device != nullptr ? record->hid_device->report_descriptor(descriptor) : EBADF;
    // An empty descriptor declares nothing: treat it as unreadable, so the
    // open falls back to letting every ordinary id through.
    if (error == 0 && descriptor.empty()) error = ENODATA;
    if (error != 0) {
        VELATRIX_REPORT_ERROR_IN(velatrix::kLogHost, "Problem getting hid descriptor (errno: %u): %s\n",
                                 static_cast<unsigned>(error), std::strerror(error));
        return 0;
    }
    parse_hid_descriptor(descriptor.data(), static_cast<uint32_t>(descriptor.size()), record->report_map);
    return 1;
}

int velatrix_real_hid_set_output_report(velatrix_device* device, uint8_t* buffer, uint32_t length) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    // The pads take everything as feature reports; output reports are
    // accepted and deliberately not sent.
    return 1;
}

int velatrix_real_hid_set_feature_report(velatrix_device* device, uint8_t* buffer, uint32_t length) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    if (device == nullptr || buffer == nullptr || length == 0) {
        VELATRIX_REPORT_ERROR_IN(velatrix::kLogHost, "Problem setting hid report: no device or an empty buffer.\n");
        return 0;
    }
    velatrix_real_device* record = real(device);
    const uint8_t id = buffer[0];
    if (!report_declared(record, id)) return 0;
    velatrix_debug_write_trace(buffer, length, kTraceWritten);
    Transfer result = record->hid_device != nullptr
                          ? record->hid_device->set_feature(std::span<const uint8_t>(buffer, length))
                          : Transfer{EBADF, EBADF, 0};
    if (result.status != 0) {
        VELATRIX_REPORT_ERROR_IN(velatrix::kLogHost, "Problem setting hid report %hhu (IOReturn: %i, errno: %u): %s\n",
                                 id, result.status & kStatusCodeMask, static_cast<unsigned>(result.error),
                                 std::strerror(result.error));
        return 0;
    }
    return 1;
}

int velatrix_real_hid_get_feature_report(velatrix_device* device, uint8_t* buffer, uint32_t length) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    if (device == nullptr || buffer == nullptr || length == 0) {
        VELATRIX_REPORT_ERROR_IN(velatrix::kLogHost, "Problem getting hid report: no device or an empty buffer.\n");
        return 0;
    }
    velatrix_real_device* record = real(device);
    const uint8_t id = buffer[0];
    if (!report_declared(record, id)) return 0;
    Transfer result = record->hid_device != nullptr
                          ? record->hid_device->get_feature(std::span<uint8_t>(buffer, length))
                          : Transfer{EBADF, EBADF, 0};
    if (result.status != 0) {
        VELATRIX_REPORT_ERROR_IN(velatrix::kLogHost, "Problem getting hid report %hhu (IOReturn: %u, errno: %u): %s\n",
                                 id, static_cast<unsigned>(result.status & kStatusCodeMask),
                                 static_cast<unsigned>(result.error), std::strerror(result.error));
        return 0;
    }
    velatrix_debug_write_trace(buffer, std::min<uint32_t>(length, static_cast<uint32_t>(result.length)), kTraceRead);
    return 1;
}

}  // extern "C"
