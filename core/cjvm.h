// The process's Java VM.
//
// The library is loaded into a Java VM that already exists; CJvm is the one place that holds it, hands a
// JNI environment to native code that was not called from Java (start-up code, platform threads), and
// creates and releases Java objects by class name. Every member is static and takes the VM from ms_jvm;
// with no VM known, each does nothing (or answers null).
#ifndef JBRG_CORE_CJVM_H
#define JBRG_CORE_CJVM_H

#include <jni.h>

namespace orvane {

class CJvm {
public:
    CJvm() = delete;

    // Looks up the VM of the process (JNI_GetCreatedJavaVMs, one slot) when none is held yet. It never
    // creates a VM: with none running, ms_jvm stays null.
    static void CreateJVM();

    // CreateJVM(), then the VM (or null).
    static JavaVM* GetJVM();

    // The calling thread's environment, through GetEnv (JNI 1.2); the answer is also stored in the one
    // process-wide slot ms_jnienv. Null when no VM is known. On success the caller gets the environment its
    // own GetEnv produced, whatever other threads store meanwhile. A failure prints "JNI VERSION ERROR" or
    // "failed to Get JNIEnv" and answers what the slot holds. It does not attach the thread.
    static JNIEnv* GetJNIEnv();

    // A new object of `className` (slash form) made with its public no-argument constructor, as a local
    // reference; null when the class, the constructor or the construction fails (the Java exception is
    // printed and cleared).
    static jobject CreateJavaObject(const char* className);

    // Calls the object's release() method. A missing class or method is printed and cleared; an exception
    // thrown by release() itself is left pending for the caller.
    static void ReleaseJObject(jobject obj);

    // Detaches the calling thread from the VM.
    static void DetachThread();

    // Destroys the VM and forgets it; the next GetJVM() looks the VM up again.
    static void DestroyJVM();

    // The VM of the process, filled once by CreateJVM and cleared by DestroyJVM.
    static JavaVM* ms_jvm;
    // The environment most recently obtained by GetJNIEnv, whichever thread asked: callers use the value
    // at once, and platform threads obtain their own environment per event instead of relying on it.
    static JNIEnv* ms_jnienv;
};

}  // namespace orvane

#endif  // JBRG_CORE_CJVM_H
