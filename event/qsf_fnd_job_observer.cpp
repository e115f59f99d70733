#include "event/qsf_fnd_job_observer.h"

#include "core/jni_text.h"
#include "event/observer_support.h"

#include <cstring>
#include <string>

namespace orvane {

namespace {

constexpr const char kJobProxy[] = "orvane/qsf/controller/event/proxy/JobProxy";
constexpr const char kJob[] = "orvane/qsf/controller/event/job/Job";
constexpr const char kJobState[] = "orvane/qsf/controller/event/job/JobState";
constexpr const char kJobStateSignature[] = "Lorvane/qsf/controller/event/job/JobState;";

// Which JobState constant a state reports. The end status matters only for the end of a job; kinds and end
// statuses not listed send nothing.
struct state_row {
    dev_ulong kind;
    bool any_status;
    dev_ulong end_status;
    const char* constant;
};
constexpr state_row kStates[] = {
    {XSI_AIS_JOB_STATE_START, true, 0, "START"},
    {XSI_AIS_JOB_STATE_END, false, XSI_AIS_JOB_RESULT_COMPLETE, "COMPLETE"},
    {XSI_AIS_JOB_STATE_END, false, XSI_AIS_JOB_RESULT_CANCEL, "CANCEL"},
    {XSI_AIS_JOB_STATE_END, false, XSI_AIS_JOB_RESULT_ERROR, "ERROR"},
    {XSI_AIS_JOB_STATE_SCAN_END, true, 0, "SCAN_COMPLETE"},
};

// A value of the platform's unsigned 32 bits as Java's long: zero-extended, never negative.
jlong unsigned_long(unsigned int value) { return static_cast<jlong>(static_cast<uint32_t>(value)); }

// A lookup or creation of a state change failed: its error is printed and cleared, and the event answered
// with the failure code (the scope then detaches the thread).
PLAT_RESULT lookup_failed(JNIEnv* env) {
    drop_exception(env);
    return qsf_fnd_job_observer::kFailure;
}

}  // namespace

qsf_fnd_job_observer::qsf_fnd_job_observer() = default;

qsf_fnd_job_observer::~qsf_fnd_job_observer() {
    release_classes(jvm_, {&jcls_job_proxy_, &jcls_job_, &jcls_job_state_});
}

jint qsf_fnd_job_observer::init() {
    // Classes, then the proxy's methods; the first one missing ends the lookups.
    return init_identifiers(jvm_, {{&jcls_job_proxy_, kJobProxy}, {&jcls_job_, kJob}, {&jcls_job_state_, kJobState}},
                            {
                                {&mid_fire_job_state_changed_, "fireJobStateChangedEvent",
                                 "(Lorvane/qsf/controller/event/job/Job;)V"},
                                {&mid_fire_scan_count_, "fireScanCountEvent", "(JJ)V"},
                                {&mid_fire_start_prohibition_, "fireStartProhibitionEvent", "(J)V"},
                                {&mid_fire_comb_constraint_, "fireCombConstraintEvent", "(J)V"},
                                {&mid_fire_panel_message_update_, "firePanelMessageUpdateEvent", "(J)V"},
                            });
}

const char* qsf_fnd_job_observer::state_constant(dev_ulong kind, dev_ulong end_status) {
    for (const state_row& row : kStates) {
        if (row.kind == kind && (row.any_status || row.end_status == end_status)) return row.constant;
    }
    return nullptr;
}

PLAT_RESULT qsf_fnd_job_observer::notify_job_state_changed(XSI_AIS_JOB_STATE state) {
    event_attach scope(jvm_);
    if (!scope || jcls_job_proxy_ == nullptr || mid_fire_job_state_changed_ == nullptr) return kFailure;
    const char* constant = state_constant(state.state, state.result);
    // A state without a constant sends nothing and is handled all the same.
    if (constant == nullptr) return PLAT_OK;
    return deliver_state(scope.env(), state, constant);
}

PLAT_RESULT qsf_fnd_job_observer::deliver_state(JNIEnv* env, const XSI_AIS_JOB_STATE& state, const char* constant) {
    jfieldID field = env->GetStaticFieldID(jcls_job_state_, constant, kJobStateSignature);
    if (field == nullptr) return lookup_failed(env);
    jobject job_state = env->GetStaticObjectField(jcls_job_state_, field);
    if (job_state == nullptr) return lookup_failed(env);
    jmethodID ctor = env->GetMethodID(jcls_job_, "<init>", "()V");
    if (ctor == nullptr) return lookup_failed(env);
    jobject job = env->NewObject(jcls_job_, ctor);
    if (job == nullptr) return lookup_failed(env);

    // The user name ends at its terminating zero, and never past its field.
    char name[sizeof state.user_name + 1] = {};
    std::memcpy(name, state.user_name, sizeof state.user_name);
    jstring user_name = nullptr;

    struct setter {
        const char* name;
        const char* signature;
        jvalue value;
        bool text;
    };
    setter setters[] = {
        {"setJobid", "(I)V", {}, false},
        {"setState", "(Lorvane/qsf/controller/event/job/JobState;)V", {}, false},
        {"setJobMode", "(I)V", {}, false},
        {"setUserName", "(Ljava/lang/String;)V", {}, true},
        {"setIndev", "(I)V", {}, false},
        {"setOutdev", "(I)V", {}, false},
    };
    setters[0].value.i = static_cast<jint>(state.user_job_id);
    setters[1].value.l = job_state;
    setters[2].value.i = static_cast<jint>(state.job_mode);
    setters[4].value.i = static_cast<jint>(state.in_dev);
    setters[5].value.i = static_cast<jint>(state.out_dev);
    for (setter& s : setters) {
        jmethodID method = env->GetMethodID(jcls_job_, s.name, s.signature);
        if (method == nullptr) return lookup_failed(env);
        if (s.text) {
            user_name = ::orvane::jni::new_string(env, name);
            if (user_name == nullptr) return lookup_failed(env);
            s.value.l = user_name;
        }
        env->CallVoidMethodA(job, method, &s.value);
        // A setter that throws is printed and dropped, so that the event still reaches the next call with a
        // clean environment.
        drop_exception(env);
    }

    env->CallStaticVoidMethod(jcls_job_proxy_, mid_fire_job_state_changed_, job);
    env->DeleteLocalRef(job_state);
    env->DeleteLocalRef(job);
    env->DeleteLocalRef(user_name);
    return PLAT_OK;
}

PLAT_RESULT qsf_fnd_job_observer::notify_scan_count(unsigned int count_1, unsigned int count_2) {
    return fire_static(jvm_, kFailure, jcls_job_proxy_, mid_fire_scan_count_, unsigned_long(count_1),
                       unsigned_long(count_2));
}

PLAT_RESULT qsf_fnd_job_observer::fire_value(jmethodID method, unsigned int value) {
    return fire_static(jvm_, kFailure, jcls_job_proxy_, method, unsigned_long(value));
}

PLAT_RESULT qsf_fnd_job_observer::notify_start_phb(unsigned int value) {
    return fire_value(mid_fire_start_prohibition_, value);
}

PLAT_RESULT qsf_fnd_job_observer::notify_disable_info(unsigned int value) {
    return fire_value(mid_fire_comb_constraint_, value);
}

PLAT_RESULT qsf_fnd_job_observer::notify_main_message(unsigned int value) {
    return fire_value(mid_fire_panel_message_update_, value);
}

PLAT_RESULT qsf_fnd_job_observer::notify_phb_info(unsigned int, XSI_AIS_PHB_INFO&) { return PLAT_OK; }

PLAT_RESULT qsf_fnd_job_observer::notify_message_info(unsigned int, XSI_AIS_PHB_GET_MESSAGE&) { return PLAT_OK; }

}  // namespace orvane
