// The virtual bus: the pads plugged in now, and a change counter that the
// USB watches of the host driver wait on. One process-wide bus.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include "virtual/virtual_pad.h"

namespace velatrix::virtual_pad {

class VirtualBus {
public:
    static VirtualBus& instance();

    // Plugs a new pad of `model`; its id is new (ids are never reused).
    std::shared_ptr<VirtualPad> plug(const PadModel& model);
    // False when no pad with that id is plugged in.
    bool unplug(int id);
    void unplug_all();

    // Null when no pad with that id is plugged in.
    std::shared_ptr<VirtualPad> find(int id) const;
    // In plugging order.
    std::vector<std::shared_ptr<VirtualPad>> pads() const;

    enum class Change { attached, detached, stopped };
    // What a USB watch has not been told yet: the kind of the first change
    // since its last wait (later ones are told as one with it).
    struct Watcher {
        std::optional<Change> pending;
        bool stopped = false;
        bool waiting = false;  // inside wait_change
    };
    std::shared_ptr<Watcher> add_watcher();
    // Blocks until a pad is plugged or unplugged after the watcher last
    // looked, or the watcher is stopped. Changes that piled up meanwhile
    // are told as one, of the kind of the first.
    Change wait_change(Watcher& watcher);
    void stop_watcher(Watcher& watcher);
    uint64_t changes() const;

    // For tests of the host's hot-plug thread: waits until a watcher is
    // inside wait_change with nothing left to tell (the thread is idle);
    // false when `timeout` passes first.
    bool wait_watcher_idle(std::chrono::milliseconds timeout);
    // Watchers still held by a USB watch (none once the host has released
    // its watch).
    std::size_t watchers() const;

    // Interface keys handed to the host: "virtual:<id>".
    static std::string key_of(int id);
    static int id_of_key(const std::string& key);

private:
    VirtualBus() = default;
    void changed_locked(Change kind);

    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::map<int, std::shared_ptr<VirtualPad>> pads_;
    int next_id_ = 1;
    uint64_t changes_ = 0;
    // The watchers still held by a USB watch; a dropped one is forgotten at
    // the next change, so plugging and unplugging forever takes no memory.
    std::vector<std::weak_ptr<Watcher>> watchers_;
};

}  // namespace velatrix::virtual_pad
