// Sending bitmaps to the pad's display as chunks of packed pixels.
#include <algorithm>
#include <array>
#include <cstring>
#include <vector>

#include "velatrix/display.h"
#include "velatrix/transport.h"

#include "debug/log.h"
#include "display/chunk_layout.h"
#include "display/chunk_send.h"
#include "display/pixel_packing.h"
#include "graphics/pixels.h"
#include "protocol/report_index.h"

namespace {

using namespace velatrix::protocol;

constexpr ReportEntry kChunkReport = report(report_id::kDisplayChunk);
constexpr ReportEntry kContentReport = report(report_id::kDisplayContent);
constexpr size_t kHeaderLength = 10;
// Chunks packed in one pass over the rows: 16 chunk records stay in cache.
constexpr uint32_t kChunksPerPass = 16;
static_assert(kHeaderLength + VELATRIX_DISPLAY_CHUNK_DATA_SIZE == kChunkReport.length);

void put_big_endian(uint8_t* buffer, size_t offset, uint16_t value) {
    buffer[offset] = static_cast<uint8_t>(value >> 8);
    buffer[offset + 1] = static_cast<uint8_t>(value);
}

}  // namespace

extern "C" {

int velatrix_set_display_content(velatrix_device* device, uint32_t content) {
    VELATRIX_TRACE_FUNCTION();
    uint8_t buffer[kContentReport.length] = {report_id::kDisplayContent, static_cast<uint8_t>(content)};
    if (!wait_for_interlock(device, kContentReport.set_before.sleep, kContentReport.set_before.mask)) return 0;
    return velatrix_hid_set_feature_report(device, buffer, sizeof buffer) == 1 ? 1 : 0;
}

int velatrix_set_display_chunk(velatrix_device* device, velatrix_display_chunk chunk) {
    return velatrix::display::send_display_chunk(device, chunk);
}

}  // extern "C"

// The chunk by reference: a transfer sends hundreds of them and a copy of
// each, on the way in, costs as much as packing it. The log shows it as
// the public call it stands for.
int velatrix::display::send_display_chunk(velatrix_device* device, const velatrix_display_chunk& chunk) {
    const ::velatrix::FunctionTrace trace("velatrix_set_display_chunk", ::velatrix::kLogCore, __LINE__);
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

extern "C" {

int velatrix_transfer_bitmap_to_device(velatrix_device* device, const velatrix_bitmap* bitmap, uint32_t x, uint32_t y,
                                       uint8_t bits_per_pixel) {
    VELATRIX_TRACE_FUNCTION();
    if (!velatrix::graphics::usable_bitmap(bitmap)) return 0;
    const auto width = static_cast<uint32_t>(std::max(bitmap->width, 0));
    const auto height = static_cast<uint32_t>(std::max(bitmap->height, 0));
    const auto shape = velatrix::display::chunk_shape(width, height, bits_per_pixel);
    if (shape.width == 0 || shape.height == 0) return 1;
    // When the chunks span the bitmap's full height, several side by side
    // are packed in one pass over the rows before they are sent in order.
    const bool side_by_side = shape.height >= height && shape.width <= 0xFFFF && height <= 0xFFFF;
    const uint32_t group = side_by_side ? kChunksPerPass : 1;
    std::vector<velatrix_display_chunk> chunks(group);
    std::array<uint8_t*, kChunksPerPass> data{};
    for (uint32_t cx = 0; cx < width; cx += group * shape.width) {
        for (uint32_t cy = 0; cy < height; cy += shape.height) {
            uint32_t count = 0, span = 0, rows = 0;
            for (uint32_t k = 0; k < group && cx + k * shape.width < width; ++k, ++count) {
                velatrix_display_chunk& chunk = chunks[k];
                const uint32_t left = cx + k * shape.width;
                chunk.report_id = report_id::kDisplayChunk;
                chunk.x = static_cast<uint16_t>(x + left);
                chunk.y = static_cast<uint16_t>(y + cy);
                chunk.width = static_cast<uint16_t>(std::min(shape.width, width - left));
                chunk.height = static_cast<uint16_t>(std::min(shape.height, height - cy));
                chunk.bits_per_pixel = bits_per_pixel;
                data[k] = chunk.data;
                span += chunk.width;
                rows = chunk.height;
            }
            // Column by column within each chunk: the pad fills its display
            // memory that way.
            velatrix::display::pack_chunk_pixels(bitmap, cx, cy, span, rows, bits_per_pixel,
                                                 count == 1 ? span : shape.width, data.data(),
                                                 VELATRIX_DISPLAY_CHUNK_DATA_SIZE);
            for (uint32_t k = 0; k < count; ++k) {
                if (!velatrix::display::send_display_chunk(device, chunks[k])) return 0;
            }
        }
    }
    return 1;
}

}  // extern "C"
