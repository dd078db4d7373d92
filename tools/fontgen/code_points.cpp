#include "code_points.h"

#include <algorithm>
#include <initializer_list>

namespace fontgen {
namespace {

void add_range(std::vector<std::int32_t>& out, std::int32_t first, std::int32_t last,
               std::initializer_list<std::int32_t> except = {})
{
    for (std::int32_t c = first; c <= last; ++c) {
        if (std::find(except.begin(), except.end(), c) == except.end()) {
            out.push_back(c);
        }
    }
}

}  // namespace

std::vector<std::int32_t> mono_code_points()
{
    std::vector<std::int32_t> set;
    add_range(set, 32, 126);    // ASCII
    add_range(set, 160, 255);   // Latin-1 supplement
    add_range(set, 256, 383);   // Latin Extended-A
    set.push_back(402);         // florin
    add_range(set, 536, 539);   // Romanian S and T with comma below
    for (std::int32_t c : {710, 711, 713, 728, 729, 730, 731, 732, 733}) {
        set.push_back(c);       // spacing accents
    }
    // Greek and Coptic, tonos letters included; 903 is left out because the
    // mono typeface has no ano teleia, the rest of the gaps are unassigned.
    add_range(set, 900, 974, {903, 907, 909, 930});
    add_range(set, 1024, 1119); // Cyrillic
    add_range(set, 1168, 1171); // Ukrainian ghe with upturn, ghe with stroke
    for (std::int32_t c : {8211, 8212, 8213, 8216, 8217, 8218, 8220, 8221, 8222, 8224, 8225, 8226,
                           8230, 8240, 8249, 8250, 8260}) {
        set.push_back(c);       // dashes, quotes, daggers, bullet, ellipsis, per mille
    }
    for (std::int32_t c : {8359, 8364, 8592, 8593, 8594, 8595}) {
        set.push_back(c);       // peseta, euro, the four arrows
    }
    return set;
}

std::vector<std::int32_t> default_code_points()
{
    std::vector<std::int32_t> set = mono_code_points();
    set.push_back(0);
    set.push_back(kFigureSpace);
    std::sort(set.begin(), set.end());
    return set;
}

}  // namespace fontgen
