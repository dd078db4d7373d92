// C API: what a test looks at on a pad: display memory, serial number, run
// mode, stored settings, regions, screens, resources, firmware pages.
#include <algorithm>
#include <cstring>

#include "virtual/virtual_api_common.h"

using velatrix::virtual_pad::argument_given;
using velatrix::virtual_pad::Firmware;
using velatrix::virtual_pad::pad_or_error;

namespace {

uint32_t colour_of(const velatrix::virtual_pad::Rgba& rgba) {
    return (static_cast<uint32_t>(rgba[0]) << 24) | (static_cast<uint32_t>(rgba[1]) << 16) |
           (static_cast<uint32_t>(rgba[2]) << 8) | rgba[3];
}

// Copies a text into a caller's buffer, always terminated; false (with the
// last error) when it does not fit.
bool copy_text(const std::string& text, char* out, uint32_t size) {
    if (!argument_given(out, "text")) return false;
    if (text.size() >= size) {
        VELATRIX_REPORT_ERROR("Buffer of %u bytes too small for %zu characters", size, text.size());
        return false;
    }
    std::memcpy(out, text.data(), text.size());
    out[text.size()] = '\0';
    return true;
}

uint32_t bitmap_size(int32_t width, int32_t height) {
    return static_cast<uint32_t>(((width * 24 + 31) / 32) * 4 * height + VELATRIX_BITMAP_HEADER_SIZE);
}

}  // namespace

extern "C" {

int velatrix_virtual_display_size(velatrix_virtual_pad pad, int32_t* width, int32_t* height) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(width, "width") || !argument_given(height, "height")) return 0;
    *width = found->model().display.width;
    *height = found->model().display.height;
    return 1;
}

uint32_t velatrix_virtual_get_pixel(velatrix_virtual_pad pad, int32_t x, int32_t y) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    uint32_t colour = 0xFFFFFFFFu;
    if (found) found->inspect([&](const Firmware& firmware) { colour = firmware.frame().pixel(x, y); });
    return colour;
}

int velatrix_virtual_read_frame_rgb(velatrix_virtual_pad pad, uint8_t* rgb, uint32_t size) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(rgb, "rgb")) return 0;
    int result = 0;
    found->inspect([&](const Firmware& firmware) {
        const std::vector<uint8_t>& pixels = firmware.frame().rgb();
        if (size < pixels.size()) {
            VELATRIX_REPORT_ERROR("Buffer of %u bytes too small for a frame of %zu bytes", size, pixels.size());
            return;
        }
        std::copy(pixels.begin(), pixels.end(), rgb);
        result = 1;
    });
    return result;
}

uint32_t velatrix_virtual_frame_bitmap_size(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    return bitmap_size(found->model().display.width, found->model().display.height);
}

int velatrix_virtual_read_frame(velatrix_virtual_pad pad, velatrix_bitmap* bitmap, uint8_t* buffer, uint32_t size) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(bitmap, "bitmap") || !argument_given(buffer, "buffer")) return 0;
    const int32_t width = found->model().display.width;
    const int32_t height = found->model().display.height;
    if (size < bitmap_size(width, height)) {
        VELATRIX_REPORT_ERROR("Buffer of %u bytes too small for a %dx%d bitmap", size, width, height);
        return 0;
    }
    if (!velatrix_bitmap_init(bitmap, buffer, width, height)) return 0;
    found->inspect([&](const Firmware& firmware) {
        for (int32_t y = 0; y < height; ++y) {
            for (int32_t x = 0; x < width; ++x) velatrix_set_pixel(bitmap, x, y, firmware.frame().pixel(x, y));
        }
    });
    return 1;
}

int velatrix_virtual_get_serial(velatrix_virtual_pad pad, char* text, uint32_t size) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    std::string serial;
    found->inspect([&](const Firmware& firmware) { serial = firmware.serial_text(); });
    return copy_text(serial, text, size) ? 1 : 0;
}

