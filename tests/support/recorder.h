// What callbacks hand over, possibly on the driver's threads, kept for the
// test's thread to wait for and take. The library's callbacks are plain
// function pointers, so a test holds one recorder per kind of event at
// namespace scope and its callbacks add to it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <cstddef>
#include <mutex>
#include <vector>

namespace velatrix::testing {

template <typename Event>
class Recorder {
public:
    void add(Event event) {
        std::lock_guard lock(mutex_);
        events_.push_back(std::move(event));
        changed_.notify_all();
    }

    // Waits until `count` events have come (or the timeout has passed), then
    // takes every event so far.
    std::vector<Event> take(std::size_t count = 0, std::chrono::milliseconds timeout = {}) {
        std::unique_lock lock(mutex_);
        changed_.wait_for(lock, timeout, [&] { return events_.size() >= count; });
        std::vector<Event> taken;
        taken.swap(events_);
        return taken;
    }

    std::size_t size() const {
        std::lock_guard lock(mutex_);
        return events_.size();
    }

private:
    mutable std::mutex mutex_;
    std::condition_variable changed_;
    std::vector<Event> events_;
};

}  // namespace velatrix::testing
