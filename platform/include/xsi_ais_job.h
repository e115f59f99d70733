/*
 * The platform's job service: job information sets, destinations, services and user jobs, prohibition
 * state, document and stream preparation, scan and OCR data.
 *
 * Identifiers (all unsigned int): a handler id names one job information set (the settings of a job being
 * prepared); a service id names a service built from a set by xsi_ais_job_start; a user job id names the job
 * that xsi_ais_job_kick runs, as the user and the job list see it; an address id names one destination
 * inside a set. A certificate id (the device's unsigned long) names a login; the _bkg calls act for it.
 *
 * Every operation answers one of the XSI_AIS_JOB_* result codes below (0 for success). Out-parameters are
 * written by the service; on failure they are left as the service left them.
 *
 * The numeric values of the enumerations are the job service's own; callers pass them through unchanged.
 */
#ifndef XSI_AIS_JOB_H
#define XSI_AIS_JOB_H

#include <string>
#include <vector>

#include "gen_ipc.h"
#include "plat_types.h"
#include "xsi_ais_job_state.h"

/* ---- Capacities of the text fields (terminating zero included) and list sizes ---------------------- */

#define XSI_AIS_JOB_FTP_HOST_NAME_SIZE 65
#define XSI_AIS_JOB_FTP_PATH_NAME_SIZE 129
#define XSI_AIS_JOB_FTP_USER_NAME_SIZE 65
#define XSI_AIS_JOB_FTP_PASSWORD_SIZE 65
#define XSI_AIS_JOB_SMB_HOST_NAME_SIZE 385
#define XSI_AIS_JOB_SMB_PATH_NAME_SIZE 129
#define XSI_AIS_JOB_SMB_USER_NAME_SIZE 385
#define XSI_AIS_JOB_SMB_PASSWORD_SIZE 129
#define XSI_AIS_JOB_MAIL_ADDRESS_SIZE 129
#define XSI_AIS_JOB_ADDRESS_LIST_NUM 100        /* destinations one job information set may hold */
#define XSI_AIS_JOB_FAX_NUMBER_SIZE 65
#define XSI_AIS_JOB_SUB_ADDRESS_SIZE 21
#define XSI_AIS_JOB_SUB_ADDRESS_PASSWORD_SIZE 21
#define XSI_AIS_JOB_ACCESS_PATH_SIZE 1531
#define XSI_AIS_JOB_BOX_PASS_SIZE 17
#define XSI_AIS_JOB_DOC_NAME_SIZE 257
#define XSI_AIS_JOB_JOB_FILENAME_SIZE 257
#define XSI_AIS_JOB_GET_SCAN_DATA_SIZE 16384    /* data bytes of one scan data transfer */
#define XSI_AIS_JOB_DOC_PASS_SIZE 33
#define XSI_AIS_JOB_WRITE_STREAM_DATA_SIZE 16384 /* data bytes of one stream write */
#define XSI_AIS_JOB_OCR_TEXT_SIZE 2048          /* bytes of the text of one OCR text line */
#define XSI_AIS_JOB_OCR_LINE_SIZE 1024          /* most text lines one OCR block may hold */
#define XSI_AIS_JOB_LIST_MAX 10                 /* job ids of one XSI_AIS_JOB_LIST */

/* ---- Result codes --------------------------------------------------------------------------------- */

