/*
 * The event records of the job service's information events: a printed page, a scanned page, a sent fax
 * page, an updated job log entry and the start of an interpreter (print language) job.
 *
 * The job information service hands them to its observers (xsi_ais_jobinfo_observer, where they go by the
 * names XSI_AIS_EVENT_*), and the event module shows them to Java field by field.
 *
 * Layout: fixed-width fields only, so that a record is the same on the device (ILP32) and on a 64-bit host.
 * Identifiers, counts and the receiving interface are unsigned 32-bit values; the page attributes (devices,
 * sizes, modes) are the device's signed 32-bit numbers, passed through unchanged.
 */
#ifndef XSI_PBFS_EVENT_H
#define XSI_PBFS_EVENT_H

#include <cstdint>

#include "plat_types.h"

/* One printed page. */
struct XSI_PBFS_EVENT_PRINT_PAGE {
    uint32_t user_job_id;
    uint32_t page_number;   /* the page's number within the job, from 1 */
    int32_t exhaust;        /* the output tray */
    int32_t cass;           /* the paper source */
    int32_t custom_x;       /* custom paper width, 0.1 mm */
    int32_t custom_y;       /* custom paper height, 0.1 mm */
    int32_t paper_size;
    int32_t paper_type;
    int32_t paper_dir;
    int32_t paper_weight;
    int32_t duplex;
    int32_t staple;
    int32_t punch;
    int32_t color_mode;
};
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_PRINT_PAGE, user_job_id, 0);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_PRINT_PAGE, page_number, 4);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_PRINT_PAGE, exhaust, 8);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_PRINT_PAGE, cass, 12);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_PRINT_PAGE, custom_x, 16);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_PRINT_PAGE, paper_size, 24);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_PRINT_PAGE, color_mode, 52);
PLAT_ASSERT_SIZE(XSI_PBFS_EVENT_PRINT_PAGE, 56);

/* One scanned page. */
struct XSI_PBFS_EVENT_SCAN_PAGE {
    uint32_t user_job_id;
    uint32_t page_number;
    int32_t custom_x;
    int32_t custom_y;
    int32_t scan_paper_size;
    int32_t scan_paper_dir;
    int32_t duplex;
    int32_t color_mono;
    int32_t resolution;     /* dots per inch */
};
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_SCAN_PAGE, user_job_id, 0);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_SCAN_PAGE, page_number, 4);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_SCAN_PAGE, custom_x, 8);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_SCAN_PAGE, scan_paper_size, 16);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_SCAN_PAGE, resolution, 32);
PLAT_ASSERT_SIZE(XSI_PBFS_EVENT_SCAN_PAGE, 36);

/* One fax page sent. */
struct XSI_PBFS_EVENT_SEND_PAGE {
    uint32_t user_job_id;
    uint32_t page_number;
};
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_SEND_PAGE, page_number, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_EVENT_SEND_PAGE, 8);

/* A job's log entry was written or changed. */
struct XSI_PBFS_EVENT_JOB_UPDATE_LOG {
    uint32_t user_job_id;
    uint32_t receipt_id;    /* the entry's receipt id in its log */
};
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_JOB_UPDATE_LOG, receipt_id, 4);
PLAT_ASSERT_SIZE(XSI_PBFS_EVENT_JOB_UPDATE_LOG, 8);

/* An interpreter (print language) job started; its job name travels beside the record. */
struct XSI_PBFS_EVENT_RENINT_START {
    uint32_t user_job_id;
    int32_t name_exist;             /* 1 when the job carries a name of its own, else 0 */
    uint32_t rcv_if;                /* the interface the job arrived on */
    uint32_t sys_info_user_job_id;  /* the job's id in the device's system information */
};
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_RENINT_START, name_exist, 4);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_RENINT_START, rcv_if, 8);
PLAT_ASSERT_OFFSET(XSI_PBFS_EVENT_RENINT_START, sys_info_user_job_id, 12);
PLAT_ASSERT_SIZE(XSI_PBFS_EVENT_RENINT_START, 16);

#endif /* XSI_PBFS_EVENT_H */
