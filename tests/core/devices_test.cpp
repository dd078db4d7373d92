#include <gtest/gtest.h>

#include <string>
#include <thread>
#include <vector>

#include "support/fake_driver.h"
#include "velatrix/device.h"
#include "velatrix/error.h"

namespace {

using velatrix::testing::FakeDriver;

// Installs drivers straight into the registry (registration proper lives
// above this layer) and drops it again afterwards.
struct RegistryFixture : ::testing::Test {
    RegistryFixture() { velatrix_driver_list = velatrix_create_list(); }
    ~RegistryFixture() override {
        velatrix_list_free(velatrix_driver_list);
        velatrix_driver_list = nullptr;
    }
    void install(velatrix_device_driver* driver, bool initialised) {
        driver->initialised = initialised;
        velatrix_list_add(velatrix_driver_list, driver);
    }
    static std::vector<std::string> paths(velatrix_device* head) {
        std::vector<std::string> out;
        for (velatrix_device* d = head; d != nullptr; d = d->next) out.emplace_back(d->path);
        return out;
    }
};

TEST_F(RegistryFixture, ChainsOfEveryInitialisedDriverAreConcatenatedInRegistryOrder) {
    // Two records of operations over one script: the fake's record and a copy.
    FakeDriver fake;
    fake.add_pad({"pad_a", 0xF055, 1, "Model A", "Maker"});
    fake.add_pad({"pad_b", 0xF055, 2, "", ""});
    velatrix_device_driver second = *fake.driver();
    install(fake.driver(), true);
    install(&second, true);
    velatrix_device* head = nullptr;
    ASSERT_EQ(velatrix_list_devices(&head), 1);
    EXPECT_EQ(paths(head), (std::vector<std::string>{"pad_a", "pad_b", "pad_a", "pad_b"}));
    EXPECT_EQ(velatrix_count_device_list(head), 4u);
    EXPECT_EQ(head->driver, fake.driver());
    EXPECT_EQ(head->next->next->driver, &second);
    EXPECT_STREQ(head->model, "Model A");
    velatrix_free_device_list(head);
    EXPECT_EQ(fake.free_calls(), 4);
}

TEST_F(RegistryFixture, FreeingTakesDevicesOutOfTheOpenRegistry) {
    FakeDriver fake;
    fake.add_pad({"pad_a", 0xF055, 1, "", ""});
    install(fake.driver(), true);
    velatrix_device* head = nullptr;
    velatrix_list_devices(&head);
    velatrix_list* open = velatrix_create_list();
    int other = 0;
    velatrix_list_add(open, &other);
    velatrix_list_add(open, head);
    velatrix_set_open_devices(open);
    velatrix_free_device_list(head);
    EXPECT_EQ(velatrix_list_count(open), 1u);
    EXPECT_EQ(open->head->value, &other);
    velatrix_set_open_devices(nullptr);
    velatrix_list_free(open);
}

TEST_F(RegistryFixture, RemoveAndCount) {
    FakeDriver fake;
    velatrix_device_driver unregistered = *fake.driver();
    install(fake.driver(), true);
    EXPECT_EQ(velatrix_get_driver_count(), 1u);
    velatrix_remove_device_driver(&unregistered);
    EXPECT_EQ(velatrix_get_driver_count(), 1u);
    velatrix_remove_device_driver(fake.driver());
    EXPECT_EQ(velatrix_get_driver_count(), 0u);
    EXPECT_EQ(velatrix_get_drivers(), velatrix_driver_list);
}

TEST(DeviceRead, ForwardsToTheDriver) {
    FakeDriver fake;
    velatrix_device* device = fake.make_device();
    EXPECT_EQ(velatrix_device_read(device), 1);
    EXPECT_EQ(fake.read_calls(), 1);

    EXPECT_EQ(velatrix_device_read(nullptr), 0);
    EXPECT_STREQ(velatrix_get_last_error(), "Parameter passed into velatrix_device_read was null.");
    EXPECT_EQ(fake.read_calls(), 1);
}

TEST(Handles, PointersSurviveTheJavaHandleRoundTrip) {
    int value = 0;
    const int64_t handle = velatrix_void_ptr_to_jlong(&value);
    EXPECT_EQ(velatrix_void_ptr_from_jlong(handle), &value);
    EXPECT_EQ(velatrix_device_ptr_from_jlong(handle), reinterpret_cast<velatrix_device*>(&value));
    EXPECT_EQ(velatrix_void_ptr_to_jlong(nullptr), 0);
}

TEST(OpenRegistry, LockIsUsableFromTwoThreadsOnFirstUse) {
    std::vector<std::thread> threads;
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int j = 0; j < 100; ++j) {
                EXPECT_EQ(velatrix_lock_open_devices(), 0);
                EXPECT_EQ(velatrix_unlock_open_devices(), 0);
            }
        });
    }
    for (auto& t : threads) t.join();
}

}  // namespace
