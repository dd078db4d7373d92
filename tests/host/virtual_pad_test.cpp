// Which bus the driver starts on: velatrix_virtual_simulate against
// VELATRIX_SIMULATE.
#include <cstdlib>

#include "e2e_fixture.h"
#include "support/log_capture.h"
#include "velatrix-virtual.h"
#include "virtual/virtual_hid_layer.h"

namespace velatrix::testing {
namespace {

// The virtual bus is chosen at start-up by velatrix_virtual_simulate or
// else by VELATRIX_SIMULATE, and plugs its pads once per process: every
// case runs in a fresh child process.
TEST(SimulateSelection, CallWinsOverEnvironmentUntilNegative) {
    struct Case {
        const char* name;
        const char* environment;  // VELATRIX_SIMULATE, null: unset
        std::vector<int32_t> calls;
        const char* expected;
    };
    const Case cases[] = {
        {"environment alone", "2", {},
         "listed=2 virtual=1 log=\"Simulating 2 virtual pads\" models=Quillmark M320;Quillmark C800;\n"},
        {"call alone", nullptr, {2}, "listed=2 virtual=1 log=\"Simulating 2 virtual pads\""},
        {"call over environment", "1", {0}, "listed=0 virtual=1 log=\"Simulating 0 virtual pads\""},
        // One pad per model in turn.
        {"negative back to environment", "3", {2, -1},
         "listed=3 virtual=1 log=\"Simulating 3 virtual pads\" "
         "models=Quillmark M320;Quillmark C800;Quillmark M320;\n"},
        {"negative back to real pads", nullptr, {2, -1}, "virtual=0 log=\"\""},
    };
    GTEST_FLAG_SET(death_test_style, "threadsafe");
    for (const Case& c : cases) {
        SCOPED_TRACE(c.name);
        EXPECT_EXIT(
            {
                if (c.environment != nullptr) {
                    setenv("VELATRIX_SIMULATE", c.environment, 1);
                } else {
                    unsetenv("VELATRIX_SIMULATE");
                }
                for (int32_t count : c.calls) velatrix_virtual_simulate(count);
                LogCapture log;
                velatrix_init();
                velatrix_device* head = nullptr;
                velatrix_list_devices(&head);
                std::string logged;
                for (const std::string& text : log.texts(VELATRIX_LEVEL_INFO)) {
                    if (text.starts_with("Simulating")) logged = text;
                }
                std::string models;
                for (velatrix_device* d = head; d != nullptr; d = d->next) {
                    models += std::string(d->model != nullptr ? d->model : "?") + ";";
                }
                std::fprintf(stderr, "listed=%u virtual=%d log=\"%s\" models=%s\n", velatrix_count_device_list(head),
                             &host::access_layer() == &virtual_pad::bus_hid_layer(), logged.c_str(), models.c_str());
                std::_Exit(0);
            },
            ::testing::ExitedWithCode(0), c.expected);
    }
}

}  // namespace
}  // namespace velatrix::testing
