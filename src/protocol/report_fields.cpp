#include "protocol/report_fields.h"

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <string>
#include <type_traits>
#include <vector>

#include "debug/log.h"
#include "velatrix/transport.h"

namespace velatrix::protocol {
namespace {

// A record member of `Unsigned`'s width, widened as its slot says.
template <class Unsigned>
int64_t load_as(const uint8_t* at, bool is_signed) {
    Unsigned value;
    std::memcpy(&value, at, sizeof value);
    return is_signed ? int64_t{static_cast<std::make_signed_t<Unsigned>>(value)} : static_cast<int64_t>(value);
}

template <class Unsigned>
void store_as(uint8_t* at, uint64_t bits) {
    const auto value = static_cast<Unsigned>(bits);
    std::memcpy(at, &value, sizeof value);
}

int64_t load(const Slot& slot, const void* record) {
    const auto* at = static_cast<const uint8_t*>(record) + slot.offset;
    switch (slot.size) {
        case 1: return load_as<uint8_t>(at, slot.is_signed);
        case 2: return load_as<uint16_t>(at, slot.is_signed);
        case 4: return load_as<uint32_t>(at, slot.is_signed);
        case 8: return load_as<uint64_t>(at, true);
        default: return 0;
    }
}

void store(const Slot& slot, void* record, int64_t value) {
    auto* at = static_cast<uint8_t*>(record) + slot.offset;
    const auto bits = static_cast<uint64_t>(value);
    switch (slot.size) {
        case 1: store_as<uint8_t>(at, bits); break;
        case 2: store_as<uint16_t>(at, bits); break;
        case 4: store_as<uint32_t>(at, bits); break;
        case 8: store_as<uint64_t>(at, bits); break;
        default: break;
    }
}

// The formats come from the report tables; the argument type follows the
// conversion so that "%ld" gets a long and "%u" an unsigned.
void print_number(const char* format, int64_t value) {
    const char* conversion = std::strchr(format, '%');
    bool is_long = false;
    char kind = 'd';
    if (conversion != nullptr) {
        for (const char* c = conversion + 1; *c != '\0'; ++c) {
            if (*c == 'l') is_long = true;
            if (std::strchr("diuxX", *c) != nullptr) {
                kind = *c;
                break;
            }
        }
    }
    const bool is_signed = kind == 'd' || kind == 'i';
    if (is_long) {
        if (is_signed) std::printf(format, static_cast<long>(value));
        else std::printf(format, static_cast<unsigned long>(value));
    } else {
        if (is_signed) std::printf(format, static_cast<int>(value));
        else std::printf(format, static_cast<unsigned>(value));
    }
}

void print_field(const Field& field, int width, const char* separator, const uint8_t* record) {
    if (field.print == PrintKind::kHexDump) {
        std::printf("%*s =\n", width, field.label);
        for (uint16_t i = 0; i < field.slot.size; ++i) {
            std::printf("%02x ", record[field.slot.offset + i]);
            if (i % 8 == 7) std::printf("\n");
        }
        if (field.slot.size % 8 != 0) std::printf("\n");
        return;
    }
    if (field.print == PrintKind::kHexRun) {
        std::printf("%*s =\n", width, field.label);
        for (uint16_t i = 0; i < field.slot.size; ++i) std::printf(field.format, record[field.slot.offset + i]);
        return;
    }
    std::printf("%*s%s", width, field.label, separator);
    switch (field.print) {
        case PrintKind::kNumber:
            print_number(field.format, load(field.slot, record));
            break;
        case PrintKind::kText: {
            // The record's text need not be terminated; never read past it.
            const auto* begin = reinterpret_cast<const char*>(record + field.slot.offset);
            const std::string text(begin, strnlen(begin, field.slot.size));
            std::printf(field.format, text.c_str());
            break;
        }
        case PrintKind::kDotted:
            for (uint16_t i = 0; i < field.slot.size; ++i) {
                if (i > 0) std::printf(".");
                std::printf(field.format, record[field.slot.offset + i]);
            }
            break;
        case PrintKind::kNamed: {
            const auto value = static_cast<int>(load(field.slot, record));
            const bool known = value >= 0 && static_cast<size_t>(value) < field.names.size();
            std::printf(field.format, value, known ? field.names[static_cast<size_t>(value)] : "UNKNOWN");
            break;
        }
        case PrintKind::kNameOnly: {
            const auto value = load(field.slot, record);
            const bool known = value >= 0 && static_cast<size_t>(value) < field.names.size();
            std::printf(field.format, known ? field.names[static_cast<size_t>(value)] : "");
            break;
        }
        case PrintKind::kBitOf:
            std::printf(field.format, static_cast<int>((load(field.slot, record) >> field.bit) & 1));
            break;
        case PrintKind::kColour: {
            const auto value = static_cast<uint32_t>(load(field.slot, record));
            std::printf(field.format, value & 0xFF, value >> 24, (value >> 16) & 0xFF, (value >> 8) & 0xFF);
            break;
        }
        case PrintKind::kHidden:
        case PrintKind::kHexDump:
        case PrintKind::kHexRun:
            break;
    }
    std::printf("\n");
}

}  // namespace

void unpack_report(const ReportLayout& layout, std::span<const uint8_t> buffer, void* record) {
    unpack_fields(layout.fields, buffer, record);
}

void unpack_fields(std::span<const Field> fields, std::span<const uint8_t> buffer, void* record) {
    for (const Field& field : fields) {
        const Wire& wire = field.wire;
        switch (wire.kind) {
            case WireKind::kNone:
            case WireKind::kConst:
                break;
            case WireKind::kByte:
                store(field.slot, record, buffer[wire.offset]);
                break;
            case WireKind::kWord:
                store(field.slot, record, get2(buffer.data(), wire.offset));
                break;
            case WireKind::kLong:
                store(field.slot, record, get4(buffer.data(), wire.offset));
                break;
            case WireKind::kBits:
            case WireKind::kFlag: {
                const unsigned mask = (1u << wire.width) - 1;
                store(field.slot, record, (buffer[wire.offset] >> wire.shift) & mask);
                break;
            }
            case WireKind::kMasked:
                store(field.slot, record, buffer[wire.offset] & wire.value);
                break;
            case WireKind::kWordBE:
                store(field.slot, record, buffer[wire.offset] << 8 | buffer[wire.offset + 1]);
                break;
            case WireKind::kBytes:
                std::memcpy(static_cast<uint8_t*>(record) + field.slot.offset, buffer.data() + wire.offset,
                            wire.width);
                break;
        }
    }
}

void pack_report(const ReportLayout& layout, const void* record, std::span<uint8_t> buffer) {
    buffer[0] = layout.id;
    pack_fields(layout.fields, record, buffer);
    // The report id row (if any) copied the record's id; the layout's wins.
    buffer[0] = layout.id;
}

void pack_fields(std::span<const Field> fields, const void* record, std::span<uint8_t> buffer) {
    for (const Field& field : fields) {
        const Wire& wire = field.wire;
        switch (wire.kind) {
            case WireKind::kNone:
                break;
            case WireKind::kByte:
                buffer[wire.offset] = static_cast<uint8_t>(load(field.slot, record));
                break;
            case WireKind::kWord:
                put2(buffer.data(), wire.offset, static_cast<int32_t>(load(field.slot, record)));
                break;
            case WireKind::kLong:
                put4(buffer.data(), wire.offset, load(field.slot, record));
                break;
            case WireKind::kBits:
                // Unmasked on purpose: a value wider than its field spills
                // into the neighbouring bits, as the pad's tools expect.
                buffer[wire.offset] |=
                    static_cast<uint8_t>(static_cast<uint64_t>(load(field.slot, record)) << wire.shift);
                break;
            case WireKind::kFlag:
                if (load(field.slot, record) != 0) buffer[wire.offset] |= static_cast<uint8_t>(1u << wire.shift);
                break;
            case WireKind::kBytes:
                std::memcpy(buffer.data() + wire.offset, static_cast<const uint8_t*>(record) + field.slot.offset,
                            wire.width);
                break;
            case WireKind::kConst:
                buffer[wire.offset] |= wire.value;
                break;
            case WireKind::kMasked:
                buffer[wire.offset] |= static_cast<uint8_t>(load(field.slot, record) & wire.value);
                break;
            case WireKind::kWordBE:
                put_number(wire, buffer.data(), static_cast<uint32_t>(load(field.slot, record)));
                break;
        }
    }
}

bool read_report(velatrix_device* device, const ReportLayout& layout, void* record, const char* function) {
    std::memset(record, 0, layout.record_size);
    std::vector<uint8_t> buffer(layout.length, 0);
    buffer[0] = layout.id;
    if (velatrix_hid_get_feature_report(device, buffer.data(), layout.length) != 1) {
        if (function != nullptr) {
            velatrix_debug_report_message(function, kLogCore, __LINE__, VELATRIX_LEVEL_WARNING,
                                          "Unable to get report: %s", velatrix_get_last_error());
        }
        return false;
    }
    unpack_report(layout, buffer, record);
    if (layout.after_read != nullptr) layout.after_read(buffer, record);
    return true;
}

int write_report(velatrix_device* device, const ReportLayout& layout, const void* record) {
    std::vector<uint8_t> buffer(layout.length, 0);
    pack_report(layout, record, buffer);
    return velatrix_hid_set_feature_report(device, buffer.data(), layout.length) == 1 ? 1 : 0;
}

void print_report(const ReportLayout& layout, const void* record) {
    std::printf("%s", layout.header);
    if (record == nullptr) {
        std::printf("  NULL\n");
        return;
    }
    print_fields(layout.fields, record, layout.style);
}

void print_fields(std::span<const Field> fields, const void* record, const PrintStyle& style) {
    size_t width = static_cast<size_t>(style.width);
    if (width == 0 && style.aligned) {
        for (const Field& field : fields) {
            if (field.print != PrintKind::kHidden) width = std::max(width, std::strlen(field.label));
        }
    }
    for (const Field& field : fields) {
        if (field.print != PrintKind::kHidden)
            print_field(field, static_cast<int>(width), style.separator, static_cast<const uint8_t*>(record));
    }
}

}  // namespace velatrix::protocol
