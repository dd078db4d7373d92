// The traffic trace: HID reports written to a classic pcap file, each one
// dressed as a UDP datagram in made-up Ethernet and IPv4 headers so that
// ordinary capture viewers open and dissect it. The direction shows in the
// addresses: reads go 1.0.0.0 -> 2.0.0.0, writes 2.0.0.0 -> 1.0.0.0.
// Start-up only decides whether there is a trace and what its file is
// called; the file appears with its first header or record, so a process
// without traffic leaves none behind.
#include <sys/time.h>

#include <array>
#include <cstdio>
#include <cstdlib>
#include <mutex>

#include "debug/state.h"

namespace velatrix::debug {
namespace {

// The pcap global header, each field written in the host's byte order.
constexpr uint32_t kPcapMagic = 0xa1b2c3d4u;  // microsecond timestamps
constexpr uint16_t kPcapMajor = 2;
constexpr uint16_t kPcapMinor = 4;
constexpr int32_t kPcapZone = 0;
constexpr uint32_t kPcapAccuracy = 0;
constexpr uint32_t kPcapSnapshotLength = 65535;
constexpr uint32_t kPcapLinkEthernet = 1;

// Ethernet (14) + IPv4 (20) + UDP (8) in front of every report.
constexpr uint32_t kFrameHeaderSize = 42;
constexpr uint32_t kIpAndUdpSize = 28;
constexpr uint32_t kUdpHeaderSize = 8;
constexpr uint16_t kUdpPort = 1000;

struct Field {
    const void* bytes;
    size_t size;
};

// The two ends of the made-up link. The Ethernet pair is deliberately not
// the mirror of the IPv4 pair: a read goes to MAC 01:00:00:00:00:00 but
// comes from IP 1.0.0.0. Keep it so: traces are compared byte for byte.
struct Endpoints {
    std::array<uint8_t, 6> ethernet_destination;
    std::array<uint8_t, 6> ethernet_source;
    std::array<uint8_t, 4> ip_source;
    std::array<uint8_t, 4> ip_destination;
};

constexpr Endpoints kRead = {{1, 0, 0, 0, 0, 0}, {2, 0, 0, 0, 0, 0}, {1, 0, 0, 0}, {2, 0, 0, 0}};
constexpr Endpoints kWritten = {{2, 0, 0, 0, 0, 0}, {1, 0, 0, 0, 0, 0}, {2, 0, 0, 0}, {1, 0, 0, 0}};

std::array<uint8_t, 2> network_order(uint16_t value) {
    return {static_cast<uint8_t>(value >> 8), static_cast<uint8_t>(value & 0xFF)};
}

template <size_t N>
void write_fields(const std::array<Field, N>& fields) {
    for (const Field& field : fields) {
        if (field.size != 0) std::fwrite(field.bytes, 1, field.size, traceHandle);
    }
}

std::mutex& trace_mutex() {
    // Never destroyed: a thread may still trace while the process exits.
    static auto* mutex = new std::mutex;
    return *mutex;
}

// Set when the file could not be made; cleared with the next start-up.
bool trace_unavailable = false;

// Opens the trace file (truncating it) when none is open yet. False when
// it cannot be made: the trace then stays off without a word, and is not
// tried again for every record. No name (shut down): nothing to open.
bool open_trace_file() {
    if (traceHandle != nullptr) return true;
    if (trace_unavailable || traceFile == nullptr) return false;
    char* path = join_path(debugPath, traceFile);
    traceHandle = open_output_file(path, "wb");
    std::free(path);
    trace_unavailable = traceHandle == nullptr;
    return traceHandle != nullptr;
}

void write_global_header() {
    const std::array<Field, 7> header = {{
        {&kPcapMagic, sizeof kPcapMagic},
        {&kPcapMajor, sizeof kPcapMajor},
        {&kPcapMinor, sizeof kPcapMinor},
        {&kPcapZone, sizeof kPcapZone},
        {&kPcapAccuracy, sizeof kPcapAccuracy},
        {&kPcapSnapshotLength, sizeof kPcapSnapshotLength},
        {&kPcapLinkEthernet, sizeof kPcapLinkEthernet},
    }};
    write_fields(header);
    std::fflush(traceHandle);
}

}  // namespace

void close_trace() {
    std::lock_guard lock(trace_mutex());
    if (traceHandle != nullptr) {
        std::fclose(traceHandle);
        traceHandle = nullptr;
    }
    release(traceFile);
    trace_unavailable = false;
}

}  // namespace velatrix::debug

using namespace velatrix::debug;

