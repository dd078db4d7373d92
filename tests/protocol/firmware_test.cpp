#include "protocol_test.h"
#include "velatrix-quillmark.h"

namespace velatrix::testing {
namespace {

using Firmware = FakePad;

TEST_F(Firmware, PageTravelsWithAddressDataAndTheCallersChecksumWithoutAWait) {
    velatrix_firmware_page page{};
    page.reserved = 0xDEADBEEF;  // never sent
    page.address = 0x12345678;
    Bytes expected = hex("19 78563412");
    for (int i = 0; i < 128; ++i) expected.push_back(page.data[i] = static_cast<uint8_t>(i));
    expected.push_back(page.checksum = 0x5A);
    EXPECT_EQ(velatrix_set_firmware(device, page), 1);
    EXPECT_EQ(velatrix_set_firmware_download_status(device, 0xABCD1234), 1);  // the low 16 bits
    EXPECT_EQ(fake.sequence(), "S25 S29");
    EXPECT_EQ(fake.sets(), (std::vector<Bytes>{expected, hex("1d 3412")}));
}

TEST_F(Firmware, PenSimulationBuildsThe67ByteReport) {
    velatrix_pen_simulation pen{0xEE, 7, 0x0102, 0x0304, 1};
    EXPECT_EQ(velatrix_simulate_pen_input(device, &pen), 1);
    pen.pen_down = 0;
    EXPECT_EQ(velatrix_simulate_pen_input(device, &pen), 1);
    Bytes down = wire(0xFD, 67, {{1, hex("64 07 000000 11 0201 0403")}});
    Bytes up = down;
    up[6] = 0x10;
    EXPECT_EQ(fake.sets(253), (std::vector<Bytes>{down, up}));
}

}  // namespace
}  // namespace velatrix::testing
