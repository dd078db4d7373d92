// Drawing into a full-screen bitmap: signature ink, prompts and buttons are
// rendered here before they go to the pad. Each shape runs beside its
// anchor, Cairo drawing the same shape on an RGB24 image surface of the
// same size, anti-aliased where ours is (thick lines) and not where ours
// is not (fills).
#include <benchmark/benchmark.h>
#include <cairo.h>

#include <cmath>
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

struct CairoCanvas {
    CairoCanvas() {
        surface = cairo_image_surface_create(CAIRO_FORMAT_RGB24, kWidth, kHeight);
        cr = cairo_create(surface);
        cairo_set_source_rgb(cr, 1, 1, 1);
        cairo_paint(cr);
    }
    ~CairoCanvas() {
        cairo_destroy(cr);
        cairo_surface_destroy(surface);
    }
    void colour(uint32_t rgba) {
        cairo_set_source_rgba(cr, (rgba >> 24) / 255.0, ((rgba >> 16) & 0xFF) / 255.0, ((rgba >> 8) & 0xFF) / 255.0,
                              (rgba & 0xFF) / 255.0);
    }
    cairo_surface_t* surface;
    cairo_t* cr;
};

uint32_t colour_for(bool translucent) { return translucent ? 0x30C06080u : 0x30C060FFu; }

// A stroke of ink: 64 thick anti-aliased segments in every direction, as a
// signature's pen path comes in.
struct Segment {
    int32_t x0, y0, x1, y1;
};
Segment segment(int32_t i) {
    return {40 + (i * 11) % 700, 40 + (i * 37) % 400, 40 + (i * 53 + 90) % 700, 40 + (i * 29 + 50) % 400};
}

void lines_ours(benchmark::State& state, float width) {
    Canvas canvas;
    for (auto _ : state) {
        for (int32_t i = 0; i < 64; ++i) {
            const Segment s = segment(i);
            velatrix_draw_thick_aa_line(&canvas.bitmap, s.x0, s.y0, s.x1, s.y1, 0x1020A0FFu, width);
        }
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * 64);
}

void lines_cairo(benchmark::State& state, float width) {
    CairoCanvas canvas;
    canvas.colour(0x1020A0FFu);
    cairo_set_line_width(canvas.cr, width);
    for (auto _ : state) {
        for (int32_t i = 0; i < 64; ++i) {
            const Segment s = segment(i);
            // Pixel centres, as our walk steps from centre to centre.
            cairo_move_to(canvas.cr, s.x0 + 0.5, s.y0 + 0.5);
            cairo_line_to(canvas.cr, s.x1 + 0.5, s.y1 + 0.5);
            cairo_stroke(canvas.cr);
        }
        cairo_surface_flush(canvas.surface);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * 64);
}

void circle_ours(benchmark::State& state, int32_t radius, bool translucent) {
    Canvas canvas;
    for (auto _ : state) {
        velatrix_fill_circle(&canvas.bitmap, kWidth / 2, kHeight / 2, radius, colour_for(translucent));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}

void circle_cairo(benchmark::State& state, int32_t radius, bool translucent) {
    CairoCanvas canvas;
    canvas.colour(colour_for(translucent));
    cairo_set_antialias(canvas.cr, CAIRO_ANTIALIAS_NONE);
    for (auto _ : state) {
        cairo_arc(canvas.cr, kWidth / 2 + 0.5, kHeight / 2 + 0.5, radius + 0.5, 0, 2 * M_PI);
        cairo_fill(canvas.cr);
        cairo_surface_flush(canvas.surface);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}

void rectangle_ours(benchmark::State& state, bool translucent) {
    Canvas canvas;
    for (auto _ : state) {
        velatrix_fill_rectangle(&canvas.bitmap, 0, 0, kWidth - 1, kHeight - 1, colour_for(translucent));
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}

void rectangle_cairo(benchmark::State& state, bool translucent) {
    CairoCanvas canvas;
    canvas.colour(colour_for(translucent));
    cairo_set_antialias(canvas.cr, CAIRO_ANTIALIAS_NONE);
    for (auto _ : state) {
        cairo_rectangle(canvas.cr, 0, 0, kWidth, kHeight);
        cairo_fill(canvas.cr);
        cairo_surface_flush(canvas.surface);
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations());
}

// Rows are named "<row>/ours" and "<row>/anchor"; scripts/bench.sh pairs them.
const bool registered = [] {
    for (bool translucent : {false, true}) {
        const std::string row = std::string("FillRectangle/800x480/") + (translucent ? "alpha" : "opaque");
        benchmark::RegisterBenchmark((row + "/ours").c_str(), rectangle_ours, translucent)->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark((row + "/anchor").c_str(), rectangle_cairo, translucent)
            ->Unit(benchmark::kMicrosecond);
    }
    for (bool translucent : {false, true}) {
        for (int32_t radius : {8, 60, 200}) {
            const std::string row =
                "FillCircle/r" + std::to_string(radius) + "/" + (translucent ? "alpha" : "opaque");
            benchmark::RegisterBenchmark((row + "/ours").c_str(), circle_ours, radius, translucent)
                ->Unit(benchmark::kMicrosecond);
            benchmark::RegisterBenchmark((row + "/anchor").c_str(), circle_cairo, radius, translucent)
                ->Unit(benchmark::kMicrosecond);
        }
    }
    for (float width : {1.0f, 3.0f, 8.0f}) {
        const std::string row = "ThickAaLines64/w" + std::to_string(static_cast<int>(width));
        benchmark::RegisterBenchmark((row + "/ours").c_str(), lines_ours, width)->Unit(benchmark::kMicrosecond);
        benchmark::RegisterBenchmark((row + "/anchor").c_str(), lines_cairo, width)->Unit(benchmark::kMicrosecond);
    }
    return true;
}();

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
