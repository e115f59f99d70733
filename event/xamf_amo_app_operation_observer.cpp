#include "event/xamf_amo_app_operation_observer.h"

#include <cstdio>

#include "appinfo/xamf_amo_proxy.h"
#include "core/jni_text.h"
#include "core/trace.h"
#include "event/observer_support.h"

namespace orvane {

const XAM_AMO_APP_OPE_OBS_CONV_TABLE xamf_amo_app_operation_observer::s_conv_table[6] = {
    {XAM_ADS_BASIS_CONTROL_START, 4},   {XAM_ADS_BASIS_CONTROL_STOP, 5},    {XAM_ADS_BASIS_CONTROL_SUSPEND, 6},
    {XAM_ADS_BASIS_CONTROL_RESUME, 7},  {XAM_ADS_BASIS_CONTROL_RESTART, 8}, {XAM_ADS_BASIS_CONTROL_SHUTDOWN, 9},
};

namespace {

constexpr const char kProxyClass[] = "orvane/qsf/controller/event/proxy/AppOperationProxy";

xamf_amo_proxy& proxy() { return *xamf_amo_proxy::xamf_amo_get_instance(); }

}  // namespace

xamf_amo_app_operation_observer::xamf_amo_app_operation_observer() = default;

xamf_amo_app_operation_observer::~xamf_amo_app_operation_observer() { release_classes(jvm_, {&jcls_proxy_}); }

int xamf_amo_app_operation_observer::init() {
    // The first missing method ends the chain; the later ones stay null.
    return init_identifiers(jvm_, {{&jcls_proxy_, kProxyClass}},
                            {
                                {&mid_fire_app_operation_, "fireAppOperationEvent", "(ILjava/lang/String;)V"},
                                {&mid_fire_sync_platform_, "fireSyncAppOperationPlatformEvent", "(I)Z"},
                                {&mid_fire_sync_app_operation_, "fireSyncAppOperationEvent", "(ILjava/lang/String;)Z"},
                            });
}

namespace {

// The shared steps of the four application requests and the run permission: the request's Java string
// made on a thread attached for it, the call, and the answer. `answer` is called with the failure or, where
// the request answers success, with success. Java's boolean is handed back through `result`.
template <class Answer>
void deliver(const trace_site& site, const char* start, const char* end, JavaVM* vm, jclass cls, jmethodID method,
             bool synchronous, int event, const char* app_id, jboolean* result, Answer answer) {
    trace_at(site, "%s", start);
    event_attach scope(vm);
    if (!scope) {
        trace_at(site, "[Error] thread_attach false");
        answer(false);
        return;
    }
    JNIEnv* env = scope.env();
    jstring str = app_id != nullptr ? ::orvane::jni::new_string(env, app_id) : nullptr;
    if (clear_exception(env)) {
        scope.detach();
        trace_at(site, "[Error] Exception is caught");
        answer(false);
        return;
    }
    if (str == nullptr) {
        scope.detach();
        trace_at(site, "[Error] str is NULL");
        answer(false);
        return;
    }
    // An observer whose init() did not find its Java method answers every request as failed.
    if (cls == nullptr || method == nullptr) {
        env->DeleteLocalRef(str);
        scope.detach();
        trace_at(site, "[Error] method is not found");
        answer(false);
        return;
    }
    jboolean answered = JNI_FALSE;
    if (synchronous) {
        answered = env->CallStaticBooleanMethod(cls, method, static_cast<jint>(event), str);
    } else {
        env->CallStaticVoidMethod(cls, method, static_cast<jint>(event), str);
    }
    // A Java method that threw: the request has failed, and nothing is left pending on the thread.
    const bool threw = clear_exception(env);
    env->DeleteLocalRef(str);
    scope.detach();
    if (threw) {
        trace_at(site, "[Error] Exception is caught");
        answer(false);
        return;
    }
    trace_at(site, "%s", end);
    if (result != nullptr) *result = answered;
    answer(true);
}

// One application request: how it reaches Java and how it is answered.
struct request {
    int event;                                     // Java event code
    bool synchronous;                              // waits for Java's boolean (which is not looked at)
    int (xamf_amo_proxy::*answer)(const char*, XAMF_AMO_RETCODE);
    bool answer_success;                           // success is answered (with 0) too
};

void deliver_request(const trace_site& site, JavaVM* vm, jclass cls, jmethodID fire, jmethodID fire_sync,
                     const char* app_id, const request& r) {
    char start[kTraceMessageSize];
    std::snprintf(start, sizeof start, "[Start] app_id = %s", app_id != nullptr ? app_id : "(null)");
    deliver(site, start, "[End]", vm, cls, r.synchronous ? fire_sync : fire, r.synchronous, r.event, app_id,
            nullptr, [&](bool ok) {
                if (!ok) {
                    (proxy().*r.answer)(app_id, XAMF_AMO_RET_ERR);
                } else if (r.answer_success) {
                    (proxy().*r.answer)(app_id, XAMF_AMO_RET_OK);
                }
            });
}

}  // namespace

// Run and terminate are answered by Java later (through xamf_amo_proxy); open window is answered here at
// once, with 0 whatever Java said; close window is answered only when it fails.
void xamf_amo_app_operation_observer::notify_run_app(const char* app_id) {
    deliver_request(JBRG_TRACE_SITE, jvm_, jcls_proxy_, mid_fire_app_operation_, mid_fire_sync_app_operation_, app_id,
                    {kEventRunApp, false, &xamf_amo_proxy::xamf_amo_notify_run_app_result, false});
}

void xamf_amo_app_operation_observer::notify_terminate_app(const char* app_id) {
    deliver_request(JBRG_TRACE_SITE, jvm_, jcls_proxy_, mid_fire_app_operation_, mid_fire_sync_app_operation_, app_id,
                    {kEventTerminateApp, true, &xamf_amo_proxy::xamf_amo_notify_terminate_app_result, false});
}

void xamf_amo_app_operation_observer::notify_open_window(const char* app_id) {
    deliver_request(JBRG_TRACE_SITE, jvm_, jcls_proxy_, mid_fire_app_operation_, mid_fire_sync_app_operation_, app_id,
                    {kEventOpenWindow, true, &xamf_amo_proxy::xamf_amo_notify_open_window_result, true});
}

void xamf_amo_app_operation_observer::notify_close_window(const char* app_id) {
    deliver_request(JBRG_TRACE_SITE, jvm_, jcls_proxy_, mid_fire_app_operation_, mid_fire_sync_app_operation_, app_id,
                    {kEventCloseWindow, false, &xamf_amo_proxy::xamf_amo_notify_close_window_result, false});
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
    event_attach scope(jvm_);
    if (!scope) {
        JBRG_TRACE("[Error] thread_attach false");
        return XAM_ADS_RESULT_ERR;
    }
    JNIEnv* env = scope.env();
    if (clear_exception(env)) {
        scope.detach();
        JBRG_TRACE("[Error] Exception is caught");
        return XAM_ADS_RESULT_ERR;
    }
    if (jcls_proxy_ == nullptr || mid_fire_sync_platform_ == nullptr) {
        scope.detach();
        JBRG_TRACE("[Error] method is not found");
        return XAM_ADS_RESULT_ERR;
    }
    jboolean answer = env->CallStaticBooleanMethod(jcls_proxy_, mid_fire_sync_platform_,
                                                   static_cast<jint>(s_conv_table[row].amo));
    const bool threw = clear_exception(env);
    scope.detach();
    JBRG_TRACE("[End]");
    return (!threw && answer == JNI_TRUE) ? XAM_ADS_RESULT_OK : XAM_ADS_RESULT_ERR;
}

PLAT_RESULT xamf_amo_app_operation_observer::is_enable_run_app() {
    // The question names no application: Java gets an empty id, never a null one.
    jboolean answer = JNI_FALSE;
    bool delivered = false;
    deliver(JBRG_TRACE_SITE, "[Start] is_enable_run_app", "[End] is_enable_run_app", jvm_, jcls_proxy_,
            mid_fire_sync_app_operation_, true, kEventRunPermission, "", &answer, [&](bool ok) { delivered = ok; });
    return (delivered && answer == JNI_TRUE) ? XAM_ADS_RESULT_OK : XAM_ADS_RESULT_ERR;
}

}  // namespace orvane
