// The pcap trace: exact file bytes and the wrapped read and write operations.
#include <sys/time.h>

#include <cstring>

#include "debug/state.h"
#include "debug_fixture.h"

namespace velatrix::testing {
namespace {

namespace state = ::velatrix::debug;

using Bytes = std::vector<uint8_t>;

const Bytes kGlobalHeader = {
    0xd4, 0xc3, 0xb2, 0xa1,  // magic, microsecond timestamps
    0x02, 0x00, 0x04, 0x00,  // version 2.4
    0, 0, 0, 0,              // time-zone correction
    0, 0, 0, 0,              // timestamp accuracy
    0xff, 0xff, 0x00, 0x00,  // snapshot length 65535
    0x01, 0x00, 0x00, 0x00,  // Ethernet
};

uint32_t le32(const Bytes& bytes, size_t offset) {
    return bytes[offset] | bytes[offset + 1] << 8 | bytes[offset + 2] << 16 | static_cast<uint32_t>(bytes[offset + 3]) << 24;
}

// Everything of a record after its timestamps, for a report read (1.0.0.0 is
// the IPv4 source) or written (2.0.0.0 is).
Bytes expected_record_tail(const Bytes& report, bool read) {
    const uint32_t n = static_cast<uint32_t>(report.size());
    const uint8_t a = read ? 1 : 2;
    const uint8_t b = read ? 2 : 1;
    Bytes tail = {
        static_cast<uint8_t>(n + 42), static_cast<uint8_t>((n + 42) >> 8), 0, 0,  // captured length
        static_cast<uint8_t>(n + 42), static_cast<uint8_t>((n + 42) >> 8), 0, 0,  // length on the wire
        a, 0, 0, 0, 0, 0,                                                          // Ethernet destination
        b, 0, 0, 0, 0, 0,                                                          // Ethernet source
        0x08, 0x00,                                                                // IPv4
        0x45, 0x00,                                                                // version, header length, TOS
        static_cast<uint8_t>((n + 28) >> 8), static_cast<uint8_t>(n + 28),         // total length
        0x00, 0x00, 0x40, 0x00,                                                    // id, don't fragment
        128, 17, 0x00, 0x00,                                                       // TTL, UDP, checksum
        a, 0, 0, 0,                                                                // IPv4 source
        b, 0, 0, 0,                                                                // IPv4 destination
        0x03, 0xe8, 0x03, 0xe8,                                                    // ports 1000 -> 1000
        static_cast<uint8_t>((n + 8) >> 8), static_cast<uint8_t>(n + 8),           // UDP length
        0x00, 0x00,                                                                // UDP checksum
    };
    tail.insert(tail.end(), report.begin(), report.end());
    return tail;
}

// Whole records with their timestamps zeroed, for reports read (true) or
// written (false).
Bytes expected_records(const std::vector<std::pair<Bytes, bool>>& reports) {
    Bytes expected;
    for (const auto& [report, read] : reports) {
        expected.insert(expected.end(), 8, 0);
        const Bytes tail = expected_record_tail(report, read);
        expected.insert(expected.end(), tail.begin(), tail.end());
    }
    return expected;
}

class Trace : public DebugTest {
protected:
    void start_trace() {
        set("VELATRIX_TRACE", "yes");
        set("VELATRIX_DEBUG_LOCATION", dir_.c_str());
        velatrix_debug_init("quillmark");
        velatrix_debug_write_trace_header();
    }

    // The records after the global header.
    Bytes records() const {
        Bytes bytes = read_bytes(trace_path());
        EXPECT_GE(bytes.size(), kGlobalHeader.size());
        return Bytes(bytes.begin() + std::min(bytes.size(), kGlobalHeader.size()), bytes.end());
    }

