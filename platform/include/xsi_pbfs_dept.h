/*
 * The department store of the basic-function services: hidden departments (accounts keyed by a department
 * id, each with restriction and limit values and the usage counters the store keeps for it) and the
 * device-wide department-accounting modes.
 *
 * One facade, reached through xsi_pbfs_dept_facade::xsi_pbfs_dept_get_instance(); every operation answers 0
 * or one of the XSI_PBFS_DEPT_* failure codes below.
 */
#ifndef XSI_PBFS_DEPT_H
#define XSI_PBFS_DEPT_H

#include "plat_types.h"

/* Capacity of a department's name, terminating zero included. */
#define XSI_PBFS_DEPT_NAME_SIZE 33
/* Capacity of a department id, terminating zero included. */
#define XSI_PBFS_DEPT_ID_SIZE 9
/* Restriction slots R0..R9 and limit slots L0..L9. */
#define XSI_PBFS_DEPT_SLOT_COUNT 10
/* Usage counters the store keeps per department. */
#define XSI_PBFS_DEPT_COUNTER_COUNT 8

/* Result codes of the department store. */
#define XSI_PBFS_DEPT_OK PLAT_CODE(0)
#define XSI_PBFS_DEPT_NG PLAT_CODE(0xC1010801)            /* general failure: bad argument, store full */
#define XSI_PBFS_DEPT_NOT_FOUND PLAT_CODE(0xC1010803)     /* no department with this id */
#define XSI_PBFS_DEPT_EXIST PLAT_CODE(0xC1010804)         /* a department with this id exists already */

/* Bits of a department's `flags`. */
#define XSI_PBFS_DEPT_FLAG_SUSPENDED 0x00000001u  /* the department may not start jobs */

/* What each usage counter counts (index into `counter`). */
enum {
    XSI_PBFS_DEPT_COUNTER_COPY_MONO = 0,
    XSI_PBFS_DEPT_COUNTER_COPY_COLOR = 1,
    XSI_PBFS_DEPT_COUNTER_PRINT_MONO = 2,
    XSI_PBFS_DEPT_COUNTER_PRINT_COLOR = 3,
    XSI_PBFS_DEPT_COUNTER_SCAN = 4,
    XSI_PBFS_DEPT_COUNTER_FAX_SEND = 5,
    XSI_PBFS_DEPT_COUNTER_FAX_RECEIVE = 6,
    XSI_PBFS_DEPT_COUNTER_TOTAL = 7
};

/*
 * One hidden department. The id is the key. The application fills name, id, the slots and the flags; the
 * store fills the counters, ignores the counters it is given on add and update, and keeps its own.
 */
typedef struct {
    char name[XSI_PBFS_DEPT_NAME_SIZE];                 /* NUL-terminated */
    char id[XSI_PBFS_DEPT_ID_SIZE];                     /* NUL-terminated, not empty */
    uint8_t pad[2];
    int32_t restriction[XSI_PBFS_DEPT_SLOT_COUNT];      /* R0..R9 */
    dev_ulong reserved;                                 /* kept by the store as given */
    int32_t limit[XSI_PBFS_DEPT_SLOT_COUNT];            /* L0..L9 */
    dev_ulong flags;                                    /* XSI_PBFS_DEPT_FLAG_* */
    dev_ulong counter[XSI_PBFS_DEPT_COUNTER_COUNT];     /* usage, kept by the store */
} XSI_PBFS_DEPT_DEPTINFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_DEPT_DEPTINFO, name, 0);
PLAT_ASSERT_OFFSET(XSI_PBFS_DEPT_DEPTINFO, id, 33);
PLAT_ASSERT_OFFSET(XSI_PBFS_DEPT_DEPTINFO, restriction, 44);
PLAT_ASSERT_OFFSET(XSI_PBFS_DEPT_DEPTINFO, reserved, 84);
PLAT_ASSERT_OFFSET(XSI_PBFS_DEPT_DEPTINFO, limit, 88);
PLAT_ASSERT_OFFSET(XSI_PBFS_DEPT_DEPTINFO, flags, 128);
PLAT_ASSERT_OFFSET(XSI_PBFS_DEPT_DEPTINFO, counter, 132);
PLAT_ASSERT_SIZE(XSI_PBFS_DEPT_DEPTINFO, 164);

