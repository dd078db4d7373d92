#include "debug/os_release.h"

namespace velatrix::debug {
namespace {

constexpr std::string_view kPrettyName = "PRETTY_NAME=";

std::string_view trim(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos) return {};
    const auto last = text.find_last_not_of(" \t\r");
    return text.substr(first, last - first + 1);
}

// Shell-style value: single quotes are literal, double quotes allow
// backslash escapes, an unquoted value ends at the line's end.
std::string unquote(std::string_view value) {
    if (value.empty() || (value.front() != '"' && value.front() != '\'')) return std::string(value);
    const char quote = value.front();
    std::string result;
    for (size_t i = 1; i < value.size(); ++i) {
        const char c = value[i];
        if (c == quote) break;
        if (quote == '"' && c == '\\' && i + 1 < value.size()) {
            result += value[++i];
            continue;
        }
        result += c;
    }
    return result;
}

}  // namespace

std::string os_release_pretty_name(std::string_view content) {
    std::string name;
    while (!content.empty()) {
        const auto end = content.find('\n');
        const std::string_view line = trim(content.substr(0, end));
        content = end == std::string_view::npos ? std::string_view{} : content.substr(end + 1);
        // The last assignment wins, as when the file is sourced by a shell.
        if (line.starts_with(kPrettyName)) name = unquote(trim(line.substr(kPrettyName.size())));
    }
    return name.empty() ? "Linux" : name;
}

std::string linux_system_name(std::string_view os_release, std::string_view kernel_release) {
    std::string name = os_release_pretty_name(os_release);
    name += ", kernel ";
    name += kernel_release;
    return name;
}

}  // namespace velatrix::debug
