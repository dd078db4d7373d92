// A report described once: where each field sits on the wire, where it sits
// in the C record, and how it is printed. Reading, writing and printing are
// generic code driven by these tables; the few oddities of single reports
// are hooks or extra rows next to their table.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "protocol/report_index.h"
#include "velatrix/device.h"

namespace velatrix::protocol {

// How a field travels on the wire.
enum class WireKind : uint8_t {
    kNone,   // not on the wire: a row that only prints
    kByte,   // one byte; a write sends the record value's low byte
    kWord,   // 16 bits little-endian, read sign-extended (get2/put2)
    kLong,   // 32 bits little-endian, read sign-extended (get4/put4)
    kBits,   // `width` bits from bit `shift`; written shifted and OR-ed, unmasked
    kFlag,   // bit `shift`; written as 1 when the record value is non-zero
    kBytes,  // `width` raw bytes
    kConst,  // a fixed byte `value` OR-ed in on writes; reads ignore it
    kMasked, // the byte AND `value`, kept in place (not shifted down)
    kWordBE, // 16 bits big-endian, read unsigned (the display chunk header)
};

struct Wire {
    WireKind kind = WireKind::kNone;
    uint16_t offset = 0;
    uint8_t shift = 0;
    uint16_t width = 0;  // bits for kBits, bytes for kBytes
    uint8_t value = 0;   // kConst, kMasked
};

constexpr Wire none() { return {}; }
constexpr Wire u8(uint16_t offset) { return {WireKind::kByte, offset, 0, 1}; }
constexpr Wire u16(uint16_t offset) { return {WireKind::kWord, offset, 0, 2}; }
constexpr Wire u32(uint16_t offset) { return {WireKind::kLong, offset, 0, 4}; }
constexpr Wire bits(uint16_t offset, uint8_t first, uint8_t last) {
    return {WireKind::kBits, offset, first, static_cast<uint16_t>(last - first + 1)};
}
constexpr Wire bit(uint16_t offset, uint8_t which) { return bits(offset, which, which); }
constexpr Wire flag(uint16_t offset, uint8_t which) { return {WireKind::kFlag, offset, which, 1}; }
constexpr Wire raw(uint16_t offset, uint16_t count) { return {WireKind::kBytes, offset, 0, count}; }
constexpr Wire constant(uint16_t offset, uint8_t value) { return {WireKind::kConst, offset, 0, 1, value}; }
constexpr Wire masked(uint16_t offset, uint8_t mask) { return {WireKind::kMasked, offset, 0, 1, mask}; }
constexpr Wire u16be(uint16_t offset) { return {WireKind::kWordBE, offset, 0, 2}; }

// Writes a number where a byte, word or long row puts it (other kinds are
// left alone). Inline, so that a row known at compile time becomes its
// plain stores: code that sends a run of reports differing in a few fields
// packs one report with pack_fields and then patches those fields with this.
constexpr void put_number(const Wire& wire, uint8_t* buffer, uint32_t value) {
    switch (wire.kind) {
        case WireKind::kByte:
            buffer[wire.offset] = static_cast<uint8_t>(value);
            break;
        case WireKind::kWord:
            buffer[wire.offset] = static_cast<uint8_t>(value);
            buffer[wire.offset + 1] = static_cast<uint8_t>(value >> 8);
            break;
        case WireKind::kWordBE:
            buffer[wire.offset] = static_cast<uint8_t>(value >> 8);
            buffer[wire.offset + 1] = static_cast<uint8_t>(value);
            break;
        case WireKind::kLong:
            for (uint16_t i = 0; i < 4; ++i) buffer[wire.offset + i] = static_cast<uint8_t>(value >> (8 * i));
            break;
        default:
            break;
    }
}

// Where a field sits in the C record.
struct Slot {
    uint16_t offset = 0;
    uint16_t size = 0;
    bool is_signed = false;
};

#define VELATRIX_SLOT(Record, member)                                                              \
    ::velatrix::protocol::Slot {                                                                   \
        static_cast<uint16_t>(offsetof(Record, member)), static_cast<uint16_t>(sizeof(Record::member)), \
            std::is_signed_v<std::remove_all_extents_t<decltype(Record::member)>>                   \
    }

enum class PrintKind : uint8_t {
    kHidden,   // not printed
    kNumber,   // printf of `format` with the value
    kText,     // `format` with the bytes as a string, never beyond the slot
    kDotted,   // each byte with `format`, joined by '.'
    kHexDump,  // "<label> =" on its own line, then "%02x " per byte, eight a line
    kHexRun,   // "<label> =" on its own line, then `format` per byte, no line break
    kNamed,    // `format` ("%d: %s") with the value and its name from `names`
    kNameOnly, // `format` ("%s") with the value's name from `names`, "" when it has none
    kBitOf,    // `format` with bit `bit` of the record value (0 or 1)
    kColour,   // `format` with alpha, red, green, blue of a 0xRRGGBBAA value
};

struct Field {
    const char* label;
    Wire wire;
    Slot slot;
    PrintKind print = PrintKind::kNumber;
    const char* format = nullptr;  // the value part only: "%hu", "0x%02x", "'%s'"
    std::span<const char* const> names = {};
    uint8_t bit = 0;  // kBitOf
};

// How the lines of a print look: labels right-aligned to `width` (0: to the
// longest printed label; unaligned: as they are), then `separator`, then
// the value.
struct PrintStyle {
    int width = 0;
    const char* separator = " = ";
    bool aligned = true;
};

struct ReportLayout {
    uint8_t id;          // the report read or written with this layout
    uint16_t length;     // from the report index
    size_t record_size;  // sizeof the C record
    const char* header;  // first line of the print, newline included
    std::span<const Field> fields;
    // Runs after a successful read, with the answer and the filled record.
    void (*after_read)(std::span<const uint8_t> answer, void* record) = nullptr;
    PrintStyle style = {};
};

// Zeroes the record, reads the report and fills the record. On failure logs
// "Unable to get report: %s" at WARNING (with `function` as the log's
// function name; no line when it is null) and leaves the record zeroed.
bool read_report(velatrix_device* device, const ReportLayout& layout, void* record, const char* function);

// Packs the record into a zeroed buffer with the layout's id in byte 0
// (whatever the record's own report_id says) and sends it. Returns 1 when
// the transport returned 1, else 0.
int write_report(velatrix_device* device, const ReportLayout& layout, const void* record);

// Packs the record into `buffer` (which must hold layout.length bytes).
void pack_report(const ReportLayout& layout, const void* record, std::span<uint8_t> buffer);
// The rows alone, OR-ed into what the buffer holds; byte 0 is whatever a
// row puts there (pack_report then forces the layout's id).
void pack_fields(std::span<const Field> fields, const void* record, std::span<uint8_t> buffer);
void unpack_report(const ReportLayout& layout, std::span<const uint8_t> buffer, void* record);
// The rows alone, for records that are not feature reports (input reports).
// The buffer must hold every row's bytes.
void unpack_fields(std::span<const Field> fields, std::span<const uint8_t> buffer, void* record);

// Prints the header and one line per printed field with the labels
// right-aligned on the "=", or "  NULL\n" for a null record.
void print_report(const ReportLayout& layout, const void* record);

// True when every field fits in the report and in the record; the report
// tables check themselves with it at compile time.
constexpr bool layout_fits(const ReportLayout& layout) {
    for (const Field& field : layout.fields) {
        if (field.slot.offset + field.slot.size > layout.record_size) return false;
        const Wire& wire = field.wire;
        if (field.print == PrintKind::kNamed && field.names.empty()) return false;
        if (field.print != PrintKind::kHidden && (field.label == nullptr || field.format == nullptr) &&
            field.print != PrintKind::kHexDump)
            return false;
        if (wire.kind == WireKind::kConst && field.slot.size != 0)
            return false;
        if (wire.kind == WireKind::kNone) continue;
        const bool in_one_byte = wire.kind == WireKind::kBits || wire.kind == WireKind::kFlag;
        const uint16_t bytes = in_one_byte ? 1 : wire.width;
        if (wire.offset + bytes > layout.length) return false;
        if (in_one_byte && wire.shift + wire.width > 8) return false;
        if (wire.kind == WireKind::kBytes && wire.width > field.slot.size) return false;
    }
    return layout.length > 0;
}

// A layout whose length comes from the report index.
template <class Record, size_t N>
constexpr ReportLayout layout_of(uint8_t id, const char* header, const Field (&fields)[N],
                                 void (*after_read)(std::span<const uint8_t>, void*) = nullptr,
                                 PrintStyle style = {}) {
    return ReportLayout{id, report_length(id), sizeof(Record), header, fields, after_read, style};
}

// A fixed byte of a report that no record member holds.
constexpr Field fixed_byte(uint16_t offset, uint8_t value) {
    return Field{"", constant(offset, value), Slot{}, PrintKind::kHidden};
}

// One line per printed field, in table order.
void print_fields(std::span<const Field> fields, const void* record, const PrintStyle& style = {});

// A row that only prints (regions are packed by their own tables).
constexpr Field shown(const char* label, Slot slot, const char* format, PrintKind print = PrintKind::kNumber,
                      std::span<const char* const> names = {}) {
    return Field{label, none(), slot, print, format, names};
}

// A row whose label is the record member's name.
#define VELATRIX_ROW(Record, member, wire, format)                                                     \
    ::velatrix::protocol::Field {                                                                     \
        #member, wire, VELATRIX_SLOT(Record, member), ::velatrix::protocol::PrintKind::kNumber, format \
    }
#define VELATRIX_HIDDEN_ROW(Record, member, wire)                                                     \
    ::velatrix::protocol::Field {                                                                     \
        #member, wire, VELATRIX_SLOT(Record, member), ::velatrix::protocol::PrintKind::kHidden        \
    }

}  // namespace velatrix::protocol