#ifdef __cplusplus

/*
 * The device-wide modes. Each is a 32-bit value on the wire: a caller may hand over any value, and the store
 * answers XSI_PBFS_DEPT_NG for one it does not know.
 */

/* Department accounting on or off. */
enum XSI_PBFS_DEPT_DEPT_MODE : int32_t { XSI_PBFS_DEPT_DEPT_MODE_OFF = 0, XSI_PBFS_DEPT_DEPT_MODE_ON = 1 };

/* Whether copies and prints are counted apart or together. */
enum XSI_PBFS_DEPT_MIX_MODE : int32_t { XSI_PBFS_DEPT_MIX_MODE_SEPARATE = 0, XSI_PBFS_DEPT_MIX_MODE_TOTAL = 1 };

/* What the device does with a job that names no department, or an unknown one. */
enum XSI_PBFS_DEPT_INVALID_DEPT_MODE : int32_t {
    XSI_PBFS_DEPT_INVALID_DEPT_REJECT = 0,
    XSI_PBFS_DEPT_INVALID_DEPT_PERMIT = 1,
    XSI_PBFS_DEPT_INVALID_DEPT_PERMIT_PRINT = 2   /* prints only */
};

/* What the device does when a department reaches one of its limits. */
enum XSI_PBFS_DEPT_LIMIT_ACTION : int32_t {
    XSI_PBFS_DEPT_LIMIT_ACTION_STOP = 0,          /* stop the job at once */
    XSI_PBFS_DEPT_LIMIT_ACTION_FINISH_JOB = 1,    /* finish the running job, refuse the next */
    XSI_PBFS_DEPT_LIMIT_ACTION_WARN = 2           /* warn only */
};

/* The department store. Stateless on the caller's side: one instance per process. */
class xsi_pbfs_dept_facade {
public:
    static xsi_pbfs_dept_facade* xsi_pbfs_dept_get_instance();

    /* Adds the department `info.id`; XSI_PBFS_DEPT_EXIST when it is there already. Counters start at 0. */
    PLAT_RESULT xsi_pbfs_dept_add_hide_dept(const XSI_PBFS_DEPT_DEPTINFO& info);
    /* Replaces name, slots, reserved word and flags of department `info.id`; its counters stay. */
    PLAT_RESULT xsi_pbfs_dept_update_hide_dept(const XSI_PBFS_DEPT_DEPTINFO& info);
    PLAT_RESULT xsi_pbfs_dept_delete_hide_dept(const char* id);
    PLAT_RESULT xsi_pbfs_dept_delete_all_hide_dept();
    /* The whole department `id`, counters included, into `*info`. */
    PLAT_RESULT xsi_pbfs_dept_retrieve_hide_dept(const char* id, XSI_PBFS_DEPT_DEPTINFO* info);
    /* Zeroes the usage counters of department `id`. */
    PLAT_RESULT xsi_pbfs_dept_reset_hide_dept_counter(const char* id);

    PLAT_RESULT xsi_pbfs_dept_set_dept_mode(XSI_PBFS_DEPT_DEPT_MODE mode);
    PLAT_RESULT xsi_pbfs_dept_get_dept_mode(XSI_PBFS_DEPT_DEPT_MODE* mode);
    PLAT_RESULT xsi_pbfs_dept_set_mix_mode(XSI_PBFS_DEPT_MIX_MODE mode);
    PLAT_RESULT xsi_pbfs_dept_get_mix_mode(XSI_PBFS_DEPT_MIX_MODE* mode);
    PLAT_RESULT xsi_pbfs_dept_set_invalid_dept_mode(XSI_PBFS_DEPT_INVALID_DEPT_MODE mode);
    PLAT_RESULT xsi_pbfs_dept_get_invalid_dept_mode(XSI_PBFS_DEPT_INVALID_DEPT_MODE* mode);
    PLAT_RESULT xsi_pbfs_dept_set_limit_action_mode(XSI_PBFS_DEPT_LIMIT_ACTION mode);
    PLAT_RESULT xsi_pbfs_dept_get_limit_action_mode(XSI_PBFS_DEPT_LIMIT_ACTION* mode);

private:
    xsi_pbfs_dept_facade() = default;
};

#endif /* __cplusplus */

#endif /* XSI_PBFS_DEPT_H */
