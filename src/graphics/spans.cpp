#include "graphics/spans.h"

#include <algorithm>
#include <cstring>

#if defined(__GNUC__) && defined(__x86_64__)
#include <immintrin.h>
#endif

// GCC 12 warns about the "undefined" vectors its own AVX-512 intrinsics
// start from (its bug 105593, fixed in GCC 13).
#if defined(__GNUC__) && !defined(__clang__) && __GNUC__ < 13
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

#include "graphics/cpu_features.h"
#include "graphics/pixels.h"

namespace velatrix::graphics {

namespace {

constexpr int64_t kTableWorthIt = 64;

using Tables = std::array<std::array<uint8_t, 256>, 3>;

// The clones are chosen by an ifunc resolver while the program is being
// loaded, before ThreadSanitizer's runtime is up; a tsan build uses the
// plain version (the clones give the same bytes).
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__) && defined(__linux__) && \
    !defined(__SANITIZE_THREAD__)
#define VELATRIX_WIDE_STORES __attribute__((target_clones("avx512f", "avx2", "default")))
#else
#define VELATRIX_WIDE_STORES
#endif

// Repeats the pattern over `count` pixels. Long spans write whole
// patterns at 64-byte aligned addresses (a store across two cache lines
// costs two), starting from the pattern's byte that falls there.
VELATRIX_WIDE_STORES void fill_pattern(uint8_t* p, size_t count, const uint8_t (&pattern)[kPatternBytes]) {
    constexpr size_t kBlock = 3 * kPatternPixels;
    size_t length = 3 * count;
    if (length >= 2 * kBlock) {
        const size_t head = (64 - reinterpret_cast<uintptr_t>(p) % 64) % 64;
        std::memcpy(p, pattern, 64);
        const uint8_t* from = pattern + head % 3;
        p += head;
        length -= head;
        for (; length >= kBlock; length -= kBlock, p += kBlock) std::memcpy(p, from, kBlock);
        std::memcpy(p, from, length);
        return;
    }
    for (; length >= 24; length -= 24, p += 24) std::memcpy(p, pattern, 24);
    for (; length > 0; length -= 3, p += 3) std::memcpy(p, pattern, 3);
}

// Looks every byte of a span up in its channel's table: byte i of the span
// belongs to channel i % 3 (blue, green, red).
void look_up(uint8_t* p, size_t length, const Tables& tables) {
    for (size_t i = 0; i + 3 <= length; i += 3) {
        p[i] = tables[0][p[i]];
        p[i + 1] = tables[1][p[i + 1]];
        p[i + 2] = tables[2][p[i + 2]];
    }
}

#if defined(__GNUC__) && defined(__x86_64__)
#define VELATRIX_HAVE_BYTE_PERMUTE 1

#define VELATRIX_BYTE_PERMUTE __attribute__((target("avx512f,avx512bw,avx512vbmi")))

// 64 bytes through their channels' tables; `channel` masks the lanes of
// channels 0 and 1.
VELATRIX_BYTE_PERMUTE inline __m512i look_up_vector(__m512i bytes, const __m512i (&low)[3][2],
                                                    const __m512i (&high)[3][2], const __mmask64 (&channel)[2]) {
    const __mmask64 top = _mm512_movepi8_mask(bytes);
    __m512i out[3];
    for (int c = 0; c < 3; ++c) {
        out[c] = _mm512_mask_blend_epi8(top, _mm512_permutex2var_epi8(low[c][0], bytes, low[c][1]),
                                        _mm512_permutex2var_epi8(high[c][0], bytes, high[c][1]));
    }
    const __m512i merged = _mm512_mask_blend_epi8(channel[1], out[2], out[1]);
    return _mm512_mask_blend_epi8(channel[0], merged, out[0]);
}

// The same look-ups 64 bytes at a time: a 256-entry table is two 128-byte
// byte permutes chosen by the top bit, done for each channel's table and
// merged by the lanes' channels.
VELATRIX_BYTE_PERMUTE void look_up_wide(uint8_t* p, size_t length, const Tables& tables) {
    __m512i low[3][2], high[3][2];
    for (int c = 0; c < 3; ++c) {
        low[c][0] = _mm512_loadu_si512(tables[c].data());
        low[c][1] = _mm512_loadu_si512(tables[c].data() + 64);
        high[c][0] = _mm512_loadu_si512(tables[c].data() + 128);
        high[c][1] = _mm512_loadu_si512(tables[c].data() + 192);
    }
    // Lanes of channels 0 and 1 in a vector starting at byte phase 0, 1, 2:
    // lane l holds channel (phase + l) % 3.
    constexpr uint64_t kEveryThird = 0x9249249249249249ull;  // lanes 0, 3, 6, ...
    static constexpr __mmask64 channel[3][2] = {{kEveryThird, kEveryThird << 1},
                                                {kEveryThird << 2, kEveryThird},
                                                {kEveryThird << 1, kEveryThird << 2}};
    size_t i = 0;
    int phase = 0;
    for (; i + 64 <= length; i += 64, phase = (phase + 1) % 3) {
        _mm512_storeu_si512(p + i, look_up_vector(_mm512_loadu_si512(p + i), low, high, channel[phase]));
    }
    if (i < length) {
        const __mmask64 rest = (uint64_t{1} << (length - i)) - 1;
        _mm512_mask_storeu_epi8(p + i, rest, look_up_vector(_mm512_maskz_loadu_epi8(rest, p + i), low, high, channel[phase]));
    }
}

#endif

}  // namespace

