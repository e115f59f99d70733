/*
 * The basic-function services' address book: personal addresses (a name and the destinations registered for
 * it: e-mail, FTP, SMB, fax, Internet fax), groups of addresses and the members of a group (each member one
 * destination), and the records of the LDAP address book that the device can search.
 *
 * Listings are read in three steps: prepare (the number of records each get hands back, giving a listing
 * handle and the total), get (repeated; each hands back up to that number and says how many) and finish
 * (the handle). A listing shows the address book as it was at prepare. The search listings take the name to
 * match at prepare and at each get.
 *
 * The facade is a process-wide singleton, reached through
 * xsi_pbfs_address_book_facade::xsi_pbfs_address_book_get_instance(). Every operation returns 0 or one of the
 * XSI_PBFS_ADDRESSBOOK_* codes below.
 */
#ifndef XSI_PBFS_ADDRESS_BOOK_H
#define XSI_PBFS_ADDRESS_BOOK_H

#include "plat_types.h"

/* ---- Result codes -------------------------------------------------------------------------------------- */

#define XSI_PBFS_ADDRESSBOOK_OK PLAT_CODE(0)
/* Any failure that has no code of its own. */
#define XSI_PBFS_ADDRESSBOOK_NG PLAT_CODE(0xC1010301)
/* An argument the service does not accept: a null pointer, a count of 0, a null search name. */
#define XSI_PBFS_ADDRESSBOOK_PARAM_ERROR PLAT_CODE(0xC1010302)
/* The listing handle names no open listing of the kind. */
#define XSI_PBFS_ADDRESSBOOK_HANDLE_ERROR PLAT_CODE(0xC1010303)
/* A get after the listing's last record. */
#define XSI_PBFS_ADDRESSBOOK_LIST_END PLAT_CODE(0xC1010304)
/* As many listings are open as the service keeps. */
#define XSI_PBFS_ADDRESSBOOK_BUSY_ERROR PLAT_CODE(0xC1010305)
/* No group with this id. */
#define XSI_PBFS_ADDRESSBOOK_GROUP_ID_NOTHING_ERROR PLAT_CODE(0xC1010306)

/* ---- Enumerations and sizes ----------------------------------------------------------------------------- */

/* Which names a search compares: always 0 (the entry's name) from the bridge. */
typedef int32_t XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE;
#define XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE_NAME 0

/* The destination a group member is: the member record's `type`. */
#define XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_FTP 0
#define XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_SMB 1
#define XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_IFAX 2
#define XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_FAX 3
#define XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_EMAIL 4

/* The destinations registered for a personal address: bits of its `destinations`. */
#define XSI_PBFS_ADDRESSBOOK_DEST_EMAIL 0x01u
#define XSI_PBFS_ADDRESSBOOK_DEST_FTP 0x02u
#define XSI_PBFS_ADDRESSBOOK_DEST_SMB 0x04u
#define XSI_PBFS_ADDRESSBOOK_DEST_FAX 0x08u
#define XSI_PBFS_ADDRESSBOOK_DEST_IFAX 0x10u

/* Capacities, terminating zero included (UTF-8: three bytes a character). */
#define XSI_PBFS_ADDRESSBOOK_NAME_SIZE 193
#define XSI_PBFS_ADDRESSBOOK_PRONUNCIATION_SIZE 193
#define XSI_PBFS_ADDRESSBOOK_MAIL_ADDRESS_SIZE 257
#define XSI_PBFS_ADDRESSBOOK_HOST_SIZE 129
#define XSI_PBFS_ADDRESSBOOK_PATH_SIZE 257
#define XSI_PBFS_ADDRESSBOOK_LOGIN_NAME_SIZE 65
#define XSI_PBFS_ADDRESSBOOK_PASSWORD_SIZE 33
#define XSI_PBFS_ADDRESSBOOK_FAX_NUM_SIZE 65
#define XSI_PBFS_ADDRESSBOOK_FAX_ADDRESS_SIZE 129
#define XSI_PBFS_ADDRESSBOOK_FAX_NAME_SIZE 65
#define XSI_PBFS_ADDRESSBOOK_IFAX_ADDRESS_SIZE 257

