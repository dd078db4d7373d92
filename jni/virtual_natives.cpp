// Natives of com.velatrix.quillmark.virtual.VirtualPad: each one calls one
// velatrix_virtual_* function with the pad's id and turns its failure result
// into a VelatrixException carrying the library's last error. The Java side
// checks ranges, so values arrive here already fitting their C types.
#include <jni.h>

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <vector>

#include "binding.h"
#include "record_codec.h"
#include "velatrix-virtual.h"

namespace {

using Pad = velatrix_virtual_pad;

// 1 is success for every velatrix_virtual_* function that reports with an int.
bool ok(JNIEnv* env, int result) {
    if (result != 0) return true;
    velatrix_throw_exception(env);
    return false;
}

// Functions whose failure value is also an ordinary answer (-1 for "none",
// 0 for "no reports yet"): the pad being gone is what tells a failure apart.
bool plugged_or_throw(JNIEnv* env, Pad pad) {
    if (velatrix_virtual_is_plugged(pad) != 0) return true;
    velatrix_throw_exception(env);
    return false;
}

// Texts cross as Latin-1 in both directions: serial numbers may hold bytes of
// 255 and card tracks are bytes, neither of which is valid (modified) UTF-8.
jstring to_java(JNIEnv* env, const char* text) {
    if (text == nullptr) return nullptr;
    std::vector<jchar> chars;
    for (const char* c = text; *c != '\0'; ++c) chars.push_back(static_cast<unsigned char>(*c));
    return env->NewString(chars.data(), static_cast<jsize>(chars.size()));
}

std::string from_java(JNIEnv* env, jstring text) {
    const jsize length = env->GetStringLength(text);
    std::vector<jchar> chars(static_cast<size_t>(length));
    env->GetStringRegion(text, 0, length, chars.data());
    std::string out;
    out.reserve(chars.size());
    for (jchar c : chars) out.push_back(static_cast<char>(c <= 0xFF ? c : '?'));
    return out;
}

jbyteArray to_java(JNIEnv* env, std::span<const uint8_t> bytes) {
    return velatrix::jni::new_byte_array(env, bytes.data(), bytes.size());
}

std::vector<uint8_t> bytes_of(JNIEnv* env, jbyteArray array) {
    std::vector<uint8_t> bytes(static_cast<size_t>(env->GetArrayLength(array)));
    env->GetByteArrayRegion(array, 0, static_cast<jsize>(bytes.size()), reinterpret_cast<jbyte*>(bytes.data()));
    return bytes;
}

template <size_t N>
std::array<uint16_t, N> values_of(JNIEnv* env, jintArray array) {
    std::array<jint, N> ints{};
    env->GetIntArrayRegion(array, 0, static_cast<jsize>(N), ints.data());
    std::array<uint16_t, N> values{};
    for (size_t i = 0; i < N; ++i) values[i] = static_cast<uint16_t>(ints[i]);
    return values;
}

// A variable-length answer that the C API sizes by a first call without a
// buffer: -1 throws, otherwise the bytes of a second call come back.
template <typename Fetch>
jbyteArray sized_bytes(JNIEnv* env, Fetch fetch) {
    const int32_t size = fetch(nullptr, 0);
    if (size < 0) {
        velatrix_throw_exception(env);
        return nullptr;
    }
    std::vector<uint8_t> bytes(static_cast<size_t>(size));
    fetch(bytes.data(), static_cast<uint32_t>(bytes.size()));
    return to_java(env, bytes);
}

// A text the C API copies into a caller's buffer; 0 throws.
template <typename Fetch>
jstring fetched_text(JNIEnv* env, Fetch fetch) {
    std::array<char, 1024> text{};
    if (!ok(env, fetch(text.data(), static_cast<uint32_t>(text.size())))) return nullptr;
    return to_java(env, text.data());
}

}  // namespace

#define VP_NATIVE(type, name) VELATRIX_JNI_EXPORT type JNICALL Java_com_velatrix_quillmark_virtual_VirtualPad_##name

// ---- Models and the bus --------------------------------------------------

VP_NATIVE(void, simulate)(JNIEnv*, jclass, jint count) { velatrix_virtual_simulate(count); }

