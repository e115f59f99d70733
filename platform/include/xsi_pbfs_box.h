/*
 * The basic-function services' document boxes: user boxes and fax boxes (numbered, named document stores,
 * owned by a local user, a network user or nobody, shared or not, optionally protected by a password), the
 * documents stored in them, the job-retention boxes (print jobs the device keeps for quick copy, proof and
 * hold, private and stored print) and the files of a removable memory (the "easy box").
 *
 * A box has two numbers: its box number, which its owner chooses and which no two boxes of a kind share, and
 * its box id, which the device gives it when it is made and which every other operation takes.
 *
 * Listings are read in three steps: prepare (the number of entries each get hands back, giving a listing
 * handle and the total), get (repeated; each hands back up to that number of entries and says how many it
 * gave) and finish (the handle). A listing shows the device as it was at prepare.
 *
 * The operations whose names end in _bkg act for the user of a certificate id (a login of the authentication
 * service) and answer XSI_PBFS_BOX_LOGIN_ERROR when it names no current login.
 *
 * The facade is a process-wide singleton, reached through xsi_pbfs_box_facade::xsi_pbfs_box_get_instance().
 * Every operation returns 0 or one of the XSI_PBFS_BOX_* codes below.
 */
#ifndef XSI_PBFS_BOX_H
#define XSI_PBFS_BOX_H

#include "plat_types.h"

/* ---- Result codes -------------------------------------------------------------------------------------- */

#define XSI_PBFS_BOX_OK PLAT_CODE(0)
/* Any failure that has no code of its own. */
#define XSI_PBFS_BOX_NG PLAT_CODE(0xC1010C01)
/* An argument the service does not accept: a null pointer, a count of 0, a value outside its enumeration. */
#define XSI_PBFS_BOX_PARAM_ERROR PLAT_CODE(0xC1010C02)
/* The listing handle names no open listing. */
#define XSI_PBFS_BOX_HANDLE_ERROR PLAT_CODE(0xC1010C03)
/* A get after the listing's last entry. */
#define XSI_PBFS_BOX_LIST_END PLAT_CODE(0xC1010C04)
/* As many listings are open as the service keeps. */
#define XSI_PBFS_BOX_BUSY_ERROR PLAT_CODE(0xC1010C05)
/* No removable memory is inserted. */
#define XSI_PBFS_BOX_MEDIA_ERROR PLAT_CODE(0xC1010C06)
/* No box with this id (of the kind the operation concerns). */
#define XSI_PBFS_BOX_BOX_ID_NOTHING_ERROR PLAT_CODE(0xC1010C07)
/* No document with this id in the box. */
#define XSI_PBFS_BOX_DOC_ID_NOTHING_ERROR PLAT_CODE(0xC1010C08)
/* A removable-memory path that names nothing the operation can act on. */
#define XSI_PBFS_BOX_PATH_ERROR PLAT_CODE(0xC1010C09)
/* The password does not open the box (or the retained document). */
#define XSI_PBFS_BOX_BOX_PASSWORD_ERROR PLAT_CODE(0xC1010C0A)
/* The device holds as many boxes of the kind as it can. */
#define XSI_PBFS_BOX_BOX_NUM_LIMIT_OVER_ERROR PLAT_CODE(0xC1010C0B)
/* Another box of the kind has this box number. */
#define XSI_PBFS_BOX_BOX_NUM_OVERLAP_ERROR PLAT_CODE(0xC1010C0C)
/* No room: the space for boxes cannot hold the box's capacity, or the box cannot hold the document. */
#define XSI_PBFS_BOX_BOX_CAPACITY_FULL PLAT_CODE(0xC1010C0D)
/* The box is not the certificate's user's to see or change (not theirs, not shared, not an administrator). */
#define XSI_PBFS_BOX_PERMISSION_ERROR PLAT_CODE(0xC1010C0E)
/* The certificate id names no current login. */
#define XSI_PBFS_BOX_LOGIN_ERROR PLAT_CODE(0xC1010C10)

/* ---- Enumerations (32-bit on the device) ---------------------------------------------------------------- */

