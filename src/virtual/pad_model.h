// What makes one kind of virtual pad what it is: identity, the reports it
// declares, its display, capabilities and factory contents. Each model is
// data in a file of its own (model_*.cpp); a new model is a new file plus
// one line in the registry.
#pragma once

#include <array>
#include <cstdint>
#include <map>
#include <string>
#include <vector>

#include "virtual/regions.h"
#include "virtual/screens.h"

namespace velatrix::virtual_pad {

struct DisplayInfo {
    uint16_t width = 0;
    uint16_t height = 0;
    uint8_t color_depth = 1;
    uint8_t text_width = 0;
    uint8_t text_height = 0;
    uint8_t region_count = 0;
    uint8_t max_caption_length = 0;
};

struct Capabilities {
    uint16_t supported_reports = 0;
    uint8_t coordinate_modes = 0;
    uint8_t display_id = 0;
    uint8_t brightness_levels = 0;
    uint8_t contrast_levels = 0;
    uint16_t digitizer_width = 0;
    uint16_t digitizer_height = 0;
    uint16_t coordinate_xmin = 0, coordinate_xmax = 0, coordinate_ymin = 0, coordinate_ymax = 0;
    uint16_t calibration_x_min = 0, calibration_x_max = 0, calibration_y_min = 0, calibration_y_max = 0;
    // Bit 7 set: a card reader is fitted.
    uint8_t mag_reader_id = 0;
    bool supports_screens_resources = false;
};

struct VersionInfo {
    std::array<uint8_t, 3> kernel{};
    std::array<uint8_t, 3> firmware{};
    uint16_t asic_signature = 0;
};

struct OperatingModes {
    uint8_t supported = 0;
    uint8_t acquisition = 0;
    uint8_t touch = 0;
    uint8_t pen = 0;
};

struct PadModel {
    // Name tests and VELATRIX_SIMULATE pick the model by.
    std::string name;

    // USB identity.
    uint16_t vendor_id = 0;
    uint16_t product_id = 0;
    std::string manufacturer;
    std::string product;
    std::string transport = "USB";
    uint32_t usage_page = 0xFF00;
    uint32_t usage = 0;

    // Report ids the descriptor declares; the firmware answers no others.
    std::vector<uint8_t> input_reports;
    std::vector<uint8_t> feature_reports;

    DisplayInfo display;
    Capabilities capabilities;
    VersionInfo version;
    OperatingModes operating_modes;
    uint8_t contact_count_max = 1;
    // Serial numbers are this prefix and the pad's number on the bus.
    std::string serial_prefix;
    // Pen input as extended coordinates (with the region under the pen)
    // rather than plain ones.
    bool extended_coordinates = true;
    // Status reads that show the pad initialising after it is plugged in.
    unsigned initializing_polls = 0;

    // Factory payloads of the parameter reports (bytes after the id);
    // reports not listed start zeroed.
    std::map<uint8_t, std::vector<uint8_t>> parameter_defaults;
    std::vector<Region> default_regions;
    std::vector<Screen> default_screens;
    uint8_t initial_screen = 0;
    std::size_t screen_capacity = 0;
    std::size_t resource_capacity = 0;

    bool declares_input(uint8_t id) const;
    bool declares_feature(uint8_t id) const;
    bool has_card_reader() const { return (capabilities.mag_reader_id & 0x80) != 0; }
};

// The models, each from its own file.
const PadModel& mono_320_model();
const PadModel& color_800_model();

// Every model, in a fixed order.
const std::vector<const PadModel*>& all_models();
// Null when no model has that name.
const PadModel* find_model(const std::string& name);

}  // namespace velatrix::virtual_pad
