// The quillmark commands. Each returns the process exit status; a pad that
// refuses throws Refused (status 1), arguments found wrong late throw
// UsageError (status 2).
#pragma once

#include <string>
#include <vector>

#include "session.h"

namespace quillmark {

// Runs the demo on the first pad (a virtual one when none is attached) and
// writes its images into out_dir. Returns the process exit status.
int run_demo(const std::string& out_dir);

int run_list(const GlobalOptions& options, bool json);
int run_info(const GlobalOptions& options);

struct EventsOptions {
    bool json = false;
    double timeout = 0;  // seconds; 0: until interrupted
    long count = 0;      // events; 0: no limit
};
int run_events(const GlobalOptions& options, const EventsOptions& events);

struct CaptureOptions {
    std::string output = "signature.png";
    double timeout = 0;
    std::string prompt = "Please sign, then press OK";
};
int run_capture(const GlobalOptions& options, const CaptureOptions& capture);

struct ShowOptions {
    std::string image;
    std::string text;
    std::string font = "velatrix_default";
    std::string at = "0,0";
};
int run_show(const GlobalOptions& options, const ShowOptions& show);
int run_clear(const GlobalOptions& options);

int run_regions(const GlobalOptions& options);
int run_screens(const GlobalOptions& options);
int run_resources(const GlobalOptions& options);

// The parameter reports `config` knows, for --help.
std::string config_report_names();
int run_config_get(const GlobalOptions& options, const std::string& name);
int run_config_set(const GlobalOptions& options, const std::string& name, const std::vector<std::string>& assignments);

struct FirmwareOptions {
    std::string file;
    std::string address;  // raw binary: where it goes; empty for Intel HEX
};
int run_firmware(const GlobalOptions& options, const FirmwareOptions& firmware);

}  // namespace quillmark
