/*
 * The job service's authentication facade: logins and logouts of device users, the device's authentication
 * mode, a user's rights and the information of a logged-in user.
 *
 * A successful login hands out a certificate id, a 32-bit value that names that one login until it is ended
 * by a logout (or a background logout, the form used for logins made on behalf of an application). A
 * certificate id is never 0. The device allows a limited number of logins at a time.
 *
 * The facade is a process-wide singleton, reached through xsi_ais_auth_facade::xsi_ais_auth_get_instance().
 * Every operation returns 0 or one of the XSI_AIS_AUTH_ERR_* codes below.
 */
#ifndef XSI_AIS_AUTH_H
#define XSI_AIS_AUTH_H

#include <string>

#include "plat_types.h"

/* ---- Result codes -------------------------------------------------------------------------------------- */

#define XSI_AIS_AUTH_OK PLAT_CODE(0)
/* Any failure that has no code of its own (the service cannot be reached, its store cannot be read). */
#define XSI_AIS_AUTH_ERR_FAILED PLAT_CODE(0xC1020400)
/* The password does not belong to the login name. */
#define XSI_AIS_AUTH_ERR_INVALID_PASSWORD PLAT_CODE(0xC1020401)
/* No such user (login name and domain), no such IC card, or no user of the kind asked for. */
#define XSI_AIS_AUTH_ERR_NOT_FOUND PLAT_CODE(0xC1020402)
/* An argument the service does not accept: a null pointer or an unknown mode or kind. */
#define XSI_AIS_AUTH_ERR_PARAM PLAT_CODE(0xC1020403)
/* The device has as many logins as it allows. */
#define XSI_AIS_AUTH_ERR_LOGIN_LIMIT PLAT_CODE(0xC102040C)
/* The certificate id names no current login. */
#define XSI_AIS_AUTH_ERR_INVALID_CERTIFICATE PLAT_CODE(0xC102040D)

/* ---- Enumerations (all 32-bit on the device) ------------------------------------------------------------ */

/* The device's authentication mode, and the kind of authentication a login asks for. */
enum XSI_AIS_AUTH_AUTHMODE : int32_t {
    XSI_AIS_AUTH_AUTHMODE_OFF = 0,      /* no authentication */
    XSI_AIS_AUTH_AUTHMODE_LOCAL = 1,    /* users of the device's own user store */
    XSI_AIS_AUTH_AUTHMODE_NETWORK = 2   /* users of an authentication domain (a network directory) */
};

/* Which logged-in user get_userinfo describes. */
enum XSI_AIS_AUTH_USERKIND : int32_t {
    XSI_AIS_AUTH_USERKIND_PANEL = 0,    /* the user logged in at the operation panel */
    XSI_AIS_AUTH_USERKIND_LATEST = 1    /* the user of the most recent login that is still current */
};

/* A user's rights. */
enum XSI_AIS_AUTH_RIGHTS : int32_t {
    XSI_AIS_AUTH_RIGHTS_ADMIN = 0,
    XSI_AIS_AUTH_RIGHTS_USER = 1,
    XSI_AIS_AUTH_RIGHTS_GUEST = 2
};

/* The function authentication mode (whether each device function asks for a login of its own). */
enum XSI_AIS_MODE_10_VAL : int32_t {
    XSI_AIS_MODE_10_VAL_OFF = 0,
    XSI_AIS_MODE_10_VAL_ON = 1
};

/* ---- Records ----------------------------------------------------------------------------------------- */

/* Text capacities, terminating zero included (UTF-8: three bytes a character). */
#define XSI_AIS_AUTH_LOGIN_NAME_SIZE 385
#define XSI_AIS_AUTH_LOGIN_PASSWD_SIZE 129
#define XSI_AIS_AUTH_USER_NAME_SIZE 193
#define XSI_AIS_AUTH_EMAIL_SIZE 129
#define XSI_AIS_AUTH_DOMAIN_SIZE 252
#define XSI_AIS_AUTH_DEPT_CODE_SIZE 9

/* Which functions a user may not use freely: 1 limits the function, 0 leaves it free. */
typedef struct {
    dev_ulong combine_limit;    /* combined (N-up) printing */
    dev_ulong duplex_limit;     /* one-sided printing only */
    dev_ulong eco_print_limit;  /* toner-saving printing enforced */
} XSI_AIS_FUNC_IMPL_PERMISSION;
PLAT_ASSERT_SIZE(XSI_AIS_FUNC_IMPL_PERMISSION, 12);

