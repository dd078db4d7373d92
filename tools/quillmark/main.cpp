// quillmark: look at pads from the command line.
#include <CLI/CLI.hpp>

#include <algorithm>
#include <cstdio>
#include <functional>
#include <string>
#include <vector>

#include "commands.h"
#include "session.h"
#include "velatrix-quillmark.h"
#include "velatrix-virtual.h"

#ifndef VELATRIX_BUILD_TIMESTAMP
#define VELATRIX_BUILD_TIMESTAMP "unknown"
#endif

namespace {

constexpr int kUsageStatus = 2;

std::string version_text() {
    return std::string("quillmark ") + velatrix_get_quillmark_version() + " (library build date " +
           velatrix_get_quillmark_build_date() + ", built " + VELATRIX_BUILD_TIMESTAMP + ")";
}

std::vector<std::string> virtual_models() {
    std::vector<std::string> models;
    for (uint32_t i = 0; velatrix_virtual_model_name(i) != nullptr; ++i) models.emplace_back(velatrix_virtual_model_name(i));
    return models;
}

// The "Usage:" line of the deepest command that was parsed.
std::string usage_line(const CLI::App& app) {
    const CLI::App* deepest = &app;
    std::string parents;
    for (auto subs = deepest->get_subcommands(); !subs.empty(); subs = deepest->get_subcommands()) {
        parents += (parents.empty() ? "" : " ") + deepest->get_name();
        deepest = subs.front();
    }
    const std::string help = deepest->help(parents);
    const size_t start = help.find("Usage:");
    if (start == std::string::npos) return "Usage: quillmark [OPTIONS] COMMAND";
    return help.substr(start, help.find('\n', start) - start);
}

int usage_error(const CLI::App& app, const std::string& message) {
    std::fprintf(stderr, "quillmark: %s\n%s\nRun with --help for more information.\n", message.c_str(),
                 usage_line(app).c_str());
    return kUsageStatus;
}

}  // namespace

