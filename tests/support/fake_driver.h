// A recording fake driver: a velatrix_device_driver whose listing returns
// scripted pads, whose get-feature answers come from per-report-id scripts
// and which records every transfer. Protocol tests assert exact wire bytes
// with it. One instance may be active at a time (the driver record's
// operations are plain functions that find the active instance).
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "velatrix/device.h"

namespace velatrix::testing {

using Bytes = std::vector<uint8_t>;

enum class Direction { Get, Set, Output };

struct Transfer {
    Direction direction;
    uint8_t report_id;
    uint32_t length;  // length the caller passed
    Bytes bytes;      // Set/Output: what was sent; Get: buffer after the answer
    bool ok;
};

struct ScriptedPad {
    std::string path;
    uint16_t vendor_id = 0;
    uint16_t product_id = 0;
    std::string model;
    std::string manufacturer;
};

class FakeDriver {
public:
    FakeDriver();
    ~FakeDriver();
    FakeDriver(const FakeDriver&) = delete;
    FakeDriver& operator=(const FakeDriver&) = delete;

    velatrix_device_driver* driver() { return &driver_; }

    // A device record bound to this driver (zeroed, open flag clear). The
    // fake frees it at destruction unless released() was called for it.
    velatrix_device* make_device(const std::string& path = "fake_pad");
    // The record has been handed to code that frees it (free_device_list).
    void released(velatrix_device* device) { std::erase(owned_, device); }

    // Get-feature answers. The answer is copied over the caller's buffer
    // (at most its length); a scripted sequence answers one entry per get,
    // repeating the last. Without a script a get succeeds and leaves the
    // buffer as the caller made it (zeroed but for the report id).
    void answer(uint8_t report_id, Bytes bytes) { answer_sequence(report_id, {std::move(bytes)}); }
    void answer_sequence(uint8_t report_id, std::vector<Bytes> answers);
    // Report 13 shows `busy_bits` in byte 3 for the next `polls` status reads,
    // then reads all clear.
    void busy_for(int polls, uint8_t busy_bits);
    // The Nth transfer from now (1-based, gets and sets counted together)
    // fails: returns 0 and sets the last error to `message`.
    void fail_transfer(int nth, std::string message = "fake transfer failed");
    // Every transfer of this report id fails.
    void fail_report(uint8_t report_id, std::string message = "fake transfer failed") {
        failing_reports_[report_id] = std::move(message);
    }

    // Listing and opening.
    void add_pad(ScriptedPad pad) { pads_.push_back(std::move(pad)); }
    void set_open_result(int result) { open_result_ = result; }
    int open_calls() const { return open_calls_; }
    int close_calls() const { return close_calls_; }
    int read_calls() const { return read_calls_; }
    int free_calls() const { return free_calls_; }

    const std::vector<Transfer>& transfers() const { return transfers_; }
    // Bytes of every set-feature report, optionally only of one id.
    std::vector<Bytes> sets(int report_id = -1) const;
    // Report ids of every transfer in order, with 'G'/'S'/'O' prefixes, e.g. "G13 S10 G13".
    std::string sequence(bool include_status_polls = true) const;
    int gets_of(uint8_t report_id) const;
    void clear_transfers() { transfers_.clear(); }

private:
    friend struct FakeDriverOps;
    int transfer(Direction direction, velatrix_device* device, uint8_t* buffer, uint32_t length);

    velatrix_device_driver driver_{};
    std::vector<ScriptedPad> pads_;
    std::vector<velatrix_device*> owned_;
    std::map<uint8_t, std::vector<Bytes>> answers_;
    std::map<uint8_t, size_t> answer_position_;
    std::map<uint8_t, std::string> failing_reports_;
    int busy_polls_ = 0;
    uint8_t busy_bits_ = 0;
    int fail_countdown_ = 0;
    std::string fail_message_;
    int open_result_ = 1;
    int open_calls_ = 0;
    int close_calls_ = 0;
    int read_calls_ = 0;
    int free_calls_ = 0;
    std::vector<Transfer> transfers_;
};

// Captures what a function writes to standard output.
std::string capture_stdout(const std::function<void()>& body);

}  // namespace velatrix::testing
