// Column packing that walks the bitmap's rows directly. A chunk is packed
// column by column, but the bitmap is stored row by row: each block of
// eight rows is first reduced row by row to one byte per pixel (dark flag
// or grey level, loops the compiler vectorises), then turned into column
// order eight columns at a time with word-wide shifts. The results are
// bit for bit those of packing every pixel read through velatrix_get_pixel.
#include "display/pixel_packing.h"

#include "graphics/cpu_features.h"

#include <algorithm>
#include <cstring>
#include <vector>

#if defined(__GNUC__) && defined(__x86_64__)
#include <immintrin.h>
#endif

// GCC 12 warns about the "undefined" vectors its own AVX-512 intrinsics
// start from (its bug 105593, fixed in GCC 13).
#if defined(__GNUC__) && !defined(__clang__) && __GNUC__ < 13
#pragma GCC diagnostic ignored "-Wmaybe-uninitialized"
#endif

namespace velatrix::display {
namespace {

// Row kernels get a vector version where the processor has one; the plain
// version gives the same bytes. (A size_t index lets the compiler see that
// 3 * i cannot wrap, which it needs to vectorise.)
// The clones are chosen by an ifunc resolver while the program is being
// loaded, before ThreadSanitizer's runtime is up; a tsan build uses the
// plain version (the clones give the same bytes).
#if defined(__GNUC__) && !defined(__clang__) && defined(__x86_64__) && defined(__linux__) && \
    !defined(__SANITIZE_THREAD__)
#define VELATRIX_ROW_KERNEL __attribute__((target_clones("avx2", "default"), optimize("tree-vectorize")))
#else
#define VELATRIX_ROW_KERNEL
#endif

// Columns reduced per pass: eight rows of them fit in a few cache lines.
constexpr uint32_t kBlock = 64;

// A pixel is dark when the integer mean of its channels is below 128.
VELATRIX_ROW_KERNEL void dark_flags(const uint8_t* __restrict bgr, uint32_t count, uint8_t* __restrict out) {
    for (size_t i = 0; i < count; ++i) {
        out[i] = (static_cast<uint32_t>(bgr[3 * i]) + bgr[3 * i + 1] + bgr[3 * i + 2]) < 3 * 128 ? 1 : 0;
    }
}

// round(sum / 3 / 255 * 15) = round(sum / 51); sum / 51 never ends in .5,
// so rounding half up in integers gives the same level.
VELATRIX_ROW_KERNEL void grey_levels(const uint8_t* __restrict bgr, uint32_t count, uint8_t* __restrict out) {
    for (size_t i = 0; i < count; ++i) {
        const uint32_t sum = static_cast<uint32_t>(bgr[3 * i]) + bgr[3 * i + 1] + bgr[3 * i + 2];
        out[i] = static_cast<uint8_t>((2 * sum + 51) / 102);
    }
}

#if defined(__GNUC__) && defined(__x86_64__)
#define VELATRIX_HAVE_WIDE_GREY 1

// Byte indices of the blue, green and red of 32 pixels, for the 1- and
// 4-bit packings' byte permutes.
struct alignas(64) ChannelPicks {
    uint8_t bytes[3][64];
};
constexpr ChannelPicks kPicks = [] {
    ChannelPicks picks{};
    for (int i = 0; i < 32; ++i) {
        for (int c = 0; c < 3; ++c) picks.bytes[c][i] = static_cast<uint8_t>(3 * i + c);
    }
    return picks;
}();

#endif

uint64_t load64(const uint8_t* at) {
    uint64_t value;
    std::memcpy(&value, at, sizeof value);
    return value;
}

struct Block {
    const velatrix_bitmap* bitmap;
    uint32_t x, y, width, height;
    uint32_t chunk_width;
    uint8_t* const* data;
    size_t capacity;

    // Display row y + i, starting at column x + column.
    const uint8_t* row(uint32_t i, uint32_t column) const {
        const int64_t memory_row = static_cast<int64_t>(bitmap->height) - 1 - (y + i);
        return bitmap->pixels + memory_row * bitmap->stride + 3 * static_cast<int64_t>(x + column);
    }

    // The chunk holding a column, and the column's place within it.
    uint8_t* chunk_of(uint32_t column) const { return data[column / chunk_width]; }
    uint64_t local(uint32_t column) const { return column % chunk_width; }

    static void or_byte(uint8_t* chunk, size_t index, size_t capacity, uint8_t value) {
        if (index < capacity) chunk[index] |= value;
    }
};

// For the columns [j0, j0 + count) of a pass: each one's chunk and the
// index of its first pixel there (pixels run down the columns), worked out
// once per pass rather than with two divisions per column and row block.
template <uint32_t kColumns>
struct ColumnMap {
    uint8_t* chunk[kColumns];
    uint64_t first[kColumns];

