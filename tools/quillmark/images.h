// Images in and out of the tool: PNG through libpng, the library's
// in-memory BMP bitmaps, and plain RGB rows between them.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "velatrix-quillmark.h"

namespace quillmark {

// 8-bit red, green, blue per pixel, rows top to bottom.
struct RgbImage {
    int32_t width = 0;
    int32_t height = 0;
    std::vector<uint8_t> rgb;
};

// Throws Refused when the file cannot be read or written or is no PNG.
// Transparent pixels are composed onto white.
RgbImage read_png(const std::string& path);
void write_png(const std::string& path, const RgbImage& image);

// A library bitmap with its own storage.
struct Canvas {
    std::vector<uint8_t> buffer;
    velatrix_bitmap bitmap{};
    Canvas(int32_t width, int32_t height);
    RgbImage to_rgb() const;
    // Copies the image to (x, y), clipped to the canvas.
    void paste(const RgbImage& image, int32_t x, int32_t y);
};

}  // namespace quillmark
