// The job service's authentication: logins, logouts, rights and the authentication mode of the device.
//
// The "auth" section of the scenario:
//
//   "auth": {
//     "mode": 1,                    XSI_AIS_AUTH_AUTHMODE of the device (default 1, local)
//     "func_auth_mode": 0,          XSI_AIS_MODE_10_VAL (default 0)
//     "login_limit": 8,             logins the device allows at a time (default 8)
//     "first_certificate": 1,       the first certificate id handed out after a load (default 1)
//     "panel_user": "alice",        login name of the user logged in at the operation panel ("" for none)
//     "domain_users": [ {"login_name": "bob", "password": "pw", "domain": "CORP", "rights": 1,
//                        "user_name": "Bob", "email": "bob@corp.example"} ]
//   }
//
// Users of the device's own store (the "users" section: local users and hidden accounts) log in without a
// domain, or with the empty domain; the users of an authentication domain are the "domain_users" above and
// log in with their domain. An IC card logs in the local user whose "card" it gives.
//
// Behaviour worth knowing when reading the bridge against it:
//   - The order of the checks of a login: mode (XSI_AIS_AUTH_ERR_PARAM for one the service does not know),
//     user (XSI_AIS_AUTH_ERR_NOT_FOUND), password (XSI_AIS_AUTH_ERR_INVALID_PASSWORD), login limit
//     (XSI_AIS_AUTH_ERR_LOGIN_LIMIT). A failed login leaves the certificate id out-value as it was.
//   - Certificate ids count up from first_certificate, are never 0 and never one that is current; a user may
//     hold several logins. logout and logout_bkg end any current login; an unknown id gives
//     XSI_AIS_AUTH_ERR_INVALID_CERTIFICATE.
//   - get_userinfo describes the panel user (kind 0) or the user of the most recent current login (kind 1);
//     without one: XSI_AIS_AUTH_ERR_NOT_FOUND.
//   - Forced out-values: "cert_id" (account_login, idm_login), "mode" (get_authentication_mode), "rights"
//     (get_rights). A forced result leaves the outs alone.
#include <algorithm>
#include <cstring>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "jbrg_sim/auth.h"
#include "sim.h"
#include "sim_internal.h"
#include "user_internal.h"
#include "xsi_ais_auth.h"

namespace {

using json = nlohmann::json;

constexpr long long kDefaultLoginLimit = 8;

bool known_mode(long long mode) { return mode >= XSI_AIS_AUTH_AUTHMODE_OFF && mode <= XSI_AIS_AUTH_AUTHMODE_NETWORK; }
bool known_func_mode(long long mode) { return mode == XSI_AIS_MODE_10_VAL_OFF || mode == XSI_AIS_MODE_10_VAL_ON; }

// One current login: who, and in which order the logins were made.
struct login {
    std::string login_name;
    std::string domain;
    unsigned long long order = 0;
};

class auth_service final : public jbrg_sim::service {
public:
    apply_step read(const json& scenario) override {
        const jbrg_sim::scenario_part part(
            scenario, "auth",
            {"mode", "func_auth_mode", "login_limit", "first_certificate", "panel_user", "domain_users"});
        long long mode =
            part.integer_at("mode", XSI_AIS_AUTH_AUTHMODE_LOCAL, XSI_AIS_AUTH_AUTHMODE_OFF, XSI_AIS_AUTH_AUTHMODE_NETWORK);
        long long func_mode =
            part.integer_at("func_auth_mode", XSI_AIS_MODE_10_VAL_OFF, XSI_AIS_MODE_10_VAL_OFF, XSI_AIS_MODE_10_VAL_ON);
        long long limit = part.integer_at("login_limit", kDefaultLoginLimit, 0, UINT32_MAX);
        long long first = part.integer_at("first_certificate", 1, 1, UINT32_MAX);
        std::string panel = part.text_at("panel_user");
        std::vector<jbrg_sim::user_account> domain_users;
        const json& listed = part.list_at("domain_users");
        for (std::size_t i = 0; i < listed.size(); ++i) {
            const std::string where = part.at("/domain_users", i);
            jbrg_sim::user_account user = jbrg_sim::read_account(part, listed[i], where);
            if (user.domain.empty()) part.fail(where, "needs a domain");
            for (const auto& other : domain_users) {
                if (other.login_name == user.login_name && other.domain == user.domain) {
                    part.fail(where, "is given twice");
                }
            }
            domain_users.push_back(std::move(user));
        }

        return [this, mode, func_mode, limit, first, panel, domain_users] {
            mode_ = static_cast<XSI_AIS_AUTH_AUTHMODE>(mode);
            func_mode_ = static_cast<XSI_AIS_MODE_10_VAL>(func_mode);
            login_limit_ = static_cast<std::size_t>(limit);
            next_certificate_ = static_cast<dev_ulong>(first);
            panel_user_ = panel;
            domain_users_ = domain_users;
            logins.clear();
            order_ = 0;
        };
    }

