// The pad's region store and its two wire views: the region table (one
// block per slot, reports 0x6E, 0x6F, 0x70, 0x71) and the device-region
// contents report (0x98). Both views read and write the same slots, so a
// region written through one is seen through the other.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velatrix::virtual_pad {

enum RegionType : uint8_t { kContainer = 0, kButton = 1, kLine = 2, kGraphic = 3, kText = 4 };

using Rgba = std::array<uint8_t, 4>;  // red, green, blue, alpha as they travel

struct Region {
    uint8_t number = 0;
    uint8_t type = kContainer;
    bool accept_touch = false;
    bool decode = false;
    bool visible = false;
    bool in_use = false;
    bool has_frame = false;
    bool output_to_host = false;
    uint8_t reserved1 = 0;
    std::array<uint8_t, 8> reserved2{};  // the table view carries the first four
    uint16_t x1 = 0, x2 = 0, y1 = 0, y2 = 0;
    Rgba foreground{};
    Rgba background{};

    // Type-specific settings, a superset of both views.
    bool ink_enabled = false;
    uint8_t ink_width = 0;
    uint8_t parent = 0;
    uint8_t line_width = 0;
    bool enable = false;
    bool highlight_on_select = false;
    bool clear_on_select = false;
    bool confirm_on_select = false;
    bool use_resource = false;
    uint8_t resource_normal = 0;
    uint8_t resource_selected = 0;
    uint8_t resource_number = 0;
    uint8_t font_number = 0;
    uint8_t horizontal_justification = 0;
    uint8_t vertical_justification = 0;
    std::array<uint8_t, 4> specific_reserved{};  // reserved bytes of the type-specific part
    std::vector<uint8_t> caption;                // as written, terminator slot included

    bool contains(uint16_t x, uint16_t y) const { return in_use && x >= x1 && x <= x2 && y >= y1 && y <= y2; }
    std::string caption_text() const;
};

class RegionStore {
public:
    RegionStore(uint8_t slot_count, uint8_t max_caption_length, std::vector<Region> defaults);

    uint8_t slot_count() const { return static_cast<uint8_t>(slots_.size()); }
    uint8_t max_caption_length() const { return max_caption_length_; }
    std::size_t block_length() const { return max_caption_length_ + 29u; }
    std::size_t table_report_length() const { return slots_.size() * block_length() + 1; }
    std::size_t set_report_length() const { return max_caption_length_ + 30u; }
    std::size_t contents_report_length() const { return max_caption_length_ + 34u; }

    // Slot of region `number` (1-based), or null when out of range.
    const Region* find(uint8_t number) const;
    Region* find(uint8_t number);
    const std::vector<Region>& slots() const { return slots_; }
    // Highest region number in use, 0 when none is.
    uint8_t highest_in_use() const;

    // Region table view. `report` spans the whole host buffer.
    void encode_table(std::span<uint8_t> report, bool defaults) const;
    // Decodes a 0x70 report; returns the region number written, or nothing
    // when the number is out of range.
    std::optional<uint8_t> write_table_region(std::span<const uint8_t> report);
    // 0x71: enable, visible and foreground of one region.
    std::optional<uint8_t> update_region(std::span<const uint8_t> report);
    bool erase(uint8_t number);

    // Device-region view (0x98).
    void encode_contents(uint8_t number, std::span<uint8_t> report) const;
    std::optional<uint8_t> write_contents(std::span<const uint8_t> report);

    // Region under a pen position for extended coordinates: a button wins
    // over the regions it lies in; otherwise the lowest-numbered region.
    uint8_t hit(uint16_t x, uint16_t y) const;

private:
    void encode_block(const Region& region, std::span<uint8_t> block) const;
    Region decode_block(std::span<const uint8_t> block) const;

    uint8_t max_caption_length_;
    std::vector<Region> slots_;
    std::vector<Region> defaults_;
};

}  // namespace velatrix::virtual_pad
