// The basic-function services' user store: the device's local users and its hidden user accounts.
//
// The "users" section of the scenario says what the store holds:
//
//   "users": {
//     "local":  [ {"login_name": "alice", "password": "secret", "user_name": "Alice", "email": "alice@example.com",
//                  "rights": 0, "card": "0123ABCD", "kana": "", "id": 1, "dept_id": 0, "acc_id": 0,
//                  "lang": 0, "display": 0, "job_limit": 0,
//                  "combine_limit": 0, "duplex_limit": 0, "eco_print_limit": 0} ],
//     "hidden": [ {"login_name": "app-user", "password": "pw", "user_name": "...", "email": "...",
//                  "dept_code": "0001", "rights": 1, "lang": 0, "display": 0, "job_limit": 0} ],
//     "hidden_limit": 100
//   }
//
// Only login_name is needed; every other key has the value 0 or "" (rights: 1, a user; id: the position in
// the list, from 1). Login names are unique across local users and hidden accounts. The local users are
// listed in the order the scenario gives them.
//
// Behaviour worth knowing when reading the bridge against it:
//   - A listing is a snapshot taken at prepare. Handles start at 1 after each load and are never 0; at most
//     8 listings are open at once (a ninth prepare fails with XSI_PBFS_USER_ERR_FAILED). A get after the last
//     record answers XSI_PBFS_USER_ERR_END with get_num 0.
//   - Hidden accounts are keyed by login name: creating an existing name (a local user's or a hidden
//     account's) gives XSI_PBFS_USER_ERR_DUPLICATE_ID, updating or deleting an unknown one
//     XSI_PBFS_USER_ERR_NOT_FOUND. Hidden accounts are not listed, but they can log in.
//   - Forced out-values: "handle", "total" (prepare), "get_num" (get). A forced result leaves the outs alone.
#include <algorithm>
#include <cstring>
#include <map>
#include <stdexcept>
#include <string>
#include <vector>

#include "jbrg_sim/auth.h"
#include "scenario.h"
#include "sim.h"
#include "sim_internal.h"
#include "user_internal.h"
#include "xsi_pbfs_user.h"

namespace {

using json = nlohmann::json;

// Listings a process may hold open at once.
constexpr std::size_t kMaxListings = 8;
// Hidden accounts the store keeps, unless the scenario says otherwise.
constexpr long long kDefaultHiddenLimit = 100;

struct listing {
    std::vector<jbrg_sim::user_account> users;
    std::size_t next = 0;
    dev_ulong count = 0;
};

class user_store final : public jbrg_sim::service {
public:
    apply_step read(const json& scenario) override {
        const jbrg_sim::scenario_part part(scenario, "users", {"local", "hidden", "hidden_limit"});
        std::vector<jbrg_sim::user_account> local = accounts(part, "local");
        std::vector<jbrg_sim::user_account> hidden = accounts(part, "hidden");
        long long limit = part.integer_at("hidden_limit", kDefaultHiddenLimit, 0, UINT32_MAX);

        std::map<std::string, jbrg_sim::user_account> hidden_by_name;
        std::vector<std::string> names;
        for (auto& user : local) names.push_back(user.login_name);
        for (auto& user : hidden) {
            names.push_back(user.login_name);
            hidden_by_name[user.login_name] = user;
        }
        std::sort(names.begin(), names.end());
        auto twice = std::adjacent_find(names.begin(), names.end());
        if (twice != names.end()) part.fail("the login name \"" + *twice + "\" is given twice");
        if (hidden.size() > static_cast<std::size_t>(limit)) {
            part.fail("/hidden", "more hidden accounts than hidden_limit");
        }

        return [this, local, hidden_by_name, limit] {
            local_ = local;
            hidden_ = hidden_by_name;
            hidden_limit_ = static_cast<std::size_t>(limit);
            listings.clear();
            next_handle_ = 1;
        };
    }

    const std::vector<jbrg_sim::user_account>& local() const { return local_; }
    std::vector<jbrg_sim::user_account>& local() { return local_; }
    std::map<std::string, jbrg_sim::user_account>& hidden() { return hidden_; }
    std::size_t hidden_limit() const { return hidden_limit_; }

