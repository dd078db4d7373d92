// Decoding caller text before it is measured or drawn: every text drawn on
// the pad and every caption is decoded first.
#include <benchmark/benchmark.h>

#include <cstdlib>
#include <string>

#include "velatrix/fonts.h"

namespace {

// 1 KiB of UTF-8 with one, two and three byte sequences, no NUL in it.
std::string kibibyte_of_text() {
    const std::string piece = "Signature \xC3\xA9\xC3\xA8 Unterschrift \xC3\xBC\xC3\x9F \xE2\x82\xAC 12,50 ";
    std::string text;
    while (text.size() + piece.size() <= 1024) text += piece;
    text.append(1024 - text.size(), 'a');
    return text;
}

void decode(benchmark::State& state, const char* encoding) {
    const std::string text = kibibyte_of_text();
    for (auto _ : state) {
        int32_t count = 0;
        int32_t* code_points = parse_string_encoding(text.data(), static_cast<int32_t>(text.size()), encoding, &count);
        if (code_points == nullptr) {
            state.SkipWithError("text did not decode");
            return;
        }
        benchmark::DoNotOptimize(code_points[count / 2]);
        std::free(code_points);
    }
    state.SetBytesProcessed(state.iterations() * static_cast<int64_t>(text.size()));
}

void BM_DecodeUtf8Kib(benchmark::State& state) { decode(state, "utf-8"); }
// The default encoding a caller gets without naming one.
void BM_DecodeUtf8KibDefault(benchmark::State& state) { decode(state, nullptr); }

BENCHMARK(BM_DecodeUtf8Kib)->Unit(benchmark::kMicrosecond);
BENCHMARK(BM_DecodeUtf8KibDefault)->Unit(benchmark::kMicrosecond);

}  // namespace
