// HID report descriptors as a device hands them over: the walk must stay
// inside the descriptor and the 256-entry report map, and the map must name
// exactly the report ids a plain short-item walk finds.
#include <array>
#include <cstdint>
#include <cstdlib>
#include <cstring>

#include "byte_reader.h"
#include "host/real_device.h"

using velatrix::fuzz::violated;

namespace {

// The report ids declared by Report ID items (global, tag 8) of a short-item
// walk; an item cut off by the end of the descriptor declares nothing.
std::array<bool, 256> declared_ids(const uint8_t* descriptor, size_t length) {
    std::array<bool, 256> ids{};
    static constexpr size_t kDataSize[4] = {0, 1, 2, 4};
    size_t i = 0;
    while (i < length) {
        const uint8_t prefix = descriptor[i];
        if ((prefix & 0xFC) == 0x84 && i + 1 < length) ids[descriptor[i + 1]] = true;
        i += 1 + kDataSize[prefix & 0x3];
    }
    return ids;
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    // Exactly the descriptor's bytes and exactly the record's map, on the
    // heap, so a step past either is caught.
    auto* descriptor = static_cast<uint8_t*>(std::malloc(size));
    if (descriptor == nullptr && size > 0) return 0;
    if (size > 0) std::memcpy(descriptor, data, size);
    auto* map = static_cast<uint8_t*>(std::malloc(256));
    if (map == nullptr) return 0;
    // Whatever an earlier descriptor left: 0 to 254 are cleared, 255 is kept
    // unless this descriptor declares it.
    std::memset(map, 0xA5, 256);

    parse_hid_descriptor(descriptor, static_cast<uint32_t>(size), map);

    const std::array<bool, 256> expected = declared_ids(descriptor, size);
    for (int id = 0; id < 255; ++id) {
        if (map[id] != (expected[id] ? 1 : 0)) violated("report map entry differs from the declared ids");
    }
    if (map[255] != (expected[255] ? 1 : 0xA5)) violated("report map entry 255");
    std::free(map);
    std::free(descriptor);
    return 0;
}
