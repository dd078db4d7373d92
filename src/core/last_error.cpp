#include "velatrix/error.h"

#include <cstdarg>
#include <cstdio>

namespace {
// One process-wide buffer, deliberately unlocked: the text read after a
// failure may be another thread's.
char velatrix_error_buffer[VELATRIX_ERROR_BUFFER_SIZE];
}  // namespace

extern "C" {

int velatrix_report_error_internal(const char* format, ...) {
    va_list arguments;
    va_start(arguments, format);
    // A limit of 1023 keeps at most 1022 characters plus the terminator.
    const int result = std::vsnprintf(velatrix_error_buffer, VELATRIX_ERROR_BUFFER_SIZE - 1, format, arguments);
    va_end(arguments);
    return result;
}

const char* velatrix_get_last_error(void) { return velatrix_error_buffer; }

const char* velatrix_get_last_error_internal(void) { return velatrix_error_buffer; }

}  // extern "C"
