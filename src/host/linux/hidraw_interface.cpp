#include "host/linux/hidraw_interface.h"

#include <fcntl.h>
#include <linux/hidraw.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>

namespace velatrix::host::linux_hid {

namespace {

// Reports handed over per wait at most, so a flooding device cannot keep a
// reader from returning.
constexpr int kMaxReportsPerWait = 64;

// Largest feature report the hidraw ioctls can carry (the length lives in
// 14 bits of the request code).
constexpr std::size_t kMaxFeatureLength = (1u << 14) - 1;

}  // namespace

std::unique_ptr<HidrawInterface> HidrawInterface::open(const std::string& devnode, int& error) {
    error = 0;
    int fd = ::open(devnode.c_str(), O_RDWR | O_CLOEXEC);
    if (fd < 0) {
        error = errno;
        return nullptr;
    }
    int wake_fd = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (wake_fd < 0) {
        error = errno;
        ::close(fd);
        return nullptr;
    }
    return std::unique_ptr<HidrawInterface>(new HidrawInterface(fd, wake_fd));
}

HidrawInterface::~HidrawInterface() { close(); }

bool HidrawInterface::acquire() {
    std::lock_guard lock(mutex_);
    if (closing_) return false;
    ++users_;
    return true;
}

void HidrawInterface::release() {
    std::lock_guard lock(mutex_);
    if (--users_ == 0) idle_.notify_all();
}

void HidrawInterface::close() {
    std::unique_lock lock(mutex_);
    if (closing_) return;
    closing_ = true;
    const uint64_t one = 1;
    [[maybe_unused]] ssize_t written = ::write(wake_fd_, &one, sizeof one);
    idle_.wait(lock, [this] { return users_ == 0; });
    ::close(fd_);
    ::close(wake_fd_);
    fd_ = -1;
    wake_fd_ = -1;
}

int HidrawInterface::report_descriptor(std::vector<uint8_t>& descriptor) {
    descriptor.clear();
    if (!acquire()) return EBADF;
    int size = 0;
    int error = 0;
    if (::ioctl(fd_, HIDIOCGRDESCSIZE, &size) < 0) {
        error = errno;
    } else {
        hidraw_report_descriptor raw{};
        raw.size = static_cast<uint32_t>(std::clamp(size, 0, HID_MAX_DESCRIPTOR_SIZE));
        if (::ioctl(fd_, HIDIOCGRDESC, &raw) < 0) {
            error = errno;
        } else {
            descriptor.assign(raw.value, raw.value + raw.size);
        }
    }
    release();
    return error;
}

InputResult HidrawInterface::wait_input(std::chrono::milliseconds timeout, const InputSink& sink) {
    {
        std::lock_guard lock(mutex_);
        if (closing_) return {InputStatus::closed, 0};
        if (gone_) return {InputStatus::gone, ENODEV};
        ++users_;
    }
    InputResult result{InputStatus::timeout, 0};
    std::array<uint8_t, kInputBufferSize> buffer{};
    int wait_ms = static_cast<int>(std::clamp<std::chrono::milliseconds::rep>(timeout.count(), 0, 1 << 30));
    for (int delivered = 0; delivered < kMaxReportsPerWait; ++delivered) {
        pollfd fds[2] = {{fd_, POLLIN, 0}, {wake_fd_, POLLIN, 0}};
        int ready = ::poll(fds, 2, delivered == 0 ? wait_ms : 0);
        if (ready < 0) {
            if (errno == EINTR) continue;
            result = {InputStatus::failed, errno};
            break;
        }
        if (ready == 0) break;
        if (fds[1].revents != 0) {
            result = {InputStatus::closed, 0};
            break;
        }
        if ((fds[0].revents & POLLIN) == 0) {
            // POLLHUP/POLLERR without data: the device went away.
            result = {InputStatus::gone, ENODEV};
            break;
        }
        ssize_t length = ::read(fd_, buffer.data(), buffer.size());
        if (length < 0) {
            int error = errno;
            if (error == EINTR || error == EAGAIN) continue;
            result = {error == ENODEV ? InputStatus::gone : InputStatus::failed, error};
            break;
        }
        if (length == 0) continue;
        sink(std::span<const uint8_t>(buffer.data(), static_cast<std::size_t>(length)));
        result = {InputStatus::delivered, 0};
    }
    std::lock_guard lock(mutex_);
    if (result.status == InputStatus::gone) gone_ = true;
    if (--users_ == 0) idle_.notify_all();
    return result;
}

Transfer HidrawInterface::get_feature(std::span<uint8_t> report) {
    if (report.empty()) return {EINVAL, EINVAL, 0};
    if (!acquire()) return {EBADF, EBADF, 0};
    const std::size_t length = std::min(report.size(), kMaxFeatureLength);
    Transfer result;
    int received = ::ioctl(fd_, HIDIOCGFEATURE(length), report.data());
    if (received < 0) {
        result.status = result.error = errno;
    } else {
        result.length = static_cast<std::size_t>(received);
    }
    release();
    return result;
}

Transfer HidrawInterface::set_feature(std::span<const uint8_t> report) {
    if (report.empty()) return {EINVAL, EINVAL, 0};
    if (!acquire()) return {EBADF, EBADF, 0};
    const std::size_t length = std::min(report.size(), kMaxFeatureLength);
    Transfer result;
    // The ioctl only reads the buffer for a set, whatever its declared direction.
    int sent = ::ioctl(fd_, HIDIOCSFEATURE(length), const_cast<uint8_t*>(report.data()));
    if (sent < 0) {
        result.status = result.error = errno;
    } else {
        result.length = static_cast<std::size_t>(sent);
    }
    release();
    return result;
}

}  // namespace velatrix::host::linux_hid
