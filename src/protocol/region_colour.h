// Colours of region records: four wire bytes red, green, blue, alpha; in the
// record one value 0xRRGGBBAA. Each wire byte is described as a byte field
// whose slot is the record byte holding that component, so the generic
// report code moves colours without a special case, on any host byte order.
#pragma once

#include <bit>
#include <cstddef>
#include <cstdint>

#include "protocol/report_fields.h"

namespace velatrix::protocol {

// `shift` is the component's place in 0xRRGGBBAA: 24 red, 16 green, 8 blue, 0 alpha.
constexpr Slot colour_component(size_t member_offset, unsigned shift) {
    const unsigned index = std::endian::native == std::endian::little ? shift / 8 : 3 - shift / 8;
    return Slot{static_cast<uint16_t>(member_offset + index), 1, false};
}

// One hidden byte row per component of the colour whose red byte travels
// at `wire_offset`.
#define VELATRIX_COLOUR_COMPONENT(Record, member, wire, shift)                                 \
    ::velatrix::protocol::Field {                                                              \
        #member, ::velatrix::protocol::u8(wire),                                               \
            ::velatrix::protocol::colour_component(offsetof(Record, member), shift),           \
            ::velatrix::protocol::PrintKind::kHidden                                           \
    }
#define VELATRIX_COLOUR_FIELDS(Record, member, wire_offset)                                    \
    VELATRIX_COLOUR_COMPONENT(Record, member, (wire_offset), 24),                              \
        VELATRIX_COLOUR_COMPONENT(Record, member, (wire_offset) + 1, 16),                      \
        VELATRIX_COLOUR_COMPONENT(Record, member, (wire_offset) + 2, 8),                       \
        VELATRIX_COLOUR_COMPONENT(Record, member, (wire_offset) + 3, 0)

}  // namespace velatrix::protocol
