#include "virtual/resources.h"

#include <algorithm>

#include "virtual/wire.h"

namespace velatrix::virtual_pad {

namespace {
// Resource report.
constexpr std::size_t kNumber = 1;
constexpr std::size_t kType = 2;
constexpr std::size_t kSize = 5;
constexpr std::size_t kChunkLength = 19;
constexpr std::size_t kData = 21;
}  // namespace

const Resource* ResourceStore::find(uint8_t number) const {
    auto it = resources_.find(number);
    return it == resources_.end() ? nullptr : &it->second;
}

std::size_t ResourceStore::used_bytes() const {
    std::size_t used = 0;
    for (const auto& [number, resource] : resources_) used += resource.data.size();
    return used;
}

bool ResourceStore::write_chunk(std::span<const uint8_t> report, std::string& error) {
    Incoming in(report);
    uint8_t number = in.u8(kNumber);
    uint32_t size = in.le32(kSize);
    // A chunk for another resource than the one being assembled starts a
    // new resource; the unfinished one is dropped.
    if (!assembly_ || assembly_->number != number) {
        const Resource* replaced = find(number);
        std::size_t available = capacity_ - used_bytes() + (replaced ? replaced->data.size() : 0);
        if (size > available) {
            assembly_.reset();
            error = "Resource storage full";
            return false;
        }
        assembly_ = Assembly{number, in.u8(kType), size, {}};
        assembly_->data.reserve(size);
    }
    std::size_t length = std::min<std::size_t>(in.le16(kChunkLength), kResourceChunk);
    length = std::min<std::size_t>(length, assembly_->size - assembly_->data.size());
    auto chunk = in.bytes(kData, length);
    assembly_->data.insert(assembly_->data.end(), chunk.begin(), chunk.end());
    if (assembly_->data.size() >= assembly_->size) {
        resources_[number] = Resource{assembly_->type, std::move(assembly_->data)};
        assembly_.reset();
        if (index_ == number) read_offset_ = 0;
    }
    return true;
}

void ResourceStore::read_chunk(std::span<uint8_t> report) {
    Outgoing out(report);
    out.fill(1, report.size(), 0);
    out.u8(kNumber, index_);
    const Resource* resource = find(index_);
    if (resource == nullptr) {
        out.u8(kType, kResourceInvalid);
        return;
    }
    out.u8(kType, resource->type);
    out.le32(kSize, static_cast<uint32_t>(resource->data.size()));
    std::size_t offset = std::min(read_offset_, resource->data.size());
    std::size_t length = std::min(kResourceChunk, resource->data.size() - offset);
    out.le16(kChunkLength, static_cast<uint16_t>(length));
    out.bytes(kData, std::span(resource->data).subspan(offset, length));
    read_offset_ = offset + length >= resource->data.size() ? 0 : offset + length;
}

void ResourceStore::encode_info(std::span<uint8_t> report) const {
    Outgoing out(report);
    out.fill(1, report.size(), 0);
    out.u8(1, index_);
    const Resource* resource = find(index_);
    if (resource == nullptr) {
        out.u8(2, kResourceInvalid);
        return;
    }
    out.u8(2, resource->type);
    // The firmware reports how many chunks the resource takes and a plain
    // byte sum of its contents beside the size.
    out.u8(3, static_cast<uint8_t>((resource->data.size() + kResourceChunk - 1) / kResourceChunk));
    out.le32(4, static_cast<uint32_t>(resource->data.size()));
    uint32_t sum = 0;
    for (uint8_t byte : resource->data) sum += byte;
    out.le32(8, sum);
}

void ResourceStore::encode_availability(std::span<uint8_t> report) const {
    Outgoing out(report);
    out.fill(1, report.size(), 0);
    out.u8(1, static_cast<uint8_t>(resources_.size()));
    out.le32(2, static_cast<uint32_t>(capacity_ - used_bytes()));
    uint8_t used[kResourceSlots / 8] = {};
    for (const auto& [number, resource] : resources_) {
        if (number < kResourceSlots) used[number / 8] = static_cast<uint8_t>(used[number / 8] | (1u << (number % 8)));
    }
    out.bytes(6, used);
}

bool ResourceStore::erase(uint8_t number) {
    if (assembly_ && assembly_->number == number) assembly_.reset();
    if (index_ == number) read_offset_ = 0;
    return resources_.erase(number) != 0;
}

}  // namespace velatrix::virtual_pad
