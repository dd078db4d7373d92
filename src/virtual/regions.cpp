#include "virtual/regions.h"

#include <algorithm>

#include "virtual/wire.h"

namespace velatrix::virtual_pad {

namespace {

// Region block of the table view, offsets from the block's first byte.
constexpr std::size_t kBlockFlags = 2;
constexpr std::size_t kBlockRect = 8;
constexpr std::size_t kBlockForeground = 16;
constexpr std::size_t kBlockBackground = 20;
constexpr std::size_t kBlockSpecific = 24;
constexpr std::size_t kBlockCaption = 28;

// Device-region contents report, offsets from the report id.
constexpr std::size_t kContentsFlags = 3;
constexpr std::size_t kContentsReserved2 = 5;
constexpr std::size_t kContentsRect = 13;
constexpr std::size_t kContentsForeground = 21;
constexpr std::size_t kContentsBackground = 25;
constexpr std::size_t kContentsSpecific = 29;
constexpr std::size_t kContentsCaption = 33;

Rgba read_rgba(const Incoming& in, std::size_t at) { return {in.u8(at), in.u8(at + 1), in.u8(at + 2), in.u8(at + 3)}; }

void write_rgba(Outgoing& out, std::size_t at, const Rgba& colour) { out.bytes(at, colour); }

void read_rect(const Incoming& in, std::size_t at, Region& region) {
    region.x1 = in.le16(at);
    region.x2 = in.le16(at + 2);
    region.y1 = in.le16(at + 4);
    region.y2 = in.le16(at + 6);
}

void write_rect(Outgoing& out, std::size_t at, const Region& region) {
    out.le16(at, region.x1);
    out.le16(at + 2, region.x2);
    out.le16(at + 4, region.y1);
    out.le16(at + 6, region.y2);
}

uint8_t bits(std::initializer_list<bool> flags) {
    uint8_t value = 0;
    unsigned bit = 0;
    for (bool flag : flags) {
        if (flag) value = static_cast<uint8_t>(value | (1u << bit));
        ++bit;
    }
    return value;
}

}  // namespace

std::string Region::caption_text() const {
    auto end = std::find(caption.begin(), caption.end(), uint8_t{0});
    return std::string(caption.begin(), end);
}

RegionStore::RegionStore(uint8_t slot_count, uint8_t max_caption_length, std::vector<Region> defaults)
    : max_caption_length_(max_caption_length), slots_(slot_count), defaults_(slot_count) {
    for (uint8_t i = 0; i < slot_count; ++i) {
        slots_[i].number = defaults_[i].number = static_cast<uint8_t>(i + 1);
    }
    for (Region& region : defaults) {
        if (region.number == 0 || region.number > slot_count) continue;
        region.caption.resize(std::min<std::size_t>(region.caption.size(), max_caption_length + 1u));
        defaults_[region.number - 1] = region;
        slots_[region.number - 1] = region;
    }
}

const Region* RegionStore::find(uint8_t number) const {
    if (number == 0 || number > slots_.size()) return nullptr;
    return &slots_[number - 1];
}

Region* RegionStore::find(uint8_t number) {
    return const_cast<Region*>(static_cast<const RegionStore*>(this)->find(number));
}

uint8_t RegionStore::highest_in_use() const {
    for (std::size_t i = slots_.size(); i > 0; --i) {
        if (slots_[i - 1].in_use) return static_cast<uint8_t>(i);
    }
    return 0;
}

void RegionStore::encode_block(const Region& region, std::span<uint8_t> block) const {
    Outgoing out(block);
    out.fill(0, block.size(), 0);
    out.u8(0, region.number);
    out.u8(1, region.type);
    out.u8(kBlockFlags, bits({region.accept_touch, region.decode, region.visible, region.in_use, region.has_frame}));
    out.u8(3, region.reserved1);
    out.bytes(4, std::span(region.reserved2).first(4));
    write_rect(out, kBlockRect, region);
    write_rgba(out, kBlockForeground, region.foreground);
    write_rgba(out, kBlockBackground, region.background);
    switch (region.type) {
    case kContainer:
        out.u8(kBlockSpecific, static_cast<uint8_t>(region.ink_enabled | ((region.ink_width & 3u) << 1)));
        out.u8(kBlockSpecific + 1, region.specific_reserved[0]);
        break;
    case kButton:
        out.u8(kBlockSpecific, region.parent);
        out.u8(kBlockSpecific + 1, bits({region.enable, region.highlight_on_select, region.clear_on_select}));
        out.bytes(kBlockCaption, std::span(region.caption).first(
                                     std::min<std::size_t>(region.caption.size(), max_caption_length_ + 1u)));
        break;
    case kLine:
        out.u8(kBlockSpecific, region.parent);
        out.u8(kBlockSpecific + 1, region.line_width);
        break;
    default:
        // The table generation knows no further types: their part stays zero.
        return;
    }
    out.u8(kBlockSpecific + 2, region.specific_reserved[2]);
    out.u8(kBlockSpecific + 3, region.specific_reserved[3]);
}

Region RegionStore::decode_block(std::span<const uint8_t> block) const {
    Incoming in(block);
    Region region;
    region.number = in.u8(0);
    region.type = in.u8(1);
    region.accept_touch = in.bit(kBlockFlags, 0);
    region.decode = in.bit(kBlockFlags, 1);
    region.visible = in.bit(kBlockFlags, 2);
    region.in_use = in.bit(kBlockFlags, 3);
    region.has_frame = in.bit(kBlockFlags, 4);
    region.reserved1 = in.u8(3);
    for (std::size_t i = 0; i < 4; ++i) region.reserved2[i] = in.u8(4 + i);
    read_rect(in, kBlockRect, region);
    region.foreground = read_rgba(in, kBlockForeground);
    region.background = read_rgba(in, kBlockBackground);
    region.specific_reserved[2] = in.u8(kBlockSpecific + 2);
    region.specific_reserved[3] = in.u8(kBlockSpecific + 3);
    switch (region.type) {
    case kContainer:
        region.ink_enabled = in.bit(kBlockSpecific, 0);
        region.ink_width = static_cast<uint8_t>((in.u8(kBlockSpecific) >> 1) & 3u);
        region.specific_reserved[0] = in.u8(kBlockSpecific + 1);
        break;
    case kButton: {
        region.parent = in.u8(kBlockSpecific);
        region.enable = in.bit(kBlockSpecific + 1, 0);
        region.highlight_on_select = in.bit(kBlockSpecific + 1, 1);
        region.clear_on_select = in.bit(kBlockSpecific + 1, 2);
        auto caption = in.bytes(kBlockCaption, max_caption_length_ + 1u);
        region.caption.assign(caption.begin(), caption.end());
        break;
    }
    case kLine:
        region.parent = in.u8(kBlockSpecific);
        region.line_width = in.u8(kBlockSpecific + 1);
        break;
    default:
        break;
    }
    return region;
}

void RegionStore::encode_table(std::span<uint8_t> report, bool defaults) const {
    const std::vector<Region>& source = defaults ? defaults_ : slots_;
    std::size_t at = 1;
    for (const Region& region : source) {
        if (at >= report.size()) break;
        std::size_t length = std::min(block_length(), report.size() - at);
        std::vector<uint8_t> block(block_length());
        encode_block(region, block);
        std::copy_n(block.begin(), length, report.begin() + static_cast<std::ptrdiff_t>(at));
        at += block_length();
    }
}

std::optional<uint8_t> RegionStore::write_table_region(std::span<const uint8_t> report) {
    if (report.size() < 2) return std::nullopt;
    Region region = decode_block(report.subspan(1));
    Region* slot = find(region.number);
    if (slot == nullptr) return std::nullopt;
    // Settings only the device-region view carries survive a table write.
    region.output_to_host = slot->output_to_host;
    for (std::size_t i = 4; i < 8; ++i) region.reserved2[i] = slot->reserved2[i];
    *slot = region;
    return region.number;
}

std::optional<uint8_t> RegionStore::update_region(std::span<const uint8_t> report) {
    Incoming in(report);
    Region* slot = find(in.u8(1));
    if (slot == nullptr) return std::nullopt;
    bool enable = in.bit(2, 0);
    slot->visible = in.bit(2, 1);
    if (slot->type == kContainer) slot->ink_enabled = enable;
    if (slot->type == kButton) slot->enable = enable;
    slot->foreground = read_rgba(in, 4);
    return slot->number;
}

bool RegionStore::erase(uint8_t number) {
    Region* slot = find(number);
    if (slot == nullptr) return false;
    *slot = Region{};
    slot->number = number;
    return true;
}

void RegionStore::encode_contents(uint8_t number, std::span<uint8_t> report) const {
    const Region* region = find(number);
    Outgoing out(report);
    out.fill(1, report.size(), 0);
    if (region == nullptr) return;
    out.u8(1, region->number);
    out.u8(2, region->type);
    out.u8(kContentsFlags, static_cast<uint8_t>(bits({region->accept_touch, region->decode, region->has_frame}) |
                                                (region->output_to_host ? 0x40 : 0)));
    out.u8(4, region->reserved1);
    out.bytes(kContentsReserved2, region->reserved2);
    write_rect(out, kContentsRect, *region);
    write_rgba(out, kContentsForeground, region->foreground);
    write_rgba(out, kContentsBackground, region->background);
    const std::size_t s = kContentsSpecific;
    switch (region->type) {
    case kContainer:
        out.u8(s, region->ink_enabled);
        out.u8(s + 1, region->ink_width);
        out.u8(s + 2, region->specific_reserved[0]);
        out.u8(s + 3, region->specific_reserved[1]);
        break;
    case kButton:
        out.u8(s, bits({region->enable, region->highlight_on_select, region->clear_on_select,
                        region->confirm_on_select, region->use_resource}));
        if (region->use_resource) {
            out.u8(kContentsCaption, region->resource_normal);
            out.u8(kContentsCaption + 1, region->resource_selected);
        } else {
            out.bytes(kContentsCaption, std::span(region->caption).first(std::min<std::size_t>(
                                            region->caption.size(), max_caption_length_ + 1u)));
        }
        break;
    case kLine:
        out.u8(s, region->parent);
        out.u8(s + 1, region->line_width);
        break;
    case kGraphic:
        out.u8(s + 1, region->resource_number);
        out.u8(s + 2, static_cast<uint8_t>((region->horizontal_justification & 15u) |
                                           (region->vertical_justification << 4)));
        break;
    case kText:
        out.u8(s + 1, region->resource_number);
        out.u8(s + 2, region->font_number);
        out.u8(s + 3, static_cast<uint8_t>((region->horizontal_justification & 15u) |
                                           (region->vertical_justification << 4)));
        break;
    default:
        break;
    }
}

std::optional<uint8_t> RegionStore::write_contents(std::span<const uint8_t> report) {
    Incoming in(report);
    Region* slot = find(in.u8(1));
    if (slot == nullptr) return std::nullopt;
    Region region;
    region.number = in.u8(1);
    region.type = in.u8(2);
    region.accept_touch = in.bit(kContentsFlags, 0);
    region.decode = in.bit(kContentsFlags, 1);
    region.has_frame = in.bit(kContentsFlags, 2);
    region.output_to_host = in.bit(kContentsFlags, 6);
    // A region written one at a time is part of the pad's user interface
    // from then on; this generation has no separate visible or in-use flag.
    region.visible = true;
    region.in_use = true;
    region.reserved1 = in.u8(4);
    for (std::size_t i = 0; i < 8; ++i) region.reserved2[i] = in.u8(kContentsReserved2 + i);
    read_rect(in, kContentsRect, region);
    region.foreground = read_rgba(in, kContentsForeground);
    region.background = read_rgba(in, kContentsBackground);
    const std::size_t s = kContentsSpecific;
    switch (region.type) {
    case kContainer:
        region.ink_enabled = in.u8(s) != 0;
        region.ink_width = in.u8(s + 1);
        region.specific_reserved[0] = in.u8(s + 2);
        region.specific_reserved[1] = in.u8(s + 3);
        break;
    case kButton:
        region.enable = in.bit(s, 0);
        region.highlight_on_select = in.bit(s, 1);
        region.clear_on_select = in.bit(s, 2);
        region.confirm_on_select = in.bit(s, 3);
        region.use_resource = in.bit(s, 4);
        if (region.use_resource) {
            region.resource_normal = in.u8(kContentsCaption);
            region.resource_selected = in.u8(kContentsCaption + 1);
        } else {
            auto caption = in.bytes(kContentsCaption, max_caption_length_ + 1u);
            region.caption.assign(caption.begin(), caption.end());
        }
        break;
    case kLine:
        region.parent = in.u8(s);
        region.line_width = in.u8(s + 1);
        break;
    case kGraphic:
        region.resource_number = in.u8(s + 1);
        region.horizontal_justification = in.u8(s + 2) & 15u;
        region.vertical_justification = static_cast<uint8_t>(in.u8(s + 2) >> 4);
        break;
    case kText:
        region.resource_number = in.u8(s + 1);
        region.font_number = in.u8(s + 2);
        region.horizontal_justification = in.u8(s + 3) & 15u;
        region.vertical_justification = static_cast<uint8_t>(in.u8(s + 3) >> 4);
        break;
    default:
        break;
    }
    *slot = region;
    return region.number;
}

uint8_t RegionStore::hit(uint16_t x, uint16_t y) const {
    uint8_t found = 0;
    for (const Region& region : slots_) {
        if (!region.visible || !region.contains(x, y)) continue;
        if (region.type == kButton) return region.number;
        if (found == 0) found = region.number;
    }
    return found;
}

}  // namespace velatrix::virtual_pad
