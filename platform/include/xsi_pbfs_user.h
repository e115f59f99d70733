/*
 * The basic-function services' user store: the device's local users, listed, and its hidden user accounts
 * (accounts that applications make for their own users, kept out of the local user list and keyed by their
 * login name).
 *
 * The local user list is read in three steps: prepare (the number of records each get hands back, giving a
 * listing handle and the total), get (repeated; each hands back up to that number of records and says how
 * many it gave) and finish (the handle). A listing shows the store as it was at prepare.
 *
 * The facade is a process-wide singleton, reached through xsi_pbfs_user_facade::xsi_pbfs_user_get_instance().
 * Every operation returns 0 or one of the XSI_PBFS_USER_ERR_* codes below.
 */
#ifndef XSI_PBFS_USER_H
#define XSI_PBFS_USER_H

#include <string>

#include "plat_types.h"

/* ---- Result codes -------------------------------------------------------------------------------------- */

#define XSI_PBFS_USER_OK PLAT_CODE(0)
/* Any failure that has no code of its own. */
#define XSI_PBFS_USER_ERR_FAILED PLAT_CODE(0xC1010401)
/* No account of that login name. */
#define XSI_PBFS_USER_ERR_NOT_FOUND PLAT_CODE(0xC1010402)
/* An argument the store does not accept: a null pointer, a count of 0, an empty login name. */
#define XSI_PBFS_USER_ERR_PARAM PLAT_CODE(0xC1010403)
/* The listing handle names no open listing. */
#define XSI_PBFS_USER_ERR_HANDLE PLAT_CODE(0xC1010404)
/* An account of that login name exists already. */
#define XSI_PBFS_USER_ERR_DUPLICATE_ID PLAT_CODE(0xC1010405)
/* The store holds as many hidden accounts as it can. */
#define XSI_PBFS_USER_ERR_FULL PLAT_CODE(0xC1010406)
/* A get after the listing's last record. */
#define XSI_PBFS_USER_ERR_END PLAT_CODE(0xC1010407)

/* ---- Enumerations (32-bit on the device) ---------------------------------------------------------------- */

/* A user's rights, as the user store keeps them. */
enum XSI_PBFS_USER_RIGHTS : int32_t {
    XSI_PBFS_USER_RIGHTS_ADMIN = 0,
    XSI_PBFS_USER_RIGHTS_USER = 1,
    XSI_PBFS_USER_RIGHTS_GUEST = 2
};

/* ---- Records ----------------------------------------------------------------------------------------- */

/* Capacities, terminating zero included for texts (UTF-8: three bytes a character). */
#define XSI_PBFS_USER_LOGIN_NAME_SIZE 385
#define XSI_PBFS_USER_LOGIN_PASSWD_SIZE 129
#define XSI_PBFS_USER_USER_NAME_SIZE 193
#define XSI_PBFS_USER_EMAIL_SIZE 129
#define XSI_PBFS_USER_KANA_SIZE 193
#define XSI_PBFS_USER_DOMAIN_SIZE 252
#define XSI_PBFS_USER_DEPT_CODE_SIZE 9
#define XSI_PBFS_USER_CARD_ID_SIZE 64
#define XSI_PBFS_USER_COMPANY_CODE_SIZE 16
#define XSI_PBFS_USER_STAFF_NO_SIZE 32

/* Which functions a user may not use freely: 1 limits the function, 0 leaves it free. */
typedef struct {
    dev_ulong combine_limit;
    dev_ulong duplex_limit;
    dev_ulong eco_print_limit;
} XSI_PBFS_FUNC_IMPL_PERMISSION;
PLAT_ASSERT_SIZE(XSI_PBFS_FUNC_IMPL_PERMISSION, 12);

/* One local user of the store. */
typedef struct {
    char login_name[XSI_PBFS_USER_LOGIN_NAME_SIZE];
    char user_name[XSI_PBFS_USER_USER_NAME_SIZE];
    char email[XSI_PBFS_USER_EMAIL_SIZE];
    XSI_PBFS_USER_RIGHTS rights;
    char kana[XSI_PBFS_USER_KANA_SIZE];                /* the name's reading, for sorting */
    dev_ulong dept_id;                                 /* department account number, 0 for none */
    dev_ulong acc_id;                                  /* accounting id */
    char domain[XSI_PBFS_USER_DOMAIN_SIZE];            /* empty for a user of the device's own store */
    dev_ulong lang;                                    /* display language number */
    dev_ulong display;                                 /* panel display pattern number */
    dev_ulong job_limit;                               /* jobs allowed at a time, 0 for no limit */
    XSI_PBFS_FUNC_IMPL_PERMISSION func_impl_permission;
} XSI_PBFS_USERINFO_RECORD;
PLAT_ASSERT_OFFSET(XSI_PBFS_USERINFO_RECORD, login_name, 0);
PLAT_ASSERT_OFFSET(XSI_PBFS_USERINFO_RECORD, user_name, 385);
PLAT_ASSERT_OFFSET(XSI_PBFS_USERINFO_RECORD, email, 578);
PLAT_ASSERT_OFFSET(XSI_PBFS_USERINFO_RECORD, rights, 708);
PLAT_ASSERT_OFFSET(XSI_PBFS_USERINFO_RECORD, kana, 712);
PLAT_ASSERT_OFFSET(XSI_PBFS_USERINFO_RECORD, dept_id, 908);
PLAT_ASSERT_OFFSET(XSI_PBFS_USERINFO_RECORD, domain, 916);
PLAT_ASSERT_OFFSET(XSI_PBFS_USERINFO_RECORD, func_impl_permission, 1180);
PLAT_ASSERT_SIZE(XSI_PBFS_USERINFO_RECORD, 1192);

