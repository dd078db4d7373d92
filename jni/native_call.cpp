// The checks every Device native starts with.
#include "native_call.h"

#include "binding_cache.h"

namespace velatrix::jni {

velatrix_device* device_of(JNIEnv* env, jobject self) {
    return velatrix_device_ptr_from_jlong(env->GetLongField(self, velatrix_device_ptr_field));
}

velatrix_device* enter(JNIEnv* env, jobject self, jobject argument, const char* null_message) {
    velatrix_global_init(env);
    if (null_message != nullptr && argument == nullptr) {
        velatrix_throw_exception_str(env, null_message);
        return nullptr;
    }
    velatrix_device* device = device_of(env, self);
    if (device == nullptr || device->open == 0) {
        velatrix_throw_exception_str(env, kNotOpen);
        return nullptr;
    }
    return device;
}

}  // namespace velatrix::jni
