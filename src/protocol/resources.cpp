// Resources: texts and graphics stored on the pad, read and written one
// chunk of at most 1024 bytes at a time through report 0x8E, selected by
// the resource index (0x8C), described by 0x8D and 0x90.
#include <algorithm>
#include <cstdint>

#include "debug/log.h"
#include "protocol/report_fields.h"
#include "protocol/screen_region_io.h"
#include "velatrix/screens.h"

namespace velatrix::protocol {
namespace {

using Chunk = velatrix_hid_feature_resource;
using Info = velatrix_hid_feature_resource_info;
using Availability = velatrix_hid_feature_resource_availability;

// Sizes travel as unsigned 32 bits; the records widen them to 64 without a sign.
uint64_t unsigned32(uint64_t value) { return static_cast<uint32_t>(value); }

void after_chunk_read(std::span<const uint8_t>, void* record) {
    auto* chunk = static_cast<Chunk*>(record);
    chunk->resource_size = unsigned32(chunk->resource_size);
    chunk->reserved2 = unsigned32(chunk->reserved2);
    // A chunk never claims more valid bytes than it can hold.
    chunk->chunk_length = std::min<uint16_t>(chunk->chunk_length, VELATRIX_RESOURCE_CHUNK_SIZE);
}

constexpr Field kChunkFields[] = {
    VELATRIX_HIDDEN_ROW(Chunk, resource_number, u8(1)),
    VELATRIX_HIDDEN_ROW(Chunk, resource_type, u8(2)),
    VELATRIX_HIDDEN_ROW(Chunk, reserved1, raw(3, 2)),
    VELATRIX_HIDDEN_ROW(Chunk, resource_size, u32(5)),
    VELATRIX_HIDDEN_ROW(Chunk, reserved2, u32(9)),
    VELATRIX_HIDDEN_ROW(Chunk, reserved3, raw(13, 6)),
    VELATRIX_HIDDEN_ROW(Chunk, chunk_length, u16(19)),
    VELATRIX_HIDDEN_ROW(Chunk, data, raw(21, VELATRIX_RESOURCE_CHUNK_SIZE)),
};
constexpr ReportLayout kChunkLayout = layout_of<Chunk>(report_id::kResource, "", kChunkFields, &after_chunk_read);
static_assert(layout_fits(kChunkLayout));

void after_info_read(std::span<const uint8_t>, void* record) {
    auto* info = static_cast<Info*>(record);
    info->resource_size = unsigned32(info->resource_size);
    info->unknown2 = unsigned32(info->unknown2);
}

constexpr Field kInfoFields[] = {
    VELATRIX_HIDDEN_ROW(Info, resource_number, u8(1)),
    VELATRIX_HIDDEN_ROW(Info, resource_type, u8(2)),
    VELATRIX_HIDDEN_ROW(Info, unknown1, u8(3)),
    VELATRIX_HIDDEN_ROW(Info, resource_size, u32(4)),
    VELATRIX_HIDDEN_ROW(Info, unknown2, u32(8)),
    VELATRIX_HIDDEN_ROW(Info, reserved, raw(12, 8)),
};
constexpr ReportLayout kInfoLayout = layout_of<Info>(report_id::kResourceInfo, "", kInfoFields, &after_info_read);
static_assert(layout_fits(kInfoLayout));

void after_availability_read(std::span<const uint8_t>, void* record) {
    auto* availability = static_cast<Availability*>(record);
    availability->unknown2 = unsigned32(availability->unknown2);
}

// The twelve bytes from byte 6 widen to the record's 32-bit list entries.
#define VELATRIX_AVAILABILITY_ENTRY(i) VELATRIX_HIDDEN_ROW(Availability, list[i], u8(6 + (i)))
constexpr Field kAvailabilityFields[] = {
    VELATRIX_HIDDEN_ROW(Availability, unknown1, u8(1)),
    VELATRIX_HIDDEN_ROW(Availability, unknown2, u32(2)),
    VELATRIX_AVAILABILITY_ENTRY(0),
    VELATRIX_AVAILABILITY_ENTRY(1),
    VELATRIX_AVAILABILITY_ENTRY(2),
    VELATRIX_AVAILABILITY_ENTRY(3),
    VELATRIX_AVAILABILITY_ENTRY(4),
    VELATRIX_AVAILABILITY_ENTRY(5),
    VELATRIX_AVAILABILITY_ENTRY(6),
    VELATRIX_AVAILABILITY_ENTRY(7),
    VELATRIX_AVAILABILITY_ENTRY(8),
    VELATRIX_AVAILABILITY_ENTRY(9),
    VELATRIX_AVAILABILITY_ENTRY(10),
    VELATRIX_AVAILABILITY_ENTRY(11),
};
#undef VELATRIX_AVAILABILITY_ENTRY
constexpr ReportLayout kAvailabilityLayout =
    layout_of<Availability>(report_id::kResourceAvailability, "", kAvailabilityFields, &after_availability_read);
static_assert(layout_fits(kAvailabilityLayout));

// The plain getters return a copy of what the _ref form read.
template <class Record>
Record* copy_out(Record* destination, const Record& read) {
    if (destination == nullptr) return nullptr;
    *destination = read;
    return destination;
}

}  // namespace
}  // namespace velatrix::protocol

