// The pad's own user interface: the region table, device regions, screens
// and resources.
#include <algorithm>

#include "virtual/firmware_reports.h"

namespace velatrix::virtual_pad {

namespace {
std::string out_of_range(const char* what, unsigned number) {
    return std::string(what) + " " + std::to_string(number) + " out of range";
}
}  // namespace

bool Handlers::regions_get(Firmware& pad, Outgoing& out) {
    pad.regions_.encode_table(out.raw(), false);
    return true;
}

bool Handlers::default_regions_get(Firmware& pad, Outgoing& out) {
    pad.regions_.encode_table(out.raw(), true);
    return true;
}

bool Handlers::region_set(Firmware& pad, const Incoming& in) {
    auto number = pad.regions_.write_table_region(in.raw());
    if (!number) {
        pad.refuse(out_of_range("Region", in.u8(1)));
        return false;
    }
    // A region of the table generation is drawn as soon as it is written.
    pad.frame_.draw_region(*pad.regions_.find(*number));
    return true;
}

bool Handlers::region_update(Firmware& pad, const Incoming& in) {
    auto number = pad.regions_.update_region(in.raw());
    if (!number) {
        pad.refuse(out_of_range("Region", in.u8(1)));
        return false;
    }
    pad.frame_.draw_region(*pad.regions_.find(*number));
    return true;
}

bool Handlers::region_delete(Firmware& pad, const Incoming& in) {
    if (!pad.regions_.erase(in.u8(1))) {
        pad.refuse(out_of_range("Region", in.u8(1)));
        return false;
    }
    return true;
}

bool Handlers::region_commit(Firmware& pad, const Incoming& in) {
    pad.state_.region_commits.push_back(in.u8(1));
    return true;
}

bool Handlers::region_index_get(Firmware& pad, Outgoing& out) {
    out.u8(1, pad.state_.region_index);
    return true;
}

bool Handlers::region_index_set(Firmware& pad, const Incoming& in) {
    pad.state_.region_index = in.u8(1);
    return true;
}

bool Handlers::region_contents_get(Firmware& pad, Outgoing& out) {
    uint8_t& index = pad.state_.region_index;
    if (pad.regions_.find(index) == nullptr) {
        pad.refuse(out_of_range("Region index", index));
        return false;
    }
    pad.regions_.encode_contents(index, out.raw());
    // Reading walks the regions: the next read answers the next slot.
    index = index >= pad.regions_.slot_count() ? 1 : static_cast<uint8_t>(index + 1);
    return true;
}

bool Handlers::region_contents_set(Firmware& pad, const Incoming& in) {
    if (!pad.regions_.write_contents(in.raw())) {
        pad.refuse(out_of_range("Region", in.u8(1)));
        return false;
    }
    return true;
}

bool Handlers::device_region_delete(Firmware& pad, const Incoming& in) {
    if (!pad.regions_.erase(in.u8(1))) {
        pad.refuse(out_of_range("Region", in.u8(1)));
        return false;
    }
    pad.screens_.drop_region(in.u8(1));
    return true;
}

bool Handlers::screen_index_get(Firmware& pad, Outgoing& out) {
    out.u8(1, pad.state_.screen_index);
    return true;
}

bool Handlers::screen_index_set(Firmware& pad, const Incoming& in) {
    pad.state_.screen_index = in.u8(1);
    return true;
}

bool Handlers::screen_get(Firmware& pad, Outgoing& out) {
    pad.screens_.encode(pad.state_.screen_index, out.raw());
    return true;
}

bool Handlers::screen_set(Firmware& pad, const Incoming& in) {
    Screen screen = ScreenStore::decode(in.raw());
    std::string error;
    if (!pad.screens_.put(screen, error)) {
        pad.refuse(error);
        return false;
    }
    if (screen.number == pad.state_.active_screen) pad.show_screen(screen.number);
    return true;
}

bool Handlers::screen_delete(Firmware& pad, const Incoming& in) {
    if (!pad.screens_.erase(in.u8(1))) {
        pad.refuse("Screen " + std::to_string(in.u8(1)) + " does not exist");
        return false;
    }
    return true;
}

bool Handlers::screen_edit(Firmware& pad, const Incoming& in) {
    std::string error;
    if (!pad.screens_.edit(in.raw(), error)) {
        pad.refuse(error);
        return false;
    }
    if (in.u8(8) == pad.state_.active_screen) pad.show_screen(pad.state_.active_screen);
    return true;
}

bool Handlers::screen_region_info(Firmware& pad, Outgoing& out) {
    out.u8(1, static_cast<uint8_t>(pad.screens_.screens().size()));
    out.u8(2, pad.regions_.highest_in_use());
    out.u8(3, pad.state_.active_screen);
    out.u8(4, pad.regions_.slot_count());
    out.u8(5, static_cast<uint8_t>(std::min<std::size_t>(pad.screens_.capacity(), 255)));
    out.u8(6, static_cast<uint8_t>(kScreenListLength));
    out.u8(7, static_cast<uint8_t>(pad.resources_.resources().size()));
    out.u8(8, static_cast<uint8_t>(kResourceSlots));
    std::size_t at = 9;
    for (const auto& [number, screen] : pad.screens_.screens()) {
        if (at >= 25) break;
        out.u8(at++, number);
    }
    return true;
}

bool Handlers::active_screen_get(Firmware& pad, Outgoing& out) {
    out.u8(1, pad.state_.active_screen);
    return true;
}

bool Handlers::active_screen_set(Firmware& pad, const Incoming& in) {
    if (pad.screens_.find(in.u8(1)) == nullptr) {
        pad.refuse("Screen " + std::to_string(in.u8(1)) + " does not exist");
        return false;
    }
    // Activating a screen, also the one shown, draws it afresh.
    pad.show_screen(in.u8(1));
    return true;
}

bool Handlers::screen_region_commit(Firmware& pad, const Incoming& in) {
    pad.state_.screen_region_commits.push_back(in.u8(1));
    return true;
}

bool Handlers::resource_index_get(Firmware& pad, Outgoing& out) {
    out.u8(1, pad.resources_.index());
    return true;
}

bool Handlers::resource_index_set(Firmware& pad, const Incoming& in) {
    pad.resources_.select(in.u8(1));
    return true;
}

bool Handlers::resource_info(Firmware& pad, Outgoing& out) {
    pad.resources_.encode_info(out.raw());
    return true;
}

bool Handlers::resource_get(Firmware& pad, Outgoing& out) {
    pad.resources_.read_chunk(out.raw());
    return true;
}

bool Handlers::resource_set(Firmware& pad, const Incoming& in) {
    std::string error;
    if (!pad.resources_.write_chunk(in.raw(), error)) {
        pad.refuse(error);
        return false;
    }
    return true;
}

bool Handlers::resource_delete(Firmware& pad, const Incoming& in) {
    if (!pad.resources_.erase(in.u8(1))) {
        pad.refuse("Resource " + std::to_string(in.u8(1)) + " does not exist");
        return false;
    }
    return true;
}

bool Handlers::resource_availability(Firmware& pad, Outgoing& out) {
    pad.resources_.encode_availability(out.raw());
    return true;
}

}  // namespace velatrix::virtual_pad
