// Configuration of the debug log and the trace from the environment, read
// once at start-up, and the ${...} tokens of the file names.
#include <array>
#include <cstdlib>
#include <cstring>
#include <string>
#include <string_view>

#include "debug/state.h"

namespace velatrix::debug {
namespace {

constexpr const char* kDefaultDebugFile = "velatrix-debug-${label}-${pid}.log";
constexpr const char* kDefaultTraceFile = "velatrix-trace-${label}-${pid}.pcap";
constexpr const char* kDefaultDirectory = "/tmp/";

// Exact, case-sensitive: "True" or "Yes" are not among them.
bool is_yes(const char* value) {
    static constexpr std::array<std::string_view, 7> kYes = {"true", "TRUE", "1", "yes", "YES", "on", "ON"};
    if (value == nullptr) return false;
    for (std::string_view yes : kYes) {
        if (yes == value) return true;
    }
    return false;
}

struct LevelName {
    const char* upper;
    const char* lower;
    uint32_t level;
};

// Only the all-upper and all-lower spellings are known; "Warning" is not.
constexpr std::array<LevelName, 8> kLevelNames = {{
    {"INFO", "info", VELATRIX_LEVEL_INFO},
    {"ALL", "all", VELATRIX_LEVEL_ALL},
    {"FINEST", "finest", VELATRIX_LEVEL_FINEST},
    {"FINER", "finer", VELATRIX_LEVEL_FINER},
    {"FINE", "fine", VELATRIX_LEVEL_FINE},
    {"WARNING", "warning", VELATRIX_LEVEL_WARNING},
    {"SEVERE", "severe", VELATRIX_LEVEL_SEVERE},
    {"NONE", "none", VELATRIX_LEVEL_NONE},
}};

char* copy_text(const char* text) { return text != nullptr ? strdup(text) : nullptr; }

// A copy of the variable's value, or of the fallback when it is unset.
char* read_file_name(const char* variable, const char* fallback) {
    const char* value = std::getenv(variable);
    char* name = copy_text(value != nullptr ? value : fallback);
    velatrix_debug_file_sub(&name);
    return name;
}

}  // namespace
}  // namespace velatrix::debug

using namespace velatrix::debug;

extern "C" {

void velatrix_debug_setup(void) {
    debugEnabled = is_yes(std::getenv("VELATRIX_DEBUG"));
    if (debugEnabled) {
        velatrix_read_env_debug_path();
        velatrix_read_env_debug_level();
        velatrix_read_env_debug_file();
        velatrix_read_env_handlers();
    } else {
        debugLevel = VELATRIX_LEVEL_NONE;
    }

    // Unnamed, the trace follows the log; named, it is on only for a yes.
    const char* trace = std::getenv("VELATRIX_TRACE");
    traceEnabled = trace == nullptr ? debugEnabled : is_yes(trace);
    if (traceEnabled) velatrix_read_env_trace_file();
}

void velatrix_read_env_debug_path(void) {
    const char* path = std::getenv("VELATRIX_DEBUG_LOCATION");
    for (const char* fallback : {"TMPDIR", "TEMP", "TMP"}) {
        if (path != nullptr) break;
        path = std::getenv(fallback);
    }
    release(debugPath);
    debugPath = copy_text(path != nullptr ? path : kDefaultDirectory);
}

void velatrix_read_env_debug_level(void) {
    const char* value = std::getenv("VELATRIX_DEBUG_LEVEL");
    debugLevel = VELATRIX_LEVEL_ALL;
    if (value == nullptr) return;
    for (const LevelName& name : kLevelNames) {
        if (std::strcmp(value, name.upper) == 0 || std::strcmp(value, name.lower) == 0) {
            debugLevel = name.level;
            return;
        }
    }
}

void velatrix_read_env_debug_file(void) {
    release(debugFile);
    debugFile = read_file_name("VELATRIX_DEBUG_FILE", kDefaultDebugFile);
}

void velatrix_read_env_handlers(void) {
    const char* value = std::getenv("VELATRIX_DEBUG_HANDLERS");
    if (value == nullptr) value = "file";
    // A substring test on purpose: "logfile,x" names the file handler too.
    if (value[0] == '\0' || std::strstr(value, "file") != nullptr) {
        velatrix_debug_add_handler(&velatrix_debug_file_handler);
    }
}

void velatrix_read_env_trace_file(void) {
    release(traceFile);
    traceFile = read_file_name("VELATRIX_TRACE_FILE", kDefaultTraceFile);
    // The trace lies beside the log; with the log off its directory has not
    // been read yet, and the trace still needs one.
    if (debugPath == nullptr) velatrix_read_env_debug_path();
}

void velatrix_debug_file_sub(char** string) {
    if (string == nullptr || *string == nullptr) return;
    const std::string pid = std::to_string(velatrix_debug_get_current_process_id());
    // Drawn whether or not the name holds the token, so the generator moves
    // on by the same nine steps every time a name is made.
    char random[10] = {};
    for (int i = 0; i < 9; ++i) random[i] = static_cast<char>('0' + std::rand() % 10);

    replace_token(string, "${pid}", pid.c_str());
    replace_token(string, "${label}", label != nullptr ? label : "");
    replace_token(string, "${random}", random);
}

void replace_token(char** string, const char* token, const char* value) {
    if (string == nullptr || *string == nullptr || token == nullptr || token[0] == '\0') return;
    const char* found = std::strstr(*string, token);
    if (found == nullptr) return;
    std::string result(*string, static_cast<size_t>(found - *string));
    result += value != nullptr ? value : "";
    result += found + std::strlen(token);
    char* replaced = strdup(result.c_str());
    if (replaced == nullptr) return;
    std::free(*string);
    *string = replaced;
}

}  // extern "C"