inline constexpr PLAT_RESULT XSI_AIS_JOB_OK = PLAT_CODE(0);
inline constexpr PLAT_RESULT XSI_AIS_JOB_DUPL_OBSERVER = PLAT_CODE(0xC1020002);
inline constexpr PLAT_RESULT XSI_AIS_JOB_NO_OBSERVER = PLAT_CODE(0xC1020003);
inline constexpr PLAT_RESULT XSI_AIS_JOB_OUTPUT_PROHIBITING = PLAT_CODE(0xC1020004);
inline constexpr PLAT_RESULT XSI_AIS_JOB_START_PROHIBITION = PLAT_CODE(0xC1020005);
inline constexpr PLAT_RESULT XSI_AIS_JOB_LIMIT = PLAT_CODE(0xC1020006);
inline constexpr PLAT_RESULT XSI_AIS_JOB_IPC_ERROR = PLAT_CODE(0xC1020007);
inline constexpr PLAT_RESULT XSI_AIS_JOB_PARAM_ERROR = PLAT_CODE(0xC1020008);
inline constexpr PLAT_RESULT XSI_AIS_JOB_COPY_JOBINFO_LIMIT_OVER = PLAT_CODE(0xC1020009);
inline constexpr PLAT_RESULT XSI_AIS_JOB_RET_NOT_COPY_JOBINFO = PLAT_CODE(0xC102000A);
inline constexpr PLAT_RESULT XSI_AIS_JOB_NO_CATEGORY = PLAT_CODE(0xC102000B);
inline constexpr PLAT_RESULT XSI_AIS_NO_HIT_JOB = PLAT_CODE(0xC102000C);
inline constexpr PLAT_RESULT XSI_AIS_JOB_ORG_SIZE_UNDEFINED = PLAT_CODE(0xC102000D);
inline constexpr PLAT_RESULT XSI_AIS_JOB_CANCEL_REJECT = PLAT_CODE(0xC102000E);
inline constexpr PLAT_RESULT XSI_AIS_JOB_NOT_FOUND = PLAT_CODE(0xC102000F);
inline constexpr PLAT_RESULT XSI_AIS_JOB_HDD_FULL = PLAT_CODE(0xC1020010);
inline constexpr PLAT_RESULT XSI_AIS_JOB_CANCELED = PLAT_CODE(0xC1020011);
inline constexpr PLAT_RESULT XSI_AIS_JOB_PRINTING_ONLY_DOC_ERROR = PLAT_CODE(0xC1020012);
inline constexpr PLAT_RESULT XSI_AIS_JOB_USER_JOB_LIMIT_ERROR = PLAT_CODE(0xC1020013);
inline constexpr PLAT_RESULT XSI_AIS_JOB_ILLEGAL_SERVICE_ID = PLAT_CODE(0xC1020014);
inline constexpr PLAT_RESULT XSI_AIS_JOB_WAIT_EXEC = PLAT_CODE(0xC1020015);
inline constexpr PLAT_RESULT XSI_AIS_JOB_OBTAIN_PNL_RESOURCE_ERROR = PLAT_CODE(0xC1020016);
inline constexpr PLAT_RESULT XSI_AIS_JOB_LOGIN_ERROR = PLAT_CODE(0xC1020017);

/* ---- Enumerations --------------------------------------------------------------------------------- */

/* The kind of job a job information set prepares. */
enum XSI_AIS_JOB_CATEGORY : int {
    XSI_AIS_JOB_CATEGORY_COPY = 1,
    XSI_AIS_JOB_CATEGORY_SCAN = 2,          /* scan to the application (scan data, OCR) */
    XSI_AIS_JOB_CATEGORY_SEND = 3,          /* scan and send to FTP, SMB or e-mail */
    XSI_AIS_JOB_CATEGORY_FAX = 4,
    XSI_AIS_JOB_CATEGORY_BOX = 5,           /* a box job, after xsi_ais_job_box_job_prepare */
    XSI_AIS_JOB_CATEGORY_DIRECT_PRINT = 6,  /* after xsi_ais_job_direct_print_prepare */
    XSI_AIS_JOB_CATEGORY_RETRIEVE = 7       /* after xsi_ais_job_retrieve_document_prepare */
};

/* One setting of a job information set: an integer or a text. */
enum XSI_AIS_JOB_SETTING : int {
    XSI_AIS_JOB_SETTING_COPIES = 1,
    XSI_AIS_JOB_SETTING_COLOR_MODE = 2,
    XSI_AIS_JOB_SETTING_ORIGINAL_SIZE = 3,
    XSI_AIS_JOB_SETTING_DUPLEX = 4,
    XSI_AIS_JOB_SETTING_RESOLUTION = 5,
    XSI_AIS_JOB_SETTING_DENSITY = 6,
    XSI_AIS_JOB_SETTING_ZOOM = 7,
    XSI_AIS_JOB_SETTING_PAPER_SOURCE = 8,
    XSI_AIS_JOB_SETTING_FILE_FORMAT = 9,
    XSI_AIS_JOB_SETTING_FILE_NAME = 10,     /* text */
    XSI_AIS_JOB_SETTING_MAIL_SUBJECT = 11,  /* text */
    XSI_AIS_JOB_SETTING_MAIL_BODY = 12      /* text */
};

/* A setting of three values (prohibition-related settings). */
enum XSI_AIS_PHB_SETTING_ID : int {
    XSI_AIS_PHB_SETTING_CUSTOM_SIZE = 1,    /* width, height, unit */
    XSI_AIS_PHB_SETTING_ZOOM_XY = 2,        /* horizontal, vertical, mode */
    XSI_AIS_PHB_SETTING_MARGIN = 3,         /* side, width, shift */
    XSI_AIS_PHB_SETTING_ERASE = 4           /* outer, centre, mode */
};

