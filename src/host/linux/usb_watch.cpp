#include "host/linux/usb_watch.h"

#include <libudev.h>
#include <linux/netlink.h>
#include <poll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <optional>
#include <string_view>

#include "host/linux/hid_identity.h"

namespace velatrix::host::linux_hid {

namespace {

// Where a running udev daemon can be reached; without it udev's monitor
// would never see an event, so the kernel's own source is used instead.
constexpr const char* kUdevControl = "/run/udev/control";
constexpr unsigned kKernelUeventGroup = 1;

std::optional<UsbChange> usb_change_of(std::string_view action) {
    if (action == "add") return UsbChange::attached;
    if (action == "remove") return UsbChange::detached;
    return std::nullopt;
}

// A source of "something changed" notifications on a pollable descriptor.
class Source {
public:
    virtual ~Source() = default;
    virtual int fd() const = 0;
    // Consumes what is pending; gives the kind of the first USB device
    // attach or detach among it, null when there was none; error set when
    // the source broke.
    virtual std::optional<UsbChange> consume(int& error) = 0;
};

class UdevSource final : public Source {
public:
    static std::unique_ptr<UdevSource> make(int& error) {
        udev* context = udev_new();
        if (context == nullptr) {
            error = errno ? errno : ENOMEM;
            return nullptr;
        }
        udev_monitor* monitor = udev_monitor_new_from_netlink(context, "udev");
        if (monitor == nullptr || udev_monitor_filter_add_match_subsystem_devtype(monitor, "usb", "usb_device") < 0 ||
            udev_monitor_enable_receiving(monitor) < 0) {
            error = errno ? errno : EIO;
            if (monitor != nullptr) udev_monitor_unref(monitor);
            udev_unref(context);
            return nullptr;
        }
        return std::unique_ptr<UdevSource>(new UdevSource(context, monitor));
    }
    ~UdevSource() override {
        udev_monitor_unref(monitor_);
        udev_unref(context_);
    }
    int fd() const override { return udev_monitor_get_fd(monitor_); }
    std::optional<UsbChange> consume(int&) override {
        std::optional<UsbChange> change;
        // The monitor's socket is non-blocking: drain everything pending.
        while (udev_device* device = udev_monitor_receive_device(monitor_)) {
            const char* action = udev_device_get_action(device);
            if (action != nullptr && !change) change = usb_change_of(action);
            udev_device_unref(device);
        }
        return change;
    }

private:
    UdevSource(udev* context, udev_monitor* monitor) : context_(context), monitor_(monitor) {}
    udev* context_;
    udev_monitor* monitor_;
};

class KernelSource final : public Source {
public:
    static std::unique_ptr<KernelSource> make(int& error) {
        int fd = ::socket(AF_NETLINK, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, NETLINK_KOBJECT_UEVENT);
        if (fd < 0) {
            error = errno;
            return nullptr;
        }
        sockaddr_nl address{};
        address.nl_family = AF_NETLINK;
        address.nl_groups = kKernelUeventGroup;
        if (::bind(fd, reinterpret_cast<sockaddr*>(&address), sizeof address) < 0) {
            error = errno;
            ::close(fd);
            return nullptr;
        }
        return std::unique_ptr<KernelSource>(new KernelSource(fd));
    }
    ~KernelSource() override { ::close(fd_); }
    int fd() const override { return fd_; }
    std::optional<UsbChange> consume(int& error) override {
        std::optional<UsbChange> change;
        std::array<uint8_t, 8192> message;
        for (;;) {
            ssize_t length = ::recv(fd_, message.data(), message.size(), 0);
            if (length < 0) {
                if (errno == EINTR) continue;
                // ENOBUFS: events were lost; something may have changed.
                if (errno == ENOBUFS) {
                    if (!change) change = UsbChange::attached;
                    continue;
                }
                if (errno != EAGAIN) error = errno;
                return change;
            }
            auto event = parse_uevent(std::span<const uint8_t>(message.data(), static_cast<std::size_t>(length)));
            if (event && is_usb_device_change(*event) && !change) change = usb_change_of(event->action);
        }
    }

private:
    explicit KernelSource(int fd) : fd_(fd) {}
    int fd_;
};

class LinuxUsbWatch final : public UsbWatch {
public:
    LinuxUsbWatch(std::unique_ptr<Source> source, int wake_fd) : source_(std::move(source)), wake_fd_(wake_fd) {}
    ~LinuxUsbWatch() override { ::close(wake_fd_); }

    UsbChange wait() override {
        for (;;) {
            pollfd fds[2] = {{source_->fd(), POLLIN, 0}, {wake_fd_, POLLIN, 0}};
            int ready = ::poll(fds, 2, -1);
            if (ready < 0) {
                if (errno == EINTR) continue;
                return UsbChange::failed;
            }
            if (fds[1].revents != 0) return UsbChange::stopped;
            if (fds[0].revents & (POLLERR | POLLHUP | POLLNVAL)) return UsbChange::failed;
            int error = 0;
            if (auto change = source_->consume(error)) return *change;
            if (error != 0) return UsbChange::failed;
        }
    }

    void stop() override {
        const uint64_t one = 1;
        [[maybe_unused]] ssize_t written = ::write(wake_fd_, &one, sizeof one);
    }

private:
    std::unique_ptr<Source> source_;
    int wake_fd_;
};

}  // namespace

std::unique_ptr<UsbWatch> make_usb_watch(int& error) {
    error = 0;
    std::unique_ptr<Source> source;
    if (::access(kUdevControl, F_OK) == 0) source = UdevSource::make(error);
    if (!source) {
        error = 0;
        source = KernelSource::make(error);
    }
    if (!source) return nullptr;
    int wake_fd = ::eventfd(0, EFD_CLOEXEC | EFD_NONBLOCK);
    if (wake_fd < 0) {
        error = errno;
        return nullptr;
    }
    return std::make_unique<LinuxUsbWatch>(std::move(source), wake_fd);
}

}  // namespace velatrix::host::linux_hid
