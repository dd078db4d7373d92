// Fills the binding cache and throws VelatrixException.
//
// The cache is filled lazily by the first native that needs it (there is no
// JNI_OnLoad) and lives as long as the process: its global references are
// never deleted. The fill is not locked, so the first native calls of a
// process must not race each other; DeviceManager.init is meant to come first.
#include "binding_cache.h"

#include <iterator>

extern "C" {
uint8_t velatrix_global_init_done = 0;
JavaVM* velatrix_vm = nullptr;

#define VQ_CLASS(prefix, name, signature) \
    jclass velatrix_##prefix##_class = nullptr; \
    jmethodID velatrix_##prefix##_init = nullptr;
#define VQ_CLASS_ONLY(prefix, name) jclass velatrix_##prefix##_class = nullptr;
#define VQ_FIELD(global, prefix, name, signature) jfieldID global = nullptr;
#define VQ_METHOD(global, prefix, name, signature) jmethodID global = nullptr;
#define VQ_STATIC_METHOD VQ_METHOD
#include "binding_cache.def"
#undef VQ_CLASS
#undef VQ_CLASS_ONLY
#undef VQ_FIELD
#undef VQ_METHOD
#undef VQ_STATIC_METHOD
}

namespace {

struct ClassRow {
    const char* name;
    jclass* cls;
    const char* constructor;
    jmethodID* init;
};

struct MemberRow {
    jclass* cls;
    const char* name;
    const char* signature;
    bool is_static;
    void* id;  // jfieldID* or jmethodID*
};

const ClassRow kClasses[] = {
#define VQ_CLASS(prefix, name, signature) {name, &velatrix_##prefix##_class, signature, &velatrix_##prefix##_init},
#define VQ_CLASS_ONLY(prefix, name) {name, &velatrix_##prefix##_class, nullptr, nullptr},
#define VQ_FIELD(global, prefix, name, signature)
#define VQ_METHOD(global, prefix, name, signature)
#define VQ_STATIC_METHOD VQ_METHOD
#include "binding_cache.def"
#undef VQ_CLASS
#undef VQ_CLASS_ONLY
#undef VQ_FIELD
#undef VQ_METHOD
#undef VQ_STATIC_METHOD
};

const MemberRow kFields[] = {
#define VQ_CLASS(prefix, name, signature)
#define VQ_CLASS_ONLY(prefix, name)
#define VQ_FIELD(global, prefix, name, signature) {&velatrix_##prefix##_class, name, signature, false, &global},
#define VQ_METHOD(global, prefix, name, signature)
#define VQ_STATIC_METHOD VQ_METHOD
#include "binding_cache.def"
#undef VQ_CLASS
#undef VQ_CLASS_ONLY
#undef VQ_FIELD
#undef VQ_METHOD
#undef VQ_STATIC_METHOD
};

const MemberRow kMethods[] = {
#define VQ_CLASS(prefix, name, signature)
#define VQ_CLASS_ONLY(prefix, name)
#define VQ_FIELD(global, prefix, name, signature)
#define VQ_METHOD(global, prefix, name, signature) {&velatrix_##prefix##_class, name, signature, false, &global},
#define VQ_STATIC_METHOD(global, prefix, name, signature) {&velatrix_##prefix##_class, name, signature, true, &global},
#include "binding_cache.def"
#undef VQ_CLASS
#undef VQ_CLASS_ONLY
#undef VQ_FIELD
#undef VQ_METHOD
#undef VQ_STATIC_METHOD
};

// A missing class or member leaves a null in the cache; the lookup error is
// cleared so that the next lookups (and the native that triggered the fill)
// still run, and the null shows up where the member is used.
void forget_lookup_error(JNIEnv* env) {
    if (env->ExceptionCheck()) env->ExceptionClear();
}

}  // namespace

extern "C" {

void velatrix_global_init(JNIEnv* env) {
    if (velatrix_global_init_done) return;
    env->GetJavaVM(&velatrix_vm);
    for (const ClassRow& row : kClasses) {
        jclass local = env->FindClass(row.name);
        forget_lookup_error(env);
        *row.cls = local != nullptr ? static_cast<jclass>(env->NewGlobalRef(local)) : nullptr;
        if (local != nullptr) env->DeleteLocalRef(local);
    }
    for (const MemberRow& row : kFields) {
        if (*row.cls == nullptr) continue;
        *static_cast<jfieldID*>(row.id) = env->GetFieldID(*row.cls, row.name, row.signature);
        forget_lookup_error(env);
    }
    for (const ClassRow& row : kClasses) {
        if (row.constructor == nullptr || *row.cls == nullptr) continue;
        *row.init = env->GetMethodID(*row.cls, "<init>", row.constructor);
        forget_lookup_error(env);
    }
    for (const MemberRow& row : kMethods) {
        if (*row.cls == nullptr) continue;
        *static_cast<jmethodID*>(row.id) = row.is_static ? env->GetStaticMethodID(*row.cls, row.name, row.signature)
                                                         : env->GetMethodID(*row.cls, row.name, row.signature);
        forget_lookup_error(env);
    }
    velatrix_global_init_done = 1;
}

int velatrix_throw_exception_str(JNIEnv* env, const char* message) {
    jclass cls = env->FindClass("com/velatrix/quillmark/VelatrixException");
    if (cls == nullptr) return 0;  // NoClassDefFoundError is pending instead
    env->ThrowNew(cls, message != nullptr ? message : "");
    env->DeleteLocalRef(cls);
    return 0;
}

int velatrix_throw_exception(JNIEnv* env) { return velatrix_throw_exception_str(env, velatrix_get_last_error()); }

}  // extern "C"