/* Who owns a box. A box whose owner login name is empty has no owner, whatever this says. */
enum XSI_PBFS_BOX_OWNER_TYPE : int32_t {
    XSI_PBFS_BOX_OWNER_TYPE_LOCAL_USER = 0,
    XSI_PBFS_BOX_OWNER_TYPE_NETWORK_USER = 1
};

/* Whether users other than the owner may use a box. */
enum XSI_PBFS_BOX_SHARE_VAL : int32_t {
    XSI_PBFS_BOX_SHARE_VAL_NOT_SHARE = 0,
    XSI_PBFS_BOX_SHARE_VAL_SHARE = 1
};

/* Whether a document stored under the name of one already in the box replaces it. */
enum XSI_PBFS_BOX_UPDATE_VAL : int32_t {
    XSI_PBFS_BOX_UPDATE_VAL_UNKNOWN = 0,
    XSI_PBFS_BOX_UPDATE_VAL_PERMIT = 1,
    XSI_PBFS_BOX_UPDATE_VAL_PROHIBIT = 2
};

/* Whether a document is deleted once a job has printed or sent it. */
enum XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_VAL : int32_t {
    XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_OFF = 0,
    XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_ON = 1
};

/* A stored document's resolution. */
enum XSI_PBFS_BOX_DOC_RESO : int32_t {
    XSI_PBFS_BOX_DOC_RESO_UNKNOWN = 0,
    XSI_PBFS_BOX_DOC_RESO_200X100 = 1,
    XSI_PBFS_BOX_DOC_RESO_200X200 = 2,
    XSI_PBFS_BOX_DOC_RESO_200X400 = 3,
    XSI_PBFS_BOX_DOC_RESO_300X300 = 4,
    XSI_PBFS_BOX_DOC_RESO_400X400 = 5,
    XSI_PBFS_BOX_DOC_RESO_600X600 = 6,
    XSI_PBFS_BOX_DOC_RESO_1200X1200 = 7,
    XSI_PBFS_BOX_DOC_RESO_MIXED = 8
};

/* What a document's page sizes are: one standard size (then given by the size code), others, or a mix. */
enum XSI_PBFS_BOX_DOC_PAGES_SIZE : int32_t {
    XSI_PBFS_BOX_DOC_PAGES_SIZE_UNKNOWN = 0,
    XSI_PBFS_BOX_DOC_PAGES_SIZE_STANDARD = 1,
    XSI_PBFS_BOX_DOC_PAGES_SIZE_NONSTANDARD = 2,
    XSI_PBFS_BOX_DOC_PAGES_SIZE_MIXED = 3
};

/* A stored document's colour mode. */
enum XSI_PBFS_BOX_DOC_COLOR : int32_t {
    XSI_PBFS_BOX_DOC_COLOR_UNKNOWN = 0,
    XSI_PBFS_BOX_DOC_COLOR_MONOCHROME = 1,
    XSI_PBFS_BOX_DOC_COLOR_GRAYSCALE = 2,
    XSI_PBFS_BOX_DOC_COLOR_FULL = 3,
    XSI_PBFS_BOX_DOC_COLOR_MIXED = 4
};

/* Why a print job was kept on the device. */
enum XSI_PBFS_BOX_DOC_TYPE : int32_t {
    XSI_PBFS_BOX_DOC_TYPE_QUICK_COPY = 0,
    XSI_PBFS_BOX_DOC_TYPE_PROOF_AND_HOLD = 1,
    XSI_PBFS_BOX_DOC_TYPE_PRIVATE = 2,
    XSI_PBFS_BOX_DOC_TYPE_STORED = 3
};

/* Which job-retention box a listing or deletion concerns: the box of the documents kept for that reason. */
enum XSI_PBFS_BOX_JBRT_BOX_TYPE : int32_t {
    XSI_PBFS_BOX_JBRT_BOX_TYPE_QUICK_COPY = 0,
    XSI_PBFS_BOX_JBRT_BOX_TYPE_PROOF_AND_HOLD = 1,
    XSI_PBFS_BOX_JBRT_BOX_TYPE_PRIVATE = 2,
    XSI_PBFS_BOX_JBRT_BOX_TYPE_STORED = 3
};

