#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <thread>

#include "velatrix/threads.h"

namespace {

using namespace std::chrono_literals;

struct Waiter {
    velatrix_event* event;
    std::atomic<bool> woke{false};
    velatrix_thread thread{};

    void start() {
        velatrix_thread_init(&thread, [](void* self) -> void* {
            auto* waiter = static_cast<Waiter*>(self);
            velatrix_event_wait(waiter->event);
            waiter->woke = true;
            return nullptr;
        }, this);
    }
};

bool eventually(const std::atomic<bool>& flag) {
    for (int i = 0; i < 200 && !flag; ++i) std::this_thread::sleep_for(10ms);
    return flag;
}

TEST(Event, StaysSignalledUntilResetAndATriggerWakesOneWaiter) {
    velatrix_event event;
    ASSERT_EQ(velatrix_event_init(&event), 0);
    velatrix_event_trigger(&event);
    EXPECT_EQ(velatrix_event_wait(&event), 0);
    EXPECT_EQ(velatrix_event_wait(&event), 0);  // still signalled
    velatrix_event_reset(&event);

    Waiter first{&event}, second{&event};
    first.start();
    second.start();
    std::this_thread::sleep_for(100ms);
    EXPECT_FALSE(first.woke || second.woke) << "a reset event blocks";
    velatrix_event_trigger(&event);
    for (int i = 0; i < 200 && !(first.woke || second.woke); ++i) std::this_thread::sleep_for(10ms);
    std::this_thread::sleep_for(100ms);
    EXPECT_EQ(int(first.woke) + int(second.woke), 1) << "signal, not broadcast";
    // The flag stays set: a new wait returns at once.
    EXPECT_EQ(velatrix_event_wait(&event), 0);
    velatrix_event_trigger(&event);
    EXPECT_TRUE(eventually(first.woke));
    EXPECT_TRUE(eventually(second.woke));
    velatrix_thread_join(first.thread);
    velatrix_thread_join(second.thread);
    velatrix_event_destroy(&event);
}

TEST(Mutex, SerialisesTwoThreads) {
    velatrix_mutex mutex;
    ASSERT_EQ(velatrix_mutex_init(&mutex), 0);
    struct Shared {
        velatrix_mutex* mutex;
        long counter = 0;
    } shared{&mutex};
    auto body = [](void* arg) -> void* {
        auto* s = static_cast<Shared*>(arg);
        for (int i = 0; i < 10000; ++i) {
            velatrix_mutex_lock(s->mutex);
            ++s->counter;
            velatrix_mutex_unlock(s->mutex);
        }
        return nullptr;
    };
    velatrix_thread a, b;
    velatrix_thread_init(&a, body, &shared);
    velatrix_thread_init(&b, body, &shared);
    velatrix_thread_join(a);
    velatrix_thread_join(b);
    EXPECT_EQ(shared.counter, 20000);
    EXPECT_EQ(velatrix_mutex_destroy(&mutex), 0);
}

TEST(Ticks, FollowsTheWallClockInMilliseconds) {
    const uint32_t before = velatrix_get_ticks();
    std::this_thread::sleep_for(120ms);
    const uint32_t elapsed = velatrix_get_ticks() - before;  // unsigned: survives a wrap
    EXPECT_GE(elapsed, 115u);
    EXPECT_LT(elapsed, 2000u);
    const auto now = std::chrono::system_clock::now().time_since_epoch();
    const auto expected = static_cast<uint32_t>(std::chrono::duration_cast<std::chrono::milliseconds>(now).count());
    EXPECT_LT(uint32_t(expected - velatrix_get_ticks() + 50u), 100u);
}

TEST(Event, DestroyReleasesEveryWaiter) {
    for (int round = 0; round < 20; ++round) {
        velatrix_event event;
        velatrix_event_init(&event);
        Waiter a{&event}, b{&event};
        a.start();
        b.start();
        for (bool both = false; !both; std::this_thread::sleep_for(1ms)) {
            velatrix_mutex_lock(&event.mutex);
            both = event.waiters == 2;
            velatrix_mutex_unlock(&event.mutex);
        }
        velatrix_event_destroy(&event);
        velatrix_thread_join(a.thread);
        velatrix_thread_join(b.thread);
        EXPECT_TRUE(a.woke && b.woke);
        EXPECT_EQ(event.waiters, 0u);
        EXPECT_EQ(event.signalled, 0);
    }
}

}  // namespace
