// One opened /dev/hidrawN node.
#pragma once

#include <condition_variable>
#include <memory>
#include <mutex>
#include <string>

#include "host/hid_host.h"

namespace velatrix::host::linux_hid {

class HidrawInterface final : public HidInterface {
public:
    // Opens `devnode` read-write without excluding other users. Null and
    // `error` set on failure.
    static std::unique_ptr<HidrawInterface> open(const std::string& devnode, int& error);
    ~HidrawInterface() override;

    int report_descriptor(std::vector<uint8_t>& descriptor) override;
    InputResult wait_input(std::chrono::milliseconds timeout, const InputSink& sink) override;
    Transfer get_feature(std::span<uint8_t> report) override;
    Transfer set_feature(std::span<const uint8_t> report) override;
    void close() override;

private:
    HidrawInterface(int fd, int wake_fd) : fd_(fd), wake_fd_(wake_fd) {}

    // Marks the node in use so close() keeps it open until release();
    // false when it is already closed.
    bool acquire();
    void release();

    std::mutex mutex_;
    std::condition_variable idle_;
    int fd_;
    int wake_fd_;  // eventfd that close() signals to wake a waiting reader
    int users_ = 0;
    bool closing_ = false;
    bool gone_ = false;
};

}  // namespace velatrix::host::linux_hid
