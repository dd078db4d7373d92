// The bitmap record, its BMP header, pixel access, clearing and copying.
#include <algorithm>
#include <cstdint>
#include <cstring>
#include <limits>

#include "debug/log.h"
#include "graphics/pixels.h"
#include "graphics/spans.h"

namespace velatrix::graphics {
namespace {

constexpr int64_t kInt32Max = std::numeric_limits<int32_t>::max();

int64_t row_stride(int64_t width) { return (width * 24 + 31) / 32 * 4; }

void put_le(uint8_t* at, uint32_t value, int bytes) {
    for (int i = 0; i < bytes; ++i) at[i] = static_cast<uint8_t>(value >> (8 * i));
}

}  // namespace

bool usable_bitmap(const velatrix_bitmap* bitmap) {
    const bool usable = bitmap != nullptr && bitmap->width >= 0 && bitmap->height >= 0 &&
                        (bitmap->pixels != nullptr || bitmap->width == 0 || bitmap->height == 0) &&
                        static_cast<int64_t>(bitmap->stride) >= 3 * static_cast<int64_t>(bitmap->width);
    if (!usable) VELATRIX_REPORT_ERROR("Invalid bitmap.");
    return usable;
}

}  // namespace velatrix::graphics

using namespace velatrix::graphics;

extern "C" {

int velatrix_bitmap_init(velatrix_bitmap* bitmap, uint8_t* buffer, int32_t width, int32_t height) {
    VELATRIX_TRACE_FUNCTION();
    if (bitmap == nullptr || buffer == nullptr) {
        VELATRIX_REPORT_ERROR("Bitmap or its buffer is null.");
        return 0;
    }
    // Every size must fit the record's 32-bit fields and the header's.
    const bool fits = width >= 0 && height >= 0 && (static_cast<int64_t>(width) * 24 + 31) <= kInt32Max &&
                      row_stride(width) * height + VELATRIX_BITMAP_HEADER_SIZE <= kInt32Max;
    if (!fits) {
        VELATRIX_REPORT_ERROR("Invalid bitmap size %d x %d.", width, height);
        return 0;
    }
    std::memset(bitmap, 0, sizeof *bitmap);
    bitmap->stride = static_cast<int32_t>(row_stride(width));
    bitmap->image_size = bitmap->stride * height;
    bitmap->file_size = bitmap->image_size + VELATRIX_BITMAP_HEADER_SIZE;
    bitmap->width = width;
    bitmap->height = height;
    // clear_length stays 0: the header bytes the writer skips deliberately
    // keep whatever the caller's buffer held.
    std::memset(buffer, 0, static_cast<size_t>(bitmap->clear_length));
    bitmap->data = buffer;
    bitmap->pixels = buffer + VELATRIX_BITMAP_HEADER_SIZE;
    std::memset(bitmap->pixels, 0xFF, static_cast<size_t>(bitmap->image_size));
    velatrix_bitmap_write_header(bitmap->data, bitmap->file_size, bitmap->image_size, width, height);
    return 1;
}

void velatrix_bitmap_write_header(uint8_t* data, int32_t file_size, int32_t image_size, int32_t width,
                                  int32_t height) {
    VELATRIX_TRACE_FUNCTION();
    if (data == nullptr) {
        VELATRIX_REPORT_ERROR("Bitmap header buffer is null.");
        return;
    }
    data[0] = 'B';
    data[1] = 'M';
    put_le(data + 2, static_cast<uint32_t>(file_size), 4);
    data[10] = VELATRIX_BITMAP_HEADER_SIZE;
    data[14] = 40;
    put_le(data + 18, static_cast<uint32_t>(width), 4);
    put_le(data + 22, static_cast<uint32_t>(height), 4);
    data[26] = 1;
    put_le(data + 28, 24, 2);
    put_le(data + 30, 0, 2);
    put_le(data + 34, static_cast<uint32_t>(image_size), 4);
}

// Called for every pixel drawn: no entry/leave logging here.
void velatrix_set_pixel(velatrix_bitmap* bitmap, int32_t x, int32_t y, uint32_t color) {
    put_pixel(bitmap, x, y, color);
}

uint32_t velatrix_get_pixel(const velatrix_bitmap* bitmap, int32_t x, int32_t y) { return read_pixel(bitmap, x, y); }

void velatrix_bitmap_clear(velatrix_bitmap* bitmap, uint32_t color) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(bitmap)) return;
    const SpanPainter painter(bitmap, color, int64_t{bitmap->width} * bitmap->height);
    painter.block(0, int64_t{bitmap->width} - 1, 0, int64_t{bitmap->height} - 1);
}

void velatrix_bitmap_copy(const velatrix_bitmap* source, velatrix_bitmap* destination, int32_t sx, int32_t sy,
                          int32_t dx, int32_t dy, int32_t width, int32_t height) {
    VELATRIX_TRACE_FUNCTION();
    if (!usable_bitmap(source) || !usable_bitmap(destination)) return;
    // Only the destination clips the block: reads outside the source come
    // back white. Pixels go in the same order as the unclipped walk, so a
    // copy within one bitmap overlaps the same way.
    int64_t i_from = 0, i_to = static_cast<int64_t>(width) - 1;
    int64_t j_from = 0, j_to = static_cast<int64_t>(height) - 1;
    i_from = std::max<int64_t>(i_from, -static_cast<int64_t>(dx));
    i_to = std::min<int64_t>(i_to, static_cast<int64_t>(destination->width) - 1 - dx);
    j_from = std::max<int64_t>(j_from, -static_cast<int64_t>(dy));
    j_to = std::min<int64_t>(j_to, static_cast<int64_t>(destination->height) - 1 - dy);
    for (int64_t i = i_from; i <= i_to; ++i) {
        for (int64_t j = j_from; j <= j_to; ++j) {
            put_pixel(destination, dx + i, dy + j, read_pixel(source, sx + i, sy + j));
        }
    }
}

}  // extern "C"
