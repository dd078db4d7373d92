// The sessions of the pads opened from Java.
#include "device_sessions.h"

#include <unordered_map>

namespace velatrix::jni {

namespace {

std::mutex sessions_mutex;

std::unordered_map<velatrix_device*, std::shared_ptr<Session>>& sessions() {
    // Never destroyed: a daemon reader may still look here while the VM exits.
    static auto* map = new std::unordered_map<velatrix_device*, std::shared_ptr<Session>>();
    return *map;
}

}  // namespace

std::shared_ptr<Session> open_session(JNIEnv* env, velatrix_device* device, jobject owner) {
    auto session = std::make_shared<Session>();
    session->owner = env->NewWeakGlobalRef(owner);
    std::lock_guard lock(sessions_mutex);
    sessions()[device] = session;
    return session;
}

std::shared_ptr<Session> find_session(JNIEnv* env, velatrix_device* device, jobject owner) {
    std::lock_guard lock(sessions_mutex);
    auto found = sessions().find(device);
    if (found == sessions().end()) return nullptr;
    // A record freed and allocated again at the same address belongs to
    // another Device object.
    if (!env->IsSameObject(found->second->owner, owner)) return nullptr;
    return found->second;
}

void end_session(JNIEnv* env, velatrix_device* device) {
    std::shared_ptr<Session> session;
    {
        std::lock_guard lock(sessions_mutex);
        auto found = sessions().find(device);
        if (found == sessions().end()) return;
        session = found->second;
        sessions().erase(found);
    }
    if (session->owner != nullptr) env->DeleteWeakGlobalRef(session->owner);
    session->owner = nullptr;
}

}  // namespace velatrix::jni
