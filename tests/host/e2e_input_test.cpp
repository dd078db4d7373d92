// Input from the pad to the application's callbacks: reading on the
// caller's thread, on a read thread, and a pad pulled out mid-read.
#include <atomic>
#include <condition_variable>
#include <mutex>

#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

using namespace std::chrono_literals;

struct Seen {
    int callback;  // which of the two callbacks
    int type;
    uint16_t x, y;
    uint8_t tip;
    uint8_t in_range;
    uint8_t region;                                 // type 2
    const velatrix_device_region_info* button;      // types 250 to 253
    velatrix_device* device;
    uint8_t raw_id;
    uint32_t raw_length;
    std::thread::id thread;
    velatrix_input_report report;  // a copy of the whole record
};

std::mutex seen_mutex;
std::condition_variable seen_changed;
std::vector<Seen> seen;

void record(int callback, velatrix_device* device, const velatrix_input_report* report, int type,
            const uint8_t* buffer, uint32_t length) {
    Seen s{};
    s.callback = callback;
    s.type = type;
    s.device = device;
    s.raw_id = length > 0 ? buffer[0] : 0;
    s.raw_length = length;
    s.thread = std::this_thread::get_id();
    s.report = *report;
    EXPECT_EQ(report->type, type);
    if (type == VELATRIX_INPUT_EXTENDED_COORDINATE || type == VELATRIX_INPUT_COORDINATE) {
        s.x = report->data.coordinate.x;
        s.y = report->data.coordinate.y;
        s.tip = report->data.coordinate.tip_switch;
        s.in_range = report->data.coordinate.in_range;
        s.region = report->data.coordinate.region;
    } else if (type >= VELATRIX_INPUT_BUTTON_DOWN && type <= VELATRIX_INPUT_BUTTON_PRESS) {
        s.x = report->data.button.x;
        s.y = report->data.button.y;
        s.button = report->data.button.region;
    }
    std::lock_guard lock(seen_mutex);
    seen.push_back(s);
    seen_changed.notify_all();
}

int first_callback(velatrix_device* device, const velatrix_input_report* report, int type, const uint8_t* buffer,
                   uint32_t length) {
    record(1, device, report, type, buffer, length);
    return 0;
}

int second_callback(velatrix_device* device, const velatrix_input_report* report, int type, const uint8_t* buffer,
                    uint32_t length) {
    record(2, device, report, type, buffer, length);
    return 0;
}

std::vector<Seen> take_seen() {
    std::lock_guard lock(seen_mutex);
    std::vector<Seen> taken;
    taken.swap(seen);
    return taken;
}

std::size_t seen_count() {
    std::lock_guard lock(seen_mutex);
    return seen.size();
}

class E2eInput : public E2e {
protected:
    void SetUp() override {
        E2e::SetUp();
        take_seen();
        pad_ = plug("mono-320");
        device_ = open(pad_);
        ASSERT_NE(device_, nullptr);
    }
    void TearDown() override {
        take_seen();
        E2e::TearDown();
    }
    velatrix_virtual_pad pad_ = 0;
    velatrix_device* device_ = nullptr;
};

