// `quillmark list` and `quillmark info`.
#include <cstdio>

#include "commands.h"
#include "config_table.h"
#include "text.h"

namespace quillmark {
namespace {

const char* or_dash(const char* text) { return text != nullptr && *text != '\0' ? text : "-"; }
std::string or_null(const char* text) { return text != nullptr ? json_string(text) : "null"; }

}  // namespace

int run_list(const GlobalOptions& options, bool json) {
    Session session(options);
    velatrix_device* head = session.list();
    if (!json) std::printf("%u pad(s) found\n", velatrix_count_device_list(head));
    for (velatrix_device* device = head; device != nullptr; device = device->next) {
        if (json) {
            std::printf("{\"path\": %s, \"vendor_id\": %u, \"product_id\": %u, \"manufacturer\": %s, \"model\": %s}\n",
                        json_string(device->path).c_str(), device->vendor_id, device->product_id,
                        or_null(device->manufacturer).c_str(), or_null(device->model).c_str());
        } else {
            std::printf("  %s  vendor %04x product %04x  %s / %s\n", device->path, device->vendor_id,
                        device->product_id, or_dash(device->manufacturer), or_dash(device->model));
        }
    }
    return 0;
}

int run_info(const GlobalOptions& options) {
    Session session(options);
    velatrix_device* device = session.open();
    std::printf("path:         %s\n", device->path);
    std::printf("vendor:       %04x\n", device->vendor_id);
    std::printf("product:      %04x\n", device->product_id);
    std::printf("manufacturer: %s\n", or_dash(device->manufacturer));
    std::printf("model:        %s\n", or_dash(device->model));
    std::printf("identifier:   %s\n", device->uuid != nullptr ? hex(device->uuid, 16).c_str() : "-");
    velatrix_print_display_info(&device->display_info);

    const velatrix_hid_capabilities capabilities = velatrix_get_capabilities(device);
    if (capabilities.report_id == 0) refuse("reading the capabilities failed");
    velatrix_print_capabilities(&capabilities);
    velatrix_print_version(&device->version);
    velatrix_hid_feature_device_status status{};
    velatrix_get_device_status_ref(device, &status);
    if (status.report_id == 0) refuse("reading the status failed");
    velatrix_print_device_status(&status);
    const velatrix_hid_feature_serial_number serial = velatrix_get_serial_number(device);
    if (serial.report_id == 0) refuse("reading the serial number failed");
    velatrix_print_serial_number(&serial);
    const velatrix_hid_feature_operating_modes modes = velatrix_get_operating_modes(device);
    if (modes.report_id != 0) velatrix_print_operating_modes(&modes);
    for (const ConfigReport& report : config_reports()) {
        std::vector<uint8_t> record(report.size);
        if (!report.read(device, record.data())) refuse("reading " + std::string(report.name) + " failed");
        report.print(record.data());
    }
    std::fflush(stdout);
    return 0;
}

}  // namespace quillmark