/* Which jobs xsi_ais_job_get_job_list lists. */
enum XSI_AIS_JOB_KIND : int {
    XSI_AIS_JOB_KIND_ALL = 0,
    XSI_AIS_JOB_KIND_PRINT = 1,             /* copy, box, direct print */
    XSI_AIS_JOB_KIND_SCAN = 2,              /* scan, send, document retrieval */
    XSI_AIS_JOB_KIND_FAX = 3
};

/* The setting whose disabled values xsi_ais_job_get_disable_info reports (a bit mask per setting). */
enum XSI_AIS_PHB_DISABLE_ITEM : int {
    XSI_AIS_PHB_DISABLE_COLOR_MODE = 0,
    XSI_AIS_PHB_DISABLE_ORIGINAL_SIZE = 1,
    XSI_AIS_PHB_DISABLE_ORIGINAL_DUPLEX = 2,
    XSI_AIS_PHB_DISABLE_ORIGINAL_DIR = 3,
    XSI_AIS_PHB_DISABLE_ORIGINAL_IMAGE = 4,
    XSI_AIS_PHB_DISABLE_ORIGINAL_MIXED = 5,
    XSI_AIS_PHB_DISABLE_ZOOM_MODE = 6,
    XSI_AIS_PHB_DISABLE_COMBINE_SETTING = 7,
    XSI_AIS_PHB_DISABLE_PAPER_SOURCE_SETTING = 8,
    XSI_AIS_PHB_DISABLE_FILE_FORMAT = 9,
    XSI_AIS_PHB_DISABLE_SCN_RESOLUTION = 10,
    XSI_AIS_PHB_DISABLE_FAX_RESOLUTION = 11,
    XSI_AIS_PHB_DISABLE_SCN_MULT_MODE = 12,
    XSI_AIS_PHB_DISABLE_REMOVAL_BLANKPAPER_MODE = 13,
    XSI_AIS_PHB_DISABLE_PDF_A_LEVEL = 14,
    XSI_AIS_PHB_DISABLE_CHINA_RED_COPY = 15
};

/* The format of the data a stream direct-print job receives. */
enum XSI_AIS_JOB_STREAM_WRITE_FILE : int {
    XSI_AIS_JOB_STREAM_FILE_PDF = 1,
    XSI_AIS_JOB_STREAM_FILE_TIFF = 2,
    XSI_AIS_JOB_STREAM_FILE_JPEG = 3,
    XSI_AIS_JOB_STREAM_FILE_PCL = 4,
    XSI_AIS_JOB_STREAM_FILE_PS = 5,
    XSI_AIS_JOB_STREAM_FILE_XPS = 6
};

/* The state of one stream write: more data follows, the last chunk, or the stream is abandoned. */
enum XSI_AIS_JOB_STREAM_STATE : int {
    XSI_AIS_JOB_STREAM_CONTINUE = 0,
    XSI_AIS_JOB_STREAM_END = 1,
    XSI_AIS_JOB_STREAM_ABORT = 2
};

/* Whether the device lets jobs start. */
enum XSI_AIS_STATE_OF_PROHIBITION : int {
    XSI_AIS_STATE_OF_PROHIBITION_PERMIT = 0,
    XSI_AIS_STATE_OF_PROHIBITION_PROHIBIT = 1
};

/* The destination kind of an XSI_AIS_JOB_SEND_INFO, choosing the meaningful member of its detail. */
enum XSI_AIS_JOB_ADDRESS_TYPE : int {
    XSI_AIS_JOB_ADDRESS_FTP = 1,
    XSI_AIS_JOB_ADDRESS_SMB = 2,
    XSI_AIS_JOB_ADDRESS_MAIL = 3,
    XSI_AIS_JOB_ADDRESS_FAX = 4
};

/* The recipient field of an e-mail destination. */
enum XSI_AIS_JOB_MAIL_ADDRESS_TYPE : int { XSI_AIS_JOB_MAIL_TO = 0, XSI_AIS_JOB_MAIL_CC = 1, XSI_AIS_JOB_MAIL_BCC = 2 };

/* The function whose defaults and signage mode are set (the platform's numbering). */
enum XSI_AIS_JOB_FUNC_TYPE : int { XSI_AIS_JOB_FUNC_COPY = 0, XSI_AIS_JOB_FUNC_SCAN = 1 };

/* Signage mode of a function (the platform's numbering). */
enum XSI_AIS_JOB_SIGNAGE_MODE : int {
    XSI_AIS_JOB_SIGNAGE_OFF = 0,
    XSI_AIS_JOB_SIGNAGE_ON = 1,
    XSI_AIS_JOB_SIGNAGE_EXCLUSIVE = 2
};

