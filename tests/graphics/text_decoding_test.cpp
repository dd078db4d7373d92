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

TEST(TextDecoding, DecodesUtf8Utf16AndLatin1) {
    const Decoded utf8 = decode("A\xc3\xa9\xe2\x82\xac\xe2\x86\x92", "utf-8");
    ASSERT_TRUE(utf8.ok);
    EXPECT_EQ(utf8.code_points, (std::vector<int32_t>{65, 233, 8364, 8594}));
    EXPECT_EQ(utf8.count, 4);
    EXPECT_TRUE(utf8.terminated);

    const Decoded utf16le = decode(std::string("A\0\xe9\0\xac\x20\x3d\xd8\x00\xde", 10), "UTF-16LE");
    ASSERT_TRUE(utf16le.ok);
    EXPECT_EQ(utf16le.code_points, (std::vector<int32_t>{65, 233, 8364, 0x1F600}));

    // A byte order mark is honoured and not returned as a character.
    const Decoded utf16 = decode(std::string("\xfe\xff\0A\x21\x90", 6), "UTF-16");
    ASSERT_TRUE(utf16.ok);
    EXPECT_EQ(utf16.code_points, (std::vector<int32_t>{65, 8592}));

    const Decoded latin1 = decode("caf\xe9 \xb0", "ISO-8859-1");
    ASSERT_TRUE(latin1.ok);
    EXPECT_EQ(latin1.code_points, (std::vector<int32_t>{'c', 'a', 'f', 233, ' ', 176}));
}

TEST(TextDecoding, StopsAtTheFirstNulCharacter) {
    const Decoded text = decode(std::string("AB\0CD", 5), "utf-8");
    ASSERT_TRUE(text.ok);
    EXPECT_EQ(text.code_points, (std::vector<int32_t>{'A', 'B'}));
    EXPECT_TRUE(text.terminated);

    const Decoded empty = decode("", "utf-8");
    ASSERT_TRUE(empty.ok);
    EXPECT_EQ(empty.count, 0);
    EXPECT_TRUE(empty.terminated);

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
    // No encoding named: the library's default, UTF-8.
    const Decoded by_default = decode("\xc3\xa9", nullptr);
    ASSERT_TRUE(by_default.ok);
    EXPECT_EQ(by_default.code_points, (std::vector<int32_t>{233}));
}

TEST(TextDecoding, MalformedBytesBecomeReplacementCharacters) {
    // The converters substitute U+FFFD for bytes they cannot read, so the
    // text still draws, with the fallback glyph in their place.
    const Decoded stray = decode("a\xff" "b", "utf-8");
    ASSERT_TRUE(stray.ok);
    EXPECT_EQ(stray.code_points, (std::vector<int32_t>{'a', 0xFFFD, 'b'}));
    const Decoded cut = decode("a\xe2\x82", "utf-8");
    ASSERT_TRUE(cut.ok);
    EXPECT_EQ(cut.code_points, (std::vector<int32_t>{'a', 0xFFFD}));
    const Decoded odd = decode(std::string("A\0B", 3), "UTF-16LE");
    ASSERT_TRUE(odd.ok);
    EXPECT_EQ(odd.code_points, (std::vector<int32_t>{'A', 0xFFFD}));
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
