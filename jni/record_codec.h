// One description per Java value class drives both directions: a C record
// becomes a Java object through the class's constructor, and a Java object
// becomes a C record through its fields. A description is a list of slots,
// one per constructor argument in record order, each naming where the value
// sits in the C record, how wide it is there, its Java type and the cached
// field that holds it on the Java side.
#ifndef VELATRIX_JNI_RECORD_CODEC_H
#define VELATRIX_JNI_RECORD_CODEC_H

#include <cstddef>
#include <cstdint>
#include <span>
#include <type_traits>

#include "binding_cache.h"

namespace velatrix::jni {

enum class SlotKind : uint8_t {
    Number,     // an integer of `width` bytes; Java Z, B, S, I or J by `java_type`
    Text,       // a character array of `width` bytes, up to its first NUL; Java String
    IntArray,   // `count` integers of `width` bytes each; Java int[]
    ByteArray,  // `count` bytes; Java byte[]
    Zero,       // nothing in this record; the constructor gets 0 or false
};

struct Slot {
    uint16_t offset;
    uint16_t width;
    uint16_t count;
    bool is_signed;
    SlotKind kind;
    char java_type;     // 'Z', 'B', 'S', 'I', 'J' for numbers
    jfieldID* field;    // null: only the constructor takes it
};

struct ValueClass {
    jclass* cls;
    jmethodID* constructor;
    std::span<const Slot> slots;
};

template <class M>
constexpr bool signed_member = std::is_signed_v<std::remove_all_extents_t<M>>;

}  // namespace velatrix::jni

// A number member of Record; for an array member, its element `index`.
#define VQ_NUMBER(Record, member, java_type, field)                                                  \
    ::velatrix::jni::Slot {                                                                           \
        static_cast<uint16_t>(offsetof(Record, member)), static_cast<uint16_t>(sizeof(Record::member)), 1, \
            ::velatrix::jni::signed_member<decltype(Record::member)>, ::velatrix::jni::SlotKind::Number, \
            java_type, field                                                                          \
    }
#define VQ_ELEMENT(Record, member, index, java_type, field)                                          \
    ::velatrix::jni::Slot {                                                                           \
        static_cast<uint16_t>(offsetof(Record, member) + (index) * sizeof(Record::member[0])),       \
            static_cast<uint16_t>(sizeof(Record::member[0])), 1,                                      \
            ::velatrix::jni::signed_member<decltype(Record::member)>, ::velatrix::jni::SlotKind::Number, \
            java_type, field                                                                          \
    }
#define VQ_TEXT(Record, member, field)                                                               \
    ::velatrix::jni::Slot {                                                                           \
        static_cast<uint16_t>(offsetof(Record, member)), static_cast<uint16_t>(sizeof(Record::member)), 1, false, \
            ::velatrix::jni::SlotKind::Text, 0, field                                                 \
    }
// A constructor argument this record has no value for.
#define VQ_ZERO(java_type) \
    ::velatrix::jni::Slot { 0, 0, 0, false, ::velatrix::jni::SlotKind::Zero, java_type, nullptr }
// One byte at `byte_offset` (for example a colour component of a 32-bit value).
#define VQ_BYTE_AT(byte_offset, java_type) \
    ::velatrix::jni::Slot { static_cast<uint16_t>(byte_offset), 1, 1, false, ::velatrix::jni::SlotKind::Number, java_type, nullptr }
// `count` elements of an array member, starting at element `first`.
#define VQ_INT_ARRAY(Record, member, first, count, field)                                            \
    ::velatrix::jni::Slot {                                                                           \
        static_cast<uint16_t>(offsetof(Record, member) + (first) * sizeof(Record::member[0])),       \
            static_cast<uint16_t>(sizeof(Record::member[0])), static_cast<uint16_t>(count),           \
            ::velatrix::jni::signed_member<decltype(Record::member)>, ::velatrix::jni::SlotKind::IntArray, 0, field \
    }
#define VQ_BYTE_ARRAY(Record, member, field)                                                         \
    ::velatrix::jni::Slot {                                                                           \
        static_cast<uint16_t>(offsetof(Record, member)), 1, static_cast<uint16_t>(sizeof(Record::member)), false, \
            ::velatrix::jni::SlotKind::ByteArray, 0, field                                            \
    }

namespace velatrix::jni {

// Reads the integer a slot describes out of a record, widened with its sign.
int64_t load_number(const void* record, const Slot& slot, uint16_t element = 0);
// Writes the low `width` bytes of value where the slot says.
void store_number(void* record, const Slot& slot, int64_t value, uint16_t element = 0);

// A Java string from bytes that should be UTF-8, read up to the first NUL or
// `max` bytes. Bytes that are not UTF-8 become U+FFFD, so whatever a pad
// sends gives a valid string. Null text gives a null string.
jstring new_string(JNIEnv* env, const char* text, size_t max);

// A new Java byte[] holding a copy of the bytes; null (with a Java error
// pending) when the VM has no memory for it.
jbyteArray new_byte_array(JNIEnv* env, const void* bytes, size_t length);

// The constructor argument a slot gives, read from the record.
jvalue slot_argument(JNIEnv* env, const void* record, const Slot& slot);

// A new Java object of the class from the record. Null (with a Java error
// pending) when the class or its constructor is missing.
jobject new_object(JNIEnv* env, const ValueClass& value_class, const void* record);
// Same, with the constructor arguments already made.
jobject new_object(JNIEnv* env, const ValueClass& value_class, const jvalue* arguments);

// Fills the record from the object's fields, slot by slot, each narrowed to
// the record's width; slots without a field are left as they are. Arrays and
// texts longer than their place in the record are cut to it.
void read_object(JNIEnv* env, const ValueClass& value_class, jobject object, void* record);

}  // namespace velatrix::jni

#endif
