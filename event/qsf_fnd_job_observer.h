// The job service's events, forwarded to Java.
//
// The platform calls this observer on its own IPC thread. Each notification holds the thread attached to the
// Java VM for the event (observer_support.h), calls a static method of
// orvane.qsf.controller.event.proxy.JobProxy and lets the thread go again. A state change becomes an
// orvane.qsf.controller.event.job.Job object whose state is a JobState constant.
//
// Every notification answers the platform 0 when handled (also when the state needs no Java call) and
// 0xC1020001 when init() did not find the proxy or its method, the thread cannot be attached, or a Java
// class member needed for a state change is missing. Nothing is traced.
#ifndef JBRG_EVENT_QSF_FND_JOB_OBSERVER_H
#define JBRG_EVENT_QSF_FND_JOB_OBSERVER_H

#include <jni.h>

#include "xsi_ais_job.h"

namespace orvane {

class qsf_fnd_job_observer : public xsi_ais_job_observer {
public:
    // The answer to the platform when an event could not be delivered.
    static constexpr PLAT_RESULT kFailure = PLAT_CODE(0xC1020001);

    qsf_fnd_job_observer();
    // Deletes the class references through the destroying thread's own environment.
    ~qsf_fnd_job_observer() override;

    // Finds the process's VM, then (attached) the Java classes and the proxy's methods. A missing class or
    // method ends the lookups silently, leaving the later ones null. Answers a failure of
    // JNI_GetCreatedJavaVMs as it is, 0 when the thread cannot be attached, else the detach's result.
    jint init();

    PLAT_RESULT notify_job_state_changed(XSI_AIS_JOB_STATE state) override;
    PLAT_RESULT notify_scan_count(unsigned int count_1, unsigned int count_2) override;
    PLAT_RESULT notify_start_phb(unsigned int value) override;
    PLAT_RESULT notify_disable_info(unsigned int value) override;
    PLAT_RESULT notify_main_message(unsigned int value) override;
    // Not forwarded: answer 0.
    PLAT_RESULT notify_phb_info(unsigned int handler_id, XSI_AIS_PHB_INFO& info) override;
    PLAT_RESULT notify_message_info(unsigned int handler_id, XSI_AIS_PHB_GET_MESSAGE& message) override;

    // The name of the JobState constant for a state kind and end status; null where none is sent.
    static const char* state_constant(dev_ulong kind, dev_ulong end_status);

protected:
    // Filled by init(); derived observers may substitute the Java classes.
    JavaVM* jvm_ = nullptr;
    jclass jcls_job_proxy_ = nullptr;
    jclass jcls_job_ = nullptr;
    jclass jcls_job_state_ = nullptr;
    jmethodID mid_fire_job_state_changed_ = nullptr;
    jmethodID mid_fire_scan_count_ = nullptr;
    jmethodID mid_fire_start_prohibition_ = nullptr;
    jmethodID mid_fire_comb_constraint_ = nullptr;
    jmethodID mid_fire_panel_message_update_ = nullptr;

private:
    // One static void fire...(long) call.
    PLAT_RESULT fire_value(jmethodID method, unsigned int value);
    // A state change with its constant chosen, on the attached thread of `env`.
    PLAT_RESULT deliver_state(JNIEnv* env, const XSI_AIS_JOB_STATE& state, const char* constant);
};

}  // namespace orvane

#endif  // JBRG_EVENT_QSF_FND_JOB_OBSERVER_H
