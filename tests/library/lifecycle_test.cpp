#include <gtest/gtest.h>

#include <cstring>

#include "support/fake_driver.h"
#include "support/log_capture.h"
#include "velatrix-quillmark.h"

namespace {

using velatrix::testing::FakeDriver;
using velatrix::testing::LogCapture;

TEST(Versions, AreTheLibrarysOwn) {
    EXPECT_STREQ(velatrix_get_quillmark_version(), "2.0.98");
    EXPECT_STREQ(velatrix_get_quillmark_build_date(), "2018-11-16 15:17:44-0500");
    EXPECT_EQ(velatrix_get_quillmark_version_major(), 2);
    EXPECT_EQ(velatrix_get_quillmark_version_minor(), 0);
    EXPECT_EQ(velatrix_get_quillmark_version_release(), 98);
}

TEST(Lifecycle, InitRegistersTheBuiltInDriverAndDestroyDropsTheRegistry) {
    LogCapture log;
    EXPECT_EQ(velatrix_get_driver_count(), 0u);
    velatrix_init();
    EXPECT_EQ(velatrix_get_driver_count(), 1u);
    EXPECT_EQ(velatrix_get_drivers()->head->value, &velatrix_real_driver);
    EXPECT_EQ(velatrix_real_driver.initialised, 1);
    EXPECT_EQ(velatrix_real_driver.report_error, &velatrix_report_error_internal);
    EXPECT_EQ(velatrix_real_driver.driver_input_report, &velatrix_get_driver_input_report);
    EXPECT_EQ(velatrix_real_driver.get_device_callbacks, &velatrix_get_device_callbacks);
    EXPECT_TRUE(log.contains("Initalizing Quillmark Native library, version: 2.0.98, date: 2018-11-16 15:17:44-0500",
                             VELATRIX_LEVEL_INFO));

    log.clear();
    velatrix_init();  // a second init keeps the registry and refuses the duplicate
    EXPECT_EQ(velatrix_get_driver_count(), 1u);
    EXPECT_EQ(log.count("Attempting to initialize driver 'REAL'.", VELATRIX_LEVEL_FINE), 1) << "init runs again";

    velatrix_destroy();
    EXPECT_EQ(velatrix_driver_list, nullptr);
    EXPECT_EQ(velatrix_get_driver_count(), 0u);
}

TEST(Lifecycle, AddingBeforeInitOnlyLogs) {
    LogCapture log;
    FakeDriver fake;
    velatrix_add_device_driver(fake.driver());
    EXPECT_TRUE(log.contains("Driver list was null loading driver 'FAKE'.", VELATRIX_LEVEL_INFO));
    EXPECT_EQ(fake.driver()->report_error, nullptr) << "services are only wired on registration";
}

TEST(Lifecycle, AFailingDriverStaysRegisteredButIsSkippedByListing) {
    LogCapture log;
    FakeDriver fake;
    fake.add_pad({"pad_a", 0xF055, 1, "", ""});
    velatrix_device_driver failing = *fake.driver();
    failing.init = [] {
        velatrix_report_error_internal("no bus");
        return int32_t{0};
    };
    failing.get_driver_name = [] { return "FAILING"; };
    velatrix_init();
    velatrix_add_device_driver(&failing);
    velatrix_add_device_driver(fake.driver());
    velatrix_init();  // runs every registered driver's init
    EXPECT_TRUE(log.contains("Failed to initialized 'FAILING' driver: no bus", VELATRIX_LEVEL_WARNING));
    EXPECT_EQ(failing.initialised, 0);
    EXPECT_EQ(velatrix_get_driver_count(), 3u);
    velatrix_device* head = nullptr;
    velatrix_list_devices(&head);
    ASSERT_EQ(velatrix_count_device_list(head), 1u) << "only the fake's pad; the failing driver is skipped";
    EXPECT_EQ(head->driver, fake.driver());
    velatrix_free_device_list(head);
    velatrix_destroy();
}

TEST(Lifecycle, DestroyLeavesOpenDeviceRecordsToTheCaller) {
    LogCapture log;
    velatrix_init();
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    velatrix_list* open = velatrix_create_list();
    velatrix_list_add(open, device);
    velatrix_set_open_devices(open);
    velatrix_destroy();
    EXPECT_EQ(velatrix_get_open_devices(), nullptr);
    EXPECT_STREQ(device->path, "fake_pad") << "the record itself is untouched";
}

}  // namespace
