// One virtual pad on the bus: the firmware model behind a lock, the input
// it sends to every interface opened on it, and the faults a test asks
// for. Safe to use from several threads: the host's reader, its feature
// transfers and a test driving the pad.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <deque>
#include <functional>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <span>
#include <vector>

#include "virtual/firmware.h"

namespace velatrix::virtual_pad {

enum class Outcome {
    ok,
    refused,  // the firmware stalled the request
    failed,   // an injected transfer failure
    gone,     // the pad is unplugged
};

struct TransferOutcome {
    Outcome outcome = Outcome::ok;
    std::size_t length = 0;  // bytes answered (get) or taken (set)
};

// The receiving end of one interface opened on the pad.
struct InputReader {
    std::deque<Bytes> queue;
    bool closed = false;
    bool waiting = false;
};

enum class InputWait { delivered, timeout, gone, closed };

class VirtualPad {
public:
    VirtualPad(int id, const PadModel& model);

    int id() const { return id_; }
    const PadModel& model() const { return firmware_.model(); }
    // Bus 0x7F, then the pad's number: unique for every pad ever plugged.
    uint32_t location_id() const { return 0x7F000000u | ((static_cast<uint32_t>(id_) & 0xFFFFu) << 8); }
    const std::vector<uint8_t>& report_descriptor() const { return firmware_.report_descriptor(); }

    // Feature transfers as the host's HID service makes them.
    TransferOutcome get_feature(std::span<uint8_t> report);
    TransferOutcome set_feature(std::span<const uint8_t> report);
    // Transfers made so far, failed ones included.
    unsigned transfers() const;

    // Input side of an open interface.
    std::shared_ptr<InputReader> attach_reader();
    // Waits up to `timeout`; swaps what arrived with `reports` (which should
    // come empty), so a reader that keeps its queue allocates nothing per
    // report. While a caller is between wait_input and leave_input,
    // close_reader waits.
    InputWait wait_input(InputReader& reader, std::chrono::milliseconds timeout, std::deque<Bytes>& reports);
    void leave_input(InputReader& reader);
    void close_reader(InputReader& reader);

    // Input the pad sends, to every open interface and to the input log.
    void send_input(Bytes report);
    void pen(uint16_t x, uint16_t y, bool tip, bool in_range);
    void stroke(std::span<const std::array<uint16_t, 2>> points);
    bool swipe_card(std::string_view track1, std::string_view track2, std::string_view track3);
    // Every input report sent so far, oldest first.
    std::vector<Bytes> input_log() const;

    // Faults. Transfers are counted from the call: 1 is the next one.
    void fail_transfer(unsigned nth);
    void unplug_at_transfer(unsigned nth);
    // Answers to gets of `report_id` stop after `length` bytes.
    void short_answer(uint8_t report_id, std::size_t length);
    // Answers to gets of `report_id` come back under the wrong id with
    // every payload byte inverted.
    void malformed_answer(uint8_t report_id);
    void clear_faults();

    // Called (without the pad's lock) when a fault unplugs the pad; the bus
    // installs it.
    void set_unplug_handler(std::function<void(int)> handler);
    void mark_gone();
    bool gone() const;

    // Runs `body` on the firmware under the pad's lock; input the body makes
    // the firmware produce is sent afterwards.
    void with_firmware(const std::function<void(Firmware&)>& body);
    void inspect(const std::function<void(const Firmware&)>& body) const;

private:
    // Counts the transfer and applies transfer faults; returns the outcome
    // that replaces the transfer, if any.
    std::optional<Outcome> count_transfer(bool& unplug_now);
    void flush_input_locked();
    void finish_unplug(bool unplug_now);

    const int id_;
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    Firmware firmware_;
    bool gone_ = false;
    unsigned transfers_ = 0;
    unsigned fail_at_ = 0;
    unsigned unplug_at_ = 0;
    std::map<uint8_t, std::size_t> short_answers_;
    std::set<uint8_t> malformed_answers_;
    std::vector<std::shared_ptr<InputReader>> readers_;
    std::vector<Bytes> input_log_;
    std::function<void(int)> unplug_handler_;
};

}  // namespace velatrix::virtual_pad