/* What a box job does with the document of XSI_AIS_BOX_JOB_INIT_SETTING. */
enum XSI_AIS_BOX_JOB_TYPE : int { XSI_AIS_BOX_JOB_PRINT = 1, XSI_AIS_BOX_JOB_SEND = 2, XSI_AIS_BOX_JOB_STORE = 3 };

/* doc_state of XSI_AIS_JOB_GET_SCAN_DATA: within a page, its last chunk, the last chunk of the document. */
enum XSI_AIS_JOB_SCAN_DOC_STATE : int {
    XSI_AIS_JOB_SCAN_DATA_CONTINUE = 0,
    XSI_AIS_JOB_SCAN_PAGE_END = 1,
    XSI_AIS_JOB_SCAN_DOC_END = 2
};

/* ocr_data_category of XSI_AIS_JOB_GET_OCR_DATA: which member of ocr_data is meaningful. */
enum XSI_AIS_JOB_OCR_DATA_CATEGORY : int { XSI_AIS_JOB_OCR_PAGE = 0, XSI_AIS_JOB_OCR_TEXT_LINE = 1 };

/* retrieve_state of XSI_AIS_JOB_GET_OCR_DATA: more records follow, or this is the last. */
enum XSI_AIS_JOB_OCR_RETRIEVE_STATE : int { XSI_AIS_JOB_OCR_CONTINUE = 0, XSI_AIS_JOB_OCR_END = 1 };

/* phb_type of XSI_AIS_PHB_INFO: which member of phb_info_detail is meaningful. */
enum XSI_AIS_PHB_TYPE : int { XSI_AIS_PHB_TYPE_START = 0, XSI_AIS_PHB_TYPE_DISABLE = 1, XSI_AIS_PHB_TYPE_AFTERWARD = 2 };

/* ---- Destinations --------------------------------------------------------------------------------- */

typedef struct {
    char host_name[XSI_AIS_JOB_FTP_HOST_NAME_SIZE];
    char path_name[XSI_AIS_JOB_FTP_PATH_NAME_SIZE];
    char login_user_name[XSI_AIS_JOB_FTP_USER_NAME_SIZE];
    char login_password[XSI_AIS_JOB_FTP_PASSWORD_SIZE];
    dev_ulong port_num;
} XSI_AIS_JOB_SEND_INFO_FTP;

typedef struct {
    char host_name[XSI_AIS_JOB_SMB_HOST_NAME_SIZE];
    char path_name[XSI_AIS_JOB_SMB_PATH_NAME_SIZE];
    char login_user_name[XSI_AIS_JOB_SMB_USER_NAME_SIZE];
    char login_password[XSI_AIS_JOB_SMB_PASSWORD_SIZE];
    dev_ulong port_num;
} XSI_AIS_JOB_SEND_INFO_SMB;

typedef struct {
    dev_ulong address_type; /* XSI_AIS_JOB_MAIL_ADDRESS_TYPE */
    char mail_address[XSI_AIS_JOB_MAIL_ADDRESS_SIZE];
} XSI_AIS_JOB_SEND_INFO_MAIL;

typedef struct {
    char fax_number[XSI_AIS_JOB_FAX_NUMBER_SIZE];
    char sub_address[XSI_AIS_JOB_SUB_ADDRESS_SIZE];
    char sub_address_password[XSI_AIS_JOB_SUB_ADDRESS_PASSWORD_SIZE];
    dev_ulong comrate;           /* transmission speed class */
    dev_ulong ecm;               /* error correction mode: 0 off, 1 on */
    dev_ulong cipher;            /* encrypted transmission: 0 off, 1 on */
    dev_ulong encryption_key_id;
} XSI_AIS_JOB_SEND_INFO_FAX;

/* One of them is meaningful, chosen by the address_type of the XSI_AIS_JOB_SEND_INFO holding it. */
typedef union {
    XSI_AIS_JOB_SEND_INFO_FTP ftp_info;
    XSI_AIS_JOB_SEND_INFO_SMB smb_info;
    XSI_AIS_JOB_SEND_INFO_MAIL mail_info;
    XSI_AIS_JOB_SEND_INFO_FAX fax_info;
} XSI_AIS_JOB_SEND_INFO_DETAIL;

typedef struct {
    dev_ulong address_type; /* XSI_AIS_JOB_ADDRESS_TYPE */
    XSI_AIS_JOB_SEND_INFO_DETAIL detail;
} XSI_AIS_JOB_SEND_INFO;

/* ---- Job lists and service messages ---------------------------------------------------------------- */