int velatrix_virtual_set_serial(velatrix_virtual_pad pad, const char* text) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    found->with_firmware([text](Firmware& firmware) {
        auto& serial = firmware.state().serial;
        if (text == nullptr) {
            serial.fill(0xFF);
            return;
        }
        serial.fill(0);
        std::size_t length = std::min(std::strlen(text), serial.size());
        std::copy_n(text, length, serial.begin());
    });
    return 1;
}

int32_t velatrix_virtual_get_run_mode(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    int32_t mode = -1;
    if (found) found->inspect([&](const Firmware& firmware) { mode = firmware.state().run_mode; });
    return mode;
}

int velatrix_virtual_get_status_text(velatrix_virtual_pad pad, char* text, uint32_t size) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    std::string status;
    found->inspect([&](const Firmware& firmware) { status = firmware.state().error_text; });
    return copy_text(status, text, size) ? 1 : 0;
}

int velatrix_virtual_get_error_correction(velatrix_virtual_pad pad, uint8_t* data) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(data, "data")) return 0;
    found->inspect([&](const Firmware& firmware) {
        std::copy(firmware.state().error_correction.begin(), firmware.state().error_correction.end(), data);
    });
    return 1;
}

int velatrix_virtual_set_error_correction(velatrix_virtual_pad pad, const uint8_t* data) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(data, "data")) return 0;
    found->with_firmware([&](Firmware& firmware) {
        std::copy_n(data, VELATRIX_VIRTUAL_ERROR_CORRECTION_SIZE, firmware.state().error_correction.begin());
    });
    return 1;
}

int32_t velatrix_virtual_get_parameter(velatrix_virtual_pad pad, uint8_t report_id, uint8_t* payload,
                                       uint32_t size) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return -1;
    int32_t length = -1;
    found->inspect([&](const Firmware& firmware) {
        const auto& parameters = firmware.state().parameters;
        auto it = parameters.find(report_id);
        if (it == parameters.end()) return;
        if (payload != nullptr) std::copy_n(it->second.begin(), std::min<std::size_t>(size, it->second.size()), payload);
        length = static_cast<int32_t>(it->second.size());
    });
    if (length < 0) VELATRIX_REPORT_ERROR("Virtual pad %d stores no report %u", pad, report_id);
    return length;
}

int velatrix_virtual_get_calibration(velatrix_virtual_pad pad, uint8_t* calibrating, uint8_t* point,
                                     uint8_t* required) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    found->inspect([&](const Firmware& firmware) {
        if (calibrating) *calibrating = firmware.state().calibrating;
        if (point) *point = firmware.state().calibration_point;
        if (required) *required = firmware.state().calibration_required;
    });
    return 1;
}

int velatrix_virtual_get_region(velatrix_virtual_pad pad, uint8_t number, velatrix_virtual_region* out) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(out, "region")) return 0;
    bool present = false;
    found->inspect([&](const Firmware& firmware) {
        const velatrix::virtual_pad::Region* region = firmware.regions().find(number);
        if (region == nullptr) return;
        present = true;
        *out = velatrix_virtual_region{};
        out->number = region->number;
        out->type = region->type;
        out->in_use = region->in_use;
        out->visible = region->visible;
        out->accept_touch = region->accept_touch;
        out->decode = region->decode;
        out->has_frame = region->has_frame;
        out->output_to_host = region->output_to_host;
        out->x1 = region->x1;
        out->x2 = region->x2;
        out->y1 = region->y1;
        out->y2 = region->y2;
        out->foreground = colour_of(region->foreground);
        out->background = colour_of(region->background);
        out->ink_enabled = region->ink_enabled;
        out->ink_width = region->ink_width;
        out->parent = region->parent;
        out->line_width = region->line_width;
        out->enable = region->enable;
        out->highlight_on_select = region->highlight_on_select;
        out->clear_on_select = region->clear_on_select;
        out->confirm_on_select = region->confirm_on_select;
        out->use_resource = region->use_resource;
        out->resource_normal = region->resource_normal;
        out->resource_selected = region->resource_selected;
        out->resource_number = region->resource_number;
        out->font_number = region->font_number;
        out->horizontal_justification = region->horizontal_justification;
        out->vertical_justification = region->vertical_justification;
        std::string caption = region->caption_text().substr(0, sizeof(out->caption) - 1);
        std::memcpy(out->caption, caption.c_str(), caption.size() + 1);
    });
    if (!present) VELATRIX_REPORT_ERROR("Virtual pad %d has no region slot %u", pad, number);
    return present ? 1 : 0;
}