/* The kind of an entry of a removable-memory listing. */
enum XSI_PBFS_BOX_EASY_KIND : int32_t {
    XSI_PBFS_BOX_EASY_KIND_FILE = 0,
    XSI_PBFS_BOX_EASY_KIND_FOLDER = 1
};

/* The kind of space asked for by xsi_pbfs_box_get_box_available_capacity. */
#define XSI_PBFS_BOX_KIND_USER 0
#define XSI_PBFS_BOX_KIND_FAX 1

/* ---- Records ----------------------------------------------------------------------------------------- */

/* Capacities, terminating zero included for texts (UTF-8: three bytes a character). */
#define XSI_PBFS_BOX_NAME_SIZE 193
#define XSI_PBFS_BOX_OWNER_NAME_SIZE 385
#define XSI_PBFS_BOX_OWNER_LOGIN_NAME_SIZE 385
#define XSI_PBFS_BOX_OWNER_DOMAIN_NAME_SIZE 257
#define XSI_PBFS_BOX_PW_SIZE 17
#define XSI_PBFS_BOX_DOC_NAME_SIZE 256
#define XSI_PBFS_BOX_JBRT_USER_NAME_SIZE 388
#define XSI_PBFS_BOX_EASY_NAME_SIZE 1532
#define XSI_PBFS_BOX_EASY_PATH_SIZE 1532

/* The part of a box's description every box record shares. Sizes are in megabytes. */
typedef struct {
    dev_ulong box_num;
    char box_name[XSI_PBFS_BOX_NAME_SIZE];
    XSI_PBFS_BOX_OWNER_TYPE box_owner_type;
    char box_owner_name[XSI_PBFS_BOX_OWNER_NAME_SIZE];
    char box_owner_login_name[XSI_PBFS_BOX_OWNER_LOGIN_NAME_SIZE];
    XSI_PBFS_BOX_SHARE_VAL box_share;
    char box_owner_domain_name[XSI_PBFS_BOX_OWNER_DOMAIN_NAME_SIZE];
} XSI_PBFS_BOX_COMMON_INFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_COMMON_INFO, box_num, 0);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_COMMON_INFO, box_name, 4);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_COMMON_INFO, box_owner_type, 200);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_COMMON_INFO, box_owner_name, 204);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_COMMON_INFO, box_owner_login_name, 589);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_COMMON_INFO, box_share, 976);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_COMMON_INFO, box_owner_domain_name, 980);
PLAT_ASSERT_SIZE(XSI_PBFS_BOX_COMMON_INFO, 1240);

/* A box's whole description: read by the detail operations, given to add and update. */
typedef struct {
    XSI_PBFS_BOX_COMMON_INFO box_common_info;
    dev_ulong box_capacity;                          /* the most the box may hold; 0 for no limit */
    uint8_t box_preservation_period;                 /* days a document is kept; 0 for ever */
    XSI_PBFS_BOX_UPDATE_VAL box_data_update;
    XSI_PBFS_BOX_DOC_DEL_AFTER_JOB_VAL box_doc_delete_after_job;
    char box_pw[XSI_PBFS_BOX_PW_SIZE];               /* empty for a box without a password */
} XSI_PBFS_BOX_DETAIL_INFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DETAIL_INFO, box_capacity, 1240);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DETAIL_INFO, box_preservation_period, 1244);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DETAIL_INFO, box_data_update, 1248);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DETAIL_INFO, box_doc_delete_after_job, 1252);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DETAIL_INFO, box_pw, 1256);
PLAT_ASSERT_SIZE(XSI_PBFS_BOX_DETAIL_INFO, 1276);

