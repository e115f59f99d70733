// Hidden user accounts of the device's user store: created, changed and removed by Java applications for
// users of their own. The login name is an account's key.
//
// Every operation answers 0 success, 2 no account of that login name, 3 an account of that login name
// exists already, or 4 any other failure.
#ifndef JBRG_USER_QSF_FND_USER_ACCOUNT_H
#define JBRG_USER_QSF_FND_USER_ACCOUNT_H

#include <string>

#include "plat_types.h"
#include "xsi_pbfs_user.h"

namespace orvane {

// The results of the class.
enum QSF_FND_USER_ACCOUNT_RESULT : int {
    QSF_FND_USER_ACCOUNT_SUCCESS = 0,
    QSF_FND_USER_ACCOUNT_NOT_FOUND = 2,
    QSF_FND_USER_ACCOUNT_DUPLICATE_ID = 3,
    QSF_FND_USER_ACCOUNT_FAILED = 4,
};

class qsf_fnd_user_account {
public:
    virtual ~qsf_fnd_user_account();

    int create_hide_user(const XSI_PBFS_HIDE_USERINFO_RECORD& user);
    int update_hide_user(const XSI_PBFS_HIDE_USERINFO_RECORD& user);
    int remove_hide_user(const std::string& login_name);
    int remove_all_hide_user();

protected:
    // The user store's code as the class's result, traced.
    int convert_retcode(dev_long code);
};

}  // namespace orvane

#endif  // JBRG_USER_QSF_FND_USER_ACCOUNT_H
