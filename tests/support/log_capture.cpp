#include "support/log_capture.h"

#include <cstdlib>

namespace velatrix::testing {
namespace {
void noop(velatrix_debug_handler*) {}
uint8_t accept(velatrix_debug_handler*, const velatrix_debug_message*) { return 1; }
}  // namespace

LogCapture::LogCapture() {
    velatrix_debug_destroy();
    setenv("VELATRIX_DEBUG", "1", 1);
    setenv("VELATRIX_DEBUG_LEVEL", "ALL", 1);
    setenv("VELATRIX_DEBUG_HANDLERS", "console", 1);
    setenv("VELATRIX_TRACE", "no", 1);
    velatrix_debug_init("test");
    handler_.open = &noop;
    handler_.close = &noop;
    handler_.flush = &noop;
    handler_.publish = &LogCapture::publish;
    handler_.filter = &accept;
    handler_.level = 0;
    handler_.data = this;
    velatrix_debug_add_handler(&handler_);
}

LogCapture::~LogCapture() {
    velatrix_debug_remove_handler(&handler_);
    velatrix_debug_destroy();
    for (const char* name : {"VELATRIX_DEBUG", "VELATRIX_DEBUG_LEVEL", "VELATRIX_DEBUG_HANDLERS", "VELATRIX_TRACE"}) {
        unsetenv(name);
    }
}

void LogCapture::publish(velatrix_debug_handler* handler, const velatrix_debug_message* message) {
    auto* self = static_cast<LogCapture*>(handler->data);
    std::lock_guard lock(self->mutex_);
    self->records_.push_back(
        {message->level, message->function ? message->function : "", message->text ? message->text : ""});
}

std::vector<LoggedRecord> LogCapture::records() const {
    std::lock_guard lock(mutex_);
    return records_;
}

void LogCapture::clear() {
    std::lock_guard lock(mutex_);
    records_.clear();
}

std::vector<std::string> LogCapture::texts(int level) const {
    std::lock_guard lock(mutex_);
    std::vector<std::string> out;
    for (const LoggedRecord& r : records_) {
        if (level < 0 || r.level == static_cast<uint32_t>(level)) out.push_back(r.text);
    }
    return out;
}

int LogCapture::count(const std::string& text, int level) const {
    int n = 0;
    for (const std::string& t : texts(level)) n += (t == text);
    return n;
}

}  // namespace velatrix::testing