/* One box of a box listing. */
typedef struct {
    XSI_PBFS_BOX_COMMON_INFO box_common_info;
    dev_ulong box_capacity;                          /* as in XSI_PBFS_BOX_DETAIL_INFO */
    dev_ulong box_current_size;                      /* megabytes its documents take */
    uint16_t box_doc_num;                            /* documents it holds */
    dev_ulong box_id;
    dev_ulong box_pw_set;                            /* 1 when the box has a password, else 0 */
} XSI_PBFS_BOX_LIST_INFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_LIST_INFO, box_capacity, 1240);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_LIST_INFO, box_current_size, 1244);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_LIST_INFO, box_doc_num, 1248);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_LIST_INFO, box_id, 1252);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_LIST_INFO, box_pw_set, 1256);
PLAT_ASSERT_SIZE(XSI_PBFS_BOX_LIST_INFO, 1260);

/* The fax boxes' records have the user boxes' layouts. */
typedef XSI_PBFS_BOX_LIST_INFO XSI_PBFS_BOX_FAX_BOX_LIST;
typedef XSI_PBFS_BOX_DETAIL_INFO XSI_PBFS_BOX_FAX_BOX_DETAIL_INFO;

/* One document of a box listing. Sizes in bytes; the date in seconds since 1970 (the device's time_t). */
typedef struct {
    char doc_name[XSI_PBFS_BOX_DOC_NAME_SIZE];
    dev_ulong page_count;
    XSI_PBFS_BOX_DOC_RESO resolution;
    XSI_PBFS_BOX_DOC_PAGES_SIZE pages_size;
    uint8_t size_code;                               /* the paper size, when pages_size is _STANDARD */
    XSI_PBFS_BOX_DOC_COLOR color;
    dev_time date;
    dev_ulong data_size;
    dev_ulong doc_id;
    dev_ulong doc_pw_set;                            /* 1 when the document has a password of its own */
} XSI_PBFS_BOX_DOC_INFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DOC_INFO, page_count, 256);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DOC_INFO, resolution, 260);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DOC_INFO, pages_size, 264);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DOC_INFO, size_code, 268);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DOC_INFO, color, 272);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DOC_INFO, date, 276);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DOC_INFO, data_size, 280);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_DOC_INFO, doc_id, 284);
PLAT_ASSERT_SIZE(XSI_PBFS_BOX_DOC_INFO, 292);

typedef XSI_PBFS_BOX_DOC_INFO XSI_PBFS_BOX_FAX_DOC_LIST;

/* One kept print job of a job-retention listing. */
typedef struct {
    dev_time date;
    dev_ulong data_size;
    char doc_name[XSI_PBFS_BOX_DOC_NAME_SIZE];
    dev_ulong doc_id;
    dev_ulong doc_pw_set;                            /* 1 when the document has a password (private print) */
    char user_name[XSI_PBFS_BOX_JBRT_USER_NAME_SIZE];
    XSI_PBFS_BOX_DOC_TYPE type;
} XSI_PBFS_BOX_JBRT_DOC_LIST;
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_JBRT_DOC_LIST, data_size, 4);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_JBRT_DOC_LIST, doc_name, 8);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_JBRT_DOC_LIST, doc_id, 264);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_JBRT_DOC_LIST, user_name, 272);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_JBRT_DOC_LIST, type, 660);
PLAT_ASSERT_SIZE(XSI_PBFS_BOX_JBRT_DOC_LIST, 664);

/* The details of one kept print job. */
typedef struct {
    dev_ulong page_count;
    XSI_PBFS_BOX_DOC_RESO resolution;
    XSI_PBFS_BOX_DOC_PAGES_SIZE pages_size;
    dev_ulong size_code;                             /* the paper size (low byte), when pages_size is _STANDARD */
    XSI_PBFS_BOX_DOC_COLOR color;
    dev_ulong copies;
} XSI_PBFS_BOX_JBRT_DOC_INFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_JBRT_DOC_INFO, resolution, 4);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_JBRT_DOC_INFO, pages_size, 8);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_JBRT_DOC_INFO, size_code, 12);
PLAT_ASSERT_SIZE(XSI_PBFS_BOX_JBRT_DOC_INFO, 24);

