// A monochrome pad: 320 x 240 one-bit display, a magnetic card reader, the
// region table only (no screens or resources), plain pen modes.
#include "virtual/model_parts.h"
#include "virtual/pad_model.h"

namespace velatrix::virtual_pad {

namespace {

PadModel make() {
    PadModel m;
    m.name = "mono-320";
    m.vendor_id = static_cast<uint16_t>(VELATRIX_VENDOR_ID_VALUE);
    m.product_id = 0x0A20;
    m.manufacturer = "Velatrix";
    m.product = "Quillmark M320";
    m.usage_page = 0xFF00;
    m.usage = 0x06;

    m.input_reports = {1, 2, 3, 12, 254};
    m.feature_reports = {2,   10,  11,  13,  15,  16,  20,  21,  22,  23,  25,  26,  27,  28,
                         29,  40,  41,  42,  43,  44,  50,  60,  91,  92,  100, 101, 102, 103,
                         104, 105, 110, 111, 112, 113, 114, 115, 130, 131, 253};

    m.display = {.width = 320, .height = 240, .color_depth = 1, .text_width = 8, .text_height = 16,
                 .region_count = 8, .max_caption_length = 15};
    m.capabilities = {.supported_reports = 0x0FFF,
                      .coordinate_modes = 0x01,
                      .display_id = 0,
                      .brightness_levels = 1,
                      .contrast_levels = 16,
                      .digitizer_width = 320,
                      .digitizer_height = 240,
                      .coordinate_xmin = 0,
                      .coordinate_xmax = 319,
                      .coordinate_ymin = 0,
                      .coordinate_ymax = 239,
                      .calibration_x_min = 0,
                      .calibration_x_max = 319,
                      .calibration_y_min = 0,
                      .calibration_y_max = 239,
                      .mag_reader_id = 0x81,
                      .supports_screens_resources = false};
    m.version = {.kernel = {1, 4, 2}, .firmware = {2, 7, 11}, .asic_signature = 0x5A21};
    m.operating_modes = {.supported = 0x03, .acquisition = 1, .touch = 0, .pen = 1};
    m.contact_count_max = 1;
    m.serial_prefix = "VQM320-";
    m.extended_coordinates = true;
    m.initializing_polls = 1;

    m.parameter_defaults = {
        {15, {0x01, 0x00}},
        {20, {40, 128, 96}},
        {21, {1}},
        {41, {0x05, 0xE4, 0x64, 0x00, 10}},
        {50, {0x2C, 0x01, 0xC8, 0x00, 0x96, 0x00, 4, 2, 0xE8, 0x03, 2, 3, 2, 3, 0x11, 0xC8, 0x00}},
        {60, {4, 2, 0xEC, 0xFF, 0x0F, 0x00, 5, 0x90, 0x01, 0x58, 0x02, 8, 0x01, 0xE8, 0x03, 0xFB, 0xFF, 0xE8, 0x03,
              0x03, 0x00}},
        {91, {0x02, 0x00, 0x00, 0x40, 0, 3, 0xC8, 0x00, 0}},
        {92, {0x01}},
        {102, {200, 128, 255, 255, 255, 0}},
        {131, {1, 0, 0xE8, 0x03, 0xE8, 0x03, 0xE8, 0x03, 0x00, 0x00, 0xE8, 0x03, 0x40, 0x01, 0xF0, 0x00}},
    };

    m.default_regions = {
        parts::container(1, 0, 319, 0, 199, 1),
        parts::line(2, 1, 20, 299, 180, 181, 2),
        parts::button(3, 220, 309, 205, 234, "OK"),
        parts::button(4, 10, 99, 205, 234, "Clear"),
    };
    return m;
}

}  // namespace

const PadModel& mono_320_model() {
    static const PadModel model = make();
    return model;
}

}  // namespace velatrix::virtual_pad
