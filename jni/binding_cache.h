// The cache of Java classes, constructors, fields and methods, filled once
// by velatrix_global_init. Every entry is an exported global named after its
// class and member (binding_cache.def lists them all).
#ifndef VELATRIX_JNI_BINDING_CACHE_H
#define VELATRIX_JNI_BINDING_CACHE_H

#include "binding.h"

extern "C" {
VELATRIX_API extern uint8_t velatrix_global_init_done;
VELATRIX_API extern JavaVM* velatrix_vm;

#define VQ_CLASS(prefix, name, signature) \
    VELATRIX_API extern jclass velatrix_##prefix##_class; \
    VELATRIX_API extern jmethodID velatrix_##prefix##_init;
#define VQ_CLASS_ONLY(prefix, name) VELATRIX_API extern jclass velatrix_##prefix##_class;
#define VQ_FIELD(global, prefix, name, signature) VELATRIX_API extern jfieldID global;
#define VQ_METHOD(global, prefix, name, signature) VELATRIX_API extern jmethodID global;
#define VQ_STATIC_METHOD VQ_METHOD
#include "binding_cache.def"
#undef VQ_CLASS
#undef VQ_CLASS_ONLY
#undef VQ_FIELD
#undef VQ_METHOD
#undef VQ_STATIC_METHOD
}

#endif
