// What the observers of platform events share: one way to attach a thread for an event, one way to look up
// and keep the Java identifiers, one way to drop a Java exception, one way to answer the platform.
//
// The discipline every observer follows:
//   - init() finds the process's VM, attaches, looks up its Java classes (kept as global references) and
//     static methods in one chain, and ends the attach (init_identifiers). The identifiers are fixed from
//     then on; nothing is looked up again lazily.
//   - Each event holds an event_attach for its own duration. The JNIEnv* lives in that scope only: no
//     observer keeps an environment in a member, because an environment serves one thread and the next event
//     may come on another.
//   - A thread that cannot be attached, or an identifier the event needs that init() could not find, ends
//     the event with the observer's failure answer before anything reaches Java (the attach comes first).
#ifndef JBRG_EVENT_OBSERVER_SUPPORT_H
#define JBRG_EVENT_OBSERVER_SUPPORT_H

#include <jni.h>

#include <initializer_list>

#include "core/trace.h"
#include "plat_types.h"

namespace orvane {

// One event's hold on the Java VM (RAII).
//
// A thread the VM does not know (a platform IPC thread) is attached by attach() and detached again by
// detach() or at the end of the scope. A thread that is already attached (a Java thread, or a native thread
// its owner attached) is only lent its own environment and stays attached afterwards: detaching it would pull
// the VM out from under the code that attached it.
class event_attach {
public:
    // Nothing held yet; attach() later.
    event_attach() = default;
    // attach(vm) at once.
    explicit event_attach(JavaVM* vm) { attach(vm); }
    ~event_attach() { detach(); }
    event_attach(const event_attach&) = delete;
    event_attach& operator=(const event_attach&) = delete;

    // The calling thread's environment from `vm`: the one it has, or one from AttachCurrentThread. False
    // without a VM or when AttachCurrentThread does not answer JNI_OK (result() then holds its answer).
    bool attach(JavaVM* vm);
    // Ends the hold: DetachCurrentThread's answer when this scope attached the thread, JNI_OK when it only
    // borrowed an attached thread's environment, JNI_ERR when it holds nothing.
    jint detach();

    JNIEnv* env() const { return env_; }
    explicit operator bool() const { return env_ != nullptr; }
    // What the last attach() found: JNI_OK, AttachCurrentThread's failure, or JNI_ERR without a VM.
    jint result() const { return result_; }

private:
    JavaVM* vm_ = nullptr;
    JNIEnv* env_ = nullptr;
    bool attached_here_ = false;
    jint result_ = JNI_ERR;
};

// A Java class an observer keeps, and the static methods it calls. `missing` is the trace line written when
// the lookup fails (null: none). A method's `owner` is the class slot it belongs to; null means the first
// class of the chain (the proxy).
struct class_lookup {
    jclass* slot;
    const char* path;
    const char* missing = nullptr;
};
struct static_method_lookup {
    jmethodID* slot;
    const char* name;
    const char* signature;
    const char* missing = nullptr;
    jclass* owner = nullptr;
};

// The lookups of an observer's init(), on an attached thread: each class found and kept as a global
// reference, then each static method. The first one missing ends the chain and leaves the rest null; its
// Java error is cleared (the thread carries nothing pending into its next JNI call) and, where the lookup
// names a message, traced at `site`. The local class references are left to the end of the thread's frame.
// True when everything was found.
bool look_up_chain(JNIEnv* env, const trace_site* site, std::initializer_list<class_lookup> classes,
                   std::initializer_list<static_method_lookup> methods);

// The process's VM (JNI_GetCreatedJavaVMs, one slot) into `vm`, null when none runs. The lookup's answer.
jint find_vm(JavaVM*& vm);

// An observer's init(): finds the VM, attaches, runs the lookup chain silently and ends the attach. A
// failure of JNI_GetCreatedJavaVMs is answered as it is, a thread that cannot be attached with 0, otherwise
// the detach's answer (JNI_OK on a thread that was attached already).
jint init_identifiers(JavaVM*& vm, std::initializer_list<class_lookup> classes,
                      std::initializer_list<static_method_lookup> methods);

// Deletes an observer's global class references when it is destroyed, through the destroying thread's own
// environment (attached for it when it has none). An environment kept from an earlier event would belong to
// another thread, or to none.
void release_classes(JavaVM* vm, std::initializer_list<jclass*> classes);

// A pending Java exception: printed (ExceptionDescribe) and cleared. True when there was one.
bool drop_exception(JNIEnv* env);
// A pending Java exception cleared without printing. True when there was one.
bool clear_exception(JNIEnv* env);

// One static void call made the way the simple notifications make it: `failure` when the thread cannot be
// attached or the class or method is unknown, otherwise the call (no exception check after it: what Java
// throws stays with the thread) and PLAT_OK.
template <class... A>
PLAT_RESULT fire_static(JavaVM* vm, PLAT_RESULT failure, jclass cls, jmethodID method, A... args) {
    event_attach scope(vm);
    if (!scope || cls == nullptr || method == nullptr) return failure;
    scope.env()->CallStaticVoidMethod(cls, method, args...);
    return PLAT_OK;
}

}  // namespace orvane

#endif  // JBRG_EVENT_OBSERVER_SUPPORT_H
