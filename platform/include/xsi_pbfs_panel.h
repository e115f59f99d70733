/*
 * The operation panel of the basic-function services.
 *
 * One facade, reached through xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance(). Applications tell the panel
 * that their view changed, raise panel events, switch the Start key LED, sound the buzzer, ask for screens,
 * announce menu applications, put texts on the soft keyboard and show, hide and query the soft numeric
 * keypad. The panel reports back to its observers (xsi_pbfs_panel_observer): key events, the automatic panel
 * reset, display and operation data of panel screens, and application start and stop.
 *
 * Every operation answers 0 or one of the XSI_PBFS_PANEL_* failure codes below. Application ids and texts
 * travel as NUL-terminated character strings.
 *
 * Numeric values of the enumerations are the panel's own; callers pass them through. Record layouts are
 * fixed (they cross process boundaries): 32-bit integers, texts of fixed capacity (terminating zero
 * included), dates and times as texts of digits, explicit padding to 4-byte boundaries; every record's size
 * and offsets are asserted below, and hold alike on the device's 32-bit ARM and on x86-64.
 */
#ifndef XSI_PBFS_PANEL_H
#define XSI_PBFS_PANEL_H

#include "gen_ipc.h"
#include "plat_types.h"

/* ---- Result codes ------------------------------------------------------------------------------------- */

#define XSI_PBFS_PANEL_OK PLAT_CODE(0)
#define XSI_PBFS_PANEL_NG PLAT_CODE(0xC1010701)              /* general failure */
#define XSI_PBFS_PANEL_PARAM_ERROR PLAT_CODE(0xC1010702)     /* an argument the panel does not take */
#define XSI_PBFS_PANEL_DUPL_OBSERVER PLAT_CODE(0xC1010703)   /* the observer is registered already */
#define XSI_PBFS_PANEL_NO_OBSERVER PLAT_CODE(0xC1010704)     /* the observer is not registered */
#define XSI_PBFS_PANEL_NOT_AVAILABLE PLAT_CODE(0xC1010705)   /* the screen or keypad cannot be shown now */
#define XSI_PBFS_PANEL_IPC_ERROR PLAT_CODE(0xC1010706)       /* the message could not be delivered */

/* ---- Capacities of the screen records (texts: terminating zero included) and their entry counts ---------- */

#define XSI_PBFS_PANEL_DISPLAY_COMMON_TITLE_SIZE 33          /* a screen's title */
#define XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_SIZE 3            /* items of one screen's common area */
#define XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_TEXT_SIZE 17      /* the text of a common item */
#define XSI_PBFS_PANEL_DISPLAY_MESSAGE_SIZE 65               /* a screen's or an input field's message */
#define XSI_PBFS_PANEL_INPUT_TEXT_LINE_SIZE 3                /* input fields of one input screen */
#define XSI_PBFS_PANEL_INPUT_TEXT_TEXT_SIZE 65               /* the text of an input field */
#define XSI_PBFS_PANEL_LIST_ITEM_SIZE 30                     /* entries of one list screen */
#define XSI_PBFS_PANEL_DISPLAY_LIST_ITEM_TEXT_SIZE 33        /* the text of a list entry */
#define XSI_PBFS_PANEL_DATE_TIME_YEAR_SIZE 5                 /* date and time fields, as digits */
#define XSI_PBFS_PANEL_DATE_TIME_MONTH_SIZE 3
#define XSI_PBFS_PANEL_DATE_TIME_DAY_SIZE 3
#define XSI_PBFS_PANEL_DATE_TIME_HOUR_SIZE 3
#define XSI_PBFS_PANEL_DATE_TIME_MINUTES_SIZE 3
#define XSI_PBFS_PANEL_SOFT_KEY_DISPLAY_TEXT_MAX_SIZE 385    /* a text put on the soft keyboard */

#define XSI_PBFS_PANEL_APP_ID_SIZE 65                        /* application ids the panel keeps */

#ifdef __cplusplus