    const jbrg_sim::user_account* find(const std::string& login_name) const {
        for (const auto& user : local_) {
            if (user.login_name == login_name) return &user;
        }
        auto h = hidden_.find(login_name);
        return h == hidden_.end() ? nullptr : &h->second;
    }

    // The next number that is neither 0 nor an open listing's.
    dev_ulong new_handle() {
        while (next_handle_ == 0 || listings.count(next_handle_) != 0) ++next_handle_;
        return next_handle_++;
    }

    std::map<dev_ulong, listing> listings;

private:
    static std::vector<jbrg_sim::user_account> accounts(const jbrg_sim::scenario_part& part, const char* key) {
        std::vector<jbrg_sim::user_account> out;
        const json& listed = part.list_at(key);
        for (std::size_t i = 0; i < listed.size(); ++i) {
            const std::string where = part.at(part.at("", key), i);
            jbrg_sim::user_account user = jbrg_sim::read_account(part, listed[i], where);
            if (!user.domain.empty()) part.fail(part.at(where, "domain"), "the store's accounts belong to no domain");
            if (user.id == 0 && std::string(key) == "local") user.id = static_cast<dev_ulong>(out.size() + 1);
            out.push_back(std::move(user));
        }
        return out;
    }

    std::vector<jbrg_sim::user_account> local_;
    std::map<std::string, jbrg_sim::user_account> hidden_;
    std::size_t hidden_limit_ = kDefaultHiddenLimit;
    dev_ulong next_handle_ = 1;
};

user_store& store() {
    static user_store* s = new user_store;
    return *s;
}
// Registers the service with the device when the library is loaded.
[[maybe_unused]] const user_store& registered = store();

const void* ptr(const void* p) { return p; }

void fill(XSI_PBFS_USERINFO_RECORD& record, const jbrg_sim::user_account& user) {
    std::memset(&record, 0, sizeof record);
    jbrg_sim::copy_text(record.login_name, sizeof record.login_name, user.login_name);
    jbrg_sim::copy_text(record.user_name, sizeof record.user_name, user.user_name);
    jbrg_sim::copy_text(record.email, sizeof record.email, user.email);
    record.rights = static_cast<XSI_PBFS_USER_RIGHTS>(user.rights);
    jbrg_sim::copy_text(record.kana, sizeof record.kana, user.kana);
    record.dept_id = user.dept_id;
    record.acc_id = user.acc_id;
    jbrg_sim::copy_text(record.domain, sizeof record.domain, user.domain);
    record.lang = user.lang;
    record.display = user.display;
    record.job_limit = user.job_limit;
    record.func_impl_permission = XSI_PBFS_FUNC_IMPL_PERMISSION{user.combine_limit, user.duplex_limit,
                                                                user.eco_print_limit};
}

jbrg_sim::user_account from_record(const XSI_PBFS_HIDE_USERINFO_RECORD& record) {
    jbrg_sim::user_account user;
    user.login_name = jbrg_sim::field_text(record.login_name, sizeof record.login_name);
    user.password = jbrg_sim::field_text(record.login_passwd, sizeof record.login_passwd);
    user.user_name = jbrg_sim::field_text(record.user_name, sizeof record.user_name);
    user.email = jbrg_sim::field_text(record.email, sizeof record.email);
    user.dept_code = jbrg_sim::field_text(record.dept_code, sizeof record.dept_code);
    user.rights = record.rights;
    user.lang = record.lang;
    user.display = record.display;
    user.job_limit = record.job_limit;
    return user;
}

}  // namespace

// ---- Shared with the authentication service -------------------------------------------------------------

