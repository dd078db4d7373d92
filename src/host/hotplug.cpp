// The driver's start and stop, and the hot-plug thread that turns USB
// attach and detach into hot-plug callbacks with the paths of pads that
// appeared or went.
#include <chrono>
#include <condition_variable>
#include <cstdlib>
#include <cstring>
#include <mutex>

#include "core/hotplug_callbacks.h"

#include "debug/log.h"
#include "host/real_device.h"
#include "velatrix/input.h"

using namespace velatrix::host;

namespace {

// How long a new device gets to publish its HID interfaces before listing.
constexpr std::chrono::seconds kSettleTime{1};

std::atomic<uint8_t> hotplug_thread_running{0};
velatrix_thread hotplug_thread{};
// Touched by init, destroy, thread_wait and the exit hook, which run on the
// application's start and stop thread or at process exit, never at once.
bool thread_started = false;
// Owned here; deleted only once the thread using it has been joined. A raw
// pointer rather than a static owner: exit must never delete it under a
// thread still waiting on it.
UsbWatch* watch = nullptr;
// True on the hot-plug thread itself (a callback may call exit or destroy).
thread_local bool on_hotplug_thread = false;

// Held while the callback list is walked or replaced, so destroy never
// frees the list under a dispatch. The settle wait watches it as well.
// std::mutex needs no destruction; the condition variables are never
// destroyed, since a thread left waiting on one would block exit for good.
std::mutex dispatch_mutex;
std::condition_variable& stop_requested = *new std::condition_variable;

// Waits out the settle time; false when the driver is stopped meanwhile.
bool settle(std::unique_lock<std::mutex>& lock) {
    return !stop_requested.wait_for(lock, kSettleTime, [] { return hotplug_thread_running.load() == 0; });
}

void call_hotplug_callbacks(velatrix_list* callbacks, uint32_t event, const std::string& path) {
    std::lock_guard lock(velatrix::hotplug_callbacks_mutex());
    for (velatrix_list_node* node = callbacks->head; node != nullptr;) {
        velatrix_list_node* next = node->next;
        reinterpret_cast<velatrix_hotplug_callback>(node->value)(event, path.c_str());
        node = next;
    }
}

// Every start begins with no hot-plug callbacks.
void replace_callback_list() {
    std::lock_guard lock(velatrix::hotplug_callbacks_mutex());
    velatrix_list_free(velatrix_get_device_callbacks());
    velatrix_set_device_callbacks(velatrix_create_list());
}

// Set by the hot-plug thread as its very last step.
std::mutex thread_end_mutex;
std::condition_variable& thread_end = *new std::condition_variable;
bool thread_ended = true;
constexpr auto kThreadEndWait = std::chrono::seconds(2);

void mark_thread_ended() {
    std::lock_guard lock(thread_end_mutex);
    thread_ended = true;
    thread_end.notify_all();
}

// True when the thread ended within the wait. It ends promptly unless a
// hot-plug callback of the application keeps it busy.
bool wait_thread_end() {
    std::unique_lock lock(thread_end_mutex);
    return thread_end.wait_for(lock, kThreadEndWait, [] { return thread_ended; });
}

void* run_hotplug_thread(void* argument);

void join_thread() {
    if (thread_started) velatrix_thread_join(hotplug_thread);
    thread_started = false;
    delete watch;
    watch = nullptr;
}

// At process exit, with or without destroy before: the thread is stopped and
// joined before static objects it might still reach are destroyed. Nothing
// here waits for the dispatch lock, which an application callback may hold
// indefinitely while its runtime shuts down; a missed wake-up only lets the
// settle wait run out, and it then still sees the stop.
void stop_at_exit() {
    if (on_hotplug_thread || !thread_started) return;
    hotplug_thread_running.store(0);
    {
        std::unique_lock lock(dispatch_mutex, std::try_to_lock);
        stop_requested.notify_all();
    }
    if (watch != nullptr) watch->stop();
    if (wait_thread_end()) join_thread();
}

}  // namespace

