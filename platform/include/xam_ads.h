/*
 * The application-management service of the device: the installed applications (their list, details and
 * libraries), starting and stopping them, the answers to the service's own requests, the state of the
 * application platform's base ("basis") and the applications' configuration URLs.
 *
 * One facade, reached through xam_ads_facade::xam_ads_get_instance(); every operation answers 0 or one of the
 * XAM_ADS_RESULT_* failure codes below. The service asks the application platform to run, terminate, open or
 * close an application through the observers registered with xam_ads_add_app_operation_observer.
 *
 * The service also keeps the soft numeric keypad's initial setting per application, which it applies when an
 * application's screen opens.
 *
 * Widths chosen by this platform (zero-terminated texts, capacity including the terminator):
 *   application id 64, name 128, version 32, button label 64, vendor 128, paths and URLs 256;
 *   a library name occupies one slot of XAM_ADS_LIB_NAME_SIZE (257) bytes in a library list.
 */
#ifndef XAM_ADS_H
#define XAM_ADS_H

#include "gen_ipc.h"
#include "plat_types.h"

#define XAM_ADS_APP_ID_SIZE 64
#define XAM_ADS_APP_NAME_SIZE 128
#define XAM_ADS_VERSION_SIZE 32
#define XAM_ADS_LABEL_SIZE 64
#define XAM_ADS_VENDOR_SIZE 128
#define XAM_ADS_PATH_SIZE 256
#define XAM_ADS_LIB_NAME_SIZE 257

/* Result codes of the service. */
typedef dev_long XAM_ADS_RETCODE;
#define XAM_ADS_RESULT_OK PLAT_CODE(0)
#define XAM_ADS_RESULT_ERR PLAT_CODE(0xC2010001)        /* general failure */
#define XAM_ADS_RESULT_PARAM PLAT_CODE(0xC2010002)      /* a null or unusable argument */
#define XAM_ADS_RESULT_NO_APP PLAT_CODE(0xC2010009)     /* no application with this id */
#define XAM_ADS_RESULT_STATE PLAT_CODE(0xC201000C)      /* not possible in the application's state */

/* Which applications a listing covers. */
typedef dev_long XAM_ADS_APP_TYPE;
#define XAM_ADS_APP_TYPE_JAVA 1   /* the Java applications of the application platform */
#define XAM_ADS_APP_TYPE_ALL 0

/* The language texts are wanted in. */
typedef dev_long ENV_LANG_VAL;
#define ENV_LANG_JAPANESE 0
#define ENV_LANG_ENGLISH 1
#define ENV_LANG_FRENCH 2
#define ENV_LANG_GERMAN 3

/* Execution state in a list record (XAM_ADS_APP_INFO). */
#define XAM_ADS_LIST_STATE_STOPPED 0
#define XAM_ADS_LIST_STATE_RUNNING 1
#define XAM_ADS_LIST_STATE_STARTING 2
#define XAM_ADS_LIST_STATE_STOPPING 3

/* Execution state in a detail record (XAM_ADS_APP_INFO_DETAIL): counted from "running", 0 is "stopped". */
#define XAM_ADS_DETAIL_STATE_STOPPED 0
#define XAM_ADS_DETAIL_STATE_RUNNING 1
#define XAM_ADS_DETAIL_STATE_CHANGING 2

/* Where an application is installed. */
#define XAM_ADS_AREA_SYSTEM 0
#define XAM_ADS_AREA_FLASH 1
#define XAM_ADS_AREA_HDD 2
#define XAM_ADS_AREA_SD 3
#define XAM_ADS_AREA_USB 4

/* The base ("basis") of the application platform and its state. */
typedef dev_long XAM_ADS_BASIS_TYPE;
#define XAM_ADS_BASIS_TYPE_JAVA 1
typedef dev_long XAM_ADS_BASIS_STATE;
#define XAM_ADS_BASIS_STATE_NOT_READY 0
#define XAM_ADS_BASIS_STATE_READY 1

