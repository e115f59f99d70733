#include "user/qsf_fnd_authentication.h"

#include <cstring>
#include <string>

#include "core/cjvm.h"
#include "core/jni_cache.h"
#include "core/jni_scoped.h"
#include "core/trace.h"
#include "emw_services.h"
#include "user/qsf_fnd_user_info.h"
#include "xsi_pbfs_user.h"

namespace orvane {

namespace {

// ---- Result codes ---------------------------------------------------------------------------------------

// The platform codes the class tells apart, its result for each and the word its trace lines use. Each
// operation names the results it tells apart; every other code is "failed".
struct auth_code {
    PLAT_RESULT code;
    int result;
    const char* word;
};
constexpr auth_code kAuthCodes[] = {
    {XSI_AIS_AUTH_OK, QSF_FND_AUTH_SUCCESS, "success"},
    {XSI_AIS_AUTH_ERR_INVALID_PASSWORD, QSF_FND_AUTH_INVALID_PASSWORD, "invalid password"},
    {XSI_AIS_AUTH_ERR_NOT_FOUND, QSF_FND_AUTH_NOT_FOUND, "not found"},
    {XSI_AIS_AUTH_ERR_LOGIN_LIMIT, QSF_FND_AUTH_LOGIN_LIMIT, "login limit"},
    {XSI_AIS_AUTH_ERR_INVALID_CERTIFICATE, QSF_FND_AUTH_INVALID_CERTIFICATE, "invalid certificate"},
};
constexpr auth_code kAuthFailed{0, QSF_FND_AUTH_FAILED, "failed"};

// The results an operation tells apart besides success and "failed", as a set of bits (1 << result).
constexpr unsigned told(int result) { return 1U << static_cast<unsigned>(result); }
constexpr unsigned kLoginResults =
    told(QSF_FND_AUTH_INVALID_PASSWORD) | told(QSF_FND_AUTH_NOT_FOUND) | told(QSF_FND_AUTH_LOGIN_LIMIT);
constexpr unsigned kLogoutResults = told(QSF_FND_AUTH_INVALID_CERTIFICATE);
constexpr unsigned kRightsResults = told(QSF_FND_AUTH_INVALID_PASSWORD) | told(QSF_FND_AUTH_NOT_FOUND);
constexpr unsigned kIccardResults = told(QSF_FND_AUTH_NOT_FOUND);
constexpr unsigned kOnlySuccess = 0;

const auth_code& convert(PLAT_RESULT code, unsigned results) {
    for (const auth_code& entry : kAuthCodes) {
        if (entry.code == code && (entry.result == QSF_FND_AUTH_SUCCESS || (results & told(entry.result)) != 0)) {
            return entry;
        }
    }
    return kAuthFailed;
}

xsi_ais_auth_facade* auth() { return xsi_ais_auth_facade::xsi_ais_auth_get_instance(); }

// ---- The local user list ----------------------------------------------------------------------------

// The user store hands the list over one record a get.
constexpr dev_ulong kUsersPerGet = 1;

jni::class_id jcls_array_list{"java/util/ArrayList"};
jni::method_id mid_array_list_add{jcls_array_list, "add", "(Ljava/lang/Object;)Z"};

// The text of a record field, up to its terminating zero and never past the field.
template <std::size_t N>
std::string field_text(const char (&field)[N]) {
    const void* end = std::memchr(field, '\0', N);
    return std::string(field, end == nullptr ? N : static_cast<std::size_t>(static_cast<const char*>(end) - field));
}

}  // namespace

qsf_fnd_authentication::~qsf_fnd_authentication() = default;

int qsf_fnd_authentication::login(const std::string& login_name, const std::string& password,
                                  XSI_AIS_AUTH_AUTHMODE mode, QSF_FND_CERTIFICATE_ID& cert) {
    JBRG_TRACE("[Enter]");
    dev_ulong cert_id = 0;
    PLAT_RESULT ret = auth()->xsi_ais_auth_account_login(login_name, password, mode, &cert_id);
    // The caller learns the certificate id whatever the outcome: 0 unless the platform handed one out.
    cert.id = cert_id;
    const auth_code& outcome = convert(ret, kLoginResults);
    switch (outcome.result) {
        case QSF_FND_AUTH_SUCCESS:
            JBRG_TRACE("success. result = [%d], cert_id = [%lu]", ret, dev_lx(cert_id));
            break;
        case QSF_FND_AUTH_LOGIN_LIMIT:
            JBRG_TRACE("login limit. retcode = [%d]", ret);
            break;
        default:
            JBRG_TRACE("%s. result = [%d]", outcome.word, ret);
            break;
    }
    return outcome.result;
}

// Traces "retcode" where the form without a domain traces "result": the two forms are told apart in the
// trace by that word.
int qsf_fnd_authentication::login(const std::string& login_name, const std::string& password,
                                  XSI_AIS_AUTH_AUTHMODE mode, const std::string& domain, QSF_FND_CERTIFICATE_ID& cert) {
    JBRG_TRACE("[Enter]");
    dev_ulong cert_id = 0;
    PLAT_RESULT ret = auth()->xsi_ais_auth_account_login(login_name, password, mode, domain, &cert_id);
    JBRG_TRACE("cert_id = [%lu]", dev_lx(cert_id));
    cert.id = cert_id;
    const auth_code& outcome = convert(ret, kLoginResults);
    if (outcome.result == QSF_FND_AUTH_SUCCESS) {
        JBRG_TRACE("success. retcode = [%d], cert_id = [%lu]", ret, dev_lx(cert_id));
    } else {
        JBRG_TRACE("%s. retcode = [%d]", outcome.word, ret);
    }
    return outcome.result;
}

int qsf_fnd_authentication::logout(dev_ulong cert_id) {
    JBRG_TRACE("[Enter]");
    PLAT_RESULT ret = auth()->xsi_ais_auth_logout(cert_id);
    const auth_code& outcome = convert(ret, kLogoutResults);
    JBRG_TRACE("%s. result = [%d]", outcome.word, ret);
    return outcome.result;
}

int qsf_fnd_authentication::logout_bkg(dev_ulong cert_id) {
    JBRG_TRACE("[Enter]");
    JBRG_TRACE("cert_id = [%lu]", dev_lx(cert_id));
    PLAT_RESULT ret = auth()->xsi_ais_auth_logout_bkg(cert_id);
    const auth_code& outcome = convert(ret, kLogoutResults);
    JBRG_TRACE("%s. result = [%d]", outcome.word, ret);
    return outcome.result;
}

int qsf_fnd_authentication::get_login_user_info(XSI_AIS_AUTH_USERKIND kind, XSI_AIS_USERINFO_RECORD& info) {
    JBRG_TRACE("[Enter]");
    PLAT_RESULT ret = auth()->xsi_ais_auth_get_userinfo(kind, info);
    const auth_code& outcome = convert(ret, kOnlySuccess);
    JBRG_TRACE("%s. result = [%d]", outcome.word, ret);
    return outcome.result;
}

int qsf_fnd_authentication::get_auth_mode(QSF_FND_AUTH_MODE& mode) {
    JBRG_TRACE("[Enter]");
    XSI_AIS_AUTH_AUTHMODE m = XSI_AIS_AUTH_AUTHMODE_OFF;
    PLAT_RESULT ret = auth()->xsi_ais_auth_get_authentication_mode(&m);
    const auth_code& outcome = convert(ret, kOnlySuccess);
    if (outcome.result == QSF_FND_AUTH_SUCCESS) {
        mode.mode = m;
        JBRG_TRACE("success. result = [%d], mode = [%d]", ret, static_cast<int>(m));
    } else {
        JBRG_TRACE("%s. result = [%d]", outcome.word, ret);
    }
    return outcome.result;
}

int qsf_fnd_authentication::set_auth_mode(XSI_AIS_AUTH_AUTHMODE mode) {
    JBRG_TRACE("[Enter]");
    PLAT_RESULT ret = auth()->xsi_ais_auth_set_authentication_mode(mode);
    const auth_code& outcome = convert(ret, kOnlySuccess);
    JBRG_TRACE("%s. result = [%d]", outcome.word, ret);
    return outcome.result;
}

int qsf_fnd_authentication::get_rights(const std::string& login_name, const std::string& password,
                                       QSF_FND_USER_ACCESS_LEVEL& level) {
    JBRG_TRACE("[Enter]");
    XSI_AIS_AUTH_RIGHTS r = XSI_AIS_AUTH_RIGHTS_ADMIN;
    PLAT_RESULT ret = auth()->xsi_ais_auth_get_rights(login_name, password, &r);
    const auth_code& outcome = convert(ret, kRightsResults);
    switch (outcome.result) {
        case QSF_FND_AUTH_SUCCESS:
            level.level = r;
            JBRG_TRACE("success. result = [%d], level = [%d]", ret, static_cast<int>(r));
            break;
        case QSF_FND_AUTH_FAILED:
            // This form's catch-all line has always been written without brackets.
            JBRG_TRACE("failed. result = %d", ret);
            break;
        default:
            JBRG_TRACE("%s. result = [%d]", outcome.word, ret);
            break;
    }
    return outcome.result;
}

int qsf_fnd_authentication::get_rights(const std::string& login_name, const std::string& password,
                                       const std::string& domain, QSF_FND_USER_ACCESS_LEVEL& level) {
    JBRG_TRACE("[Enter]");
    XSI_AIS_AUTH_RIGHTS r = XSI_AIS_AUTH_RIGHTS_ADMIN;
    PLAT_RESULT ret = auth()->xsi_ais_auth_get_rights(login_name, password, domain, &r);
    const auth_code& outcome = convert(ret, kRightsResults);
    if (outcome.result == QSF_FND_AUTH_SUCCESS) {
        level.level = r;
        JBRG_TRACE("success. retcode = [%d], level = [%d]", ret, static_cast<int>(r));
    } else {
        JBRG_TRACE("%s. retcode = [%d]", outcome.word, ret);
    }
    return outcome.result;
}

int qsf_fnd_authentication::iccard_login(char* card_data, QSF_FND_CERTIFICATE_ID& cert) {
    JBRG_TRACE("[Enter]");
    // A card that gave no data names nobody; the service is not asked to read a null pointer.
    if (card_data == nullptr) {
        JBRG_TRACE("card_data == NULL.");
        return QSF_FND_AUTH_FAILED;
    }
    dev_ulong cert_id = 0;
    PLAT_RESULT ret = auth()->xsi_ais_auth_idm_login(card_data, &cert_id);
    const auth_code& outcome = convert(ret, kIccardResults);
    if (outcome.result == QSF_FND_AUTH_SUCCESS) {
        cert.id = cert_id;
        JBRG_TRACE("success. result = [%d], cert_id = [%lu]", ret, dev_lx(cert_id));
    } else {
        JBRG_TRACE("%s. result = [%d]", outcome.word, ret);
    }
    return outcome.result;
}

int qsf_fnd_authentication::set_func_login_mode(XSI_AIS_MODE_10_VAL mode) {
    JBRG_TRACE("[Enter]");
    PLAT_RESULT ret = auth()->xsi_ais_auth_set_func_auth_mode(mode);
    JBRG_TRACE("retcode = [%d]", ret);
    return convert(ret, kOnlySuccess).result;
}

int qsf_fnd_authentication::get_local_user_list(jobject list) {
    JBRG_TRACE("[Enter]");
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) {
        JBRG_TRACE("GetJNIEnv() failed.");
        return QSF_FND_AUTH_FAILED;
    }
    // Users go into a java/util/ArrayList; anything else is refused before the store is asked.
    if (list == nullptr || !mid_array_list_add.ensure(JBRG_TRACE_SITE) ||
        !env->IsInstanceOf(list, jcls_array_list.get())) {
        JBRG_TRACE("list is not a java/util/ArrayList.");
        return QSF_FND_AUTH_FAILED;
    }

