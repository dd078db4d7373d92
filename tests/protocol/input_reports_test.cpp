#include <gtest/gtest.h>

#include <map>
#include <numeric>
#include <string>
#include <tuple>

#include "input_test_util.h"
#include "support/fake_pad.h"
#include "velatrix/error.h"

namespace velatrix::testing {
namespace {

std::vector<uint8_t> report_of(uint8_t id, size_t length, uint8_t fill = 0) {
    std::vector<uint8_t> bytes(length, fill);
    bytes[0] = id;
    return bytes;
}

using InputReportParse = FakePad;

// Every id at every length up to the longest report: the parser decodes a
// known report from its minimum length on and rejects anything else with
// its text, never reading past the end (the exact-size buffers make the
// address sanitizer see an overread); bytes past the listed fields are
// ignored.
TEST_F(InputReportParse, EveryIdAtEveryLength) {
    struct Known {
        size_t minimum;
        uint8_t type;
        const char* message;
    };
    const std::map<int, Known> known = {
        {1, {6, VELATRIX_INPUT_COORDINATE, "Buffer was too small to be an input coordinate buffer."}},
        {2, {7, VELATRIX_INPUT_EXTENDED_COORDINATE, "Buffer was too small to be an extended input coordinate buffer."}},
        {3, {11, VELATRIX_INPUT_ADC, "Buffer was too small to be an adc value buffer."}},
        {12, {231, VELATRIX_INPUT_MAGNETIC_CARD_SWIPE, "Buffer was too small to be a card swipe buffer."}},
        {254, {22, VELATRIX_INPUT_DEBUG_COORDINATE, "Buffer was too small to be a debug coordinate buffer."}},
    };
    RegionTable table(device, {VELATRIX_REGION_BUTTON});
    for (int id = 0; id < 256; ++id) {
        const auto found = known.find(id);
        for (size_t length = 1; length <= 232; ++length) {
            velatrix_report_error_internal("%s", "untouched");
            InputReportPtr record = parse(device, report_of(static_cast<uint8_t>(id), length, 0xFF));
            if (found != known.end() && length >= found->second.minimum) {
                ASSERT_NE(record, nullptr) << id << " " << length;
                ASSERT_EQ(record->type, found->second.type) << id;
            } else {
                ASSERT_EQ(record, nullptr) << id << " " << length;
                ASSERT_STREQ(velatrix_get_last_error(),
                             found != known.end() ? found->second.message : "Unknown input report in buffer.")
                    << id << " " << length;
            }
        }
    }
    for (const auto& [id, report] : known) {
        std::vector<uint8_t> longer = report_of(static_cast<uint8_t>(id), report.minimum + 40);
        std::fill(longer.begin() + report.minimum, longer.end(), 0xEE);
        InputReportPtr record = parse(device, longer);
        ASSERT_NE(record, nullptr);
        InputReportPtr plain = parse(device, report_of(static_cast<uint8_t>(id), report.minimum));
        EXPECT_EQ(std::memcmp(record.get(), plain.get(), sizeof(velatrix_input_report)), 0) << id;
    }

    const uint8_t one[] = {1, 0, 0, 0, 0, 0};
    EXPECT_EQ(velatrix_parse_input_report(device, nullptr, 6), nullptr);
    EXPECT_STREQ(velatrix_get_last_error(), "Buffer passed into velatrix_parse_input_report was null or empty.");
    velatrix_report_error_internal("%s", "untouched");
    EXPECT_EQ(velatrix_parse_input_report(device, one, 0), nullptr);
    EXPECT_STREQ(velatrix_get_last_error(), "Buffer passed into velatrix_parse_input_report was null or empty.");
}

TEST_F(InputReportParse, CoordinateFlagsAndLittleEndianPosition) {
    struct Case {
        uint8_t flags;
        uint8_t tip;
        uint8_t in_range;
    };
    // Other flag bits are ignored; in_range keeps the bit in place.
    for (const Case& c :
         {Case{0x11, 1, 16}, Case{0x01, 1, 0}, Case{0x10, 0, 16}, Case{0xEE, 0, 0}, Case{0xFF, 1, 16}}) {
        SCOPED_TRACE(int(c.flags));
        InputReportPtr record = parse(device, {1, c.flags, 0x34, 0x12, 0xCD, 0xAB});
        ASSERT_NE(record, nullptr);
        EXPECT_EQ(std::tuple(record->type, record->data.coordinate.tip_switch, record->data.coordinate.in_range,
                             record->data.coordinate.x, record->data.coordinate.y, record->data.coordinate.region),
                  std::tuple(VELATRIX_INPUT_COORDINATE, c.tip, c.in_range, 0x1234, 0xABCD, 0));
    }
}

TEST_F(InputReportParse, ExtendedCoordinateWithoutButtonsCarriesTheRawRegion) {
    InputReportPtr record = parse(device, {2, 0x11, 0x02, 0x01, 0x04, 0x03, 9});
    ASSERT_NE(record, nullptr);
    const velatrix_input_coordinate& c = record->data.coordinate;
    EXPECT_EQ(std::tuple(record->type, c.tip_switch, c.in_range, c.x, c.y, c.region),
              std::tuple(VELATRIX_INPUT_EXTENDED_COORDINATE, 1, 16, 0x0102, 0x0304, 9));
    EXPECT_EQ(device->button_active, 0);

    // Without a device there is no region table to consult.
    record = parse(nullptr, {2, 0x01, 5, 0, 6, 0, 1});
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->type, VELATRIX_INPUT_EXTENDED_COORDINATE);
    EXPECT_EQ(record->data.coordinate.region, 1);
}

TEST_F(InputReportParse, AdcKinds) {
    InputReportPtr record = parse(device, hex("03 02 11 0102030405060708"));
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(std::tuple(record->type, record->data.adc.kind), std::tuple(VELATRIX_INPUT_ADC, 2u));
    const velatrix_input_adc_scan& s = record->data.adc.values.scan;
    EXPECT_EQ(std::tuple(s.flag_a, s.flag_b, s.value1, s.value2, s.value3, s.value4),
              std::tuple(1, 16, 0x0201, 0x0403, 0x0605, 0x0807));
    record = parse(device, hex("03 02 ee 0102030405060708"));  // neither flag bit
    EXPECT_EQ(std::tuple(record->data.adc.values.scan.flag_a, record->data.adc.values.scan.flag_b), std::tuple(0, 0));

    record = parse(device, hex("03 03 a7 0102030405060708"));
    ASSERT_NE(record, nullptr);
    const velatrix_input_adc_channel& c = record->data.adc.values.channel;
    EXPECT_EQ(std::tuple(record->data.adc.kind, c.channel, c.value1, c.value2, c.value3, c.value4),
              std::tuple(3u, 0xA7, 0x0201, 0x0403, 0x0605, 0x0807));

    // Any other kind: the kind and nothing else.
    for (uint8_t kind : {0, 1, 4, 255}) {
        record = parse(device, {3, kind, 0xFF, 1, 2, 3, 4, 5, 6, 7, 8});
        ASSERT_NE(record, nullptr);
        velatrix_input_report expected{};
        expected.type = VELATRIX_INPUT_ADC;
        expected.data.adc.kind = kind;
        EXPECT_EQ(std::memcmp(record.get(), &expected, sizeof expected), 0) << int(kind);
    }
}

TEST_F(InputReportParse, CardSwipeCopiesHeadersAndTracksByteForByte) {
    std::vector<uint8_t> swipe = wire(12, 231, {{1, hex("8102ff00")}});
    const std::string track1 = "%B4111111111111111^DOE/JANE^2512101?";
    const std::string track2 = ";4111111111111111=2512101?";
    std::copy(track1.begin(), track1.end(), swipe.begin() + 5);
    std::copy(track2.begin(), track2.end(), swipe.begin() + 84);
    // Track 3 fills its whole field: the record still ends it.
    std::fill(swipe.begin() + 124, swipe.end(), '3');

    InputReportPtr record = parse(device, swipe);
    ASSERT_NE(record, nullptr);
    const velatrix_input_card_swipe& card = record->data.card_swipe;
    EXPECT_EQ(std::tuple(card.header1, card.header2, card.header3, card.header4),
              std::tuple(0x81u, 0x02u, 0xFFu, 0x00u));
    EXPECT_EQ(std::string(card.track3), std::string(107, '3'));
    EXPECT_EQ(std::memcmp(card.track1, swipe.data() + 5, 79), 0);
    EXPECT_EQ(std::memcmp(card.track2, swipe.data() + 84, 40), 0);

    // A full track 1 has no terminator of its own and runs on into track 2.
    std::fill(swipe.begin() + 5, swipe.begin() + 84, 'A');
    record = parse(device, swipe);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(std::string(record->data.card_swipe.track1), std::string(79, 'A') + track2);
}

TEST_F(InputReportParse, DebugCoordinate) {
    std::vector<uint8_t> bytes(22);
    std::iota(bytes.begin(), bytes.end(), uint8_t{0});
    bytes[0] = 254;
    bytes[1] = 0xFF;  // ignored
    bytes[2] = 0x11;
    bytes[21] = 0x9C;
    InputReportPtr record = parse(device, bytes);
    ASSERT_NE(record, nullptr);
    EXPECT_EQ(record->type, VELATRIX_INPUT_DEBUG_COORDINATE);
    const velatrix_input_debug_coordinate& d = record->data.debug_coordinate;
    EXPECT_EQ(std::tuple(d.tip_switch, d.in_range, d.value1, d.value2, d.value3, d.value4, d.value5, d.value6,
                         d.value7, d.value8, d.value9, d.last),
              std::tuple(1, 16, 0x0403, 0x0605, 0x0807, 0x0A09, 0x0C0B, 0x0E0D, 0x100F, 0x1211, 0x1413, 0x9C));

    bytes[2] = 0x10;
    record = parse(device, bytes);
    EXPECT_EQ(std::tuple(record->data.debug_coordinate.tip_switch, record->data.debug_coordinate.in_range),
              std::tuple(0, 16));
}

}  // namespace
}  // namespace velatrix::testing
