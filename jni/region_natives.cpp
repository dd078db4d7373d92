// The Device natives of regions: the region table (velatrix_device_region_info)
// and device regions (velatrix_device_region), both as Region objects.
//
// A region object is a common run of constructor arguments followed by its
// type's tail. Each record has one table for the common run and one per type
// for the tail; a tail's slots are laid over the union member of that type,
// and since every member of the union starts at the union, they apply at
// &record.data whatever the type. The same tables, through their cached
// fields, read a Region object back into a record.
#include <algorithm>
#include <bit>
#include <cstddef>
#include <initializer_list>
#include <span>
#include <vector>

#include "binding_cache.h"
#include "native_call.h"

using namespace velatrix::jni;

namespace {

constexpr const char* kNullRegion = "Region can't be null.";
constexpr const char* kCaptionTooLong = "Caption for button exceed maximum length.";

// A region whose class names no type this library knows keeps no code of its
// own; 0xFF is no type the pad defines, so it treats the region as unknown.
constexpr uint32_t kUnknownType = 0xFF;

// One component of a 0xRRGGBBAA colour member; `shift` is its place in that
// value (24 red, 16 green, 8 blue, 0 alpha), so the byte is found on any
// host byte order.
constexpr Slot colour_byte(size_t member_offset, unsigned shift) {
    const unsigned index = std::endian::native == std::endian::little ? shift / 8 : 3 - shift / 8;
    return VQ_BYTE_AT(member_offset + index, 'B');
}
// The four constructor bytes of a colour: red, green, blue, alpha.
#define VQ_COLOUR(Record, member)                                                        \
    colour_byte(offsetof(Record, member), 24), colour_byte(offsetof(Record, member), 16), \
        colour_byte(offsetof(Record, member), 8), colour_byte(offsetof(Record, member), 0)

// ---- Region table records --------------------------------------------------

using Info = velatrix_device_region_info;
const Slot kInfoCommon[] = {
    VQ_NUMBER(Info, number, 'I', &velatrix_region_number_field),
    VQ_NUMBER(Info, accept_touch, 'Z', &velatrix_region_accept_touch_field),
    VQ_NUMBER(Info, decode, 'Z', &velatrix_region_decode_field),
    VQ_NUMBER(Info, visible, 'Z', &velatrix_region_visible_field),
    VQ_NUMBER(Info, in_use, 'Z', &velatrix_region_in_use_field),
    VQ_NUMBER(Info, has_frame, 'Z', &velatrix_region_has_frame_field),
    VQ_ZERO('Z'),  // the table has no output-to-host flag
    VQ_NUMBER(Info, reserved1, 'Z', &velatrix_region_reserved1_field),
    VQ_NUMBER(Info, reserved2, 'I', &velatrix_region_reserved2_field),
    VQ_NUMBER(Info, x1, 'I', &velatrix_region_x1_field),
    VQ_NUMBER(Info, x2, 'I', &velatrix_region_x2_field),
    VQ_NUMBER(Info, y1, 'I', &velatrix_region_y1_field),
    VQ_NUMBER(Info, y2, 'I', &velatrix_region_y2_field),
    VQ_COLOUR(Info, foreground),
    VQ_COLOUR(Info, background),
};

using InfoContainer = velatrix_region_info_container;
const Slot kInfoContainerTail[] = {
    VQ_NUMBER(InfoContainer, ink_enable, 'Z', &velatrix_region_container_ink_enabled_field),
    VQ_NUMBER(InfoContainer, ink_width, 'I', &velatrix_region_container_ink_width_field),
    VQ_NUMBER(InfoContainer, reserved1, 'I', &velatrix_region_container_container_reserved1_field),
    VQ_NUMBER(InfoContainer, reserved2, 'I', &velatrix_region_container_container_reserved2_field),
};

// The table's buttons can neither ask for confirmation nor show resources.
using InfoButton = velatrix_region_info_button;
const Slot kInfoButtonTail[] = {
    VQ_NUMBER(InfoButton, parent, 'I', &velatrix_region_button_button_parent_field),
    VQ_NUMBER(InfoButton, enable, 'Z', &velatrix_region_button_enable_field),
    VQ_NUMBER(InfoButton, highlight_on_select, 'Z', &velatrix_region_button_highlight_on_select_field),
    VQ_NUMBER(InfoButton, clear_on_select, 'Z', &velatrix_region_button_clear_on_select_field),
    VQ_ZERO('Z'),
    VQ_ZERO('Z'),
    VQ_NUMBER(InfoButton, reserved, 'I', &velatrix_region_button_button_reserved_field),
    VQ_TEXT(InfoButton, caption, &velatrix_region_button_caption_field),
    VQ_ZERO('I'),
    VQ_ZERO('I'),
};

using InfoLine = velatrix_region_info_line;
const Slot kInfoLineTail[] = {
    VQ_NUMBER(InfoLine, parent, 'I', &velatrix_region_line_line_parent_field),
    VQ_NUMBER(InfoLine, width, 'I', &velatrix_region_line_width_field),
    VQ_NUMBER(InfoLine, reserved, 'I', &velatrix_region_line_line_reserved_field),
};

// The table does not know graphics and texts: such a slot has an empty tail.
const Slot kInfoGraphicTail[] = {VQ_ZERO('I'), VQ_ZERO('I'), VQ_ZERO('I'), VQ_ZERO('I')};
const Slot kInfoTextTail[] = {VQ_ZERO('I'), VQ_ZERO('I'), VQ_ZERO('I'), VQ_ZERO('I'), VQ_ZERO('I')};

// ---- Device region records -------------------------------------------------

// Device regions carry neither a visible nor an in-use flag; of the eight
// reserved bytes the object holds the first.
using DeviceRegion = velatrix_device_region;
const Slot kDeviceCommon[] = {
    VQ_NUMBER(DeviceRegion, number, 'I', &velatrix_region_number_field),
    VQ_NUMBER(DeviceRegion, accept_touch, 'Z', &velatrix_region_accept_touch_field),
    VQ_NUMBER(DeviceRegion, decode, 'Z', &velatrix_region_decode_field),
    VQ_ZERO('Z'),
    VQ_ZERO('Z'),
    VQ_NUMBER(DeviceRegion, has_frame, 'Z', &velatrix_region_has_frame_field),
    VQ_NUMBER(DeviceRegion, output_to_host, 'Z', &velatrix_region_output_to_host),
    VQ_NUMBER(DeviceRegion, reserved1, 'Z', &velatrix_region_reserved1_field),
    VQ_ELEMENT(DeviceRegion, reserved2, 0, 'I', &velatrix_region_reserved2_field),
    VQ_NUMBER(DeviceRegion, x1, 'I', &velatrix_region_x1_field),
    VQ_NUMBER(DeviceRegion, x2, 'I', &velatrix_region_x2_field),
    VQ_NUMBER(DeviceRegion, y1, 'I', &velatrix_region_y1_field),
    VQ_NUMBER(DeviceRegion, y2, 'I', &velatrix_region_y2_field),
    VQ_COLOUR(DeviceRegion, foreground),
    VQ_COLOUR(DeviceRegion, background),
};

using DeviceContainer = velatrix_device_region_container;
const Slot kDeviceContainerTail[] = {
    VQ_NUMBER(DeviceContainer, ink_enabled, 'Z', &velatrix_region_container_ink_enabled_field),
    VQ_NUMBER(DeviceContainer, ink_width, 'I', &velatrix_region_container_ink_width_field),
    VQ_NUMBER(DeviceContainer, reserved1, 'I', &velatrix_region_container_container_reserved1_field),
    VQ_NUMBER(DeviceContainer, reserved2, 'I', &velatrix_region_container_container_reserved2_field),
};

// Device-region buttons have no parent.
using DeviceButton = velatrix_device_region_button;
const Slot kDeviceButtonTail[] = {
    VQ_ZERO('I'),
    VQ_NUMBER(DeviceButton, enable, 'Z', &velatrix_region_button_enable_field),
    VQ_NUMBER(DeviceButton, highlight_on_select, 'Z', &velatrix_region_button_highlight_on_select_field),
    VQ_NUMBER(DeviceButton, clear_on_select, 'Z', &velatrix_region_button_clear_on_select_field),
    VQ_NUMBER(DeviceButton, confirm_on_select, 'Z', &velatrix_region_button_confirm_on_select_field),
    VQ_NUMBER(DeviceButton, use_resource, 'Z', &velatrix_region_button_use_resource_field),
    VQ_ELEMENT(DeviceButton, reserved, 0, 'I', &velatrix_region_button_button_reserved_field),
    VQ_TEXT(DeviceButton, caption, &velatrix_region_button_caption_field),
    VQ_NUMBER(DeviceButton, resource_number_normal, 'I', &velatrix_region_button_resource_number_normal_field),
    VQ_NUMBER(DeviceButton, resource_number_selected, 'I', &velatrix_region_button_resource_number_selected_field),
};

using DeviceLine = velatrix_device_region_line;
const Slot kDeviceLineTail[] = {
    VQ_NUMBER(DeviceLine, parent, 'I', &velatrix_region_line_line_parent_field),
    VQ_NUMBER(DeviceLine, width, 'I', &velatrix_region_line_width_field),
    VQ_ELEMENT(DeviceLine, reserved, 0, 'I', &velatrix_region_line_line_reserved_field),
};

// The object holds one reserved value: the byte before the resource number,
// as the other types do; the last byte travels as zero from Java.
using DeviceGraphic = velatrix_device_region_graphic;
const Slot kDeviceGraphicTail[] = {
    VQ_NUMBER(DeviceGraphic, resource_number, 'I', &velatrix_region_graphic_resource_number_field),
    VQ_NUMBER(DeviceGraphic, horizontal_justification, 'I', &velatrix_region_graphic_horizontal_justification_field),
    VQ_NUMBER(DeviceGraphic, vertical_justification, 'I', &velatrix_region_graphic_vertical_justification_field),
    VQ_NUMBER(DeviceGraphic, reserved1, 'I', &velatrix_region_graphic_graphic_reserved_field),
};

using DeviceText = velatrix_device_region_text;
const Slot kDeviceTextTail[] = {
    VQ_NUMBER(DeviceText, resource_number, 'I', &velatrix_region_text_resource_number_field),
    VQ_NUMBER(DeviceText, font_number, 'I', &velatrix_region_text_font_number_field),
    VQ_NUMBER(DeviceText, horizontal_justification, 'I', &velatrix_region_text_horizontal_justification_field),
    VQ_NUMBER(DeviceText, vertical_justification, 'I', &velatrix_region_text_vertical_justification_field),
    VQ_NUMBER(DeviceText, reserved, 'I', &velatrix_region_text_text_reserved_field),
};

// ---- Type code to class ----------------------------------------------------

struct RegionShape {
    uint32_t type;
    jclass* cls;
    jmethodID* init;
    std::span<const Slot> info_tail;
    std::span<const Slot> device_tail;
    // What an update sends as "enable": the flag that switches the region's
    // own behaviour on (a container's ink, a button's pressability), read
    // from this field; without one, `enable` itself.
    jfieldID* enable_field;
    uint8_t enable;
};

// A line has no behaviour to switch off, so it is always enabled; graphics,
// texts and unknown regions have none to switch on.
const RegionShape kShapes[] = {
    {VELATRIX_REGION_CONTAINER, &velatrix_region_container_class, &velatrix_region_container_init, kInfoContainerTail,
     kDeviceContainerTail, &velatrix_region_container_ink_enabled_field, 0},
    {VELATRIX_REGION_BUTTON, &velatrix_region_button_class, &velatrix_region_button_init, kInfoButtonTail,
     kDeviceButtonTail, &velatrix_region_button_enable_field, 0},
    {VELATRIX_REGION_LINE, &velatrix_region_line_class, &velatrix_region_line_init, kInfoLineTail, kDeviceLineTail,
     nullptr, 1},
    {VELATRIX_REGION_GRAPHIC, &velatrix_region_graphic_class, &velatrix_region_graphic_init, kInfoGraphicTail,
     kDeviceGraphicTail, nullptr, 0},
    {VELATRIX_REGION_TEXT, &velatrix_region_text_class, &velatrix_region_text_init, kInfoTextTail, kDeviceTextTail,
     nullptr, 0},
};
const RegionShape kNullShape{kUnknownType, &velatrix_region_null_class, &velatrix_region_null_init, {}, {}, nullptr, 0};

const RegionShape& shape_of_type(uint32_t type) {
    for (const RegionShape& shape : kShapes) {
        if (shape.type == type) return shape;
    }
    return kNullShape;
}

const RegionShape& shape_of_object(JNIEnv* env, jobject region) {
    for (const RegionShape& shape : kShapes) {
        if (*shape.cls != nullptr && env->IsInstanceOf(region, *shape.cls)) return shape;
    }
    return kNullShape;
}

std::span<const Slot> common_slots(const Info&) { return kInfoCommon; }
std::span<const Slot> common_slots(const DeviceRegion&) { return kDeviceCommon; }
std::span<const Slot> tail_slots(const RegionShape& shape, const Info&) { return shape.info_tail; }
std::span<const Slot> tail_slots(const RegionShape& shape, const DeviceRegion&) { return shape.device_tail; }

bool holds_reference(const Slot& slot) { return slot.kind != SlotKind::Number && slot.kind != SlotKind::Zero; }

// ---- Record to object ------------------------------------------------------

template <class Record>
jobject new_region(JNIEnv* env, const Record& record) {
    const RegionShape& shape = shape_of_type(record.type);
    const std::span<const Slot> common = common_slots(record);
    const std::span<const Slot> tail = tail_slots(shape, record);
    std::vector<jvalue> arguments;
    arguments.reserve(common.size() + tail.size());
    for (const Slot& slot : common) arguments.push_back(slot_argument(env, &record, slot));
    for (const Slot& slot : tail) arguments.push_back(slot_argument(env, &record.data, slot));
    jobject region = new_object(env, ValueClass{shape.cls, shape.init, {}}, arguments.data());
    // The caption string made for the constructor is now held by the object.
    for (size_t k = 0; k < tail.size(); ++k) {
        jobject made = arguments[common.size() + k].l;
        if (holds_reference(tail[k]) && made != nullptr) env->DeleteLocalRef(made);
    }
    return region;
}

// One element per record, in record order; null with a Java error pending
// when an object could not be made.
template <class Record>
jobjectArray new_region_array(JNIEnv* env, const Record* records, size_t count) {
    jobjectArray array = env->NewObjectArray(static_cast<jsize>(count), velatrix_region_class, nullptr);
    if (array == nullptr) return nullptr;
    for (size_t i = 0; i < count; ++i) {
        jobject region = new_region(env, records[i]);
        if (region == nullptr) {
            env->DeleteLocalRef(array);
            return nullptr;
        }
        env->SetObjectArrayElement(array, static_cast<jsize>(i), region);
        env->DeleteLocalRef(region);
    }
    return array;
}

// A region table read by `read`, one element per region slot, freed here.
jobjectArray region_table(JNIEnv* env, jobject self, Info* (*read)(velatrix_device*)) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return nullptr;
    Info* regions = read(device);
    if (regions == nullptr) {
        velatrix_throw_exception(env);
        return nullptr;
    }
    jobjectArray array = new_region_array(env, regions, device->display_info.region_count);
    velatrix_free_regions(regions);
    return array;
}