jbrg_sim::user_account jbrg_sim::read_account(const scenario_part& part, const json& entry,
                                              const std::string& where) {
    part.only_keys(entry,
              {"login_name", "password", "user_name", "email", "kana", "domain", "card", "dept_code", "rights", "id",
               "dept_id", "acc_id", "lang", "display", "job_limit", "combine_limit", "duplex_limit",
               "eco_print_limit"},
              where);
    user_account user;
    user.login_name = part.text_at(entry, "login_name", where);
    if (user.login_name.empty()) part.fail(where, "needs a login_name");
    user.password = part.text_at(entry, "password", where);
    user.user_name = part.text_at(entry, "user_name", where);
    user.email = part.text_at(entry, "email", where);
    user.kana = part.text_at(entry, "kana", where);
    user.domain = part.text_at(entry, "domain", where);
    user.card = part.text_at(entry, "card", where);
    user.dept_code = part.text_at(entry, "dept_code", where);
    user.rights = static_cast<int32_t>(part.integer_at(entry, "rights", 1, INT32_MIN, INT32_MAX, where));
    auto number = [&](const char* key) {
        return static_cast<dev_ulong>(part.integer_at(entry, key, 0, 0, UINT32_MAX, where));
    };
    user.id = number("id");
    user.dept_id = number("dept_id");
    user.acc_id = number("acc_id");
    user.lang = number("lang");
    user.display = number("display");
    user.job_limit = number("job_limit");
    user.combine_limit = number("combine_limit");
    user.duplex_limit = number("duplex_limit");
    user.eco_print_limit = number("eco_print_limit");
    return user;
}

const jbrg_sim::user_account* jbrg_sim::find_store_account(const std::string& login_name) {
    return store().find(login_name);
}

const jbrg_sim::user_account* jbrg_sim::find_card_account(const std::string& card) {
    if (card.empty()) return nullptr;
    for (const auto& user : store().local()) {
        if (user.card == card) return &user;
    }
    return nullptr;
}

void jbrg_sim::copy_text(char* field, std::size_t capacity, const std::string& text) {
    if (capacity == 0) return;
    std::size_t length = std::min(text.size(), capacity - 1);
    std::memcpy(field, text.data(), length);
    field[length] = '\0';
}

std::string jbrg_sim::field_text(const char* field, std::size_t capacity) {
    const void* end = std::memchr(field, '\0', capacity);
    return std::string(field, end == nullptr ? capacity : static_cast<std::size_t>(static_cast<const char*>(end) - field));
}

// ---- Control surface ------------------------------------------------------------------------------------

bool jbrg_sim::auth::add_local_user(const local_user& user) {
    ensure_loaded();
    auto lock = device_lock();
    user_store& s = store();
    if (user.login_name.empty() || s.find(user.login_name) != nullptr) return false;
    user_account account;
    account.login_name = user.login_name;
    account.password = user.password;
    account.user_name = user.user_name;
    account.email = user.email;
    account.card = user.card;
    account.rights = user.rights;
    dev_ulong highest = 0;
    for (const auto& existing : s.local()) highest = std::max(highest, existing.id);
    account.id = highest + 1;
    s.local().push_back(std::move(account));
    return true;
}

// ---- The facade ---------------------------------------------------------------------------------------

xsi_pbfs_user_facade* xsi_pbfs_user_facade::xsi_pbfs_user_get_instance() {
    static xsi_pbfs_user_facade* facade = new xsi_pbfs_user_facade;
    return facade;
}

// Out "handle": the listing's handle; out "total": the number of local users it lists.
PLAT_RESULT xsi_pbfs_user_facade::xsi_pbfs_user_get_local_user_list_prepare(dev_ulong count, dev_ulong& handle,
                                                                           dev_ulong& total) {
    jbrg_sim::locked_op call("xsi_pbfs_user_get_local_user_list_prepare", count, ptr(&handle), ptr(&total));
    if (call.forced()) return call.result();
    user_store& s = store();
    PLAT_RESULT result = XSI_PBFS_USER_OK;
    if (count == 0) {
        result = XSI_PBFS_USER_ERR_PARAM;
    } else if (s.listings.size() >= kMaxListings) {
        result = XSI_PBFS_USER_ERR_FAILED;
    } else {
        handle = s.new_handle();
        s.listings[handle] = listing{s.local(), 0, count};
        total = static_cast<dev_ulong>(s.local().size());
    }
    call.out("handle", &handle);
    call.out("total", &total);
    return result;
}

