// The application operation observer: receives the application-management service's requests (run an
// application, terminate it, open or close its window, basis control, and whether an application may be
// run) on the service's IPC thread and hands each to Java through the static methods of
// orvane.qsf.controller.event.proxy.AppOperationProxy.
//
// Run and close window are fired and forgotten; terminate, open window, basis control and the run permission
// wait for Java's boolean answer. Where the service waits for an answer the observer returns it (basis
// control, run permission) or sends it through xamf_amo_proxy (run, terminate, open, close).
//
// The observer follows the event observers' discipline (event/observer_support.h): identifiers looked up once
// in init(), the thread held attached for one request, no environment kept, and every request that cannot
// reach Java (a method init() did not find, a thread that cannot be attached) answered as failed.
#ifndef JBRG_EVENT_XAMF_AMO_APP_OPERATION_OBSERVER_H
#define JBRG_EVENT_XAMF_AMO_APP_OPERATION_OBSERVER_H

#include <jni.h>

#include "xam_ads.h"

namespace orvane {

// One row of the basis-control conversion: the service's control and the Java event code for it.
struct XAM_AMO_APP_OPE_OBS_CONV_TABLE {
    XAM_ADS_BASIS_CONTROL ads;
    int amo;
};

class xamf_amo_app_operation_observer : public xam_ads_app_operation_observer {
public:
    // Java event codes.
    static constexpr int kEventRunApp = 0;
    static constexpr int kEventTerminateApp = 1;
    static constexpr int kEventOpenWindow = 2;
    static constexpr int kEventCloseWindow = 3;
    static constexpr int kEventRunPermission = 10;

    // Basis control 0..5 becomes Java event 4..9; the control is the row.
    static const XAM_AMO_APP_OPE_OBS_CONV_TABLE s_conv_table[6];

    xamf_amo_app_operation_observer();
    // Deletes the class reference through the destroying thread's own environment.
    ~xamf_amo_app_operation_observer() override;

    // Finds the process's VM and, on an attached thread, the Java proxy class and its three methods.
    // JNI_GetCreatedJavaVMs' own failure is returned as it is; 0 when the thread cannot be attached;
    // otherwise the result of detaching.
    int init();

    void notify_run_app(const char* app_id) override;
    void notify_terminate_app(const char* app_id) override;
    void notify_open_window(const char* app_id) override;
    void notify_close_window(const char* app_id) override;
    PLAT_RESULT notify_basis_control(XAM_ADS_BASIS_CONTROL control) override;
    PLAT_RESULT is_enable_run_app() override;

protected:
    // Filled by init().
    JavaVM* jvm_ = nullptr;
    jclass jcls_proxy_ = nullptr;
    jmethodID mid_fire_app_operation_ = nullptr;       // (ILjava/lang/String;)V
    jmethodID mid_fire_sync_platform_ = nullptr;       // (I)Z
    jmethodID mid_fire_sync_app_operation_ = nullptr;  // (ILjava/lang/String;)Z
};

}  // namespace orvane

#endif  // JBRG_EVENT_XAMF_AMO_APP_OPERATION_OBSERVER_H
