// Adds, updates, removes and retrieves department accounts in the device's department store, and resets
// their counters.
#ifndef JBRG_ACCOUNT_CMT_ACCOUNT_MANAGER_H
#define JBRG_ACCOUNT_CMT_ACCOUNT_MANAGER_H

#include <string>

#include "account/cmt_account.h"

namespace orvane {

// Two result conventions live side by side here, as Java applications know them: add, update, remove and
// retrieve_account answer 0 on success or a small error number (1 the account exists, 2 no such account,
// 3 any other failure); remove_all and reset_counter answer 1 on success and 0 on failure.
class cmt_account_manager {
public:
    virtual ~cmt_account_manager();

    // A null account reaches no store: 3, as any other failure.
    int add(cmt_account* account);
    int update(cmt_account* account);
    int remove(const std::string& id);
    int remove_all();
    // Fills the account's record from the store, by the account's id.
    int retrieve_account(cmt_account* account);
    int reset_counter(const std::string& id);
};

}  // namespace orvane

#endif  // JBRG_ACCOUNT_CMT_ACCOUNT_MANAGER_H
