// Internal logging helpers every layer uses: the entering/leaving guard of
// the C API functions and error reporting with its warning line.
#pragma once

#include "velatrix/debug.h"
#include "velatrix/error.h"

namespace velatrix {

// Source locations printed in log records, one per part of the library.
inline constexpr const char* kLogCore = "src/velatrix-quillmark";
inline constexpr const char* kLogDebug = "src/velatrix-debug";
inline constexpr const char* kLogHost = "src/velatrix-quillmark-linux";

// Logs "==> Entering Function" when made and "<== Leaving Function" when it
// goes out of scope, so an early return cannot skip the leaving record.
class FunctionTrace {
public:
    FunctionTrace(const char* function, const char* file, int line);
    ~FunctionTrace();
    FunctionTrace(const FunctionTrace&) = delete;
    FunctionTrace& operator=(const FunctionTrace&) = delete;

private:
    const char* function_;
    const char* file_;
    int line_;
};

// True when a record at `level` would reach the handlers now: the test
// every record makes first. A path that would make a long run of records
// (a frame's chunks) asks once and, when none would go anywhere, takes a
// quiet way that makes none.
bool log_records_wanted(uint32_t level);

// Stores the message as the last error and logs "Error reported: %s" at WARNING.
int report_error_at(const char* function, const char* file, int line, const char* format, ...)
    VELATRIX_PRINTF(4, 5);

}  // namespace velatrix

#define VELATRIX_TRACE_FUNCTION_IN(file) ::velatrix::FunctionTrace velatrix_function_trace_(__func__, file, __LINE__)
#define VELATRIX_TRACE_FUNCTION() VELATRIX_TRACE_FUNCTION_IN(::velatrix::kLogCore)

#define VELATRIX_LOG_IN(file, level, ...) velatrix_debug_report_message(__func__, file, __LINE__, level, __VA_ARGS__)
#define VELATRIX_LOG(level, ...) VELATRIX_LOG_IN(::velatrix::kLogCore, level, __VA_ARGS__)

#define VELATRIX_REPORT_ERROR_IN(file, ...) ::velatrix::report_error_at(__func__, file, __LINE__, __VA_ARGS__)
#define VELATRIX_REPORT_ERROR(...) VELATRIX_REPORT_ERROR_IN(::velatrix::kLogCore, __VA_ARGS__)
