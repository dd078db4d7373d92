// Opening, closing and reading a pad from Java, and the questions that work
// on a pad that is not open.
#include <cstring>
#include <string>

#include "binding_cache.h"
#include "device_sessions.h"
#include "native_call.h"

using namespace velatrix::jni;

extern "C" VELATRIX_API int velatrix_jni_read_callback(velatrix_device* device, const velatrix_input_report* record,
                                                       int type, const uint8_t* buffer, uint32_t length);

namespace {

// Lists the pads and keeps the one whose path is `path`; the others are freed.
velatrix_device* find_by_path(JNIEnv* env, const char* path) {
    velatrix_device* head = nullptr;
    if (velatrix_list_devices(&head) == 0) velatrix_throw_exception(env);
    velatrix_device* match = nullptr;
    while (head != nullptr) {
        velatrix_device* record = head;
        head = record->next;
        record->next = nullptr;
        if (match == nullptr && path != nullptr && record->path != nullptr && std::strcmp(record->path, path) == 0) {
            match = record;
        } else {
            velatrix_free_device_list(record);
        }
    }
    return match;
}

void forget(JNIEnv* env, jobject self, velatrix_device* device) {
    velatrix_free_device_list(device);
    end_session(env, device);
    env->CallVoidMethod(self, velatrix_device_set_ptr, static_cast<jlong>(0));
}

}  // namespace

VQ_DEVICE_NATIVE(void, open) {
    velatrix_global_init(env);
    auto path = static_cast<jstring>(env->GetObjectField(self, velatrix_device_path_field));
    velatrix_device* device;
    {
        Utf8Chars chars(env, path);
        device = find_by_path(env, chars.get());
    }
    if (device == nullptr) {
        if (env->ExceptionCheck()) env->ExceptionClear();  // the listing error gives way to this one
        velatrix_throw_exception_str(env, "Unable to find device.");
        return;
    }
    if (velatrix_open_device(device) == 0) {
        velatrix_throw_exception(env);  // a failed open has freed the record
        return;
    }
    velatrix_register_input_callback(device, velatrix_jni_read_callback);
    open_session(env, device, self);
    env->CallVoidMethod(self, velatrix_device_set_ptr, velatrix_void_ptr_to_jlong(device));
}

VQ_DEVICE_NATIVE(void, close) {
    velatrix_global_init(env);
    velatrix_device* device = device_of(env, self);
    std::shared_ptr<Session> session = device != nullptr ? find_session(env, device, self) : nullptr;
    if (device == nullptr || device->open == 0) {
        // A pad unplugged while open was closed by the driver; its record is
        // still ours to free.
        if (session != nullptr) {
            session->closing = true;
            std::lock_guard wait_for_reader(session->read_mutex);
            forget(env, self, device);
        }
        velatrix_throw_exception_str(env, kNotOpen);
        return;
    }
    if (session != nullptr) session->closing = true;
    std::unique_lock<std::mutex> wait_for_reader;
    if (session != nullptr) wait_for_reader = std::unique_lock(session->read_mutex);
    const int closed = velatrix_close_device(device);
    // Also after a failed close: the pad is forgotten (before the exception
    // is raised, since Java is called to clear the handle).
    const std::string error = closed == 0 ? velatrix_get_last_error() : "";
    forget(env, self, device);
    if (closed == 0) velatrix_throw_exception_str(env, error.c_str());
}

VQ_DEVICE_NATIVE(jint, read) {
    velatrix_global_init(env);
    velatrix_device* device = device_of(env, self);
    std::shared_ptr<Session> session = device != nullptr ? find_session(env, device, self) : nullptr;
    if (session == nullptr || session->closing) {
        velatrix_throw_exception_str(env, kNotOpen);
        return 0;
    }
    std::lock_guard reading(session->read_mutex);
    if (session->closing || device->open == 0) {
        velatrix_throw_exception_str(env, kNotOpen);
        return 0;
    }
    BindingContext context{env, self, nullptr};
    device->binding_context = &context;
    const int result = velatrix_device_read(device);
    device->binding_context = nullptr;
    if (context.pending != nullptr) {
        env->Throw(context.pending);
        return 0;
    }
    if (result == 0) velatrix_throw_exception(env);
    return result;
}

VQ_DEVICE_NATIVE(jboolean, isOpen) {
    velatrix_global_init(env);
    velatrix_device* device = device_of(env, self);
    return device != nullptr && device->open != 0 ? JNI_TRUE : JNI_FALSE;
}

VQ_DEVICE_NATIVE(jboolean, isButtonDown) {
    velatrix_global_init(env);
    velatrix_device* device = device_of(env, self);
    if (device == nullptr) {
        velatrix_throw_exception_str(env, kNotOpen);
        return JNI_FALSE;
    }
    return device->button_active != 0 ? JNI_TRUE : JNI_FALSE;
}

VQ_DEVICE_NATIVE(jstring, getDriverName) {
    velatrix_global_init(env);
    auto* driver = static_cast<velatrix_device_driver*>(
        velatrix_void_ptr_from_jlong(env->GetLongField(self, velatrix_device_driver_ptr_field)));
    if (driver == nullptr) {
        velatrix_throw_exception_str(env, "Driver isn't set.");
        return nullptr;
    }
    const char* name = driver->get_driver_name != nullptr ? driver->get_driver_name() : nullptr;
    return new_string(env, name, name != nullptr ? std::strlen(name) : 0);
}
