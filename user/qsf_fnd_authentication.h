// Logins, logouts, rights and the authentication mode of the device, and its local user list.
//
// A stateless front to the platform's authentication service; the local user list comes from the user store
// and reaches Java as orvane/qsf/user/UserImpl objects made by qsf_fnd_user_info. A successful login yields a
// certificate id, under which the job proxy acts for that user until logout or logout_bkg ends it.
//
// Every operation answers one of the results below:
//   0 success, 1 invalid password, 2 user not found, 4 any other failure, 5 login limit reached,
//   6 invalid certificate. The value 3 is never produced.
#ifndef JBRG_USER_QSF_FND_AUTHENTICATION_H
#define JBRG_USER_QSF_FND_AUTHENTICATION_H

#include <jni.h>

#include <string>

#include "plat_types.h"
#include "xsi_ais_auth.h"

namespace orvane {

// Records of one field, so that Java can pass them as out-parameters.
struct QSF_FND_CERTIFICATE_ID {
    dev_ulong id;  // the certificate id of one login
};

struct QSF_FND_AUTH_MODE {
    XSI_AIS_AUTH_AUTHMODE mode;  // the platform's value, unchanged
};

struct QSF_FND_USER_ACCESS_LEVEL {
    XSI_AIS_AUTH_RIGHTS level;  // the platform's value, unchanged
};

// The results of the class.
enum QSF_FND_AUTH_RESULT : int {
    QSF_FND_AUTH_SUCCESS = 0,
    QSF_FND_AUTH_INVALID_PASSWORD = 1,
    QSF_FND_AUTH_NOT_FOUND = 2,
    QSF_FND_AUTH_FAILED = 4,
    QSF_FND_AUTH_LOGIN_LIMIT = 5,
    QSF_FND_AUTH_INVALID_CERTIFICATE = 6,
};

class qsf_fnd_authentication {
public:
    virtual ~qsf_fnd_authentication();

    // Logs a user of the device's own store in. The certificate id is written whatever the outcome: 0 unless
    // the platform handed one out. 0, 1, 2, 5 or 4.
    int login(const std::string& login_name, const std::string& password, XSI_AIS_AUTH_AUTHMODE mode,
              QSF_FND_CERTIFICATE_ID& cert);
    // The same for a user of the authentication domain `domain`.
    int login(const std::string& login_name, const std::string& password, XSI_AIS_AUTH_AUTHMODE mode,
              const std::string& domain, QSF_FND_CERTIFICATE_ID& cert);

    // Ends a login: 0, 6 or 4.
    int logout(dev_ulong cert_id);
    // Ends a login made on behalf of an application: 0, 6 or 4.
    int logout_bkg(dev_ulong cert_id);

    // Describes the logged-in user of the kind given: 0 or 4.
    int get_login_user_info(XSI_AIS_AUTH_USERKIND kind, XSI_AIS_USERINFO_RECORD& info);

    // The device's authentication mode: 0 (mode written) or 4 (mode untouched).
    int get_auth_mode(QSF_FND_AUTH_MODE& mode);
    int set_auth_mode(XSI_AIS_AUTH_AUTHMODE mode);

    // A user's rights: 0 (level written), 1, 2 or 4 (level untouched).
    int get_rights(const std::string& login_name, const std::string& password, QSF_FND_USER_ACCESS_LEVEL& level);
    int get_rights(const std::string& login_name, const std::string& password, const std::string& domain,
                   QSF_FND_USER_ACCESS_LEVEL& level);

    // Logs in the user of an IC card: 0 (certificate id written), 2 or 4 (certificate id untouched).
    int iccard_login(char* card_data, QSF_FND_CERTIFICATE_ID& cert);

    // The function authentication mode: 0 or 4.
    int set_func_login_mode(XSI_AIS_MODE_10_VAL mode);

    // Appends a UserImpl for each local user of the device to `list` (a java/util/ArrayList): 0 or 4. A
    // failure leaves the users appended so far in the list.
    int get_local_user_list(jobject list);
};

}  // namespace orvane

#endif  // JBRG_USER_QSF_FND_AUTHENTICATION_H
