#include "account/cmt_account_config.h"

#include "xsi_pbfs_dept.h"

namespace orvane {

namespace {

// The answer of an integer getter whose store call failed.
constexpr int kUnread = -1;

int succeeded(PLAT_RESULT code) { return code == XSI_PBFS_DEPT_OK ? 1 : 0; }

xsi_pbfs_dept_facade& store() { return *xsi_pbfs_dept_facade::xsi_pbfs_dept_get_instance(); }

// A mode as the store reports it, or kUnread.
template <class Mode>
int read_mode(PLAT_RESULT (xsi_pbfs_dept_facade::*get)(Mode*)) {
    Mode mode{};
    return (store().*get)(&mode) == XSI_PBFS_DEPT_OK ? static_cast<int>(mode) : kUnread;
}

}  // namespace

cmt_account_config::~cmt_account_config() = default;

int cmt_account_config::set_mode(bool on) {
    return succeeded(
        store().xsi_pbfs_dept_set_dept_mode(on ? XSI_PBFS_DEPT_DEPT_MODE_ON : XSI_PBFS_DEPT_DEPT_MODE_OFF));
}

bool cmt_account_config::get_mode() {
    return read_mode(&xsi_pbfs_dept_facade::xsi_pbfs_dept_get_dept_mode) == XSI_PBFS_DEPT_DEPT_MODE_ON;
}

int cmt_account_config::set_copy_print_count(int mode) {
    return succeeded(store().xsi_pbfs_dept_set_mix_mode(static_cast<XSI_PBFS_DEPT_MIX_MODE>(mode)));
}

int cmt_account_config::get_copy_print_count() { return read_mode(&xsi_pbfs_dept_facade::xsi_pbfs_dept_get_mix_mode); }

int cmt_account_config::set_permit_anonymous(int mode) {
    return succeeded(store().xsi_pbfs_dept_set_invalid_dept_mode(static_cast<XSI_PBFS_DEPT_INVALID_DEPT_MODE>(mode)));
}

int cmt_account_config::get_permit_anonymous() {
    return read_mode(&xsi_pbfs_dept_facade::xsi_pbfs_dept_get_invalid_dept_mode);
}

int cmt_account_config::set_limit_over(int mode) {
    return succeeded(store().xsi_pbfs_dept_set_limit_action_mode(static_cast<XSI_PBFS_DEPT_LIMIT_ACTION>(mode)));
}

int cmt_account_config::get_limit_over() {
    return read_mode(&xsi_pbfs_dept_facade::xsi_pbfs_dept_get_limit_action_mode);
}

}  // namespace orvane