/* The LDAP address book's sizes. */
#define XSI_PBFS_ADDRESSBOOK_MAX_LDAP_RESULT_ATTRS_SIZE 8
#define XSI_PBFS_ADDRESSBOOK_MAX_LDAP_ATTR_SIZE 65
#define XSI_PBFS_ADDRESSBOOK_MAX_LDAP_VALUE_SIZE 257
#define XSI_PBFS_ADDRESSBOOK_MAX_LDAP_SURNAME_SIZE 129
#define XSI_PBFS_ADDRESSBOOK_MAX_LDAP_NAME_SIZE 129
#define XSI_PBFS_ADDRESSBOOK_MAX_LDAP_SECTION_SIZE 129
#define XSI_PBFS_ADDRESSBOOK_MAX_LDAP_ATTRIBUTE_RESULT_SIZE 129
#define XSI_PBFS_ADDRESSBOOK_MAX_LDAP_ATTRIBUTE_DETAIL_SIZE 257
#define XSI_PBFS_ADDRESSBOOK_MAX_LDAP_SEARCH_NAME_SIZE 129

/* ---- Destinations --------------------------------------------------------------------------------------- */

typedef struct {
    char mail_address[XSI_PBFS_ADDRESSBOOK_MAIL_ADDRESS_SIZE];
} XSI_PBFS_ADDRESSBOOK_EMAIL_INFO;
PLAT_ASSERT_SIZE(XSI_PBFS_ADDRESSBOOK_EMAIL_INFO, 257);

/* An FTP server's or an SMB share's folder. */
typedef struct {
    char host[XSI_PBFS_ADDRESSBOOK_HOST_SIZE];
    char path[XSI_PBFS_ADDRESSBOOK_PATH_SIZE];
    dev_ulong port;
    char login_name[XSI_PBFS_ADDRESSBOOK_LOGIN_NAME_SIZE];
    char password[XSI_PBFS_ADDRESSBOOK_PASSWORD_SIZE];
} XSI_PBFS_ADDRESSBOOK_FOLDER_INFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_FOLDER_INFO, path, 129);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_FOLDER_INFO, port, 388);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_FOLDER_INFO, login_name, 392);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_FOLDER_INFO, password, 457);
PLAT_ASSERT_SIZE(XSI_PBFS_ADDRESSBOOK_FOLDER_INFO, 492);

typedef struct {
    char fax_num[XSI_PBFS_ADDRESSBOOK_FAX_NUM_SIZE];
    int8_t bitrate_type;
    int8_t ecm;
    char fax_address[XSI_PBFS_ADDRESSBOOK_FAX_ADDRESS_SIZE];
    char password[XSI_PBFS_ADDRESSBOOK_PASSWORD_SIZE];
    int8_t encode;
    int8_t encode_id;
    int8_t encode_box;
    int8_t encode_box_num;
    char name[XSI_PBFS_ADDRESSBOOK_FAX_NAME_SIZE];
    char department[XSI_PBFS_ADDRESSBOOK_FAX_NAME_SIZE];
    char company[XSI_PBFS_ADDRESSBOOK_FAX_NAME_SIZE];
    int8_t honorific_title_type;
} XSI_PBFS_ADDRESSBOOK_FAX_INFO;
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_FAX_INFO, fax_address, 67);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_FAX_INFO, password, 196);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_FAX_INFO, encode, 229);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_FAX_INFO, name, 233);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_FAX_INFO, honorific_title_type, 428);
PLAT_ASSERT_SIZE(XSI_PBFS_ADDRESSBOOK_FAX_INFO, 429);

typedef struct {
    char ifax_address[XSI_PBFS_ADDRESSBOOK_IFAX_ADDRESS_SIZE];
    int8_t mode_type;
    int8_t size_type;
    int8_t resolution_type;
    int8_t file_type;
    int8_t via_server;
} XSI_PBFS_ADDRESSBOOK_IFAX_INFO;
PLAT_ASSERT_SIZE(XSI_PBFS_ADDRESSBOOK_IFAX_INFO, 262);

/* ---- Entries ------------------------------------------------------------------------------------------- */

/* One personal address: its name and every destination registered for it (`destinations` says which; the
   others are zero). */
