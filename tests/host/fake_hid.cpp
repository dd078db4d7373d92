#include "fake_hid.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace velatrix::testing {

using host::InputResult;
using host::InputStatus;
using host::Transfer;

void FakeInterfaceState::push_input(Bytes report) {
    std::lock_guard lock(mutex);
    input.push_back(std::move(report));
    changed.notify_all();
}

namespace {

class FakeInterface final : public host::HidInterface {
public:
    explicit FakeInterface(std::shared_ptr<FakeInterfaceState> state) : state_(std::move(state)) {}
    ~FakeInterface() override { close(); }

    int report_descriptor(std::vector<uint8_t>& descriptor) override {
        std::lock_guard lock(state_->mutex);
        descriptor.clear();
        if (state_->descriptor_error != 0) return state_->descriptor_error;
        descriptor = state_->descriptor;
        return 0;
    }

    InputResult wait_input(std::chrono::milliseconds timeout, const host::InputSink& sink) override {
        std::unique_lock lock(state_->mutex);
        if (closed_) return {InputStatus::closed, 0};
        ++state_->waiting;
        state_->changed.notify_all();
        state_->changed.wait_for(lock, timeout, [this] { return closed_ || !state_->input.empty(); });
        --state_->waiting;
        state_->changed.notify_all();
        if (closed_) return {InputStatus::closed, 0};
        if (!state_->input.empty()) {
            // Swapped into a queue kept for the purpose: delivering makes
            // no allocation of its own, so the driver's read path can be
            // measured through this layer.
            delivering_.swap(state_->input);
            lock.unlock();
            for (const Bytes& report : delivering_) sink(report);
            delivering_.clear();
            return {InputStatus::delivered, 0};
        }
        return {InputStatus::timeout, 0};
    }

    Transfer get_feature(std::span<uint8_t> report) override {
        std::lock_guard lock(state_->mutex);
        if (closed_) return {EBADF, EBADF, 0};
        state_->gets.emplace_back(report.begin(), report.end());
        if (state_->transfer_status != 0) return {state_->transfer_status, EIO, 0};
        auto answer = state_->feature_answers.find(report[0]);
        if (answer == state_->feature_answers.end()) return {0, 0, report.size()};
        std::size_t length = std::min(report.size(), answer->second.size());
        std::memcpy(report.data(), answer->second.data(), length);
        return {0, 0, length};
    }

    Transfer set_feature(std::span<const uint8_t> report) override {
        std::lock_guard lock(state_->mutex);
        if (closed_) return {EBADF, EBADF, 0};
        state_->sets.emplace_back(report.begin(), report.end());
        if (state_->transfer_status != 0) return {state_->transfer_status, EIO, 0};
        return {0, 0, report.size()};
    }

    void close() override {
        std::unique_lock lock(state_->mutex);
        if (closed_) return;
        closed_ = true;
        ++state_->closes;
        state_->changed.notify_all();
        // As the contract says: a waiter has left before close returns.
        state_->changed.wait(lock, [this] { return state_->waiting == 0; });
    }

private:
    std::shared_ptr<FakeInterfaceState> state_;
    bool closed_ = false;
    std::deque<Bytes> delivering_;
};

}  // namespace

namespace {
// Marks the watch's state when the thread that waited on it has ended: a
// thread's thread_local objects are destroyed before a join of it returns.
struct WaiterExit {
    std::shared_ptr<FakeHidLayer::WatchState> state;
    ~WaiterExit() {
        if (!state) return;
        std::lock_guard lock(state->mutex);
        state->waiter_ended = true;
    }
};
}  // namespace

