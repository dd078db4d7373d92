// Records from call site to file: format, thresholds, handlers, lifecycle.
#include <cstring>
#include <regex>
#include <memory>
#include <thread>

#include "debug/log.h"
#include "debug/state.h"
#include "debug_fixture.h"

namespace velatrix::testing {
namespace {

namespace state = ::velatrix::debug;

using LogRecords = DebugTest;

// The header line of one record with the time left as a pattern.
std::string header_pattern(const std::string& function, const std::string& level, const std::string& location) {
    return function + R"(\(\) \[level: )" + level +
           R"(, time: [0-9]{4}-[0-9]{2}-[0-9]{2} [0-9]{2}:[0-9]{2}:[0-9]{2}, process: )" +
           std::to_string(getpid()) + ", thread: " + std::to_string(velatrix_debug_get_current_thread_id()) +
           ", location: " + location + R"(\]\n)";
}

void fail_with_error() { VELATRIX_REPORT_ERROR("bad value %d", 5); }

void traced_function() {
    VELATRIX_TRACE_FUNCTION();
    VELATRIX_LOG(VELATRIX_LEVEL_INFO, "progress");
}

// A record is a header line and the text indented below. At WARNING the
// errors are written, but neither the fingerprint nor the tracing is.
TEST_F(LogRecords, AtWarningRecordsAndErrorsAreWrittenButFingerprintAndTracingAreNot) {
    enable_log("WARNING");
    velatrix_debug_init("quillmark");
    traced_function();
    fail_with_error();
    velatrix_debug_report_message("my_function", "src/velatrix-quillmark", 42, VELATRIX_LEVEL_SEVERE,
                                  "value %d and %s", 7, "text");

    EXPECT_STREQ(velatrix_get_last_error(), "bad value 5");
    const std::regex records(header_pattern("fail_with_error", "WARNING", "src/velatrix-quillmark:[0-9]+") +
                             "   Error reported: bad value 5\n" +
                             header_pattern("my_function", "SEVERE", "src/velatrix-quillmark:42") +
                             "   value 7 and text\n");
    EXPECT_TRUE(std::regex_match(read_file(log_path()), records)) << read_file(log_path());
}

TEST_F(LogRecords, FunctionGuardLogsEnteringAndLeavingAtFinest) {
    enable_log("FINEST");
    set("VELATRIX_DEBUG_FILE", "trace.log");
    velatrix_debug_init("quillmark");
    const size_t before = read_file(in_dir("trace.log")).size();
    traced_function();
    const std::string added = read_file(in_dir("trace.log")).substr(before);
    const std::regex records(header_pattern("traced_function", "FINEST", "src/velatrix-quillmark:[0-9]+") +
                             "   ==> Entering Function\n" +
                             header_pattern("traced_function", "INFO", "src/velatrix-quillmark:[0-9]+") +
                             "   progress\n" +
                             header_pattern("traced_function", "FINEST", "src/velatrix-quillmark:[0-9]+") +
                             "   <== Leaving Function\n");
    EXPECT_TRUE(std::regex_match(added, records)) << added;
}

TEST_F(LogRecords, LevelNames) {
    const std::vector<std::pair<uint32_t, const char*>> names = {
        {0, "ALL"},        {100, "FINEST"}, {200, "FINER"}, {300, "FINE"},     {400, "INFO"},
        {500, "WARNING"}, {600, "SEVERE"}, {700, "NONE"},  {450, "UNKNOWN"}, {701, "UNKNOWN"},
    };
    for (const auto& [level, name] : names) EXPECT_STREQ(velatrix_debug_get_level_name(level), name);
}

TEST_F(LogRecords, MessageTextKeepsAtMost8190Characters) {
    const std::string long_text(10000, 'a');
    auto make = [](const char* format, ...) {
        va_list arguments;
        va_start(arguments, format);
        velatrix_debug_message* message =
            velatrix_debug_create_message("f", "file", -3, 1234, 55, 66, VELATRIX_LEVEL_FINE, format, arguments);
        va_end(arguments);
        return message;
    };
    velatrix_debug_message* message = make("%s", long_text.c_str());
    ASSERT_NE(message, nullptr);
    EXPECT_EQ(std::strlen(message->text), 8190u);
    velatrix_debug_free_message(message);
    velatrix_debug_free_message(nullptr);
}

// A line longer than the formatter's buffer is cut to what it holds.
TEST_F(LogRecords, OverlongRecordReachesTheFileCutToTheBuffer) {
    enable_log("SEVERE");
    velatrix_debug_init("quillmark");
    const std::string long_text(9000, 'b');
    velatrix_debug_report_message("f", "src/velatrix-quillmark", 1, VELATRIX_LEVEL_SEVERE, "%s", long_text.c_str());
    const std::string log = read_file(log_path());
    EXPECT_EQ(log.size(), 8191u);
    EXPECT_EQ(log.find('\0'), std::string::npos);
}

// Records what the log hands to it, in order.
struct RecordingHandler {
    velatrix_debug_handler handler{};
    std::vector<std::string> calls;

