// `quillmark demo`: the library end to end on the first pad found (a
// virtual one when no real pad is attached): identity, a prompt on the
// display, a signature, its events, and two images.
#include <chrono>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

#include "commands.h"
#include "velatrix-quillmark.h"
#include "velatrix-virtual.h"

namespace quillmark {
namespace {

struct Capture {
    std::vector<std::vector<std::pair<int, int>>> strokes;  // pen-down runs
    bool pen_down = false;
    int coordinates = 0;
    int buttons[4] = {};  // down, move, up, press
    int other = 0;
};

Capture* capture = nullptr;

int on_input(velatrix_device*, const velatrix_input_report* record, int type, const uint8_t*, uint32_t) {
    switch (type) {
        case VELATRIX_INPUT_COORDINATE:
        case VELATRIX_INPUT_EXTENDED_COORDINATE: {
            ++capture->coordinates;
            const velatrix_input_coordinate& c = record->data.coordinate;
            if (c.tip_switch) {
                if (!capture->pen_down) capture->strokes.emplace_back();
                capture->strokes.back().emplace_back(c.x, c.y);
            }
            capture->pen_down = c.tip_switch != 0;
            break;
        }
        case VELATRIX_INPUT_BUTTON_DOWN:
        case VELATRIX_INPUT_BUTTON_MOVE:
        case VELATRIX_INPUT_BUTTON_UP:
        case VELATRIX_INPUT_BUTTON_PRESS:
            ++capture->buttons[type - VELATRIX_INPUT_BUTTON_DOWN];
            capture->pen_down = false;
            break;
        default:
            ++capture->other;
    }
    return 0;
}

// A bitmap with its own storage.
struct Canvas {
    std::vector<uint8_t> buffer;
    velatrix_bitmap bitmap{};
    Canvas(int width, int height) : buffer(static_cast<size_t>((width * 24 + 31) / 32) * 4 * height + 54) {
        velatrix_bitmap_init(&bitmap, buffer.data(), width, height);
    }
};

bool write_file(const std::string& path, const uint8_t* data, size_t size) {
    FILE* file = std::fopen(path.c_str(), "wb");
    if (file == nullptr) return false;
    const bool ok = std::fwrite(data, 1, size, file) == size;
    return std::fclose(file) == 0 && ok;
}

std::string hex(const uint8_t* bytes, size_t count) {
    std::string out;
    char digits[3];
    for (size_t i = 0; i < count; ++i) {
        std::snprintf(digits, sizeof digits, "%02x", bytes[i]);
        out += digits;
    }
    return out;
}

void draw_prompt(Canvas& canvas) {
    velatrix_bitmap& b = canvas.bitmap;
    const int w = b.width, h = b.height;
    velatrix_draw_rectangle(&b, 0, 0, w - 1, h - 1, 0x000000FF);
    const int32_t text[] = {'P', 'l', 'e', 'a', 's', 'e', ' ', 's', 'i', 'g', 'n', ' ', 'b', 'e', 'l', 'o', 'w', 0};
    enhanced_draw_string_aligned(&b, &ubuntu_mono_e_16pt, text, 0, 4, w - 1, 40, 1, 0, 0x000000FF);
    const int line_y = h * 3 / 4;
    velatrix_draw_line(&b, w / 10, line_y, w * 9 / 10, line_y, 0x000000FF);
    const int32_t cross[] = {'X', 0};
    enhanced_draw_string(&b, &ubuntu_mono_e_16pt, cross, w / 10, line_y - 20, 0x000000FF);
}

// A signature-like curve across the signing area of a w × h display.
std::vector<velatrix_virtual_point> signature_points(int w, int h) {
    std::vector<velatrix_virtual_point> points;
    const double left = w * 0.15, width = w * 0.7, middle = h * 0.6, amplitude = h * 0.1;
    for (int i = 0; i <= 120; ++i) {
        const double t = i / 120.0;
        const double x = left + width * t + 12 * std::sin(t * 19);
        const double y = middle + amplitude * std::sin(t * 11) * std::cos(t * 3);
        points.push_back({static_cast<uint16_t>(x), static_cast<uint16_t>(y)});
    }
    return points;
}

// Centre of the first button region in the pad's region table, if any.
bool button_centre(const velatrix_device* device, velatrix_virtual_point* centre) {
    if (device->regions == nullptr) return false;
    for (int i = 0; i < device->display_info.region_count; ++i) {
        const velatrix_device_region_info& r = device->regions[i];
        if (r.type == 1 && r.in_use && r.x2 > r.x1 && r.y2 > r.y1) {
            *centre = {static_cast<uint16_t>((r.x1 + r.x2) / 2), static_cast<uint16_t>((r.y1 + r.y2) / 2)};
            return true;
        }
    }
    return false;
}

void render_signature(Canvas& canvas, const Capture& captured) {
    for (const auto& stroke : captured.strokes) {
        for (size_t i = 1; i < stroke.size(); ++i) {
            velatrix_draw_thick_aa_line(&canvas.bitmap, stroke[i - 1].first, stroke[i - 1].second, stroke[i].first,
                                        stroke[i].second, 0x102080FF, 2.0f);
        }
    }
}

}  // namespace

int run_demo(const std::string& out_dir) {
    const auto start = std::chrono::steady_clock::now();
    velatrix_init();
    velatrix_device* head = nullptr;
    velatrix_list_devices(&head);
    bool simulated = std::getenv("VELATRIX_SIMULATE") != nullptr;
    if (head == nullptr && !simulated) {
        std::printf("No pad attached: using a virtual pad.\n");
        velatrix_destroy();
        setenv("VELATRIX_SIMULATE", "1", 1);
        simulated = true;
        velatrix_init();
        velatrix_list_devices(&head);
    }
    std::printf("%u pad(s) found\n", velatrix_count_device_list(head));
    if (head == nullptr) {
        std::fprintf(stderr, "quillmark: no pad to run the demo on\n");
        velatrix_destroy();
        return 1;
    }
    velatrix_device* device = head;
    const velatrix_virtual_pad pad = simulated ? velatrix_virtual_pad_at(0) : 0;
    // The device record must survive a failed open, which frees it: detach
    // the rest of the chain first and free it on its own.
    velatrix_device* rest = device->next;
    device->next = nullptr;
    velatrix_free_device_list(rest);
    if (velatrix_open_device(device) != 1) {
        std::fprintf(stderr, "quillmark: cannot open the pad: %s\n", velatrix_get_last_error());
        velatrix_destroy();
        return 1;
    }

    const velatrix_hid_feature_version& version = device->version;
    const velatrix_hid_feature_serial_number serial = velatrix_get_serial_number(device);
    std::printf("path:       %s\n", device->path);
    std::printf("model:      %s (%s)\n", device->model ? device->model : "-",
                device->manufacturer ? device->manufacturer : "-");
    std::printf("firmware:   %u.%u.%u (kernel %u.%u.%u)\n", version.firmware_version[0], version.firmware_version[1],
                version.firmware_version[2], version.kernel_version[0], version.kernel_version[1],
                version.kernel_version[2]);
    std::printf("serial:     %s\n", serial.serial_number);
    std::printf("identifier: %s\n", hex(device->uuid, 16).c_str());
    std::printf("display:    %u x %u, %u bit(s)\n", device->display_info.width, device->display_info.height,
                device->display_info.color_depth);

    const int width = device->display_info.width, height = device->display_info.height;
    Canvas prompt(width, height);
    draw_prompt(prompt);
    if (velatrix_transfer_bitmap_to_device(device, &prompt.bitmap, 0, 0,
                                           transfer_depth(device->display_info.color_depth)) != 1) {
        std::fprintf(stderr, "quillmark: drawing the prompt failed: %s\n", velatrix_get_last_error());
    }

    Capture captured;
    capture = &captured;
    velatrix_register_input_callback(device, &on_input);
    if (simulated) {
        const auto points = signature_points(width, height);
        velatrix_virtual_play_stroke(pad, points.data(), static_cast<uint32_t>(points.size()));
        velatrix_virtual_point button{};
        if (button_centre(device, &button)) velatrix_virtual_play_stroke(pad, &button, 1);
    } else {
        std::printf("Sign on the pad (10 seconds)...\n");
    }
    const auto read_until = std::chrono::steady_clock::now() + std::chrono::seconds(simulated ? 3 : 10);
    const uint32_t expected = simulated ? velatrix_virtual_input_count(pad) : 0;
    while (std::chrono::steady_clock::now() < read_until) {
        if (velatrix_device_read(device) != 1) break;
        const uint32_t received = captured.coordinates + captured.buttons[0] + captured.buttons[1] +
                                  captured.buttons[2] + captured.buttons[3] + captured.other;
        if (simulated && received >= expected) break;
    }

    const std::string display_path = out_dir + "/quillmark-display.bmp";
    const std::string signature_path = out_dir + "/quillmark-signature.bmp";
    bool wrote_display = false;
    if (simulated) {
        std::vector<uint8_t> frame(velatrix_virtual_frame_bitmap_size(pad));
        velatrix_bitmap shown{};
        if (!frame.empty() && velatrix_virtual_read_frame(pad, &shown, frame.data(), frame.size()) == 1) {
            wrote_display = write_file(display_path, shown.data, shown.file_size);
        }
    } else {
        wrote_display = write_file(display_path, prompt.bitmap.data, prompt.bitmap.file_size);
    }
    Canvas signature(width, height);
    render_signature(signature, captured);
    const bool wrote_signature = write_file(signature_path, signature.bitmap.data, signature.bitmap.file_size);

    const uint32_t transfers = simulated ? velatrix_virtual_transfer_count(pad) : 0;
    velatrix_close_device(device);
    velatrix_free_device_list(device);
    velatrix_destroy();
    capture = nullptr;

    const auto elapsed =
        std::chrono::duration_cast<std::chrono::milliseconds>(std::chrono::steady_clock::now() - start).count();
    size_t points = 0;
    for (const auto& stroke : captured.strokes) points += stroke.size();
    std::printf("events:     %d coordinates (%zu inked points in %zu stroke(s)), buttons: %d down, %d move, %d up, "
                "%d press, %d other\n",
                captured.coordinates, points, captured.strokes.size(), captured.buttons[0], captured.buttons[1],
                captured.buttons[2], captured.buttons[3], captured.other);
    if (simulated) std::printf("reports:    %u feature transfers with the pad\n", transfers);
    std::printf("images:     %s%s, %s%s\n", display_path.c_str(), wrote_display ? "" : " (not written)",
                signature_path.c_str(), wrote_signature ? "" : " (not written)");
    std::printf("time:       %lld ms\n", static_cast<long long>(elapsed));
    return wrote_display && wrote_signature ? 0 : 1;
}

}  // namespace quillmark
