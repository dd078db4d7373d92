// Restoring the factory regions. A pad with screens restores them itself on
// a screen-region commit; an older pad only has the region table, and the
// host rewrites every region that differs from its default.
#include <cstdlib>
#include <cstring>
#include <memory>

#include "debug/log.h"
#include "protocol/screen_region_io.h"
#include "velatrix/info_reports.h"
#include "velatrix/regions.h"
#include "velatrix/screens.h"
#include "velatrix/transport.h"

namespace velatrix::protocol {
namespace {

constexpr InterlockWait kRegionWait = report(report_id::kRegion).set_before;

struct FreeRegions {
    void operator()(velatrix_device_region_info* regions) const { velatrix_free_regions(regions); }
};
using RegionArray = std::unique_ptr<velatrix_device_region_info[], FreeRegions>;

int restore_region_table(velatrix_device* device) {
    if (!wait_for(device, kRegionWait)) return 0;
    const RegionArray defaults(velatrix_get_default_regions(device));
    if (!defaults) return 0;
    if (!wait_for(device, kRegionWait)) return 0;
    const RegionArray current(velatrix_get_regions(device));
    if (!current) return 0;
    // From index 1: region 1 is never restored, even when it differs.
    const uint32_t count = device->display_info.region_count;
    for (uint32_t i = 1; i < count; ++i) {
        if (std::memcmp(&defaults[i], &current[i], sizeof(velatrix_device_region_info)) == 0) continue;
        if (!wait_for(device, kRegionWait)) return 0;
        if (velatrix_set_region(device, &defaults[i]) != 1) return 0;
    }
    return 1;
}

}  // namespace
}  // namespace velatrix::protocol

using namespace velatrix::protocol;

extern "C" int velatrix_restore_default_regions(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr) {
        VELATRIX_REPORT_ERROR("Device was null, unable to restore the default regions.");
        return 0;
    }
    velatrix_hid_feature_device_status status{};
    velatrix_get_device_status_ref(device, &status);
    // A pad that answers the status report has screens, and restores its
    // defaults itself on a screen-region commit.
    if (status.report_id != 0) {
        const bool was_running = status.is_idle == 0;
        if (was_running) velatrix_set_run_mode(device, VELATRIX_RUN_MODE_IDLE);
        if (velatrix_set_screen_region_commit(device, 0) == 1) {
            const bool settled = wait_for(device, kRegionWait);
            if (was_running) velatrix_set_run_mode(device, VELATRIX_RUN_MODE_RUNNING);
            return settled ? 1 : 0;
        }
        if (was_running) velatrix_set_run_mode(device, VELATRIX_RUN_MODE_RUNNING);
    }
    return restore_region_table(device);
}
