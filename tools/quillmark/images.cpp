#include "images.h"

#include <png.h>

#include <cstring>

#include "session.h"

namespace quillmark {

RgbImage read_png(const std::string& path) {
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    if (png_image_begin_read_from_file(&image, path.c_str()) == 0) {
        throw Refused("cannot read " + path + ": " + image.message);
    }
    image.format = PNG_FORMAT_RGB;
    RgbImage out{static_cast<int32_t>(image.width), static_cast<int32_t>(image.height), {}};
    out.rgb.resize(PNG_IMAGE_SIZE(image));
    png_color white{255, 255, 255};
    if (png_image_finish_read(&image, &white, out.rgb.data(), 0, nullptr) == 0) {
        const std::string message = image.message;
        png_image_free(&image);
        throw Refused("cannot read " + path + ": " + message);
    }
    return out;
}

void write_png(const std::string& path, const RgbImage& in) {
    png_image image;
    std::memset(&image, 0, sizeof image);
    image.version = PNG_IMAGE_VERSION;
    image.width = static_cast<png_uint_32>(in.width);
    image.height = static_cast<png_uint_32>(in.height);
    image.format = PNG_FORMAT_RGB;
    if (png_image_write_to_file(&image, path.c_str(), 0, in.rgb.data(), 0, nullptr) == 0) {
        throw Refused("cannot write " + path + ": " + image.message);
    }
}

Canvas::Canvas(int32_t width, int32_t height)
    : buffer(static_cast<size_t>((width * 24 + 31) / 32) * 4 * height + VELATRIX_BITMAP_HEADER_SIZE) {
    velatrix_bitmap_init(&bitmap, buffer.data(), width, height);
}

RgbImage Canvas::to_rgb() const {
    RgbImage out{bitmap.width, bitmap.height, {}};
    out.rgb.reserve(static_cast<size_t>(bitmap.width) * bitmap.height * 3);
    for (int32_t y = 0; y < bitmap.height; ++y) {
        for (int32_t x = 0; x < bitmap.width; ++x) {
            const uint32_t pixel = velatrix_get_pixel(&bitmap, x, y);
            out.rgb.push_back(static_cast<uint8_t>(pixel >> 24));
            out.rgb.push_back(static_cast<uint8_t>(pixel >> 16));
            out.rgb.push_back(static_cast<uint8_t>(pixel >> 8));
        }
    }
    return out;
}

void Canvas::paste(const RgbImage& image, int32_t x0, int32_t y0) {
    for (int32_t y = 0; y < image.height; ++y) {
        for (int32_t x = 0; x < image.width; ++x) {
            const uint8_t* p = &image.rgb[(static_cast<size_t>(y) * image.width + x) * 3];
            const uint32_t colour = static_cast<uint32_t>(p[0]) << 24 | static_cast<uint32_t>(p[1]) << 16 |
                                    static_cast<uint32_t>(p[2]) << 8 | 0xFFu;
            velatrix_set_pixel(&bitmap, x0 + x, y0 + y, colour);
        }
    }
}

}  // namespace quillmark
