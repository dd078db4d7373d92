// What every pad command shares: the global options, the library started
// and stopped around the command, the chosen pad opened and closed, and the
// two ways a command fails (exit 1 and exit 2).
#pragma once

#include <stdexcept>
#include <string>
#include <vector>

#include "velatrix-quillmark.h"
#include "velatrix-virtual.h"

namespace quillmark {

struct GlobalOptions {
    std::string pad_path;        // --pad: empty for the first pad
    bool use_virtual = false;    // --virtual [MODEL]
    std::string virtual_model;
    std::string trace_file;      // --trace FILE.pcap
    std::vector<std::string> play;  // --play SPEC: input the virtual pad sends
    std::string display_out;     // --display-out FILE.png: the virtual display at the end
    uint32_t fail_transfer = 0;  // --fail-transfer N: the virtual pad fails its Nth transfer after opening
};

// The pad refused or is missing: exit status 1, the message on stderr.
struct Refused : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Bad arguments found after parsing: exit status 2 with a usage line.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Throws Refused with "<what>: <the library's last error>".
[[noreturn]] void refuse(const std::string& what);

// Starts the library for one command (with the trace and the virtual pad
// the options ask for) and shuts it down at the end, the chosen pad closed.
class Session {
public:
    explicit Session(const GlobalOptions& options);
    ~Session();
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Every pad listed now; the session owns the chain.
    velatrix_device* list();
    // Opens the --pad one, or the first. Throws Refused when there is none
    // or it does not open.
    velatrix_device* open();
    velatrix_device* device() const { return device_; }

    bool is_virtual() const { return options_.use_virtual; }
    velatrix_virtual_pad virtual_pad() const { return pad_; }
    // Sends the --play input into the virtual pad; returns how many input
    // reports the pad has sent in all.
    uint32_t play();
    // How many input reports the virtual pad has sent; 0 on a real pad.
    uint32_t virtual_input_count() const;

private:
    void write_display_out();

    GlobalOptions options_;
    velatrix_virtual_pad pad_ = 0;
    velatrix_device* head_ = nullptr;
    velatrix_device* device_ = nullptr;
};

// The closest depth the display takes chunks in: 1, 4 or 24 bits.
uint8_t transfer_depth(uint8_t color_depth);

}  // namespace quillmark