typedef struct {
    char name[XSI_PBFS_ADDRESSBOOK_NAME_SIZE];
    char pronunciation[XSI_PBFS_ADDRESSBOOK_PRONUNCIATION_SIZE];
    dev_ulong number;                                 /* the address's number in the book */
    dev_ulong destinations;                           /* XSI_PBFS_ADDRESSBOOK_DEST_* bits */
    XSI_PBFS_ADDRESSBOOK_EMAIL_INFO email;
    XSI_PBFS_ADDRESSBOOK_FOLDER_INFO ftp;
    XSI_PBFS_ADDRESSBOOK_FOLDER_INFO smb;
    XSI_PBFS_ADDRESSBOOK_FAX_INFO fax;
    XSI_PBFS_ADDRESSBOOK_IFAX_INFO ifax;
    unsigned char reserved[373];
} XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS;
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS, pronunciation, 193);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS, number, 388);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS, destinations, 392);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS, email, 396);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS, ftp, 656);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS, smb, 1148);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS, fax, 1640);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS, ifax, 2069);
PLAT_ASSERT_SIZE(XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS, 2704);

/* One group of addresses. */
typedef struct {
    char name[XSI_PBFS_ADDRESSBOOK_NAME_SIZE];
    char pronunciation[XSI_PBFS_ADDRESSBOOK_PRONUNCIATION_SIZE];
    uint16_t id;                                      /* the id the member listing takes */
    uint16_t number;                                  /* the group's number in the book */
} XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS;
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS, pronunciation, 193);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS, id, 386);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS, number, 388);
PLAT_ASSERT_SIZE(XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS, 390);

/* One member of a group: one destination of a personal address, named after it. */
typedef struct {
    char name[XSI_PBFS_ADDRESSBOOK_NAME_SIZE];
    char pronunciation[XSI_PBFS_ADDRESSBOOK_PRONUNCIATION_SIZE];
    unsigned char reserved[2];
    int8_t type;                                      /* XSI_PBFS_ADDRESSBOOK_MEMBER_TYPE_* */
    union {
        XSI_PBFS_ADDRESSBOOK_FOLDER_INFO ftp;         /* type 0 */
        XSI_PBFS_ADDRESSBOOK_FOLDER_INFO smb;         /* type 1 */
        XSI_PBFS_ADDRESSBOOK_IFAX_INFO ifax;          /* type 2 */
        XSI_PBFS_ADDRESSBOOK_FAX_INFO fax;            /* type 3 */
        XSI_PBFS_ADDRESSBOOK_EMAIL_INFO email;        /* type 4 */
        unsigned char raw[1032];
    } destination;
    dev_ulong number;                                 /* the personal address's number */
} XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER;
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER, pronunciation, 193);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER, type, 388);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER, destination, 392);
PLAT_ASSERT_OFFSET(XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER, number, 1424);
PLAT_ASSERT_SIZE(XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER, 1428);

/* ---- The LDAP address book ------------------------------------------------------------------------------ */

/* What an LDAP search looks for. */
typedef struct {
    int32_t scope;
    /* The attributes a result carries, separated by commas: at most MAX_LDAP_RESULT_ATTRS_SIZE of them. */
    char attribute_result[XSI_PBFS_ADDRESSBOOK_MAX_LDAP_ATTRIBUTE_RESULT_SIZE];
    int32_t search_type;
    int32_t category_type;
    int32_t search_item;
    int32_t cond_type;
    char search_cond[XSI_PBFS_ADDRESSBOOK_MAX_LDAP_VALUE_SIZE];
    char ldap_attr[XSI_PBFS_ADDRESSBOOK_MAX_LDAP_ATTR_SIZE];
    char ldap_value[XSI_PBFS_ADDRESSBOOK_MAX_LDAP_VALUE_SIZE];
    dev_ulong cert_id;
} XSI_PBFS_ADDRESSBOOK_LDAP_FILTER_KEY;

/* Where an LDAP entry is sent to. */
typedef struct {
    char mail_address[XSI_PBFS_ADDRESSBOOK_MAIL_ADDRESS_SIZE];
    char fax_no[XSI_PBFS_ADDRESSBOOK_FAX_NUM_SIZE];
} XSI_PBFS_ADDRESSBOOK_LDAP_SEND_INFO;
PLAT_ASSERT_SIZE(XSI_PBFS_ADDRESSBOOK_LDAP_SEND_INFO, 322);

