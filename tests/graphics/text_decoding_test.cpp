// Caller text in named encodings, decoded through ICU, and measured.
#include <gtest/gtest.h>

#include <cstdlib>
#include <string>
#include <vector>

#include "graphics/fonts/string_decoding.h"
#include "velatrix/fonts.h"

namespace velatrix::testing {
namespace {

struct Decoded {
    bool ok = false;
    std::vector<int32_t> code_points;  // without the terminator
    int32_t count = -1;
    bool terminated = false;
};

Decoded decode(const std::string& bytes, const char* encoding) {
    Decoded result;
    int32_t* array =
        parse_string_encoding(bytes.data(), static_cast<int32_t>(bytes.size()), encoding, &result.count);
    if (array == nullptr) return result;
    result.ok = true;
    for (int32_t i = 0; i < result.count; ++i) result.code_points.push_back(array[i]);
    result.terminated = array[result.count] == 0;
    std::free(array);
    return result;
}

// Every result is terminated by a 0 after its `count` code points.
TEST(TextDecoding, DecodesNamedEncodingsUpToTheFirstNul) {
    const struct {
        const char* name;
        std::string bytes;
        const char* encoding;
        std::vector<int32_t> code_points;
    } kCases[] = {
        {"utf-8", "A\xc3\xa9\xe2\x82\xac\xe2\x86\x92", "utf-8", {65, 233, 8364, 8594}},
        {"utf-16le", std::string("A\0\xe9\0\xac\x20\x3d\xd8\x00\xde", 10), "UTF-16LE", {65, 233, 8364, 0x1F600}},
        // A byte order mark is honoured and not returned as a character.
        {"utf-16 with a mark", std::string("\xfe\xff\0A\x21\x90", 6), "UTF-16", {65, 8592}},
        {"latin-1", "caf\xe9 \xb0", "ISO-8859-1", {'c', 'a', 'f', 233, ' ', 176}},
        {"nul inside", std::string("AB\0CD", 5), "utf-8", {'A', 'B'}},
        {"empty", "", "utf-8", {}},
        // No encoding named: the library's default, UTF-8.
        {"default", "\xc3\xa9", nullptr, {233}},
        // The converters substitute U+FFFD for bytes they cannot read, so
        // the text still draws, with the fallback glyph in their place.
        {"stray byte", "a\xff" "b", "utf-8", {'a', 0xFFFD, 'b'}},
        {"cut sequence", "a\xe2\x82", "utf-8", {'a', 0xFFFD}},
        {"odd utf-16 length", std::string("A\0B", 3), "UTF-16LE", {'A', 0xFFFD}},
    };
    for (const auto& c : kCases) {
        const Decoded decoded = decode(c.bytes, c.encoding);
        ASSERT_TRUE(decoded.ok) << c.name;
        EXPECT_EQ(decoded.code_points, c.code_points) << c.name;
        EXPECT_TRUE(decoded.terminated) << c.name;
    }

    // Only `length` bytes are read, wherever the string itself ends.
    int32_t count = -1;
    int32_t* two = parse_string_encoding("ABCDEF", 2, "utf-8", &count);
    ASSERT_NE(two, nullptr);
    EXPECT_EQ(count, 2);
    EXPECT_EQ(two[2], 0);
    std::free(two);
}

TEST(TextDecoding, FailuresReturnNull) {
    // An unknown encoding name.
    const Decoded unknown = decode("abc", "no-such-encoding");
    EXPECT_FALSE(unknown.ok);
    EXPECT_EQ(unknown.count, 0);
    // Arguments that cannot describe text.
    EXPECT_EQ(parse_string_encoding(nullptr, 3, "utf-8", nullptr), nullptr);
    EXPECT_EQ(parse_string_encoding("abc", -1, "utf-8", nullptr), nullptr);
}

TEST(TextDecoding, MeasuresDecodedTextInAFont) {
    using velatrix::fonts::measure_text_height;
    using velatrix::fonts::measure_text_width;
    // "é" in Latin-1 is one character of the font; read as UTF-8 it is a
    // stray byte, which the mono font has no glyph for.
    EXPECT_EQ(measure_text_width(&ubuntu_mono_e_16pt, "\xe9", 1, "ISO-8859-1"), 9);
    EXPECT_EQ(measure_text_width(&ubuntu_mono_e_16pt, "\xe9", 1, "utf-8"), 0);
    EXPECT_EQ(measure_text_height(&velatrix_default, "A", 1, "bogus"), std::nullopt);
}

}  // namespace
}  // namespace velatrix::testing
