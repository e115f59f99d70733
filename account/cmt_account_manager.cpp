#include "account/cmt_account_manager.h"

#include "xsi_pbfs_dept.h"

namespace orvane {

namespace {

// Which operations a store code has a result of its own for.
enum : unsigned { kAdd = 1u << 0, kChange = 1u << 1, kAll = kAdd | kChange };  // kChange: update, remove, retrieve

struct result_row {
    PLAT_RESULT code;
    int result;
    unsigned operations;
};
// "The account exists" is a result of add only, "no such account" one of the operations on an existing
// account only; elsewhere both are failures like any other.
constexpr result_row kResults[] = {
    {XSI_PBFS_DEPT_OK, 0, kAll},
    {XSI_PBFS_DEPT_EXIST, 1, kAdd},
    {XSI_PBFS_DEPT_NOT_FOUND, 2, kChange},
};
constexpr int kFailed = 3;

int convert_retcode(PLAT_RESULT code, unsigned operation) {
    for (const result_row& row : kResults) {
        if (row.code == code && (row.operations & operation) != 0) return row.result;
    }
    return kFailed;
}

// The answer of remove_all and reset_counter: 1 on success, 0 otherwise.
int succeeded(PLAT_RESULT code) { return code == XSI_PBFS_DEPT_OK ? 1 : 0; }

xsi_pbfs_dept_facade& store() { return *xsi_pbfs_dept_facade::xsi_pbfs_dept_get_instance(); }

}  // namespace

cmt_account_manager::~cmt_account_manager() = default;

int cmt_account_manager::add(cmt_account* account) {
    if (account == nullptr) return kFailed;
    return convert_retcode(store().xsi_pbfs_dept_add_hide_dept(*account->get_deptinfo()), kAdd);
}

int cmt_account_manager::update(cmt_account* account) {
    if (account == nullptr) return kFailed;
    return convert_retcode(store().xsi_pbfs_dept_update_hide_dept(*account->get_deptinfo()), kChange);
}

int cmt_account_manager::remove(const std::string& id) {
    return convert_retcode(store().xsi_pbfs_dept_delete_hide_dept(id.c_str()), kChange);
}

int cmt_account_manager::remove_all() { return succeeded(store().xsi_pbfs_dept_delete_all_hide_dept()); }

int cmt_account_manager::retrieve_account(cmt_account* account) {
    if (account == nullptr) return kFailed;
    // The store fills the record that holds the id, so it is given a copy of the id to look up.
    const std::string id = account->get_id();
    return convert_retcode(store().xsi_pbfs_dept_retrieve_hide_dept(id.c_str(), account->get_deptinfo()), kChange);
}

int cmt_account_manager::reset_counter(const std::string& id) {
    return succeeded(store().xsi_pbfs_dept_reset_hide_dept_counter(id.c_str()));
}

}  // namespace orvane
