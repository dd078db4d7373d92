// Text on the device: decoded, measured in the device's current font,
// rendered into a bitmap of exactly its size and sent as display chunks.
#include <algorithm>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

#include "velatrix/display.h"
#include "velatrix/fonts.h"

#include "debug/log.h"

namespace {

constexpr const char* kDefaultEncoding = "utf-8";
constexpr uint32_t kOpaqueBlack = 0x000000FF;
constexpr size_t kInvertedBytes = 8;

struct FreeDeleter {
    void operator()(int32_t* code_points) const { std::free(code_points); }
};
using CodePoints = std::unique_ptr<int32_t[], FreeDeleter>;

const velatrix_font* device_font(const velatrix_device* device) {
    return device->font != nullptr ? static_cast<const velatrix_font*>(device->font) : &velatrix_default;
}

CodePoints decode(const char* text, uint32_t length, const char* encoding) {
    int32_t count = 0;
    CodePoints code_points(parse_string_encoding(text, static_cast<int32_t>(length), encoding, &count));
    if (code_points != nullptr && count == 0) code_points.reset();
    return code_points;
}

enum class Measure { Width, Height };

int32_t measure(velatrix_device* device, const char* text, uint32_t length, const char* encoding, Measure what) {
    if (device == nullptr) {
        VELATRIX_REPORT_ERROR("Device was null, unable to measure text.");
        return 0;
    }
    CodePoints code_points = decode(text, length, encoding);
    if (code_points == nullptr) return 0;
    const velatrix_font* font = device_font(device);
    return what == Measure::Width ? enhanced_get_string_width(font, code_points.get())
                                  : enhanced_get_string_height(font, code_points.get());
}

uint32_t text_length(const char* text) { return text != nullptr ? static_cast<uint32_t>(std::strlen(text)) : 0; }

// The four off-screen checks, in the order callers see their messages.
const char* off_screen_message(const velatrix_hid_feature_display_info& display, uint32_t x, uint32_t y, uint32_t w,
                               uint32_t h) {
    if (x > display.width) return "Requested coordinate is off the screen in the horizontal direction.";
    if (x + w > display.width) return "Requested string would draw off the screen in the horizontal direction.";
    if (y > display.height) return "Requested coordinate is off the screen in the vertical direction.";
    if (y + h > display.height) return "Requested string would draw off the screen in the vertical direction.";
    return nullptr;
}

}  // namespace

extern "C" {

int velatrix_device_draw_text_encoded(velatrix_device* device, const char* text, uint32_t length, uint32_t x,
                                      uint32_t y, int alignment, uint8_t inverse, const char* encoding) {
    VELATRIX_TRACE_FUNCTION();
    if (device == nullptr) {
        VELATRIX_REPORT_ERROR("Device was null, unable to draw text.");
        return 0;
    }
    CodePoints code_points = decode(text, length, encoding);
    if (code_points == nullptr) {
        VELATRIX_REPORT_ERROR("String encoding problem, unable to convert string.");
        return 0;
    }
    const velatrix_font* font = device_font(device);
    const auto width = static_cast<uint32_t>(enhanced_get_string_width(font, code_points.get()));
    const auto height = static_cast<uint32_t>(enhanced_get_string_height(font, code_points.get()));
    if (alignment == VELATRIX_TEXT_ALIGN_CENTRE) {
        x -= width / 2;
    } else if (alignment == VELATRIX_TEXT_ALIGN_RIGHT) {
        x -= width;
    }
    if (const char* message = off_screen_message(device->display_info, x, y, width, height)) {
        VELATRIX_REPORT_ERROR("%s", message);
        return 0;
    }

    std::vector<uint8_t> buffer(((width * 24 + 31) / 32) * 4 * height + 54);
    velatrix_bitmap bitmap{};
    if (!velatrix_bitmap_init(&bitmap, buffer.data(), static_cast<int32_t>(width), static_cast<int32_t>(height))) {
        return 0;
    }
    enhanced_draw_string_aligned(&bitmap, font, code_points.get(), 0, 0, static_cast<int32_t>(width),
                                 static_cast<int32_t>(height), 0, 0, kOpaqueBlack);
    code_points.reset();
    if (inverse) {
        // Inversion deliberately reaches only the first eight bytes of pixel
        // data; callers rely on the pads' established look.
        const size_t pixel_bytes = buffer.size() - 54;
        for (size_t i = 0; i < std::min(kInvertedBytes, pixel_bytes); ++i) bitmap.pixels[i] = ~bitmap.pixels[i];
    }
    const auto depth = static_cast<uint8_t>(
        std::min<int32_t>(font->bits_per_pixel, device->display_info.color_depth));
    return velatrix_transfer_bitmap_to_device(device, &bitmap, x, y, depth);
}

int velatrix_device_draw_text(velatrix_device* device, const char* text, uint32_t x, uint32_t y, int alignment,
                              uint8_t inverse) {
    VELATRIX_TRACE_FUNCTION();
    return velatrix_device_draw_text_encoded(device, text, text_length(text), x, y, alignment, inverse,
                                             kDefaultEncoding);
}

int32_t velatrix_measure_text_width_encoding(velatrix_device* device, const char* text, uint32_t length,
                                             const char* encoding) {
    VELATRIX_TRACE_FUNCTION();
    return measure(device, text, length, encoding, Measure::Width);
}

int32_t velatrix_measure_text_height_encoding(velatrix_device* device, const char* text, uint32_t length,
                                              const char* encoding) {
    VELATRIX_TRACE_FUNCTION();
    return measure(device, text, length, encoding, Measure::Height);
}

int32_t velatrix_measure_text_width(velatrix_device* device, const char* text) {
    VELATRIX_TRACE_FUNCTION();
    return measure(device, text, text_length(text), kDefaultEncoding, Measure::Width);
}

int32_t velatrix_measure_text_height(velatrix_device* device, const char* text) {
    VELATRIX_TRACE_FUNCTION();
    return measure(device, text, text_length(text), kDefaultEncoding, Measure::Height);
}

}  // extern "C"