    xsi_pbfs_user_facade* store = xsi_pbfs_user_facade::xsi_pbfs_user_get_instance();
    dev_ulong handle = 0;
    dev_ulong total_num = 0;
    PLAT_RESULT ret = store->xsi_pbfs_user_get_local_user_list_prepare(kUsersPerGet, handle, total_num);
    if (ret != XSI_PBFS_USER_OK) {
        JBRG_TRACE("failed. result(%d)", ret);
        return QSF_FND_AUTH_FAILED;
    }
    if (total_num == 0) {
        (void)store->xsi_pbfs_user_get_local_user_list_finish(handle);
        JBRG_TRACE("total_num == 0.");
        return QSF_FND_AUTH_SUCCESS;
    }

    auto* user_info =
        static_cast<XSI_PBFS_USERINFO_RECORD*>(emwOSWSubAllocMem(sizeof(XSI_PBFS_USERINFO_RECORD)));
    if (user_info == nullptr) {
        (void)store->xsi_pbfs_user_get_local_user_list_finish(handle);
        JBRG_TRACE("user_info == NULL.");
        return QSF_FND_AUTH_FAILED;
    }

    // Ends the listing on a failure after prepare: the record back to the platform, then the listing.
    auto give_up = [&] {
        (void)emwOSWOrgFreeMemPart(0, user_info);
        (void)store->xsi_pbfs_user_get_local_user_list_finish(handle);
    };

