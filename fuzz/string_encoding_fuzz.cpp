// Caller text in a named encoding: arbitrary bytes, lengths that do and do
// not match the text, and a few encodings of different shapes (multi-byte,
// fixed-width, stateful, single-byte, unknown, the default).
//
// Input: encoding selector, a length adjustment, then the text.
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <vector>

#include "byte_reader.h"
#include "velatrix/fonts.h"

using velatrix::fuzz::ByteReader;
using velatrix::fuzz::violated;

namespace {

constexpr const char* kEncodings[] = {
    nullptr,     "utf-8",     "UTF-16LE",  "UTF-16BE", "UTF-32",          "ISO-8859-1",
    "windows-1252", "Shift_JIS", "GB18030", "ISO-2022-JP", "ibm-1047", "no-such-encoding", "",
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    ByteReader input(data, size);
    const char* encoding = kEncodings[input.u8() % std::size(kEncodings)];
    // 0: the text's own length; 1: one short; 2: negative; 3: zero.
    const uint8_t length_mode = input.u8() % 4;
    const std::vector<uint8_t> bytes = input.rest();
    // Exactly the text's bytes, no terminator: the length is all there is.
    auto* text = static_cast<char*>(std::malloc(bytes.size()));
    if (text == nullptr && !bytes.empty()) return 0;
    if (!bytes.empty()) std::memcpy(text, bytes.data(), bytes.size());

    int32_t length = static_cast<int32_t>(bytes.size());
    if (length_mode == 1 && length > 0) --length;
    if (length_mode == 2) length = -1 - length;
    if (length_mode == 3) length = 0;

    int32_t count = -1;
    int32_t* code_points = parse_string_encoding(text, length, encoding, &count);
    if (code_points != nullptr) {
        if (count < 0 || count > (length > 0 ? length : 0)) violated("code point count");
        for (int32_t i = 0; i < count; ++i) {
            if (code_points[i] <= 0 || code_points[i] > 0x10FFFF) violated("code point out of range");
        }
        if (code_points[count] != 0) violated("code points not terminated");
        if (u_strlen32(code_points) != count) violated("terminator inside the code points");
        std::free(code_points);
    }
    // The count is optional.
    std::free(parse_string_encoding(text, length, encoding, nullptr));
    std::free(text);
    return 0;
}