// The number of device regions the pad reports (byte 2 of the screen region
// info), or -1 when the report could not be read.
int device_region_count(velatrix_device* device) {
    velatrix_hid_feature_screen_region_info info{};
    velatrix_get_screen_region_info_ref(device, &info);
    return info.report_id != 0 ? info.payload[1] : -1;
}

// ---- Object to record ------------------------------------------------------

// A 0xRRGGBBAA value from a java.awt.Color; a missing colour is 0. A getter
// that throws leaves its exception pending for the caller to see.
uint32_t read_colour(JNIEnv* env, jobject region, jfieldID field) {
    jobject colour = env->GetObjectField(region, field);
    if (colour == nullptr) return 0;
    uint32_t value = 0;
    for (jmethodID getter : {velatrix_color_get_red, velatrix_color_get_green, velatrix_color_get_blue,
                             velatrix_color_get_alpha}) {
        const jint component = env->CallIntMethod(colour, getter);
        if (env->ExceptionCheck()) break;
        value = value << 8 | static_cast<uint8_t>(component);
    }
    env->DeleteLocalRef(colour);
    return value;
}

// The pad refuses captions longer than it announced; the caption is measured
// in the UTF-8 bytes it travels as. Throws and returns false when too long.
bool caption_fits(JNIEnv* env, jobject button, uint32_t max_caption_length) {
    auto caption = static_cast<jstring>(env->GetObjectField(button, velatrix_region_button_caption_field));
    if (caption == nullptr) return true;
    const jsize length = env->GetStringUTFLength(caption);
    env->DeleteLocalRef(caption);
    if (static_cast<uint32_t>(length) <= max_caption_length) return true;
    velatrix_throw_exception_str(env, kCaptionTooLong);
    return false;
}