typedef struct {
    dev_ulong type;                          /* XSI_AIS_JOB_KIND */
    dev_ulong position;                      /* index of the first job asked for */
    dev_ulong request_num;                   /* jobs asked for, at most XSI_AIS_JOB_LIST_MAX */
    dev_ulong job_id[XSI_AIS_JOB_LIST_MAX];  /* user job ids */
    dev_ulong result_num;                    /* ids filled in */
    dev_ulong total_num;                     /* jobs of the kind in all */
} XSI_AIS_JOB_LIST;

/* Capacity of the data of a service message. */
#define XSI_AIS_JOB_SERVICE_MSG_DATA_SIZE 256

/* A request of the job service to an application service. */
typedef struct {
    dev_ulong app_service_id;
    dev_ulong ext_func_type;
    unsigned char msg_data[XSI_AIS_JOB_SERVICE_MSG_DATA_SIZE];
} XSI_AIS_JOB_SERVICE_MSG;

/* ---- Data transfers ------------------------------------------------------------------------------- */

typedef struct {
    signed char scan_data[XSI_AIS_JOB_GET_SCAN_DATA_SIZE];
    dev_ulong data_size;  /* bytes of scan_data filled */
    dev_ulong doc_state;  /* XSI_AIS_JOB_SCAN_DOC_STATE */
} XSI_AIS_JOB_GET_SCAN_DATA;
PLAT_ASSERT_SIZE(XSI_AIS_JOB_GET_SCAN_DATA, 16392);

/* One chunk of a stream direct-print job: 16384 data bytes, the 32-bit size, the 32-bit stream state. */
typedef struct {
    signed char stream_data[XSI_AIS_JOB_WRITE_STREAM_DATA_SIZE];
    dev_ulong data_size;     /* bytes of stream_data that count */
    dev_ulong stream_state;  /* XSI_AIS_JOB_STREAM_STATE */
} XSI_AIS_JOB_WRITE_STREAM_DATA;
PLAT_ASSERT_OFFSET(XSI_AIS_JOB_WRITE_STREAM_DATA, stream_data, 0);
PLAT_ASSERT_OFFSET(XSI_AIS_JOB_WRITE_STREAM_DATA, data_size, 16384);
PLAT_ASSERT_OFFSET(XSI_AIS_JOB_WRITE_STREAM_DATA, stream_state, 16388);
PLAT_ASSERT_SIZE(XSI_AIS_JOB_WRITE_STREAM_DATA, 16392);

/* ---- OCR results ---------------------------------------------------------------------------------- */

typedef struct {
    dev_ulong left;
    dev_ulong top;
    dev_ulong right;
    dev_ulong bottom;
} XSI_AIS_JOB_OCR_RECT;

typedef struct {
    XSI_AIS_JOB_OCR_RECT block_rect;
    dev_ulong block_dir;  /* text direction: 0 horizontal, 1 vertical */
    dev_ulong line_num;   /* text lines of the block, at most XSI_AIS_JOB_OCR_LINE_SIZE */
} XSI_AIS_JOB_OCR_BLOCK_DATA;

/* A page record: the sheet and one block of it. */
typedef struct {
    dev_ulong sheet_width;
    dev_ulong sheet_height;
    dev_ulong sheet_rotate_angle;  /* degrees */
    dev_ulong page_block_num;      /* blocks of the page */
    dev_ulong block_num;           /* the block this record describes */
    XSI_AIS_JOB_OCR_BLOCK_DATA block_data;
} XSI_AIS_JOB_OCR_PAGE_DATA;

/* A text-line record. text_data holds data_size bytes (not necessarily zero-terminated). */
typedef struct {
    uint16_t block_no;
    uint16_t line_no;
    XSI_AIS_JOB_OCR_RECT line_rect;
    uint16_t data_size;
    char text_data[XSI_AIS_JOB_OCR_TEXT_SIZE];
} XSI_AIS_JOB_OCR_TEXT_DATA;

/* One of them is meaningful, chosen by the ocr_data_category of the XSI_AIS_JOB_GET_OCR_DATA holding it. */
typedef union {
    XSI_AIS_JOB_OCR_PAGE_DATA page_data;
    XSI_AIS_JOB_OCR_TEXT_DATA text_data;
} XSI_AIS_JOB_OCR_DATA;

typedef struct {
    dev_ulong page_no;
    dev_ulong ocr_data_category;  /* XSI_AIS_JOB_OCR_DATA_CATEGORY */
    XSI_AIS_JOB_OCR_DATA ocr_data;
    dev_ulong retrieve_state;     /* XSI_AIS_JOB_OCR_RETRIEVE_STATE */
} XSI_AIS_JOB_GET_OCR_DATA;

