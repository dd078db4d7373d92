// A small BMP reader for tests, written from the file format alone and
// sharing nothing with the library's bitmap code: it checks what a saved
// bitmap file really contains. Only uncompressed 24-bit images are decoded.
#pragma once

#include <cstdint>
#include <cstdio>
#include <span>
#include <string>
#include <vector>

namespace velatrix::testing {

struct BmpImage {
    std::string error;  // empty when the file decoded
    uint32_t file_size = 0;
    uint32_t pixel_offset = 0;
    uint32_t info_size = 0;
    int32_t width = 0;
    int32_t height = 0;  // as stored: positive for bottom-up rows
    uint16_t planes = 0;
    uint16_t bits_per_pixel = 0;
    uint32_t compression = 0;
    uint32_t image_size = 0;
    std::vector<uint32_t> pixels;  // top row first, 0xRRGGBBFF

    bool ok() const { return error.empty(); }
    int32_t rows() const { return height < 0 ? -height : height; }
    uint32_t at(int x, int y) const { return pixels.at(static_cast<size_t>(y) * width + x); }
};

namespace bmp_detail {

inline uint32_t le(std::span<const uint8_t> bytes, size_t offset, size_t width) {
    uint32_t value = 0;
    for (size_t i = 0; i < width; ++i) value |= static_cast<uint32_t>(bytes[offset + i]) << (8 * i);
    return value;
}

}  // namespace bmp_detail

inline BmpImage decode_bmp(std::span<const uint8_t> bytes) {
    using bmp_detail::le;
    BmpImage image;
    if (bytes.size() < 54) return image.error = "shorter than the headers", image;
    if (bytes[0] != 'B' || bytes[1] != 'M') return image.error = "no BM signature", image;
    image.file_size = le(bytes, 2, 4);
    image.pixel_offset = le(bytes, 10, 4);
    image.info_size = le(bytes, 14, 4);
    image.width = static_cast<int32_t>(le(bytes, 18, 4));
    image.height = static_cast<int32_t>(le(bytes, 22, 4));
    image.planes = static_cast<uint16_t>(le(bytes, 26, 2));
    image.bits_per_pixel = static_cast<uint16_t>(le(bytes, 28, 2));
    image.compression = le(bytes, 30, 4);
    image.image_size = le(bytes, 34, 4);
    if (image.file_size != bytes.size()) return image.error = "file size field differs from the file", image;
    if (image.bits_per_pixel != 24 || image.compression != 0) return image.error = "not uncompressed 24-bit", image;
    if (image.width < 0) return image.error = "negative width", image;
    const uint64_t stride = (static_cast<uint64_t>(image.width) * 3 + 3) / 4 * 4;
    const uint64_t rows = static_cast<uint64_t>(image.rows());
    if (image.pixel_offset + stride * rows > bytes.size()) return image.error = "pixel rows run past the end", image;
    image.pixels.resize(static_cast<size_t>(image.width) * rows);
    for (uint64_t row = 0; row < rows; ++row) {
        // Positive heights store the bottom line first.
        const uint64_t y = image.height > 0 ? rows - 1 - row : row;
        for (int32_t x = 0; x < image.width; ++x) {
            const size_t at = image.pixel_offset + row * stride + 3 * static_cast<uint64_t>(x);
            image.pixels[y * image.width + x] = static_cast<uint32_t>(bytes[at + 2]) << 24 |
                                                static_cast<uint32_t>(bytes[at + 1]) << 16 |
                                                static_cast<uint32_t>(bytes[at]) << 8 | 0xFFu;
        }
    }
    return image;
}

inline bool write_file(const std::string& path, std::span<const uint8_t> bytes) {
    std::FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return false;
    const bool written = std::fwrite(bytes.data(), 1, bytes.size(), file) == bytes.size();
    return std::fclose(file) == 0 && written;
}

inline std::vector<uint8_t> read_file(const std::string& path) {
    std::vector<uint8_t> bytes;
    std::FILE* file = std::fopen(path.c_str(), "rb");
    if (file == nullptr) return bytes;
    uint8_t chunk[4096];
    size_t got = 0;
    while ((got = std::fread(chunk, 1, sizeof chunk, file)) > 0) bytes.insert(bytes.end(), chunk, chunk + got);
    std::fclose(file);
    return bytes;
}

inline BmpImage read_bmp_file(const std::string& path) {
    const std::vector<uint8_t> bytes = read_file(path);
    if (bytes.empty()) {
        BmpImage image;
        image.error = "cannot read " + path;
        return image;
    }
    return decode_bmp(bytes);
}

}  // namespace velatrix::testing
