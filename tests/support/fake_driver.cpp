#include "support/fake_driver.h"

#include <gtest/gtest.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <sstream>

#include "velatrix/error.h"

namespace velatrix::testing {
namespace {
FakeDriver* active = nullptr;

char* duplicate(const std::string& text) {
    char* copy = static_cast<char*>(std::malloc(text.size() + 1));
    std::memcpy(copy, text.c_str(), text.size() + 1);
    return copy;
}

// The region table is one plain allocation; the fake sits below the
// protocol layer, so it frees it directly.
void free_record(velatrix_device* device) {
    std::free(device->path);
    std::free(device->model);
    std::free(device->manufacturer);
    std::free(device->uuid);
    std::free(device->regions);
    velatrix_list_free(device->input_callbacks);
    std::free(device);
}
}  // namespace

struct FakeDriverOps {
    static int32_t init() { return 1; }
    static int destroy(velatrix_device_driver*) { return 1; }
    static int open_device(velatrix_device*) {
        ++active->open_calls_;
        return active->open_result_;
    }
    static int close_device(velatrix_device*) {
        ++active->close_calls_;
        return 1;
    }
    static int list_devices(velatrix_device_driver* driver, velatrix_device** head) {
        velatrix_device* first = nullptr;
        velatrix_device* last = nullptr;
        for (const ScriptedPad& pad : active->pads_) {
            auto* device = static_cast<velatrix_device*>(std::calloc(1, sizeof(velatrix_device)));
            device->path = duplicate(pad.path);
            device->vendor_id = pad.vendor_id;
            device->product_id = pad.product_id;
            device->model = pad.model.empty() ? nullptr : duplicate(pad.model);
            device->manufacturer = pad.manufacturer.empty() ? nullptr : duplicate(pad.manufacturer);
            device->driver = driver;
            (last != nullptr ? last->next : first) = device;
            last = device;
        }
        *head = first;
        return 1;
    }
    static int device_read(velatrix_device*) {
        ++active->read_calls_;
        return 1;
    }
    static int set_output(velatrix_device* device, uint8_t* buffer, uint32_t length) {
        return active->transfer(Direction::Output, device, buffer, length);
    }
    static int set_feature(velatrix_device* device, uint8_t* buffer, uint32_t length) {
        return active->transfer(Direction::Set, device, buffer, length);
    }
    static int get_feature(velatrix_device* device, uint8_t* buffer, uint32_t length) {
        return active->transfer(Direction::Get, device, buffer, length);
    }
    static const char* name() { return "FAKE"; }
    static uint8_t thread_running() { return 0; }
    static int thread_wait() { return 0; }
    static void shutdown() {}
    static int free_device(velatrix_device* device) {
        ++active->free_calls_;
        free_record(device);
        return 1;
    }
};

FakeDriver::FakeDriver() {
    active = this;
    driver_.init = &FakeDriverOps::init;
    driver_.destroy = &FakeDriverOps::destroy;
    driver_.open_device = &FakeDriverOps::open_device;
    driver_.close_device = &FakeDriverOps::close_device;
    driver_.list_devices = &FakeDriverOps::list_devices;
    driver_.device_read = &FakeDriverOps::device_read;
    driver_.set_output_report = &FakeDriverOps::set_output;
    driver_.set_feature_report = &FakeDriverOps::set_feature;
    driver_.get_feature_report = &FakeDriverOps::get_feature;
    driver_.get_driver_name = &FakeDriverOps::name;
    driver_.thread_running = &FakeDriverOps::thread_running;
    driver_.thread_wait = &FakeDriverOps::thread_wait;
    driver_.shutdown = &FakeDriverOps::shutdown;
    driver_.free_device = &FakeDriverOps::free_device;
}

FakeDriver::~FakeDriver() {
    for (velatrix_device* device : owned_) {
        velatrix_list_remove_ptr(velatrix_get_open_devices(), device);
        free_record(device);
    }
    if (active == this) active = nullptr;
}

velatrix_device* FakeDriver::make_device(const std::string& path) {
    auto* device = static_cast<velatrix_device*>(std::calloc(1, sizeof(velatrix_device)));
    device->path = duplicate(path);
    device->driver = &driver_;
    owned_.push_back(device);
    return device;
}

void FakeDriver::answer_sequence(uint8_t report_id, std::vector<Bytes> answers) {
    answers_[report_id] = std::move(answers);
    answer_position_[report_id] = 0;
}

void FakeDriver::busy_for(int polls, uint8_t busy_bits) {
    busy_polls_ = polls;
    busy_bits_ = busy_bits;
}

void FakeDriver::fail_transfer(int nth, std::string message) {
    fail_countdown_ = nth;
    fail_message_ = std::move(message);
}

int FakeDriver::transfer(Direction direction, velatrix_device*, uint8_t* buffer, uint32_t length) {
    const uint8_t id = length > 0 ? buffer[0] : 0;
    Transfer record{direction, id, length, {}, true};
    std::string failure;
    if (fail_countdown_ > 0 && --fail_countdown_ == 0) failure = fail_message_;
    if (auto it = failing_reports_.find(id); it != failing_reports_.end()) failure = it->second;
    if (!failure.empty()) {
        record.ok = false;
        velatrix_report_error_internal("%s", failure.c_str());
    } else if (direction == Direction::Get) {
        if (auto it = answers_.find(id); it != answers_.end() && !it->second.empty()) {
            size_t& position = answer_position_[id];
            const Bytes& answer = it->second[std::min(position, it->second.size() - 1)];
            ++position;
            std::memcpy(buffer, answer.data(), std::min<size_t>(answer.size(), length));
        }
        if (id == 13 && busy_polls_ > 0 && length > 3) {
            --busy_polls_;
            buffer[3] = busy_bits_;
        }
    }
    record.bytes.assign(buffer, buffer + length);
    transfers_.push_back(std::move(record));
    return failure.empty() ? 1 : 0;
}

std::vector<Bytes> FakeDriver::sets(int report_id) const {
    std::vector<Bytes> result;
    for (const Transfer& t : transfers_) {
        if (t.direction == Direction::Set && (report_id < 0 || t.report_id == report_id)) result.push_back(t.bytes);
    }
    return result;
}

std::string FakeDriver::sequence(bool include_status_polls) const {
    std::ostringstream out;
    for (const Transfer& t : transfers_) {
        if (!include_status_polls && t.direction == Direction::Get && t.report_id == 13) continue;
        if (out.tellp() > 0) out << ' ';
        out << (t.direction == Direction::Get ? 'G' : t.direction == Direction::Set ? 'S' : 'O') << int(t.report_id);
    }
    return out.str();
}

int FakeDriver::gets_of(uint8_t report_id) const {
    int count = 0;
    for (const Transfer& t : transfers_) count += (t.direction == Direction::Get && t.report_id == report_id);
    return count;
}

std::string capture_stdout(const std::function<void()>& body) {
    std::fflush(stdout);
    ::testing::internal::CaptureStdout();
    body();
    std::fflush(stdout);
    return ::testing::internal::GetCapturedStdout();
}

}  // namespace velatrix::testing