/* What the service asks of the basis through notify_basis_control. */
typedef dev_long XAM_ADS_BASIS_CONTROL;
#define XAM_ADS_BASIS_CONTROL_START 0
#define XAM_ADS_BASIS_CONTROL_STOP 1
#define XAM_ADS_BASIS_CONTROL_SUSPEND 2
#define XAM_ADS_BASIS_CONTROL_RESUME 3
#define XAM_ADS_BASIS_CONTROL_RESTART 4
#define XAM_ADS_BASIS_CONTROL_SHUTDOWN 5

/* One installed application as a listing gives it. */
typedef struct {
    char app_id[XAM_ADS_APP_ID_SIZE];
    char app_name[XAM_ADS_APP_NAME_SIZE];
    char version[XAM_ADS_VERSION_SIZE];
    dev_long execution_state;      /* XAM_ADS_LIST_STATE_* */
} XAM_ADS_APP_INFO;
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO, app_id, 0);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO, app_name, 64);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO, version, 192);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO, execution_state, 224);
PLAT_ASSERT_SIZE(XAM_ADS_APP_INFO, 228);

/* Everything the service knows of one application. */
typedef struct {
    char app_id[XAM_ADS_APP_ID_SIZE];
    char app_name[XAM_ADS_APP_NAME_SIZE];
    char button_label[XAM_ADS_LABEL_SIZE];
    char vendor_name[XAM_ADS_VENDOR_SIZE];
    dev_long category;
    char icon_path[XAM_ADS_PATH_SIZE];
    dev_long execution_state;      /* XAM_ADS_DETAIL_STATE_* */
    dev_long installed_app_area;   /* XAM_ADS_AREA_* */
    char installed_app_path[XAM_ADS_PATH_SIZE];
    char top_url[XAM_ADS_PATH_SIZE];
    char app_file[XAM_ADS_PATH_SIZE];
    char login_url[XAM_ADS_PATH_SIZE];
    char pc_cfg_url[XAM_ADS_PATH_SIZE];
    char menu_url[XAM_ADS_PATH_SIZE];
} XAM_ADS_APP_INFO_DETAIL;
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, app_name, 64);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, button_label, 192);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, vendor_name, 256);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, category, 384);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, icon_path, 388);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, execution_state, 644);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, installed_app_area, 648);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, installed_app_path, 652);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, top_url, 908);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, app_file, 1164);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, login_url, 1420);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, pc_cfg_url, 1676);
PLAT_ASSERT_OFFSET(XAM_ADS_APP_INFO_DETAIL, menu_url, 1932);
PLAT_ASSERT_SIZE(XAM_ADS_APP_INFO_DETAIL, 2188);

#ifdef __cplusplus

/* Message ids of the application operation observer's IPC messages (gen_ipc_msghdr.msg_id). */
enum : dev_ulong {
    XAM_ADS_MSG_RUN_APP = 1,          /* data: the application id, zero-terminated */
    XAM_ADS_MSG_TERMINATE_APP = 2,
    XAM_ADS_MSG_OPEN_WINDOW = 3,
    XAM_ADS_MSG_CLOSE_WINDOW = 4,
    XAM_ADS_MSG_BASIS_CONTROL = 5,    /* data: one XAM_ADS_BASIS_CONTROL */
    XAM_ADS_MSG_IS_ENABLE_RUN = 6     /* no data */
};

/*
 * Receives the service's requests. Run, terminate, open window and close window are answered later through
 * the facade's xam_ads_notify_*_result; basis control and the run permission are answered by the return value
 * (0 yes / done, XAM_ADS_RESULT_ERR no / failed). The bodies of this base answer 0 and do nothing.
 */
class xam_ads_app_operation_observer : public gen_ipc_observer {
public:
    ~xam_ads_app_operation_observer() override;
    PLAT_RESULT dispatch(long kind, char* data, unsigned int size, gen_ipc_msghdr header) override;

    virtual void notify_run_app(const char* app_id);
    virtual void notify_terminate_app(const char* app_id);
    virtual void notify_open_window(const char* app_id);
    virtual void notify_close_window(const char* app_id);
    virtual PLAT_RESULT notify_basis_control(XAM_ADS_BASIS_CONTROL control);
    virtual PLAT_RESULT is_enable_run_app();
};

