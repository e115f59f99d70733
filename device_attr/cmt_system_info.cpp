#include "device_attr/cmt_system_info.h"

#include <cstring>

#include "core/trace.h"

int XSI_PBFS_DFLT_UNIT_DETECT = 0;

namespace orvane {

namespace {

struct code_row {
    dev_long code;
    unsigned int result;
    const char* name;
};

// The system information's codes; every other code is QSF_FND_SYSINFO_ERROR.
constexpr code_row kSysinfoCodes[] = {
    {XSI_PBFS_SYSINFO_OK, QSF_FND_SYSINFO_OK, "XSI_PBFS_SYSINFO_OK"},
    {XSI_PBFS_SYSINFO_ERROR_COMPETENCE, QSF_FND_SYSINFO_ERROR_COMPETENCE, "XSI_PBFS_SYSINFO_ERROR_COMPETENCE"},
    {XSI_PBFS_SYSINFO_ERROR, QSF_FND_SYSINFO_ERROR, "XSI_PBFS_SYSINFO_ERROR"},
    {XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR, QSF_FND_SYSINFO_UNSUPPORTED_ERROR, "XSI_PBFS_SYSINFO_UNSUPPORTED_ERROR"},
    {XSI_PBFS_SYSINFO_LOGIN_ERROR, QSF_FND_SYSINFO_LOGIN_ERROR, "XSI_PBFS_SYSINFO_LOGIN_ERROR"},
};

// The energy-saving monitor tells success from failure only.
constexpr code_row kEsmCodes[] = {
    {XSI_PBFS_ESM_OK, QSF_FND_SYSINFO_OK, "XSI_PBFS_ESM_OK"},
};

template <std::size_t N>
unsigned int fold(const code_row (&rows)[N], dev_long code, const trace_site& site) {
    for (const code_row& row : rows) {
        if (row.code != code) continue;
        trace_at(site, "%s", row.name);
        return row.result;
    }
    trace_at(site, "default QSF_FND_SYSINFO_ERROR");
    return QSF_FND_SYSINFO_ERROR;
}

xsi_pbfs_systeminfo_facade& sysinfo() { return *xsi_pbfs_systeminfo_facade::xsi_pbfs_systeminfo_get_instance(); }
xsi_pbfs_esm_facade& esm() { return *xsi_pbfs_esm_facade::xsi_pbfs_esm_get_instance(); }

// An application id the platform can take: present, and shorter than the platform keeps (`size` bytes with
// its terminating zero). The platform refuses any other itself; the bridge does not hand it over at all.
bool acceptable_app_id(const char* app_id, std::size_t size, const trace_site& site) {
    if (app_id == nullptr) {
        trace_at(site, "app_id is null: QSF_FND_SYSINFO_ERROR");
        return false;
    }
    if (strnlen(app_id, size) >= size) {
        trace_at(site, "app_id is longer than %u bytes: QSF_FND_SYSINFO_ERROR", static_cast<unsigned>(size - 1));
        return false;
    }
    return true;
}

}  // namespace

CMT_System_Info::~CMT_System_Info() = default;

unsigned int CMT_System_Info::convert_retcode(dev_long code) { return fold(kSysinfoCodes, code, JBRG_TRACE_SITE); }

unsigned int CMT_System_Info::convert_retcode_esm(dev_long code) { return fold(kEsmCodes, code, JBRG_TRACE_SITE); }

unsigned int CMT_System_Info::get_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id, unsigned int& value) {
    const PLAT_RESULT rc = cert_id != 0 ? sysinfo().xsi_pbfs_systeminfo_get_machine_info_bkg(key, cert_id, value)
                                        : sysinfo().xsi_pbfs_systeminfo_get_machine_info(key, cert_id, value);
    JBRG_TRACE("(key = [%d], cid = [%lu], value = [%d])", static_cast<int>(key), dev_lx(cert_id),
               static_cast<int>(value));
    return convert_retcode(rc);
}

unsigned int CMT_System_Info::get_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id, std::string& value) {
    const PLAT_RESULT rc = cert_id != 0 ? sysinfo().xsi_pbfs_systeminfo_get_machine_info_bkg(key, cert_id, value)
                                        : sysinfo().xsi_pbfs_systeminfo_get_machine_info(key, cert_id, value);
    JBRG_TRACE("(key = [%d], cid = [%lu], value = [%s])", static_cast<int>(key), dev_lx(cert_id), value.c_str());
    return convert_retcode(rc);
}

unsigned int CMT_System_Info::set_machine_info(XSI_PBFS_ENTKEY key, dev_ulong cert_id, unsigned int value) {
    JBRG_TRACE("(key = [%d], cid = [%lu], value = [%d])", static_cast<int>(key), dev_lx(cert_id),
               static_cast<int>(value));
    return convert_retcode(cert_id != 0 ? sysinfo().xsi_pbfs_systeminfo_set_machine_info_bkg(key, cert_id, value)
                                        : sysinfo().xsi_pbfs_systeminfo_set_machine_info(key, cert_id, value));
}

