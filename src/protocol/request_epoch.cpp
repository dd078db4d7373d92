#include "protocol/request_epoch.h"

#include <atomic>
#include <mutex>

namespace velatrix::protocol {
namespace {

// Slots are claimed once and never given back: a record freed and another
// allocated at the same address shares the slot, and the close between
// them has already moved the count on.
struct Slot {
    std::atomic<const velatrix_device*> device{nullptr};
    std::atomic<uint64_t> epoch{0};
};

constexpr uint32_t kSlots = 64;
Slot slots[kSlots];
std::atomic<uint32_t> used{0};
std::mutex claiming;

Slot* find(const velatrix_device* device) {
    const uint32_t count = used.load(std::memory_order_acquire);
    for (uint32_t i = 0; i < count; ++i) {
        if (slots[i].device.load(std::memory_order_relaxed) == device) return &slots[i];
    }
    return nullptr;
}

}  // namespace

uint64_t request_epoch(const velatrix_device* device) {
    Slot* slot = find(device);
    if (slot == nullptr) {
        const std::lock_guard lock(claiming);
        slot = find(device);
        const uint32_t count = used.load(std::memory_order_relaxed);
        if (slot == nullptr && count < kSlots) {
            slot = &slots[count];
            slot->device.store(device, std::memory_order_relaxed);
            used.store(count + 1, std::memory_order_release);
        }
    }
    return slot == nullptr ? kUntracked : slot->epoch.load(std::memory_order_acquire);
}

void note_request(const velatrix_device* device) {
    if (used.load(std::memory_order_relaxed) == 0) return;
    if (Slot* slot = find(device)) slot->epoch.fetch_add(1, std::memory_order_acq_rel);
}

}  // namespace velatrix::protocol
