#include "virtual/firmware.h"

#include <algorithm>

#include "virtual/firmware_reports.h"

namespace velatrix::virtual_pad {

namespace {

using H = Handlers;

// Every feature report the firmware knows. A model declares the subset it
// has; the pad refuses every other id.
constexpr Firmware::Report kReports[] = {
    {2, 2, nullptr, H::stored_set, 0, false},
    {10, 2, nullptr, H::run_mode, kBusyMode, false},
    {11, 65, H::capabilities, nullptr, 0, false},
    {13, 73, H::status, H::clear_error, 0, false},
    {15, 3, H::stored_get, H::stored_set, 0, false},
    {16, 2, H::contact_count, nullptr, 0, false},
    {20, 4, H::stored_get, H::stored_set, 0, false},
    {21, 2, H::stored_get, nullptr, 0, false},
    {22, 9, H::version, nullptr, 0, false},
    {23, 9, H::coordinate_range, nullptr, 0, false},
    {25, 134, nullptr, H::firmware_page, 0, false},
    {26, 2049, H::error_correction_get, H::error_correction_set, kBusyMode, true},
    {27, 35, H::serial_get, H::serial_set, kBusyRegions, true},
    {28, 2, nullptr, H::startup_mode, 0, false},
    {29, 3, nullptr, H::download_status, 0, false},
    {40, 5, H::operating_modes, nullptr, 0, false},
    {41, 6, H::stored_get, H::stored_set, 0, false},
    {42, 2, nullptr, H::asic_reset, 0, false},
    {43, 9, H::asic_register_get, nullptr, 0, false},
    {44, 3, nullptr, H::asic_register_set, 0, false},
    {50, 18, H::stored_get, H::stored_set, 0, false},
    {60, 22, H::stored_get, H::stored_set, 0, false},
    {91, 10, H::stored_get, H::stored_set, 0, false},
    {92, 17, H::stored_get, H::stored_set, 0, false},
    {100, 10, H::display_info, nullptr, 0, false},
    {101, 2, nullptr, H::display_content, kBusyDisplay, false},
    {102, 7, H::stored_get, H::stored_set, 0, false},
    {103, 2049, nullptr, H::display_chunk, kBusyDisplay, false},
    {104, 5, nullptr, H::pixel_request, 0, false},
    {105, 1031, H::pixel_answer, nullptr, 0, false},
    {110, 0, H::regions_get, nullptr, 0, false},
    {111, 0, H::default_regions_get, nullptr, 0, false},
    {112, 0, nullptr, H::region_set, kBusyRegions, false},
    {113, 12, nullptr, H::region_update, 0, false},
    {114, 2, nullptr, H::region_delete, kBusyRegions, false},
    {115, 2, nullptr, H::region_commit, 0, false},
    {130, 2, H::calibrate_get, H::calibrate_set, kBusyCalibration, false},
    {131, 49, H::stored_get, H::stored_set, 0, false},
    {140, 2, H::resource_index_get, H::resource_index_set, 0, false},
    {141, 20, H::resource_info, nullptr, 0, false},
    {142, 1045, H::resource_get, H::resource_set, kBusyRegionsScreens, false},
    {143, 2, nullptr, H::resource_delete, kBusyRegionsScreens, false},
    {144, 18, H::resource_availability, nullptr, 0, false},
    {150, 2, H::region_index_get, H::region_index_set, 0, false},
    {152, 0, H::region_contents_get, H::region_contents_set, kBusyRegions, false},
    {153, 2, nullptr, H::device_region_delete, kBusyRegionsScreens, false},
    {160, 2, H::screen_index_get, H::screen_index_set, 0, false},
    {162, 80, H::screen_get, H::screen_set, kBusyScreens, false},
    {163, 2, nullptr, H::screen_delete, kBusyScreens, false},
    {164, 13, nullptr, H::screen_edit, kBusyScreens, false},
    {170, 25, H::screen_region_info, nullptr, 0, false},
    {171, 2, H::active_screen_get, H::active_screen_set, kBusyScreens, false},
    {172, 2, nullptr, H::screen_region_commit, kBusyRegionsScreens, false},
    {253, 67, nullptr, H::simulate_pen, 0, false},
};

// Power state is written under id 2 and read under id 21: one setting.
uint8_t storage_id(uint8_t id) { return id == 2 ? 21 : id; }

std::size_t report_length(const Firmware::Report& report, const DisplayInfo& display) {
    if (report.length != 0) return report.length;
    const std::size_t caption = display.max_caption_length;
    switch (report.id) {
    case 110:
    case 111:
        return display.region_count * (caption + 29) + 1;
    case 112:
        return caption + 30;
    default:  // 152
        return caption + 34;
    }
}

// Erased-looking but fixed contents, different for every pad.
std::array<uint8_t, kErrorCorrectionLength> factory_error_correction(const std::array<uint8_t, kSerialLength>& serial) {
    uint32_t seed = 2166136261u;
    for (uint8_t byte : serial) seed = (seed ^ byte) * 16777619u;
    std::array<uint8_t, kErrorCorrectionLength> table{};
    for (uint8_t& byte : table) {
        seed = seed * 1103515245u + 12345u;
        byte = static_cast<uint8_t>(seed >> 16);
    }
    return table;
}

}  // namespace

const Firmware::Report* find_report(uint8_t id) {
    for (const Firmware::Report& report : kReports) {
        if (report.id == id) return &report;
    }
    return nullptr;
}

Firmware::Firmware(const PadModel& model, unsigned pad_number)
    : model_(model),
      descriptor_(build_report_descriptor(model)),
      regions_(model.display.region_count, model.display.max_caption_length, model.default_regions),
      screens_(model.screen_capacity),
      resources_(model.resource_capacity),
      frame_(model.display.width, model.display.height, model.display.color_depth) {
    state_.initializing_left = model.initializing_polls;
    std::string serial = model.serial_prefix + std::to_string(100000 + pad_number).substr(1);
    std::copy_n(serial.begin(), std::min(serial.size(), kSerialLength - 1), state_.serial.begin());
    state_.error_correction = factory_error_correction(state_.serial);
    for (uint8_t id : model.feature_reports) {
        const Report* report = find_report(id);
        if (report == nullptr || report->get != Handlers::stored_get) continue;
        std::vector<uint8_t> payload(report->length - 1);
        auto preset = model.parameter_defaults.find(id);
        if (preset != model.parameter_defaults.end()) {
            std::copy_n(preset->second.begin(), std::min(preset->second.size(), payload.size()), payload.begin());
        }
        state_.parameters[id] = std::move(payload);
    }
    std::string error;
    for (const Screen& screen : model.default_screens) screens_.put(screen, error);
    if (model.initial_screen != 0) show_screen(model.initial_screen);
}

std::size_t feature_report_length(const PadModel& model, uint8_t id) {
    const Firmware::Report* report = find_report(id);
    if (report == nullptr || !model.declares_feature(id)) return 0;
    return report_length(*report, model.display);
}

std::size_t Firmware::feature_length(uint8_t id) const { return feature_report_length(model_, id); }

std::optional<std::size_t> Firmware::get_feature(std::span<uint8_t> buffer) {
    if (buffer.empty()) return std::nullopt;
    const uint8_t id = buffer[0];
    const Report* report = find_report(id);
    if (report == nullptr || report->get == nullptr || !model_.declares_feature(id)) {
        refuse("Unknown report " + std::to_string(id));
        return std::nullopt;
    }
    // The answer is built whole and then handed over as far as the host's
    // buffer reaches, the way the USB stack cuts a long answer.
    std::vector<uint8_t> answer(report_length(*report, model_.display), 0);
    answer[0] = id;
    Outgoing out(answer);
    if (!report->get(*this, out)) return std::nullopt;
    std::size_t length = std::min(answer.size(), buffer.size());
    std::copy_n(answer.begin(), length, buffer.begin());
    return length;
}

bool Firmware::set_feature(std::span<const uint8_t> buffer) {
    if (buffer.empty()) return false;
    const uint8_t id = buffer[0];
    const Report* report = find_report(id);
    if (report == nullptr || report->set == nullptr || !model_.declares_feature(id)) {
        refuse("Unknown report " + std::to_string(id));
        return false;
    }
    if (buffer.size() < report_length(*report, model_.display)) {
        refuse("Report " + std::to_string(id) + " too short");
        return false;
    }
    if (report->idle_only && !is_idle()) {
        refuse("Report " + std::to_string(id) + " needs run mode 0");
        return false;
    }
    if (!report->set(*this, Incoming(buffer.first(report_length(*report, model_.display))))) return false;
    make_busy(report->busy_after, state_.busy_polls);
    return true;
}

uint8_t Firmware::busy_bits() const {
    uint8_t bits = state_.stay_busy;
    for (unsigned i = 0; i < state_.busy_left.size(); ++i) {
        if (state_.busy_left[i] > 0) bits = static_cast<uint8_t>(bits | (1u << i));
    }
    return static_cast<uint8_t>(bits & 0x3F);
}

void Firmware::make_busy(uint8_t bits, unsigned polls) {
    for (unsigned i = 0; i < state_.busy_left.size(); ++i) {
        if (bits & (1u << i)) state_.busy_left[i] = std::max(state_.busy_left[i], polls);
    }
}

std::string Firmware::serial_text() const {
    auto end = std::find(state_.serial.begin(), state_.serial.end(), uint8_t{0});
    return std::string(state_.serial.begin(), end);
}

void Firmware::show_screen(uint8_t number) {
    state_.active_screen = number;
    frame_.clear();
    const Screen* screen = screens_.find(number);
    if (screen == nullptr) return;
    for (std::size_t i = 0; i < screen->entries(); ++i) {
        if (const Region* region = regions_.find(screen->regions[i])) frame_.draw_region(*region);
    }
}

void Firmware::pen(uint16_t x, uint16_t y, bool tip, bool in_range) {
    const bool extended = model_.extended_coordinates && model_.declares_input(kExtendedCoordinateReport);
    if (!extended && !model_.declares_input(kCoordinateReport)) return;
    uint8_t region = extended && in_range ? regions_.hit(x, y) : 0;
    input_.push_back(pen_report(extended, x, y, tip, in_range, region));
}

void Firmware::stroke(std::span<const std::array<uint16_t, 2>> points) {
    if (points.empty()) return;
    for (const auto& point : points) pen(point[0], point[1], true, true);
    pen(points.back()[0], points.back()[1], false, true);
}

bool Firmware::swipe_card(std::string_view track1, std::string_view track2, std::string_view track3) {
    if (!model_.has_card_reader() || !model_.declares_input(kCardSwipeReport)) return false;
    input_.push_back(card_swipe_report(track1, track2, track3));
    return true;
}

void Firmware::emit(Bytes report) { input_.push_back(std::move(report)); }

std::vector<Bytes> Firmware::take_input() {
    std::vector<Bytes> taken(std::make_move_iterator(input_.begin()), std::make_move_iterator(input_.end()));
    input_.clear();
    return taken;
}

bool Handlers::stored_get(Firmware& pad, Outgoing& out) {
    out.bytes(1, pad.state_.parameters[storage_id(out.id())]);
    return true;
}

bool Handlers::stored_set(Firmware& pad, const Incoming& in) {
    auto bytes = in.bytes(1, in.size() - 1);
    pad.state_.parameters[storage_id(in.id())].assign(bytes.begin(), bytes.end());
    return true;
}

}  // namespace velatrix::virtual_pad
