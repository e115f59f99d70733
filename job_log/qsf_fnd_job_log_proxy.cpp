#include "job_log/qsf_fnd_job_log_proxy.h"

namespace orvane {

namespace {

// The job log result set. Only the first codes of the job service are told apart here; every other code,
// the job service's "not found" (0xC102000F) among them, folds into the catch-all 1. The job proxy tells
// more of them apart: the two result sets are not the same and are not shared.
struct retcode_entry {
    PLAT_RESULT code;
    int result;
};
constexpr retcode_entry kRetcodes[] = {
    {XSI_AIS_JOBINFO_OK, 0},
    {XSI_AIS_JOBINFO_DUPL_OBSERVER, 2},
    {XSI_AIS_JOBINFO_NO_OBSERVER, 3},
    {XSI_AIS_JOBINFO_OUTPUT_PROHIBITING, 4},
    {XSI_AIS_JOBINFO_START_PROHIBITION, 5},
    {XSI_AIS_JOBINFO_LIMIT, 6},
    {XSI_AIS_JOBINFO_IPC_ERROR, 7},
    {XSI_AIS_JOBINFO_PARAM_ERROR, 8},
    {XSI_AIS_JOBINFO_COPY_JOBINFO_LIMIT_OVER, 9},
};
constexpr int kUnknownRetcode = 1;

xsi_ais_jobinfo_facade& service() { return *xsi_ais_jobinfo_facade::xsi_ais_jobinfo_get_instance(); }

}  // namespace

qsf_fnd_job_log_proxy::qsf_fnd_job_log_proxy() = default;

qsf_fnd_job_log_proxy::~qsf_fnd_job_log_proxy() = default;

int qsf_fnd_job_log_proxy::retrieve_joblog(unsigned int receipt_id, XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type,
                                           XSI_AIS_JOBINFO_JOBLOG& log) {
    return convert_retcode(service().xsi_ais_jobinfo_retrieve_joblog(receipt_id, type, log));
}

int qsf_fnd_job_log_proxy::create_send_info_list(unsigned int receipt_id, XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type) {
    return convert_retcode(service().xsi_ais_jobinfo_create_send_info_list(receipt_id, type));
}

int qsf_fnd_job_log_proxy::get_send_info(XSI_AIS_JOBINFO_SEND_INFO& info) {
    return convert_retcode(service().xsi_ais_jobinfo_get_send_info(info));
}

int qsf_fnd_job_log_proxy::delete_send_info_list() {
    return convert_retcode(service().xsi_ais_jobinfo_delete_send_info_list());
}

int qsf_fnd_job_log_proxy::create_receive_info_list(unsigned int receipt_id, XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type) {
    return convert_retcode(service().xsi_ais_jobinfo_create_receive_info_list(receipt_id, type));
}

int qsf_fnd_job_log_proxy::get_receive_info(XSI_AIS_JOBINFO_RECEIVE_INFO& info) {
    return convert_retcode(service().xsi_ais_jobinfo_get_receive_info(info));
}

int qsf_fnd_job_log_proxy::delete_receive_info_list() {
    return convert_retcode(service().xsi_ais_jobinfo_delete_receive_info_list());
}

std::string qsf_fnd_job_log_proxy::retrieve_imagelog(dev_ulong image_id) {
    std::string text;
    // The code is not reported: a failure is the empty text, even where the service wrote part of one.
    if (service().xsi_ais_jobinfo_retrieve_imagelog(image_id, text) != XSI_AIS_JOBINFO_OK) return std::string();
    return text;
}

int qsf_fnd_job_log_proxy::delete_imagelog(dev_ulong image_id) {
    return convert_retcode(service().xsi_ais_jobinfo_delete_imagelog(image_id));
}

int qsf_fnd_job_log_proxy::convert_retcode(dev_long code) {
    for (const retcode_entry& e : kRetcodes) {
        if (e.code == code) return e.result;
    }
    return kUnknownRetcode;
}

}  // namespace orvane
