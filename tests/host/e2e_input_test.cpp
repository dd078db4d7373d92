// Input from the pad to the application's callbacks: reading on the
// caller's thread (oversized reports, an empty wait, a closed device) and
// on a read thread. A pad pulled out mid-read is the threaded suite's
// (tests/threads).
#include <tuple>

#include "e2e_fixture.h"
#include "support/recorder.h"

namespace velatrix::e2e {
namespace {

using namespace std::chrono_literals;

struct Seen {
    int callback;  // which of the two callbacks
    int type;
    velatrix_device* device;
    uint8_t raw_id;
    uint32_t raw_length;
    std::thread::id thread;
    velatrix_input_report report;  // a copy of the whole record
};

testing::Recorder<Seen> seen;

void record(int callback, velatrix_device* device, const velatrix_input_report* report, int type,
            const uint8_t* buffer, uint32_t length) {
    EXPECT_EQ(report->type, type);
    seen.add({callback, type, device, length > 0 ? buffer[0] : uint8_t{0}, length, std::this_thread::get_id(),
              *report});
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

class E2eInput : public E2e {
protected:
    void SetUp() override {
        E2e::SetUp();
        seen.take();
        pad_ = plug(first_model_with(kCardReader).c_str());
        device_ = open(pad_);
        ASSERT_NE(device_, nullptr);
    }
    void TearDown() override {
        seen.take();
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
    while (seen.size() < 14 && std::chrono::steady_clock::now() < deadline) {
        ASSERT_EQ(velatrix_device_read(device_), 1) << last_error();
    }
    const std::vector<Seen> events = seen.take();
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
    // Both callbacks in registration order, on the reading thread, every
    // event from an extended coordinate report (id 2).
    for (std::size_t i = 0; i < 14; ++i) {
        const Expected& e = expected[i / 2];
        const Seen& s = events[i];
        const velatrix_input_coordinate& c = s.report.data.coordinate;
        const velatrix_input_button& b = s.report.data.button;
        const bool coordinate = e.type == VELATRIX_INPUT_EXTENDED_COORDINATE;
        SCOPED_TRACE("event " + std::to_string(i));
        EXPECT_EQ(std::tuple(s.callback, s.type, coordinate ? c.x : b.x, coordinate ? c.y : b.y, s.device, s.raw_id,
                             s.thread),
                  std::tuple(int(i % 2 + 1), e.type, e.x, e.y, device_, 2, std::this_thread::get_id()));
        if (coordinate) {
            EXPECT_EQ(std::tuple(c.tip_switch, c.in_range, c.region), std::tuple(e.tip, 16, e.region));
        } else {
            EXPECT_EQ(b.region, &device_->regions[e.region - 1]);
        }
    }
    EXPECT_EQ(device_->button_active, 0) << "the press ends the button";
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
    while (seen.size() < 4 && std::chrono::steady_clock::now() < deadline) {
        ASSERT_EQ(velatrix_device_read(device_), 1) << last_error();
    }
    const std::vector<Seen> events = seen.take();
    ASSERT_EQ(events.size(), 4u) << "the short and the unknown report are dropped";

    const std::vector<int> types = {events[0].type, events[1].type, events[2].type, events[3].type};
    ASSERT_EQ(types, (std::vector<int>{VELATRIX_INPUT_MAGNETIC_CARD_SWIPE, VELATRIX_INPUT_ADC, VELATRIX_INPUT_ADC,
                                       VELATRIX_INPUT_DEBUG_COORDINATE}));
    // The swipe's bytes are pad_input_test's and their decoding the protocol tests'.
    const velatrix_input_adc& scan = events[1].report.data.adc;
    const velatrix_input_adc_scan& s = scan.values.scan;
    EXPECT_EQ(std::tuple(scan.kind, s.flag_a, s.flag_b, s.value1, s.value2, s.value3, s.value4),
              std::tuple(2u, 1, 16, 100, 200, 300, 0xFFFF));
    const velatrix_input_adc& channel = events[2].report.data.adc;
    const velatrix_input_adc_channel& c = channel.values.channel;
    EXPECT_EQ(std::tuple(channel.kind, c.channel, c.value1, c.value2, c.value3, c.value4),
              std::tuple(3u, 5, 100, 200, 300, 0xFFFF));
    const velatrix_input_debug_coordinate& d = events[3].report.data.debug_coordinate;
    EXPECT_EQ(std::tuple(d.tip_switch, d.in_range, d.value1, d.value2, d.value3, d.value4, d.value5, d.value6,
                         d.value7, d.value8, d.value9, d.last),
              std::tuple(1, 16, 1, 2, 3, 4, 5, 6, 7, 8, 0x8009, 77));
    EXPECT_EQ(device_->open, 1);
}

TEST_F(E2eInput, OversizedReportsAreCutAndAReadOfNothingWaitsASecond) {
    velatrix_register_input_callback(device_, first_callback);
    Bytes big(700, 0);
    big[0] = 1;
    ASSERT_EQ(velatrix_virtual_push_input(pad_, big.data(), static_cast<uint32_t>(big.size())), 1);
    EXPECT_EQ(velatrix_device_read(device_), 1);
    std::vector<Seen> events = seen.take();
    ASSERT_EQ(events.size(), 1u);
    EXPECT_EQ(std::tuple(events[0].type, events[0].raw_length), std::tuple(VELATRIX_INPUT_COORDINATE, 512u));
    EXPECT_EQ(host::real(device_)->scheduled, 1);
    EXPECT_EQ(host::real(device_)->pending_reports.size(), 0u);

    const auto start = std::chrono::steady_clock::now();
    EXPECT_EQ(velatrix_device_read(device_), 1);
    const auto waited = std::chrono::steady_clock::now() - start;
    EXPECT_GE(waited, 900ms);
    EXPECT_LT(waited, 3s);
    EXPECT_TRUE(seen.take().empty());

    ASSERT_EQ(velatrix_close_device(device_), 1);
    EXPECT_EQ(velatrix_real_device_read(device_), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device is not open");
    velatrix_report_error_internal("%s", "");
    EXPECT_EQ(velatrix_real_device_read(nullptr), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Device is not open");
}

TEST_F(E2eInput, ReadThreadDeliversInputAndStopsWithinASecondOfDone) {
    velatrix_register_input_callback(device_, first_callback);
    velatrix_device_read_until_done(device_);
    const velatrix_virtual_point ink[] = {{40, 40}, {41, 42}};
    ASSERT_EQ(velatrix_virtual_play_stroke(pad_, ink, 2), 1);
    const std::vector<Seen> events = seen.take(3, 3s);
    ASSERT_EQ(events.size(), 3u);
    EXPECT_EQ(std::tuple(events[0].report.data.coordinate.x, events[1].report.data.coordinate.y,
                         events[2].report.data.coordinate.tip_switch),
              std::tuple(40, 42, 0));
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
    EXPECT_TRUE(seen.take().empty());
    // Done without a thread does nothing.
    velatrix_device_read_done(device_);
}

}  // namespace
}  // namespace velatrix::e2e