SpanPainter::SpanPainter(velatrix_bitmap* bitmap, uint32_t color, int64_t pixels)
    : bitmap_(bitmap), color_(color), opaque_((color & 0xFFu) == kOpaque) {
    if (opaque_) {
        for (int i = 0; i < kPatternBytes / 3; ++i) {
            pattern_[3 * i] = static_cast<uint8_t>(color >> 8);
            pattern_[3 * i + 1] = static_cast<uint8_t>(color >> 16);
            pattern_[3 * i + 2] = static_cast<uint8_t>(color >> 24);
        }
        return;
    }
    if (pixels < kTableWorthIt) return;
    table_ = true;
    blend_over_opaque(color, blended_);
}

void SpanPainter::block(int64_t x_from, int64_t x_to, int64_t y_from, int64_t y_to) const {
    if (!clip_range(x_from, x_to, bitmap_->width) || !clip_range(y_from, y_to, bitmap_->height)) return;
    if (!opaque_) {
        for (int64_t y = y_from; y <= y_to; ++y) span(x_from, x_to, y);
        return;
    }
    const int64_t count = x_to - x_from + 1;
    if (3 * count == bitmap_->stride) {
        // Whole rows without padding: one run through memory (rows are
        // stored bottom-up, so the block starts at its last row).
        uint8_t* start = bitmap_->pixels + pixel_offset(bitmap_, x_from, y_to);
        return fill_pattern(start, static_cast<size_t>(count * (y_to - y_from + 1)), pattern_);
    }
    // Every row is the same bytes: the first is filled, the others copied.
    span(x_from, x_to, y_from);
    const uint8_t* first = bitmap_->pixels + pixel_offset(bitmap_, x_from, y_from);
    const auto length = static_cast<size_t>(3 * (x_to - x_from + 1));
    for (int64_t y = y_from + 1; y <= y_to; ++y) {
        std::memcpy(bitmap_->pixels + pixel_offset(bitmap_, x_from, y), first, length);
    }
}

void SpanPainter::span(int64_t x_from, int64_t x_to, int64_t y) const {
    if (y < 0 || y >= bitmap_->height || !clip_range(x_from, x_to, bitmap_->width)) return;
    uint8_t* p = bitmap_->pixels + pixel_offset(bitmap_, x_from, y);
    const int64_t count = x_to - x_from + 1;
    if (opaque_) {
        return fill_pattern(p, static_cast<size_t>(count), pattern_);
    }
    if (table_) {
#ifdef VELATRIX_HAVE_BYTE_PERMUTE
        if (cpu_has_byte_permute()) return look_up_wide(p, static_cast<size_t>(3 * count), blended_);
#endif
        return look_up(p, static_cast<size_t>(3 * count), blended_);
    }
    for (int64_t x = x_from; x <= x_to; ++x) put_pixel(bitmap_, x, y, color_);
}

}  // namespace velatrix::graphics
