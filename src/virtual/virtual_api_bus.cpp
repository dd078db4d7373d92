// C API: models, plugging, the wire, input and faults.
#include <algorithm>
#include <cerrno>
#include <cstring>

#include "host/hid_host.h"
#include "virtual/virtual_hid_layer.h"
#include "virtual/virtual_api_common.h"

using velatrix::virtual_pad::all_models;
using velatrix::virtual_pad::argument_given;
using velatrix::virtual_pad::Bytes;
using velatrix::virtual_pad::Outcome;
using velatrix::virtual_pad::pad_or_error;
using velatrix::virtual_pad::VirtualBus;

namespace {

const char* outcome_text(Outcome outcome) {
    switch (outcome) {
    case Outcome::ok:
        return "ok";
    case Outcome::refused:
        return "refused by the pad";
    case Outcome::failed:
        return "failed";
    case Outcome::gone:
        return "pad unplugged";
    }
    return "failed";
}

}  // namespace

extern "C" {

uint32_t velatrix_virtual_model_count(void) {
    VELATRIX_TRACE_FUNCTION();
    return static_cast<uint32_t>(all_models().size());
}

const char* velatrix_virtual_model_name(uint32_t index) {
    VELATRIX_TRACE_FUNCTION();
    if (index >= all_models().size()) return nullptr;
    return all_models()[index]->name.c_str();
}

velatrix_virtual_pad velatrix_virtual_plug(const char* model) {
    VELATRIX_TRACE_FUNCTION();
    const velatrix::virtual_pad::PadModel* found =
        model == nullptr ? nullptr : velatrix::virtual_pad::find_model(model);
    if (found == nullptr) {
        VELATRIX_REPORT_ERROR("Unknown virtual pad model: %s", model == nullptr ? "(null)" : model);
        return 0;
    }
    return VirtualBus::instance().plug(*found)->id();
}

int velatrix_virtual_unplug(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    if (!VirtualBus::instance().unplug(pad)) {
        VELATRIX_REPORT_ERROR("No virtual pad with id %d", pad);
        return 0;
    }
    return 1;
}

void velatrix_virtual_unplug_all(void) {
    VELATRIX_TRACE_FUNCTION();
    VirtualBus::instance().unplug_all();
}

void velatrix_virtual_simulate(int32_t count) {
    VELATRIX_TRACE_FUNCTION();
    velatrix::host::simulate_virtual_pads(count);
}

uint32_t velatrix_virtual_pad_count(void) {
    VELATRIX_TRACE_FUNCTION();
    return static_cast<uint32_t>(VirtualBus::instance().pads().size());
}

velatrix_virtual_pad velatrix_virtual_pad_at(uint32_t index) {
    VELATRIX_TRACE_FUNCTION();
    auto pads = VirtualBus::instance().pads();
    return index < pads.size() ? pads[index]->id() : 0;
}

int velatrix_virtual_is_plugged(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    return VirtualBus::instance().find(pad) != nullptr ? 1 : 0;
}

const char* velatrix_virtual_pad_model(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    return found ? found->model().name.c_str() : nullptr;
}

uint16_t velatrix_virtual_product_id(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    return found ? found->model().product_id : 0;
}

uint32_t velatrix_virtual_location_id(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    return found ? found->location_id() : 0;
}

int32_t velatrix_virtual_get_feature(velatrix_virtual_pad pad, uint8_t* buffer, uint32_t length) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(buffer, "buffer")) return -1;
    auto result = found->get_feature(std::span(buffer, length));
    if (result.outcome != Outcome::ok) {
        VELATRIX_REPORT_ERROR("Virtual get of report %u: %s", length > 0 ? buffer[0] : 0u,
                              outcome_text(result.outcome));
        return -1;
    }
    return static_cast<int32_t>(result.length);
}

int velatrix_virtual_set_feature(velatrix_virtual_pad pad, const uint8_t* buffer, uint32_t length) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(buffer, "buffer")) return 0;
    auto result = found->set_feature(std::span(buffer, length));
    if (result.outcome != Outcome::ok) {
        VELATRIX_REPORT_ERROR("Virtual set of report %u: %s", length > 0 ? buffer[0] : 0u,
                              outcome_text(result.outcome));
        return 0;
    }
    return 1;
}

int32_t velatrix_virtual_report_descriptor(velatrix_virtual_pad pad, uint8_t* descriptor, uint32_t size) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return -1;
    const std::vector<uint8_t>& bytes = found->report_descriptor();
    if (descriptor != nullptr) std::copy_n(bytes.begin(), std::min<std::size_t>(size, bytes.size()), descriptor);
    return static_cast<int32_t>(bytes.size());
}

