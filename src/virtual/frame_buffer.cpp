#include "virtual/frame_buffer.h"

#include <algorithm>
#include <cmath>

#include "virtual/wire.h"

namespace velatrix::virtual_pad {

namespace {
constexpr std::size_t kChunkData = kChunkReportLength - kChunkHeader;
}  // namespace

FrameBuffer::FrameBuffer(uint16_t width, uint16_t height, uint8_t color_depth)
    : width_(width), height_(height), depth_(color_depth), rgb_(std::size_t{width} * height * 3, 0xFF) {}

uint32_t FrameBuffer::pixel(int x, int y) const {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return 0xFFFFFFFFu;
    std::size_t at = (static_cast<std::size_t>(y) * width_ + static_cast<std::size_t>(x)) * 3;
    return (static_cast<uint32_t>(rgb_[at]) << 24) | (static_cast<uint32_t>(rgb_[at + 1]) << 16) |
           (static_cast<uint32_t>(rgb_[at + 2]) << 8) | 0xFFu;
}

void FrameBuffer::set(int x, int y, uint8_t red, uint8_t green, uint8_t blue) {
    if (x < 0 || y < 0 || x >= width_ || y >= height_) return;
    if (depth_ < 16) {
        int grey = (red + green + blue) / 3;
        uint8_t shown = 0;
        if (depth_ == 1) {
            shown = grey < 128 ? 0 : 255;
        } else {
            shown = static_cast<uint8_t>(static_cast<int>(std::lround(grey * 15.0 / 255.0)) * 17);
        }
        red = green = blue = shown;
    }
    std::size_t at = (static_cast<std::size_t>(y) * width_ + static_cast<std::size_t>(x)) * 3;
    rgb_[at] = red;
    rgb_[at + 1] = green;
    rgb_[at + 2] = blue;
}

void FrameBuffer::clear() { std::fill(rgb_.begin(), rgb_.end(), uint8_t{0xFF}); }

void FrameBuffer::draw_region(const Region& region) {
    if (!region.in_use || !region.visible) return;
    int x1 = std::min(region.x1, region.x2), x2 = std::max(region.x1, region.x2);
    int y1 = std::min(region.y1, region.y2), y2 = std::max(region.y1, region.y2);
    x2 = std::min(x2, width_ - 1);
    y2 = std::min(y2, height_ - 1);
    const Rgba& bg = region.background;
    if (bg[3] != 0) {
        for (int y = y1; y <= y2; ++y) {
            for (int x = x1; x <= x2; ++x) set(x, y, bg[0], bg[1], bg[2]);
        }
    }
    if (region.has_frame) {
        const Rgba& fg = region.foreground;
        for (int x = x1; x <= x2; ++x) {
            set(x, y1, fg[0], fg[1], fg[2]);
            set(x, y2, fg[0], fg[1], fg[2]);
        }
        for (int y = y1; y <= y2; ++y) {
            set(x1, y, fg[0], fg[1], fg[2]);
            set(x2, y, fg[0], fg[1], fg[2]);
        }
    }
}

bool FrameBuffer::write_chunk(std::span<const uint8_t> report, std::string& error) {
    Incoming in(report);
    const int left = in.be16(1);
    const int top = in.be16(3);
    const std::size_t width = in.be16(5);
    const std::size_t height = in.be16(7);
    const unsigned bits = in.u8(9);
    // Depth 8 has always been taken as the 4-bit grey packing.
    if (bits != 1 && bits != 4 && bits != 8 && bits != 24) {
        error = "Unsupported bits per pixel: " + std::to_string(bits);
        return false;
    }
    const unsigned packed_bits = bits == 8 ? 4 : bits;
    const std::size_t pixels = width * height;
    if (pixels * packed_bits > kChunkData * 8) {
        error = "Display chunk larger than its report";
        return false;
    }
    for (std::size_t i = 0; i < pixels; ++i) {
        // Pixels run down each column, columns left to right.
        const int x = left + static_cast<int>(i / height);
        const int y = top + static_cast<int>(i % height);
        const std::size_t data = kChunkHeader;
        switch (packed_bits) {
        case 1: {
            bool dark = (in.u8(data + i / 8) >> (7 - i % 8)) & 1u;
            uint8_t level = dark ? 0 : 255;
            set(x, y, level, level, level);
            break;
        }
        case 4: {
            uint8_t byte = in.u8(data + i / 2);
            uint8_t level = static_cast<uint8_t>((i % 2 == 0 ? byte & 0x0F : byte >> 4) * 17);
            set(x, y, level, level, level);
            break;
        }
        default:
            set(x, y, in.u8(data + 3 * i), in.u8(data + 3 * i + 1), in.u8(data + 3 * i + 2));
            break;
        }
    }
    return true;
}

void FrameBuffer::encode_pixels(uint16_t x, uint16_t y, std::span<uint8_t> report) const {
    Outgoing out(report);
    out.fill(1, report.size(), 0);
    out.le16(1, x);
    out.le16(3, y);
    uint16_t count = 0;
    if (x < width_ && y < height_) count = static_cast<uint16_t>(std::min<std::size_t>(kPixelEntries, width_ - x));
    out.le16(5, count);
    for (uint16_t i = 0; i < count; ++i) {
        uint32_t colour = pixel(x + i, y);
        out.u8(7 + 4u * i, static_cast<uint8_t>(colour >> 24));
        out.u8(8 + 4u * i, static_cast<uint8_t>(colour >> 16));
        out.u8(9 + 4u * i, static_cast<uint8_t>(colour >> 8));
        out.u8(10 + 4u * i, static_cast<uint8_t>(colour));
    }
}

}  // namespace velatrix::virtual_pad
