/*
 * The state of a device job, as the job service reports it to its observers and to the job information
 * service.
 */
#ifndef XSI_AIS_JOB_STATE_H
#define XSI_AIS_JOB_STATE_H

#include "plat_types.h"

/* Capacity of the user name of a job state, terminating zero included. */
#define XSI_AIS_JOB_STATE_USER_NAME_SIZE 129

/* State kinds (first word of the record). */
enum { XSI_AIS_JOB_STATE_START = 0, XSI_AIS_JOB_STATE_END = 1, XSI_AIS_JOB_STATE_SCAN_END = 2 };

/* End status of a job that ended (the record's `result` for state kind XSI_AIS_JOB_STATE_END). */
enum { XSI_AIS_JOB_RESULT_COMPLETE = 0, XSI_AIS_JOB_RESULT_CANCEL = 1, XSI_AIS_JOB_RESULT_ERROR = 2 };

typedef struct {
    dev_ulong state;                                 /* state kind */
    dev_ulong user_job_id;
    dev_ulong result;                                /* end status */
    uint16_t job_mode;
    char user_name[XSI_AIS_JOB_STATE_USER_NAME_SIZE];  /* NUL-terminated */
    uint8_t in_dev;                                  /* input device */
    uint8_t out_dev;                                 /* output device */
    dev_ulong input_box_id;
    dev_ulong output_box_id;
    dev_ulong form_box_id;
    dev_ulong receipt_id;
    dev_ulong sys_info_user_job_id;
} XSI_AIS_JOB_STATE;
PLAT_ASSERT_OFFSET(XSI_AIS_JOB_STATE, state, 0);
PLAT_ASSERT_OFFSET(XSI_AIS_JOB_STATE, user_job_id, 4);
PLAT_ASSERT_OFFSET(XSI_AIS_JOB_STATE, result, 8);
PLAT_ASSERT_OFFSET(XSI_AIS_JOB_STATE, job_mode, 12);
PLAT_ASSERT_OFFSET(XSI_AIS_JOB_STATE, user_name, 14);
PLAT_ASSERT_OFFSET(XSI_AIS_JOB_STATE, in_dev, 143);
PLAT_ASSERT_OFFSET(XSI_AIS_JOB_STATE, out_dev, 144);
PLAT_ASSERT_OFFSET(XSI_AIS_JOB_STATE, input_box_id, 148);
PLAT_ASSERT_SIZE(XSI_AIS_JOB_STATE, 168);

#endif /* XSI_AIS_JOB_STATE_H */
