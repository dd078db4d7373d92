// `quillmark events` and `quillmark capture`: the pad's input, read on this
// thread until the command has what it needs, a timeout or Ctrl-C.
#include <csignal>
#include <cstdlib>
#include <algorithm>
#include <chrono>
#include <cstdio>
#include <functional>
#include <string>
#include <variant>
#include <vector>

#include "commands.h"
#include "images.h"
#include "signature.h"
#include "text.h"

namespace quillmark {
namespace {

volatile std::sig_atomic_t interrupted = 0;

void on_interrupt(int) { interrupted = 1; }

// Ctrl-C ends the read loop; poll returns early because the handler is
// installed without SA_RESTART.
struct InterruptGuard {
    struct sigaction previous {};
    InterruptGuard() {
        interrupted = 0;
        struct sigaction action {};
        action.sa_handler = on_interrupt;
        sigemptyset(&action.sa_mask);
        sigaction(SIGINT, &action, &previous);
    }
    ~InterruptGuard() { sigaction(SIGINT, &previous, nullptr); }
};

using Clock = std::chrono::steady_clock;

// Called for every decoded input report; returns false to stop reading.
using Handler = std::function<bool(const velatrix_input_report& record, int type)>;
Handler* current_handler = nullptr;
bool stop_requested = false;
uint32_t received = 0;

int on_input(velatrix_device*, const velatrix_input_report* record, int type, const uint8_t*, uint32_t) {
    ++received;
    // Reports that came in the same read after the handler stopped are not its.
    if (stop_requested) return 0;
    if (current_handler != nullptr && !(*current_handler)(*record, type)) stop_requested = true;
    return 0;
}

// Reads until the handler stops, the timeout, Ctrl-C, or (on a virtual pad
// given --play input) every played report has arrived.
void read_input(Session& session, velatrix_device* device, double timeout, Handler handler) {
    InterruptGuard guard;
    current_handler = &handler;
    stop_requested = false;
    received = 0;
    velatrix_register_input_callback(device, &on_input);
    const uint32_t already_sent = session.virtual_input_count();
    const uint32_t expected = session.play() - already_sent;
    const auto deadline = Clock::now() + std::chrono::duration_cast<Clock::duration>(std::chrono::duration<double>(timeout));
    while (!interrupted && !stop_requested) {
        if (timeout > 0 && Clock::now() >= deadline) break;
        if (session.is_virtual() && expected > 0 && received >= expected) break;
        if (velatrix_device_read(device) != 1) {
            current_handler = nullptr;
            refuse("reading the pad failed");
        }
    }
    velatrix_unregister_input_callback(device, &on_input);
    current_handler = nullptr;
}

using Value = std::variant<int64_t, std::string, std::vector<int64_t>>;
struct Event {
    const char* name;
    std::vector<std::pair<const char*, Value>> fields;
};

std::string track(const char* text, size_t size) {
    size_t length = 0;
    while (length < size && text[length] != '\0') ++length;
    return std::string(text, length);
}

Event describe(const velatrix_input_report& r, int type) {
    switch (type) {
        case VELATRIX_INPUT_COORDINATE:
        case VELATRIX_INPUT_EXTENDED_COORDINATE: {
            const auto& c = r.data.coordinate;
            Event event{"PEN", {{"x", c.x}, {"y", c.y}, {"tip", c.tip_switch ? 1 : 0}, {"in_range", c.in_range ? 1 : 0}}};
            if (type == VELATRIX_INPUT_EXTENDED_COORDINATE) event.fields.emplace_back("region", c.region);
            return event;
        }
        case VELATRIX_INPUT_BUTTON_DOWN:
        case VELATRIX_INPUT_BUTTON_MOVE:
        case VELATRIX_INPUT_BUTTON_UP:
        case VELATRIX_INPUT_BUTTON_PRESS: {
            static constexpr const char* kNames[] = {"BUTTON_DOWN", "BUTTON_MOVE", "BUTTON_UP", "BUTTON_PRESS"};
            const auto& b = r.data.button;
            Event event{kNames[type - VELATRIX_INPUT_BUTTON_DOWN], {{"x", b.x}, {"y", b.y}}};
            if (b.region != nullptr) {
                event.fields.emplace_back("region", b.region->number);
                event.fields.emplace_back("caption", track(b.region->data.button.caption, VELATRIX_REGION_INFO_CAPTION_SIZE));
            }
            return event;
        }
        case VELATRIX_INPUT_MAGNETIC_CARD_SWIPE: {
            const auto& s = r.data.card_swipe;
            return {"CARD_SWIPE",
                    {{"track1", track(s.track1, sizeof s.track1)},
                     {"track2", track(s.track2, sizeof s.track2)},
                     {"track3", track(s.track3, sizeof s.track3)}}};
        }
        case VELATRIX_INPUT_ADC: {
            const auto& a = r.data.adc;
            if (a.kind == VELATRIX_ADC_SCAN_VALUES) {
                const auto& v = a.values.scan;
                return {"ADC_SCAN", {{"flag_a", v.flag_a}, {"flag_b", v.flag_b ? 1 : 0}, {"value1", v.value1},
                                     {"value2", v.value2}, {"value3", v.value3}, {"value4", v.value4}}};
            }
            if (a.kind == VELATRIX_ADC_CHANNEL_VALUES) {
                const auto& v = a.values.channel;
                return {"ADC_CHANNEL", {{"channel", v.channel}, {"value1", v.value1}, {"value2", v.value2},
                                        {"value3", v.value3}, {"value4", v.value4}}};
            }
            return {"ADC", {{"kind", a.kind}}};
        }
        case VELATRIX_INPUT_DEBUG_COORDINATE: {
            const auto& d = r.data.debug_coordinate;
            return {"DEBUG", {{"tip", d.tip_switch ? 1 : 0}, {"in_range", d.in_range ? 1 : 0},
                              {"values", std::vector<int64_t>{d.value1, d.value2, d.value3, d.value4, d.value5, d.value6,
                                                              d.value7, d.value8, d.value9}},
                              {"last", d.last}}};
        }
        default:
            return {"UNKNOWN", {{"type", type}}};
    }
}

// JSON: a number, a string, or an array of numbers; text: the same without
// the brackets, numbers of an array joined by commas.
std::string format_value(const Value& value, bool json) {
    if (const auto* number = std::get_if<int64_t>(&value)) return std::to_string(*number);
    if (const auto* text = std::get_if<std::string>(&value)) return json ? json_string(*text) : "\"" + *text + "\"";
    std::string joined;
    for (const int64_t number : std::get<std::vector<int64_t>>(value)) {
        joined += (joined.empty() ? "" : json ? ", " : ",") + std::to_string(number);
    }
    return json ? "[" + joined + "]" : joined;
}

void print_event(const Event& event, double seconds, bool json) {
    std::string line;
    char time[32];
    if (json) {
        std::snprintf(time, sizeof time, "%.3f", seconds);
        line = std::string("{\"time\": ") + time + ", \"event\": " + json_string(event.name);
        for (const auto& [key, value] : event.fields) line += std::string(", \"") + key + "\": " + format_value(value, true);
        line += "}";
    } else {
        std::snprintf(time, sizeof time, "%+9.3fs  %-13s", seconds, event.name);
        line = time;
        for (const auto& [key, value] : event.fields) line += std::string(" ") + key + " " + format_value(value, false);
    }
    std::printf("%s\n", line.c_str());
    std::fflush(stdout);
}

// The prompt goes into a strip at the top; the rest of the display keeps
// what the pad draws itself (its regions, the OK button among them).
void draw_prompt(velatrix_device* device, const std::string& prompt) {
    constexpr int kStripHeight = 32;
    const int w = device->display_info.width;
    Canvas canvas(w, std::min<int>(kStripHeight, device->display_info.height));
    int32_t count = 0;
    int32_t* text = parse_string_encoding(prompt.c_str(), static_cast<int32_t>(prompt.size()), "UTF-8", &count);
    if (text == nullptr) throw UsageError("--prompt: not valid UTF-8");
    enhanced_draw_string_aligned(&canvas.bitmap, &ubuntu_mono_e_16pt, text, 0, 4, w - 1, kStripHeight - 1, 1, 0,
                                 0x000000FF);
    std::free(text);
    if (velatrix_transfer_bitmap_to_device(device, &canvas.bitmap, 0, 0,
                                           transfer_depth(device->display_info.color_depth)) != 1) {
        refuse("drawing the prompt failed");
    }
}

}  // namespace

int run_events(const GlobalOptions& options, const EventsOptions& events) {
    Session session(options);
    velatrix_device* device = session.open();
    const auto start = Clock::now();
    long printed = 0;
    read_input(session, device, events.timeout, [&](const velatrix_input_report& record, int type) {
        print_event(describe(record, type), std::chrono::duration<double>(Clock::now() - start).count(), events.json);
        return events.count == 0 || ++printed < events.count;
    });
    return 0;
}

int run_capture(const GlobalOptions& options, const CaptureOptions& capture) {
    if (!is_signature_format(capture.output)) {
        throw UsageError("capture: cannot write '" + capture.output + "': use .png, .svg or .json");
    }
    Session session(options);
    velatrix_device* device = session.open();
    draw_prompt(device, capture.prompt);
    Signature signature(device->display_info.width, device->display_info.height);
    const auto start = Clock::now();
    bool confirmed = false;
    if (!session.is_virtual()) std::fprintf(stderr, "Sign on the pad, then press its OK button (Ctrl-C ends).\n");
    read_input(session, device, capture.timeout, [&](const velatrix_input_report& record, int type) {
        const auto ms = static_cast<uint32_t>(
            std::chrono::duration_cast<std::chrono::milliseconds>(Clock::now() - start).count());
        switch (type) {
            case VELATRIX_INPUT_COORDINATE:
            case VELATRIX_INPUT_EXTENDED_COORDINATE:
                signature.pen(record.data.coordinate.x, record.data.coordinate.y, record.data.coordinate.tip_switch != 0, ms);
                return true;
            case VELATRIX_INPUT_BUTTON_PRESS:
                confirmed = true;
                return false;
            case VELATRIX_INPUT_BUTTON_DOWN:
            case VELATRIX_INPUT_BUTTON_MOVE:
            case VELATRIX_INPUT_BUTTON_UP:
                signature.lift();
                return true;
            default:
                return true;
        }
    });
    signature.write(capture.output);
    std::printf("%s: %zu stroke(s), %zu point(s)%s\n", capture.output.c_str(), signature.strokes().size(),
                signature.point_count(), confirmed ? "" : " (not confirmed with OK)");
    return 0;
}

}  // namespace quillmark