    qsf_fnd_user_info builder;
    dev_ulong total_get_num = 0;
    dev_ulong get_num = 0;
    while (total_get_num < total_num) {
        JBRG_TRACE("total_get_num=(%d), total_num=(%d), get_num=(%d)", static_cast<int>(total_get_num),
                   static_cast<int>(total_num), static_cast<int>(get_num));
        get_num = 0;
        ret = store->xsi_pbfs_user_get_local_user_list(handle, get_num, user_info);
        if (ret != XSI_PBFS_USER_OK) {
            give_up();
            JBRG_TRACE("failed. ret(%d)", ret);
            return QSF_FND_AUTH_FAILED;
        }
        // A get that hands back nothing ends the listing early: asking again would ask forever.
        if (get_num == 0) {
            JBRG_TRACE("get_num == 0.");
            break;
        }

        jni::local_ref<jobject> user(env, builder.create_user_info());
        if (!user) {
            give_up();
            JBRG_TRACE("create_user_info() failed.");
            return QSF_FND_AUTH_FAILED;
        }
        std::string login_name = field_text(user_info->login_name);
        std::string user_name = field_text(user_info->user_name);
        std::string email = field_text(user_info->email);
        builder.set_field_login_name(user.get(), login_name.data());
        builder.set_field_user_name(user.get(), user_name.data());
        builder.set_field_mail_address(user.get(), email.data());
        builder.set_field_access_level(user.get(), user_info->rights);
        (void)env->CallBooleanMethod(list, mid_array_list_add.get(), user.get());
        if (env->ExceptionCheck()) {
            JBRG_TRACE("Detected exception : CallBooleanMethod");
            env->ExceptionClear();
            give_up();
            return QSF_FND_AUTH_FAILED;
        }
        total_get_num += get_num;
    }

    (void)emwOSWOrgFreeMemPart(0, user_info);
    ret = store->xsi_pbfs_user_get_local_user_list_finish(handle);
    if (ret != XSI_PBFS_USER_OK) {
        // The users are in the list; a listing that does not close is the store's concern.
        JBRG_TRACE("failed. result(%d)", ret);
    }
    return QSF_FND_AUTH_SUCCESS;
}

}  // namespace orvane
