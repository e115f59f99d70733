// One department account, held in memory while a Java application fills it before adding or updating it.
#ifndef JBRG_ACCOUNT_CMT_ACCOUNT_H
#define JBRG_ACCOUNT_CMT_ACCOUNT_H

#include <string>

#include "xsi_pbfs_dept.h"

namespace orvane {

class cmt_account {
public:
    // Copies `id` into the record (cut to the id's capacity), then init().
    explicit cmt_account(const std::string& id);
    virtual ~cmt_account();

    cmt_account(const cmt_account&) = delete;
    cmt_account& operator=(const cmt_account&) = delete;

    // Clears the first character of the name, the restriction slots, the word after them, the limit slots
    // and the flags. The counters are left as they are: the store keeps its own and ignores those given.
    void init();

    std::string get_id();

    // Copies the whole name into the record. The copy is not bounded by the name's capacity: the caller
    // keeps within it, and a longer name runs on over the id and the fields after it, as on the device. It
    // never runs past the end of the record (cut there, terminated).
    void set_name(const std::string& name);
    std::string get_name();

    // Stores `value` in the restriction (limit) slot that item and kind choose. 1 when stored or accepted,
    // 1 without storing for a kind other than 0 and 1, 0 for an item outside 1..8.
    int set_restriction(int value, int item, int kind);
    int set_limit(int value, int item, int kind);

    // Always -2: the slots are not read here; an account's values are read back through the store
    // (cmt_account_manager::retrieve_account).
    int get_restriction(int item);
    int get_limit(int item);

    // The record inside this object, as the store takes and fills it.
    XSI_PBFS_DEPT_DEPTINFO* get_deptinfo();

private:
    XSI_PBFS_DEPT_DEPTINFO deptinfo_;
};

}  // namespace orvane

#endif  // JBRG_ACCOUNT_CMT_ACCOUNT_H
