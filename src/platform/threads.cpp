#include "velatrix/threads.h"

#include <sched.h>
#include <sys/time.h>

extern "C" {

int velatrix_event_init(velatrix_event* event) {
    pthread_mutex_init(&event->mutex, nullptr);
    event->signalled = 0;
    event->waiters = 0;
    return pthread_cond_init(&event->condition, nullptr);
}

int velatrix_event_trigger(velatrix_event* event) {
    pthread_mutex_lock(&event->mutex);
    event->signalled = 1;
    // A manual-reset event wakes one waiter per trigger; later waits pass
    // anyway because the flag stays set.
    pthread_cond_signal(&event->condition);
    return pthread_mutex_unlock(&event->mutex);
}

int velatrix_event_reset(velatrix_event* event) {
    pthread_mutex_lock(&event->mutex);
    event->signalled = 0;
    return pthread_mutex_unlock(&event->mutex);
}

int velatrix_event_wait(velatrix_event* event) {
    pthread_mutex_lock(&event->mutex);
    ++event->waiters;
    int result = 0;
    while (event->signalled == 0 && result == 0) {
        result = pthread_cond_wait(&event->condition, &event->mutex);
    }
    --event->waiters;
    pthread_mutex_unlock(&event->mutex);
    return result;
}

int velatrix_event_destroy(velatrix_event* event) {
    // Wake every waiter and let each one leave before the mutex and the
    // condition go away; one left behind would block forever or touch
    // destroyed state.
    pthread_mutex_lock(&event->mutex);
    event->signalled = 1;
    pthread_cond_broadcast(&event->condition);
    while (event->waiters > 0) {
        pthread_mutex_unlock(&event->mutex);
        sched_yield();
        pthread_mutex_lock(&event->mutex);
    }
    pthread_mutex_unlock(&event->mutex);
    pthread_mutex_destroy(&event->mutex);
    const int result = pthread_cond_destroy(&event->condition);
    event->signalled = 0;
    return result;
}

int velatrix_mutex_init(velatrix_mutex* mutex) { return pthread_mutex_init(mutex, nullptr); }
int velatrix_mutex_lock(velatrix_mutex* mutex) { return pthread_mutex_lock(mutex); }
int velatrix_mutex_unlock(velatrix_mutex* mutex) { return pthread_mutex_unlock(mutex); }
int velatrix_mutex_destroy(velatrix_mutex* mutex) { return pthread_mutex_destroy(mutex); }

int velatrix_thread_init(velatrix_thread* thread, velatrix_thread_start start, void* argument) {
    return pthread_create(thread, nullptr, start, argument);
}

int velatrix_thread_join(velatrix_thread thread) { return pthread_join(thread, nullptr); }

uint32_t velatrix_get_ticks(void) {
    timeval now{};
    gettimeofday(&now, nullptr);
    return static_cast<uint32_t>(static_cast<uint64_t>(now.tv_sec) * 1000u + static_cast<uint64_t>(now.tv_usec) / 1000u);
}

}  // extern "C"
