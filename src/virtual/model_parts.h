// Building blocks the model files describe their factory regions with.
#pragma once

#include <string_view>

#include "virtual/regions.h"

namespace velatrix::virtual_pad::parts {

inline constexpr Rgba kBlack{0, 0, 0, 255};
inline constexpr Rgba kWhite{255, 255, 255, 255};

inline Region base(uint8_t number, uint8_t type, uint16_t x1, uint16_t x2, uint16_t y1, uint16_t y2) {
    Region region;
    region.number = number;
    region.type = type;
    region.accept_touch = true;
    region.visible = true;
    region.in_use = true;
    region.x1 = x1;
    region.x2 = x2;
    region.y1 = y1;
    region.y2 = y2;
    region.foreground = kBlack;
    region.background = kWhite;
    return region;
}

// The area that collects ink.
inline Region container(uint8_t number, uint16_t x1, uint16_t x2, uint16_t y1, uint16_t y2, uint8_t ink_width) {
    Region region = base(number, kContainer, x1, x2, y1, y2);
    region.ink_enabled = true;
    region.ink_width = ink_width;
    return region;
}

// The line a signature is written on.
inline Region line(uint8_t number, uint8_t parent, uint16_t x1, uint16_t x2, uint16_t y1, uint16_t y2,
                   uint8_t width) {
    Region region = base(number, kLine, x1, x2, y1, y2);
    region.accept_touch = false;
    region.parent = parent;
    region.line_width = width;
    return region;
}

inline Region button(uint8_t number, uint16_t x1, uint16_t x2, uint16_t y1, uint16_t y2, std::string_view caption) {
    Region region = base(number, kButton, x1, x2, y1, y2);
    region.has_frame = true;
    region.enable = true;
    region.highlight_on_select = true;
    region.caption.assign(caption.begin(), caption.end());
    region.caption.push_back(0);
    return region;
}

}  // namespace velatrix::virtual_pad::parts
