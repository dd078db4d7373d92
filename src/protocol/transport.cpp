// Every report the library exchanges with a pad goes through the three
// wrappers here, and every request that changes the pad's state is paced by
// the firmware interlock: the pad raises busy flags in its status report
// while it digests a command, and a new command sent too early is lost.
#include "velatrix/transport.h"

#include <chrono>
#include <thread>

#include "debug/log.h"
#include "protocol/report_index.h"
#include "protocol/request_epoch.h"
#include "velatrix/info_reports.h"

extern "C" {
// Older firmware has no interlock flags; with this set the wait is skipped.
uint8_t use_legacy_firmware = 0;
}

namespace {

using TransferOperation = int (*)(velatrix_device*, uint8_t*, uint32_t);

// The wrappers pass the driver's status through untouched; the checks here
// only keep a missing device, driver or buffer from crashing the process.
int32_t transfer(velatrix_device* device, TransferOperation velatrix_device_driver::*operation, uint8_t* buffer,
                 uint32_t length) {
    if (device == nullptr || device->driver == nullptr || device->driver->*operation == nullptr) {
        VELATRIX_REPORT_ERROR("Device has no driver to send the report through.");
        return 0;
    }
    if (buffer == nullptr || length == 0) {
        VELATRIX_REPORT_ERROR("Report buffer is empty.");
        return 0;
    }
    return static_cast<int32_t>((device->driver->*operation)(device, buffer, length));
}

// One busy word with bit i set when interlock flag i of the status is set.
uint32_t busy_word(const velatrix_hid_feature_device_status& status) {
    const uint8_t flags[] = {status.interlock_0, status.interlock_1, status.interlock_2,
                             status.interlock_3, status.interlock_4, status.interlock_5};
    uint32_t word = 0;
    for (uint32_t bit = 0; bit < std::size(flags); ++bit) {
        if (flags[bit] != 0) word |= 1u << bit;
    }
    return word;
}

}  // namespace

extern "C" {

int32_t velatrix_hid_get_feature_report(velatrix_device* device, uint8_t* buffer, uint32_t length) {
    VELATRIX_TRACE_FUNCTION();
    return transfer(device, &velatrix_device_driver::get_feature_report, buffer, length);
}

int32_t velatrix_hid_set_feature_report(velatrix_device* device, uint8_t* buffer, uint32_t length) {
    VELATRIX_TRACE_FUNCTION();
    velatrix::protocol::note_request(device);
    return transfer(device, &velatrix_device_driver::set_feature_report, buffer, length);
}

int32_t velatrix_hid_set_output_report(velatrix_device* device, uint8_t* buffer, uint32_t length) {
    VELATRIX_TRACE_FUNCTION();
    velatrix::protocol::note_request(device);
    return transfer(device, &velatrix_device_driver::set_output_report, buffer, length);
}

int32_t get2(const uint8_t* buffer, uint32_t offset) {
    const auto raw = static_cast<uint16_t>(buffer[offset] | (buffer[offset + 1] << 8));
    return static_cast<int16_t>(raw);
}

int64_t get4(const uint8_t* buffer, uint32_t offset) {
    const uint32_t raw = uint32_t{buffer[offset]} | (uint32_t{buffer[offset + 1]} << 8) |
                         (uint32_t{buffer[offset + 2]} << 16) | (uint32_t{buffer[offset + 3]} << 24);
    return static_cast<int32_t>(raw);
}

void put2(uint8_t* buffer, uint32_t offset, int32_t value) {
    const auto bits = static_cast<uint32_t>(value);
    buffer[offset] = static_cast<uint8_t>(bits);
    buffer[offset + 1] = static_cast<uint8_t>(bits >> 8);
}

void put4(uint8_t* buffer, uint32_t offset, int64_t value) {
    const auto bits = static_cast<uint64_t>(value);
    for (uint32_t i = 0; i < 4; ++i) buffer[offset + i] = static_cast<uint8_t>(bits >> (8 * i));
}

int wait_for_interlock(velatrix_device* device, uint32_t sleep, uint32_t interlock) {
    if (use_legacy_firmware != 0) return 1;
    VELATRIX_TRACE_FUNCTION();
    // Signed on purpose: a sleep of 0 (or one beyond INT32_MAX) never polls.
    auto remaining = static_cast<int32_t>(sleep);
    while (remaining >= 1) {
        velatrix_hid_feature_device_status status{};
        // A failed read leaves the status zeroed, which reads as ready.
        velatrix_get_device_status_ref(device, &status);
        if ((busy_word(status) & interlock) == 0) {
            VELATRIX_LOG(VELATRIX_LEVEL_INFO,
                         "Firmware interlock successfully waited for, sleep: %u, interlock: %u, took: %u", sleep,
                         interlock, sleep - static_cast<uint32_t>(remaining));
            return 1;
        }
        std::this_thread::sleep_for(std::chrono::microseconds(1000));
        --remaining;
    }
    VELATRIX_REPORT_ERROR("Problem waiting for firmware interlock: device didn't respond in time, sleep: %u, interlock: %u",
                          sleep, interlock);
    return 0;
}

int velatrix_set_run_mode(velatrix_device* device, int32_t mode) {
    VELATRIX_TRACE_FUNCTION();
    using namespace velatrix::protocol;
    constexpr const ReportEntry& entry = report(report_id::kRunMode);
    uint8_t buffer[entry.length] = {entry.id, static_cast<uint8_t>(mode)};
    if (wait_for_interlock(device, entry.set_before.sleep, entry.set_before.mask) == 0) return 0;
    const int32_t status = velatrix_hid_set_feature_report(device, buffer, entry.length);
    // A wait failing after the send hides its success: the pad may not have
    // taken the new mode yet, and callers must not go on as if it had.
    if (wait_for_interlock(device, entry.set_after.sleep, entry.set_after.mask) == 0) return 0;
    return status;
}

void velatrix_set_legacy_firmware(velatrix_device* device, uint8_t flag) {
    VELATRIX_TRACE_FUNCTION();
    use_legacy_firmware = flag;
}

}  // extern "C"
