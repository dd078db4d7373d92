// The code points every mono font table covers, in ascending order; the
// four generated mono tables share this one array.
#pragma once

#include <cstdint>

namespace velatrix::fonts {

inline constexpr int kMonoCodePointCount = 527;
extern const int32_t kMonoCodePoints[kMonoCodePointCount];

}  // namespace velatrix::fonts