/* ---- Enumerations ------------------------------------------------------------------------------------- */

/* What changed in an application's view. */
enum XSI_PBFS_PANEL_VIEW_UPDATE_TYPE : int32_t {
    XSI_PBFS_PANEL_VIEW_UPDATE_SHOW = 0,
    XSI_PBFS_PANEL_VIEW_UPDATE_HIDE = 1,
    XSI_PBFS_PANEL_VIEW_UPDATE_FOREGROUND = 2,
    XSI_PBFS_PANEL_VIEW_UPDATE_CONTENT = 3,
    XSI_PBFS_PANEL_VIEW_UPDATE_BACKGROUND = 4,
    XSI_PBFS_PANEL_VIEW_UPDATE_RESERVED = 5,   /* kept by the panel, never asked for by applications */
    XSI_PBFS_PANEL_VIEW_UPDATE_CLOSE = 6
};

/* The Start key LED. */
enum XSI_PBFS_LED_STATE : int32_t { XSI_PBFS_LED_OFF = 0, XSI_PBFS_LED_ON = 1 };

/* The buzzer sounds. */
enum XSI_PBFS_BUZZER_TYPE : int32_t {
    XSI_PBFS_BUZZER_INPUT = 0,      /* key click */
    XSI_PBFS_BUZZER_COMPLETE = 1,   /* job or operation finished */
    XSI_PBFS_BUZZER_WARNING = 2
};

/* The panel's own screens an application may ask for. */
enum XSI_PBFS_PANEL_DISPLAY_TYPE : int32_t {
    XSI_PBFS_PANEL_DISPLAY_HOME = 0,
    XSI_PBFS_PANEL_DISPLAY_COPY = 1,
    XSI_PBFS_PANEL_DISPLAY_SEND = 2,
    XSI_PBFS_PANEL_DISPLAY_BOX = 3,
    XSI_PBFS_PANEL_DISPLAY_FAX = 4,
    XSI_PBFS_PANEL_DISPLAY_STATUS = 5,
    XSI_PBFS_PANEL_DISPLAY_SYSTEM_MENU = 6,
    XSI_PBFS_PANEL_DISPLAY_LOGIN = 7
};
#define XSI_PBFS_PANEL_DISPLAY_TYPE_COUNT 8

/* How a soft keyboard text is shown. */
enum XSI_PBFS_PANEL_DISPLAY_TEXT_TYPE : int32_t {
    XSI_PBFS_PANEL_DISPLAY_TEXT_PLAIN = 0,
    XSI_PBFS_PANEL_DISPLAY_TEXT_MASKED = 1,    /* shown as asterisks (passwords) */
    XSI_PBFS_PANEL_DISPLAY_TEXT_NUMERIC = 2
};

/*
 * The panel's automatic reset timer, as an application controls it: STOP holds the timer stopped for the
 * application (the panel does not reset while any application holds it), START lets it go again, RESTART
 * lets it go and counts the reset time from now.
 */
enum XSI_PBFS_PNL_RST_TMR : int32_t {
    XSI_PBFS_PNL_RST_TMR_STOP = 0,
    XSI_PBFS_PNL_RST_TMR_START = 1,
    XSI_PBFS_PNL_RST_TMR_RESTART = 2
};

/* The request kind of xsi_pbfs_panel_request_display_soft_tenkey; what is asked is the record's display mode. */
enum XSI_PBFS_PANEL_SOFT_TENKEY_REQUEST : int32_t { XSI_PBFS_PANEL_SOFT_TENKEY_REQUEST_DISPLAY = 0 };

#endif /* __cplusplus */

/* Soft numeric keypad: display mode 1 shows it, 0 hides it; layout and position count from 0 (0..2). */
#define XSI_PBFS_PANEL_SOFT_TENKEY_HIDE 0
#define XSI_PBFS_PANEL_SOFT_TENKEY_SHOW 1
#define XSI_PBFS_PANEL_SOFT_TENKEY_LAYOUT_NUM 3
#define XSI_PBFS_PANEL_SOFT_TENKEY_POSITION_NUM 3

