#include "user/qsf_fnd_user_account.h"

#include "core/trace.h"

namespace orvane {

namespace {

// The user store's codes the class tells apart. "not found" is the same result 2 as the authentication
// service's own "not found", although the codes belong to different services.
struct account_code {
    PLAT_RESULT code;
    int result;
    const char* word;
};
constexpr account_code kAccountCodes[] = {
    {XSI_PBFS_USER_OK, QSF_FND_USER_ACCOUNT_SUCCESS, "success"},
    {XSI_PBFS_USER_ERR_NOT_FOUND, QSF_FND_USER_ACCOUNT_NOT_FOUND, "not found"},
    {XSI_PBFS_USER_ERR_DUPLICATE_ID, QSF_FND_USER_ACCOUNT_DUPLICATE_ID, "duplicate id"},
};
constexpr account_code kAccountFailed{0, QSF_FND_USER_ACCOUNT_FAILED, "failed"};

xsi_pbfs_user_facade* store() { return xsi_pbfs_user_facade::xsi_pbfs_user_get_instance(); }

}  // namespace

qsf_fnd_user_account::~qsf_fnd_user_account() = default;

int qsf_fnd_user_account::create_hide_user(const XSI_PBFS_HIDE_USERINFO_RECORD& user) {
    JBRG_TRACE("[Enter]");
    return convert_retcode(store()->xsi_pbfs_user_create_hide_account(user));
}

int qsf_fnd_user_account::update_hide_user(const XSI_PBFS_HIDE_USERINFO_RECORD& user) {
    JBRG_TRACE("[Enter]");
    return convert_retcode(store()->xsi_pbfs_user_update_hide_account(user));
}

int qsf_fnd_user_account::remove_hide_user(const std::string& login_name) {
    JBRG_TRACE("[Enter]");
    return convert_retcode(store()->xsi_pbfs_user_delete_hide_account(login_name));
}

int qsf_fnd_user_account::remove_all_hide_user() {
    JBRG_TRACE("[Enter]");
    return convert_retcode(store()->xsi_pbfs_user_delete_all_hide_account());
}

int qsf_fnd_user_account::convert_retcode(dev_long code) {
    const account_code* outcome = &kAccountFailed;
    for (const account_code& entry : kAccountCodes) {
        if (entry.code == code) outcome = &entry;
    }
    JBRG_TRACE("%s. retcode = [%ld]", outcome->word, dev_ld(code));
    return outcome->result;
}

}  // namespace orvane
