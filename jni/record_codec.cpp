// Moves values between C records and Java objects as the class descriptions say.
#include "record_codec.h"

#include <algorithm>
#include <cstring>
#include <string>
#include <vector>

namespace velatrix::jni {

int64_t load_number(const void* record, const Slot& slot, uint16_t element) {
    const auto* at = static_cast<const uint8_t*>(record) + slot.offset + element * slot.width;
    switch (slot.width) {
        case 1: {
            uint8_t v;
            std::memcpy(&v, at, 1);
            return slot.is_signed ? static_cast<int8_t>(v) : v;
        }
        case 2: {
            uint16_t v;
            std::memcpy(&v, at, 2);
            return slot.is_signed ? static_cast<int16_t>(v) : v;
        }
        case 4: {
            uint32_t v;
            std::memcpy(&v, at, 4);
            return slot.is_signed ? static_cast<int32_t>(v) : v;
        }
        default: {
            int64_t v;
            std::memcpy(&v, at, 8);
            return v;
        }
    }
}

void store_number(void* record, const Slot& slot, int64_t value, uint16_t element) {
    auto* at = static_cast<uint8_t*>(record) + slot.offset + element * slot.width;
    const uint64_t bits = static_cast<uint64_t>(value);
    switch (slot.width) {
        case 1: {
            const auto v = static_cast<uint8_t>(bits);
            std::memcpy(at, &v, 1);
            break;
        }
        case 2: {
            const auto v = static_cast<uint16_t>(bits);
            std::memcpy(at, &v, 2);
            break;
        }
        case 4: {
            const auto v = static_cast<uint32_t>(bits);
            std::memcpy(at, &v, 4);
            break;
        }
        default:
            std::memcpy(at, &bits, 8);
            break;
    }
}

namespace {

// Decodes one UTF-8 sequence at text[i]; returns its code point (U+FFFD for
// a malformed one) and advances i past what it consumed.
char32_t next_code_point(const uint8_t* text, size_t length, size_t& i) {
    const uint8_t lead = text[i++];
    if (lead < 0x80) return lead;
    int extra;
    char32_t cp;
    if ((lead & 0xE0) == 0xC0) {
        extra = 1;
        cp = lead & 0x1F;
    } else if ((lead & 0xF0) == 0xE0) {
        extra = 2;
        cp = lead & 0x0F;
    } else if ((lead & 0xF8) == 0xF0) {
        extra = 3;
        cp = lead & 0x07;
    } else {
        return 0xFFFD;
    }
    for (int k = 0; k < extra; ++k) {
        if (i >= length || (text[i] & 0xC0) != 0x80) return 0xFFFD;
        cp = (cp << 6) | (text[i++] & 0x3F);
    }
    static constexpr char32_t kSmallest[] = {0, 0x80, 0x800, 0x10000};
    if (cp < kSmallest[extra] || cp > 0x10FFFF || (cp >= 0xD800 && cp <= 0xDFFF)) return 0xFFFD;
    return cp;
}

}  // namespace

jstring new_string(JNIEnv* env, const char* text, size_t max) {
    if (text == nullptr) return nullptr;
    const size_t length = strnlen(text, max);
    const auto* bytes = reinterpret_cast<const uint8_t*>(text);
    std::u16string utf16;
    utf16.reserve(length);
    for (size_t i = 0; i < length;) {
        const char32_t cp = next_code_point(bytes, length, i);
        if (cp >= 0x10000) {
            utf16.push_back(static_cast<char16_t>(0xD800 + ((cp - 0x10000) >> 10)));
            utf16.push_back(static_cast<char16_t>(0xDC00 + ((cp - 0x10000) & 0x3FF)));
        } else {
            utf16.push_back(static_cast<char16_t>(cp));
        }
    }
    return env->NewString(reinterpret_cast<const jchar*>(utf16.data()), static_cast<jsize>(utf16.size()));
}

jbyteArray new_byte_array(JNIEnv* env, const void* bytes, size_t length) {
    const auto size = static_cast<jsize>(length);
    jbyteArray array = env->NewByteArray(size);
    if (array != nullptr && size > 0) env->SetByteArrayRegion(array, 0, size, static_cast<const jbyte*>(bytes));
    return array;
}

jvalue slot_argument(JNIEnv* env, const void* record, const Slot& slot) {
    jvalue value{};
    switch (slot.kind) {
        case SlotKind::Number: {
            const int64_t n = load_number(record, slot);
            switch (slot.java_type) {
                case 'Z': value.z = n != 0 ? JNI_TRUE : JNI_FALSE; break;
                case 'B': value.b = static_cast<jbyte>(n); break;
                case 'S': value.s = static_cast<jshort>(n); break;
                case 'J': value.j = n; break;
                default: value.i = static_cast<jint>(n); break;
            }
            break;
        }
        case SlotKind::Text:
            value.l = new_string(env, static_cast<const char*>(record) + slot.offset, slot.width);
            break;
        case SlotKind::IntArray: {
            std::vector<jint> items(slot.count);
            for (uint16_t k = 0; k < slot.count; ++k) items[k] = static_cast<jint>(load_number(record, slot, k));
            jintArray array = env->NewIntArray(slot.count);
            if (array != nullptr) env->SetIntArrayRegion(array, 0, slot.count, items.data());
            value.l = array;
            break;
        }
        case SlotKind::Zero:
            break;
        case SlotKind::ByteArray:
            value.l = new_byte_array(env, static_cast<const uint8_t*>(record) + slot.offset, slot.count);
            break;
    }
    return value;
}

jobject new_object(JNIEnv* env, const ValueClass& value_class, const jvalue* arguments) {
    if (*value_class.cls == nullptr || *value_class.constructor == nullptr) {
        if (!env->ExceptionCheck()) {
            jclass error = env->FindClass("java/lang/NoSuchMethodError");
            if (error != nullptr) env->ThrowNew(error, "a Velatrix Quillmark value class is missing from the Java side");
        }
        return nullptr;
    }
    return env->NewObjectA(*value_class.cls, *value_class.constructor, arguments);
}

jobject new_object(JNIEnv* env, const ValueClass& value_class, const void* record) {
    std::vector<jvalue> arguments;
    arguments.reserve(value_class.slots.size());
    for (const Slot& slot : value_class.slots) arguments.push_back(slot_argument(env, record, slot));
    jobject object = new_object(env, value_class, arguments.data());
    // Arrays and strings made for the constructor are now held by the object.
    for (size_t k = 0; k < arguments.size(); ++k) {
        const SlotKind kind = value_class.slots[k].kind;
        if (kind != SlotKind::Number && kind != SlotKind::Zero && arguments[k].l != nullptr) env->DeleteLocalRef(arguments[k].l);
    }
    return object;
}

namespace {

int64_t read_number_field(JNIEnv* env, jobject object, jfieldID field, char java_type) {
    switch (java_type) {
        case 'Z': return env->GetBooleanField(object, field) ? 1 : 0;
        case 'B': return env->GetByteField(object, field);
        case 'S': return env->GetShortField(object, field);
        case 'J': return env->GetLongField(object, field);
        default: return env->GetIntField(object, field);
    }
}

}  // namespace

void read_object(JNIEnv* env, const ValueClass& value_class, jobject object, void* record) {
    auto* bytes = static_cast<uint8_t*>(record);
    for (const Slot& slot : value_class.slots) {
        if (slot.kind == SlotKind::Zero || slot.field == nullptr || *slot.field == nullptr) continue;
        switch (slot.kind) {
            case SlotKind::Number:
                store_number(record, slot, read_number_field(env, object, *slot.field, slot.java_type));
                break;
            case SlotKind::Text: {
                auto text = static_cast<jstring>(env->GetObjectField(object, *slot.field));
                if (text == nullptr) break;
                const char* chars = env->GetStringUTFChars(text, nullptr);
                if (chars != nullptr) {
                    // Leaves room for the terminator the record's zeroed bytes give.
                    const size_t n = std::min<size_t>(std::strlen(chars), slot.width - 1u);
                    std::memcpy(bytes + slot.offset, chars, n);
                    env->ReleaseStringUTFChars(text, chars);
                }
                env->DeleteLocalRef(text);
                break;
            }
            case SlotKind::IntArray: {
                auto array = static_cast<jintArray>(env->GetObjectField(object, *slot.field));
                if (array == nullptr) break;
                const jsize n = std::min<jsize>(env->GetArrayLength(array), slot.count);
                std::vector<jint> items(static_cast<size_t>(n));
                env->GetIntArrayRegion(array, 0, n, items.data());
                for (jsize k = 0; k < n; ++k) store_number(record, slot, items[k], static_cast<uint16_t>(k));
                env->DeleteLocalRef(array);
                break;
            }
            case SlotKind::Zero:
                break;
            case SlotKind::ByteArray: {
                auto array = static_cast<jbyteArray>(env->GetObjectField(object, *slot.field));
                if (array == nullptr) break;
                const jsize n = std::min<jsize>(env->GetArrayLength(array), slot.count);
                env->GetByteArrayRegion(array, 0, n, reinterpret_cast<jbyte*>(bytes + slot.offset));
                env->DeleteLocalRef(array);
                break;
            }
        }
    }
}

}  // namespace velatrix::jni
