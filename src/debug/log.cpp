// The debug log: start-up and shut-down, the handler list and the path of a
// record from a call site to every handler.
#include <sys/syscall.h>
#include <unistd.h>

#include <cstdarg>
#include <cstdlib>
#include <ctime>
#include <mutex>

#include "debug/state.h"

namespace velatrix::debug {

std::atomic<bool> initDone{false};
// Until the first start-up nothing passes, so a record made before it
// costs the one comparison and nothing else.
std::atomic<uint32_t> maxLevel{VELATRIX_LEVEL_NONE};

bool debugEnabled = false;
uint32_t debugLevel = VELATRIX_LEVEL_NONE;
bool traceEnabled = false;
char* debugPath = nullptr;
char* debugFile = nullptr;
char* traceFile = nullptr;
FILE* traceHandle = nullptr;
velatrix_debug_trace_read_operation traceReadFunc = nullptr;
velatrix_debug_trace_write_operation traceWriteFunc = nullptr;
const char* label = nullptr;
velatrix_list* handlers = nullptr;

void release(char*& text) {
    std::free(text);
    text = nullptr;
}

namespace {

velatrix_debug_handler* handler_of(const velatrix_list_node* node) {
    return static_cast<velatrix_debug_handler*>(node->value);
}

// Held while the handler list is walked or changed: any thread logs while
// an application may add or remove a handler. Recursive, because a handler
// may log, and adding one from the environment happens inside start-up.
// Never destroyed, so that a thread logging during exit finds it intact.
std::recursive_mutex& handlers_mutex() {
    static auto* mutex = new std::recursive_mutex;
    return *mutex;
}

}  // namespace
}  // namespace velatrix::debug

using namespace velatrix::debug;