extern "C" {

void velatrix_linux_device_notify(void) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    std::unique_lock lock(dispatch_mutex);
    {
        std::lock_guard callbacks_lock(velatrix::hotplug_callbacks_mutex());
        velatrix_list* callbacks = velatrix_get_device_callbacks();
        if (callbacks == nullptr || callbacks->head == nullptr) return;
    }
    if (!settle(lock)) return;
    velatrix_device* head = nullptr;
    velatrix_list_devices(&head);
    velatrix_free_device_list(head);
    PathChanges changes = diff_path_snapshots();
    velatrix_list* callbacks = velatrix_get_device_callbacks();
    if (callbacks == nullptr) return;
    for (const std::string& path : changes.added) call_hotplug_callbacks(callbacks, VELATRIX_HOTPLUG_ADDED, path);
    for (const std::string& path : changes.removed) call_hotplug_callbacks(callbacks, VELATRIX_HOTPLUG_REMOVED, path);
}

void velatrix_linux_device_added(void) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    velatrix_linux_device_notify();
}

void velatrix_linux_device_removed(void) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    velatrix_linux_device_notify();
}

void* velatrix_hotplug_thread(void* argument) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    auto* usb = static_cast<UsbWatch*>(argument);
    if (usb == nullptr) return nullptr;
    while (hotplug_thread_running.load() == 1) {
        switch (usb->wait()) {
            case UsbChange::attached: velatrix_linux_device_added(); break;
            case UsbChange::detached: velatrix_linux_device_removed(); break;
            case UsbChange::stopped:
            case UsbChange::failed: return nullptr;
        }
    }
    return nullptr;
}

int32_t velatrix_real_driver_init(void) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    // A second start without a stop keeps the running thread; a stopped
    // but not yet joined one is let go first (it ends within a second).
    if (thread_started && hotplug_thread_running.load() == 1) {
        std::lock_guard lock(dispatch_mutex);
        replace_callback_list();
        return 1;
    }
    join_thread();
    select_access_layer();
    {
        std::lock_guard lock(dispatch_mutex);
        replace_callback_list();
        hotplug_thread_running.store(1);
    }
    int error = 0;
    watch = access_layer().watch_usb(error).release();
    if (watch != nullptr) {
        // Whatever happened before the watch was armed is looked at once,
        // for arrivals and for departures. This runs here rather than on
        // the new thread so that it never meets an application registering
        // its first callbacks right after start-up.
        velatrix_linux_device_added();
        velatrix_linux_device_removed();
    }
    // Registered once the objects the thread reaches exist, so that it runs
    // before exit destroys any of them.
    static std::once_flag exit_hook;
    std::call_once(exit_hook, [] { std::atexit(stop_at_exit); });
    // Without a watch the thread ends at once, silently: pads are still
    // listed and opened, only hot-plug callbacks stay quiet.
    {
        std::lock_guard lock(thread_end_mutex);
        thread_ended = false;
    }
    thread_started = velatrix_thread_init(&hotplug_thread, run_hotplug_thread, watch) == 0;
    if (!thread_started) mark_thread_ended();
    return 1;
}

int velatrix_real_driver_destroy(velatrix_device_driver* driver) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    {
        // A dispatch waiting out its settle time gives up at once on the
        // flag and releases the lock.
        std::lock_guard lock(dispatch_mutex);
        hotplug_thread_running.store(0);
        stop_requested.notify_all();
        std::lock_guard callbacks_lock(velatrix::hotplug_callbacks_mutex());
        velatrix_list_free(velatrix_get_device_callbacks());
        velatrix_set_device_callbacks(nullptr);
    }
    if (watch != nullptr) watch->stop();
    // Joined here, so that a program needs nothing more than destroy to
    // end cleanly, and so that its last log records are written before
    // velatrix_destroy closes the log. Only a thread still busy in an
    // application callback after the wait (or destroy called from inside
    // one) is left running; the next start or the exit hook joins it.
    if (wait_thread_end() && !on_hotplug_thread) join_thread();
    return 1;
}

uint8_t velatrix_real_thread_running(void) { return hotplug_thread_running.load(); }

int velatrix_real_thread_wait(void) {
    VELATRIX_TRACE_FUNCTION_IN(velatrix::kLogHost);
    join_thread();
    return 0;
}

}  // extern "C"

namespace {
void* run_hotplug_thread(void* argument) {
    on_hotplug_thread = true;
    velatrix_hotplug_thread(argument);
    mark_thread_ended();
    return nullptr;
}
}  // namespace
