// Makers of the C API functions of a report family, so that every family
// reads, fills and prints through the same generic code and logs the same
// entering and leaving lines.
#pragma once

#include "debug/log.h"
#include "protocol/report_fields.h"

// velatrix_get_N(device): the record by value, zeroed when the read failed.
#define VELATRIX_DEFINE_REPORT_GET(name, Record, layout)                         \
    Record velatrix_get_##name(velatrix_device* device) {                         \
        VELATRIX_TRACE_FUNCTION();                                                \
        Record record;                                                            \
        ::velatrix::protocol::read_report(device, layout, &record, __func__);     \
        return record;                                                            \
    }

// velatrix_get_N_ref(device, record): a copy of what velatrix_get_N returns.
#define VELATRIX_DEFINE_REPORT_REF_FROM_GET(name, Record)                         \
    void velatrix_get_##name##_ref(velatrix_device* device, Record* record) {     \
        VELATRIX_TRACE_FUNCTION();                                                \
        if (record == nullptr) return;                                            \
        *record = velatrix_get_##name(device);                                    \
    }

// The other way round: the _ref form reads, the plain get returns its copy.
#define VELATRIX_DEFINE_REPORT_REF(name, Record, layout)                          \
    void velatrix_get_##name##_ref(velatrix_device* device, Record* record) {     \
        VELATRIX_TRACE_FUNCTION();                                                \
        if (record == nullptr) return;                                            \
        ::velatrix::protocol::read_report(device, layout, record, __func__);      \
    }
#define VELATRIX_DEFINE_REPORT_GET_FROM_REF(name, Record)                         \
    Record velatrix_get_##name(velatrix_device* device) {                         \
        VELATRIX_TRACE_FUNCTION();                                                \
        Record record;                                                            \
        velatrix_get_##name##_ref(device, &record);                               \
        return record;                                                            \
    }

#define VELATRIX_DEFINE_REPORT_SET(name, Record, layout)                          \
    int velatrix_set_##name(velatrix_device* device, Record record) {             \
        VELATRIX_TRACE_FUNCTION();                                                \
        return ::velatrix::protocol::write_report(device, layout, &record);       \
    }

#define VELATRIX_DEFINE_REPORT_PRINT(name, Record, layout)                        \
    void velatrix_print_##name(const Record* record) {                            \
        VELATRIX_TRACE_FUNCTION();                                                \
        ::velatrix::protocol::print_report(layout, record);                       \
    }
