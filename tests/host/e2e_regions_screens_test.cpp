// Regions (table and device regions), screens and resources round trip
// between the library and what the pad stores.
#include <tuple>

#include "e2e_fixture.h"

namespace velatrix::e2e {
namespace {

velatrix_device_region_info table_region(uint8_t number, uint32_t type) {
    velatrix_device_region_info region;
    std::memset(&region, 0, sizeof region);
    region.number = number;
    region.type = type;
    region.accept_touch = 1;
    region.visible = 1;
    region.in_use = 1;
    region.x1 = 30;
    region.x2 = 129;
    region.y1 = 40;
    region.y2 = 79;
    region.foreground = 0x11223344;
    region.background = 0xAABBCCDD;
    return region;
}

auto common_fields(const velatrix_device_region_info& r) {
    return std::tuple(r.number, r.type, r.accept_touch, r.decode, r.visible, r.in_use, r.has_frame, r.x1, r.x2, r.y1,
                      r.y2, r.foreground, r.background);
}

auto pad_fields(const velatrix_virtual_region& r) {
    return std::tuple(r.number, static_cast<uint32_t>(r.type), r.accept_touch, r.decode, r.visible, r.in_use,
                      r.has_frame, r.x1, r.x2, r.y1, r.y2, r.foreground, r.background);
}

velatrix_virtual_region pad_region(velatrix_virtual_pad pad, uint8_t number) {
    velatrix_virtual_region region{};
    EXPECT_EQ(velatrix_virtual_get_region(pad, number, &region), 1) << last_error();
    return region;
}

using E2eRegionTable = E2eEveryModel;

TEST_P(E2eRegionTable, RegionsWrittenOneByOneAreStoredAndReadBackWithTheTable) {
    velatrix_device_region_info button = table_region(5, VELATRIX_REGION_BUTTON);
    button.has_frame = 1;
    button.data.button.parent = 1;
    button.data.button.enable = 1;
    button.data.button.clear_on_select = 1;
    std::strcpy(button.data.button.caption, "Sign");
    velatrix_device_region_info container = table_region(6, VELATRIX_REGION_CONTAINER);
    container.data.container.ink_enable = 1;
    container.data.container.ink_width = 3;
    velatrix_device_region_info line = table_region(7, VELATRIX_REGION_LINE);
    line.accept_touch = 0;
    line.data.line.parent = 6;
    line.data.line.width = 2;

    for (const velatrix_device_region_info* region : {&button, &container, &line}) {
        ASSERT_EQ(velatrix_set_region(device_, region), 1) << last_error();
        const velatrix_virtual_region stored = pad_region(pad_, region->number);
        EXPECT_EQ(pad_fields(stored), common_fields(*region)) << "region " << int(region->number);
        // The cached table follows every successful write.
        EXPECT_EQ(common_fields(device_->regions[region->number - 1]), common_fields(*region));
    }
    const velatrix_virtual_region stored_button = pad_region(pad_, 5);
    EXPECT_STREQ(stored_button.caption, "Sign");
    EXPECT_EQ(stored_button.parent, 1);
    EXPECT_EQ(stored_button.enable, 1);
    EXPECT_EQ(stored_button.highlight_on_select, 0);
    EXPECT_EQ(stored_button.clear_on_select, 1);
    const velatrix_virtual_region stored_container = pad_region(pad_, 6);
    EXPECT_EQ(stored_container.ink_enabled, 1);
    EXPECT_EQ(stored_container.ink_width, 3);
    const velatrix_virtual_region stored_line = pad_region(pad_, 7);
    EXPECT_EQ(stored_line.parent, 6);
    EXPECT_EQ(stored_line.line_width, 2);

    velatrix_device_region_info* table = velatrix_get_regions(device_);
    ASSERT_NE(table, nullptr) << last_error();
    EXPECT_EQ(common_fields(table[4]), common_fields(button));
    EXPECT_STREQ(table[4].data.button.caption, "Sign");
    EXPECT_EQ(table[4].data.button.parent, 1);
    EXPECT_EQ(table[4].data.button.enable, 1);
    EXPECT_EQ(table[4].data.button.highlight_on_select, 0);
    EXPECT_EQ(table[4].data.button.clear_on_select, 1);
    EXPECT_EQ(common_fields(table[5]), common_fields(container));
    EXPECT_EQ(table[5].data.container.ink_enable, 1);
    EXPECT_EQ(table[5].data.container.ink_width, 3);
    EXPECT_EQ(common_fields(table[6]), common_fields(line));
    EXPECT_EQ(table[6].data.line.parent, 6);
    EXPECT_EQ(table[6].data.line.width, 2);
    velatrix_free_regions(table);

    // Changed in place: enable, visible and the foreground colour.
    velatrix_region_update update{};
    update.number = 5;
    update.enable = 0;
    update.visible = 1;
    update.foreground = 0x01020304;
    ASSERT_EQ(velatrix_update_region(device_, &update), 1) << last_error();
    EXPECT_EQ(pad_region(pad_, 5).enable, 0);
    EXPECT_EQ(pad_region(pad_, 5).foreground, 0x01020304u);

    ASSERT_EQ(velatrix_delete_region(device_, 5), 1) << last_error();
    EXPECT_EQ(pad_region(pad_, 5).in_use, 0);
}

TEST_P(E2eRegionTable, OutOfRangeRegionNumbersAreRefusedBeforeAnyTraffic) {
    const uint8_t count = device_->display_info.region_count;
    const uint32_t before = velatrix_virtual_transfer_count(pad_);
    velatrix_device_region_info region = table_region(static_cast<uint8_t>(count + 1), VELATRIX_REGION_CONTAINER);
    EXPECT_EQ(velatrix_set_region(device_, &region), 0);
    EXPECT_EQ(last_error(), "Region number was out of bounds, min: 1, max: " + std::to_string(count) +
                                ", specified: " + std::to_string(count + 1) + "\n");
    region.number = 0;
    EXPECT_EQ(velatrix_set_region(device_, &region), 0);
    EXPECT_EQ(last_error(),
              "Region number was out of bounds, min: 1, max: " + std::to_string(count) + ", specified: 0\n");
    EXPECT_EQ(velatrix_delete_region(device_, static_cast<uint8_t>(count + 1)), 0);
    EXPECT_EQ(last_error(), "Region number out of bounds.");
    velatrix_region_update update{};
    update.number = 0;
    EXPECT_EQ(velatrix_update_region(device_, &update), 0);
    EXPECT_EQ(last_error(), "Region number out of bounds.");
    EXPECT_EQ(velatrix_virtual_transfer_count(pad_), before);
}

TEST_P(E2eRegionTable, CaptionsAreCutToThePadsFieldAndTheReservedWordLosesItsHighByte) {
    const uint8_t field = device_->display_info.max_caption_length;
    const std::string full(field, 'F');
    velatrix_device_region_info button = table_region(5, VELATRIX_REGION_BUTTON);
    std::strcpy(button.data.button.caption, (full + "TAIL").c_str());
    ASSERT_EQ(velatrix_set_region(device_, &button), 1) << last_error();
    EXPECT_EQ(std::string(pad_region(pad_, 5).caption), full) << "a full field travels without terminator";

    velatrix_device_region_info container = table_region(6, VELATRIX_REGION_CONTAINER);
    container.data.container.reserved1 = 0x5A;
    container.data.container.reserved2 = 0x1234;
    ASSERT_EQ(velatrix_set_region(device_, &container), 1) << last_error();

    velatrix_device_region_info* table = velatrix_get_regions(device_);
    ASSERT_NE(table, nullptr) << last_error();
    EXPECT_EQ(std::string(table[4].data.button.caption), full);
    EXPECT_EQ(table[5].data.container.reserved1, 0x5A);
    EXPECT_EQ(table[5].data.container.reserved2, 0x0034);
    velatrix_free_regions(table);
}

INSTANTIATE_TEST_SUITE_P(Models, E2eRegionTable, ::testing::ValuesIn(model_names()), param_name);

// A pad without screens restores its factory regions through the table,
// every region but the first.
TEST_F(E2e, RestoringDefaultsRewritesChangedRegionsButTheFirst) {
    const velatrix_virtual_pad pad = plug("mono-320");
    velatrix_device* device = open(pad);
    ASSERT_NE(device, nullptr);
    const uint8_t last = device->display_info.region_count;
    velatrix_device_region_info* defaults = velatrix_get_default_regions(device);
    ASSERT_NE(defaults, nullptr) << last_error();

    for (uint8_t number : {uint8_t{1}, uint8_t{3}, last}) {
        velatrix_device_region_info changed = table_region(number, VELATRIX_REGION_CONTAINER);
        ASSERT_EQ(velatrix_set_region(device, &changed), 1) << last_error();
        ASSERT_EQ(pad_region(pad, number).x2, 129);
    }
    ASSERT_EQ(velatrix_restore_default_regions(device), 1) << last_error();
    EXPECT_EQ(pad_region(pad, 1).x2, 129) << "region 1 is never restored";
    const velatrix_virtual_region third = pad_region(pad, 3);
    EXPECT_EQ(pad_fields(third), common_fields(defaults[2]));
    EXPECT_EQ(third.type, VELATRIX_REGION_BUTTON);
    EXPECT_STREQ(third.caption, defaults[2].data.button.caption);
    EXPECT_EQ(pad_fields(pad_region(pad, last)), common_fields(defaults[last - 1]));
    EXPECT_EQ(velatrix_virtual_get_run_mode(pad), 2);
    velatrix_free_regions(defaults);
}

using E2eScreensResources = E2eEveryModel;

TEST_P(E2eScreensResources, DeviceRegionsOfEveryKindRoundTrip) {
    velatrix_device_region text;
    std::memset(&text, 0, sizeof text);
    text.number = 9;
    text.type = VELATRIX_REGION_TEXT;
    text.accept_touch = 1;
    text.decode = 1;
    text.output_to_host = 1;
    text.reserved1 = 0x12;
    for (int i = 0; i < 8; ++i) text.reserved2[i] = static_cast<uint8_t>(i + 1);
    text.x1 = 100;
    text.x2 = 199;
    text.y1 = 50;
    text.y2 = 99;
    text.foreground = 0x10203040;
    text.background = 0x50607080;
    text.data.text.resource_number = 4;
    text.data.text.font_number = 2;
    text.data.text.horizontal_justification = 3;
    text.data.text.vertical_justification = 7;

    velatrix_device_region graphic = text;
    graphic.number = 10;
    graphic.type = VELATRIX_REGION_GRAPHIC;
    graphic.output_to_host = 0;
    graphic.has_frame = 1;
    std::memset(&graphic.data, 0, sizeof graphic.data);
    graphic.data.graphic.resource_number = 5;
    graphic.data.graphic.horizontal_justification = 1;
    graphic.data.graphic.vertical_justification = 2;

    velatrix_device_region image_button = text;
    image_button.number = 11;
    image_button.type = VELATRIX_REGION_BUTTON;
    std::memset(&image_button.data, 0, sizeof image_button.data);
    image_button.data.button.enable = 1;
    image_button.data.button.highlight_on_select = 1;
    image_button.data.button.confirm_on_select = 1;
    image_button.data.button.use_resource = 1;
    image_button.data.button.resource_number_normal = 6;
    image_button.data.button.resource_number_selected = 7;

    velatrix_device_region caption_button = image_button;
    caption_button.number = 12;
    std::memset(&caption_button.data, 0, sizeof caption_button.data);
    caption_button.data.button.enable = 1;
    caption_button.data.button.clear_on_select = 1;
    std::strcpy(caption_button.data.button.caption, "Device button");

    const velatrix_device_region* written[] = {&text, &graphic, &image_button, &caption_button};
    for (const velatrix_device_region* region : written) {
        ASSERT_EQ(velatrix_set_region_contents(device_, region), 1) << last_error();
    }
    const velatrix_virtual_region stored_text = pad_region(pad_, 9);
    EXPECT_EQ(stored_text.type, VELATRIX_REGION_TEXT);
    EXPECT_EQ(stored_text.output_to_host, 1);
    EXPECT_EQ(stored_text.resource_number, 4);
    EXPECT_EQ(stored_text.font_number, 2);
    EXPECT_EQ(stored_text.horizontal_justification, 3);
    EXPECT_EQ(stored_text.vertical_justification, 7);
    EXPECT_EQ(stored_text.foreground, 0x10203040u);
    EXPECT_EQ(pad_region(pad_, 10).resource_number, 5);
    EXPECT_EQ(pad_region(pad_, 11).resource_normal, 6);
    EXPECT_EQ(pad_region(pad_, 11).resource_selected, 7);
    EXPECT_EQ(pad_region(pad_, 11).confirm_on_select, 1);
    EXPECT_STREQ(pad_region(pad_, 12).caption, "Device button");
    // The cached table was read again after the writes.
    ASSERT_NE(device_->regions, nullptr);
    EXPECT_EQ(device_->regions[8].type, VELATRIX_REGION_TEXT);
    EXPECT_EQ(device_->regions[8].in_use, 1);

    auto fields = [](const velatrix_device_region& r) {
        return std::tuple(r.number, r.type, r.accept_touch, r.decode, r.has_frame, r.output_to_host, r.reserved1,
                          Bytes(r.reserved2, r.reserved2 + 8), r.x1, r.x2, r.y1, r.y2, r.foreground, r.background);
    };
    // The pad walks its region index on every read.
    ASSERT_EQ(velatrix_set_region_idx(device_, 9), 1) << last_error();
    velatrix_device_region read[4];
    for (velatrix_device_region& region : read) {
        velatrix_get_region_ref(device_, &region);
        ASSERT_EQ(region.report_id, 0x98) << last_error();
    }
    EXPECT_EQ(velatrix_get_region_idx(device_), 13);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(fields(read[i]), fields(*written[i])) << "region " << 9 + i;
    EXPECT_EQ(read[0].data.text.resource_number, 4);
    EXPECT_EQ(read[0].data.text.font_number, 2);
    EXPECT_EQ(read[0].data.text.horizontal_justification, 3);
    EXPECT_EQ(read[0].data.text.vertical_justification, 7);
    EXPECT_EQ(read[1].data.graphic.resource_number, 5);
    EXPECT_EQ(read[1].data.graphic.horizontal_justification, 1);
    EXPECT_EQ(read[1].data.graphic.vertical_justification, 2);
    EXPECT_EQ(read[2].data.button.enable, 1);
    EXPECT_EQ(read[2].data.button.highlight_on_select, 1);
    EXPECT_EQ(read[2].data.button.clear_on_select, 0);
    EXPECT_EQ(read[2].data.button.confirm_on_select, 1);
    EXPECT_EQ(read[2].data.button.use_resource, 1);
    EXPECT_EQ(read[2].data.button.resource_number_normal, 6);
    EXPECT_EQ(read[2].data.button.resource_number_selected, 7);
    EXPECT_EQ(read[3].data.button.use_resource, 0);
    EXPECT_EQ(read[3].data.button.clear_on_select, 1);
    EXPECT_STREQ(read[3].data.button.caption, "Device button");

    // All regions at once: as many as the pad reports, in number order.
    velatrix_device_region* all = velatrix_get_device_regions(device_);
    ASSERT_NE(all, nullptr) << last_error();
    for (int i = 0; i < 12; ++i) EXPECT_EQ(all[i].number, i + 1);
    for (int i = 0; i < 4; ++i) EXPECT_EQ(fields(all[8 + i]), fields(*written[i]));
    velatrix_free_device_regions(all);

    ASSERT_EQ(velatrix_delete_device_region(device_, 9), 1) << last_error();
    EXPECT_EQ(pad_region(pad_, 9).in_use, 0);
}

TEST_P(E2eScreensResources, ScreensRoundTripAndOnlyThirtyEntriesReachThePad) {
    velatrix_hid_feature_screen screen;
    std::memset(&screen, 0, sizeof screen);
    screen.screen_number = 5;
    screen.reset_timeout_on_activity = 1;
    for (int i = 0; i < 14; ++i) screen.reserved[i] = static_cast<uint8_t>(0x31 + i);
    screen.timeout = 9;
    screen.timeout_next_screen = 2;
    const uint8_t regions[] = {1, 2, 3, 4};
    const uint8_t next[] = {0, 0, 2, 1};
    for (uint8_t i = 0; i < 4; ++i) ASSERT_EQ(velatrix_add_region_to_screen(&screen, regions[i], next[i]), 1);
    ASSERT_EQ(velatrix_set_screen(device_, &screen), 1) << last_error();

    velatrix_virtual_screen stored{};
    ASSERT_EQ(velatrix_virtual_get_screen(pad_, 5, &stored), 1) << last_error();
    EXPECT_EQ(stored.reset_timeout_on_activity, 1);
    EXPECT_EQ(stored.timeout, 9);
    EXPECT_EQ(stored.timeout_next_screen, 2);
    EXPECT_EQ(stored.region_count, 4);
    EXPECT_EQ(Bytes(stored.regions, stored.regions + 4), Bytes(regions, regions + 4));
    EXPECT_EQ(Bytes(stored.next_screens, stored.next_screens + 4), Bytes(next, next + 4));

    ASSERT_EQ(velatrix_set_screen_idx(device_, 5), 1) << last_error();
    EXPECT_EQ(velatrix_get_screen_idx(device_), 5);
    velatrix_hid_feature_screen read;
    velatrix_get_screen(&read, device_);
    EXPECT_EQ(read.report_id, 0xA2);
    EXPECT_EQ(read.screen_number, 5);
    EXPECT_EQ(read.reset_timeout_on_activity, 1);
    EXPECT_EQ(Bytes(read.reserved, read.reserved + 14), Bytes(screen.reserved, screen.reserved + 14));
    EXPECT_EQ(read.timeout, 9);
    EXPECT_EQ(read.timeout_next_screen, 2);
    EXPECT_EQ(read.region_count, 4);
    EXPECT_EQ(Bytes(read.region_indexes, read.region_indexes + 4), Bytes(regions, regions + 4));
    EXPECT_EQ(Bytes(read.screen_next_list, read.screen_next_list + 4), Bytes(next, next + 4));

    // Edit in place: one more region, a new time-out.
    velatrix_hid_feature_screen_modify modify{};
    modify.add_region = 1;
    modify.set_timeout = 1;
    modify.screen_index = 5;
    modify.region_index = 6;
    modify.region_screen_next = 3;
    modify.timeout_value = 20;
    modify.timeout_screen_next = 1;
    ASSERT_EQ(velatrix_set_edit_screen(device_, &modify), 1) << last_error();
    ASSERT_EQ(velatrix_virtual_get_screen(pad_, 5, &stored), 1);
    EXPECT_EQ(stored.region_count, 5);
    EXPECT_EQ(stored.regions[4], 6);
    EXPECT_EQ(stored.next_screens[4], 3);
    EXPECT_EQ(stored.timeout, 20);
    EXPECT_EQ(stored.timeout_next_screen, 1);

    ASSERT_EQ(velatrix_set_active_screen(device_, 5), 1) << last_error();
    EXPECT_EQ(velatrix_virtual_get_active_screen(pad_), 5);
    EXPECT_EQ(velatrix_get_active_screen(device_), 5);
    velatrix_hid_feature_screen_region_info info;
    velatrix_get_screen_region_info(&info, device_);
    EXPECT_EQ(info.report_id, 0xAA);
    EXPECT_EQ(info.payload[2], 5) << "active screen";

    // A screen of 35 regions: the record holds them all, the pad gets 30.
    velatrix_hid_feature_screen big;
    std::memset(&big, 0, sizeof big);
    big.screen_number = 6;
    for (uint8_t i = 0; i < 35; ++i) ASSERT_EQ(velatrix_add_region_to_screen(&big, i + 1, 100 + i), 1);
    ASSERT_EQ(big.region_count, 35);
    ASSERT_EQ(velatrix_set_screen(device_, &big), 1) << last_error();
    ASSERT_EQ(velatrix_virtual_get_screen(pad_, 6, &stored), 1);
    EXPECT_EQ(stored.region_count, 35) << "the count as written";
    for (uint8_t i = 0; i < 30; ++i) {
        EXPECT_EQ(stored.regions[i], i + 1);
        EXPECT_EQ(stored.next_screens[i], 100 + i);
    }

    ASSERT_EQ(velatrix_delete_screen(device_, 6), 1) << last_error();
    EXPECT_EQ(velatrix_virtual_get_screen(pad_, 6, &stored), 0);
}

TEST_P(E2eScreensResources, ResourcesTravelInChunksBothWays) {
    Bytes data(2500);
    for (std::size_t i = 0; i < data.size(); ++i) data[i] = static_cast<uint8_t>(i * 7 + i / 1024);
    ASSERT_EQ(velatrix_send_resource(device_, 7, VELATRIX_RESOURCE_GRAPHIC, data.data(),
                                     static_cast<uint32_t>(data.size())),
              1)
        << last_error();
    Bytes stored(4096);
    uint8_t type = 0;
    ASSERT_EQ(velatrix_virtual_get_resource(pad_, 7, &type, stored.data(), 4096), 2500);
    EXPECT_EQ(type, VELATRIX_RESOURCE_GRAPHIC);
    stored.resize(2500);
    EXPECT_EQ(stored, data);

    ASSERT_EQ(velatrix_send_text_resource(device_, 8, "Hello pad"), 1) << last_error();
    stored.assign(64, 0xEE);
    ASSERT_EQ(velatrix_virtual_get_resource(pad_, 8, &type, stored.data(), 64), 10) << "with its terminator";
    EXPECT_EQ(type, VELATRIX_RESOURCE_TEXT);
    EXPECT_EQ(std::string(reinterpret_cast<const char*>(stored.data()), 10), std::string("Hello pad", 10));

    ASSERT_EQ(velatrix_set_resource_idx(device_, 7), 1) << last_error();
    EXPECT_EQ(velatrix_get_resource_idx(device_), 7);
    velatrix_hid_feature_resource_info info;
    velatrix_get_resource_info(device_, &info);
    EXPECT_EQ(info.report_id, 0x8D);
    EXPECT_EQ(info.resource_number, 7);
    EXPECT_EQ(info.resource_type, VELATRIX_RESOURCE_GRAPHIC);
    EXPECT_EQ(info.resource_size, 2500u);

    auto* chunk = new velatrix_hid_feature_resource;
    velatrix_get_resource(device_, chunk);
    EXPECT_EQ(chunk->report_id, 0x8E);
    EXPECT_EQ(chunk->resource_number, 7);
    EXPECT_EQ(chunk->resource_type, VELATRIX_RESOURCE_GRAPHIC);
    EXPECT_EQ(chunk->resource_size, 2500u);
    Bytes read(chunk->data, chunk->data + chunk->chunk_length);
    std::vector<uint16_t> lengths{chunk->chunk_length};
    while (read.size() < chunk->resource_size && lengths.size() < 5) {
        velatrix_get_resource_ref(device_, chunk);
        ASSERT_EQ(chunk->report_id, 0x8E) << last_error();
        read.insert(read.end(), chunk->data, chunk->data + chunk->chunk_length);
        lengths.push_back(chunk->chunk_length);
    }
    delete chunk;
    EXPECT_EQ(lengths, (std::vector<uint16_t>{1024, 1024, 452}));
    EXPECT_EQ(read, data);

    velatrix_hid_feature_resource_availability availability;
    velatrix_get_resource_availability(device_, &availability);
    EXPECT_EQ(availability.report_id, 0x90);
    EXPECT_EQ(availability.unknown1, 2) << "resources held";

    ASSERT_EQ(velatrix_delete_resource(device_, 7), 1) << last_error();
    EXPECT_EQ(velatrix_virtual_get_resource(pad_, 7, nullptr, stored.data(), 64), -1);
}

INSTANTIATE_TEST_SUITE_P(ModelsWithScreens, E2eScreensResources, ::testing::ValuesIn(model_names(has_screens)),
                         param_name);

}  // namespace
}  // namespace velatrix::e2e
