// The virtual pad's firmware answering arbitrary feature requests: any id,
// any length, any payload, in any order, on either model. Afterwards the
// pad's state is read back through the inspection API, so stored hostile
// state (regions, screens, resources, serial) is looked at too.
//
// Input: model index, flags (bit 0: the pad never reports busy), then up to
// kMaxRequests requests: a kind byte (bit 0 set: get, else set), a length
// (u16, modulo kMaxLength) and that many bytes of buffer, zero-filled past
// the input.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "byte_reader.h"
#include "velatrix-virtual.h"

using velatrix::fuzz::ByteReader;
using velatrix::fuzz::violated;

namespace {

constexpr int kMaxRequests = 32;
// A little longer than the longest report the pads know (2049 bytes).
constexpr uint32_t kMaxLength = 2304;

void read_back(velatrix_virtual_pad pad) {
    char text[300];
    velatrix_virtual_get_serial(pad, text, sizeof text);
    velatrix_virtual_get_status_text(pad, text, sizeof text);
    for (int number = 0; number < 256; ++number) {
        velatrix_virtual_region region;
        if (velatrix_virtual_get_region(pad, static_cast<uint8_t>(number), &region) == 1 &&
            strnlen(region.caption, sizeof region.caption) >= sizeof region.caption) {
            violated("region caption not terminated");
        }
        velatrix_virtual_screen screen;
        velatrix_virtual_get_screen(pad, static_cast<uint8_t>(number), &screen);
        uint8_t type = 0;
        uint8_t data[64];
        const int32_t size = velatrix_virtual_get_resource(pad, static_cast<uint8_t>(number), &type, data, sizeof data);
        if (size < -1) violated("resource size");
    }
    uint8_t values[16];
    for (uint8_t id : {101, 115, 172}) velatrix_virtual_get_commands(pad, id, values, sizeof values);
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ByteReader input(data, size);
    const uint32_t models = velatrix_virtual_model_count();
    const char* model = velatrix_virtual_model_name(input.u8() % models);
    const uint8_t flags = input.u8();
    const velatrix_virtual_pad pad = velatrix_virtual_plug(model);
    if (pad == 0) violated("plugging a known model failed");
    if ((flags & 0x01) != 0) velatrix_virtual_set_busy_polls(pad, 0);

    for (int n = 0; n < kMaxRequests && !input.empty(); ++n) {
        const bool get = (input.u8() & 0x01) != 0;
        const uint32_t length = input.u16() % kMaxLength;
        const std::vector<uint8_t> bytes = input.bytes(length);
        // Exactly `length` bytes on the heap: a byte past them is caught.
        auto* buffer = static_cast<uint8_t*>(std::malloc(length));
        if (buffer == nullptr && length > 0) break;
        if (length > 0) std::memcpy(buffer, bytes.data(), length);
        if (get) {
            const int32_t answered = velatrix_virtual_get_feature(pad, buffer, length);
            if (answered < -1 || answered > static_cast<int32_t>(length)) violated("answer longer than the buffer");
        } else {
            velatrix_virtual_set_feature(pad, buffer, length);
        }
        std::free(buffer);
    }
    read_back(pad);
    // A fault may have unplugged it already; then this fails harmlessly.
    velatrix_virtual_unplug(pad);
    return 0;
}
