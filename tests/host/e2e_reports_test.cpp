// Information and parameter reports round trip: what a set writes is what
// the pad stores (its exact payload bytes) and what a get reads back.
#include <tuple>

#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

using E2eReports = E2eEveryModel;

TEST_P(E2eReports, SerialNumberIsWrittenIdleCutTo31AndErasedBytesReadEmpty) {
    ASSERT_EQ(velatrix_virtual_get_run_mode(pad_), 2);
    const char* serial = "E2E-SERIAL-0042";
    ASSERT_EQ(velatrix_set_serial_number(device_, serial, static_cast<uint32_t>(std::strlen(serial))), 1)
        << last_error();
    char stored[64] = {};
    ASSERT_EQ(velatrix_virtual_get_serial(pad_, stored, sizeof stored), 1);
    EXPECT_STREQ(stored, serial);
    EXPECT_EQ(velatrix_virtual_get_run_mode(pad_), 2) << "back to running after the idle write";
    velatrix_hid_feature_serial_number read = velatrix_get_serial_number(device_);
    EXPECT_EQ(read.report_id, 27);
    EXPECT_STREQ(read.serial_number, serial);

    const std::string forty(40, 'Q');
    ASSERT_EQ(velatrix_set_serial_number(device_, forty.c_str(), 40), 1) << last_error();
    ASSERT_EQ(velatrix_virtual_get_serial(pad_, stored, sizeof stored), 1);
    EXPECT_EQ(std::string(stored), forty.substr(0, 31));
    read = velatrix_get_serial_number(device_);
    EXPECT_EQ(std::string(read.serial_number), forty.substr(0, 31));

    ASSERT_EQ(velatrix_virtual_set_serial(pad_, nullptr), 1);
    read = velatrix_get_serial_number(device_);
    EXPECT_EQ(read.report_id, 27);
    EXPECT_STREQ(read.serial_number, "");
}

TEST_P(E2eReports, SmallSettingsReportsRoundTrip) {
    velatrix_hid_feature_device_configure configure{0, 3, 7};
    ASSERT_EQ(velatrix_set_device_configure(device_, configure), 1) << last_error();
    EXPECT_EQ(stored_parameter(pad_, 15), (Bytes{3, 7}));
    velatrix_hid_feature_device_configure configure_read = velatrix_get_device_configure(device_);
    EXPECT_EQ(configure_read.report_id, 15);
    EXPECT_EQ(configure_read.device_mode, 3);
    EXPECT_EQ(configure_read.device_id, 7);

    velatrix_hid_feature_frequency_amplitude frequency{99, 50, 160, 120};
    ASSERT_EQ(velatrix_set_frequency_amplitude(device_, frequency), 1) << last_error();
    EXPECT_EQ(stored_parameter(pad_, 20), (Bytes{50, 160, 120}));
    velatrix_hid_feature_frequency_amplitude frequency_read = velatrix_get_frequency_amplitude(device_);
    EXPECT_EQ(frequency_read.report_id, 20);
    EXPECT_EQ(frequency_read.frequency, 50);
    EXPECT_EQ(frequency_read.pen_amplitude, 160);
    EXPECT_EQ(frequency_read.touch_amplitude, 120);

    // Written as report 2, read as report 21: one setting on the pad.
    velatrix_hid_feature_power_state power{21, 3};
    ASSERT_EQ(velatrix_set_power_state(device_, power), 1) << last_error();
    EXPECT_EQ(stored_parameter(pad_, 21), (Bytes{3}));
    velatrix_hid_feature_power_state power_read = velatrix_get_power_state(device_);
    EXPECT_EQ(power_read.report_id, 21u);
    EXPECT_EQ(power_read.power_state, 3u);

    // Only the low byte of set_command travels.
    velatrix_hid_feature_display_settings settings{0, 90, 70, 10, 20, 30, 0x1FF};
    ASSERT_EQ(velatrix_set_display_settings(device_, settings), 1) << last_error();
    EXPECT_EQ(stored_parameter(pad_, 102), (Bytes{90, 70, 10, 20, 30, 0xFF}));
    velatrix_hid_feature_display_settings settings_read = velatrix_get_display_settings(device_);
    EXPECT_EQ(settings_read.report_id, 102);
    EXPECT_EQ(settings_read.brightness, 90);
    EXPECT_EQ(settings_read.contrast, 70);
    EXPECT_EQ(settings_read.red, 10);
    EXPECT_EQ(settings_read.green, 20);
    EXPECT_EQ(settings_read.blue, 30);
    EXPECT_EQ(settings_read.set_command, 0xFFu);
}