extern "C" {

void velatrix_debug_write_trace_header(void) {
    if (!traceEnabled || !is_initialised()) return;
    std::lock_guard lock(trace_mutex());
    if (open_trace_file()) write_global_header();
}

void velatrix_debug_write_trace(const uint8_t* bytes, uint32_t length, uint32_t direction) {
    if (!traceEnabled || !is_initialised()) return;
    // Reads (on a reader thread) and writes (on the callers') are traced
    // from different threads: one record at a time, and the first one
    // opens the file and puts the global header in front of itself unless
    // a caller has written the header already.
    std::lock_guard lock(trace_mutex());
    if (traceHandle == nullptr) {
        if (!open_trace_file()) return;
        write_global_header();
    }
    if (bytes == nullptr) length = 0;
    const Endpoints& ends = direction == VELATRIX_TRACE_DIRECTION_READ ? kRead : kWritten;

    timeval now{};
    gettimeofday(&now, nullptr);
    const uint32_t seconds = static_cast<uint32_t>(now.tv_sec);
    const uint32_t microseconds = static_cast<uint32_t>(now.tv_usec);
    const uint32_t captured = length + kFrameHeaderSize;
    // Lengths wider than the 16-bit header fields wrap, as they would on the wire.
    const auto ip_length = network_order(static_cast<uint16_t>(length + kIpAndUdpSize));
    const auto udp_length = network_order(static_cast<uint16_t>(length + kUdpHeaderSize));
    const auto port = network_order(kUdpPort);
    static constexpr uint8_t kEtherTypeIpv4[2] = {0x08, 0x00};
    static constexpr uint8_t kVersionAndHeaderLength = 0x45;
    static constexpr uint8_t kTypeOfService = 0;
    static constexpr uint8_t kIdentification[2] = {0, 0};
    static constexpr uint8_t kDontFragment[2] = {0x40, 0x00};
    static constexpr uint8_t kTimeToLive = 128;
    static constexpr uint8_t kProtocolUdp = 17;
    static constexpr uint8_t kNoChecksum[2] = {0, 0};

    const std::array<Field, 22> record = {{
        {&seconds, 4},
        {&microseconds, 4},
        {&captured, 4},
        {&captured, 4},
        {ends.ethernet_destination.data(), 6},
        {ends.ethernet_source.data(), 6},
        {kEtherTypeIpv4, 2},
        {&kVersionAndHeaderLength, 1},
        {&kTypeOfService, 1},
        {ip_length.data(), 2},
        {kIdentification, 2},
        {kDontFragment, 2},
        {&kTimeToLive, 1},
        {&kProtocolUdp, 1},
        {kNoChecksum, 2},
        {ends.ip_source.data(), 4},
        {ends.ip_destination.data(), 4},
        {port.data(), 2},
        {port.data(), 2},
        {udp_length.data(), 2},
        {kNoChecksum, 2},
        {bytes, length},
    }};
    write_fields(record);
    std::fflush(traceHandle);
}

void velatrix_debug_trace_wrap_dispatch(velatrix_debug_trace_dispatch* dispatch) {
    if (!traceEnabled || dispatch == nullptr) return;
    // A record wrapped twice must not save the wrapper itself, or the
    // wrapper would call itself for ever.
    if (dispatch->read != velatrix_debug_trace_reader_wrapper) traceReadFunc = dispatch->read;
    if (dispatch->write != velatrix_debug_trace_write_wrapper) traceWriteFunc = dispatch->write;
    if (dispatch->read != nullptr) dispatch->read = velatrix_debug_trace_reader_wrapper;
    if (dispatch->write != nullptr) dispatch->write = velatrix_debug_trace_write_wrapper;
}

int velatrix_debug_trace_reader_wrapper(uint8_t* buffer, uint32_t size, uint32_t* length, void* context) {
    if (traceReadFunc == nullptr) return 0;
    const int result = traceReadFunc(buffer, size, length, context);
    // Never trace past the buffer, whatever length the read claims.
    uint32_t reported = length != nullptr ? *length : 0;
    if (reported > size) reported = size;
    velatrix_debug_write_trace(buffer, reported, VELATRIX_TRACE_DIRECTION_READ);
    return result;
}

int velatrix_debug_trace_write_wrapper(const uint8_t* bytes, uint32_t length) {
    velatrix_debug_write_trace(bytes, length, VELATRIX_TRACE_DIRECTION_WRITE);
    if (traceWriteFunc == nullptr) return 0;
    return traceWriteFunc(bytes, length);
}

}  // extern "C"