/* One entry of a removable-memory folder. Paths are the device's: "/" is the memory's top folder. */
typedef struct {
    XSI_PBFS_BOX_EASY_KIND kind;
    dev_ulong reserved;
    char name[XSI_PBFS_BOX_EASY_NAME_SIZE];
    dev_time date;
    dev_ulong data_size;                             /* bytes; 0 for a folder */
    char path[XSI_PBFS_BOX_EASY_PATH_SIZE];          /* the entry's own path */
} XSI_PBFS_BOX_EASY_BOX_INFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_EASY_BOX_INFO, name, 8);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_EASY_BOX_INFO, date, 1540);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_EASY_BOX_INFO, data_size, 1544);
PLAT_ASSERT_OFFSET(XSI_PBFS_BOX_EASY_BOX_INFO, path, 1548);
PLAT_ASSERT_SIZE(XSI_PBFS_BOX_EASY_BOX_INFO, 3080);

/* ---- The facade ------------------------------------------------------------------------------------- */

class xsi_pbfs_box_facade {
public:
    static xsi_pbfs_box_facade* xsi_pbfs_box_get_instance();

    /* User boxes. */
    PLAT_RESULT xsi_pbfs_box_get_box_info_prepare(unsigned int count_per_get, unsigned int& handle,
                                                  unsigned int& total_num);
    PLAT_RESULT xsi_pbfs_box_get_box_info_prepare_bkg(unsigned int count_per_get, dev_ulong cert_id,
                                                      unsigned int& handle, unsigned int& total_num);
    PLAT_RESULT xsi_pbfs_box_get_box_list_info(unsigned int handle, unsigned int& get_num,
                                               XSI_PBFS_BOX_LIST_INFO* list);
    PLAT_RESULT xsi_pbfs_box_get_box_info_finish(unsigned int handle);

    PLAT_RESULT xsi_pbfs_box_get_box_detail_info(dev_ulong box_id, const char* passwd, XSI_PBFS_BOX_DETAIL_INFO& info);
    PLAT_RESULT xsi_pbfs_box_get_box_detail_info_bkg(dev_ulong box_id, const char* passwd, dev_ulong cert_id,
                                                     XSI_PBFS_BOX_DETAIL_INFO& info);
    PLAT_RESULT xsi_pbfs_box_add_box(const XSI_PBFS_BOX_DETAIL_INFO& info);
    PLAT_RESULT xsi_pbfs_box_add_box_bkg(const XSI_PBFS_BOX_DETAIL_INFO& info, dev_ulong cert_id);
    PLAT_RESULT xsi_pbfs_box_update_box_info(dev_ulong box_id, const char* passwd, const XSI_PBFS_BOX_DETAIL_INFO& info);
    PLAT_RESULT xsi_pbfs_box_update_box_info_bkg(dev_ulong box_id, const char* passwd, dev_ulong cert_id,
                                                 const XSI_PBFS_BOX_DETAIL_INFO& info);
    PLAT_RESULT xsi_pbfs_box_delete_box(dev_ulong box_id, const char* passwd);
    PLAT_RESULT xsi_pbfs_box_delete_box_bkg(dev_ulong box_id, const char* passwd, dev_ulong cert_id);
    /* Megabytes left for new boxes of `box_kind` (XSI_PBFS_BOX_KIND_*). */
    PLAT_RESULT xsi_pbfs_box_get_box_available_capacity(dev_ulong box_kind, dev_ulong& capacity);
    PLAT_RESULT xsi_pbfs_box_get_box_available_capacity_bkg(dev_ulong box_kind, dev_ulong cert_id, dev_ulong& capacity);

    /* The documents of a user box. */
    PLAT_RESULT xsi_pbfs_box_get_document_info_prepare(dev_ulong box_id, const char* passwd, unsigned int count_per_get,
                                                       unsigned int& handle, unsigned int& total_num);
    PLAT_RESULT xsi_pbfs_box_get_document_info_prepare_bkg(dev_ulong box_id, const char* passwd,
                                                           unsigned int count_per_get, dev_ulong cert_id,
                                                           unsigned int& handle, unsigned int& total_num);
    PLAT_RESULT xsi_pbfs_box_get_document_info(unsigned int handle, unsigned int& get_num, XSI_PBFS_BOX_DOC_INFO* list);
    PLAT_RESULT xsi_pbfs_box_get_document_info_finish(unsigned int handle);
    PLAT_RESULT xsi_pbfs_box_delete_document(dev_ulong box_id, const char* passwd, dev_ulong doc_id);
    PLAT_RESULT xsi_pbfs_box_delete_document_bkg(dev_ulong box_id, const char* passwd, dev_ulong doc_id,
                                                 dev_ulong cert_id);