TEST_F(E2eInput, StrokesReachEveryCallbackInOrderWithButtonEventsOnAButton) {
    velatrix_register_input_callback(device_, first_callback);
    velatrix_register_input_callback(device_, second_callback);

    // Ink in the container, then a tap that moves on the "OK" button.
    const velatrix_virtual_point ink[] = {{50, 50}, {60, 55}, {70, 60}};
    const velatrix_virtual_point tap[] = {{250, 210}, {255, 215}};
    ASSERT_EQ(velatrix_virtual_play_stroke(pad_, ink, 3), 1);
    ASSERT_EQ(velatrix_virtual_play_stroke(pad_, tap, 2), 1);
    ASSERT_EQ(velatrix_virtual_input_count(pad_), 7u);

    const auto deadline = std::chrono::steady_clock::now() + 5s;
    while (seen_count() < 14 && std::chrono::steady_clock::now() < deadline) {
        ASSERT_EQ(velatrix_device_read(device_), 1) << last_error();
    }
    const std::vector<Seen> events = take_seen();
    ASSERT_EQ(events.size(), 14u);

    struct Expected {
        int type;
        uint16_t x, y;
        uint8_t tip, region;
    };
    const Expected expected[] = {
        {VELATRIX_INPUT_EXTENDED_COORDINATE, 50, 50, 1, 1}, {VELATRIX_INPUT_EXTENDED_COORDINATE, 60, 55, 1, 1},
        {VELATRIX_INPUT_EXTENDED_COORDINATE, 70, 60, 1, 1}, {VELATRIX_INPUT_EXTENDED_COORDINATE, 70, 60, 0, 1},
        {VELATRIX_INPUT_BUTTON_DOWN, 250, 210, 0, 3},       {VELATRIX_INPUT_BUTTON_MOVE, 255, 215, 0, 3},
        {VELATRIX_INPUT_BUTTON_PRESS, 255, 215, 0, 3},
    };
    for (std::size_t i = 0; i < 7; ++i) {
        SCOPED_TRACE("report " + std::to_string(i));
        const Seen& a = events[2 * i];
        const Seen& b = events[2 * i + 1];
        EXPECT_EQ(a.callback, 1) << "callbacks in registration order";
        EXPECT_EQ(b.callback, 2);
        for (const Seen& s : {a, b}) {
            EXPECT_EQ(s.type, expected[i].type);
            EXPECT_EQ(s.x, expected[i].x);
            EXPECT_EQ(s.y, expected[i].y);
            EXPECT_EQ(s.device, device_);
            EXPECT_EQ(s.raw_id, 2) << "every event comes from an extended coordinate";
            EXPECT_GE(s.raw_length, 7u);
            EXPECT_EQ(s.thread, std::this_thread::get_id()) << "on the reading thread";
            if (expected[i].type == VELATRIX_INPUT_EXTENDED_COORDINATE) {
                EXPECT_EQ(s.tip, expected[i].tip);
                EXPECT_EQ(s.in_range, 16);
                EXPECT_EQ(s.region, expected[i].region);
            } else {
                ASSERT_NE(s.button, nullptr);
                EXPECT_EQ(s.button, &device_->regions[expected[i].region - 1]);
                EXPECT_EQ(s.button->number, expected[i].region);
                EXPECT_STREQ(s.button->data.button.caption, "OK");
            }
        }
    }
    EXPECT_EQ(device_->button_active, 0) << "the press ends the button";

    // An unregistered callback hears nothing more.
    velatrix_unregister_input_callback(device_, first_callback);
    ASSERT_EQ(velatrix_virtual_pen(pad_, 100, 100, 1, 1), 1);
    while (seen_count() < 1 && std::chrono::steady_clock::now() < deadline) {
        ASSERT_EQ(velatrix_device_read(device_), 1) << last_error();
    }
    const std::vector<Seen> after = take_seen();
    ASSERT_EQ(after.size(), 1u);
    EXPECT_EQ(after[0].callback, 2);
}

TEST_F(E2eInput, CardSwipesAdcAndDebugSamplesArriveWhileMalformedReportsAreDropped) {
    velatrix_register_input_callback(device_, first_callback);
    ASSERT_EQ(velatrix_virtual_swipe_card(pad_, "%B4111111111111111^DOE/JANE^?", ";4111111111111111=2512?", nullptr),
              1);
    const uint8_t too_short[] = {1, 0x11, 5, 0, 6};
    ASSERT_EQ(velatrix_virtual_push_input(pad_, too_short, sizeof too_short), 1);
    const uint16_t values[4] = {100, 200, 300, 0xFFFF};
    ASSERT_EQ(velatrix_virtual_send_adc(pad_, 2, 0x11, values), 1);
    ASSERT_EQ(velatrix_virtual_send_adc(pad_, 3, 5, values), 1);
    const uint8_t unknown[] = {200, 1, 2, 3, 4, 5, 6, 7};
    ASSERT_EQ(velatrix_virtual_push_input(pad_, unknown, sizeof unknown), 1);
    const uint16_t debug[9] = {1, 2, 3, 4, 5, 6, 7, 8, 0x8009};
    ASSERT_EQ(velatrix_virtual_send_debug(pad_, 0x11, debug, 77), 1);

    const auto deadline = std::chrono::steady_clock::now() + 5s;
    while (seen_count() < 4 && std::chrono::steady_clock::now() < deadline) {
        ASSERT_EQ(velatrix_device_read(device_), 1) << last_error();
    }
    const std::vector<Seen> events = take_seen();
    ASSERT_EQ(events.size(), 4u) << "the short and the unknown report are dropped";

    ASSERT_EQ(events[0].type, VELATRIX_INPUT_MAGNETIC_CARD_SWIPE);
    const velatrix_input_card_swipe& card = events[0].report.data.card_swipe;
    EXPECT_EQ(std::string(card.track1), "%B4111111111111111^DOE/JANE^?");
    EXPECT_EQ(std::string(card.track2), ";4111111111111111=2512?");
    EXPECT_EQ(std::string(card.track3), "");
    EXPECT_EQ(events[0].raw_length, 231u);

    ASSERT_EQ(events[1].type, VELATRIX_INPUT_ADC);
    const velatrix_input_adc& scan = events[1].report.data.adc;
    EXPECT_EQ(scan.kind, 2u);
    EXPECT_EQ(scan.values.scan.flag_a, 1);
    EXPECT_EQ(scan.values.scan.flag_b, 16);
    EXPECT_EQ(scan.values.scan.value1, 100);
    EXPECT_EQ(scan.values.scan.value4, 0xFFFF);
    ASSERT_EQ(events[2].type, VELATRIX_INPUT_ADC);
    const velatrix_input_adc& channel = events[2].report.data.adc;
    EXPECT_EQ(channel.kind, 3u);
    EXPECT_EQ(channel.values.channel.channel, 5);
    EXPECT_EQ(channel.values.channel.value2, 200);
    EXPECT_EQ(channel.values.channel.value3, 300);

    ASSERT_EQ(events[3].type, VELATRIX_INPUT_DEBUG_COORDINATE);
    const velatrix_input_debug_coordinate& sample = events[3].report.data.debug_coordinate;
    EXPECT_EQ(sample.tip_switch, 1);
    EXPECT_EQ(sample.in_range, 16);
    EXPECT_EQ(sample.value1, 1);
    EXPECT_EQ(sample.value8, 8);
    EXPECT_EQ(sample.value9, 0x8009);
    EXPECT_EQ(sample.last, 77);
    EXPECT_EQ(device_->open, 1);
}

