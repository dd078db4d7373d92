// The virtual bus and its HID access layer as the host driver uses them:
// enumeration, open, feature transfers, input waits, close, unplug, the USB
// watch, and the faults a test injects.
#include <gtest/gtest.h>

#include <cerrno>
#include <future>
#include <thread>
#include <tuple>

#include "velatrix-virtual.h"
#include "virtual/virtual_hid_layer.h"
#include "virtual_wire.h"

namespace velatrix::virtual_pad::testing {
namespace {

using namespace std::chrono_literals;

class VirtualBusTest : public ::testing::Test {
protected:
    void TearDown() override {
        for (int id : plugged_) VirtualBus::instance().unplug(id);
        layer_.clear_faults();
    }
    std::shared_ptr<VirtualPad> plug(const PadModel& model) {
        auto pad = VirtualBus::instance().plug(model);
        plugged_.push_back(pad->id());
        return pad;
    }
    std::unique_ptr<host::HidInterface> open(const VirtualPad& pad) {
        int error = -1;
        auto interface = layer_.open(VirtualBus::key_of(pad.id()), error);
        EXPECT_EQ(error, 0);
        return interface;
    }
    // Collects what one wait delivers.
    static host::InputResult wait(host::HidInterface& interface, std::chrono::milliseconds timeout,
                                  std::vector<Bytes>& got) {
        return interface.wait_input(timeout, [&](std::span<const uint8_t> report) {
            got.emplace_back(report.begin(), report.end());
        });
    }

