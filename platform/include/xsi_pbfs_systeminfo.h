/*
 * The system information of the basic-function services: the machine's settings, its page counters, its
 * paper sources, its model and screen, and the record of a job's state as the system information reports it.
 *
 * One facade, reached through xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_instance() at every call.
 * The operations that take a certificate id come in two forms: the plain one acts for the panel's user (its
 * certificate id is passed on and is normally 0), the `_bkg` one acts in the background for the login that
 * the certificate id names (the certificate must be current).
 *
 * Machine settings are addressed by an XSI_PBFS_ENTKEY. A setting holds a number or a text; numbers can be
 * written one at a time, each within its own range; texts are read only. Some settings are the
 * administrator's: writing them needs the certificate of a login with the administrator right.
 */
#ifndef XSI_PBFS_SYSTEMINFO_H
#define XSI_PBFS_SYSTEMINFO_H

#include "plat_types.h"

/* Result codes of the system information. */
#define XSI_PBFS_SYSINFO_OK PLAT_CODE(0)
#define XSI_PBFS_SYSINFO_ERROR_COMPETENCE PLAT_CODE(0xC1010501) /* the caller lacks the right to the item */
#define XSI_PBFS_SYSINFO_ERROR PLAT_CODE(0xC1010502)            /* any other failure: a value out of range, ... */
#define XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR PLAT_CODE(0xC1010503) /* the item does not exist on this machine */
#define XSI_PBFS_SYSINFO_LOGIN_ERROR PLAT_CODE(0xC1010504)      /* the certificate is not a current login */

/* Capacity of a setting's text, terminating zero included. */
#define XSI_PBFS_SYSINFO_TEXT_SIZE 257

/* Capacity of the user name of a job state record, terminating zero included. */
#define XSI_PBFS_JOB_STATE_USER_NAME_SIZE 257

/*
 * A job's state as the system information reports it to the status monitor's clients (the same numbers as
 * the job service's own job state: XSI_AIS_JOB_STATE_*, XSI_AIS_JOB_RESULT_*).
 */
typedef struct {
    dev_ulong state;
    dev_ulong user_job_id;
    dev_ulong result;
    dev_ulong job_mode;                                  /* XSI_AIS_JOB_CATEGORY of the job */
    char user_name[XSI_PBFS_JOB_STATE_USER_NAME_SIZE];   /* the job's owner, "" for none */
    uint8_t pad[3];
    dev_ulong input_box_id;
    dev_ulong output_box_id;
    dev_ulong form_box_id;
    dev_ulong in_dev;
    dev_ulong out_dev;
    dev_ulong sys_info_user_job_id;
    dev_ulong receipt_id;
} XSI_PBFS_JOB_STATE;
PLAT_ASSERT_OFFSET(XSI_PBFS_JOB_STATE, job_mode, 12);
PLAT_ASSERT_OFFSET(XSI_PBFS_JOB_STATE, user_name, 16);
PLAT_ASSERT_OFFSET(XSI_PBFS_JOB_STATE, input_box_id, 276);
PLAT_ASSERT_OFFSET(XSI_PBFS_JOB_STATE, receipt_id, 300);
PLAT_ASSERT_SIZE(XSI_PBFS_JOB_STATE, 304);

/* What a paper source holds. */
typedef struct {
    dev_ulong paper_remain;     /* XSI_PBFS_PAPER_REMAIN_* */
    dev_ulong paper_size;       /* XSI_PBFS_PAPER_SIZE_* */
    dev_ulong paper_direction;  /* XSI_PBFS_PAPER_DIRECTION_* */
    dev_ulong paper_kind;       /* XSI_PBFS_PAPER_KIND_* */
} XSI_PBFS_PAPER_INFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_PAPER_INFO, paper_size, 4);
PLAT_ASSERT_OFFSET(XSI_PBFS_PAPER_INFO, paper_kind, 12);
PLAT_ASSERT_SIZE(XSI_PBFS_PAPER_INFO, 16);

/* How much paper a source holds. */
#define XSI_PBFS_PAPER_REMAIN_EMPTY 0u
#define XSI_PBFS_PAPER_REMAIN_LOW 1u      /* less than a fifth */
#define XSI_PBFS_PAPER_REMAIN_HALF 2u
#define XSI_PBFS_PAPER_REMAIN_FULL 3u

