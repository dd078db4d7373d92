// Byte access as the pad's firmware does it. The virtual pad decodes what
// the host sends and encodes its answers with these helpers only; it shares
// no packing code with the host side, so a packing mistake on either side
// shows up as a mismatch instead of being mirrored.
//
// Every access is bounded by the buffer: reading past the end gives zero,
// writing past the end is dropped.
#pragma once

#include <cstddef>
#include <cstdint>
#include <span>
#include <string_view>

namespace velatrix::virtual_pad {

// A report as it arrived from the host.
class Incoming {
public:
    explicit Incoming(std::span<const uint8_t> bytes) : bytes_(bytes) {}

    std::size_t size() const { return bytes_.size(); }
    std::span<const uint8_t> raw() const { return bytes_; }
    uint8_t id() const { return u8(0); }
    uint8_t u8(std::size_t at) const { return at < bytes_.size() ? bytes_[at] : 0; }
    bool bit(std::size_t at, unsigned bit) const { return (u8(at) >> bit) & 1u; }
    uint16_t le16(std::size_t at) const { return static_cast<uint16_t>(u8(at) | (u8(at + 1) << 8)); }
    uint16_t be16(std::size_t at) const { return static_cast<uint16_t>((u8(at) << 8) | u8(at + 1)); }
    uint32_t le32(std::size_t at) const {
        return static_cast<uint32_t>(u8(at)) | (static_cast<uint32_t>(u8(at + 1)) << 8) |
               (static_cast<uint32_t>(u8(at + 2)) << 16) | (static_cast<uint32_t>(u8(at + 3)) << 24);
    }
    // `count` bytes from `at`, cut to what the report holds.
    std::span<const uint8_t> bytes(std::size_t at, std::size_t count) const {
        if (at >= bytes_.size()) return {};
        return bytes_.subspan(at, count < bytes_.size() - at ? count : bytes_.size() - at);
    }
    template <std::size_t N>
    void copy_to(std::size_t at, uint8_t (&out)[N]) const {
        for (std::size_t i = 0; i < N; ++i) out[i] = u8(at + i);
    }

private:
    std::span<const uint8_t> bytes_;
};

// An answer being built in the host's buffer.
class Outgoing {
public:
    explicit Outgoing(std::span<uint8_t> bytes) : bytes_(bytes) {}

    std::size_t size() const { return bytes_.size(); }
    std::span<uint8_t> raw() { return bytes_; }
    uint8_t id() const { return bytes_.empty() ? 0 : bytes_[0]; }
    void u8(std::size_t at, uint8_t value) {
        if (at < bytes_.size()) bytes_[at] = value;
    }
    void le16(std::size_t at, uint16_t value) {
        u8(at, static_cast<uint8_t>(value));
        u8(at + 1, static_cast<uint8_t>(value >> 8));
    }
    void le32(std::size_t at, uint32_t value) {
        for (unsigned i = 0; i < 4; ++i) u8(at + i, static_cast<uint8_t>(value >> (8 * i)));
    }
    void bytes(std::size_t at, std::span<const uint8_t> data) {
        for (std::size_t i = 0; i < data.size(); ++i) u8(at + i, data[i]);
    }
    void text(std::size_t at, std::string_view text) {
        for (std::size_t i = 0; i < text.size(); ++i) u8(at + i, static_cast<uint8_t>(text[i]));
    }
    void fill(std::size_t at, std::size_t count, uint8_t value) {
        for (std::size_t i = 0; i < count; ++i) u8(at + i, value);
    }

private:
    std::span<uint8_t> bytes_;
};

}  // namespace velatrix::virtual_pad