    // The account a login names: the store's for the empty domain, else a domain user's.
    const jbrg_sim::user_account* account(const std::string& login_name, const std::string& domain) const {
        if (domain.empty()) return jbrg_sim::find_store_account(login_name);
        for (const auto& user : domain_users_) {
            if (user.login_name == login_name && user.domain == domain) return &user;
        }
        return nullptr;
    }

    // Checks the account and its password.
    PLAT_RESULT check(const std::string& login_name, const std::string& password, const std::string& domain,
                      const jbrg_sim::user_account*& user) const {
        user = account(login_name, domain);
        if (user == nullptr) return XSI_AIS_AUTH_ERR_NOT_FOUND;
        if (user->password != password) return XSI_AIS_AUTH_ERR_INVALID_PASSWORD;
        return XSI_AIS_AUTH_OK;
    }

    // A new login of `user`, within the device's limit.
    PLAT_RESULT begin(const jbrg_sim::user_account& user, dev_ulong& cert_id) {
        if (logins.size() >= login_limit_) return XSI_AIS_AUTH_ERR_LOGIN_LIMIT;
        while (next_certificate_ == 0 || logins.count(next_certificate_) != 0) ++next_certificate_;
        cert_id = next_certificate_++;
        logins[cert_id] = login{user.login_name, user.domain, ++order_};
        return XSI_AIS_AUTH_OK;
    }

    // The user that get_userinfo describes, or null.
    const jbrg_sim::user_account* user_of(XSI_AIS_AUTH_USERKIND kind) const {
        if (kind == XSI_AIS_AUTH_USERKIND_PANEL) {
            return panel_user_.empty() ? nullptr : account(panel_user_, "");
        }
        auto latest = std::max_element(logins.begin(), logins.end(),
                                       [](const auto& a, const auto& b) { return a.second.order < b.second.order; });
        return latest == logins.end() ? nullptr : account(latest->second.login_name, latest->second.domain);
    }