TEST_P(E2eReports, GeneralPenAndTouchParametersRoundTripWithTheirBitFields) {
    velatrix_hid_feature_general_parameters general{};
    general.xy_output_enable = 1;
    general.map_coordinates = 1;
    general.channel_lock_enable = 1;
    general.channel_lock_number = 5;
    general.corner_lower_left = 1;
    general.corner_upper_left = 2;
    general.corner_lower_right = 3;
    general.samples = 0x1234;
    general.filter_fequency = 77;
    ASSERT_EQ(velatrix_set_general_parameters(device_, general), 1) << last_error();
    EXPECT_EQ(stored_parameter(pad_, 41), (Bytes{0x5D, 0x39, 0x34, 0x12, 77}));
    velatrix_hid_feature_general_parameters general_read = velatrix_get_general_parameters(device_);
    general.report_id = 41;
    auto general_fields = [](const velatrix_hid_feature_general_parameters& r) {
        return std::tuple(r.report_id, r.xy_output_enable, r.adc_output_enable, r.map_coordinates,
                          r.channel_lock_enable, r.channel_lock_number, r.reserved, r.corner_lower_left,
                          r.corner_upper_left, r.corner_lower_right, r.corner_upper_right, r.samples,
                          r.filter_fequency);
    };
    EXPECT_EQ(general_fields(general_read), general_fields(general));

    velatrix_hid_feature_pen_parameters pen{};
    pen.proximity = 0x0102;
    pen.auto_pen_threshold = 0x0304;
    pen.auto_touch_threshold = 0x0506;
    pen.adc_average = 7;
    pen.coordinate_average = 8;
    pen.offset_interval = 0x090A;
    pen.debounce_pre_down = 11;
    pen.debounce_post_down = 12;
    pen.debounce_pre_up = 13;
    pen.debounce_post_up = 14;
    pen.error_correction_enable = 1;
    pen.reserved_1 = 5;
    pen.offset_correction_enable = 1;
    pen.tip_inverted = 1;
    pen.interrupt_rate = 0x0F10;
    ASSERT_EQ(velatrix_set_pen_parameters(device_, pen), 1) << last_error();
    EXPECT_EQ(stored_parameter(pad_, 50), (Bytes{0x02, 0x01, 0x04, 0x03, 0x06, 0x05, 7, 8, 0x0A, 0x09, 11, 12, 13, 14,
                                                  0x5B, 0x10, 0x0F}));
    velatrix_hid_feature_pen_parameters pen_read = velatrix_get_pen_parameters(device_);
    pen.report_id = 50;
    EXPECT_EQ(pen_read.report_id, 50);
    EXPECT_EQ(pen_read.proximity, pen.proximity);
    EXPECT_EQ(pen_read.auto_pen_threshold, pen.auto_pen_threshold);
    EXPECT_EQ(pen_read.auto_touch_threshold, pen.auto_touch_threshold);
    EXPECT_EQ(pen_read.adc_average, 7);
    EXPECT_EQ(pen_read.coordinate_average, 8);
    EXPECT_EQ(pen_read.offset_interval, pen.offset_interval);
    EXPECT_EQ(pen_read.debounce_pre_down, 11);
    EXPECT_EQ(pen_read.debounce_post_down, 12);
    EXPECT_EQ(pen_read.debounce_pre_up, 13);
    EXPECT_EQ(pen_read.debounce_post_up, 14);
    EXPECT_EQ(pen_read.error_correction_enable, 1);
    EXPECT_EQ(pen_read.reserved_1, 5);
    EXPECT_EQ(pen_read.offset_correction_enable, 1);
    EXPECT_EQ(pen_read.reserved_2, 0);
    EXPECT_EQ(pen_read.tip_inverted, 1);
    EXPECT_EQ(pen_read.reserved_3, 0);
    EXPECT_EQ(pen_read.interrupt_rate, 0x0F10);

    velatrix_hid_feature_touch_parameters touch{};
    touch.adc_average = 3;
    touch.coordinate_average = 4;
    touch.slope_down = -20;
    touch.slope_liftoff = 300;
    touch.slope_minimum = 9;
    touch.pressure_single = 0x0190;
    touch.pressure_multiple = 0x0258;
    touch.gain = 12;
    touch.error_correction_enable = 1;
    touch.reserved = 3;
    touch.scale_x = 1000;
    touch.offset_x = -5;
    touch.scale_y = 999;
    touch.offset_y = -300;
    ASSERT_EQ(velatrix_set_touch_parameters(device_, touch), 1) << last_error();
    EXPECT_EQ(stored_parameter(pad_, 60), (Bytes{3, 4, 0xEC, 0xFF, 0x2C, 0x01, 9, 0x90, 0x01, 0x58, 0x02, 12, 0x07,
                                                  0xE8, 0x03, 0xFB, 0xFF, 0xE7, 0x03, 0xD4, 0xFE}));
    velatrix_hid_feature_touch_parameters touch_read = velatrix_get_touch_parameters(device_);
    touch.report_id = 60;
    auto touch_fields = [](const velatrix_hid_feature_touch_parameters& r) {
        return std::tuple(r.report_id, r.adc_average, r.coordinate_average, r.slope_down, r.slope_liftoff,
                          r.slope_minimum, r.pressure_single, r.pressure_multiple, r.gain, r.error_correction_enable,
                          r.reserved, r.scale_x, r.offset_x, r.scale_y, r.offset_y);
    };
    EXPECT_EQ(touch_fields(touch_read), touch_fields(touch));
}