// Fills a zeroed record from the object by its class. The caption is cut to
// the record's field less its terminator; the pad's own limit is checked
// first. False, with a Java error pending, when the record must not be sent.
template <class Record>
bool read_region(JNIEnv* env, const velatrix_device* device, jobject region, Record& record) {
    const RegionShape& shape = shape_of_object(env, region);
    if (shape.type == VELATRIX_REGION_BUTTON && !caption_fits(env, region, device->display_info.max_caption_length))
        return false;
    read_object(env, ValueClass{shape.cls, shape.init, common_slots(record)}, region, &record);
    read_object(env, ValueClass{shape.cls, shape.init, tail_slots(shape, record)}, region, &record.data);
    record.type = shape.type;
    record.foreground = read_colour(env, region, velatrix_region_color_foreground_field);
    if (env->ExceptionCheck()) return false;
    record.background = read_colour(env, region, velatrix_region_color_background_field);
    return !env->ExceptionCheck();
}

}  // namespace

VQ_DEVICE_NATIVE(jobjectArray, getRegions) { return region_table(env, self, velatrix_get_regions); }
VQ_DEVICE_NATIVE(jobjectArray, getDefaultRegions) { return region_table(env, self, velatrix_get_default_regions); }

// The array velatrix_get_device_regions returns does not carry its length:
// it holds as many regions as the screen region info announced when it was
// called. That count is read here before and after the call, and the smaller
// one is used, so that a region added or deleted meanwhile by another thread
// can never make this read past the array.
VQ_DEVICE_NATIVE(jobjectArray, getDeviceRegions) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return nullptr;
    const int before = device_region_count(device);
    velatrix_device_region* regions = before >= 0 ? velatrix_get_device_regions(device) : nullptr;
    if (regions == nullptr) {
        velatrix_throw_exception(env);
        return nullptr;
    }
    const int after = device_region_count(device);
    const int count = after >= 0 ? std::min(before, after) : before;
    jobjectArray array = new_region_array(env, regions, static_cast<size_t>(count));
    velatrix_free_device_regions(regions);
    return array;
}

