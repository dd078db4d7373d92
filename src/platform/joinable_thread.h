// A thread its owner always waits for: joined when the owner lets it go,
// never left running behind a freed object. A thread cannot wait for
// itself, so a join asked from the thread itself does nothing, and an owner
// destroyed by its own thread lets that thread finish on its own.
#pragma once

#include <system_error>
#include <thread>
#include <utility>

namespace velatrix::platform {

class JoinableThread {
public:
    JoinableThread() = default;
    ~JoinableThread() {
        if (!thread_.joinable()) return;
        if (is_current()) {
            thread_.detach();
        } else {
            thread_.join();
        }
    }
    JoinableThread(const JoinableThread&) = delete;
    JoinableThread& operator=(const JoinableThread&) = delete;

    // Starts `body` on a new thread; false when one was started and not yet
    // joined, or when the system refuses a new thread.
    template <class Body>
    bool start(Body&& body) {
        if (thread_.joinable()) return false;
        try {
            thread_ = std::thread(std::forward<Body>(body));
        } catch (const std::system_error&) {
            return false;
        }
        return true;
    }

    // Started and not yet joined (it may have finished its work already).
    bool started() const { return thread_.joinable(); }
    bool is_current() const { return thread_.get_id() == std::this_thread::get_id(); }

    // Waits for the thread to end. From the thread itself nothing happens
    // and the result is false.
    bool join() {
        if (!thread_.joinable()) return true;
        if (is_current()) return false;
        thread_.join();
        return true;
    }

    std::thread::native_handle_type native_handle() { return thread_.native_handle(); }

private:
    std::thread thread_;
};

}  // namespace velatrix::platform
