// Small text helpers the commands share: splitting, number parsing with
// usage errors, JSON string escaping.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace quillmark {

std::vector<std::string> split(std::string_view text, char separator);
// Decimal or 0x-hexadecimal; throws UsageError naming `context`.
int64_t parse_integer(std::string_view text, std::string_view context);
uint16_t parse_u16(std::string_view text, std::string_view context);
// A JSON string literal, quotes included.
std::string json_string(std::string_view text);
// Lower-case hex digits of the bytes.
std::string hex(const uint8_t* bytes, size_t count);

}  // namespace quillmark
