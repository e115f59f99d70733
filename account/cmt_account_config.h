// The device-wide department-accounting modes.
#ifndef JBRG_ACCOUNT_CMT_ACCOUNT_CONFIG_H
#define JBRG_ACCOUNT_CMT_ACCOUNT_CONFIG_H

namespace orvane {

// Setters answer 1 on success and 0 otherwise. Mode values pass to and from the store unchanged; the integer
// getters answer -1 when the store cannot be read.
class cmt_account_config {
public:
    virtual ~cmt_account_config();

    // Department accounting on or off; get_mode is true only when the store reports the mode "on" (1), and
    // false as well when the store cannot be read.
    int set_mode(bool on);
    bool get_mode();

    // Whether copies and prints are counted together.
    int set_copy_print_count(int mode);
    int get_copy_print_count();

    // What happens to jobs without a valid department.
    int set_permit_anonymous(int mode);
    int get_permit_anonymous();

    // What happens when a department reaches a limit.
    int set_limit_over(int mode);
    int get_limit_over();
};

}  // namespace orvane

#endif  // JBRG_ACCOUNT_CMT_ACCOUNT_CONFIG_H
