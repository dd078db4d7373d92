// A white test canvas owning its buffer, and pixel maps of what was drawn,
// one string per row ("..##..") so expected shapes read like pictures.
#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "graphics/cpu_features.h"
#include "velatrix/bitmap.h"

namespace velatrix::testing {

inline size_t bitmap_file_size(int width, int height) {
    return static_cast<size_t>((width * 24 + 31) / 32 * 4) * height + 54;
}

// Black at alpha 128 over white, blended 0 to 6 times in a row: each blend
// is single precision and truncated, hence 0x7E rather than 0x7F.
inline constexpr uint32_t kHalfBlack = 0x00000080u;
inline constexpr uint32_t kHalfBlackLayers[] = {0xFFFFFFFFu, 0x7E7E7EFFu, 0x3E3E3EFFu, 0x1E1E1EFFu,
                                                0x0E0E0EFFu, 0x060606FFu, 0x020202FFu};

struct Canvas {
    std::vector<uint8_t> buffer;
    velatrix_bitmap bitmap{};

    Canvas(int width, int height, uint8_t fill = 0) : buffer(bitmap_file_size(width, height), fill) {
        velatrix_bitmap_init(&bitmap, buffer.data(), width, height);
    }
    Canvas(const Canvas&) = delete;
    Canvas& operator=(const Canvas&) = delete;

    velatrix_bitmap* get() { return &bitmap; }
    uint32_t at(int x, int y) const { return velatrix_get_pixel(&bitmap, x, y); }
    void set(int x, int y, uint32_t color) { velatrix_set_pixel(&bitmap, x, y, color); }

    std::vector<std::string> map(const std::function<char(uint32_t)>& symbol) const {
        std::vector<std::string> rows;
        for (int y = 0; y < bitmap.height; ++y) {
            std::string row;
            for (int x = 0; x < bitmap.width; ++x) row += symbol(at(x, y));
            rows.push_back(row);
        }
        return rows;
    }

    // '.' for untouched white, '#' for anything else.
    std::vector<std::string> ink() const {
        return map([](uint32_t c) { return c == 0xFFFFFFFFu ? '.' : '#'; });
    }

    // How many times each pixel was set in kHalfBlack: '.' never, else a digit.
    std::vector<std::string> layers() const {
        return map([](uint32_t c) {
            for (int n = 0; n < 7; ++n) {
                if (kHalfBlackLayers[n] == c) return n == 0 ? '.' : static_cast<char>('0' + n);
            }
            return '?';
        });
    }
};

// Runs a fast path's property check with the vector kernels (where the
// processor has them) and with the portable code.
inline void with_and_without_vector_kernels(const std::function<void()>& check) {
    for (bool vector : {true, false}) {
        SCOPED_TRACE(vector ? "vector kernels" : "portable code");
        graphics::allow_vector_kernels(vector);
        check();
    }
    graphics::allow_vector_kernels(true);
}

}  // namespace velatrix::testing
