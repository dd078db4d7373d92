#include "virtual/virtual_hid_layer.h"

#include <atomic>
#include <cerrno>
#include <deque>
#include <utility>

namespace velatrix::virtual_pad {

namespace {

host::Transfer to_transfer(const TransferOutcome& outcome) {
    switch (outcome.outcome) {
    case Outcome::ok:
        return {0, 0, outcome.length};
    case Outcome::refused:
        // A stalled control request, as the kernel reports it.
        return {EPIPE, EPIPE, 0};
    case Outcome::failed:
        return {EIO, EIO, 0};
    case Outcome::gone:
        return {ENODEV, ENODEV, 0};
    }
    return {EIO, EIO, 0};
}

class VirtualHidInterface final : public host::HidInterface {
public:
    VirtualHidInterface(std::shared_ptr<VirtualPad> pad, const VirtualHidLayer& layer)
        : pad_(std::move(pad)), reader_(pad_->attach_reader()), layer_(layer) {}
    ~VirtualHidInterface() override { close(); }

    int report_descriptor(std::vector<uint8_t>& descriptor) override {
        descriptor.clear();
        if (closed_) return EBADF;
        if (pad_->gone()) return ENODEV;
        if (auto error = layer_.faults_of(pad_->id()).descriptor_error) return *error;
        descriptor = pad_->report_descriptor();
        return 0;
    }

    host::InputResult wait_input(std::chrono::milliseconds timeout, const host::InputSink& sink) override {
        if (closed_) return {host::InputStatus::closed, 0};
        // The queue is kept from wait to wait: handing reports over makes
        // no allocation, so the host's read path can be measured through it.
        InputWait waited = pad_->wait_input(*reader_, timeout, delivering_);
        for (const Bytes& report : delivering_) sink(report);
        delivering_.clear();
        pad_->leave_input(*reader_);
        switch (waited) {
        case InputWait::delivered:
            return {host::InputStatus::delivered, 0};
        case InputWait::timeout:
            return {host::InputStatus::timeout, 0};
        case InputWait::gone:
            return {host::InputStatus::gone, ENODEV};
        case InputWait::closed:
            break;
        }
        return {host::InputStatus::closed, 0};
    }

    host::Transfer get_feature(std::span<uint8_t> report) override {
        if (closed_) return {EBADF, EBADF, 0};
        if (int status = layer_.faults_of(pad_->id()).transfer_status) return {status, EIO, 0};
        return to_transfer(pad_->get_feature(report));
    }

    host::Transfer set_feature(std::span<const uint8_t> report) override {
        if (closed_) return {EBADF, EBADF, 0};
        if (int status = layer_.faults_of(pad_->id()).transfer_status) return {status, EIO, 0};
        return to_transfer(pad_->set_feature(report));
    }

    void close() override {
        if (closed_.exchange(true)) return;
        pad_->close_reader(*reader_);
    }

private:
    std::shared_ptr<VirtualPad> pad_;
    std::shared_ptr<InputReader> reader_;
    const VirtualHidLayer& layer_;
    std::deque<Bytes> delivering_;
    std::atomic<bool> closed_{false};
};

class VirtualUsbWatch final : public host::UsbWatch {
public:
    explicit VirtualUsbWatch(VirtualBus& bus) : bus_(bus), watcher_(bus.add_watcher()) {}

    host::UsbChange wait() override {
        switch (bus_.wait_change(*watcher_)) {
        case VirtualBus::Change::attached:
            return host::UsbChange::attached;
        case VirtualBus::Change::detached:
            return host::UsbChange::detached;
        case VirtualBus::Change::stopped:
            break;
        }
        return host::UsbChange::stopped;
    }
    void stop() override { bus_.stop_watcher(*watcher_); }

private:
    VirtualBus& bus_;
    std::shared_ptr<VirtualBus::Watcher> watcher_;
};

}  // namespace

host::HidInterfaceInfo VirtualHidLayer::describe(const VirtualPad& pad) {
    const PadModel& model = pad.model();
    host::HidInterfaceInfo info;
    info.transport = model.transport;
    info.vendor_id = model.vendor_id;
    info.product_id = model.product_id;
    info.location_id = pad.location_id();
    info.primary_usage_page = model.usage_page;
    info.primary_usage = model.usage;
    if (!model.manufacturer.empty()) info.manufacturer = model.manufacturer;
    if (!model.product.empty()) info.product = model.product;
    info.key = VirtualBus::key_of(pad.id());
    return info;
}

host::Enumeration VirtualHidLayer::enumerate() {
    host::Enumeration result;
    {
        std::lock_guard lock(mutex_);
        ++enumerations_;
        result.error = enumerate_error_;
    }
    if (result.error != 0) return result;
    for (const auto& pad : bus_.pads()) result.interfaces.push_back(describe(*pad));
    return result;
}

std::unique_ptr<host::HidInterface> VirtualHidLayer::open(const std::string& key, int& error) {
    std::shared_ptr<VirtualPad> pad = bus_.find(VirtualBus::id_of_key(key));
    if (pad == nullptr) {
        error = ENOENT;
        return nullptr;
    }
    {
        std::lock_guard lock(mutex_);
        auto found = pad_faults_.find(pad->id());
        error = found != pad_faults_.end() ? std::exchange(found->second.open_error, 0) : 0;
    }
    if (error != 0) return nullptr;
    return std::make_unique<VirtualHidInterface>(std::move(pad), *this);
}

std::unique_ptr<host::UsbWatch> VirtualHidLayer::watch_usb(int& error) {
    {
        std::lock_guard lock(mutex_);
        error = watch_error_;
    }
    if (error != 0) return nullptr;
    return std::make_unique<VirtualUsbWatch>(bus_);
}

void VirtualHidLayer::fail_enumerate(int error) {
    std::lock_guard lock(mutex_);
    enumerate_error_ = error;
}

void VirtualHidLayer::fail_next_open(int id, int error) {
    std::lock_guard lock(mutex_);
    pad_faults_[id].open_error = error;
}

void VirtualHidLayer::fail_descriptor(int id, int error) {
    std::lock_guard lock(mutex_);
    pad_faults_[id].descriptor_error = error;
}

void VirtualHidLayer::fail_transfers(int id, int status) {
    std::lock_guard lock(mutex_);
    pad_faults_[id].transfer_status = status;
}

void VirtualHidLayer::fail_watch(int error) {
    std::lock_guard lock(mutex_);
    watch_error_ = error;
}

void VirtualHidLayer::clear_faults() {
    std::lock_guard lock(mutex_);
    enumerate_error_ = 0;
    watch_error_ = 0;
    pad_faults_.clear();
}

void VirtualHidLayer::clear_faults(int id) {
    std::lock_guard lock(mutex_);
    pad_faults_.erase(id);
}

VirtualHidLayer::PadFaults VirtualHidLayer::faults_of(int id) const {
    std::lock_guard lock(mutex_);
    auto found = pad_faults_.find(id);
    return found != pad_faults_.end() ? found->second : PadFaults{};
}

unsigned VirtualHidLayer::enumerations() const {
    std::lock_guard lock(mutex_);
    return enumerations_;
}

VirtualHidLayer& bus_hid_layer() {
    // Outlives every user, like the bus it stands on.
    static VirtualHidLayer& layer = *new VirtualHidLayer(VirtualBus::instance());
    return layer;
}

void plug_simulated_pads(unsigned count) {
    const auto& models = all_models();
    for (unsigned i = 0; i < count; ++i) VirtualBus::instance().plug(*models[i % models.size()]);
}

}  // namespace velatrix::virtual_pad
