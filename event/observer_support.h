// What the observers of platform events share.
#ifndef JBRG_EVENT_OBSERVER_SUPPORT_H
#define JBRG_EVENT_OBSERVER_SUPPORT_H

#include <jni.h>

#include <initializer_list>

namespace orvane {

// Deletes an observer's global class references when it is destroyed, through the destroying thread's own
// environment: a thread that is attached (a Java thread ending the event manager) keeps its attachment; a
// platform thread that is not is attached for the deletion and detached again. An environment kept from an
// earlier event belongs to another thread, or to none, and is never used here.
void release_classes(JavaVM* vm, std::initializer_list<jclass*> classes);

// The lookups of an observer's init(), as the job observers make them: each class found and kept as a global
// reference, then each static method of the first class (the proxy); the first one missing ends the chain
// silently, leaving the rest null. The local class references are left to the thread's detach.
struct class_lookup {
    jclass* slot;
    const char* path;
};
struct static_method_lookup {
    jmethodID* slot;
    const char* name;
    const char* signature;
};
void look_up_chain(JNIEnv* env, std::initializer_list<class_lookup> classes,
                   std::initializer_list<static_method_lookup> methods);

}  // namespace orvane

#endif  // JBRG_EVENT_OBSERVER_SUPPORT_H
