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

// A Java setter or event method may throw; the exception is printed and dropped so that the event still
// reaches the next call with a clean environment.
void drop_thrown(JNIEnv* env) {
    if (env->ExceptionCheck()) {
        env->ExceptionDescribe();
        env->ExceptionClear();
    }
}

}  // namespace

qsf_fnd_job_observer::qsf_fnd_job_observer() = default;

qsf_fnd_job_observer::~qsf_fnd_job_observer() {
    // The environment of the last attach belongs to the platform thread of the last event; the class
    // references are deleted through the destroying thread's own environment instead.
    release_classes(m_jvm, {&m_jcls_job_proxy, &m_jcls_job, &m_jcls_job_state});
}

jint qsf_fnd_job_observer::init() {
    jsize count = 0;
    jint found = JNI_GetCreatedJavaVMs(&m_jvm, 1, &count);
    if (found != JNI_OK) return found;
    if (!thread_attach()) return 0;

    // Classes, then the proxy's methods; the first one missing ends the lookups.
    look_up_chain(m_env, {{&m_jcls_job_proxy, kJobProxy}, {&m_jcls_job, kJob}, {&m_jcls_job_state, kJobState}},
                  {
                      {&m_mid_fire_job_state_changed, "fireJobStateChangedEvent",
                       "(Lorvane/qsf/controller/event/job/Job;)V"},
                      {&m_mid_fire_scan_count, "fireScanCountEvent", "(JJ)V"},
                      {&m_mid_fire_start_prohibition, "fireStartProhibitionEvent", "(J)V"},
                      {&m_mid_fire_comb_constraint, "fireCombConstraintEvent", "(J)V"},
                      {&m_mid_fire_panel_message_update, "firePanelMessageUpdateEvent", "(J)V"},
                  });
    return thread_detach();
}

bool qsf_fnd_job_observer::thread_attach() {
    // Without a VM (init never ran, or found none) the thread cannot be attached.
    if (m_jvm == nullptr) return false;
    return m_jvm->AttachCurrentThread(reinterpret_cast<void**>(&m_env), nullptr) == JNI_OK;
}

jint qsf_fnd_job_observer::thread_detach() {
    if (m_jvm == nullptr) return JNI_ERR;
    return m_jvm->DetachCurrentThread();
}

const char* qsf_fnd_job_observer::state_constant(dev_ulong kind, dev_ulong end_status) {
    for (const state_row& row : kStates) {
        if (row.kind == kind && (row.any_status || row.end_status == end_status)) return row.constant;
    }
    return nullptr;
}

PLAT_RESULT qsf_fnd_job_observer::lookup_failed() {
    m_env->ExceptionDescribe();
    m_env->ExceptionClear();
    thread_detach();
    return kFailure;
}

PLAT_RESULT qsf_fnd_job_observer::notify_job_state_changed(XSI_AIS_JOB_STATE state) {
    if (m_jcls_job_proxy == nullptr || m_mid_fire_job_state_changed == nullptr) return kFailure;
    if (!thread_attach()) return kFailure;
    const char* constant = state_constant(state.state, state.result);
    if (constant == nullptr) {
        thread_detach();
        return PLAT_OK;
    }

    jfieldID field = m_env->GetStaticFieldID(m_jcls_job_state, constant, kJobStateSignature);
    if (field == nullptr) return lookup_failed();
    jobject job_state = m_env->GetStaticObjectField(m_jcls_job_state, field);
    if (job_state == nullptr) return lookup_failed();
    jmethodID ctor = m_env->GetMethodID(m_jcls_job, "<init>", "()V");
    if (ctor == nullptr) return lookup_failed();
    jobject job = m_env->NewObject(m_jcls_job, ctor);
    if (job == nullptr) return lookup_failed();

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
        jmethodID method = m_env->GetMethodID(m_jcls_job, s.name, s.signature);
        if (method == nullptr) return lookup_failed();
        if (s.text) {
            user_name = ::orvane::jni::new_string(m_env, name);
            if (user_name == nullptr) return lookup_failed();
            s.value.l = user_name;
        }
        m_env->CallVoidMethodA(job, method, &s.value);
        drop_thrown(m_env);
    }

    m_env->CallStaticVoidMethod(m_jcls_job_proxy, m_mid_fire_job_state_changed, job);
    m_env->DeleteLocalRef(job_state);
    m_env->DeleteLocalRef(job);
    m_env->DeleteLocalRef(user_name);
    thread_detach();
    return PLAT_OK;
}

PLAT_RESULT qsf_fnd_job_observer::notify_scan_count(unsigned int count_1, unsigned int count_2) {
    // An init() that did not find the proxy or its method left nothing to call: the event is answered with
    // the failure code rather than calling through a null identifier.
    if (m_jcls_job_proxy == nullptr || m_mid_fire_scan_count == nullptr) return kFailure;
    if (!thread_attach()) return kFailure;
    m_env->CallStaticVoidMethod(m_jcls_job_proxy, m_mid_fire_scan_count, unsigned_long(count_1),
                                unsigned_long(count_2));
    thread_detach();
    return PLAT_OK;
}

PLAT_RESULT qsf_fnd_job_observer::fire_value(jmethodID method, unsigned int value) {
    if (m_jcls_job_proxy == nullptr || method == nullptr) return kFailure;
    if (!thread_attach()) return kFailure;
    m_env->CallStaticVoidMethod(m_jcls_job_proxy, method, unsigned_long(value));
    thread_detach();
    return PLAT_OK;
}

PLAT_RESULT qsf_fnd_job_observer::notify_start_phb(unsigned int value) {
    return fire_value(m_mid_fire_start_prohibition, value);
}

PLAT_RESULT qsf_fnd_job_observer::notify_disable_info(unsigned int value) {
    return fire_value(m_mid_fire_comb_constraint, value);
}

PLAT_RESULT qsf_fnd_job_observer::notify_main_message(unsigned int value) {
    return fire_value(m_mid_fire_panel_message_update, value);
}

PLAT_RESULT qsf_fnd_job_observer::notify_phb_info(unsigned int, XSI_AIS_PHB_INFO&) { return PLAT_OK; }

PLAT_RESULT qsf_fnd_job_observer::notify_message_info(unsigned int, XSI_AIS_PHB_GET_MESSAGE&) { return PLAT_OK; }

}  // namespace orvane
