#include "null_driver.h"

#include <cstdlib>

namespace velatrix::bench {
namespace {

// The driver record holds plain function pointers; the one device record
// carries its owner in driver_defined.
NullDriver* owner(velatrix_device* device) { return static_cast<NullDriver*>(device->driver_defined); }

}  // namespace

struct NullDriverOps {
    static int set_feature(velatrix_device* device, uint8_t*, uint32_t length) {
        NullDriver* driver = owner(device);
        driver->bytes_sent_ += length;
        ++driver->reports_sent_;
        return 1;
    }
    // The caller's buffer is zeroed but for the report id, which a status
    // read takes as "nothing busy": every interlock wait ends at once.
    static int get_feature(velatrix_device* device, uint8_t*, uint32_t) {
        ++owner(device)->status_reads_;
        return 1;
    }
    static int set_output(velatrix_device*, uint8_t*, uint32_t) { return 1; }
    static const char* name() { return "bench-null"; }
};

NullDriver::NullDriver() {
    driver_.set_feature_report = &NullDriverOps::set_feature;
    driver_.get_feature_report = &NullDriverOps::get_feature;
    driver_.set_output_report = &NullDriverOps::set_output;
    driver_.get_driver_name = &NullDriverOps::name;
    driver_.initialised = 1;
    device_ = static_cast<velatrix_device*>(std::calloc(1, sizeof(velatrix_device)));
    if (device_ == nullptr) std::abort();
    device_->driver = &driver_;
    device_->driver_defined = this;
    device_->open = 1;
}

NullDriver::~NullDriver() { std::free(device_); }

}  // namespace velatrix::bench