VP_NATIVE(jobjectArray, models)(JNIEnv* env, jclass) {
    const uint32_t count = velatrix_virtual_model_count();
    jclass string_class = env->FindClass("java/lang/String");
    if (string_class == nullptr) return nullptr;
    jobjectArray names = env->NewObjectArray(static_cast<jsize>(count), string_class, nullptr);
    env->DeleteLocalRef(string_class);
    for (uint32_t i = 0; names != nullptr && i < count; ++i) {
        jstring name = to_java(env, velatrix_virtual_model_name(i));
        if (name == nullptr) return nullptr;
        env->SetObjectArrayElement(names, static_cast<jsize>(i), name);
        env->DeleteLocalRef(name);
    }
    return names;
}

VP_NATIVE(jint, nativePlug)(JNIEnv* env, jclass, jstring model) {
    const Pad pad = velatrix_virtual_plug(from_java(env, model).c_str());
    return ok(env, pad) ? pad : 0;
}

VP_NATIVE(void, unplugAll)(JNIEnv*, jclass) { velatrix_virtual_unplug_all(); }

VP_NATIVE(jintArray, nativePluggedIds)(JNIEnv* env, jclass) {
    std::vector<jint> ids;
    for (uint32_t i = 0;; ++i) {
        const Pad pad = velatrix_virtual_pad_at(i);
        if (pad == 0) break;
        ids.push_back(pad);
    }
    jintArray array = env->NewIntArray(static_cast<jsize>(ids.size()));
    if (array != nullptr) env->SetIntArrayRegion(array, 0, static_cast<jsize>(ids.size()), ids.data());
    return array;
}

VP_NATIVE(jboolean, nativeIsPlugged)(JNIEnv*, jclass, jint pad) {
    return velatrix_virtual_is_plugged(pad) != 0 ? JNI_TRUE : JNI_FALSE;
}

VP_NATIVE(void, nativeUnplug)(JNIEnv* env, jclass, jint pad) { ok(env, velatrix_virtual_unplug(pad)); }

VP_NATIVE(jstring, nativeModel)(JNIEnv* env, jclass, jint pad) {
    const char* model = velatrix_virtual_pad_model(pad);
    return ok(env, model != nullptr) ? to_java(env, model) : nullptr;
}

VP_NATIVE(jint, nativeProductId)(JNIEnv* env, jclass, jint pad) {
    const uint16_t product = velatrix_virtual_product_id(pad);
    return product != 0 || plugged_or_throw(env, pad) ? product : 0;
}

VP_NATIVE(jint, nativeLocationId)(JNIEnv* env, jclass, jint pad) {
    const uint32_t location = velatrix_virtual_location_id(pad);
    return location != 0 || plugged_or_throw(env, pad) ? static_cast<jint>(location) : 0;
}

// ---- Input -----------------------------------------------------------------

VP_NATIVE(void, nativePen)(JNIEnv* env, jclass, jint pad, jint x, jint y, jboolean tip, jboolean in_range) {
    ok(env, velatrix_virtual_pen(pad, static_cast<uint16_t>(x), static_cast<uint16_t>(y), tip ? 1 : 0,
                                 in_range ? 1 : 0));
}

VP_NATIVE(void, nativePlayStroke)(JNIEnv* env, jclass, jint pad, jintArray xy) {
    const jsize length = env->GetArrayLength(xy);
    std::vector<jint> coordinates(static_cast<size_t>(length));
    env->GetIntArrayRegion(xy, 0, length, coordinates.data());
    std::vector<velatrix_virtual_point> points;
    for (size_t i = 0; i + 1 < coordinates.size(); i += 2) {
        points.push_back({static_cast<uint16_t>(coordinates[i]), static_cast<uint16_t>(coordinates[i + 1])});
    }
    ok(env, velatrix_virtual_play_stroke(pad, points.data(), static_cast<uint32_t>(points.size())));
}

VP_NATIVE(void, nativeSwipeCard)(JNIEnv* env, jclass, jint pad, jstring track1, jstring track2, jstring track3) {
    auto track = [env](jstring text) { return text != nullptr ? from_java(env, text) : std::string(); };
    ok(env, velatrix_virtual_swipe_card(pad, track(track1).c_str(), track(track2).c_str(), track(track3).c_str()));
}

