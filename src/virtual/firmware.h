// The virtual pad's firmware: answers every feature report the pad
// declares, keeps the pad's state and produces its input reports. It knows
// nothing of threads, buses or injected faults (VirtualPad adds those).
#pragma once

#include <array>
#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

#include "virtual/frame_buffer.h"
#include "virtual/input_reports.h"
#include "virtual/pad_model.h"
#include "virtual/regions.h"
#include "virtual/resources.h"
#include "virtual/screens.h"

namespace velatrix::virtual_pad {

inline constexpr std::size_t kSerialLength = 32;
inline constexpr std::size_t kErrorCorrectionLength = 2048;
inline constexpr std::size_t kFirmwarePageData = 128;
inline constexpr std::size_t kStatusTextLength = 64;
// Targets of the pad's own calibration run; one is taken per state read.
inline constexpr uint8_t kCalibrationPoints = 4;
// Run modes: 0 idle (configuration), 2 running.
inline constexpr uint8_t kRunModeIdle = 0;
inline constexpr uint8_t kRunModeRunning = 2;

struct FirmwarePage {
    std::array<uint8_t, kFirmwarePageData> data{};
    uint8_t checksum = 0;
};

// Everything the firmware remembers besides regions, screens, resources and
// the display memory.
struct FirmwareState {
    uint8_t run_mode = kRunModeRunning;
    uint8_t startup_mode = 0;
    unsigned initializing_left = 0;
    // Status reads each busy flag still shows, and flags held busy for good.
    std::array<unsigned, 6> busy_left{};
    uint8_t stay_busy = 0;
    unsigned busy_polls = 2;
    std::string error_text;
    bool calibration_required = false;
    bool calibrating = false;
    uint8_t calibration_point = 0;
    std::array<uint8_t, kSerialLength> serial{};
    std::array<uint8_t, kErrorCorrectionLength> error_correction{};
    // Payloads (bytes after the id) of the reports that are stored and
    // answered back as written.
    std::map<uint8_t, std::vector<uint8_t>> parameters;
    std::array<uint8_t, 256> asic_registers{};
    uint8_t asic_address = 0;
    unsigned asic_resets = 0;
    std::map<uint32_t, FirmwarePage> firmware_pages;
    std::optional<uint16_t> download_status;
    std::vector<uint8_t> display_content_commands;
    uint16_t pixel_x = 0;
    uint16_t pixel_y = 0;
    uint8_t region_index = 1;
    std::vector<uint8_t> region_commits;
    std::vector<uint8_t> screen_region_commits;
    uint8_t screen_index = 1;
    uint8_t active_screen = 0;
};

class Firmware {
public:
    // `pad_number` makes the serial number and error-correction table of
    // each pad its own.
    Firmware(const PadModel& model, unsigned pad_number);

    const PadModel& model() const { return model_; }
    const std::vector<uint8_t>& report_descriptor() const { return descriptor_; }

    // Total length (id included) of a feature report the pad declares, 0
    // for any other id.
    std::size_t feature_length(uint8_t id) const;

    // A get-feature request for report[0]: fills at most the report's
    // length and returns the bytes answered, or nothing when the pad
    // refuses (an id it does not declare or cannot answer now).
    std::optional<std::size_t> get_feature(std::span<uint8_t> report);
    // A set-feature request; false when the pad refuses it (the reason is
    // in the status report's error text).
    bool set_feature(std::span<const uint8_t> report);

    // Pen input as the digitizer reports it, with the region under the pen
    // when the pad sends extended coordinates.
    void pen(uint16_t x, uint16_t y, bool tip, bool in_range);
    // Pen down on every point, then lifted (still in range) at the last.
    void stroke(std::span<const std::array<uint16_t, 2>> points);
    // False when the pad has no card reader.
    bool swipe_card(std::string_view track1, std::string_view track2, std::string_view track3);
    // Queues any input report as it is, for tests of malformed input.
    void emit(Bytes report);
    std::vector<Bytes> take_input();

    FirmwareState& state() { return state_; }
    const FirmwareState& state() const { return state_; }
    const RegionStore& regions() const { return regions_; }
    RegionStore& regions() { return regions_; }
    const ScreenStore& screens() const { return screens_; }
    const ResourceStore& resources() const { return resources_; }
    const FrameBuffer& frame() const { return frame_; }
    // Serial number up to its first NUL (erased bytes of 255 included).
    std::string serial_text() const;
    // The status report's busy byte as the next status read will show it.
    uint8_t busy_bits() const;
    // Holds the flags as busy for `polls` status reads from now.
    void make_busy(uint8_t bits, unsigned polls);

    struct Report;  // one row of the report table (firmware.cpp)

private:
    friend struct Handlers;

    void refuse(std::string reason) { state_.error_text = std::move(reason); }
    bool is_idle() const { return state_.run_mode == kRunModeIdle; }
    void show_screen(uint8_t number);

    const PadModel& model_;
    std::vector<uint8_t> descriptor_;
    FirmwareState state_;
    RegionStore regions_;
    ScreenStore screens_;
    ResourceStore resources_;
    FrameBuffer frame_;
    std::deque<Bytes> input_;
};

// Total length (id included) of feature report `id` on pads of `model`, 0
// when the model does not declare it or the firmware does not know it.
std::size_t feature_report_length(const PadModel& model, uint8_t id);

// HID report descriptor of a model: a vendor-defined application collection
// with one Report ID item per declared input and feature report.
std::vector<uint8_t> build_report_descriptor(const PadModel& model);

}  // namespace velatrix::virtual_pad
