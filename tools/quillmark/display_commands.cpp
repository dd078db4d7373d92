// `quillmark show` and `quillmark clear`.
#include <cstdio>
#include <cstdlib>

#include "commands.h"
#include "images.h"
#include "text.h"

namespace quillmark {
namespace {

std::pair<int32_t, int32_t> parse_at(const std::string& at) {
    const auto parts = split(at, ',');
    if (parts.size() != 2) throw UsageError("--at: expected X,Y, not '" + at + "'");
    return {parse_u16(parts[0], "--at"), parse_u16(parts[1], "--at")};
}

// The text drawn in black on white, in a bitmap just large enough for it.
RgbImage render_text(const std::string& text, const velatrix_font* font) {
    int32_t count = 0;
    int32_t* code_points = parse_string_encoding(text.c_str(), static_cast<int32_t>(text.size()), "UTF-8", &count);
    if (code_points == nullptr) throw UsageError("--text: not valid UTF-8");
    const int32_t width = std::max(1, enhanced_get_string_width(font, code_points));
    const int32_t height = std::max(1, enhanced_get_string_height(font, code_points));
    Canvas canvas(width, height);
    enhanced_draw_string(&canvas.bitmap, font, code_points, 0, 0, 0x000000FF);
    std::free(code_points);
    return canvas.to_rgb();
}

}  // namespace

int run_show(const GlobalOptions& options, const ShowOptions& show) {
    const auto [x, y] = parse_at(show.at);
    RgbImage image;
    if (!show.text.empty()) {
        const velatrix_font* font = velatrix_find_font(show.font.c_str());
        if (font == nullptr) {
            throw UsageError("--font: unknown font '" + show.font +
                             "' (velatrix_default, ubuntu_mono_e_12pt, ubuntu_mono_e_16pt, ubuntu_mono_e_24pt, "
                             "ubuntu_mono_e_30pt)");
        }
        image = render_text(show.text, font);
    } else {
        image = read_png(show.image);
    }
    Session session(options);
    velatrix_device* device = session.open();
    const int32_t display_width = device->display_info.width, display_height = device->display_info.height;
    if (x >= display_width || y >= display_height) {
        throw UsageError("--at " + show.at + " lies outside the " + std::to_string(display_width) + "x" +
                         std::to_string(display_height) + " display");
    }
    // Clipped to the display; the library packs it to the display's depth.
    Canvas canvas(std::min(image.width, display_width - x), std::min(image.height, display_height - y));
    canvas.paste(image, 0, 0);
    if (velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, static_cast<uint32_t>(x), static_cast<uint32_t>(y),
                                           transfer_depth(device->display_info.color_depth)) != 1) {
        refuse("sending the image failed");
    }
    std::printf("shown: %dx%d at %d,%d\n", canvas.bitmap.width, canvas.bitmap.height, x, y);
    return 0;
}

int run_clear(const GlobalOptions& options) {
    Session session(options);
    velatrix_device* device = session.open();
    if (velatrix_clear_screen(device) != 1) refuse("clearing the display failed");
    return 0;
}

}  // namespace quillmark
