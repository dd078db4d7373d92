// What both region generations share when printed: the lines are the rows
// of their wire tables (labelled, right-aligned to 19 with ": "), under a
// header line per region.
#pragma once

#include <cstdio>

#include "protocol/report_fields.h"

namespace velatrix::protocol {

inline constexpr PrintStyle kRegionStyle{19, ": "};
inline constexpr const char* kRegionTypeNames[] = {"Container", "Button", "Line", "Graphic", "Text"};
inline constexpr const char* kColourFormat = "#%02x%02x%02x%02x";

// A wire row with the label it prints under.
#define VELATRIX_LABELLED_ROW(Record, member, wire, label, format)                                         \
    ::velatrix::protocol::Field {                                                                          \
        label, wire, VELATRIX_SLOT(Record, member), ::velatrix::protocol::PrintKind::kNumber, format       \
    }
#define VELATRIX_REGION_TYPE_ROW(Record, wire)                                                             \
    ::velatrix::protocol::Field {                                                                          \
        "Type", wire, VELATRIX_SLOT(Record, type), ::velatrix::protocol::PrintKind::kNameOnly, "%s",       \
            ::velatrix::protocol::kRegionTypeNames                                                         \
    }
#define VELATRIX_COLOUR_LINE(Record, member, label) \
    ::velatrix::protocol::shown(label, VELATRIX_SLOT(Record, member), ::velatrix::protocol::kColourFormat, \
                                ::velatrix::protocol::PrintKind::kColour)

// Both generations print under the same header; a region's type picks the
// layout of its own lines (none for an unknown type).
template <class Record>
void print_region_records(const Record* records, uint32_t count, const ReportLayout& common,
                          const ReportLayout* (*type_layout)(uint32_t type)) {
    std::printf("velatrix_device_region_info structure:\n");
    if (records == nullptr) {
        std::printf("  NULL\n");
        return;
    }
    for (uint32_t i = 0; i < count; ++i) {
        const Record& record = records[i];
        std::printf("   Region %u:\n", static_cast<unsigned>(record.number));
        print_fields(common.fields, &record, kRegionStyle);
        if (const ReportLayout* specific = type_layout(record.type)) print_fields(specific->fields, &record, kRegionStyle);
    }
}

}  // namespace velatrix::protocol
