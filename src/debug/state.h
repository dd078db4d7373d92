// Process-wide state of the debug log and the traffic trace, shared by the
// files of the diagnostics module. Plain globals by design: the log is set
// up once at start-up, and afterwards only read while records are reported.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstdio>

#include "velatrix/debug.h"

namespace velatrix::debug {

// The flag and the threshold are the only state read on every call site;
// relaxed atomics keep that read one plain load and free of data races.
extern std::atomic<bool> initDone;
extern std::atomic<uint32_t> maxLevel;

extern bool debugEnabled;
extern uint32_t debugLevel;
extern bool traceEnabled;
extern char* debugPath;
extern char* debugFile;
extern char* traceFile;
extern FILE* traceHandle;
extern velatrix_debug_trace_read_operation traceReadFunc;
extern velatrix_debug_trace_write_operation traceWriteFunc;
extern const char* label;
extern velatrix_list* handlers;

inline bool is_initialised() { return initDone.load(std::memory_order_relaxed); }

// Closes the trace file and drops its name, under the lock the trace
// writers hold: a record on another thread then finds nothing to write to
// and nothing to open.
void close_trace();

// Frees an owned string global and clears it.
void release(char*& text);

// "directory/name" ("%s%c%s") as owned text, or null when either part is
// missing or memory runs out.
char* join_path(const char* directory, const char* name);

// Opens a file the library writes for writing, truncating it, but never
// through a symbolic link: a link at the path leaves the file unwritten.
FILE* open_output_file(const char* path, const char* mode);

}  // namespace velatrix::debug