/* One entry an LDAP search found. */
typedef struct {
    char surname[XSI_PBFS_ADDRESSBOOK_MAX_LDAP_SURNAME_SIZE];
    char name[XSI_PBFS_ADDRESSBOOK_MAX_LDAP_NAME_SIZE];
    char section[XSI_PBFS_ADDRESSBOOK_MAX_LDAP_SECTION_SIZE];
    int32_t send_category;
    XSI_PBFS_ADDRESSBOOK_LDAP_SEND_INFO send_info;
    char attribute_result[XSI_PBFS_ADDRESSBOOK_MAX_LDAP_ATTRIBUTE_RESULT_SIZE];
    char attribute_detail[XSI_PBFS_ADDRESSBOOK_MAX_LDAP_ATTRIBUTE_DETAIL_SIZE];
} XSI_PBFS_ADDRESSBOOK_LDAP_ADDRESS;

/* A name to search the LDAP address book for. */
typedef struct {
    char name[XSI_PBFS_ADDRESSBOOK_MAX_LDAP_SEARCH_NAME_SIZE];
    int32_t name_type;
    int32_t name_match_type;
} XSI_PBFS_ADDRESSBOOK_LDAP_SEARCH_KEY;

/* ---- The facade ------------------------------------------------------------------------------------- */

class xsi_pbfs_address_book_facade {
public:
    static xsi_pbfs_address_book_facade* xsi_pbfs_address_book_get_instance();

    /* Every personal address, by number. */
    PLAT_RESULT xsi_pbfs_address_book_get_personal_address_list_prepare(unsigned int count_per_get,
                                                                        unsigned int& handle, unsigned int& total_num);
    PLAT_RESULT xsi_pbfs_address_book_get_personal_address_list(unsigned int handle, unsigned int& get_num,
                                                                XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS* list);
    PLAT_RESULT xsi_pbfs_address_book_get_personal_address_list_finish(unsigned int handle);

    /* The personal addresses whose names match `name`. */
    PLAT_RESULT xsi_pbfs_address_book_search_personal_address_list_prepare(
        unsigned int count_per_get, const char* name, unsigned int& handle, unsigned int& total_num,
        XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type);
    PLAT_RESULT xsi_pbfs_address_book_search_personal_address_list(unsigned int handle, const char* name,
                                                                   unsigned int& get_num,
                                                                   XSI_PBFS_ADDRESSBOOK_PERSONAL_ADDRESS* list,
                                                                   XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type);
    PLAT_RESULT xsi_pbfs_address_book_search_personal_address_list_finish(unsigned int handle);

    /* Every group, by number. */
    PLAT_RESULT xsi_pbfs_address_book_get_group_address_list_prepare(unsigned int count_per_get, unsigned int& handle,
                                                                     unsigned int& total_num);
    PLAT_RESULT xsi_pbfs_address_book_get_group_address_list(unsigned int handle, unsigned int& get_num,
                                                             XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS* list);
    PLAT_RESULT xsi_pbfs_address_book_get_group_address_list_finish(unsigned int handle);

    /* The groups whose names match `name`. */
    PLAT_RESULT xsi_pbfs_address_book_search_group_address_list_prepare(unsigned int count_per_get, const char* name,
                                                                        unsigned int& handle, unsigned int& total_num,
                                                                        XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type);
    PLAT_RESULT xsi_pbfs_address_book_search_group_address_list(unsigned int handle, const char* name,
                                                                unsigned int& get_num,
                                                                XSI_PBFS_ADDRESSBOOK_GROUP_ADDRESS* list,
                                                                XSI_PBFS_ADDRESSBOOK_SEARCH_NAME_TYPE name_type);
    PLAT_RESULT xsi_pbfs_address_book_search_group_address_list_finish(unsigned int handle);

    /* The members of the group `group_id`. */
    PLAT_RESULT xsi_pbfs_address_book_get_group_member_address_list_grp_mem_str_prepare(unsigned short group_id,
                                                                                       unsigned int count_per_get,
                                                                                       unsigned int& handle,
                                                                                       unsigned int& total_num);
    PLAT_RESULT xsi_pbfs_address_book_get_group_member_address_list(unsigned int handle, unsigned int& get_num,
                                                                    XSI_PBFS_ADDRESSBOOK_GROUP_MEMBER* list);
    PLAT_RESULT xsi_pbfs_address_book_get_group_member_address_list_finish(unsigned int handle);

private:
    xsi_pbfs_address_book_facade() = default;
};

#endif /* XSI_PBFS_ADDRESS_BOOK_H */
