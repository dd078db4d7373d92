// Reads a fuzzer's input front to back; past the end every read gives
// zeros, so a target can lay its input out like a file format and any
// truncation of it is still a valid input.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <vector>

namespace velatrix::fuzz {

class ByteReader {
public:
    ByteReader(const uint8_t* data, size_t size) : data_(data), size_(size) {}

    bool empty() const { return position_ >= size_; }
    size_t remaining() const { return size_ - std::min(position_, size_); }

    uint8_t u8() { return position_ < size_ ? data_[position_++] : 0; }
    uint16_t u16() { return static_cast<uint16_t>(u8() | (u8() << 8)); }
    uint32_t u32() { return uint32_t{u16()} | (uint32_t{u16()} << 16); }

    // Exactly `count` bytes: what the input holds, then zeros.
    std::vector<uint8_t> bytes(size_t count) {
        std::vector<uint8_t> out(count, 0);
        const size_t taken = std::min(count, remaining());
        if (taken > 0) std::memcpy(out.data(), data_ + position_, taken);
        position_ += taken;
        return out;
    }

    // Up to `count` bytes, as many as the input still holds.
    std::vector<uint8_t> bytes_up_to(size_t count) { return bytes(std::min(count, remaining())); }

    // Everything left.
    std::vector<uint8_t> rest() { return bytes(remaining()); }

private:
    const uint8_t* data_;
    size_t size_;
    size_t position_ = 0;
};

// A failed property check: abort, so libFuzzer keeps the input.
[[noreturn]] inline void violated(const char* what) {
    std::fprintf(stderr, "property violated: %s\n", what);
    std::abort();
}

}  // namespace velatrix::fuzz
