// Shared by the files of the velatrix_virtual_* C API.
#pragma once

#include <memory>

#include "debug/log.h"
#include "velatrix-virtual.h"
#include "virtual/virtual_bus.h"

namespace velatrix::virtual_pad {

// The plugged-in pad of that id, or null with the last error set.
inline std::shared_ptr<VirtualPad> pad_or_error(velatrix_virtual_pad id) {
    std::shared_ptr<VirtualPad> pad = VirtualBus::instance().find(id);
    if (pad == nullptr) VELATRIX_REPORT_ERROR("No virtual pad with id %d", id);
    return pad;
}

inline bool argument_given(const void* pointer, const char* name) {
    if (pointer != nullptr) return true;
    VELATRIX_REPORT_ERROR("Argument %s must not be null", name);
    return false;
}

}  // namespace velatrix::virtual_pad
