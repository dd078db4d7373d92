// Which HID access layer the host driver talks to.
#include "host/hid_host.h"

#include <atomic>
#include <cerrno>
#include <cstdlib>
#include <mutex>

#include "debug/log.h"

namespace velatrix::host {

namespace {

// Used where the platform offers no HID service this library can reach:
// nothing is present and nothing can be opened or watched.
class UnavailableLayer final : public HidAccessLayer {
public:
    Enumeration enumerate() override { return Enumeration{ENOSYS, {}}; }
    std::unique_ptr<HidInterface> open(const std::string&, int& error) override {
        error = ENOSYS;
        return nullptr;
    }
    std::unique_ptr<UsbWatch> watch_usb(int& error) override {
        error = ENOSYS;
        return nullptr;
    }
};

std::mutex selection_mutex;
AccessLayers registered;
HidAccessLayer* selected = nullptr;
std::atomic<HidAccessLayer*> injected{nullptr};
// Set by simulate_virtual_pads; negative leaves the choice to the environment.
std::atomic<long> simulated{-1};

UnavailableLayer& unavailable() {
    static UnavailableLayer layer;
    return layer;
}

HidAccessLayer& simulated_layer(unsigned long count) {
    VELATRIX_LOG_IN(kLogHost, VELATRIX_LEVEL_INFO, "Simulating %lu virtual pads", count);
    if (registered.simulated == nullptr) return unavailable();
    return registered.simulated(static_cast<unsigned>(count));
}

HidAccessLayer& choose_layer() {
    if (long count = simulated.load(); count >= 0) return simulated_layer(static_cast<unsigned long>(count));
    const char* simulate = std::getenv("VELATRIX_SIMULATE");
    if (simulate != nullptr && *simulate != '\0') {
        char* end = nullptr;
        unsigned long count = std::strtoul(simulate, &end, 10);
        if (end == simulate) count = 0;
        return simulated_layer(count);
    }
    if (registered.platform == nullptr) return unavailable();
    return registered.platform();
}

}  // namespace

void register_access_layers(const AccessLayers& layers) {
    std::lock_guard lock(selection_mutex);
    registered = layers;
}

void select_access_layer() {
    std::lock_guard lock(selection_mutex);
    selected = &choose_layer();
}

HidAccessLayer& access_layer() {
    if (HidAccessLayer* layer = injected.load()) return *layer;
    std::lock_guard lock(selection_mutex);
    if (selected == nullptr) selected = &choose_layer();
    return *selected;
}

void set_access_layer(HidAccessLayer* layer) { injected.store(layer); }

void simulate_virtual_pads(long count) { simulated.store(count < 0 ? -1 : count); }

}  // namespace velatrix::host
