// velatrix_update_display on a virtual colour pad: after the first frame
// only the chunks whose pixels changed travel, the pad's frame buffer ends
// up equal to the bitmap, and anything else that reaches the pad makes the
// next update a full one again.
#include <functional>
#include <tuple>

#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

// The first colour model; the test draws for its 800 x 480 panel.
class E2eDisplayUpdate : public E2e {
protected:
    void SetUp() override {
        E2e::SetUp();
        pad_ = plug(first_model_with(kColour).c_str());
        device_ = open(pad_);
        ASSERT_NE(device_, nullptr);
        ASSERT_EQ(std::tuple(device_->display_info.width, device_->display_info.height), std::tuple(800, 480));
        // No busy polls after each command: 800 chunks would wait 800 times.
        ASSERT_EQ(velatrix_virtual_set_busy_polls(pad_, 0), 1);
        buffer_.resize(static_cast<size_t>((800 * 24 + 31) / 32) * 4 * 480 + VELATRIX_BITMAP_HEADER_SIZE);
        ASSERT_EQ(velatrix_bitmap_init(&bitmap_, buffer_.data(), 800, 480), 1);
        for (int32_t x = 0; x < 800; x += 20) velatrix_fill_rectangle(&bitmap_, x, 0, x + 9, 479, 0x2060A0FFu + x);
    }

    // Transfers the update took (a chunk is a status read and a report).
    uint32_t update(uint8_t bits = 24) {
        const uint32_t before = velatrix_virtual_transfer_count(pad_);
        EXPECT_EQ(velatrix_update_display(device_, &bitmap_, 0, 0, bits), 1) << last_error();
        return velatrix_virtual_transfer_count(pad_) - before;
    }

    void expect_frame_is_bitmap() {
        Bytes rgb(800 * 480 * 3);
        ASSERT_EQ(velatrix_virtual_read_frame_rgb(pad_, rgb.data(), static_cast<uint32_t>(rgb.size())), 1);
        for (int32_t y = 0; y < 480; ++y) {
            for (int32_t x = 0; x < 800; ++x) {
                const uint8_t* p = rgb.data() + (static_cast<size_t>(y) * 800 + x) * 3;
                const uint32_t shown = uint32_t{p[0]} << 24 | uint32_t{p[1]} << 16 | uint32_t{p[2]} << 8 | 0xFF;
                ASSERT_EQ(shown, velatrix_get_pixel(&bitmap_, x, y)) << x << ", " << y;
            }
        }
    }

    velatrix_virtual_pad pad_ = 0;
    velatrix_device* device_ = nullptr;
    Bytes buffer_;
    velatrix_bitmap bitmap_{};
};

TEST_F(E2eDisplayUpdate, AChangedBandTravelsAloneAndTheFrameMatches) {
    const uint32_t full = update();
    ASSERT_GE(full, 800u) << "the first update sends all 800 chunks";
    EXPECT_EQ(update(), 0u) << "nothing changed";
    // A band 40 pixels high, 72 columns wide: at 24 bits the chunks are
    // whole columns, so 72 of 800 change.
    velatrix_fill_rectangle(&bitmap_, 300, 200, 371, 239, 0xC03010FFu);
    const uint32_t partial = update();
    EXPECT_GT(partial, 0u);
    EXPECT_LE(partial * 10, full);
    expect_frame_is_bitmap();
}

TEST_F(E2eDisplayUpdate, EverythingElseThatReachesThePadMakesTheNextUpdateFull) {
    velatrix_bitmap small{};
    Bytes small_buffer(static_cast<size_t>((10 * 24 + 31) / 32) * 4 * 10 + VELATRIX_BITMAP_HEADER_SIZE);
    ASSERT_EQ(velatrix_bitmap_init(&small, small_buffer.data(), 10, 10), 1);
    const struct {
        const char* name;
        std::function<void(velatrix_device*&)> change;
    } kChanges[] = {
        {"full transfer", [&](velatrix_device*& d) { EXPECT_EQ(velatrix_transfer_bitmap_to_device(d, &small, 5, 5, 24), 1); }},
        {"text", [](velatrix_device*& d) { EXPECT_EQ(velatrix_device_draw_text(d, "Sign", 20, 20, 0, 0), 1); }},
        {"clear screen", [](velatrix_device*& d) { EXPECT_EQ(velatrix_clear_screen(d), 1); }},
        {"regions", [](velatrix_device*& d) { EXPECT_EQ(velatrix_restore_default_regions(d), 1); }},
        {"display content", [](velatrix_device*& d) { EXPECT_EQ(velatrix_set_display_content(d, 1), 1); }},
        {"close", [this](velatrix_device*& d) {
             ASSERT_EQ(velatrix_close_device(d), 1);
             ASSERT_EQ(velatrix_open_device(d), 1) << last_error();
         }},
    };
    // One bit per pixel: 25 chunks a frame keep the round trips short.
    const uint32_t full = update(1);
    for (const auto& change : kChanges) {
        SCOPED_TRACE(change.name);
        ASSERT_EQ(update(1), 0u);
        change.change(device_);
        EXPECT_GE(update(1), full);
    }
    EXPECT_GE(update(24), full) << "another depth";
}

}  // namespace
}  // namespace velatrix::e2e