/* ---- The soft numeric keypad -------------------------------------------------------------------------- */

typedef struct {
    dev_ulong display_mode;   /* XSI_PBFS_PANEL_SOFT_TENKEY_SHOW / _HIDE */
    dev_ulong layout;         /* 0..2 */
    dev_ulong position;       /* 0..2 */
    uint16_t x;               /* screen position, pixels */
    uint16_t y;
} XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO, layout, 4);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO, position, 8);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO, x, 12);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO, y, 14);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO, 16);

/* ---- Panel screens an application shows: display data --------------------------------------------------- */

/* One item of a screen's common area. */
typedef struct {
    dev_ulong display_id;
    char text[XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_TEXT_SIZE];
    uint8_t pad[3];
} XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_DATA;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_DATA, text, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_DATA, 24);

typedef struct {
    dev_ulong num;            /* items of data in use */
    XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_DATA data[XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM_SIZE];
} XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM, data, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM, 76);

/* What every screen has: a title and the common items. */
typedef struct {
    char title[XSI_PBFS_PANEL_DISPLAY_COMMON_TITLE_SIZE];
    uint8_t pad[3];
    XSI_PBFS_PANEL_DISPLAY_COMMON_ITEM display_item;
} XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY, display_item, 36);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY, 112);

/* A message screen. */
typedef struct {
    XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY common_property;
    char message[XSI_PBFS_PANEL_DISPLAY_MESSAGE_SIZE];
    uint8_t pad[3];
} XSI_PBFS_PANEL_DISPLAY_TEXT;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_TEXT, message, 112);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DISPLAY_TEXT, 180);

/* The text of one input field. */
typedef struct {
    char text[XSI_PBFS_PANEL_INPUT_TEXT_TEXT_SIZE];
    uint8_t pad[3];
} XSI_PBFS_PANEL_INPUT_TEXT_DATA;
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_INPUT_TEXT_DATA, 68);

/* One input field of an input screen. */
typedef struct {
    char message[XSI_PBFS_PANEL_DISPLAY_MESSAGE_SIZE];
    uint8_t pad[3];
    dev_ulong defaults_info;                     /* 1: defaults_data is filled in */
    XSI_PBFS_PANEL_INPUT_TEXT_DATA defaults_data;
    dev_ulong phb_type;                          /* characters the field refuses */
    dev_ulong mask_disp;                         /* 1: shown masked */
    dev_ulong max_data_size;                     /* bytes the field takes */
    dev_ulong lines;
    dev_ulong erorr_disp;                        /* the record's published field name, spelt so */
} XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA, defaults_info, 68);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA, defaults_data, 72);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA, phb_type, 140);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA, erorr_disp, 156);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA, 160);

typedef struct {
    XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY common_property;
    dev_ulong num;                               /* fields of data in use */
    XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT_DATA data[XSI_PBFS_PANEL_INPUT_TEXT_LINE_SIZE];
} XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT, num, 112);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT, data, 116);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT, 596);

/* One entry of a list screen. */
typedef struct {
    dev_ulong defaults;                          /* 1: selected at first */
    char text[XSI_PBFS_PANEL_DISPLAY_LIST_ITEM_TEXT_SIZE];
    uint8_t pad[3];
} XSI_PBFS_PANEL_DISPLAY_LIST_ITEM_DATA;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_LIST_ITEM_DATA, text, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DISPLAY_LIST_ITEM_DATA, 40);

typedef struct {
    dev_ulong num;
    XSI_PBFS_PANEL_DISPLAY_LIST_ITEM_DATA data[XSI_PBFS_PANEL_LIST_ITEM_SIZE];
} XSI_PBFS_PANEL_DISPLAY_LIST_ITEM;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_LIST_ITEM, data, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DISPLAY_LIST_ITEM, 1204);