    VirtualHidLayer& layer_ = bus_hid_layer();
    std::vector<int> plugged_;
};

// What the host lists of a pad is listing_test's; here the location scheme,
// pads that are gone, and the HID service's own faults.
TEST_F(VirtualBusTest, GonePadsAndServiceFaults) {
    auto pad = plug(mono_320_model());
    EXPECT_EQ(VirtualHidLayer::describe(*pad).location_id, 0x7F000000u | (static_cast<uint32_t>(pad->id()) << 8));
    const std::string key = VirtualBus::key_of(pad->id());
    // A refused open and a failed listing as the driver sees them are
    // listing_test's.
    ASSERT_EQ(velatrix_virtual_refuse_open(pad->id()), 1);
    ASSERT_EQ(velatrix_virtual_clear_faults(pad->id()), 1);
    EXPECT_NE(open(*pad), nullptr) << "cleared with the pad's faults";

    int error = 0;
    layer_.fail_watch(EPERM);
    EXPECT_EQ(layer_.watch_usb(error), nullptr);
    EXPECT_EQ(error, EPERM);
    layer_.clear_faults();
    EXPECT_NE(layer_.watch_usb(error), nullptr);

    VirtualBus::instance().unplug(pad->id());
    for (const auto& info : layer_.enumerate().interfaces) EXPECT_NE(info.key, key);
    EXPECT_EQ(layer_.open(key, error), nullptr);
    EXPECT_EQ(error, ENOENT);
    EXPECT_EQ(layer_.open("hidraw0", error), nullptr);
    EXPECT_EQ(error, ENOENT);
}

TEST_F(VirtualBusTest, FeatureTransfersMapToStatusCodes) {
    auto pad = plug(mono_320_model());
    auto interface = open(*pad);
    std::vector<uint8_t> descriptor;
    ASSERT_EQ(interface->report_descriptor(descriptor), 0);
    EXPECT_EQ(descriptor, pad->report_descriptor());

    Bytes info = report(100, 10);
    host::Transfer got = interface->get_feature(info);
    EXPECT_EQ(got.status, 0);
    EXPECT_EQ(got.length, 10u);
    EXPECT_EQ(info, (Bytes{100, 0x40, 0x01, 0xF0, 0x00, 1, 8, 16, 8, 15}));

    Bytes screen = report(162, 80);
    got = interface->get_feature(screen);
    EXPECT_EQ(got.status, EPIPE) << "the pad stalls reports it does not declare";
    EXPECT_EQ(got.error, EPIPE);
    host::Transfer sent = interface->set_feature(report(10, 2, {0}));
    EXPECT_EQ(sent.status, 0);
    EXPECT_EQ(sent.length, 2u);
    int32_t mode = -1;
    pad->inspect([&](const Firmware& firmware) { mode = firmware.state().run_mode; });
    EXPECT_EQ(mode, 0);

    interface->close();
    interface->close();
    EXPECT_EQ(interface->get_feature(info).status, EBADF);
    EXPECT_EQ(interface->set_feature(report(10, 2)).status, EBADF);
}

TEST_F(VirtualBusTest, InputReachesEveryOpenInterfaceInOrder) {
    auto pad = plug(mono_320_model());
    auto first = open(*pad);
    auto second = open(*pad);
    std::vector<Bytes> got;
    EXPECT_EQ(wait(*first, 20ms, got).status, host::InputStatus::timeout);
    EXPECT_TRUE(got.empty());

    pad->pen(5, 6, true, true);
    pad->send_input({3, 2, 0, 1, 0, 2, 0, 3, 0, 4, 0});
    EXPECT_EQ(wait(*first, 1000ms, got).status, host::InputStatus::delivered);
    EXPECT_EQ(got, (std::vector<Bytes>{{2, 0x11, 5, 0, 6, 0, 1}, {3, 2, 0, 1, 0, 2, 0, 3, 0, 4, 0}}));
    got.clear();
    EXPECT_EQ(wait(*second, 1000ms, got).status, host::InputStatus::delivered);
    EXPECT_EQ(got.size(), 2u);
    EXPECT_EQ(pad->input_log().size(), 2u);

    // A reader waiting on another thread wakes as soon as input comes.
    auto waiting = std::async(std::launch::async, [&] {
        std::vector<Bytes> later;
        auto result = wait(*first, 5000ms, later);
        return std::make_pair(result.status, later);
    });
    std::this_thread::sleep_for(20ms);
    pad->pen(1, 1, false, false);
    ASSERT_EQ(waiting.wait_for(2s), std::future_status::ready);
    auto [status, later] = waiting.get();
    EXPECT_EQ(status, host::InputStatus::delivered);
    EXPECT_EQ(later.size(), 1u);
}

TEST_F(VirtualBusTest, CloseWakesAWaiterAndUnplugEndsInputAfterWhatWasQueued) {
    auto pad = plug(color_800_model());
    auto interface = open(*pad);
    auto waiting = std::async(std::launch::async, [&] {
        std::vector<Bytes> got;
        return wait(*interface, 10000ms, got).status;
    });
    std::this_thread::sleep_for(20ms);
    auto started = std::chrono::steady_clock::now();
    interface->close();
    ASSERT_EQ(waiting.wait_for(2s), std::future_status::ready);
    EXPECT_EQ(waiting.get(), host::InputStatus::closed);
    EXPECT_LT(std::chrono::steady_clock::now() - started, 1s);
    std::vector<Bytes> got;
    EXPECT_EQ(wait(*interface, 10ms, got).status, host::InputStatus::closed);

    auto reopened = open(*pad);
    pad->pen(2, 2, true, true);
    VirtualBus::instance().unplug(pad->id());
    EXPECT_EQ(wait(*reopened, 1000ms, got).status, host::InputStatus::delivered);
    auto gone = wait(*reopened, 1000ms, got);
    EXPECT_EQ(gone.status, host::InputStatus::gone);
    EXPECT_EQ(gone.error, ENODEV);
    Bytes info = report(100, 10);
    EXPECT_EQ(reopened->get_feature(info).status, ENODEV);
    std::vector<uint8_t> descriptor;
    EXPECT_EQ(reopened->report_descriptor(descriptor), ENODEV);
}

TEST_F(VirtualBusTest, UsbWatchTellsAttachAndDetachAndStops) {
    int error = -1;
    auto watch = layer_.watch_usb(error);
    ASSERT_NE(watch, nullptr);
    EXPECT_EQ(error, 0);
    auto pad = plug(mono_320_model());
    EXPECT_EQ(watch->wait(), host::UsbChange::attached);
    VirtualBus::instance().unplug(pad->id());
    EXPECT_EQ(watch->wait(), host::UsbChange::detached);

    // Changes that piled up are told once, by the kind of the first.
    auto other = plug(mono_320_model());
    VirtualBus::instance().unplug(other->id());
    EXPECT_EQ(watch->wait(), host::UsbChange::attached);

    EXPECT_FALSE(VirtualBus::instance().wait_watcher_idle(20ms)) << "nobody waits";
    auto waiting = std::async(std::launch::async, [&] { return watch->wait(); });
    EXPECT_TRUE(VirtualBus::instance().wait_watcher_idle(2s));
    watch->stop();
    ASSERT_EQ(waiting.wait_for(2s), std::future_status::ready);
    EXPECT_EQ(waiting.get(), host::UsbChange::stopped);
    EXPECT_EQ(watch->wait(), host::UsbChange::stopped) << "stays stopped";
    EXPECT_EQ(VirtualBus::instance().watchers(), 1u);
    watch.reset();
    EXPECT_EQ(VirtualBus::instance().watchers(), 0u);
}

TEST_F(VirtualBusTest, TransferFaultsFireAtTheNthTransfer) {
    auto pad = plug(mono_320_model());
    Bytes status = report(13, 73);
    pad->fail_transfer(3);
    EXPECT_EQ(pad->get_feature(status).outcome, Outcome::ok);
    EXPECT_EQ(pad->set_feature(report(10, 2, {2})).outcome, Outcome::ok);
    EXPECT_EQ(pad->get_feature(status).outcome, Outcome::failed);
    EXPECT_EQ(pad->get_feature(status).outcome, Outcome::ok) << "only once";
    EXPECT_EQ(pad->transfers(), 4u);

    // Cut and malformed answers.
    pad->short_answer(100, 4);
    Bytes info(10, 0xEE);
    info[0] = 100;
    auto cut = pad->get_feature(info);
    EXPECT_EQ(cut.length, 4u);
    EXPECT_EQ(info, (Bytes{100, 0x40, 0x01, 0xF0, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE, 0xEE}));
    pad->malformed_answer(22);
    Bytes version = report(22, 9);
    EXPECT_EQ(pad->get_feature(version).outcome, Outcome::ok);
    EXPECT_EQ(version, (Bytes{23, 0xFE, 0xFB, 0xFD, 0xFD, 0xF8, 0xF4, 0xDE, 0xA5}));
    pad->clear_faults();
    version = report(22, 9);
    pad->get_feature(version);
    EXPECT_EQ(version[0], 22);
    info = report(100, 10);
    EXPECT_EQ(pad->get_feature(info).length, 10u);

    int error = -1;
    auto watch = layer_.watch_usb(error);
    pad->unplug_at_transfer(2);
    EXPECT_EQ(pad->get_feature(status).outcome, Outcome::ok);
    EXPECT_EQ(pad->get_feature(status).outcome, Outcome::gone);
    EXPECT_EQ(VirtualBus::instance().find(pad->id()), nullptr) << "the bus lost the pad";
    EXPECT_EQ(watch->wait(), host::UsbChange::detached);
    EXPECT_EQ(pad->set_feature(report(10, 2)).outcome, Outcome::gone);
    EXPECT_EQ(pad->transfers(), 10u) << "transfers to a gone pad are not counted";
}

TEST(VirtualBusKeys, KeysRoundTripAndRejectOthers) {
    EXPECT_EQ(VirtualBus::key_of(42), "virtual:42");
    EXPECT_EQ(VirtualBus::id_of_key("virtual:42"), 42);
    EXPECT_EQ(VirtualBus::id_of_key("virtual:"), 0);
    EXPECT_EQ(VirtualBus::id_of_key("virtual:4x"), 0);
    EXPECT_EQ(VirtualBus::id_of_key("/dev/hidraw3"), 0);
}

}  // namespace
}  // namespace velatrix::virtual_pad::testing
