// The Device natives of actions, display content, firmware, the
// error-correction table and raw reports.
#include <cstring>
#include <memory>
#include <vector>

#include "binding_cache.h"
#include "native_call.h"
#include "value_classes.h"

using namespace velatrix::jni;

// An action of the open pad without arguments, or with one int.
#define VQ_ACTION(name, call) \
    VQ_DEVICE_NATIVE(void, name) { act(env, self, [](velatrix_device* d) { return call; }); }
#define VQ_ACTION_INT(name, call) \
    VQ_DEVICE_NATIVE(void, name, jint value) { act(env, self, [value](velatrix_device* d) { return call; }); }
#define VQ_INDEX(name, call) \
    VQ_DEVICE_NATIVE(jint, name) { return get_index(env, self, [](velatrix_device* d) { return call; }); }

// The mode set-ups are not stored as the pad's default: a caller who wants
// that stores the regions and screens afterwards.
VQ_ACTION(setQuillmarkMode, velatrix_set_quillmark_mode(d, 0))
VQ_ACTION(setCorvantineMode, velatrix_set_corvantine_mode(d, 0))
VQ_ACTION(restoreDefaultRegions, velatrix_restore_default_regions(d))
VQ_ACTION(calibrate, velatrix_device_calibrate(d))
VQ_ACTION(cancelCalibration, velatrix_device_cancel_calibrate(d))
VQ_ACTION(clearLastError, velatrix_clear_last_error(d))
VQ_ACTION(clearScreen, velatrix_clear_screen(d))
VQ_ACTION(saveRegions, velatrix_set_region_commit(d, 0))
VQ_ACTION(saveScreensRegions, velatrix_set_screen_region_commit(d, 0))
// Status 1 tells the pad the image is complete.
VQ_ACTION(setFirmwareComplete, velatrix_set_firmware_download_status(d, 1))
VQ_ACTION_INT(setRegionIndex, velatrix_set_region_idx(d, static_cast<uint8_t>(value)))
VQ_ACTION_INT(setRunMode, velatrix_set_run_mode(d, static_cast<uint8_t>(value)))
VQ_ACTION_INT(setStartupMode, velatrix_set_startup_mode(d, value))
VQ_ACTION_INT(deleteRegion, velatrix_delete_region(d, static_cast<uint8_t>(value)))
VQ_ACTION_INT(deleteDeviceRegion, velatrix_delete_device_region(d, static_cast<uint8_t>(value)))
VQ_ACTION_INT(setPrimaryRegion, velatrix_set_display_content(d, static_cast<uint32_t>(value)))
VQ_INDEX(getRegionIndex, velatrix_get_region_idx(d))

VQ_DEVICE_NATIVE(jbyteArray, getUuid) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return nullptr;
    uint8_t* uuid = velatrix_get_device_uuid(device);
    if (uuid == nullptr) {
        velatrix_throw_exception_str(env, "Device UUID is null.");
        return nullptr;
    }
    jbyteArray bytes = new_byte_array(env, uuid, 16);
    velatrix_free_device_uuid(uuid);
    return bytes;
}

VQ_DEVICE_NATIVE(jbyteArray, getErrorCorrectionTable) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return nullptr;
    auto table = std::make_unique<velatrix_hid_feature_error_correction_table>();
    velatrix_get_error_correction_table(table.get(), device);
    if (table->report_id == 0) {
        velatrix_throw_exception(env);
        return nullptr;
    }
    return new_byte_array(env, table->data, VELATRIX_ERROR_CORRECTION_TABLE_SIZE);
}

VQ_DEVICE_NATIVE(void, setErrorCorrectionTable, jbyteArray data) {
    velatrix_device* device = enter(env, self, data, "Error correction table can't be null.");
    if (device == nullptr) return;
    if (env->GetArrayLength(data) != VELATRIX_ERROR_CORRECTION_TABLE_SIZE) {
        velatrix_throw_exception_str(env, "Error correction table length is not correct.");
        return;
    }
    auto table = std::make_unique<velatrix_hid_feature_error_correction_table>();
    table->report_id = 0x1A;
    env->GetByteArrayRegion(data, 0, VELATRIX_ERROR_CORRECTION_TABLE_SIZE, reinterpret_cast<jbyte*>(table->data));
    succeeded(env, velatrix_set_error_correction(device, table.get()));
}

VQ_DEVICE_NATIVE(void, setFirmwarePage, jobject page) {
    velatrix_device* device = enter(env, self, page, "Firmware page can't be null.");
    if (device == nullptr) return;
    auto data = static_cast<jbyteArray>(env->GetObjectField(page, velatrix_firmware_page_data_field));
    const jsize length = data != nullptr ? env->GetArrayLength(data) : 0;
    if (data != nullptr) env->DeleteLocalRef(data);
    if (length > static_cast<jsize>(sizeof(velatrix_firmware_page::data))) {
        velatrix_throw_exception_str(env, "Firmware page is too long.");
        return;
    }
    velatrix_firmware_page record{};
    read_object(env, kFirmwarePage, page, &record);
    succeeded(env, velatrix_set_firmware(device, record));
}

VQ_DEVICE_NATIVE(void, writeDisplayChunk, jobject chunk) {
    velatrix_device* device = enter(env, self, chunk, "Display chunk can't be null.");
    if (device == nullptr) return;
    auto raster = static_cast<jbyteArray>(env->GetObjectField(chunk, velatrix_display_chunk_raster_field));
    const jsize length = raster != nullptr ? env->GetArrayLength(raster) : 0;
    if (raster != nullptr) env->DeleteLocalRef(raster);
    if (length > VELATRIX_DISPLAY_CHUNK_DATA_SIZE) {
        velatrix_throw_exception_str(env, "Graphic is too big.");
        return;
    }
    auto record = std::make_unique<velatrix_display_chunk>();
    read_object(env, kDisplayChunk, chunk, record.get());
    record->report_id = 103;
    succeeded(env, velatrix_set_display_chunk(device, *record));
}

