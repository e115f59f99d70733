#include "event/qsf_fnd_panel_observer.h"

namespace orvane {

namespace {

constexpr const char kPanelProxy[] = "orvane/qsf/controller/event/proxy/PanelProxy";

}  // namespace

qsf_fnd_panel_observer::qsf_fnd_panel_observer() = default;

qsf_fnd_panel_observer::~qsf_fnd_panel_observer() {
    // The class reference is released before the detach. A JNI environment serves only its own thread, so
    // the release uses this thread's: the one it already has, or one attached for it (and the detach below
    // lets it go again). The environment of the last event belonged to a thread that may be gone.
    if (vm_ != nullptr && panel_proxy_ != nullptr) {
        JNIEnv* env = nullptr;
        if (vm_->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_6) == JNI_OK || thread_attach()) {
            if (env == nullptr) env = env_;
            env->DeleteGlobalRef(panel_proxy_);
        }
    }
    thread_detach();
}

int qsf_fnd_panel_observer::init() {
    jsize count = 0;
    const jint found = JNI_GetCreatedJavaVMs(&vm_, 1, &count);
    if (found != 0) return found;
    if (!thread_attach()) return 0;

    // The lookups form one chain: the first one missing leaves every later one unset. The application
    // start and stop methods are looked up and kept although no notification calls them, so a proxy
    // without them never gets its automatic reset either.
    jclass local = env_->FindClass(kPanelProxy);
    if (local != nullptr) {
        panel_proxy_ = static_cast<jclass>(env_->NewGlobalRef(local));
        fire_appl_start_ = env_->GetStaticMethodID(panel_proxy_, "fireApplStartEvent", "(Ljava/lang/String;)V");
        if (fire_appl_start_ != nullptr) {
            fire_appl_stop_ = env_->GetStaticMethodID(panel_proxy_, "fireApplStopEvent", "(Ljava/lang/String;)V");
        }
        if (fire_appl_stop_ != nullptr) {
            fire_auto_reset_ = env_->GetStaticMethodID(panel_proxy_, "fireAutoResetEvent", "()V");
        }
    }
    // A failed lookup leaves its Java error pending; the detach below ends this thread's Java side with it.
    if (env_->ExceptionCheck()) env_->ExceptionClear();
    return thread_detach();
}

PLAT_RESULT qsf_fnd_panel_observer::notify_auto_panel_reset() {
    if (!thread_attach()) return kFailure;
    // After an init that could not find the method there is nothing to call: the event is dropped rather
    // than handed to the VM with a null method id.
    if (fire_auto_reset_ != nullptr) env_->CallStaticVoidMethod(panel_proxy_, fire_auto_reset_);
    thread_detach();
    return 0;
}

bool qsf_fnd_panel_observer::thread_attach() {
    if (vm_ == nullptr) return false;
    return vm_->AttachCurrentThread(reinterpret_cast<void**>(&env_), nullptr) == JNI_OK;
}

int qsf_fnd_panel_observer::thread_detach() {
    if (vm_ == nullptr) return JNI_ERR;
    return vm_->DetachCurrentThread();
}

}  // namespace orvane
