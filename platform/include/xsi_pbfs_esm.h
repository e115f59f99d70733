/*
 * The status monitor of the basic-function services (energy saving and machine status, "esm").
 *
 * The monitor tells its observers what happens to the machine as a whole: a user logged out, the connection
 * to the engine broke, the machine went to sleep or woke up, a USB memory was plugged or pulled, toner or
 * paper runs low, a cover opened, a coin vendor or key device changed state, a resident application changed
 * state. An observer derives from xsi_pbfs_esm_observer, overrides the notifications it cares about and is
 * registered with xsi_pbfs_esm_facade::xsi_pbfs_esm_add_observer. The monitor calls the notifications on its
 * own IPC thread; each answers the monitor with a result code (0 for success).
 *
 * The same facade takes the applications' energy-saving requests. The machine is awake, in low power, asleep
 * or in deep sleep. A request to save energy is granted only while no job runs and nobody prohibits energy
 * saving; deep sleep is refused while an application suspends it. A granted request changes the state and
 * the monitor tells its observers (notify_sleep) before it answers. Prohibition holds until it is lifted;
 * each application's deep-sleep suspension holds until that application resumes it.
 */
#ifndef XSI_PBFS_ESM_H
#define XSI_PBFS_ESM_H

#include "gen_ipc.h"
#include "plat_types.h"

/* Result codes of the status monitor. */
#define XSI_PBFS_ESM_OK PLAT_CODE(0)
#define XSI_PBFS_ESM_NG PLAT_CODE(0xC1010D01)           /* general failure: null or unknown observer */
#define XSI_PBFS_ESM_BUSY PLAT_CODE(0xC1010D02)         /* a job runs: the machine cannot save energy now */
#define XSI_PBFS_ESM_PROHIBITED PLAT_CODE(0xC1010D03)   /* energy saving is prohibited, or deep sleep suspended */
#define XSI_PBFS_ESM_PARAM_ERROR PLAT_CODE(0xC1010D04)  /* an argument the monitor does not take */
#define XSI_PBFS_ESM_NOT_SUSPENDED PLAT_CODE(0xC1010D05) /* resume by an application that did not suspend */
#define XSI_PBFS_ESM_OBSERVER_NG PLAT_CODE(0xC1010D07)  /* an observer could not take a notification */

/* Capacity of an application id in energy-saving requests, terminating zero included. */
#define XSI_PBFS_ESM_APP_ID_SIZE 65

/* USB memory status as the module of the wrapper layer exposes it. */
typedef struct {
    uint32_t status; /* XSI_PBFS_USB_MEM_* */
} XSI_PBFS_EVENT_USB_MEM_STATUS;
PLAT_ASSERT_SIZE(XSI_PBFS_EVENT_USB_MEM_STATUS, 4);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_USB_MEM_STATUS, status, 0);

/* Values of a USB memory status. */
#define XSI_PBFS_USB_MEM_REMOVED 0u
#define XSI_PBFS_USB_MEM_INSERTED 1u
#define XSI_PBFS_USB_MEM_MOUNTED 2u
#define XSI_PBFS_USB_MEM_ERROR 3u

/*
 * The messages of the status monitor, as the IPC thread hands them to xsi_pbfs_esm_observer::dispatch. The
 * message id (gen_ipc_msghdr.msg_id) names the notification; the message data are the notification's
 * arguments in order, each widened to one 32-bit word (dev_ulong), so a message carries 0, 1 or 2 words.
 */
enum {
    XSI_PBFS_ESM_MSG_REQUEST_ACTIVATE = 1,      /* scenario, parameter */
    XSI_PBFS_ESM_MSG_LOGOUT = 2,                /* user id */
    XSI_PBFS_ESM_MSG_CONNECTION_ERROR = 3,      /* XSI_PBFS_EVENT_CONNECTION_ERROR */
    XSI_PBFS_ESM_MSG_SLEEP = 4,                 /* XSI_PBFS_EVENT_SLEEP_STATE */
    XSI_PBFS_ESM_MSG_USB_MEMORY = 5,            /* status */
    XSI_PBFS_ESM_MSG_TONER = 6,                 /* two toner values */
    XSI_PBFS_ESM_MSG_WASTE_TONER = 7,           /* status */
    XSI_PBFS_ESM_MSG_PAPER_REST = 8,            /* paper source, level */
    XSI_PBFS_ESM_MSG_COVER = 9,                 /* cover bits */
    XSI_PBFS_ESM_MSG_DP_COVER = 10,             /* document processor cover */
    XSI_PBFS_ESM_MSG_JAM = 11,                  /* jam bits */
    XSI_PBFS_ESM_MSG_DP_JAM = 12,               /* document processor jam */
    XSI_PBFS_ESM_MSG_COIN_VENDER = 13,          /* status */
    XSI_PBFS_ESM_MSG_KEY_CARD = 14,             /* status */
    XSI_PBFS_ESM_MSG_KEY_COUNTER = 15,          /* status */
    XSI_PBFS_ESM_MSG_RESIDENT_APP_STATE = 16    /* XSI_PBFS_ESM_REQ_APP_STATE */
};

#ifdef __cplusplus

/* The scenario a request_activate asks an observer to start. */
enum XSI_PBFS_KIND_OF_SCENARIO : int32_t {
    XSI_PBFS_SCENARIO_NONE = 0,
    XSI_PBFS_SCENARIO_WAKE_UP = 1,
    XSI_PBFS_SCENARIO_WEEKLY_TIMER = 2,
    XSI_PBFS_SCENARIO_REMOTE = 3
};

