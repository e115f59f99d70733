#include "event/xiof_slo_esm_observer.h"

#include <cstdint>

#include "event/observer_support.h"

namespace orvane {

namespace {

constexpr const char kCommonProxy[] = "orvane/qsf/controller/event/proxy/CommonProxy";
constexpr const char kSynchronousEventProxy[] = "orvane/qsf/controller/event/proxy/SynchronousEventProxy";

// A class made a global reference, or null. A missing class ends the lookups silently: its error is
// cleared so that the thread carries no pending exception into the next JNI call.
jclass global_class(JNIEnv* env, const char* path) {
    jclass local = env->FindClass(path);
    if (local == nullptr) {
        env->ExceptionClear();
        return nullptr;
    }
    return static_cast<jclass>(env->NewGlobalRef(local));
}

}  // namespace

xiof_slo_esm_observer::xiof_slo_esm_observer() = default;

xiof_slo_esm_observer::~xiof_slo_esm_observer() {
    release_classes(jvm_, {&jcls_common_proxy_, &jcls_synchronous_event_proxy_});
}

jint xiof_slo_esm_observer::init() {
    jsize count = 0;
    const jint found = JNI_GetCreatedJavaVMs(&jvm_, 1, &count);
    if (found != JNI_OK) return found;
    if (!thread_attach()) return 0;

    jcls_common_proxy_ = global_class(jnienv_, kCommonProxy);
    if (jcls_common_proxy_ != nullptr) jcls_synchronous_event_proxy_ = global_class(jnienv_, kSynchronousEventProxy);

    // The eleven methods in their fixed order; the first one missing leaves it and all later ones null.
    struct lookup {
        jclass* cls;
        jmethodID* mid;
        const char* name;
        const char* signature;
    };
    const lookup lookups[] = {
        {&jcls_common_proxy_, &mid_logout_, "fireLogoutEvent", "()V"},
        {&jcls_common_proxy_, &mid_communication_error_, "fireCommunicationErrorEvent", "()V"},
        {&jcls_common_proxy_, &mid_sleep_, "fireSleepEvent", "(I)V"},
        {&jcls_common_proxy_, &mid_usb_device_, "fireUSBDeviceEvent", "(I)V"},
        {&jcls_common_proxy_, &mid_coin_vendor_, "fireCoinVendorEvent", "(I)V"},
        {&jcls_common_proxy_, &mid_toner_level_, "fireTonerLevelEvent", "(SS)V"},
        {&jcls_common_proxy_, &mid_paper_source_level_, "firePaperSourceLevelEvent", "(IS)V"},
        {&jcls_common_proxy_, &mid_cover_, "fireCoverEvent", "(J)V"},
        {&jcls_common_proxy_, &mid_waste_toner_, "fireWasteTonerEvent", "(S)V"},
        {&jcls_common_proxy_, &mid_key_device_, "fireKeyDeviceEvent", "(I)V"},
        {&jcls_synchronous_event_proxy_, &mid_resident_apps_, "fireResidentAppsStateChanged", "(I)V"},
    };
    for (const lookup& l : lookups) {
        if (*l.cls == nullptr) break;
        *l.mid = jnienv_->GetStaticMethodID(*l.cls, l.name, l.signature);
        if (*l.mid == nullptr) {
            jnienv_->ExceptionClear();
            break;
        }
    }
    return thread_detach();
}

bool xiof_slo_esm_observer::thread_attach() {
    if (jvm_ == nullptr) return false;
    return jvm_->AttachCurrentThread(reinterpret_cast<void**>(&jnienv_), nullptr) == JNI_OK;
}

jint xiof_slo_esm_observer::thread_detach() {
    if (jvm_ == nullptr) return JNI_ERR;
    return jvm_->DetachCurrentThread();
}

template <class... A>
PLAT_RESULT xiof_slo_esm_observer::fire(jclass cls, jmethodID method, A... args) {
    if (!thread_attach()) return XSI_PBFS_ESM_OBSERVER_NG;
    // A method that init() could not find is not called: the event is answered as one not delivered.
    if (cls == nullptr || method == nullptr) {
        thread_detach();
        return XSI_PBFS_ESM_OBSERVER_NG;
    }
    jnienv_->CallStaticVoidMethod(cls, method, args...);
    thread_detach();
    return XSI_PBFS_ESM_OK;
}

// The logged-out user and the kind of connection error are not passed on: Java learns only that it happened.
PLAT_RESULT xiof_slo_esm_observer::notify_logout(dev_ulong) { return fire(jcls_common_proxy_, mid_logout_); }

PLAT_RESULT xiof_slo_esm_observer::notify_pbp_connection_error(XSI_PBFS_EVENT_CONNECTION_ERROR) {
    return fire(jcls_common_proxy_, mid_communication_error_);
}

PLAT_RESULT xiof_slo_esm_observer::notify_sleep(XSI_PBFS_EVENT_SLEEP_STATE state) {
    return fire(jcls_common_proxy_, mid_sleep_, static_cast<jint>(state));
}

PLAT_RESULT xiof_slo_esm_observer::notify_usb_memory_status(unsigned int status) {
    return fire(jcls_common_proxy_, mid_usb_device_, static_cast<jint>(status));
}

PLAT_RESULT xiof_slo_esm_observer::notify_coin_vender_status(unsigned int status) {
    return fire(jcls_common_proxy_, mid_coin_vendor_, static_cast<jint>(status));
}

// The toner levels reach Java in the opposite order: the monitor's second value is the Java method's first
// parameter. Applications rely on this order, so it stays.
PLAT_RESULT xiof_slo_esm_observer::notify_toner_status(unsigned char first, unsigned char second) {
    return fire(jcls_common_proxy_, mid_toner_level_, static_cast<jint>(static_cast<jshort>(second)),
                static_cast<jint>(static_cast<jshort>(first)));
}

PLAT_RESULT xiof_slo_esm_observer::notify_paper_rest_status(unsigned short source, unsigned char level) {
    return fire(jcls_common_proxy_, mid_paper_source_level_, static_cast<jint>(source),
                static_cast<jint>(static_cast<jshort>(level)));
}

// The cover bits are unsigned: Java's long receives them zero-extended, never negative.
PLAT_RESULT xiof_slo_esm_observer::notify_cover_status(unsigned int status) {
    return fire(jcls_common_proxy_, mid_cover_, static_cast<jlong>(static_cast<uint32_t>(status)));
}

PLAT_RESULT xiof_slo_esm_observer::notify_waste_toner_bottle_status(unsigned char status) {
    return fire(jcls_common_proxy_, mid_waste_toner_, static_cast<jint>(static_cast<jshort>(status)));
}

// Key cards and key counters are both key devices to Java: one method serves both.
PLAT_RESULT xiof_slo_esm_observer::notify_key_card_status(unsigned char status) {
    return fire(jcls_common_proxy_, mid_key_device_, static_cast<jint>(status));
}

PLAT_RESULT xiof_slo_esm_observer::notify_key_counter_status(unsigned int status) {
    return fire(jcls_common_proxy_, mid_key_device_, static_cast<jint>(status));
}

PLAT_RESULT xiof_slo_esm_observer::notify_resident_app_state_changed(XSI_PBFS_ESM_REQ_APP_STATE state) {
    return fire(jcls_synchronous_event_proxy_, mid_resident_apps_, static_cast<jint>(state));
}

}  // namespace orvane
