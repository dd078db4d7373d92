// The Device natives of the information and parameter reports: each one
// pairs a value class with the C getter or setter of its report.
#include "binding_cache.h"
#include "native_call.h"
#include "value_classes.h"

using namespace velatrix::jni;

// A getter whose C function returns the record by value.
#define VQ_GETTER(name, Record, value_class, c_getter)                                                     \
    VQ_DEVICE_NATIVE(jobject, name) {                                                                      \
        return get_report<Record>(env, self, value_class,                                                  \
                                  [](velatrix_device* d, Record* r) { *r = c_getter(d); });                \
    }
// A setter whose C function takes the record by value.
#define VQ_SETTER(name, Record, value_class, report_id, c_setter, null_message)                            \
    VQ_DEVICE_NATIVE(void, name, jobject object) {                                                         \
        set_report<Record>(env, self, object, null_message, value_class, report_id,                        \
                           [](velatrix_device* d, const Record& r) { return c_setter(d, r); });            \
    }

VQ_GETTER(getCapabilities, velatrix_hid_capabilities, kCapabilities, velatrix_get_capabilities)
VQ_GETTER(getVersionInfo, velatrix_hid_feature_version, kVersion, velatrix_get_version)
VQ_GETTER(getCoordinateRange, velatrix_hid_feature_coordinate_range, kCoordinateRange, velatrix_get_coordinate_range)
VQ_GETTER(getOperatingModes, velatrix_hid_feature_operating_modes, kOperatingModes, velatrix_get_operating_modes)
VQ_GETTER(getCalibrationState, velatrix_hid_feature_calibrate, kCalibrationState, velatrix_get_calibrate_state)
VQ_GETTER(getDisplaySettings, velatrix_hid_feature_display_settings, kDisplaySettings, velatrix_get_display_settings)
VQ_GETTER(getGeneralParameters, velatrix_hid_feature_general_parameters, kGeneralParameters,
          velatrix_get_general_parameters)
VQ_GETTER(getFrequencyAmplitude, velatrix_hid_feature_frequency_amplitude, kFrequencyAmplitude,
          velatrix_get_frequency_amplitude)
VQ_GETTER(getPenParameters, velatrix_hid_feature_pen_parameters, kPenParameters, velatrix_get_pen_parameters)
VQ_GETTER(getTouchParameters, velatrix_hid_feature_touch_parameters, kTouchParameters, velatrix_get_touch_parameters)
VQ_GETTER(getOutputConfiguration, velatrix_hid_feature_output_parameters, kOutputConfiguration,
          velatrix_get_output_configuration)
VQ_GETTER(getPeripheralConfiguration, velatrix_hid_feature_peripheral_configuration, kPeripheralConfiguration,
          velatrix_get_peripheral_configuration)
VQ_GETTER(getCalibrationData, velatrix_hid_feature_calibration_data, kCalibrationData, velatrix_get_calibration_data)
VQ_GETTER(getConfiguration, velatrix_hid_feature_device_configure, kConfiguration, velatrix_get_device_configure)

VQ_DEVICE_NATIVE(jobject, getDeviceStatus) {
    return get_report<velatrix_hid_feature_device_status>(
        env, self, kDeviceStatus,
        [](velatrix_device* d, velatrix_hid_feature_device_status* r) { velatrix_get_device_status(r, d); });
}

VQ_SETTER(setDisplaySettings, velatrix_hid_feature_display_settings, kDisplaySettings, 102,
          velatrix_set_display_settings, "Display settings can't be null.")
VQ_SETTER(setGeneralParameters, velatrix_hid_feature_general_parameters, kGeneralParameters, 41,
          velatrix_set_general_parameters, "General parameters can't be null.")
VQ_SETTER(setFrequencyAmplitude, velatrix_hid_feature_frequency_amplitude, kFrequencyAmplitude, 20,
          velatrix_set_frequency_amplitude, "Frequency amplitude settings can't be null.")
VQ_SETTER(setPenParameters, velatrix_hid_feature_pen_parameters, kPenParameters, 50, velatrix_set_pen_parameters,
          "Pen parameters can't be null.")