typedef struct {
    XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY common_property;
    char message[XSI_PBFS_PANEL_DISPLAY_MESSAGE_SIZE];
    uint8_t pad[3];
    dev_ulong essential;                         /* 1: a selection is required */
    XSI_PBFS_PANEL_DISPLAY_LIST_ITEM item;
} XSI_PBFS_PANEL_DISPLAY_LIST;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_LIST, message, 112);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_LIST, essential, 180);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_LIST, item, 184);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DISPLAY_LIST, 1388);

/* A date and a time of day, as texts of digits ("2024", "07", "31", "23", "59"): 17 bytes, byte-aligned. */
typedef struct {
    char year[XSI_PBFS_PANEL_DATE_TIME_YEAR_SIZE];
    char month[XSI_PBFS_PANEL_DATE_TIME_MONTH_SIZE];
    char day[XSI_PBFS_PANEL_DATE_TIME_DAY_SIZE];
    char hour[XSI_PBFS_PANEL_DATE_TIME_HOUR_SIZE];
    char minutes[XSI_PBFS_PANEL_DATE_TIME_MINUTES_SIZE];
} XSI_PBFS_PANEL_DATE_TIME_DATA;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DATE_TIME_DATA, month, 5);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DATE_TIME_DATA, day, 8);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DATE_TIME_DATA, hour, 11);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DATE_TIME_DATA, minutes, 14);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DATE_TIME_DATA, 17);

typedef struct {
    dev_ulong now;                               /* 1: start from the current time, data unused */
    XSI_PBFS_PANEL_DATE_TIME_DATA data;
    uint8_t pad[3];
} XSI_PBFS_PANEL_DATE_TIME_DEFAULTS;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DATE_TIME_DEFAULTS, data, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DATE_TIME_DEFAULTS, 24);

typedef struct {
    dev_ulong setting;                           /* 1: data limits the input */
    XSI_PBFS_PANEL_DATE_TIME_DATA data;
    uint8_t pad[3];
} XSI_PBFS_PANEL_DATE_TIME_MAXIMUM;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DATE_TIME_MAXIMUM, data, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DATE_TIME_MAXIMUM, 24);

typedef struct {
    dev_ulong setting;                           /* 1: data limits the input */
    XSI_PBFS_PANEL_DATE_TIME_DATA data;
    uint8_t pad[3];
} XSI_PBFS_PANEL_DATE_TIME_MINIMUM;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DATE_TIME_MINIMUM, data, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DATE_TIME_MINIMUM, 24);

typedef struct {
    dev_ulong date_type;                         /* 0 none, 1 year-month-day, 2 month-day-year, 3 day-month-year */
    dev_ulong time_type;                         /* 0 none, 1 24-hour, 2 12-hour */
} XSI_PBFS_PANEL_DATE_TIME_INPUT_FORM;
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DATE_TIME_INPUT_FORM, 8);

typedef struct {
    XSI_PBFS_PANEL_DISPLAY_COMMON_PROPERTY common_property;
    char message[XSI_PBFS_PANEL_DISPLAY_MESSAGE_SIZE];
    uint8_t pad[3];
    XSI_PBFS_PANEL_DATE_TIME_DEFAULTS defaults;
    XSI_PBFS_PANEL_DATE_TIME_MAXIMUM maximum;
    XSI_PBFS_PANEL_DATE_TIME_MINIMUM minimum;
    XSI_PBFS_PANEL_DATE_TIME_INPUT_FORM input_form;
} XSI_PBFS_PANEL_DISPLAY_DATE_TIME;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_DATE_TIME, message, 112);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_DATE_TIME, defaults, 180);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_DATE_TIME, maximum, 204);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_DATE_TIME, minimum, 228);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_DATE_TIME, input_form, 252);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DISPLAY_DATE_TIME, 260);