/* Paper sizes: of a paper source, of a counter (0 there counts every size) and of the job settings' sizes. */
#define XSI_PBFS_PAPER_SIZE_ALL 0u
#define XSI_PBFS_PAPER_SIZE_A3 1u
#define XSI_PBFS_PAPER_SIZE_A4 2u
#define XSI_PBFS_PAPER_SIZE_A5 3u
#define XSI_PBFS_PAPER_SIZE_B4 4u
#define XSI_PBFS_PAPER_SIZE_B5 5u
#define XSI_PBFS_PAPER_SIZE_LETTER 6u
#define XSI_PBFS_PAPER_SIZE_LEGAL 7u
#define XSI_PBFS_PAPER_SIZE_LEDGER 8u
#define XSI_PBFS_PAPER_SIZE_OTHER 9u      /* every other size, custom sizes included */
#define XSI_PBFS_PAPER_SIZE_NUM 10u

#define XSI_PBFS_PAPER_DIRECTION_PORTRAIT 0u
#define XSI_PBFS_PAPER_DIRECTION_LANDSCAPE 1u

#define XSI_PBFS_PAPER_KIND_PLAIN 0u
#define XSI_PBFS_PAPER_KIND_RECYCLED 1u
#define XSI_PBFS_PAPER_KIND_THICK 2u
#define XSI_PBFS_PAPER_KIND_LABEL 3u
#define XSI_PBFS_PAPER_KIND_ENVELOPE 4u

/* The question of a counter read: which pages, of which size, in which colour. */
typedef struct {
    dev_ulong count_kind;   /* XSI_PBFS_COUNT_KIND_* */
    dev_ulong paper_size;   /* XSI_PBFS_PAPER_SIZE_*; XSI_PBFS_PAPER_SIZE_ALL for every size */
    dev_ulong color_info;   /* XSI_PBFS_COUNT_COLOR_* */
} XSI_PBFS_COUNT_INFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_COUNT_INFO, paper_size, 4);
PLAT_ASSERT_OFFSET(XSI_PBFS_COUNT_INFO, color_info, 8);
PLAT_ASSERT_SIZE(XSI_PBFS_COUNT_INFO, 12);

/* Page counters. A page counts once in its own kind and once in the total of its side (printed or scanned). */
#define XSI_PBFS_COUNT_KIND_PRINT_TOTAL 0u  /* every page printed: copy, printer, box and fax reception */
#define XSI_PBFS_COUNT_KIND_COPY 1u         /* pages printed by copy jobs */
#define XSI_PBFS_COUNT_KIND_PRINTER 2u      /* pages printed by print, direct print and box print jobs */
#define XSI_PBFS_COUNT_KIND_FAX_PRINT 3u    /* received fax pages printed */
#define XSI_PBFS_COUNT_KIND_SCAN_TOTAL 4u   /* every page scanned: copy, scan, send, fax and box store jobs */
#define XSI_PBFS_COUNT_KIND_SCAN 5u         /* pages scanned by scan, send and box store jobs */
#define XSI_PBFS_COUNT_KIND_FAX_SEND 6u     /* fax pages sent */
#define XSI_PBFS_COUNT_KIND_NUM 7u

/* Colour of a counter. */
#define XSI_PBFS_COUNT_COLOR_ALL 0u
#define XSI_PBFS_COUNT_COLOR_MONO 1u
#define XSI_PBFS_COUNT_COLOR_FULL 2u

/* Model types. */
#define XSI_PBFS_MODEL_TYPE_MONO_MFP 1u
#define XSI_PBFS_MODEL_TYPE_COLOR_MFP 2u
#define XSI_PBFS_MODEL_TYPE_MONO_PRINTER 3u
#define XSI_PBFS_MODEL_TYPE_COLOR_PRINTER 4u

/* Operation panel screen sizes. */
#define XSI_PBFS_SCREEN_SIZE_NONE 0u     /* no touch panel */
#define XSI_PBFS_SCREEN_SIZE_4_3 1u      /* 4.3 inch */
#define XSI_PBFS_SCREEN_SIZE_7 2u        /* 7 inch */
#define XSI_PBFS_SCREEN_SIZE_10_1 3u     /* 10.1 inch */

#ifdef __cplusplus

#include <string>

/*
 * The keys of the machine settings. Numbers have a range; texts are read only. "admin": writing needs an
 * administrator's certificate. "login": reading and writing need a current login (a `_bkg` call).
 */
