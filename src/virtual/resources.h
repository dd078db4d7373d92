// The pad's resource storage: numbered texts and graphics that arrive in
// chunks of up to 1024 bytes (report 0x8E), appended in order, and are read
// back the same way.
#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace velatrix::virtual_pad {

inline constexpr std::size_t kResourceChunk = 1024;
inline constexpr uint8_t kResourceInvalid = 255;
// Resource numbers the availability report can mark as used.
inline constexpr std::size_t kResourceSlots = 96;

struct Resource {
    uint8_t type = kResourceInvalid;
    std::vector<uint8_t> data;
};

class ResourceStore {
public:
    explicit ResourceStore(std::size_t capacity_bytes) : capacity_(capacity_bytes) {}

    const std::map<uint8_t, Resource>& resources() const { return resources_; }
    const Resource* find(uint8_t number) const;
    std::size_t used_bytes() const;
    // A resource whose chunks are still arriving.
    bool assembling() const { return assembly_.has_value(); }

    uint8_t index() const { return index_; }
    // Selecting a resource restarts its read-back from the first chunk.
    void select(uint8_t number) {
        index_ = number;
        read_offset_ = 0;
    }

    // One chunk from the host; false with `error` when refused.
    bool write_chunk(std::span<const uint8_t> report, std::string& error);
    // Next chunk of the selected resource; after the last one the read
    // starts over.
    void read_chunk(std::span<uint8_t> report);
    void encode_info(std::span<uint8_t> report) const;
    void encode_availability(std::span<uint8_t> report) const;
    bool erase(uint8_t number);

private:
    struct Assembly {
        uint8_t number;
        uint8_t type;
        uint32_t size;
        std::vector<uint8_t> data;
    };

    std::size_t capacity_;
    std::map<uint8_t, Resource> resources_;
    std::optional<Assembly> assembly_;
    uint8_t index_ = 0;
    std::size_t read_offset_ = 0;
};

}  // namespace velatrix::virtual_pad
