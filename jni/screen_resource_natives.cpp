// The Device natives of screens and resources: the screen records, their
// edits, the stored texts and graphics, and the indexes that select them.
#include <algorithm>
#include <array>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

#include "binding_cache.h"
#include "native_call.h"
#include "value_classes.h"

using namespace velatrix::jni;

// An action of the open pad with one int, and an index getter.
#define VQ_ACTION_INT(name, call) \
    VQ_DEVICE_NATIVE(void, name, jint value) { act(env, self, [value](velatrix_device* d) { return call; }); }
#define VQ_INDEX(name, call) \
    VQ_DEVICE_NATIVE(jint, name) { return get_index(env, self, [](velatrix_device* d) { return call; }); }
// A getter that fills its record through the C _ref function.
#define VQ_REF_GETTER(name, Record, value_class, c_getter)                                   \
    VQ_DEVICE_NATIVE(jobject, name) {                                                        \
        return get_report<Record>(env, self, value_class,                                    \
                                  [](velatrix_device* d, Record* r) { c_getter(d, r); });    \
    }

VQ_INDEX(getResourceIndex, velatrix_get_resource_idx(d))
VQ_ACTION_INT(setResourceIndex, velatrix_set_resource_idx(d, static_cast<uint8_t>(value)))
VQ_ACTION_INT(deleteResource, velatrix_delete_resource(d, static_cast<uint8_t>(value)))
VQ_INDEX(getScreenIndex, velatrix_get_screen_idx(d))
VQ_ACTION_INT(setScreenIndex, velatrix_set_screen_idx(d, static_cast<uint8_t>(value)))
VQ_INDEX(getActiveScreen, velatrix_get_active_screen(d))
VQ_ACTION_INT(setActiveScreen, velatrix_set_active_screen(d, static_cast<uint8_t>(value)))
VQ_ACTION_INT(deleteScreen, velatrix_delete_screen(d, static_cast<uint8_t>(value)))

VQ_REF_GETTER(getResourceInfo, velatrix_hid_feature_resource_info, kResourceInfo, velatrix_get_resource_info_ref)
VQ_REF_GETTER(getResourceAvailability, velatrix_hid_feature_resource_availability, kResourceAvailability,
              velatrix_get_resource_availability_ref)
VQ_REF_GETTER(getScreenRegionInfo, velatrix_hid_feature_screen_region_info, kScreenRegionInfo,
              velatrix_get_screen_region_info_ref)

// ---- Screens ---------------------------------------------------------------

namespace {

using Screen = velatrix_hid_feature_screen;

// The two lists have `listed` entries: the screen's region count when a
// screen is built, the whole record when one is read from Java.
std::array<Slot, 7> screen_slots(uint16_t listed) {
    return {
        VQ_NUMBER(Screen, screen_number, 'I', &velatrix_screen_number_field),
        VQ_NUMBER(Screen, reset_timeout_on_activity, 'Z', &velatrix_screen_reset_timeout_on_activity_field),
        VQ_INT_ARRAY(Screen, reserved, 0, sizeof(Screen::reserved), &velatrix_screen_reserved_field),
        VQ_NUMBER(Screen, timeout, 'I', &velatrix_screen_timeout_field),
        VQ_NUMBER(Screen, timeout_next_screen, 'I', &velatrix_screen_timeout_next_screen_field),
        VQ_INT_ARRAY(Screen, region_indexes, 0, listed, &velatrix_screen_region_indexes_field),
        VQ_INT_ARRAY(Screen, screen_next_list, 0, listed, &velatrix_screen_screen_next_list_field),
    };
}

}  // namespace

VQ_DEVICE_NATIVE(jobject, getScreen) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return nullptr;
    Screen record{};
    velatrix_get_screen_ref(device, &record);
    if (record.report_id == 0) {
        velatrix_throw_exception(env);
        return nullptr;
    }
    // region_count comes from the pad; the lists never reach past the record.
    const auto slots = screen_slots(std::min<uint16_t>(record.region_count, VELATRIX_SCREEN_MAX_REGIONS));
    return new_object(env, ValueClass{&velatrix_screen_class, &velatrix_screen_init, slots}, &record);
}

VQ_DEVICE_NATIVE(void, setScreen, jobject screen) {
    velatrix_device* device = enter(env, self, screen, "Screen can't be null.");
    if (device == nullptr) return;
    auto indexes = static_cast<jintArray>(env->GetObjectField(screen, velatrix_screen_region_indexes_field));
    const jsize count = indexes != nullptr ? env->GetArrayLength(indexes) : 0;
    if (indexes != nullptr) env->DeleteLocalRef(indexes);
    if (count > VELATRIX_SCREEN_MAX_REGIONS) {
        velatrix_throw_exception_str(env, "Region index data is too long");
        return;
    }
    Screen record{};
    const auto slots = screen_slots(VELATRIX_SCREEN_MAX_REGIONS);
    read_object(env, ValueClass{&velatrix_screen_class, &velatrix_screen_init, slots}, screen, &record);
    record.report_id = 162;
    record.region_count = static_cast<uint8_t>(count);
    succeeded(env, velatrix_set_screen(device, &record));
}

VQ_DEVICE_NATIVE(void, modifyScreen, jobject modification) {
    using Modify = velatrix_hid_feature_screen_modify;
    set_report<Modify>(env, self, modification, "Screen modification can't be null.", kScreenModify, 0xA4,
                       [](velatrix_device* d, const Modify& r) { return velatrix_set_edit_screen(d, &r) == 1; });
}

