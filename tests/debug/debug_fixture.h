// Shared fixture of the diagnostics tests: a private temporary directory,
// the log's environment variables cleared and restored, and the log shut
// down after every test.
#pragma once

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

#include "velatrix/debug.h"

namespace velatrix::testing {

class DebugTest : public ::testing::Test {
protected:
    static constexpr const char* kVariables[] = {
        "VELATRIX_DEBUG",          "VELATRIX_DEBUG_LEVEL", "VELATRIX_DEBUG_LOCATION", "VELATRIX_DEBUG_FILE",
        "VELATRIX_DEBUG_HANDLERS", "VELATRIX_TRACE",       "VELATRIX_TRACE_FILE",     "TMPDIR",
        "TEMP",                    "TMP",
    };

    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "velatrix-debug-test-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        dir_ = pattern;
        for (const char* name : kVariables) {
            const char* value = std::getenv(name);
            if (value != nullptr) saved_[name] = value;
            unsetenv(name);
        }
    }

    void TearDown() override {
        velatrix_debug_destroy();
        for (const char* name : kVariables) {
            auto found = saved_.find(name);
            if (found != saved_.end()) {
                setenv(name, found->second.c_str(), 1);
            } else {
                unsetenv(name);
            }
        }
        std::error_code ignored;
        std::filesystem::remove_all(dir_, ignored);
    }

    static void set(const char* name, const char* value) { setenv(name, value, 1); }
    // Sets the variable, or removes it for no value.
    static void set(const char* name, std::optional<const char*> value) {
        value ? set(name, *value) : static_cast<void>(unsetenv(name));
    }

    // Log on, everything from FINEST up, files in the test's directory.
    void enable_log(const char* level = "ALL") {
        set("VELATRIX_DEBUG", "1");
        set("VELATRIX_DEBUG_LOCATION", dir_.c_str());
        set("VELATRIX_DEBUG_LEVEL", level);
    }

    static std::string pid() { return std::to_string(getpid()); }
    std::string in_dir(const std::string& name) const { return dir_ + "/" + name; }
    std::string log_path() const { return in_dir("velatrix-debug-quillmark-" + pid() + ".log"); }
    std::string trace_path() const { return in_dir("velatrix-trace-quillmark-" + pid() + ".pcap"); }

    std::vector<std::string> files() const {
        std::vector<std::string> names;
        for (const auto& entry : std::filesystem::directory_iterator(dir_)) {
            names.push_back(entry.path().filename().string());
        }
        return names;
    }

    static std::string read_file(const std::string& path) {
        std::ifstream file(path, std::ios::binary);
        std::ostringstream content;
        content << file.rdbuf();
        return content.str();
    }

    static std::vector<uint8_t> read_bytes(const std::string& path) {
        const std::string content = read_file(path);
        return {content.begin(), content.end()};
    }

    std::string dir_;

private:
    std::map<std::string, std::string> saved_;
};

}  // namespace velatrix::testing
