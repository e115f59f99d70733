// The simulated device's authentication service, as tests look into it.
//
// Logins and logouts go through the platform's facade (platform/include/xsi_ais_auth.h); the accounts come
// from the scenario's "users" and "auth" sections (docs/users.md). This header tells which logins are current,
// and adds local users at run time as an administrator would on the device's panel.
#ifndef JBRG_SIM_AUTH_H
#define JBRG_SIM_AUTH_H

#include <cstdint>
#include <string>

namespace jbrg_sim::auth {

// True when `cert_id` names a current login: a certificate id a login handed out and no logout has ended.
bool logged_in(uint32_t cert_id);

// A local user as the device's panel registers one.
struct local_user {
    std::string login_name;
    std::string password;
    std::string user_name;
    std::string email;
    std::string card;      // the IC card id the card reader gives for the user's card; "" for none
    int32_t rights = 1;    // 0 administrator, 1 user, 2 guest
};

// Adds a local user after those of the scenario (listed last, its id the next after the highest local id);
// it can log in at once. False, with nothing added, for an empty login name or one a local user or a hidden
// account already has. The next scenario load or reset forgets it.
bool add_local_user(const local_user& user);

}  // namespace jbrg_sim::auth

#endif  // JBRG_SIM_AUTH_H
