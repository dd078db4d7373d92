// A colour pad: 800 x 480 at 24 bits, screens and resources, the operating
// modes with coordinate modes 2 and 3, no card reader.
#include "virtual/model_parts.h"
#include "virtual/pad_model.h"

namespace velatrix::virtual_pad {

namespace {

Screen screen(uint8_t number, std::initializer_list<std::pair<uint8_t, uint8_t>> regions, uint8_t timeout,
              uint8_t timeout_next) {
    Screen s;
    s.number = number;
    s.timeout = timeout;
    s.timeout_next_screen = timeout_next;
    for (auto [region, next] : regions) {
        s.regions[s.region_count] = region;
        s.next_screens[s.region_count] = next;
        ++s.region_count;
    }
    return s;
}

PadModel make() {
    PadModel m;
    m.name = "color-800";
    m.vendor_id = static_cast<uint16_t>(VELATRIX_VENDOR_ID_VALUE);
    m.product_id = 0x0C80;
    m.manufacturer = "Velatrix";
    m.product = "Quillmark C800";
    m.usage_page = 0xFF00;
    m.usage = 0x00;

    m.input_reports = {1, 2, 3, 254};
    m.feature_reports = {2,   10,  11,  13,  15,  16,  20,  21,  22,  23,  25,  26,  27,  28,  29,  40,  41,
                         42,  43,  44,  50,  60,  91,  92,  100, 101, 102, 103, 104, 105, 110, 111, 112, 113,
                         114, 115, 130, 131, 140, 141, 142, 143, 144, 150, 152, 153, 160, 162, 163, 164, 170,
                         171, 172, 253};

    m.display = {.width = 800, .height = 480, .color_depth = 24, .text_width = 12, .text_height = 24,
                 .region_count = 16, .max_caption_length = 31};
    m.capabilities = {.supported_reports = 0x3FFF,
                      .coordinate_modes = 0x0C,
                      .display_id = 1,
                      .brightness_levels = 8,
                      .contrast_levels = 8,
                      .digitizer_width = 800,
                      .digitizer_height = 480,
                      .coordinate_xmin = 0,
                      .coordinate_xmax = 799,
                      .coordinate_ymin = 0,
                      .coordinate_ymax = 479,
                      .calibration_x_min = 0,
                      .calibration_x_max = 799,
                      .calibration_y_min = 0,
                      .calibration_y_max = 479,
                      .mag_reader_id = 0,
                      .supports_screens_resources = true};
    m.version = {.kernel = {3, 1, 0}, .firmware = {4, 2, 17}, .asic_signature = 0x7C40};
    m.operating_modes = {.supported = 0x0F, .acquisition = 2, .touch = 1, .pen = 1};
    m.contact_count_max = 2;
    m.serial_prefix = "VQC800-";
    m.extended_coordinates = true;
    m.initializing_polls = 2;

    m.parameter_defaults = {
        {15, {0x02, 0x01}},
        {20, {48, 140, 110}},
        {21, {1}},
        {41, {0x05, 0xE4, 0xC8, 0x00, 20}},
        {50, {0x5E, 0x01, 0xFA, 0x00, 0xB4, 0x00, 8, 4, 0xD0, 0x07, 3, 4, 3, 4, 0x11, 0x90, 0x01}},
        {60, {8, 4, 0xE2, 0xFF, 0x14, 0x00, 6, 0xF4, 0x01, 0x20, 0x03, 12, 0x01, 0xD0, 0x07, 0xF6, 0xFF, 0xD0, 0x07,
              0x05, 0x00}},
        {91, {0x02, 0x00, 0x00, 0x40, 0, 3, 0x90, 0x01, 0}},
        {92, {0x01}},
        {102, {180, 128, 255, 250, 240, 0}},
        {131, {2, 0, 0xE8, 0x03, 0xE8, 0x03, 0xE8, 0x03, 0x00, 0x00, 0xE8, 0x03, 0x20, 0x03, 0xE0, 0x01}},
    };

    m.default_regions = {
        parts::container(1, 0, 799, 0, 399, 2),
        parts::line(2, 1, 40, 759, 360, 363, 3),
        parts::button(3, 600, 779, 410, 469, "Accept"),
        parts::button(4, 20, 199, 410, 469, "Clear"),
    };
    m.default_screens = {
        screen(1, {{1, 0}, {2, 0}, {3, 2}, {4, 1}}, 0, 0),
        screen(2, {}, 5, 1),
        screen(3, {}, 0, 0),
    };
    m.initial_screen = 1;
    m.screen_capacity = 16;
    m.resource_capacity = 256 * 1024;
    return m;
}

}  // namespace

const PadModel& color_800_model() {
    static const PadModel model = make();
    return model;
}

}  // namespace velatrix::virtual_pad