int main(int argc, char** argv) {
    using namespace quillmark;
    CLI::App app{"Look at signature pads, capture signatures, draw on their displays, update their firmware.",
                 "quillmark"};
    app.set_version_flag("--version", version_text());
    app.require_subcommand(1);
    app.fallthrough();
    app.footer(
        "Every COMMAND has its own --help. Exit status: 0 success, 1 the pad refused (the library's message on "
        "stderr), 2 usage error.");

    GlobalOptions global;
    app.add_option("--pad", global.pad_path, "The pad's path as `quillmark list` shows it (default: the first pad)");
    const auto models = virtual_models();
    CLI::Option* virtual_option =
        app.add_option("--virtual", global.virtual_model,
                       "Use a virtual pad of MODEL instead of real pads: " + CLI::detail::join(models, ", ") +
                           " (default: " + models.front() + ")")
            ->expected(0, 1)
            ->type_name("[MODEL]");
    app.add_option("--trace", global.trace_file, "Record the HID traffic into FILE.pcap")->type_name("FILE.pcap");
    app.add_option("--play", global.play,
                   "With --virtual: input the virtual pad sends once the command has opened it: stroke:X,Y;X,Y..., "
                   "signature, button (the first button region), card:T1|T2|T3, adc-scan:F,V1,V2,V3,V4, "
                   "adc-channel:C,V1,V2,V3,V4, debug:F,V1,...,V9,LAST")
        ->type_name("SPEC")
        ->allow_extra_args(false);
    app.add_option("--display-out", global.display_out,
                   "With --virtual: write what the virtual display shows into FILE.png when the command ends")
        ->type_name("FILE.png");
    app.add_option("--fail-transfer", global.fail_transfer,
                   "With --virtual: the virtual pad fails its Nth transfer after the pad is opened (1: the next)")
        ->type_name("N");

    std::function<int()> action;

    app.add_subcommand("version", "Print the library version and build date")->callback([&] {
        action = [] {
            std::printf("%s\n", version_text().c_str());
            return 0;
        };
    });

    bool list_json = false;
    auto* list = app.add_subcommand("list", "List the attached pads, one line each");
    list->add_flag("--json", list_json, "One JSON object per pad, one per line");
    list->callback([&] { action = [&] { return run_list(global, list_json); }; });

    app.add_subcommand("info", "Show the pad's identity, display, capabilities, version, status, serial, "
                               "identifier and every parameter report")
        ->callback([&] { action = [&] { return run_info(global); }; });

    EventsOptions events;
    auto* events_command = app.add_subcommand("events", "Print every input event, one line each, until interrupted");
    events_command->add_flag("--json", events.json, "One JSON object per event");
    events_command->add_option("--timeout", events.timeout, "Stop after S seconds")->type_name("S")->check(CLI::NonNegativeNumber);
    events_command->add_option("--count", events.count, "Stop after N events")->type_name("N")->check(CLI::NonNegativeNumber);
    events_command->callback([&] { action = [&] { return run_events(global, events); }; });

    CaptureOptions capture;
    auto* capture_command = app.add_subcommand(
        "capture", "Show a prompt, collect a signature until the pad's OK button, a timeout or Ctrl-C, and write it");
    capture_command->add_option("-o,--output", capture.output, "Where to write it: .png, .svg or .json")->capture_default_str()
        ->type_name("FILE");
    capture_command->add_option("--timeout", capture.timeout, "Stop after S seconds")->type_name("S")->check(CLI::NonNegativeNumber);
    capture_command->add_option("--prompt", capture.prompt, "The text shown above the signing area")->capture_default_str();
    capture_command->callback([&] { action = [&] { return run_capture(global, capture); }; });

    ShowOptions show;
    auto* show_command = app.add_subcommand("show", "Put a PNG image or a text on the display");
    auto* image_option = show_command->add_option("IMAGE", show.image, "A PNG image, converted to the display's depth");
    auto* text_option = show_command->add_option("--text", show.text, "A text to draw instead of an image");
    image_option->excludes(text_option);
    show_command->add_option("--font", show.font, "Font of the text: velatrix_default, ubuntu_mono_e_12pt, _16pt, "
                                                  "_24pt or _30pt")->capture_default_str();
    show_command->add_option("--at", show.at, "Top-left corner on the display")->capture_default_str()->type_name("X,Y");
    show_command->callback([&] {
        if (show.image.empty() && show.text.empty()) throw CLI::RequiredError("IMAGE or --text");
        action = [&] { return run_show(global, show); };
    });

    app.add_subcommand("clear", "Clear the display")->callback([&] { action = [&] { return run_clear(global); }; });
    app.add_subcommand("regions", "Show the region table and the device regions the pad holds")
        ->callback([&] { action = [&] { return run_regions(global); }; });
    app.add_subcommand("screens", "Show the screens the pad holds")
        ->callback([&] { action = [&] { return run_screens(global); }; });
    app.add_subcommand("resources", "Show the resources the pad holds")
        ->callback([&] { action = [&] { return run_resources(global); }; });

    auto* config = app.add_subcommand("config", "Read or write a parameter report");
    config->require_subcommand(1);
    std::string config_name;
    std::vector<std::string> assignments;
    auto* config_get = config->add_subcommand("get", "Print a parameter report");
    config_get->add_option("NAME", config_name, "One of: " + config_report_names())->required();
    config_get->callback([&] { action = [&] { return run_config_get(global, config_name); }; });
    auto* config_set = config->add_subcommand("set", "Change fields of a parameter report, then print what the pad holds");
    config_set->add_option("NAME", config_name, "One of: " + config_report_names())->required();
    config_set->add_option("FIELD=VALUE", assignments, "Fields to change (decimal or 0x hexadecimal)")->required();
    config_set->callback([&] { action = [&] { return run_config_set(global, config_name, assignments); }; });

    FirmwareOptions firmware;
    auto* firmware_command =
        app.add_subcommand("firmware", "Send a firmware image page by page, then the download status");
    firmware_command->add_option("FILE", firmware.file, "Intel HEX image, or raw binary with --address")
        ->required()
        ->check(CLI::ExistingFile);
    firmware_command->add_option("--address", firmware.address, "Load address of a raw binary image")->type_name("ADDR");
    firmware_command->callback([&] { action = [&] { return run_firmware(global, firmware); }; });

    std::string demo_dir = ".";
    auto* demo = app.add_subcommand("demo", "Open the first pad (a virtual one when none is attached), show a prompt, "
                                            "capture a signature and write quillmark-display.bmp and "
                                            "quillmark-signature.bmp into DIR");
    demo->add_option("DIR", demo_dir, "Where the images go")->capture_default_str();
    demo->callback([&] { action = [&] { return run_demo(demo_dir); }; });

    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& e) {
        return app.exit(e);
    } catch (const CLI::CallForAllHelp& e) {
        return app.exit(e);
    } catch (const CLI::CallForVersion& e) {
        return app.exit(e);
    } catch (const CLI::ParseError& e) {
        // A word that names no command reads better as just that.
        const auto left = app.remaining();
        if (app.get_subcommands().empty() && !left.empty() && left.front().rfind("-", 0) != 0) {
            return usage_error(app, "unknown command '" + left.front() + "'");
        }
        return usage_error(app, e.what());
    }
    global.use_virtual = virtual_option->count() > 0;
    if (global.use_virtual && global.virtual_model.empty()) global.virtual_model = models.front();
    if (global.use_virtual && std::find(models.begin(), models.end(), global.virtual_model) == models.end()) {
        return usage_error(app, "--virtual: unknown model '" + global.virtual_model + "'");
    }

    try {
        return action();
    } catch (const UsageError& e) {
        return usage_error(app, e.what());
    } catch (const Refused& e) {
        std::fflush(stdout);
        std::fprintf(stderr, "quillmark: %s\n", e.what());
        return 1;
    }
}
