// The screen-region commit: makes the pad store its regions and screens
// permanently. Storing takes the pad seconds, hence the long waits on both
// sides (from the report index); the command counts as done only once the
// pad is idle again after it.
#include "debug/log.h"
#include "protocol/screen_region_io.h"
#include "velatrix/screens.h"

using namespace velatrix::protocol;

extern "C" int velatrix_set_screen_region_commit(velatrix_device* device, uint8_t value) {
    VELATRIX_TRACE_FUNCTION();
    return set_value_report(device, report_id::kScreenRegionCommit, value);
}
