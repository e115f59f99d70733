/*
 * The job information service: the device's job history.
 *
 * Every job the device runs leaves a job log entry, found by the receipt id the log gave it and by the kind
 * of log it is kept in. A log entry may carry send records (one per destination of a send job) and receive
 * records (one per document received); they are read as lists, one send list and one receive list at a time
 * for the whole process. Image logs (the text the device keeps about the images of a job) are found by
 * image id.
 *
 * The service is one C++ facade, reached through xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance(). Its
 * operations run synchronously on the caller's thread and answer with a result code of the job service
 * (XSI_AIS_JOBINFO_*; 0 for success).
 *
 * Layout: every record uses fixed-width fields only, so that its layout is the same on the device (ILP32)
 * and on a 64-bit host; sizes and offsets are asserted below. Enumerated fields are 32-bit. Texts are
 * NUL-terminated within their capacity (the *_SIZE constants count the terminating zero).
 */
#ifndef XSI_AIS_JOBINFO_H
#define XSI_AIS_JOBINFO_H

#include <cstdint>
#include <string>

#include "gen_ipc.h"
#include "plat_types.h"
#include "xsi_ais_job_state.h"
#include "xsi_pbfs_event.h"

/* ---- Result codes ---------------------------------------------------------------------------------------
 * The job service's codes, shared by its job and job information facades. */
inline constexpr PLAT_RESULT XSI_AIS_JOBINFO_OK = PLAT_CODE(0);
inline constexpr PLAT_RESULT XSI_AIS_JOBINFO_DUPL_OBSERVER = PLAT_CODE(0xC1020002);
inline constexpr PLAT_RESULT XSI_AIS_JOBINFO_NO_OBSERVER = PLAT_CODE(0xC1020003);
inline constexpr PLAT_RESULT XSI_AIS_JOBINFO_OUTPUT_PROHIBITING = PLAT_CODE(0xC1020004);
inline constexpr PLAT_RESULT XSI_AIS_JOBINFO_START_PROHIBITION = PLAT_CODE(0xC1020005);
/* A second send or receive list while one is still open. */
inline constexpr PLAT_RESULT XSI_AIS_JOBINFO_LIMIT = PLAT_CODE(0xC1020006);
/* The service could not be reached. */
inline constexpr PLAT_RESULT XSI_AIS_JOBINFO_IPC_ERROR = PLAT_CODE(0xC1020007);
/* An argument out of range, or a list operation without a list. */
inline constexpr PLAT_RESULT XSI_AIS_JOBINFO_PARAM_ERROR = PLAT_CODE(0xC1020008);
inline constexpr PLAT_RESULT XSI_AIS_JOBINFO_COPY_JOBINFO_LIMIT_OVER = PLAT_CODE(0xC1020009);
/* The list has no further record. */
inline constexpr PLAT_RESULT XSI_AIS_JOBINFO_NO_HIT = PLAT_CODE(0xC102000C);
/* No job log with that receipt id in that log, or no image log with that id. */
inline constexpr PLAT_RESULT XSI_AIS_JOBINFO_NOT_FOUND = PLAT_CODE(0xC102000F);

/* ---- Text capacities, terminating zero included --------------------------------------------------------- */
#define XSI_AIS_JOBINFO_JOB_NAME_SIZE 257
#define XSI_AIS_JOBINFO_USER_NAME_SIZE 129
#define XSI_AIS_JOBINFO_LOGIN_NAME_SIZE 129
#define XSI_AIS_JOBINFO_DOMAIN_SIZE 129
#define XSI_AIS_JOBINFO_DEPT_CODE_SIZE 9
#define XSI_AIS_JOBINFO_DEPT_NAME_SIZE 33
#define XSI_AIS_JOBINFO_DESTINATION_NAME_SIZE 129
#define XSI_AIS_JOBINFO_FAX_NO_SIZE 65
#define XSI_AIS_JOBINFO_MAIL_ADDRESS_SIZE 129
#define XSI_AIS_JOBINFO_HOST_NAME_SIZE 385

/* ---- Enumerations (32-bit) ------------------------------------------------------------------------------ */

/* The log a job log entry is kept in. Each log numbers its receipt ids on its own, so a receipt id names an
 * entry only together with its log. */
enum XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL : int32_t {
    XSI_AIS_JOBINFO_JOBLOG_TYPE_PRINT = 0,    /* copies and prints */
    XSI_AIS_JOBINFO_JOBLOG_TYPE_SEND = 1,     /* scans and faxes sent */
    XSI_AIS_JOBINFO_JOBLOG_TYPE_RECEIVE = 2,  /* faxes, Internet faxes and mails received */
    XSI_AIS_JOBINFO_JOBLOG_TYPE_STORE = 3     /* documents stored in boxes */
};

