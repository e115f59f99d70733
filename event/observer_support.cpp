#include "event/observer_support.h"

namespace orvane {

void release_classes(JavaVM* vm, std::initializer_list<jclass*> classes) {
    if (vm == nullptr) return;
    JNIEnv* env = nullptr;
    bool attached_here = false;
    if (vm->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_2) != JNI_OK) {
        if (vm->AttachCurrentThread(reinterpret_cast<void**>(&env), nullptr) != JNI_OK) return;
        attached_here = true;
    }
    for (jclass* cls : classes) {
        if (*cls != nullptr) env->DeleteGlobalRef(*cls);
        *cls = nullptr;
    }
    if (attached_here) vm->DetachCurrentThread();
}

void look_up_chain(JNIEnv* env, std::initializer_list<class_lookup> classes,
                   std::initializer_list<static_method_lookup> methods) {
    for (const class_lookup& c : classes) {
        jclass local = env->FindClass(c.path);
        if (local == nullptr) return;
        *c.slot = static_cast<jclass>(env->NewGlobalRef(local));
    }
    const jclass proxy = *classes.begin()->slot;
    for (const static_method_lookup& m : methods) {
        *m.slot = env->GetStaticMethodID(proxy, m.name, m.signature);
        if (*m.slot == nullptr) return;
    }
}

}  // namespace orvane