/* A hidden user account; the login name is its key. */
typedef struct {
    char login_name[XSI_PBFS_USER_LOGIN_NAME_SIZE];
    char login_passwd[XSI_PBFS_USER_LOGIN_PASSWD_SIZE];
    char user_name[XSI_PBFS_USER_USER_NAME_SIZE];
    char email[XSI_PBFS_USER_EMAIL_SIZE];
    char dept_code[XSI_PBFS_USER_DEPT_CODE_SIZE];
    XSI_PBFS_USER_RIGHTS rights;
    dev_ulong lang;
    dev_ulong display;
    dev_ulong job_limit;
} XSI_PBFS_HIDE_USERINFO_RECORD;
PLAT_ASSERT_OFFSET(XSI_PBFS_HIDE_USERINFO_RECORD, login_passwd, 385);
PLAT_ASSERT_OFFSET(XSI_PBFS_HIDE_USERINFO_RECORD, user_name, 514);
PLAT_ASSERT_OFFSET(XSI_PBFS_HIDE_USERINFO_RECORD, email, 707);
PLAT_ASSERT_OFFSET(XSI_PBFS_HIDE_USERINFO_RECORD, dept_code, 836);
PLAT_ASSERT_OFFSET(XSI_PBFS_HIDE_USERINFO_RECORD, rights, 848);
PLAT_ASSERT_SIZE(XSI_PBFS_HIDE_USERINFO_RECORD, 864);

/* The IC card registered for an accounting id: the card's id and, for company cards, the company code and
   the staff number, each as bytes with their length. */
typedef struct {
    dev_ulong acc_id;
    dev_ulong card_type;
    unsigned char card_id[XSI_PBFS_USER_CARD_ID_SIZE];
    dev_ulong card_id_size;
    unsigned char company_code[XSI_PBFS_USER_COMPANY_CODE_SIZE];
    dev_ulong company_code_size;
    unsigned char staff_no[XSI_PBFS_USER_STAFF_NO_SIZE];
    dev_ulong staff_no_size;
} XSI_PBFS_USER_IC_CARD_INFO_RECORD;
PLAT_ASSERT_OFFSET(XSI_PBFS_USER_IC_CARD_INFO_RECORD, card_id, 8);
PLAT_ASSERT_OFFSET(XSI_PBFS_USER_IC_CARD_INFO_RECORD, card_id_size, 72);
PLAT_ASSERT_OFFSET(XSI_PBFS_USER_IC_CARD_INFO_RECORD, staff_no_size, 128);
PLAT_ASSERT_SIZE(XSI_PBFS_USER_IC_CARD_INFO_RECORD, 132);

/* A look-up of IC card registrations: `mode` says which of the keys that follow are compared. */
typedef struct {
    dev_ulong mode;
    dev_ulong acc_id;
    unsigned char card_id[XSI_PBFS_USER_CARD_ID_SIZE];
    dev_ulong card_id_size;
    unsigned char company_code[XSI_PBFS_USER_COMPANY_CODE_SIZE];
    dev_ulong company_code_size;
    unsigned char staff_no[XSI_PBFS_USER_STAFF_NO_SIZE];
    dev_ulong staff_no_size;
} XSI_PBFS_USER_IC_CARD_INFO_REQUEST;
PLAT_ASSERT_SIZE(XSI_PBFS_USER_IC_CARD_INFO_REQUEST, 132);

/* ---- The facade ------------------------------------------------------------------------------------- */

class xsi_pbfs_user_facade {
public:
    static xsi_pbfs_user_facade* xsi_pbfs_user_get_instance();

    /* Opens a listing of the local users that hands back up to `count` records a get. */
    PLAT_RESULT xsi_pbfs_user_get_local_user_list_prepare(dev_ulong count, dev_ulong& handle, dev_ulong& total);
    /* The next records of the listing, into `records` (room for the listing's count); `get_num` says how many. */
    PLAT_RESULT xsi_pbfs_user_get_local_user_list(dev_ulong handle, dev_ulong& get_num,
                                                  XSI_PBFS_USERINFO_RECORD* records);
    /* Closes the listing. */
    PLAT_RESULT xsi_pbfs_user_get_local_user_list_finish(dev_ulong handle);

    PLAT_RESULT xsi_pbfs_user_create_hide_account(const XSI_PBFS_HIDE_USERINFO_RECORD& user);
    PLAT_RESULT xsi_pbfs_user_update_hide_account(const XSI_PBFS_HIDE_USERINFO_RECORD& user);
    PLAT_RESULT xsi_pbfs_user_delete_hide_account(const std::string& login_name);
    PLAT_RESULT xsi_pbfs_user_delete_all_hide_account();

private:
    xsi_pbfs_user_facade() = default;
};

#endif /* XSI_PBFS_USER_H */