/* What a screen shows; the screen's kind decides which member is meaningful. */
typedef struct {
    XSI_PBFS_PANEL_DISPLAY_TEXT text_display;
    XSI_PBFS_PANEL_DISPLAY_INPUT_TEXT input_text_display;
    XSI_PBFS_PANEL_DISPLAY_LIST list_display;
    XSI_PBFS_PANEL_DISPLAY_DATE_TIME date_time_display;
} XSI_PBFS_PANEL_DISPLAY_PROPERTY;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_PROPERTY, input_text_display, 180);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_PROPERTY, list_display, 776);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_DISPLAY_PROPERTY, date_time_display, 2164);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_DISPLAY_PROPERTY, 2424);

/* ---- Panel screens an application shows: what the user did ---------------------------------------------- */

typedef struct {
    dev_ulong display_id;                        /* the item the user touched */
} XSI_PBFS_PANEL_OPERATION_COMMON_PROPERTY;
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_OPERATION_COMMON_PROPERTY, 4);

typedef struct {
    XSI_PBFS_PANEL_OPERATION_COMMON_PROPERTY common_property;
} XSI_PBFS_PANEL_OPERATION_TEXT;
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_OPERATION_TEXT, 4);

typedef struct {
    XSI_PBFS_PANEL_OPERATION_COMMON_PROPERTY common_property;
    XSI_PBFS_PANEL_INPUT_TEXT_DATA input_data[XSI_PBFS_PANEL_INPUT_TEXT_LINE_SIZE];   /* one per input field */
} XSI_PBFS_PANEL_OPERATION_INPUT_TEXT;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_OPERATION_INPUT_TEXT, input_data, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_OPERATION_INPUT_TEXT, 208);

typedef struct {
    dev_ulong num;                               /* entries selected */
    dev_ulong data[XSI_PBFS_PANEL_LIST_ITEM_SIZE];   /* their indexes in the list, from 0 */
} XSI_PBFS_PANEL_OPERATION_LIST_SELECT;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_OPERATION_LIST_SELECT, data, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_OPERATION_LIST_SELECT, 124);

typedef struct {
    XSI_PBFS_PANEL_OPERATION_COMMON_PROPERTY common_property;
    XSI_PBFS_PANEL_OPERATION_LIST_SELECT select;
} XSI_PBFS_PANEL_OPERATION_LIST;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_OPERATION_LIST, select, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_OPERATION_LIST, 128);

typedef struct {
    XSI_PBFS_PANEL_OPERATION_COMMON_PROPERTY common_property;
    XSI_PBFS_PANEL_DATE_TIME_DATA data;
    uint8_t pad[3];
} XSI_PBFS_PANEL_OPERATION_DATE_TIME;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_OPERATION_DATE_TIME, data, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_OPERATION_DATE_TIME, 24);

typedef struct {
    XSI_PBFS_PANEL_OPERATION_TEXT text_operation;
    XSI_PBFS_PANEL_OPERATION_INPUT_TEXT input_text_operation;
    XSI_PBFS_PANEL_OPERATION_LIST list_operation;
    XSI_PBFS_PANEL_OPERATION_DATE_TIME date_time_operation;
} XSI_PBFS_PANEL_OPERATION_PROPERTY;
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_OPERATION_PROPERTY, input_text_operation, 4);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_OPERATION_PROPERTY, list_operation, 212);
PLAT_ASSERT_OFFSET(XSI_PBFS_PANEL_OPERATION_PROPERTY, date_time_operation, 340);
PLAT_ASSERT_SIZE(XSI_PBFS_PANEL_OPERATION_PROPERTY, 364);

#ifdef __cplusplus

/* ---- Observer messages ------------------------------------------------------------------------------------ */

