// The process fingerprint's parts and the kernel-release names.
#include <gtest/gtest.h>
#include <sys/utsname.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <fstream>
#include <memory>
#include <sstream>
#include <string>

#include "debug/os_release.h"
#include "velatrix/debug.h"

namespace velatrix::testing {
namespace {

using Owned = std::unique_ptr<char, decltype(&std::free)>;

std::string kernel_name(const char* release) {
    Owned text(velatrix_debug_os_name_for_kernel_release(release), &std::free);
    return text ? text.get() : "(null)";
}

TEST(Fingerprint, KernelReleasesNameTheirSystem) {
    const std::vector<std::pair<const char*, const char*>> names = {
        {"15.6.0", "OS X 10.11.x El Capitan"},
        {"14.0.0", "OS X 10.10.x Yosemite"},
        {"13.4.0", "OS X 10.9.x Mavericks"},
        {"12.6.0", "OS X 10.8.x Moutain Lion"},
        {"11.4.2", "OS X 10.7.x Lion"},
        {"10.8.0", "OS X 10.6.x Snow Leopard"},
        {"9.8.0", "OS X 10.5.x Leopard"},
        {"8.11.1", "OS X 10.4.x Tiger"},
        {"7.9.0", "OS X 10.3.x Panther"},
        {"6.8", "OS X (Unknown)"},
        {"6.8.1", "OS X 10.2.x Jaguar"},
        {"5.5.0", "OS X 10.1.x Puma"},
        {"15.6.0-extra", "OS X 10.11.x El Capitan"},
        {"16.0.0", "OS X Unknown - Kernel 16.0.0"},
        {"4.2.1", "OS X Unknown - Kernel 4.2.1"},
        {"6.1.0-18-amd64", "OS X 10.2.x Jaguar"},  // why Linux names its system otherwise
        {"garbage", "OS X (Unknown)"},
        {"", "OS X (Unknown)"},
        {nullptr, "OS X (Unknown)"},
        // The unknown-kernel text lives in 50 bytes; longer numbers are cut.
        {"4294967295.4294967295.4294967295", "OS X Unknown - Kernel 4294967295.4294967295.42949"},
    };
    for (const auto& [release, name] : names) {
        EXPECT_EQ(kernel_name(release), name) << (release ? release : "(null)");
    }

    utsname system{};
    ASSERT_EQ(uname(&system), 0);
    Owned own(get_osx_version(), &std::free);
    EXPECT_EQ(std::string(own.get()), kernel_name(system.release));
}

TEST(Fingerprint, PrettyNameComesFromOsRelease) {
    using debug::os_release_pretty_name;
    EXPECT_EQ(debug::linux_system_name("NAME=\"Debian GNU/Linux\"\nPRETTY_NAME=\"Debian GNU/Linux 12 (bookworm)\"\n",
                                       "6.1.0-18-amd64"),
              "Debian GNU/Linux 12 (bookworm), kernel 6.1.0-18-amd64");
    EXPECT_EQ(os_release_pretty_name("PRETTY_NAME=Plain\n"), "Plain");
    EXPECT_EQ(os_release_pretty_name("PRETTY_NAME='Single \"quoted\"'"), "Single \"quoted\"");
    EXPECT_EQ(os_release_pretty_name("PRETTY_NAME=\"Esc \\\"aped\\\" \\\\ \\$x\"\n"), "Esc \"aped\" \\ $x");
    EXPECT_EQ(os_release_pretty_name("# PRETTY_NAME=\"Comment\"\nXPRETTY_NAME=no\nID=x\n"), "Linux");
    EXPECT_EQ(os_release_pretty_name("PRETTY_NAME=\"First\"\r\nPRETTY_NAME=\"Second\"\r\n"), "Second");
    EXPECT_EQ(os_release_pretty_name("PRETTY_NAME=\"Unterminated"), "Unterminated");
    EXPECT_EQ(os_release_pretty_name("PRETTY_NAME=\"\""), "Linux");
    EXPECT_EQ(os_release_pretty_name(""), "Linux");
}

TEST(Fingerprint, ProcessAndSystemDescription) {
    char expected_path[1024] = {};
    ASSERT_GT(readlink("/proc/self/exe", expected_path, sizeof expected_path - 1), 0);
    Owned name(velatrix_debug_get_current_process_name(), &std::free);
    ASSERT_NE(name, nullptr);
    EXPECT_STREQ(name.get(), expected_path);

#if defined(__x86_64__)
    EXPECT_STREQ(velatrix_debug_get_process_architecture(), "x64");
#endif
    utsname system{};
    ASSERT_EQ(uname(&system), 0);
    EXPECT_STREQ(velatrix_debug_get_native_architecture(), system.machine);
    EXPECT_EQ(velatrix_debug_get_native_architecture(), velatrix_debug_get_native_architecture());

    std::ifstream file("/etc/os-release");
    std::ostringstream os_release;
    os_release << file.rdbuf();
    if (os_release.str().empty()) GTEST_SKIP() << "no /etc/os-release on this machine";
    EXPECT_EQ(std::string(velatrix_debug_get_operating_system()),
              debug::linux_system_name(os_release.str(), system.release));
    EXPECT_EQ(velatrix_debug_get_operating_system(), velatrix_debug_get_operating_system());
}

}  // namespace
}  // namespace velatrix::testing
