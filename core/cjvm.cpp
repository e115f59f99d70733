#include "core/cjvm.h"

#include <cstdio>

namespace orvane {

JavaVM* CJvm::ms_jvm = nullptr;
JNIEnv* CJvm::ms_jnienv = nullptr;

namespace {
constexpr jint kJniVersion = 0x10002;  // JNI 1.2
}

void CJvm::CreateJVM() {
    if (ms_jvm != nullptr) return;
    // Racing callers all store the same VM pointer.
    jsize count = 0;
    JNI_GetCreatedJavaVMs(&ms_jvm, 1, &count);
}

JavaVM* CJvm::GetJVM() {
    CreateJVM();
    return ms_jvm;
}

JNIEnv* CJvm::GetJNIEnv() {
    if (ms_jvm == nullptr) return nullptr;
    // GetEnv answers into a local first: the slot is one for the whole process, and another thread may
    // write it between this thread's GetEnv and its return. A thread that succeeded gets its own
    // environment, never one another thread stored; the slot still holds the latest answer of any thread,
    // and a failure answers what the slot holds, as it always has. The slot is written and read as one word
    // (relaxed atomics), so that concurrent callers are not a data race.
    JNIEnv* own = nullptr;
    jint result = ms_jvm->GetEnv(reinterpret_cast<void**>(&own), kJniVersion);
    __atomic_store_n(&ms_jnienv, own, __ATOMIC_RELAXED);
    if (result == JNI_OK) return own;
    if (result == JNI_EVERSION) {
        std::printf("JNI VERSION ERROR\n");
    } else {
        std::printf("failed to Get JNIEnv\n");
    }
    return __atomic_load_n(&ms_jnienv, __ATOMIC_RELAXED);
}

jobject CJvm::CreateJavaObject(const char* className) {
    JNIEnv* env = GetJNIEnv();
    if (env == nullptr) return nullptr;
    // The class reference stays with the caller's local frame, which ends it.
    jclass cls = env->FindClass(className);
    if (cls != nullptr) {
        jmethodID ctor = env->GetMethodID(cls, "<init>", "()V");
        if (ctor != nullptr) {
            jobject obj = env->NewObject(cls, ctor);
            if (obj != nullptr) return obj;
        }
    }
    env->ExceptionDescribe();
    env->ExceptionClear();
    return nullptr;
}

void CJvm::ReleaseJObject(jobject obj) {
    JNIEnv* env = GetJNIEnv();
    if (env == nullptr) return;
    // A null object has no class to ask; there is nothing to release.
    if (obj == nullptr) return;
    jclass cls = env->GetObjectClass(obj);
    if (cls != nullptr) {
        jmethodID release = env->GetMethodID(cls, "release", "()V");
        if (release != nullptr) {
            // An exception thrown by release() is the caller's to see.
            env->CallVoidMethod(obj, release);
            return;
        }
    }
    env->ExceptionDescribe();
    env->ExceptionClear();
}

void CJvm::DetachThread() {
    if (ms_jvm != nullptr) ms_jvm->DetachCurrentThread();
}

void CJvm::DestroyJVM() {
    if (ms_jvm == nullptr) return;
    ms_jvm->DestroyJavaVM();
    ms_jvm = nullptr;
}

}  // namespace orvane