VP_NATIVE(void, nativeSendAdc)(JNIEnv* env, jclass, jint pad, jint kind, jint flags_or_channel, jintArray values) {
    const auto four = values_of<4>(env, values);
    ok(env, velatrix_virtual_send_adc(pad, static_cast<uint8_t>(kind), static_cast<uint8_t>(flags_or_channel),
                                      four.data()));
}

VP_NATIVE(void, nativeSendDebug)(JNIEnv* env, jclass, jint pad, jint flags, jintArray values, jint last) {
    const auto nine = values_of<9>(env, values);
    ok(env, velatrix_virtual_send_debug(pad, static_cast<uint8_t>(flags), nine.data(), static_cast<uint8_t>(last)));
}

VP_NATIVE(void, nativePushInput)(JNIEnv* env, jclass, jint pad, jbyteArray report) {
    const std::vector<uint8_t> bytes = bytes_of(env, report);
    ok(env, velatrix_virtual_push_input(pad, bytes.data(), static_cast<uint32_t>(bytes.size())));
}

VP_NATIVE(jint, nativeInputCount)(JNIEnv* env, jclass, jint pad) {
    const uint32_t count = velatrix_virtual_input_count(pad);
    return count != 0 || plugged_or_throw(env, pad) ? static_cast<jint>(count) : 0;
}

VP_NATIVE(jbyteArray, nativeInputReport)(JNIEnv* env, jclass, jint pad, jint index) {
    return sized_bytes(env, [pad, index](uint8_t* buffer, uint32_t size) {
        return velatrix_virtual_input_report(pad, static_cast<uint32_t>(index), buffer, size);
    });
}

// ---- Display memory ------------------------------------------------------------

VP_NATIVE(jintArray, nativeDisplaySize)(JNIEnv* env, jclass, jint pad) {
    std::array<jint, 2> size{};
    if (!ok(env, velatrix_virtual_display_size(pad, &size[0], &size[1]))) return nullptr;
    jintArray array = env->NewIntArray(2);
    if (array != nullptr) env->SetIntArrayRegion(array, 0, 2, size.data());
    return array;
}

VP_NATIVE(jbyteArray, nativeFrameRgb)(JNIEnv* env, jclass, jint pad) {
    int32_t width = 0, height = 0;
    if (!ok(env, velatrix_virtual_display_size(pad, &width, &height))) return nullptr;
    std::vector<uint8_t> rgb(static_cast<size_t>(width) * static_cast<size_t>(height) * 3);
    if (!ok(env, velatrix_virtual_read_frame_rgb(pad, rgb.data(), static_cast<uint32_t>(rgb.size())))) return nullptr;
    return to_java(env, rgb);
}

VP_NATIVE(jint, nativeGetPixel)(JNIEnv* env, jclass, jint pad, jint x, jint y) {
    const uint32_t rgba = velatrix_virtual_get_pixel(pad, x, y);
    return rgba != 0xFFFFFFFFu || plugged_or_throw(env, pad) ? static_cast<jint>(rgba) : 0;
}

// ---- Faults and timing ---------------------------------------------------------

VP_NATIVE(void, nativeFailTransfer)(JNIEnv* env, jclass, jint pad, jint nth) {
    ok(env, velatrix_virtual_fail_transfer(pad, static_cast<uint32_t>(nth)));
}

VP_NATIVE(void, nativeUnplugAtTransfer)(JNIEnv* env, jclass, jint pad, jint nth) {
    ok(env, velatrix_virtual_unplug_at_transfer(pad, static_cast<uint32_t>(nth)));
}

VP_NATIVE(void, nativeStayBusy)(JNIEnv* env, jclass, jint pad, jint bits) {
    ok(env, velatrix_virtual_stay_busy(pad, static_cast<uint8_t>(bits)));
}

VP_NATIVE(void, nativeSetBusyPolls)(JNIEnv* env, jclass, jint pad, jint polls) {
    ok(env, velatrix_virtual_set_busy_polls(pad, static_cast<uint32_t>(polls)));
}

VP_NATIVE(void, nativeSetInitializing)(JNIEnv* env, jclass, jint pad, jint polls) {
    ok(env, velatrix_virtual_set_initializing(pad, static_cast<uint32_t>(polls)));
}

