// A driver that answers every transfer at once and keeps nothing but byte
// counts, so a benchmark measures the library's own work and not a pad's.
#pragma once

#include <cstdint>

#include "velatrix/device.h"

namespace velatrix::bench {

class NullDriver {
public:
    NullDriver();
    ~NullDriver();
    NullDriver(const NullDriver&) = delete;
    NullDriver& operator=(const NullDriver&) = delete;

    // A zeroed device record bound to this driver, freed with the driver.
    velatrix_device* device() { return device_; }

    // Bytes and reports handed to the driver by set-feature so far.
    uint64_t bytes_sent() const { return bytes_sent_; }
    uint64_t reports_sent() const { return reports_sent_; }
    uint64_t status_reads() const { return status_reads_; }

private:
    friend struct NullDriverOps;
    velatrix_device_driver driver_{};
    velatrix_device* device_ = nullptr;
    uint64_t bytes_sent_ = 0;
    uint64_t reports_sent_ = 0;
    uint64_t status_reads_ = 0;
};

}  // namespace velatrix::bench
