// The job information service's events, forwarded to Java.
//
// A printed, scanned or sent page, an updated job log entry and the start of an interpreter (print
// language) job each become one Java information object of orvane.qsf.controller.event.job, made with its
// no-argument constructor, filled through its setters and handed to a static method of
// orvane.qsf.controller.event.proxy.JobInfoProxy. The three page kinds share firePageEvent(Object); Java
// tells them apart by class.
//
// Every failure answers the platform 0xC1020001, with nothing traced: a class or method init() did not
// find, a thread that cannot be attached, an object that cannot be built. A failed construction prints and
// clears the Java exception; a missing setter leaves it pending as the thread detaches, and leaves the
// half-filled object to the detach as well. That difference is the observer's established behaviour.
#ifndef JBRG_EVENT_QSF_FND_JOBINFO_OBSERVER_H
#define JBRG_EVENT_QSF_FND_JOBINFO_OBSERVER_H

#include <jni.h>

#include <cstddef>

#include "xsi_ais_jobinfo.h"

namespace orvane {

class qsf_fnd_jobinfo_observer : public xsi_ais_jobinfo_observer {
public:
    static constexpr PLAT_RESULT kFailure = PLAT_CODE(0xC1020001);

    qsf_fnd_jobinfo_observer();
    // Deletes the class references through the destroying thread's own environment.
    ~qsf_fnd_jobinfo_observer() override;

    // As the job observer's: the VM, then (attached) the classes and the proxy's methods, the first one
    // missing ending the lookups. Answers a failure of JNI_GetCreatedJavaVMs as it is, 0 when the thread
    // cannot be attached, else the detach's result.
    jint init();

    PLAT_RESULT notify_job_update_log(const XSI_AIS_EVENT_JOB_UPDATE_LOG& event) override;
    PLAT_RESULT notify_print_page_info(const XSI_AIS_EVENT_PRINT_PAGE& event) override;
    PLAT_RESULT notify_scan_page_info(const XSI_AIS_EVENT_SCAN_PAGE& event) override;
    PLAT_RESULT notify_fax_send_page_info(const XSI_AIS_EVENT_SEND_PAGE& event) override;
    // The record's sys_info_user_job_id is not passed on. A null job name delivers nothing.
    PLAT_RESULT notify_renint_start_info(const XSI_AIS_EVENT_RENINT_START& event, const char* jobName) override;

protected:
    // Filled by init(); derived observers may substitute the Java classes.
    JavaVM* jvm_ = nullptr;
    jclass jcls_jobinfo_proxy_ = nullptr;
    jclass jcls_print_page_info_ = nullptr;
    jclass jcls_scan_page_info_ = nullptr;
    jclass jcls_fax_send_page_info_ = nullptr;
    jclass jcls_job_log_info_ = nullptr;
    jclass jcls_interpreter_info_ = nullptr;
    jmethodID mid_fire_page_event_ = nullptr;
    jmethodID mid_fire_job_log_event_ = nullptr;
    jmethodID mid_fire_interpreter_event_ = nullptr;

private:
    struct setter {
        const char* name;
        char kind;  // 'J': an unsigned 32-bit value, zero-extended; 'I': a signed one
        int64_t value;
    };
    // Builds the object of `cls` through `setters` (then, when `with_name`, setJobName with `job_name`) and
    // hands it to `fire`, on a thread attached for the event.
    PLAT_RESULT deliver(jclass cls, jmethodID fire, const setter* setters, std::size_t count, bool with_name,
                        const char* job_name);
};

}  // namespace orvane

#endif  // JBRG_EVENT_QSF_FND_JOBINFO_OBSERVER_H
