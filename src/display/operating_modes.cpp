// The two operating-mode set-ups: reporting pen data to the host, or typing
// the pad's output as a keyboard. They reconfigure screens, regions, the
// display and the output path together, which is why they sit above both
// the protocol and the display transfer.
#include "velatrix/display.h"
#include "velatrix/info_reports.h"
#include "velatrix/modes.h"
#include "velatrix/parameter_reports.h"
#include "velatrix/regions.h"
#include "velatrix/screens.h"
#include "velatrix/transport.h"

#include "debug/log.h"

namespace {

struct ModeConstants {
    uint8_t next_screen;
    uint8_t screen_timeout;
    int64_t output_report;
    uint32_t peripheral_flags;
};

constexpr ModeConstants kQuillmarkMode{2, 0, 0x40000002, 0x01};   // oem_output
constexpr ModeConstants kCorvantineMode{3, 15, 0x40010000, 0x0C};  // keyboard_output, keyboard_preamble

constexpr uint8_t kCommitBeforeSetUp = 90;
constexpr uint8_t kCommitAsDefault = 1;
constexpr uint8_t kHomeScreen = 1;
constexpr uint8_t kCompressedHiRes = 3;

bool has_mode_bits(uint8_t coordinate_modes) {
    const bool extended = (coordinate_modes & 0x0C) != 0;
    const bool both_basic = (coordinate_modes & 0x03) == 0x03;
    return extended || both_basic;
}

void set_up_screens(velatrix_device* device, const velatrix_hid_capabilities& capabilities,
                    const ModeConstants& mode) {
    if (capabilities.display_id != 0) {
        velatrix_hid_feature_screen current{};
        velatrix_hid_feature_screen with_buttons{};
        velatrix_get_screen_ref(device, &current);
        velatrix_get_screen_ref(device, &with_buttons);
        current.timeout_next_screen = mode.next_screen;
        with_buttons.timeout = mode.screen_timeout;
        with_buttons.timeout_next_screen = mode.next_screen;
        velatrix_add_region_to_screen(&with_buttons, 3, mode.next_screen);
        velatrix_add_region_to_screen(&with_buttons, 4, mode.next_screen);
        velatrix_set_screen(device, &current);
        velatrix_set_screen(device, &with_buttons);
    } else {
        velatrix_hid_feature_screen current{};
        velatrix_get_screen_ref(device, &current);
        current.timeout = mode.screen_timeout;
        velatrix_set_screen(device, &current);
    }
}

// The steps' results are ignored on purpose: a set-up that fails halfway
// still reports success.
int set_up_mode(velatrix_device* device, int save, const ModeConstants& mode) {
    const velatrix_hid_capabilities capabilities = velatrix_get_capabilities(device);
    if (!has_mode_bits(capabilities.coordinate_modes)) return 1;
    if (capabilities.supports_screens_resources == 0) return 1;

    velatrix_set_screen_region_commit(device, kCommitBeforeSetUp);
    velatrix_set_active_screen(device, kHomeScreen);
    velatrix_clear_screen(device);
    velatrix_restore_default_regions(device);
    velatrix_set_screen_idx(device, kHomeScreen);
    set_up_screens(device, capabilities, mode);
    velatrix_set_run_mode(device, VELATRIX_RUN_MODE_IDLE);

    velatrix_hid_feature_output_parameters output = velatrix_get_output_configuration(device);
    output.output_report = mode.output_report;
    output.real_time = 0;
    output.compression = kCompressedHiRes;
    output.packets_per_second = 0;
    if (save) {
        output.save_as_default = 1;
        velatrix_set_screen_region_commit(device, kCommitAsDefault);
    }
    velatrix_set_output_configuration(device, output);
    velatrix_set_active_screen(device, kHomeScreen);

    if (capabilities.mag_reader_id & 0x80) {
        velatrix_hid_feature_peripheral_configuration peripheral = velatrix_get_peripheral_configuration(device);
        peripheral.mag_card_output = mode.peripheral_flags;
        if (save) peripheral.save_as_default = 1;
        velatrix_set_peripheral_configuration(device, peripheral);
    }
    velatrix_set_run_mode(device, VELATRIX_RUN_MODE_RUNNING);
    return 1;
}

}  // namespace

extern "C" {

int velatrix_set_quillmark_mode(velatrix_device* device, int save) {
    VELATRIX_TRACE_FUNCTION();
    return set_up_mode(device, save, kQuillmarkMode);
}

int velatrix_set_corvantine_mode(velatrix_device* device, int save) {
    VELATRIX_TRACE_FUNCTION();
    return set_up_mode(device, save, kCorvantineMode);
}

}  // extern "C"
