// Shared set-up of the host driver's tests: a fake access layer installed,
// clean path snapshots, and helpers to list and open pads through the
// driver's own operations.
#pragma once

#include <gtest/gtest.h>

#include <string>

#include "fake_hid.h"
#include "host/real_device.h"
#include "velatrix/error.h"

namespace velatrix::testing {

using host::real;

// A pad's report descriptor declaring report ids 1, 2 and 13: a vendor
// collection with input report 1, input report 2 and feature report 13.
inline Bytes pad_descriptor_1_2_13() {
    return {
        0x06, 0x00, 0xFF,        // Usage Page (vendor 0xFF00)
        0x09, 0x06,              // Usage (6)
        0xA1, 0x01,              // Collection (Application)
        0x85, 0x01,              //   Report ID (1)
        0x09, 0x01, 0x15, 0x00, 0x26, 0xFF, 0x00, 0x75, 0x08, 0x95, 0x05, 0x81, 0x02,
        0x85, 0x02,              //   Report ID (2)
        0x09, 0x02, 0x95, 0x06, 0x81, 0x02,
        0x85, 0x0D,              //   Report ID (13)
        0x09, 0x0D, 0x95, 0x48, 0xB1, 0x02,
        0xC0,                    // End Collection
    };
}

class HostDriverTest : public ::testing::Test {
protected:
    void SetUp() override {
        host::clear_path_snapshots();
        velatrix_report_error_internal("%s", "");
    }
    void TearDown() override {
        if (head_ != nullptr) velatrix_free_device_list(head_);
        host::clear_path_snapshots();
    }

    // Lists through the driver; the chain is freed at the end of the test.
    velatrix_device* list() {
        if (head_ != nullptr) velatrix_free_device_list(head_);
        head_ = nullptr;
        EXPECT_EQ(velatrix_real_list_devices(&velatrix_real_driver, &head_), 1);
        return head_;
    }

    // Lists, opens the first pad through the driver and marks it open the
    // way the library's open does, without the pad's description reads.
    velatrix_device* open_first() {
        velatrix_device* device = list();
        if (device == nullptr) return nullptr;
        if (velatrix_real_open_device(device) != 1) return nullptr;
        device->open = 1;
        device->input_callbacks = velatrix_create_list();
        return device;
    }

    FakeHidLayer layer_;
    ScopedLayer scoped_{layer_};
    velatrix_device* head_ = nullptr;
};

}  // namespace velatrix::testing
