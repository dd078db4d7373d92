// The operating-system name of the process fingerprint on Linux, made from
// the os-release file and the kernel release.
#pragma once

#include <string>
#include <string_view>

namespace velatrix::debug {

// PRETTY_NAME of an os-release text, unquoted; "Linux" when it has none,
// which is the default the os-release format itself gives.
std::string os_release_pretty_name(std::string_view content);

// "<pretty name>, kernel <release>", e.g.
// "Debian GNU/Linux 12 (bookworm), kernel 6.1.0-18-amd64".
std::string linux_system_name(std::string_view os_release, std::string_view kernel_release);

}  // namespace velatrix::debug