    void fill(const Block& block, uint32_t j0, uint32_t count) {
        for (uint32_t j = 0; j < count; ++j) {
            chunk[j] = block.chunk_of(j0 + j);
            first[j] = block.local(j0 + j) * block.height;
        }
    }
};

using RowKernel = void (*)(const uint8_t*, uint32_t, uint8_t*);

// Reduces rows [i0, i0 + 8) of columns [j0, j0 + count) with `kernel`;
// rows past the block's end read as zero.
void reduce_rows(const Block& block, RowKernel kernel, uint32_t i0, uint32_t j0, uint32_t count,
                 uint8_t (&values)[8][kBlock]) {
    for (uint32_t k = 0; k < 8; ++k) {
        if (i0 + k < block.height) {
            kernel(block.row(i0 + k, j0), count, values[k]);
        } else {
            std::memset(values[k], 0, sizeof values[k]);
        }
    }
}

// Ors eight bits, pixels [offset, offset + 8) of a column, into its chunk.
// `alone`: all eight pixels exist, so on a byte boundary the byte is this
// column's only and is simply stored.
inline void place_mono_byte(const Block& block, uint8_t* chunk, uint64_t offset, uint8_t bits, bool alone) {
    const unsigned shift = offset % 8;
    if (alone && shift == 0 && offset / 8 < block.capacity) {
        chunk[offset / 8] = bits;
        return;
    }
    Block::or_byte(chunk, offset / 8, block.capacity, static_cast<uint8_t>(bits >> shift));
    if (shift != 0) Block::or_byte(chunk, offset / 8 + 1, block.capacity, static_cast<uint8_t>(bits << (8 - shift)));
}

// 1 bit per pixel, first pixel in bit 7. For eight columns at once, row k's
// flags shifted left by 7 - k and or-ed together leave in byte t the eight
// bits of column t, which start at bit (column * height + i0) of the data.
void pack_mono(const Block& block) {
    uint8_t flags[8][kBlock] = {};
    ColumnMap<kBlock> columns_of;
    for (uint32_t j0 = 0; j0 < block.width; j0 += kBlock) {
        const uint32_t count = std::min(kBlock, block.width - j0);
        columns_of.fill(block, j0, count);
        for (uint32_t i0 = 0; i0 < block.height; i0 += 8) {
            reduce_rows(block, dark_flags, i0, j0, count, flags);
            for (uint32_t j = 0; j < count; j += 8) {
                uint64_t columns = 0;
                for (uint32_t k = 0; k < 8; ++k) columns |= load64(flags[k] + j) << (7 - k);
                for (uint32_t t = 0; t < 8 && j + t < count; ++t) {
                    place_mono_byte(block, columns_of.chunk[j + t], columns_of.first[j + t] + i0,
                                    static_cast<uint8_t>(columns >> (8 * t)), i0 + 8 <= block.height);
                }
            }
        }
    }
}

#if defined(__GNUC__) && defined(__x86_64__)
#define VELATRIX_HAVE_WIDE_MONO 1
#define VELATRIX_WIDE_MONO __attribute__((target("avx512f,avx512bw,avx512vl,avx512vbmi")))

// Dark flags of `count` pixels as bits, pixel i in bit i % 32 of word
// i / 32: blue, green and red of 32 pixels picked out of 96 bytes with
// byte permutes and summed in 16-bit lanes; loads stop at the last pixel.
VELATRIX_WIDE_MONO void dark_bits(const uint8_t* bgr, uint32_t count, uint32_t* words) {
    const __m512i blue = _mm512_load_si512(kPicks.bytes[0]), green = _mm512_load_si512(kPicks.bytes[1]),
                  red = _mm512_load_si512(kPicks.bytes[2]);
    const __m512i threshold = _mm512_set1_epi16(3 * 128);
    for (uint32_t i = 0; i < count; i += 32) {
        const size_t left = size_t{count - i} * 3;
        const __mmask64 low_bytes = left >= 64 ? ~__mmask64{0} : (__mmask64{1} << left) - 1;
        const __mmask64 high_bytes = left <= 64 ? 0 : left >= 96 ? (__mmask64{1} << 32) - 1 : (__mmask64{1} << (left - 64)) - 1;
        const uint8_t* p = bgr + size_t{i} * 3;
        const __m512i low = _mm512_maskz_loadu_epi8(low_bytes, p);
        const __m512i high = _mm512_maskz_loadu_epi8(high_bytes, p + 64);
        const __m512i b = _mm512_cvtepu8_epi16(_mm512_castsi512_si256(_mm512_permutex2var_epi8(low, blue, high)));
        const __m512i g = _mm512_cvtepu8_epi16(_mm512_castsi512_si256(_mm512_permutex2var_epi8(low, green, high)));
        const __m512i r = _mm512_cvtepu8_epi16(_mm512_castsi512_si256(_mm512_permutex2var_epi8(low, red, high)));
        words[i / 32] = _mm512_cmplt_epu16_mask(_mm512_add_epi16(_mm512_add_epi16(b, g), r), threshold);
    }
}

// The same packing from bit rows.
VELATRIX_WIDE_MONO void pack_mono_wide(const Block& block) {
    constexpr uint32_t kWide = 256;
    uint32_t words[8][kWide / 32] = {};
    ColumnMap<kWide> columns_of;
    for (uint32_t j0 = 0; j0 < block.width; j0 += kWide) {
        const uint32_t count = std::min(kWide, block.width - j0);
        columns_of.fill(block, j0, count);
        for (uint32_t i0 = 0; i0 < block.height; i0 += 8) {
            for (uint32_t k = 0; k < 8; ++k) {
                if (i0 + k < block.height) {
                    dark_bits(block.row(i0 + k, j0), count, words[k]);
                } else {
                    std::memset(words[k], 0, sizeof words[k]);
                }
            }
            // Row k's bit of each of 64 columns spread to a byte, kept as
            // bit 7 - k: byte c is then column c's eight bits.
            for (uint32_t j = 0; j < count; j += 64) {
                __m512i columns = _mm512_setzero_si512();
                for (uint32_t k = 0; k < 8; ++k) {
                    const uint64_t row_bits =
                        uint64_t{words[k][j / 32]} | (j / 32 + 1 < kWide / 32 ? uint64_t{words[k][j / 32 + 1]} << 32 : 0);
                    columns = _mm512_or_si512(columns, _mm512_and_si512(_mm512_movm_epi8(row_bits),
                                                                        _mm512_set1_epi8(static_cast<char>(0x80 >> k))));
                }
                alignas(64) uint8_t bytes[64];
                _mm512_store_si512(bytes, columns);
                for (uint32_t c = 0; c < 64 && j + c < count; ++c) {
                    place_mono_byte(block, columns_of.chunk[j + c], columns_of.first[j + c] + i0, bytes[c],
                                    i0 + 8 <= block.height);
                }
            }
        }
    }
}

#endif

#if defined(__GNUC__) && defined(__x86_64__)
#define VELATRIX_HAVE_WIDE_COLUMNS 1
// Whole columns of whole bytes: when every column of the block starts on a
// byte of its chunk and the block fits, each column's bytes are its own
// and can be stored rather than or-ed into zeroed chunks. Eight vectors of
// 64 bytes, byte c of vector m being byte m of column c's next eight, are
// turned into one 8-byte word per column and stored; only the chunks'
// unused tails need zeroing.
#define VELATRIX_WIDE_COLUMNS __attribute__((target("avx512f,avx512bw,avx512vl,avx512vbmi")))

// The first byte of each of up to 64 columns in its chunk, for a depth
// whose columns take `column_bytes` bytes each.
struct ColumnStarts {
    uint8_t* at[64];
    void fill(const Block& block, uint32_t j0, uint32_t count, size_t column_bytes) {
        for (uint32_t j = 0; j < count; ++j) at[j] = block.chunk_of(j0 + j) + block.local(j0 + j) * column_bytes;
    }
};

// Stores bytes [0, bytes) of each column's word (byte m from vector m) at
// starts.at[c] + offset, for columns [0, count).
VELATRIX_WIDE_COLUMNS inline void store_column_words(const __m512i (&v)[8], uint32_t count, const ColumnStarts& starts,
                                                      size_t offset, uint32_t bytes) {
    // Interleaving bytes, then 16-bit and 32-bit lanes leaves in word
    // 2 l + e of result q the eight bytes of column 16 l + 2 q + e.
    const __m512i t0 = _mm512_unpacklo_epi8(v[0], v[1]), t1 = _mm512_unpackhi_epi8(v[0], v[1]);
    const __m512i t2 = _mm512_unpacklo_epi8(v[2], v[3]), t3 = _mm512_unpackhi_epi8(v[2], v[3]);
    const __m512i t4 = _mm512_unpacklo_epi8(v[4], v[5]), t5 = _mm512_unpackhi_epi8(v[4], v[5]);
    const __m512i t6 = _mm512_unpacklo_epi8(v[6], v[7]), t7 = _mm512_unpackhi_epi8(v[6], v[7]);
    const __m512i u0 = _mm512_unpacklo_epi16(t0, t2), u1 = _mm512_unpackhi_epi16(t0, t2);
    const __m512i u2 = _mm512_unpacklo_epi16(t1, t3), u3 = _mm512_unpackhi_epi16(t1, t3);
    const __m512i u4 = _mm512_unpacklo_epi16(t4, t6), u5 = _mm512_unpackhi_epi16(t4, t6);
    const __m512i u6 = _mm512_unpacklo_epi16(t5, t7), u7 = _mm512_unpackhi_epi16(t5, t7);
    alignas(64) uint64_t words[8][8];
    _mm512_store_si512(words[0], _mm512_unpacklo_epi32(u0, u4));
    _mm512_store_si512(words[1], _mm512_unpackhi_epi32(u0, u4));
    _mm512_store_si512(words[2], _mm512_unpacklo_epi32(u1, u5));
    _mm512_store_si512(words[3], _mm512_unpackhi_epi32(u1, u5));
    _mm512_store_si512(words[4], _mm512_unpacklo_epi32(u2, u6));
    _mm512_store_si512(words[5], _mm512_unpackhi_epi32(u2, u6));
    _mm512_store_si512(words[6], _mm512_unpacklo_epi32(u3, u7));
    _mm512_store_si512(words[7], _mm512_unpackhi_epi32(u3, u7));
    // Column c = 16 l + 2 q + e, walked in that order.
    const auto mask = static_cast<__mmask16>((1u << bytes) - 1);
    for (uint32_t q = 0; q < 8; ++q) {
        for (uint32_t l = 0; l < 4; ++l) {
            for (uint32_t e = 0; e < 2; ++e) {
                const uint32_t c = 16 * l + 2 * q + e;
                if (c >= count) continue;
                const uint64_t word = words[q][2 * l + e];
                if (bytes == 8) {
                    std::memcpy(starts.at[c] + offset, &word, 8);
                } else {
                    _mm_mask_storeu_epi8(starts.at[c] + offset, mask, _mm_cvtsi64_si128(static_cast<long long>(word)));
                }
            }
        }
    }
}

// The byte masks of the three 64-byte loads that cover `count` (at most
// 64) pixels.
struct PixelLoads {
    __mmask64 mask[3];
    explicit PixelLoads(uint32_t count) {
        const size_t bytes = size_t{count} * 3;
        for (size_t i = 0; i < 3; ++i) {
            const size_t left = bytes > 64 * i ? bytes - 64 * i : 0;
            mask[i] = left >= 64 ? ~__mmask64{0} : (__mmask64{1} << left) - 1;
        }
    }
};

// Blue, green and red of 32 pixels as 16-bit lanes: pixel i's channel c
// is byte 3 i + c of the 128 bytes `low` then `high`.
struct alignas(64) WidePicks {
    uint8_t bytes[3][64];
};
constexpr WidePicks kWidePicks = [] {
    WidePicks picks{};
    for (int i = 0; i < 32; ++i) {
        for (int c = 0; c < 3; ++c) picks.bytes[c][2 * i] = static_cast<uint8_t>(3 * i + c);
    }
    return picks;
}();
constexpr __mmask64 kLowBytes = 0x5555555555555555ull;

// The channel sums of 64 pixels, pixels 0 to 31 in `first` and 32 to 63 in
// `second`, from their three 64-byte loads.
VELATRIX_WIDE_COLUMNS inline void channel_sums(const uint8_t* bgr, const PixelLoads& loads, __m512i& first,
                                               __m512i& second) {
    const __m512i a = _mm512_maskz_loadu_epi8(loads.mask[0], bgr);
    const __m512i b = _mm512_maskz_loadu_epi8(loads.mask[1], bgr + 64);
    const __m512i c = _mm512_maskz_loadu_epi8(loads.mask[2], bgr + 128);
    const __m512i blue = _mm512_load_si512(kWidePicks.bytes[0]), green = _mm512_load_si512(kWidePicks.bytes[1]),
                  red = _mm512_load_si512(kWidePicks.bytes[2]);
    first = _mm512_add_epi16(_mm512_add_epi16(_mm512_maskz_permutex2var_epi8(kLowBytes, a, blue, b),
                                              _mm512_maskz_permutex2var_epi8(kLowBytes, a, green, b)),
                             _mm512_maskz_permutex2var_epi8(kLowBytes, a, red, b));
    // Pixel 32 starts at byte 96: byte 32 of `b`.
    const __m512i shift = _mm512_set1_epi8(32);
    second = _mm512_add_epi16(
        _mm512_add_epi16(_mm512_maskz_permutex2var_epi8(kLowBytes, b, _mm512_add_epi8(blue, shift), c),
                         _mm512_maskz_permutex2var_epi8(kLowBytes, b, _mm512_add_epi8(green, shift), c)),
        _mm512_maskz_permutex2var_epi8(kLowBytes, b, _mm512_add_epi8(red, shift), c));
}

// 1 bit per pixel in whole bytes (block height a multiple of 8): 64
// columns by 64 rows at a time, row k of each eight added as bit 7 - k.
VELATRIX_WIDE_COLUMNS void pack_mono_columns(const Block& block) {
    const __m512i threshold = _mm512_set1_epi16(3 * 128);
    ColumnStarts starts;
    for (uint32_t j0 = 0; j0 < block.width; j0 += 64) {
        const uint32_t count = std::min(64u, block.width - j0);
        const PixelLoads loads(count);
        starts.fill(block, j0, count, block.height / 8);
        for (uint32_t g0 = 0; g0 < block.height; g0 += 64) {
            const uint32_t bytes = std::min(64u, block.height - g0) / 8;
            __m512i v[8];
#pragma GCC unroll 8
            for (uint32_t m = 0; m < 8; ++m) {
                v[m] = _mm512_setzero_si512();
                if (m >= bytes) continue;
                for (uint32_t k = 0; k < 8; ++k) {
                    __m512i first, second;
                    channel_sums(block.row(g0 + 8 * m + k, j0), loads, first, second);
                    const __mmask64 dark = _cvtu64_mask64(
                        uint64_t{_mm512_cmplt_epu16_mask(first, threshold)} |
                        uint64_t{_mm512_cmplt_epu16_mask(second, threshold)} << 32);
                    v[m] = _mm512_mask_add_epi8(v[m], dark, v[m], _mm512_set1_epi8(static_cast<char>(0x80 >> k)));
                }
            }
            store_column_words(v, count, starts, g0 / 8, bytes);
        }
    }
}

// 4 bits per pixel in whole bytes (block height even): 64 columns by 16
// rows at a time, rows 2 m and 2 m + 1 making byte m of each column.
VELATRIX_WIDE_COLUMNS void pack_grey_columns(const Block& block) {
    // (sum + 25) * 1286 >> 16 equals round(sum / 51) for every sum from 0 to 765.
    const __m512i bias = _mm512_set1_epi16(25), scale = _mm512_set1_epi16(1286);
    alignas(64) uint8_t even[64];
    for (int i = 0; i < 64; ++i) even[i] = static_cast<uint8_t>(2 * i);
    const __m512i low_bytes = _mm512_load_si512(even);
    ColumnStarts starts;
    for (uint32_t j0 = 0; j0 < block.width; j0 += 64) {
        const uint32_t count = std::min(64u, block.width - j0);
        const PixelLoads loads(count);
        starts.fill(block, j0, count, block.height / 2);
        for (uint32_t g0 = 0; g0 < block.height; g0 += 16) {
            const uint32_t bytes = std::min(16u, block.height - g0) / 2;
            __m512i v[8];
#pragma GCC unroll 8
            for (uint32_t m = 0; m < 8; ++m) {
                v[m] = _mm512_setzero_si512();
                if (m >= bytes) continue;
                __m512i first[2], second[2];
                for (uint32_t k = 0; k < 2; ++k) {
                    channel_sums(block.row(g0 + 2 * m + k, j0), loads, first[k], second[k]);
                    first[k] = _mm512_mulhi_epu16(_mm512_add_epi16(first[k], bias), scale);
                    second[k] = _mm512_mulhi_epu16(_mm512_add_epi16(second[k], bias), scale);
                }
                // Levels are below 16: the upper row's moves into the high nibble.
                const __m512i pairs_first = _mm512_or_si512(first[0], _mm512_slli_epi16(first[1], 4));
                const __m512i pairs_second = _mm512_or_si512(second[0], _mm512_slli_epi16(second[1], 4));
                v[m] = _mm512_permutex2var_epi8(pairs_first, low_bytes, pairs_second);
            }
            store_column_words(v, count, starts, g0 / 2, bytes);
        }
    }
}

#endif

// 4 bits per pixel, first pixel in the low nibble. Rows 2m and 2m + 1 make
// the byte of pair m; four pairs of one column are four consecutive bytes
// when the column starts on a byte, gathered here for eight columns with
// 16- and 32-bit lane shuffles of plain 64-bit words.
// Ors the four pair bytes of a column, pixels [offset, offset + 8) in
// nibbles, into its chunk. `alone`: all eight pixels exist, so on a byte
// boundary the four bytes are this column's only and are simply stored.
inline void place_grey_word(const Block& block, uint8_t* chunk, uint64_t offset, uint32_t word, bool alone) {
    const size_t at = offset / 2;
    if (alone && offset % 2 == 0 && at + 4 <= block.capacity) {
        std::memcpy(chunk + at, &word, 4);
        return;
    }
    if (offset % 2 == 0 && at + 4 <= block.capacity) {
        uint32_t merged;
        std::memcpy(&merged, chunk + at, 4);
        merged |= word;
        std::memcpy(chunk + at, &merged, 4);
        return;
    }
    // An odd start: each level moves one nibble up.
    const bool odd = offset % 2 != 0;
    for (uint32_t b = 0; b < 4; ++b) {
        const auto byte = static_cast<uint8_t>(word >> (8 * b));
        if (!odd) {
            Block::or_byte(chunk, at + b, block.capacity, byte);
        } else {
            Block::or_byte(chunk, at + b, block.capacity, static_cast<uint8_t>(byte << 4));
            Block::or_byte(chunk, at + b + 1, block.capacity, static_cast<uint8_t>(byte >> 4));
        }
    }
}

// The four pair bytes of each of eight columns j .. j + 7, from the levels
// of eight rows, in word t of the result for column j + t.
void grey_words(const uint8_t (&levels)[8][kBlock], uint32_t j, uint32_t (&out)[8]) {
    constexpr uint64_t kEvenBytes = 0x00FF00FF00FF00FFull;
    constexpr uint64_t kEvenHalves = 0x0000FFFF0000FFFFull;
    uint64_t pairs[4];
    for (uint32_t m = 0; m < 4; ++m) pairs[m] = load64(levels[2 * m] + j) | load64(levels[2 * m + 1] + j) << 4;
    // 16-bit lanes: pair 0 and pair 1 of even columns, then of odd ones.
    const uint64_t even01 = (pairs[0] & kEvenBytes) | (pairs[1] & kEvenBytes) << 8;
    const uint64_t odd01 = (pairs[0] >> 8 & kEvenBytes) | (pairs[1] & ~kEvenBytes);
    const uint64_t even23 = (pairs[2] & kEvenBytes) | (pairs[3] & kEvenBytes) << 8;
    const uint64_t odd23 = (pairs[2] >> 8 & kEvenBytes) | (pairs[3] & ~kEvenBytes);
    // 32-bit lanes: the four pair bytes of one column.
    const uint64_t words[4] = {
        (even01 & kEvenHalves) | (even23 & kEvenHalves) << 16,   // columns 0, 4
        (odd01 & kEvenHalves) | (odd23 & kEvenHalves) << 16,     // columns 1, 5
        (even01 >> 16 & kEvenHalves) | (even23 & ~kEvenHalves),  // columns 2, 6
        (odd01 >> 16 & kEvenHalves) | (odd23 & ~kEvenHalves),    // columns 3, 7
    };
    for (uint32_t t = 0; t < 8; ++t) out[t] = static_cast<uint32_t>(words[t % 4] >> (t < 4 ? 0 : 32));
}


#ifdef VELATRIX_HAVE_WIDE_GREY
#define VELATRIX_WIDE_GREY __attribute__((target("avx512f,avx512bw,avx512vl,avx512vbmi")))

// The grey levels of `count` (at most 32) pixels in a register, lanes past
// `count` zero: blue, green and red picked out of 96 bytes with byte
// permutes and summed in 16-bit lanes; (sum + 25) * 1286 >> 16 equals
// round(sum / 51) for every sum from 0 to 765.
VELATRIX_WIDE_GREY inline __m256i levels32(const uint8_t* bgr, uint32_t count) {
    const __m512i bias = _mm512_set1_epi16(25), scale = _mm512_set1_epi16(1286);
    const size_t left = size_t{count} * 3;
    const __mmask64 low_bytes = left >= 64 ? ~__mmask64{0} : (__mmask64{1} << left) - 1;
    const __mmask64 high_bytes = left <= 64 ? 0 : left >= 96 ? (__mmask64{1} << 32) - 1 : (__mmask64{1} << (left - 64)) - 1;
    const __m512i low = _mm512_maskz_loadu_epi8(low_bytes, bgr);
    const __m512i high = _mm512_maskz_loadu_epi8(high_bytes, bgr + 64);
    const __m512i b = _mm512_cvtepu8_epi16(_mm512_castsi512_si256(_mm512_permutex2var_epi8(low, _mm512_load_si512(kPicks.bytes[0]), high)));
    const __m512i g = _mm512_cvtepu8_epi16(_mm512_castsi512_si256(_mm512_permutex2var_epi8(low, _mm512_load_si512(kPicks.bytes[1]), high)));
    const __m512i r = _mm512_cvtepu8_epi16(_mm512_castsi512_si256(_mm512_permutex2var_epi8(low, _mm512_load_si512(kPicks.bytes[2]), high)));
    const __m512i sum = _mm512_add_epi16(_mm512_add_epi16(b, g), r);
    const __m256i levels = _mm512_cvtepi16_epi8(_mm512_mulhi_epu16(_mm512_add_epi16(sum, bias), scale));
    return _mm256_maskz_mov_epi8(count >= 32 ? ~__mmask32{0} : (__mmask32{1} << count) - 1, levels);
}

// The 4-bit packing with every step in registers: 64 columns' levels of
// eight rows, their pair bytes, and the byte and word interleaves that
// leave word e of 32-bit lane l of result q for column 16 l + 4 q + e.
VELATRIX_WIDE_GREY void pack_grey_wide(const Block& block) {
    constexpr uint32_t kColumns = 64;
    ColumnMap<kColumns> columns_of;
    alignas(64) uint32_t words[4][16];
    for (uint32_t j0 = 0; j0 < block.width; j0 += kColumns) {
        const uint32_t count = std::min(kColumns, block.width - j0);
        columns_of.fill(block, j0, count);
        for (uint32_t i0 = 0; i0 < block.height; i0 += 8) {
            __m512i rows[8];
            for (uint32_t k = 0; k < 8; ++k) {
                rows[k] = _mm512_setzero_si512();
                if (i0 + k >= block.height) continue;
                const uint8_t* p = block.row(i0 + k, j0);
                rows[k] = _mm512_castsi256_si512(levels32(p, std::min(count, 32u)));
                if (count > 32) rows[k] = _mm512_inserti64x4(rows[k], levels32(p + 96, count - 32), 1);
            }
            __m512i pairs[4];
            // Levels are below 16: shifting 16-bit lanes moves no bit across a byte.
            for (int m = 0; m < 4; ++m) pairs[m] = _mm512_or_si512(rows[2 * m], _mm512_slli_epi16(rows[2 * m + 1], 4));
            const __m512i low01 = _mm512_unpacklo_epi8(pairs[0], pairs[1]), high01 = _mm512_unpackhi_epi8(pairs[0], pairs[1]);
            const __m512i low23 = _mm512_unpacklo_epi8(pairs[2], pairs[3]), high23 = _mm512_unpackhi_epi8(pairs[2], pairs[3]);
            _mm512_store_si512(words[0], _mm512_unpacklo_epi16(low01, low23));
            _mm512_store_si512(words[1], _mm512_unpackhi_epi16(low01, low23));
            _mm512_store_si512(words[2], _mm512_unpacklo_epi16(high01, high23));
            _mm512_store_si512(words[3], _mm512_unpackhi_epi16(high01, high23));
            for (uint32_t c = 0; c < count; ++c) {
                place_grey_word(block, columns_of.chunk[c], columns_of.first[c] + i0, words[(c % 16) / 4][4 * (c / 16) + c % 4],
                                i0 + 8 <= block.height);
            }
        }
    }
}
#endif

void pack_grey(const Block& block) {
#ifdef VELATRIX_HAVE_WIDE_GREY
    if (velatrix::graphics::cpu_has_byte_permute()) return pack_grey_wide(block);
#endif
    uint8_t levels[8][kBlock] = {};
    uint32_t words[kBlock];
    ColumnMap<kBlock> columns_of;
    for (uint32_t j0 = 0; j0 < block.width; j0 += kBlock) {
        const uint32_t count = std::min(kBlock, block.width - j0);
        columns_of.fill(block, j0, count);
        for (uint32_t i0 = 0; i0 < block.height; i0 += 8) {
            reduce_rows(block, grey_levels, i0, j0, count, levels);
            for (uint32_t j = 0; j < count; j += 8) grey_words(levels, j, reinterpret_cast<uint32_t(&)[8]>(words[j]));
            for (uint32_t j = 0; j < count; ++j) {
                place_grey_word(block, columns_of.chunk[j], columns_of.first[j] + i0, words[j], i0 + 8 <= block.height);
            }
        }
    }
}

// 24 bits per pixel, red, green, blue. The rows are walked in memory
// order across all the chunks (a column walk would touch a new page at
// every pixel). Each pixel is one 4-byte load of blue, green, red and the
// next byte, and one 4-byte store of red, green, blue and a zero that the
// pixel below overwrites later. The bitmap's last column (no next byte
// where the buffer may end) and the last row are copied bytewise.
void pack_colour_chunk(const Block& block, uint32_t first, uint32_t width, uint8_t* out) {
    // More pixels than fit: what fits goes, the last one perhaps in part.
    std::memset(out, 0, block.capacity);
    uint64_t n = 0;
    for (uint32_t j = first; j < first + width; ++j) {
        for (uint32_t i = 0; i < block.height; ++i, ++n) {
            const uint8_t* p = block.row(i, j);
            for (uint32_t c = 0; c < 3; ++c) {
                if (n * 3 + c < block.capacity) out[n * 3 + c] = p[2 - c];
            }
        }
    }
}

#if defined(__GNUC__) && defined(__x86_64__)
#define VELATRIX_HAVE_WIDE_COLOUR 1
#define VELATRIX_WIDE_COLOUR __attribute__((target("avx512f,avx512bw,avx512vbmi")))

// The byte indices of the transpose's first and last steps, which also
// turn pixels into 32-bit words and back (see pack_colour_tiles).
struct alignas(64) TileIndices {
    uint8_t spread[2][64];  // rows i and i + 1 into interleaved words, lower and upper pixel pairs
    uint8_t gather[2][64];  // the last step's two selections, to 48 bytes of red, green, blue
};
constexpr TileIndices kTileIndices = [] {
    TileIndices t{};
    for (int half = 0; half < 2; ++half) {
        for (int word = 0; word < 16; ++word) {
            // Word s of 128-bit lane l: pixel 4 l + 2 half + s / 2 of row i + s % 2.
            const int lane = word / 4, slot = word % 4;
            const int pixel = 4 * lane + 2 * half + slot / 2, source = slot % 2;
            for (int k = 0; k < 3; ++k) {
                t.spread[half][4 * word + k] = static_cast<uint8_t>(64 * source + 3 * pixel + 2 - k);
            }
            t.spread[half][4 * word + 3] = 0;
        }
        // Lanes 0 and 2 (half 0) or 1 and 3 (half 1) of each source.
        for (int word = 0; word < 16; ++word) {
            const int source = word / 8, lane = 2 * ((word / 4) % 2) + half;
            for (int k = 0; k < 3; ++k) {
                t.gather[half][3 * word + k] = static_cast<uint8_t>(64 * source + 16 * lane + 4 * (word % 4) + k);
            }
        }
    }
    return t;
}();

// Rows [0, rows) of columns [0, columns), both multiples of 16, in tiles
// of 16 x 16 pixels transposed as 32-bit words of red, green, blue and
// zero. The first step of the transpose makes those words straight from
// the rows' bytes (two rows per byte permute) and the last leaves each
// column's 48 bytes of red, green, blue, stored where its pixels run in
// its chunk.
VELATRIX_WIDE_COLOUR void pack_colour_tiles(const Block& block, uint32_t rows, uint32_t columns,
                                            uint8_t* const* column_starts) {
    const __m512i spread_low = _mm512_load_si512(kTileIndices.spread[0]);
    const __m512i spread_high = _mm512_load_si512(kTileIndices.spread[1]);
    const __m512i gather_even = _mm512_load_si512(kTileIndices.gather[0]);
    const __m512i gather_odd = _mm512_load_si512(kTileIndices.gather[1]);
    constexpr __mmask64 kPixelBytes = (__mmask64{1} << 48) - 1;
    constexpr __mmask64 kColourBytes = 0x7777777777777777ull;
    for (uint32_t i0 = 0; i0 < rows; i0 += 16) {
        for (uint32_t j0 = 0; j0 < columns; j0 += 16) {
            __m512i t[16], r[16];
            for (uint32_t i = 0; i < 16; i += 2) {
                const __m512i upper = _mm512_maskz_loadu_epi8(kPixelBytes, block.row(i0 + i, j0));
                const __m512i lower = _mm512_maskz_loadu_epi8(kPixelBytes, block.row(i0 + i + 1, j0));
                t[i] = _mm512_maskz_permutex2var_epi8(kColourBytes, upper, spread_low, lower);
                t[i + 1] = _mm512_maskz_permutex2var_epi8(kColourBytes, upper, spread_high, lower);
            }
            for (int i = 0; i < 16; i += 4) {
                r[i] = _mm512_unpacklo_epi64(t[i], t[i + 2]);
                r[i + 1] = _mm512_unpackhi_epi64(t[i], t[i + 2]);
                r[i + 2] = _mm512_unpacklo_epi64(t[i + 1], t[i + 3]);
                r[i + 3] = _mm512_unpackhi_epi64(t[i + 1], t[i + 3]);
            }
            for (int i = 0; i < 4; ++i) {
                t[i] = _mm512_shuffle_i32x4(r[i], r[i + 4], 0x88);
                t[i + 4] = _mm512_shuffle_i32x4(r[i], r[i + 4], 0xdd);
                t[i + 8] = _mm512_shuffle_i32x4(r[i + 8], r[i + 12], 0x88);
                t[i + 12] = _mm512_shuffle_i32x4(r[i + 8], r[i + 12], 0xdd);
            }
            // A whole 64-byte store where its last 16 bytes land on rows of
            // the same column that a later tile or the row copy rewrites:
            // cheaper than the masked store of 48.
            const bool spill = i0 + 22 <= block.height;
            for (uint32_t i = 0; i < 8; ++i) {
                uint8_t* even = column_starts[j0 + i] + size_t{i0} * 3;
                uint8_t* odd = column_starts[j0 + i + 8] + size_t{i0} * 3;
                const __m512i even_bytes = _mm512_permutex2var_epi8(t[i], gather_even, t[i + 8]);
                const __m512i odd_bytes = _mm512_permutex2var_epi8(t[i], gather_odd, t[i + 8]);
                if (spill) {
                    _mm512_storeu_si512(even, even_bytes);
                    _mm512_storeu_si512(odd, odd_bytes);
                } else {
                    _mm512_mask_storeu_epi8(even, kPixelBytes, even_bytes);
                    _mm512_mask_storeu_epi8(odd, kPixelBytes, odd_bytes);
                }
            }
        }
    }
}
#endif

void pack_colour(const Block& block) {
    const uint32_t chunks = (block.width + block.chunk_width - 1) / block.chunk_width;
    if (uint64_t{block.chunk_width} * block.height * 3 > block.capacity) {
        for (uint32_t k = 0; k < chunks; ++k) {
            pack_colour_chunk(block, k * block.chunk_width, std::min(block.chunk_width, block.width - k * block.chunk_width),
                              block.data[k]);
        }
        return;
    }
    const bool last_column = block.x + block.width == static_cast<uint32_t>(block.bitmap->width);
    const uint32_t fast_columns = last_column ? block.width - 1 : block.width;
    const size_t column_bytes = size_t{block.height} * 3;
    // Where each column's packed pixels start; a transfer's passes fit the
    // array on the stack.
    uint8_t* on_stack[256];
    std::vector<uint8_t*> on_heap(block.width > std::size(on_stack) ? block.width : 0);
    uint8_t** columns = on_heap.empty() ? on_stack : on_heap.data();
    for (uint32_t k = 0, j = 0; k < chunks; ++k) {
        for (uint32_t local = 0; local < block.chunk_width && j < block.width; ++local, ++j) {
            columns[j] = block.data[k] + local * column_bytes;
        }
    }
    // Rows [i_from, i_to) of columns [j_from, j_to), in memory order.
    auto copy = [&](uint32_t i_from, uint32_t i_to, uint32_t j_from, uint32_t j_to) {
        if (j_from >= j_to) return;
        for (uint32_t i = i_from; i < i_to; ++i) {
            const uint8_t* p = block.row(i, j_from);
            const size_t at = size_t{i} * 3;
            // The zero after a column's last pixel would land on the next column's first.
            const uint32_t fast_end = i + 1 < block.height ? std::min(fast_columns, j_to) : j_from;
            uint32_t j = j_from;
            for (; j < fast_end; ++j, p += 3) {
                uint32_t pixel;
                std::memcpy(&pixel, p, 4);
                pixel = __builtin_bswap32(pixel) >> 8;
                std::memcpy(columns[j] + at, &pixel, 4);
            }
            for (; j < j_to; ++j, p += 3) {
                uint8_t* out = columns[j] + at;
                out[0] = p[2];
                out[1] = p[1];
                out[2] = p[0];
            }
        }
    };
    uint32_t tiled_rows = 0, tiled_columns = 0;
#ifdef VELATRIX_HAVE_WIDE_COLOUR
    if (velatrix::graphics::cpu_has_byte_permute()) {
        tiled_rows = block.height / 16 * 16;
        tiled_columns = block.width / 16 * 16;
        pack_colour_tiles(block, tiled_rows, tiled_columns, columns);
    }
#endif
    copy(0, tiled_rows, tiled_columns, block.width);
    copy(tiled_rows, block.height, 0, block.width);
    for (uint32_t k = 0; k < chunks; ++k) {
        const uint32_t width = std::min(block.chunk_width, block.width - k * block.chunk_width);
        const size_t used = size_t{width} * column_bytes;
        std::memset(block.data[k] + used, 0, block.capacity - used);
    }
}

}  // namespace

void pack_chunk_pixels(const velatrix_bitmap* bitmap, uint32_t x, uint32_t y, uint32_t width, uint32_t height,
                       uint8_t bits_per_pixel, uint32_t chunk_width, uint8_t* const* data, size_t capacity) {
    const Block block{bitmap, x, y, width, height, chunk_width, data, capacity};
    const uint32_t chunks = (width + chunk_width - 1) / chunk_width;
    // 8 bits per pixel is packed as 4-bit levels although the header says
    // 8: the pad's firmware expects exactly this.
    const bool mono = bits_per_pixel == 1, grey = bits_per_pixel == 4 || bits_per_pixel == 8;
    if (!mono && !grey) return pack_colour(block);
#ifdef VELATRIX_HAVE_WIDE_COLUMNS
    // Columns that start on a byte and all fit: stored whole, and only the
    // rest of each chunk is zeroed.
    const uint32_t bits = mono ? 1 : 4;
    if (velatrix::graphics::cpu_has_byte_permute() && height % (8 / bits) == 0 &&
        uint64_t{chunk_width} * height * bits <= uint64_t{capacity} * 8) {
        if (mono) pack_mono_columns(block);
        else pack_grey_columns(block);
        for (uint32_t k = 0; k < chunks; ++k) {
            const size_t used = size_t{std::min(chunk_width, width - k * chunk_width)} * height * bits / 8;
            std::memset(data[k] + used, 0, capacity - used);
        }
        return;
    }
#endif
    for (uint32_t k = 0; k < chunks; ++k) std::memset(data[k], 0, capacity);
    if (mono) {
#ifdef VELATRIX_HAVE_WIDE_MONO
        if (velatrix::graphics::cpu_has_byte_permute()) return pack_mono_wide(block);
#endif
        return pack_mono(block);
    }
    pack_grey(block);
}

}  // namespace velatrix::display
