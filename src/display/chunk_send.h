// Building and sending display chunk reports (report 103): the record's
// rows for the report engine, a header made once per transfer and given
// each chunk's place, and a sender that paces every chunk by the display
// interlock as velatrix_set_display_chunk does.
#pragma once

#include <cstddef>
#include <cstdint>

#include "protocol/report_fields.h"
#include "velatrix/display.h"

namespace velatrix::display {

using Chunk = velatrix_display_chunk;

// Id, x, y, width and height (big-endian), the depth, then the pixels.
inline constexpr protocol::Field kChunkRows[] = {
    VELATRIX_HIDDEN_ROW(Chunk, report_id, protocol::u8(0)),
    VELATRIX_HIDDEN_ROW(Chunk, x, protocol::u16be(1)),
    VELATRIX_HIDDEN_ROW(Chunk, y, protocol::u16be(3)),
    VELATRIX_HIDDEN_ROW(Chunk, width, protocol::u16be(5)),
    VELATRIX_HIDDEN_ROW(Chunk, height, protocol::u16be(7)),
    VELATRIX_HIDDEN_ROW(Chunk, bits_per_pixel, protocol::u8(9)),
    VELATRIX_HIDDEN_ROW(Chunk, data, protocol::raw(10, VELATRIX_DISPLAY_CHUNK_DATA_SIZE)),
};
inline constexpr const protocol::Field& kChunkX = kChunkRows[1];
inline constexpr const protocol::Field& kChunkY = kChunkRows[2];
inline constexpr const protocol::Field& kChunkWidth = kChunkRows[3];
inline constexpr const protocol::Field& kChunkHeight = kChunkRows[4];
inline constexpr const protocol::Field& kChunkData = kChunkRows[6];

inline constexpr protocol::ReportLayout kChunkLayout =
    protocol::layout_of<Chunk>(protocol::report_id::kDisplayChunk, "", kChunkRows);
static_assert(protocol::layout_fits(kChunkLayout));
inline constexpr size_t kChunkReportLength = kChunkLayout.length;
inline constexpr size_t kChunkDataOffset = kChunkData.wire.offset;
static_assert(kChunkDataOffset + VELATRIX_DISPLAY_CHUNK_DATA_SIZE == kChunkReportLength);

// The header of every chunk of one transfer, packed once from its rows;
// each chunk copies it and writes its own place and size.
class ChunkHeader {
public:
    explicit ChunkHeader(uint8_t bits_per_pixel);

    void write(uint8_t* report, uint32_t x, uint32_t y, uint32_t width, uint32_t height) const {
        for (size_t i = 0; i < kChunkDataOffset; ++i) report[i] = bytes_[i];
        protocol::put_number(kChunkX.wire, report, x);
        protocol::put_number(kChunkY.wire, report, y);
        protocol::put_number(kChunkWidth.wire, report, width);
        protocol::put_number(kChunkHeight.wire, report, height);
    }

private:
    uint8_t bytes_[kChunkDataOffset] = {};
};

// Sends the chunk reports of one transfer, each after the display
// interlock wait, with the log records velatrix_set_display_chunk makes.
// Whether anyone takes those records is asked once, when the sender is
// made: when nobody does, the chunks go straight to the driver without
// making them (same requests, same waits, same errors).
class ChunkSender {
public:
    explicit ChunkSender(velatrix_device* device);

    // `report` holds kChunkReportLength bytes. 1 when it was sent.
    int send(uint8_t* report);

private:
    bool wait_until_ready(velatrix_device_driver& driver);

    velatrix_device* device_;
    bool quiet_;
    uint8_t status_[protocol::report_length(protocol::report_id::kDeviceStatus)];
};

}  // namespace velatrix::display
