// Packing a whole screen into display chunks: what a user waits for every
// time a signature form or a prompt is shown on the pad.
#include <benchmark/benchmark.h>

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

void BM_TransferMono320x240(benchmark::State& state) { transfer(state, 320, 240, 1); }
void BM_TransferColour800x480(benchmark::State& state) { transfer(state, 800, 480, 24); }

BENCHMARK(BM_TransferMono320x240)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_TransferColour800x480)->Unit(benchmark::kMillisecond);

}  // namespace
