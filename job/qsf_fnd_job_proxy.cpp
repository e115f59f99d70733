#include "job/qsf_fnd_job_proxy.h"

#include <cstdint>
#include <cstring>

#include "core/cjvm.h"
#include "core/trace.h"
#include "emw_services.h"

namespace orvane {

namespace {

xsi_ais_job_facade* job_service() { return xsi_ais_job_facade::xsi_ais_job_get_instance(); }

// Job ids and sizes are printed with "%d", as the device prints them.
int d(unsigned int value) { return static_cast<int>(value); }

const char* text_or_null(const char* text) { return text != nullptr ? text : "(null)"; }

// The job module's result codes that the class itself decides.
constexpr int kJobOk = 0;
constexpr int kJobError = 1;       // any platform code the module does not know
constexpr int kJobParamError = 8;  // also: a function type other than copy or scan

struct retcode_entry {
    PLAT_RESULT code;
    int result;
    const char* name;
};

// The platform's job codes and the job module's result for each. The end of the table is not monotonic:
// XSI_AIS_JOB_LOGIN_ERROR (0xC1020017) gives 20, while 0xC1020014 to 0xC1020016 give 21 to 23. Java
// applications know the results by these numbers.
constexpr retcode_entry kRetcodes[] = {
    {XSI_AIS_JOB_OK, 0, "XSI_AIS_JOB_OK"},
    {XSI_AIS_JOB_DUPL_OBSERVER, 2, "XSI_AIS_JOB_DUPL_OBSERVER"},
    {XSI_AIS_JOB_NO_OBSERVER, 3, "XSI_AIS_JOB_NO_OBSERVER"},
    {XSI_AIS_JOB_OUTPUT_PROHIBITING, 4, "XSI_AIS_JOB_OUTPUT_PROHIBITING"},
    {XSI_AIS_JOB_START_PROHIBITION, 5, "XSI_AIS_JOB_START_PROHIBITION"},
    {XSI_AIS_JOB_LIMIT, 6, "XSI_AIS_JOB_LIMIT"},
    {XSI_AIS_JOB_IPC_ERROR, 7, "XSI_AIS_JOB_IPC_ERROR"},
    {XSI_AIS_JOB_PARAM_ERROR, 8, "XSI_AIS_JOB_PARAM_ERROR"},
    {XSI_AIS_JOB_COPY_JOBINFO_LIMIT_OVER, 9, "XSI_AIS_JOB_COPY_JOBINFO_LIMIT_OVER"},
    {XSI_AIS_JOB_RET_NOT_COPY_JOBINFO, 10, "XSI_AIS_JOB_RET_NOT_COPY_JOBINFO"},
    {XSI_AIS_JOB_NO_CATEGORY, 11, "XSI_AIS_JOB_NO_CATEGORY"},
    {XSI_AIS_NO_HIT_JOB, 12, "XSI_AIS_NO_HIT_JOB"},
    {XSI_AIS_JOB_ORG_SIZE_UNDEFINED, 13, "XSI_AIS_JOB_ORG_SIZE_UNDEFINED"},
    {XSI_AIS_JOB_CANCEL_REJECT, 14, "XSI_AIS_JOB_CANCEL_REJECT"},
    {XSI_AIS_JOB_NOT_FOUND, 15, "XSI_AIS_JOB_NOT_FOUND"},
    {XSI_AIS_JOB_HDD_FULL, 16, "XSI_AIS_JOB_HDD_FULL"},
    {XSI_AIS_JOB_CANCELED, 17, "XSI_AIS_JOB_CANCELED"},
    {XSI_AIS_JOB_PRINTING_ONLY_DOC_ERROR, 18, "XSI_AIS_JOB_PRINTING_ONLY_DOC_ERROR"},
    {XSI_AIS_JOB_USER_JOB_LIMIT_ERROR, 19, "XSI_AIS_JOB_USER_JOB_LIMIT_ERROR"},
    {XSI_AIS_JOB_LOGIN_ERROR, 20, "XSI_AIS_JOB_LOGIN_ERROR"},
    {XSI_AIS_JOB_ILLEGAL_SERVICE_ID, 21, "XSI_AIS_JOB_ILLEGAL_SERVICE_ID"},
    {XSI_AIS_JOB_WAIT_EXEC, 22, "XSI_AIS_JOB_WAIT_EXEC"},
    {XSI_AIS_JOB_OBTAIN_PNL_RESOURCE_ERROR, 23, "XSI_AIS_JOB_OBTAIN_PNL_RESOURCE_ERROR"},
};

// The library's function types as the platform numbers them; any other is refused before the platform.
struct func_type_entry {
    XIOF_SLO_JOB_FUNC_TYPE library;
    XSI_AIS_JOB_FUNC_TYPE platform;
};
constexpr func_type_entry kFuncTypes[] = {
    {XIOF_SLO_JOB_FUNC_TYPE_COPY, XSI_AIS_JOB_FUNC_COPY},
    {XIOF_SLO_JOB_FUNC_TYPE_SCAN, XSI_AIS_JOB_FUNC_SCAN},
};

bool platform_func_type(XIOF_SLO_JOB_FUNC_TYPE library, XSI_AIS_JOB_FUNC_TYPE& platform) {
    for (const func_type_entry& e : kFuncTypes) {
        if (e.library == library) {
            platform = e.platform;
            return true;
        }
    }
    return false;
}

// The library's signage modes as the platform numbers them; every other value is off.
struct signage_mode_entry {
    XIOF_SLO_JOB_SIGNAGE_MODE library;
    XSI_AIS_JOB_SIGNAGE_MODE platform;
};
constexpr signage_mode_entry kSignageModes[] = {
    {XIOF_SLO_JOB_SIGNAGE_MODE_ON, XSI_AIS_JOB_SIGNAGE_ON},
    {XIOF_SLO_JOB_SIGNAGE_MODE_EXCLUSIVE, XSI_AIS_JOB_SIGNAGE_EXCLUSIVE},
};

XSI_AIS_JOB_SIGNAGE_MODE platform_signage_mode(XIOF_SLO_JOB_SIGNAGE_MODE library) {
    for (const signage_mode_entry& e : kSignageModes) {
        if (e.library == library) return e.platform;
    }
    return XSI_AIS_JOB_SIGNAGE_OFF;
}

// The usable length of each send-address text field, by QSF_FND_JOB_CHAR_ARRAY_SIZE_KEY: the capacity of
// the platform's field less its terminating zero.
constexpr int32_t kCharArraySizes[] = {
    XSI_AIS_JOB_FTP_HOST_NAME_SIZE - 1, XSI_AIS_JOB_FTP_PATH_NAME_SIZE - 1, XSI_AIS_JOB_FTP_USER_NAME_SIZE - 1,
    XSI_AIS_JOB_FTP_PASSWORD_SIZE - 1,  XSI_AIS_JOB_SMB_HOST_NAME_SIZE - 1, XSI_AIS_JOB_SMB_PATH_NAME_SIZE - 1,
    XSI_AIS_JOB_SMB_USER_NAME_SIZE - 1, XSI_AIS_JOB_SMB_PASSWORD_SIZE - 1,  XSI_AIS_JOB_MAIL_ADDRESS_SIZE - 1,
};

// A failing generate_jobinfo may still have handed out a set: it is deleted at once and the handler id
// cleared, so that the caller is left with nothing to clean up. The deletion's own result only reaches the
// trace; the first failure is what the caller gets.
void discard_failed_jobinfo(qsf_fnd_job_proxy& proxy, int ret, unsigned int& handler_id, const trace_site& site) {
    if (ret == kJobOk || handler_id == 0) return;
    int deleted = proxy.convert_retcode(job_service()->xsi_ais_job_delete_jobinfo(handler_id));
    handler_id = 0;
    trace_at(site, "[Info] xsi_ais_job_delete_jobinfo = [%d]", deleted);
}

// The operations on a user job first ask for the service id of the job (starting from 0). A failed lookup
// is what the caller gets, and nothing else is called.
int service_of(qsf_fnd_job_proxy& proxy, unsigned int user_job_id, unsigned int& service_id, const trace_site& site) {
    int ret = proxy.convert_retcode(job_service()->xsi_ais_job_get_service_id(user_job_id, service_id));
    if (ret != kJobOk) trace_at(site, "[End] xsi_ais_job_get_service_id error");
    return ret;
}

}  // namespace

qsf_fnd_job_proxy::qsf_fnd_job_proxy() = default;

qsf_fnd_job_proxy::~qsf_fnd_job_proxy() = default;

int qsf_fnd_job_proxy::convert_retcode(dev_long code) {
    for (const retcode_entry& e : kRetcodes) {
        if (e.code == code) {
            JBRG_TRACE("code = %s", e.name);
            return e.result;
        }
    }
    JBRG_TRACE("code = unknown(0x%08lx)", dev_lx(code));
    return kJobError;
}

// ---- Job information sets -------------------------------------------------------------------------------

int qsf_fnd_job_proxy::generate_jobinfo(XSI_AIS_JOB_CATEGORY category, unsigned int& handler_id) {
    JBRG_TRACE("[Start]. category = [%d].", static_cast<int>(category));
    int ret = convert_retcode(job_service()->xsi_ais_job_generate_jobinfo(category, handler_id));
    discard_failed_jobinfo(*this, ret, handler_id, JBRG_TRACE_SITE);
    JBRG_TRACE("handler_id = [%d]", d(handler_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::generate_jobinfo(XSI_AIS_JOB_CATEGORY category, unsigned int& handler_id, dev_ulong cert_id) {
    JBRG_TRACE("[Start]. category = [%d], cert_id = [%lu].", static_cast<int>(category), dev_lx(cert_id));
    // The platform takes the certificate id between the category and the handler id.
    int ret = convert_retcode(job_service()->xsi_ais_job_generate_jobinfo_bkg(category, cert_id, handler_id));
    discard_failed_jobinfo(*this, ret, handler_id, JBRG_TRACE_SITE);
    JBRG_TRACE("handler_id = [%d]", d(handler_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::set_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id, unsigned int value) {
    JBRG_TRACE("[Start]. handler_id = [%d], data_id = [%d], val = [%d].", d(handler_id), static_cast<int>(data_id),
               d(value));
    int ret = convert_retcode(job_service()->xsi_ais_job_set_value(handler_id, data_id, value));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::set_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id, std::string value) {
    JBRG_TRACE("[Start]. handler_id = [%d], data_id = [%d], val = [%s].", d(handler_id), static_cast<int>(data_id),
               value.c_str());
    int ret = convert_retcode(job_service()->xsi_ais_job_set_value(handler_id, data_id, value));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::set_value(unsigned int handler_id, XSI_AIS_PHB_SETTING_ID setting_id, unsigned int value_1,
                                 unsigned int value_2, unsigned int value_3) {
    JBRG_TRACE("[Start]. handler_id = [%d], setting_id = [%d], val = [%d, %d, %d].", d(handler_id),
               static_cast<int>(setting_id), d(value_1), d(value_2), d(value_3));
    int ret = convert_retcode(
        job_service()->xsi_ais_job_set_value(handler_id, setting_id, value_1, value_2, value_3));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::get_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id, unsigned int& value) {
    JBRG_TRACE("[Start]. handler_id = [%d], data_id = [%d].", d(handler_id), static_cast<int>(data_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_get_value(handler_id, data_id, value));
    JBRG_TRACE("[End]. val = [%d], ret_code=%ld", d(value), dev_ld(ret));
    return ret;
}

std::string qsf_fnd_job_proxy::get_value(unsigned int handler_id, XSI_AIS_JOB_SETTING data_id) {
    JBRG_TRACE("[Start]. handler_id = [%d], data_id = [%d].", d(handler_id), static_cast<int>(data_id));
    std::string value;
    // The text is the whole answer: a failure gives the empty text and its code goes no further.
    if (convert_retcode(job_service()->xsi_ais_job_get_value(handler_id, data_id, value)) != kJobOk) {
        JBRG_TRACE("val = empty");
        return std::string();
    }
    JBRG_TRACE("[End]. val = [%s]", value.c_str());
    return value;
}

int qsf_fnd_job_proxy::get_value(unsigned int handler_id, XSI_AIS_PHB_SETTING_ID setting_id, unsigned int& value_1,
                                 unsigned int& value_2, unsigned int& value_3) {
    JBRG_TRACE("[Start]. handler_id = [%d], setting_id = [%d].", d(handler_id), static_cast<int>(setting_id));
    int ret = convert_retcode(
        job_service()->xsi_ais_job_get_value(handler_id, setting_id, value_1, value_2, value_3));
    JBRG_TRACE("[End]. val = [%d, %d, %d], ret_code=%ld", d(value_1), d(value_2), d(value_3), dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::get_default_jobinfo_val(XSI_AIS_JOB_SETTING key, unsigned int& value) {
    JBRG_TRACE("[Start]. key = [%d].", static_cast<int>(key));
    int ret = convert_retcode(job_service()->xsi_ais_job_get_default_jobinfo_val(key, value));
    JBRG_TRACE("[End]. val = [%d], ret_code=%ld", d(value), dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::reset_jobinfo(unsigned int handler_id) {
    JBRG_TRACE("[Start]. handler_id = [%d].", d(handler_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_reset_jobinfo(handler_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::commit_jobinfo(unsigned int handler_id) {
    JBRG_TRACE("[Start]. handler_id = [%d].", d(handler_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_commit_jobinfo(handler_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::rollback_jobinfo(unsigned int handler_id) {
    JBRG_TRACE("[Start]. handler_id = [%d].", d(handler_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_rollback_jobinfo(handler_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::copy_jobinfo(unsigned int handler_id) {
    JBRG_TRACE("[Start]. handler_id = [%d].", d(handler_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_copy_jobinfo(handler_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::delete_jobinfo(unsigned int handler_id) {
    JBRG_TRACE("[Start]. handler_id = [%d].", d(handler_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_delete_jobinfo(handler_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::basic_func_set_value(XIOF_SLO_JOB_FUNC_TYPE func_type, XSI_AIS_JOB_SETTING data_id,
                                            unsigned int value) {
    JBRG_TRACE("[Start]. func_type = [%d], data_id = [%d], val = [%d].", static_cast<int>(func_type),
               static_cast<int>(data_id), d(value));
    XSI_AIS_JOB_FUNC_TYPE platform_type = XSI_AIS_JOB_FUNC_COPY;
    if (!platform_func_type(func_type, platform_type)) {
        JBRG_TRACE("[End] invalid func_type ret_code=%ld", dev_ld(kJobParamError));
        return kJobParamError;
    }
    int ret = convert_retcode(job_service()->xsi_ais_job_basic_func_set_value(platform_type, data_id, value));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::set_signage_mode(XIOF_SLO_JOB_FUNC_TYPE func_type, XIOF_SLO_JOB_SIGNAGE_MODE mode) {
    // The entry line has always shown the mode as 0, whatever the mode; log readers rely on the platform
    // call for the real value.
    JBRG_TRACE("[Start]. func_type = [%d], , mode = [%d].", static_cast<int>(func_type), 0);
    XSI_AIS_JOB_FUNC_TYPE platform_type = XSI_AIS_JOB_FUNC_COPY;
    if (!platform_func_type(func_type, platform_type)) {
        JBRG_TRACE("[End] invalid func_type ret_code=%ld", dev_ld(kJobParamError));
        return kJobParamError;
    }
    int ret = convert_retcode(
        job_service()->xsi_ais_job_set_signage_mode(platform_type, platform_signage_mode(mode)));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::notify_reset_default_value() {
    JBRG_TRACE("[Start]");
    int ret = convert_retcode(job_service()->xsi_ais_job_notify_reset_default_value());
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

// ---- Destinations -------------------------------------------------------------------------------------

int qsf_fnd_job_proxy::add_send_address(unsigned int handler_id, unsigned int& address_id,
                                        const XSI_AIS_JOB_SEND_INFO& info) {
    JBRG_TRACE("[Start]. handler_id = [%d].", d(handler_id));
    JBRG_TRACE("address_type = [%d]", d(info.address_type));
    int ret = convert_retcode(job_service()->xsi_ais_job_add_address(handler_id, address_id, info));
    JBRG_TRACE("[End]. address_id = [%d], ret_code=%ld", d(address_id), dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::update_send_address(unsigned int handler_id, unsigned int address_id,
                                           const XSI_AIS_JOB_SEND_INFO& info) {
    JBRG_TRACE("[Start]. handler_id = [%d], address_id = [%d].", d(handler_id), d(address_id));
    JBRG_TRACE("address_type = [%d]", d(info.address_type));
    int ret = convert_retcode(job_service()->xsi_ais_job_update_address(handler_id, address_id, info));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::delete_send_address(unsigned int handler_id, unsigned int address_id) {
    JBRG_TRACE("[Start]. handler_id = [%d], address_id = [%d].", d(handler_id), d(address_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_delete_address(handler_id, address_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::delete_all_send_address(unsigned int handler_id) {
    JBRG_TRACE("[Start]. handler_id = [%d].", d(handler_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_delete_all_address(handler_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::get_send_address(unsigned int handler_id, unsigned int address_id,
                                        XSI_AIS_JOB_SEND_INFO& info) {
    JBRG_TRACE("[Start]. handler_id = [%d], address_id = [%d].", d(handler_id), d(address_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_get_address(handler_id, address_id, info));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::get_send_address_id(unsigned int handler_id, std::vector<unsigned int>& ids) {
    JBRG_TRACE("[Start]. handler_id = [%d].", d(handler_id));
    // The platform's own count only reaches the trace: the caller learns the number from the vector.
    unsigned int count = 0;
    int ret = convert_retcode(job_service()->xsi_ais_job_get_address_id(handler_id, count, ids));
    JBRG_TRACE("[End]. handler_id = [%d], address_id_num = [%d], list_size = [%d].", d(handler_id), d(count),
               static_cast<int>(ids.size()));
    return ret;
}

// ---- Creating, starting and ending jobs ---------------------------------------------------------------

int qsf_fnd_job_proxy::create_job(XSI_AIS_JOB_CATEGORY category, unsigned int handler_id, unsigned int& service_id) {
    JBRG_TRACE("[Start]. category = [%d], handler_id = [%d].", static_cast<int>(category), d(handler_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_start(category, handler_id, service_id));
    JBRG_TRACE("service_id = [%d]", d(service_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::start(unsigned int service_id, unsigned int& user_job_id) {
    JBRG_TRACE("[Start]. service_id = [%d].", d(service_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_kick(service_id, user_job_id));
    JBRG_TRACE("user_job_id = [%d]", d(user_job_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::cancel(unsigned int user_job_id) {
    JBRG_TRACE("[Start]. user_job_id = [%d].", d(user_job_id));
    unsigned int service_id = 0;
    if (int looked_up = service_of(*this, user_job_id, service_id, JBRG_TRACE_SITE); looked_up != kJobOk) {
        return looked_up;
    }
    int ret = convert_retcode(job_service()->xsi_ais_job_cancel(service_id, user_job_id, 0));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::cancel(unsigned int user_job_id, dev_ulong cert_id) {
    JBRG_TRACE("[Start]. user_job_id = [%d], cert_id = [%lu].", d(user_job_id), dev_lx(cert_id));
    unsigned int service_id = 0;
    if (int looked_up = service_of(*this, user_job_id, service_id, JBRG_TRACE_SITE); looked_up != kJobOk) {
        return looked_up;
    }
    int ret = convert_retcode(job_service()->xsi_ais_job_cancel_bkg(service_id, user_job_id, cert_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::remove_job(unsigned int user_job_id, dev_ulong cert_id) {
    JBRG_TRACE("[Start]. user_job_id = [%d], cert_id = [%lu].", d(user_job_id), dev_lx(cert_id));
    unsigned int service_id = 0;
    if (int looked_up = service_of(*this, user_job_id, service_id, JBRG_TRACE_SITE); looked_up != kJobOk) {
        return looked_up;
    }
    // Removing a job is the plain cancel with the certificate id, not the _bkg cancel: the platform has
    // always been asked this way for removals.
    int ret = convert_retcode(job_service()->xsi_ais_job_cancel(service_id, user_job_id, cert_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::continuous_read(unsigned int user_job_id) {
    JBRG_TRACE("[Start]. user_job_id = [%d].", d(user_job_id));
    unsigned int service_id = 0;
    if (int looked_up = service_of(*this, user_job_id, service_id, JBRG_TRACE_SITE); looked_up != kJobOk) {
        return looked_up;
    }
    int ret = convert_retcode(job_service()->xsi_ais_job_continuous_read(service_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::continuous_read_end(unsigned int user_job_id) {
    JBRG_TRACE("[Start]. user_job_id = [%d].", d(user_job_id));
    unsigned int service_id = 0;
    if (int looked_up = service_of(*this, user_job_id, service_id, JBRG_TRACE_SITE); looked_up != kJobOk) {
        return looked_up;
    }
    int ret = convert_retcode(job_service()->xsi_ais_job_continuous_read_end(service_id));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::get_service_id(unsigned int user_job_id, unsigned int& service_id) {
    JBRG_TRACE("[Start]. user_job_id = [%d].", d(user_job_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_get_service_id(user_job_id, service_id));
    JBRG_TRACE("[End]. service_id = [%d], ret_code=%ld", d(service_id), dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::get_job_list(XSI_AIS_JOB_KIND kind, std::vector<unsigned int>& ids) {
    JBRG_TRACE("[Start]. kind = [%d].", static_cast<int>(kind));
    int ret = convert_retcode(job_service()->xsi_ais_job_get_job_list(kind, ids));
    JBRG_TRACE("[End]. list_size = [%d], ret_code=%ld", static_cast<int>(ids.size()), dev_ld(ret));
    return ret;
}

// ---- Prohibition state and panel messages ---------------------------------------------------------------

int qsf_fnd_job_proxy::check_state_of_prohibition() {
    JBRG_TRACE("[Start]");
    int ret = convert_retcode(job_service()->xsi_ais_job_check_state_of_prohibition());
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::set_state_of_prohibition(XSI_AIS_STATE_OF_PROHIBITION state) {
    JBRG_TRACE("[Start]. state = [%d].", static_cast<int>(state));
    int ret = convert_retcode(job_service()->xsi_ais_job_set_state_of_prohibition(state));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::get_start_phb(unsigned int handler_id, bool& prohibited) {
    JBRG_TRACE("[Start]. handler_id = [%d].", d(handler_id));
    int phb = 0;
    int ret = convert_retcode(job_service()->xsi_ais_job_get_start_phb(handler_id, phb));
    prohibited = phb != 0;
    if (prohibited) {
        JBRG_TRACE("handler_id = [%d], result = true", d(handler_id));
    } else {
        JBRG_TRACE("handler_id = [%d], result = false", d(handler_id));
    }
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::get_disable_info(unsigned int handler_id, XSI_AIS_PHB_DISABLE_ITEM item,
                                        unsigned short& value) {
    JBRG_TRACE("[Start]. handler_id = [%d], setting_id = [%d].", d(handler_id), static_cast<int>(item));
    int ret = convert_retcode(job_service()->xsi_ais_job_get_disable_info(handler_id, item, value));
    JBRG_TRACE("[End]. handler_id = [%d], setting_id = [%d], val = [0x%04X]", d(handler_id), static_cast<int>(item),
               static_cast<unsigned int>(value));
    return ret;
}

int qsf_fnd_job_proxy::get_main_message(unsigned int handler_id, XSI_AIS_PHB_GET_MESSAGE& msg) {
    JBRG_TRACE("[Start]. handler_id = [%d].", d(handler_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_get_main_message(handler_id, msg));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

// ---- Documents and data streams -----------------------------------------------------------------------

int qsf_fnd_job_proxy::box_job_prepare(unsigned int handler_id, XSI_AIS_BOX_JOB_INIT_SETTING& setting) {
    JBRG_TRACE("[Start]. handler_id = [%d], box_job_type = [%d], box_id = [%lu], doc_id = [%lu].", d(handler_id),
               d(setting.box_job_type), dev_lx(setting.box_id), dev_lx(setting.doc_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_box_job_prepare(handler_id, setting));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::direct_print_prepare(unsigned int handler_id, char* file_path, char* file_name) {
    JBRG_TRACE("[Start]. handler_id = [%d], file_path = [%s], file_name = [%s].", d(handler_id),
               text_or_null(file_path), text_or_null(file_name));
    int ret = convert_retcode(job_service()->xsi_ais_job_direct_print_prepare(handler_id, file_path, file_name));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::direct_print_prepare(unsigned int handler_id, XSI_AIS_JOB_STREAM_WRITE_FILE file_format) {
    JBRG_TRACE("[Start]. handler_id = [%d], file_format = [%d].", d(handler_id), static_cast<int>(file_format));
    int ret = convert_retcode(job_service()->xsi_ais_job_direct_print_prepare(handler_id, file_format));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::write_stream_data(unsigned int user_job_id, dev_ulong data_size, signed char* data,
                                         XSI_AIS_JOB_STREAM_STATE state) {
    JBRG_TRACE("[Start]. user_job_id = [%d], data_size = [%lu], state = [%d].", d(user_job_id), dev_lx(data_size),
               static_cast<int>(state));
    // The transfer record comes from the platform's partition, which the job service reads it from. An
    // exhausted partition sends nothing and answers the catch-all failure rather than writing through null.
    auto* record = static_cast<XSI_AIS_JOB_WRITE_STREAM_DATA*>(emwOSWSubAllocMem(sizeof(XSI_AIS_JOB_WRITE_STREAM_DATA)));
    if (record == nullptr) {
        JBRG_TRACE("[End] ret_code=%ld", dev_ld(kJobError));
        return kJobError;
    }
    record->data_size = data_size;
    record->stream_state = static_cast<dev_ulong>(state);
    // The size is the caller's to keep within one record and reaches the platform as given; the copy never
    // runs past the record's data bytes.
    dev_ulong copied = data_size < XSI_AIS_JOB_WRITE_STREAM_DATA_SIZE ? data_size : XSI_AIS_JOB_WRITE_STREAM_DATA_SIZE;
    if (data != nullptr && copied != 0) std::memcpy(record->stream_data, data, copied);
    int ret = convert_retcode(job_service()->xsi_ais_job_write_stream_data(user_job_id, *record));
    emwOSWOrgFreeMemPart(0, record);
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::retrieve_document_prepare(unsigned int handler_id, char* box_pass, dev_ulong box_id,
                                                 dev_ulong doc_id, char* store_path) {
    // The box password is handed on as it is and kept out of the trace.
    JBRG_TRACE("[Start]. handler_id = [%d], box_id = [%lu], doc_id = [%lu], store_path = [%s].", d(handler_id),
               dev_lx(box_id), dev_lx(doc_id), text_or_null(store_path));
    int ret = convert_retcode(
        job_service()->xsi_ais_job_retrieve_document_prepare(handler_id, box_pass, box_id, doc_id, store_path));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

int qsf_fnd_job_proxy::combine_document(unsigned int handler_id, XSI_AIS_PHB_COMBINE_DOC_INFO& info) {
    JBRG_TRACE("[Start]. handler_id = [%d], box_id = [%lu].", d(handler_id), dev_lx(info.box_id));
    int ret = convert_retcode(job_service()->xsi_ais_job_combine_document(handler_id, info));
    JBRG_TRACE("[End] ret_code=%ld", dev_ld(ret));
    return ret;
}

jbyteArray qsf_fnd_job_proxy::get_scan_data(unsigned int user_job_id, XSI_AIS_JOB_GET_SCAN_DATA& data) {
    JBRG_TRACE("[Start]. user_job_id = [%d].", d(user_job_id));
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) {
        JBRG_TRACE("Fail to get JNIEnv.");
        return nullptr;
    }
    // No data is the whole answer to a failure; its code goes no further.
    PLAT_RESULT rc = job_service()->xsi_ais_job_get_scan_data(user_job_id, data);
    if (rc != XSI_AIS_JOB_OK) {
        JBRG_TRACE("[End] xsi_ais_job_get_scan_data error");
        return nullptr;
    }
    const jsize size = static_cast<jsize>(data.data_size);
    jbyteArray array = env->NewByteArray(size);
    if (array == nullptr) {
        JBRG_TRACE("[End] NewByteArray error");
        return nullptr;
    }
    env->SetByteArrayRegion(array, 0, size, reinterpret_cast<const jbyte*>(data.scan_data));
    if (env->ExceptionCheck()) {
        env->ExceptionClear();
        env->DeleteLocalRef(array);
        JBRG_TRACE("[End] SetByteArrayRegion error");
        return nullptr;
    }
    JBRG_TRACE("[End]. data_size = [%lu], doc_state = [%lu].", dev_lx(data.data_size), dev_lx(data.doc_state));
    return array;
}

jbyteArray qsf_fnd_job_proxy::get_ocr_text_data(unsigned int handler_id, XSI_AIS_JOB_GET_OCR_DATA& data) {
    JBRG_TRACE("[Start]. handler_id = [%d].", d(handler_id));
    JNIEnv* env = CJvm::GetJNIEnv();
    if (env == nullptr) {
        JBRG_TRACE("Fail to get JNIEnv.");
        return nullptr;
    }
    // Page records describe the sheet and its blocks; the caller wants the next text line.
    PLAT_RESULT rc = XSI_AIS_JOB_OK;
    do {
        rc = job_service()->xsi_ais_job_get_ocr_text_data(handler_id, data);
    } while (rc == XSI_AIS_JOB_OK && data.ocr_data_category == XSI_AIS_JOB_OCR_PAGE);
    if (rc != XSI_AIS_JOB_OK) {
        JBRG_TRACE("Fail to get OCR data. rc = [%d]", convert_retcode(rc));
        return nullptr;
    }
    const XSI_AIS_JOB_OCR_TEXT_DATA& line = data.ocr_data.text_data;
    const jsize size = static_cast<jsize>(line.data_size);
    jbyteArray array = env->NewByteArray(size);
    if (array == nullptr) {
        JBRG_TRACE("Fail to create OCR text line.");
        return nullptr;
    }
    env->SetByteArrayRegion(array, 0, size, reinterpret_cast<const jbyte*>(line.text_data));
    if (env->ExceptionCheck()) {
        env->ExceptionClear();
        env->DeleteLocalRef(array);
        JBRG_TRACE("Fail to copy OCR text line.");
        return nullptr;
    }
    JBRG_TRACE("[End]. block_no = [%d], line_no = [%d], data_size = [%d].", line.block_no, line.line_no,
               line.data_size);
    return array;
}

int qsf_fnd_job_proxy::get_char_array_size(QSF_FND_JOB_CHAR_ARRAY_SIZE_KEY key) {
    JBRG_TRACE("[Start]. key = [%d].", static_cast<int>(key));
    const unsigned int index = static_cast<unsigned int>(key);
    int size = index < sizeof kCharArraySizes / sizeof kCharArraySizes[0] ? kCharArraySizes[index] : 0;
    JBRG_TRACE("[End]. size = [%d].", size);
    return size;
}

}  // namespace orvane
