// The job log proxy: Java applications' read access to the device's job history.
//
// A stateless front to the job information service: each operation makes one call on the service and folds
// its result code into the job log result set (convert_retcode). It traces nothing. The send and receive
// lists live in the service, one of each at a time; the proxy keeps no cursor of its own.
#ifndef JBRG_JOB_LOG_QSF_FND_JOB_LOG_PROXY_H
#define JBRG_JOB_LOG_QSF_FND_JOB_LOG_PROXY_H

#include <string>

#include "plat_types.h"
#include "xsi_ais_jobinfo.h"

namespace orvane {

class qsf_fnd_job_log_proxy {
public:
    qsf_fnd_job_log_proxy();
    virtual ~qsf_fnd_job_log_proxy();

    // The job log entry `receipt_id` of the log `type`.
    int retrieve_joblog(unsigned int receipt_id, XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type, XSI_AIS_JOBINFO_JOBLOG& log);

    // The send records of one entry: create the list, get one record per call, delete the list.
    int create_send_info_list(unsigned int receipt_id, XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type);
    int get_send_info(XSI_AIS_JOBINFO_SEND_INFO& info);
    int delete_send_info_list();

    // The receive records of one entry, in the same way.
    int create_receive_info_list(unsigned int receipt_id, XSI_AIS_JOBINFO_JOBLOG_TYPE_VAL type);
    int get_receive_info(XSI_AIS_JOBINFO_RECEIVE_INFO& info);
    int delete_receive_info_list();

    // The text of an image log; empty when the service fails, whatever it failed with.
    std::string retrieve_imagelog(dev_ulong image_id);
    int delete_imagelog(dev_ulong image_id);

    // The job log result of a service code: 0 and 0xC1020002..0xC1020009 give their low byte, anything else
    // gives 1. Silent.
    int convert_retcode(dev_long code);
};

}  // namespace orvane

#endif  // JBRG_JOB_LOG_QSF_FND_JOB_LOG_PROXY_H
