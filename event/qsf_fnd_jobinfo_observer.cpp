#include "event/qsf_fnd_jobinfo_observer.h"

#include "core/jni_text.h"
#include "event/observer_support.h"

#include <iterator>

namespace orvane {

namespace {

int64_t u32(uint32_t v) { return static_cast<int64_t>(v); }
int64_t s32(int32_t v) { return static_cast<int64_t>(v); }

}  // namespace

qsf_fnd_jobinfo_observer::qsf_fnd_jobinfo_observer() = default;

qsf_fnd_jobinfo_observer::~qsf_fnd_jobinfo_observer() {
    release_classes(jvm_, {&jcls_jobinfo_proxy_, &jcls_print_page_info_, &jcls_scan_page_info_,
                           &jcls_fax_send_page_info_, &jcls_job_log_info_, &jcls_interpreter_info_});
}

jint qsf_fnd_jobinfo_observer::init() {
    return init_identifiers(jvm_,
                            {
                                {&jcls_jobinfo_proxy_, "orvane/qsf/controller/event/proxy/JobInfoProxy"},
                                {&jcls_print_page_info_, "orvane/qsf/controller/event/job/PrintPageInfo"},
                                {&jcls_scan_page_info_, "orvane/qsf/controller/event/job/ScanPageInfo"},
                                {&jcls_fax_send_page_info_, "orvane/qsf/controller/event/job/FaxSendPageInfo"},
                                {&jcls_job_log_info_, "orvane/qsf/controller/event/job/JobLogInfo"},
                                {&jcls_interpreter_info_, "orvane/qsf/controller/event/job/InterpreterInfo"},
                            },
                            {
                                {&mid_fire_page_event_, "firePageEvent", "(Ljava/lang/Object;)V"},
                                {&mid_fire_job_log_event_, "fireJobLogEvent",
                                 "(Lorvane/qsf/controller/event/job/JobLogInfo;)V"},
                                {&mid_fire_interpreter_event_, "fireInterpreterEvent",
                                 "(Lorvane/qsf/controller/event/job/InterpreterInfo;)V"},
                            });
}

PLAT_RESULT qsf_fnd_jobinfo_observer::deliver(jclass cls, jmethodID fire, const setter* setters, std::size_t count,
                                              bool with_name, const char* job_name) {
    event_attach scope(jvm_);
    if (!scope || cls == nullptr || fire == nullptr || jcls_jobinfo_proxy_ == nullptr) return kFailure;
    JNIEnv* env = scope.env();
    jmethodID ctor = env->GetMethodID(cls, "<init>", "()V");
    jobject object = ctor != nullptr ? env->NewObject(cls, ctor) : nullptr;
    if (object == nullptr) {
        drop_exception(env);
        return kFailure;
    }
    for (std::size_t i = 0; i < count; ++i) {
        const setter& s = setters[i];
        jmethodID method = env->GetMethodID(cls, s.name, s.kind == 'J' ? "(J)V" : "(I)V");
        // Left as it is: the lookup's exception stays pending and the object to the end of the event.
        if (method == nullptr) return kFailure;
        if (s.kind == 'J') {
            env->CallVoidMethod(object, method, static_cast<jlong>(s.value));
        } else {
            env->CallVoidMethod(object, method, static_cast<jint>(s.value));
        }
        // A throwing setter is printed and dropped.
        drop_exception(env);
    }
    jstring name = nullptr;
    if (with_name) {
        // A job without a name is as undeliverable as a name Java cannot hold.
        name = job_name != nullptr ? ::orvane::jni::new_string(env, job_name) : nullptr;
        if (name == nullptr) {
            drop_exception(env);
            return kFailure;
        }
        jmethodID method = env->GetMethodID(cls, "setJobName", "(Ljava/lang/String;)V");
        if (method == nullptr) return kFailure;
        env->CallVoidMethod(object, method, name);
        drop_exception(env);
    }
    env->CallStaticVoidMethod(jcls_jobinfo_proxy_, fire, object);
    env->DeleteLocalRef(object);
    if (name != nullptr) env->DeleteLocalRef(name);
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
    return deliver(jcls_print_page_info_, mid_fire_page_event_, setters, std::size(setters), false, nullptr);
}

PLAT_RESULT qsf_fnd_jobinfo_observer::notify_scan_page_info(const XSI_AIS_EVENT_SCAN_PAGE& e) {
    const setter setters[] = {
        {"setUserJobId", 'J', u32(e.user_job_id)},    {"setPageNum", 'J', u32(e.page_number)},
        {"setCustomX", 'I', s32(e.custom_x)},         {"setCustomY", 'I', s32(e.custom_y)},
        {"setPaperSize", 'I', s32(e.scan_paper_size)}, {"setPaperDir", 'I', s32(e.scan_paper_dir)},
        {"setDuplex", 'I', s32(e.duplex)},            {"setColorMode", 'I', s32(e.color_mono)},
        {"setResolution", 'I', s32(e.resolution)},
    };
    return deliver(jcls_scan_page_info_, mid_fire_page_event_, setters, std::size(setters), false, nullptr);
}

PLAT_RESULT qsf_fnd_jobinfo_observer::notify_fax_send_page_info(const XSI_AIS_EVENT_SEND_PAGE& e) {
    const setter setters[] = {{"setUserJobId", 'J', u32(e.user_job_id)}, {"setPageNum", 'J', u32(e.page_number)}};
    return deliver(jcls_fax_send_page_info_, mid_fire_page_event_, setters, std::size(setters), false, nullptr);
}

PLAT_RESULT qsf_fnd_jobinfo_observer::notify_job_update_log(const XSI_AIS_EVENT_JOB_UPDATE_LOG& e) {
    const setter setters[] = {{"setUserJobId", 'J', u32(e.user_job_id)}, {"setReceiptId", 'J', u32(e.receipt_id)}};
    return deliver(jcls_job_log_info_, mid_fire_job_log_event_, setters, std::size(setters), false, nullptr);
}

PLAT_RESULT qsf_fnd_jobinfo_observer::notify_renint_start_info(const XSI_AIS_EVENT_RENINT_START& e,
                                                               const char* jobName) {
    const setter setters[] = {
        {"setUserJobId", 'J', u32(e.user_job_id)},
        {"setNameSetting", 'I', s32(e.name_exist)},
        {"setInterfaceInfo", 'J', u32(e.rcv_if)},
    };
    return deliver(jcls_interpreter_info_, mid_fire_interpreter_event_, setters, std::size(setters), true, jobName);
}

}  // namespace orvane