TEST_P(E2eReports, OutputPeripheralAndCalibrationConfigurationsRoundTrip) {
    velatrix_hid_feature_output_parameters output{};
    output.output_report = 0x40000002;
    output.real_time = VELATRIX_TRANSMIT_ON_CONFIRM;
    output.compression = VELATRIX_OUTPUT_COMPRESSED_HIRES;
    output.packets_per_second = 200;
    output.save_as_default = 1;
    ASSERT_EQ(velatrix_set_output_configuration(device_, output), 1) << last_error();
    EXPECT_EQ(stored_parameter(pad_, 91), (Bytes{0x02, 0x00, 0x00, 0x40, 1, 3, 0xC8, 0x00, 0x01}));
    velatrix_hid_feature_output_parameters output_read = velatrix_get_output_configuration(device_);
    EXPECT_EQ(output_read.report_id, 91);
    EXPECT_EQ(output_read.output_report, 0x40000002);
    EXPECT_EQ(output_read.real_time, 1);
    EXPECT_EQ(output_read.compression, 3);
    EXPECT_EQ(output_read.packets_per_second, 200);
    EXPECT_EQ(output_read.save_as_default, 1);
    EXPECT_EQ(output_read.load_factory_settings, 0);

    // The 32-bit wire value comes back sign-extended; a load request is bit 7.
    output = velatrix_hid_feature_output_parameters{};
    output.output_report = 0x80000001;
    output.real_time = 5;
    output.load_factory_settings = 1;
    ASSERT_EQ(velatrix_set_output_configuration(device_, output), 1) << last_error();
    EXPECT_EQ(stored_parameter(pad_, 91), (Bytes{0x01, 0x00, 0x00, 0x80, 5, 0, 0, 0, 0x80}));
    velatrix_get_output_configuration_ref(device_, &output_read);
    EXPECT_EQ(output_read.output_report, -2147483647LL);
    EXPECT_EQ(output_read.real_time, 5);
    EXPECT_EQ(output_read.save_as_default, 0);
    EXPECT_EQ(output_read.load_factory_settings, 1);

    velatrix_hid_feature_peripheral_configuration peripheral{};
    peripheral.mag_card_output = VELATRIX_PERIPHERAL_OEM_OUTPUT | VELATRIX_PERIPHERAL_KEYBOARD_OUTPUT |
                                 VELATRIX_PERIPHERAL_KEYBOARD_PREAMBLE;
    using Peripheral = velatrix_hid_feature_peripheral_configuration;
    uint8_t Peripheral::* const reserved[] = {
        &Peripheral::reserved1,  &Peripheral::reserved2,  &Peripheral::reserved3,  &Peripheral::reserved4,
        &Peripheral::reserved5,  &Peripheral::reserved6,  &Peripheral::reserved7,  &Peripheral::reserved8,
        &Peripheral::reserved9,  &Peripheral::reserved10, &Peripheral::reserved11, &Peripheral::reserved12,
        &Peripheral::reserved13, &Peripheral::reserved14};
    for (int i = 0; i < 14; ++i) peripheral.*reserved[i] = static_cast<uint8_t>(0x21 + i);
    peripheral.load_factory_settings = 1;
    ASSERT_EQ(velatrix_set_peripheral_configuration(device_, peripheral), 1) << last_error();
    Bytes expected_peripheral{0x0D};
    for (int i = 0; i < 14; ++i) expected_peripheral.push_back(static_cast<uint8_t>(0x21 + i));
    expected_peripheral.push_back(0x80);
    EXPECT_EQ(stored_parameter(pad_, 92), expected_peripheral);
    velatrix_hid_feature_peripheral_configuration peripheral_read = velatrix_get_peripheral_configuration(device_);
    EXPECT_EQ(peripheral_read.report_id, 92);
    EXPECT_EQ(peripheral_read.mag_card_output, 0x0Du);
    for (int i = 0; i < 14; ++i) EXPECT_EQ(peripheral_read.*reserved[i], 0x21 + i) << "reserved" << i + 1;
    EXPECT_EQ(peripheral_read.save_as_default, 0);
    EXPECT_EQ(peripheral_read.load_factory_settings, 1);

    velatrix_hid_feature_calibration_data calibration{};
    calibration.CalibrationType = 2;
    calibration.isCalibrated = 5;  // sent as 1
    calibration.RotationScale = -2;
    calibration.LocalMultiplierScale = 1000;
    calibration.HostMultiplierScale = 2000;
    calibration.RotationSINScaled = -100;
    calibration.RotationCOSScaled = 4000;
    calibration.LocalWidthCalibrated = 320;
    calibration.LocalHeightCalibrated = 240;
    calibration.LocalXMultiplierScaled = -70000;
    calibration.LocalXOffset = 12;
    calibration.LocalYMultiplierScaled = 65536;
    calibration.LocalYOffset = -1;
    calibration.HostXMultiplierScaled = 0x7FFFFFFF;
    calibration.HostXOffset = -2147483648LL;
    calibration.HostYMultiplierScaled = 3;
    calibration.HostYOffset = 4;
    ASSERT_EQ(velatrix_set_calibration_data(device_, calibration), 1) << last_error();
    Payload wire;
    wire.u8(2).u8(1);
    for (int16_t value : {-2, 1000, 2000, -100, 4000, 320, 240}) wire.le16(static_cast<uint16_t>(value));
    for (int64_t value : {-70000LL, 12LL, 65536LL, -1LL, 0x7FFFFFFFLL, -2147483648LL, 3LL, 4LL}) {
        wire.le32(static_cast<uint32_t>(value));
    }
    EXPECT_EQ(stored_parameter(pad_, 131), wire.bytes);
    velatrix_hid_feature_calibration_data calibration_read = velatrix_get_calibration_data(device_);
    calibration.report_id = 131;
    calibration.isCalibrated = 1;
    auto calibration_fields = [](const velatrix_hid_feature_calibration_data& r) {
        return std::tuple(r.report_id, r.CalibrationType, r.isCalibrated, r.RotationScale, r.LocalMultiplierScale,
                          r.HostMultiplierScale, r.RotationSINScaled, r.RotationCOSScaled, r.LocalWidthCalibrated,
                          r.LocalHeightCalibrated, r.LocalXMultiplierScaled, r.LocalXOffset, r.LocalYMultiplierScaled,
                          r.LocalYOffset, r.HostXMultiplierScaled, r.HostXOffset, r.HostYMultiplierScaled,
                          r.HostYOffset);
    };
    EXPECT_EQ(calibration_fields(calibration_read), calibration_fields(calibration));
}