/*
 * The panel's messages to its observers, by gen_ipc_msghdr.msg_id. Their data:
 *   KEY_EVENT                 two dev_ulong: key code, key state
 *   AUTO_PANEL_RESET, RESET_END   none
 *   PANEL_DISPLAY             application id (XSI_PBFS_PANEL_APP_ID_SIZE bytes), XSI_PBFS_PANEL_DISPLAY_PROPERTY
 *   PANEL_OPERATION           application id (XSI_PBFS_PANEL_APP_ID_SIZE bytes), XSI_PBFS_PANEL_OPERATION_PROPERTY
 *   REQUEST_EVENT             application id (XSI_PBFS_PANEL_APP_ID_SIZE bytes), dev_ulong event
 *   REQUEST_BUZZER, REQUEST_START_LED, EXT_AUTH_INITIALIZE, REQUEST_DISPLAY_SCREEN   one int32
 *   REQUEST_SET_VALUE         application id (XSI_PBFS_PANEL_APP_ID_SIZE bytes), dev_ulong item, the value text
 *   APPL_START, APPL_STOP     the application id text
 * Texts end at their terminating zero or at the end of the data, whichever comes first.
 */
enum XSI_PBFS_PANEL_MSG : dev_ulong {
    XSI_PBFS_PANEL_MSG_KEY_EVENT = 1,
    XSI_PBFS_PANEL_MSG_AUTO_PANEL_RESET = 2,
    XSI_PBFS_PANEL_MSG_PANEL_DISPLAY = 3,
    XSI_PBFS_PANEL_MSG_PANEL_OPERATION = 4,
    XSI_PBFS_PANEL_MSG_REQUEST_EVENT = 5,
    XSI_PBFS_PANEL_MSG_REQUEST_BUZZER = 6,
    XSI_PBFS_PANEL_MSG_REQUEST_START_LED = 7,
    XSI_PBFS_PANEL_MSG_EXT_AUTH_INITIALIZE = 8,
    XSI_PBFS_PANEL_MSG_RESET_END = 9,
    XSI_PBFS_PANEL_MSG_REQUEST_DISPLAY_SCREEN = 10,
    XSI_PBFS_PANEL_MSG_REQUEST_SET_VALUE = 11,
    XSI_PBFS_PANEL_MSG_APPL_START = 12,
    XSI_PBFS_PANEL_MSG_APPL_STOP = 13
};

/*
 * The panel's observer base. dispatch() decodes one message and calls its notification; every notification
 * answers 0 unless a derived observer says otherwise. A message the base does not know, or whose data is
 * too short, is answered with XSI_PBFS_PANEL_PARAM_ERROR.
 */
class xsi_pbfs_panel_observer : public gen_ipc_observer {
public:
    ~xsi_pbfs_panel_observer() override;

    PLAT_RESULT dispatch(long kind, char* data, unsigned int size, gen_ipc_msghdr header) override;

    virtual PLAT_RESULT notify_key_event(dev_ulong key_code, dev_ulong key_state);
    virtual PLAT_RESULT notify_auto_panel_reset();
    virtual PLAT_RESULT notify_panel_display(const char* app_id, const XSI_PBFS_PANEL_DISPLAY_PROPERTY& display);
    virtual PLAT_RESULT notify_panel_operation(const char* app_id, const XSI_PBFS_PANEL_OPERATION_PROPERTY& operation);
    virtual PLAT_RESULT notify_request_event(const char* app_id, dev_ulong event);
    virtual PLAT_RESULT notify_request_buzzer(XSI_PBFS_BUZZER_TYPE type);
    virtual PLAT_RESULT notify_request_start_led(XSI_PBFS_LED_STATE state);
    virtual PLAT_RESULT notify_extension_authentication_initialize(bool initialize);
    virtual PLAT_RESULT notify_reset_end();
    virtual PLAT_RESULT notify_request_display_screen(XSI_PBFS_PANEL_DISPLAY_TYPE type);
    virtual PLAT_RESULT notify_request_set_value(const char* app_id, dev_ulong item, const char* value);
    virtual PLAT_RESULT notify_appl_start(const char* app_id);
    virtual PLAT_RESULT notify_appl_stop(const char* app_id);
};

/* ---- The facade ------------------------------------------------------------------------------------------ */