// Out "get_num": the number of records written.
PLAT_RESULT xsi_pbfs_user_facade::xsi_pbfs_user_get_local_user_list(dev_ulong handle, dev_ulong& get_num,
                                                                   XSI_PBFS_USERINFO_RECORD* records) {
    jbrg_sim::locked_op call("xsi_pbfs_user_get_local_user_list", handle, ptr(&get_num), ptr(records));
    if (call.forced()) return call.result();
    user_store& s = store();
    get_num = 0;
    PLAT_RESULT result = XSI_PBFS_USER_OK;
    auto l = s.listings.find(handle);
    if (l == s.listings.end()) {
        result = XSI_PBFS_USER_ERR_HANDLE;
    } else if (records == nullptr) {
        result = XSI_PBFS_USER_ERR_PARAM;
    } else if (l->second.next >= l->second.users.size()) {
        result = XSI_PBFS_USER_ERR_END;
    } else {
        listing& it = l->second;
        std::size_t n = std::min<std::size_t>(it.count, it.users.size() - it.next);
        for (std::size_t i = 0; i < n; ++i) fill(records[i], it.users[it.next + i]);
        it.next += n;
        get_num = static_cast<dev_ulong>(n);
    }
    call.out("get_num", &get_num);
    return result;
}

PLAT_RESULT xsi_pbfs_user_facade::xsi_pbfs_user_get_local_user_list_finish(dev_ulong handle) {
    jbrg_sim::locked_op call("xsi_pbfs_user_get_local_user_list_finish", handle);
    if (call.forced()) return call.result();
    return store().listings.erase(handle) == 1 ? XSI_PBFS_USER_OK : XSI_PBFS_USER_ERR_HANDLE;
}

PLAT_RESULT xsi_pbfs_user_facade::xsi_pbfs_user_create_hide_account(const XSI_PBFS_HIDE_USERINFO_RECORD& user) {
    jbrg_sim::locked_op call("xsi_pbfs_user_create_hide_account", ptr(&user));
    if (call.forced()) return call.result();
    user_store& s = store();
    jbrg_sim::user_account account = from_record(user);
    if (account.login_name.empty()) return XSI_PBFS_USER_ERR_PARAM;
    if (s.find(account.login_name) != nullptr) return XSI_PBFS_USER_ERR_DUPLICATE_ID;
    if (s.hidden().size() >= s.hidden_limit()) return XSI_PBFS_USER_ERR_FULL;
    s.hidden()[account.login_name] = std::move(account);
    return XSI_PBFS_USER_OK;
}

PLAT_RESULT xsi_pbfs_user_facade::xsi_pbfs_user_update_hide_account(const XSI_PBFS_HIDE_USERINFO_RECORD& user) {
    jbrg_sim::locked_op call("xsi_pbfs_user_update_hide_account", ptr(&user));
    if (call.forced()) return call.result();
    jbrg_sim::user_account account = from_record(user);
    auto h = store().hidden().find(account.login_name);
    if (h == store().hidden().end()) return XSI_PBFS_USER_ERR_NOT_FOUND;
    h->second = std::move(account);
    return XSI_PBFS_USER_OK;
}

PLAT_RESULT xsi_pbfs_user_facade::xsi_pbfs_user_delete_hide_account(const std::string& login_name) {
    jbrg_sim::locked_op call("xsi_pbfs_user_delete_hide_account", login_name);
    if (call.forced()) return call.result();
    return store().hidden().erase(login_name) == 1 ? XSI_PBFS_USER_OK : XSI_PBFS_USER_ERR_NOT_FOUND;
}

PLAT_RESULT xsi_pbfs_user_facade::xsi_pbfs_user_delete_all_hide_account() {
    jbrg_sim::locked_op call("xsi_pbfs_user_delete_all_hide_account");
    if (call.forced()) return call.result();
    store().hidden().clear();
    return XSI_PBFS_USER_OK;
}
