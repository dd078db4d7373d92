// Collects debug-log records in memory. Starting it initialises the debug
// log (console-only, everything from ALL up, no file, no trace) so that
// later velatrix_init calls keep this configuration.
#pragma once

#include <cstdint>
#include <mutex>
#include <string>
#include <vector>

#include "velatrix/debug.h"

namespace velatrix::testing {

struct LoggedRecord {
    uint32_t level;
    std::string function;
    std::string text;
};

class LogCapture {
public:
    LogCapture();
    ~LogCapture();
    LogCapture(const LogCapture&) = delete;
    LogCapture& operator=(const LogCapture&) = delete;

    // A copy: records arrive from the driver's threads too.
    std::vector<LoggedRecord> records() const;
    // Texts of the records at exactly this level (all levels for -1), in order.
    std::vector<std::string> texts(int level = -1) const;
    bool contains(const std::string& text, int level = -1) const { return count(text, level) > 0; }
    int count(const std::string& text, int level = -1) const;
    void clear();

private:
    static void publish(velatrix_debug_handler* handler, const velatrix_debug_message* message);
    velatrix_debug_handler handler_{};
    mutable std::mutex mutex_;
    std::vector<LoggedRecord> records_;
};

}  // namespace velatrix::testing
