#include "observer_support.h"

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

}  // namespace orvane
