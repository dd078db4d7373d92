// How the environment switches and shapes the log and the trace at start-up.
#include <regex>

#include "debug/state.h"
#include "debug_fixture.h"

namespace velatrix::testing {
namespace {

namespace state = ::velatrix::debug;

using LogEnvironment = DebugTest;

uint32_t handler_count() { return velatrix_list_count(velatrix_debug_get_handlers()); }

TEST_F(LogEnvironment, OnlyTheExactYesWordsSwitchTheLogOn) {
    const std::vector<std::pair<const char*, bool>> cases = {
        {"true", true},   {"TRUE", true},  {"1", true},    {"yes", true}, {"YES", true},
        {"on", true},     {"ON", true},    {"True", false}, {"Yes", false}, {"On", false},
        {"0", false},     {"2", false},    {"", false},    {"yes ", false},
    };
    set("VELATRIX_DEBUG_LOCATION", dir_.c_str());
    for (const auto& [value, on] : cases) {
        SCOPED_TRACE(value);
        set("VELATRIX_DEBUG", value);
        velatrix_debug_init("quillmark");
        EXPECT_EQ(state::debugEnabled, on);
        EXPECT_EQ(std::filesystem::exists(log_path()), on);
        velatrix_debug_destroy();
        std::filesystem::remove(log_path());
    }
}

TEST_F(LogEnvironment, LevelNamesAreKnownInUpperAndLowerCaseOnly) {
    const std::vector<std::pair<std::optional<const char*>, uint32_t>> cases = {
        {"INFO", 400},   {"info", 400},    {"ALL", 0},       {"all", 0},         {"FINEST", 100},
        {"finest", 100}, {"FINER", 200},   {"finer", 200},   {"FINE", 300},      {"fine", 300},
        {"WARNING", 500}, {"warning", 500}, {"SEVERE", 600}, {"severe", 600},    {"NONE", 700},
        {"none", 700},   {"Warning", 0},   {"Info", 0},      {"400", 0},         {"", 0},
        {std::nullopt, 0},
    };
    set("VELATRIX_DEBUG", "yes");
    set("VELATRIX_DEBUG_LOCATION", dir_.c_str());
    for (const auto& [value, level] : cases) {
        SCOPED_TRACE(value.value_or("(unset)"));
        set("VELATRIX_DEBUG_LEVEL", value);
        velatrix_debug_init("quillmark");
        EXPECT_EQ(state::debugLevel, level);
        // The asked-for level overrides the threshold the handler gave and
        // becomes the handler's own level.
        EXPECT_EQ(state::maxLevel.load(), level);
        EXPECT_EQ(velatrix_debug_file_handler.level, level);
        velatrix_debug_destroy();
    }
}

TEST_F(LogEnvironment, LogDirectoryFallsBackThroughTheTemporaryDirectories) {
    struct Case {
        std::map<std::string, std::string> variables;
        const char* expected;
    };
    const std::vector<Case> cases = {
        {{{"VELATRIX_DEBUG_LOCATION", "/loc"}, {"TMPDIR", "/tmpdir"}, {"TEMP", "/temp"}}, "/loc"},
        {{{"TMPDIR", "/tmpdir"}, {"TEMP", "/temp"}, {"TMP", "/tmp2"}}, "/tmpdir"},
        {{{"TEMP", "/temp"}, {"TMP", "/tmp2"}}, "/temp"},
        {{{"TMP", "/tmp2/"}}, "/tmp2/"},
        {{}, "/tmp/"},
        // Set counts, even when empty: no fallback, no separator fixed up.
        {{{"VELATRIX_DEBUG_LOCATION", ""}, {"TMPDIR", "/tmpdir"}}, ""},
        {{{"TMPDIR", ""}, {"TEMP", "/temp"}}, ""},
    };
    set("VELATRIX_DEBUG", "1");
    set("VELATRIX_DEBUG_HANDLERS", "none wanted");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.expected);
        for (const char* name : {"VELATRIX_DEBUG_LOCATION", "TMPDIR", "TEMP", "TMP"}) unsetenv(name);
        for (const auto& [name, value] : c.variables) set(name.c_str(), value.c_str());
        velatrix_debug_init("quillmark");
        ASSERT_NE(state::debugPath, nullptr);
        EXPECT_STREQ(state::debugPath, c.expected);
        velatrix_debug_destroy();
        EXPECT_EQ(state::debugPath, nullptr);
    }
}