/*
 * The keypad's initial setting. Display mode 1 shows the keypad when the screen opens, 0 does not; the layout
 * is the service's own numbering (0 default, 1 compact, 2 wide), which does not follow the panel's.
 */
typedef struct {
    dev_ulong display_mode;
    dev_ulong layout;
    dev_ulong x;
    dev_ulong y;
} XAM_ADS_SOFTWARE_TENKEY_SETTING;
PLAT_ASSERT_OFFSET(XAM_ADS_SOFTWARE_TENKEY_SETTING, layout, 4);
PLAT_ASSERT_OFFSET(XAM_ADS_SOFTWARE_TENKEY_SETTING, x, 8);
PLAT_ASSERT_OFFSET(XAM_ADS_SOFTWARE_TENKEY_SETTING, y, 12);
PLAT_ASSERT_SIZE(XAM_ADS_SOFTWARE_TENKEY_SETTING, 16);

class xam_ads_facade {
public:
    static xam_ads_facade* xam_ads_get_instance();

    /* Keeps `setting` as the keypad's initial setting for application `app_id`. */
    PLAT_RESULT xam_ads_request_software_tenkey_initial_setting(const char* app_id,
                                                                const XAM_ADS_SOFTWARE_TENKEY_SETTING& setting);

    /* The number of installed applications of `type`. */
    PLAT_RESULT xam_ads_get_app_num_info(XAM_ADS_APP_TYPE type, dev_ulong* num);
    /*
     * Up to `count` records of applications of `type`, from the `start`-th on, into `list`; `*out_count` says
     * how many were written. Names in `lang`. `reserved` must be 0.
     */
    PLAT_RESULT xam_ads_get_app_list(XAM_ADS_APP_TYPE type, dev_ulong start, dev_ulong count,
                                     XAM_ADS_APP_INFO* list, dev_ulong* out_count, ENV_LANG_VAL lang,
                                     dev_ulong reserved);
    /* The details of one application, texts in the device's panel language or in `lang`. */
    PLAT_RESULT xam_ads_get_app_info_detail(const char* app_id, XAM_ADS_APP_INFO_DETAIL* detail);
    PLAT_RESULT xam_ads_get_app_info_detail(const char* app_id, XAM_ADS_APP_INFO_DETAIL* detail,
                                            ENV_LANG_VAL lang);
    /* The number of libraries of one application, and up to `num` of their names in 257-byte slots. */
    PLAT_RESULT xam_ads_get_library_num(const char* app_id, dev_ulong* num);
    PLAT_RESULT xam_ads_get_library_list(const char* app_id, dev_ulong num, char* list);

    PLAT_RESULT xam_ads_start_app(const char* app_id);
    PLAT_RESULT xam_ads_stop_app(const char* app_id);
    PLAT_RESULT xam_ads_set_config_url(const char* app_id, const char* url);

    /* The application platform's answers to the service's requests. */
    PLAT_RESULT xam_ads_notify_run_app_result(const char* app_id, XAM_ADS_RETCODE result);
    PLAT_RESULT xam_ads_notify_terminate_app_result(const char* app_id, XAM_ADS_RETCODE result);
    PLAT_RESULT xam_ads_notify_open_window_result(const char* app_id, XAM_ADS_RETCODE result);
    PLAT_RESULT xam_ads_notify_close_window_result(const char* app_id, XAM_ADS_RETCODE result);
    PLAT_RESULT xam_ads_notify_ovpl_basis_state(XAM_ADS_BASIS_TYPE type, XAM_ADS_BASIS_STATE state);

    /* Registers `observer` for the basis `type`; `id` names the registration for its removal. */
    PLAT_RESULT xam_ads_add_app_operation_observer(xam_ads_app_operation_observer* observer,
                                                   XAM_ADS_BASIS_TYPE type, dev_ulong& id);
    PLAT_RESULT xam_ads_remove_app_operation_observer(dev_ulong id);

private:
    xam_ads_facade() = default;
};

#endif /* __cplusplus */

#endif /* XAM_ADS_H */
