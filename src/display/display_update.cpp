// Redrawing the display with only the chunks whose pixels changed since the
// last frame this call sent to the device. Anything else sent to the pad in
// between (a full transfer, text on the device, clearing, regions, screens,
// any command) or a close moves the device's request count on, and the
// next update is a full one.
#include <algorithm>
#include <cstring>
#include <map>
#include <mutex>
#include <vector>

#include "velatrix/display.h"

#include "debug/log.h"
#include "display/chunk_layout.h"
#include "display/chunk_send.h"
#include "display/pixel_packing.h"
#include "graphics/pixels.h"
#include "protocol/report_index.h"
#include "protocol/request_epoch.h"

namespace {

struct Frame {
    uint32_t x = 0, y = 0;
    int32_t width = 0, height = 0, stride = 0;
    uint8_t bits = 0;
    uint64_t epoch = velatrix::protocol::kUntracked;
    std::vector<uint8_t> pixels;  // the bitmap's pixel rows as sent
};

std::mutex frames_lock;
std::map<const velatrix_device*, Frame>& frames() {
    static auto* all = new std::map<const velatrix_device*, Frame>();  // outlives exit-time updates
    return *all;
}

// True when the block's pixels equal the frame's.
bool unchanged(const Frame& frame, const velatrix_bitmap* bitmap, uint32_t cx, uint32_t cy, uint32_t width,
               uint32_t height) {
    for (uint32_t row = cy; row < cy + height; ++row) {
        const std::ptrdiff_t at = velatrix::graphics::pixel_offset(bitmap, cx, row);
        if (std::memcmp(bitmap->pixels + at, frame.pixels.data() + at, 3 * size_t{width}) != 0) return false;
    }
    return true;
}

}  // namespace

extern "C" {

int velatrix_update_display(velatrix_device* device, const velatrix_bitmap* bitmap, uint32_t x, uint32_t y,
                            uint8_t bits_per_pixel) {
    VELATRIX_TRACE_FUNCTION();
    if (!velatrix::graphics::usable_bitmap(bitmap)) return 0;
    const std::lock_guard lock(frames_lock);
    // Frames of other devices that were closed or written to since are of
    // no further use: let their copies go.
    std::erase_if(frames(), [device](const auto& entry) {
        return entry.first != device && entry.second.epoch != velatrix::protocol::request_epoch(entry.first);
    });
    Frame& frame = frames()[device];
    const uint64_t epoch = velatrix::protocol::request_epoch(device);
    const bool partial = epoch != velatrix::protocol::kUntracked && frame.epoch == epoch && frame.x == x &&
                         frame.y == y && frame.bits == bits_per_pixel && frame.width == bitmap->width &&
                         frame.height == bitmap->height && frame.stride == bitmap->stride;
    frame.epoch = velatrix::protocol::kUntracked;  // whatever happens below, until it all went

    const auto width = static_cast<uint32_t>(bitmap->width), height = static_cast<uint32_t>(bitmap->height);
    const auto shape = velatrix::display::chunk_shape(width, height, bits_per_pixel);
    uint64_t sent = 0;
    if (shape.width != 0 && shape.height != 0) {
        uint8_t report[velatrix::display::kChunkReportLength];
        uint8_t* data = report + velatrix::display::kChunkDataOffset;
        const velatrix::display::ChunkHeader header(bits_per_pixel);
        velatrix::display::ChunkSender sender(device);
        // The same grid, order and packing as a full transfer.
        for (uint32_t cx = 0; cx < width; cx += shape.width) {
            for (uint32_t cy = 0; cy < height; cy += shape.height) {
                const uint32_t chunk_width = std::min(shape.width, width - cx);
                const uint32_t chunk_height = std::min(shape.height, height - cy);
                if (partial && unchanged(frame, bitmap, cx, cy, chunk_width, chunk_height)) continue;
                header.write(report, static_cast<uint16_t>(x + cx), static_cast<uint16_t>(y + cy),
                             static_cast<uint16_t>(chunk_width), static_cast<uint16_t>(chunk_height));
                velatrix::display::pack_chunk_pixels(bitmap, cx, cy, chunk_width, chunk_height, bits_per_pixel,
                                                     chunk_width, &data, VELATRIX_DISPLAY_CHUNK_DATA_SIZE);
                if (!sender.send(report)) return 0;
                ++sent;
            }
        }
    }
    frame.x = x;
    frame.y = y;
    frame.bits = bits_per_pixel;
    frame.width = bitmap->width;
    frame.height = bitmap->height;
    frame.stride = bitmap->stride;
    frame.pixels.assign(bitmap->pixels, bitmap->pixels + bitmap->image_size);
    // Our own chunks are the only requests expected since the count was
    // read; anything more came from elsewhere and may have changed the display.
    if (epoch != velatrix::protocol::kUntracked && velatrix::protocol::request_epoch(device) == epoch + sent) {
        frame.epoch = epoch + sent;
    }
    return 1;
}

}  // extern "C"