    // The records with their timestamps zeroed.
    Bytes records_without_times() const {
        Bytes bytes = records();
        for (size_t at = 0; at + 16 <= bytes.size(); at += 16 + le32(bytes, at + 8)) std::fill_n(bytes.begin() + at, 8, 0);
        return bytes;
    }
};

TEST_F(Trace, GlobalHeaderIsWrittenOnOpenAndAgainOnEveryCall) {
    // Calls before start-up write nothing, then or later.
    const uint8_t report[] = {1};
    velatrix_debug_write_trace_header();
    velatrix_debug_write_trace(report, 1, 1);
    start_trace();
    EXPECT_EQ(read_bytes(trace_path()), kGlobalHeader);
    velatrix_debug_write_trace_header();
    Bytes twice = kGlobalHeader;
    twice.insert(twice.end(), kGlobalHeader.begin(), kGlobalHeader.end());
    EXPECT_EQ(read_bytes(trace_path()), twice);
}

TEST_F(Trace, ReportReadFromThePadIsOneRecordWithItsTime) {
    start_trace();
    Bytes report(64);
    for (size_t i = 0; i < report.size(); ++i) report[i] = static_cast<uint8_t>(0xA0 + i);
    timeval before{};
    gettimeofday(&before, nullptr);
    velatrix_debug_write_trace(report.data(), 64, 1);
    timeval after{};
    gettimeofday(&after, nullptr);

    const Bytes record = records();
    ASSERT_EQ(record.size(), 16u + 42u + 64u);
    const uint64_t stamp = uint64_t{le32(record, 0)} * 1000000 + le32(record, 4);
    EXPECT_LT(le32(record, 4), 1000000u);
    EXPECT_GE(stamp, uint64_t(before.tv_sec) * 1000000 + before.tv_usec);
    EXPECT_LE(stamp, uint64_t(after.tv_sec) * 1000000 + after.tv_usec);
    EXPECT_EQ(Bytes(record.begin() + 8, record.end()), expected_record_tail(report, true));
}

TEST_F(Trace, EmptyAndWrittenReportsAndTheirAddresses) {
    start_trace();
    const Bytes written = {0x10, 0x01, 0x02};
    velatrix_debug_write_trace(nullptr, 0, 1);
    velatrix_debug_write_trace(written.data(), 3, 2);
    velatrix_debug_write_trace(written.data(), 3, 7);  // anything but 1 counts as written
    velatrix_debug_write_trace(nullptr, 5, 1);         // no bytes: nothing to copy

    EXPECT_EQ(records_without_times(), expected_records({{{}, true}, {written, false}, {written, false}, {{}, true}}));
}

// The operations a driver would own; they record what reached them.
struct Peer {
    static inline Bytes next_read;
    static inline uint32_t claimed_length = 0;
    static inline void* seen_context = nullptr;
    static inline std::vector<Bytes> writes;

    static int read(uint8_t* buffer, uint32_t size, uint32_t* length, void* context) {
        seen_context = context;
        std::memcpy(buffer, next_read.data(), std::min<size_t>(size, next_read.size()));
        *length = claimed_length;
        return 7;
    }
    static int write(const uint8_t* bytes, uint32_t length) {
        writes.emplace_back(bytes, bytes + length);
        return 9;
    }
};

TEST_F(Trace, WrappedOperationsPassThroughAndLandInTheTrace) {
    start_trace();
    velatrix_debug_trace_dispatch dispatch = {Peer::read, Peer::write};
    velatrix_debug_trace_wrap_dispatch(&dispatch);
    EXPECT_EQ(std::pair(dispatch.read, dispatch.write), std::pair(&velatrix_debug_trace_reader_wrapper, &velatrix_debug_trace_write_wrapper));
    // Wrapping again keeps the real operations, so no wrapper calls itself.
    velatrix_debug_trace_wrap_dispatch(&dispatch);

    Peer::next_read = {0x02, 0x11, 0x22, 0x33};
    Peer::claimed_length = 4;
    uint8_t buffer[8] = {};
    uint32_t length = 0;
    int context = 0;
    EXPECT_EQ(dispatch.read(buffer, sizeof buffer, &length, &context), 7);
    EXPECT_EQ(Peer::seen_context, &context);
    EXPECT_EQ(length, 4u);

    const Bytes sent = {0x30, 0x01};
    Peer::writes.clear();
    EXPECT_EQ(dispatch.write(sent.data(), 2), 9);
    EXPECT_EQ(Peer::writes, std::vector<Bytes>{sent});

    // A read claiming more than its buffer is traced up to the buffer only.
    Peer::claimed_length = 100;
    dispatch.read(buffer, 3, &length, nullptr);

    EXPECT_EQ(records_without_times(),
              expected_records({{Peer::next_read, true}, {sent, false}, {{0x02, 0x11, 0x22}, true}}));
}

TEST_F(Trace, WrappingNeedsTheTraceAndLeavesMissingOperationsAlone) {
    set("VELATRIX_DEBUG_HANDLERS", "console");
    set("VELATRIX_DEBUG_LOCATION", dir_.c_str());
    velatrix_debug_init("quillmark");
    velatrix_debug_trace_dispatch untouched = {Peer::read, Peer::write};
    velatrix_debug_trace_wrap_dispatch(&untouched);
    EXPECT_EQ(std::pair(untouched.read, untouched.write), std::pair(&Peer::read, &Peer::write));
    // Nothing saved: the wrappers have nothing to call.
    uint8_t buffer[4] = {};
    uint32_t length = 0;
    EXPECT_EQ(velatrix_debug_trace_reader_wrapper(buffer, 4, &length, nullptr), 0);
    EXPECT_EQ(velatrix_debug_trace_write_wrapper(buffer, 4), 0);
    velatrix_debug_destroy();

    start_trace();
    velatrix_debug_trace_dispatch write_only = {nullptr, Peer::write};
    velatrix_debug_trace_wrap_dispatch(&write_only);
    EXPECT_EQ(write_only.read, nullptr);
    EXPECT_EQ(write_only.write, velatrix_debug_trace_write_wrapper);
    EXPECT_EQ(velatrix_debug_trace_reader_wrapper(buffer, 4, &length, nullptr), 0);
    velatrix_debug_trace_wrap_dispatch(nullptr);
}

}  // namespace
}  // namespace velatrix::testing
