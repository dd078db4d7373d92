/* The debug log: levels, handlers, messages and the environment set-up,
 * and the traffic trace and process fingerprint beside it. */
#ifndef VELATRIX_DEBUG_H
#define VELATRIX_DEBUG_H

#include <stdarg.h>
#include <time.h>
#include "velatrix/common.h"
#include "velatrix/list.h"

VELATRIX_BEGIN_DECLS

#define VELATRIX_LEVEL_ALL 0u
#define VELATRIX_LEVEL_FINEST 100u
#define VELATRIX_LEVEL_FINER 200u
#define VELATRIX_LEVEL_FINE 300u
#define VELATRIX_LEVEL_INFO 400u
#define VELATRIX_LEVEL_WARNING 500u
#define VELATRIX_LEVEL_SEVERE 600u
#define VELATRIX_LEVEL_NONE 700u

/* Size of a message's text buffer; at most 8190 characters are kept. */
#define VELATRIX_DEBUG_MESSAGE_SIZE 8192

typedef struct velatrix_debug_message {
    uint32_t level;
    char* text;
    time_t time;
    uint32_t thread;
    uint32_t process;
    const char* function;
    const char* file;
    int32_t line;
} velatrix_debug_message;

typedef struct velatrix_debug_handler {
    void (*open)(struct velatrix_debug_handler* handler);
    void (*close)(struct velatrix_debug_handler* handler);
    void (*flush)(struct velatrix_debug_handler* handler);
    void (*publish)(struct velatrix_debug_handler* handler, const velatrix_debug_message* message);
    char* (*format)(struct velatrix_debug_handler* handler, const velatrix_debug_message* message,
                    uint32_t* length);
    uint8_t (*filter)(struct velatrix_debug_handler* handler, const velatrix_debug_message* message);
    uint32_t level;
    void* data;
} velatrix_debug_handler;

VELATRIX_API extern velatrix_debug_handler velatrix_debug_file_handler;

VELATRIX_API void velatrix_debug_init(const char* label);
VELATRIX_API void velatrix_debug_setup(void);
VELATRIX_API void velatrix_debug_destroy(void);
VELATRIX_API void velatrix_debug_report_message(const char* function, const char* file, int32_t line, uint32_t level,
                                                const char* format, ...) VELATRIX_PRINTF(5, 6);
VELATRIX_API void velatrix_debug_report_message_va(const char* function, const char* file, int32_t line,
                                                   uint32_t level, const char* format, va_list arguments);
VELATRIX_API velatrix_debug_message* velatrix_debug_create_message(const char* function, const char* file,
                                                                   int32_t line, time_t time, uint32_t process,
                                                                   uint32_t thread, uint32_t level,
                                                                   const char* format, va_list arguments);
VELATRIX_API void velatrix_debug_free_message(velatrix_debug_message* message);
VELATRIX_API void velatrix_debug_add_handler(velatrix_debug_handler* handler);
VELATRIX_API int velatrix_debug_remove_handler(velatrix_debug_handler* handler);
VELATRIX_API velatrix_list* velatrix_debug_get_handlers(void);
VELATRIX_API void velatrix_debug_recalculate_debug_level(void);
VELATRIX_API const char* velatrix_debug_get_level_name(uint32_t level);
VELATRIX_API void velatrix_read_env_debug_path(void);
VELATRIX_API void velatrix_read_env_debug_level(void);
VELATRIX_API void velatrix_read_env_debug_file(void);
VELATRIX_API void velatrix_read_env_handlers(void);
VELATRIX_API void velatrix_read_env_trace_file(void);
VELATRIX_API void velatrix_debug_file_sub(char** string);
VELATRIX_API uint32_t velatrix_debug_get_current_process_id(void);
VELATRIX_API uint32_t velatrix_debug_get_current_thread_id(void);

VELATRIX_API char* velatrix_debug_default_formatter(velatrix_debug_handler* handler,
                                                    const velatrix_debug_message* message, uint32_t* length);
VELATRIX_API uint8_t velatrix_debug_default_filter(velatrix_debug_handler* handler,
                                                   const velatrix_debug_message* message);
VELATRIX_API void velatrix_debug_file_handler_open(velatrix_debug_handler* handler);
VELATRIX_API void velatrix_debug_file_handler_close(velatrix_debug_handler* handler);
VELATRIX_API void velatrix_debug_file_handler_flush(velatrix_debug_handler* handler);
VELATRIX_API void velatrix_debug_file_publisher(velatrix_debug_handler* handler,
                                                const velatrix_debug_message* message);

/* Token replacement on an owned string: the first occurrence of token is
 * replaced by value; the old string is freed and the new one stored. */
VELATRIX_API void replace_token(char** string, const char* token, const char* value);

/* Traffic trace: HID reports written to a pcap file. Direction 1 is a report
 * read from the pad; every other value counts as written to it. */
#define VELATRIX_TRACE_DIRECTION_READ 1u
#define VELATRIX_TRACE_DIRECTION_WRITE 2u

/* A report read: fills buffer (size bytes), stores the length read and
 * returns non-zero on success; context is passed through untouched. */
typedef int (*velatrix_debug_trace_read_operation)(uint8_t* buffer, uint32_t size, uint32_t* length,
                                                   void* context);
/* A report write: sends length bytes, report id first. */
typedef int (*velatrix_debug_trace_write_operation)(const uint8_t* bytes, uint32_t length);

/* The read and write operations of whoever owns the report traffic; wrapping
 * swaps in the tracing wrappers. Either member may be null. */
typedef struct velatrix_debug_trace_dispatch {
    velatrix_debug_trace_read_operation read;
    velatrix_debug_trace_write_operation write;
} velatrix_debug_trace_dispatch;

/* The trace file (when the trace is on) is opened by whichever comes first:
 * the header writer, or the first record, which then writes the 24-byte
 * global header in front of itself. A header written before any traffic
 * is therefore the file's only one; each further call adds another. */
VELATRIX_API void velatrix_debug_write_trace_header(void);
VELATRIX_API void velatrix_debug_write_trace(const uint8_t* bytes, uint32_t length, uint32_t direction);
VELATRIX_API void velatrix_debug_trace_wrap_dispatch(velatrix_debug_trace_dispatch* dispatch);
VELATRIX_API int velatrix_debug_trace_reader_wrapper(uint8_t* buffer, uint32_t size, uint32_t* length,
                                                     void* context);
VELATRIX_API int velatrix_debug_trace_write_wrapper(const uint8_t* bytes, uint32_t length);

/* Process fingerprint. Owned texts are released with free(). */
VELATRIX_API void velatrix_debug_print_fingerprint(void);
VELATRIX_API char* velatrix_debug_get_current_process_name(void);
VELATRIX_API const char* velatrix_debug_get_process_architecture(void);
VELATRIX_API const char* velatrix_debug_get_native_architecture(void);
VELATRIX_API const char* velatrix_debug_get_operating_system(void);
/* The macOS release named by a Darwin kernel release text ("15.6.0"). */
VELATRIX_API char* velatrix_debug_os_name_for_kernel_release(const char* release);
VELATRIX_API char* get_osx_version(void);

VELATRIX_END_DECLS

#endif