/* ---- Documents ------------------------------------------------------------------------------------ */

typedef struct {
    dev_ulong box_job_type;  /* XSI_AIS_BOX_JOB_TYPE */
    dev_ulong box_id;
    char box_pass[XSI_AIS_JOB_BOX_PASS_SIZE];
    dev_ulong doc_id;
    char doc_pass[XSI_AIS_JOB_DOC_PASS_SIZE];
    char access_path[XSI_AIS_JOB_ACCESS_PATH_SIZE];
} XSI_AIS_BOX_JOB_INIT_SETTING;

typedef struct {
    dev_ulong box_id;
    char box_pass[XSI_AIS_JOB_BOX_PASS_SIZE];
    dev_ulong in_doc_id_parent;
    dev_ulong in_doc_id_child;
    char out_doc_name[XSI_AIS_JOB_DOC_NAME_SIZE];
} XSI_AIS_PHB_COMBINE_DOC_INFO;

/* ---- Prohibition and panel messages ---------------------------------------------------------------- */

/* The panel's main messages for a job information set (message numbers; 0 for none). */
typedef struct {
    dev_ulong main_msg_1;
    dev_ulong main_msg_2;
    dev_ulong main_msg_3;
    char msg_detail_filename[XSI_AIS_JOB_JOB_FILENAME_SIZE];
    dev_ulong msg_detail_info;
} XSI_AIS_PHB_GET_MESSAGE;

/* Disabled values per setting: one bit mask each. */
typedef struct {
    dev_ulong setting_id;  /* XSI_AIS_PHB_SETTING_ID or XSI_AIS_JOB_SETTING that caused it */
    uint16_t color_mode;
    uint16_t original_size;
    uint16_t original_duplex;
    uint16_t original_dir;
    uint16_t original_image;
    uint16_t original_mixed;
    uint16_t zoom_mode;
    uint16_t combine_setting;
    uint16_t paper_source_setting;
    uint16_t file_format;
    uint16_t scn_resolution;
    uint16_t fax_resolution;
    uint16_t scn_mult_mode;
    uint16_t removal_blankpaper_mode;
    uint16_t pdf_a_level;
    uint16_t china_red_copy;
} XSI_AIS_PHB_INFO_DISABLE;

/* Settings that the device changed afterwards: one bit mask each. */
typedef struct {
    dev_ulong setting_id;
    uint16_t original_size;
    uint16_t original_dir;
    uint16_t original_image;
    uint16_t original_mixed;
    uint16_t zoom_mode;
    uint16_t combine_setting;
    uint16_t paper_source_setting;
    uint16_t file_format;
    uint16_t scn_resolution;
    uint16_t fax_resolution;
    uint16_t scn_mult_mode;
    uint16_t removal_blankpaper_mode;
    uint16_t pdf_a_level;
    uint16_t china_red_copy;
    uint16_t feeder;
} XSI_AIS_PHB_INFO_AFTERWARD;

/* One of them is meaningful, chosen by the phb_type of the XSI_AIS_PHB_INFO holding it. */
typedef union {
    dev_ulong start_info;  /* non-zero: the job may not start */
    XSI_AIS_PHB_INFO_DISABLE disable_info;
    XSI_AIS_PHB_INFO_AFTERWARD afterward_info;
} XSI_AIS_PHB_INFO_DETAIL;

typedef struct {
    dev_ulong phb_type;  /* XSI_AIS_PHB_TYPE */
    XSI_AIS_PHB_INFO_DETAIL phb_info_detail;
} XSI_AIS_PHB_INFO;

/* ---- The job service's observer ------------------------------------------------------------------ */

/* Message ids (gen_ipc_msghdr::msg_id) of the job service's notifications, and the data each carries. */
enum XSI_AIS_JOB_OBSERVER_MSG : int {
    XSI_AIS_JOB_MSG_JOB_STATE_CHANGED = 1,   /* XSI_AIS_JOB_STATE */
    XSI_AIS_JOB_MSG_SCAN_COUNT = 2,          /* two 32-bit counts */
    XSI_AIS_JOB_MSG_START_PHB = 3,           /* one 32-bit value */
    XSI_AIS_JOB_MSG_DISABLE_INFO = 4,        /* one 32-bit value */
    XSI_AIS_JOB_MSG_MAIN_MESSAGE = 5,        /* one 32-bit value */
    XSI_AIS_JOB_MSG_PHB_INFO = 6,            /* a 32-bit handler id, then XSI_AIS_PHB_INFO */
    XSI_AIS_JOB_MSG_MESSAGE_INFO = 7,        /* a 32-bit handler id, then XSI_AIS_PHB_GET_MESSAGE */
    XSI_AIS_JOB_MSG_APP_SERVICE_REQUEST = 8  /* a 32-bit request id, then XSI_AIS_JOB_SERVICE_MSG */
};