/* The kind of job (`job_type`). */
enum XSI_AIS_JOBINFO_JOB_TYPE_VAL : int32_t {
    XSI_AIS_JOBINFO_JOB_TYPE_COPY = 0,
    XSI_AIS_JOBINFO_JOB_TYPE_PRINT = 1,
    XSI_AIS_JOBINFO_JOB_TYPE_SCAN = 2,
    XSI_AIS_JOBINFO_JOB_TYPE_FAX_SEND = 3,
    XSI_AIS_JOBINFO_JOB_TYPE_FAX_RECEIVE = 4,
    XSI_AIS_JOBINFO_JOB_TYPE_BOX_STORE = 5,
    XSI_AIS_JOBINFO_JOB_TYPE_BOX_PRINT = 6,
    XSI_AIS_JOBINFO_JOB_TYPE_REPORT = 7
};

/* How a job, a send or a receipt ended (`result`); the details of an error are in `result_err`. */
enum XSI_AIS_JOBINFO_RESULT_VAL : int32_t {
    XSI_AIS_JOBINFO_RESULT_COMPLETE = 0,
    XSI_AIS_JOBINFO_RESULT_CANCEL = 1,
    XSI_AIS_JOBINFO_RESULT_ERROR = 2
};

/* The colour of a scan (`scan_type`). */
enum XSI_AIS_JOBINFO_SCAN_TYPE_VAL : int32_t {
    XSI_AIS_JOBINFO_SCAN_TYPE_NONE = 0,  /* nothing was scanned */
    XSI_AIS_JOBINFO_SCAN_TYPE_MONO = 1,
    XSI_AIS_JOBINFO_SCAN_TYPE_GRAY = 2,
    XSI_AIS_JOBINFO_SCAN_TYPE_FULL_COLOR = 3,
    XSI_AIS_JOBINFO_SCAN_TYPE_AUTO_COLOR = 4
};

/* The colour of a print (`print_color_mode`). */
enum XSI_AIS_JOBINFO_COLOR_MODE_VAL : int32_t {
    XSI_AIS_JOBINFO_COLOR_MODE_NONE = 0,  /* nothing was printed */
    XSI_AIS_JOBINFO_COLOR_MODE_MONO = 1,
    XSI_AIS_JOBINFO_COLOR_MODE_FULL_COLOR = 2,
    XSI_AIS_JOBINFO_COLOR_MODE_SINGLE_COLOR = 3,
    XSI_AIS_JOBINFO_COLOR_MODE_TWO_COLOR = 4
};

/* The kind of destination of a send record (`category`): says which member of its detail holds it. */
enum XSI_AIS_JOBINFO_SEND_CATEGORY_VAL : int32_t {
    XSI_AIS_JOBINFO_SEND_CATEGORY_FAX = 0,
    XSI_AIS_JOBINFO_SEND_CATEGORY_I_FAX = 1,
    XSI_AIS_JOBINFO_SEND_CATEGORY_MAIL = 2,
    XSI_AIS_JOBINFO_SEND_CATEGORY_PC = 3
};

/* The kind of sender of a receive record (`category`): says which member of its detail holds it. */
enum XSI_AIS_JOBINFO_RECEIVE_CATEGORY_VAL : int32_t {
    XSI_AIS_JOBINFO_RECEIVE_CATEGORY_FAX = 0,
    XSI_AIS_JOBINFO_RECEIVE_CATEGORY_I_FAX = 1,
    XSI_AIS_JOBINFO_RECEIVE_CATEGORY_MAIL = 2,
    XSI_AIS_JOBINFO_RECEIVE_CATEGORY_PC = 3
};

/* Where a job's document came from and went to (`input_attribute`, `output_attribute`): a set of bits. */
enum : dev_ulong {
    XSI_AIS_JOBINFO_ATTR_SCANNER = 0x01,
    XSI_AIS_JOBINFO_ATTR_PRINTER = 0x02,
    XSI_AIS_JOBINFO_ATTR_NETWORK = 0x04,
    XSI_AIS_JOBINFO_ATTR_FAX_LINE = 0x08,
    XSI_AIS_JOBINFO_ATTR_BOX = 0x10,
    XSI_AIS_JOBINFO_ATTR_REMOVABLE_MEMORY = 0x20
};

/* ---- Records -------------------------------------------------------------------------------------------
 * Times are seconds since 1970-01-01 00:00:00 UTC; durations are seconds. */

