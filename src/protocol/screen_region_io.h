// Transfers of the region, screen and resource reports, paced by the
// interlock waits the report index gives for each report, so that no
// operation carries its own copy of a wait.
#pragma once

#include <cstdint>
#include <span>

#include "protocol/report_fields.h"
#include "protocol/report_index.h"
#include "velatrix/device.h"

namespace velatrix::protocol {

// Waits `wait` out; no wait at all passes at once.
bool wait_for(velatrix_device* device, InterlockWait wait);

// Waits as the index says for a get of buffer[0], then reads the report into
// the buffer. True when both succeeded.
bool fetch_report(velatrix_device* device, std::span<uint8_t> buffer);

// Waits as the index says before (and after) a set of buffer[0] and sends the
// buffer. 1 when every wait and the send succeeded, else 0; a failed send
// skips the wait after, keeping the transport's message as the last error.
int send_report(velatrix_device* device, std::span<uint8_t> buffer);

// Two-byte reports carrying one value after the id: index registers,
// delete commands, the active screen.
int get_value_report(velatrix_device* device, uint8_t id);  // the value, or -1
int set_value_report(velatrix_device* device, uint8_t id, uint8_t value);

// Fixed-length records whose first member is the report id. read_record
// zeroes the record, fetches the layout's report and fills the record,
// marking it with the layout's id; a failed read leaves it all zero.
// write_record packs the record into a zeroed buffer and sends it.
bool read_record(velatrix_device* device, const ReportLayout& layout, void* record);
int write_record(velatrix_device* device, const ReportLayout& layout, const void* record);

}  // namespace velatrix::protocol