extern "C" {

void velatrix_debug_init(const char* new_label) {
    if (is_initialised()) return;
    initDone.store(true, std::memory_order_relaxed);
    // The strings are normally already gone (destroy frees them); anything a
    // caller read from the environment before start-up is dropped here.
    release(debugPath);
    release(debugFile);
    close_trace();
    traceReadFunc = nullptr;
    traceWriteFunc = nullptr;
    debugEnabled = false;
    traceEnabled = false;
    debugLevel = VELATRIX_LEVEL_NONE;
    maxLevel.store(VELATRIX_LEVEL_NONE, std::memory_order_relaxed);
    label = new_label;
    std::lock_guard lock(handlers_mutex());
    velatrix_list_free(handlers);
    handlers = velatrix_create_list();

    velatrix_debug_setup();

    // The level asked for wins over whatever the handlers' own levels gave.
    maxLevel.store(debugLevel, std::memory_order_relaxed);
    for (velatrix_list_node* node = handlers != nullptr ? handlers->head : nullptr; node != nullptr;
         node = node->next) {
        velatrix_debug_handler* handler = handler_of(node);
        handler->level = debugLevel;
        if (handler->open != nullptr) handler->open(handler);
    }

    velatrix_debug_print_fingerprint();
}

void velatrix_debug_destroy(void) {
    if (!is_initialised()) return;
    {
        std::lock_guard lock(handlers_mutex());
        for (velatrix_list_node* node = handlers != nullptr ? handlers->head : nullptr; node != nullptr;
             node = node->next) {
            velatrix_debug_handler* handler = handler_of(node);
            if (handler->close != nullptr) handler->close(handler);
        }
        velatrix_list_free(handlers);
        handlers = nullptr;
    }
    close_trace();
    release(debugPath);
    release(debugFile);
    initDone.store(false, std::memory_order_relaxed);
}

void velatrix_debug_report_message(const char* function, const char* file, int32_t line, uint32_t level,
                                   const char* format, ...) {
    if (level < maxLevel.load(std::memory_order_relaxed)) return;
    va_list arguments;
    va_start(arguments, format);
    velatrix_debug_report_message_va(function, file, line, level, format, arguments);
    va_end(arguments);
}

void velatrix_debug_report_message_va(const char* function, const char* file, int32_t line, uint32_t level,
                                      const char* format, va_list arguments) {
    if (level < maxLevel.load(std::memory_order_relaxed) || !is_initialised()) return;

    velatrix_debug_message* message =
        velatrix_debug_create_message(function, file, line, std::time(nullptr), velatrix_debug_get_current_process_id(),
                                      velatrix_debug_get_current_thread_id(), level, format, arguments);
    if (message == nullptr) return;
    {
        std::lock_guard lock(handlers_mutex());
        for (velatrix_list_node* node = handlers != nullptr ? handlers->head : nullptr; node != nullptr;
             node = node->next) {
            velatrix_debug_handler* handler = handler_of(node);
            if (handler->level > level) continue;
            if (handler->filter != nullptr && !handler->filter(handler, message)) continue;
            if (handler->publish != nullptr) handler->publish(handler, message);
            if (handler->flush != nullptr) handler->flush(handler);
        }
    }
    velatrix_debug_free_message(message);
}

velatrix_debug_message* velatrix_debug_create_message(const char* function, const char* file, int32_t line,
                                                      time_t time, uint32_t process, uint32_t thread, uint32_t level,
                                                      const char* format, va_list arguments) {
    auto* message = static_cast<velatrix_debug_message*>(std::calloc(1, sizeof(velatrix_debug_message)));
    if (message == nullptr) return nullptr;
    message->text = static_cast<char*>(std::calloc(VELATRIX_DEBUG_MESSAGE_SIZE, 1));
    if (message->text == nullptr) {
        std::free(message);
        return nullptr;
    }
    if (format != nullptr) {
        va_list copy;
        va_copy(copy, arguments);
        // One byte short of the buffer: at most 8190 characters of text.
        std::vsnprintf(message->text, VELATRIX_DEBUG_MESSAGE_SIZE - 1, format, copy);
        va_end(copy);
    }
    message->level = level;
    message->time = time;
    message->thread = thread;
    message->process = process;
    message->function = function;
    message->file = file;
    message->line = line;
    return message;
}

void velatrix_debug_free_message(velatrix_debug_message* message) {
    if (message == nullptr) return;
    std::free(message->text);
    std::free(message);
}

void velatrix_debug_add_handler(velatrix_debug_handler* handler) {
    if (handler == nullptr) return;
    std::lock_guard lock(handlers_mutex());
    velatrix_list_add(handlers, handler);
    velatrix_debug_recalculate_debug_level();
}

int velatrix_debug_remove_handler(velatrix_debug_handler* handler) {
    // The threshold stays where it is: at worst lower than needed, which
    // only costs formatting for records nobody takes.
    std::lock_guard lock(handlers_mutex());
    return velatrix_list_remove_ptr(handlers, handler);
}

velatrix_list* velatrix_debug_get_handlers(void) { return handlers; }

void velatrix_debug_recalculate_debug_level(void) {
    std::lock_guard lock(handlers_mutex());
    uint32_t lowest = VELATRIX_LEVEL_NONE;
    for (velatrix_list_node* node = handlers != nullptr ? handlers->head : nullptr; node != nullptr;
         node = node->next) {
        const uint32_t level = handler_of(node)->level;
        if (level < lowest) lowest = level;
    }
    maxLevel.store(lowest, std::memory_order_relaxed);
}

const char* velatrix_debug_get_level_name(uint32_t level) {
    switch (level) {
        case VELATRIX_LEVEL_ALL: return "ALL";
        case VELATRIX_LEVEL_FINEST: return "FINEST";
        case VELATRIX_LEVEL_FINER: return "FINER";
        case VELATRIX_LEVEL_FINE: return "FINE";
        case VELATRIX_LEVEL_INFO: return "INFO";
        case VELATRIX_LEVEL_WARNING: return "WARNING";
        case VELATRIX_LEVEL_SEVERE: return "SEVERE";
        case VELATRIX_LEVEL_NONE: return "NONE";
        default: return "UNKNOWN";
    }
}

uint32_t velatrix_debug_get_current_process_id(void) { return static_cast<uint32_t>(getpid()); }

uint32_t velatrix_debug_get_current_thread_id(void) {
    return static_cast<uint32_t>(static_cast<uint64_t>(syscall(SYS_gettid)) & 0xFFFFFFFFu);
}

}  // extern "C"
