// The traffic trace of a whole session: start-up writes nothing, and the
// file holds exactly one global header whether the caller wrote it before
// any traffic or left it to the first record.
#include <unistd.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>

#include "host/e2e_fixture.h"

namespace velatrix::e2e {
namespace {

class TraceFile : public E2e {
protected:
    static constexpr const char* kVariables[] = {"VELATRIX_DEBUG", "VELATRIX_TRACE", "VELATRIX_DEBUG_LOCATION",
                                                 "VELATRIX_TRACE_FILE"};

    void SetUp() override {
        std::string pattern = (std::filesystem::temp_directory_path() / "velatrix-trace-test-XXXXXX").string();
        ASSERT_NE(mkdtemp(pattern.data()), nullptr);
        dir_ = pattern;
        for (const char* name : kVariables) {
            if (const char* value = std::getenv(name)) saved_.emplace_back(name, value);
        }
        unsetenv("VELATRIX_DEBUG");
        setenv("VELATRIX_TRACE", "1", 1);
        setenv("VELATRIX_DEBUG_LOCATION", dir_.c_str(), 1);
        setenv("VELATRIX_TRACE_FILE", "trace.pcap", 1);
        E2e::SetUp();
    }

    void TearDown() override {
        E2e::TearDown();
        for (const char* name : kVariables) unsetenv(name);
        for (const auto& [name, value] : saved_) setenv(name.c_str(), value.c_str(), 1);
        std::error_code ignored;
        std::filesystem::remove_all(dir_, ignored);
    }

    std::string trace_path() const { return dir_ + "/trace.pcap"; }
    void expect_one_header_then_whole_records(bool caller_writes_header);

    std::string dir_;
    std::vector<std::pair<std::string, std::string>> saved_;
};

uint32_t le32(const Bytes& bytes, std::size_t at) {
    return bytes[at] | bytes[at + 1] << 8 | bytes[at + 2] << 16 | static_cast<uint32_t>(bytes[at + 3]) << 24;
}

void TraceFile::expect_one_header_then_whole_records(bool caller_writes_header) {
    EXPECT_FALSE(std::filesystem::exists(trace_path())) << "start-up wrote the trace";
    if (caller_writes_header) velatrix_debug_write_trace_header();
    velatrix_device* device = open(plug(first_model_with().c_str()));
    ASSERT_NE(device, nullptr);
    EXPECT_EQ(velatrix_close_device(device), 1);

    std::ifstream file(trace_path(), std::ios::binary);
    const Bytes trace{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
    const Bytes header = {0xd4, 0xc3, 0xb2, 0xa1, 0x02, 0x00, 0x04, 0x00, 0, 0, 0, 0,
                          0,    0,    0,    0,    0xff, 0xff, 0x00, 0x00, 1, 0, 0, 0};
    ASSERT_GT(trace.size(), header.size() + 16 + 42);
    EXPECT_EQ(Bytes(trace.begin(), trace.begin() + 24), header);
    const Bytes magic(header.begin(), header.begin() + 4);
    EXPECT_EQ(std::search(trace.begin() + 1, trace.end(), magic.begin(), magic.end()), trace.end())
        << "a second global header";

    // The first record starts at 24 (its lengths agree and its frame is
    // IPv4 over Ethernet), and record after record ends exactly at the end.
    EXPECT_EQ(le32(trace, 24 + 8), le32(trace, 24 + 12));
    EXPECT_EQ(Bytes(trace.begin() + 24 + 28, trace.begin() + 24 + 31), (Bytes{0x08, 0x00, 0x45}));
    std::size_t at = 24;
    int records = 0;
    while (at + 16 <= trace.size()) {
        const uint32_t captured = le32(trace, at + 8);
        ASSERT_EQ(le32(trace, at + 12), captured) << "record " << records << " at " << at;
        ASSERT_GE(captured, 42u);
        at += 16 + captured;
        ++records;
    }
    EXPECT_EQ(at, trace.size());
    EXPECT_GT(records, 1) << "open moves several reports";
}

TEST_F(TraceFile, HeaderFromTheCaller) { expect_one_header_then_whole_records(true); }
TEST_F(TraceFile, HeaderFromTheFirstRecord) { expect_one_header_then_whole_records(false); }

}  // namespace
}  // namespace velatrix::e2e
