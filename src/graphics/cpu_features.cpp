#include "graphics/cpu_features.h"

#include <atomic>

namespace velatrix::graphics {
namespace {

std::atomic<bool> allowed{true};

struct Features {
    bool byte_permute = false;
};

// Asked on first use, after __builtin_cpu_init, whatever the order of
// static initialisation.
const Features& features() {
    static const Features found = [] {
        Features f;
#if defined(__GNUC__) && defined(__x86_64__)
        __builtin_cpu_init();
        f.byte_permute = __builtin_cpu_supports("avx512vbmi") && __builtin_cpu_supports("avx512bw") &&
                         __builtin_cpu_supports("avx512vl");
#endif
        return f;
    }();
    return found;
}

}  // namespace

bool cpu_has_byte_permute() { return features().byte_permute && allowed.load(std::memory_order_relaxed); }
void allow_vector_kernels(bool on) { allowed.store(on, std::memory_order_relaxed); }

}  // namespace velatrix::graphics
