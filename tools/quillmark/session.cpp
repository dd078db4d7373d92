#include "session.h"

#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <string_view>

#include "images.h"
#include "text.h"

namespace quillmark {
namespace {

// A signature-like curve across the signing area of a w x h display.
std::vector<velatrix_virtual_point> signature_points(int w, int h) {
    std::vector<velatrix_virtual_point> points;
    const double left = w * 0.15, width = w * 0.7, middle = h * 0.6, amplitude = h * 0.1;
    for (int i = 0; i <= 120; ++i) {
        const double t = i / 120.0;
        const double x = left + width * t + 12 * std::sin(t * 19);
        const double y = middle + amplitude * std::sin(t * 11) * std::cos(t * 3);
        points.push_back({static_cast<uint16_t>(x), static_cast<uint16_t>(y)});
    }
    return points;
}

// Centre of the first button region the pad holds.
bool button_centre(const velatrix_device* device, velatrix_virtual_point* centre) {
    if (device->regions == nullptr) return false;
    for (int i = 0; i < device->display_info.region_count; ++i) {
        const velatrix_device_region_info& r = device->regions[i];
        if (r.type == VELATRIX_REGION_BUTTON && r.in_use && r.x2 > r.x1 && r.y2 > r.y1) {
            *centre = {static_cast<uint16_t>((r.x1 + r.x2) / 2), static_cast<uint16_t>((r.y1 + r.y2) / 2)};
            return true;
        }
    }
    return false;
}

std::vector<uint16_t> numbers(std::string_view spec, std::string_view text, size_t count) {
    std::vector<uint16_t> values;
    for (const std::string& item : split(text, ',')) values.push_back(parse_u16(item, spec));
    if (values.size() != count) throw UsageError("--play " + std::string(spec) + ": expected " + std::to_string(count) + " numbers");
    return values;
}

}  // namespace

void refuse(const std::string& what) {
    const char* error = velatrix_get_last_error();
    throw Refused(error != nullptr && *error != '\0' ? what + ": " + error : what);
}

uint8_t transfer_depth(uint8_t color_depth) {
    if (color_depth <= 1) return 1;
    if (color_depth < 24) return 4;
    return 24;
}

Session::Session(const GlobalOptions& options) : options_(options) {
    if (!options_.use_virtual && !options_.play.empty()) throw UsageError("--play needs --virtual");
    if (!options_.use_virtual && !options_.display_out.empty()) throw UsageError("--display-out needs --virtual");
    if (!options_.use_virtual && options_.fail_transfer != 0) throw UsageError("--fail-transfer needs --virtual");
    if (!options_.trace_file.empty()) {
        // The library writes its trace into the log directory under the
        // trace file name; both are read once, at start-up.
        const std::filesystem::path path = std::filesystem::absolute(options_.trace_file);
        setenv("VELATRIX_TRACE", "1", 1);
        setenv("VELATRIX_TRACE_FILE", path.filename().c_str(), 1);
        setenv("VELATRIX_DEBUG_LOCATION", path.parent_path().c_str(), 1);
    }
    if (options_.use_virtual) velatrix_virtual_simulate(0);
    velatrix_init();
    if (options_.use_virtual) {
        pad_ = velatrix_virtual_plug(options_.virtual_model.c_str());
        if (pad_ == 0) {
            const std::string error = velatrix_get_last_error();
            velatrix_destroy();
            throw UsageError(error);
        }
    }
}

Session::~Session() {
    if (device_ != nullptr) {
        try {
            write_display_out();
        } catch (const Refused& e) {
            std::fprintf(stderr, "quillmark: %s\n", e.what());
        }
        if (device_->open) velatrix_close_device(device_);
        velatrix_free_device_list(device_);
    }
    velatrix_free_device_list(head_);
    velatrix_destroy();  // joins the hot-plug thread
}

velatrix_device* Session::list() {
    velatrix_free_device_list(head_);
    head_ = nullptr;
    if (velatrix_list_devices(&head_) != 1 && head_ == nullptr) {
        const char* error = velatrix_get_last_error();
        if (error != nullptr && *error != '\0') refuse("listing the pads failed");
    }
    return head_;
}

velatrix_device* Session::open() {
    list();
    velatrix_device* chosen = nullptr;
    velatrix_device* before = nullptr;
    for (velatrix_device* d = head_; d != nullptr; before = d, d = d->next) {
        if (options_.pad_path.empty() || options_.pad_path == d->path) {
            chosen = d;
            break;
        }
    }
    if (chosen == nullptr) {
        throw Refused(options_.pad_path.empty() ? "no pad attached" : "no pad at " + options_.pad_path);
    }
    // A failed open frees the record: take it out of the chain first.
    (before != nullptr ? before->next : head_) = chosen->next;
    chosen->next = nullptr;
    if (velatrix_open_device(chosen) != 1) refuse("cannot open the pad");
    device_ = chosen;
    if (options_.fail_transfer != 0) velatrix_virtual_fail_transfer(pad_, options_.fail_transfer);
    return device_;
}

uint32_t Session::virtual_input_count() const { return pad_ != 0 ? velatrix_virtual_input_count(pad_) : 0; }

uint32_t Session::play() {
    for (const std::string& spec : options_.play) {
        const size_t colon = spec.find(':');
        const std::string kind = spec.substr(0, colon);
        const std::string_view args = colon == std::string::npos ? std::string_view{} : std::string_view(spec).substr(colon + 1);
        int ok = 1;
        if (kind == "stroke") {
            std::vector<velatrix_virtual_point> points;
            for (const std::string& point : split(args, ';')) {
                const auto xy = numbers(spec, point, 2);
                points.push_back({xy[0], xy[1]});
            }
            if (points.empty()) throw UsageError("--play " + spec + ": a stroke needs points");
            ok = velatrix_virtual_play_stroke(pad_, points.data(), static_cast<uint32_t>(points.size()));
        } else if (kind == "signature") {
            const auto points = signature_points(device_->display_info.width, device_->display_info.height);
            ok = velatrix_virtual_play_stroke(pad_, points.data(), static_cast<uint32_t>(points.size()));
        } else if (kind == "button") {
            velatrix_virtual_point centre{};
            if (!button_centre(device_, &centre)) throw Refused("the pad has no button region");
            ok = velatrix_virtual_play_stroke(pad_, &centre, 1);
        } else if (kind == "card") {
            auto tracks = split(args, '|');
            tracks.resize(3);
            ok = velatrix_virtual_swipe_card(pad_, tracks[0].c_str(), tracks[1].c_str(), tracks[2].c_str());
        } else if (kind == "adc-scan" || kind == "adc-channel") {
            const auto v = numbers(spec, args, 5);
            const uint16_t values[4] = {v[1], v[2], v[3], v[4]};
            ok = velatrix_virtual_send_adc(pad_, kind == "adc-scan" ? VELATRIX_ADC_SCAN_VALUES : VELATRIX_ADC_CHANNEL_VALUES,
                                           static_cast<uint8_t>(v[0]), values);
        } else if (kind == "debug") {
            const auto v = numbers(spec, args, 11);
            const uint16_t values[9] = {v[1], v[2], v[3], v[4], v[5], v[6], v[7], v[8], v[9]};
            ok = velatrix_virtual_send_debug(pad_, static_cast<uint8_t>(v[0]), values, static_cast<uint8_t>(v[10]));
        } else {
            throw UsageError("--play " + spec +
                             ": unknown input (stroke:X,Y;X,Y..., signature, button, card:T1|T2|T3, "
                             "adc-scan:F,V1,V2,V3,V4, adc-channel:C,V1,V2,V3,V4, debug:F,V1,...,V9,LAST)");
        }
        if (ok != 1) refuse("the virtual pad did not take --play " + spec);
    }
    return virtual_input_count();
}

void Session::write_display_out() {
    if (options_.display_out.empty() || pad_ == 0) return;
    int32_t width = 0, height = 0;
    if (velatrix_virtual_display_size(pad_, &width, &height) != 1) return;
    std::vector<uint8_t> rgb(static_cast<size_t>(width) * height * 3);
    if (velatrix_virtual_read_frame_rgb(pad_, rgb.data(), static_cast<uint32_t>(rgb.size())) != 1) return;
    write_png(options_.display_out, RgbImage{width, height, std::move(rgb)});
}

}  // namespace quillmark
