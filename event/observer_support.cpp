#include "event/observer_support.h"

namespace orvane {

bool event_attach::attach(JavaVM* vm) {
    detach();
    vm_ = vm;
    if (vm_ == nullptr) {
        result_ = JNI_ERR;
        return false;
    }
    // A thread the VM knows keeps its own attachment; only a stranger is attached here.
    if (vm_->GetEnv(reinterpret_cast<void**>(&env_), JNI_VERSION_1_2) == JNI_OK) {
        result_ = JNI_OK;
        return true;
    }
    env_ = nullptr;
    result_ = vm_->AttachCurrentThread(reinterpret_cast<void**>(&env_), nullptr);
    if (result_ != JNI_OK) {
        env_ = nullptr;
        return false;
    }
    attached_here_ = true;
    return true;
}

jint event_attach::detach() {
    if (env_ == nullptr) return JNI_ERR;
    env_ = nullptr;
    if (!attached_here_) return JNI_OK;
    attached_here_ = false;
    return vm_->DetachCurrentThread();
}

bool look_up_chain(JNIEnv* env, const trace_site* site, std::initializer_list<class_lookup> classes,
                   std::initializer_list<static_method_lookup> methods) {
    auto missing = [env, site](const char* message) {
        clear_exception(env);
        if (site != nullptr && message != nullptr) trace_at(*site, "%s", message);
        return false;
    };
    for (const class_lookup& c : classes) {
        jclass local = env->FindClass(c.path);
        if (local == nullptr) return missing(c.missing);
        *c.slot = static_cast<jclass>(env->NewGlobalRef(local));
    }
    jclass* const proxy = classes.begin()->slot;
    for (const static_method_lookup& m : methods) {
        jclass owner = *(m.owner != nullptr ? m.owner : proxy);
        *m.slot = env->GetStaticMethodID(owner, m.name, m.signature);
        if (*m.slot == nullptr) return missing(m.missing);
    }
    return true;
}

jint find_vm(JavaVM*& vm) {
    jsize count = 0;
    const jint found = JNI_GetCreatedJavaVMs(&vm, 1, &count);
    if (found != JNI_OK || count < 1) vm = nullptr;
    return found;
}

jint init_identifiers(JavaVM*& vm, std::initializer_list<class_lookup> classes,
                      std::initializer_list<static_method_lookup> methods) {
    const jint found = find_vm(vm);
    if (found != JNI_OK) return found;
    event_attach scope(vm);
    if (!scope) return 0;
    look_up_chain(scope.env(), nullptr, classes, methods);
    return scope.detach();
}

void release_classes(JavaVM* vm, std::initializer_list<jclass*> classes) {
    event_attach scope(vm);
    if (!scope) return;
    for (jclass* cls : classes) {
        if (*cls != nullptr) scope.env()->DeleteGlobalRef(*cls);
        *cls = nullptr;
    }
}

bool drop_exception(JNIEnv* env) {
    if (!env->ExceptionCheck()) return false;
    env->ExceptionDescribe();
    env->ExceptionClear();
    return true;
}

bool clear_exception(JNIEnv* env) {
    if (!env->ExceptionCheck()) return false;
    env->ExceptionClear();
    return true;
}

}  // namespace orvane