VQ_DEVICE_NATIVE(void, drawText, jstring text, jint x, jint y, jint alignment, jboolean inverse) {
    velatrix_device* device = enter(env, self, text, "Text can't be null.");
    if (device == nullptr) return;
    Utf8Chars chars(env, text);
    succeeded(env, velatrix_device_draw_text(device, chars.get(), static_cast<uint32_t>(x), static_cast<uint32_t>(y),
                                             alignment, inverse ? 1 : 0));
}

namespace {

// Text measuring skips the cache fill; the ptr field it reads must still be
// known, so it is looked up on the spot when the cache is empty.
jint measure(JNIEnv* env, jobject self, jstring text, int32_t (*measure_text)(velatrix_device*, const char*)) {
    if (text == nullptr) {
        velatrix_throw_exception_str(env, "Text can't be null.");
        return -1;
    }
    jfieldID ptr_field = velatrix_device_ptr_field;
    if (ptr_field == nullptr) {
        jclass cls = env->GetObjectClass(self);
        ptr_field = env->GetFieldID(cls, "ptr", "J");
        env->DeleteLocalRef(cls);
        if (ptr_field == nullptr) return -1;
    }
    velatrix_device* device = velatrix_device_ptr_from_jlong(env->GetLongField(self, ptr_field));
    if (device == nullptr || device->open == 0) {
        velatrix_throw_exception_str(env, kNotOpen);
        return -1;
    }
    Utf8Chars chars(env, text);
    return measure_text(device, chars.get());
}

}  // namespace

VQ_DEVICE_NATIVE(jint, getTextWidth, jstring text) { return measure(env, self, text, velatrix_measure_text_width); }
VQ_DEVICE_NATIVE(jint, getTextHeight, jstring text) { return measure(env, self, text, velatrix_measure_text_height); }

VQ_DEVICE_NATIVE(void, simulatePenInput, jint identifier, jint x, jint y, jboolean pen_down) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return;
    velatrix_pen_simulation pen{};
    pen.identifier = static_cast<uint8_t>(identifier);
    pen.first_coordinate = static_cast<uint16_t>(x);
    pen.second_coordinate = static_cast<uint16_t>(y);
    pen.pen_down = pen_down ? 1 : 0;
    if (velatrix_simulate_pen_input(device, &pen) != 1) velatrix_throw_exception(env);
}

VQ_DEVICE_NATIVE(jbyteArray, getDisplayBuffer, jint x, jint y, jint count) {
    velatrix_global_init(env);
    // 256 is accepted, whatever the message says.
    if (count < 1 || count > VELATRIX_PIXEL_ENTRIES) {
        velatrix_throw_exception_str(env, "Pixel count must be greater than zero and less than 256.");
        return nullptr;
    }
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return nullptr;
    auto record = std::make_unique<velatrix_pixel_read>();
    record->x = static_cast<uint16_t>(x);
    record->y = static_cast<uint16_t>(y);
    record->count = static_cast<uint16_t>(count);
    if (velatrix_get_pixels(device, record.get()) == 0) {
        velatrix_throw_exception(env);
        return nullptr;
    }
    return new_byte_array(env, record->entries, 4 * static_cast<size_t>(count));
}

namespace {

using DriverTransfer = int (*velatrix_device_driver::*)(velatrix_device*, uint8_t*, uint32_t);

// Hands the caller's whole report to the driver. A buffer of one byte is
// refused with an exception but, as callers have come to rely on, still sent.
void raw_transfer(JNIEnv* env, jobject self, jbyteArray buffer, DriverTransfer transfer, bool copy_back) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return;
    if (buffer == nullptr) {
        velatrix_throw_exception_str(env, "Buffer can't be null.");
        return;
    }
    const jsize length = env->GetArrayLength(buffer);
    std::vector<uint8_t> block(static_cast<size_t>(length) + 1);  // never empty, even for an empty array
    env->GetByteArrayRegion(buffer, 0, length, reinterpret_cast<jbyte*>(block.data()));
    const bool refused = length < 2;
    if (refused) velatrix_throw_exception_str(env, "Buffer must have length greater than 1");
    const auto function = device->driver != nullptr ? device->driver->*transfer : nullptr;
    const int result = function != nullptr ? function(device, block.data(), static_cast<uint32_t>(length)) : 0;
    if (refused) return;
    if (result == 1) {
        if (copy_back) env->SetByteArrayRegion(buffer, 0, length, reinterpret_cast<const jbyte*>(block.data()));
    } else {
        velatrix_throw_exception(env);
    }
}

}  // namespace

VQ_DEVICE_NATIVE(void, setFeatureReport, jbyteArray buffer) {
    raw_transfer(env, self, buffer, &velatrix_device_driver::set_feature_report, false);
}
VQ_DEVICE_NATIVE(void, getFeatureReport, jbyteArray buffer) {
    raw_transfer(env, self, buffer, &velatrix_device_driver::get_feature_report, true);
}
VQ_DEVICE_NATIVE(void, setOutputReport, jbyteArray buffer) {
    raw_transfer(env, self, buffer, &velatrix_device_driver::set_output_report, false);
}
