#include "text.h"

#include <cerrno>
#include <cstdio>
#include <cstdlib>

#include "session.h"

namespace quillmark {

std::vector<std::string> split(std::string_view text, char separator) {
    std::vector<std::string> parts;
    if (text.empty()) return parts;
    size_t start = 0;
    while (true) {
        const size_t end = text.find(separator, start);
        parts.emplace_back(text.substr(start, end == std::string_view::npos ? std::string_view::npos : end - start));
        if (end == std::string_view::npos) break;
        start = end + 1;
    }
    return parts;
}

int64_t parse_integer(std::string_view text, std::string_view context) {
    const std::string copy(text);
    char* end = nullptr;
    errno = 0;
    const long long value = std::strtoll(copy.c_str(), &end, 0);
    if (copy.empty() || end == nullptr || *end != '\0' || errno != 0) {
        throw UsageError(std::string(context) + ": '" + copy + "' is not a number");
    }
    return value;
}

uint16_t parse_u16(std::string_view text, std::string_view context) {
    const int64_t value = parse_integer(text, context);
    if (value < 0 || value > 0xFFFF) throw UsageError(std::string(context) + ": " + std::string(text) + " is out of range");
    return static_cast<uint16_t>(value);
}

namespace {

// Length of the well-formed UTF-8 sequence at text[at], 0 when there is none.
size_t utf8_length(std::string_view text, size_t at) {
    const auto byte = [&](size_t i) { return static_cast<unsigned char>(text[at + i]); };
    const unsigned char lead = byte(0);
    const size_t length = lead >= 0xF0 && lead <= 0xF4 ? 4 : lead >= 0xE0 ? 3 : lead >= 0xC2 && lead <= 0xDF ? 2 : 0;
    if (length == 0 || at + length > text.size()) return 0;
    for (size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80) return 0;
    }
    const unsigned char second = byte(1);
    if ((lead == 0xE0 && second < 0xA0) || (lead == 0xED && second > 0x9F) || (lead == 0xF0 && second < 0x90) ||
        (lead == 0xF4 && second > 0x8F)) {
        return 0;  // overlong, surrogate or beyond U+10FFFF
    }
    return length;
}

}  // namespace

std::string json_string(std::string_view text) {
    std::string out = "\"";
    for (size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (byte >= 0x80 && utf8_length(text, i) != 0) {
            const size_t length = utf8_length(text, i);
            out.append(text.substr(i, length));
            i += length - 1;
        } else if (byte < 0x20 || byte >= 0x80) {
            // A pad's bytes need not be UTF-8: a byte that starts no valid
            // sequence is taken as the code point of its value, so the
            // JSON stays valid.
            char escaped[8];
            std::snprintf(escaped, sizeof escaped, "\\u%04x", byte);
            out += escaped;
        } else {
            out += c;
        }
    }
    return out + "\"";
}

std::string hex(const uint8_t* bytes, size_t count) {
    std::string out;
    char digits[3];
    for (size_t i = 0; i < count; ++i) {
        std::snprintf(digits, sizeof digits, "%02x", bytes[i]);
        out += digits;
    }
    return out;
}

}  // namespace quillmark