    /* Fax boxes and their documents. */
    PLAT_RESULT xsi_pbfs_box_get_fax_box_list_prepare(unsigned int count_per_get, unsigned int& handle,
                                                      unsigned int& total_num);
    PLAT_RESULT xsi_pbfs_box_get_fax_box_list(unsigned int handle, unsigned int& get_num,
                                              XSI_PBFS_BOX_FAX_BOX_LIST* list);
    PLAT_RESULT xsi_pbfs_box_get_fax_box_list_finish(unsigned int handle);
    PLAT_RESULT xsi_pbfs_box_get_fax_box_detail_info(dev_ulong box_id, const char* passwd,
                                                     XSI_PBFS_BOX_FAX_BOX_DETAIL_INFO& info);
    PLAT_RESULT xsi_pbfs_box_add_fax_box(const XSI_PBFS_BOX_FAX_BOX_DETAIL_INFO& info);
    PLAT_RESULT xsi_pbfs_box_update_fax_box_info(dev_ulong box_id, const char* passwd,
                                                 const XSI_PBFS_BOX_FAX_BOX_DETAIL_INFO& info);
    PLAT_RESULT xsi_pbfs_box_delete_fax_box(dev_ulong box_id, const char* passwd);
    PLAT_RESULT xsi_pbfs_box_get_fax_document_list_prepare(dev_ulong box_id, const char* passwd,
                                                           unsigned int count_per_get, unsigned int& handle,
                                                           unsigned int& total_num);
    PLAT_RESULT xsi_pbfs_box_get_fax_document_list(unsigned int handle, unsigned int& get_num,
                                                   XSI_PBFS_BOX_FAX_DOC_LIST* list);
    PLAT_RESULT xsi_pbfs_box_get_fax_document_list_finish(unsigned int handle);
    PLAT_RESULT xsi_pbfs_box_delete_fax_document(dev_ulong box_id, const char* passwd, dev_ulong doc_id);

    /* Job-retention documents. */
    PLAT_RESULT xsi_pbfs_box_get_job_retention_doc_list_prepare(XSI_PBFS_BOX_JBRT_BOX_TYPE type,
                                                                unsigned int count_per_get, unsigned int& handle,
                                                                unsigned int& total_num);
    PLAT_RESULT xsi_pbfs_box_get_job_retention_doc_list(unsigned int handle, unsigned int& get_num,
                                                        XSI_PBFS_BOX_JBRT_DOC_LIST* list);
    PLAT_RESULT xsi_pbfs_box_get_job_retention_doc_list_finish(unsigned int handle);
    PLAT_RESULT xsi_pbfs_box_get_job_retention_doc_info(dev_ulong doc_id, const char* passwd,
                                                        XSI_PBFS_BOX_JBRT_DOC_INFO& info);
    PLAT_RESULT xsi_pbfs_box_delete_job_retention_doc(XSI_PBFS_BOX_JBRT_BOX_TYPE type, dev_ulong doc_id,
                                                      const char* passwd);

    /* The files of a removable memory. */
    PLAT_RESULT xsi_pbfs_box_get_easy_box_info_prepare(const char* path, unsigned int count_per_get,
                                                       unsigned int& handle, unsigned int& total_num);
    PLAT_RESULT xsi_pbfs_box_get_easy_box_info(unsigned int handle, unsigned int& get_num,
                                               XSI_PBFS_BOX_EASY_BOX_INFO* list);
    PLAT_RESULT xsi_pbfs_box_get_easy_box_info_finish(unsigned int handle);
    PLAT_RESULT xsi_pbfs_box_delete_easy_document(const char* path);

private:
    xsi_pbfs_box_facade() = default;
};

#endif /* XSI_PBFS_BOX_H */