/* What dispatch() answers for a message it cannot decode (an unknown id, or data of the wrong size). */
inline constexpr PLAT_RESULT XSI_AIS_JOB_OBSERVER_BAD_MESSAGE = PLAT_CODE(0xC1020007);

/*
 * The base of the job service's observers. The service calls dispatch() on its IPC thread for each message,
 * one message at a time per observer; dispatch() decodes it and calls the notification. Each notification
 * answers the service (0 for handled); the base's own bodies answer 0 and do nothing.
 */
class xsi_ais_job_observer : public gen_ipc_observer {
public:
    ~xsi_ais_job_observer() override;

    PLAT_RESULT dispatch(long kind, char* data, unsigned int size, gen_ipc_msghdr header) override;

    /* A user job changed state (started, ended, finished scanning). */
    virtual PLAT_RESULT notify_job_state_changed(XSI_AIS_JOB_STATE state);
    /* Scan progress of a job: two counts as the scanner reports them. */
    virtual PLAT_RESULT notify_scan_count(unsigned int count_1, unsigned int count_2);
    /* The start prohibition changed. */
    virtual PLAT_RESULT notify_start_phb(unsigned int value);
    /* The disabled settings (combination constraints) changed. */
    virtual PLAT_RESULT notify_disable_info(unsigned int value);
    /* The panel's main message changed. */
    virtual PLAT_RESULT notify_main_message(unsigned int value);
    /* Prohibition details for a job information set. */
    virtual PLAT_RESULT notify_phb_info(unsigned int handler_id, XSI_AIS_PHB_INFO& info);
    /* Panel message details for a job information set. */
    virtual PLAT_RESULT notify_message_info(unsigned int handler_id, XSI_AIS_PHB_GET_MESSAGE& message);
    /* A request of the job service to an application service. */
    virtual PLAT_RESULT notify_app_service_request(dev_ulong request_id, const XSI_AIS_JOB_SERVICE_MSG& message);
};

/* ---- The facade ----------------------------------------------------------------------------------- */

class xsi_ais_job_facade {
public:
    /* The job service client of this process (one for the process, never deleted). */
    static xsi_ais_job_facade* xsi_ais_job_get_instance();

    /* Observers: the service calls each registered observer on its IPC thread. Registering one twice gives
     * XSI_AIS_JOB_DUPL_OBSERVER, removing one that is not registered (or null) XSI_AIS_JOB_NO_OBSERVER. */
    PLAT_RESULT xsi_ais_job_add_observer(xsi_ais_job_observer* observer);
    PLAT_RESULT xsi_ais_job_remove_observer(xsi_ais_job_observer* observer);

