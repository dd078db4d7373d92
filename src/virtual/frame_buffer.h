// The pad's display memory: what the panel shows, at the panel's own colour
// depth, written by display chunks (report 103) and by the pad drawing its
// regions, and read back through the pixel reports (104, 105).
#pragma once

#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "virtual/regions.h"

namespace velatrix::virtual_pad {

inline constexpr std::size_t kChunkHeader = 10;
inline constexpr std::size_t kChunkReportLength = 2049;
inline constexpr std::size_t kPixelEntries = 256;

class FrameBuffer {
public:
    FrameBuffer(uint16_t width, uint16_t height, uint8_t color_depth);

    uint16_t width() const { return width_; }
    uint16_t height() const { return height_; }
    uint8_t color_depth() const { return depth_; }

    // 0xRRGGBBFF; white outside the panel.
    uint32_t pixel(int x, int y) const;
    // Red, green, blue per pixel, rows top to bottom.
    const std::vector<uint8_t>& rgb() const { return rgb_; }

    // Stores a colour as the panel can show it: black or white on a 1-bit
    // panel, one of 16 greys on a 4- or 8-bit one, as given otherwise.
    void set(int x, int y, uint8_t red, uint8_t green, uint8_t blue);
    void clear();
    void draw_region(const Region& region);

    // Decodes one chunk report; false with `error` when the chunk is refused
    // (a depth the firmware does not know, or more pixels than the report
    // can carry). Pixels outside the panel are dropped.
    bool write_chunk(std::span<const uint8_t> report, std::string& error);
    // Pixel read answer for the row from (x, y): up to 256 pixels, each
    // red, green, blue, alpha.
    void encode_pixels(uint16_t x, uint16_t y, std::span<uint8_t> report) const;

private:
    uint16_t width_;
    uint16_t height_;
    uint8_t depth_;
    std::vector<uint8_t> rgb_;
};

}  // namespace velatrix::virtual_pad