/* What broke between the controller and the engine. */
enum XSI_PBFS_EVENT_CONNECTION_ERROR : int32_t {
    XSI_PBFS_CONNECTION_ERROR_TIMEOUT = 0,
    XSI_PBFS_CONNECTION_ERROR_DISCONNECTED = 1,
    XSI_PBFS_CONNECTION_ERROR_PROTOCOL = 2
};

/* The machine's energy-saving state after a change. */
enum XSI_PBFS_EVENT_SLEEP_STATE : int32_t {
    XSI_PBFS_SLEEP_STATE_AWAKE = 0,
    XSI_PBFS_SLEEP_STATE_LOW_POWER = 1,
    XSI_PBFS_SLEEP_STATE_SLEEP = 2,
    XSI_PBFS_SLEEP_STATE_DEEP_SLEEP = 3
};

/* The energy-saving level an application asks for. */
enum XSI_PBFS_ESM_STATUS_SLEEP : int32_t {
    XSI_PBFS_ESM_SLEEP_LOW_POWER = 1,
    XSI_PBFS_ESM_SLEEP_NORMAL = 2,
    XSI_PBFS_ESM_SLEEP_DEEP = 3
};

/* The state of the resident applications the monitor asks about. */
enum XSI_PBFS_ESM_REQ_APP_STATE : int32_t {
    XSI_PBFS_ESM_APP_STATE_IDLE = 0,
    XSI_PBFS_ESM_APP_STATE_BUSY = 1,
    XSI_PBFS_ESM_APP_STATE_SLEEP_READY = 2
};

/*
 * An observer of the status monitor. Every notification answers 0 unless overridden; the document processor
 * and jam notifications are there for observers that follow paper handling.
 */
class xsi_pbfs_esm_observer : public gen_ipc_observer {
public:
    ~xsi_pbfs_esm_observer() override;

    /* Decodes one XSI_PBFS_ESM_MSG_* message and calls its notification. */
    PLAT_RESULT dispatch(long kind, char* data, unsigned int size, gen_ipc_msghdr header) override;

    virtual PLAT_RESULT request_activate(XSI_PBFS_KIND_OF_SCENARIO scenario, unsigned int parameter);
    virtual PLAT_RESULT notify_logout(dev_ulong user_id);
    virtual PLAT_RESULT notify_pbp_connection_error(XSI_PBFS_EVENT_CONNECTION_ERROR error);
    virtual PLAT_RESULT notify_sleep(XSI_PBFS_EVENT_SLEEP_STATE state);
    virtual PLAT_RESULT notify_usb_memory_status(unsigned int status);
    virtual PLAT_RESULT notify_toner_status(unsigned char first, unsigned char second);
    virtual PLAT_RESULT notify_waste_toner_bottle_status(unsigned char status);
    virtual PLAT_RESULT notify_paper_rest_status(unsigned short source, unsigned char level);
    virtual PLAT_RESULT notify_cover_status(unsigned int status);
    virtual PLAT_RESULT notify_dp_cover_status(unsigned char status);
    virtual PLAT_RESULT notify_jam_status(unsigned int status);
    virtual PLAT_RESULT notify_dp_jam_status(unsigned char status);
    virtual PLAT_RESULT notify_coin_vender_status(unsigned int status);
    virtual PLAT_RESULT notify_key_card_status(unsigned char status);
    virtual PLAT_RESULT notify_key_counter_status(unsigned int status);
    virtual PLAT_RESULT notify_resident_app_state_changed(XSI_PBFS_ESM_REQ_APP_STATE state);
};

/* The status monitor. One instance per process. */
class xsi_pbfs_esm_facade {
public:
    static xsi_pbfs_esm_facade* xsi_pbfs_esm_get_instance();

    /* Registers an observer; XSI_PBFS_ESM_NG for a null one or one registered already. */
    PLAT_RESULT xsi_pbfs_esm_add_observer(xsi_pbfs_esm_observer* observer);
    /* Unregisters an observer; XSI_PBFS_ESM_NG for one not registered. */
    PLAT_RESULT xsi_pbfs_esm_remove_observer(xsi_pbfs_esm_observer* observer);

    /*
     * Asks the machine to go to `level` now. BUSY while a job runs, PROHIBITED while energy saving is
     * prohibited (or, for deep sleep, suspended), PARAM_ERROR for a level outside XSI_PBFS_ESM_STATUS_SLEEP.
     * Granted: the state changes and the observers hear notify_sleep with the new state.
     */
    PLAT_RESULT xsi_pbfs_esm_request_energy_saving_mode(XSI_PBFS_ESM_STATUS_SLEEP level);
    /* true prohibits energy saving (the machine wakes if it sleeps), false lifts the prohibition. */
    PLAT_RESULT xsi_pbfs_esm_request_save_mode_prohibition(bool prohibit);
    /* An application keeps the machine out of deep sleep until it resumes it; PARAM_ERROR for a null id or
     * one of XSI_PBFS_ESM_APP_ID_SIZE bytes or more. A second suspension by the same application is harmless. */
    PLAT_RESULT xsi_pbfs_esm_suspend_deep_sleep(const char* app_id);
    /* NOT_SUSPENDED for an application that holds no suspension. */
    PLAT_RESULT xsi_pbfs_esm_resume_deep_sleep(const char* app_id);
    /*
     * The time (seconds since 1970, device time) at which the machine wakes for the application; 0 cancels
     * it. PARAM_ERROR for a time that is not a date on the device (past 2^31 - 1) or is not in the future.
     */
    PLAT_RESULT xsi_pbfs_esm_set_wakeup_date(const char* app_id, dev_ulong date);

private:
    xsi_pbfs_esm_facade() = default;
};

#endif /* __cplusplus */

#endif /* XSI_PBFS_ESM_H */