    explicit RecordingHandler(uint32_t level) {
        handler.publish = [](velatrix_debug_handler* h, const velatrix_debug_message* m) {
            self(h)->calls.push_back(std::string("publish ") + m->text);
        };
        handler.flush = [](velatrix_debug_handler* h) { self(h)->calls.push_back("flush"); };
        handler.close = [](velatrix_debug_handler* h) { self(h)->calls.push_back("close"); };
        handler.filter = [](velatrix_debug_handler*, const velatrix_debug_message* m) -> uint8_t {
            return std::strstr(m->text, "skip") == nullptr;
        };
        handler.level = level;
        handler.data = this;
    }
    static RecordingHandler* self(velatrix_debug_handler* h) { return static_cast<RecordingHandler*>(h->data); }
};

TEST_F(LogRecords, HandlersGetRecordsAtOrAboveTheirLevelThatTheirFilterTakes) {
    enable_log("WARNING");
    set("VELATRIX_DEBUG_HANDLERS", "console");
    velatrix_debug_init("quillmark");
    EXPECT_EQ(state::maxLevel.load(), VELATRIX_LEVEL_WARNING);

    RecordingHandler fine(VELATRIX_LEVEL_FINE);
    RecordingHandler info(VELATRIX_LEVEL_INFO);
    velatrix_debug_add_handler(&info.handler);
    EXPECT_EQ(state::maxLevel.load(), VELATRIX_LEVEL_INFO);
    velatrix_debug_add_handler(&fine.handler);
    EXPECT_EQ(state::maxLevel.load(), VELATRIX_LEVEL_FINE);

    velatrix_debug_report_message("f", "x", 1, VELATRIX_LEVEL_FINER, "below all");
    velatrix_debug_report_message("f", "x", 1, VELATRIX_LEVEL_FINE, "fine");
    velatrix_debug_report_message("f", "x", 1, VELATRIX_LEVEL_INFO, "info");
    velatrix_debug_report_message("f", "x", 1, VELATRIX_LEVEL_SEVERE, "skip me");
    EXPECT_EQ(fine.calls, (std::vector<std::string>{"publish fine", "flush", "publish info", "flush"}));
    EXPECT_EQ(info.calls, (std::vector<std::string>{"publish info", "flush"}));

    // Removing does not raise the threshold again.
    EXPECT_EQ(velatrix_debug_remove_handler(&fine.handler), 1);
    EXPECT_EQ(velatrix_debug_remove_handler(&fine.handler), 0);
    EXPECT_EQ(state::maxLevel.load(), VELATRIX_LEVEL_FINE);
    velatrix_debug_report_message("f", "x", 1, VELATRIX_LEVEL_INFO, "after");
    EXPECT_EQ(fine.calls.size(), 4u);
    EXPECT_EQ(info.calls, (std::vector<std::string>{"publish info", "flush", "publish after", "flush"}));

    velatrix_debug_recalculate_debug_level();
    EXPECT_EQ(state::maxLevel.load(), VELATRIX_LEVEL_INFO);
    EXPECT_EQ(velatrix_debug_remove_handler(&info.handler), 1);
    velatrix_debug_recalculate_debug_level();
    EXPECT_EQ(state::maxLevel.load(), VELATRIX_LEVEL_NONE);

    velatrix_debug_add_handler(&info.handler);
    velatrix_debug_destroy();
    EXPECT_EQ(info.calls.back(), "close");
    EXPECT_EQ(velatrix_debug_get_handlers(), nullptr);
}

TEST_F(LogRecords, SecondInitChangesNothing) {
    enable_log("INFO");
    velatrix_debug_init("quillmark");
    velatrix_debug_report_message("f", "x", 1, VELATRIX_LEVEL_INFO, "kept");
    const std::string before = read_file(log_path());

    set("VELATRIX_DEBUG_LEVEL", "NONE");
    set("VELATRIX_DEBUG_FILE", "other.log");
    velatrix_debug_init("other");
    EXPECT_EQ(state::debugLevel, VELATRIX_LEVEL_INFO);
    EXPECT_STREQ(state::label, "quillmark");
    EXPECT_EQ(velatrix_list_count(velatrix_debug_get_handlers()), 1u);
    EXPECT_EQ(read_file(log_path()), before);
    EXPECT_EQ(files().size(), 1u);
}

TEST_F(LogRecords, AfterDestroyNothingIsWrittenAndANewInitStartsAFreshFile) {
    enable_log("INFO");
    velatrix_debug_init("quillmark");
    velatrix_debug_report_message("f", "x", 1, VELATRIX_LEVEL_SEVERE, "first run");
    velatrix_debug_destroy();
    const std::string closed = read_file(log_path());
    velatrix_debug_report_message("f", "x", 1, VELATRIX_LEVEL_SEVERE, "after destroy");
    EXPECT_EQ(read_file(log_path()), closed);
    EXPECT_NE(closed.find("first run"), std::string::npos);

    velatrix_debug_init("quillmark");
    const std::string fresh = read_file(log_path());
    EXPECT_EQ(fresh.find("first run"), std::string::npos);
    EXPECT_NE(fresh.find("Process starting"), std::string::npos);
}

TEST_F(LogRecords, CallsBeforeInitDoNothing) {
    ASSERT_FALSE(state::is_initialised());
    velatrix_debug_report_message("f", "x", 1, VELATRIX_LEVEL_NONE, "nowhere");
    RecordingHandler handler(VELATRIX_LEVEL_ALL);
    velatrix_debug_add_handler(&handler.handler);
    EXPECT_EQ(velatrix_debug_remove_handler(&handler.handler), 0);
    velatrix_debug_report_message("f", "x", 1, VELATRIX_LEVEL_NONE, "nowhere");
    velatrix_debug_destroy();
    EXPECT_TRUE(handler.calls.empty());
}

TEST_F(LogRecords, LogThroughASymbolicLinkIsRefused) {
    enable_log();
    const std::string target = in_dir("target");
    { std::ofstream(target) << "keep"; }
    std::filesystem::create_symlink(target, log_path());
    set("VELATRIX_TRACE", "1");
    std::filesystem::create_symlink(target, trace_path());

    velatrix_debug_init("quillmark");
    velatrix_debug_report_message("f", "x", 1, VELATRIX_LEVEL_SEVERE, "must not land");
    velatrix_debug_write_trace_header();
    const uint8_t report[] = {1, 2, 3};
    velatrix_debug_write_trace(report, sizeof report, 1);

    EXPECT_EQ(read_file(target), "keep");
    EXPECT_TRUE(std::filesystem::is_symlink(log_path()));
    EXPECT_TRUE(std::filesystem::is_symlink(trace_path()));
    EXPECT_EQ(state::traceHandle, nullptr);
}

TEST_F(LogRecords, RecordsFromManyThreadsStayWhole) {
    enable_log("FINE");
    velatrix_debug_init("quillmark");
    const size_t before = read_file(log_path()).size();
    constexpr int kThreads = 4;
    constexpr int kRecords = 200;
    std::vector<std::thread> threads;
    for (int t = 0; t < kThreads; ++t) {
        threads.emplace_back([t] {
            for (int i = 0; i < kRecords; ++i) {
                velatrix_debug_report_message("worker", "src/velatrix-quillmark", t, VELATRIX_LEVEL_FINE,
                                              "thread %d record %d", t, i);
            }
        });
    }
    for (std::thread& thread : threads) thread.join();

    const std::string added = read_file(log_path()).substr(before);
    const std::regex record(R"(worker\(\) \[level: FINE, time: [^\]]*, location: src/velatrix-quillmark:([0-9])\]\n   thread ([0-9]) record [0-9]+\n)");
    int count = 0;
    size_t consumed = 0;
    for (auto it = std::sregex_iterator(added.begin(), added.end(), record); it != std::sregex_iterator(); ++it) {
        EXPECT_EQ((*it)[1], (*it)[2]);
        EXPECT_EQ(static_cast<size_t>(it->position()), consumed);
        consumed += it->length();
        ++count;
    }
    EXPECT_EQ(count, kThreads * kRecords);
    EXPECT_EQ(consumed, added.size());
}

// Handlers come and go on one thread while another logs: each record
// reaches exactly the handlers in the list at that moment (ThreadSanitizer
// checks the list itself).
TEST_F(LogRecords, HandlersChangeWhileAnotherThreadLogs) {
    enable_log("FINE");
    velatrix_debug_init("quillmark");
    RecordingHandler steady(VELATRIX_LEVEL_FINE);
    velatrix_debug_add_handler(&steady.handler);
    constexpr int kRecords = 300;
    std::thread logger([] {
        for (int i = 0; i < kRecords; ++i) {
            velatrix_debug_report_message("worker", "src/velatrix-quillmark", 1, VELATRIX_LEVEL_FINE, "record %d", i);
        }
    });
    std::vector<std::unique_ptr<RecordingHandler>> passing;
    for (int i = 0; i < kRecords; ++i) {
        passing.push_back(std::make_unique<RecordingHandler>(VELATRIX_LEVEL_FINE));
        velatrix_debug_add_handler(&passing.back()->handler);
        EXPECT_EQ(velatrix_debug_remove_handler(&passing.back()->handler), 1);
    }
    logger.join();
    EXPECT_EQ(steady.calls.size(), 2u * kRecords) << "a publish and a flush per record";
    EXPECT_EQ(velatrix_debug_remove_handler(&steady.handler), 1);
}

}  // namespace
}  // namespace velatrix::testing
