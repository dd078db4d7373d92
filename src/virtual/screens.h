// The pad's screens: lists of regions shown together, each with the screen
// that choosing one of its regions leads to (reports 0xA0 to 0xA4, 0xAB).
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <span>
#include <string>

namespace velatrix::virtual_pad {

// Entries of a screen's two lists that the screen report carries.
inline constexpr std::size_t kScreenListLength = 30;

struct Screen {
    uint8_t number = 0;
    bool reset_timeout_on_activity = false;
    std::array<uint8_t, 14> reserved{};
    uint8_t timeout = 0;
    uint8_t timeout_next_screen = 0;
    // As written; the lists hold at most kScreenListLength entries.
    uint8_t region_count = 0;
    std::array<uint8_t, kScreenListLength> regions{};
    std::array<uint8_t, kScreenListLength> next_screens{};

    std::size_t entries() const { return region_count < kScreenListLength ? region_count : kScreenListLength; }
};

class ScreenStore {
public:
    explicit ScreenStore(std::size_t capacity) : capacity_(capacity) {}

    const std::map<uint8_t, Screen>& screens() const { return screens_; }
    const Screen* find(uint8_t number) const;
    std::size_t capacity() const { return capacity_; }

    // Stores a screen; false (with `error`) when the store is full.
    bool put(const Screen& screen, std::string& error);
    bool erase(uint8_t number) { return screens_.erase(number) != 0; }

    // 0xA2 answer for screen `number`: an absent screen reads as an empty
    // screen of that number.
    void encode(uint8_t number, std::span<uint8_t> report) const;
    static Screen decode(std::span<const uint8_t> report);

    // 0xA4 edit command; false with `error` when it cannot be applied.
    bool edit(std::span<const uint8_t> report, std::string& error);

    // Regions removed from the pad leave every screen.
    void drop_region(uint8_t region);

private:
    std::size_t capacity_;
    std::map<uint8_t, Screen> screens_;
};

}  // namespace velatrix::virtual_pad