    XSI_AIS_AUTH_AUTHMODE mode_ = XSI_AIS_AUTH_AUTHMODE_LOCAL;
    XSI_AIS_MODE_10_VAL func_mode_ = XSI_AIS_MODE_10_VAL_OFF;
    std::map<dev_ulong, login> logins;

private:
    std::size_t login_limit_ = kDefaultLoginLimit;
    dev_ulong next_certificate_ = 1;
    std::string panel_user_;
    std::vector<jbrg_sim::user_account> domain_users_;
    unsigned long long order_ = 0;
};

auth_service& auth() {
    static auth_service* s = new auth_service;
    return *s;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const auth_service& registered = auth();

const void* ptr(const void* p) { return p; }

// The operations' common parts, under the device lock their operation holds.
PLAT_RESULT do_login(const jbrg_sim::op& call, const std::string& login_name, const std::string& password,
                     XSI_AIS_AUTH_AUTHMODE mode, const std::string& domain, dev_ulong* cert_id) {
    if (cert_id == nullptr || !known_mode(mode)) return XSI_AIS_AUTH_ERR_PARAM;
    auth_service& a = auth();
    const jbrg_sim::user_account* user = nullptr;
    PLAT_RESULT result = a.check(login_name, password, domain, user);
    if (result == XSI_AIS_AUTH_OK) result = a.begin(*user, *cert_id);
    call.out("cert_id", cert_id);
    return result;
}

PLAT_RESULT do_logout(dev_ulong cert_id) {
    return auth().logins.erase(cert_id) == 1 ? XSI_AIS_AUTH_OK : XSI_AIS_AUTH_ERR_INVALID_CERTIFICATE;
}

PLAT_RESULT do_rights(const jbrg_sim::op& call, const std::string& login_name, const std::string& password,
                      const std::string& domain, XSI_AIS_AUTH_RIGHTS* rights) {
    if (rights == nullptr) return XSI_AIS_AUTH_ERR_PARAM;
    const jbrg_sim::user_account* user = nullptr;
    PLAT_RESULT result = auth().check(login_name, password, domain, user);
    dev_long value = static_cast<dev_long>(*rights);
    if (result == XSI_AIS_AUTH_OK) value = user->rights;
    call.out("rights", &value);
    *rights = static_cast<XSI_AIS_AUTH_RIGHTS>(value);
    return result;
}

}  // namespace

bool jbrg_sim::auth::logged_in(uint32_t id) {
    jbrg_sim::ensure_loaded();
    auto lock = jbrg_sim::device_lock();
    return ::auth().logins.count(id) != 0;
}

const jbrg_sim::user_account* jbrg_sim::login_account(dev_ulong cert_id) {
    auto l = ::auth().logins.find(cert_id);
    return l == ::auth().logins.end() ? nullptr : ::auth().account(l->second.login_name, l->second.domain);
}

// ---- The facade ---------------------------------------------------------------------------------------

xsi_ais_auth_facade* xsi_ais_auth_facade::xsi_ais_auth_get_instance() {
    static xsi_ais_auth_facade* facade = new xsi_ais_auth_facade;
    return facade;
}

// Out "cert_id": the new certificate id.
PLAT_RESULT xsi_ais_auth_facade::xsi_ais_auth_account_login(const std::string& login_name,
                                                            const std::string& password, XSI_AIS_AUTH_AUTHMODE mode,
                                                            dev_ulong* cert_id) {
    jbrg_sim::locked_op call("xsi_ais_auth_account_login", login_name, password, mode, ptr(cert_id));
    if (call.forced()) return call.result();
    return do_login(call, login_name, password, mode, std::string(), cert_id);
}

PLAT_RESULT xsi_ais_auth_facade::xsi_ais_auth_account_login(const std::string& login_name,
                                                            const std::string& password, XSI_AIS_AUTH_AUTHMODE mode,
                                                            const std::string& domain, dev_ulong* cert_id) {
    jbrg_sim::locked_op call("xsi_ais_auth_account_login", login_name, password, mode, domain, ptr(cert_id));
    if (call.forced()) return call.result();
    return do_login(call, login_name, password, mode, domain, cert_id);
}

PLAT_RESULT xsi_ais_auth_facade::xsi_ais_auth_logout(dev_ulong cert_id) {
    jbrg_sim::locked_op call("xsi_ais_auth_logout", cert_id);
    if (call.forced()) return call.result();
    return do_logout(cert_id);
}

PLAT_RESULT xsi_ais_auth_facade::xsi_ais_auth_logout_bkg(dev_ulong cert_id) {
    jbrg_sim::locked_op call("xsi_ais_auth_logout_bkg", cert_id);
    if (call.forced()) return call.result();
    return do_logout(cert_id);
}

PLAT_RESULT xsi_ais_auth_facade::xsi_ais_auth_get_userinfo(XSI_AIS_AUTH_USERKIND kind,
                                                           XSI_AIS_USERINFO_RECORD& info) {
    jbrg_sim::locked_op call("xsi_ais_auth_get_userinfo", kind, ptr(&info));
    if (call.forced()) return call.result();
    if (kind != XSI_AIS_AUTH_USERKIND_PANEL && kind != XSI_AIS_AUTH_USERKIND_LATEST) return XSI_AIS_AUTH_ERR_PARAM;
    const jbrg_sim::user_account* user = auth().user_of(kind);
    if (user == nullptr) return XSI_AIS_AUTH_ERR_NOT_FOUND;
    std::memset(&info, 0, sizeof info);
    info.id = user->id;
    jbrg_sim::copy_text(info.login_name, sizeof info.login_name, user->login_name);
    jbrg_sim::copy_text(info.user_name, sizeof info.user_name, user->user_name);
    jbrg_sim::copy_text(info.email, sizeof info.email, user->email);
    info.dept_id = user->dept_id;
    info.acc_id = user->acc_id;
    jbrg_sim::copy_text(info.domain, sizeof info.domain, user->domain);
    info.rights = static_cast<XSI_AIS_AUTH_RIGHTS>(user->rights);
    info.lang = user->lang;
    info.display = user->display;
    info.job_limit = user->job_limit;
    info.func_impl_permission =
        XSI_AIS_FUNC_IMPL_PERMISSION{user->combine_limit, user->duplex_limit, user->eco_print_limit};
    return XSI_AIS_AUTH_OK;
}

// Out "mode": the device's authentication mode.
PLAT_RESULT xsi_ais_auth_facade::xsi_ais_auth_get_authentication_mode(XSI_AIS_AUTH_AUTHMODE* mode) {
    jbrg_sim::locked_op call("xsi_ais_auth_get_authentication_mode", ptr(mode));
    if (call.forced()) return call.result();
    if (mode == nullptr) return XSI_AIS_AUTH_ERR_PARAM;
    dev_long value = auth().mode_;
    call.out("mode", &value);
    *mode = static_cast<XSI_AIS_AUTH_AUTHMODE>(value);
    return XSI_AIS_AUTH_OK;
}

PLAT_RESULT xsi_ais_auth_facade::xsi_ais_auth_set_authentication_mode(XSI_AIS_AUTH_AUTHMODE mode) {
    jbrg_sim::locked_op call("xsi_ais_auth_set_authentication_mode", mode);
    if (call.forced()) return call.result();
    if (!known_mode(mode)) return XSI_AIS_AUTH_ERR_PARAM;
    auth().mode_ = mode;
    return XSI_AIS_AUTH_OK;
}

// Out "rights": the user's rights.
PLAT_RESULT xsi_ais_auth_facade::xsi_ais_auth_get_rights(const std::string& login_name, const std::string& password,
                                                         XSI_AIS_AUTH_RIGHTS* rights) {
    jbrg_sim::locked_op call("xsi_ais_auth_get_rights", login_name, password, ptr(rights));
    if (call.forced()) return call.result();
    return do_rights(call, login_name, password, std::string(), rights);
}

PLAT_RESULT xsi_ais_auth_facade::xsi_ais_auth_get_rights(const std::string& login_name, const std::string& password,
                                                         const std::string& domain, XSI_AIS_AUTH_RIGHTS* rights) {
    jbrg_sim::locked_op call("xsi_ais_auth_get_rights", login_name, password, domain, ptr(rights));
    if (call.forced()) return call.result();
    return do_rights(call, login_name, password, domain, rights);
}

// Out "cert_id": the new certificate id.
PLAT_RESULT xsi_ais_auth_facade::xsi_ais_auth_idm_login(const char* card_data, dev_ulong* cert_id) {
    jbrg_sim::locked_op call("xsi_ais_auth_idm_login", card_data, ptr(cert_id));
    if (call.forced()) return call.result();
    if (card_data == nullptr || cert_id == nullptr) return XSI_AIS_AUTH_ERR_PARAM;
    const jbrg_sim::user_account* user = jbrg_sim::find_card_account(card_data);
    PLAT_RESULT result = user == nullptr ? XSI_AIS_AUTH_ERR_NOT_FOUND : auth().begin(*user, *cert_id);
    call.out("cert_id", cert_id);
    return result;
}

PLAT_RESULT xsi_ais_auth_facade::xsi_ais_auth_set_func_auth_mode(XSI_AIS_MODE_10_VAL mode) {
    jbrg_sim::locked_op call("xsi_ais_auth_set_func_auth_mode", mode);
    if (call.forced()) return call.result();
    if (!known_func_mode(mode)) return XSI_AIS_AUTH_ERR_PARAM;
    auth().func_mode_ = mode;
    return XSI_AIS_AUTH_OK;
}