VQ_DEVICE_NATIVE(jobject, getDeviceRegion) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return nullptr;
    velatrix_device_region record{};
    velatrix_get_region(&record, device);
    if (record.report_id == 0) {
        velatrix_throw_exception(env);
        return nullptr;
    }
    return new_region(env, record);
}

VQ_DEVICE_NATIVE(void, setRegion, jobject region) {
    velatrix_device* device = enter(env, self, region, kNullRegion);
    if (device == nullptr) return;
    Info record{};
    if (read_region(env, device, region, record)) succeeded(env, velatrix_set_region(device, &record));
}

VQ_DEVICE_NATIVE(void, setDeviceRegion, jobject region) {
    velatrix_device* device = enter(env, self, region, kNullRegion);
    if (device == nullptr) return;
    DeviceRegion record{};
    record.report_id = 0x98;
    if (read_region(env, device, region, record)) succeeded(env, velatrix_set_region_contents(device, &record));
}

VQ_DEVICE_NATIVE(void, updateRegion, jobject region) {
    velatrix_device* device = enter(env, self, region, kNullRegion);
    if (device == nullptr) return;
    const RegionShape& shape = shape_of_object(env, region);
    velatrix_region_update update{};
    update.number = static_cast<uint8_t>(env->GetIntField(region, velatrix_region_number_field));
    update.enable = shape.enable_field != nullptr ? (env->GetBooleanField(region, *shape.enable_field) ? 1 : 0)
                                                  : shape.enable;
    update.visible = env->GetBooleanField(region, velatrix_region_visible_field) ? 1 : 0;
    update.foreground = read_colour(env, region, velatrix_region_color_foreground_field);
    if (!env->ExceptionCheck()) succeeded(env, velatrix_update_region(device, &update));
}
