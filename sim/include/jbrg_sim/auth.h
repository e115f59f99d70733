// The simulated device's authentication service, as tests look into it.
//
// Logins and logouts go through the platform's facade (platform/include/xsi_ais_auth.h); the accounts come
// from the scenario's "users" and "auth" sections (docs/users.md). This header tells which logins are current.
#ifndef JBRG_SIM_AUTH_H
#define JBRG_SIM_AUTH_H

#include <cstdint>

namespace jbrg_sim::auth {

// True when `cert_id` names a current login: a certificate id a login handed out and no logout has ended.
bool logged_in(uint32_t cert_id);

}  // namespace jbrg_sim::auth

#endif  // JBRG_SIM_AUTH_H