class FakeHidLayer::Watch final : public host::UsbWatch {
public:
    explicit Watch(std::shared_ptr<WatchState> state) : state_(std::move(state)) {}
    host::UsbChange wait() override {
        thread_local WaiterExit exit_mark;
        exit_mark.state = state_;
        std::unique_lock lock(state_->mutex);
        state_->waiting = true;
        state_->changed.notify_all();
        state_->changed.wait(lock, [this] { return state_->stopped || !state_->changes.empty(); });
        state_->waiting = false;
        if (state_->stopped) return host::UsbChange::stopped;
        host::UsbChange change = state_->changes.front();
        state_->changes.pop_front();
        return change;
    }
    void stop() override {
        std::lock_guard lock(state_->mutex);
        state_->stopped = true;
        state_->changed.notify_all();
    }

private:
    std::shared_ptr<WatchState> state_;
};

std::shared_ptr<FakeInterfaceState> FakeHidLayer::add(host::HidInterfaceInfo info, Bytes descriptor) {
    std::lock_guard lock(mutex_);
    auto state = std::make_shared<FakeInterfaceState>();
    state->descriptor = std::move(descriptor);
    info.key = std::to_string(entries_.size());
    entries_.push_back(Entry{std::move(info), state, true});
    return state;
}

void FakeHidLayer::remove(std::size_t index) {
    std::lock_guard lock(mutex_);
    entries_.at(index).present = false;
}

int FakeHidLayer::enumerations() const {
    std::lock_guard lock(mutex_);
    return enumerations_;
}

host::Enumeration FakeHidLayer::enumerate() {
    std::lock_guard lock(mutex_);
    ++enumerations_;
    host::Enumeration result;
    result.error = enumerate_error_;
    if (enumerate_error_ != 0) return result;
    for (const Entry& entry : entries_) {
        if (entry.present) result.interfaces.push_back(entry.info);
    }
    return result;
}

std::unique_ptr<host::HidInterface> FakeHidLayer::open(const std::string& key, int& error) {
    std::lock_guard lock(mutex_);
    error = open_error_;
    if (open_error_ != 0) return nullptr;
    std::size_t index = std::stoul(key);
    if (index >= entries_.size() || !entries_[index].present) {
        error = ENOENT;
        return nullptr;
    }
    return std::make_unique<FakeInterface>(entries_[index].state);
}

void FakeHidLayer::push_usb_change(host::UsbChange change) {
    std::lock_guard lock(watch_->mutex);
    watch_->changes.push_back(change);
    watch_->changed.notify_all();
}

bool FakeHidLayer::watch_made() const {
    std::lock_guard lock(mutex_);
    return watch_made_;
}

bool FakeHidLayer::wait_for_watcher(std::chrono::milliseconds timeout) {
    std::unique_lock lock(watch_->mutex);
    return watch_->changed.wait_for(lock, timeout, [this] { return watch_->waiting && watch_->changes.empty(); });
}

bool FakeHidLayer::watch_stopped() const {
    std::lock_guard lock(watch_->mutex);
    return watch_->stopped;
}

bool FakeHidLayer::watcher_ended() const {
    std::lock_guard lock(watch_->mutex);
    return watch_->waiter_ended;
}

std::unique_ptr<host::UsbWatch> FakeHidLayer::watch_usb(int& error) {
    std::lock_guard lock(mutex_);
    if (watch_error_ != 0) {
        // No notification source on this machine (no netlink, no udev).
        error = watch_error_;
        return nullptr;
    }
    error = 0;
    watch_made_ = true;
    // Each start of the driver watches afresh.
    watch_ = std::make_shared<WatchState>();
    return std::make_unique<Watch>(watch_);
}

host::HidInterfaceInfo pad_info(uint16_t product_id, uint32_t location_id) {
    host::HidInterfaceInfo info;
    info.transport = "USB";
    info.vendor_id = host::kVendorId;
    info.product_id = product_id;
    info.location_id = location_id;
    info.primary_usage_page = 0xFF00;
    info.primary_usage = 6;
    info.manufacturer = "Velatrix";
    info.product = "Quillmark pad";
    return info;
}

}  // namespace velatrix::testing