enum XSI_PBFS_ENTKEY : int32_t {
    XSI_PBFS_ENTKEY_MACHINE_NAME = 1,          /* text */
    XSI_PBFS_ENTKEY_SERIAL_NUMBER = 2,         /* text */
    XSI_PBFS_ENTKEY_FIRMWARE_VERSION = 3,      /* text */
    XSI_PBFS_ENTKEY_LOCATION = 4,              /* text */
    XSI_PBFS_ENTKEY_LOW_POWER_TIMER = 100,     /* minutes, 1..240 */
    XSI_PBFS_ENTKEY_SLEEP_TIMER = 101,         /* minutes, 1..240 */
    XSI_PBFS_ENTKEY_AUTO_SLEEP = 102,          /* 0 off, 1 on */
    XSI_PBFS_ENTKEY_PANEL_RESET_TIME = 103,    /* seconds, 0 (never) or 5..495 */
    XSI_PBFS_ENTKEY_LANGUAGE = 104,            /* 0..31 */
    XSI_PBFS_ENTKEY_DEFAULT_PAPER_SOURCE = 105, /* 0 automatic, 1..5 a paper source */
    XSI_PBFS_ENTKEY_COLOR_SUPPORTED = 106,     /* 0 or 1, read only: the machine prints in colour */
    XSI_PBFS_ENTKEY_DUPLEX_SUPPORTED = 107,    /* 0 or 1, read only */
    XSI_PBFS_ENTKEY_ADMIN_LOCK = 200,          /* 0 or 1, admin: settings locked on the panel */
    XSI_PBFS_ENTKEY_USER_COLOR_LIMIT = 300,    /* pages, 0..999999, login: the logged-in user's colour limit */
    XSI_PBFS_ENTKEY_PAPER_SOURCE_1 = 400,      /* paper sources, for xsi_pbfs_systeminfo_get_paper_info */
    XSI_PBFS_ENTKEY_PAPER_SOURCE_2 = 401,
    XSI_PBFS_ENTKEY_PAPER_SOURCE_3 = 402,
    XSI_PBFS_ENTKEY_PAPER_SOURCE_4 = 403,
    XSI_PBFS_ENTKEY_PAPER_SOURCE_MP = 404,     /* the multi-purpose tray */
    XSI_PBFS_ENTKEY_FAX_LINE_1 = 500,          /* fax lines, for xsi_pbfs_systeminfo_get_fax_encryption_validity */
    XSI_PBFS_ENTKEY_FAX_LINE_2 = 501
};

class xsi_pbfs_systeminfo_facade {
public:
    static xsi_pbfs_systeminfo_facade* xsi_pbfs_systeminfo_get_instance();

    /* A numeric setting. A text setting: XSI_PBFS_SYSINFO_ERROR. An unknown key: UNSUPPORTED_ERROR. */
    PLAT_RESULT xsi_pbfs_systeminfo_get_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id, unsigned int& value);
    PLAT_RESULT xsi_pbfs_systeminfo_get_machine_info_bkg(XSI_PBFS_ENTKEY key, dev_ulong cert_id,
                                                         unsigned int& value);
    /* A setting as text: a text setting as it is, a numeric one in decimal. */
    PLAT_RESULT xsi_pbfs_systeminfo_get_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id, std::string& value);
    PLAT_RESULT xsi_pbfs_systeminfo_get_machine_info_bkg(XSI_PBFS_ENTKEY key, dev_ulong cert_id,
                                                         std::string& value);
    /* Writes a numeric setting: out of its range XSI_PBFS_SYSINFO_ERROR, read only or not the caller's right
     * ERROR_COMPETENCE; the setting is unchanged after any failure. */
    PLAT_RESULT xsi_pbfs_systeminfo_set_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id, unsigned int value);
    PLAT_RESULT xsi_pbfs_systeminfo_set_machine_info_bkg(XSI_PBFS_ENTKEY key, dev_ulong cert_id,
                                                         unsigned int value);

    /* A paper source (XSI_PBFS_ENTKEY_PAPER_SOURCE_*); a source the machine lacks: UNSUPPORTED_ERROR. */
    PLAT_RESULT xsi_pbfs_systeminfo_get_paper_info(XSI_PBFS_ENTKEY key, XSI_PBFS_PAPER_INFO& info);
    /* A page counter; an unknown kind, size or colour: XSI_PBFS_SYSINFO_ERROR. */
    PLAT_RESULT xsi_pbfs_systeminfo_get_count(XSI_PBFS_COUNT_INFO& query, dev_ulong& count);
    PLAT_RESULT xsi_pbfs_systeminfo_get_screen_size(unsigned int& size);
    PLAT_RESULT xsi_pbfs_systeminfo_get_model_type(unsigned int& type);
    /* 1 when the fax line (XSI_PBFS_ENTKEY_FAX_LINE_*) sends encrypted, 0 when not. */
    PLAT_RESULT xsi_pbfs_systeminfo_get_fax_encryption_validity(XSI_PBFS_ENTKEY key, unsigned char& valid);
    /* 1 when copying is offered as a paid service (copy service mode) to the login, 0 when not. */
    PLAT_RESULT xsi_pbfs_systeminfo_get_copy_service_mode(dev_ulong cert_id, unsigned char& mode);

private:
    xsi_pbfs_systeminfo_facade() = default;
};

#endif /* __cplusplus */

#endif /* XSI_PBFS_SYSTEMINFO_H */
