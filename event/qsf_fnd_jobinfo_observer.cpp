#include "event/qsf_fnd_jobinfo_observer.h"

#include "core/jni_text.h"
#include "event/observer_support.h"

#include <iterator>

namespace orvane {

namespace {

// See qsf_fnd_job_observer.cpp: a throwing setter is printed and dropped.
void drop_thrown(JNIEnv* env) {
    if (env->ExceptionCheck()) {
        env->ExceptionDescribe();
        env->ExceptionClear();
    }
}

int64_t u32(uint32_t v) { return static_cast<int64_t>(v); }
int64_t s32(int32_t v) { return static_cast<int64_t>(v); }

}  // namespace

qsf_fnd_jobinfo_observer::qsf_fnd_jobinfo_observer() = default;

qsf_fnd_jobinfo_observer::~qsf_fnd_jobinfo_observer() {
    // The environment of the last attach belongs to the platform thread of the last event; the class
    // references are deleted through the destroying thread's own environment instead.
    release_classes(m_jvm, {&m_jcls_jobinfo_proxy, &m_jcls_print_page_info, &m_jcls_scan_page_info,
                            &m_jcls_fax_send_page_info, &m_jcls_job_log_info, &m_jcls_interpreter_info});
}

jint qsf_fnd_jobinfo_observer::init() {
    jsize count = 0;
    jint found = JNI_GetCreatedJavaVMs(&m_jvm, 1, &count);
    if (found != JNI_OK) return found;
    if (!thread_attach()) return 0;

    look_up_chain(m_env,
                  {
                      {&m_jcls_jobinfo_proxy, "orvane/qsf/controller/event/proxy/JobInfoProxy"},
                      {&m_jcls_print_page_info, "orvane/qsf/controller/event/job/PrintPageInfo"},
                      {&m_jcls_scan_page_info, "orvane/qsf/controller/event/job/ScanPageInfo"},
                      {&m_jcls_fax_send_page_info, "orvane/qsf/controller/event/job/FaxSendPageInfo"},
                      {&m_jcls_job_log_info, "orvane/qsf/controller/event/job/JobLogInfo"},
                      {&m_jcls_interpreter_info, "orvane/qsf/controller/event/job/InterpreterInfo"},
                  },
                  {
                      {&m_mid_fire_page_event, "firePageEvent", "(Ljava/lang/Object;)V"},
                      {&m_mid_fire_job_log_event, "fireJobLogEvent",
                       "(Lorvane/qsf/controller/event/job/JobLogInfo;)V"},
                      {&m_mid_fire_interpreter_event, "fireInterpreterEvent",
                       "(Lorvane/qsf/controller/event/job/InterpreterInfo;)V"},
                  });
    return thread_detach();
}

bool qsf_fnd_jobinfo_observer::thread_attach() {
    if (m_jvm == nullptr) return false;
    return m_jvm->AttachCurrentThread(reinterpret_cast<void**>(&m_env), nullptr) == JNI_OK;
}

jint qsf_fnd_jobinfo_observer::thread_detach() {
    if (m_jvm == nullptr) return JNI_ERR;
    return m_jvm->DetachCurrentThread();
}

PLAT_RESULT qsf_fnd_jobinfo_observer::deliver(jclass cls, jmethodID fire, const setter* setters, std::size_t count,
                                              bool with_name, const char* job_name) {
    // An init() that did not find the class or the proxy's method left nothing to call: the event is
    // answered with the failure code rather than calling through a null identifier.
    if (cls == nullptr || fire == nullptr || m_jcls_jobinfo_proxy == nullptr) return kFailure;
    if (!thread_attach()) return kFailure;
    jmethodID ctor = m_env->GetMethodID(cls, "<init>", "()V");
    jobject object = ctor != nullptr ? m_env->NewObject(cls, ctor) : nullptr;
    if (object == nullptr) {
        m_env->ExceptionDescribe();
        m_env->ExceptionClear();
        thread_detach();
        return kFailure;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const setter& s = setters[i];
        jmethodID method = m_env->GetMethodID(cls, s.name, s.kind == 'J' ? "(J)V" : "(I)V");
        // Left as it is: the lookup's exception stays pending and the object to the detach.
        if (method == nullptr) {
            thread_detach();
            return kFailure;
        }
        if (s.kind == 'J') {
            m_env->CallVoidMethod(object, method, static_cast<jlong>(s.value));
        } else {
            m_env->CallVoidMethod(object, method, static_cast<jint>(s.value));
        }
        drop_thrown(m_env);
    }
    jstring name = nullptr;
    if (with_name) {
        // A job without a name is as undeliverable as a name Java cannot hold.
        name = job_name != nullptr ? ::orvane::jni::new_string(m_env, job_name) : nullptr;
        if (name == nullptr) {
            m_env->ExceptionDescribe();
            m_env->ExceptionClear();
            thread_detach();
            return kFailure;
        }
        jmethodID method = m_env->GetMethodID(cls, "setJobName", "(Ljava/lang/String;)V");
        if (method == nullptr) {
            thread_detach();
            return kFailure;
        }
        m_env->CallVoidMethod(object, method, name);
        drop_thrown(m_env);
    }
    m_env->CallStaticVoidMethod(m_jcls_jobinfo_proxy, fire, object);
    m_env->DeleteLocalRef(object);
    if (name != nullptr) m_env->DeleteLocalRef(name);
    thread_detach();
    return PLAT_OK;
}

PLAT_RESULT qsf_fnd_jobinfo_observer::notify_print_page_info(const XSI_AIS_EVENT_PRINT_PAGE& e) {
    const setter setters[] = {
        {"setUserJobId", 'J', u32(e.user_job_id)}, {"setPageNum", 'J', u32(e.page_number)},
        {"setOutputDev", 'I', s32(e.exhaust)},     {"setInputDev", 'I', s32(e.cass)},
        {"setCustomX", 'I', s32(e.custom_x)},      {"setCustomY", 'I', s32(e.custom_y)},
        {"setPaperSize", 'I', s32(e.paper_size)},  {"setPaperType", 'I', s32(e.paper_type)},
        {"setPaperDir", 'I', s32(e.paper_dir)},    {"setPaperWeight", 'I', s32(e.paper_weight)},
        {"setDuplex", 'I', s32(e.duplex)},         {"setStaple", 'I', s32(e.staple)},
        {"setPunch", 'I', s32(e.punch)},           {"setColorMode", 'I', s32(e.color_mode)},
    };
    return deliver(m_jcls_print_page_info, m_mid_fire_page_event, setters, std::size(setters), false, nullptr);
}

PLAT_RESULT qsf_fnd_jobinfo_observer::notify_scan_page_info(const XSI_AIS_EVENT_SCAN_PAGE& e) {
    const setter setters[] = {
        {"setUserJobId", 'J', u32(e.user_job_id)},    {"setPageNum", 'J', u32(e.page_number)},
        {"setCustomX", 'I', s32(e.custom_x)},         {"setCustomY", 'I', s32(e.custom_y)},
        {"setPaperSize", 'I', s32(e.scan_paper_size)}, {"setPaperDir", 'I', s32(e.scan_paper_dir)},
        {"setDuplex", 'I', s32(e.duplex)},            {"setColorMode", 'I', s32(e.color_mono)},
        {"setResolution", 'I', s32(e.resolution)},
    };
    return deliver(m_jcls_scan_page_info, m_mid_fire_page_event, setters, std::size(setters), false, nullptr);
}

PLAT_RESULT qsf_fnd_jobinfo_observer::notify_fax_send_page_info(const XSI_AIS_EVENT_SEND_PAGE& e) {
    const setter setters[] = {{"setUserJobId", 'J', u32(e.user_job_id)}, {"setPageNum", 'J', u32(e.page_number)}};
    return deliver(m_jcls_fax_send_page_info, m_mid_fire_page_event, setters, std::size(setters), false, nullptr);
}

PLAT_RESULT qsf_fnd_jobinfo_observer::notify_job_update_log(const XSI_AIS_EVENT_JOB_UPDATE_LOG& e) {
    const setter setters[] = {{"setUserJobId", 'J', u32(e.user_job_id)}, {"setReceiptId", 'J', u32(e.receipt_id)}};
    return deliver(m_jcls_job_log_info, m_mid_fire_job_log_event, setters, std::size(setters), false, nullptr);
}

PLAT_RESULT qsf_fnd_jobinfo_observer::notify_renint_start_info(const XSI_AIS_EVENT_RENINT_START& e,
                                                               const char* jobName) {
    const setter setters[] = {
        {"setUserJobId", 'J', u32(e.user_job_id)},
        {"setNameSetting", 'I', s32(e.name_exist)},
        {"setInterfaceInfo", 'J', u32(e.rcv_if)},
    };
    return deliver(m_jcls_interpreter_info, m_mid_fire_interpreter_event, setters, std::size(setters), true, jobName);
}

}  // namespace orvane
