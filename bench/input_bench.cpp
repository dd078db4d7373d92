// Decoding the pad's input reports: every pen sample passes here, at the
// pad's report rate, on the reading thread.
#include <benchmark/benchmark.h>

#include <array>
#include <cstdlib>
#include <vector>

#include "velatrix/input.h"
#include "velatrix/regions.h"

namespace {

// An open device record with a region table: region 1 a container over
// the whole display, region 2 a button, as a signature form has them; the
// callback list is the one opening a device makes.
struct FormDevice {
    FormDevice() {
        regions[0].number = 1;
        regions[0].type = VELATRIX_REGION_CONTAINER;
        regions[1].number = 2;
        regions[1].type = VELATRIX_REGION_BUTTON;
        device.display_info.region_count = static_cast<uint8_t>(regions.size());
        device.regions = regions.data();
        device.open = 1;
        device.input_callbacks = velatrix_create_list();
    }
    ~FormDevice() { velatrix_list_free(device.input_callbacks); }
    FormDevice(const FormDevice&) = delete;
    FormDevice& operator=(const FormDevice&) = delete;
    std::array<velatrix_device_region_info, 2> regions{};
    velatrix_device device{};
};

// A pen stroke of 256 samples; each sample is a whole raw report.
std::vector<std::array<uint8_t, 7>> stroke(uint8_t id, bool over_button) {
    std::vector<std::array<uint8_t, 7>> reports;
    for (uint16_t i = 0; i < 256; ++i) {
        const auto x = static_cast<uint16_t>(100 + i * 3), y = static_cast<uint16_t>(200 + (i % 40));
        const uint8_t tip = i == 255 ? 0x10 : 0x11;
        // Every 32 samples the pen crosses the button: down, moves, press.
        const uint8_t region = over_button && (i / 32) % 2 == 1 ? 2 : 1;
        reports.push_back({id, tip, static_cast<uint8_t>(x), static_cast<uint8_t>(x >> 8), static_cast<uint8_t>(y),
                           static_cast<uint8_t>(y >> 8), region});
    }
    return reports;
}

void parse(benchmark::State& state, uint8_t id, uint32_t length, bool over_button) {
    FormDevice form;
    const auto reports = stroke(id, over_button);
    for (auto _ : state) {
        for (const auto& report : reports) {
            velatrix_input_report* record = velatrix_parse_input_report(&form.device, report.data(), length);
            if (record == nullptr) {
                state.SkipWithError("report rejected");
                return;
            }
            benchmark::DoNotOptimize(record->type);
            velatrix_free_input_report(record);
        }
    }
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(reports.size()));
}

void BM_ParseCoordinate(benchmark::State& state) { parse(state, VELATRIX_INPUT_COORDINATE, 6, false); }
void BM_ParseExtendedCoordinate(benchmark::State& state) {
    parse(state, VELATRIX_INPUT_EXTENDED_COORDINATE, 7, false);
}
void BM_ParseExtendedCoordinateButtons(benchmark::State& state) {
    parse(state, VELATRIX_INPUT_EXTENDED_COORDINATE, 7, true);
}

// The dispatch path a pad's reading thread takes: parse, then hand the
// record to the one callback registered on the device.
uint64_t reports_seen = 0;
int count_report(velatrix_device*, const velatrix_input_report* record, int, const uint8_t*, uint32_t) {
    benchmark::DoNotOptimize(record->data.coordinate.x);
    ++reports_seen;
    return 0;
}

void BM_DispatchToOneCallback(benchmark::State& state) {
    FormDevice form;
    velatrix_register_input_callback(&form.device, count_report);
    const auto reports = stroke(VELATRIX_INPUT_EXTENDED_COORDINATE, false);
    reports_seen = 0;
    for (auto _ : state) {
        for (const auto& report : reports) velatrix_get_driver_input_report(&form.device, report.data(), 7);
    }
    if (reports_seen != state.iterations() * reports.size()) state.SkipWithError("a report missed the callback");
    state.SetItemsProcessed(state.iterations() * static_cast<int64_t>(reports.size()));
    velatrix_unregister_input_callback(&form.device, count_report);
}

BENCHMARK(BM_ParseCoordinate);
BENCHMARK(BM_DispatchToOneCallback);
BENCHMARK(BM_ParseExtendedCoordinate);
BENCHMARK(BM_ParseExtendedCoordinateButtons);

}  // namespace
