// The process fingerprint: one INFO record at start-up naming the process,
// its architecture and the system it runs on.
#include <sys/utsname.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>
#include <string>

#include "debug/log.h"
#include "debug/os_release.h"
#include "debug/state.h"

namespace velatrix::debug {
namespace {

constexpr size_t kProcessPathSize = 1024;
constexpr size_t kUnknownKernelSize = 50;
// The location line the fingerprint record carries, fixed so that it is the
// same in every build.
constexpr int32_t kFingerprintLine = 617;

struct KernelName {
    unsigned major;
    const char* name;
};

constexpr KernelName kKernelNames[] = {
    {15, "OS X 10.11.x El Capitan"}, {14, "OS X 10.10.x Yosemite"},    {13, "OS X 10.9.x Mavericks"},
    {12, "OS X 10.8.x Moutain Lion"}, {11, "OS X 10.7.x Lion"},        {10, "OS X 10.6.x Snow Leopard"},
    {9, "OS X 10.5.x Leopard"},       {8, "OS X 10.4.x Tiger"},        {7, "OS X 10.3.x Panther"},
    {6, "OS X 10.2.x Jaguar"},        {5, "OS X 10.1.x Puma"},
};

std::string read_whole_file(const char* path) {
    std::ifstream file(path);
    if (!file) return {};
    std::ostringstream content;
    content << file.rdbuf();
    return content.str();
}

std::string kernel_release() {
    utsname names{};
    if (uname(&names) != 0) return {};
    return names.release;
}

}  // namespace
}  // namespace velatrix::debug

using namespace velatrix::debug;

extern "C" {

void velatrix_debug_print_fingerprint(void) {
    char* name = velatrix_debug_get_current_process_name();
    velatrix_debug_report_message(__func__, velatrix::kLogDebug, kFingerprintLine, VELATRIX_LEVEL_INFO,
                                  "Process starting, proccess name: '%s', process architecture: %s, os version: %s, "
                                  "os architecture: %s",
                                  name != nullptr ? name : "", velatrix_debug_get_process_architecture(),
                                  velatrix_debug_get_operating_system(), velatrix_debug_get_native_architecture());
    std::free(name);
}

char* velatrix_debug_get_current_process_name(void) {
    auto* path = static_cast<char*>(std::calloc(kProcessPathSize, 1));
    if (path == nullptr) return nullptr;
    // One byte short so the zeroed buffer always ends the text; a failure
    // leaves it empty.
    if (readlink("/proc/self/exe", path, kProcessPathSize - 1) < 0) path[0] = '\0';
    return path;
}

const char* velatrix_debug_get_process_architecture(void) {
#if defined(__x86_64__)
    return "x64";
#elif defined(__aarch64__)
    return "arm64";
#elif defined(__i386__)
    return "x86";
#else
    return "unknown";
#endif
}

const char* velatrix_debug_get_native_architecture(void) {
    static const std::string osArchitecture = [] {
        utsname names{};
        return uname(&names) == 0 ? std::string(names.machine) : std::string();
    }();
    return osArchitecture.c_str();
}

const char* velatrix_debug_get_operating_system(void) {
    static const std::string osDistro = [] {
        std::string os_release = read_whole_file("/etc/os-release");
        if (os_release.empty()) os_release = read_whole_file("/usr/lib/os-release");
        return linux_system_name(os_release, kernel_release());
    }();
    return osDistro.c_str();
}

char* velatrix_debug_os_name_for_kernel_release(const char* release) {
    unsigned major = 0;
    unsigned minor = 0;
    unsigned patch = 0;
    if (release == nullptr || std::sscanf(release, "%u.%u.%u", &major, &minor, &patch) != 3) {
        return strdup("OS X (Unknown)");
    }
    for (const KernelName& known : kKernelNames) {
        if (known.major == major) return strdup(known.name);
    }
    auto* text = static_cast<char*>(std::calloc(kUnknownKernelSize, 1));
    if (text != nullptr) std::snprintf(text, kUnknownKernelSize, "OS X Unknown - Kernel %u.%u.%u", major, minor, patch);
    return text;
}

char* get_osx_version(void) { return velatrix_debug_os_name_for_kernel_release(kernel_release().c_str()); }

}  // extern "C"