/* One job log entry. */
struct XSI_AIS_JOBINFO_JOBLOG {
    XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL job_log_type;
    dev_ulong receipt_id;
    XSI_AIS_JOBINFO_JOB_TYPE_VAL job_type;
    char job_name[XSI_AIS_JOBINFO_JOB_NAME_SIZE];
    char user_name[XSI_AIS_JOBINFO_USER_NAME_SIZE];
    char login_name[XSI_AIS_JOBINFO_LOGIN_NAME_SIZE];
    char domain[XSI_AIS_JOBINFO_DOMAIN_SIZE];
    char dept_code[XSI_AIS_JOBINFO_DEPT_CODE_SIZE];
    char dept_name[XSI_AIS_JOBINFO_DEPT_NAME_SIZE];
    dev_ulong start_time;
    dev_ulong end_time;
    dev_ulong received_time;
    dev_ulong total_time;
    XSI_AIS_JOBINFO_RESULT_VAL result;
    dev_ulong result_err;
    dev_ulong input_attribute;   /* XSI_AIS_JOBINFO_ATTR_* bits */
    dev_ulong output_attribute;  /* XSI_AIS_JOBINFO_ATTR_* bits */
    XSI_AIS_JOBINFO_SCAN_TYPE_VAL scan_type;
    XSI_AIS_JOBINFO_COLOR_MODE_VAL print_color_mode;
    dev_ulong copies;
    dev_ulong completed_copies;
    dev_ulong original_page_number;
    dev_ulong total_page_number;
    dev_ulong print_completion_page_number;
    dev_ulong send_num;     /* send records of the entry */
    dev_ulong receive_num;  /* receive records of the entry */
};
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, job_log_type, 0);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, receipt_id, 4);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, job_type, 8);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, job_name, 12);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, user_name, 269);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, login_name, 398);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, domain, 527);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, dept_code, 656);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, dept_name, 665);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, start_time, 700);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, result, 716);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, scan_type, 732);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, send_num, 760);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_JOBLOG, receive_num, 764);
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_JOBLOG, 768);

struct XSI_AIS_JOBINFO_SEND_INFO_FAX {
    char fax_no[XSI_AIS_JOBINFO_FAX_NO_SIZE];
    dev_ulong port_no;      /* the fax line */
    dev_ulong page_number;  /* pages sent */
    dev_ulong time;         /* duration of the transmission */
};
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_SEND_INFO_FAX, port_no, 68);
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_SEND_INFO_FAX, 80);

struct XSI_AIS_JOBINFO_SEND_INFO_I_FAX {
    char i_fax_address[XSI_AIS_JOBINFO_MAIL_ADDRESS_SIZE];
};
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_SEND_INFO_I_FAX, 129);

struct XSI_AIS_JOBINFO_SEND_INFO_MAIL {
    char mail_address[XSI_AIS_JOBINFO_MAIL_ADDRESS_SIZE];
};
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_SEND_INFO_MAIL, 129);

struct XSI_AIS_JOBINFO_SEND_INFO_PC {
    char host_name[XSI_AIS_JOBINFO_HOST_NAME_SIZE];
};
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_SEND_INFO_PC, 385);

/* The destination of a send record. Only the member named by the record's category is meaningful; each
 * member has its own place, so the others read as empty. */
struct XSI_AIS_JOBINFO_SEND_INFO_DETAIL {
    XSI_AIS_JOBINFO_SEND_INFO_FAX fax;
    XSI_AIS_JOBINFO_SEND_INFO_I_FAX i_fax;
    XSI_AIS_JOBINFO_SEND_INFO_MAIL mail;
    XSI_AIS_JOBINFO_SEND_INFO_PC pc;
};
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_SEND_INFO_DETAIL, i_fax, 80);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_SEND_INFO_DETAIL, mail, 209);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_SEND_INFO_DETAIL, pc, 338);
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_SEND_INFO_DETAIL, 724);

/* One destination of a send job. */
struct XSI_AIS_JOBINFO_SEND_INFO {
    XSI_AIS_JOBINFO_SEND_CATEGORY_VAL category;
    char destination_name[XSI_AIS_JOBINFO_DESTINATION_NAME_SIZE];
    XSI_AIS_JOBINFO_RESULT_VAL result;
    dev_ulong result_err;
    XSI_AIS_JOBINFO_SEND_INFO_DETAIL detail;
};
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_SEND_INFO, destination_name, 4);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_SEND_INFO, result, 136);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_SEND_INFO, result_err, 140);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_SEND_INFO, detail, 144);
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_SEND_INFO, 868);

