// The region-table commit: makes the pad store the table it holds in RAM.
#include "debug/log.h"
#include "protocol/screen_region_io.h"
#include "velatrix/regions.h"

using namespace velatrix::protocol;

extern "C" int velatrix_set_region_commit(velatrix_device* device, uint8_t value) {
    VELATRIX_TRACE_FUNCTION();
    return set_value_report(device, report_id::kRegionCommit, value);
}
