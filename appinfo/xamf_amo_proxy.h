// The application management proxy: the one entry through which Java lists the device's installed
// applications, reads one application's details and libraries, starts and stops applications, answers the
// application-management service's requests, reports the state of the application platform's base and
// registers configuration URLs.
//
// A process-wide singleton, created on first use under the platform's lock and never deleted. Every
// operation reaches the service through xam_ads_facade::xam_ads_get_instance() and answers a small result
// (0 success, 1 failure, 3 unknown application); nothing throws.
#ifndef JBRG_APPINFO_XAMF_AMO_PROXY_H
#define JBRG_APPINFO_XAMF_AMO_PROXY_H

#include <jni.h>

#include <atomic>

#include <cstdint>
#include <string>

#include "core/jni_cache.h"
#include "osw_sync.h"
#include "xam_ads.h"

namespace orvane {

// The Java side's answer to one of the service's requests.
enum XAMF_AMO_RETCODE : int32_t {
    XAMF_AMO_RET_OK = 0,
    XAMF_AMO_RET_ERR = 1,
    XAMF_AMO_RET_STATE = 2,       // not possible in the application's state
    XAMF_AMO_RET_NO_APP = 3       // no such application
};

// The state of the application platform's base as Java reports it; only READY tells the service it is ready.
enum XAMF_AMO_OVPL_BASIS_STATE : int32_t {
    XAMF_AMO_OVPL_BASIS_STOPPED = 0,
    XAMF_AMO_OVPL_BASIS_STARTING = 1,
    XAMF_AMO_OVPL_BASIS_READY = 2
};

// One application's details as Java reads them.
struct XAMF_AMO_APP_DETAIL_INFO {
    std::string app_id;
    std::string app_name;
    std::string button_label;
    std::string vendor_name;
    int category = 0;
    std::string icon_path;
    int execution_status = 0;     // 1 stopped, 2 running, 3 changing
    int installed_app_area = 0;   // 1..5 for the service's areas 0..4, 0 for any other
    std::string installed_app_path;
    std::string top_url;
    std::string app_file;
    std::string login_url;
    std::string pc_cfg_url;
    std::string menu_url;
};

class xamf_amo_proxy {
public:
    // The class declares no constructor of its own, so Java may make an instance with new_xamf_amo_proxy as
    // well as reach the process's one through xamf_amo_get_instance; the operations keep no state in the
    // instance, so both behave alike.
    xamf_amo_proxy() = default;
    virtual ~xamf_amo_proxy();

    static xamf_amo_proxy* xamf_amo_get_instance();

    // Adds one orvane.qsf.app.info.AppInfo per installed Java application to `list` (a java.util.ArrayList).
    int xamf_amo_get_application_list(jobject list, ENV_LANG_VAL lang);
    // The details of one application, texts in `lang`.
    int xamf_amo_get_application_detail_info(const char* app_id, XAMF_AMO_APP_DETAIL_INFO& info, ENV_LANG_VAL lang);
    // Stores a String[] of the application's library names into element 0 of `holder` (an Object[]).
    int xamf_amo_get_library_list(const char* app_id, jobject holder);
    int xamf_amo_start_app(const char* app_id);
    int xamf_amo_stop_app(const char* app_id);
    int xamf_amo_set_config_url(const char* app_id, const char* config_url);
    int xamf_amo_notify_run_app_result(const char* app_id, XAMF_AMO_RETCODE result);
    int xamf_amo_notify_terminate_app_result(const char* app_id, XAMF_AMO_RETCODE result);
    int xamf_amo_notify_open_window_result(const char* app_id, XAMF_AMO_RETCODE result);
    int xamf_amo_notify_close_window_result(const char* app_id, XAMF_AMO_RETCODE result);
    int xamf_amo_notify_ovpl_basis_state(XAMF_AMO_OVPL_BASIS_STATE state);

    // The service's code for a Java answer; an answer outside the table is the general failure.
    static XAM_ADS_RETCODE convert_amo_retcode(XAMF_AMO_RETCODE result);
    // The detail operation's result for a service code: 0, 3 for an unknown application, else 1.
    static int convert_retcode(dev_long code);

    // Conversion of the Java answers, in the order of their values.
    struct conv_entry {
        XAMF_AMO_RETCODE amo;
        XAM_ADS_RETCODE ads;
    };
    static const conv_entry s_conv_table[4];

    // The Java identifiers, looked up on first use and kept; a destroyed proxy releases the two class
    // references, which the next use looks up again.
    static bool set_jcls_list();
    static bool set_mid_list_add();
    static bool set_jcls_app_info();
    static bool set_mid_app_info_constructor();
    static bool set_fid_app_info_app_id();
    static bool set_fid_app_info_app_name();
    static bool set_fid_app_info_version();
    static bool set_fid_app_info_execution_status();

    static jni::class_id jcls_list;
    static jni::method_id mid_list_add;
    static jni::class_id jcls_app_info_;
    static jni::method_id mid_app_info_constructor_;
    static jni::field_id fid_app_info_app_id_;
    static jni::field_id fid_app_info_app_name_;
    static jni::field_id fid_app_info_version_;
    static jni::field_id fid_app_info_execution_status_;

private:
    xamf_amo_proxy(const xamf_amo_proxy&) = delete;
    xamf_amo_proxy& operator=(const xamf_amo_proxy&) = delete;

    int notify_result(const char* app_id, XAMF_AMO_RETCODE result,
                      PLAT_RESULT (xam_ads_facade::*send)(const char*, XAM_ADS_RETCODE));

    // Read without a lock on the fast path, so both are published with release and read with acquire: a
    // thread that sees the pointer also sees the object (or mutex) fully made.
    static std::atomic<xamf_amo_proxy*> the_instance_;
    static std::atomic<OSW_Mutex_Semaphore*> mtx_;
};

}  // namespace orvane

#endif  // JBRG_APPINFO_XAMF_AMO_PROXY_H
