/* Thread, event, mutex and clock primitives over POSIX threads. */
#ifndef VELATRIX_THREADS_H
#define VELATRIX_THREADS_H

#include <pthread.h>
#include "velatrix/common.h"

VELATRIX_BEGIN_DECLS

/* A manual-reset event: once triggered, every wait returns until a reset.
 * `waiters` lets destroy wake every waiter and wait until all have left, so
 * no thread is left blocked on (or touching) a destroyed event. */
typedef struct velatrix_event {
    pthread_mutex_t mutex;
    pthread_cond_t condition;
    uint8_t signalled;
    uint32_t waiters;
} velatrix_event;

typedef pthread_mutex_t velatrix_mutex;
typedef pthread_t velatrix_thread;
typedef void* (*velatrix_thread_start)(void* argument);

VELATRIX_API int velatrix_event_init(velatrix_event* event);
VELATRIX_API int velatrix_event_trigger(velatrix_event* event);
VELATRIX_API int velatrix_event_reset(velatrix_event* event);
VELATRIX_API int velatrix_event_wait(velatrix_event* event);
VELATRIX_API int velatrix_event_destroy(velatrix_event* event);

VELATRIX_API int velatrix_mutex_init(velatrix_mutex* mutex);
VELATRIX_API int velatrix_mutex_lock(velatrix_mutex* mutex);
VELATRIX_API int velatrix_mutex_unlock(velatrix_mutex* mutex);
VELATRIX_API int velatrix_mutex_destroy(velatrix_mutex* mutex);

VELATRIX_API int velatrix_thread_init(velatrix_thread* thread, velatrix_thread_start start, void* argument);
VELATRIX_API int velatrix_thread_join(velatrix_thread thread);

VELATRIX_API uint32_t velatrix_get_ticks(void);

VELATRIX_END_DECLS

#endif