TEST_F(E2eInput, UnplugDuringABlockingReadEndsIt) {
    velatrix_register_input_callback(device_, first_callback);
    std::thread unplugger([this] {
        std::this_thread::sleep_for(200ms);
        velatrix_virtual_unplug(pad_);
    });
    const auto start = std::chrono::steady_clock::now();
    int result = 1;
    // The first read may come back empty-handed; the one the unplug lands
    // in ends with the device closed.
    while (result == 1 && std::chrono::steady_clock::now() - start < 5s) result = velatrix_device_read(device_);
    const auto took = std::chrono::steady_clock::now() - start;
    unplugger.join();
    EXPECT_EQ(result, 0);
    EXPECT_EQ(last_error(), "Device is not open after read");
    EXPECT_LT(took, 1500ms);
    EXPECT_EQ(device_->open, 0) << "closed from the removal";
    EXPECT_EQ(device_->regions, nullptr);
    EXPECT_EQ(device_->uuid, nullptr);
    EXPECT_EQ(velatrix_list_find(velatrix_get_open_devices(), device_), nullptr);

    EXPECT_EQ(velatrix_device_read(device_), 0);
    EXPECT_EQ(last_error(), "Device is not open");
    EXPECT_TRUE(take_seen().empty());
}

TEST_F(E2eInput, ReadThreadDeliversInputAndStopsWithinASecondOfDone) {
    velatrix_register_input_callback(device_, first_callback);
    velatrix_device_read_until_done(device_);
    const velatrix_virtual_point ink[] = {{40, 40}, {41, 42}};
    ASSERT_EQ(velatrix_virtual_play_stroke(pad_, ink, 2), 1);
    {
        std::unique_lock lock(seen_mutex);
        ASSERT_TRUE(seen_changed.wait_for(lock, 3s, [] { return seen.size() >= 3; }));
    }
    const std::vector<Seen> events = take_seen();
    ASSERT_EQ(events.size(), 3u);
    EXPECT_EQ(events[0].x, 40);
    EXPECT_EQ(events[1].y, 42);
    EXPECT_EQ(events[2].tip, 0);
    for (const Seen& s : events) EXPECT_NE(s.thread, std::this_thread::get_id()) << "on the read thread";

    // Let the thread settle into its next wait, then stop it.
    std::this_thread::sleep_for(100ms);
    const auto start = std::chrono::steady_clock::now();
    velatrix_device_read_done(device_);
    EXPECT_LT(std::chrono::steady_clock::now() - start, 1200ms);
    EXPECT_EQ(device_->open, 0) << "done closes the device";
    EXPECT_FALSE(host::real(device_)->read_thread.started());

    // Nothing is read any more.
    ASSERT_EQ(velatrix_virtual_pen(pad_, 10, 10, 1, 1), 1);
    std::this_thread::sleep_for(50ms);
    EXPECT_TRUE(take_seen().empty());
    // Done without a thread does nothing.
    velatrix_device_read_done(device_);
}

TEST_F(E2eInput, ReadThreadEndsOnItsOwnWhenThePadIsUnplugged) {
    velatrix_device_read_until_done(device_);
    std::this_thread::sleep_for(100ms);
    ASSERT_EQ(velatrix_virtual_unplug(pad_), 1);
    // The thread's wait wakes on the removal, closes the device and ends.
    std::this_thread::sleep_for(300ms);
    // Joins the thread that has ended; the device is already closed.
    velatrix_device_read_done(device_);
    EXPECT_EQ(device_->open, 0);
    EXPECT_FALSE(host::real(device_)->read_thread.started());
}

}  // namespace
}  // namespace velatrix::e2e
