// `quillmark regions`, `screens` and `resources`: what the pad holds.
#include <algorithm>
#include <cstdio>
#include <string>

#include "commands.h"

namespace quillmark {
namespace {

// Screens and resources live only on pads that say they have them.
velatrix_hid_feature_screen_region_info screen_region_info(velatrix_device* device) {
    const velatrix_hid_capabilities capabilities = velatrix_get_capabilities(device);
    if (capabilities.report_id == 0) refuse("reading the capabilities failed");
    if (!capabilities.supports_screens_resources) throw Refused("the pad has no screens or resources");
    velatrix_hid_feature_screen_region_info info{};
    velatrix_get_screen_region_info_ref(device, &info);
    if (info.report_id == 0) refuse("reading the screen and region counts failed");
    return info;
}

const char* resource_type(uint32_t type) {
    switch (type) {
        case VELATRIX_RESOURCE_TEXT: return "text";
        case VELATRIX_RESOURCE_GRAPHIC: return "graphic";
        default: return "invalid";
    }
}

}  // namespace

int run_regions(const GlobalOptions& options) {
    Session session(options);
    velatrix_device* device = session.open();
    if (device->regions == nullptr) refuse("the pad gave no region table");
    velatrix_print_regions(device->regions, device->display_info.region_count);
    const velatrix_hid_capabilities capabilities = velatrix_get_capabilities(device);
    if (capabilities.supports_screens_resources) {
        const auto info = screen_region_info(device);
        velatrix_device_region* regions = velatrix_get_device_regions(device);
        if (regions == nullptr && info.payload[1] != 0) refuse("reading the device regions failed");
        velatrix_print_device_regions(regions, info.payload[1]);
        velatrix_free_device_regions(regions);
    }
    std::fflush(stdout);
    return 0;
}

int run_screens(const GlobalOptions& options) {
    Session session(options);
    velatrix_device* device = session.open();
    const auto info = screen_region_info(device);
    const int active = velatrix_get_active_screen(device);
    // The info report lists the numbers of the first 16 screens.
    const unsigned count = std::min<unsigned>(info.payload[0], sizeof info.payload - 8);
    std::printf("%u screen(s), active %d\n", info.payload[0], active);
    for (unsigned i = 0; i < count; ++i) {
        const uint8_t number = info.payload[8 + i];
        if (velatrix_set_screen_idx(device, number) != 1) refuse("selecting screen " + std::to_string(number) + " failed");
        velatrix_hid_feature_screen screen{};
        velatrix_get_screen_ref(device, &screen);
        if (screen.report_id == 0) refuse("reading screen " + std::to_string(number) + " failed");
        std::printf("screen %u: timeout %u next %u, reset on activity %u, regions:", screen.screen_number,
                    screen.timeout, screen.timeout_next_screen, screen.reset_timeout_on_activity);
        for (unsigned r = 0; r < screen.region_count && r < VELATRIX_SCREEN_MAX_REGIONS; ++r) {
            std::printf(" %u->%u", screen.region_indexes[r], screen.screen_next_list[r]);
        }
        std::printf("\n");
    }
    return 0;
}

int run_resources(const GlobalOptions& options) {
    Session session(options);
    velatrix_device* device = session.open();
    screen_region_info(device);
    velatrix_hid_feature_resource_availability availability{};
    velatrix_get_resource_availability_ref(device, &availability);
    if (availability.report_id == 0) refuse("reading the resource availability failed");
    std::printf("%u resource(s), %llu byte(s) free\n", availability.unknown1,
                static_cast<unsigned long long>(availability.unknown2));
    // The availability lists the numbers in use as a bit set, a byte per entry.
    for (unsigned number = 0; number < 12 * 8; ++number) {
        if ((availability.list[number / 8] >> (number % 8) & 1u) == 0) continue;
        if (velatrix_set_resource_idx(device, static_cast<uint8_t>(number)) != 1) {
            refuse("selecting resource " + std::to_string(number) + " failed");
        }
        velatrix_hid_feature_resource_info resource{};
        velatrix_get_resource_info_ref(device, &resource);
        if (resource.report_id == 0) refuse("reading resource " + std::to_string(number) + " failed");
        std::printf("resource %u: %s, %llu byte(s)\n", resource.resource_number, resource_type(resource.resource_type),
                    static_cast<unsigned long long>(resource.resource_size));
    }
    return 0;
}

}  // namespace quillmark
