// The built-in fonts by name, so that callers and settings can pick one.
#include <array>
#include <cstring>

#include "debug/log.h"
#include "velatrix/fonts.h"

namespace {

struct NamedFont {
    const char* name;
    const velatrix_font* font;
};

const std::array<NamedFont, 5> kBuiltInFonts{{
    {"velatrix_default", &velatrix_default},
    {"ubuntu_mono_e_12pt", &ubuntu_mono_e_12pt},
    {"ubuntu_mono_e_16pt", &ubuntu_mono_e_16pt},
    {"ubuntu_mono_e_24pt", &ubuntu_mono_e_24pt},
    {"ubuntu_mono_e_30pt", &ubuntu_mono_e_30pt},
}};

}  // namespace

extern "C" const velatrix_font* velatrix_find_font(const char* name) {
    VELATRIX_TRACE_FUNCTION();
    if (name == nullptr) {
        VELATRIX_REPORT_ERROR("Font name is null.");
        return nullptr;
    }
    for (const NamedFont& entry : kBuiltInFonts) {
        if (std::strcmp(entry.name, name) == 0) return entry.font;
    }
    VELATRIX_REPORT_ERROR("Unknown font \"%s\".", name);
    return nullptr;
}
