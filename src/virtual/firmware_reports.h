// The firmware's report table: for every feature report id, its length,
// what a get answers, what a set does, which busy flags a set raises and
// whether the pad takes it only while idle. Handlers live next to the
// state they serve (firmware_info.cpp, firmware_display.cpp, firmware_ui.cpp).
#pragma once

#include <cstdint>

#include "virtual/firmware.h"
#include "virtual/wire.h"

namespace velatrix::virtual_pad {

// Interlock flags of the status report, as the pad raises them.
enum BusyFlag : uint8_t {
    kBusyMode = 1,
    kBusyRegions = 4,
    kBusyScreens = 8,
    kBusyRegionsScreens = 12,
    kBusyDisplay = 16,
    kBusyCalibration = 32,
};

// A getter fills `out` (the id byte is already set); a setter reads `in`.
// Either returns false to refuse the request, after Firmware::refuse.
using Getter = bool (*)(Firmware&, Outgoing&);
using Setter = bool (*)(Firmware&, const Incoming&);

struct Firmware::Report {
    uint8_t id;
    // Total length with the id; 0 for the region reports, whose length
    // follows the display's region geometry.
    uint16_t length;
    Getter get;
    Setter set;
    uint8_t busy_after;
    bool idle_only;
};

const Firmware::Report* find_report(uint8_t id);

// The handlers reach into the firmware's private state.
struct Handlers {
    static bool stored_get(Firmware& pad, Outgoing& out);
    static bool stored_set(Firmware& pad, const Incoming& in);

    // Identity and status (firmware_info.cpp).
    static bool capabilities(Firmware& pad, Outgoing& out);
    static bool status(Firmware& pad, Outgoing& out);
    static bool clear_error(Firmware& pad, const Incoming& in);
    static bool contact_count(Firmware& pad, Outgoing& out);
    static bool version(Firmware& pad, Outgoing& out);
    static bool coordinate_range(Firmware& pad, Outgoing& out);
    static bool operating_modes(Firmware& pad, Outgoing& out);
    static bool display_info(Firmware& pad, Outgoing& out);
    static bool serial_get(Firmware& pad, Outgoing& out);
    static bool serial_set(Firmware& pad, const Incoming& in);
    static bool run_mode(Firmware& pad, const Incoming& in);
    static bool startup_mode(Firmware& pad, const Incoming& in);
    static bool error_correction_get(Firmware& pad, Outgoing& out);
    static bool error_correction_set(Firmware& pad, const Incoming& in);
    static bool firmware_page(Firmware& pad, const Incoming& in);
    static bool download_status(Firmware& pad, const Incoming& in);
    static bool asic_reset(Firmware& pad, const Incoming& in);
    static bool asic_register_get(Firmware& pad, Outgoing& out);
    static bool asic_register_set(Firmware& pad, const Incoming& in);
    static bool calibrate_get(Firmware& pad, Outgoing& out);
    static bool calibrate_set(Firmware& pad, const Incoming& in);
    static bool simulate_pen(Firmware& pad, const Incoming& in);

    // Display memory (firmware_display.cpp).
    static bool display_content(Firmware& pad, const Incoming& in);
    static bool display_chunk(Firmware& pad, const Incoming& in);
    static bool pixel_request(Firmware& pad, const Incoming& in);
    static bool pixel_answer(Firmware& pad, Outgoing& out);

    // Regions, screens and resources (firmware_ui.cpp).
    static bool regions_get(Firmware& pad, Outgoing& out);
    static bool default_regions_get(Firmware& pad, Outgoing& out);
    static bool region_set(Firmware& pad, const Incoming& in);
    static bool region_update(Firmware& pad, const Incoming& in);
    static bool region_delete(Firmware& pad, const Incoming& in);
    static bool region_commit(Firmware& pad, const Incoming& in);
    static bool region_index_get(Firmware& pad, Outgoing& out);
    static bool region_index_set(Firmware& pad, const Incoming& in);
    static bool region_contents_get(Firmware& pad, Outgoing& out);
    static bool region_contents_set(Firmware& pad, const Incoming& in);
    static bool device_region_delete(Firmware& pad, const Incoming& in);
    static bool screen_index_get(Firmware& pad, Outgoing& out);
    static bool screen_index_set(Firmware& pad, const Incoming& in);
    static bool screen_get(Firmware& pad, Outgoing& out);
    static bool screen_set(Firmware& pad, const Incoming& in);
    static bool screen_delete(Firmware& pad, const Incoming& in);
    static bool screen_edit(Firmware& pad, const Incoming& in);
    static bool screen_region_info(Firmware& pad, Outgoing& out);
    static bool active_screen_get(Firmware& pad, Outgoing& out);
    static bool active_screen_set(Firmware& pad, const Incoming& in);
    static bool screen_region_commit(Firmware& pad, const Incoming& in);
    static bool resource_index_get(Firmware& pad, Outgoing& out);
    static bool resource_index_set(Firmware& pad, const Incoming& in);
    static bool resource_info(Firmware& pad, Outgoing& out);
    static bool resource_get(Firmware& pad, Outgoing& out);
    static bool resource_set(Firmware& pad, const Incoming& in);
    static bool resource_delete(Firmware& pad, const Incoming& in);
    static bool resource_availability(Firmware& pad, Outgoing& out);
};

}  // namespace velatrix::virtual_pad
