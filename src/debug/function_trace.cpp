#include "debug/log.h"

#include <cstdarg>
#include <cstdio>

#include "debug/state.h"

namespace velatrix {

FunctionTrace::FunctionTrace(const char* function, const char* file, int line)
    : function_(function), file_(file), line_(line) {
    velatrix_debug_report_message(function_, file_, line_, VELATRIX_LEVEL_FINEST, "==> Entering Function");
}

FunctionTrace::~FunctionTrace() {
    velatrix_debug_report_message(function_, file_, line_, VELATRIX_LEVEL_FINEST, "<== Leaving Function");
}

bool log_records_wanted(uint32_t level) {
    return level >= debug::maxLevel.load(std::memory_order_relaxed) && debug::is_initialised();
}

int report_error_at(const char* function, const char* file, int line, const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    char text[VELATRIX_ERROR_BUFFER_SIZE];
    const int result = std::vsnprintf(text, sizeof text, format, arguments);
    va_end(arguments);
    velatrix_report_error_internal("%s", text);
    velatrix_debug_report_message(function, file, line, VELATRIX_LEVEL_WARNING, "Error reported: %s",
                                  velatrix_get_last_error());
    return result;
}

}  // namespace velatrix
