// What the pad tells about itself and its general settings: capabilities,
// status, identity, run mode, serial number, error-correction table,
// firmware download, digitizer chip registers, calibration.
#include <algorithm>

#include "virtual/firmware_reports.h"

namespace velatrix::virtual_pad {

namespace {
constexpr uint8_t kCalibrateStart = 0x00;
constexpr uint8_t kCalibrateCancel = 0xFF;
constexpr uint8_t kSimulatePenCommand = 0x64;
}  // namespace

bool Handlers::capabilities(Firmware& pad, Outgoing& out) {
    const Capabilities& caps = pad.model_.capabilities;
    out.le16(1, caps.supported_reports);
    out.u8(3, caps.coordinate_modes);
    out.u8(5, caps.display_id);
    out.u8(6, caps.brightness_levels);
    out.u8(7, caps.contrast_levels);
    out.u8(8, pad.model_.display.color_depth);
    out.le16(9, pad.model_.display.width);
    out.le16(11, pad.model_.display.height);
    out.le16(13, caps.digitizer_width);
    out.le16(15, caps.digitizer_height);
    out.le16(17, caps.coordinate_xmin);
    out.le16(19, caps.coordinate_xmax);
    out.le16(21, caps.coordinate_ymin);
    out.le16(23, caps.coordinate_ymax);
    out.le16(25, caps.calibration_x_min);
    out.le16(27, caps.calibration_x_max);
    out.le16(29, caps.calibration_y_min);
    out.le16(31, caps.calibration_y_max);
    out.u8(41, caps.mag_reader_id);
    out.u8(45, caps.supports_screens_resources ? 1 : 0);
    return true;
}

bool Handlers::status(Firmware& pad, Outgoing& out) {
    FirmwareState& state = pad.state_;
    out.u8(1, static_cast<uint8_t>((state.initializing_left > 0 ? 0x01 : 0) | (pad.is_idle() ? 0x10 : 0)));
    out.u8(2, static_cast<uint8_t>((state.calibration_required ? 0x01 : 0) | (state.calibrating ? 0x02 : 0)));
    out.u8(3, pad.busy_bits());
    out.text(9, std::string_view(state.error_text).substr(0, kStatusTextLength));
    // Each status read is one poll: it counts down what the pad is busy with.
    if (state.initializing_left > 0) --state.initializing_left;
    for (unsigned& left : state.busy_left) {
        if (left > 0) --left;
    }
    return true;
}

bool Handlers::clear_error(Firmware& pad, const Incoming&) {
    pad.state_.error_text.clear();
    return true;
}

bool Handlers::contact_count(Firmware& pad, Outgoing& out) {
    out.u8(1, pad.model_.contact_count_max);
    return true;
}

bool Handlers::version(Firmware& pad, Outgoing& out) {
    const VersionInfo& version = pad.model_.version;
    out.bytes(1, version.kernel);
    out.bytes(4, version.firmware);
    out.le16(7, version.asic_signature);
    return true;
}

bool Handlers::coordinate_range(Firmware& pad, Outgoing& out) {
    const Capabilities& caps = pad.model_.capabilities;
    out.le16(1, caps.coordinate_xmin);
    out.le16(3, caps.coordinate_xmax);
    out.le16(5, caps.coordinate_ymin);
    out.le16(7, caps.coordinate_ymax);
    return true;
}

bool Handlers::operating_modes(Firmware& pad, Outgoing& out) {
    const OperatingModes& modes = pad.model_.operating_modes;
    out.u8(1, modes.supported);
    out.u8(2, modes.acquisition);
    out.u8(3, modes.touch);
    out.u8(4, modes.pen);
    return true;
}

bool Handlers::display_info(Firmware& pad, Outgoing& out) {
    const DisplayInfo& display = pad.model_.display;
    out.le16(1, display.width);
    out.le16(3, display.height);
    out.u8(5, display.color_depth);
    out.u8(6, display.text_width);
    out.u8(7, display.text_height);
    out.u8(8, display.region_count);
    out.u8(9, display.max_caption_length);
    return true;
}

bool Handlers::serial_get(Firmware& pad, Outgoing& out) {
    out.bytes(1, pad.state_.serial);
    return true;
}

bool Handlers::serial_set(Firmware& pad, const Incoming& in) {
    // The marker guards the serial number against stray writes: without it
    // the report is taken but changes nothing.
    if (in.u8(33) != 'S' || in.u8(34) != 'N') {
        pad.refuse("Serial number write without marker ignored");
        return true;
    }
    for (std::size_t i = 0; i < kSerialLength; ++i) pad.state_.serial[i] = in.u8(1 + i);
    return true;
}

bool Handlers::run_mode(Firmware& pad, const Incoming& in) {
    pad.state_.run_mode = in.u8(1);
    return true;
}

bool Handlers::startup_mode(Firmware& pad, const Incoming& in) {
    pad.state_.startup_mode = in.u8(1);
    return true;
}

bool Handlers::error_correction_get(Firmware& pad, Outgoing& out) {
    out.bytes(1, pad.state_.error_correction);
    return true;
}

bool Handlers::error_correction_set(Firmware& pad, const Incoming& in) {
    for (std::size_t i = 0; i < kErrorCorrectionLength; ++i) pad.state_.error_correction[i] = in.u8(1 + i);
    return true;
}

bool Handlers::firmware_page(Firmware& pad, const Incoming& in) {
    FirmwarePage page;
    for (std::size_t i = 0; i < kFirmwarePageData; ++i) page.data[i] = in.u8(5 + i);
    page.checksum = in.u8(133);
    pad.state_.firmware_pages[in.le32(1)] = page;
    return true;
}

bool Handlers::download_status(Firmware& pad, const Incoming& in) {
    pad.state_.download_status = in.le16(1);
    return true;
}

bool Handlers::asic_reset(Firmware& pad, const Incoming&) {
    pad.state_.asic_registers.fill(0);
    pad.state_.asic_address = 0;
    ++pad.state_.asic_resets;
    return true;
}

bool Handlers::asic_register_get(Firmware& pad, Outgoing& out) {
    for (unsigned i = 0; i < 8; ++i) {
        out.u8(1 + i, pad.state_.asic_registers[static_cast<uint8_t>(pad.state_.asic_address + i)]);
    }
    return true;
}

bool Handlers::asic_register_set(Firmware& pad, const Incoming& in) {
    pad.state_.asic_address = in.u8(1);
    pad.state_.asic_registers[in.u8(1)] = in.u8(2);
    return true;
}

bool Handlers::calibrate_get(Firmware& pad, Outgoing& out) {
    FirmwareState& state = pad.state_;
    out.u8(1, static_cast<uint8_t>((state.calibrating ? 1 : 0) | (state.calibration_point << 3)));
    if (!state.calibrating) return true;
    // The user touches one target between two reads of the state.
    if (++state.calibration_point >= kCalibrationPoints) {
        state.calibrating = false;
        state.calibration_point = 0;
        state.calibration_required = false;
        std::vector<uint8_t>& data = state.parameters[131];
        if (data.size() > 1) data[1] = static_cast<uint8_t>(data[1] | 1u);
    }
    return true;
}

bool Handlers::calibrate_set(Firmware& pad, const Incoming& in) {
    switch (in.u8(1)) {
    case kCalibrateStart:
        pad.state_.calibrating = true;
        pad.state_.calibration_point = 0;
        return true;
    case kCalibrateCancel:
        pad.state_.calibrating = false;
        pad.state_.calibration_point = 0;
        return true;
    default:
        pad.refuse("Unknown calibration command");
        return false;
    }
}

bool Handlers::simulate_pen(Firmware& pad, const Incoming& in) {
    if (in.u8(1) != kSimulatePenCommand) {
        pad.refuse("Unknown pen simulation command");
        return false;
    }
    pad.pen(in.le16(7), in.le16(9), in.bit(6, 0), in.bit(6, 4));
    return true;
}

}  // namespace velatrix::virtual_pad