struct XSI_AIS_JOBINFO_RECEIVE_INFO_FAX {
    char destination_name[XSI_AIS_JOBINFO_DESTINATION_NAME_SIZE];  /* the sender's name */
    char fax_no[XSI_AIS_JOBINFO_FAX_NO_SIZE];                      /* the sender's number */
    dev_ulong port_no;                                             /* the fax line */
    dev_ulong time;                                                /* duration of the transmission */
    XSI_AIS_JOBINFO_RESULT_VAL result;
    dev_ulong result_err;
};
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_RECEIVE_INFO_FAX, fax_no, 129);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_RECEIVE_INFO_FAX, port_no, 196);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_RECEIVE_INFO_FAX, result, 204);
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_RECEIVE_INFO_FAX, 212);

struct XSI_AIS_JOBINFO_RECEIVE_INFO_I_FAX {
    char i_fax_address[XSI_AIS_JOBINFO_MAIL_ADDRESS_SIZE];
};
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_RECEIVE_INFO_I_FAX, 129);

struct XSI_AIS_JOBINFO_RECEIVE_INFO_MAIL {
    char mail_address[XSI_AIS_JOBINFO_MAIL_ADDRESS_SIZE];
};
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_RECEIVE_INFO_MAIL, 129);

struct XSI_AIS_JOBINFO_RECEIVE_INFO_PC {
    char host_name[XSI_AIS_JOBINFO_HOST_NAME_SIZE];
};
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_RECEIVE_INFO_PC, 385);

/* The sender of a receive record; only the member named by the record's category is meaningful. */
struct XSI_AIS_JOBINFO_RECEIVE_INFO_DETAIL {
    XSI_AIS_JOBINFO_RECEIVE_INFO_FAX fax;
    XSI_AIS_JOBINFO_RECEIVE_INFO_I_FAX i_fax;
    XSI_AIS_JOBINFO_RECEIVE_INFO_MAIL mail;
    XSI_AIS_JOBINFO_RECEIVE_INFO_PC pc;
};
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_RECEIVE_INFO_DETAIL, i_fax, 212);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_RECEIVE_INFO_DETAIL, mail, 341);
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_RECEIVE_INFO_DETAIL, pc, 470);
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_RECEIVE_INFO_DETAIL, 856);

/* One document received. */
struct XSI_AIS_JOBINFO_RECEIVE_INFO {
    XSI_AIS_JOBINFO_RECEIVE_CATEGORY_VAL category;
    XSI_AIS_JOBINFO_RECEIVE_INFO_DETAIL detail;
};
PLAT_ASSERT_OFFSET(XSI_AIS_JOBINFO_RECEIVE_INFO, detail, 4);
PLAT_ASSERT_SIZE(XSI_AIS_JOBINFO_RECEIVE_INFO, 860);

/* ---- The job information service's observer ----------------------------------------------------------- */

/* The information events as the observer receives them: the event records (xsi_pbfs_event.h). */
typedef XSI_PBFS_EVENT_PRINT_PAGE XSI_AIS_EVENT_PRINT_PAGE;
typedef XSI_PBFS_EVENT_SCAN_PAGE XSI_AIS_EVENT_SCAN_PAGE;
typedef XSI_PBFS_EVENT_SEND_PAGE XSI_AIS_EVENT_SEND_PAGE;
typedef XSI_PBFS_EVENT_JOB_UPDATE_LOG XSI_AIS_EVENT_JOB_UPDATE_LOG;
typedef XSI_PBFS_EVENT_RENINT_START XSI_AIS_EVENT_RENINT_START;

/* How the making of an image log went. */
enum XSI_AIS_IMAGELOG_CREATE_STATUS_VAL : int32_t {
    XSI_AIS_IMAGELOG_CREATE_OK = 0,
    XSI_AIS_IMAGELOG_CREATE_ERROR = 1
};

/* Message ids (gen_ipc_msghdr::msg_id) of the job information service's notifications. */
enum XSI_AIS_JOBINFO_OBSERVER_MSG : int {
    XSI_AIS_JOBINFO_MSG_JOB_UPDATE_LOG = 1,          /* XSI_AIS_EVENT_JOB_UPDATE_LOG */
    XSI_AIS_JOBINFO_MSG_PRINT_PAGE = 2,              /* XSI_AIS_EVENT_PRINT_PAGE */
    XSI_AIS_JOBINFO_MSG_SCAN_PAGE = 3,               /* XSI_AIS_EVENT_SCAN_PAGE */
    XSI_AIS_JOBINFO_MSG_SEND_PAGE = 4,               /* XSI_AIS_EVENT_SEND_PAGE */
    XSI_AIS_JOBINFO_MSG_RENINT_START = 5,            /* XSI_AIS_EVENT_RENINT_START, a 32-bit flag (1: a job name
                                                        follows), then the NUL-terminated job name */
    XSI_AIS_JOBINFO_MSG_IMAGELOG_CREATE_STATUS = 6   /* 32-bit user job id, image id, status */
};

