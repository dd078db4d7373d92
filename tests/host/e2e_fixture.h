// End-to-end set-up: the whole library started with the built-in driver on
// the virtual bus, pads plugged by the test, listed and opened through the
// public API, and everything torn down again so each test starts clean.
#pragma once

#include <gtest/gtest.h>

#include <openssl/evp.h>

#include <array>
#include <chrono>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <optional>
#include <string>
#include <thread>
#include <vector>

#include "host/real_device.h"
#include "support/pads_by_capability.h"
#include "velatrix-quillmark.h"
#include "velatrix-virtual.h"
#include "virtual/pad_model.h"
#include "virtual/virtual_bus.h"
#include "virtual/virtual_hid_layer.h"

namespace velatrix::e2e {

using Bytes = std::vector<uint8_t>;
using virtual_pad::PadModel;
using namespace test_pads;

// The path the driver must give a pad (empty for one that is not plugged
// in): transport, vendor, product, usage page, usage and location.
inline std::string expected_path(velatrix_virtual_pad pad) {
    auto plugged = virtual_pad::VirtualBus::instance().find(pad);
    if (plugged == nullptr) return {};
    const PadModel& model = plugged->model();
    char path[256];
    std::snprintf(path, sizeof path, "USB_%04x_%04x_%02x_%02x_%x", model.vendor_id, velatrix_virtual_product_id(pad),
                  model.usage_page, model.usage, velatrix_virtual_location_id(pad));
    return path;
}

inline std::array<uint8_t, 16> md5(const uint8_t* data, std::size_t length) {
    std::array<uint8_t, 16> digest{};
    unsigned int size = 0;
    EXPECT_EQ(EVP_Digest(data, length, digest.data(), &size, EVP_md5(), nullptr), 1);
    EXPECT_EQ(size, 16u);
    return digest;
}

inline std::string last_error() { return velatrix_get_last_error(); }

class E2e : public ::testing::Test {
protected:
    void SetUp() override {
        velatrix_virtual_unplug_all();
        const char* simulate = std::getenv("VELATRIX_SIMULATE");
        saved_simulate_ = simulate != nullptr ? std::optional<std::string>(simulate) : std::nullopt;
        // The driver reads this at start-up: it selects the virtual bus and
        // plugs no pads of its own; every test plugs what it needs.
        setenv("VELATRIX_SIMULATE", "0", 1);
        host::clear_path_snapshots();
        velatrix_init();
        velatrix_report_error_internal("%s", "");
    }

    void TearDown() override {
        for (velatrix_device* device : records_) {
            if (device->open) velatrix_close_device(device);
        }
        for (velatrix_device* device : records_) velatrix_free_device_list(device);
        records_.clear();
        velatrix_destroy();
        velatrix_virtual_unplug_all();
        virtual_pad::bus_hid_layer().clear_faults();
        host::clear_path_snapshots();
        if (saved_simulate_) {
            setenv("VELATRIX_SIMULATE", saved_simulate_->c_str(), 1);
        } else {
            unsetenv("VELATRIX_SIMULATE");
        }
    }

    velatrix_virtual_pad plug(const char* model) {
        velatrix_virtual_pad pad = velatrix_virtual_plug(model);
        EXPECT_NE(pad, 0) << last_error();
        return pad;
    }

    // Lists through the public API. The chain is cut into single records
    // owned by the fixture, so that a failed open (which frees its record
    // and everything after it) never leaves a dangling link.
    std::vector<velatrix_device*> list() {
        velatrix_device* head = nullptr;
        EXPECT_EQ(velatrix_list_devices(&head), 1) << last_error();
        std::vector<velatrix_device*> listed;
        while (head != nullptr) {
            velatrix_device* next = head->next;
            head->next = nullptr;
            listed.push_back(head);
            records_.push_back(head);
            head = next;
        }
        return listed;
    }

    // The listed record of a pad (null when the listing lacks it).
    velatrix_device* find(velatrix_virtual_pad pad) {
        const std::string path = expected_path(pad);
        for (velatrix_device* device : list()) {
            if (device->path != nullptr && path == device->path) return device;
        }
        return nullptr;
    }

    // The record was freed by the library (a failed open).
    void forget(velatrix_device* device) { std::erase(records_, device); }

    // Lists, finds and opens the pad; null (with a test failure) otherwise.
    velatrix_device* open(velatrix_virtual_pad pad) {
        velatrix_device* device = find(pad);
        EXPECT_NE(device, nullptr) << "pad " << pad << " not listed";
        if (device == nullptr) return nullptr;
        if (velatrix_open_device(device) != 1) {
            ADD_FAILURE() << "open failed: " << last_error();
            forget(device);
            return nullptr;
        }
        return device;
    }

    std::vector<velatrix_device*> records_;
    std::optional<std::string> saved_simulate_;
};

}  // namespace velatrix::e2e
