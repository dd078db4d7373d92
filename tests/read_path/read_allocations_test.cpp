// The read path, from the access layer handing over a report to the input
// callbacks, allocates nothing per report. This program counts every heap
// allocation its reading thread makes: operator new is replaced here, and
// the C allocation functions are wrapped at link time (--wrap), which
// covers the library's layers linked into it.
#include <atomic>
#include <cstdlib>
#include <new>

#include "host/e2e_fixture.h"
#include "velatrix/input.h"

extern "C" {
void* __real_malloc(std::size_t size);
void* __real_calloc(std::size_t count, std::size_t size);
void* __real_realloc(void* pointer, std::size_t size);
}

namespace {

// Only the reading thread, and only while armed, counts.
thread_local bool counting = false;
thread_local long allocations = 0;

void note() {
    if (counting) ++allocations;
}

}  // namespace

extern "C" {
void* __wrap_malloc(std::size_t size) {
    note();
    return __real_malloc(size);
}
void* __wrap_calloc(std::size_t count, std::size_t size) {
    note();
    return __real_calloc(count, size);
}
void* __wrap_realloc(void* pointer, std::size_t size) {
    note();
    return __real_realloc(pointer, size);
}
}

// The replacement new takes its memory from malloc, so free is its delete.
#pragma GCC diagnostic ignored "-Wmismatched-new-delete"

void* operator new(std::size_t size) {
    note();
    if (void* memory = __real_malloc(size == 0 ? 1 : size)) return memory;
    throw std::bad_alloc();
}
void* operator new[](std::size_t size) { return operator new(size); }
void* operator new(std::size_t size, const std::nothrow_t&) noexcept {
    note();
    return __real_malloc(size == 0 ? 1 : size);
}
void* operator new[](std::size_t size, const std::nothrow_t& tag) noexcept { return operator new(size, tag); }
void operator delete(void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory, const std::nothrow_t&) noexcept { std::free(memory); }
void operator delete[](void* memory) noexcept { std::free(memory); }
void operator delete(void* memory, std::size_t) noexcept { std::free(memory); }
void operator delete[](void* memory, std::size_t) noexcept { std::free(memory); }

namespace velatrix::e2e {
namespace {

std::atomic<int> delivered{0};

// The heap allocations this thread makes during `call`.
template <class Call>
long allocations_in(Call&& call) {
    allocations = 0;
    counting = true;
    call();
    counting = false;
    return allocations;
}

int on_input(velatrix_device*, const velatrix_input_report* record, int type, const uint8_t*, uint32_t) {
    if (type == VELATRIX_INPUT_COORDINATE && record->data.coordinate.x == 0x0201) delivered.fetch_add(1);
    return 0;
}

using ReadAllocations = E2e;

TEST_F(ReadAllocations, NonePerReportFromTheAccessLayerToTheCallbacks) {
    const velatrix_virtual_pad pad = plug("mono-320");
    velatrix_device* device = open(pad);
    ASSERT_NE(device, nullptr);
    velatrix_register_input_callback(device, on_input);
    const uint8_t report[] = {1, 0x11, 0x01, 0x02, 0x78, 0x56};
    // Bursts of every size up to the queue's slots made at open: the first
    // read of each size is measured like every other.
    for (int burst : {1, 2, 16, 64}) {
        SCOPED_TRACE(burst);
        delivered = 0;
        for (int i = 0; i < burst; ++i) velatrix_virtual_push_input(pad, report, sizeof report);
        int result = 0;
        EXPECT_EQ(allocations_in([&] { result = velatrix_real_device_read(device); }), 0);
        EXPECT_EQ(result, 1);
        EXPECT_EQ(delivered.load(), burst);
    }
    // The service drivers call for each report takes the same path.
    delivered = 0;
    EXPECT_EQ(allocations_in([&] { velatrix_get_driver_input_report(device, report, sizeof report); }), 0);
    EXPECT_EQ(delivered.load(), 1);
    // The public parser still hands its caller a record of its own.
    velatrix_input_report* record = nullptr;
    EXPECT_EQ(allocations_in([&] { record = velatrix_parse_input_report(device, report, sizeof report); }), 1);
    ASSERT_NE(record, nullptr);
    velatrix_free_input_report(record);
}

}  // namespace
}  // namespace velatrix::e2e
