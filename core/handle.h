// Native objects and device values as they cross the Java boundary.
//
// A native object or record crosses to Java as a handle: a Java long that carries the pointer. On the device
// (32-bit pointers) the pointer fills the low 32 bits and the upper bits are zero; a handle coming back is
// read the same way, through uintptr_t, so the device ignores whatever a caller put in the upper bits.
//
// A Java long given where the device has an `unsigned long` keeps its low 32 bits, on every ABI.
#ifndef JBRG_CORE_HANDLE_H
#define JBRG_CORE_HANDLE_H

#include <jni.h>

#include <cstdint>

#include "plat_types.h"

namespace orvane {

template <class T>
inline jlong to_handle(T* object) {
    return static_cast<jlong>(reinterpret_cast<uintptr_t>(object));
}

template <class T>
inline T* from_handle(jlong handle) {
    return reinterpret_cast<T*>(static_cast<uintptr_t>(handle));
}

// The device's `unsigned long` from a Java long: its low 32 bits.
inline dev_ulong to_dev_ulong(jlong value) { return static_cast<dev_ulong>(static_cast<uint64_t>(value)); }

// The device's `unsigned long` as a Java long: zero-extended, never negative.
inline jlong from_dev_ulong(dev_ulong value) { return static_cast<jlong>(value); }

}  // namespace orvane

#endif  // JBRG_CORE_HANDLE_H
