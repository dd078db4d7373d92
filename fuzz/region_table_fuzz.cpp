// The region table report with a hostile region count and caption length:
// whatever the pad's display information claims, unpacking must stay inside
// the report and the caller's records, and captions stay terminated.
//
// Input: region count (u16), max caption length (u32), then the report's
// bytes. The report is sized as the function asks of its callers,
// count * (max_caption_length + 29) + 1 bytes, zero-filled past the input.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <vector>

#include "byte_reader.h"
#include "velatrix/regions.h"

using velatrix::fuzz::ByteReader;
using velatrix::fuzz::violated;

namespace {

// Bigger reports than this are not worth an iteration's time.
constexpr size_t kMaxReport = size_t{1} << 16;

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ByteReader input(data, size);
    const uint32_t count = input.u16();
    const uint32_t max_caption_length = input.u32();
    const size_t report_length = size_t{count} * (size_t{max_caption_length} + 29) + 1;
    if (report_length > kMaxReport) return 0;

    auto* report = static_cast<uint8_t*>(std::malloc(report_length));
    if (report == nullptr) return 0;
    const std::vector<uint8_t> bytes = input.bytes(report_length);
    std::memcpy(report, bytes.data(), report_length);
    // Exactly `count` records; none at all is a zero-sized block.
    auto* regions =
        static_cast<velatrix_device_region_info*>(std::calloc(count, sizeof(velatrix_device_region_info)));
    if (regions == nullptr && count > 0) {
        std::free(report);
        return 0;
    }

    velatrix_parse_regions(report, regions, count, max_caption_length);

    for (uint32_t i = 0; i < count; ++i) {
        const velatrix_device_region_info& region = regions[i];
        const uint8_t* block = report + 1 + size_t{i} * (size_t{max_caption_length} + 29);
        if (region.number != block[0] || region.type != block[1]) violated("region number or type");
        if (region.type == VELATRIX_REGION_BUTTON &&
            strnlen(region.data.button.caption, sizeof region.data.button.caption) >= sizeof region.data.button.caption) {
            violated("caption not terminated inside its field");
        }
    }
    std::free(regions);
    std::free(report);
    return 0;
}
