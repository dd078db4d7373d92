// Sending bitmaps to the pad's display as chunks of packed pixels.
#include <algorithm>
#include <cmath>
#include <cstring>

#include "velatrix/display.h"
#include "velatrix/transport.h"

#include "debug/log.h"
#include "display/chunk_layout.h"
#include "graphics/pixels.h"
#include "protocol/report_index.h"

namespace {

using namespace velatrix::protocol;

constexpr ReportEntry kChunkReport = report(report_id::kDisplayChunk);
constexpr ReportEntry kContentReport = report(report_id::kDisplayContent);
constexpr size_t kHeaderLength = 10;
static_assert(kHeaderLength + VELATRIX_DISPLAY_CHUNK_DATA_SIZE == kChunkReport.length);

void put_big_endian(uint8_t* buffer, size_t offset, uint16_t value) {
    buffer[offset] = static_cast<uint8_t>(value >> 8);
    buffer[offset + 1] = static_cast<uint8_t>(value);
}

// Appends pixels to a chunk's data area in the pad's packings. Writes past
// the data area are dropped: a depth the sizing did not plan for (anything
// but 1, 4, 8 or 24) cannot overrun the chunk.
class PixelPacker {
public:
    PixelPacker(uint8_t* data, size_t capacity, uint8_t bits) : data_(data), capacity_(capacity), bits_(bits) {}

    void append(uint32_t color) {
        const uint32_t red = color >> 24, green = (color >> 16) & 0xFF, blue = (color >> 8) & 0xFF;
        switch (bits_) {
            case 1: {
                const bool dark = (red + green + blue) / 3 < 128;
                if (dark) set_bits(count_ / 8, static_cast<uint8_t>(0x80 >> (count_ % 8)));
                break;
            }
            case 4:
            case 8: {
                // 8 bits per pixel is packed as 4-bit levels although the
                // header says 8: the pad's firmware expects exactly this.
                const auto level = static_cast<uint8_t>(std::lround((red + green + blue) / 3.0 / 255.0 * 15.0));
                set_bits(count_ / 2, static_cast<uint8_t>(count_ % 2 == 0 ? level : level << 4));
                break;
            }
            default:
                set_bits(count_ * 3, static_cast<uint8_t>(red));
                set_bits(count_ * 3 + 1, static_cast<uint8_t>(green));
                set_bits(count_ * 3 + 2, static_cast<uint8_t>(blue));
                break;
        }
        ++count_;
    }

private:
    void set_bits(size_t index, uint8_t value) {
        if (index < capacity_) data_[index] |= value;
    }

    uint8_t* data_;
    size_t capacity_;
    uint8_t bits_;
    size_t count_ = 0;
};

}  // namespace

extern "C" {

int velatrix_set_display_content(velatrix_device* device, uint32_t content) {
    VELATRIX_TRACE_FUNCTION();
    uint8_t buffer[kContentReport.length] = {report_id::kDisplayContent, static_cast<uint8_t>(content)};
    if (!wait_for_interlock(device, kContentReport.set_before.sleep, kContentReport.set_before.mask)) return 0;
    return velatrix_hid_set_feature_report(device, buffer, sizeof buffer) == 1 ? 1 : 0;
}

int velatrix_set_display_chunk(velatrix_device* device, velatrix_display_chunk chunk) {
    VELATRIX_TRACE_FUNCTION();
    uint8_t buffer[kChunkReport.length] = {chunk.report_id};
    put_big_endian(buffer, 1, chunk.x);
    put_big_endian(buffer, 3, chunk.y);
    put_big_endian(buffer, 5, chunk.width);
    put_big_endian(buffer, 7, chunk.height);
    buffer[9] = chunk.bits_per_pixel;
    std::memcpy(buffer + kHeaderLength, chunk.data, sizeof chunk.data);
    if (!wait_for_interlock(device, kChunkReport.set_before.sleep, kChunkReport.set_before.mask)) return 0;
    return velatrix_hid_set_feature_report(device, buffer, sizeof buffer) == 1 ? 1 : 0;
}

int velatrix_transfer_bitmap_to_device(velatrix_device* device, const velatrix_bitmap* bitmap, uint32_t x, uint32_t y,
                                       uint8_t bits_per_pixel) {
    VELATRIX_TRACE_FUNCTION();
    if (!velatrix::graphics::usable_bitmap(bitmap)) return 0;
    const auto width = static_cast<uint32_t>(std::max(bitmap->width, 0));
    const auto height = static_cast<uint32_t>(std::max(bitmap->height, 0));
    const auto shape = velatrix::display::chunk_shape(width, height, bits_per_pixel);
    if (shape.width == 0 || shape.height == 0) return 1;
    velatrix_display_chunk chunk{};
    for (uint32_t cx = 0; cx < width; cx += shape.width) {
        for (uint32_t cy = 0; cy < height; cy += shape.height) {
            chunk.report_id = report_id::kDisplayChunk;
            chunk.x = static_cast<uint16_t>(x + cx);
            chunk.y = static_cast<uint16_t>(y + cy);
            chunk.width = static_cast<uint16_t>(std::min(shape.width, width - cx));
            chunk.height = static_cast<uint16_t>(std::min(shape.height, height - cy));
            chunk.bits_per_pixel = bits_per_pixel;
            std::memset(chunk.data, 0, sizeof chunk.data);
            PixelPacker packer(chunk.data, sizeof chunk.data, bits_per_pixel);
            // Column by column: the pad fills its display memory that way.
            for (uint32_t px = cx; px < cx + chunk.width; ++px) {
                for (uint32_t py = cy; py < cy + chunk.height; ++py) {
                    packer.append(velatrix_get_pixel(bitmap, static_cast<int32_t>(px), static_cast<int32_t>(py)));
                }
            }
            if (!velatrix_set_display_chunk(device, chunk)) return 0;
        }
    }
    return 1;
}

}  // extern "C"
