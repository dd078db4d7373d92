// The file handler of the debug log and the default two-line record format.
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

#include "debug/state.h"

namespace velatrix::debug {
namespace {

constexpr size_t kTimeSize = 30;

// The handler's private part, made when it opens.
struct FileHandlerData {
    FILE* file;
    uint8_t open;
};

FileHandlerData* data_of(velatrix_debug_handler* handler) {
    return handler != nullptr ? static_cast<FileHandlerData*>(handler->data) : nullptr;
}

const char* text_or_empty(const char* text) { return text != nullptr ? text : ""; }

}  // namespace

char* join_path(const char* directory, const char* name) {
    if (directory == nullptr || name == nullptr) return nullptr;
    const int length = std::snprintf(nullptr, 0, "%s%c%s", directory, '/', name);
    if (length < 0) return nullptr;
    auto* path = static_cast<char*>(std::malloc(static_cast<size_t>(length) + 1));
    if (path == nullptr) return nullptr;
    std::snprintf(path, static_cast<size_t>(length) + 1, "%s%c%s", directory, '/', name);
    return path;
}

FILE* open_output_file(const char* path, const char* mode) {
    if (path == nullptr) return nullptr;
    // The log and the trace can hold serial numbers and card tracks: only
    // their owner may read them, also when an older file is written over.
    const int fd = ::open(path, O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (fd < 0) return nullptr;
    if (::fchmod(fd, 0600) != 0) {
        ::close(fd);
        return nullptr;
    }
    FILE* file = ::fdopen(fd, mode);
    if (file == nullptr) ::close(fd);
    return file;
}

}  // namespace velatrix::debug

using namespace velatrix::debug;

extern "C" {

velatrix_debug_handler velatrix_debug_file_handler = {
    velatrix_debug_file_handler_open,
    velatrix_debug_file_handler_close,
    velatrix_debug_file_handler_flush,
    velatrix_debug_file_publisher,
    velatrix_debug_default_formatter,
    velatrix_debug_default_filter,
    VELATRIX_LEVEL_ALL,
    nullptr,
};

char* velatrix_debug_default_formatter(velatrix_debug_handler* handler, const velatrix_debug_message* message,
                                       uint32_t* length) {
    if (length != nullptr) *length = 0;
    if (message == nullptr) return nullptr;
    auto* line = static_cast<char*>(std::calloc(VELATRIX_DEBUG_MESSAGE_SIZE, 1));
    auto* time_text = static_cast<char*>(std::calloc(kTimeSize, 1));
    if (line == nullptr || time_text == nullptr) {
        std::free(line);
        std::free(time_text);
        return nullptr;
    }
    std::tm local{};
    const time_t when = message->time;
    if (localtime_r(&when, &local) != nullptr) std::strftime(time_text, kTimeSize, "%Y-%m-%d %H:%M:%S", &local);

    const int written = std::snprintf(
        line, VELATRIX_DEBUG_MESSAGE_SIZE,
        "%s() [level: %s, time: %s, process: %u, thread: %u, location: %s:%d]\n   %s\n",
        text_or_empty(message->function), velatrix_debug_get_level_name(message->level), time_text,
        message->process, message->thread, text_or_empty(message->file), message->line,
        text_or_empty(message->text));
    std::free(time_text);

    // A line longer than the buffer was cut there; only what it holds counts.
    const uint32_t wanted = written < 0 ? VELATRIX_DEBUG_MESSAGE_SIZE : static_cast<uint32_t>(written);
    if (length != nullptr) *length = std::min<uint32_t>(wanted, VELATRIX_DEBUG_MESSAGE_SIZE - 1);
    return line;
}

uint8_t velatrix_debug_default_filter(velatrix_debug_handler* handler, const velatrix_debug_message* message) {
    return 1;
}

void velatrix_debug_file_handler_open(velatrix_debug_handler* handler) {
    if (handler == nullptr) return;
    FileHandlerData* data = data_of(handler);
    if (data != nullptr && data->open) return;
    if (data == nullptr) {
        data = static_cast<FileHandlerData*>(std::calloc(1, sizeof(FileHandlerData)));
        if (data == nullptr) return;
        handler->data = data;
    }
    char* path = join_path(debugPath, debugFile);
    // Mode "w": a log of the same name from an earlier run is replaced.
    data->file = open_output_file(path, "w");
    data->open = data->file != nullptr ? 1 : 0;
    std::free(path);
}

void velatrix_debug_file_handler_close(velatrix_debug_handler* handler) {
    FileHandlerData* data = data_of(handler);
    if (data == nullptr) return;
    if (data->open) std::fclose(data->file);
    std::free(data);
    handler->data = nullptr;
}

void velatrix_debug_file_handler_flush(velatrix_debug_handler* handler) {
    FileHandlerData* data = data_of(handler);
    if (data != nullptr && data->open) std::fflush(data->file);
}

void velatrix_debug_file_publisher(velatrix_debug_handler* handler, const velatrix_debug_message* message) {
    if (handler == nullptr || handler->format == nullptr) return;
    uint32_t length = 0;
    char* text = handler->format(handler, message, &length);
    FileHandlerData* data = data_of(handler);
    if (text != nullptr && data != nullptr && data->open) std::fwrite(text, 1, length, data->file);
    std::free(text);
}

}  // extern "C"