// ---- Resources -------------------------------------------------------------

namespace {

using Chunk = velatrix_hid_feature_resource;

// The resource classes take their number, then the contents if they have any.
const ValueClass kResourceText{&velatrix_resource_text_class, &velatrix_resource_text_init, {}};
const ValueClass kResourceGraphic{&velatrix_resource_graphic_class, &velatrix_resource_graphic_init, {}};
const ValueClass kResourceInvalid{&velatrix_resource_invalid_class, &velatrix_resource_invalid_init, {}};

// The pad announces a resource's size before sending it; a larger claim than
// any pad stores is a broken answer, not something to allocate for.
constexpr uint64_t kLargestResource = 16u * 1024 * 1024;

// The whole resource whose first chunk is `chunk`: the following chunks are
// read until resource_size bytes are in. Nothing, after throwing, when a chunk
// fails or the pad stops sending before the size is reached.
std::optional<std::vector<uint8_t>> read_contents(JNIEnv* env, velatrix_device* device, Chunk& chunk) {
    const uint64_t size = chunk.resource_size;
    if (size > kLargestResource) {
        velatrix_throw_exception_str(env, "Resource is too big to read.");
        return std::nullopt;
    }
    std::vector<uint8_t> contents;
    contents.reserve(size);
    for (;;) {
        const size_t taken = std::min<size_t>(chunk.chunk_length, size - contents.size());
        contents.insert(contents.end(), chunk.data, chunk.data + taken);
        if (contents.size() == size) return contents;
        // An empty chunk would never bring the rest.
        if (chunk.chunk_length == 0) {
            velatrix_throw_exception_str(env, "Resource ended before all of its data arrived.");
            return std::nullopt;
        }
        velatrix_get_resource_ref(device, &chunk);
        if (chunk.report_id == 0) {
            velatrix_throw_exception(env);
            return std::nullopt;
        }
    }
}

}  // namespace

VQ_DEVICE_NATIVE(jobject, getResource) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return nullptr;
    auto chunk = std::make_unique<Chunk>();
    velatrix_get_resource(device, chunk.get());
    if (chunk->report_id == 0) {
        velatrix_throw_exception(env);
        return nullptr;
    }
    jvalue arguments[2]{};
    arguments[0].i = chunk->resource_number;
    const uint32_t type = chunk->resource_type;
    if (type != VELATRIX_RESOURCE_TEXT && type != VELATRIX_RESOURCE_GRAPHIC) {
        return new_object(env, kResourceInvalid, arguments);
    }
    const auto contents = read_contents(env, device, *chunk);
    if (!contents) return nullptr;
    if (type == VELATRIX_RESOURCE_TEXT) {
        // The text is stored with its terminator; anything after it is not text.
        arguments[1].l = new_string(env, reinterpret_cast<const char*>(contents->data()), contents->size());
    } else {
        arguments[1].l = new_byte_array(env, contents->data(), contents->size());
    }
    if (arguments[1].l == nullptr) return nullptr;  // out of memory, pending
    jobject resource = new_object(env, type == VELATRIX_RESOURCE_TEXT ? kResourceText : kResourceGraphic, arguments);
    env->DeleteLocalRef(arguments[1].l);
    return resource;
}

// A text travels with its terminator, a graphic as its bytes; a resource of
// neither kind has nothing to store, which the C side accepts as done.
VQ_DEVICE_NATIVE(void, setResourceImpl, jobject resource) {
    velatrix_device* device = enter(env, self, resource, "Resource can't be null.");
    if (device == nullptr) return;
    const auto number = static_cast<uint8_t>(env->GetIntField(resource, velatrix_resource_resource_number_field));
    uint32_t type = VELATRIX_RESOURCE_INVALID;
    std::vector<uint8_t> contents;
    if (env->IsInstanceOf(resource, velatrix_resource_text_class)) {
        auto text = static_cast<jstring>(env->GetObjectField(resource, velatrix_resource_text_text_field));
        if (text == nullptr) {
            velatrix_throw_exception_str(env, "Text field is null, text field cannot be null.");
            return;
        }
        {
            Utf8Chars chars(env, text);
            if (chars.get() == nullptr) return;  // out of memory, pending
            contents.assign(chars.get(), chars.get() + chars.length() + 1);
        }
        env->DeleteLocalRef(text);
        type = VELATRIX_RESOURCE_TEXT;
    } else if (env->IsInstanceOf(resource, velatrix_resource_graphic_class)) {
        auto data = static_cast<jbyteArray>(env->GetObjectField(resource, velatrix_resource_graphic_data_field));
        if (data == nullptr) {
            velatrix_throw_exception_str(env, "Graphic field is null, graphic field cannot be null.");
            return;
        }
        const jsize length = env->GetArrayLength(data);
        contents.resize(static_cast<size_t>(length));
        env->GetByteArrayRegion(data, 0, length, reinterpret_cast<jbyte*>(contents.data()));
        env->DeleteLocalRef(data);
        type = VELATRIX_RESOURCE_GRAPHIC;
    }
    const int result =
        velatrix_send_resource(device, number, type, contents.data(), static_cast<uint32_t>(contents.size()));
    if (result != 1) velatrix_throw_exception(env);
}
