#include "display/chunk_send.h"

#include <chrono>
#include <cstring>
#include <thread>

#include "debug/log.h"
#include "protocol/request_epoch.h"
#include "velatrix/transport.h"

namespace velatrix::display {
namespace {

using namespace velatrix::protocol;

constexpr ReportEntry kChunkEntry = report(report_id::kDisplayChunk);
constexpr InterlockWait kChunkWait = kChunkEntry.set_before;
static_assert(kChunkEntry.length == kChunkReportLength);

// The status report's six busy flags: flag i is bit i of byte 3.
constexpr size_t kBusyFlagsByte = 3;
constexpr uint8_t kBusyFlags = 0x3F;

// One chunk the way velatrix_set_display_chunk sends it, log records and all.
int send_logged(velatrix_device* device, uint8_t* report) {
    const FunctionTrace trace("velatrix_set_display_chunk", kLogCore, __LINE__);
    if (!wait_for_interlock(device, kChunkWait.sleep, kChunkWait.mask)) return 0;
    return velatrix_hid_set_feature_report(device, report, kChunkReportLength) == 1 ? 1 : 0;
}

}  // namespace

ChunkHeader::ChunkHeader(uint8_t bits_per_pixel) {
    Chunk fields{};
    fields.report_id = report_id::kDisplayChunk;
    fields.bits_per_pixel = bits_per_pixel;
    // The rows before the pixel data.
    pack_fields(std::span(kChunkRows, std::size(kChunkRows) - 1), &fields, bytes_);
}

// Every record the chunk path makes is at WARNING or below (entering and
// leaving at FINEST, the interlock line at INFO, errors at WARNING).
ChunkSender::ChunkSender(velatrix_device* device)
    : device_(device), quiet_(!log_records_wanted(VELATRIX_LEVEL_WARNING)) {}

int ChunkSender::send(uint8_t* report) {
    if (!quiet_) return send_logged(device_, report);
    velatrix_device_driver* driver = device_ != nullptr ? device_->driver : nullptr;
    // A missing driver or operation: the logged way sets the very errors.
    if (driver == nullptr || driver->get_feature_report == nullptr || driver->set_feature_report == nullptr) {
        return send_logged(device_, report);
    }
    if (use_legacy_firmware == 0 && !wait_until_ready(*driver)) return 0;
    note_request(device_);
    return driver->set_feature_report(device_, report, kChunkReportLength) == 1 ? 1 : 0;
}

// wait_for_interlock without its records: at most `sleep` status reads a
// millisecond apart; a failed read counts as ready, as there.
bool ChunkSender::wait_until_ready(velatrix_device_driver& driver) {
    for (auto remaining = static_cast<int32_t>(kChunkWait.sleep); remaining >= 1; --remaining) {
        std::memset(status_, 0, sizeof status_);
        status_[0] = report_id::kDeviceStatus;
        if (driver.get_feature_report(device_, status_, sizeof status_) != 1) return true;
        if ((status_[kBusyFlagsByte] & kBusyFlags & kChunkWait.mask) == 0) return true;
        std::this_thread::sleep_for(std::chrono::microseconds(1000));
    }
    report_error_at("wait_for_interlock", kLogCore, __LINE__,
                    "Problem waiting for firmware interlock: device didn't respond in time, sleep: %u, interlock: %u",
                    kChunkWait.sleep, kChunkWait.mask);
    return false;
}

}  // namespace velatrix::display