/* A logged-in user. */
typedef struct {
    dev_ulong id;                                      /* the user's number in the user store */
    char login_name[XSI_AIS_AUTH_LOGIN_NAME_SIZE];
    char user_name[XSI_AIS_AUTH_USER_NAME_SIZE];
    char email[XSI_AIS_AUTH_EMAIL_SIZE];
    dev_ulong dept_id;                                 /* department account number, 0 for none */
    dev_ulong acc_id;                                  /* accounting id */
    char domain[XSI_AIS_AUTH_DOMAIN_SIZE];             /* empty for a user of the device's own store */
    XSI_AIS_AUTH_RIGHTS rights;
    dev_ulong lang;                                    /* display language number */
    dev_ulong display;                                 /* panel display pattern number */
    dev_ulong job_limit;                               /* jobs allowed at a time, 0 for no limit */
    XSI_AIS_FUNC_IMPL_PERMISSION func_impl_permission;
} XSI_AIS_USERINFO_RECORD;
PLAT_ASSERT_OFFSET(XSI_AIS_USERINFO_RECORD, login_name, 4);
PLAT_ASSERT_OFFSET(XSI_AIS_USERINFO_RECORD, user_name, 389);
PLAT_ASSERT_OFFSET(XSI_AIS_USERINFO_RECORD, email, 582);
PLAT_ASSERT_OFFSET(XSI_AIS_USERINFO_RECORD, dept_id, 712);
PLAT_ASSERT_OFFSET(XSI_AIS_USERINFO_RECORD, domain, 720);
PLAT_ASSERT_OFFSET(XSI_AIS_USERINFO_RECORD, rights, 972);
PLAT_ASSERT_OFFSET(XSI_AIS_USERINFO_RECORD, func_impl_permission, 988);
PLAT_ASSERT_SIZE(XSI_AIS_USERINFO_RECORD, 1000);

/* A hidden user account, as the authentication service describes it. */
typedef struct {
    char login_name[XSI_AIS_AUTH_LOGIN_NAME_SIZE];
    char login_passwd[XSI_AIS_AUTH_LOGIN_PASSWD_SIZE];
    char user_name[XSI_AIS_AUTH_USER_NAME_SIZE];
    char email[XSI_AIS_AUTH_EMAIL_SIZE];
    char dept_code[XSI_AIS_AUTH_DEPT_CODE_SIZE];
    XSI_AIS_AUTH_RIGHTS rights;
    dev_ulong lang;
    dev_ulong display;
    dev_ulong job_limit;
} XSI_AIS_HIDE_USERINFO_RECORD;
PLAT_ASSERT_OFFSET(XSI_AIS_HIDE_USERINFO_RECORD, login_passwd, 385);
PLAT_ASSERT_OFFSET(XSI_AIS_HIDE_USERINFO_RECORD, user_name, 514);
PLAT_ASSERT_OFFSET(XSI_AIS_HIDE_USERINFO_RECORD, email, 707);
PLAT_ASSERT_OFFSET(XSI_AIS_HIDE_USERINFO_RECORD, dept_code, 836);
PLAT_ASSERT_OFFSET(XSI_AIS_HIDE_USERINFO_RECORD, rights, 848);
PLAT_ASSERT_SIZE(XSI_AIS_HIDE_USERINFO_RECORD, 864);

/* ---- The facade ------------------------------------------------------------------------------------- */

class xsi_ais_auth_facade {
public:
    static xsi_ais_auth_facade* xsi_ais_auth_get_instance();

    /* Logs a user of the local domain in; *cert_id receives the new certificate id. */
    PLAT_RESULT xsi_ais_auth_account_login(const std::string& login_name, const std::string& password,
                                           XSI_AIS_AUTH_AUTHMODE mode, dev_ulong* cert_id);
    /* Logs a user of the named authentication domain in. */
    PLAT_RESULT xsi_ais_auth_account_login(const std::string& login_name, const std::string& password,
                                           XSI_AIS_AUTH_AUTHMODE mode, const std::string& domain,
                                           dev_ulong* cert_id);
    /* Ends a login. */
    PLAT_RESULT xsi_ais_auth_logout(dev_ulong cert_id);
    /* Ends a login made on behalf of an application. */
    PLAT_RESULT xsi_ais_auth_logout_bkg(dev_ulong cert_id);
    /* Describes a logged-in user. */
    PLAT_RESULT xsi_ais_auth_get_userinfo(XSI_AIS_AUTH_USERKIND kind, XSI_AIS_USERINFO_RECORD& info);
    PLAT_RESULT xsi_ais_auth_get_authentication_mode(XSI_AIS_AUTH_AUTHMODE* mode);
    PLAT_RESULT xsi_ais_auth_set_authentication_mode(XSI_AIS_AUTH_AUTHMODE mode);
    /* A user's rights, after checking the password (local domain, then a named domain). */
    PLAT_RESULT xsi_ais_auth_get_rights(const std::string& login_name, const std::string& password,
                                        XSI_AIS_AUTH_RIGHTS* rights);
    PLAT_RESULT xsi_ais_auth_get_rights(const std::string& login_name, const std::string& password,
                                        const std::string& domain, XSI_AIS_AUTH_RIGHTS* rights);
    /* Logs in the user whose IC card gave `card_data` (the card id as text). */
    PLAT_RESULT xsi_ais_auth_idm_login(const char* card_data, dev_ulong* cert_id);
    PLAT_RESULT xsi_ais_auth_set_func_auth_mode(XSI_AIS_MODE_10_VAL mode);

private:
    xsi_ais_auth_facade() = default;
};

#endif /* XSI_AIS_AUTH_H */
