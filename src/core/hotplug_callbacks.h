// The lock around the process-wide hot-plug callback list. Applications
// register and unregister on their threads while the hot-plug thread walks
// the list; the lock is recursive so a callback may register another one
// from inside a dispatch without deadlocking.
#pragma once

#include <mutex>

namespace velatrix {

std::recursive_mutex& hotplug_callbacks_mutex();

}  // namespace velatrix