unsigned int CMT_System_Info::get_paper_info(XSI_PBFS_ENTKEY key, XSI_PBFS_PAPER_INFO& info) {
    return convert_retcode(sysinfo().xsi_pbfs_systeminfo_get_paper_info(key, info));
}

unsigned int CMT_System_Info::get_count(XSI_PBFS_COUNT_INFO& query, dev_ulong& count) {
    return convert_retcode(sysinfo().xsi_pbfs_systeminfo_get_count(query, count));
}

unsigned int CMT_System_Info::get_screen_size(unsigned int& size) {
    return convert_retcode(sysinfo().xsi_pbfs_systeminfo_get_screen_size(size));
}

unsigned int CMT_System_Info::get_model_type(unsigned int& type) {
    return convert_retcode(sysinfo().xsi_pbfs_systeminfo_get_model_type(type));
}

// The two flags below are true only for a platform byte of exactly 1: a 2 (or any other value) is false.
unsigned int CMT_System_Info::get_fax_encryption_validity(XSI_PBFS_ENTKEY key, bool& valid) {
    unsigned char byte = 0;
    const PLAT_RESULT rc = sysinfo().xsi_pbfs_systeminfo_get_fax_encryption_validity(key, byte);
    valid = byte == 1;
    JBRG_TRACE("(key = [%d], value = [%d])", static_cast<int>(key), static_cast<int>(byte));
    return convert_retcode(rc);
}

unsigned int CMT_System_Info::get_copy_service_mode(dev_ulong cert_id, bool& on) {
    unsigned char byte = 0;
    const PLAT_RESULT rc = sysinfo().xsi_pbfs_systeminfo_get_copy_service_mode(cert_id, byte);
    on = byte == 1;
    JBRG_TRACE("(cert_id = [%d], value = [%d])", static_cast<int>(cert_id), static_cast<int>(byte));
    return convert_retcode(rc);
}

// The panel's codes are not the system information's: every failure is QSF_FND_SYSINFO_ERROR, an
// "unsupported" from the panel included, and the code is traced as it is.
unsigned int CMT_System_Info::panel_reset_timer_ctrl(char* app_id, XSI_PBFS_PNL_RST_TMR control) {
    if (!acceptable_app_id(app_id, XSI_PBFS_PANEL_APP_ID_SIZE, JBRG_TRACE_SITE)) return QSF_FND_SYSINFO_ERROR;
    const PLAT_RESULT rc = xsi_pbfs_panel_facade::xsi_pbfs_panel_get_instance()->xsi_pbfs_panel_reset_timer_ctrl(
        app_id, control);
    if (rc == XSI_PBFS_PANEL_OK) return QSF_FND_SYSINFO_OK;
    JBRG_TRACE("panel_reset_timer_ctrl: QSF_FND_SYSINFO_ERROR. rc = [%ld]", dev_ld(rc));
    return QSF_FND_SYSINFO_ERROR;
}

// Granted only on 0: any other answer, 1 included, is a refusal.
bool CMT_System_Info::request_energy_saving_mode(XSI_PBFS_ESM_STATUS_SLEEP level) {
    return esm().xsi_pbfs_esm_request_energy_saving_mode(level) == XSI_PBFS_ESM_OK;
}

unsigned int CMT_System_Info::set_energy_save_prohibition_mode(bool prohibit) {
    const PLAT_RESULT rc = esm().xsi_pbfs_esm_request_save_mode_prohibition(prohibit);
    if (rc != XSI_PBFS_ESM_OK) JBRG_TRACE("flag = [%d], result = [%d]", prohibit ? 1 : 0, static_cast<int>(rc));
    return convert_retcode_esm(rc);
}

unsigned int CMT_System_Info::suspend_deep_sleep(char* app_id) {
    if (!acceptable_app_id(app_id, XSI_PBFS_ESM_APP_ID_SIZE, JBRG_TRACE_SITE)) return QSF_FND_SYSINFO_ERROR;
    return convert_retcode_esm(esm().xsi_pbfs_esm_suspend_deep_sleep(app_id));
}

unsigned int CMT_System_Info::resume_deep_sleep(char* app_id) {
    if (!acceptable_app_id(app_id, XSI_PBFS_ESM_APP_ID_SIZE, JBRG_TRACE_SITE)) return QSF_FND_SYSINFO_ERROR;
    return convert_retcode_esm(esm().xsi_pbfs_esm_resume_deep_sleep(app_id));
}

unsigned int CMT_System_Info::set_wakeup_date(char* app_id, dev_ulong date) {
    if (!acceptable_app_id(app_id, XSI_PBFS_ESM_APP_ID_SIZE, JBRG_TRACE_SITE)) return QSF_FND_SYSINFO_ERROR;
    return convert_retcode_esm(esm().xsi_pbfs_esm_set_wakeup_date(app_id, date));
}

// A fixed answer, not a check: the device's own behaviour is to answer true for any certificate information,
// a null one included, and applications rely on it.
bool CMT_System_Info::check_eweb_cert_info(const char*) { return true; }

}  // namespace orvane
