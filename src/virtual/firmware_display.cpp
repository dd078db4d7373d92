// The display reports: content command, pixel chunks and pixel read-back.
#include "virtual/firmware_reports.h"

namespace velatrix::virtual_pad {

bool Handlers::display_content(Firmware& pad, const Incoming& in) {
    pad.state_.display_content_commands.push_back(in.u8(1));
    return true;
}

bool Handlers::display_chunk(Firmware& pad, const Incoming& in) {
    std::string error;
    if (!pad.frame_.write_chunk(in.raw(), error)) {
        pad.refuse(error);
        return false;
    }
    return true;
}

bool Handlers::pixel_request(Firmware& pad, const Incoming& in) {
    pad.state_.pixel_x = in.le16(1);
    pad.state_.pixel_y = in.le16(3);
    return true;
}

bool Handlers::pixel_answer(Firmware& pad, Outgoing& out) {
    pad.frame_.encode_pixels(pad.state_.pixel_x, pad.state_.pixel_y, out.raw());
    return true;
}

}  // namespace velatrix::virtual_pad