using namespace velatrix::protocol;

extern "C" {

void velatrix_get_resource_availability_ref(velatrix_device* device,
                                            velatrix_hid_feature_resource_availability* availability) {
    VELATRIX_TRACE_FUNCTION();
    if (availability == nullptr) return;
    read_record(device, kAvailabilityLayout, availability);
}

velatrix_hid_feature_resource_availability* velatrix_get_resource_availability(
    velatrix_device* device, velatrix_hid_feature_resource_availability* availability) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_hid_feature_resource_availability read{};
    velatrix_get_resource_availability_ref(device, &read);
    return copy_out(availability, read);
}

int velatrix_get_resource_idx(velatrix_device* device) {
    VELATRIX_TRACE_FUNCTION();
    return get_value_report(device, report_id::kResourceIndex);
}

int velatrix_set_resource_idx(velatrix_device* device, uint8_t index) {
    VELATRIX_TRACE_FUNCTION();
    return set_value_report(device, report_id::kResourceIndex, index);
}

void velatrix_get_resource_info_ref(velatrix_device* device, velatrix_hid_feature_resource_info* info) {
    VELATRIX_TRACE_FUNCTION();
    if (info == nullptr) return;
    read_record(device, kInfoLayout, info);
}

velatrix_hid_feature_resource_info* velatrix_get_resource_info(velatrix_device* device,
                                                               velatrix_hid_feature_resource_info* info) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_hid_feature_resource_info read{};
    velatrix_get_resource_info_ref(device, &read);
    return copy_out(info, read);
}

void velatrix_get_resource_ref(velatrix_device* device, velatrix_hid_feature_resource* chunk) {
    VELATRIX_TRACE_FUNCTION();
    if (chunk == nullptr) return;
    read_record(device, kChunkLayout, chunk);
}

velatrix_hid_feature_resource* velatrix_get_resource(velatrix_device* device, velatrix_hid_feature_resource* chunk) {
    VELATRIX_TRACE_FUNCTION();
    velatrix_hid_feature_resource read{};
    velatrix_get_resource_ref(device, &read);
    return copy_out(chunk, read);
}

int velatrix_set_resource(velatrix_device* device, const velatrix_hid_feature_resource* chunk) {
    VELATRIX_TRACE_FUNCTION();
    if (chunk == nullptr) {
        VELATRIX_REPORT_ERROR("Resource was null, unable to send it.");
        return 0;
    }
    return write_record(device, kChunkLayout, chunk);
}

int velatrix_delete_resource(velatrix_device* device, uint8_t resource_number) {
    VELATRIX_TRACE_FUNCTION();
    return set_value_report(device, report_id::kResourceDelete, resource_number);
}

}  // extern "C"
