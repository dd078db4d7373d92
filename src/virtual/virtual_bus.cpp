#include "virtual/virtual_bus.h"

#include <algorithm>
#include <charconv>

#include "virtual/virtual_hid_layer.h"

namespace velatrix::virtual_pad {

namespace {
constexpr std::string_view kKeyPrefix = "virtual:";
}  // namespace

VirtualBus& VirtualBus::instance() {
    // Never destroyed: the host's hot-plug thread and read threads may still
    // wait on the bus while the process exits, and destroying a condition
    // variable with a waiter blocks for good. The system reclaims it.
    static VirtualBus& bus = *new VirtualBus;
    return bus;
}

std::shared_ptr<VirtualPad> VirtualBus::plug(const PadModel& model) {
    std::shared_ptr<VirtualPad> pad;
    {
        std::lock_guard lock(mutex_);
        pad = std::make_shared<VirtualPad>(next_id_++, model);
        pads_[pad->id()] = pad;
        changed_locked(Change::attached);
    }
    pad->set_unplug_handler([this](int id) { unplug(id); });
    return pad;
}

bool VirtualBus::unplug(int id) {
    std::shared_ptr<VirtualPad> pad;
    {
        std::lock_guard lock(mutex_);
        auto it = pads_.find(id);
        if (it == pads_.end()) return false;
        pad = std::move(it->second);
        pads_.erase(it);
        changed_locked(Change::detached);
    }
    pad->mark_gone();
    return true;
}

void VirtualBus::unplug_all() {
    std::map<int, std::shared_ptr<VirtualPad>> removed;
    {
        std::lock_guard lock(mutex_);
        removed.swap(pads_);
        for (std::size_t i = 0; i < removed.size(); ++i) changed_locked(Change::detached);
    }
    for (auto& [id, pad] : removed) pad->mark_gone();
}

std::shared_ptr<VirtualPad> VirtualBus::find(int id) const {
    std::lock_guard lock(mutex_);
    auto it = pads_.find(id);
    return it == pads_.end() ? nullptr : it->second;
}

std::vector<std::shared_ptr<VirtualPad>> VirtualBus::pads() const {
    std::lock_guard lock(mutex_);
    std::vector<std::shared_ptr<VirtualPad>> list;
    for (const auto& [id, pad] : pads_) list.push_back(pad);
    return list;
}

std::shared_ptr<VirtualBus::Watcher> VirtualBus::add_watcher() {
    auto watcher = std::make_shared<Watcher>();
    std::lock_guard lock(mutex_);
    watchers_.push_back(watcher);
    return watcher;
}

VirtualBus::Change VirtualBus::wait_change(Watcher& watcher) {
    std::unique_lock lock(mutex_);
    watcher.waiting = true;
    changed_.notify_all();
    changed_.wait(lock, [&] { return watcher.stopped || watcher.pending.has_value(); });
    watcher.waiting = false;
    if (watcher.stopped) return Change::stopped;
    Change first = *watcher.pending;
    watcher.pending.reset();
    return first;
}

void VirtualBus::stop_watcher(Watcher& watcher) {
    std::lock_guard lock(mutex_);
    watcher.stopped = true;
    changed_.notify_all();
}

uint64_t VirtualBus::changes() const {
    std::lock_guard lock(mutex_);
    return changes_;
}

bool VirtualBus::wait_watcher_idle(std::chrono::milliseconds timeout) {
    std::unique_lock lock(mutex_);
    return changed_.wait_for(lock, timeout, [&] {
        return std::ranges::any_of(watchers_, [](const std::weak_ptr<Watcher>& held) {
            std::shared_ptr<Watcher> watcher = held.lock();
            return watcher && watcher->waiting && !watcher->pending;
        });
    });
}

std::size_t VirtualBus::watchers() const {
    std::lock_guard lock(mutex_);
    return std::ranges::count_if(watchers_, [](const std::weak_ptr<Watcher>& held) { return !held.expired(); });
}

void VirtualBus::changed_locked(Change kind) {
    std::erase_if(watchers_, [](const std::weak_ptr<Watcher>& held) { return held.expired(); });
    for (const auto& held : watchers_) {
        std::shared_ptr<Watcher> watcher = held.lock();
        if (watcher && !watcher->pending) watcher->pending = kind;
    }
    ++changes_;
    changed_.notify_all();
}

std::string VirtualBus::key_of(int id) { return std::string(kKeyPrefix) + std::to_string(id); }

int VirtualBus::id_of_key(const std::string& key) {
    if (key.compare(0, kKeyPrefix.size(), kKeyPrefix) != 0) return 0;
    int id = 0;
    const char* begin = key.data() + kKeyPrefix.size();
    const char* end = key.data() + key.size();
    auto [stop, error] = std::from_chars(begin, end, id);
    if (error != std::errc{} || stop != end || begin == end) return 0;
    return id;
}

}  // namespace velatrix::virtual_pad

// The host driver's way onto the virtual bus. It lives here, beside the bus
// itself, so that every program that plugs virtual pads also links it.
namespace velatrix::host {

HidAccessLayer& virtual_access_layer(unsigned pad_count) {
    static std::once_flag plugged;
    std::call_once(plugged, [pad_count] { virtual_pad::plug_simulated_pads(pad_count); });
    return virtual_pad::bus_hid_layer();
}

}  // namespace velatrix::host
