// `quillmark config get|set`, driven by the report table below.
#include <cstdio>
#include <cstring>
#include <limits>
#include <string>
#include <type_traits>

#include "commands.h"
#include "config_table.h"
#include "text.h"

namespace quillmark {
namespace {

template <typename Record, Record (*Get)(velatrix_device*), int (*Set)(velatrix_device*, Record),
          void (*Print)(const Record*)>
struct Functions {
    static bool read(velatrix_device* device, void* record) {
        const Record value = Get(device);
        std::memcpy(record, &value, sizeof value);
        return value.report_id != 0;
    }
    static bool write(velatrix_device* device, const void* record) {
        Record value;
        std::memcpy(&value, record, sizeof value);
        return Set(device, value) == 1;
    }
    static void print(const void* record) { Print(static_cast<const Record*>(record)); }
};

#define FIELD(Record, member) \
    ConfigField { #member, offsetof(Record, member), sizeof(Record::member), std::is_signed_v<decltype(Record::member)> }

#define REPORT(text, Record, suffix, fields)                                                                 \
    ConfigReport {                                                                                          \
        text, sizeof(Record),                                                                               \
            &Functions<Record, velatrix_get_##suffix, velatrix_set_##suffix, velatrix_print_##suffix>::read,  \
            &Functions<Record, velatrix_get_##suffix, velatrix_set_##suffix, velatrix_print_##suffix>::write, \
            &Functions<Record, velatrix_get_##suffix, velatrix_set_##suffix, velatrix_print_##suffix>::print, \
            fields                                                                                          \
    }

using DeviceConfigure = velatrix_hid_feature_device_configure;
constexpr ConfigField kDeviceConfigure[] = {FIELD(DeviceConfigure, device_mode), FIELD(DeviceConfigure, device_id)};

using FrequencyAmplitude = velatrix_hid_feature_frequency_amplitude;
constexpr ConfigField kFrequencyAmplitude[] = {FIELD(FrequencyAmplitude, frequency),
                                               FIELD(FrequencyAmplitude, pen_amplitude),
                                               FIELD(FrequencyAmplitude, touch_amplitude)};

using PowerState = velatrix_hid_feature_power_state;
constexpr ConfigField kPowerState[] = {FIELD(PowerState, power_state)};

using DisplaySettings = velatrix_hid_feature_display_settings;
constexpr ConfigField kDisplaySettings[] = {FIELD(DisplaySettings, brightness), FIELD(DisplaySettings, contrast),
                                            FIELD(DisplaySettings, red),        FIELD(DisplaySettings, green),
                                            FIELD(DisplaySettings, blue),       FIELD(DisplaySettings, set_command)};

using General = velatrix_hid_feature_general_parameters;
constexpr ConfigField kGeneral[] = {
    FIELD(General, xy_output_enable),    FIELD(General, adc_output_enable),   FIELD(General, map_coordinates),
    FIELD(General, channel_lock_enable), FIELD(General, channel_lock_number), FIELD(General, corner_lower_left),
    FIELD(General, corner_upper_left),   FIELD(General, corner_lower_right),  FIELD(General, corner_upper_right),
    FIELD(General, samples),             FIELD(General, filter_fequency)};

using Pen = velatrix_hid_feature_pen_parameters;
constexpr ConfigField kPen[] = {
    FIELD(Pen, proximity),          FIELD(Pen, auto_pen_threshold), FIELD(Pen, auto_touch_threshold),
    FIELD(Pen, adc_average),        FIELD(Pen, coordinate_average), FIELD(Pen, offset_interval),
    FIELD(Pen, debounce_pre_down),  FIELD(Pen, debounce_post_down), FIELD(Pen, debounce_pre_up),
    FIELD(Pen, debounce_post_up),   FIELD(Pen, error_correction_enable), FIELD(Pen, offset_correction_enable),
    FIELD(Pen, tip_inverted),       FIELD(Pen, interrupt_rate)};

using Touch = velatrix_hid_feature_touch_parameters;
constexpr ConfigField kTouch[] = {
    FIELD(Touch, adc_average),     FIELD(Touch, coordinate_average), FIELD(Touch, slope_down),
    FIELD(Touch, slope_liftoff),   FIELD(Touch, slope_minimum),      FIELD(Touch, pressure_single),
    FIELD(Touch, pressure_multiple), FIELD(Touch, gain),             FIELD(Touch, error_correction_enable),
    FIELD(Touch, scale_x),         FIELD(Touch, offset_x),           FIELD(Touch, scale_y),
    FIELD(Touch, offset_y)};

using Output = velatrix_hid_feature_output_parameters;
constexpr ConfigField kOutput[] = {FIELD(Output, output_report),      FIELD(Output, real_time),
                                   FIELD(Output, compression),        FIELD(Output, packets_per_second),
                                   FIELD(Output, save_as_default),    FIELD(Output, load_factory_settings)};

using Peripheral = velatrix_hid_feature_peripheral_configuration;
constexpr ConfigField kPeripheral[] = {FIELD(Peripheral, mag_card_output), FIELD(Peripheral, save_as_default),
                                       FIELD(Peripheral, load_factory_settings)};

using Calibration = velatrix_hid_feature_calibration_data;
constexpr ConfigField kCalibration[] = {
    FIELD(Calibration, CalibrationType),        FIELD(Calibration, isCalibrated),
    FIELD(Calibration, RotationScale),          FIELD(Calibration, LocalMultiplierScale),
    FIELD(Calibration, HostMultiplierScale),    FIELD(Calibration, RotationSINScaled),
    FIELD(Calibration, RotationCOSScaled),      FIELD(Calibration, LocalWidthCalibrated),
    FIELD(Calibration, LocalHeightCalibrated),  FIELD(Calibration, LocalXMultiplierScaled),
    FIELD(Calibration, LocalXOffset),           FIELD(Calibration, LocalYMultiplierScaled),
    FIELD(Calibration, LocalYOffset),           FIELD(Calibration, HostXMultiplierScaled),
    FIELD(Calibration, HostXOffset),            FIELD(Calibration, HostYMultiplierScaled),
    FIELD(Calibration, HostYOffset)};

const ConfigReport kReports[] = {
    REPORT("device-configure", DeviceConfigure, device_configure, kDeviceConfigure),
    REPORT("frequency-amplitude", FrequencyAmplitude, frequency_amplitude, kFrequencyAmplitude),
    REPORT("power-state", PowerState, power_state, kPowerState),
    REPORT("display-settings", DisplaySettings, display_settings, kDisplaySettings),
    REPORT("general-parameters", General, general_parameters, kGeneral),
    REPORT("pen-parameters", Pen, pen_parameters, kPen),
    REPORT("touch-parameters", Touch, touch_parameters, kTouch),
    REPORT("output-configuration", Output, output_configuration, kOutput),
    REPORT("peripheral-configuration", Peripheral, peripheral_configuration, kPeripheral),
    REPORT("calibration-data", Calibration, calibration_data, kCalibration),
};

const ConfigReport& find_report(const std::string& name) {
    for (const ConfigReport& report : kReports) {
        if (name == report.name) return report;
    }
    throw UsageError("config: unknown report '" + name + "' (one of: " + config_report_names() + ")");
}

std::string field_names(const ConfigReport& report) {
    std::string names;
    for (const ConfigField& field : report.fields) names += (names.empty() ? "" : ", ") + std::string(field.name);
    return names;
}

void store(uint8_t* record, const ConfigField& field, int64_t value, const std::string& assignment) {
    const int bits = field.size * 8;
    const bool fits = bits >= 64 ? true
                      : field.is_signed
                          ? value >= -(int64_t{1} << (bits - 1)) && value < (int64_t{1} << (bits - 1))
                          : value >= 0 && value < (int64_t{1} << bits);
    if (!fits) throw UsageError("config: " + assignment + " does not fit " + std::to_string(bits) + " bits");
    // Little-endian host: the low bytes of the value are the field's bytes.
    std::memcpy(record + field.offset, &value, field.size);
}

}  // namespace

std::span<const ConfigReport> config_reports() { return kReports; }

std::string config_report_names() {
    std::string names;
    for (const ConfigReport& report : kReports) names += (names.empty() ? "" : ", ") + std::string(report.name);
    return names;
}

int run_config_get(const GlobalOptions& options, const std::string& name) {
    const ConfigReport& report = find_report(name);
    Session session(options);
    velatrix_device* device = session.open();
    std::vector<uint8_t> record(report.size);
    if (!report.read(device, record.data())) refuse("reading " + name + " failed");
    report.print(record.data());
    std::fflush(stdout);
    return 0;
}

int run_config_set(const GlobalOptions& options, const std::string& name, const std::vector<std::string>& assignments) {
    const ConfigReport& report = find_report(name);
    struct Change {
        const ConfigField* field;
        int64_t value;
        std::string text;
    };
    std::vector<Change> changes;
    for (const std::string& assignment : assignments) {
        const size_t equals = assignment.find('=');
        if (equals == std::string::npos) throw UsageError("config: '" + assignment + "' is not FIELD=VALUE");
        const std::string field_name = assignment.substr(0, equals);
        const ConfigField* field = nullptr;
        for (const ConfigField& candidate : report.fields) {
            if (field_name == candidate.name) field = &candidate;
        }
        if (field == nullptr) {
            throw UsageError("config: " + name + " has no field '" + field_name + "' (fields: " + field_names(report) + ")");
        }
        changes.push_back({field, parse_integer(assignment.substr(equals + 1), "config " + field_name), assignment});
    }

    Session session(options);
    velatrix_device* device = session.open();
    std::vector<uint8_t> record(report.size);
    if (!report.read(device, record.data())) refuse("reading " + name + " failed");
    for (const Change& change : changes) store(record.data(), *change.field, change.value, change.text);
    if (!report.write(device, record.data())) refuse("writing " + name + " failed");
    // What the pad holds now, read back.
    if (!report.read(device, record.data())) refuse("reading " + name + " back failed");
    report.print(record.data());
    std::fflush(stdout);
    return 0;
}

}  // namespace quillmark
