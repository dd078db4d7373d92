// quillmark: look at pads from the command line.
#include <cstdio>
#include <cstring>
#include <string_view>

#include "commands.h"
#include "velatrix-quillmark.h"

#ifndef VELATRIX_BUILD_TIMESTAMP
#define VELATRIX_BUILD_TIMESTAMP "unknown"
#endif

namespace {

int usage(FILE* out) {
    std::fputs(
        "usage: quillmark <command>\n"
        "\n"
        "commands:\n"
        "  version     print the library version and build date\n"
        "  list        list the attached pads\n"
        "  demo [DIR]  open the first pad (a virtual one when none is attached), show a prompt,\n"
        "              capture a signature and write quillmark-display.bmp and\n"
        "              quillmark-signature.bmp into DIR (default: the current directory)\n",
        out);
    return out == stderr ? 2 : 0;
}

int print_version() {
    std::printf("quillmark %s (library build date %s, built %s)\n", velatrix_get_quillmark_version(),
                velatrix_get_quillmark_build_date(), VELATRIX_BUILD_TIMESTAMP);
    return 0;
}

const char* or_dash(const char* text) { return text != nullptr && *text != '\0' ? text : "-"; }

int list_pads() {
    velatrix_init();
    velatrix_device* head = nullptr;
    velatrix_list_devices(&head);
    const uint32_t count = velatrix_count_device_list(head);
    std::printf("%u pad(s) found\n", count);
    for (velatrix_device* device = head; device != nullptr; device = device->next) {
        std::printf("  %s  vendor %04x product %04x  %s / %s\n", device->path, device->vendor_id, device->product_id,
                    or_dash(device->manufacturer), or_dash(device->model));
    }
    velatrix_free_device_list(head);
    velatrix_destroy();
    return 0;
}

}  // namespace

int main(int argc, char** argv) {
    if (argc < 2) return usage(stderr);
    const std::string_view command = argv[1];
    if (command == "version") return print_version();
    if (command == "list") return list_pads();
    if (command == "demo") return quillmark::run_demo(argc > 2 ? argv[2] : ".");
    if (command == "help" || command == "--help" || command == "-h") return usage(stdout);
    std::fprintf(stderr, "quillmark: unknown command '%s'\n", argv[1]);
    return usage(stderr);
}
