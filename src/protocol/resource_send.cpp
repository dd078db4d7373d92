// Sending a whole resource: the pad takes it in chunks of at most 1024
// bytes and appends them in order (no offset travels), so the chunks go
// out one after another and the first failure ends the transfer.
#include <algorithm>
#include <cstring>
#include <memory>

#include "debug/log.h"
#include "protocol/report_index.h"
#include "velatrix/screens.h"

extern "C" {

int velatrix_send_resource(velatrix_device* device, uint8_t resource_number, uint32_t resource_type,
                           const uint8_t* data, uint32_t length) {
    VELATRIX_TRACE_FUNCTION();
    // An invalid resource has no contents to store.
    if (resource_type != VELATRIX_RESOURCE_TEXT && resource_type != VELATRIX_RESOURCE_GRAPHIC) return 1;
    if (data == nullptr && length > 0) {
        VELATRIX_REPORT_ERROR("Resource data was null, unable to send resource %u.",
                              static_cast<unsigned>(resource_number));
        return 0;
    }
    // Heap: a chunk record is over a kilobyte.
    auto chunk = std::make_unique<velatrix_hid_feature_resource>();
    for (uint32_t offset = 0; offset < length;) {
        const uint32_t size = std::min<uint32_t>(length - offset, VELATRIX_RESOURCE_CHUNK_SIZE);
        *chunk = velatrix_hid_feature_resource{};
        chunk->report_id = velatrix::protocol::report_id::kResource;
        chunk->resource_number = resource_number;
        chunk->resource_type = resource_type;
        chunk->resource_size = length;
        chunk->chunk_length = static_cast<uint16_t>(size);
        std::memcpy(chunk->data, data + offset, size);
        if (velatrix_set_resource(device, chunk.get()) != 1) {
            VELATRIX_LOG(VELATRIX_LEVEL_WARNING, "Resource %u failed at byte %u of %u: %s",
                         static_cast<unsigned>(resource_number), offset, length, velatrix_get_last_error());
            return 0;
        }
        offset += size;
    }
    return 1;
}

int velatrix_send_text_resource(velatrix_device* device, uint8_t resource_number, const char* text) {
    VELATRIX_TRACE_FUNCTION();
    if (text == nullptr) {
        VELATRIX_REPORT_ERROR("Resource text was null, unable to send resource %u.",
                              static_cast<unsigned>(resource_number));
        return 0;
    }
    // The pad stores the text with its terminator.
    const size_t length = std::strlen(text) + 1;
    if (length > UINT32_MAX) {
        VELATRIX_REPORT_ERROR("Resource text is too long to send.");
        return 0;
    }
    return velatrix_send_resource(device, resource_number, VELATRIX_RESOURCE_TEXT,
                                  reinterpret_cast<const uint8_t*>(text), static_cast<uint32_t>(length));
}

}  // extern "C"