int velatrix_virtual_push_input(velatrix_virtual_pad pad, const uint8_t* report, uint32_t length) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(report, "report")) return 0;
    found->send_input(Bytes(report, report + length));
    return 1;
}

int velatrix_virtual_pen(velatrix_virtual_pad pad, uint16_t x, uint16_t y, uint8_t tip, uint8_t in_range) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    found->pen(x, y, tip != 0, in_range != 0);
    return 1;
}

int velatrix_virtual_play_stroke(velatrix_virtual_pad pad, const velatrix_virtual_point* points, uint32_t count) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(points, "points")) return 0;
    std::vector<std::array<uint16_t, 2>> stroke;
    stroke.reserve(count);
    for (uint32_t i = 0; i < count; ++i) stroke.push_back({points[i].x, points[i].y});
    found->stroke(stroke);
    return 1;
}

int velatrix_virtual_swipe_card(velatrix_virtual_pad pad, const char* track1, const char* track2,
                                const char* track3) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    if (!found->swipe_card(track1 ? track1 : "", track2 ? track2 : "", track3 ? track3 : "")) {
        VELATRIX_REPORT_ERROR("Virtual pad %d has no card reader", pad);
        return 0;
    }
    return 1;
}

int velatrix_virtual_send_adc(velatrix_virtual_pad pad, uint8_t kind, uint8_t flags_or_channel,
                              const uint16_t values[4]) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(values, "values")) return 0;
    found->send_input(velatrix::virtual_pad::adc_report(kind, flags_or_channel,
                                                        {values[0], values[1], values[2], values[3]}));
    return 1;
}

int velatrix_virtual_send_debug(velatrix_virtual_pad pad, uint8_t flags, const uint16_t values[9], uint8_t last) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found || !argument_given(values, "values")) return 0;
    std::array<uint16_t, 9> copied{};
    std::copy_n(values, copied.size(), copied.begin());
    found->send_input(velatrix::virtual_pad::debug_report(flags, copied, last));
    return 1;
}

uint32_t velatrix_virtual_input_count(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    return found ? static_cast<uint32_t>(found->input_log().size()) : 0;
}

int32_t velatrix_virtual_input_report(velatrix_virtual_pad pad, uint32_t index, uint8_t* buffer, uint32_t size) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return -1;
    auto log = found->input_log();
    if (index >= log.size()) {
        VELATRIX_REPORT_ERROR("Virtual pad %d has sent no input report %u", pad, index);
        return -1;
    }
    if (buffer != nullptr) std::copy_n(log[index].begin(), std::min<std::size_t>(size, log[index].size()), buffer);
    return static_cast<int32_t>(log[index].size());
}

int velatrix_virtual_fail_transfer(velatrix_virtual_pad pad, uint32_t nth) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    found->fail_transfer(nth);
    return 1;
}

int velatrix_virtual_unplug_at_transfer(velatrix_virtual_pad pad, uint32_t nth) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    found->unplug_at_transfer(nth);
    return 1;
}

int velatrix_virtual_stay_busy(velatrix_virtual_pad pad, uint8_t bits) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    found->with_firmware([bits](auto& firmware) { firmware.state().stay_busy = bits & 0x3F; });
    return 1;
}

int velatrix_virtual_set_busy_polls(velatrix_virtual_pad pad, uint32_t polls) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    found->with_firmware([polls](auto& firmware) { firmware.state().busy_polls = polls; });
    return 1;
}

int velatrix_virtual_set_initializing(velatrix_virtual_pad pad, uint32_t polls) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    found->with_firmware([polls](auto& firmware) { firmware.state().initializing_left = polls; });
    return 1;
}

int velatrix_virtual_short_answer(velatrix_virtual_pad pad, uint8_t report_id, uint32_t length) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    found->short_answer(report_id, length);
    return 1;
}

int velatrix_virtual_malformed_answer(velatrix_virtual_pad pad, uint8_t report_id) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    found->malformed_answer(report_id);
    return 1;
}

int velatrix_virtual_refuse_open(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    if (!pad_or_error(pad)) return 0;
    velatrix::virtual_pad::bus_hid_layer().fail_next_open(pad, EACCES);
    return 1;
}

int velatrix_virtual_clear_faults(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    if (!found) return 0;
    found->clear_faults();
    velatrix::virtual_pad::bus_hid_layer().clear_faults(pad);
    return 1;
}

uint32_t velatrix_virtual_transfer_count(velatrix_virtual_pad pad) {
    VELATRIX_TRACE_FUNCTION();
    auto found = pad_or_error(pad);
    return found ? found->transfers() : 0;
}

}  // extern "C"
