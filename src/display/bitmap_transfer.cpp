// Sending bitmaps to the pad's display as chunks of packed pixels.
#include <algorithm>
#include <array>
#include <memory>

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
using velatrix::display::kChunkDataOffset;
using velatrix::display::kChunkReportLength;

constexpr ReportEntry kContentReport = report(report_id::kDisplayContent);
// Chunks packed in one pass over the rows: 16 chunk reports stay in cache.
constexpr uint32_t kChunksPerPass = 16;

}  // namespace

extern "C" {

int velatrix_set_display_content(velatrix_device* device, uint32_t content) {
    VELATRIX_TRACE_FUNCTION();
    uint8_t buffer[kContentReport.length] = {report_id::kDisplayContent, static_cast<uint8_t>(content)};
    if (!wait_for_interlock(device, kContentReport.set_before.sleep, kContentReport.set_before.mask)) return 0;
    return velatrix_hid_set_feature_report(device, buffer, sizeof buffer) == 1 ? 1 : 0;
}

int velatrix_set_display_chunk(velatrix_device* device, velatrix_display_chunk chunk) {
    // Packed by the record's rows, then sent as a transfer's chunks are.
    uint8_t report[kChunkReportLength] = {};
    velatrix::protocol::pack_fields(velatrix::display::kChunkRows, &chunk, report);
    return velatrix::display::ChunkSender(device).send(report);
}

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
    // The reports are packed where they are sent from: no copy per chunk.
    const auto reports = std::make_unique_for_overwrite<uint8_t[]>(size_t{group} * kChunkReportLength);
    std::array<uint8_t*, kChunksPerPass> data{};
    const velatrix::display::ChunkHeader header(bits_per_pixel);
    velatrix::display::ChunkSender sender(device);
    for (uint32_t cx = 0; cx < width; cx += group * shape.width) {
        for (uint32_t cy = 0; cy < height; cy += shape.height) {
            uint32_t count = 0, span = 0, rows = 0;
            for (uint32_t k = 0; k < group && cx + k * shape.width < width; ++k, ++count) {
                uint8_t* report = reports.get() + size_t{k} * kChunkReportLength;
                const uint32_t left = cx + k * shape.width;
                const uint32_t chunk_width = std::min(shape.width, width - left);
                rows = std::min(shape.height, height - cy);
                header.write(report, static_cast<uint16_t>(x + left), static_cast<uint16_t>(y + cy),
                             static_cast<uint16_t>(chunk_width), static_cast<uint16_t>(rows));
                data[k] = report + kChunkDataOffset;
                span += chunk_width;
            }
            // Column by column within each chunk: the pad fills its display
            // memory that way.
            velatrix::display::pack_chunk_pixels(bitmap, cx, cy, span, rows, bits_per_pixel,
                                                 count == 1 ? span : shape.width, data.data(),
                                                 VELATRIX_DISPLAY_CHUNK_DATA_SIZE);
            for (uint32_t k = 0; k < count; ++k) {
                if (!sender.send(reports.get() + size_t{k} * kChunkReportLength)) return 0;
            }
        }
    }
    return 1;
}

}  // extern "C"