TEST_F(LogEnvironment, FileNameTokensReplaceTheirFirstOccurrenceOnly) {
    enable_log();
    set("VELATRIX_DEBUG_FILE", "a-${pid}-${pid}-${label}-${label}.log");
    velatrix_debug_init("quillmark");
    const std::string expected = "a-" + pid() + "-${pid}-quillmark-${label}.log";
    EXPECT_STREQ(state::debugFile, expected.c_str());
    EXPECT_TRUE(std::filesystem::exists(in_dir(expected)));
}

TEST_F(LogEnvironment, RandomTokenIsNineDigitsFromTheUnseededGenerator) {
    enable_log();
    set("VELATRIX_TRACE", "no");
    set("VELATRIX_DEBUG_FILE", "x-${random}-${random}.log");
    std::srand(4242);
    std::string digits;
    for (int i = 0; i < 9; ++i) digits += static_cast<char>('0' + std::rand() % 10);
    std::srand(4242);
    velatrix_debug_init("quillmark");
    const std::string expected = "x-" + digits + "-${random}.log";
    EXPECT_STREQ(state::debugFile, expected.c_str());
    EXPECT_TRUE(std::filesystem::exists(in_dir(expected)));
}

TEST_F(LogEnvironment, HandlersVariableAddsTheFileHandlerOnASubstringMatch) {
    const std::vector<std::pair<std::optional<const char*>, bool>> cases = {
        {std::nullopt, true}, {"", true}, {"file", true}, {"logfile,x", true}, {"console", false}, {"FILE", false},
    };
    enable_log();
    for (const auto& [value, added] : cases) {
        SCOPED_TRACE(value.value_or("(unset)"));
        set("VELATRIX_DEBUG_HANDLERS", value);
        velatrix_debug_init("quillmark");
        ASSERT_EQ(handler_count(), added ? 1u : 0u);
        EXPECT_EQ(std::filesystem::exists(log_path()), added);
        velatrix_debug_destroy();
        std::filesystem::remove(log_path());
    }
}

TEST_F(LogEnvironment, TraceFollowsTheLogUnlessNamed) {
    struct Case {
        std::optional<const char*> debug;
        std::optional<const char*> trace;
        bool on;
    };
    const std::vector<Case> cases = {
        {"1", std::nullopt, true},   {"1", "no", false},          {"1", "True", false},
        {std::nullopt, "1", true},   {std::nullopt, "ON", true},  {std::nullopt, std::nullopt, false},
        {"nope", std::nullopt, false}, {"1", "yes", true},
    };
    const uint8_t report[] = {1};
    set("VELATRIX_DEBUG_LOCATION", dir_.c_str());
    for (const Case& c : cases) {
        SCOPED_TRACE(std::string(c.debug.value_or("-")) + "/" + c.trace.value_or("-"));
        set("VELATRIX_DEBUG", c.debug);
        set("VELATRIX_TRACE", c.trace);
        velatrix_debug_init("quillmark");
        EXPECT_EQ(state::traceEnabled, c.on);
        velatrix_debug_write_trace_header();
        velatrix_debug_write_trace(report, 1, 1);
        EXPECT_EQ(std::filesystem::exists(trace_path()), c.on);
        velatrix_debug_destroy();
        std::filesystem::remove(trace_path());
    }
}

TEST_F(LogEnvironment, TraceWithTheLogOffStillLiesInTheLogDirectory) {
    set("VELATRIX_TRACE", "1");
    set("TMPDIR", dir_.c_str());
    set("VELATRIX_TRACE_FILE", "t-${label}-${pid}.pcap");
    velatrix_debug_init("pad");
    velatrix_debug_write_trace_header();
    EXPECT_EQ(files(), std::vector<std::string>{"t-pad-" + pid() + ".pcap"});
}

TEST_F(LogEnvironment, ReplaceTokenBuildsANewStringOnlyWhenTheTokenIsThere) {
    char* text = strdup("before ${x} after ${x}");
    char* const original = text;
    replace_token(&text, "${y}", "value");
    EXPECT_EQ(text, original);
    replace_token(&text, "${x}", "X");
    EXPECT_STREQ(text, "before X after ${x}");
    replace_token(&text, "${x}", "");
    EXPECT_STREQ(text, "before X after ");
    std::free(text);

    char* none = nullptr;
    replace_token(&none, "${x}", "X");
    velatrix_debug_file_sub(&none);
    velatrix_debug_file_sub(nullptr);
    EXPECT_EQ(none, nullptr);
}

}  // namespace
}  // namespace velatrix::testing
