// The column packer walks bitmap rows in blocks; the oracle below is the
// plain walk, one velatrix_get_pixel per pixel in column order. Every
// block, depth and capacity must come out byte for byte the same.
#include <gtest/gtest.h>

#include <cmath>
#include <algorithm>
#include <cstdint>
#include <functional>
#include <random>
#include <vector>

#include "display/chunk_layout.h"
#include "display/pixel_packing.h"
#include "graphics/draw_canvas.h"
#include "support/fake_driver.h"
#include "velatrix/display.h"
#include "velatrix/bitmap.h"

namespace {

std::vector<uint8_t> reference_pack(const velatrix_bitmap* bitmap, uint32_t x0, uint32_t y0, uint32_t width,
                                    uint32_t height, uint8_t bits, size_t capacity) {
    std::vector<uint8_t> data(capacity, 0);
    auto put = [&](size_t index, uint32_t value) {
        if (index < capacity) data[index] |= static_cast<uint8_t>(value);
    };
    size_t n = 0;
    for (uint32_t x = x0; x < x0 + width; ++x) {
        for (uint32_t y = y0; y < y0 + height; ++y, ++n) {
            const uint32_t c = velatrix_get_pixel(bitmap, static_cast<int32_t>(x), static_cast<int32_t>(y));
            const uint32_t r = c >> 24, g = (c >> 16) & 0xFF, b = (c >> 8) & 0xFF;
            const auto level = static_cast<uint8_t>(std::lround((r + g + b) / 3.0 / 255.0 * 15.0));
            if (bits == 1 && (r + g + b) / 3 < 128) put(n / 8, static_cast<uint8_t>(0x80 >> (n % 8)));
            if (bits == 4 || bits == 8) put(n / 2, static_cast<uint8_t>(n % 2 == 0 ? level : level << 4));
            if (bits != 1 && bits != 4 && bits != 8) put(n * 3, r), put(n * 3 + 1, g), put(n * 3 + 2, b);
        }
    }
    return data;
}

struct Picture : velatrix::testing::Canvas {
    Picture(int width, int height, std::mt19937& random) : Canvas(width, height) {
        // Padding bytes get noise too: none of it may reach a chunk.
        for (int32_t i = 0; i < bitmap.image_size; ++i) bitmap.pixels[i] = static_cast<uint8_t>(random());
    }
};

// Packs the block as chunks `chunk_width` wide side by side; returns them
// in order.
std::vector<std::vector<uint8_t>> fast_pack(const velatrix_bitmap* bitmap, uint32_t x, uint32_t y, uint32_t width,
                                            uint32_t height, uint8_t bits, uint32_t chunk_width, size_t capacity) {
    std::vector<std::vector<uint8_t>> chunks((width + chunk_width - 1) / chunk_width,
                                             std::vector<uint8_t>(capacity, 0xA5));  // stale bytes must go
    std::vector<uint8_t*> data;
    for (auto& chunk : chunks) data.push_back(chunk.data());
    velatrix::display::pack_chunk_pixels(bitmap, x, y, width, height, bits, chunk_width, data.data(), capacity);
    return chunks;
}

std::vector<std::vector<uint8_t>> reference_chunks(const velatrix_bitmap* bitmap, uint32_t x, uint32_t y,
                                                   uint32_t width, uint32_t height, uint8_t bits,
                                                   uint32_t chunk_width, size_t capacity) {
    std::vector<std::vector<uint8_t>> chunks;
    for (uint32_t left = 0; left < width; left += chunk_width) {
        chunks.push_back(reference_pack(bitmap, x + left, y, std::min(chunk_width, width - left), height, bits, capacity));
    }
    return chunks;
}

void every_block_and_depth() {
    std::mt19937 random(13);
    // Bitmap sizes: stride padding or none, heights on and off multiples
    // of 8 and 2, and blocks that do not fit their capacity.
    const std::pair<int, int> kSizes[] = {{1, 1},    {3, 5},   {8, 16},  {67, 240}, {33, 479},
                                          {9, 7},    {130, 31}, {4, 300}, {200, 9},  {150, 200}};
    const uint8_t kDepths[] = {1, 4, 8, 24, 0, 2, 16, 32};
    for (const auto& [size_width, size_height] : kSizes) {
        Picture picture(size_width, size_height, random);
        for (int trial = 0; trial < 40; ++trial) {
            const uint32_t x = random() % size_width, y = random() % size_height;
            const uint32_t width = 1 + random() % (size_width - x);
            uint32_t height = 1 + random() % (size_height - y);
            // Whole bytes per column at every depth, in row groups of 8 to 64.
            if (trial % 3 == 1 && height >= 8) height -= height % 8;
            const size_t capacity = trial % 4 == 0 ? 1 + random() % 64 : 2039;
            const uint32_t chunk_width = trial % 2 == 0 ? width : 1 + random() % width;
            for (uint8_t bits : kDepths) {
                ASSERT_EQ(fast_pack(&picture.bitmap, x, y, width, height, bits, chunk_width, capacity),
                          reference_chunks(&picture.bitmap, x, y, width, height, bits, chunk_width, capacity))
                    << size_width << "x" << size_height << " block " << x << "," << y << " " << width << "x" << height
                    << " bits " << int{bits} << " chunks " << chunk_width << " wide, capacity " << capacity;
            }
        }
    }
}

using velatrix::testing::with_and_without_vector_kernels;

TEST(PixelPacking, EveryBlockAndDepthMatchesThePixelWalk) { with_and_without_vector_kernels(every_block_and_depth); }

TEST(PixelPacking, EveryChannelSumGivesTheSameFlagAndLevel) {
    std::mt19937 random(1);
    Picture picture(1, 766, random);
    for (int sum = 0; sum <= 765; ++sum) {
        const uint32_t r = std::min(sum, 255), g = std::min(sum - static_cast<int>(r), 255), b = sum - r - g;
        velatrix_set_pixel(&picture.bitmap, 0, sum, r << 24 | g << 16 | b << 8 | 0xFF);
    }
    with_and_without_vector_kernels([&] {
        for (uint8_t bits : {uint8_t{1}, uint8_t{4}}) {
            EXPECT_EQ(fast_pack(&picture.bitmap, 0, 0, 1, 766, bits, 1, 2039).at(0),
                      reference_pack(&picture.bitmap, 0, 0, 1, 766, bits, 2039));
        }
    });
}

// The transfer packs chunks that span the full height several at a time:
// every report it sends carries the walk's bytes for its own rectangle.
void every_transferred_chunk() {
    std::mt19937 random(7);
    const struct {
        int width, height;
    } kSizes[] = {{320, 240}, {800, 480}, {50, 7}, {40, 700}};
    for (const auto& size : kSizes) {
        Picture picture(size.width, size.height, random);
        for (uint8_t bits : {uint8_t{1}, uint8_t{4}, uint8_t{8}, uint8_t{24}, uint8_t{2}}) {
            velatrix::testing::FakeDriver fake;
            ASSERT_EQ(velatrix_transfer_bitmap_to_device(fake.make_device(), &picture.bitmap, 5, 9, bits), 1);
            const auto shape = velatrix::display::chunk_shape(size.width, size.height, bits);
            const auto reports = fake.sets(103);
            ASSERT_EQ(reports.size(), ((size.width + shape.width - 1) / shape.width) *
                                          ((size.height + shape.height - 1) / shape.height));
            for (const auto& report : reports) {
                const uint32_t x = (report[1] << 8 | report[2]) - 5, y = (report[3] << 8 | report[4]) - 9;
                const uint32_t width = report[5] << 8 | report[6], height = report[7] << 8 | report[8];
                ASSERT_EQ(std::vector<uint8_t>(report.begin() + 10, report.end()),
                          reference_pack(&picture.bitmap, x, y, width, height, bits, 2039))
                    << size.width << "x" << size.height << " at " << int{bits} << " bits, chunk " << x << "," << y;
            }
        }
    }
}

TEST(PixelPacking, EveryTransferredChunkMatchesThePixelWalk) { with_and_without_vector_kernels(every_transferred_chunk); }

}  // namespace