TEST_P(E2eReports, ErrorCorrectionTableRoundTripsAndGivesTheIdentifier) {
    velatrix_hid_feature_error_correction_table table{};
    for (std::size_t i = 0; i < sizeof table.data; ++i) table.data[i] = static_cast<uint8_t>((i * 37 + i / 256) & 0xFF);
    ASSERT_EQ(velatrix_set_error_correction(device_, &table), 1) << last_error();
    EXPECT_EQ(velatrix_virtual_get_run_mode(pad_), 2) << "back to running after the idle write";

    std::array<uint8_t, VELATRIX_VIRTUAL_ERROR_CORRECTION_SIZE> stored{};
    ASSERT_EQ(velatrix_virtual_get_error_correction(pad_, stored.data()), 1);
    EXPECT_EQ(0, std::memcmp(stored.data(), table.data, stored.size()));

    velatrix_hid_feature_error_correction_table read{};
    velatrix_get_error_correction_table_ref(device_, &read);
    EXPECT_EQ(read.report_id, 0x1A);
    EXPECT_EQ(0, std::memcmp(read.data, table.data, sizeof table.data));

    uint8_t* uuid = velatrix_get_device_uuid(device_);
    ASSERT_NE(uuid, nullptr);
    const std::array<uint8_t, 16> digest = md5(table.data, sizeof table.data);
    EXPECT_EQ(0, std::memcmp(uuid, digest.data(), 16));
    // The identifier cached at open was that of the factory table.
    EXPECT_NE(0, std::memcmp(device_->uuid, uuid, 16));
    velatrix_free_device_uuid(uuid);
}

INSTANTIATE_TEST_SUITE_P(Models, E2eReports, ::testing::ValuesIn(model_names()), param_name);

}  // namespace
}  // namespace velatrix::e2e