    /* Job information sets. */
    PLAT_RESULT xsi_ais_job_generate_jobinfo(XSI_AIS_JOB_CATEGORY category, unsigned int& handler_id);
    PLAT_RESULT xsi_ais_job_generate_jobinfo_bkg(XSI_AIS_JOB_CATEGORY category, dev_ulong cert_id,
                                                 unsigned int& handler_id);
    PLAT_RESULT xsi_ais_job_set_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id, unsigned int value);
    PLAT_RESULT xsi_ais_job_set_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id, std::string value);
    PLAT_RESULT xsi_ais_job_set_value(unsigned int handler_id, XSI_AIS_PHB_SETTING_ID setting_id,
                                      unsigned int value_1, unsigned int value_2, unsigned int value_3);
    PLAT_RESULT xsi_ais_job_get_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id, unsigned int& value);
    PLAT_RESULT xsi_ais_job_get_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id, std::string& value);
    PLAT_RESULT xsi_ais_job_get_value(unsigned int handler_id, XSI_AIS_PHB_SETTING_ID setting_id,
                                      unsigned int& value_1, unsigned int& value_2, unsigned int& value_3);
    PLAT_RESULT xsi_ais_job_get_default_jobinfo_val(XSI_AIS_JOB_SETTING key, unsigned int& value);
    PLAT_RESULT xsi_ais_job_reset_jobinfo(unsigned int handler_id);
    PLAT_RESULT xsi_ais_job_commit_jobinfo(unsigned int handler_id);
    PLAT_RESULT xsi_ais_job_rollback_jobinfo(unsigned int handler_id);
    PLAT_RESULT xsi_ais_job_copy_jobinfo(unsigned int handler_id);
    PLAT_RESULT xsi_ais_job_delete_jobinfo(unsigned int handler_id);
    PLAT_RESULT xsi_ais_job_basic_func_set_value(XSI_AIS_JOB_FUNC_TYPE func_type, XSI_AIS_JOB_SETTING data_id,
                                                 unsigned int value);
    PLAT_RESULT xsi_ais_job_set_signage_mode(XSI_AIS_JOB_FUNC_TYPE func_type, XSI_AIS_JOB_SIGNAGE_MODE mode);
    PLAT_RESULT xsi_ais_job_notify_reset_default_value();

    /* Destinations of a job information set. */
    PLAT_RESULT xsi_ais_job_add_address(unsigned int handler_id, unsigned int& address_id,
                                        const XSI_AIS_JOB_SEND_INFO& info);
    PLAT_RESULT xsi_ais_job_update_address(unsigned int handler_id, unsigned int address_id,
                                           const XSI_AIS_JOB_SEND_INFO& info);
    PLAT_RESULT xsi_ais_job_delete_address(unsigned int handler_id, unsigned int address_id);
    PLAT_RESULT xsi_ais_job_delete_all_address(unsigned int handler_id);
    PLAT_RESULT xsi_ais_job_get_address(unsigned int handler_id, unsigned int address_id, XSI_AIS_JOB_SEND_INFO& info);
    PLAT_RESULT xsi_ais_job_get_address_id(unsigned int handler_id, unsigned int& count,
                                           std::vector<unsigned int>& address_ids);

    /* Services and user jobs. */
    PLAT_RESULT xsi_ais_job_start(XSI_AIS_JOB_CATEGORY category, unsigned int handler_id, unsigned int& service_id);
    PLAT_RESULT xsi_ais_job_kick(unsigned int service_id, unsigned int& user_job_id);
    PLAT_RESULT xsi_ais_job_cancel(unsigned int service_id, unsigned int user_job_id, dev_ulong cert_id);
    PLAT_RESULT xsi_ais_job_cancel_bkg(unsigned int service_id, unsigned int user_job_id, dev_ulong cert_id);
    PLAT_RESULT xsi_ais_job_continuous_read(unsigned int service_id);
    PLAT_RESULT xsi_ais_job_continuous_read_end(unsigned int service_id);
    PLAT_RESULT xsi_ais_job_get_service_id(unsigned int user_job_id, unsigned int& service_id);
    PLAT_RESULT xsi_ais_job_get_job_list(XSI_AIS_JOB_KIND kind, std::vector<unsigned int>& user_job_ids);

    /* Prohibition and panel messages. */
    PLAT_RESULT xsi_ais_job_check_state_of_prohibition();
    PLAT_RESULT xsi_ais_job_set_state_of_prohibition(XSI_AIS_STATE_OF_PROHIBITION state);
    PLAT_RESULT xsi_ais_job_get_start_phb(unsigned int handler_id, int& prohibited);
    PLAT_RESULT xsi_ais_job_get_disable_info(unsigned int handler_id, XSI_AIS_PHB_DISABLE_ITEM item,
                                             unsigned short& value);
    PLAT_RESULT xsi_ais_job_get_main_message(unsigned int handler_id, XSI_AIS_PHB_GET_MESSAGE& msg);

    /* Documents and data. */
    PLAT_RESULT xsi_ais_job_box_job_prepare(unsigned int handler_id, XSI_AIS_BOX_JOB_INIT_SETTING& setting);
    PLAT_RESULT xsi_ais_job_direct_print_prepare(unsigned int handler_id, char* file_path, char* file_name);
    PLAT_RESULT xsi_ais_job_direct_print_prepare(unsigned int handler_id, XSI_AIS_JOB_STREAM_WRITE_FILE file_format);
    PLAT_RESULT xsi_ais_job_write_stream_data(unsigned int user_job_id, XSI_AIS_JOB_WRITE_STREAM_DATA& data);
    PLAT_RESULT xsi_ais_job_retrieve_document_prepare(unsigned int handler_id, char* box_pass, dev_ulong box_id,
                                                      dev_ulong doc_id, char* store_path);
    PLAT_RESULT xsi_ais_job_combine_document(unsigned int handler_id, XSI_AIS_PHB_COMBINE_DOC_INFO& info);
    PLAT_RESULT xsi_ais_job_get_scan_data(unsigned int user_job_id, XSI_AIS_JOB_GET_SCAN_DATA& data);
    PLAT_RESULT xsi_ais_job_get_ocr_text_data(unsigned int handler_id, XSI_AIS_JOB_GET_OCR_DATA& data);

private:
    xsi_ais_job_facade() = default;
};

#endif /* XSI_AIS_JOB_H */