int velatrix_virtual_get_screen(velatrix_virtual_pad pad, uint8_t number, velatrix_virtual_screen* out) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(out, "screen")) return 0;
    bool present = false;
    found->inspect([&](const Firmware& firmware) {
        const velatrix::virtual_pad::Screen* screen = firmware.screens().find(number);
        if (screen == nullptr) return;
        present = true;
        *out = velatrix_virtual_screen{};
        out->number = screen->number;
        out->reset_timeout_on_activity = screen->reset_timeout_on_activity;
        out->timeout = screen->timeout;
        out->timeout_next_screen = screen->timeout_next_screen;
        out->region_count = screen->region_count;
        std::copy(screen->regions.begin(), screen->regions.end(), out->regions);
        std::copy(screen->next_screens.begin(), screen->next_screens.end(), out->next_screens);
    });
    if (!present) VELATRIX_REPORT_ERROR("Virtual pad %d has no screen %u", pad, number);
    return present ? 1 : 0;
}

int32_t velatrix_virtual_get_active_screen(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    int32_t active = -1;
    if (found) found->inspect([&](const Firmware& firmware) { active = firmware.state().active_screen; });
    return active;
}

int32_t velatrix_virtual_get_resource(velatrix_virtual_pad pad, uint8_t number, uint8_t* type, uint8_t* data,
                                      uint32_t capacity) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return -1;
    int32_t size = -1;
    found->inspect([&](const Firmware& firmware) {
        const velatrix::virtual_pad::Resource* resource = firmware.resources().find(number);
        if (resource == nullptr) return;
        if (type != nullptr) *type = resource->type;
        if (data != nullptr) {
            std::copy_n(resource->data.begin(), std::min<std::size_t>(capacity, resource->data.size()), data);
        }
        size = static_cast<int32_t>(resource->data.size());
    });
    if (size < 0) VELATRIX_REPORT_ERROR("Virtual pad %d has no resource %u", pad, number);
    return size;
}

int velatrix_virtual_get_firmware_page(velatrix_virtual_pad pad, uint32_t address, uint8_t* data,
                                       uint8_t* checksum) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    bool present = false;
    found->inspect([&](const Firmware& firmware) {
        auto it = firmware.state().firmware_pages.find(address);
        if (it == firmware.state().firmware_pages.end()) return;
        present = true;
        if (data != nullptr) std::copy(it->second.data.begin(), it->second.data.end(), data);
        if (checksum != nullptr) *checksum = it->second.checksum;
    });
    if (!present) VELATRIX_REPORT_ERROR("Virtual pad %d received no firmware page at 0x%x", pad, address);
    return present ? 1 : 0;
}

int32_t velatrix_virtual_get_download_status(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    int32_t status = -1;
    if (found) {
        found->inspect([&](const Firmware& firmware) {
            if (firmware.state().download_status) status = *firmware.state().download_status;
        });
    }
    return status;
}

int32_t velatrix_virtual_get_commands(velatrix_virtual_pad pad, uint8_t report_id, uint8_t* values, uint32_t size) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return -1;
    std::vector<uint8_t> received;
    bool known = true;
    found->inspect([&](const Firmware& firmware) {
        switch (report_id) {
        case 101:
            received = firmware.state().display_content_commands;
            break;
        case 115:
            received = firmware.state().region_commits;
            break;
        case 172:
            received = firmware.state().screen_region_commits;
            break;
        default:
            known = false;
        }
    });
    if (!known) {
        VELATRIX_REPORT_ERROR("Report %u is not a command report", report_id);
        return -1;
    }
    if (values != nullptr) std::copy_n(received.begin(), std::min<std::size_t>(size, received.size()), values);
    return static_cast<int32_t>(received.size());
}

}  // extern "C"
