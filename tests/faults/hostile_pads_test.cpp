// Pads that answer badly: for every operation family and every report it
// reads, the pad answers short (each length from nothing to the full
// report) and then malformed (under the next id, every payload byte
// inverted). Nothing may be read or written out of bounds (the asan preset
// watches), a call that fails says why, and once the pad answers properly
// again the same call succeeds. Absurd counts and lengths come with the
// malformed answers (a region count of 239, say) and, for every answer of
// the pad at once, from the hostile-pad fuzz target.
#include <set>

#include "operation_families.h"

namespace velatrix::e2e {
namespace {

class HostilePads : public FamilyTest {};

TEST_P(HostilePads, ShortAndMalformedAnswersToEveryReadFailCleanlyOrClamp) {
    const Family& family = GetParam();
    velatrix_virtual_pad pad = 0;
    velatrix_device* device = fresh(pad);
    ASSERT_NE(device, nullptr);
    std::vector<Transfer> transfers;
    recorded = &transfers;
    recorded_pad = pad;
    ASSERT_TRUE(family.run(device)) << last_error();
    recorded = nullptr;

    std::map<uint8_t, uint32_t> reads;  // report id -> length asked for
    for (const Transfer& t : transfers) {
        if (t.get) reads[t.id] = std::max(reads[t.id], t.length);
    }
    auto run_checked = [&](const std::string& what) {
        SCOPED_TRACE(what);
        velatrix_report_error_internal("%s", "");
        if (!family.run(device)) {
            EXPECT_NE(last_error(), "") << "a failure says why";
        }
        EXPECT_EQ(device->open, 1);
    };
    for (const auto& [id, length] : reads) {
        for (uint32_t cut = 0; cut <= length; ++cut) {
            ASSERT_EQ(velatrix_virtual_short_answer(pad, id, cut), 1);
            run_checked("report " + std::to_string(id) + " cut to " + std::to_string(cut) + " bytes");
            ASSERT_EQ(velatrix_virtual_clear_faults(pad), 1);
        }
        ASSERT_EQ(velatrix_virtual_malformed_answer(pad, id), 1);
        run_checked("report " + std::to_string(id) + " malformed");
        ASSERT_EQ(velatrix_virtual_clear_faults(pad), 1);
        EXPECT_TRUE(family.run(device)) << "after report " << int(id) << ": " << last_error();
    }
}

// The open and the mode set-ups (which report success whatever happens) are
// the fuzz target's.
std::vector<Family> reading_families() {
    std::vector<Family> chosen;
    for (const Family& family : families()) {
        if (family.kind != Kind::open && family.kind != Kind::always_succeeds) chosen.push_back(family);
    }
    return chosen;
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, HostilePads, ::testing::ValuesIn(reading_families()), family_name);

}  // namespace
}  // namespace velatrix::e2e