/*
 * The base of the job information service's observers. The service calls dispatch() on its IPC thread for
 * each message, one at a time per observer; dispatch() decodes it and calls the notification, whose answer
 * goes back to the service (0 for handled). A message it cannot decode is answered with
 * XSI_AIS_JOBINFO_IPC_ERROR. The base's own bodies answer 0 and do nothing.
 */
class xsi_ais_jobinfo_observer : public gen_ipc_observer {
public:
    ~xsi_ais_jobinfo_observer() override;

    PLAT_RESULT dispatch(long kind, char* data, unsigned int size, gen_ipc_msghdr header) override;

    virtual PLAT_RESULT notify_job_update_log(const XSI_AIS_EVENT_JOB_UPDATE_LOG& event);
    virtual PLAT_RESULT notify_print_page_info(const XSI_AIS_EVENT_PRINT_PAGE& event);
    virtual PLAT_RESULT notify_scan_page_info(const XSI_AIS_EVENT_SCAN_PAGE& event);
    virtual PLAT_RESULT notify_fax_send_page_info(const XSI_AIS_EVENT_SEND_PAGE& event);
    /* `jobName` is null when the job came without a name. */
    virtual PLAT_RESULT notify_renint_start_info(const XSI_AIS_EVENT_RENINT_START& event, const char* jobName);
    virtual PLAT_RESULT notify_imagelog_create_status(unsigned int user_job_id, dev_ulong image_id,
                                                      XSI_AIS_IMAGELOG_CREATE_STATUS_VAL status);
};

/* ---- The facade ----------------------------------------------------------------------------------------- */

class xsi_ais_jobinfo_facade {
public:
    /* The service of this process; never null. */
    static xsi_ais_jobinfo_facade* xsi_ais_jobinfo_get_instance();

    /* Observers: the service calls each registered observer on its IPC thread. Registering one twice gives
     * XSI_AIS_JOBINFO_DUPL_OBSERVER, removing one that is not registered (or null)
     * XSI_AIS_JOBINFO_NO_OBSERVER. */
    PLAT_RESULT xsi_ais_jobinfo_add_observer(xsi_ais_jobinfo_observer* observer);
    PLAT_RESULT xsi_ais_jobinfo_remove_observer(xsi_ais_jobinfo_observer* observer);

    /* The job log entry `receipt_id` of the log `type`, into `log`. */
    PLAT_RESULT xsi_ais_jobinfo_retrieve_joblog(unsigned int receipt_id, XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type,
                                                XSI_AIS_JOBINFO_JOBLOG& log);

    /* The send list: built from the send records of one job log entry, then read one record per call, then
     * ended. There is one send list at a time. */
    PLAT_RESULT xsi_ais_jobinfo_create_send_info_list(unsigned int receipt_id, XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type);
    PLAT_RESULT xsi_ais_jobinfo_get_send_info(XSI_AIS_JOBINFO_SEND_INFO& info);
    PLAT_RESULT xsi_ais_jobinfo_delete_send_info_list();

    /* The receive list, in the same way. */
    PLAT_RESULT xsi_ais_jobinfo_create_receive_info_list(unsigned int receipt_id,
                                                         XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type);
    PLAT_RESULT xsi_ais_jobinfo_get_receive_info(XSI_AIS_JOBINFO_RECEIVE_INFO& info);
    PLAT_RESULT xsi_ais_jobinfo_delete_receive_info_list();

    /* The text of the image log `image_id`, into `text`. */
    PLAT_RESULT xsi_ais_jobinfo_retrieve_imagelog(dev_ulong image_id, std::string& text);
    PLAT_RESULT xsi_ais_jobinfo_delete_imagelog(dev_ulong image_id);

    xsi_ais_jobinfo_facade(const xsi_ais_jobinfo_facade&) = delete;
    xsi_ais_jobinfo_facade& operator=(const xsi_ais_jobinfo_facade&) = delete;

private:
    xsi_ais_jobinfo_facade() = default;
};

#endif /* XSI_AIS_JOBINFO_H */
