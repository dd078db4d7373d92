// DeviceManager: start and stop the library, list pads, report the version,
// and forward hot-plug events to Java.
#include <atomic>

#include "binding_cache.h"
#include "record_codec.h"

using namespace velatrix::jni;

#define VQ_MANAGER_NATIVE(ret, name) \
    VELATRIX_JNI_EXPORT ret JNICALL Java_com_velatrix_quillmark_DeviceManager_##name(JNIEnv* env, jclass)

namespace {

// Set while DeviceManager.destroy ends the library, and with it the hot-plug
// thread, on a live VM.
std::atomic<bool> destroying{false};

// The hot-plug thread stays attached for its life. When DeviceManager.destroy
// ends it, it leaves the VM on its way out. When the process exits instead,
// the VM is gone by then and a detach would wait for it forever: the thread
// just ends.
struct HotplugAttachment {
    bool attached = false;
    ~HotplugAttachment() {
        if (attached && destroying.load() && velatrix_vm != nullptr) velatrix_vm->DetachCurrentThread();
    }
};
thread_local HotplugAttachment hotplug_attachment;

jstring string_or_null(JNIEnv* env, const char* text) { return text != nullptr ? new_string(env, text, SIZE_MAX) : nullptr; }

}  // namespace

// Attached as a daemon thread: a Java program ends when its own threads end,
// whatever the library's hot-plug thread is doing.
extern "C" VELATRIX_API int velatrix_jni_device_callback(uint32_t event, const char* path) {
    if (velatrix_vm == nullptr) return -1;
    JNIEnv* env = nullptr;
    const jint attached = velatrix_vm->AttachCurrentThreadAsDaemon(reinterpret_cast<void**>(&env), nullptr);
    if (attached != JNI_OK || env == nullptr) return attached;
    hotplug_attachment.attached = true;
    jstring text = string_or_null(env, path);
    env->CallStaticVoidMethod(velatrix_device_manager_class, velatrix_device_manager_push_event,
                              static_cast<jint>(event), text);
    if (env->ExceptionCheck()) {
        env->ExceptionDescribe();  // nobody on this thread could catch it
        env->ExceptionClear();
    }
    if (text != nullptr) env->DeleteLocalRef(text);
    return 0;
}

VQ_MANAGER_NATIVE(void, init) {
    velatrix_global_init(env);
    velatrix_init();
    velatrix_register_hotplug_callback(velatrix_jni_device_callback);
}

VQ_MANAGER_NATIVE(void, destroy) {
    velatrix_unregister_hotplug_callback(velatrix_jni_device_callback);
    destroying = true;
    velatrix_destroy();  // joins the hot-plug thread
    destroying = false;
}

VQ_MANAGER_NATIVE(jobjectArray, getAttachedDevices) {
    velatrix_global_init(env);
    velatrix_device* head = nullptr;
    if (velatrix_list_devices(&head) == 0) {
        velatrix_free_device_list(head);
        velatrix_throw_exception(env);
        return nullptr;
    }
    const jsize count = static_cast<jsize>(velatrix_count_device_list(head));
    jobjectArray devices = env->NewObjectArray(count, velatrix_device_class, nullptr);
    jsize index = 0;
    for (velatrix_device* record = head; devices != nullptr && record != nullptr; record = record->next, ++index) {
        jstring path = string_or_null(env, record->path);
        jstring model = string_or_null(env, record->model);
        jstring manufacturer = string_or_null(env, record->manufacturer);
        jobject device = env->NewObject(velatrix_device_class, velatrix_device_init, path,
                                        static_cast<jint>(record->product_id), static_cast<jint>(record->vendor_id),
                                        model, manufacturer);
        if (device != nullptr) {
            env->SetObjectArrayElement(devices, index, device);
            env->CallVoidMethod(device, velatrix_device_set_driver_ptr, velatrix_void_ptr_to_jlong(record->driver));
            if (!env->ExceptionCheck()) {
                env->CallVoidMethod(device, velatrix_device_set_driver_defined_ptr,
                                    velatrix_void_ptr_to_jlong(record->driver_defined));
            }
            env->DeleteLocalRef(device);
        }
        for (jstring s : {path, model, manufacturer}) {
            if (s != nullptr) env->DeleteLocalRef(s);
        }
        if (env->ExceptionCheck()) break;
    }
    velatrix_free_device_list(head);
    return devices;
}

VQ_MANAGER_NATIVE(jstring, getLibraryVersion) { return env->NewStringUTF(velatrix_get_quillmark_version()); }
VQ_MANAGER_NATIVE(jint, getLibraryVersionMajor) { return velatrix_get_quillmark_version_major(); }
VQ_MANAGER_NATIVE(jint, getLibraryVersionMinor) { return velatrix_get_quillmark_version_minor(); }
VQ_MANAGER_NATIVE(jint, getLibraryVersionRelease) { return velatrix_get_quillmark_version_release(); }
VQ_MANAGER_NATIVE(jstring, getLibraryBuildDateString) { return env->NewStringUTF(velatrix_get_quillmark_build_date()); }
