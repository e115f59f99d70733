// Accounts of the simulated device, as its user store keeps them and its authentication service checks
// them. Everything here is used under the device lock.
#ifndef JBRG_SIM_USER_INTERNAL_H
#define JBRG_SIM_USER_INTERNAL_H

#include <nlohmann/json.hpp>
#include <string>

#include "plat_types.h"
#include "scenario.h"

namespace jbrg_sim {

struct user_account {
    std::string login_name;
    std::string password;
    std::string user_name;
    std::string email;
    std::string kana;
    std::string domain;   // "" for the device's own users
    std::string card;     // the IC card id given by the card reader, "" for none
    std::string dept_code;
    int32_t rights = 1;   // the store's numbering: 0 administrator, 1 user, 2 guest
    dev_ulong id = 0;
    dev_ulong dept_id = 0;
    dev_ulong acc_id = 0;
    dev_ulong lang = 0;
    dev_ulong display = 0;
    dev_ulong job_limit = 0;
    dev_ulong combine_limit = 0;
    dev_ulong duplex_limit = 0;
    dev_ulong eco_print_limit = 0;
};

// One account of a scenario list, read from its JSON object in the scenario part `part` (the user store's
// lists, the authentication service's domain users); `where` names it in the error thrown for an unknown
// key, a missing login name or a value of the wrong type.
user_account read_account(const scenario_part& part, const nlohmann::json& entry, const std::string& where);

// The account of the device's own store (local users and hidden accounts) with this login name, or null.
const user_account* find_store_account(const std::string& login_name);

// The local user whose IC card gives `card`, or null.
const user_account* find_card_account(const std::string& card);

// The account of the current login `cert_id` (a certificate id handed out by a login and not ended by a
// logout), or null when it names none.
const user_account* login_account(dev_ulong cert_id);

// Copies `text` into a field of `capacity` bytes, cut to fit and always terminated.
void copy_text(char* field, std::size_t capacity, const std::string& text);

// The text of a field of `capacity` bytes, up to its terminating zero and never past its end.
std::string field_text(const char* field, std::size_t capacity);

}  // namespace jbrg_sim

#endif  // JBRG_SIM_USER_INTERNAL_H
