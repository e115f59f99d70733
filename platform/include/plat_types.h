/*
 * Basic types of the device platform.
 *
 * The device is 32-bit ARM Linux (ILP32): its `long` and `unsigned long` are 32 bits wide, and so are its
 * pointers. Platform result codes, handles, ids and record fields are therefore 32-bit values. The host build
 * (x86-64, LP64) must behave exactly like the device, so every value that the platform defines as a `long`
 * travels here as `dev_long` / `dev_ulong`, fixed at 32 bits on both ABIs.
 *
 * Records whose layout the platform fixes use these fixed-width types only and assert their size and field
 * offsets at compile time with PLAT_ASSERT_SIZE / PLAT_ASSERT_OFFSET, so that the layout is byte for byte the
 * same on the device and on the host.
 */
#ifndef PLAT_TYPES_H
#define PLAT_TYPES_H

#include <stddef.h>
#include <stdint.h>

/* The device's `long` and `unsigned long`. */
typedef int32_t dev_long;
typedef uint32_t dev_ulong;

/* The device's `time_t`: seconds since 1970, 32 bits wide. */
typedef int32_t dev_time;

/* A platform result code: 0 is success, failures have the form 0xC1xxxxxx / 0xC2xxxxxx. */
typedef dev_long PLAT_RESULT;

/* Spell a platform code such as 0xC1020001 as the 32-bit signed value the device holds. */
#define PLAT_CODE(x) ((dev_long)(uint32_t)(x))

#define PLAT_OK PLAT_CODE(0)

#ifdef __cplusplus
#define PLAT_STATIC_ASSERT(cond, msg) static_assert(cond, msg)
#else
#define PLAT_STATIC_ASSERT(cond, msg) _Static_assert(cond, msg)
#endif

/* Layout checks of fixed records: the same numbers hold on the device and on the host. */
#define PLAT_ASSERT_SIZE(type, size) PLAT_STATIC_ASSERT(sizeof(type) == (size), "size of " #type)
#define PLAT_ASSERT_OFFSET(type, field, off) \
    PLAT_STATIC_ASSERT(offsetof(type, field) == (off), "offset of " #type "." #field)

PLAT_ASSERT_SIZE(dev_long, 4);
PLAT_ASSERT_SIZE(dev_ulong, 4);
PLAT_ASSERT_SIZE(dev_time, 4);

#endif /* PLAT_TYPES_H */