class xsi_pbfs_panel_facade {
public:
    static xsi_pbfs_panel_facade* xsi_pbfs_panel_get_instance();

    /* Observers: DUPL_OBSERVER for one registered already, NO_OBSERVER for one that is not; PARAM_ERROR for null. */
    PLAT_RESULT xsi_pbfs_panel_add_observer(xsi_pbfs_panel_observer* observer);
    PLAT_RESULT xsi_pbfs_panel_remove_observer(xsi_pbfs_panel_observer* observer);

    /* An application's view changed. */
    PLAT_RESULT xsi_pbfs_panel_notify_view_update(const char* app_id, XSI_PBFS_PANEL_VIEW_UPDATE_TYPE type);
    /* The same for the extended-authentication application (the login screen's owner). */
    PLAT_RESULT xsi_pbfs_panel_notify_view_update_ext_auth_app(const char* app_id, XSI_PBFS_PANEL_VIEW_UPDATE_TYPE type);
    /* Raises panel event `event` for the application. */
    PLAT_RESULT xsi_pbfs_panel_notify_request_event(const char* app_id, unsigned int event);
    PLAT_RESULT xsi_pbfs_panel_request_start_led(const char* app_id, XSI_PBFS_LED_STATE state);
    PLAT_RESULT xsi_pbfs_panel_request_buzzer(const char* app_id, XSI_PBFS_BUZZER_TYPE type);
    PLAT_RESULT xsi_pbfs_panel_extension_authentication_initialize(bool initialize);
    PLAT_RESULT xsi_pbfs_panel_notify_j_foundation_started(bool started);
    /* The application side of a panel reset is finished. */
    PLAT_RESULT xsi_pbfs_panel_notify_reset_end();
    /* Shows one of the panel's screens; NOT_AVAILABLE when it cannot be shown now. */
    PLAT_RESULT xsi_pbfs_panel_request_display_screen(XSI_PBFS_PANEL_DISPLAY_TYPE type);
    PLAT_RESULT xsi_pbfs_panel_menu_application_initialized(const char* app_id, bool result);
    PLAT_RESULT xsi_pbfs_panel_menu_application_terminated(const char* app_id, bool result);
    /* `available` becomes 1 when the screen can be shown now, else 0. */
    PLAT_RESULT xsi_pbfs_panel_is_screen_available(XSI_PBFS_PANEL_DISPLAY_TYPE type, int& available);
    /*
     * Puts `text` into item `item` of the soft keyboard of screen `identifier`. The soft keyboard takes texts
     * of up to XSI_PBFS_PANEL_SOFT_KEY_DISPLAY_TEXT_MAX_SIZE - 1 bytes; a longer one is PARAM_ERROR.
     */
    PLAT_RESULT xsi_pbfs_panel_set_display_text(const char* identifier, dev_ulong item, const char* text,
                                                XSI_PBFS_PANEL_DISPLAY_TEXT_TYPE type);
    /*
     * The soft numeric keypad. Display mode SHOW shows it as `info` says; any other mode hides it. Either way
     * `info` comes back holding the keypad as it was before the request.
     */
    PLAT_RESULT xsi_pbfs_panel_request_display_soft_tenkey(const char* app_id, XSI_PBFS_PANEL_SOFT_TENKEY_REQUEST kind,
                                                           XSI_PBFS_PANEL_SOFT_TENKEY_DISPLAY_INFO& info);
    /*
     * The automatic reset timer for the application (XSI_PBFS_PNL_RST_TMR). PARAM_ERROR for a null or empty
     * application id or an unknown control; NG for START by an application that holds no stop. RESTART releases
     * the application's stop if it holds one and starts the count again.
     */
    PLAT_RESULT xsi_pbfs_panel_reset_timer_ctrl(const char* app_id, XSI_PBFS_PNL_RST_TMR control);

private:
    xsi_pbfs_panel_facade() = default;
};

#endif /* __cplusplus */

#endif /* XSI_PBFS_PANEL_H */
