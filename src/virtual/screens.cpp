#include "virtual/screens.h"

#include <algorithm>

#include "virtual/wire.h"

namespace velatrix::virtual_pad {

namespace {
constexpr std::size_t kFlags = 2;
constexpr std::size_t kReserved = 3;
constexpr std::size_t kTimeout = 17;
constexpr std::size_t kTimeoutNext = 18;
constexpr std::size_t kCount = 19;
constexpr std::size_t kRegions = 20;
constexpr std::size_t kNextScreens = 50;

// Edit-screen command.
constexpr std::size_t kEditFlags = 7;
constexpr std::size_t kEditScreen = 8;
constexpr std::size_t kEditRegion = 9;
constexpr std::size_t kEditRegionNext = 10;
constexpr std::size_t kEditTimeout = 11;
constexpr std::size_t kEditTimeoutNext = 12;
}  // namespace

const Screen* ScreenStore::find(uint8_t number) const {
    auto it = screens_.find(number);
    return it == screens_.end() ? nullptr : &it->second;
}

bool ScreenStore::put(const Screen& screen, std::string& error) {
    if (!screens_.contains(screen.number) && screens_.size() >= capacity_) {
        error = "Screen storage full";
        return false;
    }
    screens_[screen.number] = screen;
    return true;
}

void ScreenStore::encode(uint8_t number, std::span<uint8_t> report) const {
    Outgoing out(report);
    out.fill(1, report.size(), 0);
    out.u8(1, number);
    const Screen* screen = find(number);
    if (screen == nullptr) return;
    out.u8(kFlags, screen->reset_timeout_on_activity ? 0x10 : 0);
    out.bytes(kReserved, screen->reserved);
    out.u8(kTimeout, screen->timeout);
    out.u8(kTimeoutNext, screen->timeout_next_screen);
    out.u8(kCount, screen->region_count);
    out.bytes(kRegions, std::span(screen->regions).first(screen->entries()));
    out.bytes(kNextScreens, std::span(screen->next_screens).first(screen->entries()));
}

Screen ScreenStore::decode(std::span<const uint8_t> report) {
    Incoming in(report);
    Screen screen;
    screen.number = in.u8(1);
    screen.reset_timeout_on_activity = in.bit(kFlags, 4);
    for (std::size_t i = 0; i < screen.reserved.size(); ++i) screen.reserved[i] = in.u8(kReserved + i);
    screen.timeout = in.u8(kTimeout);
    screen.timeout_next_screen = in.u8(kTimeoutNext);
    screen.region_count = in.u8(kCount);
    for (std::size_t i = 0; i < screen.entries(); ++i) {
        screen.regions[i] = in.u8(kRegions + i);
        screen.next_screens[i] = in.u8(kNextScreens + i);
    }
    return screen;
}

bool ScreenStore::edit(std::span<const uint8_t> report, std::string& error) {
    Incoming in(report);
    auto it = screens_.find(in.u8(kEditScreen));
    if (it == screens_.end()) {
        error = "Screen " + std::to_string(in.u8(kEditScreen)) + " does not exist";
        return false;
    }
    Screen& screen = it->second;
    // The count may claim more entries than the lists hold; editing works
    // on the entries that are there.
    screen.region_count = static_cast<uint8_t>(screen.entries());
    uint8_t region = in.u8(kEditRegion);
    auto begin = screen.regions.begin();
    auto end = begin + screen.region_count;
    auto found = std::find(begin, end, region);
    if (in.bit(kEditFlags, 0)) {
        if (found == end) {
            if (screen.region_count >= kScreenListLength) {
                error = "Screen region list full";
                return false;
            }
            found = end;
            ++screen.region_count;
        }
        *found = region;
        screen.next_screens[static_cast<std::size_t>(found - begin)] = in.u8(kEditRegionNext);
    } else if (in.bit(kEditFlags, 1) && found != end) {
        std::size_t at = static_cast<std::size_t>(found - begin);
        for (std::size_t i = at; i + 1 < screen.region_count; ++i) {
            screen.regions[i] = screen.regions[i + 1];
            screen.next_screens[i] = screen.next_screens[i + 1];
        }
        --screen.region_count;
        screen.regions[screen.region_count] = 0;
        screen.next_screens[screen.region_count] = 0;
    }
    if (in.bit(kEditFlags, 2)) {
        screen.timeout = in.u8(kEditTimeout);
        screen.timeout_next_screen = in.u8(kEditTimeoutNext);
    }
    return true;
}

void ScreenStore::drop_region(uint8_t region) {
    for (auto& [number, screen] : screens_) {
        std::size_t kept = 0;
        std::size_t entries = screen.entries();
        for (std::size_t i = 0; i < entries; ++i) {
            if (screen.regions[i] == region) continue;
            screen.regions[kept] = screen.regions[i];
            screen.next_screens[kept] = screen.next_screens[i];
            ++kept;
        }
        if (kept == entries) continue;
        for (std::size_t i = kept; i < entries; ++i) screen.regions[i] = screen.next_screens[i] = 0;
        screen.region_count = static_cast<uint8_t>(kept);
    }
}

}  // namespace velatrix::virtual_pad
