// A pad played by the fuzzer: every answer it gives comes from the input,
// through a driver of this target's own, while the library opens it (display
// information, version, region table and identifier, so counts and caption
// lengths are the pad's to choose), lists its regions and screens, and reads
// each report a getter reads. Nothing may read or write outside a buffer,
// and every record the library hands back must stay inside its fields.
//
// Input: a flags byte (bit 0: legacy firmware, no interlock waits), then one
// answer per transfer in the order the library asks: a control byte (bit 7
// set: the transfer fails; for a set that is all), and for a get a length
// (u16, cut to the buffer) and that many bytes, copied over the buffer from
// its first byte (the report id included). Past the end every transfer
// succeeds with an all-zero answer. Interlock waits never see the pad busy
// (the busy bits of status answers are cleared), so no input sleeps.
#include <unistd.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "byte_reader.h"
#include "velatrix-quillmark.h"

using velatrix::fuzz::ByteReader;
using velatrix::fuzz::violated;

// The open waits 100 ms per status poll while the pad says it initialises.
extern "C" int usleep(useconds_t) { return 0; }

namespace {

ByteReader* input = nullptr;
constexpr uint8_t kStatusReport = 13;

int get_feature(velatrix_device*, uint8_t* buffer, uint32_t length) {
    const uint8_t id = buffer[0];
    const uint8_t control = input->u8();
    if (control & 0x80) {
        velatrix_report_error_internal("Problem getting hid report %u (fuzz)\n", id);
        return 0;
    }
    const uint32_t answered = input->u16() % (length + 1);
    const std::vector<uint8_t> bytes = input->bytes(answered);
    if (answered > 0) std::memcpy(buffer, bytes.data(), answered);
    if (id == kStatusReport && length > 3) buffer[3] &= 0xC0;
    return 1;
}

int set_feature(velatrix_device*, uint8_t* buffer, uint32_t) {
    if (input->u8() & 0x80) {
        velatrix_report_error_internal("Problem setting hid report %u (fuzz)\n", buffer[0]);
        return 0;
    }
    return 1;
}

int open_device(velatrix_device*) { return 1; }
int close_device(velatrix_device*) { return 1; }

int free_device(velatrix_device* device) {
    std::free(device->path);
    std::free(device->uuid);
    velatrix_free_regions(device->regions);
    velatrix_list_free(device->input_callbacks);
    std::free(device);
    return 1;
}

velatrix_device_driver make_driver() {
    velatrix_device_driver driver{};
    driver.open_device = open_device;
    driver.close_device = close_device;
    driver.get_feature_report = get_feature;
    driver.set_feature_report = set_feature;
    driver.set_output_report = set_feature;
    driver.free_device = free_device;
    return driver;
}

velatrix_device_driver driver = make_driver();

void check_regions(const velatrix_device_region_info* regions, uint32_t count) {
    for (uint32_t i = 0; i < count; ++i) {
        if (regions[i].type != VELATRIX_REGION_BUTTON) continue;
        const char* caption = regions[i].data.button.caption;
        if (strnlen(caption, sizeof regions[i].data.button.caption) >= sizeof regions[i].data.button.caption) {
            violated("table caption not terminated inside its field");
        }
    }
}

// Every read the pad answers once it is open.
void read_everything(velatrix_device* device) {
    velatrix_get_capabilities(device);
    velatrix_get_device_configure(device);
    velatrix_get_contact_count_maximum(device);
    velatrix_get_frequency_amplitude(device);
    velatrix_get_power_state(device);
    velatrix_get_coordinate_range(device);
    const velatrix_hid_feature_serial_number serial = velatrix_get_serial_number(device);
    if (strnlen(serial.serial_number, sizeof serial.serial_number) >= sizeof serial.serial_number) {
        violated("serial number not terminated");
    }
    velatrix_get_operating_modes(device);
    velatrix_get_display_settings(device);
    velatrix_get_general_parameters(device);
    velatrix_get_asic_register(device);
    velatrix_get_pen_parameters(device);
    velatrix_get_touch_parameters(device);
    velatrix_get_output_configuration(device);
    velatrix_get_peripheral_configuration(device);
    velatrix_get_calibration_data(device);
    velatrix_get_calibrate_state(device);

    const uint32_t count = device->display_info.region_count;
    velatrix_device_region_info* defaults = velatrix_get_default_regions(device);
    if (defaults != nullptr) check_regions(defaults, count);
    velatrix_free_regions(defaults);

    velatrix_device_region* device_regions = velatrix_get_device_regions(device);
    velatrix_free_device_regions(device_regions);
    velatrix_device_region region{};
    velatrix_get_region_ref(device, &region);
    if (strnlen(region.data.button.caption, sizeof region.data.button.caption) >=
        sizeof region.data.button.caption) {
        violated("device region caption not terminated");
    }
    velatrix_get_region_idx(device);

    velatrix_hid_feature_screen screen{};
    velatrix_get_screen_ref(device, &screen);
    velatrix_get_screen_idx(device);
    velatrix_get_active_screen(device);
    velatrix_hid_feature_screen_region_info info{};
    velatrix_get_screen_region_info_ref(device, &info);

    velatrix_hid_feature_resource_availability availability{};
    velatrix_get_resource_availability_ref(device, &availability);
    velatrix_hid_feature_resource_info resource_info{};
    velatrix_get_resource_info_ref(device, &resource_info);
    auto* chunk = static_cast<velatrix_hid_feature_resource*>(std::calloc(1, sizeof(velatrix_hid_feature_resource)));
    velatrix_get_resource_ref(device, chunk);
    std::free(chunk);
    velatrix_get_resource_idx(device);

    auto* pixels = static_cast<velatrix_pixel_read*>(std::calloc(1, sizeof(velatrix_pixel_read)));
    velatrix_get_pixels(device, pixels);
    std::free(pixels);
    velatrix_clear_screen(device);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ByteReader reader(data, size);
    input = &reader;
    velatrix_set_legacy_firmware(nullptr, reader.u8() & 1);

    auto* device = static_cast<velatrix_device*>(std::calloc(1, sizeof(velatrix_device)));
    device->path = strdup("fuzz_pad");
    device->driver = &driver;
    // A failed open has freed the record.
    if (velatrix_open_device(device) == 1) {
        check_regions(device->regions, device->display_info.region_count);
        read_everything(device);
        velatrix_close_device(device);
        velatrix_free_device_list(device);
    }
    input = nullptr;
    return 0;
}
