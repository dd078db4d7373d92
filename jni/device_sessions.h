// What the binding keeps per pad opened from Java, so that a close from one
// thread and a read on another never meet on a freed record: the close marks
// the session closing, waits for the running read to end, and only then
// frees the record.
#ifndef VELATRIX_JNI_DEVICE_SESSIONS_H
#define VELATRIX_JNI_DEVICE_SESSIONS_H

#include <atomic>
#include <memory>
#include <mutex>

#include "binding.h"

namespace velatrix::jni {

// What a running Device.read places in the record's binding_context: the
// reading thread's environment and the Device object, and the first Java
// exception a listener threw during the read (rethrown when it returns).
struct BindingContext {
    JNIEnv* env;
    jobject device;
    jthrowable pending;
};

struct Session {
    std::mutex read_mutex;
    std::atomic<bool> closing{false};
    jweak owner = nullptr;  // the Device object that opened the pad
};

std::shared_ptr<Session> open_session(JNIEnv* env, velatrix_device* device, jobject owner);
// The session of the record if the given Device object opened it.
std::shared_ptr<Session> find_session(JNIEnv* env, velatrix_device* device, jobject owner);
void end_session(JNIEnv* env, velatrix_device* device);

}  // namespace velatrix::jni

#endif
