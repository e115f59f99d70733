#include "event/xamf_amo_app_operation_observer.h"

#include "core/jni_text.h"
#include "core/trace.h"
#include "appinfo/xamf_amo_proxy.h"

namespace orvane {

const XAM_AMO_APP_OPE_OBS_CONV_TABLE xamf_amo_app_operation_observer::s_conv_table[6] = {
    {XAM_ADS_BASIS_CONTROL_START, 4},   {XAM_ADS_BASIS_CONTROL_STOP, 5},    {XAM_ADS_BASIS_CONTROL_SUSPEND, 6},
    {XAM_ADS_BASIS_CONTROL_RESUME, 7},  {XAM_ADS_BASIS_CONTROL_RESTART, 8}, {XAM_ADS_BASIS_CONTROL_SHUTDOWN, 9},
};

namespace {

constexpr const char kProxyClass[] = "orvane/qsf/controller/event/proxy/AppOperationProxy";

xamf_amo_proxy& proxy() { return *xamf_amo_proxy::xamf_amo_get_instance(); }

// How one request is handed to Java and answered.
struct request {
    int event;                                     // Java event code
    bool synchronous;                              // waits for Java's boolean (which is not looked at)
    int (xamf_amo_proxy::*answer)(const char*, XAMF_AMO_RETCODE);
    bool answer_success;                           // success is answered (with 0) too
};

// A Java method that threw: the request has failed, and nothing is left pending on the thread.
bool java_threw(JNIEnv* env) {
    if (!env->ExceptionCheck()) return false;
    env->ExceptionClear();
    return true;
}

}  // namespace

xamf_amo_app_operation_observer::xamf_amo_app_operation_observer() = default;

xamf_amo_app_operation_observer::~xamf_amo_app_operation_observer() {
    // The class reference is released on the thread the observer is deleted on. The environment kept from
    // init() belongs to a thread that has since been detached and is not used: a thread already attached uses
    // its own, any other is attached for the release and detached again.
    if (vm_ == nullptr || cls_proxy_ == nullptr) return;
    JNIEnv* env = nullptr;
    if (vm_->GetEnv(reinterpret_cast<void**>(&env), JNI_VERSION_1_2) == JNI_OK) {
        env->DeleteGlobalRef(cls_proxy_);
    } else if (thread_attach(&env)) {
        env->DeleteGlobalRef(cls_proxy_);
        thread_detach();
    }
    cls_proxy_ = nullptr;
}

int xamf_amo_app_operation_observer::init() {
    jsize count = 0;
    jint ret = JNI_GetCreatedJavaVMs(&vm_, 1, &count);
    if (ret != JNI_OK) return ret;
    if (count == 0) vm_ = nullptr;
    if (!thread_attach(&env_)) return 0;
    jclass found = env_->FindClass(kProxyClass);
    if (found != nullptr) {
        cls_proxy_ = static_cast<jclass>(env_->NewGlobalRef(found));
        // The first missing method ends the chain; the later ones stay null.
        mid_fire_app_operation_ = env_->GetStaticMethodID(cls_proxy_, "fireAppOperationEvent", "(ILjava/lang/String;)V");
        if (mid_fire_app_operation_ != nullptr) {
            mid_fire_sync_platform_ = env_->GetStaticMethodID(cls_proxy_, "fireSyncAppOperationPlatformEvent", "(I)Z");
        }
        if (mid_fire_sync_platform_ != nullptr) {
            mid_fire_sync_app_operation_ =
                env_->GetStaticMethodID(cls_proxy_, "fireSyncAppOperationEvent", "(ILjava/lang/String;)Z");
        }
    }
    // A missing class or method leaves its NoClassDefFoundError / NoSuchMethodError behind; the thread is
    // detached, and the requests are answered as failures (below).
    if (env_->ExceptionCheck()) env_->ExceptionClear();
    return thread_detach();
}

bool xamf_amo_app_operation_observer::thread_attach(JNIEnv** env) {
    // Without init() there is no VM to attach to.
    if (vm_ == nullptr) return false;
    return vm_->AttachCurrentThread(reinterpret_cast<void**>(env), nullptr) == JNI_OK;
}

int xamf_amo_app_operation_observer::thread_detach() {
    if (vm_ == nullptr) return JNI_ERR;
    return vm_->DetachCurrentThread();
}

namespace {

// The shared steps of the four application requests.
void deliver(const trace_site& site, xamf_amo_app_operation_observer& self, const char* app_id, const request& r, jclass cls,
             jmethodID fire, jmethodID fire_sync) {
    trace_at(site, "[Start] app_id = %s", app_id != nullptr ? app_id : "(null)");
    auto fail = [&] { (proxy().*r.answer)(app_id, XAMF_AMO_RET_ERR); };
    JNIEnv* env = nullptr;
    if (!self.thread_attach(&env)) {
        trace_at(site, "[Error] thread_attach false");
        fail();
        return;
    }
    jstring str = app_id != nullptr ? ::orvane::jni::new_string(env, app_id) : nullptr;
    if (env->ExceptionCheck()) {
        env->ExceptionClear();
        self.thread_detach();
        trace_at(site, "[Error] Exception is caught");
        fail();
        return;
    }
    if (str == nullptr) {
        self.thread_detach();
        trace_at(site, "[Error] str is NULL");
        fail();
        return;
    }
    // An observer whose init() did not find its Java methods answers every request as failed.
    jmethodID method = r.synchronous ? fire_sync : fire;
    if (cls == nullptr || method == nullptr) {
        env->DeleteLocalRef(str);
        self.thread_detach();
        trace_at(site, "[Error] method is not found");
        fail();
        return;
    }
    if (r.synchronous) {
        // Java's answer is not looked at: terminate and open window are answered the same either way.
        env->CallStaticBooleanMethod(cls, method, static_cast<jint>(r.event), str);
    } else {
        env->CallStaticVoidMethod(cls, method, static_cast<jint>(r.event), str);
    }
    bool threw = java_threw(env);
    env->DeleteLocalRef(str);
    self.thread_detach();
    if (threw) {
        trace_at(site, "[Error] Exception is caught");
        fail();
        return;
    }
    trace_at(site, "[End]");
    if (r.answer_success) (proxy().*r.answer)(app_id, XAMF_AMO_RET_OK);
}

}  // namespace

// Run and terminate are answered by Java later (through xamf_amo_proxy); open window is answered here at
// once, with 0 whatever Java said; close window is answered only when it fails.
void xamf_amo_app_operation_observer::notify_run_app(const char* app_id) {
    deliver(JBRG_TRACE_SITE, *this, app_id, {kEventRunApp, false, &xamf_amo_proxy::xamf_amo_notify_run_app_result, false}, cls_proxy_,
            mid_fire_app_operation_, mid_fire_sync_app_operation_);
}

void xamf_amo_app_operation_observer::notify_terminate_app(const char* app_id) {
    deliver(JBRG_TRACE_SITE, *this, app_id, {kEventTerminateApp, true, &xamf_amo_proxy::xamf_amo_notify_terminate_app_result, false},
            cls_proxy_, mid_fire_app_operation_, mid_fire_sync_app_operation_);
}

void xamf_amo_app_operation_observer::notify_open_window(const char* app_id) {
    deliver(JBRG_TRACE_SITE, *this, app_id, {kEventOpenWindow, true, &xamf_amo_proxy::xamf_amo_notify_open_window_result, true},
            cls_proxy_, mid_fire_app_operation_, mid_fire_sync_app_operation_);
}

void xamf_amo_app_operation_observer::notify_close_window(const char* app_id) {
    deliver(JBRG_TRACE_SITE, *this, app_id, {kEventCloseWindow, false, &xamf_amo_proxy::xamf_amo_notify_close_window_result, false},
            cls_proxy_, mid_fire_app_operation_, mid_fire_sync_app_operation_);
}

PLAT_RESULT xamf_amo_app_operation_observer::notify_basis_control(XAM_ADS_BASIS_CONTROL control) {
    JBRG_TRACE("[Start]");
    // The control is the table's row. One outside it has no Java event: it is refused as a failure without
    // calling Java, rather than reading beyond the table.
    auto row = static_cast<uint32_t>(control);
    if (row >= sizeof s_conv_table / sizeof s_conv_table[0]) {
        JBRG_TRACE("[Error] unknown basis control %ld", dev_ld(control));
        return XAM_ADS_RESULT_ERR;
    }
    JNIEnv* env = nullptr;
    if (!thread_attach(&env)) {
        JBRG_TRACE("[Error] thread_attach false");
        return XAM_ADS_RESULT_ERR;
    }
    if (env->ExceptionCheck()) {
        env->ExceptionClear();
        thread_detach();
        JBRG_TRACE("[Error] Exception is caught");
        return XAM_ADS_RESULT_ERR;
    }
    if (cls_proxy_ == nullptr || mid_fire_sync_platform_ == nullptr) {
        thread_detach();
        JBRG_TRACE("[Error] method is not found");
        return XAM_ADS_RESULT_ERR;
    }
    jboolean answer = env->CallStaticBooleanMethod(cls_proxy_, mid_fire_sync_platform_,
                                                   static_cast<jint>(s_conv_table[row].amo));
    bool threw = java_threw(env);
    thread_detach();
    JBRG_TRACE("[End]");
    return (!threw && answer == JNI_TRUE) ? XAM_ADS_RESULT_OK : XAM_ADS_RESULT_ERR;
}

PLAT_RESULT xamf_amo_app_operation_observer::is_enable_run_app() {
    JBRG_TRACE("[Start] is_enable_run_app");
    JNIEnv* env = nullptr;
    if (!thread_attach(&env)) {
        JBRG_TRACE("[Error] thread_attach false");
        return XAM_ADS_RESULT_ERR;
    }
    // The question names no application: Java gets an empty id, never a null one.
    jstring str = env->NewStringUTF("");
    if (env->ExceptionCheck()) {
        env->ExceptionClear();
        thread_detach();
        JBRG_TRACE("[Error] Exception is caught");
        return XAM_ADS_RESULT_ERR;
    }
    if (str == nullptr) {
        thread_detach();
        JBRG_TRACE("[Error] str is NULL");
        return XAM_ADS_RESULT_ERR;
    }
    if (cls_proxy_ == nullptr || mid_fire_sync_app_operation_ == nullptr) {
        env->DeleteLocalRef(str);
        thread_detach();
        JBRG_TRACE("[Error] method is not found");
        return XAM_ADS_RESULT_ERR;
    }
    jboolean answer = env->CallStaticBooleanMethod(cls_proxy_, mid_fire_sync_app_operation_,
                                                   static_cast<jint>(kEventRunPermission), str);
    bool threw = java_threw(env);
    env->DeleteLocalRef(str);
    thread_detach();
    JBRG_TRACE("[End] is_enable_run_app");
    return (!threw && answer == JNI_TRUE) ? XAM_ADS_RESULT_OK : XAM_ADS_RESULT_ERR;
}

}  // namespace orvane
