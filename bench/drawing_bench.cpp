// Drawing into a full-screen bitmap: signature ink, prompts and buttons are
// rendered here before they go to the pad.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "velatrix/bitmap.h"
#include "velatrix/fonts.h"

namespace {

constexpr int32_t kWidth = 800;
constexpr int32_t kHeight = 480;

struct Canvas {
    Canvas() : buffer(static_cast<size_t>(((kWidth * 24 + 31) / 32) * 4 * kHeight + 54)) {
        if (velatrix_bitmap_init(&bitmap, buffer.data(), kWidth, kHeight) != 1) std::abort();
    }
    std::vector<uint8_t> buffer;
    velatrix_bitmap bitmap{};
};

// A stroke of ink: 64 thick anti-aliased segments in every direction, as a
// signature's pen path comes in.
void BM_ThickAaLines(benchmark::State& state) {
    Canvas canvas;
    const auto width = static_cast<float>(state.range(0));
    int64_t segments = 0;
    for (auto _ : state) {
        for (int32_t i = 0; i < 64; ++i) {
            const int32_t x0 = 40 + (i * 11) % 700, y0 = 40 + (i * 37) % 400;
            const int32_t x1 = 40 + (i * 53 + 90) % 700, y1 = 40 + (i * 29 + 50) % 400;
            velatrix_draw_thick_aa_line(&canvas.bitmap, x0, y0, x1, y1, 0x1020A0FFu, width);
        }
        segments += 64;
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(segments);
}
BENCHMARK(BM_ThickAaLines)->Arg(1)->Arg(3)->Arg(8)->Unit(benchmark::kMicrosecond);

// Filled circles of growing radius, opaque and translucent (the blend path).
void BM_FillCircle(benchmark::State& state) {
    Canvas canvas;
    const auto radius = static_cast<int32_t>(state.range(0));
    const uint32_t colour = state.range(1) != 0 ? 0x30C06080u : 0x30C060FFu;
    for (auto _ : state) {
        velatrix_fill_circle(&canvas.bitmap, kWidth / 2, kHeight / 2, radius, colour);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
    state.SetLabel(state.range(1) != 0 ? "translucent" : "opaque");
}
BENCHMARK(BM_FillCircle)
    ->ArgsProduct({{8, 60, 200}, {0, 1}})
    ->ArgNames({"radius", "alpha"})
    ->Unit(benchmark::kMicrosecond);

// A screen of text in the 16-point mono font: 14 lines of 60 characters.
void BM_DrawText16pt(benchmark::State& state) {
    Canvas canvas;
    const std::string line = "Please sign above the line. By signing you accept the terms 0123456789";
    std::vector<int32_t> code_points(line.begin(), line.begin() + 60);
    code_points.push_back(0);
    int64_t characters = 0;
    for (auto _ : state) {
        for (int32_t row = 0; row < 14; ++row) {
            enhanced_draw_string(&canvas.bitmap, &ubuntu_mono_e_16pt, code_points.data(), 4, 4 + row * 33,
                                 0x000000FFu);
        }
        characters += 14 * 60;
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(characters);
}
BENCHMARK(BM_DrawText16pt)->Unit(benchmark::kMicrosecond);

}  // namespace
