// The common shape of the Device natives: fill the cache, check the object
// argument, check that the pad is open, convert, call, and turn a failure
// into VelatrixException. Each native is then a line or two.
#ifndef VELATRIX_JNI_NATIVE_CALL_H
#define VELATRIX_JNI_NATIVE_CALL_H

#include <cstring>

#include "record_codec.h"

#define VQ_DEVICE_NATIVE(ret, name, ...) \
    VELATRIX_JNI_EXPORT ret JNICALL Java_com_velatrix_quillmark_Device_##name(JNIEnv* env, jobject self, ##__VA_ARGS__)

namespace velatrix::jni {

inline constexpr const char* kNotOpen = "Device doesn't appear to be open.";

// The C record behind a Device object's ptr field (null when it is 0).
velatrix_device* device_of(JNIEnv* env, jobject self);

// Cache fill, then (when null_message is given) the null check of the
// argument, then the open check. Returns the open device, or null after
// throwing.
velatrix_device* enter(JNIEnv* env, jobject self, jobject argument = nullptr, const char* null_message = nullptr);

// Throws the last error when result is 0; returns whether it was non-zero.
inline bool succeeded(JNIEnv* env, int result) {
    if (result == 0) velatrix_throw_exception(env);
    return result != 0;
}

// A getter: read the record with `read(device, &record)`; a record whose
// first byte (its report id) is 0 failed and throws the last error.
template <class Record, class Read>
jobject get_report(JNIEnv* env, jobject self, const ValueClass& value_class, Read read) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return nullptr;
    Record record{};
    read(device, &record);
    if (record.report_id == 0) {
        velatrix_throw_exception(env);
        return nullptr;
    }
    return new_object(env, value_class, &record);
}

// A setter: fill a zeroed record from the object, give it its report id,
// adjust it with `prepare(object, record)`, send it with
// `write(device, record)` and throw the last error when that returns 0.
template <class Record, class Write, class Prepare>
void set_report(JNIEnv* env, jobject self, jobject object, const char* null_message, const ValueClass& value_class,
                uint8_t report_id, Write write, Prepare prepare) {
    velatrix_device* device = enter(env, self, object, null_message);
    if (device == nullptr) return;
    Record record{};
    read_object(env, value_class, object, &record);
    record.report_id = report_id;
    prepare(object, record);
    succeeded(env, write(device, record));
}

template <class Record, class Write>
void set_report(JNIEnv* env, jobject self, jobject object, const char* null_message, const ValueClass& value_class,
                uint8_t report_id, Write write) {
    set_report<Record>(env, self, object, null_message, value_class, report_id, write, [](jobject, Record&) {});
}

// An action on the open pad that returns 1 or 0.
template <class Call>
void act(JNIEnv* env, jobject self, Call call) {
    if (velatrix_device* device = enter(env, self)) succeeded(env, call(device));
}

// An index getter: -1 is the failure.
template <class Call>
jint get_index(JNIEnv* env, jobject self, Call call) {
    velatrix_device* device = enter(env, self);
    if (device == nullptr) return 0;
    const int index = call(device);
    if (index < 0) velatrix_throw_exception(env);
    return index;
}

// The UTF-8 characters of a Java string for the length of a native call.
class Utf8Chars {
public:
    Utf8Chars(JNIEnv* env, jstring text) : env_(env), text_(text) {
        if (text != nullptr) chars_ = env->GetStringUTFChars(text, nullptr);
    }
    ~Utf8Chars() {
        if (chars_ != nullptr) env_->ReleaseStringUTFChars(text_, chars_);
    }
    Utf8Chars(const Utf8Chars&) = delete;
    Utf8Chars& operator=(const Utf8Chars&) = delete;
    const char* get() const { return chars_; }
    uint32_t length() const { return chars_ != nullptr ? static_cast<uint32_t>(std::strlen(chars_)) : 0; }

private:
    JNIEnv* env_;
    jstring text_;
    const char* chars_ = nullptr;
};

}  // namespace velatrix::jni

#endif