VQ_SETTER(setTouchParameters, velatrix_hid_feature_touch_parameters, kTouchParameters, 60,
          velatrix_set_touch_parameters, "Touch parameters can't be null.")
VQ_SETTER(setPeripheralConfiguration, velatrix_hid_feature_peripheral_configuration, kPeripheralConfiguration, 92,
          velatrix_set_peripheral_configuration, "Peripheral configuration data can't be null.")
VQ_SETTER(setCalibrationData, velatrix_hid_feature_calibration_data, kCalibrationData, 131,
          velatrix_set_calibration_data, "Calibration data can't be null.")
VQ_SETTER(setDeviceConfiguration, velatrix_hid_feature_device_configure, kConfiguration, 15,
          velatrix_set_device_configure, "Device configuration can't be null.")

// The Java class holds the compression as two flags: bit 0 compressed, bit 1 high resolution.
VQ_DEVICE_NATIVE(void, setOutputConfiguration, jobject object) {
    set_report<velatrix_hid_feature_output_parameters>(
        env, self, object, "Output configuration data can't be null.", kOutputConfiguration, 91,
        [](velatrix_device* d, const velatrix_hid_feature_output_parameters& r) {
            return velatrix_set_output_configuration(d, r);
        },
        [env](jobject o, velatrix_hid_feature_output_parameters& r) {
            r.compression = (env->GetBooleanField(o, velatrix_output_configuration_compression_enable_field) ? 1 : 0) |
                            (env->GetBooleanField(o, velatrix_output_configuration_compression_hi_res_field) ? 2 : 0);
        });
}

VQ_DEVICE_NATIVE(jobject, getDisplayInfo) {
    velatrix_device* device = enter(env, self);
    return device != nullptr ? new_object(env, kDisplay, &device->display_info) : nullptr;
}

VQ_DEVICE_NATIVE(jint, getPowerState) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return 0;
    const velatrix_hid_feature_power_state state = velatrix_get_power_state(device);
    return state.report_id != 0 ? static_cast<jint>(state.power_state) : 0;
}

VQ_DEVICE_NATIVE(void, setPowerState, jint state) {
    act(env, self, [state](velatrix_device* d) {
        velatrix_hid_feature_power_state record{21, static_cast<uint32_t>(state)};
        return velatrix_set_power_state(d, record);
    });
}

VQ_DEVICE_NATIVE(jint, getContactCountMaximum) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return 0;
    const velatrix_hid_feature_contact_count_maximum record = velatrix_get_contact_count_maximum(device);
    if (record.report_id == 0) velatrix_throw_exception(env);
    return record.contact_count_max;
}

VQ_DEVICE_NATIVE(jstring, getSerialNumber) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return nullptr;
    const velatrix_hid_feature_serial_number record = velatrix_get_serial_number(device);
    if (record.report_id == 0) {
        velatrix_throw_exception(env);
        return nullptr;
    }
    return new_string(env, record.serial_number, sizeof record.serial_number);
}

VQ_DEVICE_NATIVE(void, setSerialNumber, jstring text) {
    if (enter(env, self, text, "Serial number can't be null.") == nullptr) return;
    Utf8Chars chars(env, text);
    act(env, self, [&chars](velatrix_device* d) { return velatrix_set_serial_number(d, chars.get(), chars.length()); });
}

VQ_DEVICE_NATIVE(jbyteArray, getAsicRegister) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return nullptr;
    const velatrix_hid_feature_register_get record = velatrix_get_asic_register(device);
    if (record.report_id == 0) {
        velatrix_throw_exception(env);
        return nullptr;
    }
    return new_byte_array(env, &record, sizeof record);
}

VQ_DEVICE_NATIVE(void, setAsicRegister, jint address, jint value) {
    act(env, self, [address, value](velatrix_device* d) {
        velatrix_hid_feature_register_set record{44, static_cast<uint8_t>(address), static_cast<uint8_t>(value)};
        return velatrix_set_asic_register(d, record);
    });
}

VQ_DEVICE_NATIVE(void, asicReset) {
    act(env, self, [](velatrix_device* d) { return velatrix_set_asic_reset(d, velatrix_hid_feature_asic_reset{42, 1, 1}); });
}
