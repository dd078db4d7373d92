#include "virtual/virtual_pad.h"

#include <algorithm>

namespace velatrix::virtual_pad {

namespace {
// The log keeps the most recent input; older reports are dropped first.
constexpr std::size_t kInputLogLimit = 65536;
}  // namespace

VirtualPad::VirtualPad(int id, const PadModel& model) : id_(id), firmware_(model, static_cast<unsigned>(id)) {}

std::optional<Outcome> VirtualPad::count_transfer(bool& unplug_now) {
    if (gone_) return Outcome::gone;
    ++transfers_;
    if (unplug_at_ != 0 && transfers_ == unplug_at_) {
        unplug_at_ = 0;
        gone_ = true;
        unplug_now = true;
        changed_.notify_all();
        return Outcome::gone;
    }
    if (fail_at_ != 0 && transfers_ == fail_at_) {
        fail_at_ = 0;
        return Outcome::failed;
    }
    return std::nullopt;
}

void VirtualPad::finish_unplug(bool unplug_now) {
    if (!unplug_now) return;
    std::function<void(int)> handler;
    {
        std::lock_guard lock(mutex_);
        handler = unplug_handler_;
    }
    if (handler) handler(id_);
}

TransferOutcome VirtualPad::get_feature(std::span<uint8_t> report) {
    TransferOutcome result;
    bool unplug_now = false;
    {
        std::lock_guard lock(mutex_);
        if (auto replaced = count_transfer(unplug_now)) {
            result.outcome = *replaced;
        } else if (report.empty()) {
            result.outcome = Outcome::refused;
        } else {
            const uint8_t id = report[0];
            std::vector<uint8_t> answer(report.begin(), report.end());
            auto length = firmware_.get_feature(answer);
            flush_input_locked();
            if (!length) {
                result.outcome = Outcome::refused;
            } else {
                if (malformed_answers_.contains(id)) {
                    answer[0] = static_cast<uint8_t>(id + 1);
                    for (std::size_t i = 1; i < *length; ++i) answer[i] = static_cast<uint8_t>(~answer[i]);
                }
                if (auto cut = short_answers_.find(id); cut != short_answers_.end()) {
                    *length = std::min(*length, cut->second);
                }
                std::copy_n(answer.begin(), *length, report.begin());
                result.length = *length;
            }
        }
    }
    finish_unplug(unplug_now);
    return result;
}

TransferOutcome VirtualPad::set_feature(std::span<const uint8_t> report) {
    TransferOutcome result;
    bool unplug_now = false;
    {
        std::lock_guard lock(mutex_);
        if (auto replaced = count_transfer(unplug_now)) {
            result.outcome = *replaced;
        } else if (firmware_.set_feature(report)) {
            result.length = report.size();
        } else {
            result.outcome = Outcome::refused;
        }
        flush_input_locked();
    }
    finish_unplug(unplug_now);
    return result;
}

unsigned VirtualPad::transfers() const {
    std::lock_guard lock(mutex_);
    return transfers_;
}

std::shared_ptr<InputReader> VirtualPad::attach_reader() {
    auto reader = std::make_shared<InputReader>();
    std::lock_guard lock(mutex_);
    readers_.push_back(reader);
    return reader;
}

InputWait VirtualPad::wait_input(InputReader& reader, std::chrono::milliseconds timeout,
                                 std::deque<Bytes>& reports) {
    std::unique_lock lock(mutex_);
    if (reader.closed) return InputWait::closed;
    reader.waiting = true;
    changed_.wait_for(lock, timeout, [&] { return reader.closed || gone_ || !reader.queue.empty(); });
    if (reader.closed) return InputWait::closed;
    if (!reader.queue.empty()) {
        reports.swap(reader.queue);
        return InputWait::delivered;
    }
    return gone_ ? InputWait::gone : InputWait::timeout;
}

void VirtualPad::leave_input(InputReader& reader) {
    std::lock_guard lock(mutex_);
    reader.waiting = false;
    changed_.notify_all();
}

void VirtualPad::close_reader(InputReader& reader) {
    std::unique_lock lock(mutex_);
    reader.closed = true;
    changed_.notify_all();
    changed_.wait(lock, [&] { return !reader.waiting; });
    std::erase_if(readers_, [&](const std::shared_ptr<InputReader>& held) { return held.get() == &reader; });
}

void VirtualPad::flush_input_locked() {
    std::vector<Bytes> reports = firmware_.take_input();
    if (reports.empty()) return;
    for (Bytes& report : reports) {
        for (const auto& reader : readers_) {
            if (!reader->closed) reader->queue.push_back(report);
        }
        if (input_log_.size() >= kInputLogLimit) input_log_.erase(input_log_.begin());
        input_log_.push_back(std::move(report));
    }
    changed_.notify_all();
}

void VirtualPad::send_input(Bytes report) {
    std::lock_guard lock(mutex_);
    if (gone_) return;
    firmware_.emit(std::move(report));
    flush_input_locked();
}

void VirtualPad::pen(uint16_t x, uint16_t y, bool tip, bool in_range) {
    std::lock_guard lock(mutex_);
    if (gone_) return;
    firmware_.pen(x, y, tip, in_range);
    flush_input_locked();
}

void VirtualPad::stroke(std::span<const std::array<uint16_t, 2>> points) {
    std::lock_guard lock(mutex_);
    if (gone_) return;
    firmware_.stroke(points);
    flush_input_locked();
}

bool VirtualPad::swipe_card(std::string_view track1, std::string_view track2, std::string_view track3) {
    std::lock_guard lock(mutex_);
    if (gone_) return false;
    bool swiped = firmware_.swipe_card(track1, track2, track3);
    flush_input_locked();
    return swiped;
}

std::vector<Bytes> VirtualPad::input_log() const {
    std::lock_guard lock(mutex_);
    return input_log_;
}

void VirtualPad::fail_transfer(unsigned nth) {
    std::lock_guard lock(mutex_);
    fail_at_ = nth == 0 ? 0 : transfers_ + nth;
}

void VirtualPad::unplug_at_transfer(unsigned nth) {
    std::lock_guard lock(mutex_);
    unplug_at_ = nth == 0 ? 0 : transfers_ + nth;
}

void VirtualPad::short_answer(uint8_t report_id, std::size_t length) {
    std::lock_guard lock(mutex_);
    short_answers_[report_id] = length;
}

void VirtualPad::malformed_answer(uint8_t report_id) {
    std::lock_guard lock(mutex_);
    malformed_answers_.insert(report_id);
}

void VirtualPad::clear_faults() {
    std::lock_guard lock(mutex_);
    fail_at_ = 0;
    unplug_at_ = 0;
    short_answers_.clear();
    malformed_answers_.clear();
    firmware_.state().stay_busy = 0;
}

void VirtualPad::set_unplug_handler(std::function<void(int)> handler) {
    std::lock_guard lock(mutex_);
    unplug_handler_ = std::move(handler);
}

void VirtualPad::mark_gone() {
    std::lock_guard lock(mutex_);
    gone_ = true;
    changed_.notify_all();
}

bool VirtualPad::gone() const {
    std::lock_guard lock(mutex_);
    return gone_;
}

void VirtualPad::with_firmware(const std::function<void(Firmware&)>& body) {
    std::lock_guard lock(mutex_);
    body(firmware_);
    if (!gone_) flush_input_locked();
}

void VirtualPad::inspect(const std::function<void(const Firmware&)>& body) const {
    std::lock_guard lock(mutex_);
    body(firmware_);
}

}  // namespace velatrix::virtual_pad
