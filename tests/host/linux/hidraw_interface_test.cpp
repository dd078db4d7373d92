// The hidraw interface's waiting and closing, exercised on a FIFO standing
// in for the device node (no HID hardware is needed), and the USB watch's
// stop (the driver's hot-plug thread ends on it: threads/hotplug_test).
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>

#include "host/linux/hidraw_interface.h"
#include "host/linux/linux_layer.h"
#include "host/linux/usb_watch.h"

namespace velatrix::host::linux_hid {
namespace {

using namespace std::chrono_literals;
using Bytes = std::vector<uint8_t>;

class FifoNode : public ::testing::Test {
protected:
    void SetUp() override {
        char pattern[] = "/tmp/velatrix-hidraw-XXXXXX";
        ASSERT_NE(mkdtemp(pattern), nullptr);
        dir_ = pattern;
        path_ = dir_ + "/hidraw0";
        ASSERT_EQ(mkfifo(path_.c_str(), 0600), 0);
        int error = -1;
        interface_ = HidrawInterface::open(path_, error);
        ASSERT_NE(interface_, nullptr);
        EXPECT_EQ(error, 0);
        writer_ = ::open(path_.c_str(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        ASSERT_GE(writer_, 0);
    }
    void TearDown() override {
        interface_.reset();
        if (writer_ >= 0) ::close(writer_);
        ::unlink(path_.c_str());
        ::rmdir(dir_.c_str());
    }

    std::string dir_;
    std::string path_;
    std::unique_ptr<HidrawInterface> interface_;
    int writer_ = -1;
};

TEST(HidrawOpen, MissingNodeGivesItsErrno) {
    int error = 0;
    EXPECT_EQ(HidrawInterface::open("/nonexistent/hidraw9", error), nullptr);
    EXPECT_EQ(error, ENOENT);
}

TEST_F(FifoNode, DeliversWhatArrivesAndTimesOutOtherwise) {
    const Bytes report = {1, 0x11, 0x34, 0x12, 0x78, 0x56};
    ASSERT_EQ(::write(writer_, report.data(), report.size()), static_cast<ssize_t>(report.size()));
    std::vector<Bytes> got;
    InputResult result = interface_->wait_input(1000ms, [&](std::span<const uint8_t> r) {
        got.emplace_back(r.begin(), r.end());
    });
    EXPECT_EQ(result.status, InputStatus::delivered);
    ASSERT_EQ(got.size(), 1u);
    EXPECT_EQ(got[0], report);

    got.clear();
    auto start = std::chrono::steady_clock::now();
    result = interface_->wait_input(100ms, [&](std::span<const uint8_t> r) { got.emplace_back(r.begin(), r.end()); });
    EXPECT_EQ(result.status, InputStatus::timeout);
    EXPECT_GE(std::chrono::steady_clock::now() - start, 90ms);
    EXPECT_TRUE(got.empty());
}

TEST_F(FifoNode, CloseWakesAWaiterAtOnce) {
    std::atomic<bool> returned{false};
    InputResult result;
    auto start = std::chrono::steady_clock::now();
    std::thread reader([&] {
        result = interface_->wait_input(10000ms, [](std::span<const uint8_t>) {});
        returned = true;
    });
    std::this_thread::sleep_for(100ms);
    EXPECT_FALSE(returned.load());
    interface_->close();
    reader.join();
    EXPECT_EQ(result.status, InputStatus::closed);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);

    // Once closed, everything fails at once and nothing touches the node.
    EXPECT_EQ(interface_->wait_input(1000ms, [](std::span<const uint8_t>) {}).status, InputStatus::closed);
    uint8_t buffer[4] = {13};
    EXPECT_EQ(interface_->get_feature(buffer).status, EBADF);
    EXPECT_EQ(interface_->set_feature(buffer).error, EBADF);
    std::vector<uint8_t> descriptor;
    EXPECT_EQ(interface_->report_descriptor(descriptor), EBADF);
    interface_->close();  // twice is fine
}

TEST_F(FifoNode, DeviceRequestsOnANonHidNodeFailWithTheirErrno) {
    std::vector<uint8_t> descriptor = {1, 2, 3};
    EXPECT_EQ(interface_->report_descriptor(descriptor), ENOTTY);
    EXPECT_TRUE(descriptor.empty());
    uint8_t buffer[8] = {13};
    const Transfer get = interface_->get_feature(buffer);
    EXPECT_EQ(std::pair(get.status, get.error), std::pair(ENOTTY, ENOTTY));
    EXPECT_EQ(interface_->set_feature(buffer).status, ENOTTY);
    EXPECT_EQ(interface_->get_feature(std::span<uint8_t>()).status, EINVAL);
}

TEST(UsbWatch, StopEndsTheWaitBeforeAndDuringIt) {
    int error = 0;
    auto watch = make_usb_watch(error);
    if (!watch) GTEST_SKIP() << "no USB notification source here (errno " << error << ")";
    auto start = std::chrono::steady_clock::now();
    std::thread waiter([&] {
        // Changes on the machine may come first; the stop ends the loop.
        UsbChange change;
        do {
            change = watch->wait();
        } while (change == UsbChange::attached || change == UsbChange::detached);
        EXPECT_EQ(change, UsbChange::stopped);
    });
    std::this_thread::sleep_for(50ms);
    watch->stop();
    waiter.join();
    EXPECT_LT(std::chrono::steady_clock::now() - start, 2s);
    EXPECT_EQ(watch->wait(), UsbChange::stopped);
}

// Whatever this machine has: every hidraw node listed names its node, a
// transport and ids; none is opened.
TEST(LinuxLayerEnumerate, ListsHidrawNodesWithTheirIdentity) {
    Enumeration found = platform_access_layer().enumerate();
    ASSERT_EQ(found.error, 0) << std::strerror(found.error);
    for (const HidInterfaceInfo& info : found.interfaces) {
        EXPECT_EQ(info.key.rfind("/dev/hidraw", 0), 0u) << info.key;
        EXPECT_FALSE(info.transport.empty());
    }
}

}  // namespace
}  // namespace velatrix::host::linux_hid
