/* Shared basics of the public C API: integer types, export and C linkage. */
#ifndef VELATRIX_COMMON_H
#define VELATRIX_COMMON_H

#include <stddef.h>
#include <stdint.h>

#if defined(__GNUC__)
#define VELATRIX_API __attribute__((visibility("default")))
#define VELATRIX_PRINTF(fmt, args) __attribute__((format(printf, fmt, args)))
#else
#define VELATRIX_API
#define VELATRIX_PRINTF(fmt, args)
#endif

#ifdef __cplusplus
#define VELATRIX_BEGIN_DECLS extern "C" {
#define VELATRIX_END_DECLS }
#else
#define VELATRIX_BEGIN_DECLS
#define VELATRIX_END_DECLS
#endif

/* Compile-time size checks that work from C99 and C++ alike. */
#ifdef __cplusplus
#define VELATRIX_STATIC_ASSERT(cond, name) static_assert(cond, #name)
#else
#define VELATRIX_STATIC_ASSERT(cond, name) typedef char velatrix_static_assert_##name[(cond) ? 1 : -1]
#endif

#endif
