// The parameter reports `info` prints and `config` reads and writes: one row
// per report (its name, its C API functions) and one row per field of its
// public record (name, place, width, signedness).
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>

#include "velatrix-quillmark.h"

namespace quillmark {

struct ConfigField {
    const char* name;
    uint16_t offset;
    uint8_t size;
    bool is_signed;
};

struct ConfigReport {
    const char* name;
    size_t size;  // of the C record
    bool (*read)(velatrix_device* device, void* record);  // false when the read failed
    bool (*write)(velatrix_device* device, const void* record);
    void (*print)(const void* record);
    std::span<const ConfigField> fields;
};

std::span<const ConfigReport> config_reports();

}  // namespace quillmark