VP_NATIVE(void, nativeShortAnswer)(JNIEnv* env, jclass, jint pad, jint report_id, jint length) {
    ok(env, velatrix_virtual_short_answer(pad, static_cast<uint8_t>(report_id), static_cast<uint32_t>(length)));
}

VP_NATIVE(void, nativeMalformedAnswer)(JNIEnv* env, jclass, jint pad, jint report_id) {
    ok(env, velatrix_virtual_malformed_answer(pad, static_cast<uint8_t>(report_id)));
}

VP_NATIVE(void, nativeRefuseOpen)(JNIEnv* env, jclass, jint pad) { ok(env, velatrix_virtual_refuse_open(pad)); }

VP_NATIVE(void, nativeClearFaults)(JNIEnv* env, jclass, jint pad) { ok(env, velatrix_virtual_clear_faults(pad)); }

VP_NATIVE(jint, nativeTransferCount)(JNIEnv* env, jclass, jint pad) {
    const uint32_t count = velatrix_virtual_transfer_count(pad);
    return count != 0 || plugged_or_throw(env, pad) ? static_cast<jint>(count) : 0;
}

// ---- State --------------------------------------------------------------------

VP_NATIVE(jstring, nativeSerial)(JNIEnv* env, jclass, jint pad) {
    return fetched_text(env, [pad](char* text, uint32_t size) { return velatrix_virtual_get_serial(pad, text, size); });
}

VP_NATIVE(void, nativeSetSerial)(JNIEnv* env, jclass, jint pad, jstring serial) {
    if (serial == nullptr) {
        ok(env, velatrix_virtual_set_serial(pad, nullptr));
        return;
    }
    ok(env, velatrix_virtual_set_serial(pad, from_java(env, serial).c_str()));
}

VP_NATIVE(jint, nativeRunMode)(JNIEnv* env, jclass, jint pad) {
    const int32_t mode = velatrix_virtual_get_run_mode(pad);
    return mode >= 0 || plugged_or_throw(env, pad) ? mode : -1;
}

VP_NATIVE(jstring, nativeStatusText)(JNIEnv* env, jclass, jint pad) {
    return fetched_text(env,
                        [pad](char* text, uint32_t size) { return velatrix_virtual_get_status_text(pad, text, size); });
}

VP_NATIVE(jbyteArray, nativeParameter)(JNIEnv* env, jclass, jint pad, jint report_id) {
    return sized_bytes(env, [pad, report_id](uint8_t* payload, uint32_t size) {
        return velatrix_virtual_get_parameter(pad, static_cast<uint8_t>(report_id), payload, size);
    });
}

VP_NATIVE(jint, nativeActiveScreen)(JNIEnv* env, jclass, jint pad) {
    const int32_t screen = velatrix_virtual_get_active_screen(pad);
    return screen >= 0 || plugged_or_throw(env, pad) ? screen : -1;
}

// A missing resource is an answer (null), not a failure.
VP_NATIVE(jbyteArray, nativeResource)(JNIEnv* env, jclass, jint pad, jint number) {
    const auto number8 = static_cast<uint8_t>(number);
    if (velatrix_virtual_get_resource(pad, number8, nullptr, nullptr, 0) < 0) {
        plugged_or_throw(env, pad);
        return nullptr;
    }
    return sized_bytes(env, [pad, number8](uint8_t* data, uint32_t capacity) {
        return velatrix_virtual_get_resource(pad, number8, nullptr, data, capacity);
    });
}

VP_NATIVE(jint, nativeDownloadStatus)(JNIEnv* env, jclass, jint pad) {
    const int32_t status = velatrix_virtual_get_download_status(pad);
    return status >= 0 || plugged_or_throw(env, pad) ? status : -1;
}

VP_NATIVE(jbyteArray, nativeFirmwarePage)(JNIEnv* env, jclass, jint pad, jint address) {
    std::array<uint8_t, VELATRIX_VIRTUAL_FIRMWARE_PAGE_SIZE> page{};
    uint8_t checksum = 0;
    if (!ok(env, velatrix_virtual_get_firmware_page(pad, static_cast<uint32_t>(address), page.data(), &checksum))) {
        return nullptr;
    }
    return to_java(env, page);
}
