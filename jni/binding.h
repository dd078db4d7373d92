// What every native shares: the cache fill, the two ways of throwing
// VelatrixException, and the handle conversions. The cached class, field and
// method globals themselves are declared in binding_cache.h.
#ifndef VELATRIX_JNI_BINDING_H
#define VELATRIX_JNI_BINDING_H

#include <jni.h>

#include "velatrix-quillmark.h"

#define VELATRIX_JNI_EXPORT extern "C" JNIEXPORT

extern "C" {
// Fills the cache of classes, fields and methods once per process.
VELATRIX_API void velatrix_global_init(JNIEnv* env);
// Throws VelatrixException with the library's last error; returns 0.
VELATRIX_API int velatrix_throw_exception(JNIEnv* env);
// Throws VelatrixException with the given message; returns 0.
VELATRIX_API int velatrix_throw_exception_str(JNIEnv* env, const char* message);
}

#endif
