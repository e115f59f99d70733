// The device's settings, counters, paper and model, energy saving and the panel's reset timer, for Java.
//
// A thin, stateless adapter over the system information, the status monitor's energy saving and the panel:
// every operation takes its facade at the call, passes its arguments through and folds the platform's answer
// into the module's own result set, so that Java never sees a platform code. Any number of instances may
// exist; all behave alike and any thread may use them.
#ifndef JBRG_DEVICE_ATTR_CMT_SYSTEM_INFO_H
#define JBRG_DEVICE_ATTR_CMT_SYSTEM_INFO_H

#include <string>

#include "plat_types.h"
#include "xsi_pbfs_esm.h"
#include "xsi_pbfs_panel.h"
#include "xsi_pbfs_systeminfo.h"

// A process-wide value of the system-information module that Java sets and reads for itself: the library keeps
// it and never reads, checks or guards it.
extern int XSI_PBFS_DFLT_UNIT_DETECT;

namespace orvane {

// The results of CMT_System_Info's operations.
enum QSF_FND_SYSINFO_RESULT : unsigned int {
    QSF_FND_SYSINFO_OK = 0,
    QSF_FND_SYSINFO_ERROR_COMPETENCE = 1,   // the caller lacks the right to the item
    QSF_FND_SYSINFO_ERROR = 2,              // any other failure, every unknown platform code included
    QSF_FND_SYSINFO_UNSUPPORTED_ERROR = 3,  // the item does not exist on this device
    QSF_FND_SYSINFO_LOGIN_ERROR = 4,        // the login state does not allow the access
};

class CMT_System_Info {
public:
    virtual ~CMT_System_Info();

    // Machine settings. A certificate id of 0 acts for the panel's user; any other acts in the background
    // for the login it names.
    unsigned int get_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id, unsigned int& value);
    unsigned int get_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id, std::string& value);
    unsigned int set_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id, unsigned int value);

    unsigned int get_paper_info(XSI_PBFS_ENTKEY key, XSI_PBFS_PAPER_INFO& info);
    unsigned int get_count(XSI_PBFS_COUNT_INFO& query, dev_ulong& count);
    unsigned int get_screen_size(unsigned int& size);
    unsigned int get_model_type(unsigned int& type);
    unsigned int get_fax_encryption_validity(XSI_PBFS_ENTKEY key, bool& valid);
    unsigned int get_copy_service_mode(dev_ulong cert_id, bool& on);

    unsigned int panel_reset_timer_ctrl(char* app_id, XSI_PBFS_PNL_RST_TMR control);

    // Energy saving. request_energy_saving_mode answers whether the monitor granted the request.
    bool request_energy_saving_mode(XSI_PBFS_ESM_STATUS_SLEEP level);
    unsigned int set_energy_save_prohibition_mode(bool prohibit);
    unsigned int suspend_deep_sleep(char* app_id);
    unsigned int resume_deep_sleep(char* app_id);
    unsigned int set_wakeup_date(char* app_id, dev_ulong date);

    // Always true: a fixed answer, not a check (see the definition).
    bool check_eweb_cert_info(const char* cert_info);

    // The platform's answers folded into the result set, each traced with its name.
    static unsigned int convert_retcode(dev_long code);
    static unsigned int convert_retcode_esm(dev_long code);
};

}  // namespace orvane

#endif  // JBRG_DEVICE_ATTR_CMT_SYSTEM_INFO_H
