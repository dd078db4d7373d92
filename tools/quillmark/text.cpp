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

std::string json_string(std::string_view text) {
    std::string out = "\"";
    for (const char c : text) {
        const auto byte = static_cast<unsigned char>(c);
        if (c == '"' || c == '\\') {
            out += '\\';
            out += c;
        } else if (byte < 0x20 || byte >= 0x80) {
            // Pad bytes are not UTF-8 text: each byte above 0x7f is taken
            // as the code point of that value, so the JSON stays valid.
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
