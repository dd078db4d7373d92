// Packing a whole screen into display chunks: what a user waits for every
// time a signature form or a prompt is shown on the pad. Each row runs
// beside its anchor, a memcpy of the same frame.
#include <benchmark/benchmark.h>

#include <cstring>
#include <string>
#include <vector>

#include "null_driver.h"
#include "velatrix/bitmap.h"
#include "velatrix/display.h"

namespace {

// A bitmap with something on it, so the packer sees both dark and light
// pixels and several colour levels.
struct Screen {
    Screen(int32_t width, int32_t height) : buffer(static_cast<size_t>(((width * 24 + 31) / 32) * 4 * height + 54)) {
        if (velatrix_bitmap_init(&bitmap, buffer.data(), width, height) != 1) std::abort();
        for (int32_t x = 0; x < width; x += 16) {
            velatrix_fill_rectangle(&bitmap, x, 0, x + 7, height - 1, 0x20406080u | 0xFF);
        }
        velatrix_fill_circle(&bitmap, width / 2, height / 2, height / 3, 0xC03010FFu);
    }
    std::vector<uint8_t> buffer;
    velatrix_bitmap bitmap{};
};

void transfer(benchmark::State& state, int32_t width, int32_t height, uint8_t bits) {
    Screen screen(width, height);
    velatrix::bench::NullDriver driver;
    for (auto _ : state) {
        const int ok = velatrix_transfer_bitmap_to_device(driver.device(), &screen.bitmap, 0, 0, bits);
        if (ok != 1) state.SkipWithError("transfer failed");
        benchmark::DoNotOptimize(ok);
    }
    state.SetBytesProcessed(static_cast<int64_t>(driver.bytes_sent()));
    state.counters["chunks"] = static_cast<double>(driver.reports_sent()) / static_cast<double>(state.iterations());
    state.counters["pixels/s"] = benchmark::Counter(static_cast<double>(width) * height * state.iterations(),
                                                    benchmark::Counter::kIsRate);
}

// The anchor: copying the bitmap's pixels once, as fast as memory goes.
void copy_frame(benchmark::State& state, int32_t width, int32_t height) {
    Screen screen(width, height);
    std::vector<uint8_t> copy(static_cast<size_t>(screen.bitmap.image_size));
    for (auto _ : state) {
        std::memcpy(copy.data(), screen.bitmap.pixels, copy.size());
        benchmark::ClobberMemory();
    }
    state.SetBytesProcessed(static_cast<int64_t>(copy.size()) * state.iterations());
}

// Rows are named "<row>/ours" and "<row>/anchor"; scripts/bench.sh pairs them.
const struct {
    int32_t width, height;
    uint8_t bits;
} kFrames[] = {{320, 240, 1}, {320, 240, 4}, {320, 240, 24}, {800, 480, 1}, {800, 480, 4}, {800, 480, 24}};

const bool registered = [] {
    for (const auto& frame : kFrames) {
        const std::string row = "Transfer/" + std::to_string(frame.width) + "x" + std::to_string(frame.height) + "/" +
                                std::to_string(frame.bits) + "bpp";
        benchmark::RegisterBenchmark((row + "/ours").c_str(), transfer, frame.width, frame.height, frame.bits)
            ->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark((row + "/anchor").c_str(), copy_frame, frame.width, frame.height)
            ->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

}  // namespace
