// Every operation family of the C API with a fault at each of its transfers
// in turn: first the k-th transfer fails, then the pad is pulled out at the
// k-th transfer. The call must return its failure value with an error text,
// the next call of a failed transfer must succeed, and a pad that is gone
// must end its device without calling an input callback. Leaks are caught
// by the asan preset's leak checker at the end of every case.
//
// A failed status read inside an interlock wait (or while open waits for an
// initialising pad) counts as "ready" by design: such a transfer may be
// lost without the operation failing.
#include <unistd.h>

#include <algorithm>
#include <map>

#include "operation_families.h"

// The open sleeps 100 ms after each status poll while it waits for the pad
// to finish initialising, and the matrix opens a new pad twice per transfer:
// this program's sleeps return at once (the faults are what is checked
// here, not the time the open takes).
extern "C" int usleep(useconds_t) { return 0; }

namespace velatrix::e2e {
namespace {

class FaultMatrix : public FamilyTest {};

TEST_P(FaultMatrix, EveryTransferFailsAndIsUnpluggedInTurn) {
    const Family& family = GetParam();
    std::vector<Transfer> transfers;
    velatrix_virtual_pad pad = 0;
    velatrix_device* device = fresh(pad);
    ASSERT_NE(device, nullptr);
    const uint32_t before = velatrix_virtual_transfer_count(pad);
    recorded = &transfers;
    recorded_pad = pad;
    ASSERT_TRUE(run(device)) << last_error();
    recorded = nullptr;
    const uint32_t count = velatrix_virtual_transfer_count(pad) - before;
    ASSERT_GE(count, 1u);
    std::string sequence;
    for (const Transfer& t : transfers) sequence += (t.get ? " get " : " set ") + std::to_string(t.id);
    ASSERT_EQ(transfers.size(), count) << "every transfer reached the pad:" << sequence;

    // May the k-th transfer be lost without the call failing?
    std::vector<bool> ignorable;
    std::map<std::string, int> seen;
    for (const Transfer& t : transfers) {
        const std::string tag = (t.get ? "g" : "s") + std::to_string(t.id);
        const std::string occurrence = tag + "#" + std::to_string(++seen[tag]);
        const bool status_poll = t.get && t.id == kStatusReport && family.kind != Kind::status_result;
        ignorable.push_back(status_poll || std::ranges::count(family.ignored, occurrence) > 0);
    }
    auto ignorable_at = [&](uint32_t k) { return static_cast<bool>(ignorable[k - 1]); };

    for (uint32_t k = 1; k <= count; ++k) {
        SCOPED_TRACE(std::string(family.name) + ": transfer " + std::to_string(k) + " of " + std::to_string(count) +
                     " (report " + std::to_string(transfers[k - 1].id) + ")");
        // The k-th transfer fails; the very next call succeeds. Every case
        // starts on a new pad, so that the sequence is the one counted.
        device = fresh(pad);
        ASSERT_NE(device, nullptr);
        ASSERT_EQ(velatrix_virtual_fail_transfer(pad, k), 1);
        bool ok = run(device);
        if (family.kind == Kind::always_succeeds) {
            EXPECT_TRUE(ok);
        } else if (!ignorable_at(k)) {
            EXPECT_FALSE(ok);
        }
        if (!ok) {
            EXPECT_NE(last_error(), "");
        }
        if (family.kind == Kind::open) {
            if (ok) velatrix_close_device(device);
            device = find(pad);
            ASSERT_NE(device, nullptr);
            device->driver = &recording_;
        }
        EXPECT_TRUE(run(device)) << "the call after the failure: " << last_error();
        if (family.kind == Kind::open) velatrix_close_device(device);

        // The pad is pulled out at the k-th transfer.
        velatrix_virtual_pad gone = 0;
        velatrix_device* record = fresh(gone);
        ASSERT_NE(record, nullptr);
        ASSERT_EQ(velatrix_virtual_unplug_at_transfer(gone, k), 1);
        ok = run(record);
        bool only_ignorable_after = true;
        for (uint32_t later = k; later <= count; ++later) only_ignorable_after = only_ignorable_after && ignorable_at(later);
        if (family.kind != Kind::always_succeeds && !only_ignorable_after) {
            EXPECT_FALSE(ok);
        }
        if (!ok) {
            EXPECT_NE(last_error(), "");
        }
        EXPECT_EQ(velatrix_virtual_is_plugged(gone), 0);
        if (family.kind == Kind::open && !ok) continue;  // the record is freed
        if (family.kind == Kind::open) velatrix_register_input_callback(record, count_input);
        // The next read learns the pad is gone and ends the device there.
        EXPECT_EQ(velatrix_device_read(record), 0);
        EXPECT_EQ(last_error(), "Device is not open after read");
        EXPECT_EQ(record->open, 0);
        EXPECT_EQ(velatrix_list_find(velatrix_get_open_devices(), record), nullptr);
    }
    EXPECT_EQ(input_calls.load(), 0) << "no input callback ran for a pad that is gone";
}

INSTANTIATE_TEST_SUITE_P(EveryFamily, FaultMatrix, ::testing::ValuesIn(families()), family_name);

}  // namespace
}  // namespace velatrix::e2e
